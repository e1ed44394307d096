#include "orvshape/curve_segment.h"

#include "dbextents.h"

#include <algorithm>
#include <cmath>

namespace orv {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;

// An arc that is flatter than this is told from its chord by rounding alone.
constexpr double kLeastBulge = 1.0e-7;
// How far start and end of an arc that is put together from numbers may be off it, as a share of the radius.
constexpr double kArcFit = 1.0e-6;
// How far two axes may differ that are to stay those of a circle, as a share of their length.
constexpr double kSimilarity = 1.0e-9;

bool isFinite(const AcGeVector3d& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
bool isFinite(const AcGePoint3d& p) { return isFinite(p.asVector()); }

// From 0 to below two pi.
double wholeTurns(double angle) {
    const double rest = std::fmod(angle, kTwoPi);
    const double turned = rest < 0.0 ? rest + kTwoPi : rest;
    return turned >= kTwoPi ? 0.0 : turned;
}

// Away from the start of an arc, rather than from its centre: of flat arcs the centre is far away, and with
// it the last digits of every point would be lost.
AcGeVector3d alongArc(const AcGeVector3d& xAxis, const AcGeVector3d& normal, double radius, double angle) {
    const double half = std::sin(angle / 2.0);
    return xAxis * (-2.0 * radius * half * half) + normal.crossProduct(xAxis) * (radius * std::sin(angle));
}

} // namespace

double curveSlack(const AcGePoint3d& point) {
    const double size = std::max({std::fabs(point.x), std::fabs(point.y), std::fabs(point.z), 1.0});
    return std::max(AcGeContext::gTol.equalPoint(), 1.0e-9 * size);
}

CurveSegment::CurveSegment() : m_end(1.0, 0.0, 0.0) {}

bool CurveSegment::line(const AcGePoint3d& start, const AcGePoint3d& end, CurveSegment& segment) {
    const double length = start.distanceTo(end);
    if (!isFinite(start) || !isFinite(end) || !std::isfinite(length) ||
        !(length > AcGeContext::gTol.equalPoint()))
        return false;
    segment = CurveSegment();
    segment.m_start = start;
    segment.m_end = end;
    segment.m_length = length;
    return true;
}

// The one place where an arc comes from. The sweep may be a rounding above the whole turn.
bool CurveSegment::setArc(const AcGePoint3d& start, const AcGePoint3d& end, const AcGePoint3d& centre,
                          const AcGeVector3d& normal, double sweep) {
    const double radius = start.distanceTo(centre);
    const double size = normal.length();
    if (!isFinite(start) || !isFinite(end) || !isFinite(centre) || !std::isfinite(size) || !(size > 0.0) ||
        !std::isfinite(radius) || !(sweep > 0.0) || !(sweep <= kTwoPi * (1.0 + 1.0e-12)) ||
        !(radius * sweep > AcGeContext::gTol.equalPoint()))
        return false;
    const AcGeVector3d axis = normal / size;
    const double allowed = kArcFit * radius + curveSlack(start);
    if (!isFinite(axis) || std::fabs((start - centre).dotProduct(axis)) > allowed)
        return false;
    const AcGeVector3d led = alongArc((start - centre) / radius, axis, radius, sweep);
    if (!((start + led).distanceTo(end) <= allowed + curveSlack(end)))
        return false;
    m_start = start;
    m_end = end;
    m_centre = centre;
    m_normal = axis;
    m_radius = radius;
    m_sweep = std::min(sweep, kTwoPi);
    m_length = radius * m_sweep;
    return true;
}

bool CurveSegment::arcOf(const AcGePoint3d& start, const AcGePoint3d& end, const AcGePoint3d& centre,
                         const AcGeVector3d& normal, double sweep, CurveSegment& segment) {
    CurveSegment made;
    if (!made.setArc(start, end, centre, normal, sweep))
        return false;
    segment = made;
    return true;
}

bool CurveSegment::arcThrough(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end,
                              CurveSegment& segment) {
    const AcGeVector3d a = middle - start;
    const AcGeVector3d b = end - start;
    const AcGeVector3d across = a.crossProduct(b);
    // Twice the triangle's area, against its sides: no matter how large the coordinates are.
    if (!(across.length() > kLeastBulge * kLeastBulge * a.length() * b.length()))
        return false;
    // The middle point sees the chord under half of what is left of the whole turn.
    const AcGeVector3d back = start - middle;
    const AcGeVector3d on = end - middle;
    const double seen = std::atan2(back.crossProduct(on).length(), back.dotProduct(on));
    const double sweep = kTwoPi - 2.0 * seen;
    if (sweep <= kPi)
        return arcByBulge(start, end, std::tan(sweep / 4.0), across, segment);
    // Of an arc that is nearly a whole circle the chord says little: here all three points count.
    const AcGeVector3d toCentre =
        (b.crossProduct(across) * -a.lengthSqrd() + a.crossProduct(across) * b.lengthSqrd()) /
        (-2.0 * across.lengthSqrd());
    return arcOf(start, end, start + toCentre, across, sweep, segment);
}

bool CurveSegment::arcByBulge(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                              const AcGeVector3d& normal, CurveSegment& segment) {
    const AcGeVector3d chord = end - start;
    const double length = chord.length();
    const double size = std::fabs(bulge);
    if (!std::isfinite(bulge) || size < kLeastBulge || !(length > AcGeContext::gTol.equalPoint()) ||
        !std::isfinite(length) || !isFinite(normal) || !(normal.length() > 0.0))
        return false;
    const AcGeVector3d axis = normal / (bulge > 0.0 ? normal.length() : -normal.length());
    if (!(std::fabs(chord.dotProduct(axis)) <= kArcFit * length + curveSlack(start)))
        return false;
    const AcGeVector3d aside = axis.crossProduct(chord) / length;
    const AcGePoint3d centre = start + chord * 0.5 + aside * (length * (1.0 - size * size) / (4.0 * size));
    return arcOf(start, end, centre, axis, 4.0 * std::atan(size), segment);
}

bool CurveSegment::arcAbout(const AcGePoint3d& start, const AcGePoint3d& centre, const AcGeVector3d& normal,
                            double sweep, CurveSegment& segment) {
    const double radius = start.distanceTo(centre);
    const double size = sweep < 0.0 ? -normal.length() : normal.length();
    const double turn = std::fabs(sweep);
    if (!(radius > 0.0) || size == 0.0)
        return false;
    const AcGeVector3d axis = normal / size;
    const bool isWhole = std::fabs(turn - kTwoPi) <= 1.0e-12;
    const AcGePoint3d end = isWhole ? start : start + alongArc((start - centre) / radius, axis, radius, turn);
    return arcOf(start, end, centre, axis, isWhole ? kTwoPi : turn, segment);
}

bool CurveSegment::isFullCircle() const {
    return m_sweep > kPi && m_start.distanceTo(m_end) <= curveSlack(m_start);
}

double CurveSegment::angleOf(const AcGePoint3d& point) const {
    const AcGeVector3d out = point - m_centre;
    const AcGeVector3d x = xAxis();
    return wholeTurns(std::atan2(out.dotProduct(m_normal.crossProduct(x)), out.dotProduct(x)));
}

AcGePoint3d CurveSegment::pointAt(double distance) const {
    if (distance == 0.0)
        return m_start;
    if (distance == m_length)
        return m_end;
    if (!isArc())
        return m_start + (m_end - m_start) * (distance / m_length);
    return m_start + alongArc(xAxis(), m_normal, m_radius, distance / m_radius);
}

AcGeVector3d CurveSegment::tangentAt(double distance) const {
    if (!isArc())
        return (m_end - m_start) / m_length;
    const double angle = distance / m_radius;
    const AcGeVector3d x = xAxis();
    return x * -std::sin(angle) + m_normal.crossProduct(x) * std::cos(angle);
}

AcGeVector3d CurveSegment::curvatureAt(double distance) const {
    return isArc() ? m_normal.crossProduct(tangentAt(distance)) / m_radius : AcGeVector3d();
}

double CurveSegment::nearestTo(const AcGePoint3d& point, bool beyondStart, bool beyondEnd) const {
    if (!isArc()) {
        const double along = (point - m_start).dotProduct(tangentAt(0.0));
        const double notBefore = beyondStart ? along : std::max(along, 0.0);
        return beyondEnd ? notBefore : std::min(notBefore, m_length);
    }
    const double angle = angleOf(point);
    // A point that rounding took to just before the start is the start.
    if ((kTwoPi - angle) * m_radius <= curveSlack(m_start))
        return 0.0;
    if (angle <= m_sweep)
        return std::min(angle * m_radius, m_length);
    // In the gap. Its middle is half of it away from both ends.
    const bool endIsNearer = angle - m_sweep < kTwoPi - angle;
    if (beyondEnd && (endIsNearer || !beyondStart))
        return angle * m_radius;
    if (beyondStart)
        return (angle - kTwoPi) * m_radius;
    return endIsNearer ? m_length : 0.0;
}

void CurveSegment::addTo(AcDbExtents& extents) const {
    extents.addPoint(m_start);
    extents.addPoint(m_end);
    if (!isArc())
        return;
    const AcGeVector3d x = xAxis();
    const AcGeVector3d y = m_normal.crossProduct(x);
    for (unsigned int i = 0; i < 3; ++i) {
        // Where the coordinate has its greatest and its least value.
        const double top = wholeTurns(std::atan2(y[i], x[i]));
        for (const double angle : {top, wholeTurns(top + kPi)})
            if (angle <= m_sweep)
                extents.addPoint(pointAt(angle * m_radius));
    }
}

AcGeVector3d CurveSegment::doubleAreaFrom(const AcGePoint3d& point) const {
    const AcGeVector3d triangle = (m_start - point).crossProduct(m_end - point);
    if (!isArc())
        return triangle;
    return triangle + m_normal * (m_radius * m_radius * (m_sweep - std::sin(m_sweep)));
}

CurveSegment CurveSegment::reversed() const {
    CurveSegment back = *this;
    std::swap(back.m_start, back.m_end);
    back.m_normal = -m_normal;
    if (!isArc())
        back.m_normal = AcGeVector3d();
    return back;
}

bool CurveSegment::part(double from, double to, CurveSegment& segment) const {
    if (from == 0.0 && to == m_length) {
        segment = *this;
        return true;
    }
    if (!isArc())
        return line(pointAt(from), pointAt(to), segment);
    return arcOf(pointAt(from), pointAt(to), m_centre, m_normal, (to - from) / m_radius, segment);
}

bool CurveSegment::withEnds(const AcGePoint3d& start, const AcGePoint3d& end, CurveSegment& segment) const {
    if (!isArc())
        return line(start, end, segment);
    const AcGeVector3d oldChord = m_end - m_start;
    const AcGeVector3d chord = end - start;
    if (isFullCircle())
        return chord.length() <= curveSlack(start) &&
               arcOf(start, end, m_centre + (start - m_start), m_normal, m_sweep, segment);
    if (!(chord.length() > AcGeContext::gTol.equalPoint()))
        return false;
    // Turned about the line across both chords; a chord that turns round keeps the arc's plane.
    AcGeVector3d axis = oldChord.crossProduct(chord);
    const double size = axis.length();
    axis = size <= 1.0e-15 * oldChord.length() * chord.length() ? m_normal : axis / size;
    const double turn = oldChord.angleTo(chord);
    const double scale = chord.length() / oldChord.length();
    AcGeVector3d toCentre = (m_centre - m_start) * scale;
    AcGeVector3d normal = m_normal;
    toCentre.rotateBy(turn, axis);
    normal.rotateBy(turn, axis);
    return arcOf(start, end, start + toCentre, normal, m_sweep, segment);
}

bool CurveSegment::transformed(const AcGeMatrix3d& matrix, CurveSegment& segment) const {
    if (!isArc())
        return line(matrix * m_start, matrix * m_end, segment);
    const AcGeVector3d x = matrix * xAxis();
    const AcGeVector3d y = matrix * m_normal.crossProduct(xAxis());
    const double slack = kSimilarity * std::max(x.length(), y.length());
    if (!(x.length() > 0.0) || !(std::fabs(x.length() - y.length()) <= slack) ||
        !(std::fabs(x.dotProduct(y)) <= slack * x.length()))
        return false;
    // Counter-clockwise stays so, since the normal follows the two axes, also through a mirror.
    return arcOf(matrix * m_start, matrix * m_end, matrix * m_centre, x.crossProduct(y), m_sweep, segment);
}

} // namespace orv
