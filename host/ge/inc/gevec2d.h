#pragma once

#include "gegbl.h"

#include <cmath>

class AcGeMatrix2d;

// A direction with a length in the plane.
class AcGeVector2d {
public:
    constexpr AcGeVector2d() = default;
    constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    AcGeVector2d operator*(double factor) const { return {x * factor, y * factor}; }
    AcGeVector2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
    AcGeVector2d operator+(const AcGeVector2d& other) const { return {x + other.x, y + other.y}; }
    AcGeVector2d operator-(const AcGeVector2d& other) const { return {x - other.x, y - other.y}; }
    AcGeVector2d operator-() const { return {-x, -y}; }
    AcGeVector2d& operator+=(const AcGeVector2d& other) { return *this = *this + other; }
    AcGeVector2d& operator-=(const AcGeVector2d& other) { return *this = *this - other; }
    AcGeVector2d& operator*=(double factor) { return *this = *this * factor; }
    AcGeVector2d& operator/=(double divisor) { return *this = *this / divisor; }
    AcGeVector2d& negate() { return *this = -*this; }
    AcGeVector2d& setToSum(const AcGeVector2d& a, const AcGeVector2d& b) { return *this = a + b; }
    AcGeVector2d& setToProduct(const AcGeVector2d& vector, double factor) { return *this = vector * factor; }
    AcGeVector2d& setToProduct(const AcGeMatrix2d& matrix, const AcGeVector2d& vector);

    // Multiplies by the matrix from the left, without its translation.
    AcGeVector2d& transformBy(const AcGeMatrix2d& matrix);
    // Counter-clockwise, in radians.
    AcGeVector2d& rotateBy(double angle);
    // At the line through the origin in that direction. A direction without length changes nothing.
    AcGeVector2d& mirror(const AcGeVector2d& line);

    double length() const { return std::sqrt(lengthSqrd()); }
    double lengthSqrd() const { return x * x + y * y; }
    double dotProduct(const AcGeVector2d& other) const { return x * other.x + y * other.y; }
    // A quarter turn to the left, of the same length.
    AcGeVector2d perpVector() const { return {-y, x}; }

    // From the X axis, from 0 to below two pi. 0 for a vector without length.
    double angle() const;
    // From 0 to pi; 0 if one of them has no length.
    double angleTo(const AcGeVector2d& other) const {
        return std::atan2(std::fabs(x * other.y - y * other.x), dotProduct(other));
    }

    // The vector of length 1 in this direction. One without length stays as it is.
    AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        const double size = length();
        return size <= tol.equalVector() ? *this : *this / size;
    }
    AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
    // k0This for a vector without length, which stays as it is.
    AcGeVector2d& normalize(const AcGeTol& tol, AcGeError& flag);

    Adesk::Boolean isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::fabs(length() - 1.0) <= tol.equalVector();
    }
    Adesk::Boolean isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    // False if one of them has no length; the forms with a flag then say k0This or k0Arg1.
    Adesk::Boolean isParallelTo(const AcGeVector2d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isParallelTo(const AcGeVector2d& other, const AcGeTol& tol, AcGeError& flag) const;
    Adesk::Boolean isCodirectionalTo(const AcGeVector2d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isCodirectionalTo(const AcGeVector2d& other, const AcGeTol& tol, AcGeError& flag) const;
    Adesk::Boolean isPerpendicularTo(const AcGeVector2d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeVector2d& other, const AcGeTol& tol, AcGeError& flag) const;

    Adesk::Boolean isEqualTo(const AcGeVector2d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - other).length() <= tol.equalVector();
    }
    bool operator==(const AcGeVector2d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeVector2d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? x : y; }
    double& operator[](unsigned int index) { return index == 0 ? x : y; }

    AcGeVector2d& set(double xx, double yy) { return *this = {xx, yy}; }

    static const AcGeVector2d kIdentity; // of no length: adding it changes nothing
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    double x = 0.0;
    double y = 0.0;
};

inline AcGeVector2d operator*(double factor, const AcGeVector2d& vector) { return vector * factor; }

// The matrix and what it moves come together, so that moving is inline.
#include "gepnt2d.h"
