#pragma once

#include "dbfiler.h"

#include <cstdint>

namespace embedded {

// What the drawing file's own kinds of object hold beyond what AcDbDwgFiler can file. Reads give zero once
// the stream has failed; the failure stands in the filer's status.
class FieldFiler {
public:
    virtual ~FieldFiler() = default;

    // Up to 32 bits, highest first: single flags and two-bit codes.
    virtual std::uint32_t readBits(unsigned count) = 0;
    virtual void writeBits(std::uint32_t value, unsigned count) = 0;
    // RS, RL and RD: whole values, whatever they are.
    virtual std::uint16_t readRawShort() = 0;
    virtual void writeRawShort(std::uint16_t value) = 0;
    virtual std::uint32_t readRawLong() = 0;
    virtual void writeRawLong(std::uint32_t value) = 0;
    virtual double readRawDouble() = 0;
    virtual void writeRawDouble(double value) = 0;
    // DD: as its difference from a value that both sides know.
    virtual double readDoubleWithDefault(double defaultValue) = 0;
    virtual void writeDoubleWithDefault(double value, double defaultValue) = 0;
    // CMC: a colour index.
    virtual std::uint16_t readColour() = 0;
    virtual void writeColour(std::uint16_t index) = 0;
    // A handle in the stream of the ids with its code. On reading every code is resolved to the id that is
    // meant.
    virtual AcDbObjectId readId(std::uint8_t& code) = 0;
    virtual void writeId(std::uint8_t code, AcDbObjectId id) = 0;

    // Bits of the data, and handles, that are left: a reader that takes what a newer product has put behind.
    virtual std::size_t dataBitsLeft() const = 0;
    virtual std::size_t handleBitsLeft() const = 0;
};

// Null unless the filer is the drawing file's.
inline FieldFiler* fieldFiler(AcDbDwgFiler* filer) { return dynamic_cast<FieldFiler*>(filer); }

} // namespace embedded
