#pragma once

#include <boost/any.hpp>
#include <boost/property_tree/ptree.hpp>

#include <string>

namespace orv {

// Named values of any type, in a tree. A node may have several children of one name.
using PropertyTree = boost::property_tree::basic_ptree<std::string, boost::any>;

} // namespace orv
