// example: the example front end's frame in a drawing, through its own command module.

#include "cli/elements_cli.h"

namespace tests {

namespace fs = std::filesystem;

namespace {

class ExampleTest : public ElementsCliTest {};

} // namespace

TEST_F(ExampleTest, AFrameOfTheSizeThatIsAskedFor) {
    done({"new", file("a.dwg")});
    done({"example", file("a.dwg"), "--bays", "1", "--storeys", "1"});
    EXPECT_EQ(rows(file("a.dwg"), {"--class", "STR_Slab"}).size(), 1U);
    EXPECT_EQ(json({"systems", "list", file("a.dwg")})["systems"][0]["kind"], "space");
    EXPECT_EQ(json({"select", "list", file("a.dwg")})["selections"].size(), 2U);
}

TEST_F(ExampleTest, ARealDrawingTakesTheFrameAndKeepsWhatItHad) {
    for (const std::string& name : realDrawings2000()) {
        NEED_DRAWING(path, name + ".dwg");
        const std::string drawing = file(name + ".dwg");
        fs::copy_file(path, drawing);
        fs::permissions(drawing, fs::perms::owner_write, fs::perm_options::add);
        const Json before = json({"info", drawing})["objects"];
        EXPECT_EQ(taldork({"example", drawing}).code, 0);
        EXPECT_EQ(rows(drawing).size(), 71U);
        const Json after = json({"info", drawing})["objects"];
        for (const auto& [kind, count] : before.items())
            EXPECT_GE(after[kind], count) << kind;
        EXPECT_EQ(done({"elements", "number", drawing}).find("  "), std::string::npos);
    }
}

TEST_F(ExampleTest, WithoutItsModuleTheHelpSaysSo) {
    done({"new", file("a.dwg")});
    takeExampleAway();
    const ProgramRun run = taldork({"example", file("a.dwg")});
    expectFailure(run, "example");
    EXPECT_NE(run.err.find("structure.arx"), std::string::npos) << run.err;
    EXPECT_NE(done({"--help"}).find("\n  example "), std::string::npos);
    EXPECT_NE(done({"example", "--help"}).find("structure.arx"), std::string::npos);
}

} // namespace tests
