#pragma once

#include "dbx/elem/load_vertex.h"
#include "structure/export.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

class ORV_SegmentedCurve;

namespace orv {
class System;
}
namespace orv::elem {
struct GenericLoad;
}
namespace orv::elem::detail {
struct LoadVisualizationData;
}

namespace structure {

// How the value of a load runs between its vertices. The numbers are filed. Those of a line: the first six,
// by the distance along it; of an area: the last two, by the place. A point load has none, and is kLinear.
enum class LoadShape : std::uint32_t {
    kLinear = 0,         // straight from vertex to vertex; any number of them
    kLinearMid = 1,      // the first value at both ends, that of the middle vertex in the middle
    kQuadraticStart = 2, // the first value at the start, falling to nothing
    kQuadraticEnd = 3,   // the last value at the end
    kCubicStart = 4,
    kCubicEnd = 5,
    kQuadraticMid = 6, // nothing at the ends, the value of the middle vertex in the middle
    kUniform = 7,      // the first value all over
    kPlanar = 8,       // on the plane through the values of the first three vertices that stand in no line;
                       // kUniform where there are none
};
constexpr LoadShape kLastLoadShape = LoadShape::kPlanar;

// What loads of both kinds have in common: how the values run, and what they are counted in. The values of
// LoadOf are set through this.
class STRUCTURE_API ShapedLoad {
public:
    virtual ~ShapedLoad();

    // Read; write.
    virtual LoadShape shape() const = 0;
    virtual void setShape(LoadShape shape) = 0;
    // Stands behind each value in the texts, as in "4.5 kN/m". Read; write.
    virtual const std::wstring& unit() const = 0;
    virtual void setUnit(const std::wstring& unit) = 0;
};

// Sets the function of a line or area load (GenericLoad::setupInterpolationData). For the picture the values
// are those that the system's settings make of them; for the export they are the load's own.
void setUpValues(const orv::elem::GenericLoad& load, LoadShape shape, orv::System& system,
                 orv::elem::detail::LoadVisualizationData& data);

// Where the values of a free line stand, by the number of the points between and at the ends of its pieces:
// as many values at these points, more at equal distances. Fewer would leave points without a value; then
// each point has one, too: that which lies there between the values at equal distances. For shapes that go by
// their first, middle and last value alone the points between take theirs from these.
std::deque<orv::elem::LoadVertex> verticesAlong(const ORV_SegmentedCurve& curve, LoadShape shape,
                                                const std::vector<double>& values);

// Which value of a line load is written where.
struct ValuePlace {
    double distance = 0.0; // along the load's curve
    unsigned int vertex = 0;
};
// At the places of all values that the shape goes by; what is the same all along is written once.
std::vector<ValuePlace> valuePlaces(const orv::elem::GenericLoad& load, LoadShape shape, double length);

// Sees to it that arrows stand where the outline of the values has a corner or a peak: at the vertices and
// where the curve turns. Between the arrows of equal distances these would be cut off. Where there are
// as many arrows as a picture has, the nearest one goes there instead.
void addArrowsAtVertices(const orv::elem::GenericLoad& load, orv::elem::detail::LoadVisualizationData& data);

// Gives each vertex its value with the unit as its text; none to a value of 0. Write.
void writeTexts(orv::elem::GenericLoad& load, const std::wstring& unit);

// Where a vertex of a line load stands on the load's own curve, from 0 to 1.
double shareOfVertex(const std::deque<orv::elem::LoadVertex>& vertices, std::size_t index);

// Brings the vertices to where they belong on the load's curve: those of an area, and of a free line that has
// as many, to its corners; others by their positions. Write, where one is not in its place already.
void takePointsFrom(const ORV_SegmentedCurve& curve, orv::elem::GenericLoad& load);

} // namespace structure
