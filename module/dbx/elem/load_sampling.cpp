#include "dbx/elem/load_sampling.h"

#include "arx/types.h"
#include "base/assert.h"
#include "dbx/doc/system.h"
#include "dbx/elem/load_settings.h"
#include "dbx/elem/vertex_list_util.h"
#include "orvshape/approximate_curve.h"
#include "orvshape/segmented_curve.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <set>
#include <utility>
#include <vector>

namespace orv::elem::detail {

namespace {

// What is taken for a spacing of nothing, in the store's unit.
constexpr double kUsualSpacing = 0.6;
constexpr int kMostIntervals = kMostArrows - 1;
// Longest chord of an export, in point sizes of the store.
constexpr double kExportChordInPoints = 5.0;

bool canBeSampled(const LoadVisualizationData& visData) {
    ORV_ASSERT(visData.visCurve);
    if (visData.visCurve == nullptr)
        return false;
    ORV_ASSERT(visData.getValueAtDistFn || visData.getValueAtPosFn);
    return visData.getValueAtDistFn || visData.getValueAtPosFn;
}

double arrowSpacing(const System& system) {
    const double spacing = system.visSettings().getSize(kArrowSpacingSize);
    if (isEqualLoadValue(spacing, 0.0)) {
        ORV_ASSERT(0);
        return fromStore(system, kUsualSpacing);
    }
    return spacing;
}

// Compared before it is made an integer: it may be no number, or above all integers.
int intervalCount(double length, double spacing) {
    const double count = length / spacing;
    if (count >= kMostIntervals)
        return kMostIntervals;
    return count >= 1.0 ? static_cast<int>(count) : 1;
}

bool isVisible(const LoadVisualizationData& visData, std::size_t index, std::size_t last) {
    return (visData.flags & kShowsIntermediateArrows) != 0 ||
           (index == 0 && (visData.flags & kShowsFirstArrow) != 0) ||
           (index == last && (visData.flags & kShowsLastArrow) != 0);
}

LoadVisualizationData::Arrow makeArrow(const AcGePoint3d& point, const AcGeVector3d& toBase, double value,
                                       bool visible) {
    LoadVisualizationData::Arrow arrow;
    arrow.point = point;
    arrow.base = point - toBase;
    arrow.value = value;
    arrow.visible = visible;
    arrow.sign = value < 0.0 ? 1 : -1;
    return arrow;
}

double valueAtPoint(const LoadVisualizationData& visData, const AcGePoint3d& pt) {
    if (!visData.getValueAtDistFn)
        return visData.getValueAtPosFn(pt);
    double distance = 0.0;
    checkErrorStatus(visData.visCurve->getDistAtPoint(pt, distance), Acad::eOk,
                     "visData.visCurve->getDistAtPoint(pt,distance)", __FILE__, __LINE__);
    return visData.getValueAtDistFn(distance);
}

// Takes points out of a chain, one after the other, until few enough are left: always the one that is
// nearest to the one before it, the first of several such. The first and the last point stay. Points are
// linked and ordered by their gaps, so that a chain of many thousands takes no time to speak of.
class ChainThinner {
public:
    explicit ChainThinner(const AcGePoint3dArray& points) : m_points(points) {
        const std::size_t count = static_cast<std::size_t>(points.length());
        m_before.resize(count);
        m_behind.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            m_before[i] = i - 1; // of the first one nothing that is used
            m_behind[i] = i + 1;
        }
        for (std::size_t i = 1; i + 1 < count; ++i)
            m_gaps.insert(gapOf(i));
    }

    std::vector<AcGePoint3d> thinnedTo(std::size_t most) {
        const std::size_t count = m_before.size();
        for (std::size_t left = count; left > most && !m_gaps.empty(); --left)
            takeNearest();
        std::vector<AcGePoint3d> kept;
        for (std::size_t i = 0; i < count; i = m_behind[i])
            kept.push_back(pointAt(i));
        return kept;
    }

private:
    using Gap = std::pair<double, std::size_t>; // to the point before, and of which point

    const AcGePoint3d& pointAt(std::size_t index) const { return m_points[static_cast<int>(index)]; }
    // One that is no number, and could not be ordered, is as wide as can be.
    Gap gapOf(std::size_t index) const {
        const double gap = pointAt(m_before[index]).distanceTo(pointAt(index));
        return {std::isnan(gap) ? std::numeric_limits<double>::infinity() : gap, index};
    }

    void takeNearest() {
        const std::size_t taken = m_gaps.begin()->second;
        m_gaps.erase(m_gaps.begin());
        const std::size_t before = m_before[taken];
        const std::size_t behind = m_behind[taken];
        const bool isBehindLast = behind + 1 == m_before.size();
        if (!isBehindLast)
            m_gaps.erase(gapOf(behind));
        m_behind[before] = behind;
        m_before[behind] = before;
        if (!isBehindLast)
            m_gaps.insert(gapOf(behind));
    }

    const AcGePoint3dArray& m_points;
    std::vector<std::size_t> m_before;
    std::vector<std::size_t> m_behind;
    std::set<Gap> m_gaps;
};

} // namespace

double CurveDistances::length() const { return std::fabs(end - start); }

CurveDistances distancesOf(const ORV_SegmentedCurve& curve) {
    CurveDistances distances;
    double startParam = 0.0;
    double endParam = 0.0;
    if (curve.getStartParam(startParam) != Acad::eOk || curve.getEndParam(endParam) != Acad::eOk ||
        curve.getDistAtParam(startParam, distances.start) != Acad::eOk ||
        curve.getDistAtParam(endParam, distances.end) != Acad::eOk)
        return {};
    return distances;
}

double fromStore(const System& system, double size) { return system.converter().fromCdb(size); }

void sampleAlongCurve(const System& system, LoadVisualizationData& visData) {
    if (!canBeSampled(visData))
        return;
    visData.vertices.clear();
    const double spacing = arrowSpacing(system);
    const CurveDistances along = distancesOf(*visData.visCurve);
    const double length = along.length();
    const int n = intervalCount(length, spacing);
    const AcGeVector3d perValue = visData.direction * visData.scale;
    double distance = along.start;
    for (int i = 0; i <= n; ++i) {
        AcGePoint3d point;
        visData.visCurve->getPointAtDist(distance, point);
        const double value =
            visData.getValueAtDistFn ? visData.getValueAtDistFn(distance) : visData.getValueAtPosFn(point);
        visData.vertices.push_back(
            makeArrow(point, perValue * value, value,
                      isVisible(visData, static_cast<std::size_t>(i), static_cast<std::size_t>(n))));
        visData.vertices.back().distance = distance;
        distance = std::min(distance + length / n, length);
    }
    ORV_ASSERT(visData.vertices.size() >= 2)(visData.vertices.size());
}

void sampleForExport(const System& system, LoadVisualizationData& visData) {
    if (!canBeSampled(visData))
        return;
    visData.vertices.clear();
    const ApproximateCurve approximate(fromStore(system, system.pointSize() * kExportChordInPoints));
    AcGePoint3dArray points;
    approximate.create(*visData.visCurve, points);
    ORV_ASSERT(points.length() >= 2);
    if (points.length() < 2)
        return;
    const std::vector<AcGePoint3d> kept = ChainThinner(points).thinnedTo(kMostExportPoints);
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const double value = valueAtPoint(visData, kept[i]);
        visData.vertices.push_back(
            makeArrow(kept[i], visData.direction * value, value, isVisible(visData, i, kept.size() - 1)));
    }
}

} // namespace orv::elem::detail
