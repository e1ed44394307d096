#pragma once

#include "dwg/byte_span.h"
#include "dwg/handle_reference.h"

#include <string>

namespace embedded::dwg {

struct Triple {
    double x = 0, y = 0, z = 0;
};

// Reads the drawing file's bit codes from a run of bytes, highest bit of a byte first. A read that would pass
// the end, or that meets a code which the format does not have, fails: it and every later one give zero or
// empty, and the place of the first failure is kept. Nothing outside the given bits is ever looked at.
class BitReader {
public:
    explicit BitReader(ByteSpan bytes) : BitReader(bytes, 0, bytes.size * 8) {}
    // The bits from `begin` up to `end`, which are cut to what the bytes hold.
    BitReader(ByteSpan bytes, std::size_t begin, std::size_t end);

    bool ok() const { return !m_failed; }
    // The bit at which the first failing read began.
    std::size_t failedAt() const { return m_failedAt; }
    void fail();
    // Takes a failure back; the place stays.
    void clear() { m_failed = false; }

    std::size_t position() const { return m_position; }
    std::size_t end() const { return m_end; }
    std::size_t left() const { return m_end - m_position; }
    // Fails for a place outside the bits.
    void seek(std::size_t position);
    void alignToByte();

    bool bit() { return take(1) != 0; }                                   // B
    std::uint8_t twoBits() { return static_cast<std::uint8_t>(take(2)); } // BB
    std::uint16_t bitShort();                                             // BS
    std::uint32_t bitLong();                                              // BL
    std::uint8_t rawChar() { return static_cast<std::uint8_t>(take(8)); } // RC
    std::uint16_t rawShort();                                             // RS
    std::uint32_t rawLong();                                              // RL
    double rawDouble();                                                   // RD
    double bitDouble();                                                   // BD
    double bitDouble(double defaultValue);                                // DD
    Triple threeBitDoubles();                                             // 3BD
    double thickness();                                                   // BT
    Triple extrusion();                                                   // BE
    HandleReference handle();                                             // H
    std::uint64_t modularChar();                                          // MC
    std::int64_t signedModularChar();
    std::uint32_t modularShort(); // MS
    // TV: the bytes as they are filed, without the zero that ends them in some products' files.
    std::string text();
    // TV: all bytes that are filed.
    std::string filedText();

    // `length` bytes from the present bit on. Nothing is written to `target` by a read that fails.
    bool rawBytes(std::uint8_t* target, std::size_t length);
    // Up to 32 bits, first bit highest.
    std::uint32_t take(unsigned count) {
        const std::size_t byte = m_position / 8;
        if (m_failed || count == 0 || count > m_end - m_position || m_bytes.size - byte < 8)
            return takeAtEnd(count);
        const std::uint64_t window = eightBytes(m_bytes.data + byte) << m_position % 8;
        m_position += count;
        return static_cast<std::uint32_t>(window >> (64 - count));
    }

private:
    bool has(std::size_t count);
    // Where no eight bytes are left to be looked at in one go.
    std::uint32_t takeAtEnd(unsigned count);
    // The first byte highest.
    static std::uint64_t eightBytes(const std::uint8_t* at) {
        return std::uint64_t{at[0]} << 56 | std::uint64_t{at[1]} << 48 | std::uint64_t{at[2]} << 40 |
               std::uint64_t{at[3]} << 32 | std::uint64_t{at[4]} << 24 | std::uint64_t{at[5]} << 16 |
               std::uint64_t{at[6]} << 8 | std::uint64_t{at[7]};
    }

    ByteSpan m_bytes;
    std::size_t m_position;
    std::size_t m_end;
    std::size_t m_failedAt = 0;
    bool m_failed = false;
};

} // namespace embedded::dwg
