// new, save and info on drawings that the program makes itself, and what becomes of files when something goes
// wrong.

#include "cli/cli_test.h"

namespace tests {

namespace fs = std::filesystem;

namespace {

class DrawingTest : public CliTest {};

} // namespace

TEST_F(DrawingTest, ANewDrawingHasWhatEveryDrawingMustHave) {
    done({"new", file("a.dwg")});
    EXPECT_EQ(readWholeFile(file("a.dwg")).substr(0, 6), "AC1015");
    const auto info = json({"info", file("a.dwg")});
    EXPECT_EQ(info["version"], "AC1015");
    EXPECT_EQ(info["layers"], nlohmann::ordered_json::parse(R"(["0"])"));
    EXPECT_EQ(info["blocks"][0], "*Model_Space");
    EXPECT_EQ(info["blocks"][1], "*Paper_Space");
    for (const char* table :
         {"BLOCK_CONTROL", "LAYER_CONTROL", "STYLE_CONTROL", "LTYPE_CONTROL", "VIEW_CONTROL", "UCS_CONTROL",
          "VPORT_CONTROL", "APPID_CONTROL", "DIMSTYLE_CONTROL"})
        EXPECT_EQ(info["objects"].value(table, 0), 1) << table;
    EXPECT_EQ(info["proxies"].size(), 0U);
    EXPECT_EQ(info["stores"].size(), 0U);
}

TEST_F(DrawingTest, NewMakesTheStoresThatAreNamed) {
    done({"new", file("a.dwg"), "--store", "ASDWG", "--store", "B"});
    const auto stores = json({"info", file("a.dwg")})["stores"];
    ASSERT_EQ(stores.size(), 2U);
    EXPECT_EQ(stores[0]["name"], "ASDWG");
    EXPECT_EQ(stores[0]["groups"].size(), 0U);
    EXPECT_EQ(stores[1]["name"], "B");
}

TEST_F(DrawingTest, NewLeavesAFileThatIsThereAlone) {
    writeWholeFile(file("a.dwg"), "mine");
    expectFailure(taldork({"new", file("a.dwg")}), file("a.dwg"));
    EXPECT_EQ(readWholeFile(file("a.dwg")), "mine");
}

TEST_F(DrawingTest, NewInAMissingFolderFails) {
    expectFailure(taldork({"new", file("no/a.dwg")}), file("no/a.dwg"));
}

TEST_F(DrawingTest, NewWithAStoreNameThatIsReservedMakesNoFile) {
    expectFailure(taldork({"new", file("a.dwg"), "--store", "$x"}), "'$x'");
    EXPECT_FALSE(fs::exists(file("a.dwg")));
}

TEST_F(DrawingTest, SaveWritesTheSameObjectsUnderAnotherName) {
    const std::string drawing = drawingWithStore();
    done({"records", "put", drawing, "10/0", "--hex", "0102"});
    const std::string before = readWholeFile(drawing);
    done({"save", drawing, file("out.dwg")});
    EXPECT_TRUE(readWholeFile(drawing) == before);
    auto first = json({"info", drawing}), second = json({"info", file("out.dwg")});
    first.erase("file");
    second.erase("file");
    EXPECT_EQ(first, second);
    EXPECT_EQ(json({"records", "get", file("out.dwg"), "10/0"})["hex"], "0102");
}

TEST_F(DrawingTest, SaveOntoItselfKeepsTheDrawing) {
    const std::string drawing = drawingWithStore();
    done({"records", "put", drawing, "10/0", "--hex", "0102"});
    done({"save", drawing, drawing});
    EXPECT_EQ(json({"records", "get", drawing, "10/0"})["hex"], "0102");
}

TEST_F(DrawingTest, SaveThatCannotBeWrittenLeavesNothingBehind) {
    const std::string drawing = drawingWithStore();
    expectFailure(taldork({"save", drawing, file("no/out.dwg")}), file("no/out.dwg"));
    EXPECT_FALSE(fs::exists(file("no")));
}

TEST_F(DrawingTest, SaveOntoAFolderFailsAndLeavesIt) {
    const std::string drawing = drawingWithStore();
    fs::create_directory(file("folder"));
    expectFailure(taldork({"save", drawing, file("folder")}), file("folder"));
    EXPECT_TRUE(fs::is_directory(file("folder")));
}

TEST_F(DrawingTest, PathsMayHoldAnyLetters) {
    const std::string drawing = drawingWithStore("Geb\xc3\xa4ude \xe6\xa2\x81 'a' $b.dwg");
    done({"records", "put", drawing, "10/0", "--hex", "01"});
    EXPECT_EQ(json({"info", drawing})["file"], drawing);
}

TEST_F(DrawingTest, InfoCountsGroupsKeysAndRecords) {
    const std::string drawing = drawingWithStore();
    done({"records", "put", drawing, "10/0", "--hex", "01", "--hex", "02"});
    done({"records", "put", drawing, "10/1", "--hex", "01"});
    done({"records", "put", drawing, "2/1", "--hex", "01"});
    const auto info = json({"info", drawing});
    EXPECT_EQ(info["stores"], nlohmann::ordered_json::parse(R"([{"name":"ASDWG","hasRecords":true,"groups":[
        {"kwh":2,"keys":1,"records":1},{"kwh":10,"keys":2,"records":3}]}])"));
    EXPECT_EQ(info["objects"]["ORV_CDBRECORD"], 4);
}

TEST_F(DrawingTest, InfoForPeopleNamesEachPart) {
    const std::string drawing = drawingWithStore();
    done({"records", "put", drawing, "10/0", "--hex", "01"});
    const std::string text = done({"info", drawing});
    for (const char* part :
         {"AC1015", "objects", "classes", "layers", "blocks", "stores", "ASDWG", "ORV_CDBRECORD"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
}

TEST_F(DrawingTest, AMissingFileIsToldInOneLine) {
    expectFailure(taldork({"info", file("none.dwg")}), file("none.dwg"));
    expectFailure(taldork({"save", file("none.dwg"), file("out.dwg")}), file("none.dwg"));
    EXPECT_FALSE(fs::exists(file("out.dwg")));
}

TEST_F(DrawingTest, WhatIsNoDrawingIsToldInOneLineAndLeftAlone) {
    for (const std::string& content :
         {std::string(), std::string("x"), std::string("AC1015"), std::string("hello, world\n"),
          std::string(100000, '\0'), std::string("AC1027") + std::string(5000, 'x'),
          std::string("MZ") + std::string(5000, '\x90')}) {
        writeWholeFile(file("foreign.dwg"), content);
        expectFailure(taldork({"info", file("foreign.dwg")}), file("foreign.dwg"));
        expectFailure(taldork({"records", "put", file("foreign.dwg"), "10/0", "--hex", "01"}),
                      file("foreign.dwg"));
        expectFailure(taldork({"save", file("foreign.dwg"), file("out.dwg")}), file("foreign.dwg"));
        EXPECT_TRUE(readWholeFile(file("foreign.dwg")) == content);
        EXPECT_FALSE(fs::exists(file("out.dwg")));
    }
    expectFailure(taldork({"info", folder.path().string()}), folder.path().string());
}

TEST_F(DrawingTest, ATruncatedDrawingIsToldInOneLineAndLeftAlone) {
    const std::string drawing = drawingWithStore();
    const std::string whole = readWholeFile(drawing);
    for (std::size_t size = 0; size < whole.size(); size += whole.size() / 7) {
        writeWholeFile(file("cut.dwg"), whole.substr(0, size));
        expectFailure(taldork({"info", file("cut.dwg")}), file("cut.dwg"));
        EXPECT_EQ(fs::file_size(file("cut.dwg")), size);
    }
}

TEST_F(DrawingTest, AnOutputThatCannotBeWrittenIsAFailure) {
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full on this system";
    const std::string drawing = drawingWithStore();
    const ProgramRun run = runShell(
        shellQuote(program.string()) + " info " + shellQuote(drawing) + " >/dev/full", folder.path());
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err, "");
}

} // namespace tests
