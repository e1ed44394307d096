#include "gepnt3d.h"

#include "geplane.h"

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& about) {
    return *this = about + (*this - about).rotateBy(angle, axis);
}

AcGePoint3d& AcGePoint3d::mirror(const AcGePlane& plane) {
    return *this -= plane.normal() * (2.0 * plane.signedDistanceTo(*this));
}

AcGePoint3d& AcGePoint3d::scaleBy(double factor, const AcGePoint3d& about) {
    return *this = about + (*this - about) * factor;
}

AcGePoint2d AcGePoint3d::convert2d(const AcGePlanarEnt& plane) const {
    return AcGePoint2d() + (*this - plane.pointOnPlane()).convert2d(plane);
}

AcGePoint3d AcGePoint3d::project(const AcGePlane& plane, const AcGeVector3d& projectDirection) const {
    return plane.pointOnPlane() + (*this - plane.pointOnPlane()).project(plane.normal(), projectDirection);
}

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlane& plane) const { return plane.closestPointTo(*this); }

AcGePoint3d& AcGePoint3d::set(const AcGePlanarEnt& plane, const AcGePoint2d& point) {
    return *this = plane.pointOnPlane() + AcGeVector3d(plane, point.asVector());
}
