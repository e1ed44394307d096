#include "dwg/bit_writer.h"

#include <algorithm>
#include <cstring>

namespace embedded::dwg {
namespace {

std::uint64_t patternOf(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

const std::uint64_t kPatternOfOne = 0x3FF0000000000000u;

} // namespace

Bytes BitWriter::takeBytes() {
    Bytes bytes;
    bytes.swap(m_bytes);
    m_position = m_length = 0;
    return bytes;
}

bool BitWriter::seek(std::size_t position) {
    if (position > m_length)
        return false;
    m_position = position;
    return true;
}

void BitWriter::alignToByte() {
    if (m_position % 8 != 0)
        put(0, 8 - m_position % 8);
}

void BitWriter::put(std::uint32_t value, unsigned count) {
    while (count > 0) {
        const unsigned used = m_position % 8;
        const unsigned now = std::min(count, 8 - used);
        const std::size_t index = m_position / 8;
        if (index == m_bytes.size())
            m_bytes.push_back(0);
        const std::uint8_t mask = static_cast<std::uint8_t>(((1u << now) - 1) << (8 - used - now));
        const std::uint8_t bits = static_cast<std::uint8_t>(value >> (count - now) << (8 - used - now));
        m_bytes[index] = static_cast<std::uint8_t>((m_bytes[index] & ~mask) | (bits & mask));
        m_position += now;
        count -= now;
    }
    m_length = std::max(m_length, m_position);
}

void BitWriter::rawShort(std::uint16_t value) { put((value << 8 & 0xFF00u) | value >> 8, 16); }

void BitWriter::rawLong(std::uint32_t value) {
    put(value >> 24 | (value >> 8 & 0xFF00) | (value << 8 & 0xFF0000) | value << 24, 32);
}

void BitWriter::rawDouble(double value) {
    const std::uint64_t bits = patternOf(value);
    rawLong(static_cast<std::uint32_t>(bits));
    rawLong(static_cast<std::uint32_t>(bits >> 32));
}

void BitWriter::bitShort(std::uint16_t value) {
    if (value == 0) {
        twoBits(2);
    } else if (value == 256) {
        twoBits(3);
    } else if (value < 256) {
        twoBits(1);
        rawChar(static_cast<std::uint8_t>(value));
    } else {
        twoBits(0);
        rawShort(value);
    }
}

void BitWriter::bitLong(std::uint32_t value) {
    if (value == 0) {
        twoBits(2);
    } else if (value < 256) {
        twoBits(1);
        rawChar(static_cast<std::uint8_t>(value));
    } else {
        twoBits(0);
        rawLong(value);
    }
}

void BitWriter::bitDouble(double value) {
    // By pattern: a negative zero has a sign to keep.
    const std::uint64_t bits = patternOf(value);
    if (bits == 0) {
        twoBits(2);
    } else if (bits == kPatternOfOne) {
        twoBits(1);
    } else {
        twoBits(0);
        rawDouble(value);
    }
}

void BitWriter::bitDouble(double value, double defaultValue) {
    const std::uint64_t bits = patternOf(value);
    const std::uint64_t differs = bits ^ patternOf(defaultValue);
    if (differs == 0) {
        twoBits(0);
    } else if (differs >> 32 == 0) {
        twoBits(1);
        rawLong(static_cast<std::uint32_t>(bits));
    } else if (differs >> 48 == 0) {
        twoBits(2);
        rawShort(static_cast<std::uint16_t>(bits >> 32));
        rawLong(static_cast<std::uint32_t>(bits));
    } else {
        twoBits(3);
        rawDouble(value);
    }
}

void BitWriter::threeBitDoubles(const Triple& value) {
    bitDouble(value.x);
    bitDouble(value.y);
    bitDouble(value.z);
}

void BitWriter::thickness(double value) {
    const bool zero = patternOf(value) == 0;
    bit(zero);
    if (!zero)
        bitDouble(value);
}

void BitWriter::extrusion(const Triple& value) {
    const bool up = patternOf(value.x) == 0 && patternOf(value.y) == 0 && patternOf(value.z) == kPatternOfOne;
    bit(up);
    if (!up)
        threeBitDoubles(value);
}

void BitWriter::handle(const HandleReference& reference) {
    put(reference.code, 4);
    put(reference.width, 4);
    for (unsigned i = reference.width; i > 0; --i)
        rawChar(static_cast<std::uint8_t>(reference.value >> (8 * (i - 1))));
}

void BitWriter::modularChar(std::uint64_t value) {
    for (; value > 0x7F; value >>= 7)
        rawChar(static_cast<std::uint8_t>(value | 0x80));
    rawChar(static_cast<std::uint8_t>(value));
}

void BitWriter::signedModularChar(std::int64_t value) {
    const std::uint8_t sign = value < 0 ? 0x40 : 0;
    std::uint64_t rest = static_cast<std::uint64_t>(value < 0 ? -value : value);
    for (; rest > 0x3F; rest >>= 7)
        rawChar(static_cast<std::uint8_t>(rest | 0x80));
    rawChar(static_cast<std::uint8_t>(rest | sign));
}

void BitWriter::modularShort(std::uint32_t value) {
    for (; value > 0x7FFF; value >>= 15)
        rawShort(static_cast<std::uint16_t>(value | 0x8000));
    rawShort(static_cast<std::uint16_t>(value));
}

void BitWriter::filedText(const std::string& bytes) {
    bitShort(static_cast<std::uint16_t>(bytes.size()));
    rawBytes(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

void BitWriter::rawBytes(const std::uint8_t* source, std::size_t length) {
    if (m_position % 8 == 0 && m_position == m_length) {
        m_bytes.insert(m_bytes.end(), source, source + length);
        m_length = m_position += length * 8;
        return;
    }
    for (std::size_t i = 0; i < length; ++i)
        put(source[i], 8);
}

void BitWriter::copyBits(ByteSpan source, std::size_t begin, std::size_t end) {
    BitReader reader(source, begin, end);
    if (m_position % 8 == 0 && m_position == m_length) {
        const std::size_t whole = reader.left() / 8;
        m_bytes.resize(m_bytes.size() + whole);
        reader.rawBytes(m_bytes.data() + m_position / 8, whole);
        m_length = m_position += whole * 8;
    }
    while (reader.left() >= 32)
        put(reader.take(32), 32);
    const unsigned rest = static_cast<unsigned>(reader.left());
    put(reader.take(rest), rest);
}

} // namespace embedded::dwg
