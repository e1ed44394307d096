#pragma once

#include "embedded/display_list.h"

#include <string>

namespace testing_support {

// A display list as text, for comparison with a golden one: a line for each primitive, then one for each
// failure, and "cut" if it is. Numbers are rounded to six digits behind the point. A line has, in this order,
// and each only if it is not what is usual:
//
//   viewport  kind  (x y z)...  radius n  normal (x y z)  from (x y z)  sweep n  sector|chord
//   RxC (a mesh's rows and columns)  faces n...  'text'  height n  width n  oblique n  along (x y z)
//   | ClassName  colour n | rgb #rrggbb  layer 'name'  linetype 'name'  scale n  weight n  filled  marker n
//   thickness n
std::string displayListText(const embedded::DisplayList& list);
std::string displayListText(const embedded::Primitive& primitive);

} // namespace testing_support
