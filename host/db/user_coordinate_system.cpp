#include "embedded/user_coordinate_system.h"

#include "db/database_core.h"
#include "dbapserv.h"
#include "dbxutil.h"
#include "geassign.h"
#include "gemat3d.h"

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

namespace {

// From the user's coordinates to the world's.
bool userToWorld(AcGeMatrix3d& matrix) {
    const AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr || !embedded::isFinite(database->ucsorg()))
        return false;
    const AcGeVector3d x = database->ucsxdir();
    const AcGeVector3d y = database->ucsydir();
    matrix.setCoordSystem(database->ucsorg(), x, y, x.crossProduct(y).normal());
    return !matrix.isSingular();
}

bool convert(const AcGeMatrix3d& matrix, const ads_point point, ads_point result, bool vec) {
    if (point == nullptr || result == nullptr)
        return false;
    if (vec)
        asVec3d(result) = matrix * asVec3d(point);
    else
        asPnt3d(result) = matrix * asPnt3d(point);
    return true;
}

} // namespace

bool acdbWcs2Ucs(const ads_point point, ads_point result, bool vec) {
    AcGeMatrix3d matrix;
    return userToWorld(matrix) && convert(matrix.inverse(), point, result, vec);
}

bool acdbUcs2Wcs(const ads_point point, ads_point result, bool vec) {
    AcGeMatrix3d matrix;
    return userToWorld(matrix) && convert(matrix, point, result, vec);
}
