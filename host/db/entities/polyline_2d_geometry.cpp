#include "acgi.h"
#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/entities/owned_chain.h"
#include "dbents.h"

using namespace embedded;

namespace {

// The vertices that the curve runs through.
class SeenVertices {
public:
    explicit SeenVertices(const OwnedChain& chain, bool isSpline) : m_all(chain) {
        for (const AcDb2dVertex* vertex : m_all.parts())
            if (!isSpline || !vertex->isSplineFrame())
                m_seen.push_back(vertex);
        // A spline that nobody has fitted yet is its frame.
        if (m_seen.empty())
            m_seen = m_all.parts();
    }
    std::size_t count() const { return m_seen.size(); }
    // Behind the last comes the first.
    const AcDb2dVertex& at(std::size_t index) const { return *m_seen[index % m_seen.size()]; }

private:
    PartsToRead<AcDb2dVertex> m_all;
    std::vector<const AcDb2dVertex*> m_seen;
};

bool isSpline(const AcDb2dPolyline& polyline) {
    return polyline.polyType() == AcDb::k2dQuadSplinePoly || polyline.polyType() == AcDb::k2dCubicSplinePoly;
}

// The path, and the widths of each of its pieces.
CurvePath pathOf(const AcDb2dPolyline& polyline, const OwnedChain& chain, std::vector<WidthPair>* widths) {
    const SeenVertices vertices(chain, isSpline(polyline));
    const std::size_t count = vertices.count();
    CurvePath path;
    path.isClosed = polyline.isClosed();
    const std::size_t pieces = count < 2 ? 0 : path.isClosed ? count : count - 1;
    for (std::size_t i = 0; i < pieces; ++i) {
        const AcDb2dVertex& vertex = vertices.at(i);
        path.appendBulged(polyline.vertexPosition(vertex), polyline.vertexPosition(vertices.at(i + 1)),
                          vertex.bulge(), polyline.normal());
        if (widths != nullptr)
            widths->push_back({vertex.startWidth(), vertex.endWidth()});
    }
    return path;
}

bool anyWidth(const std::vector<WidthPair>& widths) {
    for (const WidthPair& width : widths)
        if (width.start != 0.0 || width.end != 0.0)
            return true;
    return false;
}

} // namespace

bool AcDb2dPolyline::getPath(CurvePath& path) const {
    path = pathOf(*this, *m_vertices, nullptr);
    return !path.segments.empty();
}

AcGeVector3d AcDb2dPolyline::thicknessVector() const { return m_fields.normal * m_fields.thickness; }

// Arcs and widths need a transform that is the same in all directions of the plane.
bool AcDb2dPolyline::mayTransform(const AcGeMatrix3d& xform) const {
    bool round = m_fields.startWidth != 0.0 || m_fields.endWidth != 0.0;
    const PartsToRead<AcDb2dVertex> vertices(*m_vertices);
    for (const AcDb2dVertex* vertex : vertices.parts())
        round = round || vertex->bulge() != 0.0 || vertex->startWidth() != 0.0 || vertex->endWidth() != 0.0;
    return !round || keepsCirclesRound(xform, m_fields.normal);
}

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d normal = m_fields.normal;
    if (!transformsPlane(xform, normal) || !mayTransform(xform))
        return Acad::eCannotScaleNonUniformly;
    const PartsToWrite<AcDb2dVertex> vertices(*m_vertices);
    if (vertices.status() != Acad::eOk)
        return vertices.status();
    assertWriteEnabled();
    const double widthFactor = (xform * m_fields.normal.perpVector()).length();
    for (AcDb2dVertex* vertex : vertices.parts()) {
        const AcGePoint3d own = worldToOwn(normal, xform * vertexPosition(*vertex));
        vertex->setPosition({own.x, own.y, vertex->position().z});
        if (vertex->startWidth() != 0.0 || vertex->endWidth() != 0.0) {
            vertex->setStartWidth(vertex->startWidth() * widthFactor);
            vertex->setEndWidth(vertex->endWidth() * widthFactor);
        }
    }
    const AcGePoint3d base = ownToWorld(m_fields.normal, {0.0, 0.0, m_fields.elevation});
    m_fields.thickness = transformedThickness(xform, m_fields.normal, normal, m_fields.thickness);
    m_fields.elevation = worldToOwn(normal, xform * base).z;
    m_fields.normal = normal;
    m_fields.startWidth *= widthFactor;
    m_fields.endWidth *= widthFactor;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                                   AcDbIntArray&) const {
    const PartsToRead<AcDb2dVertex> vertices(*m_vertices);
    for (const AcDb2dVertex* vertex : vertices.parts())
        gripPoints.append(vertexPosition(*vertex));
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                      const AcGeVector3d& offset) {
    {
        const PartsToWrite<AcDb2dVertex> vertices(*m_vertices);
        if (vertices.status() != Acad::eOk)
            return vertices.status();
        const int count = static_cast<int>(vertices.parts().size());
        if (!indicesAreBelow(indices, count))
            return Acad::eInvalidIndex;
        if (indices.length() != count) {
            assertWriteEnabled(false);
            // A single vertex stays in the plane.
            const AcGeVector3d own = AcGeMatrix3d::worldToPlane(m_fields.normal) * offset;
            for (const int index : indices) {
                AcDb2dVertex& vertex = *vertices.parts()[static_cast<std::size_t>(index)];
                vertex.setPosition(vertex.position() + AcGeVector3d(own.x, own.y, 0.0));
            }
            return Acad::eOk;
        }
    }
    return transformBy(AcGeMatrix3d::translation(offset));
}

Acad::ErrorStatus AcDb2dPolyline::subExplode(AcDbVoidPtrArray& entitySet) const {
    return explodePath(pathOf(*this, *m_vertices, nullptr), m_fields.normal, m_fields.thickness, *this,
                       entitySet);
}

Acad::ErrorStatus AcDb2dPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    std::vector<WidthPair> widths;
    pathOf(*this, *m_vertices, &widths);
    return anyWidth(widths) ? wideExtents(*this, thicknessVector(), extents)
                            : AcDbCurve::subGetGeomExtents(extents);
}

Adesk::Boolean AcDb2dPolyline::subWorldDraw(AcGiWorldDraw* worldDraw) {
    std::vector<WidthPair> widths;
    const CurvePath path = pathOf(*this, *m_vertices, &widths);
    if (!anyWidth(widths))
        return AcDbCurve::subWorldDraw(worldDraw);
    worldDraw->subEntityTraits().setThickness(m_fields.thickness);
    drawWidePath(path, widths, m_fields.normal, *worldDraw);
    return true;
}
