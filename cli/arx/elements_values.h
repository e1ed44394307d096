#pragma once

#include "dbx/elem/ObjectProperties.h"
#include "property_tree/property_tree.h"

#include <boost/any.hpp>
#include <nlohmann/json_fwd.hpp>

#include <string>

namespace taldork::cli {

// Values whose type is known at run time only, as elements and plugins keep them.

/// "type" and "value". An id is its handle, null for the null id; points and vectors are rows of numbers, a
/// matrix is a row of rows. A type that drawings do not hold has its name and the value null.
nlohmann::ordered_json describeValue(const boost::any& value);

/// A row of "key", "type" and "value", by key.
nlohmann::ordered_json describeProperties(const orv::AcadObjectProperties& properties);

/// A row of "key", "type", "value" and "children", in the tree's order. The root has no value.
nlohmann::ordered_json describeTree(const orv::PropertyTree& tree);

/// What describeValue gave, for people: type and value, as in `int 3`.
std::string valueText(const nlohmann::ordered_json& value);

} // namespace taldork::cli
