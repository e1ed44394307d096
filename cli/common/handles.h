#pragma once

#include "cli/common/drawing.h"

#include "dbid.h"

#include <optional>
#include <string>
#include <vector>

namespace taldork::cli {

// Handles as people read and write them: hexadecimal, as in 2A; letters of either case, no leading "0x".

/// Nothing for a text that is no handle, and for 0, which no object has.
std::optional<AcDbHandle> parseHandle(const std::string& text);

/// "0" for a null id.
std::string handleText(const AcDbObjectId& id);

/// Check for CLI11.
std::string checkHandle(const std::string& text);

/// The object of a drawing with that handle. Throws Failure if there is none, or if it is erased.
AcDbObjectId findObject(const Drawing& drawing, const std::string& handle);
/// Likewise, each object once, in the order in which they are named first.
std::vector<AcDbObjectId> findObjects(const Drawing& drawing, const std::vector<std::string>& handles);

} // namespace taldork::cli
