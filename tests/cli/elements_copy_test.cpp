// elements copy: into another drawing, with what they need.

#include "cli/elements_cli.h"

#include <set>

namespace tests {

namespace {

class ElementsCopyTest : public ElementsCliTest {
protected:
    void SetUp() override {
        source = frameDrawing();
        target = file("target.dwg");
        done({"new", target});
    }

    std::string source, target;
};

} // namespace

TEST_F(ElementsCopyTest, ABeamBringsItsNodesAndItsSystem) {
    const std::string before = readWholeFile(source);
    const std::string beam = named(source, "B1");
    const Json copied = json({"elements", "copy", source, target, beam});
    ASSERT_EQ(copied["copied"].size(), 1U);
    EXPECT_EQ(copied["copied"][0]["from"], beam);
    EXPECT_EQ(copied["copied"][0]["class"], "STR_Beam");
    EXPECT_EQ(copied["systems"], Json({"ASDWG"}));
    EXPECT_TRUE(readWholeFile(source) == before);

    const Json all = rows(target);
    ASSERT_EQ(all.size(), 3U);
    const Json& copy = all[0];
    EXPECT_EQ(copy["handle"], copied["copied"][0]["to"]);
    EXPECT_EQ(copy["name"], "B1");
    EXPECT_EQ(copy["number"], 1); // 13 in its own drawing
    EXPECT_EQ(copy["system"], "ASDWG");
    EXPECT_EQ(copy["connections"], Json({all[1]["handle"], all[2]["handle"]}));
    EXPECT_EQ(all[1]["class"], "STR_Node");

    const Json systems = json({"systems", "list", target});
    EXPECT_EQ(systems["systems"][0]["kind"], "space");
    EXPECT_EQ(systems["complaints"], 0);
}

TEST_F(ElementsCopyTest, CopiesGetNumbersAndIdentifiersOfTheirOwn) {
    const std::string beam = named(source, "B1");
    done({"elements", "copy", source, target, beam});
    const std::string text = done({"elements", "copy", source, target, beam, beam});
    EXPECT_NE(text.find("\n1 element copied; of what was there already "), std::string::npos) << text;
    EXPECT_EQ(done({"elements", "number", target}), "STR_Beam: 2 elements, highest number 2\n"
                                                    "STR_Node: 4 elements, highest number 4\n");
    std::set<std::string> identifiers;
    for (const Json& row : rows(target))
        identifiers.insert(row["bimId"].get<std::string>());
    for (const Json& row : rows(source))
        EXPECT_EQ(identifiers.count(row["bimId"].get<std::string>()), 0U);
    EXPECT_EQ(identifiers.size(), 6U);
}

TEST_F(ElementsCopyTest, ASystemThatIsThereIsUsed) {
    done({"systems", "create", target, "ASDWG", "--kind", "plane", "--gravity", "-y", "--unit", "cm"});
    EXPECT_EQ(json({"elements", "copy", source, target, named(source, "B1")})["systems"], Json::array());
    EXPECT_EQ(json({"systems", "list", target})["systems"][0]["kind"], "plane");
}

TEST_F(ElementsCopyTest, WhatIsKeptOfAPluginGoesAlongWithItsIdsTranslated) {
    const std::string odd = oddDrawing();
    const std::string first = named(odd, "Knoten \xc3\x9c\nx"), second = named(odd, "second");
    const Json copied = toldJson({"elements", "copy", odd, target, first, second})["copied"];
    ASSERT_EQ(copied.size(), 2U);
    const Json kept = toldJson({"elements", "show", target, copied[0]["to"]})["plugins"][2];
    EXPECT_EQ(kept["id"], "test.away.1");
    EXPECT_EQ(kept["bytes"], 12);
    EXPECT_EQ(kept["softIds"], Json({copied[1]["to"]}));
}

TEST_F(ElementsCopyTest, AFailureLeavesTheTargetAsItWas) {
    const std::string before = readWholeFile(target);
    const std::string beam = named(source, "B1");
    expectFailure(taldork({"elements", "copy", source, target, beam, "FFFFFF"}), source);
    expectFailure(taldork({"elements", "copy", source, target, "1"}), source);
    expectFailure(taldork({"elements", "copy", source, source, beam}), source);
    expectFailure(taldork({"elements", "copy", source, file("none.dwg"), beam}), file("none.dwg"));
    EXPECT_EQ(taldork({"elements", "copy", source, target}).code, 2);
    EXPECT_EQ(taldork({"elements", "copy", source, target, "zz"}).code, 2);
    takeExampleAway();
    const ProgramRun run = taldork({"elements", "copy", source, target, beam});
    expectFailure(run, source);
    EXPECT_NE(run.err.find("its class is not loaded"), std::string::npos) << run.err;
    EXPECT_TRUE(readWholeFile(target) == before);
}

} // namespace tests
