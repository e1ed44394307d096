#include "structure/load_shape.h"

#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_distribution_functions.h"
#include "dbx/elem/load_visualization_data.h"
#include "orvshape/geom.h"
#include "orvshape/segmented_curve.h"

#include "geplane.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>
#include <vector>

namespace structure {

using orv::elem::GenericLoad;
using orv::elem::LoadVertex;
using orv::elem::detail::LoadVisualizationData;

namespace {

struct PlacedValue {
    double distance = 0.0;
    double value = 0.0;
};

// The picture's values are lengths: those of the vertices go through the settings, and the shape lies between
// them, so that a straight load looks straight also where values are drawn by their logarithm.
std::vector<double> valuesOf(const GenericLoad& load, const orv::System& system,
                             const LoadVisualizationData& data) {
    std::vector<double> values;
    for (const LoadVertex& vertex : load.getVertices())
        values.push_back(data.owned
                             ? orv::elem::scaleLoadValueForDisplay(system, load.getType(), vertex.value)
                             : vertex.value);
    return values;
}

double betweenNeighbours(const std::vector<PlacedValue>& places, double distance) {
    std::size_t next = 1;
    while (next + 1 < places.size() && places[next].distance < distance)
        ++next;
    if (next >= places.size())
        return places.front().value;
    const PlacedValue& from = places[next - 1];
    const PlacedValue& to = places[next];
    const double length = to.distance - from.distance;
    return length > 0.0
               ? orv::elem::_getValueAtDist_linear(length, from.value, to.value, distance - from.distance)
               : to.value;
}

void setUpLine(const GenericLoad& load, LoadShape shape, const std::vector<double>& values,
               LoadVisualizationData& data) {
    using namespace orv::elem;
    const double length = data.visCurve->getLength();
    const double first = values.front();
    const double middle = values[values.size() / 2];
    const double last = values.back();
    switch (shape) {
    case LoadShape::kLinearMid:
        data.getValueAtDistFn = [=](double d) { return _getValueAtDist_linearMid(length, first, middle, d); };
        break;
    case LoadShape::kQuadraticStart:
        data.getValueAtDistFn = [=](double d) {
            return _getValueAtDist_quadratic_P_at_start(length, first, d);
        };
        break;
    case LoadShape::kQuadraticEnd:
        data.getValueAtDistFn = [=](double d) { return _getValueAtDist_quadratic_P_at_end(length, last, d); };
        break;
    case LoadShape::kCubicStart:
        data.getValueAtDistFn = [=](double d) { return _getValueAtDist_cubic_P_at_start(length, first, d); };
        break;
    case LoadShape::kCubicEnd:
        data.getValueAtDistFn = [=](double d) { return _getValueAtDist_cubic_P_at_end(length, last, d); };
        break;
    case LoadShape::kQuadraticMid:
        data.getValueAtDistFn = [=](double d) {
            return _getValueAtDist_quadratic_P_at_mid_inverse(length, middle, d);
        };
        break;
    default: {
        std::vector<PlacedValue> places;
        for (std::size_t i = 0; i < values.size(); ++i)
            places.push_back({shareOfVertex(load.getVertices(), i) * length, values[i]});
        data.getValueAtDistFn = [places](double d) { return betweenNeighbours(places, d); };
    }
    }
}

void setUpArea(const GenericLoad& load, LoadShape shape, const std::vector<double>& values,
               LoadVisualizationData& data) {
    AcGeVector3d normal;
    const auto& vertices = load.getVertices();
    if (shape != LoadShape::kPlanar || values.size() < 3 || !data.visCurve->getNormalFromSegments(normal)) {
        const double value = values.front();
        data.getValueAtPosFn = [value](const AcGePoint3d& point) {
            return orv::elem::_getValueAtPos_uniform(value, point);
        };
        return;
    }
    const AcGePlane geometry(vertices[0].point, normal);
    const AcGePlane over(vertices[1].point + normal * values[1], vertices[0].point + normal * values[0],
                         vertices[2].point + normal * values[2]);
    data.getValueAtPosFn = [geometry, over](const AcGePoint3d& point) {
        return orv::elem::_getValueAtPos_planar(geometry, over, point);
    };
}

std::wstring valueText(double value, const std::wstring& unit) {
    std::wostringstream text;
    text.imbue(std::locale::classic());
    text << value;
    return unit.empty() ? text.str() : text.str() + L" " + unit;
}

} // namespace

ShapedLoad::~ShapedLoad() = default;

void setUpValues(const GenericLoad& load, LoadShape shape, orv::System& system, LoadVisualizationData& data) {
    const std::vector<double> values = valuesOf(load, system, data);
    if (values.empty() || data.visCurve == nullptr)
        return;
    if (load.getDistribution() == orv::elem::kLineLoad)
        setUpLine(load, shape, values, data);
    else
        setUpArea(load, shape, values, data);
}

namespace {

std::vector<double> cornersOf(const GenericLoad& load, const ORV_SegmentedCurve& curve) {
    std::vector<double> distances;
    double distance = 0.0;
    for (int i = 0; i + 1 < curve.getSegmentCount(); ++i) {
        const orv::CurveSegment& before = *curve.getSegmentAt(i);
        distance += before.length();
        if (!before.tangentAt(before.length())
                 .isCodirectionalTo(curve.getSegmentAt(i + 1)->tangentAt(0.0), orv::geom::gTol))
            distances.push_back(distance);
    }
    if (load.getDistribution() == orv::elem::kLineLoad)
        for (std::size_t i = 1; i + 1 < load.getVertices().size(); ++i)
            distances.push_back(shareOfVertex(load.getVertices(), i) * curve.getLength());
    return distances;
}

void addArrow(double distance, LoadVisualizationData& data) {
    auto& arrows = data.vertices;
    const double slack = orv::geom::gTol.equalPoint();
    const auto next =
        std::find_if(arrows.begin(), arrows.end(), [&](const LoadVisualizationData::Arrow& one) {
            return one.distance > distance - slack;
        });
    if (next == arrows.begin() || next == arrows.end() || next->distance < distance + slack)
        return;
    LoadVisualizationData::Arrow arrow;
    if (data.visCurve->getPointAtDist(distance, arrow.point) != Acad::eOk)
        return;
    arrow.distance = distance;
    arrow.value = data.getValueAtDistFn ? data.getValueAtDistFn(distance) : data.getValueAtPosFn(arrow.point);
    arrow.base = arrow.point - data.direction * (arrow.value * data.scale);
    arrow.visible = (data.flags & orv::elem::detail::kShowsIntermediateArrows) != 0;
    arrow.sign = arrow.value < 0.0 ? 1 : -1;
    arrows.insert(next, arrow);
}

} // namespace

void addArrowsAtVertices(const GenericLoad& load, LoadVisualizationData& data) {
    if (data.visCurve == nullptr || (!data.getValueAtDistFn && !data.getValueAtPosFn))
        return;
    for (const double distance : cornersOf(load, *data.visCurve))
        addArrow(distance, data);
}

void writeTexts(GenericLoad& load, const std::wstring& unit) {
    const int count = static_cast<int>(load.numVertices());
    for (int i = 0; i < count; ++i) {
        const double value = load.getValueAt(i).value_or(0.0);
        load.setTextAt(i, value == 0.0 ? std::wstring() : valueText(value, unit));
    }
}

double shareOfVertex(const std::deque<LoadVertex>& vertices, std::size_t index) {
    const double first = vertices.front().position;
    const double whole = vertices.back().position - first;
    if (whole != 0.0)
        return std::clamp((vertices[index].position - first) / whole, 0.0, 1.0);
    return vertices.size() > 1 ? static_cast<double>(index) / static_cast<double>(vertices.size() - 1) : 0.0;
}

namespace {

// The corners of a free line in shares of its length, if it has as many as vertices.
void takePositionsFrom(const ORV_SegmentedCurve& curve, GenericLoad& load) {
    const std::size_t count = load.getVertices().size();
    if (!load.getElement().isNull() || count != static_cast<std::size_t>(curve.getSegmentCount()) + 1)
        return;
    double distance = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            distance += curve.getSegmentAt(static_cast<int>(i) - 1)->length();
        const double share = distance / curve.getLength();
        if (std::abs(load.getVertices()[i].position - share) > 1e-12)
            load.getVerticesForWrite()[i].position = share;
    }
}

} // namespace

void takePointsFrom(const ORV_SegmentedCurve& curve, GenericLoad& load) {
    const std::deque<LoadVertex>& present = load.getVertices();
    if (curve.isEmpty() || present.empty())
        return;
    std::vector<AcGePoint3d> points;
    if (load.getDistribution() == orv::elem::kAreaLoad)
        points = curve.getVertices();
    else {
        takePositionsFrom(curve, load);
        for (std::size_t i = 0; i < present.size(); ++i) {
            AcGePoint3d point;
            curve.getPointAtDist(shareOfVertex(present, i) * curve.getLength(), point);
            points.push_back(point);
        }
    }
    const std::size_t count = std::min(points.size(), present.size());
    for (std::size_t i = 0; i < count; ++i)
        if (!present[i].point.isEqualTo(points[i]))
            load.getVerticesForWrite()[i].point = points[i];
}

} // namespace structure
