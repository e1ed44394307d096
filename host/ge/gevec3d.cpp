#include "gevec3d.h"

#include "ge/directions.h"
#include "gemat3d.h"
#include "geplanar.h"

using namespace embedded::ge;

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis));
}

AcGeVector3d& AcGeVector3d::mirror(const AcGeVector3d& normalToPlane) {
    if (normalToPlane.isZeroLength())
        return *this;
    const AcGeVector3d across = normalToPlane.normal();
    return *this -= across * (2.0 * dotProduct(across));
}

AcGeVector2d AcGeVector3d::convert2d(const AcGePlanarEnt& plane) const {
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    plane.getCoordSystem(origin, u, v);
    // The axes need not be perpendicular, so each coordinate has the other axis's share taken off.
    const double uu = u.lengthSqrd();
    const double vv = v.lengthSqrd();
    const double uv = u.dotProduct(v);
    const double area = uu * vv - uv * uv;
    const double alongU = dotProduct(u);
    const double alongV = dotProduct(v);
    if (area == 0.0)
        return {};
    return {(alongU * vv - alongV * uv) / area, (alongV * uu - alongU * uv) / area};
}

AcGeVector3d AcGeVector3d::perpVector() const {
    // Normals nearer to the Z axis than this take their X axis from Y.
    const double kNearZ = 1.0 / 64.0;
    if (isZeroLength())
        return {};
    const AcGeVector3d unit = normal();
    const bool nearZ = std::fabs(unit.x) < kNearZ && std::fabs(unit.y) < kNearZ;
    return (nearZ ? kYAxis : kZAxis).crossProduct(unit).normal();
}

double AcGeVector3d::angleTo(const AcGeVector3d& other, const AcGeVector3d& reference) const {
    const AcGeVector3d across = crossProduct(other);
    const double angle = std::atan2(across.length(), dotProduct(other));
    return across.dotProduct(reference) < 0.0 ? fullTurn(-angle) : angle;
}

double AcGeVector3d::angleOnPlane(const AcGePlanarEnt& plane) const {
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    plane.getCoordSystem(origin, u, v);
    const AcGeVector3d across = plane.normal().crossProduct(u);
    return fullTurn(std::atan2(dotProduct(across), dotProduct(u)));
}

AcGeVector3d& AcGeVector3d::normalize(const AcGeTol& tol, AcGeError& flag) {
    flag = isZeroLength(tol) ? AcGe::k0This : AcGe::kOk;
    return normalize(tol);
}

Adesk::Boolean AcGeVector3d::isParallelTo(const AcGeVector3d& other, const AcGeTol& tol) const {
    AcGeError flag;
    return isParallelTo(other, tol, flag);
}

Adesk::Boolean AcGeVector3d::isParallelTo(const AcGeVector3d& other, const AcGeTol& tol,
                                          AcGeError& flag) const {
    return isParallel(*this, other, tol, flag);
}

Adesk::Boolean AcGeVector3d::isCodirectionalTo(const AcGeVector3d& other, const AcGeTol& tol) const {
    AcGeError flag;
    return isCodirectionalTo(other, tol, flag);
}

Adesk::Boolean AcGeVector3d::isCodirectionalTo(const AcGeVector3d& other, const AcGeTol& tol,
                                               AcGeError& flag) const {
    return isCodirectional(*this, other, tol, flag);
}

Adesk::Boolean AcGeVector3d::isPerpendicularTo(const AcGeVector3d& other, const AcGeTol& tol) const {
    AcGeError flag;
    return isPerpendicularTo(other, tol, flag);
}

Adesk::Boolean AcGeVector3d::isPerpendicularTo(const AcGeVector3d& other, const AcGeTol& tol,
                                               AcGeError& flag) const {
    return isPerpendicular(*this, other, tol, flag);
}

AcGeVector3d AcGeVector3d::project(const AcGeVector3d& planeNormal,
                                   const AcGeVector3d& projectDirection) const {
    AcGeError flag;
    return project(planeNormal, projectDirection, AcGeContext::gTol, flag);
}

AcGeVector3d AcGeVector3d::project(const AcGeVector3d& planeNormal, const AcGeVector3d& projectDirection,
                                   const AcGeTol& tol, AcGeError& flag) const {
    flag = planeNormal.isZeroLength(tol)                          ? AcGe::k0Arg1
           : projectDirection.isZeroLength(tol)                   ? AcGe::k0Arg2
           : planeNormal.isPerpendicularTo(projectDirection, tol) ? AcGe::kPerpendicularArg1Arg2
                                                                  : AcGe::kOk;
    if (flag != AcGe::kOk)
        return *this;
    return *this - projectDirection * (dotProduct(planeNormal) / projectDirection.dotProduct(planeNormal));
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal) const {
    AcGeError flag;
    return orthoProject(planeNormal, AcGeContext::gTol, flag);
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal, const AcGeTol& tol,
                                        AcGeError& flag) const {
    flag = planeNormal.isZeroLength(tol) ? AcGe::k0Arg1 : AcGe::kOk;
    return flag == AcGe::kOk ? project(planeNormal, planeNormal, tol, flag) : *this;
}

unsigned int AcGeVector3d::largestElement() const {
    unsigned int largest = 0;
    for (unsigned int i = 1; i < 3; ++i) {
        if (std::fabs((*this)[i]) > std::fabs((*this)[largest]))
            largest = i;
    }
    return largest;
}

AcGeVector3d& AcGeVector3d::set(const AcGePlanarEnt& plane, const AcGeVector2d& vector) {
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    plane.getCoordSystem(origin, u, v);
    return *this = u * vector.x + v * vector.y;
}
