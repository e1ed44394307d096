#include "dbx/elem/load_hatch.h"

#include "arx/types.h"
#include "base/assert.h"
#include "dbx/doc/system.h"
#include "dbx/elem/load_sampling.h"
#include "dbx/elem/load_settings.h"
#include "orvshape/geom.h"
#include "orvshape/segmented_curve.h"

#include "dbapserv.h"
#include "dbhatch.h"
#include "gelnsg3d.h"
#include "geplane.h"

#include <memory>

namespace orv::elem {

namespace {

constexpr double kSpacesPerArrow = 8.0;
// From that release on the host measures a pattern in other units.
constexpr double kNewPatternUnit = 0.05;
constexpr double kChordDeviation = 0.05; // in the store's unit
constexpr double kIntervalTolerance = 1.0e-12;
// Pure red of the drawing's index.
constexpr Adesk::UInt16 kRed = 1;

bool hasNewPatternUnit() {
    const AcDbHostApplicationServices* const host = acdbHostApplicationServices();
    const int major = host->releaseMajorVersion();
    return major >= 19 || (major == 18 && host->releaseMinorVersion() == 2);
}

double patternSpace(const System& system) {
    const double spacing = system.visSettings().getSize(kArrowSpacingSize);
    return (hasNewPatternUnit() ? spacing * kNewPatternUnit : spacing) * kSpacesPerArrow;
}

AcGeVector3d upwards(const AcGeVector3d& normal) {
    AcGeVector3d up = normal;
    up.normalize(AcGeContext::gTol);
    return up.dotProduct(AcGeVector3d::kZAxis) < 0.0 ? -up : up;
}

double elevationOf(const AcGePlane& plane, const AcGeVector3d& normal) {
    const double distance = plane.distanceTo(AcGePoint3d::kOrigin);
    const AcGeVector3d toPlane = plane.closestPointTo(AcGePoint3d::kOrigin).asVector();
    return toPlane.dotProduct(normal) < 0.0 ? -distance : distance;
}

// The outline of a hatch, in the coordinates of the hatch's plane.
class HatchOutline {
public:
    HatchOutline(const AcGePlane& plane, const AcGeMatrix3d& toPlane, double deviation)
        : m_plane(plane), m_toPlane(toPlane), m_deviation(deviation) {}

    void add(const AcGePoint3d& point) {
        const AcGePoint3d placed = m_toPlane * point.orthoProject(m_plane);
        m_points.append(AcGePoint2d(placed.x, placed.y));
    }
    // All of a piece but its end, which the next piece begins with.
    void add(const CurveSegment* seg) {
        ORV_ASSERT(seg);
        if (seg == nullptr)
            return;
        std::unique_ptr<AcGeCurve3d> crv = geom::createGeCurve(*seg);
        if (crv == nullptr)
            crv = std::make_unique<AcGeLineSeg3d>(seg->start(), seg->end());
        ORV_ASSERT(crv);
        AcGeInterval interval(kIntervalTolerance);
        crv->getInterval(interval);
        ORV_ASSERT(interval.isBounded());
        AcGePoint3dArray pts;
        AcGeDoubleArray params;
        crv->getSamplePoints(interval.lowerBound(), interval.upperBound(), m_deviation, pts, params);
        // clang-format off
        ORV_ASSERT(pts.length()>=2).debug("failed to sample curve");
        // clang-format on
        if (pts.length() < 2)
            return;
        for (int i = 0; i + 1 < pts.length(); ++i)
            add(pts[i]);
    }

    const AcGePoint2dArray& points() const { return m_points; }

private:
    const AcGePlane& m_plane;
    const AcGeMatrix3d& m_toPlane;
    const double m_deviation;
    AcGePoint2dArray m_points;
};

} // namespace

bool drawHatch(AcadWorldDraw& wd, const System& system, const ORV_SegmentedCurve& boundary,
               const AcGeVector3d& normal) {
    ORV_ASSERT(!boundary.empty());
    if (boundary.empty())
        return false;
    const AcGeVector3d up = upwards(normal);
    const AcGePlane plane(boundary.startPoint(), up);
    AcDbHatch hatch;
    hatch.setNormal(up);
    hatch.setElevation(elevationOf(plane, up));
    hatch.setAssociative(false);
    hatch.setPatternSpace(patternSpace(system));
    hatch.setPattern(AcDbHatch::kPreDefined, L"ANSI31");
    hatch.setPatternAngle(0.0);
    hatch.setHatchStyle(AcDbHatch::kNormal);
    hatch.setColorIndex(kRed);

    AcGeMatrix3d ecs;
    hatch.getEcs(ecs);
    const AcGeMatrix3d toPlane = ecs.inverse();
    HatchOutline outline(plane, toPlane, detail::fromStore(system, kChordDeviation));
    for (int i = 0; i < boundary.getSegmentCount(); ++i)
        outline.add(boundary.getSegmentAt(i));
    outline.add(boundary.endPoint());
    const AcGeDoubleArray bulges;
    checkErrorStatus(hatch.appendLoop(AcDbHatch::kOutermost, outline.points(), bulges), Acad::eOk,
                     "h.appendLoop(AcDbHatch::kOutermost,hatchPoints,bulges)", __FILE__, __LINE__);
    hatch.evaluateHatch(false);
    // Through the draw, so that the hatch's own colour counts.
    return wd.geometry().draw(&hatch) != 0;
}

} // namespace orv::elem
