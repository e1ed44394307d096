#include "embedded/user_coordinate_system.h"

#include "db/database_core.h"

namespace embedded {

namespace {

// What single precision leaves of a length or a right angle.
AcGeTol axisTolerance() {
    AcGeTol tol;
    tol.setEqualVector(1.0e-6);
    return tol;
}

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

} // namespace

Acad::ErrorStatus setUserCoordinateSystem(AcDbDatabase& database, const AcGePoint3d& origin,
                                          const AcGeVector3d& xAxis, const AcGeVector3d& yAxis) {
    const AcGeTol tol = axisTolerance();
    if (!isFinite(origin) || !xAxis.isUnitLength(tol) || !yAxis.isUnitLength(tol) ||
        !xAxis.isPerpendicularTo(yAxis, tol))
        return Acad::eInvalidInput;
    DatabaseCore& core = database.core();
    core.ucs = {origin, xAxis, yAxis, true};
    core.modified = true;
    return Acad::eOk;
}

} // namespace embedded
