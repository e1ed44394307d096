#include "dbx/doc/doc_data.h"

#include "dbmain.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

TEST(DocData, ANewDrawingGetsACopyOfThePrototype) {
    ORV_CDocData<std::string> data("fresh");
    AcDbDatabase first(true);
    AcDbDatabase second(true);
    data(&first) = "first";
    EXPECT_EQ(data(&second), "fresh");
    EXPECT_EQ(data(&first), "first");
}

TEST(DocData, NullMeansTheWorkingDrawing) {
    ORV_CDocData<int> data(7);
    AcDbDatabase db(true);
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    data(nullptr) = 8;
    EXPECT_EQ(data(&db), 8);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

TEST(DocData, WithoutAWorkingDrawingNullHasAnEntryOfItsOwn) {
    ORV_CDocData<int> data;
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    data(nullptr) = 5;
    AcDbDatabase db(true);
    EXPECT_EQ(data(&db), 0);
    EXPECT_EQ(data(nullptr), 5);
}

TEST(DocData, TheReferenceHoldsWhileOthersAreAsked) {
    ORV_CDocData<int> data;
    AcDbDatabase first(true);
    AcDbDatabase second(true);
    int& kept = data(&first);
    data(&second) = 2;
    kept = 1;
    EXPECT_EQ(data(&first), 1);
    EXPECT_EQ(&data(&first), &kept);
}

TEST(DocData, TheEntryGoesWithItsDrawing) {
    const auto held = std::make_shared<int>(1);
    ORV_CDocData<std::shared_ptr<int>> data;
    AcDbDatabase other(true);
    data(&other) = held;
    {
        AcDbDatabase db(true);
        data(&db) = held;
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_EQ(held.use_count(), 2);
    EXPECT_EQ(data(&other), held);
}

TEST(DocData, AnEntryThatAsksForItsDrawingsEntryAsItGoesGetsAFreshOne) {
    ORV_CDocData<std::shared_ptr<int>> data;
    const auto heldByTheFresh = std::make_shared<int>(2);
    int asked = 0;
    {
        AcDbDatabase db(true);
        data(&db) = std::shared_ptr<int>(new int(1), [&](int* number) {
            delete number;
            ++asked;
            EXPECT_EQ(data(&db), nullptr);
            data(&db) = heldByTheFresh;
        });
    }
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(heldByTheFresh.use_count(), 1) << "it has gone, too";
}

TEST(DocData, ADrawingAtTheSameAddressBeginsAnew) {
    ORV_CDocData<int> data(3);
    alignas(AcDbDatabase) unsigned char place[sizeof(AcDbDatabase)];
    auto* db = new (place) AcDbDatabase(true);
    data(db) = 4;
    db->~AcDbDatabase();
    db = new (place) AcDbDatabase(true);
    EXPECT_EQ(data(db), 3);
    db->~AcDbDatabase();
}

TEST(DocData, WhatEndedIsNotToldOfDrawings) {
    auto data = std::make_unique<ORV_CDocData<int>>();
    AcDbDatabase* const db = new AcDbDatabase(true);
    (*data)(db) = 1;
    data.reset();
    delete db;
}

} // namespace
