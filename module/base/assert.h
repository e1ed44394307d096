#pragma once

#include "base/export.h"
#include "orvcheck/smart_assert.h"

#include <sstream>
#include <string>

namespace orv::detail {

// The report of one failed expectation while the macro fills it. Made only when the condition does not hold.
class TALDORK_API AssertSite {
public:
    AssertSite(const char* condition, const char* file, int line);
    ~AssertSite();

    AssertSite(const AssertSite&) = delete;
    AssertSite& operator=(const AssertSite&) = delete;

    // A value of interest. Narrow text goes as it is, all else through a wide stream with default formatting.
    AssertSite& value(const char* name, const std::string& text);
    AssertSite& value(const char* name, const char* text);
    AssertSite& value(const char* name, const std::wstring& text);
    AssertSite& value(const char* name, const wchar_t* text);
    template <class T>
    AssertSite& value(const char* name, const T& shown) {
        std::wostringstream stream;
        stream << shown;
        return value(name, stream.str());
    }

    AssertSite& debug(const char* message);
    AssertSite& warning(const char* message);
    AssertSite& error(const char* message);

    // What the macro's two names come out at when no further value follows: a name of a macro that takes
    // arguments stays as it stands when no parenthesis follows.
    AssertSite& ORV_ASSERT_A = *this;
    AssertSite& ORV_ASSERT_B = *this;

private:
    smartassert::SmartAssert m_report;
};

// Makes an expression of type void from a site and its chain; binds weaker than the chain, stronger than
// `?:`.
struct AssertEnd {
    void operator&(AssertSite&) const {}
};

} // namespace orv::detail

// Reports a condition that does not hold. It changes nothing in the flow: what follows decides. Values and at
// most one severity may be chained on, in this order:
//
//     ORV_ASSERT(index < size)(index)(size).debug("out of range");
//
// The condition's and the values' source texts go into the report.
#define ORV_ASSERT(condition)                                                                                \
    (condition) ? static_cast<void>(0)                                                                       \
                : ::orv::detail::AssertEnd() &                                                               \
                      ::orv::detail::AssertSite(#condition, __FILE__, __LINE__).ORV_ASSERT_A

#define ORV_ASSERT_A(shown) value(#shown, shown).ORV_ASSERT_B
#define ORV_ASSERT_B(shown) value(#shown, shown).ORV_ASSERT_A
