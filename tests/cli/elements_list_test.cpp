// elements list and elements show: live elements, kept plugins, and elements whose module is away.

#include "cli/elements_cli.h"

#include <algorithm>

namespace tests {

namespace fs = std::filesystem;

namespace {

class ElementsListTest : public ElementsCliTest {};

} // namespace

TEST_F(ElementsListTest, ADrawingWithoutElementsHasNone) {
    done({"new", file("a.dwg")});
    EXPECT_EQ(done({"elements", "list", file("a.dwg")}), "0 elements\n");
    EXPECT_EQ(json({"elements", "list", file("a.dwg")}),
              Json({{"file", file("a.dwg")}, {"elements", Json::array()}}));
}

TEST_F(ElementsListTest, TheFrameHasAllOfItsElements) {
    const std::string drawing = frameDrawing();
    const Json all = rows(drawing);
    ASSERT_EQ(all.size(), 50U);
    const Words order = handles(all);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end(), [](const std::string& a, const std::string& b) {
        return std::stoul(a, nullptr, 16) < std::stoul(b, nullptr, 16);
    }));
    const Json& beam = all[18];
    EXPECT_EQ(beam["class"], "STR_Beam");
    EXPECT_EQ(beam["dxfName"], "STR_BEAM");
    EXPECT_EQ(beam["application"], "TaldorkStructure");
    EXPECT_EQ(beam["state"], "live");
    EXPECT_TRUE(beam["remark"].is_null());
    EXPECT_EQ(beam["number"], 1);
    EXPECT_EQ(beam["name"], "C1");
    EXPECT_EQ(beam["bimId"].get<std::string>().rfind("guid:128:", 0), 0U);
    EXPECT_EQ(beam["system"], "ASDWG");
    EXPECT_EQ(beam["connections"].size(), 2U);
    EXPECT_EQ(beam["plugins"], Json({"str.general.beam.1", "orv.se.connectedelements.1", "str.section.1"}));
    EXPECT_EQ(beam["keptPlugins"], Json::array());
}

TEST_F(ElementsListTest, ForPeopleEachElementHasALine) {
    const std::string drawing = oddDrawing();
    const std::string text = told({"elements", "list", drawing});
    const std::string first = named(drawing, "Knoten \xc3\x9c\nx");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 6) << text;
    EXPECT_EQ(text.rfind("handle  class     number  name", 0), 0U) << text;
    // A line end in a name is a blank; a plugin that is kept stands in brackets.
    EXPECT_NE(text.find("\n" + first + "  "), std::string::npos) << text;
    EXPECT_NE(text.find("  3       Knoten \xc3\x9c x  LOOSE   "), std::string::npos) << text;
    EXPECT_NE(text.find("orv.base.general, str.softconnections.1, [test.away.1]  guid:128:"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n4 elements: 4 STR_Node\n"), std::string::npos) << text;
}

TEST_F(ElementsListTest, ClassesAreNamedByTheirNameOrTheirDxfName) {
    const std::string drawing = frameDrawing();
    EXPECT_EQ(rows(drawing, {"--class", "STR_Slab"}).size(), 4U);
    EXPECT_EQ(rows(drawing, {"--class", "STR_SLAB"}).size(), 4U);
    EXPECT_EQ(rows(drawing, {"--class", "str_slab"}).size(), 0U);
    EXPECT_EQ(rows(drawing, {"--system", "ASDWG"}).size(), 50U);
    EXPECT_EQ(rows(drawing, {"--system", "ASDWG", "--class", "STR_Node"}).size(), 18U);
    EXPECT_EQ(rows(drawing, {"--system", "OTHER"}).size(), 0U);
}

TEST_F(ElementsListTest, ListingAndShowingChangeNothing) {
    const std::string drawing = frameDrawing();
    const std::string before = readWholeFile(drawing);
    done({"elements", "list", drawing});
    done({"elements", "show", drawing, named(drawing, "C1")});
    done({"elements", "number", drawing});
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(ElementsListTest, ShowHasAllOfAnElement) {
    const std::string drawing = oddDrawing();
    const std::string first = named(drawing, "Knoten \xc3\x9c\nx"), second = named(drawing, "second");
    const Json node = toldJson({"elements", "show", drawing, first});
    EXPECT_EQ(node["space"], "*Model_Space");
    EXPECT_EQ(node["layer"], "0");
    EXPECT_EQ(node["extents"], Json({{"min", {0.0, 0.0, 0.0}}, {"max", {0.0, 0.0, 0.0}}}));
    EXPECT_EQ(node["link"], Json({{"name", "LOOSE"}, {"store", node["link"]["store"]}}));
    EXPECT_TRUE(node["link"]["store"].is_string());
    EXPECT_EQ(node["textOffset"], Json({0.0, 0.0, 0.0}));
    EXPECT_EQ(node["properties"], Json({{{"key", 5},
                                         {"type", "wide text"},
                                         {"value", "Gr\xc3\xbc\xc3\x9f"
                                                   "e\t\"x\""}},
                                        {{"key", 6}, {"type", "id"}, {"value", second}},
                                        {{"key", 30003}, {"type", "unsigned int"}, {"value", 7}}}));
    const Json inner = {{{"key", "b"}, {"type", "double"}, {"value", 2.5}, {"children", Json::array()}}};
    EXPECT_EQ(node["tree"], Json({{{"key", "a"}, {"type", "int"}, {"value", 1}, {"children", inner}},
                                  {{"key", "corner"},
                                   {"type", "point"},
                                   {"value", {1.0, 2.0, -3.0}},
                                   {"children", Json::array()}}}));
    EXPECT_EQ(node["log"],
              Json({{{"level", "ERROR"}, {"message", 17}, {"extra", 3}, {"arguments", Json::array()}},
                    {{"level", "WARNING"},
                     {"message", 18},
                     {"extra", 1},
                     {"arguments", Json::array({{{"type", "wide text"}, {"value", "too long"}}})}}}));
}

TEST_F(ElementsListTest, ShowHasThePluginsLivingAndKept) {
    const std::string drawing = oddDrawing();
    const std::string second = named(drawing, "second");
    const Json node = toldJson({"elements", "show", drawing, named(drawing, "Knoten \xc3\x9c\nx")});
    ASSERT_EQ(node["plugins"].size(), 3U);
    const Json& general = node["plugins"][0];
    EXPECT_EQ(general["id"], "orv.base.general");
    EXPECT_EQ(general["state"], "live");
    // Frame, version, name of 10 characters, number, identifier of 45 letters, offset, mark.
    EXPECT_EQ(general["bytes"], 8 + 4 + (4 + 4 * 10) + 4 + (4 + 45) + 24 + 4);
    const Json& kept = node["plugins"][2];
    EXPECT_EQ(kept["id"], "test.away.1");
    EXPECT_EQ(kept["state"], "kept");
    EXPECT_EQ(kept["bytes"], 12); // frame 8, a number 4
    EXPECT_EQ(kept["softIds"], Json({second}));
    EXPECT_EQ(kept["hardIds"], Json::array());
    EXPECT_EQ(kept["properties"], Json::array({{{"key", 12}, {"type", "int"}, {"value", -5}}}));
    EXPECT_EQ(kept["tree"][0]["value"], "as it is");
}

TEST_F(ElementsListTest, ShowForPeopleIsLinesWithoutControlCharacters) {
    const std::string drawing = oddDrawing();
    const std::string text = told({"elements", "show", drawing, named(drawing, "Knoten \xc3\x9c\nx")});
    for (const char* line :
         {"  name         Knoten \xc3\x9c x\n",
          "    5            wide text \"Gr\xc3\xbc\xc3\x9f"
          "e \"x\"\"\n",
          "    30003        unsigned int 7\n", "    a            int 1\n      b            double 2.5\n",
          "    corner       point 1 2 -3\n", "  log, 2 entries\n    ERROR        message 17, extra 3\n",
          "    WARNING      message 18, extra 1: wide text \"too long\"\n",
          "  kept plugin test.away.1, 12 bytes; its module is not loaded\n",
          "  extents      0 0 0 to 0 0 0\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
}

TEST_F(ElementsListTest, WhatIsNoElementIsRefused) {
    const std::string drawing = frameDrawing();
    EXPECT_NE(taldork({"elements", "show", drawing, "1"}).err.find("1 is no element"), std::string::npos);
    expectFailure(taldork({"elements", "show", drawing, "FFFFFF"}), drawing);
    EXPECT_EQ(taldork({"elements", "show", drawing, "0"}).code, 2);
    EXPECT_EQ(taldork({"elements", "show", drawing, "xyz"}).code, 2);
    expectFailure(taldork({"elements", "list", file("none.dwg")}), file("none.dwg"));
}

TEST_F(ElementsListTest, WithoutTheirModuleElementsAreListedWithWhatIsKnown) {
    const std::string drawing = oddDrawing();
    const Words order = handles(rows(drawing));
    takeExampleAway();
    const Json away = rows(drawing);
    EXPECT_EQ(handles(away), order); // the line is none
    for (const Json& row : away) {
        EXPECT_EQ(row["class"], "STR_Node");
        EXPECT_EQ(row["dxfName"], "STR_NODE");
        EXPECT_EQ(row["application"], "TaldorkStructure");
        EXPECT_EQ(row["state"], "proxy");
        EXPECT_EQ(row["remark"], "its class is not loaded");
        for (const char* key : {"number", "name", "bimId", "system", "connections", "plugins", "keptPlugins"})
            EXPECT_TRUE(row[key].is_null()) << key;
    }
    EXPECT_EQ(rows(drawing, {"--class", "STR_NODE"}).size(), 4U);
    const Json node = json({"elements", "show", drawing, order[0]});
    EXPECT_EQ(node["layer"], "0");
    EXPECT_EQ(node["space"], "*Model_Space");
    const std::string text = done({"elements", "list", drawing});
    EXPECT_NE(text.find("\n4 without the code of their classes\n"), std::string::npos) << text;
}

TEST_F(ElementsListTest, ADrawingBringsTheModuleOfItsElements) {
    const std::string drawing = frameDrawing();
    const std::string text = done({"elements", "list", drawing});
    // The run where the example stands has entered it into the registry; the program elsewhere has none.
    const fs::path entries = folder.path() / "kept.sqlite";
    fs::copy_file(file("registry.sqlite"), entries);
    takeExampleAway();
    fs::copy_file(entries, file("registry.sqlite"));
    EXPECT_EQ(done({"elements", "list", drawing}), text);
    expectFailure(taldork({"example", drawing}), "example");
}

} // namespace tests
