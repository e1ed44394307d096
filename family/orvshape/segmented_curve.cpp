#include "orvshape/segmented_curve.h"

#include "geplane.h"
#include "orvshape/segment_chain.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxregsvc.h"

#include <algorithm>
#include <cmath>

using orv::CurveSegment;

ACRX_DXF_DEFINE_MEMBERS(ORV_SegmentedCurve, AcDbCurve, AcDb::kDHL_1014, 126, 0, ORV_SEGMENTEDCURVE,
                        ORV_OE_LOADER_191)

namespace {

// Whoever has the library has the class: before the host's own classes come up, or behind them.
const bool g_isRegistered = [] {
    acrxSysRegistry();
    ORV_SegmentedCurve::rxInit();
    acrxBuildClassHierarchy();
    return true;
}();

} // namespace

ORV_SegmentedCurve::ORV_SegmentedCurve() { static_cast<void>(g_isRegistered); }
ORV_SegmentedCurve::~ORV_SegmentedCurve() = default;

bool ORV_SegmentedCurve::isEmpty() const {
    assertReadEnabled();
    return m_segments.empty();
}

int ORV_SegmentedCurve::getSegmentCount() const {
    assertReadEnabled();
    return static_cast<int>(m_segments.size());
}

const CurveSegment* ORV_SegmentedCurve::getSegmentAt(int index) const {
    assertReadEnabled();
    if (index < 0 || static_cast<std::size_t>(index) >= m_segments.size())
        return nullptr;
    return &m_segments[static_cast<std::size_t>(index)];
}

AcGePoint3d ORV_SegmentedCurve::startPoint() const {
    assertReadEnabled();
    return m_segments.empty() ? AcGePoint3d::kOrigin : m_segments.front().start();
}

AcGePoint3d ORV_SegmentedCurve::endPoint() const {
    assertReadEnabled();
    return m_segments.empty() ? AcGePoint3d::kOrigin : m_segments.back().end();
}

double ORV_SegmentedCurve::getLength() const {
    assertReadEnabled();
    return m_distances.empty() ? 0.0 : m_distances.back();
}

Adesk::Boolean ORV_SegmentedCurve::isClosed() const {
    assertReadEnabled();
    return orv::isClosedChain(m_segments);
}

Adesk::Boolean ORV_SegmentedCurve::isPeriodic() const {
    assertReadEnabled();
    return m_segments.size() == 1 && m_segments.front().isFullCircle();
}

// The piece at a distance; at a corner the one behind it. False for what is not on the curve.
bool ORV_SegmentedCurve::locate(double distance, std::size_t& index, double& onSegment) const {
    if (m_segments.empty())
        return false;
    const double length = m_distances.back();
    const double slack = std::max(AcGeContext::gTol.equalPoint(), 1.0e-12 * length);
    if (!(distance >= -slack) || !(distance <= length + slack))
        return false;
    const auto behind = std::upper_bound(m_distances.begin(), m_distances.end(), distance);
    index = std::min(static_cast<std::size_t>(behind - m_distances.begin()), m_segments.size() - 1);
    const double before = index == 0 ? 0.0 : m_distances[index - 1];
    onSegment = std::min(std::max(distance - before, 0.0), m_segments[index].length());
    if (distance >= length)
        onSegment = m_segments[index].length();
    return true;
}

double ORV_SegmentedCurve::nearestDistance(const AcGePoint3d& point, bool extend,
                                           AcGePoint3d& nearest) const {
    const bool isOpen = extend && !orv::isClosedChain(m_segments);
    double found = 0.0;
    double least = 0.0;
    double before = 0.0;
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        const CurveSegment& segment = m_segments[i];
        const double on = segment.nearestTo(point, isOpen && i == 0, isOpen && i + 1 == m_segments.size());
        const AcGePoint3d place = segment.pointAt(on);
        const double away = place.distanceTo(point);
        // Of places that are equally near the first counts, whatever rounding makes of them.
        if (i == 0 || away < least - AcGeContext::gTol.equalPoint()) {
            least = away;
            nearest = place;
            found = before + on;
        }
        before = m_distances[i];
    }
    return found;
}

bool ORV_SegmentedCurve::nearestPerpendicular(const AcGePoint3d& point, AcGePoint3d& nearest) const {
    const bool isOpen = !orv::isClosedChain(m_segments);
    bool isFound = false;
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        const CurveSegment& segment = m_segments[i];
        std::vector<AcGePoint3d> nearTo = {point};
        // On an arc's far side, too, the way through the centre meets it at a right angle.
        if (segment.isArc())
            nearTo.push_back(segment.centre() - (point - segment.centre()));
        for (const AcGePoint3d& one : nearTo) {
            const double on = segment.nearestTo(one, isOpen && i == 0, isOpen && i + 1 == m_segments.size());
            const AcGePoint3d place = segment.pointAt(on);
            const AcGeVector3d way = place - point;
            // At a corner the nearest place of a piece is its end, at whatever angle.
            if (std::fabs(way.dotProduct(segment.tangentAt(on))) > orv::curveSlack(place))
                continue;
            if (isFound && way.length() >= nearest.distanceTo(point) - AcGeContext::gTol.equalPoint())
                continue;
            nearest = place;
            isFound = true;
        }
    }
    return isFound;
}

Acad::ErrorStatus ORV_SegmentedCurve::getStartParam(double& param) const {
    assertReadEnabled();
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    param = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::getEndParam(double& param) const {
    assertReadEnabled();
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    param = m_distances.back();
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::getStartPoint(AcGePoint3d& point) const {
    return getPointAtParam(0.0, point);
}

Acad::ErrorStatus ORV_SegmentedCurve::getEndPoint(AcGePoint3d& point) const {
    return getPointAtParam(getLength(), point);
}

Acad::ErrorStatus ORV_SegmentedCurve::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    std::size_t index = 0;
    double on = 0.0;
    if (!locate(param, index, on))
        return m_segments.empty() ? Acad::eDegenerateGeometry : Acad::eInvalidInput;
    point = m_segments[index].pointAt(on);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    assertReadEnabled();
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    AcGePoint3d nearest;
    const double distance = nearestDistance(point, false, nearest);
    if (!(nearest.distanceTo(point) <= orv::curveSlack(point)))
        return Acad::eInvalidInput;
    param = std::min(distance, m_distances.back());
    return Acad::eOk;
}

// Parameters are distances, so both ways only the range is looked at.
Acad::ErrorStatus ORV_SegmentedCurve::getDistAtParam(double param, double& dist) const {
    assertReadEnabled();
    std::size_t index = 0;
    double on = 0.0;
    if (!locate(param, index, on))
        return m_segments.empty() ? Acad::eDegenerateGeometry : Acad::eInvalidInput;
    dist = std::min(std::max(param, 0.0), m_distances.back());
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::getParamAtDist(double dist, double& param) const {
    return getDistAtParam(dist, param);
}

Acad::ErrorStatus ORV_SegmentedCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    return getParamAtPoint(point, dist);
}

Acad::ErrorStatus ORV_SegmentedCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
    return getPointAtParam(dist, point);
}

Acad::ErrorStatus ORV_SegmentedCurve::getFirstDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    std::size_t index = 0;
    double on = 0.0;
    if (!locate(param, index, on))
        return m_segments.empty() ? Acad::eDegenerateGeometry : Acad::eInvalidInput;
    deriv = m_segments[index].tangentAt(on);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::getSecondDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    std::size_t index = 0;
    double on = 0.0;
    if (!locate(param, index, on))
        return m_segments.empty() ? Acad::eDegenerateGeometry : Acad::eInvalidInput;
    deriv = m_segments[index].curvatureAt(on);
    return Acad::eOk;
}

Acad::ErrorStatus ORV_SegmentedCurve::getClosestPointTo(const AcGePoint3d& givenPoint,
                                                        AcGePoint3d& pointOnCurve,
                                                        Adesk::Boolean extend) const {
    assertReadEnabled();
    if (m_segments.empty())
        return Acad::eDegenerateGeometry;
    nearestDistance(givenPoint, extend != 0, pointOnCurve);
    return Acad::eOk;
}

bool ORV_SegmentedCurve::getNormalFromSegments(AcGeVector3d& normal) const {
    assertReadEnabled();
    AcGeVector3d direction;
    if (orv::spanOf(m_segments, direction) != orv::ChainSpan::kPlane)
        return false;
    normal = direction;
    return true;
}

Acad::ErrorStatus ORV_SegmentedCurve::getArea(double& area) const {
    assertReadEnabled();
    AcGeVector3d direction;
    switch (orv::spanOf(m_segments, direction)) {
    case orv::ChainSpan::kNothing:
        return Acad::eDegenerateGeometry;
    case orv::ChainSpan::kSpace:
        return Acad::eNonPlanarEntity;
    case orv::ChainSpan::kLine:
        area = 0.0;
        return Acad::eOk;
    case orv::ChainSpan::kPlane:
        break;
    }
    area = orv::areaOf(m_segments).length();
    return Acad::eOk;
}

Adesk::Boolean ORV_SegmentedCurve::isPlanar() const {
    assertReadEnabled();
    AcGeVector3d direction;
    const orv::ChainSpan span = orv::spanOf(m_segments, direction);
    return span == orv::ChainSpan::kLine || span == orv::ChainSpan::kPlane;
}

Acad::ErrorStatus ORV_SegmentedCurve::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    AcGeVector3d direction;
    const orv::ChainSpan span = orv::spanOf(m_segments, direction);
    if (span == orv::ChainSpan::kNothing)
        return Acad::eDegenerateGeometry;
    if (span == orv::ChainSpan::kSpace) {
        planarity = AcDb::kNonPlanar;
        return Acad::eNonPlanarEntity;
    }
    const bool isLine = span == orv::ChainSpan::kLine;
    planarity = isLine ? AcDb::kLinear : AcDb::kPlanar;
    plane.set(m_segments.front().start(), isLine ? direction.perpVector() : direction);
    return Acad::eOk;
}
