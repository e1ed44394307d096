#pragma once

#include "orvcore/export.h"
#include "platform/cstring.h"

#include <cstdint>
#include <functional>

// What was found to be newer than the code that reads it.
struct ORV_NewVersionWarning {
    std::int64_t version; // found in the data
    std::int64_t current; // the highest one that the code knows
    CString name;         // of the program or module that reads
};

using ORV_NewVersionSink = std::function<void(const ORV_NewVersionWarning&)>;

// Warns that data come from a newer release: once in a process for each name and version, and only if
// `version` is above `current`.
ORVCORE_API void orv_warnOnNewVersion(std::int64_t version, std::int64_t current, const CString& name);

// Replaces what a warning is handed to and answers the one before. An empty one brings back the default,
// which prints a line on the host's console.
ORVCORE_API ORV_NewVersionSink orv_setNewVersionSink(ORV_NewVersionSink sink);

// Forgets which warnings were given, as if the process began anew.
ORVCORE_API void orv_forgetNewVersionWarnings();
