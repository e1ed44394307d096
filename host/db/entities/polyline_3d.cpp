#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/entities/owned_chain.h"
#include "db/field_stream.h"
#include "dbents.h"

using namespace embedded;

namespace {

enum SplineFlag : Adesk::UInt8 { kQuadraticFlag = 1, kCubicFlag = 2 };
constexpr Adesk::UInt8 kClosedFlag = 1;

} // namespace

AcDb3dPolyline::AcDb3dPolyline() = default;

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, AcGePoint3dArray& vertices, Adesk::Boolean closed) {
    m_fields.splineFlags = type == AcDb::k3dQuadSplinePoly    ? kQuadraticFlag
                           : type == AcDb::k3dCubicSplinePoly ? kCubicFlag
                                                              : 0;
    m_fields.flags = closed ? kClosedFlag : 0;
    for (const AcGePoint3d& point : vertices)
        m_vertices->keepLoose(std::make_unique<AcDb3dPolylineVertex>(point));
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex) {
    return append(id, vertex);
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* vertex) {
    AcDbObjectId id;
    return append(id, vertex);
}

Acad::ErrorStatus AcDb3dPolyline::insertVertexAt(AcDbObjectId& id, AcDbObjectId indexVertex,
                                                 AcDb3dPolylineVertex* vertex) {
    return insertBehind(id, indexVertex, vertex);
}

Acad::ErrorStatus AcDb3dPolyline::openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id,
                                             AcDb::OpenMode mode, bool openErased) const {
    vertex = nullptr;
    const Acad::ErrorStatus es = refuseForeign(id);
    return es == Acad::eOk ? acdbOpenObject(vertex, id, mode, openErased) : es;
}

AcDb::Poly3dType AcDb3dPolyline::polyType() const {
    assertReadEnabled();
    return (m_fields.splineFlags & kQuadraticFlag) != 0 ? AcDb::k3dQuadSplinePoly
           : (m_fields.splineFlags & kCubicFlag) != 0   ? AcDb::k3dCubicSplinePoly
                                                        : AcDb::k3dSimplePoly;
}

Adesk::Boolean AcDb3dPolyline::isClosed() const {
    assertReadEnabled();
    return (m_fields.flags & kClosedFlag) != 0;
}

Acad::ErrorStatus AcDb3dPolyline::setClosed(bool closed) {
    return setField(*this, m_fields.flags,
                    static_cast<Adesk::UInt8>((m_fields.flags & ~kClosedFlag) | (closed ? kClosedFlag : 0)));
}

Acad::ErrorStatus AcDb3dPolyline::makeClosed() { return setClosed(true); }
Acad::ErrorStatus AcDb3dPolyline::makeOpen() { return setClosed(false); }

bool AcDb3dPolyline::getPath(CurvePath& path) const {
    const PartsToRead<AcDb3dPolylineVertex> vertices(*m_vertices);
    std::vector<AcGePoint3d> all;
    std::vector<AcGePoint3d> seen;
    for (const AcDb3dPolylineVertex* vertex : vertices.parts()) {
        all.push_back(vertex->position());
        if (!vertex->isSplineFrame())
            seen.push_back(vertex->position());
    }
    // A spline that nobody has fitted yet is its frame.
    const std::vector<AcGePoint3d>& points = polyType() == AcDb::k3dSimplePoly || seen.empty() ? all : seen;
    path.isClosed = isClosed();
    const std::size_t pieces = points.size() < 2 ? 0 : path.isClosed ? points.size() : points.size() - 1;
    for (std::size_t i = 0; i < pieces; ++i)
        path.appendBulged(points[i], points[(i + 1) % points.size()], 0.0, AcGeVector3d::kZAxis);
    return !path.segments.empty();
}

Acad::ErrorStatus AcDb3dPolyline::subTransformBy(const AcGeMatrix3d& xform) {
    const PartsToWrite<AcDb3dPolylineVertex> vertices(*m_vertices);
    if (vertices.status() != Acad::eOk)
        return vertices.status();
    assertWriteEnabled(false);
    for (AcDb3dPolylineVertex* vertex : vertices.parts())
        vertex->setPosition(xform * vertex->position());
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                                   AcDbIntArray&) const {
    const PartsToRead<AcDb3dPolylineVertex> vertices(*m_vertices);
    for (const AcDb3dPolylineVertex* vertex : vertices.parts())
        gripPoints.append(vertex->position());
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                      const AcGeVector3d& offset) {
    const PartsToWrite<AcDb3dPolylineVertex> vertices(*m_vertices);
    if (vertices.status() != Acad::eOk)
        return vertices.status();
    if (!indicesAreBelow(indices, static_cast<int>(vertices.parts().size())))
        return Acad::eInvalidIndex;
    assertWriteEnabled(false);
    for (const int index : indices) {
        AcDb3dPolylineVertex& vertex = *vertices.parts()[static_cast<std::size_t>(index)];
        vertex.setPosition(vertex.position() + offset);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subExplode(AcDbVoidPtrArray& entitySet) const {
    CurvePath path;
    getPath(path);
    return explodePath(path, AcGeVector3d::kZAxis, 0.0, *this, entitySet);
}

Acad::ErrorStatus AcDb3dPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbCurve::dwgOutFields(filer), [this, filer](FieldWriter& out) {
        out.byte(m_fields.splineFlags);
        out.byte(m_fields.flags);
        m_vertices->write(*filer);
    });
}

Acad::ErrorStatus AcDb3dPolyline::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es =
        readFields(filer, AcDbCurve::dwgInFields(filer), [this, filer](FieldReader& in) {
            Fields f;
            in.byte(f.splineFlags);
            in.byte(f.flags);
            m_vertices->read(*filer);
            if (in.ok())
                m_fields = f;
        });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
