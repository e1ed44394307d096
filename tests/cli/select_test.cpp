// select list, set and del: named selections.

#include "cli/elements_cli.h"

namespace tests {

namespace {

class SelectTest : public ElementsCliTest {};

} // namespace

TEST_F(SelectTest, ADrawingWithoutSelectionsHasNone) {
    done({"new", file("a.dwg")});
    EXPECT_EQ(done({"select", "list", file("a.dwg")}), "0 selections\n");
    EXPECT_EQ(json({"select", "list", file("a.dwg")})["selections"], Json::array());
}

TEST_F(SelectTest, ObjectsOfAnyKindAreKeptUnderAName) {
    const std::string drawing = oddDrawing();
    const std::string node = named(drawing, "third");
    EXPECT_EQ(done({"select", "set", drawing, "Decke \xc3\x9c", node, "1F", node}),
              "made the selection 'Decke \xc3\x9c': 2 objects\n");
    const Json selection = json({"select", "list", drawing, "Decke \xc3\x9c"})["selections"][0];
    EXPECT_EQ(selection["name"], "Decke \xc3\x9c");
    ASSERT_EQ(selection["objects"].size(), 2U);
    EXPECT_EQ(selection["objects"][1], Json({{"handle", node}, {"kind", "STR_NODE"}}));
    EXPECT_EQ(selection["members"], Json::array());
    EXPECT_EQ(selection["names"], Json::array());
}

TEST_F(SelectTest, TheExamplesSelectionsAreListed) {
    const std::string drawing = oddDrawing();
    const std::string second = named(drawing, "second"), first = named(drawing, "Knoten \xc3\x9c\nx");
    EXPECT_EQ(done({"select", "list", drawing}),
              "pair: 2 objects\n  " + second + std::string(8 - second.size(), ' ') + "STR_NODE\n  " + first +
                  std::string(8 - first.size(), ' ') + "STR_NODE\n1 selection\n");
}

TEST_F(SelectTest, ASelectionThatIsThereGetsOtherObjects) {
    const std::string drawing = oddDrawing();
    const std::string third = named(drawing, "third");
    EXPECT_EQ(done({"select", "set", drawing, "PAIR", third}), "changed the selection 'PAIR': 1 object\n");
    const Json selections = json({"select", "list", drawing})["selections"];
    ASSERT_EQ(selections.size(), 1U);
    EXPECT_EQ(selections[0]["name"], "pair");
    EXPECT_EQ(selections[0]["objects"], Json::array({{{"handle", third}, {"kind", "STR_NODE"}}}));
}

TEST_F(SelectTest, ADeletedSelectionIsGoneAndItsObjectsStay) {
    const std::string drawing = oddDrawing();
    EXPECT_EQ(done({"select", "del", drawing, "pair"}), "deleted the selection 'pair'\n");
    EXPECT_EQ(done({"select", "list", drawing}), "0 selections\n");
    EXPECT_EQ(rows(drawing).size(), 4U);
    expectFailure(taldork({"select", "del", drawing, "pair"}), drawing);
    expectFailure(taldork({"select", "list", drawing, "pair"}), drawing);
    EXPECT_EQ(done({"select", "set", drawing, "pair", named(drawing, "third")}),
              "made the selection 'pair': 1 object\n");
}

TEST_F(SelectTest, AnObjectThatWasErasedIsNotInTheSelection) {
    const std::string drawing = oddDrawing();
    const std::string second = named(drawing, "second"), first = named(drawing, "Knoten \xc3\x9c\nx");
    EXPECT_EQ(edit(drawing, "erase " + second + "\n").code, 0);
    const Json listed = json({"select", "list", drawing, "pair"});
    for (const Json& object : listed["selections"][0]["objects"])
        EXPECT_TRUE(object["handle"] == first || object["kind"].is_null()) << object;
}

TEST_F(SelectTest, ASelectionIsKeptWithoutTheModuleOfItsObjects) {
    const std::string drawing = oddDrawing();
    const Json before = json({"select", "list", drawing});
    takeExampleAway();
    EXPECT_EQ(json({"select", "list", drawing}), before);
}

TEST_F(SelectTest, WrongHandlesAndNamesChangeNothing) {
    const std::string drawing = oddDrawing();
    const std::string before = readWholeFile(drawing);
    expectFailure(taldork({"select", "set", drawing, "x", "FFFFFF"}), drawing);
    EXPECT_EQ(taldork({"select", "set", drawing, "x", "zz"}).code, 2);
    EXPECT_EQ(taldork({"select", "set", drawing, "x"}).code, 2);
    EXPECT_EQ(taldork({"select", "set", drawing, "", "1F"}).code, 2);
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

} // namespace tests
