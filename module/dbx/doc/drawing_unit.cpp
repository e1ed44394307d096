#include "dbx/doc/drawing_unit.h"

#include <cmath>

namespace orv::detail {

namespace {

// In the order in which a scale is tried against them.
constexpr struct {
    DrawingUnit unit;
    double scale;
} kUnits[] = {{kUnitMetre, 1.0}, {kUnitCentimetre, 0.01}, {kUnitMillimetre, 0.001}};

constexpr double kSameScale = 0.0005;

} // namespace

const double* scaleOfUnit(std::int32_t unit) {
    for (const auto& known : kUnits)
        if (known.unit == unit)
            return &known.scale;
    return nullptr;
}

DrawingUnit unitOfScale(double scale) {
    for (const auto& known : kUnits)
        if (std::fabs(scale - known.scale) <= kSameScale)
            return known.unit;
    return kUnitMetre;
}

} // namespace orv::detail
