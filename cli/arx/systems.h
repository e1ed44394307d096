#pragma once

#include "cli/common/drawing.h"

#include "dbx/doc/system.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace taldork::cli {

// What the module knows of the systems of an open drawing: it took them up when the drawing opened.

/// The stores of a drawing that can have a system, by name (UTF-8).
std::vector<std::string> systemStores(AcDbDatabase& database);

/// Null if the module found none in the store. The name counts as it stands, upper and lower case too.
boost::shared_ptr<orv::System> systemOf(AcDbDatabase& database, const std::string& store);

/// Throws Failure if the drawing has no such store, or the store no system.
boost::shared_ptr<orv::System> findSystem(const Drawing& drawing, const std::string& store);

} // namespace taldork::cli
