// systems set: each key, what is written back for it, and what is refused before anything is changed.

#include "cli/systems_cli.h"

namespace tests {

using Json = nlohmann::ordered_json;

namespace {

class SystemsSetTest : public SystemsCliTest {
protected:
    void set(const std::string& drawing, const Words& changes) {
        Words words = {"systems", "set", drawing, "ASDWG"};
        words.insert(words.end(), changes.begin(), changes.end());
        done(words);
    }

    std::map<std::string, std::string> records(const std::string& drawing) {
        std::map<std::string, std::string> all;
        for (const char* key : {"10/0", "10/100", "10/101", "10/102"})
            all[key] = record(drawing, "ASDWG", key);
        return all;
    }

    /// The keys of the records that differ.
    std::vector<std::string> changed(const std::map<std::string, std::string>& before,
                                     const std::string& drawing) {
        std::vector<std::string> keys;
        for (const auto& [key, bytes] : records(drawing))
            if (before.at(key) != bytes)
                keys.push_back(key);
        return keys;
    }

    using Keys = std::vector<std::string>;
};

} // namespace

TEST_F(SystemsSetTest, BoxIsGivenInTheDrawing) {
    const std::string drawing = drawingWithSystem({"--kind", "space", "--gravity", "-z", "--unit", "mm"});
    const auto before = records(drawing);
    set(drawing, {"box=-1000,0,0,2000,3000,4000"});
    const Json extents = system(drawing)["extents"];
    EXPECT_EQ(extents["store"]["min"], (std::vector<double>{-1, 0, 0}));
    EXPECT_EQ(extents["store"]["max"], (std::vector<double>{2, 3, 4}));
    EXPECT_EQ(extents["drawing"]["max"], (std::vector<double>{2000, 3000, 4000}));
    EXPECT_EQ(changed(before, drawing), Keys{"10/0"});
}

TEST_F(SystemsSetTest, NodeNumbersAreSet) {
    const std::string drawing = drawingWithSystem();
    const auto before = records(drawing);
    set(drawing, {"nodes=120", "max-node=2147483647"});
    EXPECT_EQ(system(drawing)["nodes"], 120);
    EXPECT_EQ(system(drawing)["highestNode"], 2147483647);
    EXPECT_EQ(changed(before, drawing), Keys{"10/0"});
}

TEST_F(SystemsSetTest, PointSizeIsSet) {
    const std::string drawing = drawingWithSystem();
    const auto before = records(drawing);
    set(drawing, {"point-size=0.125"});
    EXPECT_EQ(system(drawing)["pointSize"], 0.125);
    EXPECT_EQ(changed(before, drawing), Keys{"10/101"});
}

TEST_F(SystemsSetTest, TheOtherNumbersOfThePointSizesRecordStay) {
    const std::string drawing = drawingWithSystem();
    put(drawing, "ASDWG", "10/101", RecordBytes().add(77).add(88).add(0.5).bytes());
    set(drawing, {"point-size=2"});
    EXPECT_EQ(record(drawing, "ASDWG", "10/101"), RecordBytes().add(77).add(88).add(2.0).bytes());
}

TEST_F(SystemsSetTest, SizesSwitchesAndColoursAreSetByTheirNumbers) {
    const std::string drawing = drawingWithSystem();
    const auto before = records(drawing);
    set(drawing, {"size.0=2.5", "size.299=-0.5", "switch.299=on", "switch.21=off", "colour.51=#ff8000",
                  "colour.299=#01020304"});
    const Json settings = system(drawing)["settings"];
    EXPECT_EQ(settings["differences"], 6);
    EXPECT_EQ(settings["sizes"], Json::parse(R"([{"number":0,"value":2.5,"flags":0,"scaled":2.5},
                                                 {"number":299,"value":-0.5,"flags":0,"scaled":-0.5}])"));
    EXPECT_EQ(settings["switches"], Json::parse(R"([{"number":21,"on":false,"value":0},
                                                    {"number":299,"on":true,"value":1}])"));
    EXPECT_EQ(settings["colours"], Json::parse(R"([{"number":51,"colour":"#FF8000FF"},
                                                   {"number":299,"colour":"#01020304"}])"));
    EXPECT_EQ(changed(before, drawing), Keys{"10/100"});
}

TEST_F(SystemsSetTest, EveryPartOfAColourComesBackAsItWasSet) {
    const std::string drawing = drawingWithSystem();
    Words changes;
    Json expected = Json::array();
    for (int part = 0; part < 256; ++part) {
        char text[16];
        std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", part, 255 - part, part ^ 0x55, part / 2);
        changes.push_back("colour." + std::to_string(part) + "=" + text);
        expected.push_back({{"number", part}, {"colour", text}});
    }
    set(drawing, changes);
    // Writing them back once more must not wear them down.
    set(drawing, {"switch.0=off"});
    const Json colours = system(drawing, "ASDWG", true)["settings"]["colours"];
    ASSERT_EQ(colours.size(), 300U);
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(colours[i], expected[i]);
}

TEST_F(SystemsSetTest, ASettingSetBackIsNoDifference) {
    const std::string drawing = drawingWithSystem();
    set(drawing, {"size.2=7", "switch.21=off", "colour.51=#112233"});
    set(drawing, {"size.2=0.2", "switch.21=on", "colour.51=#0000ff"});
    EXPECT_EQ(system(drawing)["settings"]["differences"], 0);
}

TEST_F(SystemsSetTest, SizeOneScalesTheOthersFromTheNextReadingOn) {
    const std::string drawing = drawingWithSystem({"--kind", "space", "--gravity", "-z", "--unit", "cm"});
    set(drawing, {"size.1=2", "size.2=0.5"});
    const Json sizes = system(drawing)["settings"]["sizes"];
    ASSERT_EQ(sizes.size(), 2U);
    EXPECT_EQ(sizes[0]["scaled"], 2.0); // marked as one that no factor touches
    EXPECT_EQ(sizes[1]["value"], 0.5);
    EXPECT_EQ(sizes[1]["scaled"], 0.5 * 2.0 * 100.0);
}

TEST_F(SystemsSetTest, AllKeysGoTogether) {
    const std::string drawing = drawingWithSystem();
    EXPECT_EQ(done({"systems", "set", drawing, "ASDWG", "box=0,0,0,1,1,1", "nodes=1", "max-node=2",
                    "point-size=3", "size.4=4", "switch.5=off", "colour.6=#060606"}),
              "set box, nodes, max-node, point-size, size.4, switch.5, colour.6 of the system 'ASDWG'\n");
    const Json entry = system(drawing);
    EXPECT_EQ(entry["extents"]["store"]["max"], (std::vector<double>{1, 1, 1}));
    EXPECT_EQ(entry["nodes"], 1);
    EXPECT_EQ(entry["highestNode"], 2);
    EXPECT_EQ(entry["pointSize"], 3.0);
    EXPECT_EQ(entry["settings"]["differences"], 3);
}

TEST_F(SystemsSetTest, WhatTheModuleDoesNotKnowOfTheRecordStays) {
    const std::string drawing = drawingWithStore();
    std::string bytes = systemRecord(30, -3);
    for (std::size_t i = 96; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    bytes += "behind the end";
    put(drawing, "ASDWG", "10/0", bytes);
    set(drawing, {"nodes=258"});
    bytes[8] = 2;
    bytes[9] = 1;
    bytes[20] = 28; // the mask of a plate
    EXPECT_TRUE(record(drawing, "ASDWG", "10/0") == bytes);
}

TEST_F(SystemsSetTest, AMeasuredUnitIsWrittenDown) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/0", systemRecord(0, -3, 2.0F));
    set(drawing, {"nodes=1"});
    EXPECT_EQ(record(drawing, "ASDWG", "10/102"), unitRecord(2, 13, 2.0));
    EXPECT_EQ(system(drawing)["unit"], "other");
}

TEST_F(SystemsSetTest, WrongKeysAndValuesAreWrongUsageAndChangeNothing) {
    const std::string drawing = drawingWithSystem();
    const std::string before = readWholeFile(drawing);
    for (const char* change : {"",
                               "nodes",
                               "=1",
                               "melt=1",
                               "Nodes=1",
                               "nodes=",
                               "nodes=-1",
                               "nodes=1.5",
                               "nodes=x",
                               "nodes=2147483648",
                               "max-node=-1",
                               "point-size=-1",
                               "point-size=nan",
                               "point-size=inf",
                               "size=1",
                               "size.=1",
                               "size.300=1",
                               "size.-1=1",
                               "size.x=1",
                               "size.1=",
                               "size.1=nan",
                               "size.1=1e39",
                               "size.1=1,5",
                               "switch.300=on",
                               "switch.1=1",
                               "switch.1=ON",
                               "switch.1=",
                               "colour.300=#000000",
                               "colour.1=000000",
                               "colour.1=#",
                               "colour.1=#00",
                               "colour.1=#00000",
                               "colour.1=#0000000000",
                               "colour.1=#00 00 00",
                               "colour.1=#gg0000",
                               "colour.1=#0x0000",
                               "box=1,2,3",
                               "box=0,0,0,1,1,nan",
                               "box=1,0,0,0,1,1",
                               "box.1=1",
                               "nodes.1=1"}) {
        const ProgramRun run = taldork({"systems", "set", drawing, "ASDWG", "nodes=5", change});
        EXPECT_EQ(run.code, 2) << change;
        EXPECT_EQ(run.out, "") << change;
        EXPECT_NE(run.err.find("KEY=VALUE"), std::string::npos) << run.err;
    }
    EXPECT_EQ(taldork({"systems", "set", drawing, "ASDWG"}).code, 2);
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(SystemsSetTest, AKeyGivenTwiceIsWrongUsage) {
    const std::string drawing = drawingWithSystem();
    const ProgramRun run = taldork({"systems", "set", drawing, "ASDWG", "size.01=1", "size.1=2"});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("'size.1' is given twice"), std::string::npos) << run.err;
}

TEST_F(SystemsSetTest, AMissingStoreOrSystemIsToldInOneLine) {
    const std::string drawing = drawingWithSystem();
    done({"store", "create", drawing, "EMPTY"});
    const std::string before = readWholeFile(drawing);
    ProgramRun run = taldork({"systems", "set", drawing, "asdwg", "nodes=1"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("has no store 'asdwg'"), std::string::npos) << run.err;
    run = taldork({"systems", "set", drawing, "EMPTY", "nodes=1"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("the store 'EMPTY' has no system"), std::string::npos) << run.err;
    expectFailure(taldork({"systems", "set", file("none.dwg"), "ASDWG", "nodes=1"}), file("none.dwg"));
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(SystemsSetTest, ARecordTooShortForAFieldIsToldAndLeftAlone) {
    for (const auto& [length, change, what] : std::vector<std::tuple<std::size_t, std::string, std::string>>{
             {9, "nodes=5", "too short to hold nodes"},
             {12, "max-node=5", "too short to hold max-node"},
             {40, "box=1,1,1,2,2,2", "too short to hold a box"}}) {
        const std::string drawing = drawingWithStore(std::to_string(length) + ".dwg");
        put(drawing, "ASDWG", "10/0", systemRecord(0, -3).substr(0, length));
        put(drawing, "ASDWG", "10/102", unitRecord(2, 13, 1.0));
        const std::string before = readWholeFile(drawing);
        const ProgramRun run = taldork({"systems", "set", drawing, "ASDWG", change});
        expectFailure(run, drawing);
        EXPECT_NE(run.err.find(what), std::string::npos) << run.err;
        EXPECT_TRUE(readWholeFile(drawing) == before);
    }
}

TEST_F(SystemsSetTest, SettingsThatCannotBeReadWholeAreNotWrittenOver) {
    int number = 0;
    for (const std::string& settings : {RecordBytes().add(2).add(15).bytes(), // of another kind
                                        RecordBytes().add(1).add(16).bytes(), // of a newer release
                                        RecordBytes().add(1).add(15).add(300).bytes()}) { // cut off
        const std::string drawing = drawingWithStore(std::to_string(++number) + ".dwg");
        put(drawing, "ASDWG", "10/0", systemRecord(0, -3));
        put(drawing, "ASDWG", "10/101", RecordBytes().add(77).add(88).add(0.5).bytes());
        put(drawing, "ASDWG", "10/100", settings);
        const std::string before = readWholeFile(drawing);
        const ProgramRun refused = taldork({"systems", "set", drawing, "ASDWG", "nodes=5", "size.2=1"});
        EXPECT_EQ(refused.code, 1);
        EXPECT_NE(refused.err.find("cannot be read whole"), std::string::npos) << refused.err;
        EXPECT_TRUE(readWholeFile(drawing) == before);
        // What has nothing to do with them can be changed.
        EXPECT_EQ(taldork({"systems", "set", drawing, "ASDWG", "nodes=5", "point-size=1"}).code, 0);
        EXPECT_EQ(record(drawing, "ASDWG", "10/100"), settings);
        EXPECT_EQ(record(drawing, "ASDWG", "10/101"), RecordBytes().add(77).add(88).add(1.0).bytes());
    }
}

TEST_F(SystemsSetTest, TheOtherSystemsOfTheDrawingStay) {
    const std::string drawing = drawingWithSystem();
    create(drawing, "OTHER", {"--kind", "plate", "--gravity", "+z", "--unit", "cm"});
    const Json before = system(drawing, "OTHER");
    set(drawing, {"nodes=5", "size.2=1", "point-size=4"});
    EXPECT_EQ(system(drawing, "OTHER"), before);
}

} // namespace tests
