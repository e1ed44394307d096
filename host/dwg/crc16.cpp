#include "dwg/crc16.h"

#include <array>

namespace embedded::dwg {
namespace {

// How many bytes are taken in one step. The sums of the bytes of a step do not wait for one another.
constexpr std::size_t kStep = 8;
using Table = std::array<std::uint16_t, 256>;

// The first table is that of one byte; each further one is that of a byte with one more zero byte behind it.
constexpr std::array<Table, kStep> makeTables() {
    std::array<Table, kStep> tables{};
    for (unsigned i = 0; i < 256; ++i) {
        std::uint16_t value = static_cast<std::uint16_t>(i);
        for (int bit = 0; bit < 8; ++bit)
            value = static_cast<std::uint16_t>((value & 1) != 0 ? (value >> 1) ^ 0xA001 : value >> 1);
        tables[0][i] = value;
    }
    for (std::size_t zeros = 1; zeros < kStep; ++zeros)
        for (unsigned i = 0; i < 256; ++i) {
            const std::uint16_t before = tables[zeros - 1][i];
            tables[zeros][i] = static_cast<std::uint16_t>(before >> 8 ^ tables[0][before & 0xFF]);
        }
    return tables;
}

constexpr std::array<Table, kStep> kTables = makeTables();

} // namespace

std::uint16_t crc16(ByteSpan bytes, std::uint16_t seed) {
    std::uint16_t sum = seed;
    const std::uint8_t* at = bytes.begin();
    for (; bytes.end() - at >= static_cast<std::ptrdiff_t>(kStep); at += kStep)
        sum = static_cast<std::uint16_t>(kTables[7][(sum ^ at[0]) & 0xFF] ^ kTables[6][(sum >> 8) ^ at[1]] ^
                                         kTables[5][at[2]] ^ kTables[4][at[3]] ^ kTables[3][at[4]] ^
                                         kTables[2][at[5]] ^ kTables[1][at[6]] ^ kTables[0][at[7]]);
    for (; at != bytes.end(); ++at)
        sum = static_cast<std::uint16_t>(sum >> 8 ^ kTables[0][(sum ^ *at) & 0xFF]);
    return sum;
}

} // namespace embedded::dwg
