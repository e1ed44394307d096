#include "dbx/doc/ORV_CCSysPar.h"

#include "app/class_table.h"
#include "dbapserv.h"
#include "embedded/memory_filer.h"
#include "embedded/user_coordinate_system.h"
#include "support/syspar_support.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

using orv::EBENE;
using orv::PLATTE;
using orv::RAUM;
using orv::SYSTEM;
using orv::ZUSTAND;
using testing_support::dataOf;
using testing_support::sampleData;
using testing_support::setCode;

namespace {

// A working drawing whose user looks along an axis.
class LookingAlong {
public:
    explicit LookingAlong(const AcGeVector3d& x = AcGeVector3d::kXAxis,
                          const AcGeVector3d& y = AcGeVector3d::kYAxis) {
        EXPECT_EQ(embedded::setUserCoordinateSystem(m_db, {}, x, y), Acad::eOk);
        acdbHostApplicationServices()->setWorkingDatabase(&m_db);
    }
    ~LookingAlong() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

private:
    AcDbDatabase m_db;
};

int iprob(SYSTEM system, int zustand, int flag = 0) {
    return ORV_CCSysPar::get_iprob(system, static_cast<ZUSTAND>(zustand), flag);
}

std::string bytesOf(const char (&field)[16]) { return std::string(field, sizeof field); }

} // namespace

TEST(CCSys, AFreshOneHasTheDefaultsAndIsEmptyOtherwise) {
    const ccsys data;
    EXPECT_EQ(data.igdiv, 10000);
    EXPECT_EQ(data.int5, 2);
    for (const Adesk::Int32 value :
         {data.system, data.zustand, data.numkn, data.maxkn, data.iachs, data.int1, data.norm, data.flag1,
          data.flag2, data.int2, data.int3, data.nation, data.int4, data.int6, data.chunkValue})
        EXPECT_EQ(value, 0);
    EXPECT_EQ(data.double1, 0.0);
    EXPECT_EQ(data.double2, 0.0);
    EXPECT_EQ(data.text1[0], L'\0');
    EXPECT_EQ(data.text2[0], L'\0');
    EXPECT_EQ(data.projectName[0], L'\0');
    EXPECT_EQ(bytesOf(data.codeName), std::string(16, '\0'));
    EXPECT_EQ(bytesOf(data.codeCategory), std::string(16, '\0'));
    EXPECT_EQ(data.versionText, L"");
    EXPECT_EQ(data.versionText2, L"");
    for (const unsigned char byte : data.block1)
        EXPECT_EQ(byte, 0);
}

TEST(CCSys, TheTextsHaveTheirLengths) {
    EXPECT_EQ(sizeof ccsys::text1, 261 * sizeof(wchar_t));
    EXPECT_EQ(sizeof ccsys::text2, 261 * sizeof(wchar_t));
    EXPECT_EQ(sizeof ccsys::projectName, 73 * sizeof(wchar_t));
    EXPECT_EQ(sizeof ccsys::codeName, 16u);
    EXPECT_EQ(sizeof ccsys::codeCategory, 16u);
    EXPECT_EQ(sizeof ccsys::block1, 16u);
}

TEST(CCSys, CopyingTakesEveryMemberAlsoFromItself) {
    ccsys data = sampleData();
    std::wcscpy(data.text2, L"second");
    data.block1[15] = 9;
    data.int6 = 66;
    data.versionText = L"read";
    ccsys copy;
    copy = data;
    testing_support::expectSame(copy, data);
    EXPECT_STREQ(copy.text2, L"second");
    EXPECT_EQ(copy.block1[15], 9);
    EXPECT_EQ(copy.int6, 66);
    EXPECT_EQ(copy.versionText, L"read");
    const ccsys& same = copy;
    copy = same;
    testing_support::expectSame(copy, data);
    EXPECT_EQ(copy.versionText2, data.versionText2);
}

TEST(CCSys, EveryNormHasItsName) {
    const char* const names[] = {"DIN_1045", "EC_2", "BS_8110", "OEN_4700", "SIA_162", "US_AISC"};
    for (int norm = 0; norm < 6; ++norm) {
        ccsys data;
        data.norm = norm;
        data.oldCodeNameFromNorm();
        EXPECT_STREQ(data.codeName, names[norm]);
    }
}

TEST(CCSys, Norm1WritesEc2AndAZeroSoThatALongerNameDoesNotShow) {
    ccsys data;
    setCode(data.codeName, "DIN_1045-1");
    data.norm = 1;
    data.oldCodeNameFromNorm();
    EXPECT_STREQ(data.codeName, "EC_2");
    EXPECT_EQ(std::string(data.codeName, 10), std::string("EC_2\0"
                                                          "045-1",
                                                          10))
        << "and what is behind the zero stays";
}

TEST(CCSys, ANameFromTheNormClearsTheFirstEightBytesOfTheCategory) {
    ccsys data;
    std::memcpy(data.codeCategory, "0123456789abcdef", 16);
    data.oldCodeNameFromNorm();
    EXPECT_EQ(bytesOf(data.codeCategory), std::string(8, '\0') + "89abcdef");
}

TEST(CCSys, AnUnknownNormChangesTheCategoryAlone) {
    for (const int norm : {-1, 6, 2147483647, -2147483647 - 1}) {
        ccsys data;
        setCode(data.codeName, "kept");
        std::memcpy(data.codeCategory, "0123456789abcdef", 16);
        data.norm = norm;
        data.oldCodeNameFromNorm();
        EXPECT_STREQ(data.codeName, "kept");
        EXPECT_EQ(bytesOf(data.codeCategory), std::string(8, '\0') + "89abcdef");
    }
}

TEST(CCSysPar, DataAreCopiedInAndOut) {
    const ccsys data = sampleData();
    const ORV_CCSysPar made(data);
    testing_support::expectSame(dataOf(made), data);
    ORV_CCSysPar set;
    set.setData(data);
    testing_support::expectSame(dataOf(set), data);
    EXPECT_EQ(dataOf(set).chunkValue, data.chunkValue);
    EXPECT_EQ(dataOf(ORV_CCSysPar()).igdiv, 10000);
}

TEST(CCSysPar, CopyingAnObjectTakesTheBinaryFieldAlong) {
    ORV_CCSysPar read;
    testing_support::readBinaryField(read, 0x01020304);
    ORV_CCSysPar copy(sampleData());
    copy = read;
    EXPECT_EQ(testing_support::binaryFieldOf(copy), 0x01020304);
    EXPECT_EQ(dataOf(copy).chunkValue, 0x01020304);
    // The copy has a number of its own.
    testing_support::readBinaryField(read, 5);
    EXPECT_EQ(testing_support::binaryFieldOf(copy), 0x01020304);
    const ORV_CCSysPar& same = copy;
    copy = same;
    EXPECT_EQ(testing_support::binaryFieldOf(copy), 0x01020304);
}

TEST(CCSysPar, SettingDataLeavesTheBinaryField) {
    ORV_CCSysPar object;
    testing_support::readBinaryField(object, 7);
    ccsys data = dataOf(object);
    EXPECT_EQ(data.chunkValue, 7);
    data.chunkValue = 8;
    object.setData(data);
    EXPECT_EQ(dataOf(object).chunkValue, 8);
    EXPECT_EQ(testing_support::binaryFieldOf(object), 7);
}

TEST(CCSysPar, IsRegisteredUnderItsOwnNameForTheLoader) {
    AcRxClass* const cls = ORV_CCSysPar::desc();
    ASSERT_NE(cls, nullptr);
    EXPECT_STREQ(cls->name(), L"ORV_CCSysPar");
    EXPECT_STREQ(cls->dxfName(), L"ORV_CCSysPar");
    EXPECT_STREQ(cls->appName(), L"ORV_OE_LOADER_191");
    EXPECT_EQ(cls->proxyFlags(), 0u);
    EXPECT_EQ(cls->myParent(), AcDbObject::desc());
    int version = 0, maintenance = 0;
    cls->getClassVersion(version, maintenance);
    EXPECT_EQ(version, 21);
    EXPECT_EQ(maintenance, 126);
    const ORV_CCSysPar object;
    EXPECT_EQ(object.isA(), cls);
    EXPECT_EQ(ORV_CCSysPar::cast(&object), &object);
    EXPECT_EQ(ORV_CCSysPar::cast(nullptr), nullptr);
    EXPECT_EQ(ORV_CCSysPar::cast(cls), nullptr);
    delete cls->create();
}

TEST(CCSysPar, IsTheLastClassThatIsRegistered) {
    ASSERT_GE(orv::kRegisteredClassCount, 3);
    EXPECT_STREQ(orv::kRegisteredClasses[orv::kRegisteredClassCount - 1].row->className, L"ORV_CCSysPar");
}

TEST(CCSysPar, ResultsByKindOfSystem) {
    EXPECT_EQ(ORV_CCSysPar::get_igres(RAUM), 127);
    EXPECT_EQ(ORV_CCSysPar::get_igres(EBENE), 35);
    EXPECT_EQ(ORV_CCSysPar::get_igres(PLATTE), 28);
    for (const int other : {-1, 2, 4, 100})
        EXPECT_EQ(ORV_CCSysPar::get_igres(static_cast<SYSTEM>(other)), 0) << other;
}

TEST(CCSysPar, ASystemInSpaceHasProblem0) {
    LookingAlong z;
    EXPECT_EQ(iprob(RAUM, 3, 1), 0);
    for (const int other : {-1, 2, 4, 100})
        EXPECT_EQ(iprob(static_cast<SYSTEM>(other), 1, 1), 0) << other;
}

TEST(CCSysPar, APlaneSystemCountsFrom14AlongTheZAxisAndFrom10Elsewhere) {
    for (const int zustand : {0, 1, 5, 8, 10}) {
        {
            LookingAlong z;
            EXPECT_EQ(iprob(EBENE, zustand), 14 + zustand);
        }
        LookingAlong y(AcGeVector3d::kXAxis, AcGeVector3d::kZAxis);
        EXPECT_EQ(iprob(EBENE, zustand), 10 + zustand);
    }
}

TEST(CCSysPar, APlaneSystemInState9Is10Or14) {
    {
        LookingAlong z;
        EXPECT_EQ(iprob(EBENE, 9), 14);
    }
    LookingAlong x(AcGeVector3d::kYAxis, AcGeVector3d::kZAxis);
    EXPECT_EQ(iprob(EBENE, 9), 10);
}

TEST(CCSysPar, APlateWithFlag1Is31Or35) {
    for (const int flag : {0, 1, 2, 3, -1, -2}) {
        {
            LookingAlong z;
            EXPECT_EQ(iprob(PLATTE, 5, flag), 34 + (flag & 1)) << flag;
        }
        LookingAlong x(AcGeVector3d::kYAxis, AcGeVector3d::kZAxis);
        EXPECT_EQ(iprob(PLATTE, 5, flag), 30 + (flag & 1)) << flag;
    }
}

TEST(CCSysPar, LookingAgainstTheZAxisIsNotAlongIt) {
    LookingAlong down(AcGeVector3d::kYAxis, AcGeVector3d::kXAxis);
    EXPECT_EQ(iprob(EBENE, 0), 10);
    EXPECT_EQ(iprob(PLATTE, 0, 1), 31);
}

TEST(CCSysPar, WithoutADrawingItIsTheZAxis) {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(iprob(EBENE, 0), 14);
    EXPECT_EQ(iprob(PLATTE, 0), 34);
}
