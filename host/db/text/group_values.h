#pragma once

#include "db/text/group.h"

#include <cstdint>
#include <string>

// The kind of a value is dictated by the code it is put under: these turn a value into what the code holds.
namespace embedded::text {

enum class Fit { kOk, kWrongKind, kOutOfRange };

// `isUnsigned` allows the upper half of the type's unsigned range, which is kept as the same bits.
Fit setInteger(Group& group, std::int64_t value, bool isUnsigned);
Fit setUnsigned64(Group& group, std::uint64_t value);
// `digits` counts under a text's code.
Fit setReal(Group& group, double value, int digits);
// Under a handle's code the text has to be one.
Fit setText(Group& group, const std::wstring& value);
Fit setHandle(Group& group, std::uint64_t value);

// Whether a number that was read lies in the range of its type.
bool inRange(GroupType type, std::int64_t value);

} // namespace embedded::text
