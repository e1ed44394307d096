#include "base/assert.h"

#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <type_traits>

using orv::smartassert::Severity;
using testing_support::ReportRecorder;
using testing_support::Values;

TEST(Assert, SaysNothingWhileTheConditionHolds) {
    ReportRecorder recorder;
    int evaluated = 0;
    const auto value = [&] { return ++evaluated; };
    ORV_ASSERT(1 + 1 == 2)(value()).error("never");
    EXPECT_EQ(recorder.size(), 0u);
    EXPECT_EQ(evaluated, 0);
}

TEST(Assert, ReportsConditionAndPlace) {
    ReportRecorder recorder;
    const bool magic = false;
    const int line = __LINE__ + 1;
    ORV_ASSERT(magic && true);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "magic && true");
    EXPECT_EQ(recorder.at(0).file, __FILE__);
    EXPECT_EQ(recorder.at(0).line, line);
    EXPECT_EQ(recorder.at(0).message, "");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::kDefaultSeverity);
}

TEST(Assert, KeepsValuesInTheOrderWrittenUnderTheirSourceTexts) {
    ReportRecorder recorder;
    const unsigned int version = 7;
    const unsigned int kVersion = 3;
    const double x = 0.5;
    ORV_ASSERT(version <= kVersion)(version)(kVersion)(x * 2)(true)(L"wide").debug("version mismatch");
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(
        recorder.at(0).values,
        (Values{{"version", "7"}, {"kVersion", "3"}, {"x * 2", "1"}, {"true", "1"}, {"L\"wide\"", "wide"}}));
    EXPECT_EQ(recorder.at(0).message, "version mismatch");
}

TEST(Assert, NarrowTextGoesAsItIs) {
    ReportRecorder recorder;
    const std::string narrow = "\xff bytes";
    const char* const none = nullptr;
    const std::wstring wide = L"\u00f6";
    ORV_ASSERT(false)(narrow)("data")(none)(wide);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(
        recorder.at(0).values,
        (Values{{"narrow", "\xff bytes"}, {"\"data\"", "data"}, {"none", "<null>"}, {"wide", "\xC3\xB6"}}));
}

TEST(Assert, EachSeverityCloses) {
    ReportRecorder recorder;
    ORV_ASSERT(false).debug("d");
    ORV_ASSERT(false).warning("w");
    ORV_ASSERT(false)(1).error("e");
    ASSERT_EQ(recorder.size(), 3u);
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
    EXPECT_EQ(recorder.at(1).severity, Severity::kWarning);
    EXPECT_EQ(recorder.at(2).severity, Severity::kError);
}

TEST(Assert, IsOneExpressionAndTakesNoElseAway) {
    ReportRecorder recorder;
    int way = 0;
    if (recorder.size() == 1)
        ORV_ASSERT(false);
    else
        way = 2;
    EXPECT_EQ(way, 2);
    static_assert(std::is_void_v<decltype(ORV_ASSERT(false))>);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(Assert, EvaluatesTheConditionOnceAndGoesOn) {
    ReportRecorder recorder;
    int evaluated = 0;
    ORV_ASSERT(++evaluated == 0).error("goes on");
    ++evaluated;
    EXPECT_EQ(evaluated, 2);
    EXPECT_EQ(recorder.size(), 1u);
}
