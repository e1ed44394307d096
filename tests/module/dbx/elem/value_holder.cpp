#include "value_holder.h"

#include "dbfiler.h"
#include "property_tree/arx/property_tree_filer.h"
#include "rxclass.h"

namespace testing_support {

ACRX_DXF_DEFINE_MEMBERS(ValueHolder, AcDbObject, AcDb::kDHL_1015, 0, 0, VALUEHOLDER, ValueTests)

void registerValueHolder() {
    ValueHolder::rxInit();
    acrxBuildClassHierarchy();
}

Acad::ErrorStatus ValueHolder::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es == Acad::eOk)
        es = orv::property_tree::dwgIn(*filer, tree);
    if (es == Acad::eOk)
        es = orv::dwgInProperties(*filer, properties);
    return es;
}

Acad::ErrorStatus ValueHolder::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es == Acad::eOk)
        es = orv::property_tree::dwgOut(*filer, tree);
    if (es == Acad::eOk)
        es = orv::dwgOutProperties(*filer, properties);
    return es;
}

} // namespace testing_support
