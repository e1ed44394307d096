// General data: named texts, flags and raw values beside the records.

#include "cli/cli_test.h"

namespace tests {

namespace {

class DataTest : public CliTest {};

} // namespace

TEST_F(DataTest, ATextComesBack) {
    const std::string drawing = drawingWithStore();
    for (const char* text : {"Hall 3", "", "\xc3\xa4\xe6\xa2\x81 \xf0\x9d\x84\x9e", "a 'quoted' \"one\""}) {
        done({"data", "set", drawing, "ASDWG", "title", "--text", text});
        EXPECT_EQ(done({"data", "get", drawing, "ASDWG", "title"}), std::string(text) + "\n");
        EXPECT_EQ(json({"data", "get", drawing, "ASDWG", "title", "--text"})["value"], text);
    }
}

TEST_F(DataTest, AFlagComesBack) {
    const std::string drawing = drawingWithStore();
    for (const char* flag : {"true", "false"}) {
        done({"data", "set", drawing, "ASDWG", "checked", "--flag", flag});
        EXPECT_EQ(done({"data", "get", drawing, "ASDWG", "checked", "--flag"}), std::string(flag) + "\n");
    }
}

TEST_F(DataTest, ARawValueComesBackWholeHoweverLong) {
    const std::string drawing = drawingWithStore();
    done({"data", "set", drawing, "ASDWG", "raw", "--raw", "00ff1c"});
    EXPECT_EQ(done({"data", "get", drawing, "ASDWG", "raw", "--raw"}), "00ff1c\n");
    done({"data", "set", drawing, "ASDWG", "raw", "--raw", "07"});
    EXPECT_EQ(json({"data", "get", drawing, "ASDWG", "raw", "--raw"})["value"], "07");
}

TEST_F(DataTest, ATextIsThreeRawValues) {
    const std::string drawing = drawingWithStore();
    done({"data", "set", drawing, "ASDWG", "title", "--text", "ab"});
    EXPECT_EQ(done({"data", "get", drawing, "ASDWG", "title.version", "--raw"}), "02000000\n");
    EXPECT_EQ(done({"data", "get", drawing, "ASDWG", "title.size", "--raw"}), "02000000\n");
    EXPECT_EQ(done({"data", "get", drawing, "ASDWG", "title.data", "--raw"}), "61006200\n");
}

TEST_F(DataTest, SettingMakesTheStoresDictionaryButNoRecordStore) {
    done({"new", file("bare.dwg")});
    done({"data", "set", file("bare.dwg"), "NOTES", "title", "--text", "x"});
    EXPECT_EQ(done({"data", "get", file("bare.dwg"), "NOTES", "title"}), "x\n");
    expectFailure(taldork({"records", "list", file("bare.dwg"), "--store", "NOTES"}), file("bare.dwg"));
}

TEST_F(DataTest, WhatIsNotThereFails) {
    const std::string drawing = drawingWithStore();
    for (const char* form : {"--text", "--flag", "--raw"})
        expectFailure(taldork({"data", "get", drawing, "ASDWG", "none", form}), drawing);
    expectFailure(taldork({"data", "get", drawing, "NONE", "none"}), drawing);
}

TEST_F(DataTest, FailedExpectationsOfTheModuleArePrintedWhenAskedFor) {
    const std::string drawing = drawingWithStore();
    // A text that has lost its characters.
    done({"data", "set", drawing, "ASDWG", "title.size", "--raw", "03000000"});
    expectFailure(taldork({"data", "get", drawing, "ASDWG", "title"}), drawing);
    const ProgramRun told = taldork({"--verbose", "data", "get", drawing, "ASDWG", "title"});
    EXPECT_EQ(told.code, 1);
    EXPECT_NE(told.err.find("succ"), std::string::npos) << told.err;
    EXPECT_NE(told.err.find("dbName=ASDWG"), std::string::npos) << told.err;
}

TEST_F(DataTest, RecordsAndGeneralDataDoNotTouchEachOther) {
    const std::string drawing = drawingWithStore();
    done({"records", "put", drawing, "10/0", "--hex", "01"});
    done({"data", "set", drawing, "ASDWG", "title", "--text", "x"});
    EXPECT_EQ(json({"records", "list", drawing})["keys"].size(), 1U);
    done({"records", "del", drawing, "10"});
    EXPECT_EQ(done({"data", "get", drawing, "ASDWG", "title"}), "x\n");
}

} // namespace tests
