#include "dbents.h"

#include "db/entities/entity_parts.h"

AcDbSequenceEnd::AcDbSequenceEnd() = default;

Acad::ErrorStatus AcDbSequenceEnd::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    return es == Acad::eOk ? embedded::declineWhatIsLeft(*filer) : es;
}

Acad::ErrorStatus AcDbSequenceEnd::subTransformBy(const AcGeMatrix3d&) { return Acad::eOk; }
