#include "filed_entities.h"

namespace {

void chainOfNone(FiledBits& bits) {
    bits.handles.handle({embedded::dwg::kSoftPointer, 0});
    bits.handles.handle({embedded::dwg::kSoftPointer, 0});
    bits.handles.handle({embedded::dwg::kHardOwner, 0});
}

void chainOfTwo(FiledBits& bits) {
    bits.handles.handle({embedded::dwg::kSoftPointer, 0x501});
    bits.handles.handle({embedded::dwg::kSoftPointer, 0x502});
    bits.handles.handle({embedded::dwg::kHardOwner, 0x503});
}

} // namespace

TEST_F(FiledEntities, AnArrayOfReferencesHasItsCountsBehindTheFlagOfAttributes) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 2.0, 0.0});
    bits.data.twoBits(3);
    bits.data.bitDouble(0.5);
    bits.data.threeBitDoubles({0.0, 0.0, 1.0});
    bits.data.bit(false);
    bits.data.bitShort(1);
    bits.data.bitShort(300);
    bits.data.bitDouble(2.5);
    bits.data.bitDouble(-1.0);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_block)});
    expectBothWays<AcDbMInsertBlock>(bits, [&](const AcDbMInsertBlock& array) {
        EXPECT_EQ(array.columns(), 1);
        EXPECT_EQ(array.rows(), 300);
        EXPECT_EQ(array.columnSpacing(), 2.5);
        EXPECT_EQ(array.rowSpacing(), -1.0);
        EXPECT_EQ(array.rotation(), 0.5);
        EXPECT_TRUE(array.blockTableRecord() == m_block);
    });
}

TEST_F(FiledEntities, AnArrayOfReferencesNamesItsFirstAndLastAttribute) {
    FiledBits bits;
    bits.data.threeBitDoubles({1.0, 2.0, 0.0});
    bits.data.twoBits(3);
    bits.data.bitDouble(0.0);
    bits.data.threeBitDoubles({0.0, 0.0, 1.0});
    bits.data.bit(true);
    bits.data.bitShort(2);
    bits.data.bitShort(2);
    bits.data.bitDouble(1.0);
    bits.data.bitDouble(1.0);
    bits.handles.handle({embedded::dwg::kHardPointer, handleOf(m_block)});
    chainOfTwo(bits);
    AcDbMInsertBlock array;
    ASSERT_EQ(read(array, bits), Acad::eOk);
    expectFiledAs(array, bits);
}

TEST_F(FiledEntities, AVertexOfDifferingWidths) {
    FiledBits bits;
    bits.data.rawChar(2);
    bits.data.threeBitDoubles({1.5, 2.0, 0.0});
    bits.data.bitDouble(0.25);
    bits.data.bitDouble(0.75);
    bits.data.bitDouble(-0.5);
    bits.data.bitDouble(1.25);
    expectBothWays<AcDb2dVertex>(bits, [](const AcDb2dVertex& vertex) {
        expectNear(vertex.position(), {1.5, 2.0, 0.0}, 0.0);
        EXPECT_EQ(vertex.startWidth(), 0.25);
        EXPECT_EQ(vertex.endWidth(), 0.75);
        EXPECT_EQ(vertex.bulge(), -0.5);
        EXPECT_EQ(vertex.tangent(), 1.25);
        EXPECT_TRUE(vertex.isTangentUsed());
        EXPECT_EQ(vertex.vertexType(), AcDb::k2dVertex);
    });
}

TEST_F(FiledEntities, AVertexOfOneWidthTellsItOnceBelowZero) {
    FiledBits bits;
    bits.data.rawChar(16);
    bits.data.threeBitDoubles({1.5, 2.0, 0.0});
    bits.data.bitDouble(-0.25);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(0.0);
    expectBothWays<AcDb2dVertex>(bits, [](const AcDb2dVertex& vertex) {
        EXPECT_EQ(vertex.startWidth(), 0.25);
        EXPECT_EQ(vertex.endWidth(), 0.25);
        EXPECT_EQ(vertex.vertexType(), AcDb::k2dSplineCtlVertex);
    });
}

TEST_F(FiledEntities, AVertexThatCameWithItsOneWidthTwiceKeepsThatForm) {
    FiledBits bits;
    bits.data.rawChar(0);
    bits.data.threeBitDoubles({0.0, 0.0, 0.0});
    bits.data.bitDouble(0.25);
    bits.data.bitDouble(0.25);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(0.0);
    expectBothWays<AcDb2dVertex>(bits,
                                 [](const AcDb2dVertex& vertex) { EXPECT_EQ(vertex.endWidth(), 0.25); });
}

TEST_F(FiledEntities, AVertexInSpace) {
    FiledBits bits;
    bits.data.rawChar(40);
    bits.data.threeBitDoubles({1.5, 2.0, -3.0});
    expectBothWays<AcDb3dPolylineVertex>(bits, [](const AcDb3dPolylineVertex& vertex) {
        expectNear(vertex.position(), {1.5, 2.0, -3.0}, 0.0);
        EXPECT_EQ(vertex.vertexType(), AcDb::k3dFitVertex);
    });
}

TEST_F(FiledEntities, APolylineOfVerticesInAPlane) {
    FiledBits bits;
    bits.data.bitShort(0x80 | 0x4 | 0x1);
    bits.data.bitShort(6);
    bits.data.bitDouble(0.5);
    bits.data.bitDouble(0.75);
    bits.data.thickness(2.0);
    bits.data.bitDouble(3.0);
    bits.data.extrusion({0.0, 1.0, 0.0});
    chainOfNone(bits);
    expectBothWays<AcDb2dPolyline>(bits, [](const AcDb2dPolyline& line) {
        EXPECT_EQ(line.polyType(), AcDb::k2dCubicSplinePoly);
        EXPECT_TRUE(line.isClosed());
        EXPECT_TRUE(line.isLinetypeGenerationOn());
        EXPECT_EQ(line.defaultStartWidth(), 0.5);
        EXPECT_EQ(line.defaultEndWidth(), 0.75);
        EXPECT_EQ(line.thickness(), 2.0);
        EXPECT_EQ(line.elevation(), 3.0);
        expectNear(line.normal(), AcGeVector3d::kYAxis, 0.0);
    });
}

TEST_F(FiledEntities, APolylineOfVerticesNamesTheFirstAndTheLast) {
    FiledBits bits;
    bits.data.bitShort(0);
    bits.data.bitShort(0);
    bits.data.bitDouble(0.0);
    bits.data.bitDouble(0.0);
    bits.data.thickness(0.0);
    bits.data.bitDouble(0.0);
    bits.data.extrusion({0.0, 0.0, 1.0});
    chainOfTwo(bits);
    AcDb2dPolyline line;
    ASSERT_EQ(read(line, bits), Acad::eOk);
    expectFiledAs(line, bits);
}

TEST_F(FiledEntities, APolylineInSpaceHasTwoBytesOfFlags) {
    FiledBits bits;
    bits.data.rawChar(1);
    bits.data.rawChar(1);
    chainOfNone(bits);
    expectBothWays<AcDb3dPolyline>(bits, [](const AcDb3dPolyline& line) {
        EXPECT_EQ(line.polyType(), AcDb::k3dQuadSplinePoly);
        EXPECT_TRUE(line.isClosed());
    });
    FiledBits open;
    open.data.rawChar(2);
    open.data.rawChar(0);
    chainOfTwo(open);
    AcDb3dPolyline line;
    ASSERT_EQ(read(line, open), Acad::eOk);
    EXPECT_EQ(line.polyType(), AcDb::k3dCubicSplinePoly);
    expectFiledAs(line, open);
}
