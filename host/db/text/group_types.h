#pragma once

namespace embedded::text {

// The kind of a group's value. It follows from the group's code alone.
enum class GroupType {
    kNone, // a code that the format does not have
    kText,
    kReal,
    kInt16,
    kInt32,
    kInt64,
    kSwitch,
    kHandle,   // a handle that stands for itself
    kObjectId, // a handle that stands for an object
    kChunk
};

GroupType groupTypeOf(int code);

// Whether the code is the first one of a point's; the second and third ones follow by 10 each.
bool beginsPoint(int code);
constexpr int kNextCoordinate = 10;

// Extended data begin with the first group of this code or above.
constexpr int kFirstExtendedCode = 1000;

} // namespace embedded::text
