// convert: points between a drawing and the store of a system.

#include "cli/systems_cli.h"

#include "cli/common/numbers.h"

#include <rapidcheck.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace tests {

using Json = nlohmann::ordered_json;

namespace {

class ConvertTest : public SystemsCliTest {
protected:
    /// The program with a text on its input.
    ProgramRun piped(const Words& arguments, const std::string& input) {
        writeWholeFile(file("input"), input);
        std::string line =
            "TALDORK_REGISTRY=" + shellQuote(file("registry.sqlite")) + " " + shellQuote(program.string());
        for (const std::string& argument : arguments)
            line += " " + shellQuote(argument);
        return runShell(line + " < " + shellQuote(file("input")), folder.path());
    }

    /// A turn into the store leaves the dust of its angle where a zero would stand.
    static void expectPoints(const std::string& out, const std::vector<taldork::cli::Point>& points) {
        std::istringstream lines(out);
        for (const auto& point : points) {
            for (const double expected : point) {
                double value = std::numeric_limits<double>::quiet_NaN();
                lines >> value;
                EXPECT_NEAR(value, expected, 1e-12) << out;
            }
        }
        std::string rest;
        EXPECT_FALSE(lines >> rest) << out;
    }

    std::string turnedDrawing() {
        return drawingWithSystem({"--kind", "space", "--gravity", "+y", "--unit", "cm"});
    }
};

} // namespace

TEST_F(ConvertTest, PointsAreTurnedAndScaled) {
    const std::string drawing = turnedDrawing();
    expectPoints(done({"convert", drawing, "ASDWG", "--to-store", "100,0,0", "0,100,0", "0,0,100"}),
                 {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}});
    EXPECT_EQ(done({"convert", drawing, "ASDWG", "--to-drawing", "1,0,0", "0,1,0", "0,0,1"}),
              "100 0 0\n0 0 -100\n0 100 0\n");
}

TEST_F(ConvertTest, NegativeNumbersAreNoOptions) {
    const std::string drawing = drawingWithSystem();
    EXPECT_EQ(done({"convert", drawing, "ASDWG", "--to-store", "-1,2,3", "-0.5,-1,-2e-3"}),
              "-1 2 3\n-0.5 -1 -0.002\n");
    EXPECT_EQ(done({"convert", drawing, "ASDWG", "-1,2,3", "--to-drawing"}), "-1 2 3\n");
    EXPECT_EQ(done({"convert", drawing, "ASDWG", "--to-store", "--", "-.5,1,2"}), "-0.5 1 2\n");
}

TEST_F(ConvertTest, NumbersAreTheShortestExactOnes) {
    const std::string drawing = drawingWithSystem();
    EXPECT_EQ(done({"convert", drawing, "ASDWG", "--to-store", "0.1,1e22,-0",
                    "123456789.125,1e-300,0.30000000000000004"}),
              "0.1 1e+22 0\n123456789.125 1e-300 0.30000000000000004\n");
}

TEST_F(ConvertTest, WithoutPointsTheyComeFromStandardInput) {
    const std::string drawing = turnedDrawing();
    const ProgramRun run =
        piped({"convert", drawing, "ASDWG", "--to-store"}, "100,0,0\n\n  0 100\t0 \r\n0, 0 ,-100\n-.5,0,0");
    EXPECT_EQ(run.code, 0) << run.err;
    expectPoints(run.out, {{1, 0, 0}, {0, 0, 1}, {0, 1, 0}, {-0.005, 0, 0}});
    EXPECT_EQ(piped({"convert", drawing, "ASDWG", "--to-store"}, "").out, "");
}

TEST_F(ConvertTest, ALineThatIsNoPointIsToldByItsNumber) {
    const std::string drawing = drawingWithSystem();
    for (const char* line : {"1 2", "1,2,3,4", "1,,2", ",1,2,3", "1,2,3,", "a b c", "1 2 nan", "0x1 2 3"}) {
        const ProgramRun run =
            piped({"convert", drawing, "ASDWG", "--to-store"}, "1 2 3\n" + std::string(line) + "\n");
        expectFailure(run, "standard input");
        EXPECT_NE(run.err.find("line 2: '" + std::string(line) + "'"), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "") << line;
    }
}

TEST_F(ConvertTest, WhatItPrintsItReads) {
    const std::string drawing = turnedDrawing();
    const ProgramRun there =
        piped({"convert", drawing, "ASDWG", "--to-drawing"}, "1.25 -2.5 1e-07\n0 0 0\n-3 4096 0.0625\n");
    expectPoints(piped({"convert", drawing, "ASDWG", "--to-store"}, there.out).out,
                 {{1.25, -2.5, 1e-7}, {0, 0, 0}, {-3, 4096, 0.0625}});
}

TEST_F(ConvertTest, JsonHasBothSides) {
    EXPECT_EQ(json({"convert", turnedDrawing(), "ASDWG", "--to-store", "100,0,0"}),
              Json::parse(R"({"store":"ASDWG","direction":"to-store",
                              "points":[{"from":[100.0,0.0,0.0],"to":[1.0,0.0,0.0]}]})"));
}

TEST_F(ConvertTest, ADirectionIsGivenExactlyOnce) {
    const std::string drawing = drawingWithSystem();
    EXPECT_EQ(taldork({"convert", drawing, "ASDWG", "1,2,3"}).code, 2);
    EXPECT_EQ(taldork({"convert", drawing, "ASDWG", "--to-store", "--to-drawing", "1,2,3"}).code, 2);
}

TEST_F(ConvertTest, WhatIsNoPointIsWrongUsage) {
    const std::string drawing = drawingWithSystem();
    for (const char* point :
         {"", "1", "1,2", "1,2,3,4", "1 2 3", "1,2,x", "nan,0,0", "inf,0,0", "1e999,0,0", "-,1,2"})
        EXPECT_EQ(taldork({"convert", drawing, "ASDWG", "--to-store", point}).code, 2) << point;
}

TEST_F(ConvertTest, AMissingStoreOrSystemIsToldInOneLine) {
    const std::string drawing = drawingWithStore();
    ProgramRun run = taldork({"convert", drawing, "ASDWG", "--to-store", "1,2,3"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("has no system"), std::string::npos) << run.err;
    run = taldork({"convert", drawing, "asdwg", "--to-store", "1,2,3"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("has no store 'asdwg'"), std::string::npos) << run.err;
}

TEST_F(ConvertTest, AScaleOfZeroHasNoWayBack) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/0", systemRecord(0, -3));
    put(drawing, "ASDWG", "10/102", unitRecord(2, 13, 0.0));
    const ProgramRun run = taldork({"convert", drawing, "ASDWG", "--to-drawing", "1,2,3"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("no finite counterpart in the drawing"), std::string::npos) << run.err;
    EXPECT_EQ(taldork({"convert", drawing, "ASDWG", "--to-store", "1,2,3"}).out, "0 0 0\n");
}

TEST_F(ConvertTest, AnyPointComesBack) {
    const std::string drawing = drawingWithSystem({"--kind", "plane", "--gravity", "+x", "--unit", "mm"});
    EXPECT_TRUE(rc::check([&] {
        const auto points = *rc::gen::nonEmpty<std::vector<std::array<int, 3>>>();
        std::string input;
        for (const auto& point : points)
            input += taldork::cli::pointText({point[0] / 64.0, point[1] / 64.0, point[2] / 64.0}) + "\n";
        const ProgramRun there = piped({"convert", drawing, "ASDWG", "--to-store"}, input);
        const ProgramRun back = piped({"convert", drawing, "ASDWG", "--to-drawing"}, there.out);
        std::istringstream lines(back.out);
        for (const auto& point : points) {
            for (const int expected : point) {
                double value = 0.0;
                lines >> value;
                RC_ASSERT(std::abs(value - expected / 64.0) <= 1e-6);
            }
        }
    }));
}

} // namespace tests
