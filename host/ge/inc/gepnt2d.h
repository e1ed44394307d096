#pragma once

#include "gevec2d.h"

// A place in the plane.
class AcGePoint2d {
public:
    AcGePoint2d() = default;
    AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    AcGePoint2d operator+(const AcGeVector2d& vector) const { return {x + vector.x, y + vector.y}; }
    AcGePoint2d operator-(const AcGeVector2d& vector) const { return {x - vector.x, y - vector.y}; }
    AcGeVector2d operator-(const AcGePoint2d& other) const { return {x - other.x, y - other.y}; }
    AcGePoint2d& operator+=(const AcGeVector2d& vector) { return *this = *this + vector; }
    AcGePoint2d& operator-=(const AcGeVector2d& vector) { return *this = *this - vector; }

    AcGeVector2d asVector() const { return {x, y}; }
    double distanceTo(const AcGePoint2d& other) const { return (*this - other).length(); }

    bool isEqualTo(const AcGePoint2d& other, const AcGeTol& tol = AcGeContext::gTol) const {
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
