#pragma once

#include "dwg/byte_span.h"
#include "dwg/sentinels.h"

#include <string>

namespace embedded::dwg {

// Little-endian numbers at whole bytes, as the frames of a file hold them. Readers: the caller has checked
// the place.
inline std::uint16_t shortAt(ByteSpan bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

inline std::uint32_t longAt(ByteSpan bytes, std::size_t offset) {
    return shortAt(bytes, offset) | static_cast<std::uint32_t>(shortAt(bytes, offset + 2)) << 16;
}

void appendShort(Bytes& bytes, std::uint16_t value);
void appendLong(Bytes& bytes, std::uint32_t value);
void append(Bytes& bytes, ByteSpan more);
void append(Bytes& bytes, const Sentinel& sentinel);
void putLong(Bytes& bytes, std::size_t offset, std::uint32_t value);

// Upper case, without leading zeros.
std::string hexText(std::uint64_t value);

} // namespace embedded::dwg
