#pragma once

#include <cstring>

namespace testing_support {

// The function in a slot of an object's table of virtual operations. A destructor takes two slots in the
// layout of the compilers that these tests are built with.
template <class Function>
Function slotOf(const void* object, int slot) {
    const void* const* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    Function function = nullptr;
    std::memcpy(&function, table + slot, sizeof function);
    return function;
}

} // namespace testing_support
