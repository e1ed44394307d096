#include "orvshape/segment_entity.h"

#include "dbents.h"

#include <cmath>

namespace orv {

namespace {

// From an arc's own first axis, counter-clockwise.
double angleInPlane(const CurveSegment& arc, const AcGePoint3d& point) {
    const AcGeVector3d x = arc.normal().perpVector();
    const AcGeVector3d out = point - arc.centre();
    return std::atan2(out.dotProduct(arc.normal().crossProduct(x)), out.dotProduct(x));
}

} // namespace

AcDbEntity* newEntityOf(const CurveSegment& segment) {
    if (!segment.isArc())
        return new AcDbLine(segment.start(), segment.end());
    // An arc's angles are taken to one turn, of which rounding might leave nothing.
    if (segment.isFullCircle())
        return new AcDbCircle(segment.centre(), segment.normal(), segment.radius());
    const double angle = angleInPlane(segment, segment.start());
    return new AcDbArc(segment.centre(), segment.normal(), segment.radius(), angle, angle + segment.sweep());
}

} // namespace orv
