#include "dbx/cdb/copy_sync.h"

#include "base/exceptions.h"
#include "support/map_cdb.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <string>

using namespace orv::cdb;
using testing_support::MapCdb;
using testing_support::ReportRecorder;
using testing_support::Texts;
using testing_support::Values;

namespace {

std::set<int> keysOf(const MapCdb& cdb, int kwh) {
    std::set<int> keys;
    cdb.getKeysForKwh(kwh, keys);
    return keys;
}

// Lists the whole group, whatever range it is asked for.
struct Careless : MapCdb {
    cd_error_t getKeysForKwhAndRange(int kwh, std::set<int>& keys, int, int) const override {
        return getKeysForKwh(kwh, keys);
    }
};

} // namespace

TEST(Copy, CarriesTheWholeSequence) {
    MapCdb src, dst;
    src.put(1, 2, {"header", std::string(600, 'b'), "c"});
    dst.put(1, 2, {"old", "old", "old", "old"});
    copy(src, dst, 1, 2);
    EXPECT_EQ(dst.get(1, 2), src.get(1, 2));
    EXPECT_EQ(dst.log, (Texts{"write 1/2 first", "write 1/2 next", "write 1/2 next"}));
}

TEST(Copy, OfAKeyThatTheSourceLacksLeavesTheTargetsInPlace) {
    MapCdb src, dst;
    dst.put(1, 2, {"kept"});
    copy(src, dst, 1, 2);
    EXPECT_EQ(dst.get(1, 2), Texts{"kept"});
    EXPECT_TRUE(dst.log.empty());
}

TEST(Copy, EndsAtARecordOfNoBytes) {
    MapCdb src, dst;
    src.put(1, 2, {"a", "", "c"});
    copy(src, dst, 1, 2);
    EXPECT_EQ(dst.get(1, 2), Texts{"a"});
}

TEST(Copy, ARefusedWriteInMidSequenceLeavesTheTargetsKeyShortened) {
    struct Stopping : MapCdb {
        cd_error_t write(int kwh, int kwl, const void* data, std::size_t len,
                         CdbReadWriteMode mode) override {
            return calls("write").size() == 2 ? CD_ERR_FAILED : MapCdb::write(kwh, kwl, data, len, mode);
        }
    } dst;
    MapCdb src;
    src.put(1, 2, {"a", "b", "c"});
    dst.put(1, 2, {"w", "x", "y", "z"});
    EXPECT_THROW(copy(src, dst, 1, 2), orv::Exception);
    EXPECT_EQ(dst.get(1, 2), (Texts{"a", "b"}));
}

TEST(Copy, AReadFailureEndsTheSequenceSilently) {
    struct Failing : MapCdb {
        cd_error_t read(int kwh, int kwl, void* data, std::size_t& len,
                        CdbReadWriteMode mode) const override {
            const cd_error_t err = MapCdb::read(kwh, kwl, data, len, mode);
            return position == 1 ? CD_ERR_FAILED : err;
        }
    } src;
    MapCdb dst;
    src.put(1, 2, {"a", "b", "c"});
    EXPECT_NO_THROW(copy(src, dst, 1, 2));
    EXPECT_EQ(dst.get(1, 2), Texts{"a"});
}

TEST(Copy, ToAnotherEntryOfTheGroup) {
    MapCdb src, dst;
    src.put(1, 2, {"a", "b"});
    copy(src, dst, 1, 2, 9);
    EXPECT_EQ(dst.get(1, 9), (Texts{"a", "b"}));
    EXPECT_TRUE(dst.get(1, 2).empty());
}

TEST(Copy, OfAGroupLeavesTheTargetsOtherKeys) {
    MapCdb src, dst;
    src.put(1, 5, {"five"});
    src.put(1, 2, {"two"});
    dst.put(1, 9, {"nine"});
    copy(src, dst, 1);
    EXPECT_EQ(keysOf(dst, 1), (std::set<int>{2, 5, 9}));
    EXPECT_EQ(dst.log, (Texts{"write 1/2 first", "write 1/5 first"}));
}

TEST(Copy, ARefusedWriteThrowsAndLeavesTheMemoryUnchanged) {
    MapCdb src, dst;
    src.counting = true;
    src.put(1, 2, {"a"});
    dst.refuseWrites = true;
    UpdateNos updateNos;
    try {
        copy(src, dst, 1, 2, updateNos);
        FAIL();
    } catch (const orv::Exception& e) {
        EXPECT_STREQ(e.what(), "cdb::copy(): failed to write.\n");
    }
    EXPECT_TRUE(updateNos.empty());
    updateNos[{1, 2}] = 99;
    EXPECT_THROW(copy(src, dst, 1, 2, updateNos), orv::Exception);
    EXPECT_EQ((updateNos[{1, 2}]), 99);
}

TEST(CopyWithMemory, TheSecondCopyOfAnUnchangedKeyWritesNothing) {
    MapCdb src, dst;
    src.counting = true;
    src.put(1, 2, {"a"});
    UpdateNos updateNos;
    copy(src, dst, 1, 2, updateNos);
    EXPECT_EQ((updateNos[{1, 2}]), src.getUpdateNo(1, 2));
    dst.log.clear();
    src.log.clear();
    copy(src, dst, 1, 2, updateNos);
    EXPECT_TRUE(dst.log.empty());
    EXPECT_TRUE(src.log.empty());
    src.put(1, 2, {"b"});
    copy(src, dst, 1, 2, updateNos);
    EXPECT_EQ(dst.get(1, 2), Texts{"b"});
}

TEST(CopyWithMemory, ComparesForInequalityNotForOrder) {
    MapCdb src, dst;
    src.counting = true;
    src.put(1, 2, {"a"});
    UpdateNos updateNos = {{{1, 2}, 1000}};
    copy(src, dst, 1, 2, updateNos);
    EXPECT_EQ(dst.get(1, 2), Texts{"a"});
    EXPECT_EQ((updateNos[{1, 2}]), 1);
}

TEST(CopyWithMemory, ASourceThatDoesNotCountIsCopiedOnce) {
    MapCdb src, dst;
    src.put(1, 2, {"a"});
    UpdateNos updateNos;
    copy(src, dst, 1, 2, updateNos);
    src.put(1, 2, {"b"});
    copy(src, dst, 1, 2, updateNos);
    EXPECT_EQ(dst.get(1, 2), Texts{"a"});
    EXPECT_EQ((updateNos[{1, 2}]), -1);
}

TEST(CopyWithMemory, OfAGroupTestsEachKey) {
    MapCdb src, dst;
    src.counting = true;
    for (int kwl = 0; kwl < 6; ++kwl)
        src.put(1, kwl, {"a"});
    UpdateNos updateNos = {{{0, 3}, 7}, {{1, 2}, 7}, {{1, 4}, 1}, {{2, 0}, 7}};
    copy(src, dst, 1, updateNos);
    EXPECT_EQ(dst.calls("write"), (Texts{"write 1/0 first", "write 1/1 first", "write 1/2 first",
                                         "write 1/3 first", "write 1/5 first"}));
    const UpdateNos expected = {{{0, 3}, 7}, {{1, 0}, 1}, {{1, 1}, 1}, {{1, 2}, 1},
                                {{1, 3}, 1}, {{1, 4}, 1}, {{1, 5}, 1}, {{2, 0}, 7}};
    EXPECT_EQ(updateNos, expected);
}

TEST(CopyRange, TakesTheKeysOfAClosedRange) {
    MapCdb src, dst;
    for (int kwl : {1, 2, 3, 4})
        src.put(1, kwl, {"a"});
    copyRange(src, dst, 1, 2, 3);
    EXPECT_EQ(keysOf(dst, 1), (std::set<int>{2, 3}));
}

TEST(CopyRange, WithItsEndsExchangedReportsAndCopiesNothing) {
    ReportRecorder recorder;
    MapCdb src, dst;
    src.put(1, 2, {"a"});
    copyRange(src, dst, 1, 3, 1);
    ASSERT_EQ(recorder.conditions(), (Texts{"kwlFrom <= kwlTo"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"kwlFrom", "3"}, {"kwlTo", "1"}}));
    EXPECT_TRUE(dst.log.empty());
}

TEST(CopyRange, ReportsAKeyThatAStoreListsOutsideTheRange) {
    Careless src;
    ReportRecorder recorder;
    MapCdb dst;
    src.put(1, 9, {"a"});
    copyRange(src, dst, 1, 1, 5);
    ASSERT_EQ(recorder.conditions(), (Texts{"*it >= kwlFrom && *it <= kwlTo"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"*it", "9"}, {"kwlFrom", "1"}, {"kwlTo", "5"}}));
    EXPECT_EQ(dst.get(1, 9), Texts{"a"});
}

TEST(CopyHeader, OfAKeyWithThreeRecordsWritesOne) {
    MapCdb src, dst;
    src.put(1, 2, {"header", "b", "c"});
    copyHeader(src, dst, 1, 2);
    EXPECT_EQ(dst.get(1, 2), Texts{"header"});
    EXPECT_EQ(dst.log, (Texts{"write 1/2 first"}));
}

TEST(CopyHeader, ToAnotherKeyReadsTheTargetsFirst) {
    MapCdb src, dst;
    src.put(1, 2, {"header"});
    dst.put(3, 4, {"old", "more"});
    copyHeader(src, dst, {1, 2}, {3, 4});
    EXPECT_EQ(dst.log, (Texts{"read 3/4 first", "write 3/4 first"}));
    EXPECT_EQ(dst.get(3, 4), Texts{"header"});
    EXPECT_EQ(dst.position, 0);
}

TEST(CopyHeader, OfAMissingKeyDoesNothing) {
    MapCdb src, dst;
    dst.put(1, 2, {"kept"});
    copyHeader(src, dst, 1, 2);
    EXPECT_TRUE(dst.log.empty());
}

TEST(CopyHeader, ARefusedWriteThrowsWithTheSameWords) {
    MapCdb src, dst;
    src.put(1, 2, {"header"});
    dst.refuseWrites = true;
    try {
        copyHeader(src, dst, 1, 2);
        FAIL();
    } catch (const orv::Exception& e) {
        EXPECT_STREQ(e.what(), "cdb::copy(): failed to write.\n");
    }
}

TEST(Sync, WithAnEmptySourceGroupDeletesTheWholeGroupOnce) {
    MapCdb src, dst;
    for (int kwl : {1, 2, 3})
        dst.put(7, kwl, {"a"});
    sync(src, dst, 7);
    EXPECT_EQ(dst.log, (Texts{"del 7/-1"}));
}

TEST(Sync, DeletesWhatTheSourceLacksThenCopies) {
    MapCdb src, dst;
    src.put(7, 1, {"one"});
    src.put(7, 2, {"two"});
    dst.put(7, 2, {"old"});
    dst.put(7, 3, {"three"});
    sync(src, dst, 7);
    EXPECT_EQ(dst.log, (Texts{"del 7/3", "write 7/1 first", "write 7/2 first"}));
}

TEST(Sync, WhenNoneOfTheTargetsKeysSurviveDeletesTheGroupThenCopies) {
    MapCdb src, dst;
    src.put(7, 1, {"one"});
    dst.put(7, 2, {"a"});
    dst.put(7, 3, {"b"});
    sync(src, dst, 7);
    EXPECT_EQ(dst.log, (Texts{"del 7/-1", "write 7/1 first"}));
    EXPECT_EQ(keysOf(dst, 7), std::set<int>{1});
}

TEST(Sync, TheStatusOfADelIsNotLookedAt) {
    struct Refusing : MapCdb {
        cd_error_t del(int kwh, int kwl) override {
            log.push_back("del " + text(kwh, kwl));
            return CD_ERR_FAILED;
        }
    } dst;
    MapCdb src;
    ReportRecorder recorder;
    src.put(7, 1, {"one"});
    dst.put(7, 1, {"old"});
    dst.put(7, 2, {"stale"});
    sync(src, dst, 7);
    syncHeader(src, dst, 7);
    syncRange(src, dst, 7, 1, 9);
    syncHeaderRange(src, dst, 7, 1, 9);
    delRange(dst, 7, 2, 9);
    EXPECT_EQ(dst.calls("del"), Texts(5, "del 7/2"));
    EXPECT_EQ(dst.calls("write"), Texts(4, "write 7/1 first"));
    EXPECT_EQ(recorder.size(), 0u);
    EXPECT_EQ(keysOf(dst, 7), (std::set<int>{1, 2}));
    sync(MapCdb(), dst, 7);
    EXPECT_EQ(dst.calls("del").back(), "del 7/-1");
}

TEST(Sync, WithNothingOnEitherSideDoesNothing) {
    MapCdb src, dst;
    sync(src, dst, 7);
    EXPECT_TRUE(dst.log.empty());
}

TEST(Sync, CopiesEveryKeyWithoutAMemory) {
    MapCdb src, dst;
    src.counting = true;
    src.put(7, 1, {"a"});
    sync(src, dst, 7);
    sync(src, dst, 7);
    EXPECT_EQ(dst.calls("write").size(), 2u);
}

TEST(SyncWithMemory, CopiesChangedKeysAloneAndStillDeletes) {
    MapCdb src, dst;
    src.counting = true;
    UpdateNos updateNos;
    for (int kwl : {1, 2, 3})
        src.put(7, kwl, {"a"});
    sync(src, dst, 7, updateNos);
    dst.log.clear();
    src.put(7, 2, {"b"});
    src.groups[7].erase(3);
    sync(src, dst, 7, updateNos);
    EXPECT_EQ(dst.log, (Texts{"del 7/3", "write 7/2 first"}));
    EXPECT_EQ(updateNos.size(), 3u) << "the entry of a deleted key stays";
}

TEST(SyncWithMemory, DoesNotNoticeAChangeOfTheTarget) {
    MapCdb src, dst;
    src.counting = true;
    UpdateNos updateNos;
    src.put(7, 1, {"a"});
    sync(src, dst, 7, updateNos);
    dst.put(7, 1, {"changed"});
    sync(src, dst, 7, updateNos);
    EXPECT_EQ(dst.get(7, 1), Texts{"changed"});
}

TEST(SyncWithRangeAndMemory, DeletesKeysOutsideTheRangeTooWhenNoneInsideSurvives) {
    MapCdb src, dst;
    dst.put(7, 5, {"a"});
    dst.put(7, 15, {"b"});
    UpdateNos updateNos;
    sync(src, dst, 7, 10, 20, updateNos);
    EXPECT_EQ(dst.log, (Texts{"del 7/-1"}));
    EXPECT_TRUE(keysOf(dst, 7).empty());
}

TEST(SyncWithRangeAndMemory, StaysInsideTheRangeOtherwise) {
    MapCdb src, dst;
    src.counting = true;
    for (int kwl : {1, 10, 12, 30})
        src.put(7, kwl, {"a"});
    for (int kwl : {5, 12, 15, 40})
        dst.put(7, kwl, {"b"});
    UpdateNos updateNos;
    sync(src, dst, 7, 10, 20, updateNos);
    EXPECT_EQ(dst.log, (Texts{"del 7/15", "write 7/10 first", "write 7/12 first"}));
    EXPECT_EQ(keysOf(dst, 7), (std::set<int>{5, 10, 12, 40}));
}

TEST(SyncWithRangeAndMemory, WithItsEndsExchangedDoesNothingAndReportsNothing) {
    ReportRecorder recorder;
    MapCdb src, dst;
    src.put(7, 12, {"a"});
    dst.put(7, 15, {"b"});
    UpdateNos updateNos;
    sync(src, dst, 7, 20, 10, updateNos);
    EXPECT_TRUE(dst.log.empty());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(SyncRange, DeletesSinglyAndNeverOutsideTheRange) {
    MapCdb src, dst;
    dst.put(7, 5, {"a"});
    dst.put(7, 15, {"b"});
    syncRange(src, dst, 7, 10, 20);
    EXPECT_EQ(dst.log, (Texts{"del 7/15"}));
    EXPECT_EQ(keysOf(dst, 7), std::set<int>{5});
}

TEST(SyncRange, CopiesTheSourcesKeysOfTheRange) {
    MapCdb src, dst;
    for (int kwl : {5, 10, 20, 21})
        src.put(7, kwl, {"a", "b"});
    syncRange(src, dst, 7, 10, 20);
    EXPECT_EQ(keysOf(dst, 7), (std::set<int>{10, 20}));
    EXPECT_EQ(dst.get(7, 10), (Texts{"a", "b"}));
}

TEST(SyncRange, WithItsEndsExchangedReports) {
    ReportRecorder recorder;
    MapCdb src, dst;
    syncRange(src, dst, 7, 20, 10);
    EXPECT_EQ(recorder.conditions(), (Texts{"kwlFrom <= kwlTo"}));
}

TEST(SyncRange, ReportsEachKeyThatAStoreListsOutsideTheRangeAndGoesOn) {
    Careless src, dst;
    ReportRecorder recorder;
    src.put(7, 30, {"header", "more"});
    dst.put(7, 5, {"stale"});
    syncRange(src, dst, 7, 10, 20);
    EXPECT_EQ(recorder.conditions(), Texts(2, "*it >= kwlFrom && *it <= kwlTo"));
    EXPECT_EQ(dst.log, (Texts{"del 7/5", "write 7/30 first", "write 7/30 next"}));
    recorder.clear();
    dst.log.clear();
    dst.put(7, 5, {"stale"});
    syncHeaderRange(src, dst, 7, 10, 20);
    EXPECT_EQ(recorder.conditions(), Texts(2, "*it >= kwlFrom && *it <= kwlTo"));
    EXPECT_EQ(dst.calls("del"), Texts{"del 7/5"});
    EXPECT_EQ(dst.calls("write"), Texts{"write 7/30 first"});
    EXPECT_EQ(dst.get(7, 30), Texts{"header"});
}

TEST(SyncHeader, CarriesHeadersAndDeletesLikeASync) {
    MapCdb src, dst;
    src.put(7, 1, {"header", "b"});
    dst.put(7, 2, {"old"});
    syncHeader(src, dst, 7);
    EXPECT_EQ(dst.log, (Texts{"del 7/-1", "write 7/1 first"}));
    EXPECT_EQ(dst.get(7, 1), Texts{"header"});
}

TEST(SyncHeaderRange, CarriesHeadersAndDeletesLikeASyncRange) {
    MapCdb src, dst;
    src.put(7, 11, {"header", "b"});
    src.put(7, 21, {"outside"});
    dst.put(7, 12, {"old"});
    dst.put(7, 5, {"outside"});
    syncHeaderRange(src, dst, 7, 10, 20);
    EXPECT_EQ(dst.log, (Texts{"del 7/12", "write 7/11 first"}));
    EXPECT_EQ(dst.get(7, 11), Texts{"header"});
    EXPECT_EQ(keysOf(dst, 7), (std::set<int>{5, 11}));
}

TEST(DelRange, DeletesTheKeysOfAClosedRange) {
    MapCdb cdb;
    for (int kwl : {1, 2, 3, 4})
        cdb.put(7, kwl, {"a"});
    delRange(cdb, 7, 2, 3);
    EXPECT_EQ(cdb.log, (Texts{"del 7/2", "del 7/3"}));
}

TEST(DelRange, ReportsItsBoundsAndAKeyOutsideThem) {
    Careless cdb;
    ReportRecorder recorder;
    cdb.put(7, 9, {"a"});
    delRange(cdb, 7, 3, 1);
    ASSERT_EQ(recorder.conditions(), (Texts{"kwlFrom <= kwlTo", "*it >= kwlFrom && *it <= kwlTo"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"kwlFrom", "3"}, {"kwlTo", "1"}}));
    EXPECT_EQ(recorder.at(1).message, "out of range");
    EXPECT_EQ(cdb.log, (Texts{"del 7/9"}));
}

TEST(SyncWithMemory, AFailureInTheMiddleRemembersWhatWasCopiedBefore) {
    struct Stopping : MapCdb {
        cd_error_t write(int kwh, int kwl, const void* data, std::size_t len,
                         CdbReadWriteMode mode) override {
            return kwl == 3 ? CD_ERR_FAILED : MapCdb::write(kwh, kwl, data, len, mode);
        }
    } dst;
    MapCdb src;
    src.counting = true;
    for (int kwl : {1, 2, 3, 4})
        src.put(7, kwl, {"a"});
    UpdateNos updateNos = {{{7, 2}, 99}};
    EXPECT_THROW(sync(src, dst, 7, updateNos), orv::Exception);
    EXPECT_EQ(updateNos, (UpdateNos{{{7, 1}, 1}, {{7, 2}, 1}}));
    EXPECT_EQ(keysOf(dst, 7), (std::set<int>{1, 2}));
}
