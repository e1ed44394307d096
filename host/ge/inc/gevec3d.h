#pragma once

#include "gegbl.h"
#include "gevec2d.h"

#include <cmath>

class AcGeMatrix3d;
class AcGePlanarEnt;

// A direction with a length in space.
class AcGeVector3d {
public:
    constexpr AcGeVector3d() = default;
    constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    // The vector that has these coordinates on the axes of the plane.
    AcGeVector3d(const AcGePlanarEnt& plane, const AcGeVector2d& vector) { set(plane, vector); }

    AcGeVector3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    AcGeVector3d operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    AcGeVector3d operator+(const AcGeVector3d& other) const {
        return {x + other.x, y + other.y, z + other.z};
    }
    AcGeVector3d operator-(const AcGeVector3d& other) const {
        return {x - other.x, y - other.y, z - other.z};
    }
    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    AcGeVector3d& operator+=(const AcGeVector3d& other) { return *this = *this + other; }
    AcGeVector3d& operator-=(const AcGeVector3d& other) { return *this = *this - other; }
    AcGeVector3d& operator*=(double factor) { return *this = *this * factor; }
    AcGeVector3d& operator/=(double divisor) { return *this = *this / divisor; }
    AcGeVector3d& negate() { return *this = -*this; }
    AcGeVector3d& setToSum(const AcGeVector3d& a, const AcGeVector3d& b) { return *this = a + b; }
    AcGeVector3d& setToProduct(const AcGeVector3d& vector, double factor) { return *this = vector * factor; }
    AcGeVector3d& setToProduct(const AcGeMatrix3d& matrix, const AcGeVector3d& vector);

    // Multiplies by the matrix from the left, without its translation.
    AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);
    // Counter-clockwise when the axis points at the viewer, in radians. An axis without length changes
    // nothing.
    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
    // At the plane through the origin with that normal. A normal without length changes nothing.
    AcGeVector3d& mirror(const AcGeVector3d& normalToPlane);
    // The coordinates on the axes of the plane; what stands off the plane is left out.
    AcGeVector2d convert2d(const AcGePlanarEnt& plane) const;

    double length() const { return std::sqrt(lengthSqrd()); }
    double lengthSqrd() const { return x * x + y * y + z * z; }
    double dotProduct(const AcGeVector3d& other) const { return x * other.x + y * other.y + z * other.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& other) const {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
    // A vector of length 1 across this one, the same for every length of it: the X axis of the coordinate
    // system that drawings give an entity with this normal. (0, 0, 0) for a vector without length.
    AcGeVector3d perpVector() const;

    // From 0 to pi; 0 if one of them has no length.
    double angleTo(const AcGeVector3d& other) const {
        return std::atan2(crossProduct(other).length(), dotProduct(other));
    }
    // From 0 to below two pi, counter-clockwise seen from where `reference` points. Which side `reference` is
    // on decides, not its exact direction; one in the plane of both counts as in front.
    double angleTo(const AcGeVector3d& other, const AcGeVector3d& reference) const;
    // Of the part in the plane, from the plane's first axis, from 0 to below two pi.
    double angleOnPlane(const AcGePlanarEnt& plane) const;

    // The vector of length 1 in this direction. One without length stays as it is.
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        const double size = length();
        return size <= tol.equalVector() ? *this : *this / size;
    }
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
    // k0This for a vector without length, which stays as it is.
    AcGeVector3d& normalize(const AcGeTol& tol, AcGeError& flag);

    Adesk::Boolean isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    Adesk::Boolean isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::fabs(length() - 1.0) <= tol.equalVector();
    }
    // See AcGeTol. False if one of them has no length; the forms with a flag then say k0This or k0Arg1.
    Adesk::Boolean isParallelTo(const AcGeVector3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isParallelTo(const AcGeVector3d& other, const AcGeTol& tol, AcGeError& flag) const;
    Adesk::Boolean isCodirectionalTo(const AcGeVector3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isCodirectionalTo(const AcGeVector3d& other, const AcGeTol& tol, AcGeError& flag) const;
    Adesk::Boolean isPerpendicularTo(const AcGeVector3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeVector3d& other, const AcGeTol& tol, AcGeError& flag) const;

    // Onto the plane with that normal, along the direction. The vector itself if one of them has no length
    // (k0Arg1, k0Arg2) or the direction lies in the plane (kPerpendicularArg1Arg2).
    AcGeVector3d project(const AcGeVector3d& planeNormal, const AcGeVector3d& projectDirection) const;
    AcGeVector3d project(const AcGeVector3d& planeNormal, const AcGeVector3d& projectDirection,
                         const AcGeTol& tol, AcGeError& flag) const;
    // The same along the normal. The vector itself, and k0Arg1, if that has no length.
    AcGeVector3d orthoProject(const AcGeVector3d& planeNormal) const;
    AcGeVector3d orthoProject(const AcGeVector3d& planeNormal, const AcGeTol& tol, AcGeError& flag) const;

    Adesk::Boolean isEqualTo(const AcGeVector3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - other).length() <= tol.equalVector();
    }
    bool operator==(const AcGeVector3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeVector3d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](unsigned int index) { return index == 0 ? x : index == 1 ? y : z; }
    // Index of the component with the largest absolute value; the first of equal ones.
    unsigned int largestElement() const;

    AcGeVector3d& set(double xx, double yy, double zz) { return *this = {xx, yy, zz}; }
    AcGeVector3d& set(const AcGePlanarEnt& plane, const AcGeVector2d& vector);

    static const AcGeVector3d kIdentity; // of no length: adding it changes nothing
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline AcGeVector3d operator*(double factor, const AcGeVector3d& vector) { return vector * factor; }

// The matrix and what it moves come together, so that moving is inline.
#include "gepnt3d.h"
