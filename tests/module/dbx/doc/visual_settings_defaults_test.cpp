#include "dbx/doc/visual_settings.h"

#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <ostream>
#include <vector>

using namespace orv::settings;
using orv::ColourRGBA;
using testing_support::ReportRecorder;

namespace {

struct Colour {
    double r, g, b, a;
    bool operator==(const Colour& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
};
std::ostream& operator<<(std::ostream& stream, const Colour& c) {
    return stream << "(" << c.r << ", " << c.g << ", " << c.b << ", " << c.a << ")";
}

const Colour kRed = {1, 0, 0, 1};
const Colour kGreen = {0, 1, 0, 1};
const Colour kBlue = {0, 0, 1, 1};
const Colour kYellow = {1, 1, 0, 1};
const Colour kCyan = {0, 1, 1, 1};
const Colour kPurple = {1, 0, 1, 1};

constexpr std::uint32_t kFlagsKept = 0xffffffff;
struct Sized {
    double value;
    std::uint32_t flags = kFlagsKept;
};

// What one step leaves behind.
struct Step {
    std::map<int, Colour> colours;
    std::map<int, Sized> sizes;
    std::map<int, int> switches;
};

const Step kBaseStep = {
    {{151, {0.9, 0, 0, 0.9}},
     {152, {0.9, 0, 0, 0.9}},
     {153, {0.9, 0, 0, 0.9}},
     {154, {0.9, 0, 0, 0.9}},
     {51, kBlue},
     {52, kCyan},
     {53, kYellow},
     {54, kPurple},
     {55, kGreen},
     {56, kBlue},
     {57, kRed},
     {58, kRed}},
    {{1, {1.0, 2}}, {2, {0.2}}, {3, {0.6}}, {4, {0.15}}, {5, {0.2}}, {6, {0.3}}, {7, {0.2}}},
    {{0, 1},   {1, 1},   {2, 1},   {3, 1},   {4, 1},   {21, 1},  {22, 1},  {23, 1},  {24, 1},
     {25, 1},  {26, 1},  {27, 1},  {28, 1},  {29, 1},  {61, 1},  {62, 1},  {63, 0},  {64, 1},
     {201, 0}, {202, 1}, {203, 0}, {204, 0}, {205, 0}, {206, 0}, {207, 0}, {208, 0}, {209, 0}}};

// By the version that added it.
const std::map<int, Step> kSteps = {
    {2,
     {{{101, {0.9, 0.2, 0.2, 1}},
       {102, {0.9, 0.9, 0.5, 1}},
       {103, {0, 0.4, 0.8, 1}},
       {104, {127 / 255.0, 191 / 255.0, 1, 1}},
       {105, {0.6, 0.8, 0.4, 1}}},
      {},
      {{103, 1}, {105, 1}, {106, 1}, {107, 1}, {108, 1}, {111, 1}, {113, 1}, {114, 1}}}},
    {3, {{{106, {0.9, 0.9, 0.5, 1}}}, {}, {{202, 1}}}},
    {4, {{}, {}, {{115, 1}}}},
    {5, {{}, {}, {{251, 1}, {252, 1}}}},
    {6, {{{107, kRed}}, {}, {{116, 0}, {117, 0}, {118, 0}, {119, 0}, {120, 1}, {121, 0}, {151, 0}}}},
    {7, {{}, {}, {{5, 1}, {65, 0}, {66, 0}, {67, 0}, {68, 0}, {69, 0}, {122, 1}}}},
    {8, {{}, {{101, {0.1}}}, {{6, 1}, {151, 1}}}},
    {9, {{}, {}, {{123, 1}, {124, 0}}}},
    {10, {{}, {}, {{125, 0}}}},
    {11,
     {{{59, kRed}, {108, kRed}},
      {{151, {3, 2}}, {152, {5, 2}}, {153, {9, 2}}, {154, {10, 2}}, {155, {5, 2}}},
      {{7, 1}, {30, 1}, {126, 0}}}},
    {12,
     {{{251, {0.6, 0.6, 1, 1}}, {252, kYellow}, {253, {0.25, 0.25, 0.4, 1}}},
      {},
      {{270, 1}, {271, 1}, {272, 1}}}},
    {13, {{}, {}, {{210, 0}, {211, 1}}}},
    {14, {{{1, kRed}, {2, kRed}}, {{8, {0.2, 0}}}, {}}},
    {15, {{}, {}, {{127, 0}, {128, 0}}}},
};

// All three tables, to be compared with a Settings.
struct Tables {
    std::vector<Colour> colours = std::vector<Colour>(300);
    std::vector<Sized> sizes = std::vector<Sized>(300);
    std::vector<int> switches = std::vector<int>(300);

    void make(const Step& step) {
        for (const auto& [index, colour] : step.colours)
            colours[index] = colour;
        for (const auto& [index, sized] : step.sizes)
            sizes[index] = {sized.value, sized.flags == kFlagsKept ? sizes[index].flags : sized.flags};
        for (const auto& [index, value] : step.switches)
            switches[index] = value;
    }
    void makeBase() {
        switches.assign(300, 0);
        make(kBaseStep);
    }
};

// Values that no step sets, so that what a step does and what it leaves are both seen.
constexpr Colour kUnset = {0.125, 0.375, 0.625, 0.875};
constexpr ColourRGBA kUnsetColour = {kUnset.r, kUnset.g, kUnset.b, kUnset.a};
constexpr Sized kUnsetSize = {42.5, 0x50};
constexpr int kUnsetSwitch = 77;

Tables unset() {
    Tables tables;
    tables.colours.assign(300, kUnset);
    tables.sizes.assign(300, kUnsetSize);
    tables.switches.assign(300, kUnsetSwitch);
    return tables;
}

void makeUnset(Settings& settings, int, bool) {
    for (int index = 0; index < 300; ++index) {
        settings.setColour(index, kUnsetColour);
        settings.setSize(index, size{kUnsetSize.flags, kUnsetSize.value});
        settings.setSwitch(index, kUnsetSwitch);
    }
}

void expectEqual(const Settings& settings, const Tables& tables) {
    for (int index = 0; index < 300; ++index) {
        const ColourRGBA colour = settings.getColour(index);
        EXPECT_EQ((Colour{colour.red, colour.green, colour.blue, colour.alpha}), tables.colours[index])
            << "colour " << index;
        EXPECT_EQ(settings.getRawSize(index).value, tables.sizes[index].value) << "size " << index;
        EXPECT_EQ(settings.getRawSize(index).flags, tables.sizes[index].flags) << "flags of size " << index;
        EXPECT_EQ(settings.getSwitch(index), tables.switches[index]) << "switch " << index;
    }
}

Tables afterSteps(Tables tables, int version) {
    for (const auto& [number, step] : kSteps)
        if (version < number)
            tables.make(step);
    return tables;
}

class VisualDefaultsOfVersion : public testing::TestWithParam<int> {};
class VisualDefaultsOfStep : public testing::TestWithParam<int> {};

} // namespace

// From version 14 on, say, only what 15 added; from 0 and below, all but the base.
TEST_P(VisualDefaultsOfVersion, AreWhatLaterVersionsAdded) {
    ReportRecorder recorder;
    Settings settings(makeUnset, 15, true);
    applyVisDefaults(settings, GetParam(), false);
    expectEqual(settings, afterSteps(unset(), GetParam()));
    EXPECT_EQ(settings.getVersion(), 15);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_P(VisualDefaultsOfVersion, AreAllOfThemWhenTheyAreFull) {
    ReportRecorder recorder;
    Settings settings(makeUnset, 15, true);
    applyVisDefaults(settings, GetParam(), true);
    Tables tables = unset();
    tables.makeBase();
    expectEqual(settings, afterSteps(tables, -1));
    EXPECT_EQ(recorder.size(), 0u);
}

// One step in the midst of the others: the version before it makes it, its own does not.
TEST_P(VisualDefaultsOfStep, BeginBelowItsNumber) {
    const Step& step = kSteps.at(GetParam());
    Settings before(makeUnset, 15, true);
    applyVisDefaults(before, GetParam() - 1, false);
    Settings own(makeUnset, 15, true);
    applyVisDefaults(own, GetParam(), false);
    for (const auto& [index, value] : step.switches) {
        // Switches 151 and 202 are set by another step too.
        EXPECT_EQ(before.getSwitch(index), index == 151 ? 1 : value) << index;
        EXPECT_EQ(own.getSwitch(index), index == 151 && GetParam() < 8 ? 1 : kUnsetSwitch) << index;
    }
    for (const auto& [index, colour] : step.colours) {
        EXPECT_NE(before.getColour(index), kUnsetColour) << index;
        EXPECT_EQ(own.getColour(index), kUnsetColour) << index;
    }
    for (const auto& [index, sized] : step.sizes) {
        EXPECT_EQ(before.getRawSize(index).value, sized.value) << index;
        EXPECT_EQ(own.getRawSize(index).value, kUnsetSize.value) << index;
    }
}

INSTANTIATE_TEST_SUITE_P(All, VisualDefaultsOfVersion,
                         testing::Values(-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 1000));

INSTANTIATE_TEST_SUITE_P(All, VisualDefaultsOfStep, testing::Range(2, 16));

TEST(VisualDefaults, OfANewSystemAreComplete) {
    const Settings settings(applyVisDefaults, kVisVersion, true);
    EXPECT_EQ(kVisVersion, 15);
    EXPECT_EQ(settings.getVersion(), 15);
    Tables tables;
    tables.colours.assign(300, {1, 1, 1, 1});
    tables.sizes.assign(300, {1.0, 0});
    tables.makeBase();
    expectEqual(settings, afterSteps(tables, -1));
}

TEST(VisualDefaults, ARecordOfVersion14GetsOnlyStep15) {
    Settings settings(makeUnset, 15, true);
    applyVisDefaults(settings, 14, false);
    Tables tables = unset();
    tables.switches[127] = tables.switches[128] = 0;
    expectEqual(settings, tables);
}

TEST(VisualDefaults, ARecordOfVersion16GetsNoStep) {
    Settings settings(makeUnset, 15, true);
    applyVisDefaults(settings, 16, false);
    expectEqual(settings, unset());
}

TEST(VisualDefaults, TheLaterStepWinsSwitch151) {
    Settings settings(makeUnset, 15, true);
    applyVisDefaults(settings, 0, true);
    EXPECT_TRUE(settings.isOn(151));
    applyVisDefaults(settings, 5, false);
    EXPECT_TRUE(settings.isOn(151));
}

TEST(VisualDefaults, AlwaysEndWithTheSizesScaledBySizeOne) {
    for (int version : {0, 14, 15, 16}) {
        Settings settings(makeUnset, 15, true);
        settings.setSize(1, size{kFixedSize, 4.0});
        settings.setSize(299, 10.0);
        applyVisDefaults(settings, version, false);
        EXPECT_EQ(settings.getSize(299), 40.0) << version;
        EXPECT_EQ(settings.getSize(1), 4.0) << version;
    }
    Settings full(makeUnset, 15, true);
    full.scaleBy(7.0);
    applyVisDefaults(full, 15, true);
    EXPECT_EQ(full.getSize(2), 0.2);
    EXPECT_EQ(full.getSize(299), 42.5);
}
