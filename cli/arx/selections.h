#pragma once

#include "cli/common/drawing.h"

#include "dbx/NamedSelection.h"

#include <functional>
#include <string>
#include <vector>

namespace taldork::cli {

// The named selections of a drawing: objects of orv::ORV_NamedSelection in a dictionary of their own below
// the named object dictionary, under their names. Names are UTF-8; upper and lower case do not count.

/// By name, in the order of the dictionary.
std::vector<std::string> selectionNames(const Drawing& drawing);

/// Calls `visit` with a selection that is open for read. Throws Failure if there is none of that name.
void visitSelection(const Drawing& drawing, const std::string& name,
                    const std::function<void(const orv::ORV_NamedSelection&)>& visit);

/// Makes a selection of these objects, or gives one that is there these objects; its other lists stay. True
/// if it was made. Throws Failure.
bool setSelection(const Drawing& drawing, const std::string& name, const std::vector<AcDbObjectId>& ids);

/// Throws Failure if there is none of that name.
void deleteSelection(const Drawing& drawing, const std::string& name);

} // namespace taldork::cli
