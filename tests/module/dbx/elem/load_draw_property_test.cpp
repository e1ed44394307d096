// What holds for the arrows of every load.

#include "dbx/doc/use_system.h"
#include "dbx/elem/load_types.h"
#include "module/dbx/elem/drawn_loads.h"
#include "orvshape/approximate_curve.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>

using namespace testing_support;
using Arrow = DrawnLoad::Picture::Arrow;

namespace {

double number(int least, int most) { return *rc::gen::inRange(least * 100, most * 100) / 100.0; }

// A curve of some straight and round pieces, in space.
void anyCurve(LoadedMember& loaded) {
    AcGePoint3d at(number(-5, 5), number(-5, 5), number(-5, 5));
    orv::CurveSegment first;
    if (orv::CurveSegment::line(at, at + AcGeVector3d(number(1, 20), number(-5, 5), number(-5, 5)), first))
        loaded.member.append(first);
    const int more = *rc::gen::inRange(0, 6);
    for (int i = 0; i < more; ++i) {
        at = loaded.member.endPoint();
        const AcGePoint3d to = at + AcGeVector3d(number(-20, 20), number(-20, 20), number(-20, 20));
        // What makes no piece changes nothing.
        if (*rc::gen::arbitrary<bool>())
            loaded.member.appendLineTo(to);
        else
            loaded.member.appendArcThrough(
                at + AcGeVector3d(number(-20, 20), number(-20, 20), number(-20, 20)), to);
    }
}

double distanceFrom(const ORV_SegmentedCurve& curve, const AcGePoint3d& point) {
    AcGePoint3d nearest;
    EXPECT_EQ(curve.getClosestPointTo(point, nearest), Acad::eOk);
    return nearest.distanceTo(point);
}

} // namespace

RC_GTEST_PROP(LoadDrawProperty, arrowsStandOnTheCurveAndTheirTailsAlongTheDirection, ()) {
    LoadedMember loaded;
    anyCurve(loaded);
    loaded.system.visSettings().setSize(3, number(0, 10));
    const double a = number(-10, 10);
    const double b = number(-3, 3);
    loaded.values([a, b](double, double distance) { return a + b * distance; });
    loaded->setType(*rc::gen::element(10, 14, 15, 16, 17, 24, 26, 1));
    ReportRecorder reports;
    loaded.draw();
    const auto& picture = loaded->laidOut;
    RC_ASSERT(picture.vertices.size() >= 2U);
    RC_ASSERT(picture.vertices.size() <= 51U);
    const double length = loaded.member.getLength();
    double before = -1.0;
    for (const Arrow& arrow : picture.vertices) {
        RC_ASSERT(distanceFrom(loaded.member, arrow.point) < 1e-7);
        RC_ASSERT(std::fabs(arrow.value - (a + b * arrow.distance)) < 1e-9);
        RC_ASSERT(arrow.base.isEqualTo(arrow.point - picture.direction * (arrow.value * picture.scale)));
        RC_ASSERT(arrow.sign == (arrow.value < 0.0 ? 1 : -1));
        RC_ASSERT(arrow.distance > before);
        RC_ASSERT(arrow.distance <= length);
        before = arrow.distance;
    }
    RC_ASSERT(picture.vertices.front().distance == 0.0);
    RC_ASSERT(std::fabs(picture.vertices.back().distance - length) < 1e-7);
}

RC_GTEST_PROP(LoadDrawProperty, noMoreLinesThanArrowsAndTheirJoins, ()) {
    LoadedMember loaded;
    anyCurve(loaded);
    loaded.system.visSettings().setSize(3, number(0, 10));
    loaded.values([](double, double) { return 1.0; });
    loaded->setType(*rc::gen::inRange(0, 60));
    ReportRecorder reports;
    const auto list = loaded.draw();
    RC_ASSERT(worldPart(list).size() <= 51U + 50U);
    RC_ASSERT(viewPart(list).size() <= 2U * 51U);
    RC_ASSERT(list.failures.empty());
}

namespace {

// The chain that is left when the nearest point goes first, step by step.
std::vector<AcGePoint3d> thinnedSlowly(std::vector<AcGePoint3d> points) {
    while (points.size() > 63) {
        std::size_t nearest = 1;
        for (std::size_t i = 2; i + 1 < points.size(); ++i)
            if (points[i - 1].distanceTo(points[i]) < points[nearest - 1].distanceTo(points[nearest]))
                nearest = i;
        points.erase(points.begin() + static_cast<std::ptrdiff_t>(nearest));
    }
    return points;
}

} // namespace

RC_GTEST_PROP(LoadDrawProperty, anExportKeepsBothEndsAndLeavesTheNearestOut, ()) {
    StoreDrawing drawing;
    putSystem(drawing.db, L"ASDWG", 0);
    LoadedMember loaded;
    const int count = *rc::gen::inRange(2, 140);
    std::vector<AcGePoint3d> points(1);
    while (points.size() < static_cast<std::size_t>(count))
        // Steps of whole numbers, so that many are equally long.
        points.push_back(points.back() + AcGeVector3d(*rc::gen::inRange(1, 5), *rc::gen::inRange(-2, 3), 0));
    loaded.through(points).values([](double, double distance) { return distance; });
    loaded.member.setNodDatabaseId(entryAt(drawing.db.namedObjectsDictionaryId(), {L"KELMORAN", L"ASDWG"}),
                                   L"ASDWG");
    const orv::UseSystem system(&loaded.member);
    system->setPointSize(*rc::gen::element(0.0, 0.2, 0.7));
    AcGePoint3dArray chain;
    orv::ApproximateCurve(system->converter().fromCdb(system->pointSize() * 5.0))
        .create(loaded.member, chain);
    const auto exported = loaded->getVerticesForExport();
    const auto expected = thinnedSlowly({chain.begin(), chain.end()});
    RC_ASSERT(exported.size() <= 63U);
    RC_ASSERT(exported.size() == expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        RC_ASSERT(exported[i].point.isEqualTo(expected[i]));
    RC_ASSERT(exported.front().point.isEqualTo(points.front()));
    RC_ASSERT(exported.back().point.isEqualTo(points.back()));
}
