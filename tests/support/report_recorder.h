#pragma once

#include "orvcheck/report_sink.h"

#include <string>
#include <utility>
#include <vector>

namespace testing_support {

// Gathers the reports that are made while it lives.
class ReportRecorder {
public:
    ReportRecorder() {
        m_before = orv::smartassert::setReportSink(
            [this](const orv::smartassert::Report& report) { m_reports.push_back(report); });
    }
    ~ReportRecorder() { orv::smartassert::setReportSink(m_before); }

    ReportRecorder(const ReportRecorder&) = delete;
    ReportRecorder& operator=(const ReportRecorder&) = delete;

    const std::vector<orv::smartassert::Report>& reports() const { return m_reports; }
    const orv::smartassert::Report& at(std::size_t index) const { return m_reports.at(index); }
    std::size_t size() const { return m_reports.size(); }
    void clear() { m_reports.clear(); }

    std::vector<std::string> conditions() const {
        std::vector<std::string> texts;
        for (const auto& report : m_reports)
            texts.push_back(report.condition);
        return texts;
    }
    std::vector<std::string> messages() const {
        std::vector<std::string> texts;
        for (const auto& report : m_reports)
            texts.push_back(report.message);
        return texts;
    }

private:
    std::vector<orv::smartassert::Report> m_reports;
    orv::smartassert::ReportSink m_before;
};

using Texts = std::vector<std::string>;
using Values = std::vector<orv::smartassert::NamedValue>;

} // namespace testing_support
