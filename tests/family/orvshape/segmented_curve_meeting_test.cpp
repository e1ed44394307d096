// Where a segmented curve meets other entities.

#include "curve_fixture.h"
#include "dbpl.h"
#include "geplane.h"

namespace {

using Points = std::vector<AcGePoint3d>;

Points meetingsOf(const AcDbEntity& entity, const AcDbEntity& other,
                  AcDb::Intersect type = AcDb::kOnBothOperands) {
    AcGePoint3dArray points;
    EXPECT_EQ(entity.intersectWith(&other, type, points), Acad::eOk);
    return {points.begin(), points.end()};
}

// Seen from above.
Points meetingsInView(const AcDbEntity& entity, const AcDbEntity& other,
                      AcDb::Intersect type = AcDb::kOnBothOperands) {
    AcGePoint3dArray points;
    EXPECT_EQ(entity.intersectWith(&other, type, AcGePlane(AcGePoint3d(), AcGeVector3d::kZAxis), points),
              Acad::eOk);
    return {points.begin(), points.end()};
}

void expectPoints(const Points& found, const Points& expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        expectNear(found[i], expected[i]);
}

} // namespace

TEST(SegmentedCurveMeeting, ALineIsMetAlongTheCurve) {
    ORV_SegmentedCurve hook;
    makeHook(hook);
    const AcDbLine across({10, 4, 0}, {-2, 4, 0});
    expectPoints(meetingsOf(hook, across), {{6, 4, 0}});
    ORV_SegmentedCurve stadium;
    makeStadium(stadium);
    const AcDbLine upright({2, 5, 0}, {2, -5, 0});
    expectPoints(meetingsOf(stadium, upright), {{2, 0, 0}, {2, 2, 0}});
    const AcDbLine middle({-5, 1, 0}, {9, 1, 0});
    expectPoints(meetingsOf(stadium, middle), {{5, 1, 0}, {-1, 1, 0}});
    expectPoints(meetingsOf(hook, AcDbLine({0, 1, 1}, {9, 1, 1})), {});
}

TEST(SegmentedCurveMeeting, ACornerIsMetOnce) {
    ORV_SegmentedCurve curve;
    curve.append(lineOf({0, 0, 0}, {4, 0, 0}));
    curve.appendLineTo({4, 3, 0});
    curve.appendClosingLine();
    expectPoints(meetingsOf(curve, AcDbLine({3, 1, 0}, {5, -1, 0})), {{4, 0, 0}});
    expectPoints(meetingsOf(curve, AcDbLine({-1, 1, 0}, {1, -1, 0})), {{0, 0, 0}});
}

TEST(SegmentedCurveMeeting, OnlyTheEndsOfTheCurveAreLengthened) {
    ORV_SegmentedCurve hook;
    makeHook(hook);
    const AcDbLine left({-3, -1, 0}, {-3, 1, 0});
    const AcDbLine above({5, 9, 0}, {7, 9, 0});
    // Where the first piece would go on behind its end, and the last one before its start.
    const AcDbLine behind({8, -1, 0}, {8, 1, 0});
    const AcDbLine before({5.5, -1, 0}, {6.5, -1, 0});
    expectPoints(meetingsOf(hook, left), {});
    expectPoints(meetingsOf(hook, left, AcDb::kExtendThis), {{-3, 0, 0}});
    expectPoints(meetingsOf(hook, above, AcDb::kExtendThis), {{6, 9, 0}});
    expectPoints(meetingsOf(hook, behind, AcDb::kExtendThis), {});
    expectPoints(meetingsOf(hook, before, AcDb::kExtendThis), {});
    expectPoints(meetingsOf(hook, left, AcDb::kExtendArg), {});
    const AcDbLine near({5, 4, 0}, {5.5, 4, 0});
    expectPoints(meetingsOf(hook, near, AcDb::kExtendThis), {});
    expectPoints(meetingsOf(hook, near, AcDb::kExtendArg), {{6, 4, 0}});
    expectPoints(meetingsOf(hook, near, AcDb::kExtendBoth), {{6, 4, 0}});
    const AcDbLine nearLeft({-3, 1, 0}, {-3, 0.5, 0});
    expectPoints(meetingsOf(hook, nearLeft, AcDb::kExtendBoth), {{-3, 0, 0}});
}

TEST(SegmentedCurveMeeting, AClosedCurveIsNotLengthened) {
    ORV_SegmentedCurve stadium;
    makeStadium(stadium);
    expectPoints(meetingsOf(stadium, AcDbLine({7, -1, 0}, {7, 1, 0}), AcDb::kExtendThis), {});
}

TEST(SegmentedCurveMeeting, HostsCurvesMeetItFromTheirSide) {
    ORV_SegmentedCurve stadium;
    makeStadium(stadium);
    const AcDbLine across({9, 1, 0}, {-5, 1, 0});
    expectPoints(meetingsOf(across, stadium), {{5, 1, 0}, {-1, 1, 0}});
    const AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 2);
    const Points found = meetingsOf(circle, stadium);
    ASSERT_EQ(found.size(), 2u);
    for (const AcGePoint3d& point : {AcGePoint3d(2, 0, 0), AcGePoint3d(0, 2, 0)})
        EXPECT_TRUE(point.distanceTo(found[0]) < 1e-9 || point.distanceTo(found[1]) < 1e-9);
    ORV_SegmentedCurve hook;
    makeHook(hook);
    const AcDbLine left({-3, -1, 0}, {-3, 1, 0});
    expectPoints(meetingsOf(left, hook), {});
    expectPoints(meetingsOf(left, hook, AcDb::kExtendArg), {{-3, 0, 0}});
    const AcDbLine behind({8, -1, 0}, {8, 1, 0});
    expectPoints(meetingsOf(behind, hook, AcDb::kExtendArg), {});
}

TEST(SegmentedCurveMeeting, TwoOfItsKindMeet) {
    ORV_SegmentedCurve stadium, bent;
    makeStadium(stadium);
    bent.append(lineOf({2, 5, 0}, {2, 1, 0}));
    bent.appendLineTo({9, 1, 0});
    expectPoints(meetingsOf(bent, stadium), {{2, 2, 0}, {5, 1, 0}});
    expectPoints(meetingsOf(stadium, bent), {{5, 1, 0}, {2, 2, 0}});
    ORV_SegmentedCurve circle;
    circle.append(arcAbout({6, 1, 0}, {5, 1, 0}, 2 * kPi));
    expectPoints(meetingsOf(bent, circle), {{4, 1, 0}, {6, 1, 0}});
}

TEST(SegmentedCurveMeeting, InAViewPointsStayOnTheCurve) {
    ORV_SegmentedCurve hook;
    makeHook(hook);
    const AcDbLine above({2, -1, 7}, {2, 1, 7});
    expectPoints(meetingsOf(hook, above), {});
    expectPoints(meetingsInView(hook, above), {{2, 0, 0}});
    expectPoints(meetingsInView(above, hook), {{2, 0, 7}});
    const AcDbLine left({-3, -1, 7}, {-3, 1, 7});
    expectPoints(meetingsInView(hook, left), {});
    expectPoints(meetingsInView(hook, left, AcDb::kExtendThis), {{-3, 0, 0}});
}

TEST(SegmentedCurveMeeting, WhatHasNoCurveIsRefusedAsTheHostRefusesIt) {
    ORV_SegmentedCurve hook, empty;
    makeHook(hook);
    AcGePoint3dArray points;
    const AcDbLine line({0, -1, 0}, {0, 1, 0});
    EXPECT_EQ(empty.intersectWith(&line, AcDb::kOnBothOperands, points), Acad::eDegenerateGeometry);
    EXPECT_EQ(line.intersectWith(&empty, AcDb::kOnBothOperands, points), Acad::eNotImplementedYet);
    EXPECT_EQ(hook.intersectWith(nullptr, AcDb::kOnBothOperands, points), Acad::eNullEntityPointer);
    const AcDbPoint dot;
    EXPECT_EQ(hook.intersectWith(&dot, AcDb::kOnBothOperands, points),
              line.intersectWith(&dot, AcDb::kOnBothOperands, points));
    EXPECT_TRUE(points.isEmpty());
}
