#pragma once

#include "orvcheck/export.h"
#include "orvcheck/report.h"

#include <functional>
#include <string>

namespace orv::smartassert {

using ReportSink = std::function<void(const Report&)>;

// Replaces what every report is handed to, and answers what was there before. An empty sink brings back the
// default, which prints the report as one line to standard error. What a sink throws is swallowed: a report
// never changes the way of the code that makes it.
ORVCHECK_API ReportSink setReportSink(ReportSink sink);

// Hands a report to the present sink. Never throws.
ORVCHECK_API void deliver(const Report& report) noexcept;

// The report as one line without its end: `file:line: severity: condition [name=value, ...]: message`.
ORVCHECK_API std::string toLine(const Report& report);

} // namespace orv::smartassert
