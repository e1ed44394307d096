#include "orvshape/segment_chain.h"
#include "orvshape/segmented_curve.h"

#include <algorithm>
#include <set>

using orv::CurveSegment;

namespace {

// The piece with its start on the very point: a chain has each of its points once. False if it begins
// elsewhere.
bool joinTo(const AcGePoint3d& point, const CurveSegment& segment, CurveSegment& joined) {
    if (segment.start().distanceTo(point) > orv::curveSlack(point))
        return false;
    if (!segment.isArc())
        return CurveSegment::line(point, segment.end(), joined);
    return CurveSegment::arcOf(point, segment.end(), segment.centre(), segment.normal(), segment.sweep(),
                               joined);
}

} // namespace

void ORV_SegmentedCurve::take(Segments segments) {
    std::vector<double> distances;
    double length = 0.0;
    for (const CurveSegment& segment : segments)
        distances.push_back(length += segment.length());
    m_segments = std::move(segments);
    m_distances = std::move(distances);
}

Acad::ErrorStatus ORV_SegmentedCurve::append(const CurveSegment& segment) {
    assertWriteEnabled();
    CurveSegment joined = segment;
    if (!m_segments.empty() && !joinTo(m_segments.back().end(), segment, joined))
        return Acad::eInvalidInput;
    const double before = m_distances.empty() ? 0.0 : m_distances.back();
    m_segments.push_back(joined);
    m_distances.push_back(before + m_segments.back().length());
    recordGraphicsModified();
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::appendMade(bool isMade, const CurveSegment& segment) {
    return isMade ? append(segment) : Acad::eDegenerateGeometry;
}

Acad::ErrorStatus ORV_SegmentedCurve::appendLineTo(const AcGePoint3d& point) {
    assertReadEnabled();
    CurveSegment line;
    return appendMade(!m_segments.empty() && CurveSegment::line(m_segments.back().end(), point, line), line);
}

Acad::ErrorStatus ORV_SegmentedCurve::appendArcTo(const AcGePoint3d& point, double bulge,
                                                  const AcGeVector3d& normal) {
    assertReadEnabled();
    CurveSegment arc;
    return appendMade(!m_segments.empty() &&
                          CurveSegment::arcByBulge(m_segments.back().end(), point, bulge, normal, arc),
                      arc);
}

Acad::ErrorStatus ORV_SegmentedCurve::appendArcThrough(const AcGePoint3d& middle, const AcGePoint3d& point) {
    assertReadEnabled();
    CurveSegment arc;
    return appendMade(
        !m_segments.empty() && CurveSegment::arcThrough(m_segments.back().end(), middle, point, arc), arc);
}

Acad::ErrorStatus ORV_SegmentedCurve::appendArcAbout(const AcGePoint3d& centre, const AcGeVector3d& normal,
                                                     double sweep) {
    assertReadEnabled();
    CurveSegment arc;
    return appendMade(!m_segments.empty() &&
                          CurveSegment::arcAbout(m_segments.back().end(), centre, normal, sweep, arc),
                      arc);
}

Acad::ErrorStatus ORV_SegmentedCurve::appendClosingLine() {
    assertReadEnabled();
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    return isClosed() ? Acad::eOk : appendLineTo(m_segments.front().start());
}

Acad::ErrorStatus ORV_SegmentedCurve::setSegments(const Segments& segments) {
    Segments joined;
    for (const CurveSegment& segment : segments) {
        CurveSegment next = segment;
        if (!joined.empty() && !joinTo(joined.back().end(), segment, next))
            return Acad::eInvalidInput;
        joined.push_back(next);
    }
    assertWriteEnabled();
    take(std::move(joined));
    recordGraphicsModified();
    return Acad::eOk;
}

void ORV_SegmentedCurve::clear() {
    assertWriteEnabled();
    take({});
    recordGraphicsModified();
}

Acad::ErrorStatus ORV_SegmentedCurve::createCurve(double param1, double param2,
                                                  std::unique_ptr<ORV_SegmentedCurve>& newCurve) const {
    double from = 0.0;
    double to = 0.0;
    Acad::ErrorStatus es = getDistAtParam(std::min(param1, param2), from);
    if (es == Acad::eOk)
        es = getDistAtParam(std::max(param1, param2), to);
    if (es != Acad::eOk)
        return es;
    Segments parts;
    double begin = 0.0;
    for (std::size_t i = 0; i < m_segments.size(); begin = m_distances[i], ++i) {
        const CurveSegment& segment = m_segments[i];
        const double partFrom = std::max(from - begin, 0.0);
        const double partTo = to >= m_distances[i] ? segment.length() : to - begin;
        CurveSegment part;
        // A sliver at a corner, made by rounding, is none.
        if (partTo - partFrom > AcGeContext::gTol.equalPoint() && segment.part(partFrom, partTo, part))
            parts.push_back(part);
    }
    if (parts.empty())
        return Acad::eDegenerateGeometry;
    auto made = std::make_unique<ORV_SegmentedCurve>();
    made->take(std::move(parts));
    if (param1 > param2)
        made->reverseCurve();
    newCurve = std::move(made);
    return Acad::eOk;
}

std::vector<AcGePoint3d> ORV_SegmentedCurve::getVertices() const {
    assertReadEnabled();
    std::vector<AcGePoint3d> vertices;
    for (const CurveSegment& segment : m_segments)
        vertices.push_back(segment.start());
    if (!m_segments.empty() && !isClosed())
        vertices.push_back(m_segments.back().end());
    return vertices;
}

Acad::ErrorStatus ORV_SegmentedCurve::moveVertices(const std::vector<int>& indices,
                                                   const AcGeVector3d& offset) {
    const std::vector<AcGePoint3d> vertices = getVertices();
    const int count = static_cast<int>(vertices.size());
    const bool areInside =
        std::all_of(indices.begin(), indices.end(), [&](int i) { return i >= 0 && i < count; });
    if (!areInside)
        return Acad::eInvalidIndex;
    Segments moved;
    if (!withMovedVertices(indices, offset, moved))
        return Acad::eDegenerateGeometry;
    if (indices.empty())
        return Acad::eOk;
    assertWriteEnabled();
    take(std::move(moved));
    recordGraphicsModified();
    return Acad::eOk;
}

bool ORV_SegmentedCurve::withMovedVertices(const std::vector<int>& indices, const AcGeVector3d& offset,
                                           Segments& moved) const {
    const std::set<std::size_t> held(indices.begin(), indices.end());
    const std::size_t count = getVertices().size();
    const AcGeMatrix3d shift = AcGeMatrix3d::translation(offset);
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        const CurveSegment& segment = m_segments[i];
        const bool startMoves = held.count(i) != 0;
        const bool endMoves = held.count((i + 1) % count) != 0;
        CurveSegment changed = segment;
        bool isMade = true;
        if (startMoves && endMoves)
            isMade = segment.transformed(shift, changed);
        else if (startMoves || endMoves)
            isMade = segment.withEnds(startMoves ? shift * segment.start() : segment.start(),
                                      endMoves ? shift * segment.end() : segment.end(), changed);
        if (!isMade)
            return false;
        moved.push_back(changed);
    }
    return true;
}

Acad::ErrorStatus ORV_SegmentedCurve::reverseCurve() {
    assertWriteEnabled();
    Segments reversed;
    for (auto at = m_segments.rbegin(); at != m_segments.rend(); ++at)
        reversed.push_back(at->reversed());
    take(std::move(reversed));
    recordGraphicsModified();
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::subTransformBy(const AcGeMatrix3d& xform) {
    Segments transformed;
    for (const CurveSegment& segment : m_segments) {
        CurveSegment changed;
        if (!segment.transformed(xform, changed))
            return segment.isArc() ? Acad::eCannotScaleNonUniformly : Acad::eDegenerateGeometry;
        transformed.push_back(changed);
    }
    assertWriteEnabled();
    take(std::move(transformed));
    recordGraphicsModified();
    return Acad::eOk;
}
