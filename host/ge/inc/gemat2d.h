#pragma once

#include "gepnt2d.h"

// An affine transformation of the plane: three rows by three columns, applied from the left. The first two
// columns are where the axes go, the third is where the origin goes.
class AcGeMatrix2d {
public:
    // The transformation that changes nothing.
    constexpr AcGeMatrix2d() = default;

    static const AcGeMatrix2d kIdentity;

    AcGeMatrix2d& setToIdentity() { return *this = AcGeMatrix2d(); }
    AcGeMatrix2d operator*(const AcGeMatrix2d& right) const;
    AcGeMatrix2d& operator*=(const AcGeMatrix2d& right) { return *this = *this * right; }
    AcGeMatrix2d& preMultBy(const AcGeMatrix2d& left) { return *this = left * *this; }
    AcGeMatrix2d& postMultBy(const AcGeMatrix2d& right) { return *this = *this * right; }
    AcGeMatrix2d& setToProduct(const AcGeMatrix2d& left, const AcGeMatrix2d& right) {
        return *this = left * right;
    }

    // A singular matrix has no inverse: it stays as it is, and its inverse is a copy of it.
    AcGeMatrix2d& invert() { return *this = inverse(); }
    AcGeMatrix2d inverse() const;
    // The columns of the linear part, each taken to length 1, span an area of no more than equalVector; or
    // the determinant is no normal number.
    Adesk::Boolean isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeMatrix2d& transposeIt() { return *this = transpose(); }
    AcGeMatrix2d transpose() const;
    // Of all three rows.
    double det() const;

    // No entry differs by more than equalVector.
    Adesk::Boolean isEqualTo(const AcGeMatrix2d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeMatrix2d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeMatrix2d& other) const { return !isEqualTo(other); }

    // The columns of the linear part are perpendicular and of one length, within equalVector times that
    // length. False for a column without length.
    Adesk::Boolean isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // They are perpendicular, of any length but none.
    Adesk::Boolean isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // The length of the longest column of the linear part.
    double scale() const;

    AcGeMatrix2d& setTranslation(const AcGeVector2d& vector);
    AcGeVector2d translation() const { return {entry[0][2], entry[1][2]}; }

    // Takes the axes as columns and the origin as translation.
    AcGeMatrix2d& setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& xAxis,
                                 const AcGeVector2d& yAxis);
    void getCoordSystem(AcGePoint2d& origin, AcGeVector2d& xAxis, AcGeVector2d& yAxis) const;

    AcGeMatrix2d& setToTranslation(const AcGeVector2d& vector);
    // Counter-clockwise, in radians.
    AcGeMatrix2d& setToRotation(double angle, const AcGePoint2d& centre = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToScaling(double factor, const AcGePoint2d& centre = AcGePoint2d::kOrigin);
    // At a point: a half turn.
    AcGeMatrix2d& setToMirroring(const AcGePoint2d& point);
    // From the first frame to the second: what had the coordinates (a, b) in the one has them in the other.
    // The first frame must not be singular.
    AcGeMatrix2d& setToAlignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromX,
                                     const AcGeVector2d& fromY, const AcGePoint2d& toOrigin,
                                     const AcGeVector2d& toX, const AcGeVector2d& toY);

    static AcGeMatrix2d translation(const AcGeVector2d& vector) {
        return AcGeMatrix2d().setToTranslation(vector);
    }
    static AcGeMatrix2d rotation(double angle, const AcGePoint2d& centre = AcGePoint2d::kOrigin) {
        return AcGeMatrix2d().setToRotation(angle, centre);
    }
    static AcGeMatrix2d scaling(double factor, const AcGePoint2d& centre = AcGePoint2d::kOrigin) {
        return AcGeMatrix2d().setToScaling(factor, centre);
    }
    static AcGeMatrix2d mirroring(const AcGePoint2d& point) { return AcGeMatrix2d().setToMirroring(point); }
    static AcGeMatrix2d alignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromX,
                                      const AcGeVector2d& fromY, const AcGePoint2d& toOrigin,
                                      const AcGeVector2d& toX, const AcGeVector2d& toY) {
        return AcGeMatrix2d().setToAlignCoordSys(fromOrigin, fromX, fromY, toOrigin, toX, toY);
    }

    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }

    double entry[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
};

inline AcGeVector2d operator*(const AcGeMatrix2d& matrix, const AcGeVector2d& vector) {
    const auto& m = matrix.entry;
    return {m[0][0] * vector.x + m[0][1] * vector.y, m[1][0] * vector.x + m[1][1] * vector.y};
}

inline AcGePoint2d operator*(const AcGeMatrix2d& matrix, const AcGePoint2d& point) {
    const auto& m = matrix.entry;
    return {m[0][0] * point.x + m[0][1] * point.y + m[0][2], m[1][0] * point.x + m[1][1] * point.y + m[1][2]};
}

inline AcGeVector2d& AcGeVector2d::transformBy(const AcGeMatrix2d& matrix) { return *this = matrix * *this; }
inline AcGePoint2d& AcGePoint2d::transformBy(const AcGeMatrix2d& matrix) { return *this = matrix * *this; }

inline AcGeVector2d& AcGeVector2d::setToProduct(const AcGeMatrix2d& matrix, const AcGeVector2d& vector) {
    return *this = matrix * vector;
}

inline AcGePoint2d& AcGePoint2d::setToProduct(const AcGeMatrix2d& matrix, const AcGePoint2d& point) {
    return *this = matrix * point;
}
