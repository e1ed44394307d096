#include "dbents.h"
#include "geplane.h"
#include "orvshape/segment_chain.h"
#include "orvshape/segment_entity.h"
#include "orvshape/segmented_curve.h"

#include <algorithm>
#include <memory>

using orv::CurveSegment;

namespace {

// A point where another entity meets the curve, and how far along that is.
struct Meeting {
    double distance;
    AcGePoint3d point;
};

double meetingSlack(const AcGePoint3d& point) { return 10.0 * orv::curveSlack(point); }

AcDb::Intersect withoutThis(AcDb::Intersect type) {
    switch (type) {
    case AcDb::kExtendThis:
        return AcDb::kOnBothOperands;
    case AcDb::kExtendBoth:
        return AcDb::kExtendArg;
    default:
        return type;
    }
}

bool extendsThis(AcDb::Intersect type) { return type == AcDb::kExtendThis || type == AcDb::kExtendBoth; }

// Along the curve; what two pieces have at their common corner counts once.
void appendInOrder(std::vector<Meeting> meetings, AcGePoint3dArray& points) {
    std::stable_sort(meetings.begin(), meetings.end(),
                     [](const Meeting& a, const Meeting& b) { return a.distance < b.distance; });
    std::vector<AcGePoint3d> found;
    for (const Meeting& meeting : meetings) {
        const bool isNew = std::none_of(found.begin(), found.end(), [&](const AcGePoint3d& known) {
            return known.distanceTo(meeting.point) <= meetingSlack(known);
        });
        if (isNew)
            found.push_back(meeting.point);
    }
    for (const AcGePoint3d& point : found)
        points.append(point);
}

} // namespace

Acad::ErrorStatus ORV_SegmentedCurve::meetPieces(AcDb::Intersect type, const MeetPiece& meet,
                                                 AcGePoint3dArray& points) const {
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    const bool isOpen = extendsThis(type) && !orv::isClosedChain(m_segments);
    std::vector<Meeting> meetings;
    double before = 0.0;
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        const CurveSegment& segment = m_segments[i];
        const bool beyondStart = isOpen && i == 0;
        const bool beyondEnd = isOpen && i + 1 == m_segments.size();
        const std::unique_ptr<AcDbEntity> piece(orv::newEntityOf(segment));
        AcGePoint3dArray found;
        const Acad::ErrorStatus es = meet(*piece, beyondStart || beyondEnd ? type : withoutThis(type), found);
        if (es != Acad::eOk)
            return es;
        for (const AcGePoint3d& point : found) {
            // The host lengthens a line at both ends, of which only one is the curve's.
            const double on = segment.nearestTo(point, beyondStart, beyondEnd);
            if (segment.pointAt(on).distanceTo(point) <= meetingSlack(point))
                meetings.push_back({before + on, point});
        }
        before = m_distances[i];
    }
    appendInOrder(std::move(meetings), points);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                                       AcGePoint3dArray& points, Adesk::GsMarker,
                                                       Adesk::GsMarker otherGsMarker) const {
    return meetPieces(
        type,
        [&](const AcDbEntity& piece, AcDb::Intersect pieceType, AcGePoint3dArray& found) {
            return piece.intersectWith(other, pieceType, found, 0, otherGsMarker);
        },
        points);
}

Acad::ErrorStatus ORV_SegmentedCurve::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                                       const AcGePlane& projPlane, AcGePoint3dArray& points,
                                                       Adesk::GsMarker, Adesk::GsMarker otherGsMarker) const {
    return meetPieces(
        type,
        [&](const AcDbEntity& piece, AcDb::Intersect pieceType, AcGePoint3dArray& found) {
            return piece.intersectWith(other, pieceType, projPlane, found, 0, otherGsMarker);
        },
        points);
}
