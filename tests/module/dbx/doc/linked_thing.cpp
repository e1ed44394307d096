#include "linked_thing.h"

#include "dbfiler.h"
#include "rxclass.h"

ACRX_DXF_DEFINE_MEMBERS(LinkedThing, AcDbObject, AcDb::kDHL_1015, 0, 0, LINKEDTHING, ModuleTests)

void registerLinkedThing() {
    LinkedThing::rxInit();
    acrxBuildClassHierarchy();
}

void LinkedThing::setNodDatabaseId(const AcDbObjectId& id, const std::wstring& name) {
    assertWriteEnabled();
    m_id = id;
    m_name = name;
}

Acad::ErrorStatus LinkedThing::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    const Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    return es != Acad::eOk ? es : orv::doc::DatabaseElementBase::dwgInFields(*this, *filer);
}

Acad::ErrorStatus LinkedThing::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    const Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    return es != Acad::eOk ? es : orv::doc::DatabaseElementBase::dwgOutFields(*this, *filer);
}
