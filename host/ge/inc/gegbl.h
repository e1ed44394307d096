#pragma once

#include "adesk.h"

// When two points, or two vectors, count as equal. Both numbers are distances, not shares of a length:
//   points p, q       equal if |p - q| <= equalPoint
//   vectors a, b      equal if |a - b| <= equalVector
//   a                 of no length if |a| <= equalVector
//   a, b              codirectional if |a/|a| - b/|b|| < equalVector
//                     parallel if that holds for b or for -b
//                     perpendicular if |(a/|a|) . (b/|b|)| <= equalVector
// So between directions equalVector is a chord of the unit circle: 0.1745 allows ten degrees.
class AcGeTol {
public:
    constexpr AcGeTol() = default;

    constexpr double equalPoint() const { return m_equalPoint; }
    constexpr double equalVector() const { return m_equalVector; }
    void setEqualPoint(double distance) { m_equalPoint = distance; }
    void setEqualVector(double distance) { m_equalVector = distance; }

private:
    double m_equalVector = 1.0e-12;
    double m_equalPoint = 1.0e-10;
};

// What geometry uses where the caller says nothing.
struct AcGeContext {
    static AcGeTol gTol;
};

namespace AcGe {
// Why an operation that takes a flag could not be done. `This` is the object, `Arg1` the first argument; 0
// says that it has no length.
enum ErrorStatus {
    kOk = 0,
    k0This = 1,
    k0Arg1 = 2,
    k0Arg2 = 3,
    kPerpendicularArg1Arg2 = 4,
    kEqualArg1Arg2 = 5
};
} // namespace AcGe

using AcGeError = AcGe::ErrorStatus;
