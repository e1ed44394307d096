#include "dbx/doc/converter.h"
#include "ratio.h"

#include <Eigen/Dense>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

// 1,000,000 points from the drawing's coordinates to the store's and back, beside a linear algebra library's
// own transform on the same points. Ours turns and scales; the library's matrix turns alone.

namespace {

constexpr int kPoints = 1000000;
constexpr double kAngle = 0.7;
constexpr double kScale = 0.001;

std::vector<AcGePoint3d> ourPoints() {
    std::vector<AcGePoint3d> points;
    points.reserve(kPoints);
    for (int i = 0; i < kPoints; ++i)
        points.emplace_back(i * 0.5, 1000.0 - i, (i % 977) * 0.25);
    return points;
}

std::vector<Eigen::Vector3d> peerPoints() {
    std::vector<Eigen::Vector3d> points;
    points.reserve(kPoints);
    for (const AcGePoint3d& point : ourPoints())
        points.emplace_back(point.x, point.y, point.z);
    return points;
}

orv::Converter converter() {
    orv::Converter made;
    made.prepare(AcGeMatrix3d::rotation(kAngle, {1, 2, 3}), kScale);
    return made;
}

Eigen::Affine3d transform() {
    return Eigen::Affine3d(Eigen::AngleAxisd(kAngle, Eigen::Vector3d(1, 2, 3).normalized()));
}

// That both do the same work is seen before it is timed.
void requireSame() {
    const orv::Converter ours = converter();
    const Eigen::Affine3d peer = transform();
    const auto a = ourPoints();
    const auto b = peerPoints();
    for (int i = 0; i < kPoints; i += 1009) {
        const AcGePoint3d p = ours.toCdb(a[static_cast<std::size_t>(i)]);
        const Eigen::Vector3d q = peer * b[static_cast<std::size_t>(i)] * kScale;
        if ((Eigen::Vector3d(p.x, p.y, p.z) - q).norm() > 1e-9)
            std::abort();
    }
}

void convertToStore(benchmark::State& state) {
    requireSame();
    const orv::Converter way = converter();
    const auto points = ourPoints();
    std::vector<AcGePoint3d> converted(points.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < points.size(); ++i)
            converted[i] = way.toCdb(points[i]);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(convertToStore)->Unit(benchmark::kMillisecond)->Repetitions(5);

void convertFromStore(benchmark::State& state) {
    const orv::Converter way = converter();
    const auto points = ourPoints();
    std::vector<AcGePoint3d> converted(points.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < points.size(); ++i)
            converted[i] = way.fromCdb(points[i]);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(convertFromStore)->Unit(benchmark::kMillisecond)->Repetitions(5);

void convertInPlace(benchmark::State& state) {
    const AcGeMatrix3d matrix = AcGeMatrix3d::rotation(kAngle, {1, 2, 3});
    auto points = ourPoints();
    for (auto _ : state) {
        for (AcGePoint3d& point : points)
            point.transformBy(matrix);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(convertInPlace)->Unit(benchmark::kMillisecond)->Repetitions(5);

void peerPointByPoint(benchmark::State& state) {
    const Eigen::Affine3d way = transform();
    const auto points = peerPoints();
    std::vector<Eigen::Vector3d> converted(points.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < points.size(); ++i)
            converted[i] = way * points[i];
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(peerPointByPoint)->Unit(benchmark::kMillisecond)->Repetitions(5);

void peerInPlace(benchmark::State& state) {
    const Eigen::Affine3d way = transform();
    auto points = peerPoints();
    for (auto _ : state) {
        for (Eigen::Vector3d& point : points)
            point = way * point;
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(peerInPlace)->Unit(benchmark::kMillisecond)->Repetitions(5);

// All points as the columns of one matrix.
void peerAsOneMatrix(benchmark::State& state) {
    const Eigen::Affine3d way = transform();
    const auto points = peerPoints();
    Eigen::Matrix3Xd columns(3, kPoints);
    for (int i = 0; i < kPoints; ++i)
        columns.col(i) = points[static_cast<std::size_t>(i)];
    Eigen::Matrix3Xd converted(3, kPoints);
    for (auto _ : state) {
        converted.noalias() = way.linear() * columns;
        converted.colwise() += way.translation();
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(peerAsOneMatrix)->Unit(benchmark::kMillisecond)->Repetitions(5);

const Comparison comparisons[] = {
    {"1,000,000 points to the store", "convertToStore", "peerPointByPoint", 1.3},
    {"the same, from the store", "convertFromStore", "peerPointByPoint", 1.3},
    {"the same, against one matrix of all points", "convertToStore", "peerAsOneMatrix", 1.3},
    {"turned in place", "convertInPlace", "peerInPlace", 1.3},
};

} // namespace
