#include "dbx/elem/MovedElements.h"

#include "dbapserv.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>

using orv::MovedElements;
using testing_support::ReportRecorder;
using testing_support::Texts;

namespace {

using Ids = std::set<AcDbObjectId>;
using IdsByClass = std::map<AcRxClass*, Ids>;

const char* const kForeign = "id.database() == acdbHostApplicationServices()->workingDatabase()";
const char* const kNoObject = "!id.isNull() && id.isValid()";

class MovedElementsTest : public testing::Test {
protected:
    MovedElementsTest() {
        acdbHostApplicationServices()->setWorkingDatabase(&m_db);
        a = m_db.layerZero();
        b = m_db.namedObjectsDictionaryId();
    }
    ~MovedElementsTest() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    AcDbDatabase m_db{true};
    AcDbObjectId a, b;
    MovedElements m_moved;
    ReportRecorder m_reports;
};

} // namespace

TEST_F(MovedElementsTest, AFreshListIsEmpty) {
    EXPECT_TRUE(m_moved.getAllMovedElements().empty());
    EXPECT_TRUE(m_moved.getAllMovedElementsByClass().empty());
    EXPECT_TRUE(m_moved.getHandlers().empty());
    EXPECT_FALSE(m_moved.isPostCloneProcessingQueued());
}

TEST_F(MovedElementsTest, NotesElementsUnderTheirClasses) {
    m_moved.add(a, AcDbPoint::desc());
    m_moved.add(b, AcDbPoint::desc());
    m_moved.add(b, AcDbPoint::desc());
    EXPECT_EQ(m_moved.getAllMovedElements(), (Ids{a, b}));
    EXPECT_EQ(m_moved.getAllMovedElementsByClass(), (IdsByClass{{AcDbPoint::desc(), {a, b}}}));
    EXPECT_TRUE(m_moved.getHandlers().empty());
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(MovedElementsTest, AnElementUnderTwoClassesIsInBothAndOnceInAll) {
    m_moved.add(a, AcDbPoint::desc());
    m_moved.add(a, AcDbLine::desc());
    EXPECT_EQ(m_moved.getAllMovedElements(), Ids{a});
    EXPECT_EQ(m_moved.getAllMovedElementsByClass(),
              (IdsByClass{{AcDbPoint::desc(), {a}}, {AcDbLine::desc(), {a}}}));
}

TEST_F(MovedElementsTest, ANullIdIsReportedAndLeftOut) {
    m_moved.add(AcDbObjectId(), AcDbPoint::desc());
    EXPECT_EQ(m_reports.conditions(), (Texts{kForeign, kNoObject}));
    EXPECT_TRUE(m_moved.getAllMovedElements().empty());
    EXPECT_TRUE(m_moved.getAllMovedElementsByClass().empty());
}

TEST_F(MovedElementsTest, AnIdWhoseDrawingHasGoneIsReportedAndLeftOut) {
    const AcDbObjectId gone = std::make_unique<AcDbDatabase>(true)->layerZero();
    m_moved.add(gone, AcDbPoint::desc());
    EXPECT_EQ(m_reports.conditions(), (Texts{kForeign, kNoObject}));
    EXPECT_TRUE(m_moved.getAllMovedElements().empty());
}

TEST_F(MovedElementsTest, AnIdOfAnotherDrawingIsReportedAndNotedAllTheSame) {
    AcDbDatabase other(true);
    m_moved.add(other.layerZero(), AcDbPoint::desc());
    EXPECT_EQ(m_reports.conditions(), Texts{kForeign});
    EXPECT_EQ(m_moved.getAllMovedElements(), Ids{other.layerZero()});
}

TEST_F(MovedElementsTest, AHandlerComesWithTheElementsOwnClass) {
    int calls = 0;
    m_moved.add(a, [&] { ++calls; });
    EXPECT_EQ(m_moved.getAllMovedElementsByClass(), (IdsByClass{{AcDbLayerTableRecord::desc(), {a}}}));
    ASSERT_EQ(m_moved.getHandlers().count(a), 1u);
    EXPECT_EQ(calls, 0);
    m_moved.getHandlers().at(a)();
    EXPECT_EQ(calls, 1);
}

TEST_F(MovedElementsTest, TheFirstOfTwoHandlersStays) {
    int first = 0, second = 0;
    m_moved.add(a, [&] { ++first; });
    m_moved.add(a, [&] { ++second; });
    ASSERT_EQ(m_moved.getHandlers().size(), 1u);
    m_moved.getHandlers().at(a)();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
}

TEST_F(MovedElementsTest, AHandlerForANullIdIsReportedAndEntered) {
    m_moved.add(AcDbObjectId(), [] {});
    EXPECT_EQ(m_reports.conditions(), (Texts{kForeign, kNoObject}));
    EXPECT_TRUE(m_moved.getAllMovedElements().empty());
    EXPECT_TRUE(m_moved.getAllMovedElementsByClass().empty());
    EXPECT_EQ(m_moved.getHandlers().count(AcDbObjectId()), 1u);
}

TEST_F(MovedElementsTest, ClearForgetsAllAndTheRequest) {
    int calls = 0;
    m_moved.add(a, [&] { ++calls; });
    m_moved.queuePostCloneProcessing();
    EXPECT_TRUE(m_moved.isPostCloneProcessingQueued());
    m_moved.clear();
    EXPECT_FALSE(m_moved.isPostCloneProcessingQueued());
    EXPECT_TRUE(m_moved.getAllMovedElements().empty());
    EXPECT_TRUE(m_moved.getAllMovedElementsByClass().empty());
    EXPECT_TRUE(m_moved.getHandlers().empty());
    EXPECT_EQ(calls, 0);
}

TEST_F(MovedElementsTest, WhatIsNotedWhileHandlersGoStaysNoted) {
    // A handler that notes another element when it ends.
    std::shared_ptr<int> ending(new int(0), [this](int* number) {
        delete number;
        m_moved.add(b, [] {});
        m_moved.queuePostCloneProcessing();
    });
    m_moved.add(a, [ending] {});
    ending.reset();
    m_moved.clear();
    EXPECT_EQ(m_moved.getAllMovedElements(), Ids{b});
    EXPECT_EQ(m_moved.getHandlers().size(), 1u);
    EXPECT_EQ(m_moved.getHandlers().count(b), 1u);
    EXPECT_TRUE(m_moved.isPostCloneProcessingQueued());
}

TEST_F(MovedElementsTest, EachDrawingHasAListThatStays) {
    AcDbDatabase other(true);
    MovedElements& here = MovedElements::instance(&m_db);
    MovedElements& there = MovedElements::instance(&other);
    EXPECT_NE(&here, &there);
    here.queuePostCloneProcessing();
    EXPECT_FALSE(there.isPostCloneProcessingQueued());
    EXPECT_EQ(&MovedElements::instance(&m_db), &here);
    EXPECT_EQ(&MovedElements::instance(&other), &there);
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(MovedElementsTest, NullIsReportedAndTakenForTheWorkingDrawing) {
    MovedElements& here = MovedElements::instance(&m_db);
    EXPECT_EQ(&MovedElements::instance(nullptr), &here);
    EXPECT_EQ(m_reports.conditions(), Texts{"db != 0"});
}

TEST_F(MovedElementsTest, WithoutAWorkingDrawingNullHasAListOfItsOwn) {
    MovedElements& here = MovedElements::instance(&m_db);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    MovedElements& none = MovedElements::instance(nullptr);
    none.queuePostCloneProcessing();
    EXPECT_TRUE(MovedElements::instance(nullptr).isPostCloneProcessingQueued());
    none.clear();
    acdbHostApplicationServices()->setWorkingDatabase(&m_db);
    EXPECT_NE(&none, &here);
    EXPECT_EQ(&MovedElements::instance(nullptr), &here);
    EXPECT_EQ(m_reports.conditions(), Texts(3, "db != 0"));
}

TEST_F(MovedElementsTest, WithItsDrawingTheListGoesAndNoHandlerRuns) {
    alignas(AcDbDatabase) unsigned char place[sizeof(AcDbDatabase)];
    auto* db = new (place) AcDbDatabase(true);
    acdbHostApplicationServices()->setWorkingDatabase(db);
    const auto calls = std::make_shared<int>(0);
    MovedElements::instance(db).add(db->layerZero(), [calls] { ++*calls; });
    EXPECT_EQ(calls.use_count(), 2);
    acdbHostApplicationServices()->setWorkingDatabase(&m_db);
    db->~AcDbDatabase();
    EXPECT_EQ(calls.use_count(), 1) << "the handler has gone";
    EXPECT_EQ(*calls, 0);
    db = new (place) AcDbDatabase(true);
    EXPECT_TRUE(MovedElements::instance(db).getAllMovedElements().empty());
    EXPECT_TRUE(MovedElements::instance(db).getHandlers().empty());
    db->~AcDbDatabase();
}
