#include "dbcurve.h"

#include "acgi.h"
#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"

#include <algorithm>
#include <cmath>

using namespace embedded;

AcDbCurve::AcDbCurve() = default;

bool AcDbCurve::getPath(CurvePath&) const { return false; }
AcGeVector3d AcDbCurve::thicknessVector() const { return AcGeVector3d(); }

namespace {

// A place on a curve's path.
struct Place {
    CurvePath path;
    std::size_t segment = 0;
    double share = 0.0;

    const PathSegment& piece() const { return path.segments[segment]; }
};

// How far rounding may have taken a point that was computed from the curve.
double slackAt(const AcGePoint3d& point) {
    const double size = std::max({std::fabs(point.x), std::fabs(point.y), std::fabs(point.z), 1.0});
    return std::max(AcGeContext::gTol.equalPoint(), 1.0e-9 * size);
}

bool placeAt(Place& place, const AcGePoint3d& point) {
    place.path.nearest(point, false, place.segment, place.share);
    return place.piece().pointAt(place.share).distanceTo(point) <= slackAt(point);
}

} // namespace

Adesk::Boolean AcDbCurve::isClosed() const {
    assertReadEnabled();
    CurvePath path;
    return getPath(path) && path.isClosed;
}

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
    assertReadEnabled();
    CurvePath path;
    if (!getPath(path))
        return Acad::eNotImplementedYet;
    param = path.startParam();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getEndParam(double& param) const {
    assertReadEnabled();
    CurvePath path;
    if (!getPath(path))
        return Acad::eNotImplementedYet;
    param = path.endParam();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    CurvePath path;
    if (!getPath(path))
        return Acad::eNotImplementedYet;
    point = path.segments.front().pointAt(0.0);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    CurvePath path;
    if (!getPath(path))
        return Acad::eNotImplementedYet;
    point = path.segments.back().pointAt(1.0);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!at.path.locate(param, at.segment, at.share))
        return Acad::eInvalidInput;
    point = at.piece().pointAt(at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!placeAt(at, point))
        return Acad::eInvalidInput;
    param = at.path.paramAt(at.segment, at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtParam(double param, double& dist) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!at.path.locate(param, at.segment, at.share))
        return Acad::eInvalidInput;
    dist = at.path.distanceAt(at.segment, at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtDist(double dist, double& param) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!at.path.locateDistance(dist, at.segment, at.share))
        return Acad::eInvalidInput;
    param = at.path.paramAt(at.segment, at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!placeAt(at, point))
        return Acad::eInvalidInput;
    dist = at.path.distanceAt(at.segment, at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!at.path.locateDistance(dist, at.segment, at.share))
        return Acad::eInvalidInput;
    point = at.piece().pointAt(at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!at.path.locate(param, at.segment, at.share))
        return Acad::eInvalidInput;
    deriv = at.piece().firstDerivative(at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const {
    double param = 0.0;
    const Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es == Acad::eOk ? getFirstDeriv(param, deriv) : es;
}

Acad::ErrorStatus AcDbCurve::getSecondDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    if (!at.path.locate(param, at.segment, at.share))
        return Acad::eInvalidInput;
    deriv = at.piece().secondDerivative(at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const {
    double param = 0.0;
    const Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es == Acad::eOk ? getSecondDeriv(param, deriv) : es;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& givenPoint, AcGePoint3d& pointOnCurve,
                                               Adesk::Boolean extend) const {
    assertReadEnabled();
    Place at;
    if (!getPath(at.path))
        return Acad::eNotImplementedYet;
    at.path.nearest(givenPoint, extend, at.segment, at.share);
    pointOnCurve = at.piece().pointAt(at.share);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getArea(double& area) const {
    assertReadEnabled();
    CurvePath path;
    if (!getPath(path))
        return Acad::eNotImplementedYet;
    area = path.area().length();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::reverseCurve() { return Acad::eNotImplementedYet; }

Acad::ErrorStatus AcDbCurve::subGetGeomExtents(AcDbExtents& extents) const {
    CurvePath path;
    if (!getPath(path))
        return AcDbEntity::subGetGeomExtents(extents);
    AcDbExtents box = path.extents();
    box.expandBy(thicknessVector());
    extents = box;
    return Acad::eOk;
}

namespace {

void appendCentreSnaps(const PathSegment& piece, AcDb::OsnapMode mode, AcGePoint3dArray& points) {
    if (piece.isStraight)
        return;
    if (mode == AcDb::kOsModeCen)
        points.append(piece.arc.centre);
    if (mode != AcDb::kOsModeQuad)
        return;
    // The quadrants are those of the entity's own axes.
    const AcGeVector3d axis = piece.arc.normal.perpVector();
    PlaneArc whole = piece.arc;
    whole.xAxis = axis;
    for (int quadrant = 0; quadrant < 4; ++quadrant) {
        const AcGePoint3d point = whole.pointAt(kPi / 2.0 * quadrant);
        if (piece.arc.angleOf(point) <= piece.arc.sweep + 1.0e-9)
            points.append(point);
    }
}

void appendSnaps(const PathSegment& piece, AcDb::OsnapMode mode, bool isFirst, AcGePoint3dArray& points) {
    if (mode == AcDb::kOsModeEnd) {
        if (isFirst)
            points.append(piece.pointAt(0.0));
        points.append(piece.pointAt(1.0));
    } else if (mode == AcDb::kOsModeMid) {
        points.append(piece.pointAt(0.5));
    } else {
        appendCentreSnaps(piece, mode, points);
    }
}

} // namespace

Acad::ErrorStatus AcDbCurve::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                               const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                               const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                               AcDbIntArray& geomIds) const {
    Place at;
    if (!getPath(at.path))
        return AcDbEntity::subGetOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform,
                                             snapPoints, geomIds);
    if (osnapMode == AcDb::kOsModeNear || osnapMode == AcDb::kOsModePerp) {
        const bool near = osnapMode == AcDb::kOsModeNear;
        at.path.nearest(near ? pickPoint : lastPoint, !near, at.segment, at.share);
        snapPoints.append(at.piece().pointAt(at.share));
        return Acad::eOk;
    }
    // A circle has neither ends nor a middle.
    const bool hasEnds = !isPeriodic();
    for (std::size_t i = 0; i < at.path.segments.size(); ++i)
        if (hasEnds || (osnapMode != AcDb::kOsModeEnd && osnapMode != AcDb::kOsModeMid))
            appendSnaps(at.path.segments[i], osnapMode, i == 0 && !at.path.isClosed, snapPoints);
    return Acad::eOk;
}

Adesk::Boolean AcDbCurve::subWorldDraw(AcGiWorldDraw* worldDraw) {
    CurvePath path;
    if (!getPath(path))
        return AcDbEntity::subWorldDraw(worldDraw);
    const AcGeVector3d up = thicknessVector();
    const double thickness = up.length();
    worldDraw->subEntityTraits().setThickness(thickness);
    const AcGeVector3d direction = thickness > 0.0 ? up / thickness : up;
    drawPath(path, thickness > 0.0 ? &direction : nullptr, isPeriodic(), worldDraw->geometry());
    return true;
}
