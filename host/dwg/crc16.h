#pragma once

#include "dwg/byte_span.h"

namespace embedded::dwg {

// The seed with which the sums of sections and objects start.
const std::uint16_t kCrcSeed = 0xC0C1;

// The 16 bit check sum of the drawing file: reflected polynomial 0xA001.
std::uint16_t crc16(ByteSpan bytes, std::uint16_t seed = kCrcSeed);

} // namespace embedded::dwg
