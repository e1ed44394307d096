#pragma once

#include "cli/common/drawing.h"

#include "dbid.h"

#include <set>

namespace taldork::cli {

/// Leaves of the loads of a drawing only those of one case, in memory: what is not to be saved. An element
/// loses the loads that are not of the case, and draws itself without them.
/// The elements of which nothing is left then, and which are not to be drawn: those that had loads, none of
/// the case, and that are nothing but loads, that is, old load entities, and elements whose plugins are all
/// loads or carry number and name. So a beam stays, whatever is on it. Throws Failure.
std::set<AcDbObjectId> leaveOneCase(const Drawing& drawing, unsigned int loadCase);

} // namespace taldork::cli
