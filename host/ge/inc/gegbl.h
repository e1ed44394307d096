#pragma once

// When two points, or two vectors, count as equal.
class AcGeTol {
public:
    AcGeTol() = default;

    double equalPoint() const { return m_equalPoint; }
    double equalVector() const { return m_equalVector; }
    void setEqualPoint(double distance) { m_equalPoint = distance; }
    void setEqualVector(double distance) { m_equalVector = distance; }

private:
    double m_equalVector = 1.0e-10;
    double m_equalPoint = 1.0e-10;
};

// What geometry uses where the caller says nothing.
struct AcGeContext {
    static AcGeTol gTol;
};

namespace AcGe {
enum ErrorStatus {
    kOk = 0,
    k0This = 1,
    k0Arg1 = 2,
    k0Arg2 = 3,
    kPerpendicularArg1Arg2 = 4,
    kEqualArg1Arg2 = 5
};
} // namespace AcGe
