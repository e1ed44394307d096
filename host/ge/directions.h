#pragma once

#include "gegbl.h"

#include <cmath>

// What directions are to each other, for vectors of the plane and of space alike.
namespace embedded::ge {

constexpr double kPi = 3.141592653589793;

// Says in `flag` which of two vectors has no length, the first first. True if both have one.
template <class Vector>
bool bothHaveLength(const Vector& a, const Vector& b, const AcGeTol& tol, AcGeError& flag) {
    flag = a.isZeroLength(tol) ? AcGe::k0This : b.isZeroLength(tol) ? AcGe::k0Arg1 : AcGe::kOk;
    return flag == AcGe::kOk;
}

// Not AcGeTol's equality of vectors: between directions the tolerance itself is too far. A tolerance wider
// than the vectors makes them vectors without length, so what is measured here is always defined.
template <class Vector>
bool codirectional(const Vector& a, const Vector& b, const AcGeTol& tol) {
    return (a / a.length() - b / b.length()).length() < tol.equalVector();
}

template <class Vector>
bool isCodirectional(const Vector& a, const Vector& b, const AcGeTol& tol, AcGeError& flag) {
    return bothHaveLength(a, b, tol, flag) && codirectional(a, b, tol);
}

template <class Vector>
bool isParallel(const Vector& a, const Vector& b, const AcGeTol& tol, AcGeError& flag) {
    return bothHaveLength(a, b, tol, flag) && (codirectional(a, b, tol) || codirectional(a, -b, tol));
}

template <class Vector>
bool isPerpendicular(const Vector& a, const Vector& b, const AcGeTol& tol, AcGeError& flag) {
    return bothHaveLength(a, b, tol, flag) &&
           std::fabs((a / a.length()).dotProduct(b / b.length())) <= tol.equalVector();
}

// An angle of atan2 as one from 0 to below two pi.
inline double fullTurn(double angle) {
    if (angle >= 0.0)
        return angle;
    const double turned = angle + 2.0 * kPi;
    return turned < 2.0 * kPi ? turned : 0.0;
}

} // namespace embedded::ge
