#pragma once

#include "base/export.h"

#include <cstdint>

namespace orv {

// The unit of length that a drawing is made in, by the number under which records have it.
enum DrawingUnit : std::int32_t { kUnitMetre = 13, kUnitCentimetre = 15, kUnitMillimetre = 16 };

namespace detail {

// What a length in this unit is multiplied by on its way to the store; null for a number that is no unit.
TALDORK_API const double* scaleOfUnit(std::int32_t unit);

// The unit whose scale lies within 0.0005 of this one; metres if there is none.
TALDORK_API DrawingUnit unitOfScale(double scale);

} // namespace detail
} // namespace orv
