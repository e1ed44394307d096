#include "dbhatch.h"
#include "filed_entities.h"

#include <limits>

namespace {

void writePoint(BitWriter& out, double x, double y) {
    out.rawDouble(x);
    out.rawDouble(y);
}

// What stands in front of the loops.
void writeHead(BitWriter& out, double elevation, const embedded::dwg::Triple& normal, const char* name,
               bool isSolid, bool isAssociative) {
    out.bitDouble(elevation);
    out.threeBitDoubles(normal);
    writeText(out, name);
    out.bit(isSolid);
    out.bit(isAssociative);
}

// Corners of a square of side 4, as a loop of vertices.
void writeSquare(BitWriter& out) {
    out.bit(false); // bulges
    out.bit(true);  // closed
    out.bitLong(4);
    writePoint(out, 0.0, 0.0);
    writePoint(out, 4.0, 0.0);
    writePoint(out, 4.0, 4.0);
    writePoint(out, 0.0, 4.0);
}

} // namespace

TEST_F(FiledEntities, ASolidHatchTellsNoPattern) {
    FiledBits bits;
    writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "SOLID", true, false);
    bits.data.bitLong(1);
    bits.data.bitLong(AcDbHatch::kExternal | AcDbHatch::kPolyline);
    writeSquare(bits.data);
    bits.data.bitLong(0);  // boundary objects
    bits.data.bitShort(0); // style
    bits.data.bitShort(1); // predefined
    bits.data.bitLong(1);  // seeds
    writePoint(bits.data, 2.0, 3.0);
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        EXPECT_TRUE(hatch.isSolidFill());
        EXPECT_STREQ(hatch.patternName(), L"SOLID");
        EXPECT_EQ(hatch.patternType(), AcDbHatch::kPreDefined);
        EXPECT_EQ(hatch.numPatternDefinitions(), 0);
        EXPECT_FALSE(hatch.associative());
        EXPECT_EQ(hatch.numLoops(), 1);
        double area = 0.0;
        EXPECT_EQ(hatch.getArea(area), Acad::eOk);
        EXPECT_EQ(area, 16.0);
        AcDbExtents box;
        EXPECT_EQ(hatch.getGeomExtents(box), Acad::eOk);
        expectBox(box, {0.0, 0.0, 0.0}, {4.0, 4.0, 0.0}, 0.0);
    });
}

TEST_F(FiledEntities, APatternedHatchTellsAngleScaleAndLines) {
    FiledBits bits;
    writeHead(bits.data, 2.5, {0.0, 0.0, -1.0}, "DASHED", false, true);
    bits.data.bitLong(1);
    bits.data.bitLong(AcDbHatch::kOutermost | AcDbHatch::kDerived | AcDbHatch::kPolyline);
    bits.data.bit(true);
    bits.data.bit(true);
    bits.data.bitLong(3);
    for (const double bulge : {0.5, 0.0, -0.25}) {
        writePoint(bits.data, 3.0 * bulge, 7.0 + bulge);
        bits.data.bitDouble(bulge);
    }
    bits.data.bitLong(2);
    bits.data.bitShort(2); // ignore
    bits.data.bitShort(2); // custom
    bits.data.bitDouble(0.5);
    bits.data.bitDouble(20.0);
    bits.data.bit(false);
    bits.data.bitShort(2);
    bits.data.bitDouble(0.5);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(1.0);
    bits.data.bitDouble(-1.5);
    bits.data.bitDouble(2.5);
    bits.data.bitShort(0);
    bits.data.bitDouble(1.0);
    bits.data.bitDouble(0.25);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(3.0);
    bits.data.bitShort(3);
    for (const double dash : {1.0, -0.5, 0.0})
        bits.data.bitDouble(dash);
    bits.data.bitDouble(0.125); // pixel size, of a derived loop
    bits.data.bitLong(0);
    bits.handles.handle({embedded::dwg::kSoftPointer, 0x501});
    bits.handles.handle({embedded::dwg::kSoftPointer, 0x502});
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        EXPECT_EQ(hatch.elevation(), 2.5);
        EXPECT_EQ(hatch.hatchStyle(), AcDbHatch::kIgnore);
        EXPECT_EQ(hatch.patternType(), AcDbHatch::kCustomDefined);
        EXPECT_EQ(hatch.patternAngle(), 0.5);
        EXPECT_EQ(hatch.patternScale(), 20.0);
        double angle, baseX, baseY, offsetX, offsetY;
        AcGeDoubleArray dashes;
        ASSERT_EQ(hatch.numPatternDefinitions(), 2);
        EXPECT_EQ(hatch.getPatternDefinitionAt(1, angle, baseX, baseY, offsetX, offsetY, dashes), Acad::eOk);
        EXPECT_EQ(baseX, 0.25);
        EXPECT_EQ(offsetY, 3.0);
        ASSERT_EQ(dashes.length(), 3);
        EXPECT_EQ(dashes[1], -0.5);
        EXPECT_EQ(hatch.getPatternDefinitionAt(2, angle, baseX, baseY, offsetX, offsetY, dashes),
                  Acad::eInvalidIndex);
        AcGePoint2dArray vertices;
        AcGeDoubleArray bulges;
        Adesk::Int32 type = 0;
        EXPECT_EQ(hatch.getLoopAt(0, type, vertices, bulges), Acad::eOk);
        EXPECT_EQ(type, 0x16);
        ASSERT_EQ(bulges.length(), 3);
        EXPECT_EQ(bulges[2], -0.25);
    });
}

TEST_F(FiledEntities, ADamagedPatternScaleCountsAsOne) {
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const double scale : {0.0, -3.0, notANumber, std::numeric_limits<double>::infinity()}) {
        FiledBits bits;
        writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "LINE", false, false);
        bits.data.bitLong(0);
        bits.data.bitShort(0);
        bits.data.bitShort(1); // predefined
        bits.data.bitDouble(0.0);
        bits.data.bitDouble(scale);
        bits.data.bit(false);
        bits.data.bitShort(1);
        for (const double number : {0.0, 0.0, 0.0, 0.0, 2.0})
            bits.data.bitDouble(number);
        bits.data.bitShort(0);
        bits.data.bitLong(0);
        AcDbHatch hatch;
        ASSERT_EQ(read(hatch, bits), Acad::eOk);
        ASSERT_EQ(hatch.setPatternScale(5.0), Acad::eOk);
        EXPECT_EQ(hatch.patternScale(), 5.0);
        double angle, baseX, baseY, offsetX, offsetY;
        AcGeDoubleArray dashes;
        ASSERT_EQ(hatch.getPatternDefinitionAt(0, angle, baseX, baseY, offsetX, offsetY, dashes), Acad::eOk);
        EXPECT_EQ(offsetY, 10.0) << scale;

        // The same where the host's own pattern takes the place of the damaged one.
        AcDbHatch other;
        ASSERT_EQ(read(other, bits), Acad::eOk);
        ASSERT_EQ(other.setPattern(AcDbHatch::kPreDefined, L"LINE"), Acad::eOk);
        AcDbHatch fresh;
        ASSERT_EQ(fresh.setPattern(AcDbHatch::kPreDefined, L"LINE"), Acad::eOk);
        double freshY;
        ASSERT_EQ(other.getPatternDefinitionAt(0, angle, baseX, baseY, offsetX, offsetY, dashes), Acad::eOk);
        ASSERT_EQ(fresh.getPatternDefinitionAt(0, angle, baseX, baseY, offsetX, freshY, dashes), Acad::eOk);
        EXPECT_EQ(offsetY, freshY) << scale;
    }
}

TEST_F(FiledEntities, AUserDefinedHatchTellsItsSpaceWhereOthersTellTheScale) {
    FiledBits bits;
    writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "_USER", false, false);
    bits.data.bitLong(0);
    bits.data.bitShort(0);
    bits.data.bitShort(0);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(1.75);
    bits.data.bit(true);
    bits.data.bitShort(0);
    bits.data.bitLong(0);
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        EXPECT_EQ(hatch.patternType(), AcDbHatch::kUserDefined);
        EXPECT_EQ(hatch.patternSpace(), 1.75);
        EXPECT_TRUE(hatch.patternDouble());
    });
}

// A half disc: the arc from (2, 0) over (0, 2) to (-2, 0), and the chord back.
TEST_F(FiledEntities, ALoopOfALineAndAnArc) {
    FiledBits bits;
    writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "SOLID", true, true);
    bits.data.bitLong(1);
    bits.data.bitLong(AcDbHatch::kExternal);
    bits.data.bitLong(2);
    bits.data.rawChar(AcDbHatch::kCirArc);
    writePoint(bits.data, 0.0, 0.0);
    bits.data.bitDouble(2.0);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(kTestPi);
    bits.data.bit(true);
    bits.data.rawChar(AcDbHatch::kLine);
    writePoint(bits.data, -2.0, 0.0);
    writePoint(bits.data, 2.0, 0.0);
    bits.data.bitLong(1);
    bits.data.bitShort(0);
    bits.data.bitShort(1);
    bits.data.bitLong(0);
    bits.handles.handle({embedded::dwg::kSoftPointer, 0x777});
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        double area = 0.0;
        EXPECT_EQ(hatch.getArea(area), Acad::eOk);
        EXPECT_NEAR(area, 2.0 * kTestPi, 1.0e-3);
        AcDbExtents box;
        EXPECT_EQ(hatch.getGeomExtents(box), Acad::eOk);
        expectBox(box, {-2.0, 0.0, 0.0}, {2.0, 2.0, 0.0});
    });
}

TEST_F(FiledEntities, AClockwiseArcIsAtTheNegativeOfItsAngles) {
    FiledBits bits;
    writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "SOLID", true, true);
    bits.data.bitLong(1);
    bits.data.bitLong(AcDbHatch::kDefault);
    bits.data.bitLong(1);
    bits.data.rawChar(AcDbHatch::kCirArc);
    writePoint(bits.data, 10.0, 0.0);
    bits.data.bitDouble(1.0);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(kTestPi);
    bits.data.bit(false);
    bits.data.bitLong(0);
    bits.data.bitShort(0);
    bits.data.bitShort(1);
    bits.data.bitLong(0);
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        AcDbExtents box;
        EXPECT_EQ(hatch.getGeomExtents(box), Acad::eOk);
        expectBox(box, {9.0, -1.0, 0.0}, {11.0, 0.0, 0.0});
    });
}

TEST_F(FiledEntities, ALoopOfAWholeEllipse) {
    FiledBits bits;
    writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "SOLID", true, true);
    bits.data.bitLong(1);
    bits.data.bitLong(AcDbHatch::kDefault);
    bits.data.bitLong(1);
    bits.data.rawChar(AcDbHatch::kEllArc);
    writePoint(bits.data, 1.0, 1.0);
    writePoint(bits.data, 0.0, 4.0); // from the centre
    bits.data.bitDouble(0.5);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(2.0 * kTestPi);
    bits.data.bit(true);
    bits.data.bitLong(0);
    bits.data.bitShort(1);
    bits.data.bitShort(1);
    bits.data.bitLong(0);
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        EXPECT_EQ(hatch.hatchStyle(), AcDbHatch::kOuter);
        double area = 0.0;
        EXPECT_EQ(hatch.getArea(area), Acad::eOk);
        EXPECT_NEAR(area, 8.0 * kTestPi, 5.0e-3);
        AcDbExtents box;
        EXPECT_EQ(hatch.getGeomExtents(box), Acad::eOk);
        expectBox(box, {-1.0, -3.0, 0.0}, {3.0, 5.0, 0.0});
    });
}

// A quarter of the unit circle is a rational spline of degree 2 with the weight sqrt(1/2) in the middle.
TEST_F(FiledEntities, ALoopOfARationalSplineAndTwoLines) {
    FiledBits bits;
    writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "SOLID", true, true);
    bits.data.bitLong(1);
    bits.data.bitLong(AcDbHatch::kDefault);
    bits.data.bitLong(3);
    bits.data.rawChar(AcDbHatch::kSpline);
    bits.data.bitLong(2);
    bits.data.bit(true);
    bits.data.bit(false);
    bits.data.bitLong(6);
    bits.data.bitLong(3);
    for (const double knot : {0.0, 0.0, 0.0, 1.0, 1.0, 1.0})
        bits.data.bitDouble(knot);
    writePoint(bits.data, 1.0, 0.0);
    bits.data.bitDouble(1.0);
    writePoint(bits.data, 1.0, 1.0);
    bits.data.bitDouble(std::sqrt(0.5));
    writePoint(bits.data, 0.0, 1.0);
    bits.data.bitDouble(1.0);
    bits.data.rawChar(AcDbHatch::kLine);
    writePoint(bits.data, 0.0, 1.0);
    writePoint(bits.data, 0.0, 0.0);
    bits.data.rawChar(AcDbHatch::kLine);
    writePoint(bits.data, 1.0, 0.0); // told against the way of the loop
    writePoint(bits.data, 0.0, 0.0);
    bits.data.bitLong(0);
    bits.data.bitShort(0);
    bits.data.bitShort(1);
    bits.data.bitLong(0);
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        AcGePoint2dArray vertices;
        AcGeDoubleArray bulges;
        Adesk::Int32 type = 0;
        EXPECT_EQ(hatch.getLoopAt(0, type, vertices, bulges), Acad::eOk);
        EXPECT_EQ(vertices.length(), 10); // nine on the arc, and the corner
        for (const AcGePoint2d& point : vertices)
            EXPECT_TRUE(point == AcGePoint2d::kOrigin || std::fabs(point.asVector().length() - 1.0) < 1e-12);
        double area = 0.0;
        EXPECT_EQ(hatch.getArea(area), Acad::eOk);
        EXPECT_NEAR(area, kTestPi / 4.0, 1.0e-2);
    });
}

TEST_F(FiledEntities, ASplineWhoseCountsDisagreeIsKeptAndDrawnAsItsControlPoints) {
    FiledBits bits;
    writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "SOLID", true, true);
    bits.data.bitLong(1);
    bits.data.bitLong(AcDbHatch::kDefault);
    bits.data.bitLong(1);
    bits.data.rawChar(AcDbHatch::kSpline);
    bits.data.bitLong(5);
    bits.data.bit(false);
    bits.data.bit(true);
    bits.data.bitLong(1);
    bits.data.bitLong(3);
    bits.data.bitDouble(9.0);
    writePoint(bits.data, 0.0, 0.0);
    writePoint(bits.data, 1.0, 0.0);
    writePoint(bits.data, 0.0, 1.0);
    bits.data.bitLong(0);
    bits.data.bitShort(0);
    bits.data.bitShort(1);
    bits.data.bitLong(0);
    expectBothWays<AcDbHatch>(bits, [](const AcDbHatch& hatch) {
        double area = 0.0;
        EXPECT_EQ(hatch.getArea(area), Acad::eOk);
        EXPECT_EQ(area, 0.5);
    });
}

TEST_F(FiledEntities, AHatchWithAnUnknownEdgeOrHugeCountsIsRefusedWithoutMemoryForThem) {
    for (const int damage : {0, 1, 2}) {
        FiledBits bits;
        writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "X", false, false);
        bits.data.bitLong(damage == 0 ? 0xFFFFFFFF : 1);
        bits.data.bitLong(0);
        bits.data.bitLong(0xFFFFFFFF);
        bits.data.rawChar(damage == 1 ? 9 : 1);
        AcDbHatch hatch;
        EXPECT_EQ(read(hatch, bits), Acad::eDwgObjectImproperlyRead) << damage;
        EXPECT_EQ(hatch.numLoops(), 0);
    }
}

TEST_F(FiledEntities, ACopyKeepsWhatTheFileOfASolidHatchDoesNotTell) {
    AcDbHatch hatch;
    hatch.setPatternScale(3.0);
    hatch.setPatternAngle(0.5);
    hatch.setPatternSpace(7.0);
    const std::unique_ptr<AcDbHatch> copy(AcDbHatch::cast(hatch.clone()));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->patternScale(), 3.0);
    EXPECT_EQ(copy->patternAngle(), 0.5);
    EXPECT_EQ(copy->setPattern(AcDbHatch::kPreDefined, L"ANSI31"), Acad::eOk);
    EXPECT_EQ(copy->patternScale(), 7.0);
}

// The lower half of a circle around (10, 0), told both ways round.
TEST_F(FiledEntities, ArcsOfALoopTurnAndAreMirroredWithTheHatch) {
    for (const bool isCounterClockwise : {false, true}) {
        FiledBits bits;
        writeHead(bits.data, 0.0, {0.0, 0.0, 1.0}, "SOLID", true, true);
        bits.data.bitLong(1);
        bits.data.bitLong(AcDbHatch::kDefault);
        bits.data.bitLong(1);
        bits.data.rawChar(AcDbHatch::kCirArc);
        writePoint(bits.data, 10.0, 0.0);
        bits.data.bitDouble(1.0);
        bits.data.bitDouble(isCounterClockwise ? kTestPi : 0.0);
        bits.data.bitDouble(isCounterClockwise ? 2.0 * kTestPi : kTestPi);
        bits.data.bit(isCounterClockwise);
        bits.data.bitLong(0);
        bits.data.bitShort(0);
        bits.data.bitShort(1);
        bits.data.bitLong(0);
        AcDbHatch hatch;
        ASSERT_EQ(read(hatch, bits), Acad::eOk);
        expectBox(extentsOf(hatch), {9, -1, 0}, {11, 0, 0});
        ASSERT_EQ(hatch.transformBy(AcGeMatrix3d::rotation(kTestPi / 2.0, AcGeVector3d::kZAxis)), Acad::eOk);
        expectBox(extentsOf(hatch), {0, 9, 0}, {1, 11, 0});
        AcGeMatrix3d mirror;
        mirror.entry[0][0] = -1.0;
        ASSERT_EQ(hatch.transformBy(mirror), Acad::eOk);
        expectBox(extentsOf(hatch), {-1, 9, 0}, {0, 11, 0});
    }
}
