#pragma once

#include "gegbl.h"

#include <cmath>

// Three factors along the axes.
class AcGeScale3d {
public:
    AcGeScale3d() = default;
    explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
    AcGeScale3d(double xFactor, double yFactor, double zFactor) : sx(xFactor), sy(yFactor), sz(zFactor) {}

    AcGeScale3d operator*(const AcGeScale3d& other) const {
        return {sx * other.sx, sy * other.sy, sz * other.sz};
    }
    AcGeScale3d operator*(double factor) const { return {sx * factor, sy * factor, sz * factor}; }
    AcGeScale3d inverse() const { return {1.0 / sx, 1.0 / sy, 1.0 / sz}; }

    bool isEqualTo(const AcGeScale3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return std::hypot(sx - other.sx, sy - other.sy, sz - other.sz) <= tol.equalVector();
    }
    bool operator==(const AcGeScale3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeScale3d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? sx : index == 1 ? sy : sz; }
    double& operator[](unsigned int index) { return index == 0 ? sx : index == 1 ? sy : sz; }

    static const AcGeScale3d kIdentity;

    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
};
