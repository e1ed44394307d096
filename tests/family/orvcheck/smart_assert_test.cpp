#include "orvcheck/smart_assert.h"

#include "support/report_recorder.h"

#include <gtest/gtest.h>

using orv::smartassert::Severity;
using orv::smartassert::SmartAssert;
using testing_support::ReportRecorder;
using testing_support::Values;

TEST(SmartAssert, ReportsWithTheDefaultSeverityWhenItEnds) {
    ReportRecorder recorder;
    {
        SmartAssert report("a == b");
        EXPECT_EQ(recorder.size(), 0u);
    }
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "a == b");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::kDefaultSeverity);
    EXPECT_EQ(recorder.at(0).message, "");
    EXPECT_EQ(recorder.at(0).file, "");
}

TEST(SmartAssert, KeepsPlaceAndValuesInTheirOrder) {
    ReportRecorder recorder;
    {
        SmartAssert report("c");
        report.setFileContext("some/file.cpp", 17).printValue("one", "1");
        report.context().addValuePair(L"zwei", L"\u00fc");
        report.printValue("three", "3");
    }
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).file, "some/file.cpp");
    EXPECT_EQ(recorder.at(0).line, 17);
    EXPECT_EQ(recorder.at(0).values, (Values{{"one", "1"}, {"zwei", "\xC3\xBC"}, {"three", "3"}}));
}

TEST(SmartAssert, ReportsOnceAtTheFirstSeverityCall) {
    ReportRecorder recorder;
    {
        SmartAssert report("c");
        report.warning("not good");
        EXPECT_EQ(recorder.size(), 1u);
        report.error("worse");
    }
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).severity, Severity::kWarning);
    EXPECT_EQ(recorder.at(0).message, "not good");
}

TEST(SmartAssert, EachCallHasItsSeverity) {
    ReportRecorder recorder;
    SmartAssert("a").debug("1");
    SmartAssert("b").warning("2");
    SmartAssert("c").error("3");
    ASSERT_EQ(recorder.size(), 3u);
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
    EXPECT_EQ(recorder.at(1).severity, Severity::kWarning);
    EXPECT_EQ(recorder.at(2).severity, Severity::kError);
}
