#include "db/database_core.h"
#include "dbents.h"
#include "plot/colour_table.h"
#include "plot_fixture.h"

namespace {

class PlottedLooks : public PlotFixture {
protected:
    AcDbObjectId addLayer(const wchar_t* name, int colour, AcDb::LineWeight weight,
                          AcDbObjectId lineType = AcDbObjectId()) {
        return addRecord<AcDbLayerTable, AcDbLayerTableRecord>(
            m_database->layerTableId(), name, [&](AcDbLayerTableRecord& record) {
                record.setColorIndex(static_cast<Adesk::UInt16>(colour));
                record.setLineWeight(weight);
                if (!lineType.isNull())
                    record.setLinetypeObjectId(lineType);
            });
    }

    AcDbObjectId addLineType(const wchar_t* name, const std::vector<double>& dashes) {
        return addRecord<AcDbLinetypeTable, AcDbLinetypeTableRecord>(
            m_database->core().roots.linetypeTable, name, [&](AcDbLinetypeTableRecord& record) {
                record.setNumDashes(static_cast<int>(dashes.size()));
                for (std::size_t i = 0; i < dashes.size(); ++i)
                    record.setDashLengthAt(static_cast<int>(i), dashes[i]);
            });
    }

    Primitive& across(double y, int colour = 7) {
        return add(Kind::kPolyline, {{-50, y, 0}, {50, y, 0}}, colour);
    }

    // The dark rows at a column of the picture.
    int darkRows(int column, int from = 0, int to = 90) {
        const auto seen = picture();
        int rows = 0;
        for (int y = from; y < to; ++y)
            rows += (seen.colourAt(column, y) & 255) < 128;
        return rows;
    }

    // How often a row of the picture changes from light to dark.
    int dashesAt(int row) {
        const auto seen = picture();
        int dashes = 0;
        bool wasDark = false;
        for (int x = 0; x < 120; ++x) {
            const bool isDark = (seen.colourAt(x, row) & 255) < 128;
            dashes += isDark && !wasDark;
            wasDark = isDark;
        }
        return dashes;
    }
};

void expectColour(int index, int red, int green, int blue) {
    const embedded::Rgb colour = embedded::colourOfIndex(index, false);
    EXPECT_EQ(colour.red, red) << index;
    EXPECT_EQ(colour.green, green) << index;
    EXPECT_EQ(colour.blue, blue) << index;
}

} // namespace

TEST_F(PlottedLooks, ColoursOfTheIndexAreTheUsualOnes) {
    expectColour(1, 255, 0, 0);
    expectColour(2, 255, 255, 0);
    expectColour(3, 0, 255, 0);
    expectColour(4, 0, 255, 255);
    expectColour(5, 0, 0, 255);
    expectColour(6, 255, 0, 255);
    expectColour(8, 128, 128, 128);
    expectColour(9, 192, 192, 192);
    expectColour(10, 255, 0, 0);
    expectColour(11, 255, 127, 127);
    expectColour(12, 165, 0, 0);
    expectColour(20, 255, 63, 0);
    expectColour(21, 255, 159, 127);
    expectColour(30, 255, 127, 0);
    expectColour(50, 255, 255, 0);
    expectColour(90, 0, 255, 0);
    expectColour(134, 0, 127, 127);
    expectColour(170, 0, 0, 255);
    expectColour(240, 255, 0, 63);
    expectColour(249, 38, 19, 23);
    expectColour(250, 51, 51, 51);
    expectColour(255, 255, 255, 255);
}

TEST_F(PlottedLooks, ColourSevenIsWhatTheGroundIsNot) {
    across(0.5).traits.lineWeight = AcDb::kLnWt200;
    EXPECT_EQ(picture().colourAt(60, 44), 0x000000u);
    m_style.isDark = true;
    EXPECT_EQ(picture().colourAt(60, 44), 0xFFFFFFu);
    EXPECT_EQ(picture().colourAt(60, 10), 0x000000u);
    // Outside of blocks what is by block has it too.
    m_list.primitives[0].traits.colour = 0;
    EXPECT_EQ(picture().colourAt(60, 44), 0xFFFFFFu);
}

TEST_F(PlottedLooks, ATrueColourIsDrawnAsItIs) {
    Primitive& line = across(0.5);
    line.traits.lineWeight = AcDb::kLnWt200;
    line.traits.trueColour = AcCmEntityColor(10, 20, 30);
    EXPECT_EQ(picture().colourAt(60, 44), 0x0A141Eu);
}

TEST_F(PlottedLooks, WhatIsByLayerComesFromTheLayer) {
    Primitive& line = across(0.5, 256);
    line.traits.layer = addLayer(L"THICK", 5, AcDb::kLnWt200, addLineType(L"DASH", {10.0, -10.0}));
    line.traits.lineType = m_database->core().roots.byLayerLinetype;
    EXPECT_EQ(picture().colourAt(12, 44), 0x0000FFu);
    EXPECT_EQ(picture().colourAt(25, 44), 0xFFFFFFu);
    EXPECT_TRUE(isGolden("by_layer"));
}

TEST_F(PlottedLooks, LineWeightsAreThoseOfThePage) {
    // 3.78 pixels are a millimetre, however many drawing units that is.
    for (const double height : {90.0, 9000.0}) {
        m_view.height = height;
        m_list.primitives.clear();
        across(0.0).traits.lineWeight = AcDb::kLnWt211;
        EXPECT_EQ(darkRows(60), 8) << height;
    }
    m_view.height = 90.0;
    m_list.primitives[0].traits.lineWeight = AcDb::kLnWt106;
    EXPECT_EQ(darkRows(60), 4);
    m_style.lineWeightScale = 2.0;
    EXPECT_EQ(darkRows(60), 8);
}

TEST_F(PlottedLooks, TheDefaultWeightIsTheStyles) {
    across(0.0).traits.lineWeight = AcDb::kLnWtByLwDefault;
    m_style.defaultLineWeight = 1.06;
    EXPECT_EQ(darkRows(60), 4);
    // By layer on a layer with the default, and by block outside of blocks, come to the same.
    m_list.primitives[0].traits.lineWeight = AcDb::kLnWtByLayer;
    EXPECT_EQ(darkRows(60), 4);
    m_list.primitives[0].traits.lineWeight = AcDb::kLnWtByBlock;
    EXPECT_EQ(darkRows(60), 4);
}

TEST_F(PlottedLooks, TheThinnestLineIsAPixel) {
    across(0.5).traits.lineWeight = AcDb::kLnWt000;
    EXPECT_EQ(darkRows(60), 1);
}

TEST_F(PlottedLooks, DashesGapsAndDotsFollowThePattern) {
    across(30.5).traits.lineType = addLineType(L"DASHED", {15.0, -10.0});
    Primitive& dotted = across(10.5);
    dotted.traits.lineType = addLineType(L"DOT", {0.0, -10.0});
    dotted.traits.lineWeight = AcDb::kLnWt053;
    Primitive& both = across(-9.5);
    both.traits.lineType = addLineType(L"DASHDOT", {15.0, -5.0, 0.0, -5.0});
    both.traits.lineWeight = AcDb::kLnWt053;
    EXPECT_EQ(dashesAt(14), 4);
    EXPECT_EQ(dashesAt(34), 10);
    EXPECT_EQ(dashesAt(54), 8);
    EXPECT_TRUE(isGolden("line_types"));
}

TEST_F(PlottedLooks, APatternIsScaledByTheLineAndTheDrawing) {
    Primitive& line = across(0.5);
    line.traits.lineType = addLineType(L"DASHED", {5.0, -5.0});
    EXPECT_EQ(dashesAt(44), 10);
    m_list.primitives[0].traits.lineTypeScale = 2.0;
    EXPECT_EQ(dashesAt(44), 5);
    m_style.lineTypeScale = 2.5;
    EXPECT_EQ(dashesAt(44), 2);
}

TEST_F(PlottedLooks, APatternThatIsTooDenseIsAWholeLine) {
    across(0.5).traits.lineType = addLineType(L"DENSE", {0.2, -0.2});
    EXPECT_EQ(dashesAt(44), 1);
    // However long the line is, and wherever its pattern starts.
    m_list.primitives.clear();
    add(Kind::kPolyline, {{-1.0e9, 0.5, 0}, {1.0e9, 0.5, 0}}).traits.lineType =
        addLineType(L"WIDE", {20.0, -20.0});
    EXPECT_EQ(dashesAt(44), 3);
}

TEST_F(PlottedLooks, DashesGoAroundCornersAndArcs) {
    const AcDbObjectId dashed = addLineType(L"DASHED", {12.0, -6.0});
    add(Kind::kPolygon, {{-50, -30, 0}, {-10, -30, 0}, {-10, 30, 0}, {-50, 30, 0}}).traits.lineType = dashed;
    addRound(Kind::kCircle, {30, 0, 0}, 25.0).traits.lineType = dashed;
    EXPECT_TRUE(isGolden("dashed_round"));
}

TEST_F(PlottedLooks, WhatIsNotToBePlottedIsNotOnThePicture) {
    const AcDbObjectId screenOnly = addRecord<AcDbLayerTable, AcDbLayerTableRecord>(
        m_database->layerTableId(), L"SCREEN",
        [](AcDbLayerTableRecord& layer) { layer.setIsPlottable(false); });
    across(20.5).traits.layer = m_database->core().roots.layerZero;
    across(0.5).traits.layer = screenOnly;
    across(-20.5).isPlottable = false;
    add(Kind::kPolyline, {{0, -400, 0}, {0, 400, 0}}).traits.layer = screenOnly;
    const AcDbExtents box = embedded::eyeExtents(m_list, m_view);
    EXPECT_EQ(box.minPoint().y, 20.5);
    EXPECT_EQ(box.maxPoint().y, 20.5);
    EXPECT_EQ(darkRows(40, 20, 30), 1);
    EXPECT_EQ(darkRows(40), 1);
    EXPECT_EQ(darkRows(60), 1);

    // The screen has them all.
    EXPECT_EQ(m_list.primitives.size(), 4u);
    embedded::leaveOutNotPlotted(m_list);
    ASSERT_EQ(m_list.primitives.size(), 1u);
    EXPECT_EQ(m_list.primitives[0].points[0].y, 20.5);
}

TEST_F(PlottedLooks, LayersThatAreOffOrFrozenAreNotDrawn) {
    const auto addLine = [&](const AcDbObjectId& layer, double y) {
        AcDbBlockTableRecord* space = nullptr;
        AcDbObjectId id;
        ASSERT_EQ(acdbOpenObject(space, m_database->core().roots.modelSpace, AcDb::kForWrite), Acad::eOk);
        auto* line = new AcDbLine({-50, y, 0}, {50, y, 0});
        line->setColorIndex(1);
        ASSERT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
        ASSERT_EQ(line->setLayer(layer), Acad::eOk);
        line->close();
        space->close();
    };
    const AcDbObjectId off = addRecord<AcDbLayerTable, AcDbLayerTableRecord>(
        m_database->layerTableId(), L"OFF", [](AcDbLayerTableRecord& layer) { layer.setIsOff(true); });
    const AcDbObjectId frozen = addRecord<AcDbLayerTable, AcDbLayerTableRecord>(
        m_database->layerTableId(), L"FROZEN", [](AcDbLayerTableRecord& layer) { layer.setIsFrozen(true); });
    addLine(m_database->core().roots.layerZero, 20.5);
    addLine(off, 0.5);
    addLine(frozen, -20.5);
    m_list = embedded::draw(*m_database, m_view);
    EXPECT_EQ(m_list.primitives.size(), 1u);
    const auto seen = picture();
    EXPECT_LT(seen.colourAt(60, 24) & 0xFF, 160u);
    EXPECT_EQ(seen.colourAt(60, 44), 0xFFFFFFu);
    EXPECT_EQ(seen.colourAt(60, 65), 0xFFFFFFu);
}
