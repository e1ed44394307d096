#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/entities/owned_chain.h"
#include "db/field_stream.h"
#include "dbents.h"
#include "geplane.h"

using namespace embedded;

namespace {

enum PolylineFlag : Adesk::UInt16 {
    kClosedFlag = 0x1,
    kCurveFitFlag = 0x2,
    kSplineFitFlag = 0x4,
    kRunsOnFlag = 0x80
};
enum CurveType : Adesk::UInt16 { kNoSpline = 0, kQuadraticSpline = 5, kCubicSpline = 6 };

} // namespace

AcDb2dPolyline::AcDb2dPolyline() = default;

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, AcGePoint3dArray& vertices, double elevation,
                               Adesk::Boolean closed, double defStartWidth, double defEndWidth,
                               AcGeDoubleArray* bulges) {
    Fields& f = m_fields;
    const bool spline = type == AcDb::k2dQuadSplinePoly || type == AcDb::k2dCubicSplinePoly;
    f.flags = static_cast<Adesk::UInt16>((closed ? kClosedFlag : 0) |
                                         (type == AcDb::k2dFitCurvePoly ? kCurveFitFlag : 0) |
                                         (spline ? kSplineFitFlag : 0));
    f.curveType = type == AcDb::k2dQuadSplinePoly    ? kQuadraticSpline
                  : type == AcDb::k2dCubicSplinePoly ? kCubicSpline
                                                     : kNoSpline;
    f.startWidth = defStartWidth;
    f.endWidth = defEndWidth;
    f.elevation = elevation;
    for (int i = 0; i < vertices.length(); ++i) {
        const double bulge = bulges != nullptr && i < bulges->length() ? (*bulges)[i] : 0.0;
        m_vertices->keepLoose(std::make_unique<AcDb2dVertex>(vertices[i], bulge, defStartWidth, defEndWidth));
    }
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex) {
    return append(id, vertex);
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* vertex) {
    AcDbObjectId id;
    return append(id, vertex);
}

Acad::ErrorStatus AcDb2dPolyline::insertVertexAt(AcDbObjectId& id, AcDbObjectId indexVertex,
                                                 AcDb2dVertex* vertex) {
    return insertBehind(id, indexVertex, vertex);
}

Acad::ErrorStatus AcDb2dPolyline::openVertex(AcDb2dVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                             bool openErased) const {
    vertex = nullptr;
    const Acad::ErrorStatus es = refuseForeign(id);
    return es == Acad::eOk ? acdbOpenObject(vertex, id, mode, openErased) : es;
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    assertReadEnabled();
    const AcGePoint3d own = vertex.position();
    return ownToWorld(m_fields.normal, {own.x, own.y, m_fields.elevation});
}

AcDb::Poly2dType AcDb2dPolyline::polyType() const {
    assertReadEnabled();
    if ((m_fields.flags & kSplineFitFlag) != 0)
        return m_fields.curveType == kQuadraticSpline ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly;
    return (m_fields.flags & kCurveFitFlag) != 0 ? AcDb::k2dFitCurvePoly : AcDb::k2dSimplePoly;
}

Acad::ErrorStatus AcDb2dPolyline::setFlag(Adesk::UInt16 flag, bool on) {
    return setField(*this, m_fields.flags,
                    static_cast<Adesk::UInt16>((m_fields.flags & ~flag) | (on ? flag : 0)));
}

Adesk::Boolean AcDb2dPolyline::isClosed() const {
    assertReadEnabled();
    return (m_fields.flags & kClosedFlag) != 0;
}

Acad::ErrorStatus AcDb2dPolyline::makeClosed() { return setFlag(kClosedFlag, true); }
Acad::ErrorStatus AcDb2dPolyline::makeOpen() { return setFlag(kClosedFlag, false); }

bool AcDb2dPolyline::isLinetypeGenerationOn() const {
    assertReadEnabled();
    return (m_fields.flags & kRunsOnFlag) != 0;
}

Acad::ErrorStatus AcDb2dPolyline::setLinetypeGenerationOn() { return setFlag(kRunsOnFlag, true); }
Acad::ErrorStatus AcDb2dPolyline::setLinetypeGenerationOff() { return setFlag(kRunsOnFlag, false); }

double AcDb2dPolyline::defaultStartWidth() const { return readField(*this, m_fields.startWidth); }

Acad::ErrorStatus AcDb2dPolyline::setDefaultStartWidth(double width) {
    if (!(width >= 0.0))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.startWidth, width);
}

double AcDb2dPolyline::defaultEndWidth() const { return readField(*this, m_fields.endWidth); }

Acad::ErrorStatus AcDb2dPolyline::setDefaultEndWidth(double width) {
    if (!(width >= 0.0))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.endWidth, width);
}

double AcDb2dPolyline::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDb2dPolyline::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

double AcDb2dPolyline::elevation() const { return readField(*this, m_fields.elevation); }

Acad::ErrorStatus AcDb2dPolyline::setElevation(double elevation) {
    return setField(*this, m_fields.elevation, elevation);
}

AcGeVector3d AcDb2dPolyline::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    return setField(*this, m_fields.normal, normal.normal());
}

void AcDb2dPolyline::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDb2dPolyline::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    plane.set(ownToWorld(m_fields.normal, {0.0, 0.0, m_fields.elevation}), m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbCurve::dwgOutFields(filer), [this, filer](FieldWriter& out) {
        const Fields& f = m_fields;
        out.int16(f.flags);
        out.int16(f.curveType);
        out.real(f.startWidth);
        out.real(f.endWidth);
        out.thickness(f.thickness);
        out.real(f.elevation);
        out.extrusion(f.normal);
        m_vertices->write(*filer);
    });
}

Acad::ErrorStatus AcDb2dPolyline::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es =
        readFields(filer, AcDbCurve::dwgInFields(filer), [this, filer](FieldReader& in) {
            Fields f;
            in.int16(f.flags);
            in.int16(f.curveType);
            in.real(f.startWidth);
            in.real(f.endWidth);
            in.thickness(f.thickness);
            in.real(f.elevation);
            in.extrusion(f.normal);
            m_vertices->read(*filer);
            if (in.ok())
                m_fields = f;
        });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
