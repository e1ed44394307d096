#include "structure/load_curve.h"

#include "orvshape/segmented_curve.h"

#include <algorithm>

namespace structure {

namespace {

bool isSamePiece(const orv::CurveSegment& a, const orv::CurveSegment& b) {
    return a.isArc() == b.isArc() && a.start().isEqualTo(b.start()) && a.end().isEqualTo(b.end()) &&
           a.pointAt(a.length() / 2.0).isEqualTo(b.pointAt(b.length() / 2.0));
}

AcGePoint3d moved(const AcGePoint3d& point, const AcGeVector3d& direction, double level) {
    return point + direction * (level - point.asVector().dotProduct(direction));
}

} // namespace

CurvePieces segmentsOf(const ORV_SegmentedCurve& curve) {
    CurvePieces segments;
    for (int i = 0; i < curve.getSegmentCount(); ++i)
        segments.push_back(*curve.getSegmentAt(i));
    return segments;
}

bool isSameCurve(const CurvePieces& a, const CurvePieces& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSamePiece);
}

CurvePieces projectedAlong(const AcGeVector3d& direction, const CurvePieces& segments) {
    if (segments.empty() || direction.isZeroLength())
        return segments;
    const AcGeVector3d along = direction.normal();
    double level = segments.front().start().asVector().dotProduct(along);
    for (const orv::CurveSegment& segment : segments)
        level = std::min(level, segment.end().asVector().dotProduct(along));
    CurvePieces projected;
    for (const orv::CurveSegment& segment : segments) {
        const AcGePoint3d start = moved(segment.start(), along, level);
        const AcGePoint3d end = moved(segment.end(), along, level);
        const AcGePoint3d middle = moved(segment.pointAt(segment.length() / 2.0), along, level);
        orv::CurveSegment piece;
        const bool staysRound = segment.isArc() && segment.normal().isParallelTo(along);
        if (staysRound ? orv::CurveSegment::arcThrough(start, middle, end, piece)
                       : orv::CurveSegment::line(start, end, piece))
            projected.push_back(piece);
    }
    return projected;
}

} // namespace structure
