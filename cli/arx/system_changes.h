#pragma once

#include "dbx/doc/system.h"

#include <functional>
#include <string>

namespace taldork::cli {

/// One KEY=VALUE of `systems set`.
struct SystemChange {
    /// What is written back for it.
    enum class Part { kSystem, kSettings, kPointSize };

    std::string key; ///< as it was written, with its number
    Part part;
    /// Changes the system, which is to be dropped if this throws Failure, about `path`.
    std::function<void(orv::System& system, const std::string& path)> apply;
};

/// Throws std::invalid_argument with what is wrong with the text.
SystemChange parseSystemChange(const std::string& text);

/// Check for CLI11.
std::string checkSystemChange(const std::string& text);

} // namespace taldork::cli
