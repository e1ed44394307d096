#pragma once

#include "gevec3d.h"

// A place in space.
class AcGePoint3d {
public:
    AcGePoint3d() = default;
    AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    AcGePoint3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    AcGePoint3d operator+(const AcGeVector3d& vector) const {
        return {x + vector.x, y + vector.y, z + vector.z};
    }
    AcGePoint3d operator-(const AcGeVector3d& vector) const {
        return {x - vector.x, y - vector.y, z - vector.z};
    }
    AcGeVector3d operator-(const AcGePoint3d& other) const { return {x - other.x, y - other.y, z - other.z}; }
    AcGePoint3d& operator+=(const AcGeVector3d& vector) { return *this = *this + vector; }
    AcGePoint3d& operator-=(const AcGeVector3d& vector) { return *this = *this - vector; }

    AcGeVector3d asVector() const { return {x, y, z}; }
    double distanceTo(const AcGePoint3d& other) const { return (*this - other).length(); }
    // Multiplies by the matrix from the left.
    AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);

    bool isEqualTo(const AcGePoint3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(other) <= tol.equalPoint();
    }
    bool operator==(const AcGePoint3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGePoint3d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](unsigned int index) { return index == 0 ? x : index == 1 ? y : z; }

    AcGePoint3d& set(double xx, double yy, double zz) { return *this = {xx, yy, zz}; }

    static const AcGePoint3d kOrigin;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

AcGePoint3d operator*(const AcGeMatrix3d& matrix, const AcGePoint3d& point);
