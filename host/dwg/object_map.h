#pragma once

#include "dwg/drawing_parts.h"

namespace embedded::dwg {

// Reads the pages that lead from handles to places in the file: `section` is where the map stands in `file`.
// Every place is checked to hold an object's size, bytes and check sum. FileError for anything else.
std::vector<ObjectSlot> readObjectMap(ByteSpan file, ByteSpan section);

// The map's bytes for objects with their handles, ascending, and the addresses of their sizes.
struct ObjectAddress {
    std::uint64_t handle;
    std::uint32_t address;
};
Bytes writeObjectMap(const std::vector<ObjectAddress>& objects);

// The check sum that belongs to an object: of its size as filed and its body.
std::uint16_t objectSum(ByteSpan body);

// The bytes that an object takes in the file: size, body, check sum.
void appendObject(Bytes& file, const ObjectSlot& object);

} // namespace embedded::dwg
