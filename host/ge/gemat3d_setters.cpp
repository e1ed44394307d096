#include "gemat3d.h"

#include "ge/eigen_views.h"
#include "geline3d.h"
#include "geplane.h"

using namespace embedded::ge;

namespace {

// The linear part moves everything about a point, which stays.
AcGeMatrix3d& setAbout(AcGeMatrix3d& matrix, const Eigen::Matrix3d& linear, const AcGePoint3d& fixed) {
    matrix.setToIdentity();
    linearPart<4>(matrix) = linear;
    return matrix.setTranslation(fixed - matrix * fixed);
}

} // namespace

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& vector) {
    return setToIdentity().setTranslation(vector);
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& centre) {
    if (axis.isZeroLength())
        return setToIdentity();
    return setAbout(*this, Eigen::AngleAxisd(angle, view(axis.normal())).toRotationMatrix(), centre);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double factor, const AcGePoint3d& centre) {
    return setCoordSystem(centre * (1.0 - factor), {factor, 0.0, 0.0}, {0.0, factor, 0.0},
                          {0.0, 0.0, factor});
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& plane) {
    const Eigen::Vector3d normal = view(plane.normal());
    return setAbout(*this, Eigen::Matrix3d::Identity() - 2.0 * normal * normal.transpose(),
                    plane.pointOnPlane());
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& point) { return setToScaling(-1.0, point); }

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
    const Eigen::Vector3d along = view(line.direction());
    return setAbout(*this, 2.0 * along * along.transpose() - Eigen::Matrix3d::Identity(), line.pointOnLine());
}

AcGeMatrix3d& AcGeMatrix3d::setToProjection(const AcGePlane& plane, const AcGeVector3d& projectDir) {
    AcGeError flag;
    if (plane.normal().isPerpendicularTo(projectDir, AcGeContext::gTol, flag) || flag != AcGe::kOk)
        return setToIdentity();
    const Eigen::Vector3d normal = view(plane.normal());
    const Eigen::Vector3d along = view(projectDir) / view(projectDir).dot(normal);
    return setAbout(*this, Eigen::Matrix3d::Identity() - along * normal.transpose(), plane.pointOnPlane());
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                               const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                               const AcGeVector3d& toY, const AcGeVector3d& toZ) {
    AcGeMatrix3d from;
    from.setCoordSystem(fromOrigin, fromX, fromY, fromZ);
    setCoordSystem(toOrigin, toX, toY, toZ);
    return *this *= from.inverse();
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal) {
    // The axes are of length 1 and perpendicular, so the way there is the way back transposed.
    return setToPlaneToWorld(normal).transposeIt();
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGePlane& plane) {
    return setToPlaneToWorld(plane).invert();
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return setToIdentity();
    const AcGeVector3d zAxis = normal.normal();
    const AcGeVector3d xAxis = zAxis.perpVector();
    return setCoordSystem(AcGePoint3d(), xAxis, zAxis.crossProduct(xAxis), zAxis);
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGePlane& plane) {
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    plane.getCoordSystem(origin, u, v);
    return setCoordSystem(origin, u, v, plane.normal());
}
