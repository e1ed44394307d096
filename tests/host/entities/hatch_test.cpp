#include "dbhatch.h"
#include "embedded/display_list.h"
#include "entity_fixture.h"

#include <cmath>

namespace {

AcGePoint2dArray points(std::initializer_list<AcGePoint2d> corners) {
    AcGePoint2dArray made;
    for (const AcGePoint2d& corner : corners)
        made.append(corner);
    return made;
}

AcGePoint2dArray square(double low, double high) {
    return points({{low, low}, {high, low}, {high, high}, {low, high}});
}

void append(AcDbHatch& hatch, const AcGePoint2dArray& vertices) {
    ASSERT_EQ(hatch.appendLoop(AcDbHatch::kDefault, vertices, AcGeDoubleArray()), Acad::eOk);
}

// Lines along X, one apart, the first at the origin.
void makePlainLines(AcDbHatch& hatch) {
    hatch.setPatternSpace(1.0);
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kUserDefined, L"_U"), Acad::eOk);
}

struct Stretch {
    double height, from, to;
};

std::vector<Stretch> stretchesOf(AcDbHatch& hatch) {
    EXPECT_EQ(hatch.evaluateHatch(), Acad::eOk);
    std::vector<Stretch> found;
    for (int i = 0; i < hatch.numHatchLines(); ++i) {
        AcGePoint2d from, to;
        EXPECT_EQ(hatch.getHatchLineDataAt(i, from, to), Acad::eOk);
        EXPECT_NEAR(from.y, to.y, 1.0e-12);
        found.push_back({from.y, from.x, to.x});
    }
    return found;
}

void expectStretches(AcDbHatch& hatch, const std::vector<Stretch>& expected) {
    const std::vector<Stretch> found = stretchesOf(hatch);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_NEAR(found[i].height, expected[i].height, 1.0e-12) << i;
        EXPECT_NEAR(found[i].from, expected[i].from, 1.0e-12) << i;
        EXPECT_NEAR(found[i].to, expected[i].to, 1.0e-12) << i;
    }
}

double areaOf(const AcDbHatch& hatch) {
    double area = -1.0;
    EXPECT_EQ(hatch.getArea(area), Acad::eOk);
    return area;
}

double distanceOfLines(const AcDbHatch& hatch) {
    double angle, baseX, baseY, offsetX, offsetY;
    AcGeDoubleArray dashes;
    EXPECT_EQ(hatch.getPatternDefinitionAt(0, angle, baseX, baseY, offsetX, offsetY, dashes), Acad::eOk);
    return std::fabs(AcGeVector2d(offsetX, offsetY).dotProduct({-std::sin(angle), std::cos(angle)}));
}

double polygonArea(const std::vector<AcGePoint3d>& corners) {
    AcGeVector3d twice;
    for (std::size_t i = 1; i + 1 < corners.size(); ++i)
        twice += (corners[i] - corners[0]).crossProduct(corners[i + 1] - corners[0]);
    return twice.length() / 2.0;
}

class Hatch : public testing::Test {
protected:
    void SetUp() override { embedded::startHost(); }
};

} // namespace

TEST_F(Hatch, TheSpaceThatIsSetBeforeAPredefinedPatternIsItsScale) {
    AcDbHatch narrow, wide;
    narrow.setPatternSpace(0.24);
    wide.setPatternSpace(20.0 * 0.24);
    for (AcDbHatch* hatch : {&narrow, &wide})
        ASSERT_EQ(hatch->setPattern(AcDbHatch::kPreDefined, L"ansi31"), Acad::eOk);
    EXPECT_STREQ(narrow.patternName(), L"ANSI31");
    EXPECT_EQ(narrow.patternScale(), 0.24);
    EXPECT_NEAR(distanceOfLines(narrow), 3.175 * 0.24, 1.0e-12);
    EXPECT_NEAR(distanceOfLines(wide), 20.0 * distanceOfLines(narrow), 1.0e-12);
}

TEST_F(Hatch, AScaleThatIsSetLaterThanTheSpaceCounts) {
    AcDbHatch hatch;
    hatch.setPatternSpace(7.0);
    hatch.setPatternScale(2.0);
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"LINE"), Acad::eOk);
    EXPECT_NEAR(distanceOfLines(hatch), 2.0 * 3.175, 1.0e-12);
    hatch.setPatternScale(4.0);
    EXPECT_NEAR(distanceOfLines(hatch), 4.0 * 3.175, 1.0e-12);
    hatch.setPatternSpace(9.0);
    EXPECT_NEAR(distanceOfLines(hatch), 4.0 * 3.175, 1.0e-12);
}

TEST_F(Hatch, UserDefinedLinesAreOneSpaceApartInTheAngleOfThePattern) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    hatch.setPatternSpace(2.5);
    hatch.setPatternAngle(0.5);
    EXPECT_EQ(hatch.numPatternDefinitions(), 1);
    EXPECT_NEAR(distanceOfLines(hatch), 2.5, 1.0e-12);
    hatch.setPatternDouble(true);
    EXPECT_EQ(hatch.numPatternDefinitions(), 2);
}

TEST_F(Hatch, WhatIsNoPatternIsRefusedWithNothingChanged) {
    AcDbHatch hatch;
    EXPECT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"NOSUCH"), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setPattern(AcDbHatch::kCustomDefined, L"ANSI31"), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setPatternScale(0.0), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setPatternSpace(-1.0), Acad::eInvalidInput);
    EXPECT_STREQ(hatch.patternName(), L"SOLID");
    EXPECT_TRUE(hatch.isSolidFill());
}

TEST_F(Hatch, LoopsWithoutAreaAreRefused) {
    AcDbHatch hatch;
    const AcGeDoubleArray none;
    AcGeDoubleArray one;
    one.append(1.0);
    EXPECT_EQ(hatch.appendLoop(0, points({}), none), Acad::eDegenerateGeometry);
    EXPECT_EQ(hatch.appendLoop(0, points({{0, 0}, {1, 0}}), none), Acad::eDegenerateGeometry);
    EXPECT_EQ(hatch.appendLoop(0, points({{0, 0}, {1, 0}, {0, 0}}), none), Acad::eDegenerateGeometry);
    EXPECT_EQ(hatch.appendLoop(0, square(0, 1), one), Acad::eInvalidInput);
    EXPECT_EQ(hatch.appendLoop(0, points({{0, 0}, {1, 0}, {NAN, 1}}), none), Acad::eInvalidInput);
    EXPECT_EQ(hatch.numLoops(), 0);
    EXPECT_EQ(hatch.evaluateHatch(), Acad::eInvalidInput);
}

TEST_F(Hatch, ALoopOnALineHasNoLines) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, points({{0, 0}, {5, 5}, {2, 2}}));
    EXPECT_TRUE(stretchesOf(hatch).empty());
    EXPECT_EQ(areaOf(hatch), 0.0);
}

TEST_F(Hatch, TwoHalfCirclesAreACircle) {
    AcDbHatch hatch;
    AcGeDoubleArray bulges;
    bulges.append(1.0);
    bulges.append(1.0);
    ASSERT_EQ(hatch.appendLoop(0, points({{-2, 0}, {2, 0}}), bulges), Acad::eOk);
    EXPECT_NEAR(areaOf(hatch), 4.0 * kTestPi, 2.0e-3);
    AcDbExtents box;
    ASSERT_EQ(hatch.getGeomExtents(box), Acad::eOk);
    expectBox(box, {-2, -2, 0}, {2, 2, 0});
}

// The bulge above 0 goes counter-clockwise: over the lower side on the way to the right.
TEST_F(Hatch, ABulgeGoesToTheRightOfItsChord) {
    AcDbHatch hatch;
    AcGeDoubleArray bulges;
    bulges.append(1.0);
    bulges.append(0.0);
    ASSERT_EQ(hatch.appendLoop(0, points({{-2, 0}, {2, 0}}), bulges), Acad::eOk);
    AcDbExtents box;
    ASSERT_EQ(hatch.getGeomExtents(box), Acad::eOk);
    expectBox(box, {-2, -2, 0}, {2, 0, 0});
}

TEST_F(Hatch, LinesRunThroughTheOriginAndStopAtTheLoop) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, points({{0, 0.5}, {10, 0.5}, {10, 2.5}, {0, 2.5}, {0, 0.5}}));
    EXPECT_EQ(hatch.numHatchLines(), 0);
    expectStretches(hatch, {{1, 0, 10}, {2, 0, 10}});
    hatch.setPatternSpace(4.0);
    EXPECT_EQ(hatch.numHatchLines(), 0);
}

TEST_F(Hatch, ALineOnTheLowerEdgeIsDrawnAndOneOnTheUpperIsNot) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, square(0, 2));
    expectStretches(hatch, {{0, 0, 2}, {1, 0, 2}});
}

TEST_F(Hatch, StylesDecideAboutIslands) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, points({{0, 0.5}, {9, 0.5}, {9, 1.5}, {0, 1.5}}));
    append(hatch, points({{1, 0.6}, {8, 0.6}, {8, 1.4}, {1, 1.4}}));
    append(hatch, points({{3, 0.7}, {5, 0.7}, {5, 1.3}, {3, 1.3}}));
    expectStretches(hatch, {{1, 0, 1}, {1, 3, 5}, {1, 8, 9}});
    EXPECT_NEAR(areaOf(hatch), 9.0 - 7.0 * 0.8 + 2.0 * 0.6, 1.0e-12);
    hatch.setHatchStyle(AcDbHatch::kOuter);
    expectStretches(hatch, {{1, 0, 1}, {1, 8, 9}});
    EXPECT_NEAR(areaOf(hatch), 9.0 - 7.0 * 0.8, 1.0e-12);
    hatch.setHatchStyle(AcDbHatch::kIgnore);
    expectStretches(hatch, {{1, 0, 9}});
    EXPECT_NEAR(areaOf(hatch), 9.0, 1.0e-12);
    EXPECT_EQ(hatch.setHatchStyle(static_cast<AcDbHatch::HatchStyle>(3)), Acad::eInvalidInput);
}

TEST_F(Hatch, ALoopThatCrossesItselfIsFilledOnBothSides) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, points({{0, 0}, {4, 4}, {4, 0}, {0, 4}}));
    expectStretches(hatch, {{1, 0, 1}, {1, 3, 4}, {2, 0, 4}, {3, 0, 1}, {3, 3, 4}});
    EXPECT_NEAR(areaOf(hatch), 8.0, 1.0e-12);
}

TEST_F(Hatch, LoopsSideBySideAreOneArea) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, points({{0, 0.5}, {3, 0.5}, {3, 1.5}, {0, 1.5}}));
    append(hatch, points({{3, 0.5}, {7, 0.5}, {7, 1.5}, {3, 1.5}}));
    expectStretches(hatch, {{1, 0, 7}});
    EXPECT_NEAR(areaOf(hatch), 7.0, 1.0e-12);
}

// DASH: lines 3.175 apart, dashes and gaps of that length, each line one dash further.
TEST_F(Hatch, DashesGoOnFromLineToLineAndAreCutAtTheLoop) {
    AcDbHatch hatch;
    const double u = 3.175;
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"DASH"), Acad::eOk);
    append(hatch, points({{0.5 * u, -0.5 * u}, {4.5 * u, -0.5 * u}, {4.5 * u, 1.5 * u}, {0.5 * u, 1.5 * u}}));
    expectStretches(
        hatch, {{0, 0.5 * u, u}, {0, 2 * u, 3 * u}, {0, 4 * u, 4.5 * u}, {u, u, 2 * u}, {u, 3 * u, 4 * u}});
}

TEST_F(Hatch, DotsAreLinesWithoutLength) {
    AcDbHatch hatch;
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"DOTS"), Acad::eOk);
    append(hatch, square(-1.0, 2.0));
    // Every 1/16 inch along lines that are 1/16 inch apart, each half a step further.
    const double step = 25.4 / 16.0;
    expectStretches(
        hatch,
        {{0, 0, 0}, {0, step, step}, {step, -0.5 * step, -0.5 * step}, {step, 0.5 * step, 0.5 * step}});
}

TEST_F(Hatch, WhatIsTooDenseHasNoLines) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, square(0, 200000.0));
    EXPECT_EQ(hatch.evaluateHatch(), Acad::eExcessiveItemCount);
    EXPECT_EQ(hatch.numHatchLines(), 0);
    EXPECT_EQ(hatch.evaluateHatch(true), Acad::eOk);
    EXPECT_EQ(hatch.numHatchLines(), 200000);
    hatch.setPatternSpace(1.0e-300);
    EXPECT_EQ(hatch.evaluateHatch(true), Acad::eExcessiveItemCount);
}

TEST_F(Hatch, DashesTooSmallToCountHaveNoLines) {
    AcDbHatch hatch;
    hatch.setPatternScale(1.0e-6);
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"DASH"), Acad::eOk);
    append(hatch, points({{0, 0}, {1000, 0}, {1000, 1e-5}, {0, 1e-5}}));
    EXPECT_EQ(hatch.evaluateHatch(), Acad::eExcessiveItemCount);
}

TEST_F(Hatch, FarFromTheOriginLinesAreStillRight) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    const double far = 3500000.0;
    append(hatch, points({{far, far + 0.5}, {far + 10, far + 0.5}, {far + 10, far + 1.5}, {far, far + 1.5}}));
    expectStretches(hatch, {{far + 1, far, far + 10}});
}

TEST_F(Hatch, FartherThanNumbersReachThereIsNothing) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, points({{0, 0}, {1e308, -1e308}, {1e308, 1e308}}));
    EXPECT_TRUE(stretchesOf(hatch).empty());
    EXPECT_EQ(areaOf(hatch), 0.0);
    AcDbExtents box;
    EXPECT_EQ(hatch.getGeomExtents(box), Acad::eInvalidExtents);
}

TEST_F(Hatch, OnTheStackItDrawsItsLinesInItsOwnColour) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    hatch.setColorIndex(1);
    hatch.setNormal(AcGeVector3d::kYAxis);
    hatch.setElevation(5.0);
    append(hatch, square(0, 2));
    const embedded::DisplayList list = embedded::draw(hatch);
    ASSERT_EQ(list.primitives.size(), 2u);
    for (const embedded::Primitive& line : list.primitives) {
        EXPECT_EQ(line.kind, embedded::PrimitiveKind::kPolyline);
        EXPECT_EQ(line.traits.colour, 1);
        ASSERT_EQ(line.points.size(), 2u);
        EXPECT_NEAR(line.points[0].y, 5.0, 1.0e-12);
    }
    expectBox(extentsOf(hatch), {-2, 5, 0}, {0, 5, 2});
}

TEST_F(Hatch, OneThatIsTooDenseDrawsItsLoopsAndIsToldOf) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    hatch.setElevation(5.0);
    append(hatch, square(0, 200000.0));
    append(hatch, square(1, 2));
    const embedded::DisplayList list = embedded::draw(hatch);
    ASSERT_EQ(list.primitives.size(), 2u);
    for (const embedded::Primitive& loop : list.primitives) {
        EXPECT_EQ(loop.kind, embedded::PrimitiveKind::kPolygon);
        EXPECT_EQ(loop.traits.fill, kAcGiFillNever);
        EXPECT_EQ(loop.points.size(), 4u);
    }
    expectBox(list.primitives[0].extents(), {0, 0, 5}, {200000, 200000, 5});
    ASSERT_EQ(list.failures.size(), 1u);
    EXPECT_EQ(list.failures[0].ownerClass, AcDbHatch::desc());
    EXPECT_EQ(list.failures[0].reason, "eExcessiveItemCount");
}

TEST_F(Hatch, OneWithoutLoopsDrawsNothingAndIsToldOf) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    const embedded::DisplayList list = embedded::draw(hatch);
    EXPECT_TRUE(list.primitives.empty());
    ASSERT_EQ(list.failures.size(), 1u);
    EXPECT_EQ(list.failures[0].reason, "eInvalidInput");
}

TEST_F(Hatch, ASolidFillDrawsFilledPolygonsThatLeaveItsIslandOut) {
    AcDbHatch hatch;
    append(hatch, square(0, 10));
    append(hatch, square(4, 6));
    const embedded::DisplayList list = embedded::draw(hatch);
    double area = 0.0;
    for (const embedded::Primitive& piece : list.primitives) {
        EXPECT_EQ(piece.kind, embedded::PrimitiveKind::kPolygon);
        EXPECT_EQ(piece.traits.fill, kAcGiFillAlways);
        area += polygonArea(piece.points);
    }
    EXPECT_EQ(list.primitives.size(), 4u); // below, left, right, above
    EXPECT_NEAR(area, 96.0, 1.0e-12);
    EXPECT_EQ(areaOf(hatch), 96.0);
}

TEST_F(Hatch, ASolidFillWithoutIslandsIsOnePolygonOfItsCorners) {
    AcDbHatch hatch;
    append(hatch, points({{0, 0}, {3, 0}, {3, 1}, {1, 1}, {1, 5}, {0, 5}}));
    const embedded::DisplayList list = embedded::draw(hatch);
    ASSERT_EQ(list.primitives.size(), 1u);
    EXPECT_EQ(list.primitives[0].points.size(), 6u);
    EXPECT_EQ(polygonArea(list.primitives[0].points), 7.0);
}

TEST_F(Hatch, ItTurnsAndGrowsWithItsPatternAndRefusesToBeStretched) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, square(0, 2));
    AcGeMatrix3d uneven;
    uneven.entry[0][0] = 2.0;
    EXPECT_EQ(hatch.transformBy(uneven), Acad::eCannotScaleNonUniformly);
    const AcGeMatrix3d turn =
        AcGeMatrix3d::translation({10, 0, 1}) *
        (AcGeMatrix3d::rotation(kTestPi / 2.0, AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(3.0));
    ASSERT_EQ(hatch.transformBy(turn), Acad::eOk);
    EXPECT_NEAR(hatch.patternAngle(), kTestPi / 2.0, 1.0e-12);
    EXPECT_NEAR(hatch.patternSpace(), 3.0, 1.0e-12);
    EXPECT_NEAR(hatch.elevation(), 1.0, 1.0e-12);
    expectBox(extentsOf(hatch), {4, 0, 1}, {10, 6, 1});
    ASSERT_EQ(hatch.evaluateHatch(), Acad::eOk);
    AcGePoint2d from, to;
    ASSERT_EQ(hatch.numHatchLines(), 2);
    EXPECT_EQ(hatch.getHatchLineDataAt(0, from, to), Acad::eOk);
    EXPECT_NEAR(from.x, to.x, 1.0e-12);
    EXPECT_NEAR(std::fabs(to.y - from.y), 6.0, 1.0e-12);
}

TEST_F(Hatch, MovedFarItKeepsItsShape) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    append(hatch, points({{0, 0}, {0.3, 0}, {0.3, 0.7}}));
    const double far = 3500000.0;
    ASSERT_EQ(hatch.transformBy(AcGeMatrix3d::translation({far, far, 0.1})), Acad::eOk);
    ASSERT_EQ(hatch.transformBy(AcGeMatrix3d::translation({-far, -far, -0.1})), Acad::eOk);
    AcGePoint2dArray vertices;
    AcGeDoubleArray bulges;
    Adesk::Int32 type = 0;
    ASSERT_EQ(hatch.getLoopAt(0, type, vertices, bulges), Acad::eOk);
    EXPECT_NEAR(vertices[2].x, 0.3, 1.0e-9);
    EXPECT_NEAR(vertices[2].y, 0.7, 1.0e-9);
    EXPECT_EQ(hatch.patternSpace(), 1.0);
    EXPECT_EQ(hatch.patternAngle(), 0.0);
}

TEST_F(Hatch, MirroredItIsWhereItsMirrorImageIs) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    AcGeDoubleArray bulges;
    for (const double bulge : {1.0, 0.0, 0.0})
        bulges.append(bulge);
    ASSERT_EQ(hatch.appendLoop(0, points({{1, 0}, {3, 0}, {3, 5}}), bulges), Acad::eOk);
    const AcDbExtents before = extentsOf(hatch);
    const double area = areaOf(hatch);
    AcGeMatrix3d mirror;
    mirror.entry[0][0] = -1.0;
    ASSERT_EQ(hatch.transformBy(mirror), Acad::eOk);
    expectBox(extentsOf(hatch), {-before.maxPoint().x, before.minPoint().y, 0},
              {-before.minPoint().x, before.maxPoint().y, 0});
    EXPECT_NEAR(areaOf(hatch), area, 1.0e-12);
}

TEST_F(Hatch, ExplodedItIsItsLines) {
    AcDbHatch hatch;
    makePlainLines(hatch);
    hatch.setColorIndex(3);
    append(hatch, square(0, 2));
    AcDbVoidPtrArray parts;
    ASSERT_EQ(hatch.explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 2);
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> entity(static_cast<AcDbEntity*>(part));
        const AcDbLine* line = AcDbLine::cast(entity.get());
        ASSERT_NE(line, nullptr);
        EXPECT_EQ(line->colorIndex(), 3);
        EXPECT_NEAR(line->startPoint().distanceTo(line->endPoint()), 2.0, 1.0e-12);
    }
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"SOLID"), Acad::eOk);
    EXPECT_EQ(hatch.explode(parts), Acad::eCannotExplodeEntity);
}

TEST_F(Hatch, LoopsCanBePutInAndTakenOut) {
    AcDbHatch hatch;
    append(hatch, square(0, 10));
    EXPECT_EQ(hatch.insertLoopAt(0, AcDbHatch::kExternal, square(2, 3), AcGeDoubleArray()), Acad::eOk);
    EXPECT_EQ(hatch.loopTypeAt(0), AcDbHatch::kExternal | AcDbHatch::kPolyline);
    EXPECT_EQ(hatch.insertLoopAt(3, 0, square(2, 3), AcGeDoubleArray()), Acad::eInvalidIndex);
    EXPECT_EQ(hatch.removeLoopAt(2), Acad::eInvalidIndex);
    EXPECT_EQ(areaOf(hatch), 99.0);
    EXPECT_EQ(hatch.removeLoopAt(0), Acad::eOk);
    EXPECT_EQ(areaOf(hatch), 100.0);
}

TEST_F(Hatch, EveryPatternOfTheHostFillsASquareWithFiniteLines) {
    for (const wchar_t* name :
         {L"ANGLE", L"ANSI31", L"ANSI32", L"ANSI33", L"ANSI34", L"ANSI35", L"ANSI36", L"ANSI37", L"ANSI38",
          L"BRICK", L"CROSS", L"DASH", L"DOTS", L"LINE", L"NET", L"NET3", L"SQUARE"}) {
        AcDbHatch hatch;
        ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, name), Acad::eOk);
        append(hatch, square(0, 100));
        ASSERT_EQ(hatch.evaluateHatch(), Acad::eOk);
        EXPECT_GT(hatch.numHatchLines(), 3);
        AcGePoint2dArray from, to;
        ASSERT_EQ(hatch.getHatchLinesData(from, to), Acad::eOk);
        for (const AcGePoint2dArray* ends : {&from, &to})
            for (const AcGePoint2d& end : *ends)
                EXPECT_TRUE(end.x > -1e-9 && end.y > -1e-9 && end.x < 100 + 1e-9 && end.y < 100 + 1e-9);
    }
}
