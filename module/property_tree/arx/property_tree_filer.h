#pragma once

#include "base/export.h"
#include "property_tree/property_tree.h"

#include "acadstrc.h"

#include <boost/any.hpp>

#include <cstddef>

class AcDbDwgFiler;

// Files value trees and single values, and compares values. Filing answers the status of the first call that
// failed, or eOk.
namespace orv::property_tree {

// Nodes may lie this deep below the root, each part of a name with full stops counting. Copies and the end of
// a tree go down to its ground by recursion, so bytes from outside may not ask for any depth.
constexpr std::size_t kMaxDepth = 1000;

// Writes the tree. Status 3 if the root has data; 22 at a value of a type that has no tag; 33 at a node below
// kMaxDepth; each of the three is reported. What was written until then is written.
TALDORK_API Acad::ErrorStatus dwgOut(AcDbDwgFiler& filer, const PropertyTree& t);

// Replaces the content of `t`. Status 22 at an unknown tag; 33 at an unknown marker or below kMaxDepth; `t`
// keeps what was read until then. Another version or another magic is reported and no failure. A name with
// full stops becomes a chain of nodes.
TALDORK_API Acad::ErrorStatus dwgIn(AcDbDwgFiler& filer, PropertyTree& t);

// One value with its tag. Status 22 for a type without a tag, and nothing is written.
TALDORK_API Acad::ErrorStatus dwgOutValue(AcDbDwgFiler& filer, const boost::any& v);
// Replaces `v`. Status 22 for an unknown tag. After any failure `v` is what it was.
TALDORK_API Acad::ErrorStatus dwgInValue(AcDbDwgFiler& filer, boost::any& v);

// False for values of different types. Points, vectors and matrices are compared with the context's
// tolerance, numbers exactly. Texts, empty values and other types are reported, and are never equal.
TALDORK_API bool is_equal(const boost::any& a, const boost::any& b);

// Orders truth values, numbers and ids; false for values of different types. Other types are reported, and
// are never less.
TALDORK_API bool is_less(const boost::any& a, const boost::any& b);

} // namespace orv::property_tree
