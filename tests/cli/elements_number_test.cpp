// elements number: duplicates, gaps, and numbering anew.

#include "cli/elements_cli.h"

#include <map>

namespace tests {

namespace {

class ElementsNumberTest : public ElementsCliTest {
protected:
    std::map<std::string, int> numbersByName(const std::string& drawing) {
        std::map<std::string, int> numbers;
        for (const Json& row : rows(drawing))
            numbers[row["name"]] = row["number"];
        return numbers;
    }
};

} // namespace

TEST_F(ElementsNumberTest, TheFrameIsNumberedWithoutFault) {
    EXPECT_EQ(done({"elements", "number", frameDrawing()}), "STR_Beam: 28 elements, highest number 28\n"
                                                            "STR_Node: 18 elements, highest number 18\n"
                                                            "STR_Slab: 4 elements, highest number 4\n");
}

TEST_F(ElementsNumberTest, DuplicatesGapsAndMissingNumbersAreTold) {
    const std::string drawing = oddDrawing();
    const Words h = handles(rows(drawing)); // second 3, third 6, fourth none, first 3
    EXPECT_EQ(told({"elements", "number", drawing}), "STR_Node: 4 elements, highest number 6\n"
                                                     "  duplicate  3: " +
                                                         h[0] + " " + h[3] +
                                                         "\n"
                                                         "  gap        1 to 2\n"
                                                         "  gap        4 to 5\n"
                                                         "  no number  " +
                                                         h[2] + "\n");
    const Json numbers = toldJson({"elements", "number", drawing});
    EXPECT_EQ(numbers["classes"].size(), 1U);
    EXPECT_EQ(numbers["classes"][0]["duplicates"], Json::array({{{"number", 3}, {"handles", {h[0], h[3]}}}}));
    EXPECT_EQ(numbers["classes"][0]["gaps"],
              Json({{{"first", 1}, {"last", 2}}, {{"first", 4}, {"last", 5}}}));
    EXPECT_EQ(numbers["classes"][0]["unnumbered"], Json({h[2]}));
    EXPECT_EQ(numbers["unknown"], 0);
    EXPECT_FALSE(numbers.contains("renumbered"));
}

TEST_F(ElementsNumberTest, ADryRunTellsAndChangesNothing) {
    const std::string drawing = oddDrawing();
    const std::string before = readWholeFile(drawing);
    const Words h = handles(rows(drawing));
    const Json plan = toldJson({"elements", "number", drawing, "--renumber", "--dry-run"});
    EXPECT_EQ(plan["dryRun"], true);
    EXPECT_EQ(plan["renumbered"], Json({{{"handle", h[0]}, {"class", "STR_Node"}, {"from", 3}, {"to", 1}},
                                        {{"handle", h[3]}, {"class", "STR_Node"}, {"from", 3}, {"to", 2}},
                                        {{"handle", h[1]}, {"class", "STR_Node"}, {"from", 6}, {"to", 3}},
                                        {{"handle", h[2]}, {"class", "STR_Node"}, {"from", 0}, {"to", 4}}}));
    EXPECT_TRUE(readWholeFile(drawing) == before);
    EXPECT_NE(told({"elements", "number", drawing, "--renumber", "--dry-run"})
                  .find("4 elements to be renumbered, nothing is changed\n"),
              std::string::npos);
}

TEST_F(ElementsNumberTest, RenumberingKeepsTheOrderAndLeavesNoFault) {
    const std::string drawing = oddDrawing();
    EXPECT_NE(told({"elements", "number", drawing, "--renumber"}).find("4 elements renumbered\n"),
              std::string::npos);
    EXPECT_EQ(numbersByName(drawing),
              (std::map<std::string, int>{{"second", 1}, {"Knoten \xc3\x9c\nx", 2}, {"third", 3}, {"", 4}}));
    EXPECT_EQ(told({"elements", "number", drawing}), "STR_Node: 4 elements, highest number 4\n");
    const std::string once = readWholeFile(drawing);
    EXPECT_NE(told({"elements", "number", drawing, "--renumber"}).find("0 elements renumbered\n"),
              std::string::npos);
    EXPECT_TRUE(readWholeFile(drawing) == once);
}

TEST_F(ElementsNumberTest, OneClassIsRenumberedAlone) {
    const std::string drawing = frameDrawing();
    const std::string script = "erase " + named(drawing, "N1") + "\n"; // its column goes with it
    EXPECT_EQ(edit(drawing, script).code, 0);
    done({"elements", "number", drawing, "--renumber", "--class", "STR_Beam"});
    EXPECT_EQ(done({"elements", "number", drawing}), "STR_Beam: 27 elements, highest number 27\n"
                                                     "STR_Node: 17 elements, highest number 18\n"
                                                     "  gap        1\n"
                                                     "STR_Slab: 4 elements, highest number 4\n");
}

TEST_F(ElementsNumberTest, ADryRunWithoutRenumberingIsWrongUsage) {
    EXPECT_EQ(taldork({"elements", "number", "a.dwg", "--dry-run"}).code, 2);
}

TEST_F(ElementsNumberTest, NumbersOfElementsWithoutTheirModuleAreNotKnown) {
    const std::string drawing = oddDrawing();
    takeExampleAway();
    EXPECT_EQ(
        done({"elements", "number", drawing, "--renumber"}),
        "no elements with numbers\n4 elements without the code of a class, whose numbers are not known\n"
        "0 elements renumbered\n");
    EXPECT_EQ(json({"elements", "number", drawing})["unknown"], 4);
}

} // namespace tests
