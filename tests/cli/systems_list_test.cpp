// systems list: what the module read, as a table and as JSON, whole and broken stores side by side.

#include "cli/systems_cli.h"

#include <algorithm>

namespace tests {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

namespace {

class SystemsListTest : public SystemsCliTest {
protected:
    /// The drawing that an older release left, with its description object.
    std::string oldDrawing() {
        const std::string drawing = file("old.dwg");
        const ProgramRun run =
            runProgram(fs::path(TALDORK_BIN) / "write_old_drawing", {drawing},
                       {{TALDORK_REGISTRY_VARIABLE, file("registry.sqlite")}}, folder.path());
        EXPECT_EQ(run.code, 0) << run.out << run.err;
        return drawing;
    }
};

} // namespace

TEST_F(SystemsListTest, ADrawingWithoutStoresHasNone) {
    done({"new", file("a.dwg")});
    EXPECT_EQ(done({"systems", "list", file("a.dwg")}), "0 stores, 0 systems\n");
    EXPECT_EQ(json({"systems", "list", file("a.dwg")}),
              Json({{"file", file("a.dwg")}, {"systems", Json::array()}, {"complaints", 0}}));
}

TEST_F(SystemsListTest, ForPeopleHasABlockForEachSystem) {
    const std::string drawing = drawingWithSystem(
        {"--kind", "space", "--gravity", "+y", "--unit", "cm", "--box", "0,0,0,1000,500,300"});
    done({"systems", "set", drawing, "ASDWG", "nodes=12", "max-node=40", "size.2=1"});
    EXPECT_EQ(done({"systems", "list", drawing}),
              "ASDWG\n"
              "  kind         space\n"
              "  gravity      +y\n"
              "  unit         cm, scale 0.01\n"
              "  axes         x 1 0 0, y 0 0 -1, z 0 1 0\n"
              "  extents      0 0 0 to 10 -3 5 in the store\n"
              "               0 0 0 to 1000 500 300 in the drawing\n"
              "  nodes        12, highest 40\n"
              "  project      -\n"
              "  design code  -, nation: -, category: -\n"
              "  point size   0.01\n"
              "  settings     version 15, 1 difference from the defaults\n"
              "               size 2 = 1\n"
              "1 store, 1 system\n");
}

TEST_F(SystemsListTest, ForPeopleTheDifferentSettingsAreTold) {
    const std::string drawing = drawingWithSystem();
    EXPECT_NE(done({"systems", "list", drawing}).find("0 differences from the defaults\n1 store"),
              std::string::npos);
    done({"systems", "set", drawing, "ASDWG", "colour.1=#00ff00", "size.8=0.4", "switch.21=off",
          "switch.22=on"});
    const std::string text = done({"systems", "list", drawing});
    EXPECT_NE(text.find("differences from the defaults\n"
                        "               size 8 = 0.4\n"
                        "               switch 21 off\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n               colour 1 #00FF00FF\n1 store, 1 system\n"), std::string::npos)
        << text;
}

TEST_F(SystemsListTest, ForPeopleOfMoreThanEightDifferentSettingsTheFirstEightAreTold) {
    const std::string drawing = drawingWithSystem();
    Words set = {"systems", "set", drawing, "ASDWG"};
    for (int number = 200; number < 208; ++number)
        set.push_back("size." + std::to_string(number) + "=-7.5");
    done(set);
    EXPECT_NE(done({"systems", "list", drawing}).find("\n               size 207 = -7.5\n1 store"),
              std::string::npos);
    done({"systems", "set", drawing, "ASDWG", "size.208=-7.5", "colour.0=#01020304"});
    const std::string text = done({"systems", "list", drawing});
    EXPECT_NE(text.find("10 differences from the defaults\n               size 200 = -7.5\n"),
              std::string::npos)
        << text;
    EXPECT_NE(
        text.find(
            "\n               size 207 = -7.5\n               \xe2\x80\xa6 2 more, see --json\n1 store"),
        std::string::npos)
        << text;
}

TEST_F(SystemsListTest, ForPeopleTheDustOfATurnIsZero) {
    const std::string drawing = drawingWithSystem(
        {"--kind", "plate", "--gravity", "+z", "--unit", "cm", "--box", "0,-600.1,0,500,0,0"});
    EXPECT_NE(system(drawing)["extents"]["store"]["min"][2], 0.0);
    const std::string text = done({"systems", "list", drawing});
    EXPECT_NE(text.find("  extents      0 6.001 0 to 5 0 0 in the store\n"
                        "               0 -600.1 0 to 500 0 0 in the drawing\n"),
              std::string::npos)
        << text;
}

TEST_F(SystemsListTest, JsonHasEveryField) {
    const std::string drawing = drawingWithSystem({"--kind", "plate", "--gravity", "+z", "--unit", "mm"});
    const Json listed = json({"systems", "list", drawing});
    const Json expected = Json::parse(R"({
        "name": "ASDWG", "remark": null, "kind": "plate", "gravity": "+z", "unit": "mm", "unitNumber": 16,
        "scale": 0.001, "transform": [], "axes": {"x": [1.0, 0.0, 0.0], "y": [0.0, -1.0, 0.0], "z": [0.0, 0.0, -1.0]},
        "extents": {"store": {"min": [0.0, 0.0, 0.0], "max": [20.0, 20.0, 0.0]},
                    "drawing": {"min": [], "max": []}},
        "nodes": 0, "highestNode": 0, "project": null,
        "designCode": {"name": null, "nation": null, "category": null}, "pointSize": 0.01,
        "settings": {"version": 15, "differences": 0, "sizes": [], "switches": [], "colours": []}})");
    ASSERT_EQ(listed["systems"].size(), 1U);
    Json entry = listed["systems"][0];
    // Numbers that come from a turn by pi.
    const Json transform = entry["transform"];
    ASSERT_EQ(transform.size(), 4U);
    const double turn[4][4] = {{1, 0, 0, 0}, {0, -1, 0, 0}, {0, 0, -1, 0}, {0, 0, 0, 1}};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            EXPECT_NEAR(transform[i][j].get<double>(), turn[i][j], 1e-15) << i << j;
    entry["transform"] = Json::array();
    const double max[3] = {20000, -20000, 0};
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(entry["extents"]["drawing"]["max"][i].get<double>(), max[i], 1e-9) << i;
    entry["extents"]["drawing"] = {{"min", Json::array()}, {"max", Json::array()}};
    EXPECT_EQ(entry.dump(1), expected.dump(1));
}

TEST_F(SystemsListTest, AllShowsEverySetting) {
    const Json settings = system(drawingWithSystem(), "ASDWG", true)["settings"];
    EXPECT_EQ(settings["differences"], 0);
    for (const char* table : {"sizes", "switches", "colours"}) {
        ASSERT_EQ(settings[table].size(), 300U) << table;
        for (int i = 0; i < 300; ++i)
            EXPECT_EQ(settings[table][i]["number"], i) << table;
    }
    EXPECT_EQ(settings["sizes"][1]["flags"], 2);
    EXPECT_EQ(settings["switches"][21]["on"], true);
    EXPECT_EQ(settings["colours"][51]["colour"], "#0000FFFF");
}

TEST_F(SystemsListTest, AllGoesWithJson) {
    EXPECT_EQ(taldork({"systems", "list", drawingWithSystem(), "--all"}).code, 2);
}

TEST_F(SystemsListTest, SystemsComeByTheirNames) {
    const std::string drawing = file("a.dwg");
    done({"new", drawing});
    for (const char* name : {"b", "C", "a"})
        create(drawing, name);
    std::vector<std::string> names;
    const auto listed = json({"systems", "list", drawing});
    for (const auto& entry : listed["systems"])
        names.push_back(entry["name"]);
    EXPECT_EQ(names, (std::vector<std::string>{"C", "a", "b"}));
}

TEST_F(SystemsListTest, EachKindOfProblemReadsAsItsKind) {
    const std::string drawing = drawingWithStore();
    for (const auto& [iprob, kind] : std::map<int, std::string>{{0, "space"},
                                                                {10, "plane"},
                                                                {19, "plane"},
                                                                {20, "space"},
                                                                {30, "plate"},
                                                                {31, "plate"},
                                                                {34, "plate"},
                                                                {35, "plate"}}) {
        put(drawing, "ASDWG", "10/0", systemRecord(iprob, -3));
        EXPECT_EQ(system(drawing)["kind"], kind) << iprob;
    }
}

TEST_F(SystemsListTest, NoGravityAxisIsShownAsNone) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/0", systemRecord(0, 0));
    const auto listed = json({"systems", "list", drawing});
    EXPECT_EQ(listed["systems"][0]["gravity"], "none");
    EXPECT_NE(listed["complaints"], 0);
}

TEST_F(SystemsListTest, AxesOfNoUsualLengthAreAnotherUnit) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/0", systemRecord(0, -3, 2.0F));
    const Json entry = system(drawing);
    EXPECT_EQ(entry["unit"], "other");
    EXPECT_EQ(entry["unitNumber"], 13);
    EXPECT_EQ(entry["scale"], 2.0);
}

TEST_F(SystemsListTest, AScaleThatIsNotItsUnitsIsAnotherUnit) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/0", systemRecord(0, -3));
    put(drawing, "ASDWG", "10/102", unitRecord(2, 15, 3.0));
    EXPECT_EQ(system(drawing)["unit"], "other");
    put(drawing, "ASDWG", "10/102", unitRecord(1, 15, 3.0)); // an old one goes by the unit
    EXPECT_EQ(system(drawing)["unit"], "cm");
    EXPECT_EQ(system(drawing)["scale"], 0.01);
}

TEST_F(SystemsListTest, NumbersThatAreNoneAreNull) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/0", systemRecord(0, -3));
    put(drawing, "ASDWG", "10/102", unitRecord(2, 13, 0.0));
    const auto listed = json({"systems", "list", drawing});
    EXPECT_EQ(listed["systems"][0]["scale"], 0.0);
    EXPECT_TRUE(listed["systems"][0]["extents"]["drawing"]["max"][0].is_null());
}

TEST_F(SystemsListTest, AStoreWithoutASystemIsListedWithARemark) {
    const std::string drawing = drawingWithSystem();
    done({"store", "create", drawing, "EMPTY"});
    done({"data", "set", drawing, "NOTES", "title", "--text", "x"}); // general data alone
    const Json listed = json({"systems", "list", drawing});
    ASSERT_EQ(listed["systems"].size(), 3U);
    EXPECT_EQ(listed["systems"][0]["kind"], "space");
    for (int i : {1, 2}) {
        EXPECT_EQ(listed["systems"][i].size(), 2U);
        EXPECT_NE(listed["systems"][i]["remark"].get<std::string>().find("no system"), std::string::npos);
    }
    EXPECT_EQ(listed["complaints"], 3);
    const std::string text = done({"systems", "list", drawing});
    EXPECT_NE(text.find("\nEMPTY: no system; 'taldork systems check' tells why\n"), std::string::npos)
        << text;
    EXPECT_NE(text.find("\n3 stores, 1 system\n3 complaints; 'taldork systems check' tells them\n"),
              std::string::npos)
        << text;
}

TEST_F(SystemsListTest, GeneralDataOfTheDrawingIsNoStore) {
    const std::string drawing = drawingWithSystem();
    done({"data", "set", drawing, "$Kelmoran", "version_string", "--text", "1"});
    EXPECT_EQ(json({"systems", "list", drawing})["systems"].size(), 1U);
}

TEST_F(SystemsListTest, ADrawingIsNotChanged) {
    const std::string drawing = drawingWithSystem();
    const std::string before = readWholeFile(drawing);
    done({"systems", "list", drawing});
    EXPECT_TRUE(readWholeFile(drawing) == before);
    expectFailure(taldork({"systems", "list", file("none.dwg")}), file("none.dwg"));
}

TEST_F(SystemsListTest, ComplaintsArePrintedWhenAskedFor) {
    const std::string drawing = drawingWithStore();
    EXPECT_EQ(taldork({"systems", "list", drawing}).err, "");
    const ProgramRun run = taldork({"--verbose", "systems", "list", drawing});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.err.find("Failed to find fallback record for 10/0."), std::string::npos) << run.err;
}

// A store that holds records alone is no concern of who works with records.
TEST_F(SystemsListTest, OtherCallsDoNotTellOfMissingSystems) {
    const std::string drawing = drawingWithStore();
    EXPECT_EQ(taldork({"records", "list", drawing}).err, "");
    EXPECT_EQ(taldork({"info", drawing}).err, "");
    EXPECT_NE(taldork({"--verbose", "info", drawing}).err, "");
}

TEST_F(SystemsListTest, AnOldDescriptionTellsProjectAndDesignCodeUntilItIsSaved) {
    const std::string drawing = oldDrawing();
    const Json entry = system(drawing);
    EXPECT_EQ(entry["kind"], "plane");
    EXPECT_EQ(entry["gravity"], "-y");
    EXPECT_EQ(entry["nodes"], 12);
    EXPECT_EQ(entry["highestNode"], 345);
    EXPECT_EQ(entry["project"], "Halle \xc3\x9c");
    EXPECT_EQ(entry["designCode"], Json::parse(R"({"name":"EC_5","nation":1,"category":"class B"})"));
    EXPECT_EQ(entry["extents"]["store"]["min"], (std::vector<double>{1e8, 1e8, 1e8}));
    EXPECT_EQ(entry["extents"]["store"]["max"], (std::vector<double>{-1e8, -1e8, -1e8}));
    const std::string text = done({"systems", "list", drawing});
    EXPECT_NE(text.find("  design code  EC_5, nation: 1, category: class B\n"), std::string::npos) << text;
    EXPECT_EQ(taldork({"systems", "check", drawing}).code, 0);

    done({"systems", "set", drawing, "ASDWG", "nodes=13"});
    const Json saved = system(drawing);
    EXPECT_EQ(saved["kind"], "plane");
    EXPECT_EQ(saved["nodes"], 13);
    EXPECT_TRUE(saved["project"].is_null());
    EXPECT_TRUE(saved["designCode"]["name"].is_null());
}

} // namespace tests
