#include "structure/load_shape.h"

#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_distribution_functions.h"
#include "dbx/elem/load_sampling.h"
#include "dbx/elem/load_visualization_data.h"
#include "dbx/elem/vertex_list_util.h"
#include "orvshape/geom.h"
#include "orvshape/segmented_curve.h"

#include "geplane.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>
#include <utility>
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

// The first three vertices that are not in one line; none if all are.
std::vector<std::size_t> spanningVertices(const std::deque<LoadVertex>& vertices) {
    std::size_t second = 1;
    while (second < vertices.size() && vertices[second].point.isEqualTo(vertices[0].point, orv::geom::gTol))
        ++second;
    for (std::size_t third = second + 1; third < vertices.size(); ++third) {
        const AcGeVector3d side = vertices[second].point - vertices[0].point;
        const AcGeVector3d other = vertices[third].point - vertices[0].point;
        if (!other.isZeroLength(orv::geom::gTol) && !side.isParallelTo(other, orv::geom::gTol))
            return {0, second, third};
    }
    return {};
}

void setUpArea(const GenericLoad& load, LoadShape shape, const std::vector<double>& values,
               LoadVisualizationData& data) {
    AcGeVector3d normal;
    const auto& vertices = load.getVertices();
    std::vector<std::size_t> spanning;
    if (shape == LoadShape::kPlanar && data.visCurve->getNormalFromSegments(normal))
        spanning = spanningVertices(vertices);
    if (spanning.empty()) {
        const double value = values.front();
        data.getValueAtPosFn = [value](const AcGePoint3d& point) {
            return orv::elem::_getValueAtPos_uniform(value, point);
        };
        return;
    }
    const auto top = [&](std::size_t i) { return vertices[i].point + normal * values[i]; };
    const AcGePlane geometry(vertices[spanning[0]].point, normal);
    const AcGePlane over(top(spanning[1]), top(spanning[0]), top(spanning[2]));
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

// How far a value is from the straight line between its neighbours.
double heightOfPeak(const std::deque<LoadVertex>& vertices, std::size_t i) {
    const double before = shareOfVertex(vertices, i - 1), here = shareOfVertex(vertices, i);
    const double behind = shareOfVertex(vertices, i + 1);
    const double share = behind > before ? (here - before) / (behind - before) : 0.5;
    const double straight = vertices[i - 1].value + (vertices[i + 1].value - vertices[i - 1].value) * share;
    const double height = std::abs(vertices[i].value - straight);
    return std::isfinite(height) ? height : 0.0;
}

// Between the ends, in shares of the length; the highest peak first.
std::vector<double> peaksOf(const std::deque<LoadVertex>& vertices) {
    std::vector<std::pair<double, double>> peaks; // less the height, and the place
    for (std::size_t i = 1; i + 1 < vertices.size(); ++i)
        if (const double share = shareOfVertex(vertices, i); std::isfinite(share))
            peaks.emplace_back(-heightOfPeak(vertices, i), share);
    std::sort(peaks.begin(), peaks.end());
    std::vector<double> shares;
    for (const auto& [height, share] : peaks)
        shares.push_back(share);
    return shares;
}

// The peaks before the bends: where there is no room for all, those tell more.
std::vector<double> cornersOf(const GenericLoad& load, const ORV_SegmentedCurve& curve) {
    std::vector<double> distances;
    if (load.getDistribution() == orv::elem::kLineLoad) {
        const double length = curve.getLength();
        for (const double share : peaksOf(load.getVertices()))
            distances.push_back(share * length);
    }
    double distance = 0.0;
    for (int i = 0; i + 1 < curve.getSegmentCount(); ++i) {
        const orv::CurveSegment& before = *curve.getSegmentAt(i);
        distance += before.length();
        if (!before.tangentAt(before.length())
                 .isCodirectionalTo(curve.getSegmentAt(i + 1)->tangentAt(0.0), orv::geom::gTol))
            distances.push_back(distance);
    }
    return distances;
}

// The arrows of a picture in their order, while some are put in their places.
class ArrowRow {
public:
    explicit ArrowRow(LoadVisualizationData& data) : m_data(data) {
        for (const auto& arrow : data.vertices)
            m_slots.push_back({arrow, false});
        if (!m_slots.empty())
            m_slots.front().stays = m_slots.back().stays = true;
    }

    void putAt(double distance) {
        const double slack = orv::geom::gTol.equalPoint();
        const auto next =
            std::lower_bound(m_slots.begin(), m_slots.end(), distance - slack,
                             [](const Slot& slot, double place) { return slot.arrow.distance < place; });
        if (next == m_slots.end())
            return;
        if (next->arrow.distance <= distance + slack) {
            next->stays = true;
            return;
        }
        if (next == m_slots.begin())
            return;
        const bool isFull = m_slots.size() >= static_cast<std::size_t>(orv::elem::detail::kMostArrows);
        const auto moved = isFull ? nearerOf(next - 1, next, distance) : m_slots.end();
        Slot slot{{}, true};
        if ((isFull && moved == m_slots.end()) || !makeArrow(distance, slot.arrow))
            return;
        if (isFull)
            *moved = slot;
        else
            m_slots.insert(next, slot);
    }

    void giveBack() {
        m_data.vertices.clear();
        for (const Slot& slot : m_slots)
            m_data.vertices.push_back(slot.arrow);
    }

private:
    struct Slot {
        LoadVisualizationData::Arrow arrow;
        bool stays = false; // at an end, or at a corner already
    };
    using Place = std::vector<Slot>::iterator;

    // Of two neighbours; the end of the row if both stay.
    Place nearerOf(Place before, Place behind, double distance) {
        if (before->stays && behind->stays)
            return m_slots.end();
        if (before->stays || behind->stays)
            return before->stays ? behind : before;
        return distance - before->arrow.distance <= behind->arrow.distance - distance ? before : behind;
    }

    bool makeArrow(double distance, LoadVisualizationData::Arrow& arrow) const {
        if (m_data.visCurve->getPointAtDist(distance, arrow.point) != Acad::eOk)
            return false;
        arrow.distance = distance;
        arrow.value =
            m_data.getValueAtDistFn ? m_data.getValueAtDistFn(distance) : m_data.getValueAtPosFn(arrow.point);
        arrow.base = arrow.point - m_data.direction * (arrow.value * m_data.scale);
        arrow.visible = (m_data.flags & orv::elem::detail::kShowsIntermediateArrows) != 0;
        arrow.sign = arrow.value < 0.0 ? 1 : -1;
        return true;
    }

    LoadVisualizationData& m_data;
    std::vector<Slot> m_slots;
};

} // namespace

void addArrowsAtVertices(const GenericLoad& load, LoadVisualizationData& data) {
    if (data.visCurve == nullptr || (!data.getValueAtDistFn && !data.getValueAtPosFn))
        return;
    ArrowRow row(data);
    for (const double distance : cornersOf(load, *data.visCurve))
        row.putAt(distance);
    row.giveBack();
}

namespace {

// Closer to a corner of the line than this share of it a value has no place of its own.
constexpr double kSamePlace = 1e-9;

// `place` counts from 0, the first value, to that of the last one.
double valueAt(const std::vector<double>& values, double place) {
    const std::size_t before = std::min(static_cast<std::size_t>(std::max(place, 0.0)), values.size() - 1);
    const std::size_t behind = std::min(before + 1, values.size() - 1);
    return values[before] + (values[behind] - values[before]) * (place - static_cast<double>(before));
}

// Of the ends of all pieces, in shares of the length.
std::vector<double> pieceEnds(const ORV_SegmentedCurve& curve) {
    std::vector<double> shares = {0.0};
    const double length = curve.getLength();
    double distance = 0.0;
    for (int i = 0; i < curve.getSegmentCount(); ++i) {
        distance += curve.getSegmentAt(i)->length();
        shares.push_back(distance / length);
    }
    return shares;
}

// The ends of the pieces, and the places of the values that lie between.
std::vector<double> withPlacesOfValues(const std::vector<double>& ends, std::size_t valueCount) {
    std::vector<double> shares = ends;
    for (std::size_t i = 1; i + 1 < valueCount; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(valueCount - 1);
        const auto next = std::lower_bound(ends.begin(), ends.end(), share - kSamePlace);
        if (next != ends.end() && *next > share + kSamePlace)
            shares.push_back(share);
    }
    std::sort(shares.begin(), shares.end());
    return shares;
}

// Takes the first, the middle and the last of some vertices to the first, the middle and the last value.
double placeByIndex(std::size_t index, std::size_t count, std::size_t valueCount) {
    const std::size_t middle = count / 2, middleValue = valueCount / 2;
    if (index <= middle)
        return static_cast<double>(index * middleValue) / static_cast<double>(middle);
    return static_cast<double>(middleValue) +
           static_cast<double>((index - middle) * (valueCount - 1 - middleValue)) /
               static_cast<double>(count - 1 - middle);
}

LoadVertex vertexAt(double position, double value) {
    LoadVertex vertex;
    vertex.position = position;
    vertex.value = value;
    return vertex;
}

} // namespace

std::deque<LoadVertex> verticesAlong(const ORV_SegmentedCurve& curve, LoadShape shape,
                                     const std::vector<double>& values) {
    std::deque<LoadVertex> vertices;
    const std::vector<double> ends = pieceEnds(curve);
    const double steps = values.size() > 1 ? static_cast<double>(values.size() - 1) : 0.0;
    if (values.size() >= ends.size())
        for (std::size_t i = 0; i < values.size(); ++i)
            vertices.push_back(vertexAt(static_cast<double>(i) / steps, values[i]));
    else if (shape == LoadShape::kLinear)
        for (const double share : withPlacesOfValues(ends, values.size()))
            vertices.push_back(vertexAt(share, valueAt(values, share * steps)));
    else
        for (std::size_t i = 0; i < ends.size(); ++i)
            vertices.push_back(
                vertexAt(ends[i], valueAt(values, placeByIndex(i, ends.size(), values.size()))));
    return vertices;
}

std::vector<ValuePlace> valuePlaces(const GenericLoad& load, LoadShape shape, double length) {
    const std::deque<LoadVertex>& vertices = load.getVertices();
    if (vertices.empty())
        return {};
    const auto middle = static_cast<unsigned int>(vertices.size() / 2);
    const auto last = static_cast<unsigned int>(vertices.size() - 1);
    switch (shape) {
    case LoadShape::kLinearMid:
        return {{0.0, 0}, {length / 2.0, middle}, {length, 0}};
    case LoadShape::kQuadraticStart:
    case LoadShape::kCubicStart:
        return {{0.0, 0}};
    case LoadShape::kQuadraticEnd:
    case LoadShape::kCubicEnd:
        return {{length, last}};
    case LoadShape::kQuadraticMid:
        return {{length / 2.0, middle}};
    default:
        break;
    }
    if (orv::elem::VertextListUtil::isUniform(vertices))
        return {{length / 2.0, 0}};
    std::vector<ValuePlace> places;
    for (unsigned int i = 0; i <= last; ++i)
        places.push_back({shareOfVertex(vertices, i) * length, i});
    return places;
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
