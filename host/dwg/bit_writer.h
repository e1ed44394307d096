#pragma once

#include "dwg/bit_reader.h"
#include "dwg/byte_span.h"
#include "dwg/handle_reference.h"

#include <string>

namespace embedded::dwg {

// Writes the drawing file's bit codes, each in its shortest form. The bits past the end of the last byte are
// zero.
class BitWriter {
public:
    std::size_t position() const { return m_position; }
    // Bits that have been written.
    std::size_t length() const { return m_length; }
    const Bytes& bytes() const { return m_bytes; }
    // The bytes so far; the writer is empty afterwards.
    Bytes takeBytes();

    // Goes back over bits that have been written, or forward again up to the last one. False outside of them.
    bool seek(std::size_t position);
    void alignToByte();

    void bit(bool value) { put(value ? 1 : 0, 1); }
    void twoBits(std::uint8_t value) { put(value & 3u, 2); }
    void bitShort(std::uint16_t value);
    void bitLong(std::uint32_t value);
    void rawChar(std::uint8_t value) { put(value, 8); }
    void rawShort(std::uint16_t value);
    void rawLong(std::uint32_t value);
    void rawDouble(double value);
    void bitDouble(double value);
    void bitDouble(double value, double defaultValue);
    void threeBitDoubles(const Triple& value);
    void thickness(double value);
    void extrusion(const Triple& value);
    void handle(const HandleReference& reference);
    void modularChar(std::uint64_t value);
    void signedModularChar(std::int64_t value);
    void modularShort(std::uint32_t value);
    // TV of these bytes. The caller has cut them to 65535.
    void filedText(const std::string& bytes);
    void rawBytes(const std::uint8_t* source, std::size_t length);
    // A run of bits that start at any bit of the source; the caller has checked that they are there.
    void copyBits(ByteSpan source, std::size_t begin, std::size_t end);
    // Up to 32 bits, highest first.
    void put(std::uint32_t value, unsigned count);

private:
    Bytes m_bytes;
    std::size_t m_position = 0;
    std::size_t m_length = 0;
};

} // namespace embedded::dwg
