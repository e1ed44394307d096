#pragma once

#include "cli/common/drawing.h"

#include "dbid.h"

#include <string>
#include <vector>

namespace taldork::cli {

/// Brings the systems of elements that were copied into another drawing: a store that has no system there
/// gets the records that describe it in the source. The names of those that were brought, UTF-8; they are
/// known to the module from the next opening on. Throws Failure.
std::vector<std::string> bringSystems(const Drawing& source, const Drawing& target,
                                      const std::vector<AcDbObjectId>& copies);

} // namespace taldork::cli
