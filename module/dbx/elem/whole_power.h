#pragma once

namespace orv::elem {

// A number to a whole power, by repeated squaring. A power below 0 gives 1 over that of its magnitude.
inline double wholePower(double base, int exponent) {
    const auto bits = static_cast<unsigned int>(exponent);
    double power = 1.0;
    double square = base;
    // Negated without a sign, since the lowest number has no opposite.
    for (unsigned int left = exponent < 0 ? 0u - bits : bits; left != 0; left >>= 1u) {
        if ((left & 1u) != 0)
            power *= square;
        square *= square;
    }
    return exponent < 0 ? 1.0 / power : power;
}

} // namespace orv::elem
