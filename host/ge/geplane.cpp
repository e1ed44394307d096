#include "geplane.h"

#include "geline3d.h"

AcGePlane::AcGePlane() : AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis) {}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal)
    : AcGePlane(origin, normal.perpVector(), normal.normal().crossProduct(normal.perpVector())) {}

AcGePlane::AcGePlane(const AcGePoint3d& uPoint, const AcGePoint3d& origin, const AcGePoint3d& vPoint)
    : AcGePlane(origin, uPoint - origin, vPoint - origin) {}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis)
    : AcGePlanarEnt(origin, uAxis, vAxis) {}

AcGePlane::AcGePlane(double a, double b, double c, double d) : AcGePlane() { set(a, b, c, d); }

AcGePlane& AcGePlane::set(const AcGePoint3d& origin, const AcGeVector3d& normal) {
    return *this = AcGePlane(origin, normal);
}

AcGePlane& AcGePlane::set(const AcGePoint3d& uPoint, const AcGePoint3d& origin, const AcGePoint3d& vPoint) {
    return *this = AcGePlane(uPoint, origin, vPoint);
}

AcGePlane& AcGePlane::set(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis) {
    place(origin, uAxis, vAxis);
    return *this;
}

AcGePlane& AcGePlane::set(double a, double b, double c, double d) {
    const AcGeVector3d normal(a, b, c);
    const AcGePoint3d nearest =
        normal.isZeroLength() ? AcGePoint3d() : AcGePoint3d() + normal * (-d / normal.lengthSqrd());
    return set(nearest, normal);
}

Adesk::Boolean AcGePlane::intersectWith(const AcGePlane& other, AcGeLine3d& line, const AcGeTol& tol) const {
    AcGeError flag;
    if (normal().isParallelTo(other.normal(), tol, flag) || flag != AcGe::kOk)
        return false;
    const AcGeVector3d along = normal().crossProduct(other.normal());
    // In this plane, straight towards the other one.
    const AcGeVector3d towards = along.crossProduct(normal());
    const double reach = -other.signedDistanceTo(pointOnPlane()) / towards.dotProduct(other.normal());
    line.set(pointOnPlane() + towards * reach, along);
    return true;
}

AcGePlane& AcGePlane::transformBy(const AcGeMatrix3d& matrix) {
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    getCoordSystem(origin, u, v);
    return set(matrix * origin, matrix * u, matrix * v);
}

AcGePlane& AcGePlane::translateBy(const AcGeVector3d& vector) {
    return transformBy(AcGeMatrix3d::translation(vector));
}
