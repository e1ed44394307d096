#pragma once

#include "platform/cstring.h"

namespace orv {

// The name under which the product warns of data from a newer release. One object, since it is asked for with
// every record that is read.
const CString& productName();

} // namespace orv
