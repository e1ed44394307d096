#pragma once

#include "gegbl.h"

#include <cmath>

// A direction with a length in the plane.
class AcGeVector2d {
public:
    AcGeVector2d() = default;
    AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    AcGeVector2d operator*(double factor) const { return {x * factor, y * factor}; }
    AcGeVector2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
    AcGeVector2d operator+(const AcGeVector2d& other) const { return {x + other.x, y + other.y}; }
    AcGeVector2d operator-(const AcGeVector2d& other) const { return {x - other.x, y - other.y}; }
    AcGeVector2d operator-() const { return {-x, -y}; }
    AcGeVector2d& operator+=(const AcGeVector2d& other) { return *this = *this + other; }
    AcGeVector2d& operator-=(const AcGeVector2d& other) { return *this = *this - other; }
    AcGeVector2d& operator*=(double factor) { return *this = *this * factor; }

    double length() const { return std::hypot(x, y); }
    double lengthSqrd() const { return x * x + y * y; }
    double dotProduct(const AcGeVector2d& other) const { return x * other.x + y * other.y; }
    // A quarter turn to the left.
    AcGeVector2d perpVector() const { return {-y, x}; }

    bool isEqualTo(const AcGeVector2d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - other).length() <= tol.equalVector();
    }
    bool operator==(const AcGeVector2d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeVector2d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? x : y; }
    double& operator[](unsigned int index) { return index == 0 ? x : y; }

    AcGeVector2d& set(double xx, double yy) { return *this = {xx, yy}; }

    static const AcGeVector2d kIdentity;
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    double x = 0.0;
    double y = 0.0;
};

inline AcGeVector2d operator*(double factor, const AcGeVector2d& vector) { return vector * factor; }
