#include "dbhatch.h"
#include "entity_fixture.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/geometries.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <rapidcheck.h>

#include <cmath>

namespace bg = boost::geometry;

namespace {

using Point = bg::model::d2::point_xy<double>;
using Polygon = bg::model::polygon<Point>;
using Lines = bg::model::multi_linestring<bg::model::linestring<Point>>;

// Corners in the order of their angles never cross each other.
std::vector<Point> star(const std::vector<int>& radii, double smallest, double x, double y) {
    std::vector<Point> corners;
    for (std::size_t i = 0; i < radii.size(); ++i) {
        const double angle = 2.0 * kTestPi * static_cast<double>(i) / static_cast<double>(radii.size());
        const double radius = smallest * (1.0 + std::abs(radii[i] % 100) / 100.0);
        corners.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle));
    }
    return corners;
}

void append(AcDbHatch& hatch, const std::vector<Point>& corners) {
    AcGePoint2dArray vertices;
    for (const Point& corner : corners)
        vertices.append(AcGePoint2d(corner.x(), corner.y()));
    RC_ASSERT(hatch.appendLoop(AcDbHatch::kDefault, vertices, AcGeDoubleArray()) == Acad::eOk);
}

} // namespace

TEST(HatchProperties, LinesAreAsLongAsAnIndependentClippingFindsThem) {
    embedded::startHost();
    EXPECT_TRUE(rc::check("lines of a star with a hole", [] {
        const auto count = *rc::gen::inRange<std::size_t>(3, 40);
        const auto outer =
            star(*rc::gen::container<std::vector<int>>(count, rc::gen::arbitrary<int>()), 10.0, 5.0, -3.0);
        const auto hole =
            star(*rc::gen::container<std::vector<int>>(count, rc::gen::arbitrary<int>()), 2.0, 5.0, -3.0);
        const double angle = *rc::gen::inRange(0, 628) / 100.0;
        AcDbHatch hatch;
        hatch.setPatternSpace(0.37);
        hatch.setPatternAngle(angle);
        hatch.setPattern(AcDbHatch::kUserDefined, L"");
        append(hatch, outer);
        append(hatch, hole);
        RC_ASSERT(hatch.evaluateHatch() == Acad::eOk);
        double ours = 0.0;
        for (int i = 0; i < hatch.numHatchLines(); ++i) {
            AcGePoint2d from, to;
            hatch.getHatchLineDataAt(i, from, to);
            ours += from.distanceTo(to);
        }

        Polygon polygon;
        polygon.outer().assign(outer.begin(), outer.end());
        polygon.inners().resize(1);
        polygon.inners()[0].assign(hole.begin(), hole.end());
        bg::correct(polygon);
        Lines lines;
        const AcGeVector2d along(std::cos(angle), std::sin(angle));
        for (int i = -100; i <= 100; ++i) {
            const AcGePoint2d middle = AcGePoint2d::kOrigin + along.perpVector() * (0.37 * i);
            const AcGePoint2d from = middle - along * 100.0, to = middle + along * 100.0;
            lines.push_back({Point(from.x, from.y), Point(to.x, to.y)});
        }
        Lines clipped;
        bg::intersection(lines, polygon, clipped);
        RC_ASSERT(std::fabs(ours - bg::length(clipped)) < 1.0e-6);
        double area = 0.0;
        RC_ASSERT(hatch.getArea(area) == Acad::eOk);
        RC_ASSERT(std::fabs(area - bg::area(polygon)) < 1.0e-9);
    }));
}
