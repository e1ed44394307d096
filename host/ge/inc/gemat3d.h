#pragma once

#include "gemat2d.h"
#include "gepnt3d.h"

class AcGeLine3d;

// An affine transformation of space: four rows by four columns, applied from the left. The first three
// columns are where the axes go (the linear part), the fourth is where the origin goes. Points and vectors
// are moved by the first three rows; the last row is no concern of theirs.
class AcGeMatrix3d {
public:
    // The transformation that changes nothing.
    constexpr AcGeMatrix3d() = default;

    static const AcGeMatrix3d kIdentity;

    AcGeMatrix3d& setToIdentity() { return *this = AcGeMatrix3d(); }
    AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d& setToProduct(const AcGeMatrix3d& left, const AcGeMatrix3d& right) {
        return *this = left * right;
    }

    // A singular matrix has no inverse: it stays as it is, and what is given for its inverse is a copy of it.
    // Ask isSingular where that matters. No entry of a real inverse is a negative zero.
    AcGeMatrix3d& invert(const AcGeTol& tol = AcGeContext::gTol) { return *this = inverse(tol); }
    AcGeMatrix3d inverse(const AcGeTol& tol = AcGeContext::gTol) const;
    // The columns of the linear part, each taken to length 1, span a volume of no more than equalVector; so a
    // uniform scale never makes a matrix singular. Likewise if the determinant is no normal number (zero,
    // below what a double holds in full, infinite, or not a number).
    Adesk::Boolean isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeMatrix3d& transposeIt() { return *this = transpose(); }
    AcGeMatrix3d transpose() const;
    // Of all four rows.
    double det() const;

    // No entry differs by more than equalVector.
    Adesk::Boolean isEqualTo(const AcGeMatrix3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeMatrix3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeMatrix3d& other) const { return !isEqualTo(other); }

    // The columns of the linear part are perpendicular in pairs and of one length, within equalVector times
    // that length. False for a column without length.
    Adesk::Boolean isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // They are perpendicular in pairs, of any length but none.
    Adesk::Boolean isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // The length of the longest column of the linear part.
    double scale() const;
    // The largest sum of absolute values in a column of the linear part.
    double norm() const;

    AcGeMatrix3d& setTranslation(const AcGeVector3d& vector);
    AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }

    // Takes the axes as columns and the origin as translation.
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;

    AcGeMatrix3d& setToTranslation(const AcGeVector3d& vector);
    // Counter-clockwise when the axis points at the viewer, in radians. The identity for an axis without
    // length.
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& centre = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(double factor, const AcGePoint3d& centre = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToMirroring(const AcGePlane& plane);
    // At a point: every vector turns round.
    AcGeMatrix3d& setToMirroring(const AcGePoint3d& point);
    // At a line: a half turn about it.
    AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
    // Onto the plane along the direction. The identity if the direction lies in the plane or has no length.
    AcGeMatrix3d& setToProjection(const AcGePlane& plane, const AcGeVector3d& projectDir);
    // From the first frame to the second: what had the coordinates (a, b, c) in the one has them in the
    // other. The first frame must not be singular.
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                     const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                     const AcGeVector3d& toY, const AcGeVector3d& toZ);
    // From the world to the coordinates of entities with that normal, whose X axis is the normal's
    // perpVector; through the world's origin. The identity for a normal without length.
    AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);
    // From the world to the plane's own coordinates.
    AcGeMatrix3d& setToWorldToPlane(const AcGePlane& plane);
    // The ways back.
    AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);
    AcGeMatrix3d& setToPlaneToWorld(const AcGePlane& plane);

    // What this transformation does to things drawn in the coordinates of a normal at an elevation: takes
    // normal and elevation to the new ones, and returns what happens to the two coordinates.
    AcGeMatrix2d convertToLocal(AcGeVector3d& normal, double& elev) const;

    static AcGeMatrix3d translation(const AcGeVector3d& vector) {
        return AcGeMatrix3d().setToTranslation(vector);
    }
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& centre = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d().setToRotation(angle, axis, centre);
    }
    static AcGeMatrix3d scaling(double factor, const AcGePoint3d& centre = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d().setToScaling(factor, centre);
    }
    static AcGeMatrix3d mirroring(const AcGePlane& plane) { return AcGeMatrix3d().setToMirroring(plane); }
    static AcGeMatrix3d mirroring(const AcGePoint3d& point) { return AcGeMatrix3d().setToMirroring(point); }
    static AcGeMatrix3d mirroring(const AcGeLine3d& line) { return AcGeMatrix3d().setToMirroring(line); }
    static AcGeMatrix3d projection(const AcGePlane& plane, const AcGeVector3d& projectDir) {
        return AcGeMatrix3d().setToProjection(plane, projectDir);
    }
    static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                      const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                      const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                      const AcGeVector3d& toY, const AcGeVector3d& toZ) {
        return AcGeMatrix3d().setToAlignCoordSys(fromOrigin, fromX, fromY, fromZ, toOrigin, toX, toY, toZ);
    }
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal) {
        return AcGeMatrix3d().setToWorldToPlane(normal);
    }
    static AcGeMatrix3d worldToPlane(const AcGePlane& plane) {
        return AcGeMatrix3d().setToWorldToPlane(plane);
    }
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal) {
        return AcGeMatrix3d().setToPlaneToWorld(normal);
    }
    static AcGeMatrix3d planeToWorld(const AcGePlane& plane) {
        return AcGeMatrix3d().setToPlaneToWorld(plane);
    }

    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }

    double entry[4][4] = {
        {1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}};
};

inline AcGeVector3d operator*(const AcGeMatrix3d& matrix, const AcGeVector3d& vector) {
    const auto& m = matrix.entry;
    return {m[0][0] * vector.x + m[0][1] * vector.y + m[0][2] * vector.z,
            m[1][0] * vector.x + m[1][1] * vector.y + m[1][2] * vector.z,
            m[2][0] * vector.x + m[2][1] * vector.y + m[2][2] * vector.z};
}

inline AcGePoint3d operator*(const AcGeMatrix3d& matrix, const AcGePoint3d& point) {
    const auto& m = matrix.entry;
    return {m[0][0] * point.x + m[0][1] * point.y + m[0][2] * point.z + m[0][3],
            m[1][0] * point.x + m[1][1] * point.y + m[1][2] * point.z + m[1][3],
            m[2][0] * point.x + m[2][1] * point.y + m[2][2] * point.z + m[2][3]};
}

inline AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }
inline AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }

inline AcGeVector3d& AcGeVector3d::setToProduct(const AcGeMatrix3d& matrix, const AcGeVector3d& vector) {
    return *this = matrix * vector;
}

inline AcGePoint3d& AcGePoint3d::setToProduct(const AcGeMatrix3d& matrix, const AcGePoint3d& point) {
    return *this = matrix * point;
}
