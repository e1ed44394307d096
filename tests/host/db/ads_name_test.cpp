#include "db_fixture.h"

namespace {

using AdsName = DbFixture;

TEST_F(AdsName, LeadsFromAnIdToTheSameId) {
    const AcDbObjectId id = put(L"A", L"a");
    ads_name name = {1, 1};
    ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    EXPECT_EQ(name[0], id.asOldId());
    EXPECT_EQ(name[1], 0);
    AcDbObjectId back;
    ASSERT_EQ(acdbGetObjectId(back, name), Acad::eOk);
    EXPECT_EQ(back, id);
}

TEST_F(AdsName, OfTheNullIdIsZerosAndLeadsNowhere) {
    ads_name name = {1, 1};
    EXPECT_EQ(acdbGetAdsName(name, AcDbObjectId()), Acad::eNullObjectId);
    EXPECT_EQ(name[0], 0);
    EXPECT_EQ(name[1], 0);
    AcDbObjectId id = m_dictionary;
    EXPECT_EQ(acdbGetObjectId(id, name), Acad::eInvalidAdsName);
    EXPECT_TRUE(id.isNull());
}

TEST_F(AdsName, ThatSomebodyMadeUpIsRefusedWithoutALookAtWhatIsThere) {
    const AcDbObjectId known = put(L"A", L"a");
    const auto refused = [](Adesk::IntPtr first, Adesk::IntPtr second) {
        const ads_name name = {first, second};
        AcDbObjectId id;
        return acdbGetObjectId(id, name) == Acad::eInvalidAdsName && id.isNull();
    };
    EXPECT_TRUE(refused(1, 0));
    EXPECT_TRUE(refused(-1, 0));
    EXPECT_TRUE(refused(0x7FFFFFFFFFFF0000, 0));
    EXPECT_TRUE(refused(known.asOldId() + 1, 0)); // inside of a stub
    EXPECT_TRUE(refused(known.asOldId(), 1));
    int onTheStack = 0;
    EXPECT_TRUE(refused(reinterpret_cast<Adesk::IntPtr>(&onTheStack), 0));
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, nullptr), Acad::eInvalidAdsName);
}

TEST_F(AdsName, OfAnErasedObjectStillNamesIt) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    object->erase();
    object->close();
    ads_name name;
    ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    AcDbObjectId back;
    EXPECT_EQ(acdbGetObjectId(back, name), Acad::eOk);
    EXPECT_EQ(back, id);
}

TEST_F(AdsName, OutlivesItsDrawingAndIsRefusedThen) {
    ads_name name;
    ASSERT_EQ(acdbGetAdsName(name, put(L"A", L"a")), Acad::eOk);
    m_database.reset();
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, name), Acad::eInvalidAdsName);
    EXPECT_TRUE(id.isNull());
}

} // namespace
