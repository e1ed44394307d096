#pragma once

#include "cli/arx/elements.h"

#include <nlohmann/json_fwd.hpp>

namespace taldork::cli {

/// The plugins of an element that is open for read, the living ones in order and then those that are kept:
/// id, state ("live", "kept"), remark, bytes (how many a drawing keeps of it), softIds, hardIds, properties,
/// tree.
nlohmann::ordered_json describePlugins(const Element& element);

} // namespace taldork::cli
