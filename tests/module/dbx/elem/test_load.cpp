#include "module/dbx/elem/test_load.h"

#include "module/dbx/elem/plugin_bodies.h"

#include "rxclass.h"

namespace testing_support {

ACRX_DXF_DEFINE_MEMBERS(TestLoad, AcDbEntity, AcDb::kDHL_1015, 0, 0, TESTLOAD, ElementTests)

TestLoad::TestLoad() : LoadBase(static_cast<AcDbObject&>(*this)) {}

Acad::ErrorStatus TestLoad::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    const Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    try {
        return ElementBase::dwgInFields(*filer);
    } catch (...) {
        return Acad::eMakeMeProxy;
    }
}

Acad::ErrorStatus TestLoad::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    return es != Acad::eOk ? es : ElementBase::dwgOutFields(*filer);
}

void TestLoad::acdb_assertWriteEnabled() {
    ++writeChecks;
    assertWriteEnabled();
}

void TestLoad::acdb_assertReadEnabled() const {
    ++readChecks;
    assertReadEnabled();
}

AcRxClass* TestLoad::acdb_isA() const { return isA(); }
int TestLoad::acdb_isNewObject() const { return isNewObject(); }
AcDbObjectId TestLoad::acdb_id() { return objectId(); }

void registerTestLoad() {
    TestLoad::rxInit();
    acrxBuildClassHierarchy();
}

std::string loadVersion(unsigned int number) { return joined({"0" + std::to_string(number), "00 00 00"}); }

std::string loadBody(unsigned int version) {
    const std::string head = joined({loadVersion(version), kLoadType});
    const std::string vertices = joined({kTwo, kFirstVertex, kLastVertex});
    const std::string listOfTexts = joined({kTwo, kTextA, kTextBc});
    switch (version) {
    case 1:
        return joined({head, vertices, kLoadEnd});
    case 2:
        return joined({head, vertices, kTextA, kTextBc, kLoadEnd});
    case 3:
        return joined({head, kLoadCategory, vertices, kTextA, kTextBc, kLoadEnd});
    case 4:
        return joined({head, kLoadCategory, kYes, vertices, kTextA, kTextBc, kLoadEnd});
    case 5:
        return joined({head, kLoadCategory, kYes, vertices, kCases, listOfTexts, kLoadEnd});
    case 6:
        return joined({head, kLoadCategory, kYes, vertices, kCases, listOfTexts, kUnit, kLoadEnd});
    case 7:
        return joined({head, kLoadCategory, kYes, vertices, kCases, listOfTexts, kUnit, kNo, kLoadEnd});
    default:
        return joined({head, kLoadCategory, kYes, kTwo, kFirstVertex, kTextA, kLastVertex, kTextBc, kCases,
                       kUnit, kNo, kLoadEnd});
    }
}

} // namespace testing_support
