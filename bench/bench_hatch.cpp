#include "ratio.h"

#include "dbhatch.h"
#include "embedded/host_start.h"

#include <benchmark/benchmark.h>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/geometries.hpp>
#include <boost/geometry/geometries/point_xy.hpp>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

// A thousand hatches of 100 edges each are evaluated. The peer gets the same lines, long enough to reach
// across, and the loops as polygons that are valid and ready; it clips the ones by the others.
namespace {

namespace bg = boost::geometry;
using Point = bg::model::d2::point_xy<double>;
using Polygon = bg::model::polygon<Point>;
using Lines = bg::model::multi_linestring<bg::model::linestring<Point>>;

constexpr int kHatches = 1000;
constexpr int kEdges = 100;
constexpr double kRadius = 10.0;
constexpr double kSpace = 0.25;
constexpr double kAngle = 0.7;

std::vector<AcGePoint2d> star(std::mt19937& random) {
    std::uniform_real_distribution<double> radius(0.5 * kRadius, kRadius);
    std::vector<AcGePoint2d> corners;
    for (int i = 0; i < kEdges; ++i) {
        const double angle = 6.283185307179586 * i / kEdges;
        corners.push_back(AcGePoint2d::kOrigin +
                          AcGeVector2d(std::cos(angle), std::sin(angle)) * radius(random));
    }
    return corners;
}

std::vector<std::vector<AcGePoint2d>> allStars() {
    std::mt19937 random(7);
    std::vector<std::vector<AcGePoint2d>> stars;
    for (int i = 0; i < kHatches; ++i)
        stars.push_back(star(random));
    return stars;
}

void evaluateHatches(benchmark::State& state) {
    embedded::startHost();
    std::vector<std::unique_ptr<AcDbHatch>> hatches;
    for (const std::vector<AcGePoint2d>& corners : allStars()) {
        AcGePoint2dArray vertices;
        for (const AcGePoint2d& corner : corners)
            vertices.append(corner);
        hatches.push_back(std::make_unique<AcDbHatch>());
        hatches.back()->setPatternSpace(kSpace);
        hatches.back()->setPatternAngle(kAngle);
        hatches.back()->setPattern(AcDbHatch::kUserDefined, L"");
        hatches.back()->appendLoop(AcDbHatch::kDefault, vertices, AcGeDoubleArray());
    }
    for (auto _ : state)
        for (const std::unique_ptr<AcDbHatch>& hatch : hatches)
            if (hatch->evaluateHatch() != Acad::eOk || hatch->numHatchLines() == 0)
                state.SkipWithError("no lines");
}

void clipLines(benchmark::State& state) {
    std::vector<Polygon> polygons;
    for (const std::vector<AcGePoint2d>& corners : allStars()) {
        polygons.emplace_back();
        for (const AcGePoint2d& corner : corners)
            polygons.back().outer().emplace_back(corner.x, corner.y);
        bg::correct(polygons.back());
    }
    Lines lines;
    const AcGeVector2d along(std::cos(kAngle), std::sin(kAngle));
    const int side = static_cast<int>(kRadius / kSpace);
    for (int i = -side; i <= side; ++i) {
        const AcGePoint2d middle = AcGePoint2d::kOrigin + along.perpVector() * (kSpace * i);
        const AcGePoint2d from = middle - along * (2.0 * kRadius), to = middle + along * (2.0 * kRadius);
        lines.push_back({Point(from.x, from.y), Point(to.x, to.y)});
    }
    for (auto _ : state) {
        for (const Polygon& polygon : polygons) {
            Lines clipped;
            bg::intersection(lines, polygon, clipped);
            if (clipped.empty())
                state.SkipWithError("no lines");
            benchmark::DoNotOptimize(clipped);
        }
    }
}

BENCHMARK(evaluateHatches)->Unit(benchmark::kMillisecond);
BENCHMARK(clipLines)->Unit(benchmark::kMillisecond);

const Comparison row("1,000 hatches of 100 edges", "evaluateHatches", "clipLines", 1.5);

} // namespace
