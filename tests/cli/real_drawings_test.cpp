// The program on drawings that CAD products wrote: it finds in them what an independent reader found, and
// changes nothing but what it is told to.

#include "cli/cli_test.h"

#include <algorithm>
#include <cstdlib>

namespace tests {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

namespace {

class RealDrawingTest : public CliTest, public ::testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        original = realDrawing(GetParam() + ".dwg");
        if (original.empty())
            GTEST_SKIP() << "no " << GetParam() << ".dwg in " << TALDORK_DRAWINGS;
        drawing = file("drawing.dwg");
        fs::copy_file(original, drawing);
        fs::permissions(drawing, fs::perms::owner_write, fs::perm_options::add);
    }

    /// What the independent reader found in the original.
    Json content() const {
        return Json::parse(readWholeFile(fs::path(original).replace_extension(".content.json")));
    }

    /// Compares object by object with a tool that shares no code with this tree.
    ProgramRun compareObjects(const std::string& changed, const Words& allowed = {}) {
        Words words = {TALDORK_OBJECT_TOOL, original.string(), changed};
        if (!allowed.empty()) {
            words.push_back("--allow");
            words.insert(words.end(), allowed.begin(), allowed.end());
        }
        return runProgram("python3", words, {}, folder.path());
    }

    fs::path original;
    std::string drawing;
};

/// The independent reader's program, where there is one.
fs::path independentReader() {
    if (const char* path = std::getenv("TALDORK_INDEPENDENT_READER"); path != nullptr && *path != '\0')
        return path;
    return findOnPath("dwgread");
}

/// What that reader finds in a drawing. Its own libraries may stand in an install tree that the system does
/// not know.
Json readIndependently(const fs::path& reader, const std::string& drawing, const fs::path& scratch) {
    const fs::path out = scratch / "independent.json";
    fs::remove(out);
    const ProgramRun run =
        runProgram(reader, {"-O", "JSON", "-o", out.string(), drawing},
                   {{"LD_LIBRARY_PATH", (reader.parent_path().parent_path() / "lib").string()}}, scratch);
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    EXPECT_EQ(run.err.find("ERROR"), std::string::npos) << run.err;
    return Json::parse(readWholeFile(out), nullptr, false);
}

std::map<std::string, int> kindsRead(const Json& drawing) {
    std::map<std::string, int> counts;
    for (const Json& object : drawing["OBJECTS"])
        ++counts[object.contains("entity") ? object["entity"] : object["object"]];
    return counts;
}

#define NEED_INDEPENDENT_READER(VARIABLE)                                                                    \
    const fs::path VARIABLE = independentReader();                                                           \
    if (VARIABLE.empty())                                                                                    \
    GTEST_SKIP() << "no dwgread on the PATH, and TALDORK_INDEPENDENT_READER is not set"

/// Kinds and how many there are of each; those that the reader does not know count as one.
std::map<std::string, int> kinds(const Json& objects) {
    std::map<std::string, int> counts;
    for (const auto& [kind, count] : objects.items())
        counts[kind.rfind("UNKNOWN", 0) == 0 ? "UNKNOWN" : kind] += count.get<int>();
    return counts;
}

} // namespace

TEST_P(RealDrawingTest, InfoAgreesWithTheIndependentReader) {
    const Json info = json({"info", original.string()});
    const Json expected = content();
    EXPECT_EQ(info["version"], expected["version"]);
    EXPECT_EQ(info["classes"], expected["classes"]);
    EXPECT_EQ(info["total"], expected["total"]);
    EXPECT_EQ(info["layers"], expected["layers"]);
    EXPECT_EQ(info["blocks"], expected["blocks"]);
    EXPECT_EQ(info["named_objects"], expected["named_objects"]);

    const auto theirs = kinds(expected["objects"]);
    std::map<std::string, int> ours;
    for (const auto& [kind, count] : kinds(info["objects"]))
        ours[theirs.count(kind) != 0 ? kind : "UNKNOWN"] += count;
    EXPECT_EQ(ours, theirs);
}

TEST_P(RealDrawingTest, OpenAndSaveKeepsEveryObjectByteForByte) {
    done({"save", drawing, file("out.dwg")});
    const ProgramRun compared = compareObjects(file("out.dwg"));
    EXPECT_EQ(compared.code, 0) << compared.out << compared.err;
    EXPECT_NE(compared.out.find("gone 0, new 0, changed 0"), std::string::npos) << compared.out;
}

TEST_P(RealDrawingTest, SavingTwiceGivesTheSameFile) {
    done({"save", drawing, file("once.dwg")});
    done({"save", file("once.dwg"), file("twice.dwg")});
    EXPECT_TRUE(readWholeFile(file("once.dwg")) == readWholeFile(file("twice.dwg")));
}

TEST_P(RealDrawingTest, PuttingRecordsInChangesTheNamedObjectDictionaryAlone) {
    done({"store", "create", drawing, "ASDWG"});
    done({"records", "put", drawing, "10/0", "--hex", "0102", "--hex", "03"});
    done({"data", "set", drawing, "ASDWG", "title", "--text", "Hall"});
    const ProgramRun compared = compareObjects(drawing, {"C"});
    EXPECT_EQ(compared.code, 0) << compared.out << compared.err;
    EXPECT_NE(compared.out.find("gone 0"), std::string::npos) << compared.out;
    EXPECT_NE(compared.out.find("changed 1: C\n"), std::string::npos) << compared.out;
    EXPECT_EQ(json({"records", "get", drawing, "10/0"})["hex"], "0102");
    // Five dictionaries down to the key and its two records; GENERAL and the three parts of a text.
    EXPECT_EQ(json({"info", drawing})["total"], content()["total"].get<int>() + 5 + 2 + 1 + 3);
}

TEST_P(RealDrawingTest, TheIndependentReaderFindsTheSameObjectsInWhatIsSaved) {
    NEED_INDEPENDENT_READER(reader);
    done({"save", drawing, file("out.dwg")});
    const Json read = readIndependently(reader, file("out.dwg"), folder.path());
    EXPECT_EQ(kindsRead(read), content()["objects"].get<decltype(kindsRead(read))>());
    const Json before = readIndependently(reader, original.string(), folder.path());
    EXPECT_EQ(read["OBJECTS"], before["OBJECTS"]);
    EXPECT_EQ(read["CLASSES"], before["CLASSES"]);
}

TEST_P(RealDrawingTest, TheIndependentReaderFindsTheRecords) {
    NEED_INDEPENDENT_READER(reader);
    done({"store", "create", drawing, "ASDWG"});
    done({"records", "put", drawing, "10/0", "--hex", "0102", "--hex", "03"});
    done({"data", "set", drawing, "ASDWG", "flag", "--flag", "true"});
    const Json read = readIndependently(reader, drawing, folder.path());
    std::vector<std::string> rows;
    std::vector<int> numbers;
    for (const Json& row : read["CLASSES"]) {
        if (row["dxfname"] == "ORV_CDBRECORD") {
            rows.push_back(row["cppname"]);
            numbers.push_back(row["number"]);
        }
    }
    EXPECT_EQ(rows, (std::vector<std::string>{"ORV_CdbRecord", "ORV_CObjCdbRecord"}));
    std::vector<int> records;
    for (const Json& object : read["OBJECTS"])
        records.push_back(object["type"]);
    ASSERT_EQ(numbers.size(), 2U);
    EXPECT_EQ(std::count(records.begin(), records.end(), numbers[0]), 2);
    EXPECT_EQ(std::count(records.begin(), records.end(), numbers[1]), 1);
    EXPECT_EQ(read["OBJECTS"].size(), content()["total"].get<std::size_t>() + 5 + 2 + 1 + 1);
}

TEST_P(RealDrawingTest, RecordsTakenOutAgainLeaveTheOtherObjectsAsTheyWere) {
    done({"store", "create", drawing, "ASDWG"});
    done({"records", "put", drawing, "10/0", "--hex", "0102"});
    done({"records", "del", drawing, "10"});
    const ProgramRun compared = compareObjects(drawing, {"C"});
    EXPECT_EQ(compared.code, 0) << compared.out << compared.err;
    EXPECT_EQ(json({"records", "list", drawing})["keys"].size(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Version2000, RealDrawingTest, ::testing::ValuesIn(realDrawings2000()),
                         [](const auto& tested) { return tested.param; });

class NewerDrawingTest : public CliTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(NewerDrawingTest, IsRefusedInOneLineAndLeftAlone) {
    NEED_DRAWING(original, GetParam() + ".dwg");
    const std::string drawing = file("drawing.dwg");
    fs::copy_file(original, drawing);
    fs::permissions(drawing, fs::perms::owner_write, fs::perm_options::add);
    const ProgramRun info = taldork({"info", drawing});
    expectFailure(info, drawing);
    EXPECT_NE(info.err.find(GetParam().substr(7)), std::string::npos) << info.err;
    expectFailure(taldork({"store", "create", drawing, "ASDWG"}), drawing);
    expectFailure(taldork({"save", drawing, file("out.dwg")}), drawing);
    EXPECT_TRUE(readWholeFile(drawing) == readWholeFile(original));
    EXPECT_FALSE(fs::exists(file("out.dwg")));
}

INSTANTIATE_TEST_SUITE_P(Versions, NewerDrawingTest,
                         ::testing::Values("sample_AC1018", "sample_AC1024", "sample_AC1027",
                                           "sample_AC1032"),
                         [](const auto& tested) { return tested.param; });

} // namespace tests
