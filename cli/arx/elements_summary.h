#pragma once

#include "cli/arx/elements.h"

#include <nlohmann/json_fwd.hpp>

namespace taldork::cli {

/// A row of the listing: handle, class, dxfName, application, state ("live", "proxy", "unreadable"), remark,
/// number, name, bimId, system, connections (handles), plugins and keptPlugins (ids). What is not known of a
/// proxy is null.
nlohmann::ordered_json describeElement(const FoundElement& found);

/// Everything about one element: the row, and space, layer, extents, link, textOffset, info, properties,
/// tree, log, and each plugin with its id, state ("live", "kept"), bytes, ids, properties and tree.
nlohmann::ordered_json describeWholeElement(const Drawing& drawing, const FoundElement& found);

/// What describeWholeElement gave, for people.
std::string elementText(const nlohmann::ordered_json& element);

} // namespace taldork::cli
