#include "dbx/elem/load_draw.h"

#include "base/assert.h"
#include "dbx/doc/system.h"
#include "dbx/elem/generic_load.h"
#include "orvshape/arrow_head.h"
#include "orvshape/geom.h"
#include "orvshape/segmented_curve.h"

#include <algorithm>
#include <cstddef>

namespace orv::elem {

namespace {

using detail::LoadVisualizationData;

constexpr double kMostOfStem = 3.0; // a head is a third of its stem at most

bool canDrawAlong(const GenericLoad& load, const LoadVisualizationData& visData) {
    const auto& vertices = load.getVertices();
    if (load.getDistribution() == kLineLoad) {
        if (visData.visCurve->isEmpty() || vertices.empty()) {
            ORV_ASSERT(0);
            return false;
        }
        // On an element the vertices tell places on it; in space each piece begins with one.
        if (load.getElement().isNull() &&
            vertices.size() < static_cast<std::size_t>(visData.visCurve->getSegmentCount())) {
            ORV_ASSERT(0);
            return false;
        }
    }
    if (load.getDistribution() == kAreaLoad) {
        ORV_ASSERT(vertices.size() >= 3)(vertices.size())(visData.visCurve->getSegmentCount());
        return vertices.size() >= 3 && !visData.visCurve->isEmpty();
    }
    return true;
}

unsigned int flagsFor(int type) {
    unsigned int flags = detail::kShowsFirstArrow | detail::kShowsLastArrow;
    if (!isThermal(type))
        flags |= detail::kShowsIntermediateArrows | detail::kDrawsArrowHeads;
    if (isMoment(type))
        flags |= detail::kDrawsDoubleHeads;
    return flags;
}

bool hasTwoArrows(const LoadVisualizationData& visData) {
    ORV_ASSERT(visData.vertices.size() >= 2)(visData.vertices.size());
    return visData.vertices.size() >= 2;
}

} // namespace

bool drawPointLoad(AcadWorldDraw& wd, const System&, const AcGeVector3d& direction, const AcGePoint3d& point,
                   double value) {
    return wd.line(point, point + direction * value);
}

namespace detail {

bool prepare(const System& system, const GenericLoad& load, LoadVisualizationData& visData) {
    ORV_ASSERT(visData.visCurve);
    if (visData.visCurve == nullptr || !canDrawAlong(load, visData))
        return false;
    const int type = load.getType();
    const boost::optional<AcGeMatrix3d> xform = load.getElementXform();
    visData.flags = flagsFor(type);
    visData.scale = 1.0;
    visData.direction = getDirectionFor(system, type, xform);
    visData.projected = isProjected(type);
    visData.getValueAtDistFn.clear();
    visData.getValueAtPosFn.clear();
    return true;
}

bool drawLoadLines(const AcadWorldDraw& wd, const LoadVisualizationData& visData) {
    if (!hasTwoArrows(visData))
        return false;
    for (const auto& arrow : visData.vertices)
        if (arrow.visible && !arrow.point.isEqualTo(arrow.base, geom::gTol) &&
            wd.line(arrow.point, arrow.base))
            return true;
    for (auto arrow = visData.vertices.begin(), next = arrow + 1; next != visData.vertices.end();
         arrow = next++)
        if (wd.line(arrow->base, next->base))
            return true;
    return false;
}

bool drawLoadArrowHeads(AcadViewportDraw& vd, const LoadVisualizationData& visData) {
    if (!hasTwoArrows(visData))
        return false;
    if ((visData.flags & kDrawsArrowHeads) == 0)
        return false;
    const bool isDouble = (visData.flags & kDrawsDoubleHeads) != 0;
    bool isFirst = true;
    for (const auto& arrow : visData.vertices) {
        const unsigned int needed = isFirst ? kShowsFirstArrow : kShowsIntermediateArrows;
        isFirst = false;
        if (!arrow.visible || (visData.flags & needed) == 0)
            continue;
        const double length = std::min(visData.arrowLength, arrow.point.distanceTo(arrow.base) / kMostOfStem);
        if (drawArrowHead2D(vd, arrow.point, visData.direction * arrow.sign, length, isDouble, true))
            return true;
    }
    return false;
}

} // namespace detail

} // namespace orv::elem
