#pragma once

#include "geplanar.h"

class AcGeLine3d;

// A plane without bounds.
class AcGePlane : public AcGePlanarEnt {
public:
    static const AcGePlane kXYPlane;
    static const AcGePlane kYZPlane;
    static const AcGePlane kZXPlane;

    // The XY plane.
    AcGePlane();
    // The axes are the normal's perpVector and the normal across it, both of length 1. A normal without
    // length gives a plane whose normal and axes have none either.
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal);
    // Through the origin; the axes lead from it to the two other points.
    AcGePlane(const AcGePoint3d& uPoint, const AcGePoint3d& origin, const AcGePoint3d& vPoint);
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);
    // a x + b y + c z + d = 0; its origin is the point nearest to the world's.
    AcGePlane(double a, double b, double c, double d);

    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& normal);
    AcGePlane& set(const AcGePoint3d& uPoint, const AcGePoint3d& origin, const AcGePoint3d& vPoint);
    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);
    AcGePlane& set(double a, double b, double c, double d);

    // Positive on the side to which the normal points.
    double signedDistanceTo(const AcGePoint3d& point) const { return signedDistance(point); }

    using AcGePlanarEnt::intersectWith;
    // The line in both planes. False, with `line` untouched, if they are parallel.
    Adesk::Boolean intersectWith(const AcGePlane& other, AcGeLine3d& line,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

    // Takes origin and axes through the matrix.
    AcGePlane& transformBy(const AcGeMatrix3d& matrix);
    AcGePlane& translateBy(const AcGeVector3d& vector);
};
