#pragma once

#include "base/export.h"

namespace orv {

class ElementLog;

namespace elem {

class ElementBase;

// The log of an element, which is else the element's own matter, for who shows or checks elements. Null if
// there is none. Needs read. Belongs to the element.
TALDORK_API const ElementLog* logOf(const ElementBase& element);

} // namespace elem
} // namespace orv
