#include "acgi.h"
#include "dbents.h"
#include "orvshape/grip_manager.h"
#include "orvshape/segment_chain.h"
#include "orvshape/segment_entity.h"
#include "orvshape/segmented_curve.h"

using orv::CurveSegment;

namespace {

std::vector<int> asVector(const AcDbIntArray& indices) { return {indices.begin(), indices.end()}; }

void takeSettings(const AcDbEntity& from, AcDbEntity& to) {
    to.setLayer(from.layerId());
    to.setColorIndex(from.colorIndex());
    to.setLinetype(from.linetypeId());
    to.setLinetypeScale(from.linetypeScale());
    to.setLineWeight(from.lineWeight());
    to.setVisibility(from.visibility());
}

// What the geometry answers: true to stop.
bool drawArc(const CurveSegment& arc, const AcGiGeometry& geometry) {
    if (arc.isFullCircle())
        return geometry.circle(arc.centre(), arc.radius(), arc.normal()) != 0;
    return geometry.circularArc(arc.centre(), arc.radius(), arc.normal(), arc.start() - arc.centre(),
                                arc.sweep()) != 0;
}

// Straight pieces in a row go as one chain, so that a line type runs on through their corners.
bool drawChain(const std::vector<CurveSegment>& segments, const AcGiGeometry& geometry) {
    std::vector<AcGePoint3d> points;
    const auto drawPoints = [&] {
        const bool isToStop = !points.empty() && geometry.polyline(static_cast<Adesk::UInt32>(points.size()),
                                                                   points.data()) != 0;
        points.clear();
        return isToStop;
    };
    for (const CurveSegment& segment : segments) {
        if (segment.isArc()) {
            if (drawPoints() || drawArc(segment, geometry))
                return true;
            continue;
        }
        if (points.empty())
            points.push_back(segment.start());
        points.push_back(segment.end());
    }
    return drawPoints();
}

void appendRoundSnaps(const CurveSegment& arc, AcDb::OsnapMode mode, AcGePoint3dArray& points) {
    if (!arc.isArc())
        return;
    if (mode == AcDb::kOsModeCen)
        points.append(arc.centre());
    if (mode != AcDb::kOsModeQuad)
        return;
    // The quadrants are those of the arc's own axes.
    const AcGeVector3d x = arc.normal().perpVector() * arc.radius();
    const AcGeVector3d y = arc.normal().crossProduct(x);
    for (const AcGeVector3d& out : {x, y, -x, -y}) {
        const AcGePoint3d point = arc.centre() + out;
        if (arc.pointAt(arc.nearestTo(point)).distanceTo(point) <= orv::curveSlack(point))
            points.append(point);
    }
}

} // namespace

Acad::ErrorStatus ORV_SegmentedCurve::subGetGeomExtents(AcDbExtents& extents) const {
    if (m_segments.empty())
        return Acad::eInvalidExtents;
    AcDbExtents box;
    for (const CurveSegment& segment : m_segments)
        segment.addTo(box);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                                       AcDbIntArray&) const {
    for (const AcGePoint3d& vertex : getVertices())
        gripPoints.append(vertex);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                          const AcGeVector3d& offset) {
    return moveVertices(asVector(indices), offset);
}

Acad::ErrorStatus ORV_SegmentedCurve::subGetGripPoints(AcDbGripDataPtrArray& grips, double, int,
                                                       const AcGeVector3d&, int) const {
    orv::GripManager::ScopedCreator creator(*this, grips);
    const std::vector<AcGePoint3d> vertices = getVertices();
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const int index = static_cast<int>(i);
        creator.createPointGrip(vertices[i], [index](AcDbEntity& entity, const AcGeVector3d& offset) {
            if (ORV_SegmentedCurve* curve = ORV_SegmentedCurve::cast(&entity))
                curve->moveHeld(index, offset);
        });
    }
    return Acad::eOk;
}

// While a row of grips is moved, vertices are only noted: moving two neighbours one behind the other could
// bring them together in between.
void ORV_SegmentedCurve::moveHeld(int index, const AcGeVector3d& offset) {
    if (m_held != nullptr)
        m_held->push_back(index);
    else
        moveVertices({index}, offset);
}

Acad::ErrorStatus ORV_SegmentedCurve::subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                                          const AcGeVector3d& offset, int) {
    AcDbVoidPtrArray mine;
    AcDbVoidPtrArray others;
    orv::GripManager::filterMyAppData(database(), gripAppData, mine, others);
    std::vector<int> held;
    struct Holding {
        explicit Holding(std::vector<int>*& place, std::vector<int>& held) : m_place(place), m_before(place) {
            place = &held;
        }
        ~Holding() { m_place = m_before; }
        std::vector<int>*& m_place;
        std::vector<int>* m_before;
    };
    {
        const Holding holding(m_held, held);
        orv::GripManager::onMove(*this, mine, offset);
    }
    return moveVertices(held, offset);
}

Acad::ErrorStatus ORV_SegmentedCurve::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    for (const AcGePoint3d& vertex : getVertices())
        stretchPoints.append(vertex);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                             const AcGeVector3d& offset) {
    return moveVertices(asVector(indices), offset);
}

Acad::ErrorStatus ORV_SegmentedCurve::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker,
                                                        const AcGePoint3d& pickPoint,
                                                        const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                                        AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    AcGePoint3d nearest;
    if (osnapMode == AcDb::kOsModeNear) {
        nearestDistance(pickPoint, false, nearest);
        snapPoints.append(nearest);
        return Acad::eOk;
    }
    if (osnapMode == AcDb::kOsModePerp) {
        if (nearestPerpendicular(lastPoint, nearest))
            snapPoints.append(nearest);
        return Acad::eOk;
    }
    // A circle has neither ends nor a middle.
    const bool hasEnds = !isPeriodic();
    if (osnapMode == AcDb::kOsModeEnd && hasEnds)
        for (const AcGePoint3d& vertex : getVertices())
            snapPoints.append(vertex);
    for (const CurveSegment& segment : m_segments) {
        if (osnapMode == AcDb::kOsModeMid && hasEnds)
            snapPoints.append(segment.pointAt(segment.length() / 2.0));
        appendRoundSnaps(segment, osnapMode, snapPoints);
    }
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::subExplode(AcDbVoidPtrArray& entitySet) const {
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    for (const CurveSegment& segment : m_segments) {
        AcDbEntity* made = orv::newEntityOf(segment);
        takeSettings(*this, *made);
        entitySet.append(made);
    }
    return Acad::eOk;
}

Adesk::Boolean ORV_SegmentedCurve::subWorldDraw(AcGiWorldDraw* worldDraw) {
    drawChain(m_segments, worldDraw->geometry());
    return true;
}
