#pragma once

#include "orvcheck/export.h"
#include "orvcheck/report.h"

#include <string>

namespace orv::smartassert {

// What a report has gathered so far.
class ORVCHECK_API SmartAssertContext {
public:
    explicit SmartAssertContext(const std::string& condition);

    void setFileContext(const std::string& file, int line);
    void addValuePair(const std::string& name, const std::string& value);
    void addValuePair(const std::wstring& name, const std::wstring& value);

    // Completes the report and hands it to the sink. Only the first call does so; later ones do nothing.
    void finish(Severity severity, const std::string& message);

    const Report& report() const { return m_report; }

private:
    Report m_report;
    bool m_finished = false;
};

} // namespace orv::smartassert
