#pragma once

#include "cli/common/numbers.h"

#include "dbx/doc/system.h"

#include <optional>
#include <string>

namespace taldork::cli {

/// The extents of a system in the drawing.
struct SystemBox {
    Point min, max;
};

/// "X,Y,Z,X,Y,Z": two corners, none of the first one's numbers above the second one's.
std::optional<SystemBox> parseBox(const std::string& text);
/// Check for CLI11.
std::string checkBox(const std::string& text);

/// Throws Failure, about `path`, when the record cannot hold the box: it has single numbers, and may be too
/// short. The system is then to be dropped.
void setBox(orv::System& system, const SystemBox& box, const std::string& path);

} // namespace taldork::cli
