#pragma once

#include "gevec2d.h"

// A place in the plane.
class AcGePoint2d {
public:
    constexpr AcGePoint2d() = default;
    constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    AcGePoint2d operator*(double factor) const { return {x * factor, y * factor}; }
    AcGePoint2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
    AcGePoint2d operator+(const AcGeVector2d& vector) const { return {x + vector.x, y + vector.y}; }
    AcGePoint2d operator-(const AcGeVector2d& vector) const { return {x - vector.x, y - vector.y}; }
    AcGeVector2d operator-(const AcGePoint2d& other) const { return {x - other.x, y - other.y}; }
    AcGePoint2d& operator*=(double factor) { return *this = *this * factor; }
    AcGePoint2d& operator/=(double divisor) { return *this = *this / divisor; }
    AcGePoint2d& operator+=(const AcGeVector2d& vector) { return *this = *this + vector; }
    AcGePoint2d& operator-=(const AcGeVector2d& vector) { return *this = *this - vector; }
    AcGePoint2d& setToSum(const AcGePoint2d& point, const AcGeVector2d& vector) {
        return *this = point + vector;
    }
    AcGePoint2d& setToProduct(const AcGePoint2d& point, double factor) { return *this = point * factor; }
    AcGePoint2d& setToProduct(const AcGeMatrix2d& matrix, const AcGePoint2d& point);

    // Multiplies by the matrix from the left.
    AcGePoint2d& transformBy(const AcGeMatrix2d& matrix);
    // Counter-clockwise about the given point, in radians.
    AcGePoint2d& rotateBy(double angle, const AcGePoint2d& about = kOrigin);
    // Away from the given point, which stays.
    AcGePoint2d& scaleBy(double factor, const AcGePoint2d& about = kOrigin);

    AcGeVector2d asVector() const { return {x, y}; }
    double distanceTo(const AcGePoint2d& other) const { return (*this - other).length(); }

    Adesk::Boolean isEqualTo(const AcGePoint2d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(other) <= tol.equalPoint();
    }
    bool operator==(const AcGePoint2d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGePoint2d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? x : y; }
    double& operator[](unsigned int index) { return index == 0 ? x : y; }

    AcGePoint2d& set(double xx, double yy) { return *this = {xx, yy}; }

    static const AcGePoint2d kOrigin;

    double x = 0.0;
    double y = 0.0;
};

inline AcGePoint2d operator*(double factor, const AcGePoint2d& point) { return point * factor; }

// The matrix and what it moves come together, so that moving is inline.
#include "gemat2d.h"
