#include "entities/solid.h"

#include "acgi.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "geplane.h"

using namespace embedded;

AcDbSolid::AcDbSolid() = default;

AcDbSolid::AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
                     const AcGePoint3d& pt3) {
    int i = 0;
    for (const AcGePoint3d& point : {pt0, pt1, pt2, pt3})
        m_fields.corners[i++].set(point.x, point.y);
    m_fields.elevation = pt0.z;
}

AcDbSolid::AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2)
    : AcDbSolid(pt0, pt1, pt2, pt2) {}

AcGePoint3d AcDbSolid::cornerAt(int index) const {
    const AcGePoint2d& corner = m_fields.corners[index];
    return ownToWorld(m_fields.normal, {corner.x, corner.y, m_fields.elevation});
}

Acad::ErrorStatus AcDbSolid::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    assertReadEnabled();
    if (index >= kCorners)
        return Acad::eInvalidIndex;
    point = cornerAt(index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::setPointAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index >= kCorners)
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    const AcGePoint3d own = worldToOwn(m_fields.normal, point);
    m_fields.corners[index].set(own.x, own.y);
    m_fields.elevation = own.z;
    return Acad::eOk;
}

double AcDbSolid::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDbSolid::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

AcGeVector3d AcDbSolid::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbSolid::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    return setField(*this, m_fields.normal, normal.normal());
}

void AcDbSolid::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbSolid::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    plane.set(cornerAt(0), m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d normal = m_fields.normal;
    if (!transformsPlane(xform, normal))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    AcGePoint3d moved[kCorners];
    for (int i = 0; i < kCorners; ++i)
        moved[i] = worldToOwn(normal, xform * cornerAt(i));
    m_fields.thickness = transformedThickness(xform, m_fields.normal, normal, m_fields.thickness);
    m_fields.normal = normal;
    m_fields.elevation = moved[0].z;
    for (int i = 0; i < kCorners; ++i)
        m_fields.corners[i].set(moved[i].x, moved[i].y);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                              AcDbIntArray&) const {
    for (int i = 0; i < kCorners; ++i)
        gripPoints.append(cornerAt(i));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, kCorners))
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    // Corners leave the plane only together: what goes across it moves it.
    const AcGePoint3d own = worldToOwn(m_fields.normal, AcGePoint3d::kOrigin + offset);
    for (const int index : indices)
        m_fields.corners[index] += AcGeVector2d(own.x, own.y);
    if (!indices.isEmpty())
        m_fields.elevation += own.z;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&,
                                               AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    if (osnapMode == AcDb::kOsModeEnd)
        for (int i = 0; i < kCorners; ++i)
            snapPoints.append(cornerAt(i));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (int i = 0; i < kCorners; ++i)
        box.addPoint(cornerAt(i));
    box.expandBy(m_fields.normal * m_fields.thickness);
    extents = box;
    return Acad::eOk;
}

Adesk::Boolean AcDbSolid::subWorldDraw(AcGiWorldDraw* worldDraw) {
    AcGiSubEntityTraits& traits = worldDraw->subEntityTraits();
    traits.setThickness(m_fields.thickness);
    traits.setFillType(kAcGiFillAlways);
    const AcGePoint3d corners[] = {cornerAt(0), cornerAt(1), cornerAt(3), cornerAt(2)};
    const bool isTriangle = corners[2] == corners[3];
    worldDraw->geometry().polygon(isTriangle ? 3 : 4, corners);
    return true;
}

template <class F, class Stream>
void AcDbSolid::fileFields(F& f, Stream& s) {
    s.thickness(f.thickness);
    s.real(f.elevation);
    for (auto& corner : f.corners)
        s.rawPoint(corner);
    s.extrusion(f.normal);
}

Acad::ErrorStatus AcDbSolid::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer),
                       [this](FieldWriter& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbSolid::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbEntity::dwgInFields(filer), [this](FieldReader& in) {
        Fields f;
        fileFields(f, in);
        if (in.ok())
            m_fields = f;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
