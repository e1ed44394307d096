#include "dbelipse.h"

#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"
#include "geplane.h"
#include "gi/plane_arc.h"

#include <algorithm>
#include <cmath>

using namespace embedded;

namespace {

constexpr double kChordsOfTurn = 256.0;
constexpr double kSmallestRatio = 1.0e-6;
constexpr double kPerpendicular = 1.0e-6;
// Parameters that are closer are one, and an ellipse that lacks less is whole.
constexpr double kSameParam = 1.0e-10;

bool isRatio(double ratio) { return ratio >= kSmallestRatio && ratio <= 1.0; }

// The same way round in the same turn: the whole turns of `angle` stay.
double inTurnOf(double angle, double seen) {
    const double turns = std::floor(angle / kTwoPi);
    return turns * kTwoPi + wholeTurns(seen);
}

} // namespace

AcDbEllipse::AcDbEllipse() = default;

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                         const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                         double endAngle) {
    set(center, unitNormal, majorAxis, radiusRatio, startAngle, endAngle);
}

AcGePoint3d AcDbEllipse::center() const { return readField(*this, m_fields.centre); }

Acad::ErrorStatus AcDbEllipse::setCenter(const AcGePoint3d& point) {
    return setField(*this, m_fields.centre, point);
}

AcGeVector3d AcDbEllipse::normal() const { return readField(*this, m_fields.normal); }

AcGeVector3d AcDbEllipse::majorAxis() const { return readField(*this, m_fields.majorAxis); }

AcGeVector3d AcDbEllipse::minorAxis() const {
    assertReadEnabled();
    return m_fields.normal.crossProduct(m_fields.majorAxis) * m_fields.ratio;
}

double AcDbEllipse::radiusRatio() const { return readField(*this, m_fields.ratio); }

Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
    if (!isRatio(ratio))
        return Acad::eInvalidInput;
    return setField(*this, m_fields.ratio, ratio);
}

double AcDbEllipse::paramAtAngle(double angle) const {
    assertReadEnabled();
    // The end of a whole turn stays that.
    if (std::fabs(angle - kTwoPi) <= kSameParam)
        return angle;
    return inTurnOf(angle, std::atan2(std::sin(angle), m_fields.ratio * std::cos(angle)));
}

double AcDbEllipse::angleAtParam(double param) const {
    assertReadEnabled();
    if (std::fabs(param - kTwoPi) <= kSameParam)
        return param;
    return inTurnOf(param, std::atan2(m_fields.ratio * std::sin(param), std::cos(param)));
}

double AcDbEllipse::startAngle() const { return angleAtParam(m_fields.start); }
double AcDbEllipse::endAngle() const { return angleAtParam(m_fields.end); }

Acad::ErrorStatus AcDbEllipse::setStartAngle(double angle) { return setStartParam(paramAtAngle(angle)); }
Acad::ErrorStatus AcDbEllipse::setEndAngle(double angle) { return setEndParam(paramAtAngle(angle)); }

Acad::ErrorStatus AcDbEllipse::setStartParam(double param) { return setField(*this, m_fields.start, param); }
Acad::ErrorStatus AcDbEllipse::setEndParam(double param) { return setField(*this, m_fields.end, param); }

Acad::ErrorStatus AcDbEllipse::get(AcGePoint3d& center, AcGeVector3d& unitNormal, AcGeVector3d& majorAxis,
                                   double& radiusRatio, double& startAngle, double& endAngle) const {
    center = this->center();
    unitNormal = m_fields.normal;
    majorAxis = m_fields.majorAxis;
    radiusRatio = m_fields.ratio;
    startAngle = this->startAngle();
    endAngle = this->endAngle();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                                   const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                                   double endAngle) {
    const double across = std::fabs(unitNormal.dotProduct(majorAxis));
    if (!isRatio(radiusRatio) || unitNormal.isZeroLength() || majorAxis.isZeroLength() ||
        !(across <= kPerpendicular * unitNormal.length() * majorAxis.length()))
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_fields.centre = center;
    m_fields.normal = unitNormal.normal();
    m_fields.majorAxis = majorAxis;
    m_fields.ratio = radiusRatio;
    m_fields.start = paramAtAngle(startAngle);
    m_fields.end = paramAtAngle(endAngle);
    return Acad::eOk;
}

AcGePoint3d AcDbEllipse::pointAt(double param) const {
    return m_fields.centre + m_fields.majorAxis * std::cos(param) + minorAxis() * std::sin(param);
}

double AcDbEllipse::sweep() const {
    const double turned = wholeTurns(m_fields.end - m_fields.start);
    return turned <= kSameParam || turned >= kTwoPi - kSameParam ? kTwoPi : turned;
}

bool AcDbEllipse::has(double param) const {
    const double from = wholeTurns(param - m_fields.start);
    return from <= sweep() + kSameParam || from >= kTwoPi - kSameParam;
}

Adesk::Boolean AcDbEllipse::isClosed() const {
    assertReadEnabled();
    return sweep() == kTwoPi;
}

Acad::ErrorStatus AcDbEllipse::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    plane.set(m_fields.centre, m_fields.normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    if (!has(param))
        return Acad::eInvalidInput;
    point = pointAt(param);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::getFirstDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    if (!has(param))
        return Acad::eInvalidInput;
    deriv = minorAxis() * std::cos(param) - m_fields.majorAxis * std::sin(param);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::getSecondDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    if (!has(param))
        return Acad::eInvalidInput;
    deriv = m_fields.centre - pointAt(param);
    return Acad::eOk;
}

bool AcDbEllipse::getPath(CurvePath& path) const {
    const double whole = sweep();
    if (!(m_fields.majorAxis.length() > 0.0) || !std::isfinite(whole))
        return false;
    const int chords = std::max(1, static_cast<int>(std::ceil(whole / kTwoPi * kChordsOfTurn - 1.0e-9)));
    const double end = m_fields.start + whole;
    for (int i = 0; i < chords; ++i) {
        const double from = m_fields.start + whole * i / chords;
        const double to = i + 1 < chords ? m_fields.start + whole * (i + 1) / chords : end;
        path.segments.push_back(PathSegment::straight(pointAt(from), pointAt(to), from, to));
    }
    path.isClosed = whole == kTwoPi;
    return true;
}

Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d normal = m_fields.normal;
    if (!keepsCirclesRound(xform, normal) || !transformsPlane(xform, normal))
        return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    m_fields.centre = xform * m_fields.centre;
    m_fields.majorAxis = xform * m_fields.majorAxis;
    m_fields.normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                                AcDbIntArray&) const {
    gripPoints.append(m_fields.centre);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, 1))
        return Acad::eInvalidIndex;
    return indices.isEmpty() ? Acad::eOk : transformBy(AcGeMatrix3d::translation(offset));
}

Acad::ErrorStatus AcDbEllipse::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker,
                                                 const AcGePoint3d&, const AcGePoint3d&, const AcGeMatrix3d&,
                                                 AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    if (osnapMode == AcDb::kOsModeCen)
        snapPoints.append(m_fields.centre);
    if (osnapMode == AcDb::kOsModeQuad)
        for (int quarter = 0; quarter < 4; ++quarter)
            if (has(quarter * kTwoPi / 4.0))
                snapPoints.append(pointAt(quarter * kTwoPi / 4.0));
    if (osnapMode == AcDb::kOsModeEnd && !isClosed()) {
        snapPoints.append(pointAt(m_fields.start));
        snapPoints.append(pointAt(m_fields.start + sweep()));
    }
    return Acad::eOk;
}

// Along each axis the ellipse is furthest where the derivative has no part of it.
Acad::ErrorStatus AcDbEllipse::subGetGeomExtents(AcDbExtents& extents) const {
    const AcGeVector3d& major = m_fields.majorAxis;
    const AcGeVector3d minor = minorAxis();
    AcDbExtents box;
    box.addPoint(pointAt(m_fields.start));
    box.addPoint(pointAt(m_fields.start + sweep()));
    for (const double param :
         {std::atan2(minor.x, major.x), std::atan2(minor.y, major.y), std::atan2(minor.z, major.z)})
        for (const double turned : {param, param + kPi})
            if (has(turned))
                box.addPoint(pointAt(turned));
    extents = box;
    return Acad::eOk;
}

template <class F, class Stream>
void AcDbEllipse::fileFields(F& f, Stream& s) {
    s.point(f.centre);
    s.vector(f.majorAxis);
    s.vector(f.normal);
    s.real(f.ratio);
    s.real(f.start);
    s.real(f.end);
}

Acad::ErrorStatus AcDbEllipse::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer),
                       [this](FieldWriter& out) { fileFields(m_fields, out); });
}

Acad::ErrorStatus AcDbEllipse::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = readFields(filer, AcDbEntity::dwgInFields(filer), [this](FieldReader& in) {
        Fields f;
        fileFields(f, in);
        if (in.ok())
            m_fields = f;
    });
    return es == Acad::eOk ? declineWhatIsLeft(*filer) : es;
}
