#include "dbx/cdb/read_blob.h"

#include "support/map_cdb.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <string>

using namespace orv::cdb;
using orv::Blob;
using testing_support::MapCdb;
using testing_support::ReportRecorder;
using testing_support::Texts;

namespace {

std::string textOf(const Blob& blob) {
    return std::string(reinterpret_cast<const char*>(blob.data()), blob.size());
}

// A foreign store whose record is 600 bytes long on the first read and becomes another one by the second.
struct ChangingCdb : MapCdb {
    ChangingCdb() { put(1, 1, {std::string(600, 'a')}); }
    cd_error_t read(int kwh, int kwl, void* data, std::size_t& len, CdbReadWriteMode mode) const override {
        if (log.size() == 1) {
            if (fails)
                return CD_ERR_FAILED;
            const_cast<ChangingCdb*>(this)->put(1, 1, {std::string(second, 'b')});
        }
        return MapCdb::read(kwh, kwl, data, len, mode);
    }
    std::size_t second = 0;
    bool fails = false;
};

} // namespace

TEST(ReadBlob, AMissingKeyGivesAnEmptyBlobAndNoReport) {
    ReportRecorder recorder;
    MapCdb cdb;
    EXPECT_TRUE(readBlob(cdb, 1, 1, kFirstRecord).is_empty());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(ReadBlob, AClosedStoreIsReportedAndReadAllTheSame) {
    ReportRecorder recorder;
    MapCdb cdb;
    cdb.put(1, 1, {"abc"});
    cdb.opened = false;
    EXPECT_EQ(textOf(readBlob(cdb, 1, 1, kFirstRecord)), "abc");
    EXPECT_EQ(recorder.conditions(), (Texts{"cdb.isOpen()"}));
}

TEST(ReadBlob, ARecordOf512BytesTakesOneRead) {
    MapCdb cdb;
    const std::string record(512, 'x');
    cdb.put(1, 1, {record, "next"});
    EXPECT_EQ(textOf(readBlob(cdb, 1, 1, kFirstRecord)), record);
    EXPECT_EQ(cdb.log, (Texts{"read 1/1 first"}));
}

TEST(ReadBlob, ARecordOf513BytesTakesTwoAndTheSecondStaysWhereItIs) {
    MapCdb cdb;
    std::string record(513, 'x');
    record.back() = 'e';
    cdb.put(1, 1, {record, "next"});
    EXPECT_EQ(textOf(readBlob(cdb, 1, 1, kFirstRecord)), record);
    EXPECT_EQ(cdb.log, (Texts{"read 1/1 first", "read 1/1 same"}));
    EXPECT_EQ(textOf(readBlob(cdb, 1, 1, kNextRecord)), "next");
}

TEST(ReadBlob, PastTheEndOfASequenceIsEmpty) {
    MapCdb cdb;
    cdb.put(1, 1, {"one"});
    EXPECT_EQ(textOf(readBlob(cdb, 1, 1, kFirstRecord)), "one");
    EXPECT_TRUE(readBlob(cdb, 1, 1, kNextRecord).is_empty());
}

TEST(ReadBlob, AnEmptyRecordIsEmpty) {
    MapCdb cdb;
    cdb.put(1, 1, {""});
    EXPECT_TRUE(readBlob(cdb, 1, 1, kFirstRecord).is_empty());
}

TEST(ReadBlob, AShortRecordIsLengthenedWithZeros) {
    MapCdb cdb;
    cdb.put(1, 1, {std::string(40, 'x')});
    std::size_t actual = 0;
    const Blob blob = readBlob(cdb, 1, 1, kFirstRecord, 100, &actual);
    EXPECT_EQ(actual, 40u);
    EXPECT_EQ(textOf(blob), std::string(40, 'x') + std::string(60, '\0'));
}

TEST(ReadBlob, ALongRecordKeepsItsLength) {
    MapCdb cdb;
    cdb.put(1, 1, {std::string(40, 'x')});
    EXPECT_EQ(readBlob(cdb, 1, 1, kFirstRecord, 10, nullptr).size(), 40u);
}

TEST(ReadBlob, AMissingRecordIsNotLengthened) {
    MapCdb cdb;
    std::size_t actual = 77;
    EXPECT_TRUE(readBlob(cdb, 1, 1, kFirstRecord, 100, &actual).is_empty());
    EXPECT_EQ(actual, 0u);
}

TEST(ReadBlob, ARecordThatIsShorterThan512OnTheSecondReadIsCutToIt) {
    for (const std::size_t length : {std::size_t{511}, std::size_t{100}, std::size_t{1}}) {
        ChangingCdb cdb;
        cdb.second = length;
        EXPECT_EQ(textOf(readBlob(cdb, 1, 1, kFirstRecord)), std::string(length, 'b'));
        EXPECT_EQ(cdb.log, (Texts{"read 1/1 first", "read 1/1 same"}));
    }
}

TEST(ReadBlob, ARecordOf512OrMoreOnTheSecondReadIsNotCut) {
    ChangingCdb shorter;
    shorter.second = 512;
    EXPECT_EQ(textOf(readBlob(shorter, 1, 1, kFirstRecord)), std::string(512, 'b') + std::string(88, '\0'));
    ChangingCdb longer;
    longer.second = 700;
    EXPECT_EQ(textOf(readBlob(longer, 1, 1, kFirstRecord)), std::string(600, 'b'));
}

TEST(ReadBlob, AFailureOfTheSecondReadIsNotLookedAt) {
    ChangingCdb cdb;
    cdb.fails = true;
    EXPECT_EQ(textOf(readBlob(cdb, 1, 1, kFirstRecord)), std::string(512, 'a') + std::string(88, '\0'));
}
