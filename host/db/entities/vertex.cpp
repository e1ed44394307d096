#include "db/clone/access_rights.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "dbents.h"

#include <cmath>

using namespace embedded;

namespace {

// Where the points of a vertex stand: the coordinates of the polyline that owns it.
struct OwnPlane {
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    double elevation = 0.0;

    explicit OwnPlane(const AcDbObjectId& owner) {
        const ReadRight reading(owner);
        if (const auto* polyline = dynamic_cast<const AcDb2dPolyline*>(reading.object())) {
            normal = polyline->normal();
            elevation = polyline->elevation();
        }
    }
    AcGePoint3d toWorld(const AcGePoint3d& own) const {
        return ownToWorld(normal, {own.x, own.y, elevation});
    }
};

} // namespace

AcDb2dVertex::AcDb2dVertex() = default;

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth, double endWidth,
                           double tangent) {
    m_position = position;
    m_fields.bulge = bulge;
    m_fields.startWidth = startWidth;
    m_fields.endWidth = endWidth;
    m_fields.tangent = tangent;
}

AcDb::Vertex2dType AcDb2dVertex::vertexType() const {
    assertReadEnabled();
    return isSplineFrame() ? AcDb::k2dSplineCtlVertex
           : isSplineFit() ? AcDb::k2dSplineFitVertex
           : isCurveFit()  ? AcDb::k2dCurveFitVertex
                           : AcDb::k2dVertex;
}

AcGePoint3d AcDb2dVertex::position() const { return readField(*this, m_position); }

Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& point) {
    return setField(*this, m_position, point);
}

double AcDb2dVertex::bulge() const { return readField(*this, m_fields.bulge); }

Acad::ErrorStatus AcDb2dVertex::setBulge(double bulge) { return setField(*this, m_fields.bulge, bulge); }

double AcDb2dVertex::startWidth() const { return readField(*this, m_fields.startWidth); }

Acad::ErrorStatus AcDb2dVertex::setStartWidth(double width) {
    if (!(width >= 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.startWidth = width;
    m_fields.filedApart = false;
    return Acad::eOk;
}

double AcDb2dVertex::endWidth() const { return readField(*this, m_fields.endWidth); }

Acad::ErrorStatus AcDb2dVertex::setEndWidth(double width) {
    if (!(width >= 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.endWidth = width;
    m_fields.filedApart = false;
    return Acad::eOk;
}

double AcDb2dVertex::tangent() const { return readField(*this, m_fields.tangent); }

Acad::ErrorStatus AcDb2dVertex::setTangent(double tangent) {
    return setField(*this, m_fields.tangent, tangent);
}

bool AcDb2dVertex::isTangentUsed() const {
    assertReadEnabled();
    return (m_flags & kTangentFlag) != 0;
}

Acad::ErrorStatus AcDb2dVertex::setFlag(Adesk::UInt8 flag, bool on) {
    return setField(*this, m_flags, static_cast<Adesk::UInt8>((m_flags & ~flag) | (on ? flag : 0)));
}

Acad::ErrorStatus AcDb2dVertex::useTangent() { return setFlag(kTangentFlag, true); }
Acad::ErrorStatus AcDb2dVertex::ignoreTangent() { return setFlag(kTangentFlag, false); }

Acad::ErrorStatus AcDb2dVertex::subTransformBy(const AcGeMatrix3d& xform) {
    const OwnPlane plane(ownerId());
    assertWriteEnabled();
    const AcGePoint3d own = worldToOwn(plane.normal, xform * plane.toWorld(m_position));
    m_position.x = own.x;
    m_position.y = own.y;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dVertex::subGetGeomExtents(AcDbExtents& extents) const {
    const AcGePoint3d point = OwnPlane(ownerId()).toWorld(m_position);
    return extents.set(point, point);
}

// A start width below 0 tells both widths at once. The memory filer gets all fields, so that undo keeps the
// form of the file.
Acad::ErrorStatus AcDb2dVertex::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbVertex::dwgOutFields(filer), [this](FieldWriter& out) {
        const Fields& f = m_fields;
        const bool inOne = out.toFile() && !f.filedApart && f.startWidth == f.endWidth && f.startWidth > 0.0;
        out.byte(m_flags);
        out.point(m_position);
        out.real(inOne ? -f.startWidth : f.startWidth);
        if (!inOne)
            out.real(f.endWidth);
        if (!out.toFile())
            out.flag(f.filedApart);
        out.real(f.bulge);
        out.real(f.tangent);
    });
}

Acad::ErrorStatus AcDb2dVertex::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbVertex::dwgInFields(filer), [this](FieldReader& in) {
        Fields f;
        Adesk::UInt8 flags = 0;
        AcGePoint3d position;
        in.byte(flags);
        in.point(position);
        in.real(f.startWidth);
        if (in.toFile() && f.startWidth < 0.0) {
            f.startWidth = f.endWidth = -f.startWidth;
        } else {
            in.real(f.endWidth);
            f.filedApart = in.toFile();
        }
        if (!in.toFile())
            in.flag(f.filedApart);
        in.real(f.bulge);
        in.real(f.tangent);
        if (!in.ok())
            return;
        m_flags = flags;
        m_position = position;
        m_fields = f;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}

AcDb3dPolylineVertex::AcDb3dPolylineVertex() : AcDbVertex(kIn3dPolylineFlag) {}

AcDb3dPolylineVertex::AcDb3dPolylineVertex(const AcGePoint3d& position) : AcDbVertex(kIn3dPolylineFlag) {
    m_position = position;
}

AcDb::Vertex3dType AcDb3dPolylineVertex::vertexType() const {
    assertReadEnabled();
    return isSplineFrame() ? AcDb::k3dControlVertex
           : isSplineFit() ? AcDb::k3dFitVertex
                           : AcDb::k3dSimpleVertex;
}

AcGePoint3d AcDb3dPolylineVertex::position() const { return readField(*this, m_position); }

Acad::ErrorStatus AcDb3dPolylineVertex::setPosition(const AcGePoint3d& point) {
    return setField(*this, m_position, point);
}

Acad::ErrorStatus AcDb3dPolylineVertex::subTransformBy(const AcGeMatrix3d& xform) {
    return setPosition(xform * m_position);
}

Acad::ErrorStatus AcDb3dPolylineVertex::subGetGeomExtents(AcDbExtents& extents) const {
    return extents.set(m_position, m_position);
}

Acad::ErrorStatus AcDb3dPolylineVertex::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbVertex::dwgOutFields(filer), [this](FieldWriter& out) {
        out.byte(m_flags);
        out.point(m_position);
    });
}

Acad::ErrorStatus AcDb3dPolylineVertex::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbVertex::dwgInFields(filer), [this](FieldReader& in) {
        Adesk::UInt8 flags = 0;
        AcGePoint3d position;
        in.byte(flags);
        in.point(position);
        if (!in.ok())
            return;
        m_flags = flags;
        m_position = position;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
