// Which elements get into a bucket.

#include "embedded/session.h"
#include "numbered_drawing.h"
#include "orvcore/transaction_manager.h"
#include "support/beep_recorder.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

using orv::numbering::NumberingBucket;
using testing_support::BeepRecorder;
using testing_support::eraseObject;
using testing_support::ReportRecorder;
using testing_support::Texts;

namespace {

boost::optional<AcDbObjectId> known(const AcDbObjectId& id) { return id; }

// A point of which nobody can learn the class while `s_failing`.
class FailingPoint : public AcDbPoint {
public:
    AcRxClass* isA() const override {
        if (s_failing)
            throw 4711;
        return AcDbPoint::isA();
    }
    static bool s_failing;
};
bool FailingPoint::s_failing = false;

class NumberingScan : public testing::Test {
protected:
    NumberedDrawing m_drawing;
    ReportRecorder m_reports;
};

} // namespace

TEST_F(NumberingScan, AsksForEachElementOnceInTheOrderOfIds) {
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < 5; ++i)
        ids.push_back(m_drawing.add());
    m_drawing.acquire();
    EXPECT_EQ(m_drawing.asked, ids);
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
}

TEST_F(NumberingScan, TakesEntitiesOfEveryClass) {
    const AcDbObjectId point = m_drawing.add(), line = m_drawing.add(new AcDbLine);
    m_drawing.acquire();
    EXPECT_EQ(m_drawing.asked, (std::vector<AcDbObjectId>{point, line}));
}

TEST_F(NumberingScan, WithoutAnAnswerTheBucketIsEmpty) {
    const AcDbObjectId a = m_drawing.add();
    const auto bucket = m_drawing.acquire();
    EXPECT_EQ(m_drawing.asked.size(), 1u);
    EXPECT_EQ(bucket->nextFreeNo(), 1);
    EXPECT_TRUE(bucket->allocate(a, 4)) << "it was not in the table";
}

TEST_F(NumberingScan, PassesOverErasedElements) {
    const AcDbObjectId a = m_drawing.add(1), b = m_drawing.add(2);
    eraseObject(b);
    const auto bucket = m_drawing.acquire();
    EXPECT_EQ(m_drawing.asked, std::vector<AcDbObjectId>{a});
    EXPECT_EQ(bucket->getIdByNo(2), boost::none);
}

TEST_F(NumberingScan, PassesOverWhatNamesAnErasedOwner) {
    const AcDbObjectId a = m_drawing.add(1), b = m_drawing.add(2), c = m_drawing.add(3),
                       gone = m_drawing.add();
    for (const auto& [id, owner] : {std::make_pair(b, gone), std::make_pair(c, a)}) {
        AcDbObject* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
        entity->setOwnerId(owner);
        entity->close();
    }
    eraseObject(gone);
    m_drawing.acquire();
    EXPECT_EQ(m_drawing.asked, (std::vector<AcDbObjectId>{a, c}));
}

TEST_F(NumberingScan, FindsAnElementAgainThatUndoBroughtBack) {
    const AcDbObjectId a = m_drawing.add(6);
    m_drawing.db.startUndoRecord();
    eraseObject(a);
    EXPECT_EQ(m_drawing.acquire()->getIdByNo(6), boost::none);
    ASSERT_TRUE(embedded::undo(m_drawing.db));
    EXPECT_EQ(m_drawing.acquire()->getIdByNo(6), known(a));
}

TEST_F(NumberingScan, PassesOverPaperSpaceAndBlocks) {
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(m_drawing.db.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* const block = new AcDbBlockTableRecord;
    block->setName(L"HINGE");
    ASSERT_EQ(table->add(block), Acad::eOk);
    block->close();
    table->close();
    const AcDbObjectId onPaper = m_drawing.add(new AcDbPoint, ACDB_PAPER_SPACE);
    const AcDbObjectId inBlock = m_drawing.add(new AcDbPoint, L"HINGE");
    m_drawing.numbers = {{onPaper, 1}, {inBlock, 2}};
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), 1);
    EXPECT_TRUE(m_drawing.asked.empty());
}

TEST_F(NumberingScan, AnElementThatCannotBeOpenedIsLeftOutAndTheOthersAreNot) {
    const AcDbObjectId a = m_drawing.add(1), b = m_drawing.add(2), c = m_drawing.add(3);
    AcDbObject* held = nullptr;
    ASSERT_EQ(acdbOpenObject(held, b, AcDb::kForWrite), Acad::eOk);
    const auto bucket = m_drawing.acquire();
    held->close();
    EXPECT_EQ(m_drawing.asked, (std::vector<AcDbObjectId>{a, c}));
    EXPECT_EQ(bucket->getIdByNo(2), boost::none);
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(NumberingScan, LeavesNothingOpen) {
    const AcDbObjectId a = m_drawing.add();
    m_drawing.acquire();
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(m_drawing.db.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
    AcDbObject* element = nullptr;
    EXPECT_EQ(acdbOpenObject(element, a, AcDb::kForWrite), Acad::eOk);
    element->close();
    space->close();
    table->close();
}

TEST_F(NumberingScan, InATransactionThatRunsAllStaysOpenForReadUntilItsEnd) {
    const AcDbObjectId a = m_drawing.add();
    AcDbObject* element = nullptr;
    {
        ORV_CDBTransactionManager manager(&m_drawing.db, false);
        m_drawing.acquire();
        EXPECT_EQ(acdbOpenObject(element, a, AcDb::kForWrite), Acad::eWasOpenForRead);
        EXPECT_EQ(manager.getObject(element, a, AcDb::kForWrite, false, true), Acad::eOk);
    }
    ASSERT_EQ(acdbOpenObject(element, a, AcDb::kForWrite), Acad::eOk);
    element->close();
}

TEST_F(NumberingScan, OfTwoWithOneNumberTheFirstKeepsItAndBothHaveIt) {
    const AcDbObjectId a = m_drawing.add(5), b = m_drawing.add(5);
    const auto bucket = m_drawing.acquire();
    EXPECT_EQ(m_reports.conditions(), Texts{"ok.second == true"});
    EXPECT_EQ(bucket->getIdByNo(5), known(a));
    EXPECT_EQ(bucket->getOrCreateNo(b), 5);
    EXPECT_EQ(bucket->nextFreeNo(), 6);
}

TEST_F(NumberingScan, WalksTheWorkingDrawingWhateverIsPassed) {
    const AcDbObjectId a = m_drawing.add(1);
    AcDbDatabase other(true);
    EXPECT_EQ(NumberingBucket::acquire(&other, m_drawing.callback())->getIdByNo(1), known(a));
    EXPECT_EQ(NumberingBucket::acquire(nullptr, m_drawing.callback())->getIdByNo(1), known(a));
    acdbHostApplicationServices()->setWorkingDatabase(&other);
    EXPECT_EQ(NumberingBucket::acquire(&m_drawing.db, m_drawing.callback())->getIdByNo(1), boost::none);
}

TEST_F(NumberingScan, WithoutAWorkingDrawingTheBucketIsEmpty) {
    m_drawing.add(1);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), 1);
    EXPECT_TRUE(m_drawing.asked.empty());
}

TEST_F(NumberingScan, ABlockTableThatCannotBeOpenedGivesAnEmptyBucket) {
    m_drawing.add(1);
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(m_drawing.db.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), 1);
    table->close();
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), 2);
}

TEST_F(NumberingScan, AModelSpaceThatCannotBeOpenedGivesAnEmptyBucket) {
    m_drawing.add(1);
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(m_drawing.db.getBlockTable(table, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* space = nullptr;
    ASSERT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
    table->close();
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), 1);
    ASSERT_EQ(m_drawing.db.getBlockTable(table, AcDb::kForWrite), Acad::eOk) << "the scan has closed it";
    table->close();
    space->close();
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), 2);
}

TEST_F(NumberingScan, AnEmptyCallbackFailsAtTheFirstElementOnly) {
    EXPECT_EQ(NumberingBucket::acquire(&m_drawing.db, {})->nextFreeNo(), 1);
    m_drawing.add();
    try {
        NumberingBucket::acquire(&m_drawing.db, {});
        ADD_FAILURE() << "nothing was thrown";
    } catch (const boost::bad_function_call& e) {
        EXPECT_STREQ(e.what(), "call to empty boost::function");
    }
}

TEST_F(NumberingScan, WhatTheCallbackThrowsComesOut) {
    m_drawing.add();
    EXPECT_THROW(NumberingBucket::acquire(
                     &m_drawing.db,
                     [](const AcDbObjectId&) -> boost::optional<int> { throw std::runtime_error("no"); }),
                 std::runtime_error);
}

TEST_F(NumberingScan, TheCallbackIsNotKept) {
    const auto witness = std::make_shared<int>(0);
    const auto bucket = NumberingBucket::acquire(
        &m_drawing.db, [witness](const AcDbObjectId&) { return boost::optional<int>(*witness); });
    EXPECT_EQ(witness.use_count(), 1);
    EXPECT_EQ(bucket->nextFreeNo(), 1);
}

TEST_F(NumberingScan, AnExceptionEndsTheScanTellsOnceAndKeepsWhatWasFound) {
    const AcDbObjectId a = m_drawing.add(1);
    m_drawing.add(new FailingPoint);
    const AcDbObjectId c = m_drawing.add(3);
    BeepRecorder beep;
    for (int round = 0; round < 2; ++round) {
        FailingPoint::s_failing = true;
        const auto bucket = m_drawing.acquire();
        FailingPoint::s_failing = false;
        EXPECT_EQ(m_drawing.asked, std::vector<AcDbObjectId>{a});
        EXPECT_EQ(bucket->nextFreeNo(), 2);
        ASSERT_EQ(beep.lines().size(), 1u);
    }
    EXPECT_EQ(beep.lines().front().find(L"Kritischer Fehler"), 0u);
    EXPECT_EQ(m_drawing.acquire()->getIdByNo(3), known(c)) << "nothing was left open";
}
