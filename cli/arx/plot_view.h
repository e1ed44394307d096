#pragma once

#include "gevec3d.h"

#include <string>
#include <utility>

namespace taldork::cli {

// How a picture is asked for on the command line.

/// From the drawing to the viewer, of one of these names or of "X,Y,Z"; Z for a text that is neither.
AcGeVector3d viewDirection(const std::string& view);

/// "800x600" as two numbers; zeros for a text that is none of these.
std::pair<int, int> parsedSize(const std::string& size);

/// Checks for CLI11.
std::string checkView(const std::string& text);
std::string checkSize(const std::string& text);

} // namespace taldork::cli
