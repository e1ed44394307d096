#include "orvshape/segment_chain.h"

#include <algorithm>
#include <cmath>

namespace orv {

namespace {

// Enough points to tell what the pieces span: of an arc, four of its plane.
std::vector<AcGePoint3d> tellingPoints(const std::vector<CurveSegment>& segments) {
    std::vector<AcGePoint3d> points;
    for (const CurveSegment& segment : segments) {
        points.push_back(segment.start());
        if (segment.isArc()) {
            points.push_back(segment.pointAt(segment.length() / 3.0));
            points.push_back(segment.pointAt(segment.length() * 2.0 / 3.0));
        }
        points.push_back(segment.end());
    }
    return points;
}

} // namespace

bool isClosedChain(const std::vector<CurveSegment>& segments) {
    return !segments.empty() &&
           segments.front().start().distanceTo(segments.back().end()) <= curveSlack(segments.front().start());
}

AcGeVector3d areaOf(const std::vector<CurveSegment>& segments) {
    AcGeVector3d area;
    for (const CurveSegment& segment : segments)
        area += segment.doubleAreaFrom(segments.front().start());
    return area / 2.0;
}

ChainSpan spanOf(const std::vector<CurveSegment>& segments, AcGeVector3d& direction) {
    if (segments.empty())
        return ChainSpan::kNothing;
    const std::vector<AcGePoint3d> points = tellingPoints(segments);
    const AcGePoint3d origin = points.front();
    AcGeVector3d farthest;
    for (const AcGePoint3d& point : points)
        if ((point - origin).lengthSqrd() > farthest.lengthSqrd())
            farthest = point - origin;
    const double size = farthest.length();
    const double slack = curveSlack(origin) + 1.0e-9 * size;

    // The point that is farthest from the longest line spans the plane best.
    const AcGeVector3d along = farthest / size;
    AcGeVector3d across;
    for (const AcGePoint3d& point : points) {
        const AcGeVector3d off = along.crossProduct(point - origin);
        if (off.lengthSqrd() > across.lengthSqrd())
            across = off;
    }
    if (across.length() <= slack) {
        direction = along;
        return ChainSpan::kLine;
    }
    const AcGeVector3d normal = across / across.length();
    const bool isPlane = std::all_of(points.begin(), points.end(), [&](const AcGePoint3d& point) {
        return std::fabs((point - origin).dotProduct(normal)) <= slack;
    });
    if (!isPlane)
        return ChainSpan::kSpace;
    direction = areaOf(segments).dotProduct(normal) < 0.0 ? -normal : normal;
    return ChainSpan::kPlane;
}

} // namespace orv
