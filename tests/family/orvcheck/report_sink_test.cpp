#include "orvcheck/report_sink.h"

#include "orvcheck/smart_assert.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace orv::smartassert;

TEST(ReportSink, WhatASinkThrowsDoesNotReachTheReporter) {
    const ReportSink before = setReportSink([](const Report&) { throw std::runtime_error("sink"); });
    EXPECT_NO_THROW(SmartAssert("c").error("m"));
    EXPECT_NO_THROW(SmartAssert("c"));
    setReportSink(before);
}

TEST(ReportSink, AnswersTheOneBefore) {
    testing_support::ReportRecorder recorder;
    const ReportSink before = setReportSink([](const Report&) {});
    SmartAssert("unseen").debug("");
    setReportSink(before);
    SmartAssert("seen").debug("");
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "seen");
}

TEST(ReportSink, AnEmptySinkBringsBackTheOneThatPrintsALine) {
    testing_support::ReportRecorder recorder;
    const ReportSink before = setReportSink(ReportSink());
    testing::internal::CaptureStderr();
    {
        SmartAssert report("a < b");
        report.setFileContext("f.cpp", 3).printValue("a", "7").warning("too big");
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "f.cpp:3: warning: a < b [a=7]: too big\n");
    setReportSink(before);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(ReportSink, LineLeavesOutWhatIsNotThere) {
    Report report;
    report.condition = "false";
    report.values = {{"x", "1"}, {"y", "2"}};
    EXPECT_EQ(toLine(report), "debug: false [x=1, y=2]");
}
