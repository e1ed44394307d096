#include "dbx/cdb/nod_cdb.h"

#include "app/log.h"
#include "dbproxy.h"
#include "dbtrans.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"
#include "dbx/cdb/copy_sync.h"
#include "dbx/cdb/read_blob.h"
#include "embedded/session.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <memory>
#include <string>

using namespace orv::cdb;
using namespace testing_support;
using Names = std::vector<std::wstring>;

namespace {

class NodCdbTest : public testing::Test {
protected:
    NodCdbTest() { EXPECT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE); }

    cd_error_t write(int kwh, int kwl, const std::string& bytes, CdbReadWriteMode mode) {
        return cdb.write(kwh, kwl, bytes.data(), bytes.size(), mode);
    }
    // The bytes, or the status in angle brackets.
    std::string read(int kwh, int kwl, CdbReadWriteMode mode) {
        char buffer[1000];
        std::size_t len = sizeof buffer;
        const cd_error_t err = cdb.read(kwh, kwl, buffer, len, mode);
        return err == CD_ERR_NONE ? std::string(buffer, len) : "<" + std::to_string(err) + ">";
    }
    AcDbObjectId keyDict(const wchar_t* kwh, const wchar_t* kwl) { return entryAt(drawing.base, {kwh, kwl}); }

    StoreDrawing drawing;
    NodCdb cdb{&drawing.db};
};

} // namespace

TEST_F(NodCdbTest, RecordsOfAKeyLieUnderTheirPositionsWithSixDigits) {
    EXPECT_EQ(write(10, 0, "abc", kFirstRecord), CD_ERR_NONE);
    EXPECT_EQ(write(10, 0, "defg", kNextRecord), CD_ERR_NONE);
    EXPECT_EQ(namesOf(keyDict(L"10", L"0")), (Names{L"000000", L"000001"}));
    EXPECT_EQ(write(10, 0, "x", kFirstRecord), CD_ERR_NONE);
    EXPECT_EQ(namesOf(keyDict(L"10", L"0")), (Names{L"000000"}));
    EXPECT_EQ(read(10, 0, kFirstRecord), "x");
}

TEST_F(NodCdbTest, AFullRewriteGivesTheKeyANewDictionary) {
    write(10, 0, "a", kFirstRecord);
    const AcDbObjectId before = keyDict(L"10", L"0");
    write(10, 0, "b", kFirstRecord);
    EXPECT_NE(keyDict(L"10", L"0"), before);
    EXPECT_TRUE(before.isErased());
}

TEST_F(NodCdbTest, ReadingOnWalksTheSequenceAndStepsPastItsEnd) {
    write(10, 0, "abc", kFirstRecord);
    write(10, 0, "defg", kNextRecord);
    EXPECT_EQ(read(10, 0, kFirstRecord), "abc");
    EXPECT_EQ(read(10, 0, kNextRecord), "defg");
    EXPECT_EQ(read(10, 0, kNextRecord), "<3>");
    // Now at 2: a record there is found without a step, one at 3 by the next.
    putObject(keyDict(L"10", L"0"), L"000002", new orv::ORV_CdbRecord("two", 3));
    putObject(keyDict(L"10", L"0"), L"000003", new orv::ORV_CdbRecord("three", 5));
    EXPECT_EQ(read(10, 0, kSameRecord), "two");
    EXPECT_EQ(read(10, 0, kNextRecord), "three");
}

TEST_F(NodCdbTest, AnyOtherModeStaysWhereItIs) {
    write(10, 0, "abc", kFirstRecord);
    write(10, 0, "d", kNextRecord);
    EXPECT_EQ(read(10, 0, static_cast<CdbReadWriteMode>(42)), "d");
}

TEST_F(NodCdbTest, ReadOfAMissingKeyLeavesThePositionAsItWas) {
    write(10, 0, "a", kFirstRecord);
    write(10, 0, "b", kNextRecord);
    write(10, 0, "c", kNextRecord);
    read(10, 0, kFirstRecord);
    EXPECT_EQ(read(10, 99, kNextRecord), "<3>");
    EXPECT_EQ(read(99, 0, kNextRecord), "<3>");
    EXPECT_EQ(read(10, 0, kNextRecord), "b");
}

TEST_F(NodCdbTest, AnOldRecordReadsLikeANewOneAndARewriteReplacesIt) {
    const AcDbObjectId key = subDictionary(subDictionary(drawing.base, L"4"), L"7");
    const AcDbObjectId old = putObject(key, L"000000", new ORV_CObjCdbRecord("old bytes", 9));
    EXPECT_EQ(read(4, 7, kFirstRecord), "old bytes");
    EXPECT_EQ(write(4, 7, "new", kSameRecord), CD_ERR_NONE);
    EXPECT_EQ(read(4, 7, kFirstRecord), "new");
    EXPECT_EQ(entryOf(key, L"000000").objectClass(), orv::ORV_CdbRecord::desc());
    EXPECT_TRUE(old.isErased());
    EXPECT_EQ(keyDict(L"4", L"7"), key) << "the key's dictionary stays";
}

TEST_F(NodCdbTest, ARecordThatIsAProxyIsReportedAndFails) {
    const AcDbObjectId key = subDictionary(subDictionary(drawing.base, L"4"), L"7");
    putObject(key, L"000000", new AcDbProxyObject);
    putObject(key, L"000001", new AcDbDictionary);
    ReportRecorder recorder;
    EXPECT_EQ(read(4, 7, kFirstRecord), "<99>");
    EXPECT_EQ(read(4, 7, kNextRecord), "<99>");
    EXPECT_EQ(recorder.conditions(), (Texts{"oldrec", "oldrec"}));
}

TEST_F(NodCdbTest, ReadAnswersByTheBuffersSize) {
    write(1, 1, "abcdef", kFirstRecord);
    char buffer[8] = "-------";
    std::size_t len = 4;
    EXPECT_EQ(cdb.read(1, 1, buffer, len, kFirstRecord), CD_ERR_TRUNCATED);
    EXPECT_EQ(len, 6u);
    EXPECT_STREQ(buffer, "abcd---");
    len = 0;
    EXPECT_EQ(cdb.read(1, 1, nullptr, len, kFirstRecord), CD_ERR_TRUNCATED);
    EXPECT_EQ(len, 6u);
    const AcDbObjectId key = keyDict(L"1", L"1");
    putObject(key, L"000001", new orv::ORV_CdbRecord);
    len = 8;
    EXPECT_EQ(cdb.read(1, 1, buffer, len, kNextRecord), CD_ERR_EMPTY);
}

TEST_F(NodCdbTest, AFirstWriteCallsTheStoresOwnDel) {
    struct Own : NodCdb {
        using NodCdb::NodCdb;
        cd_error_t del(int kwh, int kwl) override {
            deleted.push_back(std::to_string(kwh) + "/" + std::to_string(kwl));
            return NodCdb::del(kwh, kwl);
        }
        Texts deleted;
    } own(&drawing.db);
    ASSERT_EQ(own.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
    EXPECT_EQ(own.write(1, 2, "a", 1, kFirstRecord), CD_ERR_NONE);
    EXPECT_EQ(own.write(1, 2, "b", 1, kNextRecord), CD_ERR_NONE);
    EXPECT_EQ(own.deleted, Texts{"1/2"});
    EXPECT_EQ(namesOf(keyDict(L"1", L"2")), (Names{L"000000", L"000001"}));
}

TEST_F(NodCdbTest, AGroupThatSomebodyElseReadsRefusesAFirstWrite) {
    write(3, 5, "x", kFirstRecord);
    write(3, 5, "second", kNextRecord);
    AcDbObject* group = nullptr;
    ASSERT_EQ(acdbOpenObject(group, entryOf(drawing.base, L"3"), AcDb::kForRead), Acad::eOk);
    ReportRecorder recorder;
    EXPECT_EQ(write(3, 5, "y", kFirstRecord), CD_ERR_NONE) << "the key is there and is written to in place";
    EXPECT_EQ(write(3, 6, "y", kFirstRecord), CD_ERR_NOTFOUND);
    EXPECT_EQ(recorder.conditions(), (Texts{"dictKwh", "dictKwh"}));
    group->close();
    EXPECT_EQ(read(3, 5, kFirstRecord), "y");
    EXPECT_EQ(read(3, 5, kNextRecord), "second") << "the key could not be deleted first";
    EXPECT_EQ(write(3, 6, "y", kFirstRecord), CD_ERR_NONE);
}

TEST_F(NodCdbTest, DelOfANegativeEntryRemovesTheGroup) {
    write(5, 1, "a", kFirstRecord);
    write(5, 2, "b", kFirstRecord);
    write(6, 1, "c", kFirstRecord);
    EXPECT_EQ(cdb.del(5, -1), CD_ERR_NONE);
    EXPECT_EQ(namesOf(drawing.base), (Names{L"6"}));
    EXPECT_EQ(cdb.del(5, -1), CD_ERR_NOTFOUND);
    EXPECT_EQ(read(6, 1, kFirstRecord), "c");
}

TEST_F(NodCdbTest, DelInAMissingGroupLeavesAnEmptyGroupBehind) {
    std::set<int> keys;
    EXPECT_EQ(cdb.getKeysForKwh(5, keys), CD_ERR_NOTFOUND);
    EXPECT_EQ(cdb.del(5, 3), CD_ERR_NOTFOUND);
    EXPECT_EQ(cdb.getKeysForKwh(5, keys), CD_ERR_NONE);
    EXPECT_TRUE(keys.empty());
}

TEST_F(NodCdbTest, DelRemovesAKeyWithItsRecords) {
    write(5, 3, "a", kFirstRecord);
    write(5, 3, "b", kNextRecord);
    const AcDbObjectId record = entryOf(keyDict(L"5", L"3"), L"000001");
    EXPECT_EQ(cdb.del(5, 3), CD_ERR_NONE);
    EXPECT_FALSE(cdb.exists(5, 3));
    EXPECT_TRUE(record.isErased());
    EXPECT_EQ(cdb.del(5, 3), CD_ERR_NOTFOUND);
}

TEST_F(NodCdbTest, DelDoesNotTouchThePosition) {
    write(1, 1, "a", kFirstRecord);
    write(1, 1, "b", kNextRecord);
    write(2, 1, "x", kFirstRecord);
    read(1, 1, kFirstRecord);
    cdb.del(2, 1);
    cdb.del(2, -1);
    EXPECT_EQ(read(1, 1, kNextRecord), "b");
}

TEST_F(NodCdbTest, DelOfANegativeGroupIsReported) {
    ReportRecorder recorder;
    EXPECT_EQ(cdb.del(-3, -1), CD_ERR_NOTFOUND);
    ASSERT_EQ(recorder.conditions(), (Texts{"kwh>=0"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"kwh", "-3"}, {"kwl", "-1"}}));
}

TEST_F(NodCdbTest, ListsTheKeysOfAGroupAndOfARange) {
    for (int kwl : {100, 5, 20, 1000000})
        write(3, kwl, "x", kFirstRecord);
    std::set<int> keys = {-7};
    EXPECT_EQ(cdb.getKeysForKwh(3, keys), CD_ERR_NONE);
    EXPECT_EQ(keys, (std::set<int>{-7, 5, 20, 100, 1000000})) << "what was there stays";
    keys.clear();
    EXPECT_EQ(cdb.getKeysForKwhAndRange(3, keys, 20, 100), CD_ERR_NONE);
    EXPECT_EQ(keys, (std::set<int>{20, 100}));
    EXPECT_EQ(cdb.getKeysForKwhAndRange(99, keys, 20, 100), CD_ERR_NOTFOUND);
}

TEST_F(NodCdbTest, ARangeWithItsEndsExchangedIsReportedAndAddsNothing) {
    write(3, 5, "x", kFirstRecord);
    ReportRecorder recorder;
    std::set<int> keys;
    EXPECT_EQ(cdb.getKeysForKwhAndRange(3, keys, 9, 1), CD_ERR_NONE);
    EXPECT_TRUE(keys.empty());
    ASSERT_EQ(recorder.conditions(), (Texts{"kwlTo >= kwlFrom"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"kwh", "3"}, {"kwlFrom", "9"}, {"kwlTo", "1"}}));
}

TEST_F(NodCdbTest, NamesCountByTheirNumber) {
    const AcDbObjectId group = subDictionary(drawing.base, L"3");
    subDictionary(group, L"007");
    subDictionary(group, L"text");
    std::set<int> keys;
    cdb.getKeysForKwh(3, keys);
    EXPECT_EQ(keys, (std::set<int>{0, 7}));
    EXPECT_TRUE(cdb.exists(3, 7));
    EXPECT_TRUE(cdb.exists(3, 0));
    EXPECT_FALSE(cdb.exists(3, 8));
    EXPECT_FALSE(cdb.exists(4, 7));
    EXPECT_EQ(read(3, 7, kFirstRecord), "<3>") << "reading looks for the name itself";
}

TEST_F(NodCdbTest, AKeyExistsWithoutARecord) {
    subDictionary(subDictionary(drawing.base, L"3"), L"7");
    EXPECT_TRUE(cdb.exists(3, 7));
    EXPECT_EQ(read(3, 7, kFirstRecord), "<3>");
}

TEST_F(NodCdbTest, GetNextKeyWalksTheGroup) {
    write(3, 5, "x", kFirstRecord);
    write(3, 1, "x", kFirstRecord);
    int kwh = 3;
    int kwl = -1;
    EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NONE);
    EXPECT_EQ(kwl, 1);
    EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NONE);
    EXPECT_EQ(kwl, 5);
    EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NOTFOUND);
    kwh = 8;
    EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NOTFOUND);
}

TEST_F(NodCdbTest, LocksAreAlwaysGranted) {
    EXPECT_EQ(cdb.lock(1, 2), CD_ERR_NONE);
    EXPECT_EQ(cdb.unlock(7, 7), CD_ERR_NONE);
    EXPECT_EQ(cdb.getUpdateNo(1, 2), -1);
    EXPECT_EQ(cdb.getUpdateNo(), -1);
    EXPECT_EQ(cdb.getIndex(), -1);
}

TEST_F(NodCdbTest, AWriteInARunningTransactionIsThereAtOnce) {
    AcDbTransactionManager* const manager = drawing.db.transactionManager();
    manager->startTransaction();
    write(3, 5, "x", kFirstRecord);
    EXPECT_EQ(read(3, 5, kFirstRecord), "x");
    manager->endTransaction();
    EXPECT_EQ(read(3, 5, kFirstRecord), "x");
}

TEST_F(NodCdbTest, ADictionaryThatSomebodyElseReadsRefusesTheWrite) {
    write(3, 5, "x", kFirstRecord);
    AcDbObject* key = nullptr;
    ASSERT_EQ(acdbOpenObject(key, keyDict(L"3", L"5"), AcDb::kForRead), Acad::eOk);
    ReportRecorder recorder;
    EXPECT_EQ(write(3, 5, "y", kSameRecord), CD_ERR_NOTFOUND);
    EXPECT_EQ(recorder.conditions(), (Texts{"dict"}));
    key->close();
    EXPECT_EQ(write(3, 5, "y", kSameRecord), CD_ERR_NONE);
}

TEST_F(NodCdbTest, WriteOfNothingIsReportedAndStoresAnEmptyRecord) {
    ReportRecorder recorder;
    EXPECT_EQ(cdb.write(3, 5, nullptr, 0, kFirstRecord), CD_ERR_NONE);
    EXPECT_EQ(recorder.conditions(), (Texts{"data && (len>0)"}));
    EXPECT_EQ(read(3, 5, kFirstRecord), "<2>");
}

TEST_F(NodCdbTest, OpenCreatesNothingAndFindsOnlyWhatIsThere) {
    NodCdb other(&drawing.db);
    EXPECT_FALSE(other.isOpen());
    EXPECT_TRUE(other._dbId().isNull());
    EXPECT_EQ(other.open(L"ABSENT", kSharedLocking), CD_ERR_NOTFOUND);
    EXPECT_FALSE(other.isOpen());
    EXPECT_EQ(namesOf(drawing.kelmoran), (Names{L"ASDWG"}));
    const AcDbObjectId half = subDictionary(drawing.kelmoran, L"HALF");
    EXPECT_EQ(other.open(L"HALF", kSharedLocking), CD_ERR_NOTFOUND);
    EXPECT_EQ(other._dbId(), half) << "the ids got so far stay";
    EXPECT_FALSE(other.isOpen());
    EXPECT_EQ(other.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
    EXPECT_EQ(other._dbId(), drawing.named);
    EXPECT_TRUE(other.isOpen());
}

TEST_F(NodCdbTest, AnotherOpenThatFindsNothingLetsGoOfTheStoreBefore) {
    write(1, 1, "a", kFirstRecord);
    EXPECT_EQ(cdb.open(L"ABSENT", kSharedLocking), CD_ERR_NOTFOUND);
    EXPECT_FALSE(cdb.isOpen());
    EXPECT_TRUE(cdb._dbId().isNull());
    {
        ReportRecorder recorder;
        EXPECT_EQ(read(1, 1, kFirstRecord), "<3>");
        EXPECT_EQ(recorder.conditions(), (Texts{"isOpen()", "pDictFather"}));
    }
    EXPECT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
    EXPECT_EQ(read(1, 1, kFirstRecord), "a");
}

TEST_F(NodCdbTest, OpenWithAnotherLockingIsReportedAndGoesOn) {
    ReportRecorder recorder;
    NodCdb other(&drawing.db);
    EXPECT_EQ(other.open(L"ASDWG", static_cast<CdbLockMode>(1)), CD_ERR_NONE);
    EXPECT_EQ(recorder.conditions(), (Texts{"lockMode == kSharedLocking"}));
    EXPECT_EQ(recorder.at(0).message, "other locking modes are not supported");
}

TEST_F(NodCdbTest, AfterCloseAnotherOpenTakesTheWorkingDrawingWithAReport) {
    EXPECT_EQ(cdb.close(), CD_ERR_NONE);
    EXPECT_FALSE(cdb.isOpen());
    EXPECT_TRUE(cdb._dbId().isNull());
    ReportRecorder recorder;
    EXPECT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
    ASSERT_EQ(recorder.conditions(), (Texts{"m_db"}));
    EXPECT_EQ(recorder.at(0).message,
              "IMPORTANT: This should never have happened! Something must have gone wrong in a bad way...");
}

TEST_F(NodCdbTest, WithoutAnyDrawingOpenFails) {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    NodCdb other;
    ReportRecorder recorder;
    EXPECT_EQ(other.open(L"ASDWG", kSharedLocking), CD_ERR_FAILED);
    EXPECT_EQ(recorder.conditions(), (Texts{"m_db", "m_db"}));
}

TEST_F(NodCdbTest, ADrawingWithoutNamedObjectDictionaryFails) {
    AcDbDatabase empty(false);
    NodCdb other(&empty);
    ReportRecorder recorder;
    EXPECT_EQ(other.open(L"ASDWG", kSharedLocking), CD_ERR_FAILED);
    EXPECT_EQ(recorder.conditions(), (Texts{"namedDict"}));
}

TEST_F(NodCdbTest, ReadOnAStoreThatIsNotOpenReportsAndFindsNothing) {
    NodCdb other(&drawing.db);
    ReportRecorder recorder;
    char buffer[4];
    std::size_t len = 4;
    EXPECT_EQ(other.read(1, 1, buffer, len, kFirstRecord), CD_ERR_NOTFOUND);
    EXPECT_EQ(recorder.conditions(), (Texts{"isOpen()", "pDictFather"}));
}

TEST_F(NodCdbTest, OperationsOnAClosedStoreHarmNothing) {
    cdb.close();
    ReportRecorder recorder;
    char buffer[4];
    std::size_t len = 4;
    std::set<int> keys;
    int kwh = 1;
    int kwl = 1;
    EXPECT_EQ(cdb.read(1, 1, buffer, len, kFirstRecord), CD_ERR_NOTFOUND);
    EXPECT_EQ(cdb.write(1, 1, "a", 1, kFirstRecord), CD_ERR_NOTFOUND);
    EXPECT_EQ(cdb.del(1, 1), CD_ERR_NOTFOUND);
    EXPECT_EQ(cdb.del(1, -1), CD_ERR_FAILED);
    EXPECT_EQ(cdb.getKeysForKwh(1, keys), CD_ERR_NOTFOUND);
    EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NOTFOUND);
    EXPECT_FALSE(cdb.exists(1, 1));
    EXPECT_EQ(cdb.close(), CD_ERR_NONE);
}

TEST_F(NodCdbTest, AStoreOutlivesItsDrawingWithoutTouchingIt) {
    auto db = std::make_unique<AcDbDatabase>(true);
    subDictionary(subDictionary(subDictionary(db->namedObjectsDictionaryId(), L"KELMORAN"), L"S"), L"CDBASE");
    NodCdb other(db.get());
    ASSERT_EQ(other.open(L"S", kSharedLocking), CD_ERR_NONE);
    db.reset();
    EXPECT_FALSE(other.isOpen());
    EXPECT_EQ(other.close(), CD_ERR_NONE);
}

TEST_F(NodCdbTest, AGroupOrKeyThatIsNoDictionaryIsReported) {
    putObject(drawing.base, L"3", new orv::ORV_CdbRecord("x", 1));
    const AcDbObjectId group = subDictionary(drawing.base, L"4");
    putObject(group, L"5", new orv::ORV_CdbRecord("x", 1));
    ReportRecorder recorder;
    EXPECT_EQ(read(3, 1, kFirstRecord), "<3>");
    ASSERT_EQ(recorder.conditions(), (Texts{"dictKwh"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"kwh", "3"}, {"bCreate", "0"}}));
    recorder.clear();
    EXPECT_EQ(read(4, 5, kFirstRecord), "<3>");
    ASSERT_EQ(recorder.conditions(), (Texts{"dict"}));
    EXPECT_EQ(recorder.at(0).values,
              (Values{{"kwh", "4"}, {"kwl", "5"}, {"idKwl.objectClass()->name()", "ORV_CdbRecord"}}));
}

TEST_F(NodCdbTest, AKeyWhoseDictionaryIsGoneForGoodIsReportedOnceThenMissing) {
    write(3, 5, "x", kFirstRecord);
    eraseObject(keyDict(L"3", L"5"));
    embedded::forgetHistory(drawing.db);
    ReportRecorder recorder;
    EXPECT_EQ(read(3, 5, kFirstRecord), "<3>");
    ASSERT_EQ(recorder.conditions(), (Texts{"dict"}));
    recorder.clear();
    EXPECT_EQ(read(3, 5, kFirstRecord), "<3>");
    EXPECT_EQ(recorder.size(), 0u);
    EXPECT_EQ(write(3, 5, "y", kFirstRecord), CD_ERR_NONE);
    EXPECT_EQ(read(3, 5, kFirstRecord), "y");
}

TEST_F(NodCdbTest, AWriteOverAKeyThatIsGoneForGoodMakesItAnew) {
    struct Derived : NodCdb {
        using NodCdb::NodCdb;
    } derived(&drawing.db);
    ASSERT_EQ(derived.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
    for (NodCdb* const store : {&cdb, static_cast<NodCdb*>(&derived)}) {
        write(3, 5, "x", kFirstRecord);
        eraseObject(keyDict(L"3", L"5"));
        embedded::forgetHistory(drawing.db);
        EXPECT_EQ(store->write(3, 5, "y", 1, kFirstRecord), CD_ERR_NONE);
        EXPECT_EQ(read(3, 5, kFirstRecord), "y");
        eraseObject(keyDict(L"3", L"5"));
        embedded::forgetHistory(drawing.db);
        ReportRecorder recorder;
        EXPECT_EQ(store->del(3, 5), CD_ERR_NONE);
        EXPECT_FALSE(store->exists(3, 5));
        eraseObject(entryOf(drawing.base, L"3"));
        embedded::forgetHistory(drawing.db);
        EXPECT_EQ(store->del(3, -1), CD_ERR_NOTFOUND);
        EXPECT_EQ(store->write(3, 5, "z", 1, kFirstRecord), CD_ERR_NONE);
        EXPECT_EQ(read(3, 5, kFirstRecord), "z");
    }
}

TEST_F(NodCdbTest, StoresOfADrawingKeepApart) {
    subDictionary(subDictionary(drawing.kelmoran, L"TWO"), L"CDBASE");
    NodCdb two(&drawing.db);
    ASSERT_EQ(two.open(L"TWO", kSharedLocking), CD_ERR_NONE);
    two.write(1, 1, "two", 3, kFirstRecord);
    EXPECT_FALSE(cdb.exists(1, 1));
    write(1, 1, "one", kFirstRecord);
    EXPECT_EQ(readBlob(two, 1, 1, kFirstRecord).size(), 3u);
    EXPECT_EQ(read(1, 1, kFirstRecord), "one");
}

TEST_F(NodCdbTest, AStoreOfADrawingThatIsNotWorkedInErasesToo) {
    AcDbDatabase working(true);
    acdbHostApplicationServices()->setWorkingDatabase(&working);
    write(1, 1, "one", kFirstRecord);
    const AcDbObjectId record = entryOf(keyDict(L"1", L"1"), L"000000");
    const AcDbObjectId key = keyDict(L"1", L"1");
    EXPECT_EQ(write(1, 1, "two", kSameRecord), CD_ERR_NONE);
    EXPECT_TRUE(record.isErased());
    EXPECT_EQ(cdb.del(1, 1), CD_ERR_NONE);
    EXPECT_TRUE(key.isErased());
    EXPECT_EQ(drawing.db.transactionManager()->numActiveTransactions(), 0);
    EXPECT_EQ(working.transactionManager()->numActiveTransactions(), 0);
}

TEST_F(NodCdbTest, AMemoryBlocksTheCopyFromADrawingHoweverTheRecordChanged) {
    subDictionary(subDictionary(drawing.kelmoran, L"TWO"), L"CDBASE");
    NodCdb two(&drawing.db);
    ASSERT_EQ(two.open(L"TWO", kSharedLocking), CD_ERR_NONE);
    UpdateNos updateNos;
    write(1, 1, "a", kFirstRecord);
    copy(cdb, two, 1, 1, updateNos);
    write(1, 1, "bb", kFirstRecord);
    copy(cdb, two, 1, 1, updateNos);
    EXPECT_EQ(readBlob(two, 1, 1, kFirstRecord).size(), 1u);
}

TEST_F(NodCdbTest, CopyHeaderReplacesTheTargetsWholeSequence) {
    subDictionary(subDictionary(drawing.kelmoran, L"TWO"), L"CDBASE");
    NodCdb two(&drawing.db);
    ASSERT_EQ(two.open(L"TWO", kSharedLocking), CD_ERR_NONE);
    write(1, 1, "header", kFirstRecord);
    write(1, 1, "more", kNextRecord);
    two.write(1, 1, "x", 1, kFirstRecord);
    two.write(1, 1, "y", 1, kNextRecord);
    copyHeader(cdb, two, 1, 1);
    EXPECT_EQ(readBlob(two, 1, 1, kFirstRecord).size(), 6u);
    EXPECT_TRUE(readBlob(two, 1, 1, kNextRecord).is_empty());
}

TEST_F(NodCdbTest, UndoBringsBackExactlyWhatWas) {
    write(1, 1, "one", kFirstRecord);
    write(1, 1, "two", kNextRecord);
    write(2, 1, "x", kFirstRecord);
    embedded::beginCommand(drawing.db);
    write(1, 1, "new", kFirstRecord);
    cdb.del(2, 1);
    cdb.del(2, -1);
    write(3, 3, "y", kFirstRecord);
    ASSERT_TRUE(embedded::undo(drawing.db));
    EXPECT_EQ(read(1, 1, kFirstRecord), "one");
    EXPECT_EQ(read(1, 1, kNextRecord), "two");
    EXPECT_EQ(read(1, 1, kNextRecord), "<3>");
    EXPECT_EQ(read(2, 1, kFirstRecord), "x");
    EXPECT_EQ(namesOf(drawing.base), (Names{L"1", L"2"}));
    ASSERT_TRUE(embedded::redo(drawing.db));
    EXPECT_EQ(read(1, 1, kFirstRecord), "new");
    EXPECT_EQ(namesOf(drawing.base), (Names{L"1", L"3"}));
}

namespace {

struct Listener : orv::ILogListener {
    void onLog(const std::string&, const std::string& channel, orv::LogLevel level,
               const std::string& message) override {
        heard.push_back(channel + " " + std::to_string(static_cast<int>(level)) + " " + message);
    }
    Texts heard;
};

} // namespace

TEST(NodCdbClose, WithoutADrawingOrFileNamesTheMessageIsBare) {
    const auto listener = boost::make_shared<Listener>();
    orv::clearLogs();
    orv::addLogListener("cdb.nod", listener);
    {
        AcDbDatabase db(true);
        NodCdb cdb(&db);
        cdb.close();
        EXPECT_EQ(listener->heard, Texts{"cdb.nod 3 close()"});
    }
    EXPECT_EQ(listener->heard, (Texts{"cdb.nod 3 close()", "cdb.nod 3 close()"}))
        << "the destructor closes again";
    orv::clearLogs();
}
