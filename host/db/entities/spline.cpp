#include "dbspline.h"

#include "db/entities/bspline.h"
#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "db/field_stream.h"

#include <cmath>

using namespace embedded;

namespace {

const Adesk::UInt32 kByControls = 1;
const Adesk::UInt32 kByFitPoints = 2;
constexpr int kChordsOfSpan = 8;

bool isIndex(int index, std::size_t count) { return index >= 0 && static_cast<std::size_t>(index) < count; }

Acad::ErrorStatus pointOf(const std::vector<AcGePoint3d>& points, int index, AcGePoint3d& point) {
    if (!isIndex(index, points.size()))
        return Acad::eInvalidIndex;
    point = points[static_cast<std::size_t>(index)];
    return Acad::eOk;
}

} // namespace

AcDbSpline::AcDbSpline() = default;

AcDbSpline::AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
                       const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
                       const AcGeDoubleArray& weights, double controlPointTolerance, double knotTolerance) {
    m_fields.degree = degree > 0 ? static_cast<Adesk::UInt32>(degree) : 0;
    m_fields.isRational = rational;
    m_fields.isClosed = closed;
    m_fields.isPeriodic = periodic;
    m_fields.hasWeights = !weights.isEmpty() && weights.length() == controlPoints.length();
    m_fields.knotTolerance = knotTolerance;
    m_fields.controlTolerance = controlPointTolerance;
    m_fields.knots.assign(knots.begin(), knots.end());
    m_fields.controls.assign(controlPoints.begin(), controlPoints.end());
    if (m_fields.hasWeights)
        m_fields.weights.assign(weights.begin(), weights.end());
}

std::vector<AcGePoint3d>& AcDbSpline::toldBy() {
    return m_fields.form == kByFitPoints ? m_fields.fitPoints : m_fields.controls;
}

const std::vector<AcGePoint3d>& AcDbSpline::toldBy() const {
    return m_fields.form == kByFitPoints ? m_fields.fitPoints : m_fields.controls;
}

int AcDbSpline::degree() const { return static_cast<int>(readField(*this, m_fields.degree)); }
Adesk::Boolean AcDbSpline::isRational() const { return readField(*this, m_fields.isRational); }
Adesk::Boolean AcDbSpline::isClosed() const { return readField(*this, m_fields.isClosed); }
Adesk::Boolean AcDbSpline::isPeriodic() const { return readField(*this, m_fields.isPeriodic); }

Adesk::Boolean AcDbSpline::hasFitData() const {
    assertReadEnabled();
    return m_fields.form == kByFitPoints;
}

int AcDbSpline::numControlPoints() const {
    assertReadEnabled();
    return static_cast<int>(m_fields.controls.size());
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
    assertReadEnabled();
    return pointOf(m_fields.controls, index, point);
}

Acad::ErrorStatus AcDbSpline::setControlPointAt(int index, const AcGePoint3d& point) {
    if (!isIndex(index, m_fields.controls.size()))
        return Acad::eInvalidIndex;
    return setField(*this, m_fields.controls[static_cast<std::size_t>(index)], point);
}

double AcDbSpline::weightAt(int index) const {
    assertReadEnabled();
    return isIndex(index, m_fields.weights.size()) ? m_fields.weights[static_cast<std::size_t>(index)] : 1.0;
}

int AcDbSpline::numFitPoints() const {
    assertReadEnabled();
    return static_cast<int>(m_fields.fitPoints.size());
}

Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
    assertReadEnabled();
    return pointOf(m_fields.fitPoints, index, point);
}

Acad::ErrorStatus AcDbSpline::setFitPointAt(int index, const AcGePoint3d& point) {
    if (!isIndex(index, m_fields.fitPoints.size()))
        return Acad::eInvalidIndex;
    return setField(*this, m_fields.fitPoints[static_cast<std::size_t>(index)], point);
}

bool AcDbSpline::getPath(CurvePath& path) const {
    Bspline spline;
    spline.degree = m_fields.degree;
    spline.knots = m_fields.knots;
    spline.controls = m_fields.controls;
    spline.weights = m_fields.weights;
    std::vector<AcGePoint3d> points;
    std::vector<double> parameters;
    if (m_fields.form != kByFitPoints && spline.isSound()) {
        spline.sample(kChordsOfSpan, points, parameters);
    } else {
        points = toldBy();
        for (std::size_t i = 0; i < points.size(); ++i)
            parameters.push_back(static_cast<double>(i));
    }
    for (std::size_t i = 1; i < points.size(); ++i)
        path.segments.push_back(
            PathSegment::straight(points[i - 1], points[i], parameters[i - 1], parameters[i]));
    path.isClosed = m_fields.isClosed;
    return !path.segments.empty();
}

Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    for (AcGePoint3d& point : m_fields.controls)
        point = xform * point;
    for (AcGePoint3d& point : m_fields.fitPoints)
        point = xform * point;
    // The file has them with length 1, or none.
    for (AcGeVector3d* tangent : {&m_fields.startTangent, &m_fields.endTangent})
        *tangent = (xform * *tangent).normal();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                               AcDbIntArray&) const {
    for (const AcGePoint3d& point : toldBy())
        gripPoints.append(point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    if (!indicesAreBelow(indices, static_cast<int>(toldBy().size())))
        return Acad::eInvalidIndex;
    assertWriteEnabled();
    for (const int index : indices)
        toldBy()[static_cast<std::size_t>(index)] += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker,
                                                const AcGePoint3d&, const AcGePoint3d&, const AcGeMatrix3d&,
                                                AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    CurvePath path;
    if (osnapMode == AcDb::kOsModeEnd && getPath(path)) {
        snapPoints.append(path.segments.front().from);
        snapPoints.append(path.segments.back().to);
    }
    return Acad::eOk;
}

void AcDbSpline::readControls(AcDbDwgFiler& filer, Fields& f) {
    FieldReader in(filer);
    Adesk::UInt32 knots = 0, controls = 0;
    in.flag(f.isRational);
    in.flag(f.isClosed);
    in.flag(f.isPeriodic);
    in.real(f.knotTolerance);
    in.real(f.controlTolerance);
    in.int32(knots);
    in.int32(controls);
    in.flag(f.hasWeights);
    for (Adesk::UInt32 i = 0; i < knots && in.ok(); ++i) {
        f.knots.push_back(0.0);
        in.real(f.knots.back());
    }
    for (Adesk::UInt32 i = 0; i < controls && in.ok(); ++i) {
        f.controls.emplace_back();
        in.point(f.controls.back());
        if (f.hasWeights) {
            f.weights.push_back(0.0);
            in.real(f.weights.back());
        }
    }
}

void AcDbSpline::writeControls(AcDbDwgFiler& filer) const {
    FieldWriter out(filer);
    const Fields& f = m_fields;
    out.flag(f.isRational);
    out.flag(f.isClosed);
    out.flag(f.isPeriodic);
    out.real(f.knotTolerance);
    out.real(f.controlTolerance);
    out.int32(static_cast<Adesk::UInt32>(f.knots.size()));
    out.int32(static_cast<Adesk::UInt32>(f.controls.size()));
    out.flag(f.hasWeights);
    for (const double knot : f.knots)
        out.real(knot);
    for (std::size_t i = 0; i < f.controls.size(); ++i) {
        out.point(f.controls[i]);
        if (f.hasWeights)
            out.real(f.weights[i]);
    }
}

Acad::ErrorStatus AcDbSpline::dwgOutFields(AcDbDwgFiler* filer) const {
    return writeFields(filer, AcDbEntity::dwgOutFields(filer), [this, filer](FieldWriter& out) {
        const Fields& f = m_fields;
        out.int32(f.form);
        out.int32(f.degree);
        if (f.form == kByControls)
            return writeControls(*filer);
        out.real(f.fitTolerance);
        out.vector(f.startTangent);
        out.vector(f.endTangent);
        out.int32(static_cast<Adesk::UInt32>(f.fitPoints.size()));
        for (const AcGePoint3d& point : f.fitPoints)
            out.point(point);
    });
}

Acad::ErrorStatus AcDbSpline::dwgInFields(AcDbDwgFiler* filer) {
    Fields f;
    bool isKnown = true;
    const Acad::ErrorStatus es =
        readFields(filer, AcDbEntity::dwgInFields(filer), [&f, &isKnown, filer](FieldReader& in) {
            Adesk::UInt32 points = 0;
            in.int32(f.form);
            in.int32(f.degree);
            isKnown = !in.ok() || f.form == kByControls || f.form == kByFitPoints;
            if (!isKnown)
                return;
            if (f.form == kByControls)
                return readControls(*filer, f);
            in.real(f.fitTolerance);
            in.vector(f.startTangent);
            in.vector(f.endTangent);
            in.int32(points);
            for (Adesk::UInt32 i = 0; i < points && in.ok(); ++i) {
                f.fitPoints.emplace_back();
                in.point(f.fitPoints.back());
            }
        });
    if (es != Acad::eOk)
        return es;
    // A third form is a newer product's.
    if (!isKnown)
        return Acad::eMakeMeProxy;
    m_fields = std::move(f);
    return declineWhatIsLeft(*filer);
}
