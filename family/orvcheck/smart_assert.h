#pragma once

#include "orvcheck/smart_assert_context.h"

#include <string>

namespace orv::smartassert {

// One report of a broken expectation: opened with the text of the condition, filled, and handed to the sink
// exactly once, at the first severity call or at the latest when the object ends.
class ORVCHECK_API SmartAssert {
public:
    explicit SmartAssert(const std::string& condition);
    ~SmartAssert();

    SmartAssert(const SmartAssert&) = delete;
    SmartAssert& operator=(const SmartAssert&) = delete;

    SmartAssert& setFileContext(const std::string& file, int line);
    SmartAssert& printValue(const std::string& name, const std::string& value);

    // Where wide values are added. Lives as long as this object.
    SmartAssertContext& context() { return m_context; }

    // Complete the report. A report without any of them has kDefaultSeverity and no message.
    void debug(const std::string& message);
    void warning(const std::string& message);
    void error(const std::string& message);

private:
    SmartAssertContext m_context;
};

} // namespace orv::smartassert
