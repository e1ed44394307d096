#pragma once

#include "gegbl.h"

#include <cmath>

class AcGeMatrix3d;

// A direction with a length in space.
class AcGeVector3d {
public:
    AcGeVector3d() = default;
    AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

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

    double length() const { return std::hypot(x, y, z); }
    double lengthSqrd() const { return x * x + y * y + z * z; }
    double dotProduct(const AcGeVector3d& other) const { return x * other.x + y * other.y + z * other.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& other) const {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
    // The vector of length 1 in this direction. One that is shorter than the tolerance stays as it is.
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        const double size = length();
        return size <= tol.equalVector() ? *this : *this / size;
    }
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
    // From 0 to pi; 0 if one of them has no length.
    double angleTo(const AcGeVector3d& other) const {
        return std::atan2(crossProduct(other).length(), dotProduct(other));
    }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::fabs(length() - 1.0) <= tol.equalVector();
    }
    // Multiplies by the matrix from the left, without its translation.
    AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);

    bool isEqualTo(const AcGeVector3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - other).length() <= tol.equalVector();
    }
    bool operator==(const AcGeVector3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeVector3d& other) const { return !isEqualTo(other); }

    double operator[](unsigned int index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](unsigned int index) { return index == 0 ? x : index == 1 ? y : z; }

    AcGeVector3d& set(double xx, double yy, double zz) { return *this = {xx, yy, zz}; }

    static const AcGeVector3d kIdentity;
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline AcGeVector3d operator*(double factor, const AcGeVector3d& vector) { return vector * factor; }
AcGeVector3d operator*(const AcGeMatrix3d& matrix, const AcGeVector3d& vector);
