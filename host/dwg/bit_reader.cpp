#include "dwg/bit_reader.h"

#include <algorithm>
#include <cstring>

namespace embedded::dwg {

BitReader::BitReader(ByteSpan bytes, std::size_t begin, std::size_t end)
    : m_bytes(bytes), m_end(std::min(end, bytes.size * 8)) {
    m_position = std::min(begin, m_end);
}

void BitReader::fail() {
    if (!m_failed)
        m_failedAt = m_position;
    m_failed = true;
}

bool BitReader::has(std::size_t count) {
    if (!m_failed && count <= m_end - m_position)
        return true;
    fail();
    return false;
}

void BitReader::seek(std::size_t position) {
    if (position > m_end)
        return fail();
    m_position = position;
}

void BitReader::alignToByte() { seek(std::min(m_end, (m_position + 7) / 8 * 8)); }

std::uint32_t BitReader::takeAtEnd(unsigned count) {
    if (!has(count) || count == 0)
        return 0;
    const std::uint8_t* at = m_bytes.data + m_position / 8;
    const unsigned shift = m_position % 8;
    const unsigned needed = (shift + count + 7) / 8;
    std::uint64_t window = 0;
    for (unsigned i = 0; i < needed; ++i)
        window = window << 8 | at[i];
    window >>= needed * 8 - shift - count;
    m_position += count;
    return static_cast<std::uint32_t>(window & ((std::uint64_t{1} << count) - 1));
}

bool BitReader::rawBytes(std::uint8_t* target, std::size_t length) {
    if (m_failed || length > (m_end - m_position) / 8) {
        fail();
        return false;
    }
    if (length == 0)
        return true;
    const std::uint8_t* at = m_bytes.data + m_position / 8;
    const unsigned shift = m_position % 8;
    if (shift == 0) {
        std::memcpy(target, at, length);
    } else {
        std::size_t i = 0;
        // Seven bytes of each eight that lie there whole.
        for (; m_bytes.size - m_position / 8 - i >= 8 && length - i >= 7; i += 7) {
            const std::uint64_t window = eightBytes(at + i) << shift;
            for (unsigned k = 0; k < 7; ++k)
                target[i + k] = static_cast<std::uint8_t>(window >> (56 - 8 * k));
        }
        for (; i < length; ++i)
            target[i] = static_cast<std::uint8_t>(at[i] << shift | at[i + 1] >> (8 - shift));
    }
    m_position += length * 8;
    return true;
}

std::uint16_t BitReader::rawShort() {
    const std::uint32_t value = take(16);
    return static_cast<std::uint16_t>(value >> 8 | value << 8);
}

std::uint32_t BitReader::rawLong() {
    const std::uint32_t value = take(32);
    return value >> 24 | (value >> 8 & 0xFF00) | (value << 8 & 0xFF0000) | value << 24;
}

double BitReader::rawDouble() {
    if (!has(64))
        return 0;
    const std::uint64_t low = rawLong();
    const std::uint64_t high = rawLong();
    const std::uint64_t all = high << 32 | low;
    double value;
    std::memcpy(&value, &all, sizeof value);
    return value;
}

std::uint16_t BitReader::bitShort() {
    switch (twoBits()) {
    case 0:
        return rawShort();
    case 1:
        return rawChar();
    case 2:
        return 0;
    default:
        return 256;
    }
}

std::uint32_t BitReader::bitLong() {
    switch (twoBits()) {
    case 0:
        return rawLong();
    case 1:
        return rawChar();
    case 2:
        return 0;
    default:
        fail();
        return 0;
    }
}

double BitReader::bitDouble() {
    switch (twoBits()) {
    case 0:
        return rawDouble();
    case 1:
        return 1.0;
    case 2:
        return 0.0;
    default:
        fail();
        return 0.0;
    }
}

double BitReader::bitDouble(double defaultValue) {
    const std::uint8_t code = twoBits();
    if (code == 3)
        return rawDouble();
    if (m_failed || code == 0)
        return m_failed ? 0.0 : defaultValue;
    std::uint64_t all;
    std::memcpy(&all, &defaultValue, sizeof all);
    if (code == 2)
        all = (all & ~(std::uint64_t{0xFFFF} << 32)) | std::uint64_t{rawShort()} << 32;
    all = (all & ~std::uint64_t{0xFFFFFFFF}) | rawLong();
    double value;
    std::memcpy(&value, &all, sizeof value);
    return m_failed ? 0.0 : value;
}

Triple BitReader::threeBitDoubles() {
    Triple value;
    value.x = bitDouble();
    value.y = bitDouble();
    value.z = bitDouble();
    return value;
}

double BitReader::thickness() { return bit() ? 0.0 : bitDouble(); }

Triple BitReader::extrusion() {
    if (bit())
        return {0.0, 0.0, 1.0};
    return threeBitDoubles();
}

HandleReference BitReader::handle() {
    HandleReference reference;
    reference.code = static_cast<std::uint8_t>(take(4));
    reference.width = static_cast<std::uint8_t>(take(4));
    if (reference.width > 8)
        fail();
    if (m_failed || !has(std::size_t{8} * reference.width))
        return {};
    const unsigned low = reference.width < 4 ? reference.width : 4;
    const unsigned high = reference.width - low;
    reference.value = high != 0 ? std::uint64_t{take(8 * high)} << (8 * low) : 0;
    reference.value |= low != 0 ? take(8 * low) : 0;
    return reference;
}

std::uint64_t BitReader::modularChar() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        const std::uint64_t byte = rawChar();
        value |= (byte & 0x7F) << shift;
        if ((byte & 0x80) == 0)
            return value;
    }
    fail();
    return 0;
}

std::int64_t BitReader::signedModularChar() {
    std::int64_t value = 0;
    for (unsigned shift = 0; shift < 56; shift += 7) {
        const std::uint8_t byte = rawChar();
        if ((byte & 0x80) == 0) {
            value |= static_cast<std::int64_t>(byte & 0x3F) << shift;
            return (byte & 0x40) != 0 ? -value : value;
        }
        value |= static_cast<std::int64_t>(byte & 0x7F) << shift;
    }
    fail();
    return 0;
}

std::uint32_t BitReader::modularShort() {
    std::uint32_t value = 0;
    for (unsigned shift = 0; shift < 30; shift += 15) {
        const std::uint32_t word = rawShort();
        value |= (word & 0x7FFF) << shift;
        if ((word & 0x8000) == 0)
            return value;
    }
    fail();
    return 0;
}

std::string BitReader::filedText() {
    const std::size_t length = bitShort();
    if (!has(length * 8))
        return {};
    std::string bytes(length, '\0');
    rawBytes(reinterpret_cast<std::uint8_t*>(&bytes[0]), length);
    return bytes;
}

std::string BitReader::text() {
    std::string bytes = filedText();
    if (!bytes.empty() && bytes.back() == '\0')
        bytes.pop_back();
    return bytes;
}

} // namespace embedded::dwg
