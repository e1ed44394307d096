#include "dbents.h"

#include "acgi.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "geplane.h"

using namespace embedded;

AcDbPoint::AcDbPoint() = default;
AcDbPoint::AcDbPoint(const AcGePoint3d& position) { m_fields.position = position; }

AcGePoint3d AcDbPoint::position() const { return readField(*this, m_fields.position); }

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& point) {
    return setField(*this, m_fields.position, point);
}

double AcDbPoint::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDbPoint::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

AcGeVector3d AcDbPoint::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    return setField(*this, m_fields.normal, normal.normal());
}

double AcDbPoint::ecsRotation() const { return readField(*this, m_fields.rotation); }

Acad::ErrorStatus AcDbPoint::setEcsRotation(double rotation) {
    return setField(*this, m_fields.rotation, rotation);
}

void AcDbPoint::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbPoint::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    plane.set(m_fields.position, m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    AcGeVector3d normal = m_fields.normal;
    transformsPlane(xform, normal);
    m_fields.thickness = transformedThickness(xform, m_fields.normal, normal, m_fields.thickness);
    m_fields.normal = normal;
    m_fields.position.transformBy(xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                              AcDbIntArray&) const {
    gripPoints.append(m_fields.position);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, 1))
        return Acad::eInvalidIndex;
    return indices.isEmpty() ? Acad::eOk : setPosition(m_fields.position + offset);
}

Acad::ErrorStatus AcDbPoint::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    box.addPoint(m_fields.position);
    box.expandBy(m_fields.normal * m_fields.thickness);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&,
                                               AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    if (osnapMode == AcDb::kOsModeNode || osnapMode == AcDb::kOsModeNear)
        snapPoints.append(m_fields.position);
    return Acad::eOk;
}

Adesk::Boolean AcDbPoint::subWorldDraw(AcGiWorldDraw* worldDraw) {
    const AcGePoint3d points[] = {m_fields.position,
                                  m_fields.position + m_fields.normal * m_fields.thickness};
    worldDraw->geometry().polyline(2, points);
    return true;
}

template <class F, class Stream>
void AcDbPoint::fileFields(F& f, Stream& s) {
    s.point(f.position);
    s.thickness(f.thickness);
    s.extrusion(f.normal);
    s.real(f.rotation);
}

Acad::ErrorStatus AcDbPoint::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer),
                       [this](FieldWriter& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbPoint::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbEntity::dwgInFields(filer), [this](FieldReader& in) {
        Fields f;
        fileFields(f, in);
        if (in.ok())
            m_fields = f;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
