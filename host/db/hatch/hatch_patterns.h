#pragma once

#include "AdAChar.h"
#include "db/hatch/hatch_fields.h"

#include <string>
#include <vector>

namespace embedded {

// One of the host's own patterns.
struct HatchPattern {
    std::wstring name; // in capital letters
    bool isSolid = false;
    std::vector<HatchFamily> families; // for angle 0 and scale 1
};

// Whatever the case of the letters. Null for a name that is none.
const HatchPattern* hatchPattern(const std::wstring& name);

// Lines in that direction, so far apart, and across them if double.
std::vector<HatchFamily> userDefinedFamilies(double angle, double space, bool isDouble);

// The family turned about the origin, then scaled.
HatchFamily turned(const HatchFamily& family, double angle, double scale);

} // namespace embedded
