#pragma once

#include <cstddef>
#include <cstdint>

// The host's plain types. Their widths are part of drawings and of the modules' interface.
namespace Adesk {

using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using UInt64 = std::uint64_t;
using IntPtr = std::intptr_t;
using UIntPtr = std::uintptr_t;
using LongPtr = std::intptr_t;
using ULongPtr = std::uintptr_t;
using IntDbId = std::intptr_t;
// Which part of an entity a drawn thing is.
using GsMarker = std::intptr_t;

using Boolean = bool;
constexpr Boolean kFalse = false;
constexpr Boolean kTrue = true;

} // namespace Adesk
