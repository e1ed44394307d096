#include "acgi.h"
#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "dbents.h"
#include "dbpl.h"

#include <algorithm>

using namespace embedded;

std::size_t AcDbPolyline::segmentCount() const {
    const std::size_t points = m_fields.points.size();
    return points < 2 ? 0 : isClosed() ? points : points - 1;
}

void AcDbPolyline::appendSegment(std::size_t index, CurvePath& path) const {
    const AcGePoint3d from = toWorld(m_fields.points[index]);
    const AcGePoint3d to = toWorld(m_fields.points[(index + 1) % m_fields.points.size()]);
    const double bulge = m_fields.bulges.empty() ? 0.0 : m_fields.bulges[index];
    path.appendBulged(from, to, bulge, m_fields.normal, static_cast<double>(index));
}

bool AcDbPolyline::getPath(CurvePath& path) const {
    for (std::size_t i = 0; i < segmentCount(); ++i)
        appendSegment(i, path);
    path.isClosed = isClosed();
    return !path.segments.empty();
}

AcGeVector3d AcDbPolyline::thicknessVector() const { return m_fields.normal * m_fields.thickness; }

Adesk::Boolean AcDbPolyline::drawSegments(const AcGiGeometry& geometry, unsigned int from,
                                          unsigned int count) const {
    assertReadEnabled();
    CurvePath path;
    const std::size_t all = segmentCount();
    const std::size_t stop =
        count == 0 || count > all - std::min<std::size_t>(from, all) ? all : from + count;
    for (std::size_t i = from; i < stop; ++i)
        appendSegment(i, path);
    return drawPath(path, nullptr, false, geometry);
}

Acad::ErrorStatus AcDbPolyline::reverseCurve() {
    assertWriteEnabled();
    Fields& f = m_fields;
    std::reverse(f.points.begin(), f.points.end());
    // The segment behind a vertex is the one that was in front of it; that of the last vertex stays the
    // closing one.
    if (!f.bulges.empty()) {
        std::reverse(f.bulges.begin(), f.bulges.end() - 1);
        for (double& bulge : f.bulges)
            bulge = -bulge;
    }
    if (!f.widths.empty()) {
        std::reverse(f.widths.begin(), f.widths.end() - 1);
        for (Widths& widths : f.widths)
            std::swap(widths.start, widths.end);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d normal = m_fields.normal;
    if (!transformsPlane(xform, normal))
        return Acad::eCannotScaleNonUniformly;
    if ((hasBulges() || hasWidth()) && !keepsCirclesRound(xform, m_fields.normal))
        return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    const AcGeVector3d across = m_fields.normal.perpVector();
    const double widthFactor = (xform * across).length();
    m_fields.thickness = transformedThickness(xform, m_fields.normal, normal, m_fields.thickness);
    std::vector<AcGePoint3d> points;
    for (const AcGePoint2d& point : m_fields.points)
        points.push_back(xform * toWorld(point));
    const AcGePoint3d base = worldToOwn(normal, xform * toWorld(AcGePoint2d()));
    for (std::size_t i = 0; i < points.size(); ++i) {
        const AcGePoint3d own = worldToOwn(normal, points[i]);
        m_fields.points[i].set(own.x, own.y);
    }
    m_fields.normal = normal;
    m_fields.elevation = base.z;
    m_fields.constantWidth *= widthFactor;
    for (Widths& widths : m_fields.widths) {
        widths.start *= widthFactor;
        widths.end *= widthFactor;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                                 AcDbIntArray&) const {
    for (const AcGePoint2d& point : m_fields.points)
        gripPoints.append(toWorld(point));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, static_cast<int>(m_fields.points.size())))
        return Acad::eInvalidIndex;
    if (static_cast<std::size_t>(indices.length()) == m_fields.points.size())
        return transformBy(AcGeMatrix3d::translation(offset));
    assertWriteEnabled();
    // A single vertex stays in the plane.
    const AcGeVector3d own = AcGeMatrix3d::worldToPlane(m_fields.normal) * offset;
    for (const int index : indices)
        m_fields.points[static_cast<std::size_t>(index)] += AcGeVector2d(own.x, own.y);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subExplode(AcDbVoidPtrArray& entitySet) const {
    CurvePath path;
    getPath(path);
    return explodePath(path, m_fields.normal, m_fields.thickness, *this, entitySet);
}
