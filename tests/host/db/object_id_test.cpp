#include "dbid.h"

#include "db_fixture.h"

#include <algorithm>
#include <random>

namespace {

class ObjectId : public DbFixture {
protected:
    std::vector<AcDbObjectId> put(int count) {
        std::vector<AcDbObjectId> ids;
        for (int i = 0; i < count; ++i)
            ids.push_back(DbFixture::put((L"N" + std::to_wstring(i)).c_str(), L"text"));
        return ids;
    }
};

bool byHandle(const AcDbObjectId& a, const AcDbObjectId& b) {
    return static_cast<Adesk::UInt64>(a.handle()) < static_cast<Adesk::UInt64>(b.handle());
}

} // namespace

TEST_F(ObjectId, OrderIsByHandleInsideOneDatabase) {
    std::vector<AcDbObjectId> ids = put(40);
    std::vector<AcDbObjectId> expected = ids;
    std::sort(expected.begin(), expected.end(), byHandle);
    std::shuffle(ids.begin(), ids.end(), std::mt19937(7));
    std::sort(ids.begin(), ids.end(), c5ObjIdIsLessThan);
    EXPECT_EQ(ids, expected);
}

TEST_F(ObjectId, NoIdIsLessThanItself) {
    const AcDbObjectId id = put(1).front();
    EXPECT_FALSE(c5ObjIdIsLessThan(id, id));
    EXPECT_TRUE(c5ObjIdIsEqualTo(id, id));
    EXPECT_FALSE(c5ObjIdIsLessThan(AcDbObjectId::kNull, AcDbObjectId::kNull));
    EXPECT_TRUE(c5ObjIdIsEqualTo(AcDbObjectId::kNull, AcDbObjectId()));
}

TEST_F(ObjectId, NullComesFirst) {
    const AcDbObjectId id = put(1).front();
    EXPECT_TRUE(c5ObjIdIsLessThan(AcDbObjectId::kNull, id));
    EXPECT_FALSE(c5ObjIdIsLessThan(id, AcDbObjectId::kNull));
    EXPECT_FALSE(c5ObjIdIsEqualTo(id, AcDbObjectId::kNull));
}

TEST_F(ObjectId, EqualHandlesOfTwoDatabasesAreTwoIds) {
    AcDbDatabase other(true);
    const AcDbObjectId first = m_database->layerTableId();
    const AcDbObjectId second = other.layerTableId();
    ASSERT_EQ(first.handle(), second.handle());
    EXPECT_FALSE(c5ObjIdIsEqualTo(first, second));
    EXPECT_TRUE(c5ObjIdIsLessThan(first, second));
    EXPECT_FALSE(c5ObjIdIsLessThan(second, first));
    // The older database's ids come first, whatever their handles.
    const AcDbObjectId high = put(1).front();
    ASSERT_TRUE(byHandle(second, high));
    EXPECT_TRUE(c5ObjIdIsLessThan(high, second));
}

TEST_F(ObjectId, OrderOutlivesTheDatabase) {
    auto other = std::make_unique<AcDbDatabase>(true);
    const AcDbObjectId table = other->layerTableId();
    const AcDbObjectId zero = other->layerZero();
    const bool before = c5ObjIdIsLessThan(table, zero);
    other.reset();
    EXPECT_EQ(c5ObjIdIsLessThan(table, zero), before);
    EXPECT_TRUE(c5ObjIdIsLessThan(m_dictionary, table));
    EXPECT_TRUE(c5ObjIdIsEqualTo(table, table));
}
