#include "plot_fixture.h"

#include <cmath>
#include <limits>

using embedded::PrimitiveKind;

namespace {

const double kTestPi = 3.14159265358979323846;

class PlottedPrimitives : public PlotFixture {};

} // namespace

TEST_F(PlottedPrimitives, APolylineIsAChainOfLines) {
    add(Kind::kPolyline, {{-40, -30, 0}, {-40, 30, 0}, {40, 30, 0}});
    EXPECT_TRUE(isGolden("polyline"));
    const auto seen = picture();
    EXPECT_EQ(seen.width, 120);
    EXPECT_EQ(seen.height, 90);
    EXPECT_GT(seen.colourAt(20, 80), 0xF00000u);
    EXPECT_LT(seen.colourAt(20, 45) & 255, 160u);
    EXPECT_EQ(seen.colourAt(60, 45), 0xFFFFFFu);
}

TEST_F(PlottedPrimitives, APolygonIsClosedAndFilledIfItIsToBe) {
    add(Kind::kPolygon, {{-50, -30, 0}, {-10, -30, 0}, {-30, 30, 0}});
    add(Kind::kPolygon, {{10, -30, 0}, {50, -30, 0}, {30, 30, 0}}, 1).traits.fill = kAcGiFillAlways;
    EXPECT_TRUE(isGolden("polygon"));
    const auto seen = picture();
    EXPECT_EQ(seen.colourAt(30, 60), 0xFFFFFFu);
    EXPECT_EQ(seen.colourAt(90, 60), 0xFF0000u);
}

TEST_F(PlottedPrimitives, AFilledPolygonSeenFromItsSideIsALine) {
    add(Kind::kPolygon, {{-30, 0, -30}, {30, 0, -30}, {0, 0, 30}}, 1).traits.fill = kAcGiFillAlways;
    EXPECT_GE(picture().count(0xFF0000, 160), 60u);
}

TEST_F(PlottedPrimitives, CirclesAndArcsAreRound) {
    addRound(Kind::kCircle, {-30, 15, 0}, 20.0);
    addRound(Kind::kArc, {30, 15, 0}, 20.0, 1.5 * kTestPi);
    addRound(Kind::kArc, {-30, -30, 0}, 12.0, kTestPi / 2.0).arcType = kAcGiArcSector;
    Primitive& chord = addRound(Kind::kArc, {0, -30, 0}, 12.0, kTestPi / 2.0);
    chord.arcType = kAcGiArcChord;
    Primitive& full = addRound(Kind::kArc, {30, -30, 0}, 12.0, kTestPi / 2.0);
    full.arcType = kAcGiArcSector;
    full.traits.fill = kAcGiFillAlways;
    EXPECT_TRUE(isGolden("round"));
}

TEST_F(PlottedPrimitives, ACircleIsACurveInVectorPictures) {
    addRound(Kind::kCircle, {0, 0, 0}, 20.0);
    const std::string svg = bytes(embedded::PlotFormat::kSvg);
    EXPECT_NE(svg.find(" C "), std::string::npos) << svg;
}

TEST_F(PlottedPrimitives, ATiltedCircleIsAnEllipseAndOneFromItsSideALine) {
    Primitive& tilted = addRound(Kind::kCircle, {-30, 0, 0}, 20.0);
    tilted.normal = AcGeVector3d(0.0, 1.0, 1.0).normal();
    Primitive& upright = addRound(Kind::kCircle, {30, 0, 0}, 20.0);
    upright.normal = AcGeVector3d::kYAxis;
    EXPECT_TRUE(isGolden("tilted_circles"));
}

TEST_F(PlottedPrimitives, AMeshIsItsGrid) {
    Primitive& mesh = add(Kind::kMesh, {});
    mesh.rows = 3;
    mesh.columns = 4;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 4; ++column)
            mesh.points.push_back({column * 20.0 - 30.0, row * 20.0 - 20.0 + column * 3.0, 0.0});
    EXPECT_TRUE(isGolden("mesh"));
}

TEST_F(PlottedPrimitives, AShellHasEdgesAndHoles) {
    Primitive& edges = add(Kind::kShell, {{-55, -20, 0}, {-35, -20, 0}, {-35, 20, 0}, {-55, 20, 0}});
    edges.faces = {3, 0, 1, 2, 3, 0, 2, 3};
    Primitive& holed = add(Kind::kShell,
                           {{-20, -30, 0},
                            {50, -30, 0},
                            {50, 30, 0},
                            {-20, 30, 0},
                            {0, -10, 0},
                            {30, -10, 0},
                            {30, 10, 0},
                            {0, 10, 0}},
                           3);
    holed.faces = {4, 0, 1, 2, 3, -4, 4, 5, 6, 7};
    holed.traits.fill = kAcGiFillAlways;
    EXPECT_TRUE(isGolden("shell"));
    const auto seen = picture();
    EXPECT_EQ(seen.colourAt(75, 45), 0xFFFFFFu); // in the hole
    EXPECT_EQ(seen.colourAt(50, 45), 0x00FF00u);
}

TEST_F(PlottedPrimitives, ATextIsWideSlantedTurnedAndMirrored) {
    addText(L"Beam g", {-55, 25, 0}, 12.0);
    addText(L"Beam", {-55, 5, 0}, 12.0).widthFactor = 2.0;
    addText(L"Beam", {-55, -15, 0}, 12.0).oblique = 0.4;
    Primitive& turned = addText(L"Beam", {50, -40, 0}, 12.0);
    turned.direction = AcGeVector3d::kYAxis;
    Primitive& behind = addText(L"Beam", {10, -40, 0}, 12.0);
    behind.normal = -AcGeVector3d::kZAxis;
    behind.direction = -AcGeVector3d::kXAxis;
    EXPECT_TRUE(isGolden("text"));
}

TEST_F(PlottedPrimitives, ATextInASlantedViewLiesInItsPlane) {
    m_view.direction = embedded::directionOf(embedded::StandardView::kSouthWest);
    addText(L"BEAM", {-35, 0, 0}, 20.0);
    EXPECT_TRUE(isGolden("text_iso"));
}

TEST_F(PlottedPrimitives, ATextsStyleMirrorsAndUnderlines) {
    AcGiTextStyle style;
    style.setBackward(true);
    addText(L"Rib", {50, 20, 0}, 14.0).style = style;
    style.setBackward(false);
    style.setUpsideDown(true);
    addText(L"Rib", {-50, 10, 0}, 14.0).style = style;
    style.setUpsideDown(false);
    style.setUnderlined(true);
    style.setOverlined(true);
    addText(L"Rib", {-10, -35, 0}, 14.0).style = style;
    EXPECT_TRUE(isGolden("text_styles"));
}

TEST_F(PlottedPrimitives, CapitalLettersAreAsHighAsTheTextSays) {
    addText(L"H", {-20, -20, 0}, 40.0);
    const auto seen = picture();
    int top = 90, bottom = -1;
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 120; ++x)
            if ((seen.colourAt(x, y) & 255) < 128) {
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    EXPECT_EQ(bottom, 64); // the base line is at 65
    EXPECT_EQ(top, 25);
}

TEST_F(PlottedPrimitives, XlinesGoToBothEdgesAndRaysToOne) {
    add(Kind::kXline, {{0, 20, 0}, {1, 20, 0}}, 1);
    add(Kind::kRay, {{0, -20, 0}, {1, -20, 0}}, 5);
    const auto seen = picture();
    EXPECT_GE(seen.count(0xFF0000, 150), 118u);
    EXPECT_GE(seen.count(0x0000FF, 150), 58u);
    EXPECT_LE(seen.count(0x0000FF, 150), 62u * 2);
    EXPECT_EQ(seen.colourAt(30, 65), 0xFFFFFFu);
}

TEST_F(PlottedPrimitives, AThicknessStandsUp) {
    m_view.direction = embedded::directionOf(embedded::StandardView::kSouthWest);
    add(Kind::kPolyline, {{-20, -20, 0}, {20, -20, 0}, {20, 20, 0}}).traits.thickness = 30.0;
    addRound(Kind::kCircle, {-20, 30, 0}, 10.0).traits.thickness = 20.0;
    EXPECT_TRUE(isGolden("thickness"));
}

TEST_F(PlottedPrimitives, WhatComesLaterLiesOnTop) {
    for (const int colour : {1, 3})
        add(Kind::kPolygon, {{-20, -20, 0}, {20, -20, 0}, {20, 20, 0}, {-20, 20, 0}}, colour).traits.fill =
            kAcGiFillAlways;
    EXPECT_EQ(picture().colourAt(60, 45), 0x00FF00u);
}

TEST_F(PlottedPrimitives, AnythingFarAwayOrNowhereLeavesTheRestInPlace) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double far = 1.0e12;
    add(Kind::kPolyline, {{none, 0, 0}, {10, 0, 0}});
    add(Kind::kPolygon, {{none, 0, 0}, {10, 0, 0}, {0, 10, 0}}).traits.fill = kAcGiFillAlways;
    addRound(Kind::kCircle, {0, 0, 0}, none);
    addText(L"x", {none, 0, 0}, 10.0);
    add(Kind::kXline, {{none, 0, 0}, {10, 0, 0}});
    add(Kind::kPolyline, {});
    add(Kind::kMesh, {{0, 0, 0}}).rows = 5;
    addRound(Kind::kCircle, {far, 0, 0}, 10.0);
    addText(L"x", {far, 0, 0}, 10.0);
    add(Kind::kPolyline, {{-far, 10, 0}, {far, 10, 0}}, 1);
    add(Kind::kPolygon, {{-far, -far, 0}, {far, -far, 0}, {far, -20, 0}, {-far, -20, 0}}, 5).traits.fill =
        kAcGiFillAlways;
    const auto seen = picture();
    EXPECT_GE(seen.count(0xFF0000, 150), 118u);
    EXPECT_EQ(seen.colourAt(60, 80), 0x0000FFu);
    EXPECT_EQ(seen.colourAt(60, 60), 0xFFFFFFu);
}

TEST_F(PlottedPrimitives, AreasThatTouchLeaveNoSeamWhicheverWayTheyGo) {
    add(Kind::kPolygon, {{-20, -20, 0}, {0.3, -20, 0}, {0.6, 20, 0}, {-20, 20, 0}}, 1);
    add(Kind::kPolygon, {{20, -20, 0}, {0.3, -20, 0}, {0.6, 20, 0}, {20, 20, 0}}, 1);
    add(Kind::kPolygon, {{-10, -10, 0}, {10, -10, 0}, {10, 10, 0}, {-10, 10, 0}}, 1);
    for (Primitive& primitive : m_list.primitives)
        primitive.traits.fill = kAcGiFillAlways;
    EXPECT_EQ(picture().count(0xFF0000, 2), 40u * 40u);
}

TEST_F(PlottedPrimitives, WhatIsFilledFirstHasItsColour) {
    add(Kind::kPolygon, {{-20, -20, 0}, {20, -20, 0}, {20, 20, 0}, {-20, 20, 0}}).traits.fill =
        kAcGiFillAlways;
    EXPECT_EQ(picture().colourAt(60, 45), 0x000000u);
    m_style.isDark = true;
    EXPECT_EQ(picture().colourAt(60, 45), 0xFFFFFFu);
}

TEST_F(PlottedPrimitives, APointIsADot) {
    add(Kind::kPolyline, {{0.5, 0.5, 0}, {0.5, 0.5, 0}}).traits.lineWeight = AcDb::kLnWt200;
    EXPECT_EQ(picture().colourAt(60, 44), 0x000000u);
}
