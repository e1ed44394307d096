#pragma once

#include "gepnt2d.h"
#include "gevec3d.h"

class AcGePlane;

// A place in space.
class AcGePoint3d {
public:
    constexpr AcGePoint3d() = default;
    constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    // The point that has these coordinates in the plane.
    AcGePoint3d(const AcGePlanarEnt& plane, const AcGePoint2d& point) { set(plane, point); }

    AcGePoint3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    AcGePoint3d operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    AcGePoint3d operator+(const AcGeVector3d& vector) const {
        return {x + vector.x, y + vector.y, z + vector.z};
    }
    AcGePoint3d operator-(const AcGeVector3d& vector) const {
        return {x - vector.x, y - vector.y, z - vector.z};
    }
    AcGeVector3d operator-(const AcGePoint3d& other) const { return {x - other.x, y - other.y, z - other.z}; }
    AcGePoint3d& operator*=(double factor) { return *this = *this * factor; }
    AcGePoint3d& operator/=(double divisor) { return *this = *this / divisor; }
    AcGePoint3d& operator+=(const AcGeVector3d& vector) { return *this = *this + vector; }
    AcGePoint3d& operator-=(const AcGeVector3d& vector) { return *this = *this - vector; }
    AcGePoint3d& setToSum(const AcGePoint3d& point, const AcGeVector3d& vector) {
        return *this = point + vector;
    }
    AcGePoint3d& setToProduct(const AcGePoint3d& point, double factor) { return *this = point * factor; }
    AcGePoint3d& setToProduct(const AcGeMatrix3d& matrix, const AcGePoint3d& point);

    // Multiplies by the matrix from the left.
    AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);
    // As AcGeVector3d::rotateBy, about an axis through the given point.
    AcGePoint3d& rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& about = kOrigin);
    AcGePoint3d& mirror(const AcGePlane& plane);
    // Away from the given point, which stays.
    AcGePoint3d& scaleBy(double factor, const AcGePoint3d& about = kOrigin);
    // The coordinates on the axes of the plane, from its origin; what stands off the plane is left out.
    AcGePoint2d convert2d(const AcGePlanarEnt& plane) const;

    AcGeVector3d asVector() const { return {x, y, z}; }
    double distanceTo(const AcGePoint3d& other) const { return (*this - other).length(); }

    // Where the line through this point in the direction meets the plane. The point itself if the direction
    // lies in the plane or has no length.
    AcGePoint3d project(const AcGePlane& plane, const AcGeVector3d& projectDirection) const;
    // The point of the plane that is nearest.
    AcGePoint3d orthoProject(const AcGePlane& plane) const;

    Adesk::Boolean isEqualTo(const AcGePoint3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(other) <= tol.equalPoint();
    }
    bool operator==(const AcGePoint3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGePoint3d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](unsigned int index) { return index == 0 ? x : index == 1 ? y : z; }

    AcGePoint3d& set(double xx, double yy, double zz) { return *this = {xx, yy, zz}; }
    AcGePoint3d& set(const AcGePlanarEnt& plane, const AcGePoint2d& point);

    static const AcGePoint3d kOrigin;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline AcGePoint3d operator*(double factor, const AcGePoint3d& point) { return point * factor; }

// The matrix and what it moves come together, so that moving is inline.
#include "gemat3d.h"
