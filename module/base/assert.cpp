#include "base/assert.h"

#include "platform/text.h"

namespace orv::detail {

AssertSite::AssertSite(const char* condition, const char* file, int line) : m_report(condition) {
    m_report.setFileContext(file, line);
}

AssertSite::~AssertSite() = default;

AssertSite& AssertSite::value(const char* name, const std::string& text) {
    m_report.printValue(name, text);
    return *this;
}

AssertSite& AssertSite::value(const char* name, const char* text) {
    m_report.printValue(name, text != nullptr ? text : "<null>");
    return *this;
}

AssertSite& AssertSite::value(const char* name, const std::wstring& text) {
    m_report.context().addValuePair(platform::widen(name), text);
    return *this;
}

AssertSite& AssertSite::value(const char* name, const wchar_t* text) {
    return value(name, std::wstring(text != nullptr ? text : L"<null>"));
}

AssertSite& AssertSite::debug(const char* message) {
    m_report.debug(message);
    return *this;
}

AssertSite& AssertSite::warning(const char* message) {
    m_report.warning(message);
    return *this;
}

AssertSite& AssertSite::error(const char* message) {
    m_report.error(message);
    return *this;
}

} // namespace orv::detail
