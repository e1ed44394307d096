#include "dwg/raw_fields.h"

#include <algorithm>

namespace embedded::dwg {

bool standsAt(ByteSpan bytes, std::uint64_t offset, const Sentinel& sentinel) {
    return bytes.holds(offset, sentinel.size()) &&
           std::equal(sentinel.begin(), sentinel.end(), bytes.begin() + offset);
}

void appendShort(Bytes& bytes, std::uint16_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void appendLong(Bytes& bytes, std::uint32_t value) {
    appendShort(bytes, static_cast<std::uint16_t>(value));
    appendShort(bytes, static_cast<std::uint16_t>(value >> 16));
}

void append(Bytes& bytes, ByteSpan more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

void append(Bytes& bytes, const Sentinel& sentinel) {
    bytes.insert(bytes.end(), sentinel.begin(), sentinel.end());
}

void putLong(Bytes& bytes, std::size_t offset, std::uint32_t value) {
    for (unsigned i = 0; i < 4; ++i)
        bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::string hexText(std::uint64_t value) {
    std::string text;
    do {
        text.insert(text.begin(), "0123456789ABCDEF"[value & 0xF]);
        value >>= 4;
    } while (value != 0);
    return text;
}

} // namespace embedded::dwg
