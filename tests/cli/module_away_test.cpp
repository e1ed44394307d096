// The program in a folder from which the module's file has been taken: drawings open and save, and records
// are kept.

#include "cli/cli_test.h"

namespace tests {

namespace fs = std::filesystem;

namespace {

class ModuleAwayTest : public CliTest {
protected:
    void SetUp() override {
        drawing = drawingWithStore();
        done({"records", "put", drawing, "10/0", "--hex", "0102", "--hex", "03"});
        done({"data", "set", drawing, "ASDWG", "title", "--text", "x"});

        fs::create_directory(folder.path() / "bin");
        for (const auto& entry : fs::directory_iterator(TALDORK_BIN))
            if (isProgramFile(entry.path().filename().string()))
                fs::copy_file(entry.path(), folder.path() / "bin" / entry.path().filename());
        // Otherwise the entry that the module wrote when it ran would bring it back from where it stands.
        fs::remove(file("registry.sqlite"));
        program = folder.path() / "bin" / "taldork";
    }

    void bringBack() {
        fs::copy_file(fs::path(TALDORK_BIN) / moduleFile, folder.path() / "bin" / moduleFile);
    }

    /// Of what stands in the bin folder, what the program needs: itself, its libraries, its command module.
    static bool isProgramFile(const std::string& name) {
        return name != moduleFile && (name.rfind("taldork", 0) == 0 || name.rfind("lib", 0) == 0);
    }

    static constexpr const char* moduleFile = "taldork191_x64.dbx";
    std::string drawing;
};

} // namespace

TEST_F(ModuleAwayTest, RecordsAreListedAsProxies) {
    const auto info = json({"info", drawing});
    EXPECT_EQ(info["objects"]["ORV_CDBRECORD"], 5);
    EXPECT_EQ(info["proxies"], nlohmann::ordered_json::parse(R"({"ORV_CDBRECORD":5})"));
    EXPECT_TRUE(info["stores"].is_null());
}

TEST_F(ModuleAwayTest, SaveKeepsEveryObjectByteForByte) {
    if (findOnPath("python3").empty() || !fs::exists(TALDORK_OBJECT_TOOL))
        GTEST_SKIP() << "no python3 or no " << TALDORK_OBJECT_TOOL;
    done({"save", drawing, file("out.dwg")});
    const ProgramRun compared =
        runProgram("python3", {TALDORK_OBJECT_TOOL, drawing, file("out.dwg")}, {}, folder.path());
    EXPECT_EQ(compared.code, 0) << compared.out << compared.err;
    EXPECT_NE(compared.out.find("gone 0, new 0, changed 0"), std::string::npos) << compared.out;
}

TEST_F(ModuleAwayTest, WithTheModuleBackTheyAreRecordsAgain) {
    done({"save", drawing, file("out.dwg")});
    bringBack();
    const auto info = json({"info", file("out.dwg")});
    EXPECT_EQ(info["proxies"].size(), 0U);
    EXPECT_EQ(info["stores"][0]["groups"][0]["records"], 2);
    EXPECT_EQ(json({"records", "get", file("out.dwg"), "10/0"})["hex"], "0102");
    EXPECT_EQ(json({"records", "get", file("out.dwg"), "10/0", "--position", "1"})["hex"], "03");
    EXPECT_EQ(done({"data", "get", file("out.dwg"), "ASDWG", "title"}), "x\n");
}

TEST_F(ModuleAwayTest, NewAndItsHelpWork) {
    done({"new", file("a.dwg")});
    EXPECT_EQ(json({"info", file("a.dwg")})["version"], "AC1015");
    for (const char* word : {"records", "systems", "convert", "elements", "select", "settings", "example"})
        EXPECT_NE(done({"--help"}).find(word), std::string::npos) << word;
    EXPECT_EQ(taldork({"melt"}).code, 2);
}

TEST_F(ModuleAwayTest, WhatNeedsTheModuleFailsInOneLine) {
    const std::string before = readWholeFile(drawing);
    expectFailure(taldork({"records", "list", drawing}), "records");
    expectFailure(taldork({"records", "put", drawing, "10/0", "--hex", "01", "--append"}), "records");
    expectFailure(taldork({"store", "create", drawing, "A"}), "store");
    expectFailure(taldork({"data", "get", drawing, "ASDWG", "title"}), "data");
    expectFailure(taldork({"systems", "list", drawing}), "systems");
    expectFailure(taldork({"systems", "set", drawing, "ASDWG", "nodes=1"}), "systems");
    expectFailure(taldork({"convert", drawing, "ASDWG", "--to-store", "-1,2,3"}), "convert");
    expectFailure(taldork({"elements", "list", drawing}), "elements");
    expectFailure(taldork({"select", "set", drawing, "a", "2A"}), "select");
    expectFailure(taldork({"example", drawing}), "example");
    expectFailure(taldork({"new", file("b.dwg"), "--store", "A"}), "--store");
    EXPECT_FALSE(fs::exists(file("b.dwg")));
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(ModuleAwayTest, AnEntryInTheRegistryThatNamesAMissingFileIsNoFailure) {
    bringBack();
    done({"info", drawing});
    fs::remove(folder.path() / "bin" / moduleFile);
    EXPECT_EQ(json({"info", drawing})["proxies"]["ORV_CDBRECORD"], 5);
    done({"save", drawing, file("out.dwg")});
}

TEST_F(ModuleAwayTest, TheUsersRegistryBringsTheModuleFromElsewhere) {
    // A run of the program where the module stands writes the entry that names its place.
    program = fs::path(TALDORK_BIN) / "taldork";
    done({"info", drawing});
    program = folder.path() / "bin" / "taldork";
    // The record 10/0 is no system. Nobody who could take the module's reports knows of it.
    const ProgramRun run = taldork({"info", drawing, "--json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.err.find("10/0 system entry is corrupt."), std::string::npos) << run.err;
    EXPECT_EQ(nlohmann::ordered_json::parse(run.out)["proxies"].size(), 0U);
}

} // namespace tests
