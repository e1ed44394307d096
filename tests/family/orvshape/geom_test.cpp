#include "orvshape/geom.h"

#include "curve_fixture.h"
#include "gearc3d.h"
#include "gelnsg3d.h"
#include "geplane.h"

using namespace orv;

namespace {

const AcGeVector3d& X = AcGeVector3d::kXAxis;
const AcGeVector3d& Z = AcGeVector3d::kZAxis;

void expectSameWay(const CurveSegment& segment) {
    const std::unique_ptr<AcGeCurve3d> curve = geom::createGeCurve(segment);
    ASSERT_TRUE(curve);
    AcGeInterval interval;
    AcGePoint3d start;
    AcGePoint3d end;
    curve->getInterval(interval, start, end);
    ASSERT_TRUE(interval.isBounded());
    expectNear(start, segment.start());
    expectNear(end, segment.end());
    EXPECT_NEAR(curve->length(interval.lowerBound(), interval.upperBound()), segment.length(), 1.0e-9);
    for (const double share : {0.25, 0.5, 0.75})
        expectNear(curve->evalPoint(interval.lowerBound() + share * interval.length()),
                   segment.pointAt(share * segment.length()));
}

} // namespace

TEST(Geom, ToleranceIsAMillionthOfAUnit) {
    EXPECT_EQ(geom::gTol.equalPoint(), 1.0e-6);
    EXPECT_EQ(geom::gTol.equalVector(), 1.0e-6);
    EXPECT_TRUE(AcGePoint3d(1, 0, 0).isEqualTo({1.0 + 0.9e-6, 0, 0}, geom::gTol));
    EXPECT_FALSE(AcGePoint3d(1, 0, 0).isEqualTo({1.0 + 1.1e-6, 0, 0}, geom::gTol));
}

TEST(Geom, LineBecomesALineOfTheHost) {
    const CurveSegment line = lineOf({1, 2, 3}, {1, 2, 8});
    const auto curve = geom::createGeCurve(line);
    const auto* made = dynamic_cast<const AcGeLineSeg3d*>(curve.get());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->startPoint().z, 3.0);
    EXPECT_EQ(made->endPoint().z, 8.0);
    expectSameWay(line);
}

TEST(Geom, ArcBecomesAnArcOfTheHostThatRunsTheSameWay) {
    const CurveSegment arc = arcAbout({3, 0, 1}, {1, 0, 1}, kPi / 2);
    const auto curve = geom::createGeCurve(arc);
    const auto* made = dynamic_cast<const AcGeCircArc3d*>(curve.get());
    ASSERT_NE(made, nullptr);
    expectNear(made->center(), {1, 0, 1});
    expectNear(made->refVec(), X);
    expectNear(made->normal(), Z);
    EXPECT_EQ(made->radius(), 2.0);
    EXPECT_EQ(made->startAng(), 0.0);
    EXPECT_NEAR(made->endAng(), kPi / 2, 1.0e-12);
    expectSameWay(arc);
    expectSameWay(arcAbout({3, 0, 1}, {1, 0, 1}, -kPi / 2));
    expectSameWay(arcAbout({3, 0, 1}, {1, 0, 1}, 2 * kPi));
    expectSameWay(arcAbout({3, 0, 0}, {1, 0, 0}, 4.0, {0, 1, 2}));
}

TEST(Geom, ValueIsTheOrdinateOverTheGeometry) {
    const AcGePlane floor({9, 9, 2}, Z);
    for (const double side : {1.0, -1.0}) {
        const AcGePlane values({-4, 1, 7}, Z * side);
        EXPECT_NEAR(geom::getValueOnGeomAndValuePlanes(floor, values, {100, -3, 2}), 5.0, 1.0e-12);
    }
    const AcGePlane below({-4, 1, -1}, Z);
    EXPECT_NEAR(geom::getValueOnGeomAndValuePlanes(floor, below, {0, 0, 2}), -3.0, 1.0e-12);
    const AcGePlane turned({9, 9, 2}, -Z);
    EXPECT_NEAR(geom::getValueOnGeomAndValuePlanes(turned, below, {0, 0, 2}), 3.0, 1.0e-12);
}

TEST(Geom, ValueRisesWithASlopingPlane) {
    const AcGePlane floor;
    const AcGePlane slope({0, 0, 0}, {-1, 0, 1}); // z = x
    for (const AcGePoint3d& point : {AcGePoint3d(3, 7, 0), AcGePoint3d(-2, 1, 0), AcGePoint3d(0, 5, 0)})
        EXPECT_NEAR(geom::getValueOnGeomAndValuePlanes(floor, slope, point), point.x, 1.0e-12);
    // Only the foot of the point counts.
    EXPECT_NEAR(geom::getValueOnGeomAndValuePlanes(floor, slope, {3, 7, 50}), 3.0, 1.0e-12);
}

TEST(Geom, ValuesOfThreePointsComeBackFromTheirPlane) {
    const AcGePlane geometry({1, 2, 3}, {1, 2, 2});
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    geometry.get(origin, u, v);
    const AcGePoint3d places[] = {origin, origin + u * 4.0, origin + v * 3.0};
    const double known[] = {2.0, -1.0, 5.0};
    const AcGeVector3d n = geometry.normal();
    const AcGePlane values(places[1] + n * known[1], places[0] + n * known[0], places[2] + n * known[2]);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(geom::getValueOnGeomAndValuePlanes(geometry, values, places[i]), known[i], 1.0e-12);
    EXPECT_NEAR(geom::getValueOnGeomAndValuePlanes(geometry, values, origin + u * 2.0), 0.5, 1.0e-12);
}

TEST(Geom, ValueIsNothingWhereNoOrdinateEnds) {
    const AcGePlane floor;
    EXPECT_EQ(geom::getValueOnGeomAndValuePlanes(floor, AcGePlane({5, 0, 0}, X), {1, 2, 3}), 0.0);
    EXPECT_EQ(geom::getValueOnGeomAndValuePlanes(floor, AcGePlane({5, 0, 9}, AcGeVector3d()), {1, 2, 3}),
              0.0);
    EXPECT_EQ(geom::getValueOnGeomAndValuePlanes(AcGePlane({5, 0, 9}, AcGeVector3d()), floor, {1, 2, 3}),
              0.0);
}
