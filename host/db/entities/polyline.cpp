#include "dbpl.h"

#include "acgi.h"
#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "geplane.h"

#include <algorithm>
#include <cmath>

using namespace embedded;

namespace {

// In the flags of the file: which of the fields it has, and two settings.
enum PolylineFlag : Adesk::UInt16 {
    kHasNormal = 0x1,
    kHasThickness = 0x2,
    kHasConstantWidth = 0x4,
    kHasElevation = 0x8,
    kHasBulges = 0x10,
    kHasWidths = 0x20,
    kRunsOn = 0x100,
    kClosed = 0x200
};
constexpr Adesk::UInt16 kTellsFields =
    kHasNormal | kHasThickness | kHasConstantWidth | kHasElevation | kHasBulges | kHasWidths;

bool allAre(const std::vector<double>& values, double value) {
    return std::all_of(values.begin(), values.end(), [value](double v) { return v == value; });
}

} // namespace

AcDbPolyline::AcDbPolyline() = default;
AcDbPolyline::AcDbPolyline(unsigned int vertices) { m_fields.points.reserve(vertices); }

unsigned int AcDbPolyline::numVerts() const {
    assertReadEnabled();
    return static_cast<unsigned int>(m_fields.points.size());
}

AcGePoint3d AcDbPolyline::toWorld(const AcGePoint2d& point) const {
    return ownToWorld(m_fields.normal, {point.x, point.y, m_fields.elevation});
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& point) const {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    point = toWorld(m_fields.points[index]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& point) const {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    point = m_fields.points[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& point) {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_fields.points[index] = point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    bulge = m_fields.bulges.empty() ? 0.0 : m_fields.bulges[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    if (m_fields.bulges.empty() && bulge == 0.0)
        return Acad::eOk;
    m_fields.bulges.resize(m_fields.points.size(), 0.0);
    m_fields.bulges[index] = bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    const bool own = !m_fields.widths.empty();
    startWidth = own ? m_fields.widths[index].start : m_fields.constantWidth;
    endWidth = own ? m_fields.widths[index].end : m_fields.constantWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    if (!(startWidth >= 0.0) || !(endWidth >= 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    if (m_fields.widths.empty())
        m_fields.widths.assign(m_fields.points.size(), {m_fields.constantWidth, m_fields.constantWidth});
    m_fields.constantWidth = 0.0;
    m_fields.widths[index] = {startWidth, endWidth};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
    if (index > numVerts())
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    const auto at = static_cast<std::ptrdiff_t>(index);
    const double constant = m_fields.constantWidth;
    m_fields.points.insert(m_fields.points.begin() + at, point);
    if (!m_fields.bulges.empty())
        m_fields.bulges.insert(m_fields.bulges.begin() + at, 0.0);
    if (!m_fields.widths.empty())
        m_fields.widths.insert(m_fields.widths.begin() + at, Widths{constant, constant});
    setBulgeAt(index, bulge);
    const bool told = startWidth >= 0.0 || endWidth >= 0.0;
    const double start = startWidth >= 0.0 ? startWidth : constant;
    const double end = endWidth >= 0.0 ? endWidth : constant;
    if (told && (start != constant || end != constant || !m_fields.widths.empty()))
        setWidthsAt(index, start, end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
    if (index >= numVerts())
        return Acad::eInvalidIndex;
    if (numVerts() <= 2)
        return Acad::eDegenerateGeometry;
    assertWriteEnabled();
    const auto at = static_cast<std::ptrdiff_t>(index);
    m_fields.points.erase(m_fields.points.begin() + at);
    if (!m_fields.bulges.empty())
        m_fields.bulges.erase(m_fields.bulges.begin() + at);
    if (!m_fields.widths.empty())
        m_fields.widths.erase(m_fields.widths.begin() + at);
    return Acad::eOk;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
    const unsigned int count = numVerts();
    if (count == 0 || index >= count)
        return kEmpty;
    if (count == 1 || (index + 1 == count && !isClosed()))
        return kPoint;
    const AcGePoint2d& from = m_fields.points[index];
    if (from == m_fields.points[(index + 1) % count])
        return kCoincident;
    return !m_fields.bulges.empty() && m_fields.bulges[index] != 0.0 ? kArc : kLine;
}

Adesk::Boolean AcDbPolyline::hasBulges() const {
    assertReadEnabled();
    return !allAre(m_fields.bulges, 0.0);
}

Adesk::Boolean AcDbPolyline::isOnlyLines() const { return !hasBulges(); }

Adesk::Boolean AcDbPolyline::hasWidth() const {
    assertReadEnabled();
    return m_fields.constantWidth != 0.0 ||
           std::any_of(m_fields.widths.begin(), m_fields.widths.end(),
                       [](const Widths& w) { return w.start != 0.0 || w.end != 0.0; });
}

Adesk::Boolean AcDbPolyline::isClosed() const {
    assertReadEnabled();
    return (m_fields.flags & kClosed) != 0;
}

void AcDbPolyline::setClosed(Adesk::Boolean closed) {
    assertWriteEnabled();
    m_fields.flags = static_cast<Adesk::UInt16>((m_fields.flags & ~kClosed) | (closed ? kClosed : 0));
}

bool AcDbPolyline::hasPlinegen() const {
    assertReadEnabled();
    return (m_fields.flags & kRunsOn) != 0;
}

void AcDbPolyline::setPlinegen(bool runsOn) {
    assertWriteEnabled();
    m_fields.flags = static_cast<Adesk::UInt16>((m_fields.flags & ~kRunsOn) | (runsOn ? kRunsOn : 0));
}

double AcDbPolyline::elevation() const { return readField(*this, m_fields.elevation); }

Acad::ErrorStatus AcDbPolyline::setElevation(double elevation) {
    return setField(*this, m_fields.elevation, elevation);
}

double AcDbPolyline::thickness() const { return readField(*this, m_fields.thickness); }

Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) {
    return setField(*this, m_fields.thickness, thickness);
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
    assertReadEnabled();
    if (m_fields.widths.empty()) {
        width = m_fields.constantWidth;
        return Acad::eOk;
    }
    const double first = m_fields.widths.front().start;
    for (const Widths& widths : m_fields.widths)
        if (widths.start != first || widths.end != first)
            return Acad::eInvalidInput;
    width = first;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    if (!(width >= 0.0))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.constantWidth = width;
    m_fields.widths.clear();
    return Acad::eOk;
}

AcGeVector3d AcDbPolyline::normal() const { return readField(*this, m_fields.normal); }

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    return setField(*this, m_fields.normal, normal.normal());
}

void AcDbPolyline::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields.normal);
}

Acad::ErrorStatus AcDbPolyline::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    plane.set(ownToWorld(m_fields.normal, {0.0, 0.0, m_fields.elevation}), m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

Adesk::UInt16 AcDbPolyline::filedFlags() const {
    const Fields& f = m_fields;
    const bool up =
        FieldWriter::isPlainZero(f.normal.x) && FieldWriter::isPlainZero(f.normal.y) && f.normal.z == 1.0;
    return static_cast<Adesk::UInt16>(
        f.flags | (up ? 0 : kHasNormal) | (FieldWriter::isPlainZero(f.thickness) ? 0 : kHasThickness) |
        (FieldWriter::isPlainZero(f.constantWidth) ? 0 : kHasConstantWidth) |
        (FieldWriter::isPlainZero(f.elevation) ? 0 : kHasElevation) | (f.bulges.empty() ? 0 : kHasBulges) |
        (f.widths.empty() ? 0 : kHasWidths));
}

Acad::ErrorStatus AcDbPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer), [this](FieldWriter& out) {
        const Fields& f = m_fields;
        const Adesk::UInt16 flags = filedFlags();
        out.int16(flags);
        if ((flags & kHasConstantWidth) != 0)
            out.real(f.constantWidth);
        if ((flags & kHasElevation) != 0)
            out.real(f.elevation);
        if ((flags & kHasThickness) != 0)
            out.real(f.thickness);
        if ((flags & kHasNormal) != 0)
            out.vector(f.normal);
        out.int32(static_cast<Adesk::UInt32>(f.points.size()));
        if ((flags & kHasBulges) != 0)
            out.int32(static_cast<Adesk::UInt32>(f.bulges.size()));
        if ((flags & kHasWidths) != 0)
            out.int32(static_cast<Adesk::UInt32>(f.widths.size()));
        for (std::size_t i = 0; i < f.points.size(); ++i) {
            if (i == 0) {
                out.rawPoint(f.points[i]);
            } else {
                out.realBy(f.points[i].x, f.points[i - 1].x);
                out.realBy(f.points[i].y, f.points[i - 1].y);
            }
        }
        for (const double bulge : f.bulges)
            out.real(bulge);
        for (const Widths& widths : f.widths) {
            out.real(widths.start);
            out.real(widths.end);
        }
    });
}

Acad::ErrorStatus AcDbPolyline::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es =
        readFields(filer, AcDbEntity::dwgInFields(filer), [this, filer](FieldReader& in) {
            Fields f;
            in.int16(f.flags);
            if ((f.flags & kHasConstantWidth) != 0)
                in.real(f.constantWidth);
            if ((f.flags & kHasElevation) != 0)
                in.real(f.elevation);
            if ((f.flags & kHasThickness) != 0)
                in.real(f.thickness);
            if ((f.flags & kHasNormal) != 0)
                in.vector(f.normal);
            Adesk::UInt32 points = 0;
            Adesk::UInt32 bulges = 0;
            Adesk::UInt32 widths = 0;
            in.int32(points);
            if ((f.flags & kHasBulges) != 0)
                in.int32(bulges);
            if ((f.flags & kHasWidths) != 0)
                in.int32(widths);
            // Each vertex has its own, or none has one.
            if ((bulges != 0 && bulges != points) || (widths != 0 && widths != points))
                filer->setFilerStatus(Acad::eDwgObjectImproperlyRead);
            for (Adesk::UInt32 i = 0; i < points && in.ok(); ++i) {
                AcGePoint2d point;
                if (i == 0) {
                    in.rawPoint(point);
                } else {
                    in.realBy(point.x, f.points.back().x);
                    in.realBy(point.y, f.points.back().y);
                }
                f.points.push_back(point);
            }
            for (Adesk::UInt32 i = 0; i < bulges && in.ok(); ++i) {
                f.bulges.push_back(0.0);
                in.real(f.bulges.back());
            }
            for (Adesk::UInt32 i = 0; i < widths && in.ok(); ++i) {
                f.widths.push_back(Widths());
                in.real(f.widths.back().start);
                in.real(f.widths.back().end);
            }
            f.flags &= static_cast<Adesk::UInt16>(~kTellsFields);
            if (in.ok())
                m_fields = std::move(f);
        });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
