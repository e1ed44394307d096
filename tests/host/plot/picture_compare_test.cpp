#include "plot_fixture.h"
#include "support/display_list_text.h"

#include "dbents.h"

namespace {

using testing_support::difference;
using testing_support::kUsualTolerance;
using testing_support::Picture;

class ComparedPictures : public PlotFixture {
protected:
    Picture circleAt(double x, double radius, int colour = 7) {
        m_list.primitives.clear();
        addRound(Kind::kCircle, {x, 0, 0}, radius).traits.colour = static_cast<Adesk::UInt16>(colour);
        return picture();
    }
};

} // namespace

TEST_F(ComparedPictures, APictureIsLikeItselfAndLikeOneAFractionOfAPixelAside) {
    const Picture circle = circleAt(0.0, 20.0);
    EXPECT_EQ(difference(circle, circle).mean, 0.0);
    EXPECT_EQ(difference(circle, circle).edges, 0.0);
    EXPECT_TRUE(difference(circle, circleAt(0.05, 20.0)).isWithin(kUsualTolerance));
}

TEST_F(ComparedPictures, AnotherPlaceSizeOrColourIsADifference) {
    const Picture circle = circleAt(0.0, 20.0);
    EXPECT_FALSE(difference(circle, circleAt(6.0, 20.0)).isWithin(kUsualTolerance));
    EXPECT_FALSE(difference(circle, circleAt(0.0, 26.0)).isWithin(kUsualTolerance));
    EXPECT_FALSE(difference(circle, circleAt(0.0, 20.0, 1)).isWithin(kUsualTolerance));
    Picture smaller = circle;
    smaller.height -= 1;
    smaller.pixels.resize(smaller.pixels.size() - static_cast<std::size_t>(smaller.width) * 4);
    EXPECT_FALSE(difference(circle, smaller).isWithin(kUsualTolerance));
}

TEST_F(ComparedPictures, APictureComesBackFromItsPng) {
    const Picture circle = circleAt(0.0, 20.0, 30);
    Picture back;
    ASSERT_TRUE(testing_support::readPicture(testing_support::pngOf(circle), back));
    EXPECT_EQ(back.pixels, circle.pixels);
    EXPECT_FALSE(testing_support::readPicture("no picture", back));
}

TEST_F(ComparedPictures, AListAsTextHasALineForEachPrimitive) {
    add(Kind::kPolyline, {{0, -0.0, 1.0 / 3.0}, {1.0e7, 2, 3}}, 3).normal = AcGeVector3d();
    Primitive& arc = addRound(Kind::kArc, {1, 2, 3}, 2.5, 1.5);
    arc.traits.colour = 256;
    arc.arcType = kAcGiArcSector;
    arc.ofViewport = true;
    Primitive& text = addText(L"B 17", {0, 0, 0}, 2.0);
    text.widthFactor = 0.5;
    text.traits.trueColour = AcCmEntityColor(1, 2, 255);
    text.traits.marker = 4;
    text.traits.lineWeight = AcDb::kLnWt050;
    text.ownerClass = AcDbLine::desc();
    Primitive& shell = add(Kind::kShell, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, 256);
    shell.normal = AcGeVector3d();
    shell.faces = {3, 0, 1, 2};
    shell.traits.fill = kAcGiFillAlways;
    m_list.failures.push_back({AcDbObjectId(), AcDbLine::desc(), "it is broken"});
    m_list.isCut = true;
    EXPECT_EQ(testing_support::displayListText(m_list),
              "polyline (0 0 0.333333) (10000000 2 3) | colour 3\n"
              "viewport arc (1 2 3) radius 2.5 normal (0 0 1) from (1 0 0) sweep 1.5 sector\n"
              "text (0 0 0) normal (0 0 1) 'B 17' height 2 width 0.5 along (1 0 0) | AcDbLine rgb #0102ff "
              "weight 50 marker 4\n"
              "shell (0 0 0) (1 0 0) (0 1 0) faces 3 0 1 2 | filled\n"
              "failure AcDbLine: it is broken\n"
              "cut\n");
}
