// elements edit: steps from standard input, with undo and redo.

#include "cli/elements_cli.h"

#include <set>

namespace tests {

namespace {

class ElementsEditTest : public ElementsCliTest {
protected:
    void SetUp() override { drawing = frameDrawing(); }

    Json extents(const std::string& handle) { return json({"elements", "show", drawing, handle})["extents"]; }

    std::string drawing;
};

} // namespace

TEST_F(ElementsEditTest, ABeamIsMoved) {
    const std::string beam = named(drawing, "B1");
    const Json before = extents(beam);
    const ProgramRun run = edit(drawing, "move " + beam + " 0,0,1.5\n");
    EXPECT_EQ(run.out, "move " + beam + " 0,0,1.5\n1 step, saved\n") << run.err;
    const Json after = extents(beam);
    for (const char* corner : {"min", "max"}) {
        EXPECT_EQ(after[corner][0], before[corner][0]);
        EXPECT_EQ(after[corner][2].get<double>(), before[corner][2].get<double>() + 1.5);
    }
}

TEST_F(ElementsEditTest, CopiesKnowEachOtherAndHaveTheirOwnNumbers) {
    const std::string beam = named(drawing, "B1");
    const Json nodes = json({"elements", "show", drawing, beam})["connections"];
    const ProgramRun run = edit(drawing, "copy " + beam + " " + nodes[0].get<std::string>() + " " +
                                             nodes[1].get<std::string>() + " 0,40,0\n");
    EXPECT_EQ(run.code, 0) << run.err;
    const Json all = rows(drawing);
    ASSERT_EQ(all.size(), 53U);
    EXPECT_EQ(all[50]["class"], "STR_Beam");
    EXPECT_EQ(all[50]["number"], 29);
    EXPECT_EQ(all[50]["connections"], Json({all[51]["handle"], all[52]["handle"]}));
    EXPECT_NE(run.out.find("\n  + " + all[50]["handle"].get<std::string>() + " STR_Beam 29 'B1'\n"),
              std::string::npos)
        << run.out;
    EXPECT_EQ(extents(all[50]["handle"])["min"][1].get<double>(), extents(beam)["min"][1].get<double>() + 40);
}

TEST_F(ElementsEditTest, ALoadIsCopiedWithItsBeamInWhateverOrderTheyAreNamed) {
    const std::string loaded = file("loaded.dwg");
    done({"new", loaded});
    done({"example", loaded});
    const std::string beam = named(loaded, "B1"), load = named(loaded, "L1");
    const std::size_t count = json({"loads", "list", loaded})["loads"].size();
    const ProgramRun run =
        edit(loaded, "copy " + load + " " + beam + " 0,40,0\ncopy " + beam + " " + load + " 0,80,0\n");
    EXPECT_EQ(run.code, 0) << run.err;
    const Json loads = json({"loads", "list", loaded})["loads"];
    ASSERT_EQ(loads.size(), count + 2);
    std::set<std::string> beams = {beam};
    for (std::size_t i = count; i < loads.size(); ++i) {
        beams.insert(loads[i]["element"].get<std::string>());
        EXPECT_EQ(loads[i]["values"], loads[0]["values"]);
    }
    EXPECT_EQ(beams.size(), 3U) << "each copy has a beam of its own";
    const ProgramRun alone = edit(loaded, "copy " + load + " 0,40,0\n");
    expectFailure(alone, loaded);
    EXPECT_NE(alone.err.find(load + " does not let itself be copied"), std::string::npos) << alone.err;
}

TEST_F(ElementsEditTest, AnErasedBeamComesBackWithAnUndo) {
    const std::string beam = named(drawing, "B1");
    const Json before = json({"elements", "show", drawing, beam});
    const std::string gone = "  - " + beam + " STR_Beam 13 'B1'\n",
                      back = "  + " + beam + " STR_Beam 13 'B1'\n";
    const ProgramRun run = edit(drawing, "# a beam\n\nerase " + beam + "\nundo\nredo\nundo\nmove " + beam +
                                             " 1,0,0\nundo\n  erase   " + beam + " \nundo\n");
    EXPECT_EQ(run.out, "erase " + beam + "\n" + gone + "undo: erase " + beam + "\n" + back + "redo: erase " +
                           beam + "\n" + gone + "undo: erase " + beam + "\n" + back + "move " + beam +
                           " 1,0,0\nundo: move " + beam + " 1,0,0\nerase " + beam + "\n" + gone +
                           "undo: erase " + beam + "\n" + back + "8 steps, nothing saved\n")
        << run.err;
    EXPECT_EQ(json({"elements", "show", drawing, beam}), before);
}

TEST_F(ElementsEditTest, WhatGoesWithAnElementIsToldAndComesBackWithIt) {
    const std::string node = named(drawing, "N1"), column = named(drawing, "C1");
    const ProgramRun run = edit(drawing, "erase " + node + "\nundo\nerase " + named(drawing, "S1") + "\n");
    EXPECT_EQ(run.code, 0) << run.err;
    for (const char* mark : {"  - ", "  + "}) {
        EXPECT_NE(run.out.find(mark + node + " STR_Node 1 'N1'\n"), std::string::npos) << run.out;
        EXPECT_NE(run.out.find(mark + column + " STR_Beam 1 'C1'\n"), std::string::npos) << run.out;
    }
    EXPECT_EQ(rows(drawing).size(), 49U);
    EXPECT_EQ(json({"elements", "show", drawing, column})["connections"].size(), 2U);
}

TEST_F(ElementsEditTest, AStepThatCannotBeDoneLeavesTheFileAsItWas) {
    const std::string beam = named(drawing, "B1");
    const std::string before = readWholeFile(drawing);
    for (const char* last : {"erase FFFFFF", "move 1 1,0,0", "undo\nundo", "redo"}) {
        const ProgramRun run = edit(drawing, "move " + beam + " 0,0,1\n" + last + "\n");
        expectFailure(run, drawing);
        EXPECT_NE(run.err.find(": line "), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "") << last;
    }
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(ElementsEditTest, LinesThatAreNoStepsAreToldBeforeAnythingIsDone) {
    const std::string before = readWholeFile(drawing);
    for (const char* line : {"melt 2A", "move 2A", "move 1,2,3", "move 2A 1,2", "move zz 1,2,3", "erase",
                             "erase 2A 1,2,3", "undo 2A", "redo 1", "move 2A 1,2,nan", "erase 0"}) {
        const ProgramRun run = edit(drawing, std::string("\n") + line + "\n");
        expectFailure(run, "standard input");
        EXPECT_NE(run.err.find("line 2: '" + std::string(line) + "' is no step"), std::string::npos)
            << run.err;
    }
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(ElementsEditTest, ADryRunSavesNothing) {
    const std::string before = readWholeFile(drawing);
    const ProgramRun run = edit(drawing, "erase " + named(drawing, "B1") + "\n", "--dry-run");
    EXPECT_NE(run.out.find("1 step, nothing saved\n"), std::string::npos) << run.out << run.err;
    EXPECT_TRUE(readWholeFile(drawing) == before);
    EXPECT_EQ(edit(drawing, "").out, "0 steps, nothing saved\n");
}

} // namespace tests
