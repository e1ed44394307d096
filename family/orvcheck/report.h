#pragma once

#include <string>
#include <vector>

namespace orv::smartassert {

// How bad a broken expectation is, in rising order.
enum class Severity { kDebug = 1, kWarning = 2, kError = 3 };

// What a report gets when its site names no severity.
constexpr Severity kDefaultSeverity = Severity::kDebug;

// A value that was of interest at the place of the failure. Both texts are UTF-8 if they came in as wide
// text, and the very bytes that came in otherwise.
struct NamedValue {
    std::string name;
    std::string value;

    bool operator==(const NamedValue& other) const { return name == other.name && value == other.value; }
};

// One broken expectation, complete.
struct Report {
    std::string condition; // source text of what did not hold
    std::string file;      // as the compiler gave it; empty if no position was set
    int line = 0;
    std::vector<NamedValue> values; // in the order in which they were added
    Severity severity = kDefaultSeverity;
    std::string message; // empty if the site has none
};

} // namespace orv::smartassert
