#include "test_record.h"

#include "AcString.h"
#include "embedded/host_start.h"
#include "rxclass.h"

ACRX_DXF_DEFINE_MEMBERS(TestRecord, AcDbObject, AcDb::kDHL_1015, 0, 0, TESTRECORD, DbTests)

void registerTestRecord() {
    embedded::startHost();
    TestRecord::rxInit();
    acrxBuildClassHierarchy();
}

Acad::ErrorStatus TestRecord::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    AcString text;
    filer->readString(text);
    m_text = text.kACharPtr();
    return filer->filerStatus();
}

Acad::ErrorStatus TestRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk)
        return es;
    filer->writeString(m_text.c_str());
    return filer->filerStatus();
}
