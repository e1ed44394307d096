#include "dbx/doc/system_transform.h"

#include "base/assert.h"
#include "base/geometry_text.h"

#include "gepnt3d.h"

namespace orv::detail {

namespace {

constexpr double kHalfTurn = 3.141592653589793;
constexpr double kTenDegrees = 0.17453292519943295;

AcGeVector3d vectorOf(const float (&axis)[3]) { return {axis[0], axis[1], axis[2]}; }

AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis) {
    AcGeMatrix3d matrix;
    return matrix.setToRotation(angle, axis, AcGePoint3d::kOrigin);
}

AcGeMatrix3d shortestRotation(const AcGeVector3d& from, const AcGeVector3d& to) {
    if (from.isCodirectionalTo(to))
        return AcGeMatrix3d();
    if (from.isParallelTo(to))
        return rotation(kHalfTurn, AcGeVector3d::kXAxis);
    return rotation(from.angleTo(to), from.crossProduct(to));
}

// Whether one of the store's axes, as the drawing sees them, is the drawing's X axis or nearly so.
bool anAxisLooksAlongX(const AcGeMatrix3d& wcs2Cdb) {
    AcGeTol nearly;
    nearly.setEqualVector(kTenDegrees);
    const AcGeMatrix3d cdb2Wcs = wcs2Cdb.inverse();
    for (const AcGeVector3d& axis : {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis})
        if ((cdb2Wcs * axis).isCodirectionalTo(AcGeVector3d::kXAxis, nearly))
            return true;
    return false;
}

} // namespace

AcGeVector3d gravityVectorCdb(GravityOrientation gravity) {
    switch (gravity) {
    case kGravityMinusX:
        return {-1.0, 0.0, 0.0};
    case kGravityMinusY:
        return {0.0, -1.0, 0.0};
    case kGravityPlusX:
        return {1.0, 0.0, 0.0};
    case kGravityPlusY:
        return {0.0, 1.0, 0.0};
    case kGravityPlusZ:
        return {0.0, 0.0, 1.0};
    case kGravityMinusZ:
    case kGravityNone:
        break;
    }
    return {0.0, 0.0, -1.0};
}

AcGeMatrix3d rotationWcs2Cdb(const AcGeVector3d& drawingGravity, const AcGeVector3d& storeGravity) {
    AcGeMatrix3d wcs2Cdb = shortestRotation(drawingGravity, storeGravity);
    if (!anAxisLooksAlongX(wcs2Cdb))
        wcs2Cdb.postMultBy(rotation(kHalfTurn, drawingGravity));
    return wcs2Cdb;
}

double measuredScale(const typeCDB_SYST::Axes& axes) {
    const AcGePoint3d origin(axes.origin[0], axes.origin[1], axes.origin[2]);
    const AcGeVector3d x = vectorOf(axes.x);
    const AcGeVector3d y = vectorOf(axes.y);
    const AcGeVector3d z = vectorOf(axes.z);
    ORV_ASSERT(!x.isZeroLength())(origin)(x)(y)(z).debug("invalid xform");
    ORV_ASSERT(!y.isZeroLength())(origin)(x)(y)(z).debug("invalid xform");
    ORV_ASSERT(!z.isZeroLength())(origin)(x)(y)(z).debug("invalid xform");
    AcGeMatrix3d matrix;
    matrix.setCoordSystem(origin, x, y, z);
    return (matrix * AcGeVector3d::kXAxis).length();
}

} // namespace orv::detail
