#include "orvshape/grip_icons.h"

#include "curve_fixture.h"
#include "orvshape/colours.h"
#include "orvshape/grip_manager.h"
#include "seen.h"

#include <boost/bind/bind.hpp>

using embedded::Primitive;
using embedded::PrimitiveKind;
using Lines = std::vector<std::string>;

namespace {

embedded::DisplayList buttonIn(const embedded::ViewParameters& view, AcDbGripOperations::DrawType type,
                               int size) {
    return seenIn(view, [&](orv::AcadViewportDraw& draw) {
        orv::drawGripPointIcon_GripButton(draw.viewportDraw(), {1, 2, 3}, type, size,
                                          orv::getReferenceGeometryGripPointColors());
    });
}

void expectColour(const Primitive& drawn, int red, int green, int blue) {
    EXPECT_TRUE(drawn.traits.trueColour.isByColor());
    EXPECT_EQ(drawn.traits.trueColour.red(), red);
    EXPECT_EQ(drawn.traits.trueColour.green(), green);
    EXPECT_EQ(drawn.traits.trueColour.blue(), blue);
}

} // namespace

TEST(GripIcons, ReferenceGeometryHasItsOwnColours) {
    const orv::GripPointColors colours = orv::getReferenceGeometryGripPointColors();
    EXPECT_EQ(colours.warm, orv::Colours::Cyan);
    EXPECT_EQ(colours.hover, orv::Colours::Yellow);
    EXPECT_EQ(colours.hot, orv::Colours::Red);
    EXPECT_EQ(colours.border, orv::ColourRGBA(0.0, 0.0, 0.0, 1.0));
}

TEST(GripIcons, ButtonIsAFilledSquareWithABorder) {
    const auto list = buttonIn(viewFrom({0, 0, 1}), AcDbGripOperations::kWarmGrip, 5);
    const std::string square = "viewport polygon (0.5 1.5 3) (1.5 1.5 3) (1.5 2.5 3) (0.5 2.5 3)";
    ASSERT_EQ(told(list), (Lines{square, square}));
    EXPECT_EQ(list.primitives[0].traits.fill, kAcGiFillAlways);
    EXPECT_EQ(list.primitives[1].traits.fill, kAcGiFillNever);
    expectColour(list.primitives[0], 0, 255, 255);
    expectColour(list.primitives[1], 0, 0, 0);
}

TEST(GripIcons, ButtonFacesTheViewerAndKeepsItsPixels) {
    embedded::ViewParameters view = viewFrom({0, -1, 0});
    view.height = 10.0; // ten times as near
    EXPECT_EQ(told(buttonIn(view, AcDbGripOperations::kWarmGrip, 50)).at(0),
              "viewport polygon (0.5 2 2.5) (1.5 2 2.5) (1.5 2 3.5) (0.5 2 3.5)");
}

TEST(GripIcons, ColourTellsWhatTheUserDoes) {
    struct Row {
        AcDbGripOperations::DrawType type;
        int red, green, blue;
    };
    const Row rows[] = {{AcDbGripOperations::kWarmGrip, 0, 255, 255},
                        {AcDbGripOperations::kHoverGrip, 255, 255, 0},
                        {AcDbGripOperations::kHotGrip, 255, 0, 0},
                        {AcDbGripOperations::kDragImageGrip, 0, 255, 255}};
    for (const Row& row : rows) {
        const auto list = buttonIn(viewFrom({0, 0, 1}), row.type, 5);
        ASSERT_EQ(list.primitives.size(), 2u);
        expectColour(list.primitives[0], row.red, row.green, row.blue);
        expectColour(list.primitives[1], 0, 0, 0);
    }
}

TEST(GripIcons, PartsOfAColourStayInTheirRange) {
    orv::GripPointColors colours;
    colours.warm = orv::ColourRGBA(-1.0, 0.5, 2.0, 1.0);
    const auto list = seenFrom({0, 0, 1}, [&](orv::AcadViewportDraw& draw) {
        orv::drawGripPointIcon_GripButton(draw.viewportDraw(), {1, 2, 3}, AcDbGripOperations::kWarmGrip, 5,
                                          colours);
    });
    ASSERT_EQ(list.primitives.size(), 2u);
    expectColour(list.primitives[0], 0, 128, 255);
    expectColour(list.primitives[1], 255, 255, 255);
}

TEST(GripIcons, TraitsArePutBack) {
    const auto list = seenFrom({0, 0, 1}, [](orv::AcadViewportDraw& draw) {
        draw.subEntityTraits().setColor(3);
        orv::drawGripPointIcon_GripButton(draw.viewportDraw(), {1, 2, 3}, AcDbGripOperations::kHotGrip, 5,
                                          orv::getReferenceGeometryGripPointColors());
        draw.line({0, 0, 0}, {1, 0, 0});
    });
    ASSERT_EQ(list.primitives.size(), 3u);
    EXPECT_EQ(list.primitives[2].traits.colour, 3);
    EXPECT_FALSE(list.primitives[2].traits.trueColour.isByColor());
    EXPECT_EQ(list.primitives[2].traits.fill, kAcGiFillNever);
}

TEST(GripIcons, WithoutASizeThereIsNoButton) {
    for (const int size : {0, -5})
        EXPECT_EQ(told(buttonIn(viewFrom({0, 0, 1}), AcDbGripOperations::kWarmGrip, size)), Lines());
}

TEST(GripIcons, StopsWhereTheHostSaysSo) {
    embedded::ViewParameters view = viewFrom({0, 0, 1});
    view.mostPrimitives = 1;
    EXPECT_EQ(buttonIn(view, AcDbGripOperations::kWarmGrip, 5).primitives.size(), 1u);
}

TEST(GripIcons, ButtonIsTheIconOfAGrip) {
    Sketch entity;
    Grips grips;
    orv::GripManager::ScopedCreator creator(entity, grips.array);
    creator.createPointGrip({4, 5, 6}, orv::GripManager::MoveHandler(), L"",
                            boost::bind(&orv::drawGripPointIcon_GripButton, boost::placeholders::_1,
                                        boost::placeholders::_2, boost::placeholders::_3,
                                        boost::placeholders::_4, orv::getReferenceGeometryGripPointColors()));
    ASSERT_EQ(grips.array.length(), 1);
    AcDbGripData* grip = grips.array[0];
    ASSERT_NE(grip->viewportDraw(), nullptr);
    const auto list = seenFrom({0, 0, 1}, [&](orv::AcadViewportDraw& draw) {
        grip->viewportDraw()(grip, &draw.viewportDraw(), AcDbObjectId(), AcDbGripOperations::kHotGrip,
                             nullptr, 10);
    });
    ASSERT_EQ(list.primitives.size(), 2u);
    EXPECT_EQ(told(list.primitives[0]), "viewport polygon (3 4 6) (5 4 6) (5 6 6) (3 6 6)");
    expectColour(list.primitives[0], 255, 0, 0);
}
