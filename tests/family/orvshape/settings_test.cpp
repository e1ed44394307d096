#include "orvshape/settings.h"

#include "orvshape/colours.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <vector>

using orv::ColourRGBA;
using orv::Colours;
using orv::settings::kFixedSize;
using orv::settings::Settings;
using orv::settings::size;
using testing_support::ReportRecorder;
using testing_support::Texts;
using testing_support::Values;

namespace {

void nothing(Settings&, int, bool) {}

Settings fresh() { return Settings(nothing, 15, true); }

const int kOutside[] = {-1, 300, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};

// Values that a wrong index would disturb.
Settings striped() {
    Settings settings = fresh();
    for (int i = 0; i < 300; ++i) {
        settings.setColour(i, {i / 300.0, 0.25, 0.5, 0.75});
        settings.setSize(i, size{static_cast<std::uint32_t>(i), i + 0.5});
        settings.setSwitch(i, static_cast<std::uint8_t>(i));
    }
    return settings;
}

void expectStriped(const Settings& settings) {
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(settings.getColour(i), ColourRGBA(i / 300.0, 0.25, 0.5, 0.75)) << i;
        EXPECT_EQ(settings.getRawSize(i).flags, static_cast<std::uint32_t>(i)) << i;
        EXPECT_EQ(settings.getRawSize(i).value, i + 0.5) << i;
        EXPECT_EQ(settings.getSwitch(i), static_cast<std::uint8_t>(i)) << i;
    }
}

} // namespace

TEST(Settings, AFreshObjectIsWhiteOfSizeOneAndOff) {
    const Settings settings = fresh();
    EXPECT_EQ(settings.numColours(), 300);
    EXPECT_EQ(settings.numSizes(), 300);
    EXPECT_EQ(settings.numSwitches(), 300);
    EXPECT_EQ(settings.maxSwitchIndex(), 299);
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(settings.getColour(i), ColourRGBA(1.0, 1.0, 1.0, 1.0)) << i;
        EXPECT_EQ(settings.getRawSize(i).flags, 0u) << i;
        EXPECT_EQ(settings.getRawSize(i).value, 1.0) << i;
        EXPECT_EQ(settings.getSize(i), 1.0) << i;
        EXPECT_EQ(settings.getSwitch(i), 0) << i;
        EXPECT_FALSE(settings.isOn(i)) << i;
    }
}

TEST(Settings, TheDefaultsRunOnceOnTheNewObjectWithVersionAndFlag) {
    std::vector<std::tuple<Settings*, int, bool>> calls;
    const Settings::Defaults defaults = [&](Settings& self, int version, bool full) {
        EXPECT_EQ(self.getVersion(), version);
        EXPECT_EQ(self.getColour(299), ColourRGBA(1.0, 1.0, 1.0, 1.0));
        EXPECT_EQ(self.getSize(299), 1.0);
        EXPECT_EQ(self.getSwitch(299), 0);
        self.setSize(7, 4.5);
        calls.emplace_back(&self, version, full);
    };
    Settings first(defaults, 15, true);
    Settings second(defaults, 3, false);
    EXPECT_EQ(calls,
              (std::vector<std::tuple<Settings*, int, bool>>{{&first, 15, true}, {&second, 3, false}}));
    EXPECT_EQ(first.getSize(7), 4.5);
    EXPECT_EQ(first.getVersion(), 15);
    EXPECT_EQ(second.getVersion(), 3);
}

TEST(Settings, WithoutDefaultsThereIsNoObject) {
    EXPECT_THROW(Settings(Settings::Defaults(), 15, true), boost::bad_function_call);
    const Settings::Defaults failing = [](Settings&, int, bool) { throw std::runtime_error("no"); };
    EXPECT_THROW(Settings(failing, 15, true), std::runtime_error);
}

TEST(Settings, EachNumberHasItsOwnColourSizeAndSwitch) {
    ReportRecorder recorder;
    expectStriped(striped());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(Settings, CopiesAreTheirOwn) {
    const Settings original = striped();
    Settings copy = original;
    copy.setColour(5, Colours::Red);
    copy.setSize(5, 9.0);
    copy.setSwitch(5, 99);
    copy.scaleBy(3.0);
    expectStriped(original);
    EXPECT_EQ(original.getSize(5), 5.5);
    EXPECT_EQ(copy.getSize(5), 27.0);
}

TEST(SettingsScaling, EverySizeButTheFixedOnesIsScaled) {
    Settings settings = fresh();
    settings.setSize(1, size{kFixedSize, 4.0});
    settings.setSize(2, 4.0);
    settings.setSize(3, size{1, 4.0});
    settings.setSize(4, size{3, 4.0});
    settings.scaleBy(0.5);
    EXPECT_EQ(settings.getSize(0), 0.5);
    EXPECT_EQ(settings.getSize(1), 4.0);
    EXPECT_EQ(settings.getSize(2), 2.0);
    EXPECT_EQ(settings.getSize(3), 2.0);
    EXPECT_EQ(settings.getSize(4), 4.0);
    EXPECT_EQ(settings.getSize(299), 0.5);
    EXPECT_EQ(settings.getRawSize(2).value, 4.0);
}

TEST(SettingsScaling, FactorsDoNotAddUp) {
    Settings settings = fresh();
    settings.setSize(2, 4.0);
    settings.scaleBy(0.5);
    settings.scaleBy(0.5);
    EXPECT_EQ(settings.getSize(2), 2.0);
    settings.scaleBy(10.0);
    EXPECT_EQ(settings.getSize(2), 40.0);
    settings.scaleBy(0.0);
    settings.scaleBy(1.0);
    EXPECT_EQ(settings.getSize(2), 4.0);
}

TEST(SettingsScaling, ASizeThatIsSetLaterFollowsTheLastFactor) {
    Settings settings = fresh();
    settings.scaleBy(10.0);
    settings.setSize(2, 3.0);
    EXPECT_EQ(settings.getSize(2), 30.0);
    settings.setSize(3, size{kFixedSize, 3.0});
    EXPECT_EQ(settings.getSize(3), 3.0);
    settings.setSize(3, size{0, 5.0});
    EXPECT_EQ(settings.getSize(3), 50.0);
}

TEST(SettingsScaling, FlagsThatAreSetLaterFollowTheLastFactor) {
    Settings settings = fresh();
    settings.setSize(2, 3.0);
    settings.scaleBy(10.0);
    settings.setSizeFlags(2, kFixedSize);
    EXPECT_EQ(settings.getSize(2), 3.0);
    EXPECT_EQ(settings.getRawSize(2).flags, kFixedSize);
    EXPECT_EQ(settings.getRawSize(2).value, 3.0);
    settings.scaleBy(20.0);
    EXPECT_EQ(settings.getSize(2), 3.0);
    settings.setSizeFlags(2, 0);
    EXPECT_EQ(settings.getSize(2), 60.0);
}

TEST(SettingsScaling, AValueAloneLeavesTheFlags) {
    Settings settings = fresh();
    settings.setSize(2, size{0x80000002, 3.0});
    settings.setSize(2, 4.0);
    EXPECT_EQ(settings.getRawSize(2).flags, 0x80000002u);
    EXPECT_EQ(settings.getRawSize(2).value, 4.0);
    settings.scaleBy(7.0);
    EXPECT_EQ(settings.getSize(2), 4.0);
}

TEST(SettingsSwitches, AnyValueButZeroIsOn) {
    Settings settings = fresh();
    settings.setSwitch(4, 1);
    settings.setSwitch(5, 255);
    EXPECT_TRUE(settings.isOn(4));
    EXPECT_TRUE(settings.isOn(5));
    EXPECT_EQ(settings.getSwitch(5), 255);
    settings.setSwitch(4, 0);
    EXPECT_FALSE(settings.isOn(4));
}

TEST(SettingsSwitches, ARangeHasBothItsEnds) {
    Settings settings = fresh();
    settings.setSwitchRange(10, 12, 3);
    for (int i = 8; i < 15; ++i)
        EXPECT_EQ(settings.getSwitch(i), i >= 10 && i <= 12 ? 3 : 0) << i;
    settings.setSwitchRange(20, 20, 1);
    EXPECT_FALSE(settings.isOn(19));
    EXPECT_TRUE(settings.isOn(20));
    EXPECT_FALSE(settings.isOn(21));
    settings.setSwitchRange(0, settings.maxSwitchIndex(), 1);
    EXPECT_TRUE(settings.isOn(0));
    EXPECT_TRUE(settings.isOn(299));
}

TEST(SettingsSwitches, ARangeThatEndsBeforeItBeginsSetsNothing) {
    ReportRecorder recorder;
    Settings settings = striped();
    settings.setSwitchRange(12, 10, 77);
    expectStriped(settings);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(SettingsSwitches, ARangeWithAnEndOutsideIsReportedAndSetsNothing) {
    Settings settings = striped();
    for (int outside : kOutside) {
        ReportRecorder recorder;
        settings.setSwitchRange(outside, 10, 77);
        EXPECT_EQ(recorder.conditions(), (Texts{"index >= 0 && index < count"})) << outside;
        recorder.clear();
        settings.setSwitchRange(290, outside, 77);
        EXPECT_EQ(recorder.conditions(), (Texts{"index >= 0 && index < count"})) << outside;
    }
    expectStriped(settings);
}

TEST(SettingsIndex, OneOutsideIsReportedWithTheCount) {
    ReportRecorder recorder;
    fresh().getColour(300);
    ASSERT_EQ(recorder.conditions(), (Texts{"index >= 0 && index < count"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"index", "300"}, {"count", "300"}}));
    EXPECT_NE(recorder.at(0).file.find("settings.cpp"), std::string::npos);
    EXPECT_GT(recorder.at(0).line, 0);
}

TEST(SettingsIndex, OneOutsideIsAnsweredLikeAFreshObject) {
    Settings settings = striped();
    settings.scaleBy(5.0);
    for (int outside : kOutside) {
        ReportRecorder recorder;
        EXPECT_EQ(settings.getColour(outside), ColourRGBA(1.0, 1.0, 1.0, 1.0));
        EXPECT_EQ(settings.getRawSize(outside).flags, 0u);
        EXPECT_EQ(settings.getRawSize(outside).value, 1.0);
        EXPECT_EQ(settings.getSize(outside), 1.0);
        EXPECT_EQ(settings.getSwitch(outside), 0);
        EXPECT_FALSE(settings.isOn(outside));
        EXPECT_EQ(recorder.conditions(), Texts(6, "index >= 0 && index < count")) << outside;
    }
}

TEST(SettingsIndex, OneOutsideSetsNothing) {
    // On the heap, so that a write beside the object is noticed.
    const auto settings = std::make_unique<Settings>(striped());
    for (int outside : kOutside) {
        ReportRecorder recorder;
        settings->setColour(outside, Colours::Red);
        settings->setSize(outside, 99.0);
        settings->setSize(outside, size{99, 99.0});
        settings->setSizeFlags(outside, 99);
        settings->setSwitch(outside, 99);
        EXPECT_EQ(recorder.conditions(), Texts(5, "index >= 0 && index < count")) << outside;
    }
    expectStriped(*settings);
}

TEST(Colours, AreThePureOnesAndTheirMixtures) {
    EXPECT_EQ(Colours::Red, ColourRGBA(1, 0, 0, 1));
    EXPECT_EQ(Colours::Green, ColourRGBA(0, 1, 0, 1));
    EXPECT_EQ(Colours::Blue, ColourRGBA(0, 0, 1, 1));
    EXPECT_EQ(Colours::Yellow, ColourRGBA(1, 1, 0, 1));
    EXPECT_EQ(Colours::Cyan, ColourRGBA(0, 1, 1, 1));
    EXPECT_EQ(Colours::Purple, ColourRGBA(1, 0, 1, 1));
}

TEST(Colours, AFactorGoesToAllFourParts) {
    EXPECT_EQ(Colours::Red * 0.9, ColourRGBA(0.9, 0.0, 0.0, 0.9));
    EXPECT_EQ(ColourRGBA(0.2, 0.4, 0.6, 0.8) * 0.5, ColourRGBA(0.1, 0.2, 0.3, 0.4));
    EXPECT_NE(Colours::Red, Colours::Red * 0.9);
}

TEST(Colours, AFreshColourIsOpaqueWhite) { EXPECT_EQ(ColourRGBA(), ColourRGBA(1, 1, 1, 1)); }
