#pragma once

#include "base/export.h"

#include <string>

namespace orv {

// The order is this program's own: DEBUG ranks above WARNING. Thresholds work on the numbers.
enum LogLevel : int { kLogInfo = 1, kLogWarning = 2, kLogDebug = 3, kLogError = 4, kLogFatal = 5 };

// "INFO" and so on; "unknown" for any other number.
TALDORK_API std::wstring to_string(LogLevel level);

// Streamed into a LogStream it changes the level of what follows.
struct setLevel {
    explicit setLevel(LogLevel wanted) : level(wanted) {}
    LogLevel level;
};

} // namespace orv
