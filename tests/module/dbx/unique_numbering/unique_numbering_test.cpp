#include "numbered_drawing.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

using orv::numbering::NumberingBucket;
using testing_support::eraseObject;
using testing_support::ReportRecorder;
using testing_support::Texts;

namespace {

const Texts kTaken = {"ok.second == true"};

boost::optional<AcDbObjectId> known(const AcDbObjectId& id) { return id; }

class Numbering : public testing::Test {
protected:
    NumberedDrawing m_drawing;
    ReportRecorder m_reports;
};

} // namespace

TEST_F(Numbering, TheFirstNumberIsOneAndTheSecondTwoWhateverTheOrderOfIds) {
    const AcDbObjectId a = m_drawing.add(), b = m_drawing.add();
    for (const bool ascending : {true, false}) {
        const auto bucket = m_drawing.acquire();
        EXPECT_EQ(bucket->nextFreeNo(), 1);
        EXPECT_EQ(bucket->getOrCreateNo(ascending ? a : b), 1);
        EXPECT_EQ(bucket->getOrCreateNo(ascending ? b : a), 2);
    }
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Numbering, AThirdIdGetsThreeIfTheSecondNumberHasTheGreatestId) {
    const AcDbObjectId a = m_drawing.add(), b = m_drawing.add(), c = m_drawing.add();
    const auto bucket = m_drawing.acquire();
    bucket->getOrCreateNo(a);
    bucket->getOrCreateNo(b);
    EXPECT_EQ(bucket->getOrCreateNo(c), 3);
    EXPECT_EQ(bucket->getIdByNo(3), known(c));
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Numbering, AThirdIdGetsTwoOnceMoreIfTheFirstNumberHasTheGreatestId) {
    const AcDbObjectId a = m_drawing.add(), b = m_drawing.add(), c = m_drawing.add();
    const auto bucket = m_drawing.acquire();
    bucket->getOrCreateNo(b);
    bucket->getOrCreateNo(a);
    EXPECT_EQ(bucket->getOrCreateNo(c), 2);
    EXPECT_EQ(m_reports.conditions(), kTaken);
    EXPECT_EQ(bucket->getIdByNo(2), known(a));
    EXPECT_EQ(bucket->getOrCreateNo(c), 2) << "it keeps the number that it was given";
    EXPECT_EQ(m_reports.size(), 1u);
}

TEST_F(Numbering, TheNextNumberFollowsTheGreatestIdAndNotTheGreatestNumber) {
    m_drawing.add(7);
    m_drawing.add(9);
    m_drawing.add(3);
    const auto bucket = m_drawing.acquire();
    EXPECT_EQ(bucket->nextFreeNo(), 4);
    EXPECT_EQ(bucket->nextFreeNo(), 4) << "asking changes nothing";
}

TEST_F(Numbering, ANumberThatIsTakenIsReportedAndLeadsToTheOlderElement) {
    const AcDbObjectId a = m_drawing.add(7);
    m_drawing.add(9);
    m_drawing.add(6);
    const auto bucket = m_drawing.acquire();
    EXPECT_EQ(bucket->nextFreeNo(), 7);
    const AcDbObjectId d = m_drawing.add();
    EXPECT_EQ(bucket->getOrCreateNo(d), 7);
    EXPECT_EQ(m_reports.conditions(), kTaken);
    EXPECT_EQ(bucket->getIdByNo(7), known(a));
    EXPECT_EQ(bucket->getOrCreateNo(a), 7);
    EXPECT_EQ(bucket->nextFreeNo(), 8) << "the greatest id has 7 now";
}

TEST_F(Numbering, AllocateLeavesTheNumberThatAnElementHas) {
    const AcDbObjectId a = m_drawing.add(2);
    const auto bucket = m_drawing.acquire();
    EXPECT_FALSE(bucket->allocate(a, 5));
    EXPECT_EQ(m_reports.conditions(), Texts{"find_no == m_impl->id2no.end()"});
    EXPECT_EQ(bucket->getOrCreateNo(a), 2);
    EXPECT_EQ(bucket->getIdByNo(5), boost::none);
}

TEST_F(Numbering, AllocateOfATakenNumberReportsAndIsTrue) {
    const AcDbObjectId a = m_drawing.add(5), b = m_drawing.add();
    const auto bucket = m_drawing.acquire();
    EXPECT_TRUE(bucket->allocate(b, 5));
    EXPECT_EQ(m_reports.conditions(), kTaken);
    EXPECT_EQ(bucket->getOrCreateNo(b), 5);
    EXPECT_EQ(bucket->getIdByNo(5), known(a));
}

TEST_F(Numbering, AllocateEntersAFreeNumberBothWays) {
    const AcDbObjectId a = m_drawing.add();
    const auto bucket = m_drawing.acquire();
    EXPECT_TRUE(bucket->allocate(a, -4));
    EXPECT_EQ(bucket->getIdByNo(-4), known(a));
    EXPECT_EQ(bucket->getOrCreateNo(a), -4);
    EXPECT_EQ(bucket->nextFreeNo(), -3);
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Numbering, AnUnknownNumberLeadsNowhere) {
    m_drawing.add(1);
    EXPECT_EQ(m_drawing.acquire()->getIdByNo(2), boost::none);
}

TEST_F(Numbering, CopiesShareOneTable) {
    const AcDbObjectId a = m_drawing.add();
    const auto bucket = m_drawing.acquire();
    const auto other = m_drawing.acquire();
    NumberingBucket copy(*bucket);
    EXPECT_EQ(bucket->getOrCreateNo(a), 1);
    EXPECT_EQ(copy.getIdByNo(1), known(a));
    EXPECT_EQ(other->getIdByNo(1), boost::none) << "two that are acquired know nothing of one another";
    *other = copy;
    EXPECT_EQ(other->getIdByNo(1), known(a));
}

TEST_F(Numbering, TheTableLivesAsLongAsItsLastCopy) {
    const AcDbObjectId a = m_drawing.add(8);
    auto bucket = m_drawing.acquire();
    NumberingBucket copy(*bucket);
    bucket.reset();
    EXPECT_EQ(copy.getIdByNo(8), known(a));
}

TEST_F(Numbering, AHeldBucketKeepsTheNumberOfAnErasedElement) {
    const AcDbObjectId a = m_drawing.add(1);
    const auto bucket = m_drawing.acquire();
    eraseObject(a);
    EXPECT_EQ(bucket->getIdByNo(1), known(a));
    EXPECT_EQ(bucket->nextFreeNo(), 2);
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), 1) << "for the next one the number is free again";
}

TEST_F(Numbering, ARenumberedElementIsKnownToTheNextBucketOnly) {
    const AcDbObjectId a = m_drawing.add(1);
    const auto bucket = m_drawing.acquire();
    m_drawing.numbers[a] = 12;
    EXPECT_EQ(bucket->getOrCreateNo(a), 1);
    EXPECT_EQ(m_drawing.acquire()->getOrCreateNo(a), 12);
}

TEST_F(Numbering, ABucketOutlivesItsDrawing) {
    NumberedDrawing::Bucket bucket;
    AcDbObjectId id;
    {
        AcDbDatabase db(true);
        acdbHostApplicationServices()->setWorkingDatabase(&db);
        bucket = NumberingBucket::acquire(&db, {});
        id = db.layerZero();
        bucket->allocate(id, 3);
        acdbHostApplicationServices()->setWorkingDatabase(&m_drawing.db);
    }
    EXPECT_FALSE(id.isValid());
    EXPECT_EQ(bucket->getIdByNo(3), known(id));
    EXPECT_EQ(bucket->nextFreeNo(), 4);
}

TEST_F(Numbering, BehindTheGreatestNumberOfAllComesTheSmallest) {
    m_drawing.add(INT_MAX);
    EXPECT_EQ(m_drawing.acquire()->nextFreeNo(), INT_MIN);
}
