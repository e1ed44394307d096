#pragma once

#include <cmath>

namespace orv::elem {

// What is wrong with the value of a load.
inline bool isNaN(double value) { return std::isnan(value); }
inline bool isInfinite(double value) { return std::isinf(value); }

} // namespace orv::elem
