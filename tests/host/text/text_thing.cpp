#include "text_thing.h"

#include "embedded/host_start.h"
#include "rxclass.h"
#include "text_fixture.h"

ACRX_DXF_DEFINE_MEMBERS(TextThing, AcDbObject, AcDb::kDHL_1015, 0, 0, TEXTTHING, TextTests)
ACRX_DXF_DEFINE_MEMBERS(DerivedTextThing, TextThing, AcDb::kDHL_1015, 0, 0, DERIVEDTEXTTHING, TextTests)
ACRX_DXF_DEFINE_MEMBERS(FirstTwin, AcDbObject, AcDb::kDHL_1015, 0, 0, TWIN, TextTests)
ACRX_DXF_DEFINE_MEMBERS(SecondTwin, AcDbObject, AcDb::kDHL_1015, 0, 0, TWIN, TextTests)
ACRX_NO_CONS_DEFINE_MEMBERS(NamelessThing, AcDbObject)

void registerTextThings() {
    embedded::startHost();
    TextThing::rxInit();
    DerivedTextThing::rxInit();
    FirstTwin::rxInit();
    SecondTwin::rxInit();
    NamelessThing::rxInit();
    acrxBuildClassHierarchy();
}

Acad::ErrorStatus TextThing::dxfOutFields(AcDbDxfFiler* filer) const {
    if (refusal != Acad::eOk)
        return refusal;
    const Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk)
        return es;
    filer->writeItem(AcDb::kDxfSubclass, L"TextThing");
    filer->writeInt32(AcDb::kDxfInt32, number);
    filer->writeString(AcDb::kDxfText, text.c_str());
    filer->writeObjectId(AcDb::kDxfHardPointerId, reference);
    return filer->filerStatus();
}

// Takes groups until one is not its own.
Acad::ErrorStatus TextThing::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus es = AcDbObject::dxfInFields(filer);
    if (es != Acad::eOk || !filer->atSubclassData(L"TextThing"))
        return filer->filerStatus();
    for (;;) {
        const testing_text::Value value(acutNewRb(0));
        if (filer->readResBuf(value.get()) != Acad::eOk)
            break;
        if (value->restype == AcDb::kDxfInt32) {
            number = value->resval.rlong;
        } else if (value->restype == AcDb::kDxfText) {
            text = value->resval.rstring;
        } else if (value->restype == AcDb::kDxfHardPointerId) {
            reference.setFromOldId(value->resval.rlname[0]);
        } else {
            filer->pushBackItem();
            break;
        }
    }
    return filer->filerStatus();
}

Acad::ErrorStatus DerivedTextThing::dxfOutFields(AcDbDxfFiler* filer) const {
    TextThing::dxfOutFields(filer);
    filer->writeItem(AcDb::kDxfSubclass, L"DerivedTextThing");
    return filer->writeDouble(AcDb::kDxfReal, real);
}

Acad::ErrorStatus DerivedTextThing::dxfInFields(AcDbDxfFiler* filer) {
    TextThing::dxfInFields(filer);
    if (!filer->atSubclassData(L"DerivedTextThing"))
        return filer->filerStatus();
    const testing_text::Value value = testing_text::read(*filer);
    if (value)
        real = value->resval.rreal;
    return filer->filerStatus();
}
