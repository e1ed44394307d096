// systems create: the records that it leaves, and what it refuses.

#include "cli/systems_cli.h"

namespace tests {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

namespace {

class SystemsCreateTest : public SystemsCliTest {
protected:
    template <class Value>
    Value field(const std::string& bytes, std::size_t offset) {
        Value value{};
        if (offset + sizeof value > bytes.size())
            ADD_FAILURE() << "only " << bytes.size() << " bytes";
        else
            std::memcpy(&value, bytes.data() + offset, sizeof value);
        return value;
    }

    std::vector<float> floats(const std::string& bytes, std::size_t offset, std::size_t count) {
        std::vector<float> values;
        for (std::size_t i = 0; i < count; ++i)
            values.push_back(field<float>(bytes, offset + i * sizeof(float)));
        return values;
    }

    using Floats = std::vector<float>;
};

struct KindRow {
    const char* word;
    int iprob;
    int igres;
};

class SystemsCreateKindTest : public SystemsCreateTest, public ::testing::WithParamInterface<KindRow> {};

struct GravityRow {
    const char* word;
    int iachs;
};

class SystemsCreateGravityTest : public SystemsCreateTest,
                                 public ::testing::WithParamInterface<GravityRow> {};

struct UnitRow {
    const char* word;
    int number;
    double scale;
};

class SystemsCreateUnitTest : public SystemsCreateTest, public ::testing::WithParamInterface<UnitRow> {};

} // namespace

TEST_F(SystemsCreateTest, TheStoreHasTheFourRecords) {
    const std::string drawing = drawingWithSystem();
    const auto keys = json({"records", "list", drawing})["keys"];
    std::map<int, std::size_t> sizes;
    for (const auto& key : keys)
        sizes[key["kwl"]] = key["bytes"];
    EXPECT_EQ(sizes.size(), 4U);
    EXPECT_EQ(sizes[0], 352U);
    EXPECT_EQ(sizes[100], 8U + 3 * 4 + 300 * (4 + 8 + 1));
    EXPECT_EQ(sizes[101], 16U);
    EXPECT_EQ(sizes[102], 16U);
}

TEST_F(SystemsCreateTest, TheRecordIsAsAnAnalysisProgramWritesIt) {
    const std::string bytes = record(drawingWithSystem(), "ASDWG", "10/0");
    ASSERT_EQ(bytes.size(), 352U);
    EXPECT_EQ(field<std::int32_t>(bytes, 8), 0);  // nodes
    EXPECT_EQ(field<std::int32_t>(bytes, 12), 0); // highest node
    EXPECT_EQ(field<std::int32_t>(bytes, 16), 10000);
    EXPECT_EQ(floats(bytes, 24, 6), (Floats{0, 0, 0, 20, 20, 0}));
    EXPECT_EQ(floats(bytes, 48, 12), (Floats{0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}));
    EXPECT_EQ(bytes.substr(96), std::string(256, '\0'));
    EXPECT_EQ(record(file("drawing.dwg"), "ASDWG", "10/101"),
              RecordBytes().add(std::int32_t{10}).add(std::int32_t{1}).add(0.01).bytes());
}

TEST_P(SystemsCreateKindTest, HasItsNumberAndItsMask) {
    const auto [word, iprob, igres] = GetParam();
    const std::string drawing = drawingWithSystem({"--kind", word, "--gravity", "-y", "--unit", "m"});
    const std::string bytes = record(drawing, "ASDWG", "10/0");
    EXPECT_EQ(field<std::int32_t>(bytes, 0), iprob);
    EXPECT_EQ(field<std::int32_t>(bytes, 20), igres);
    EXPECT_EQ(system(drawing)["kind"], word);
    EXPECT_EQ(taldork({"systems", "check", drawing}).code, 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SystemsCreateKindTest,
                         ::testing::Values(KindRow{"space", 0, 127}, KindRow{"plane", 10, 35},
                                           KindRow{"plate", 30, 28}),
                         [](const auto& tested) { return tested.param.word; });

TEST_P(SystemsCreateGravityTest, IsTheAxisAlongWhichTheDrawingsGravityActs) {
    const auto [word, iachs] = GetParam();
    const std::string drawing = drawingWithSystem({"--kind", "space", "--gravity", word, "--unit", "cm"});
    const std::string bytes = record(drawing, "ASDWG", "10/0");
    EXPECT_EQ(field<std::int32_t>(bytes, 4), iachs);
    const Json entry = system(drawing);
    EXPECT_EQ(entry["gravity"], word);
    // The store's axes in the record are those that the module derives, each as long as the scale.
    const Floats axes = floats(bytes, 60, 9);
    for (int axis = 0; axis < 3; ++axis)
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(axes[3 * axis + i],
                        0.01 * entry["axes"][std::string(1, "xyz"[axis])][i].get<double>(), 1e-9)
                << axis << i;
    const Json down = entry["axes"][std::string(1, word[1])];
    EXPECT_NEAR(down[2].get<double>(), word[0] == '-' ? 1.0 : -1.0, 1e-12);
    EXPECT_EQ(taldork({"systems", "check", drawing}).code, 0);
}

INSTANTIATE_TEST_SUITE_P(Axes, SystemsCreateGravityTest,
                         ::testing::Values(GravityRow{"+x", 1}, GravityRow{"-x", -1}, GravityRow{"+y", 2},
                                           GravityRow{"-y", -2}, GravityRow{"+z", 3}, GravityRow{"-z", -3}),
                         [](const auto& tested) {
                             return (tested.param.word[0] == '-' ? "minus_" : "plus_") +
                                    std::string(tested.param.word + 1);
                         });

TEST_P(SystemsCreateUnitTest, IsInTheRecordOfUnitsAndInTheLengthOfTheAxes) {
    const auto [word, number, scale] = GetParam();
    const std::string drawing = drawingWithSystem({"--kind", "space", "--gravity", "-z", "--unit", word});
    EXPECT_EQ(record(drawing, "ASDWG", "10/102"), unitRecord(2, number, scale));
    EXPECT_EQ(system(drawing)["unit"], word);
    EXPECT_EQ(system(drawing)["scale"], scale);
    // Without that record the same unit is measured.
    done({"records", "del", drawing, "10/102"});
    const Json measured = system(drawing);
    EXPECT_EQ(measured["unit"], word);
    EXPECT_EQ(measured["unitNumber"], number);
    EXPECT_FLOAT_EQ(measured["scale"].get<float>(), static_cast<float>(scale));
}

INSTANTIATE_TEST_SUITE_P(Units, SystemsCreateUnitTest,
                         ::testing::Values(UnitRow{"m", 13, 1.0}, UnitRow{"cm", 15, 0.01},
                                           UnitRow{"mm", 16, 0.001}),
                         [](const auto& tested) { return tested.param.word; });

TEST_F(SystemsCreateTest, TheBoxIsGivenInTheDrawing) {
    const std::string drawing = drawingWithSystem(
        {"--kind", "space", "--gravity", "-z", "--unit", "cm", "--box", "-100,0,50,100,200,300"});
    const Json extents = system(drawing)["extents"];
    EXPECT_EQ(floats(record(drawing, "ASDWG", "10/0"), 24, 6), (Floats{-1, 0, 0.5F, 1, 2, 3}));
    EXPECT_EQ(extents["store"]["min"], (std::vector<double>{-1, 0, 0.5}));
    EXPECT_EQ(extents["drawing"]["min"], (std::vector<double>{-100, 0, 50}));
    EXPECT_EQ(extents["drawing"]["max"], (std::vector<double>{100, 200, 300}));
}

TEST_F(SystemsCreateTest, ASystemCreatedIsNoDifferenceFromTheDefaults) {
    EXPECT_EQ(system(drawingWithSystem())["settings"]["differences"], 0);
}

TEST_F(SystemsCreateTest, AStoreThatIsThereKeepsItsOtherRecords) {
    const std::string drawing = drawingWithStore();
    done({"records", "put", drawing, "20/5", "--hex", "2005"});
    create(drawing, "ASDWG");
    EXPECT_EQ(record(drawing, "ASDWG", "20/5"), "\x20\x05");
    EXPECT_EQ(system(drawing)["kind"], "space");
}

TEST_F(SystemsCreateTest, SettingsThatTheStoreHasAlreadyStay) {
    const std::string drawing = drawingWithSystem();
    done({"systems", "set", drawing, "ASDWG", "size.2=0.5", "point-size=0.25"});
    done({"records", "del", drawing, "10/0"});
    create(drawing, "ASDWG", {"--kind", "plate", "--gravity", "+z", "--unit", "mm"});
    const Json entry = system(drawing);
    EXPECT_EQ(entry["kind"], "plate");
    EXPECT_EQ(entry["pointSize"], 0.25);
    ASSERT_EQ(entry["settings"]["sizes"].size(), 1U);
    EXPECT_EQ(entry["settings"]["sizes"][0]["value"], 0.5);
}

TEST_F(SystemsCreateTest, AStoreWithASystemIsRefused) {
    const std::string drawing = drawingWithSystem();
    const std::string before = readWholeFile(drawing);
    const ProgramRun run =
        taldork({"systems", "create", drawing, "ASDWG", "--kind", "plate", "--gravity", "-z", "--unit", "m"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("has a system already"), std::string::npos) << run.err;
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(SystemsCreateTest, ANameThatDiffersInCaseAloneIsRefused) {
    const std::string drawing = drawingWithStore();
    const std::string before = readWholeFile(drawing);
    const ProgramRun run =
        taldork({"systems", "create", drawing, "asdwg", "--kind", "space", "--gravity", "-z", "--unit", "m"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("'ASDWG'"), std::string::npos) << run.err;
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(SystemsCreateTest, NamesThatAreReservedMakeNoSystem) {
    done({"new", file("a.dwg")});
    for (const char* name : {"$Kelmoran", ""}) {
        const ProgramRun run = taldork(
            {"systems", "create", file("a.dwg"), name, "--kind", "space", "--gravity", "-z", "--unit", "m"});
        expectFailure(run, std::string("'") + name + "'");
    }
}

TEST_F(SystemsCreateTest, AMissingDrawingIsNotMade) {
    expectFailure(taldork({"systems", "create", file("a.dwg"), "ASDWG", "--kind", "space", "--gravity", "-z",
                           "--unit", "m"}),
                  file("a.dwg"));
    EXPECT_FALSE(fs::exists(file("a.dwg")));
}

TEST_F(SystemsCreateTest, ABoxThatNoFloatHoldsFailsAndLeavesTheFile) {
    done({"new", file("a.dwg")});
    const std::string before = readWholeFile(file("a.dwg"));
    const ProgramRun run = taldork({"systems", "create", file("a.dwg"), "ASDWG", "--kind", "space",
                                    "--gravity", "-z", "--unit", "m", "--box", "0,0,0,1e39,1,1"});
    expectFailure(run, file("a.dwg"));
    EXPECT_NE(run.err.find("the box does not fit"), std::string::npos) << run.err;
    EXPECT_TRUE(readWholeFile(file("a.dwg")) == before);
}

TEST_F(SystemsCreateTest, DamagedSettingsOfTheStoreFailAndLeaveTheFile) {
    const std::string drawing = drawingWithStore();
    put(drawing, "ASDWG", "10/100", RecordBytes().add(1).add(15).add(5).bytes());
    const std::string before = readWholeFile(drawing);
    const ProgramRun run =
        taldork({"systems", "create", drawing, "ASDWG", "--kind", "space", "--gravity", "-z", "--unit", "m"});
    expectFailure(run, drawing);
    EXPECT_NE(run.err.find("filer error"), std::string::npos) << run.err;
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(SystemsCreateTest, WrongWordsAreWrongUsage) {
    const std::string drawing = file("a.dwg");
    const Words good = {"--kind", "space", "--gravity", "-z", "--unit", "m"};
    for (std::size_t i = 0; i < good.size(); i += 2) {
        Words wrong = {"systems", "create", drawing, "ASDWG"}, missing = wrong;
        for (std::size_t j = 0; j < good.size(); j += 2) {
            wrong.insert(wrong.end(), {good[j], i == j ? "q" : good[j + 1]});
            if (i != j)
                missing.insert(missing.end(), {good[j], good[j + 1]});
        }
        const ProgramRun run = taldork(wrong);
        EXPECT_EQ(run.code, 2) << good[i];
        EXPECT_NE(run.err.find("'q'"), std::string::npos) << run.err;
        EXPECT_EQ(taldork(missing).code, 2) << good[i];
    }
    for (const char* box :
         {"", "1,2,3", "0,0,0,1,1,nan", "0,0,0,1,1,inf", "0,0,0,1,1,1,1", "0,2,0,1,1,1", "a"}) {
        Words words = {"systems", "create", drawing, "ASDWG", "--box", box};
        words.insert(words.end(), good.begin(), good.end());
        EXPECT_EQ(taldork(words).code, 2) << box;
    }
}

TEST_F(SystemsCreateTest, AStoreNameMayHoldAnyLetters) {
    const std::string name = "Geb\xc3\xa4ude \xe6\xa2\x81";
    done({"new", file("a.dwg")});
    create(file("a.dwg"), name);
    EXPECT_EQ(system(file("a.dwg"), name)["kind"], "space");
    EXPECT_EQ(done({"convert", file("a.dwg"), name, "--to-store", "1,2,3"}), "1 2 3\n");
}

} // namespace tests
