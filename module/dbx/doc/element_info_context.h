#pragma once

namespace orv {

// What elements append their description to. Its definition belongs to the modules that ask for one; here it
// is only passed on.
struct ElementInfoContext;

} // namespace orv
