// plot: pictures of drawings, what they leave out, and what goes wrong.

#include "cli/elements_cli.h"

#include <algorithm>
#include <filesystem>

namespace tests {

namespace fs = std::filesystem;

namespace {

class PlotTest : public ElementsCliTest {
protected:
    Json plotted(const Words& more, const std::string& out = "a.svg") {
        Words words = {"plot", m_drawing, "-o", file(out), "--json"};
        words.insert(words.end(), more.begin(), more.end());
        return toldJson(words);
    }

    /// The drawing of write_plain.cpp.
    std::string plainDrawing() {
        const ProgramRun run =
            runProgram(fs::path(TALDORK_BIN) / "write_plain", {file("plain.dwg")}, {}, folder.path());
        EXPECT_EQ(run.code, 0) << run.out << run.err;
        return file("plain.dwg");
    }

    std::string m_drawing;
};

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

} // namespace

TEST_F(PlotTest, TheFrameIsDrawnInEachFormat) {
    m_drawing = frameDrawing();
    for (const auto& [name, begin] :
         {std::pair<const char*, std::string>{"a.svg", "<?xml"}, {"a.pdf", "%PDF-"}, {"a.PNG", "\x89PNG"}}) {
        const Json json = plotted({"--view", "iso"}, name);
        EXPECT_EQ(json["picture"], file(name));
        EXPECT_GT(json["entities"].get<int>(), 30);
        EXPECT_GE(json["primitives"].get<int>(), json["entities"].get<int>());
        EXPECT_EQ(json["leftOut"], 0);
        EXPECT_EQ(json["failures"], Json::array());
        EXPECT_EQ(readWholeFile(file(name)).substr(0, begin.size()), begin);
    }
}

TEST_F(PlotTest, ForPeopleALineSaysWhatIsOnThePicture) {
    m_drawing = frameDrawing();
    const std::string text = told({"plot", m_drawing, "-o", file("a.svg")});
    EXPECT_EQ(text.rfind(file("a.svg") + ": ", 0), 0U) << text;
    EXPECT_NE(text.find(" entities, "), std::string::npos) << text;
    EXPECT_EQ(countOf(text, "\n"), 1U) << text;
}

TEST_F(PlotTest, ViewsGroundAndSizeMakeOtherPictures) {
    m_drawing = frameDrawing();
    const Json top = plotted({}, "top.svg");
    EXPECT_EQ(top["widthMm"], 297.0);
    const Json front = plotted({"--view", "front"}, "front.svg");
    EXPECT_NE(readWholeFile(file("top.svg")), readWholeFile(file("front.svg")));
    plotted({"--view", "0,-1,0"}, "direction.svg");
    EXPECT_EQ(readWholeFile(file("direction.svg")), readWholeFile(file("front.svg")));
    plotted({"--dark"}, "dark.svg");
    EXPECT_NE(readWholeFile(file("dark.svg")).find("fill:rgb(0%,0%,0%)"), std::string::npos);
    const Json small = plotted({"--size", "192x96"}, "small.png");
    EXPECT_NEAR(small["widthMm"].get<double>(), 50.8, 1e-9);
    EXPECT_NEAR(small["heightMm"].get<double>(), 25.4, 1e-9);
    // The header of a PNG: width and height behind the first sixteen bytes.
    EXPECT_EQ(readWholeFile(file("small.png")).substr(16, 8), std::string("\0\0\0\xC0\0\0\0\x60", 8));
    EXPECT_EQ(plotted({"--width-mm", "100", "--height-mm", "50"}, "mm.svg")["heightMm"], 50.0);
}

TEST_F(PlotTest, OfOneSystemTheOthersElementsAreLeftOut) {
    m_drawing = frameDrawing();
    const int all = plotted({})["entities"].get<int>();
    EXPECT_EQ(plotted({"--system", "ASDWG"})["entities"].get<int>(), all);
    told({"systems", "create", m_drawing, "OTHER", "--kind", "space", "--gravity", "-z", "--unit", "mm"});
    const Json other = plotted({"--system", "OTHER"});
    EXPECT_EQ(other["entities"], 0);
    EXPECT_GE(other["leftOut"].get<int>(), all);
    expectFailure(taldork({"plot", m_drawing, "-o", file("a.svg"), "--system", "NONE"}), m_drawing);
}

TEST_F(PlotTest, OfOneLoadCaseTheOtherLoadsAreLeftOut) {
    m_drawing = file("loads.dwg");
    done({"new", m_drawing});
    told({"example", m_drawing});
    const Json all = plotted({});
    int others = 0;
    const Json loads = toldJson({"loads", "list", m_drawing})["loads"];
    for (const Json& load : loads) {
        const auto cases = load["cases"].get<std::vector<int>>();
        others += std::find(cases.begin(), cases.end(), 1) == cases.end();
    }
    ASSERT_GT(others, 0);
    const Json first = plotted({"--case", "1"});
    EXPECT_EQ(first["leftOut"], others);
    EXPECT_LT(first["primitives"].get<int>(), all["primitives"].get<int>());
    EXPECT_EQ(plotted({"--case", "4711"})["leftOut"], loads.size());
    EXPECT_EQ(taldork({"plot", m_drawing, "-o", file("a.svg"), "--case", "one"}).code, 2);
}

TEST_F(PlotTest, OfAnElementWithLoadsOfSeveralCasesThoseOfOneAreDrawn) {
    m_drawing = loadedDrawing();
    const std::string before = readWholeFile(m_drawing);
    const Json all = plotted({}, "all.svg");
    const Json first = plotted({"--case", "1"}, "first.svg");
    const Json second = plotted({"--case", "2"}, "second.svg");
    const Json none = plotted({"--case", "3"}, "none.svg");
    const auto primitives = [](const Json& told) { return told["primitives"].get<int>(); };
    // All but the element of both cases and the beam are loads of the first case.
    EXPECT_EQ(first["leftOut"], 0);
    EXPECT_EQ(first["entities"], all["entities"]);
    EXPECT_LT(primitives(first), primitives(all));
    EXPECT_EQ(second["leftOut"], 2);
    EXPECT_EQ(second["entities"], 2);
    // The beam stays, without its load.
    EXPECT_EQ(none["leftOut"], 3);
    EXPECT_EQ(none["entities"], 1);
    EXPECT_LT(primitives(none), primitives(second));
    EXPECT_TRUE(readWholeFile(m_drawing) == before);
}

TEST_F(PlotTest, LayersThatAreNotToBePlottedAreNotOnThePicture) {
    m_drawing = plainDrawing();
    const Json json = plotted({});
    // The line and the outline of the hatch, as large as the page lets them.
    EXPECT_EQ(json["entities"], 2);
    EXPECT_EQ(json["primitives"], 2);
    EXPECT_LT(json["unitsPerMm"].get<double>(), 1.0);
}

TEST_F(PlotTest, AHatchThatCannotBeEvaluatedIsToldOf) {
    m_drawing = plainDrawing();
    const Json failures = plotted({})["failures"];
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0]["reason"], "eExcessiveItemCount");
    const std::string handle = failures[0]["handle"];
    EXPECT_NE(told({"plot", m_drawing, "-o", file("a.svg")})
                  .find("\nnot drawn to its end: " + handle + " (" + failures[0]["kind"].get<std::string>() +
                        "): eExcessiveItemCount\n"),
              std::string::npos);
}

TEST_F(PlotTest, WhatTheHostDoesNotKnowIsCounted) {
    NEED_DRAWING(real, "sample_AC1015.dwg");
    m_drawing = real.string();
    const Json json = plotted({});
    EXPECT_GT(json["primitives"].get<int>(), 1000);
    EXPECT_FALSE(json["notShown"].empty());
    for (const auto& [kind, count] : json["notShown"].items())
        EXPECT_GT(count.get<int>(), 0) << kind;
    EXPECT_NE(done({"plot", m_drawing, "-o", file("a.svg")}).find("\nnot shown, since "), std::string::npos);
}

TEST_F(PlotTest, WithoutANameOrWithAnotherEndingThereIsNoPicture) {
    m_drawing = frameDrawing();
    EXPECT_EQ(taldork({"plot", m_drawing}).code, 2);
    expectFailure(taldork({"plot", m_drawing, "-o", file("a.jpg")}), file("a.jpg"));
    EXPECT_FALSE(fs::exists(file("a.jpg")));
    EXPECT_EQ(taldork({"plot", m_drawing, "-o", file("a.svg"), "--view", "inside"}).code, 2);
    EXPECT_EQ(taldork({"plot", m_drawing, "-o", file("a.svg"), "--view", "0,0,0"}).code, 2);
    EXPECT_EQ(taldork({"plot", m_drawing, "-o", file("a.svg"), "--size", "800"}).code, 2);
    EXPECT_EQ(taldork({"plot", m_drawing, "-o", file("a.svg"), "--size", "0x4"}).code, 2);
    EXPECT_EQ(taldork({"plot", m_drawing, "-o", file("a.svg"), "--size", "8x4", "--width-mm", "4"}).code, 2);
    EXPECT_FALSE(fs::exists(file("a.svg")));
    expectFailure(taldork({"plot", m_drawing, "-o", file("a.svg"), "--width-mm", "0"}), file("a.svg"));
    expectFailure(taldork({"plot", file("none.dwg"), "-o", file("a.svg")}), file("none.dwg"));
    expectFailure(taldork({"plot", m_drawing, "-o", file("no/such/a.svg")}), file("no/such/a.svg"));
    EXPECT_FALSE(fs::exists(file("a.svg")));
}

TEST_F(PlotTest, AFailureLeavesThePictureThatWasThere) {
    m_drawing = frameDrawing();
    writeWholeFile(file("a.png"), "old");
    expectFailure(taldork({"plot", m_drawing, "-o", file("a.png"), "--size", "30000x30000"}), file("a.png"));
    EXPECT_EQ(readWholeFile(file("a.png")), "old");
}

} // namespace tests
