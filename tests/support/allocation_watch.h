#pragma once

#include <cstddef>

namespace testing_support {

// The largest block that was asked for at once, by anything in the process, since the last call of this
// operation. Link support/allocation_watch.cpp, which replaces the operators new and delete.
std::size_t takeLargestAllocation();

} // namespace testing_support
