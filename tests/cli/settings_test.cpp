// settings get, set, list and delete: loads in the user's settings.

#include "cli/cli_test.h"

#include <fstream>

namespace tests {

namespace {

using Json = nlohmann::ordered_json;

class SettingsTest : public CliTest {
protected:
    Json load(const std::string& name) { return json({"settings", "get", name})["load"]; }
};

} // namespace

TEST_F(SettingsTest, WithoutASavedLoadThereIsNothingToList) {
    EXPECT_EQ(done({"settings", "list"}), "0 saved loads\n");
    EXPECT_EQ(json({"settings", "list"}), Json({{"settings", Json::array()}}));
}

TEST_F(SettingsTest, ANewLoadHasTheDefaultsAndItsName) {
    EXPECT_EQ(done({"settings", "set", "Wind \xc3\x9c", "value1=2.5"}), "saved the load 'Wind \xc3\x9c'\n");
    EXPECT_EQ(json({"settings", "get", "Wind \xc3\x9c"}), Json({{"setting", "Wind \xc3\x9c"},
                                                                {"load",
                                                                 {{"name", "Wind \xc3\x9c"},
                                                                  {"cases", Json::array()},
                                                                  {"kind", 1},
                                                                  {"type", 10},
                                                                  {"distribution", nullptr},
                                                                  {"curve", nullptr},
                                                                  {"value1", 2.5},
                                                                  {"value2", nullptr},
                                                                  {"value3", nullptr},
                                                                  {"p1", nullptr},
                                                                  {"p2", nullptr}}}}));
}

TEST_F(SettingsTest, EveryKeyIsKeptAndPrinted) {
    done({"settings", "set", "wind", "name=Wind from the west", "cases=5,1,4000000000", "kind=3", "type=-20",
          "distribution=line", "curve=7", "value1=0.1", "value2=-3", "value3=1e300", "p1=0.25", "p2=0.75"});
    EXPECT_EQ(done({"settings", "get", "wind"}), "wind\n"
                                                 "  name          Wind from the west\n"
                                                 "  cases         1,5,4000000000\n"
                                                 "  kind          3\n"
                                                 "  type          -20\n"
                                                 "  distribution  line\n"
                                                 "  curve         7\n"
                                                 "  value1        0.1\n"
                                                 "  value2        -3\n"
                                                 "  value3        1e+300\n"
                                                 "  p1            0.25\n"
                                                 "  p2            0.75\n");
    EXPECT_EQ(load("wind")["distribution"], 1);
}

TEST_F(SettingsTest, AChangeLeavesTheOtherKeys) {
    done({"settings", "set", "wind", "cases=1,2,3", "value2=4", "distribution=volume"});
    EXPECT_EQ(done({"settings", "set", "WIND", "cases=9", "curve=2"}), "changed the load 'WIND'\n");
    const Json changed = load("wind");
    EXPECT_EQ(changed["cases"], Json({9}));
    EXPECT_EQ(changed["value2"], 4.0);
    EXPECT_EQ(changed["distribution"], 3);
    EXPECT_EQ(changed["curve"], 2);
    EXPECT_EQ(changed["name"], "wind");
}

TEST_F(SettingsTest, NoneTakesAValueAway) {
    done(
        {"settings", "set", "wind", "cases=1", "distribution=12", "curve=1", "value2=1", "value3=1", "p2=3"});
    EXPECT_EQ(load("wind")["p1"], 0.0);
    EXPECT_EQ(load("wind")["distribution"], 12);
    done({"settings", "set", "wind", "cases=none", "distribution=none", "curve=none", "value2=none",
          "value3=none", "p1=none"});
    const Json bare = load("wind");
    EXPECT_EQ(bare["cases"], Json::array());
    for (const char* key : {"distribution", "curve", "value2", "value3", "p1", "p2"})
        EXPECT_TRUE(bare[key].is_null()) << key;
}

TEST_F(SettingsTest, AFirstPositionBringsTheOther) {
    done({"settings", "set", "wind", "p1=0.5"});
    EXPECT_EQ(load("wind")["p2"], 1.0);
}

TEST_F(SettingsTest, TheListHasEveryLoadByName) {
    done({"settings", "set", "wind", "value1=2", "cases=1,2"});
    done({"settings", "set", "Snow", "distribution=area"});
    EXPECT_EQ(done({"settings", "list"}),
              "setting  name  cases  kind  type  distribution  curve  value1  value2  value3  p1  p2\n"
              "Snow     Snow  -      1     10    area          -      0       -       -       -   -\n"
              "wind     wind  1,2    1     10    -             -      2       -       -       -   -\n"
              "2 saved loads\n");
    const Json settings = json({"settings", "list"})["settings"];
    ASSERT_EQ(settings.size(), 2U);
    EXPECT_EQ(settings[0]["setting"], "Snow");
    EXPECT_EQ(settings[1]["load"], load("wind"));
}

TEST_F(SettingsTest, ADeletedLoadIsGoneAndTheOthersStay) {
    done({"settings", "set", "wind", "value2=2", "cases=1"});
    done({"settings", "set", "wind 2", "value1=1"});
    EXPECT_EQ(done({"settings", "delete", "Wind"}), "deleted the load 'Wind'\n");
    expectFailure(taldork({"settings", "delete", "wind"}), "wind");
    expectFailure(taldork({"settings", "get", "wind"}), "wind");
    EXPECT_EQ(json({"settings", "list"})["settings"].size(), 1U);
    done({"settings", "set", "wind", "value1=1"});
    EXPECT_TRUE(load("wind")["value2"].is_null()) << "nothing of the old one comes back";
}

TEST_F(SettingsTest, WrongKeysNumbersAndNamesChangeNothing) {
    done({"settings", "set", "wind", "value1=1"});
    const std::string before = done({"settings", "list"});
    for (const char* wrong :
         {"value1",   "value4=1",   "Value1=1",         "=1",          "value1=",
          "value1=x", "value1=1,5", "value1=nan",       "value1=none", "value2=inf",
          "kind=1.5", "kind=none",  "type=99999999999", "type= 1",     "cases=",
          "cases=1,", "cases=-1",   "cases=4294967296", "cases=1;2",   "distribution=Line",
          "curve=x",  "p1=",        "name=\xce\xa9"}) {
        const ProgramRun run = taldork({"settings", "set", "wind", "value2=7", wrong});
        EXPECT_EQ(run.code, 2) << wrong;
        EXPECT_NE(run.err, "") << wrong;
        EXPECT_EQ(run.out, "") << wrong;
    }
    EXPECT_EQ(taldork({"settings", "set", "wind", "kind=1", "kind=2"}).code, 2);
    EXPECT_EQ(taldork({"settings", "set", "wind"}).code, 2);
    for (const std::string& name :
         {std::string(), std::string("a\\b"), std::string("\xce\xa9"), std::string(255, 'n')}) {
        EXPECT_EQ(taldork({"settings", "set", name, "kind=1"}).code, 2) << name;
        EXPECT_EQ(taldork({"settings", "delete", name}).code, 2) << name;
    }
    EXPECT_EQ(done({"settings", "list"}), before);
}

TEST_F(SettingsTest, ALoadOfTheLongestNameIsKept) {
    const std::string name(254, 'n');
    done({"settings", "set", name, "kind=2"});
    EXPECT_EQ(load(name)["kind"], 2);
    EXPECT_EQ(json({"settings", "list"})["settings"][0]["setting"], name);
}

TEST_F(SettingsTest, ARegistryThatIsNoneIsAFailureInOneLine) {
    std::ofstream(file("registry.sqlite"), std::ios::binary) << std::string(4096, 'x');
    const ProgramRun run = taldork({"settings", "set", "wind", "kind=1"});
    EXPECT_NE(run.err.find("taldork: wind: registry::set(): "), std::string::npos) << run.err;
    expectFailure(run, "wind");
    expectFailure(taldork({"settings", "list"}), "settings");
    expectFailure(taldork({"settings", "delete", "wind"}), "wind");
}

TEST_F(SettingsTest, EachSubcommandHasHelpAndTheGroupNeedsOne) {
    for (const char* word : {"get", "set", "list", "delete"})
        EXPECT_NE(done({"settings", word, "--help"}).find("Usage:"), std::string::npos) << word;
    const std::string keys = done({"settings", "set", "--help"});
    for (const char* key : {"name=", "cases=", "kind=", "type=", "distribution=", "curve=", "value1=",
                            "value2=", "value3=", "p1=", "p2="})
        EXPECT_NE(keys.find(std::string("  ") + key), std::string::npos) << key;
    EXPECT_EQ(taldork({"settings"}).code, 2);
    EXPECT_EQ(taldork({"settings", "get"}).code, 2);
}

} // namespace tests
