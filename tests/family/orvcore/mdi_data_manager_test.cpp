#include "orvcore/mdi_data_manager.h"

#include "dbmain.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace {

struct Data : ORV_CDocDataBase {
    void onDatabaseToBeDestroyed(AcDbDatabase* db) override {
        ended.push_back(db);
        handleWasNull = db->namedObjectsDictionaryId().isNull();
        if (then)
            then();
    }
    std::vector<AcDbDatabase*> ended;
    bool handleWasNull = true;
    std::function<void()> then;
};

struct Attached {
    explicit Attached(Data& data) : m_data(data) { orv_getMDIDataManager()->attach(&m_data); }
    ~Attached() { orv_getMDIDataManager()->detach(&m_data); }
    Data& m_data;
};

} // namespace

TEST(MDIDataManager, TellsOfADrawingThatGoesWhileItIsStillWhole) {
    Data data;
    Attached attached(data);
    auto db = std::make_unique<AcDbDatabase>(true);
    AcDbDatabase* const ended = db.get();
    EXPECT_TRUE(data.ended.empty());
    db.reset();
    EXPECT_EQ(data.ended, std::vector<AcDbDatabase*>{ended});
    EXPECT_FALSE(data.handleWasNull);
}

TEST(MDIDataManager, TellsNobodyWhoIsDetached) {
    Data data;
    { Attached attached(data); }
    { AcDbDatabase db(true); }
    EXPECT_TRUE(data.ended.empty());
}

TEST(MDIDataManager, AttachingTwiceIsAsOnce) {
    Data data;
    Attached attached(data);
    orv_getMDIDataManager()->attach(&data);
    orv_getMDIDataManager()->attach(nullptr);
    { AcDbDatabase db(true); }
    EXPECT_EQ(data.ended.size(), 1u);
}

TEST(MDIDataManager, DetachingWhileADrawingsEndIsToldSpoilsNothing) {
    Data first;
    Data second;
    Data third;
    Attached a(first);
    Attached b(second);
    Attached c(third);
    first.then = [&] {
        orv_getMDIDataManager()->detach(&first);
        orv_getMDIDataManager()->detach(&second);
    };
    { AcDbDatabase db(true); }
    EXPECT_EQ(first.ended.size(), 1u);
    EXPECT_TRUE(second.ended.empty());
    EXPECT_EQ(third.ended.size(), 1u);
    { AcDbDatabase db(true); }
    EXPECT_EQ(first.ended.size(), 1u);
    EXPECT_EQ(third.ended.size(), 2u);
}
