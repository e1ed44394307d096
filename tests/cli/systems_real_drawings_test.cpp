// Systems in drawings that CAD products wrote.

#include "cli/systems_cli.h"

#include <algorithm>
#include <cstdlib>

namespace tests {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

namespace {

class SystemsInRealDrawingTest : public SystemsCliTest, public ::testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        original = realDrawing(GetParam() + ".dwg");
        if (original.empty())
            GTEST_SKIP() << "no " << GetParam() << ".dwg in " << TALDORK_DRAWINGS;
        drawing = file("drawing.dwg");
        fs::copy_file(original, drawing);
        fs::permissions(drawing, fs::perms::owner_write, fs::perm_options::add);
    }

    void makeSystems() {
        create(drawing, "ASDWG", {"--kind", "space", "--gravity", "-z", "--unit", "mm"});
        create(drawing, "SLAB", {"--kind", "plate", "--gravity", "+z", "--unit", "cm"});
        done({"systems", "set", drawing, "SLAB", "nodes=5", "size.2=0.5", "point-size=0.1",
              "box=0,-500,0,1000,0,0"});
    }

    fs::path original;
    std::string drawing;
};

} // namespace

TEST_P(SystemsInRealDrawingTest, AreReadBackByTheNextRun) {
    makeSystems();
    EXPECT_EQ(system(drawing)["unit"], "mm");
    const Json slab = system(drawing, "SLAB");
    EXPECT_EQ(slab["kind"], "plate");
    EXPECT_EQ(slab["nodes"], 5);
    EXPECT_EQ(slab["pointSize"], 0.1);
    EXPECT_EQ(slab["settings"]["differences"], 1);
    EXPECT_EQ(taldork({"systems", "check", drawing}).code, 0);
    EXPECT_EQ(done({"convert", drawing, "ASDWG", "--to-store", "1500,-250,0"}), "1.5 -0.25 0\n");
}

TEST_P(SystemsInRealDrawingTest, ChangeTheNamedObjectDictionaryAlone) {
    if (findOnPath("python3").empty() || !fs::exists(TALDORK_OBJECT_TOOL))
        GTEST_SKIP() << "no python3 or no " << TALDORK_OBJECT_TOOL;
    makeSystems();
    const ProgramRun compared = runProgram(
        "python3", {TALDORK_OBJECT_TOOL, original.string(), drawing, "--allow", "C"}, {}, folder.path());
    EXPECT_EQ(compared.code, 0) << compared.out << compared.err;
    EXPECT_NE(compared.out.find("gone 0"), std::string::npos) << compared.out;
    EXPECT_NE(compared.out.find("changed 1: C\n"), std::string::npos) << compared.out;
}

TEST_P(SystemsInRealDrawingTest, AreFoundByTheIndependentReader) {
    const char* named = std::getenv("TALDORK_INDEPENDENT_READER");
    const fs::path reader = named != nullptr && *named != '\0' ? fs::path(named) : findOnPath("dwgread");
    if (reader.empty())
        GTEST_SKIP() << "no dwgread on the PATH, and TALDORK_INDEPENDENT_READER is not set";
    makeSystems();
    const ProgramRun run = runProgram(
        reader, {"-O", "JSON", "-o", file("read.json"), drawing},
        {{"LD_LIBRARY_PATH", (reader.parent_path().parent_path() / "lib").string()}}, folder.path());
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    EXPECT_EQ(run.err.find("ERROR"), std::string::npos) << run.err;
    const Json read = Json::parse(readWholeFile(file("read.json")), nullptr, false);
    int number = 0;
    for (const Json& row : read["CLASSES"])
        if (row["cppname"] == "ORV_CdbRecord")
            number = row["number"];
    ASSERT_NE(number, 0);
    const auto records = std::count_if(read["OBJECTS"].begin(), read["OBJECTS"].end(),
                                       [&](const Json& object) { return object["type"] == number; });
    EXPECT_EQ(records, 8); // four of each system
}

TEST_P(SystemsInRealDrawingTest, ADrawingWithoutStoresHasNoSystemsAndNoComplaints) {
    EXPECT_EQ(done({"systems", "list", drawing}), "0 stores, 0 systems\n");
    EXPECT_EQ(done({"systems", "check", drawing}), "0 stores, no complaints\n");
    EXPECT_TRUE(readWholeFile(drawing) == readWholeFile(original));
}

INSTANTIATE_TEST_SUITE_P(Version2000, SystemsInRealDrawingTest, ::testing::ValuesIn(realDrawings2000()),
                         [](const auto& tested) { return tested.param; });

} // namespace tests
