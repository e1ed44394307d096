// loads: what is listed and exported of the loads of a drawing.

#include "cli/elements_cli.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

namespace tests {

namespace {

class LoadsCliTest : public ElementsCliTest {
protected:
    void SetUp() override {
        drawing = file("frame.dwg");
        done({"new", drawing});
        done({"example", drawing});
    }

    Json list(const Words& more = {}) {
        Words words = {"loads", "list", drawing};
        words.insert(words.end(), more.begin(), more.end());
        return json(words)["loads"];
    }

    Json byName(const std::string& name) {
        for (const Json& row : list())
            if (row["name"] == name)
                return row;
        ADD_FAILURE() << "no load " << name;
        return Json();
    }

    static std::vector<std::string> linesOf(const std::string& text) {
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) {
            EXPECT_EQ(line.back(), '\r');
            line.pop_back();
            lines.push_back(line);
        }
        return lines;
    }

    std::string drawing;
};

} // namespace

TEST_F(LoadsCliTest, TheFrameHasLoadsOfAllKinds) {
    const Json all = list();
    ASSERT_EQ(all.size(), 21U);
    const Json first = byName("L1");
    EXPECT_EQ(first["class"], "STR_Load");
    EXPECT_EQ(first["number"], 1);
    EXPECT_TRUE(first["label"].is_null());
    EXPECT_EQ(first["form"], "element");
    EXPECT_EQ(first["type"], 10);
    EXPECT_EQ(first["direction"], "gravity");
    EXPECT_EQ(first["kind"], 1);
    EXPECT_EQ(first["category"], 0);
    EXPECT_EQ(first["distribution"], "line");
    EXPECT_EQ(first["shape"], "linear");
    EXPECT_EQ(first["cases"], Json({1}));
    EXPECT_EQ(first["values"], Json({4.0, 8.0}));
    EXPECT_EQ(first["element"], named(drawing, "B1"));
    EXPECT_TRUE(first["reference"].is_null());

    const Json last = byName("L21");
    EXPECT_EQ(last["form"], "free");
    EXPECT_EQ(last["distribution"], "point");
    EXPECT_TRUE(last["shape"].is_null());
    EXPECT_EQ(last["kind"], 3);
    EXPECT_TRUE(last["element"].is_null());
    EXPECT_EQ(last["reference"],
              Json({{"type", 108}, {"numbers", {4}}, {"projection", 0}, {"depth", 0.0}, {"nature", 0}}));
}

TEST_F(LoadsCliTest, HowTheValuesRunIsTold) {
    EXPECT_EQ(byName("L2")["values"], Json({2.0, 8.0, 2.0}));
    EXPECT_EQ(byName("L2")["shape"], "linear to the middle");
    EXPECT_EQ(byName("L6")["values"], Json({0.0, 8.0, 0.0}));
    EXPECT_EQ(byName("L6")["shape"], "quadratic with its peak in the middle");
    const std::string text = done({"loads", "list", drawing});
    EXPECT_EQ(text.rfind("handle  number  name  type                   kind  acts   shape ", 0), 0U) << text;
    EXPECT_NE(text.find("line   cubic to the end "), std::string::npos) << text;
}

TEST_F(LoadsCliTest, TwoLoadsOfOneElementThatRunDifferentlyHaveNoShape) {
    drawing = loadedDrawing();
    const std::string both = named(drawing, "both");
    int found = 0;
    for (const Json& row : list())
        if (row["handle"] == both) {
            EXPECT_TRUE(row["shape"].is_null());
            ++found;
        }
    EXPECT_EQ(found, 2);
    EXPECT_EQ(byName("first")["shape"], "linear");
}

TEST_F(LoadsCliTest, AnElementLoadThatNamesItsElementOnlyAsOtherLoadsDoIsOnThatOne) {
    drawing = loadedDrawing();
    EXPECT_EQ(byName("old")["form"], "element");
    EXPECT_EQ(byName("old")["element"], named(drawing, "beam"));
}

TEST_F(LoadsCliTest, DirectionsAreTold) {
    std::map<int, std::string> directions;
    for (const Json& row : list())
        directions[row["type"]] = row["direction"];
    EXPECT_EQ(directions, (std::map<int, std::string>{{10, "gravity"},
                                                      {13, "force, local"},
                                                      {19, "force, projected"},
                                                      {24, "moment"},
                                                      {25, "moment"},
                                                      {53, "temperature, local"}}));
}

TEST_F(LoadsCliTest, ACaseIsListedAlone) {
    std::size_t count = 0;
    for (const char* number : {"1", "2", "3", "4", "5"}) {
        const Json rows = list({"--case", number});
        EXPECT_FALSE(rows.empty()) << number;
        for (const Json& row : rows)
            EXPECT_EQ(row["cases"], Json({std::stoi(number)}));
        count += rows.size();
    }
    EXPECT_EQ(count, 21U);
    EXPECT_EQ(list({"--case", "77"}), Json::array());
    EXPECT_EQ(done({"loads", "list", drawing, "--case", "77"}), "0 loads\n");
}

TEST_F(LoadsCliTest, ForPeopleEachLoadHasALine) {
    const std::string text = done({"loads", "list", drawing, "--case", "4"});
    EXPECT_EQ(text.rfind("handle  number  name  type", 0), 0U) << text;
    EXPECT_NE(text.find("19 force, projected  1     line  linear  4      -4 -4   " + named(drawing, "B15")),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n1 load\n"), std::string::npos) << text;
    EXPECT_NE(done({"loads", "list", drawing}).find("108: 4\n"), std::string::npos);
}

TEST_F(LoadsCliTest, ADrawingWithoutLoadsHasNone) {
    done({"new", file("a.dwg")});
    EXPECT_EQ(done({"loads", "list", file("a.dwg")}), "0 loads\n");
    EXPECT_EQ(json({"loads", "list", file("a.dwg")}),
              Json({{"file", file("a.dwg")}, {"loads", Json::array()}, {"unknown", 0}}));
    EXPECT_EQ(done({"loads", "export", file("a.dwg")}),
              "handle,name,cases,type,distribution,point,x,y,z,value\r\n");
    EXPECT_EQ(json({"loads", "export", file("a.dwg")}),
              Json({{"file", file("a.dwg")}, {"loads", Json::array()}, {"unknown", 0}}));
}

TEST_F(LoadsCliTest, LinesAreExportedAsTheirPoints) {
    const std::vector<std::string> lines = linesOf(done({"loads", "export", drawing, "--csv"}));
    ASSERT_GT(lines.size(), 40U);
    EXPECT_EQ(lines[0], "handle,name,cases,type,distribution,point,x,y,z,value");
    const std::string begin = byName("L1")["handle"].get<std::string>() + ",L1,1,10,line,";
    EXPECT_EQ(lines[1], begin + "0,0,0,3,4");
    EXPECT_EQ(lines[2].rfind(begin + "1,", 0), 0U) << lines[2];
    // The point load in the middle of its beam has its one point.
    const std::string point = byName("L8")["handle"].get<std::string>() + ",L8,2,10,point,0,9,0,6,20";
    EXPECT_EQ(std::count(lines.begin(), lines.end(), point), 1);
}

TEST_F(LoadsCliTest, JsonHasThePointsBelowEachLoad) {
    const Json loads = json({"loads", "export", drawing, "--case", "4"})["loads"];
    ASSERT_EQ(loads.size(), 1U);
    const Json& points = loads[0]["points"];
    // As many as a load may have: the rafter is long for the chords of an export.
    ASSERT_EQ(points.size(), 63U);
    // Snow counts along the rafter, whatever the picture.
    EXPECT_EQ(points.front(), Json({{"x", 0.0}, {"y", 5.0}, {"z", 6.0}, {"value", -4.0}}));
    EXPECT_EQ(points.back(), Json({{"x", 12.0}, {"y", 5.0}, {"z", 6.0}, {"value", -4.0}}));
    double highest = 0.0, before = -1.0;
    for (const Json& point : points) {
        const double x = point["x"], z = point["z"];
        EXPECT_GT(x, before);
        EXPECT_NEAR(z, 7.5 - std::abs(x - 6.0) / 4.0, 1e-6);
        EXPECT_EQ(point["value"], -4.0);
        highest = std::max(highest, z);
        before = x;
    }
    EXPECT_NEAR(highest, 7.5, 1e-6);
}

TEST_F(LoadsCliTest, AFileGetsWhatStandardOutputWouldGet) {
    const std::string out = file("loads.csv");
    EXPECT_EQ(done({"loads", "export", drawing, "-o", out}), "");
    EXPECT_EQ(readWholeFile(out), done({"loads", "export", drawing, "-o", "-"}));
    EXPECT_EQ(readWholeFile(out), done({"loads", "export", drawing, "--out", "-"}));
    expectFailure(taldork({"loads", "export", drawing, "-o", file("none/loads.csv")}),
                  file("none/loads.csv"));
}

TEST_F(LoadsCliTest, WrongUsageAndMissingFilesAreTold) {
    EXPECT_EQ(taldork({"loads", "export", drawing, "--csv", "--json"}).code, 2);
    EXPECT_EQ(taldork({"loads", "list", drawing, "--case", "x"}).code, 2);
    EXPECT_EQ(taldork({"loads", "list", drawing, "--case", "-1"}).code, 2);
    expectFailure(taldork({"loads", "list", file("none.dwg")}), file("none.dwg"));
}

TEST_F(LoadsCliTest, LoadsWithoutTheirModuleAreNotKnown) {
    takeExampleAway();
    EXPECT_EQ(list(), Json::array());
    EXPECT_EQ(json({"loads", "list", drawing})["unknown"], 71);
    EXPECT_EQ(done({"loads", "list", drawing}),
              "0 loads\n71 elements without the code of a class, which may be loads\n");
}

TEST_F(LoadsCliTest, TheExportTellsOfElementsThatMayBeLoads) {
    takeExampleAway();
    const std::string remark =
        "taldork: " + drawing + ": 71 elements without the code of a class, which may be loads\n";
    const ProgramRun csv = taldork({"loads", "export", drawing});
    EXPECT_EQ(csv.code, 0);
    EXPECT_EQ(csv.out, "handle,name,cases,type,distribution,point,x,y,z,value\r\n");
    EXPECT_EQ(csv.err, remark);
    const ProgramRun asJson = taldork({"loads", "export", drawing, "--json"});
    EXPECT_EQ(asJson.err, remark);
    EXPECT_EQ(Json::parse(asJson.out), Json({{"file", drawing}, {"loads", Json::array()}, {"unknown", 71}}));
}

TEST_F(LoadsCliTest, TheExportTellsOfLoadsWithoutASystemWhichHaveNoPoints) {
    drawing = loadedDrawing(false);
    const ProgramRun run = taldork({"loads", "export", drawing, "--json"});
    EXPECT_EQ(run.code, 0);
    const Json loads = Json::parse(run.out)["loads"];
    std::string first;
    std::size_t withoutPoints = 0;
    for (const Json& load : loads) {
        withoutPoints += load["points"].empty();
        if (load["name"] == "first")
            first = load["handle"];
    }
    // All but the point load.
    EXPECT_EQ(withoutPoints, 4U);
    EXPECT_NE(
        run.err.find("taldork: " + drawing + ": " + first + " STR_Load 'first' has no points to export\n"),
        std::string::npos)
        << run.err;
    std::size_t remarks = 0;
    for (std::size_t at = run.err.find("has no points"); at != std::string::npos;
         at = run.err.find("has no points", at + 1))
        ++remarks;
    EXPECT_EQ(remarks, 4U) << run.err;
}

TEST_F(LoadsCliTest, ListingAndExportingChangeNothing) {
    const std::string before = readWholeFile(drawing);
    done({"loads", "list", drawing});
    done({"loads", "export", drawing});
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(LoadsCliTest, ALoadedBeamIsErasedWithItsLoadAndComesBack) {
    const std::string beam = named(drawing, "B1"), load = byName("L1")["handle"];
    const ProgramRun run = edit(drawing, "erase " + beam + "\nundo\nmove " + beam + " 0,0,1\n");
    EXPECT_NE(run.out.find("  - " + load + " STR_Load 1 'L1'\n"), std::string::npos) << run.out << run.err;
    EXPECT_NE(run.out.find("  + " + load + " STR_Load 1 'L1'\n"), std::string::npos) << run.out;
    const std::vector<std::string> lines = linesOf(done({"loads", "export", drawing}));
    EXPECT_EQ(lines[1], load + ",L1,1,10,line,0,0,0,4,4");
}

} // namespace tests
