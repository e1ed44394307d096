#pragma once

#include "platform/cstring.h"

namespace orv {

// The name under which the product warns of data from a newer release. One object, since it is asked for with
// every record that is read.
const CString& productName();

// What the host calls the application that serves drawings with this module's objects: it is demand-loaded
// under this name, which is the small loader's and not this module's.
constexpr const wchar_t* kLoaderApplication = L"ORV_OE_LOADER_191";

} // namespace orv
