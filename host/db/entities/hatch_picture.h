#pragma once

#include "db/hatch/hatch_area.h"

namespace embedded {

// No hatch with more corners and chords than that is evaluated.
constexpr std::size_t kMostHatchPoints = 2000000;

// What an evaluation found.
struct HatchPicture {
    Acad::ErrorStatus status = Acad::eOk; // with any other one there is nothing else
    std::vector<HatchLine> lines;
    std::vector<HatchRing> pieces; // of a solid fill
};

// The rings of all loops that enclose something. eInvalidInput without loops; eExcessiveItemCount.
Acad::ErrorStatus ringsOf(const HatchFields& fields, std::vector<HatchRing>& rings);
HatchPicture evaluate(const HatchFields& fields, const HatchLimits& limits);

} // namespace embedded
