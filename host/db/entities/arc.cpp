#include "dbents.h"

#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "geplane.h"

using namespace embedded;

AcDbArc::AcDbArc() = default;

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle) {
    if (!normal.isZeroLength())
        m_fields.normal = normal.normal();
    m_fields.centre = worldToOwn(m_fields.normal, center);
    if (radius > 0.0)
        m_fields.radius = radius;
    m_fields.startAngle = startAngle;
    m_fields.endAngle = endAngle;
}

AcGePoint3d AcDbArc::center() const {
    assertReadEnabled();
    return ownToWorld(m_fields.normal, m_fields.centre);
}

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& point) {
    return setField(*this, m_fields.centre, worldToOwn(m_fields.normal, point));
}

double AcDbArc::radius() const { return readField(*this, m_fields.radius); }

Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    if (!(radius > 0.0))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.radius, radius);
}

double AcDbArc::startAngle() const { return readField(*this, m_fields.startAngle); }

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) { return setField(*this, m_fields.startAngle, angle); }

double AcDbArc::endAngle() const { return readField(*this, m_fields.endAngle); }

Acad::ErrorStatus AcDbArc::setEndAngle(double angle) { return setField(*this, m_fields.endAngle, angle); }

double AcDbArc::totalAngle() const {
    assertReadEnabled();
    const double angle = wholeTurns(m_fields.endAngle - m_fields.startAngle);
    return angle > 0.0 ? angle : kTwoPi;
}

double AcDbArc::length() const { return totalAngle() * m_fields.radius; }

double AcDbArc::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDbArc::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

AcGeVector3d AcDbArc::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    assertWriteEnabled();
    const AcGePoint3d centre = center();
    m_fields.normal = normal.normal();
    m_fields.centre = worldToOwn(m_fields.normal, centre);
    return Acad::eOk;
}

void AcDbArc::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbArc::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    plane.set(center(), m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

PlaneArc AcDbArc::geometry() const {
    PlaneArc arc;
    arc.centre = ownToWorld(m_fields.normal, m_fields.centre);
    arc.normal = m_fields.normal;
    arc.xAxis = m_fields.normal.perpVector();
    arc.radius = m_fields.radius;
    arc.sweep = totalAngle();
    arc.xAxis = arc.tangentAt(m_fields.startAngle - kPi / 2.0);
    return arc;
}

void AcDbArc::setGeometry(const PlaneArc& arc) {
    PlaneArc zero = arc;
    zero.xAxis = arc.normal.perpVector();
    m_fields.normal = arc.normal;
    m_fields.centre = worldToOwn(arc.normal, arc.centre);
    m_fields.radius = arc.radius;
    m_fields.startAngle = zero.angleOf(arc.pointAt(0.0));
    m_fields.endAngle = wholeTurns(m_fields.startAngle + arc.sweep);
}

Acad::ErrorStatus AcDbArc::reverseCurve() {
    assertWriteEnabled();
    PlaneArc arc = geometry();
    arc.xAxis = (arc.pointAt(arc.sweep) - arc.centre) / arc.radius;
    arc.normal.negate();
    setGeometry(arc);
    m_fields.thickness = -m_fields.thickness;
    return Acad::eOk;
}

bool AcDbArc::getPath(CurvePath& path) const {
    const PlaneArc arc = geometry();
    path.segments = {PathSegment::round(arc, m_fields.startAngle, m_fields.startAngle + arc.sweep)};
    return true;
}

AcGeVector3d AcDbArc::thicknessVector() const { return m_fields.normal * m_fields.thickness; }

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& xform) {
    PlaneArc arc = geometry();
    AcGeVector3d normal = m_fields.normal;
    if (!arc.transformBy(xform) || !transformsPlane(xform, normal))
        return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    m_fields.thickness = transformedThickness(xform, m_fields.normal, normal, m_fields.thickness);
    arc.normal = normal;
    setGeometry(arc);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                            AcDbIntArray&) const {
    const PlaneArc arc = geometry();
    gripPoints.append(arc.pointAt(0.0));
    gripPoints.append(arc.pointAt(arc.sweep));
    gripPoints.append(arc.pointAt(arc.sweep / 2.0));
    gripPoints.append(arc.centre);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, 4))
        return Acad::eInvalidIndex;
    if (indices.isEmpty())
        return Acad::eOk;
    // Both ends held, as a stretch over the whole of it does, take the middle along.
    if (indices.contains(3) || (indices.contains(0) && indices.contains(1)))
        return transformBy(AcGeMatrix3d::translation(offset));
    const PlaneArc before = geometry();
    AcGePoint3d points[] = {before.pointAt(0.0), before.pointAt(before.sweep),
                            before.pointAt(before.sweep / 2.0)};
    for (int i = 0; i < 3; ++i)
        if (indices.contains(i))
            points[i] += offset;
    PlaneArc arc;
    if (!PlaneArc::through(points[0], points[2], points[1], arc))
        return Acad::eDegenerateGeometry;
    assertWriteEnabled();
    // An arc in the same plane keeps its normal: bent to the other side it runs from its old end to its old
    // start.
    if (arc.normal.dotProduct(before.normal) < 0.0) {
        arc.xAxis = (points[1] - arc.centre).normal();
        arc.normal.negate();
    }
    if (arc.normal.isParallelTo(before.normal))
        arc.normal = before.normal;
    setGeometry(arc);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    const PlaneArc arc = geometry();
    stretchPoints.append(arc.pointAt(0.0));
    stretchPoints.append(arc.pointAt(arc.sweep));
    return Acad::eOk;
}

template <class F, class Stream>
void AcDbArc::fileFields(F& f, Stream& s) {
    s.point(f.centre);
    s.real(f.radius);
    s.thickness(f.thickness);
    s.extrusion(f.normal);
    s.real(f.startAngle);
    s.real(f.endAngle);
}

Acad::ErrorStatus AcDbArc::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer),
                       [this](FieldWriter& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbArc::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbEntity::dwgInFields(filer), [this](FieldReader& in) {
        Fields f;
        fileFields(f, in);
        if (in.ok())
            m_fields = f;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}

namespace embedded {

AcDbArc* newArc(const PlaneArc& arc) {
    PlaneArc zero = arc;
    zero.xAxis = arc.normal.perpVector();
    const double start = zero.angleOf(arc.pointAt(0.0));
    return new AcDbArc(arc.centre, arc.normal, arc.radius, start, wholeTurns(start + arc.sweep));
}

} // namespace embedded
