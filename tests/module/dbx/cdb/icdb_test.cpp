#include "dbx/cdb/icdb.h"

#include "dbx/cdb/cdb.h"
#include "support/map_cdb.h"
#include "support/slots.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

using namespace orv::cdb;
using testing_support::MapCdb;

TEST(CdbTypes, NumbersAreFixed) {
    EXPECT_EQ(CD_ERR_NONE, 0);
    EXPECT_EQ(CD_ERR_TRUNCATED, 1);
    EXPECT_EQ(CD_ERR_EMPTY, 2);
    EXPECT_EQ(CD_ERR_NOTFOUND, 3);
    EXPECT_EQ(CD_ERR_REMOVE, 5);
    EXPECT_EQ(CD_ERR_FAILED, 99);
    EXPECT_EQ(kFirstRecord, 0);
    EXPECT_EQ(kNextRecord, 1);
    EXPECT_EQ(kSameRecord, -1);
    EXPECT_EQ(kSharedLocking, 0);
    EXPECT_EQ(kNodCdb, 0);
    EXPECT_EQ(kPlainCdb, 1);
    EXPECT_EQ(kFileCdb, 2);
}

TEST(ICdb, GetNextKeyWalksAscendingAndEndsAtAKeyThatIsNone) {
    MapCdb cdb;
    cdb.put(7, 1, {"a"});
    cdb.put(7, 5, {"b"});
    int kwh = 7;
    const auto next = [&](int from) {
        int kwl = from;
        return cdb.getNextKey(kwh, kwl) == CD_ERR_NONE ? kwl : -99;
    };
    EXPECT_EQ(next(-1), 1);
    EXPECT_EQ(next(1), 5);
    EXPECT_EQ(next(5), -99);
    EXPECT_EQ(next(3), -99);
    EXPECT_EQ(next(0), 1);
    EXPECT_EQ(kwh, 7);
}

TEST(ICdb, GetNextKeyOfAMissingAndOfAnEmptyGroupFindsNothing) {
    MapCdb cdb;
    int kwh = 7;
    int kwl = -1;
    EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NOTFOUND);
    cdb.groups[7];
    EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NOTFOUND);
    EXPECT_EQ(kwl, -1);
}

TEST(ICdb, UpdateNumbersAndIndexAreMinusOneUnlessOverridden) {
    struct Plain : MapCdb {
        int getUpdateNo(int kwh, int kwl) const override { return ICdb::getUpdateNo(kwh, kwl); }
        int getUpdateNo() const override { return ICdb::getUpdateNo(); }
    } cdb;
    cdb.put(1, 1, {"a"});
    EXPECT_EQ(cdb.getUpdateNo(1, 1), -1);
    EXPECT_EQ(cdb.getUpdateNo(9, 9), -1);
    EXPECT_EQ(cdb.getUpdateNo(), -1);
    EXPECT_EQ(cdb.getIndex(), -1);
}

TEST(ICdb, ReadAnswersByTheBuffersSize) {
    MapCdb cdb;
    cdb.put(1, 1, {"abcdef"});
    char buffer[17] = "................";
    std::size_t len = 4;
    EXPECT_EQ(cdb.read(1, 1, buffer, len, kFirstRecord), CD_ERR_TRUNCATED);
    EXPECT_EQ(len, 6u);
    EXPECT_EQ(std::string(buffer, 6), "abcd..");
    len = 16;
    EXPECT_EQ(cdb.read(1, 1, buffer, len, kSameRecord), CD_ERR_NONE);
    EXPECT_EQ(len, 6u);
    EXPECT_EQ(std::string(buffer, 7), "abcdef.");
}

TEST(ICdb, ReadWithoutALengthCopiesAllAndWithoutABufferAsksForTheSize) {
    MapCdb cdb;
    cdb.put(1, 1, {"abcdef"});
    std::size_t len = 0;
    EXPECT_EQ(cdb.read(1, 1, nullptr, len, kFirstRecord), CD_ERR_TRUNCATED);
    EXPECT_EQ(len, 6u);
    char buffer[6] = {};
    len = 0;
    EXPECT_EQ(cdb.read(1, 1, buffer, len, kFirstRecord), CD_ERR_TRUNCATED);
    EXPECT_EQ(len, 6u);
    EXPECT_EQ(std::string(buffer, 6), "abcdef");
}

TEST(ICdb, AnEmptyRecordIsAnsweredAsSuch) {
    MapCdb cdb;
    cdb.put(1, 1, {""});
    std::size_t len = 0;
    EXPECT_EQ(cdb.read(1, 1, nullptr, len, kFirstRecord), CD_ERR_EMPTY);
    char buffer[4];
    len = 4;
    EXPECT_EQ(cdb.read(1, 1, buffer, len, kFirstRecord), CD_ERR_EMPTY);
}

namespace {

// Each operation notes its own number.
struct Numbered : ICdb {
    mutable int called = 0;
    cd_error_t note(int number) const {
        called = number;
        return CD_ERR_NONE;
    }
    cd_error_t open(const std::wstring&, CdbLockMode) override { return note(2); }
    bool isOpen() const override { return note(3) == CD_ERR_NONE; }
    cd_error_t close() override { return note(4); }
    cd_error_t getNextKey(int&, int&) const override { return note(5); }
    cd_error_t getKeysForKwh(int, std::set<int>&) const override { return note(6); }
    cd_error_t getKeysForKwhAndRange(int, std::set<int>&, int, int) const override { return note(7); }
    bool exists(int, int) const override { return note(8) == CD_ERR_NONE; }
    cd_error_t lock(int, int) override { return note(9); }
    cd_error_t unlock(int, int) override { return note(10); }
    cd_error_t read(int, int, void*, std::size_t&, CdbReadWriteMode) const override { return note(11); }
    cd_error_t write(int, int, const void*, std::size_t, CdbReadWriteMode) override { return note(12); }
    cd_error_t del(int, int) override { return note(13); }
    int getIndex() const override { return note(14); }
    int getUpdateNo(int, int) const override { return note(15); }
    int getUpdateNo() const override { return note(16); }
};

} // namespace

#if !defined(_MSC_VER)
TEST(ICdb, OperationsStandInTheirSlots) {
    const Numbered cdb;
    // The destructor, which is the first, takes two slots, so that operation n stands at n.
    using Operation = void (*)(const void*);
    for (int operation = 2; operation <= 16; ++operation) {
        cdb.called = 0;
        testing_support::slotOf<Operation>(&cdb, operation)(&cdb);
        EXPECT_EQ(cdb.called, operation);
    }
}
#endif
