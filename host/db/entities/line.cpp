#include "dbents.h"

#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "geplane.h"

using namespace embedded;

AcDbLine::AcDbLine() = default;

AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) {
    m_fields.start = start;
    m_fields.end = end;
}

AcGePoint3d AcDbLine::startPoint() const { return readField(*this, m_fields.start); }

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
    return setField(*this, m_fields.start, point);
}

AcGePoint3d AcDbLine::endPoint() const { return readField(*this, m_fields.end); }

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
    return setField(*this, m_fields.end, point);
}

double AcDbLine::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDbLine::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

AcGeVector3d AcDbLine::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    return setField(*this, m_fields.normal, normal.normal());
}

Acad::ErrorStatus AcDbLine::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    const AcGeVector3d along = (m_fields.end - m_fields.start).normal();
    // The part of the normal that is across the line, or any vector that is.
    AcGeVector3d across = m_fields.normal - along * m_fields.normal.dotProduct(along);
    if (across.isZeroLength())
        across = along.perpVector();
    plane.set(m_fields.start, across.normal());
    planarity = AcDb::kLinear;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::reverseCurve() {
    assertWriteEnabled();
    std::swap(m_fields.start, m_fields.end);
    return Acad::eOk;
}

bool AcDbLine::getPath(CurvePath& path) const {
    const double length = m_fields.start.distanceTo(m_fields.end);
    path.segments = {PathSegment::straight(m_fields.start, m_fields.end, 0.0, length)};
    return true;
}

AcGeVector3d AcDbLine::thicknessVector() const { return m_fields.normal * m_fields.thickness; }

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    AcGeVector3d normal = m_fields.normal;
    transformsPlane(xform, normal);
    m_fields.thickness = transformedThickness(xform, m_fields.normal, normal, m_fields.thickness);
    m_fields.normal = normal;
    m_fields.start.transformBy(xform);
    m_fields.end.transformBy(xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                             AcDbIntArray&) const {
    gripPoints.append(m_fields.start);
    gripPoints.append(m_fields.end);
    gripPoints.append(m_fields.start + (m_fields.end - m_fields.start) * 0.5);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, 3))
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    const bool whole = indices.contains(2);
    if (whole || indices.contains(0))
        m_fields.start += offset;
    if (whole || indices.contains(1))
        m_fields.end += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    stretchPoints.append(m_fields.start);
    stretchPoints.append(m_fields.end);
    return Acad::eOk;
}

// The file tells once whether both ends are at height 0, and the end by its difference from the start.
Acad::ErrorStatus AcDbLine::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer), [this](FieldWriter& out) {
        const Fields& f = m_fields;
        const bool flat = FieldWriter::isPlainZero(f.start.z) && FieldWriter::isPlainZero(f.end.z);
        out.flag(flat);
        out.rawReal(f.start.x);
        out.realBy(f.end.x, f.start.x);
        out.rawReal(f.start.y);
        out.realBy(f.end.y, f.start.y);
        if (!flat) {
            out.rawReal(f.start.z);
            out.realBy(f.end.z, f.start.z);
        }
        out.thickness(f.thickness);
        out.extrusion(f.normal);
    });
}

Acad::ErrorStatus AcDbLine::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbEntity::dwgInFields(filer), [this](FieldReader& in) {
        Fields f;
        bool flat = false;
        in.flag(flat);
        in.rawReal(f.start.x);
        in.realBy(f.end.x, f.start.x);
        in.rawReal(f.start.y);
        in.realBy(f.end.y, f.start.y);
        if (!flat) {
            in.rawReal(f.start.z);
            in.realBy(f.end.z, f.start.z);
        }
        in.thickness(f.thickness);
        in.extrusion(f.normal);
        if (in.ok())
            m_fields = f;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
