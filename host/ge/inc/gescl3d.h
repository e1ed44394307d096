#pragma once

#include "gegbl.h"

#include <cmath>

class AcGeMatrix3d;

// Three factors along the axes.
class AcGeScale3d {
public:
    constexpr AcGeScale3d() = default;
    constexpr explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
    constexpr AcGeScale3d(double xFactor, double yFactor, double zFactor)
        : sx(xFactor), sy(yFactor), sz(zFactor) {}

    AcGeScale3d operator*(const AcGeScale3d& other) const {
        return {sx * other.sx, sy * other.sy, sz * other.sz};
    }
    AcGeScale3d operator*(double factor) const { return {sx * factor, sy * factor, sz * factor}; }
    AcGeScale3d& operator*=(const AcGeScale3d& other) { return *this = *this * other; }
    AcGeScale3d& operator*=(double factor) { return *this = *this * factor; }
    // A factor of 0 becomes infinite.
    AcGeScale3d inverse() const { return {1.0 / sx, 1.0 / sy, 1.0 / sz}; }
    AcGeScale3d& invert() { return *this = inverse(); }

    // The three factors are one, in absolute value, within equalVector.
    Adesk::Boolean isProportional(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::fabs(std::fabs(sx) - std::fabs(sy)) <= tol.equalVector() &&
               std::fabs(std::fabs(sy) - std::fabs(sz)) <= tol.equalVector();
    }
    // Sets the matrix to these factors.
    void getMatrix(AcGeMatrix3d& matrix) const;

    Adesk::Boolean isEqualTo(const AcGeScale3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return std::hypot(sx - other.sx, sy - other.sy, sz - other.sz) <= tol.equalVector();
    }
    bool operator==(const AcGeScale3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeScale3d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? sx : index == 1 ? sy : sz; }
    double& operator[](unsigned int index) { return index == 0 ? sx : index == 1 ? sy : sz; }

    AcGeScale3d& set(double xFactor, double yFactor, double zFactor) {
        return *this = {xFactor, yFactor, zFactor};
    }

    static const AcGeScale3d kIdentity;

    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
};
