// systems check: every complaint with its store, and broken stores that hide none of the others.

#include "cli/systems_cli.h"

#include <algorithm>

namespace tests {

using Json = nlohmann::ordered_json;

namespace {

class SystemsCheckTest : public SystemsCliTest {
protected:
    using Lines = std::vector<std::string>;

    static bool holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }
};

/// Settings of a kind and a version, with tables that end early.
std::string settingsRecord(int id, int version, int colours) {
    return RecordBytes().add(id).add(version).add(colours).add(0x01020304).bytes();
}

/// A way in which a store can be broken.
struct Breakage {
    const char* name;
    std::vector<std::pair<std::string, std::string>> records;
    bool hasSystem; ///< the module takes it up all the same
    std::vector<std::string> complaints;
};

std::vector<Breakage> breakages() {
    const std::string system = systemRecord(0, -3);
    return {
        {"without_10_0",
         {{"20/5", "x"}},
         false,
         {"BROKEN: debug: Failed to find fallback record for 10/0. (false)",
          "BROKEN: debug: system could not be initialized (success) [it->first=BROKEN]"}},
        {"short_10_0",
         {{"10/0", system.substr(0, 96)}, {"10/102", unitRecord(2, 13, 1.0)}},
         true,
         {"BROKEN: error: 10/0 system entry is corrupt. (m_data_10_0.size() > "
          "(offsetof(typeCDB_SYST,m_tg) + sizeof((syst).m_tg))) [sizeof((syst).m_tg)=48, "
          "offsetof(typeCDB_SYST,m_tg)=48]"}},
        {"old_10_102_with_an_unknown_unit",
         {{"10/0", system}, {"10/102", unitRecord(1, 14, 2.0)}},
         true,
         {"BROKEN: debug: 0"}},
        {"zero_axis",
         {{"10/0", system.substr(0, 72) + std::string(12, '\0') + system.substr(84)}},
         true,
         {"BROKEN: debug: invalid xform (!y.isZeroLength()) [origin=Point3d("}},
        {"short_0_98",
         {{"10/0", system}, {"0/98", std::string(100, '\1')}},
         true,
         {"BROKEN: error: 0/98 entry is corrupt. (newVisData.size() > "
          "(offsetof(legacy::typeSymbolSetup,globalScalingValue) + "
          "sizeof((*newVisData.cast<legacy::typeSymbolSetup*>()).globalScalingValue))) ["}},
        {"10_100_of_another_kind",
         {{"10/0", system}, {"10/100", settingsRecord(2, 15, 1)}},
         true,
         {"BROKEN: debug: id == 1 [id=2]",
          "BROKEN: debug: failed to load vis settings (version > 0) [version=0]"}},
        {"10_100_of_a_future_version",
         {{"10/0", system}, {"10/100", settingsRecord(1, 16, 1)}},
         true,
         {"BROKEN: debug: version <= static_cast<int32>(settings.getVersion()) [settings.getVersion()=15, "
          "version=16]"}},
        {"10_100_cut_off",
         {{"10/0", system}, {"10/100", settingsRecord(1, 15, 300)}},
         true,
         {"BROKEN: debug: ", "BROKEN: exception: filer error"}},
    };
}

class BrokenStoreTest : public SystemsCheckTest, public ::testing::WithParamInterface<Breakage> {};

} // namespace

TEST_F(SystemsCheckTest, WholeSystemsGiveNoComplaint) {
    const std::string drawing = drawingWithSystem();
    create(drawing, "B", {"--kind", "plane", "--gravity", "+x", "--unit", "mm"});
    EXPECT_EQ(done({"systems", "check", drawing}), "2 stores, no complaints\n");
    EXPECT_EQ(json({"systems", "check", drawing}),
              Json({{"file", drawing}, {"stores", 2}, {"complaints", Json::array()}}));
}

TEST_F(SystemsCheckTest, ADrawingWithoutStoresGivesNoComplaint) {
    done({"new", file("a.dwg")});
    EXPECT_EQ(done({"systems", "check", file("a.dwg")}), "0 stores, no complaints\n");
}

// Two drawings with five systems, one of them broken: it is told, by its name, and the other four are there.
TEST_P(BrokenStoreTest, IsToldAndHidesNoOther) {
    const Breakage& broken = GetParam();
    const std::string first = file("first.dwg"), second = file("second.dwg");
    done({"new", first});
    done({"new", second});
    create(first, "A", {"--kind", "plane", "--gravity", "-y", "--unit", "cm"});
    create(first, "Z", {"--kind", "plate", "--gravity", "+z", "--unit", "mm"});
    create(second, "A");
    create(second, "Z");
    for (const auto& [key, bytes] : broken.records)
        put(first, "BROKEN", key, bytes);
    const std::string before = readWholeFile(first);

    const Lines lines = complaints(first);
    ASSERT_EQ(lines.size(), broken.complaints.size()) << ::testing::PrintToString(lines);
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i].substr(0, broken.complaints[i].size()), broken.complaints[i]);
    EXPECT_EQ(taldork({"systems", "check", second}).code, 0);

    const ProgramRun run = taldork({"systems", "list", first, "--json"});
    EXPECT_EQ(run.code, 0);
    const Json listed = Json::parse(run.out);
    ASSERT_EQ(listed["systems"].size(), 3U);
    EXPECT_EQ(listed["systems"][0]["kind"], "plane");
    EXPECT_EQ(listed["systems"][1]["name"], "BROKEN");
    EXPECT_EQ(listed["systems"][1].contains("kind"), broken.hasSystem);
    EXPECT_EQ(listed["systems"][1]["remark"].is_null(), broken.hasSystem);
    EXPECT_EQ(listed["systems"][2]["unit"], "mm");
    const bool throws = broken.complaints.back().find("exception") != std::string::npos;
    EXPECT_EQ(listed["complaints"], broken.complaints.size());
    EXPECT_EQ(holds(run.err, "filer error"), throws) << run.err;

    // Neither has changed the file, and the whole systems can be worked with.
    EXPECT_TRUE(readWholeFile(first) == before);
    EXPECT_EQ(taldork({"convert", first, "Z", "--to-store", "1000,0,0"}).out, "1 0 0\n");
    EXPECT_EQ(taldork({"systems", "set", first, "A", "nodes=3"}).code, 0);
    EXPECT_EQ(complaints(first), lines);
}

INSTANTIATE_TEST_SUITE_P(Ways, BrokenStoreTest, ::testing::ValuesIn(breakages()),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(SystemsCheckTest, JsonHasConditionMessageAndValues) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/0", systemRecord(0, 7));
    put(drawing, "ASDWG", "10/100", settingsRecord(1, 15, 300));
    const ProgramRun run = taldork({"systems", "check", drawing, "--json"});
    expectFailure(run, drawing);
    const Json listed = Json::parse(run.out);
    EXPECT_EQ(listed["stores"], 1);
    ASSERT_EQ(listed["complaints"].size(), 3U);
    EXPECT_EQ(listed["complaints"][0], Json::parse(R"({"store":"ASDWG","kind":"report","severity":"debug",
        "condition":"iachs!=0 && iachs >= -3 && iachs <= 3","message":"unknown/unhandled IACHS",
        "values":[{"name":"iachs","value":"7"}]})"));
    EXPECT_EQ(listed["complaints"][1]["condition"], "(currOffset + sizeof(T)) <= size_");
    EXPECT_EQ(listed["complaints"][2],
              Json::parse(R"({"store":"ASDWG","kind":"exception","message":"filer error"})"));
}

TEST_F(SystemsCheckTest, AStoreWithGeneralDataAloneIsToldAsTooOldOrDefect) {
    const std::string drawing = drawingWithSystem();
    done({"data", "set", drawing, "NOTES", "title", "--text", "x"});
    EXPECT_EQ(complaints(drawing),
              Lines{"NOTES: debug: could not access NOD database information in drawing. => DWG too old or "
                    "defect. (nod && nod->isOpen()) [it->first=NOTES]"});
}

TEST_F(SystemsCheckTest, EveryStoreOfSeveralBrokenOnesIsTold) {
    const std::string drawing = drawingWithStore("drawing.dwg");
    put(drawing, "CUT", "10/0", systemRecord(0, -3));
    put(drawing, "CUT", "10/100", settingsRecord(1, 15, 300));
    put(drawing, "CUT2", "10/0", systemRecord(9, -3));
    put(drawing, "CUT2", "10/100", settingsRecord(1, 15, 300));
    const Lines lines = complaints(drawing);
    const auto count = [&](const std::string& text) {
        return std::count_if(lines.begin(), lines.end(), [&](const auto& line) { return holds(line, text); });
    };
    EXPECT_EQ(count("ASDWG: "), 2);
    EXPECT_EQ(count("CUT: exception: filer error"), 1);
    EXPECT_EQ(count("CUT2: exception: filer error"), 1);
    EXPECT_GE(count("CUT2: debug: invalid/unsupported system type (iprob != 9) [iprob=9]"), 1);
}

TEST_F(SystemsCheckTest, TheListCountsEveryExceptionToo) {
    const std::string drawing = drawingWithSystem();
    for (const char* store : {"CUT", "CUT2"}) {
        put(drawing, store, "10/0", systemRecord(0, -3));
        put(drawing, store, "10/100", settingsRecord(1, 15, 300));
    }
    ASSERT_EQ(complaints(drawing).size(), 4U);
    const ProgramRun run = taldork({"systems", "list", drawing});
    EXPECT_TRUE(holds(run.out, "\n3 stores, 3 systems\n4 complaints; 'taldork systems check' tells them\n"))
        << run.out;
    // The second reading, which counts, is heard by nobody.
    const ProgramRun verbose = taldork({"--verbose", "systems", "list", drawing});
    EXPECT_EQ(verbose.out, run.out);
    const std::string condition = "(currOffset + sizeof(T)) <= size_";
    const std::size_t first = verbose.err.find(condition), second = verbose.err.find(condition, first + 1);
    ASSERT_NE(second, std::string::npos) << verbose.err;
    EXPECT_EQ(verbose.err.find(condition, second + 1), std::string::npos) << verbose.err;
}

TEST_F(SystemsCheckTest, AControlCharacterInAStoresNameIsPrintedAsABlank) {
    const std::string drawing = drawingWithSystem();
    done({"store", "create", drawing, "A\x1b[31m\tB"});
    EXPECT_EQ(complaints(drawing),
              (Lines{"A [31m B: debug: Failed to find fallback record for 10/0. (false)",
                     "A [31m B: debug: system could not be initialized (success) [it->first=A [31m B]"}));
    EXPECT_TRUE(holds(done({"systems", "list", drawing}), "A [31m B: no system"));
    EXPECT_EQ(json({"systems", "list", drawing})["systems"].size(), 2U);
}

TEST_F(SystemsCheckTest, ReportsArePrintedOnce) {
    const std::string drawing = drawingWithStore();
    const ProgramRun run = taldork({"systems", "check", drawing});
    EXPECT_EQ(run.err, "taldork: " + drawing + ": 2 complaints\n");
}

TEST_F(SystemsCheckTest, WhatIsNoDrawingFailsInOneLine) {
    writeWholeFile(file("a.dwg"), "no drawing");
    expectFailure(taldork({"systems", "check", file("a.dwg")}), file("a.dwg"));
    expectFailure(taldork({"systems", "check", file("none.dwg")}), file("none.dwg"));
}

} // namespace tests
