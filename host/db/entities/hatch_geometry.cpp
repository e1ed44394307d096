#include "acgi.h"
#include "db/entities/entity_parts.h"
#include "db/entities/hatch_picture.h"
#include "db/hatch/hatch_patterns.h"
#include "dbhatch.h"
#include "entities/line.h"
#include "entities/point.h"
#include "gi/plane_arc.h"

#include <algorithm>
#include <cmath>

using namespace embedded;

namespace {

// The way from one plane to another that keeps angles: turned, perhaps mirrored first, scaled, moved.
struct PlaneSimilarity {
    AcGePoint2d origin;
    AcGeVector2d x, y; // where the axes go
    double scale = 1.0;
    double turn = 0.0;
    bool isMirrored = false;
    double elevation = 0.0;

    PlaneSimilarity(const AcGeMatrix3d& matrix, const AcGeVector3d& normal, double height,
                    const AcGeVector3d& newNormal) {
        // The axes go as vectors: as differences of points they would lose what a far place takes.
        const AcGeMatrix3d there = AcGeMatrix3d::planeToWorld(normal);
        const AcGeMatrix3d back = AcGeMatrix3d::worldToPlane(newNormal);
        const AcGePoint3d moved = worldToOwn(newNormal, matrix * ownToWorld(normal, {0.0, 0.0, height}));
        const AcGeVector3d right = back * (matrix * (there * AcGeVector3d::kXAxis));
        const AcGeVector3d up = back * (matrix * (there * AcGeVector3d::kYAxis));
        origin.set(moved.x, moved.y);
        elevation = moved.z;
        x = AcGeVector2d(right.x, right.y);
        y = AcGeVector2d(up.x, up.y);
        scale = x.length();
        turn = x.angle();
        isMirrored = x.x * y.y - x.y * y.x < 0.0;
    }

    AcGeVector2d operator*(const AcGeVector2d& vector) const { return x * vector.x + y * vector.y; }
    AcGePoint2d operator*(const AcGePoint2d& point) const { return origin + *this * point.asVector(); }
    double angle(double told) const { return isMirrored ? turn - told : turn + told; }
};

void transformEdge(const PlaneSimilarity& way, HatchEdge& edge) {
    edge.from = way * edge.from;
    if (edge.kind == HatchEdgeKind::kLine)
        edge.to = way * edge.to;
    else if (edge.kind == HatchEdgeKind::kEllipse)
        edge.to = AcGePoint2d::kOrigin + way * edge.to.asVector();
    for (AcGePoint2d& control : edge.controls)
        control = way * control;
    edge.radius *= way.scale;
    if (edge.kind == HatchEdgeKind::kArc) {
        // The angles of a clockwise arc are told the other way round, and a mirrored one changes its way.
        const double turn = edge.isCounterClockwise == way.isMirrored ? -way.turn : way.turn;
        edge.startAngle += turn;
        edge.endAngle += turn;
    }
    if (way.isMirrored)
        edge.isCounterClockwise = !edge.isCounterClockwise;
}

void transformFields(const PlaneSimilarity& way, HatchFields& f) {
    for (HatchLoop& loop : f.loops) {
        for (AcGePoint2d& vertex : loop.vertices)
            vertex = way * vertex;
        if (way.isMirrored)
            for (double& bulge : loop.bulges)
                bulge = -bulge;
        for (HatchEdge& edge : loop.edges)
            transformEdge(way, edge);
    }
    for (HatchFamily& family : f.families) {
        family.angle = wholeTurns(way.angle(family.angle));
        family.base = way * family.base;
        family.offset = way * family.offset;
        for (double& dash : family.dashes)
            dash *= way.scale;
    }
    f.angle = wholeTurns(way.angle(f.angle));
    f.scale *= way.scale;
    f.space *= way.scale;
    for (AcGePoint2d& seed : f.seeds)
        seed = way * seed;
    f.elevation = way.elevation;
}

// The entity's own colour and layer for a hatch that a drawable makes only to draw it: nobody asks it for its
// attributes then.
class OwnTraits {
public:
    OwnTraits(const AcDbHatch& hatch, AcGiSubEntityTraits& traits)
        : m_traits(traits), m_colour(traits.trueColor()), m_layer(traits.layerId()),
          m_fill(traits.fillType()) {
        if (!hatch.objectId().isNull())
            return;
        if (hatch.colorIndex() != kByLayer)
            traits.setColor(hatch.colorIndex());
        if (!hatch.layerId().isNull())
            traits.setLayer(hatch.layerId());
    }
    ~OwnTraits() {
        m_traits.setTrueColor(m_colour);
        m_traits.setLayer(m_layer);
        m_traits.setFillType(m_fill);
    }

private:
    static const Adesk::UInt16 kByLayer = 256;
    AcGiSubEntityTraits& m_traits;
    AcCmEntityColor m_colour;
    AcDbObjectId m_layer;
    AcGiFillType m_fill;
};

// Draws what lies in a hatch's plane. True when whoever draws is to stop.
class PlaneDraw {
public:
    PlaneDraw(AcGiWorldGeometry& geometry, const HatchFields& fields)
        : m_geometry(geometry), m_toWorld(AcGeMatrix3d::planeToWorld(fields.normal)),
          m_elevation(fields.elevation) {}

    bool lines(const std::vector<HatchLine>& lines) {
        for (const HatchLine& line : lines) {
            const AcGePoint3d points[] = {lifted(line.from), lifted(line.to)};
            if (m_geometry.polyline(2, points))
                return true;
        }
        return false;
    }

    bool polygon(const HatchRing& ring) {
        m_corners.clear();
        for (const AcGePoint2d& point : ring)
            m_corners.push_back(lifted(point));
        return m_geometry.polygon(static_cast<Adesk::UInt32>(m_corners.size()), m_corners.data());
    }

    bool polygons(const std::vector<HatchRing>& rings) {
        return std::any_of(rings.begin(), rings.end(),
                           [this](const HatchRing& ring) { return polygon(ring); });
    }

    // The loops, one by one, as far as there are not too many points.
    bool loops(const std::vector<HatchLoop>& loops) {
        std::size_t points = 0;
        for (const HatchLoop& loop : loops) {
            points += pointsOf(loop);
            if (points > kMostHatchPoints)
                return false;
            if (polygon(ringOf(loop)))
                return true;
        }
        return false;
    }

private:
    AcGePoint3d lifted(const AcGePoint2d& point) const {
        return m_toWorld * AcGePoint3d(point.x, point.y, m_elevation);
    }

    AcGiWorldGeometry& m_geometry;
    AcGeMatrix3d m_toWorld;
    double m_elevation;
    std::vector<AcGePoint3d> m_corners;
};

} // namespace

const HatchPicture& AcDbHatch::picture() const {
    if (m_picture == nullptr)
        m_picture = std::make_unique<HatchPicture>(evaluate(*m_fields, HatchLimits()));
    return *m_picture;
}

Acad::ErrorStatus AcDbHatch::evaluateHatch(bool bUnderestimateNumLines) {
    assertReadEnabled();
    HatchLimits limits;
    if (bUnderestimateNumLines)
        limits.lines *= 10;
    m_picture = std::make_unique<HatchPicture>(evaluate(*m_fields, limits));
    return m_picture->status;
}

int AcDbHatch::numHatchLines() const {
    assertReadEnabled();
    return m_picture == nullptr ? 0 : static_cast<int>(m_picture->lines.size());
}

Acad::ErrorStatus AcDbHatch::getHatchLineDataAt(int lineIndex, AcGePoint2d& startPoint,
                                                AcGePoint2d& endPoint) const {
    if (lineIndex < 0 || lineIndex >= numHatchLines())
        return Acad::eInvalidIndex;
    const HatchLine& line = m_picture->lines[static_cast<std::size_t>(lineIndex)];
    startPoint = line.from;
    endPoint = line.to;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getHatchLinesData(AcGePoint2dArray& startPoints,
                                               AcGePoint2dArray& endPoints) const {
    for (int i = 0; i < numHatchLines(); ++i) {
        startPoints.append(m_picture->lines[static_cast<std::size_t>(i)].from);
        endPoints.append(m_picture->lines[static_cast<std::size_t>(i)].to);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getArea(double& area) const {
    assertReadEnabled();
    std::vector<HatchRing> rings, pieces;
    Acad::ErrorStatus es = ringsOf(*m_fields, rings);
    if (es == Acad::eOk)
        es = hatchPieces(rings, m_fields->style, pieces);
    if (es != Acad::eOk)
        return es;
    area = 0.0;
    for (const HatchRing& piece : pieces)
        area += signedArea(piece);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d normal = m_fields->normal;
    if (!keepsCirclesRound(xform, normal) || !transformsPlane(xform, normal))
        return Acad::eCannotScaleNonUniformly;
    changed();
    const PlaneSimilarity way(xform, m_fields->normal, m_fields->elevation, normal);
    transformFields(way, *m_fields);
    m_fields->normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subGetGeomExtents(AcDbExtents& extents) const {
    std::vector<HatchRing> rings;
    if (ringsOf(*m_fields, rings) != Acad::eOk)
        return Acad::eInvalidExtents;
    AcDbExtents box;
    for (const HatchRing& ring : rings)
        for (const AcGePoint2d& point : ring)
            box.addPoint(ownToWorld(m_fields->normal, {point.x, point.y, m_fields->elevation}));
    if (box.isEmpty())
        return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subExplode(AcDbVoidPtrArray& entitySet) const {
    const HatchPicture& shown = picture();
    if (shown.lines.empty())
        return Acad::eCannotExplodeEntity;
    AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_fields->normal);
    for (const HatchLine& line : shown.lines) {
        const AcGePoint3d from = toWorld * AcGePoint3d(line.from.x, line.from.y, m_fields->elevation);
        const AcGePoint3d to = toWorld * AcGePoint3d(line.to.x, line.to.y, m_fields->elevation);
        AcDbEntity* made = nullptr;
        if (from == to)
            made = new AcDbPoint(from);
        else
            made = new AcDbLine(from, to);
        takeSettings(*this, *made);
        entitySet.append(made);
    }
    return Acad::eOk;
}

Adesk::Boolean AcDbHatch::subWorldDraw(AcGiWorldDraw* worldDraw) {
    const HatchPicture& shown = picture();
    AcGiSubEntityTraits& traits = worldDraw->subEntityTraits();
    const OwnTraits own(*this, traits);
    PlaneDraw draw(worldDraw->geometry(), *m_fields);
    if (shown.status != Acad::eOk) {
        // A hatch that is too dense, say, is to be seen all the same, and whoever draws is to know of it.
        if (draw.loops(m_fields->loops))
            return true;
        throw shown.status;
    }
    if (draw.lines(shown.lines))
        return true;
    if (!shown.pieces.empty())
        traits.setFillType(kAcGiFillAlways);
    draw.polygons(shown.pieces);
    return true;
}
