#include "orvcheck/report_sink.h"

#include <cstdio>
#include <utility>

namespace orv::smartassert {

namespace {

const char* nameOf(Severity severity) {
    switch (severity) {
    case Severity::kDebug:
        return "debug";
    case Severity::kWarning:
        return "warning";
    case Severity::kError:
        return "error";
    }
    return "unknown";
}

void printToStandardError(const Report& report) {
    const std::string line = toLine(report) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

// Built when the library is loaded, which is before anything that can report.
ReportSink s_sink = printToStandardError;

} // namespace

ReportSink setReportSink(ReportSink sink) {
    if (!sink)
        sink = printToStandardError;
    std::swap(s_sink, sink);
    return sink;
}

void deliver(const Report& report) noexcept {
    try {
        // A copy, so that a sink may replace itself while it runs.
        const ReportSink sink = s_sink;
        sink(report);
    } catch (...) {
        // Control has to come back to the place that reported.
    }
}

std::string toLine(const Report& report) {
    std::string line;
    if (!report.file.empty())
        line += report.file + ":" + std::to_string(report.line) + ": ";
    line += std::string(nameOf(report.severity)) + ": " + report.condition;
    if (!report.values.empty()) {
        line += " [";
        for (std::size_t i = 0; i < report.values.size(); ++i)
            line += (i ? ", " : "") + report.values[i].name + "=" + report.values[i].value;
        line += "]";
    }
    if (!report.message.empty())
        line += ": " + report.message;
    return line;
}

} // namespace orv::smartassert
