#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

// A transformation of space: four rows by four columns, applied from the left.
class AcGeMatrix3d {
public:
    // The transformation that changes nothing.
    AcGeMatrix3d();

    static const AcGeMatrix3d kIdentity;

    AcGeMatrix3d& setToIdentity();
    AcGeMatrix3d operator*(const AcGeMatrix3d& other) const;
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& other) { return *this = *this * other; }
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }

    AcGeMatrix3d& setToTranslation(const AcGeVector3d& vector);
    AcGeMatrix3d& setToScaling(double factor, const AcGePoint3d& centre = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setTranslation(const AcGeVector3d& vector);
    AcGeVector3d translation() const;

    // Takes the axes as columns and the origin as translation.
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;

    bool isEqualTo(const AcGeMatrix3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeMatrix3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeMatrix3d& other) const { return !isEqualTo(other); }

    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }

    double entry[4][4];
};
