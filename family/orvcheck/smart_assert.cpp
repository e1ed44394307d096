#include "orvcheck/smart_assert.h"

namespace orv::smartassert {

SmartAssert::SmartAssert(const std::string& condition) : m_context(condition) {}

SmartAssert::~SmartAssert() { m_context.finish(kDefaultSeverity, std::string()); }

SmartAssert& SmartAssert::setFileContext(const std::string& file, int line) {
    m_context.setFileContext(file, line);
    return *this;
}

SmartAssert& SmartAssert::printValue(const std::string& name, const std::string& value) {
    m_context.addValuePair(name, value);
    return *this;
}

void SmartAssert::debug(const std::string& message) { m_context.finish(Severity::kDebug, message); }

void SmartAssert::warning(const std::string& message) { m_context.finish(Severity::kWarning, message); }

void SmartAssert::error(const std::string& message) { m_context.finish(Severity::kError, message); }

} // namespace orv::smartassert
