#include "dwg/crc16.h"

#include <array>

namespace embedded::dwg {
namespace {

constexpr std::array<std::uint16_t, 256> makeTable() {
    std::array<std::uint16_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        std::uint16_t value = static_cast<std::uint16_t>(i);
        for (int bit = 0; bit < 8; ++bit)
            value = static_cast<std::uint16_t>((value & 1) != 0 ? (value >> 1) ^ 0xA001 : value >> 1);
        table[i] = value;
    }
    return table;
}

constexpr std::array<std::uint16_t, 256> kTable = makeTable();

} // namespace

std::uint16_t crc16(ByteSpan bytes, std::uint16_t seed) {
    std::uint16_t sum = seed;
    for (std::uint8_t byte : bytes)
        sum = static_cast<std::uint16_t>(sum >> 8 ^ kTable[(sum ^ byte) & 0xFF]);
    return sum;
}

} // namespace embedded::dwg
