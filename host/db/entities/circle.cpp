#include "dbents.h"

#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "geplane.h"

using namespace embedded;

AcDbCircle::AcDbCircle() = default;

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
    if (!normal.isZeroLength())
        m_fields.normal = normal.normal();
    m_fields.centre = worldToOwn(m_fields.normal, center);
    if (radius > 0.0)
        m_fields.radius = radius;
}

AcGePoint3d AcDbCircle::center() const {
    assertReadEnabled();
    return ownToWorld(m_fields.normal, m_fields.centre);
}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& point) {
    return setField(*this, m_fields.centre, worldToOwn(m_fields.normal, point));
}

double AcDbCircle::radius() const { return readField(*this, m_fields.radius); }

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    if (!(radius > 0.0))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.radius, radius);
}

double AcDbCircle::circumference() const { return kTwoPi * radius(); }

double AcDbCircle::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDbCircle::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

AcGeVector3d AcDbCircle::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    assertWriteEnabled();
    const AcGePoint3d centre = center();
    m_fields.normal = normal.normal();
    m_fields.centre = worldToOwn(m_fields.normal, centre);
    return Acad::eOk;
}

void AcDbCircle::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbCircle::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    plane.set(center(), m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

bool AcDbCircle::getPath(CurvePath& path) const {
    PlaneArc arc;
    arc.centre = ownToWorld(m_fields.normal, m_fields.centre);
    arc.normal = m_fields.normal;
    arc.xAxis = m_fields.normal.perpVector();
    arc.radius = m_fields.radius;
    arc.sweep = kTwoPi;
    path.segments = {PathSegment::round(arc, 0.0, kTwoPi)};
    path.isClosed = true;
    return true;
}

AcGeVector3d AcDbCircle::thicknessVector() const { return m_fields.normal * m_fields.thickness; }

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& xform) {
    CurvePath path;
    getPath(path);
    PlaneArc arc = path.segments.front().arc;
    AcGeVector3d normal = m_fields.normal;
    if (!arc.transformBy(xform) || !transformsPlane(xform, normal))
        return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    m_fields.thickness = transformedThickness(xform, m_fields.normal, normal, m_fields.thickness);
    m_fields.normal = normal;
    m_fields.centre = worldToOwn(normal, arc.centre);
    m_fields.radius = arc.radius;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                               AcDbIntArray&) const {
    CurvePath path;
    getPath(path);
    gripPoints.append(center());
    for (int quadrant = 0; quadrant < 4; ++quadrant)
        gripPoints.append(path.segments.front().arc.pointAt(kPi / 2.0 * quadrant));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, 5))
        return Acad::eInvalidIndex;
    if (indices.isEmpty())
        return Acad::eOk;
    if (indices.contains(0))
        return transformBy(AcGeMatrix3d::translation(offset));
    CurvePath path;
    getPath(path);
    const AcGePoint3d held = path.segments.front().arc.pointAt(kPi / 2.0 * (indices.last() - 1)) + offset;
    const double radius = held.distanceTo(center());
    return radius > 0.0 ? setRadius(radius) : Acad::eDegenerateGeometry;
}

Acad::ErrorStatus AcDbCircle::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    stretchPoints.append(center());
    return Acad::eOk;
}

template <class F, class Stream>
void AcDbCircle::fileFields(F& f, Stream& s) {
    s.point(f.centre);
    s.real(f.radius);
    s.thickness(f.thickness);
    s.extrusion(f.normal);
}

Acad::ErrorStatus AcDbCircle::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer),
                       [this](FieldWriter& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbCircle::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbEntity::dwgInFields(filer), [this](FieldReader& in) {
        Fields f;
        fileFields(f, in);
        if (in.ok())
            m_fields = f;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
