#include "dbfiler.h"

#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDwgFiler, AcRxObject)

Acad::ErrorStatus AcDbDwgFiler::dwgVersion(AcDb::AcDbDwgVersion& version,
                                           AcDb::MaintenanceReleaseVersion& maintenance) const {
    version = AcDb::kDHL_CURRENT;
    maintenance = AcDb::kMReleaseCurrent;
    return Acad::eOk;
}

Adesk::Boolean AcDbDwgFiler::usesReferences() const { return false; }
void AcDbDwgFiler::addReference(AcDbObjectId) {}
