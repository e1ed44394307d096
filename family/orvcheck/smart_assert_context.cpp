#include "orvcheck/smart_assert_context.h"

#include "orvcheck/report_sink.h"
#include "platform/text.h"

namespace orv::smartassert {

SmartAssertContext::SmartAssertContext(const std::string& condition) { m_report.condition = condition; }

void SmartAssertContext::setFileContext(const std::string& file, int line) {
    m_report.file = file;
    m_report.line = line;
}

void SmartAssertContext::addValuePair(const std::string& name, const std::string& value) {
    m_report.values.push_back({name, value});
}

void SmartAssertContext::addValuePair(const std::wstring& name, const std::wstring& value) {
    m_report.values.push_back({platform::toUtf8(name), platform::toUtf8(value)});
}

void SmartAssertContext::finish(Severity severity, const std::string& message) {
    if (m_finished)
        return;
    m_finished = true;
    m_report.severity = severity;
    m_report.message = message;
    deliver(m_report);
}

} // namespace orv::smartassert
