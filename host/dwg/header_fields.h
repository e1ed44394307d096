#pragma once

#include "dwg/bit_reader.h"

#include <cstddef>

namespace embedded::dwg {

enum class FieldKind : std::uint8_t {
    kBit,     // B
    kShort,   // BS
    kColour,  // CMC, a BS up to version 2000
    kLong,    // BL
    kTime,    // two BL: Julian day, milliseconds of the day
    kDouble,  // BD
    kTriple,  // 3BD
    kRawPair, // 2RD
    kText,    // TV
    kHandle   // H
};

// One header variable: how it stands in the file, and its value in a new drawing.
struct HeaderField {
    const char* name;
    FieldKind kind;
    double number;     // default of a number or of all places of a triple or pair
    const char* text;  // default of a text
    std::uint8_t code; // strength of a handle
};

// A default that is more than one number.
struct TripleDefault {
    const char* name;
    Triple value;
};

extern const HeaderField kHeaderFields[];
extern const std::size_t kHeaderFieldCount;
extern const TripleDefault kTripleDefaults[];
extern const std::size_t kTripleDefaultCount;

} // namespace embedded::dwg
