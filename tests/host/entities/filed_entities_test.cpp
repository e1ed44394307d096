#include "filed_entities.h"

TEST_F(FiledEntities, ALineAtHeightZeroLeavesTheHeightsOut) {
    FiledBits bits;
    bits.data.bit(true);
    bits.data.rawDouble(1.5);
    bits.data.bitDouble(1.5, 1.5);
    bits.data.rawDouble(-2.0);
    bits.data.bitDouble(7.25, -2.0);
    bits.data.thickness(0.0);
    bits.data.extrusion({0.0, 0.0, 1.0});
    expectBothWays<AcDbLine>(bits, [](const AcDbLine& line) {
        expectNear(line.startPoint(), {1.5, -2.0, 0.0}, 0.0);
        expectNear(line.endPoint(), {1.5, 7.25, 0.0}, 0.0);
    });
}

TEST_F(FiledEntities, ALineInSpaceHasThem) {
    FiledBits bits;
    bits.data.bit(false);
    bits.data.rawDouble(1.0);
    bits.data.bitDouble(2.0, 1.0);
    bits.data.rawDouble(3.0);
    bits.data.bitDouble(4.0, 3.0);
    bits.data.rawDouble(0.0);
    bits.data.bitDouble(6.0, 0.0);
    bits.data.thickness(2.5);
    bits.data.extrusion({0.0, 1.0, 0.0});
    expectBothWays<AcDbLine>(bits, [](const AcDbLine& line) {
        expectNear(line.endPoint(), {2.0, 4.0, 6.0}, 0.0);
        EXPECT_EQ(line.thickness(), 2.5);
        expectNear(line.normal(), AcGeVector3d::kYAxis, 0.0);
    });
}

TEST_F(FiledEntities, ANegativeZeroHeightKeepsItsSign) {
    FiledBits bits;
    bits.data.bit(false);
    for (int i = 0; i < 3; ++i) {
        bits.data.rawDouble(i == 2 ? -0.0 : 0.0);
        bits.data.bitDouble(i == 2 ? -0.0 : 0.0, i == 2 ? -0.0 : 0.0);
    }
    bits.data.thickness(-0.0);
    bits.data.extrusion({-0.0, 0.0, 1.0});
    expectBothWays<AcDbLine>(bits,
                             [](const AcDbLine& line) { EXPECT_TRUE(std::signbit(line.startPoint().z)); });
}

TEST_F(FiledEntities, ACircle) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 0.0, 3.5});
    bits.data.bitDouble(2.0);
    bits.data.thickness(0.0);
    bits.data.extrusion({0.0, 0.0, -1.0});
    expectBothWays<AcDbCircle>(bits, [](const AcDbCircle& circle) {
        EXPECT_EQ(circle.radius(), 2.0);
        expectNear(circle.center(), {-1.0, 0.0, -3.5}, 0.0);
    });
}

TEST_F(FiledEntities, AnArc) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 0.0, 3.5});
    bits.data.bitDouble(2.0);
    bits.data.thickness(1.0);
    bits.data.extrusion({0.0, 0.0, 1.0});
    bits.data.bitDouble(0.5);
    bits.data.bitDouble(1.0);
    expectBothWays<AcDbArc>(bits, [](const AcDbArc& arc) {
        EXPECT_EQ(arc.startAngle(), 0.5);
        EXPECT_EQ(arc.endAngle(), 1.0);
        EXPECT_EQ(arc.thickness(), 1.0);
    });
}

TEST_F(FiledEntities, APoint) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 0.0, 3.5});
    bits.data.thickness(0.0);
    bits.data.extrusion({0.0, 0.0, 1.0});
    bits.data.bitDouble(0.75);
    expectBothWays<AcDbPoint>(bits, [](const AcDbPoint& point) {
        expectNear(point.position(), {1.0, 0.0, 3.5}, 0.0);
        EXPECT_EQ(point.ecsRotation(), 0.75);
    });
}

TEST_F(FiledEntities, APolylineOfPointsAlone) {
    FiledBits bits;
    bits.data.bitShort(0x200);
    bits.data.bitLong(3);
    bits.data.rawDouble(1.0);
    bits.data.rawDouble(2.0);
    bits.data.bitDouble(1.0, 1.0);
    bits.data.bitDouble(5.0, 2.0);
    bits.data.bitDouble(-1.0, 1.0);
    bits.data.bitDouble(5.0, 5.0);
    expectBothWays<AcDbPolyline>(bits, [](const AcDbPolyline& line) {
        AcGePoint2d point;
        EXPECT_EQ(line.numVerts(), 3u);
        EXPECT_TRUE(line.isClosed());
        EXPECT_EQ(line.getPointAt(2, point), Acad::eOk);
        EXPECT_EQ(point.x, -1.0);
        EXPECT_EQ(point.y, 5.0);
    });
}

TEST_F(FiledEntities, APolylineWithAllThatItCanHave) {
    FiledBits bits;
    bits.data.bitShort(0x1 | 0x2 | 0x4 | 0x8 | 0x10 | 0x20 | 0x100);
    bits.data.bitDouble(0.5); // constant width
    bits.data.bitDouble(3.0); // elevation
    bits.data.bitDouble(1.0); // thickness
    bits.data.threeBitDoubles({1.0, 0.0, 0.0});
    bits.data.bitLong(2);
    bits.data.bitLong(2);
    bits.data.bitLong(2);
    bits.data.rawDouble(1.0);
    bits.data.rawDouble(2.0);
    bits.data.bitDouble(4.0, 1.0);
    bits.data.bitDouble(2.0, 2.0);
    bits.data.bitDouble(0.25);
    bits.data.bitDouble(0.0);
    for (const double width : {0.1, 0.2, 0.3, 0.4})
        bits.data.bitDouble(width);
    expectBothWays<AcDbPolyline>(bits, [](const AcDbPolyline& line) {
        double start = 0.0, end = 0.0, bulge = 0.0;
        EXPECT_EQ(line.elevation(), 3.0);
        EXPECT_EQ(line.thickness(), 1.0);
        EXPECT_TRUE(line.hasPlinegen());
        EXPECT_EQ(line.getBulgeAt(0, bulge), Acad::eOk);
        EXPECT_EQ(bulge, 0.25);
        EXPECT_EQ(line.getWidthsAt(1, start, end), Acad::eOk);
        EXPECT_EQ(end, 0.4);
    });
}

TEST_F(FiledEntities, APolylineWhoseCountsDisagreeIsRefusedWithoutMemoryForIt) {
    FiledBits bits;
    bits.data.bitShort(0x10);
    bits.data.bitLong(0xFFFFFFFF);
    bits.data.bitLong(0xFFFFFFFE);
    AcDbPolyline line;
    EXPECT_EQ(read(line, bits), Acad::eDwgObjectImproperlyRead);
    FiledBits many;
    many.data.bitShort(0);
    many.data.bitLong(0xFFFFFFFF);
    EXPECT_EQ(read(line, many), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(line.numVerts(), 0u);
}

TEST_F(FiledEntities, ATextThatHasWhatMostHave) {
    FiledBits bits;
    bits.data.rawChar(0xFF);
    bits.data.rawDouble(1.0);
    bits.data.rawDouble(2.0);
    bits.data.extrusion({0.0, 0.0, 1.0});
    bits.data.thickness(0.0);
    bits.data.rawDouble(2.5);
    writeText(bits.data, "Beam");
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_style)});
    expectBothWays<AcDbText>(bits, [this](const AcDbText& text) {
        EXPECT_STREQ(text.textStringConst(), L"Beam");
        EXPECT_EQ(text.height(), 2.5);
        EXPECT_EQ(text.widthFactor(), 1.0);
        EXPECT_TRUE(text.textStyle() == m_style);
        expectNear(text.position(), {1.0, 2.0, 0.0}, 0.0);
    });
}

TEST_F(FiledEntities, ATextWithAllThatItCanHave) {
    FiledBits bits;
    bits.data.rawChar(0x00);
    bits.data.rawDouble(-3.0);
    bits.data.rawDouble(1.0);
    bits.data.rawDouble(2.0);
    bits.data.bitDouble(4.0, 1.0);
    bits.data.bitDouble(2.0, 2.0);
    bits.data.extrusion({0.0, 1.0, 0.0});
    bits.data.thickness(0.5);
    bits.data.rawDouble(0.25);
    bits.data.rawDouble(0.75);
    bits.data.rawDouble(2.5);
    bits.data.rawDouble(0.5);
    writeText(bits.data, "B");
    bits.data.bitShort(2);
    bits.data.bitShort(4);
    bits.data.bitShort(3);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_style)});
    expectBothWays<AcDbText>(bits, [](const AcDbText& text) {
        EXPECT_EQ(text.oblique(), 0.25);
        EXPECT_EQ(text.rotation(), 0.75);
        EXPECT_EQ(text.widthFactor(), 0.5);
        EXPECT_TRUE(text.isMirroredInX());
        EXPECT_EQ(text.horizontalMode(), AcDb::kTextMid);
        EXPECT_EQ(text.verticalMode(), AcDb::kTextTop);
        AcGeMatrix3d ecs;
        text.getEcs(ecs);
        expectNear(text.alignmentPoint(), ecs * AcGePoint3d(4.0, 2.0, -3.0));
    });
}

TEST_F(FiledEntities, AnAttributeIsATextWithATag) {
    FiledBits bits;
    bits.data.rawChar(0xFF);
    bits.data.rawDouble(1.0);
    bits.data.rawDouble(2.0);
    bits.data.extrusion({0.0, 0.0, 1.0});
    bits.data.thickness(0.0);
    bits.data.rawDouble(2.5);
    writeText(bits.data, "17");
    writeText(bits.data, "NR");
    bits.data.bitShort(12);
    bits.data.rawChar(9);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_style)});
    expectBothWays<AcDbAttribute>(bits, [](const AcDbAttribute& attribute) {
        EXPECT_STREQ(attribute.tagConst(), L"NR");
        EXPECT_EQ(attribute.fieldLength(), 12);
        EXPECT_TRUE(attribute.isInvisible());
        EXPECT_TRUE(attribute.isPreset());
        EXPECT_FALSE(attribute.isConstant());
        EXPECT_FALSE(attribute.isVerifiable());
    });
}

namespace {

struct ScaleRow {
    AcGeScale3d scale;
    unsigned form;
};

// The forms in which the file tells three scale factors.
const ScaleRow kScaleRows[] = {
    {{1.0, 1.0, 1.0}, 3}, {{1.0, 2.0, 1.0}, 1},    {{2.5, 2.5, 2.5}, 2},
    {{2.0, 1.0, 1.0}, 0}, {{-1.0, -1.0, -1.0}, 2},
};

} // namespace

TEST_F(FiledEntities, ABlockReferenceTellsItsScaleInTheShortestForm) {
    for (const ScaleRow& row : kScaleRows) {
        FiledBits bits;
        bits.data.threeBitDoubles({1.0, 2.0, 0.0});
        bits.data.twoBits(static_cast<std::uint8_t>(row.form));
        if (row.form == 0 || row.form == 2)
            bits.data.rawDouble(row.scale.sx);
        if (row.form < 2) {
            bits.data.bitDouble(row.scale.sy, row.scale.sx);
            bits.data.bitDouble(row.scale.sz, row.scale.sx);
        }
        bits.data.bitDouble(0.5);
        bits.data.threeBitDoubles({0.0, 0.0, 1.0});
        bits.data.bit(false);
        bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_block)});
        expectBothWays<AcDbBlockReference>(bits, [&](const AcDbBlockReference& reference) {
            EXPECT_TRUE(reference.scaleFactors().isEqualTo(row.scale));
            EXPECT_EQ(reference.rotation(), 0.5);
            EXPECT_TRUE(reference.blockTableRecord() == m_block);
        });
    }
}

TEST_F(FiledEntities, ABlockReferenceNamesItsFirstAndLastAttribute) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 2.0, 0.0});
    bits.data.twoBits(3);
    bits.data.bitDouble(0.0);
    bits.data.threeBitDoubles({0.0, 0.0, 1.0});
    bits.data.bit(true);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_block)});
    bits.handles.handle({embedded::dwg::kSoftPointer, 0x501});
    bits.handles.handle({embedded::dwg::kSoftPointer, 0x502});
    bits.handles.handle({embedded::dwg::kHardOwner, 0x503});
    AcDbBlockReference reference;
    ASSERT_EQ(read(reference, bits), Acad::eOk);
    expectFiledAs(reference, bits);
}

TEST_F(FiledEntities, TheEndOfASequenceHasNothingOfItsOwn) {
    AcDbSequenceEnd end;
    expectFiledAs(end, FiledBits());
    EXPECT_EQ(read(end, FiledBits()), Acad::eOk);
}
