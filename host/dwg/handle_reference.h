#pragma once

#include <cstdint>

namespace embedded::dwg {

// How a handle in a file is to be read. The first four tell the strength; the others are relative to the
// handle of the object that the reference stands in, and tell none.
enum HandleCode : std::uint8_t {
    kPlainHandle = 0,
    kSoftOwner = 2,
    kHardOwner = 3,
    kSoftPointer = 4,
    kHardPointer = 5,
    kNextHandle = 6,
    kPreviousHandle = 8,
    kPlusOffset = 0xA,
    kMinusOffset = 0xC
};

struct HandleReference {
    std::uint8_t code = kPlainHandle;
    // Bytes that the value takes in the file; a file may hold more than the value needs.
    std::uint8_t width = 0;
    std::uint64_t value = 0;

    HandleReference() = default;
    // With as many bytes as the value needs; none for 0.
    HandleReference(std::uint8_t strength, std::uint64_t handle) : code(strength), value(handle) {
        for (std::uint64_t rest = handle; rest != 0; rest >>= 8)
            ++width;
    }

    // The handle that is meant, seen from the object `own`.
    std::uint64_t absolute(std::uint64_t own) const {
        switch (code) {
        case kNextHandle:
            return own + 1;
        case kPreviousHandle:
            return own - 1;
        case kPlusOffset:
            return own + value;
        case kMinusOffset:
            return own - value;
        default:
            return value;
        }
    }
};

} // namespace embedded::dwg
