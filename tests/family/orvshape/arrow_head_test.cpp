#include "orvshape/arrow_head.h"

#include "curve_fixture.h"
#include "seen.h"

#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

using embedded::PrimitiveKind;
using Lines = std::vector<std::string>;

namespace {

const AcGeVector3d kTop(0, 0, 1);
const AcGeVector3d kFront(0, -1, 0);

Lines headFrom(const AcGeVector3d& view, const AcGeVector3d& direction, bool doubleHead = false,
               double length = 3.0) {
    return told(seenFrom(view, [&](orv::AcadViewportDraw& draw) {
        EXPECT_FALSE(orv::drawArrowHead2D(draw, {1, 2, 3}, direction, length, doubleHead, true));
    }));
}

} // namespace

TEST(ArrowHead, BodyLiesAlongTheDirectionBehindTheTip) {
    EXPECT_EQ(headFrom(kTop, {7, 0, 0}), (Lines{"viewport polygon (1 2 3) (4 2.5 3) (4 1.5 3)"}));
    EXPECT_EQ(headFrom(kTop, {-7, 0, 0}), (Lines{"viewport polygon (1 2 3) (-2 1.5 3) (-2 2.5 3)"}));
    EXPECT_EQ(headFrom(kFront, {0, 0, 7}), (Lines{"viewport polygon (1 2 3) (0.5 2 6) (1.5 2 6)"}));
}

TEST(ArrowHead, DoubleHeadHasASecondOneRightBehind) {
    EXPECT_EQ(headFrom(kTop, {0.1, 0, 0}, true), (Lines{"viewport polygon (1 2 3) (4 2.5 3) (4 1.5 3)",
                                                        "viewport polygon (4 2 3) (7 2.5 3) (7 1.5 3)"}));
}

TEST(ArrowHead, LeaningDirectionIsTakenAsItIsSeenAtFullLength) {
    EXPECT_EQ(headFrom(kTop, {1, 0, 1}), headFrom(kTop, {1, 0, 0}));
    EXPECT_EQ(headFrom(kTop, {1, 0, -20}), headFrom(kTop, {1, 0, 0}));
}

TEST(ArrowHead, DirectionTowardsTheViewerShowsADot) {
    for (const double size : {1.0, -1.0, 1.0e-6})
        EXPECT_EQ(headFrom(kTop, kTop * size), (Lines{"viewport circle (1 2 3) radius 0.5 normal (0 0 1)"}));
    EXPECT_EQ(headFrom(kTop, {0.0005, 0, 1}), (Lines{"viewport circle (1 2 3) radius 0.5 normal (0 0 1)"}));
    EXPECT_EQ(headFrom(kTop, kTop, true), (Lines{"viewport circle (1 2 3) radius 0.5 normal (0 0 1)",
                                                 "viewport circle (1 2 3) radius 1 normal (0 0 1)"}));
}

TEST(ArrowHead, RingAroundADotIsAnOutline) {
    const auto list = seenFrom(kTop, [](orv::AcadViewportDraw& draw) {
        orv::drawArrowHead2D(draw, {1, 2, 3}, kTop, 3.0, true, true);
    });
    ASSERT_EQ(list.primitives.size(), 2u);
    EXPECT_EQ(list.primitives[0].traits.fill, kAcGiFillAlways);
    EXPECT_EQ(list.primitives[1].traits.fill, kAcGiFillNever);
}

TEST(ArrowHead, IsFilledAsAskedAndPutsTheFillBack) {
    for (const bool fill : {true, false})
        for (const AcGiFillType before : {kAcGiFillAlways, kAcGiFillNever}) {
            const auto list = seenFrom(kTop, [&](orv::AcadViewportDraw& draw) {
                draw.subEntityTraits().setFillType(before);
                for (const AcGeVector3d& direction : {AcGeVector3d::kXAxis, AcGeVector3d::kZAxis}) {
                    orv::drawArrowHead2D(draw, {1, 2, 3}, direction, 3.0, true, fill);
                    EXPECT_EQ(draw.subEntityTraits().fillType(), before);
                }
            });
            ASSERT_EQ(list.primitives.size(), 4u);
            for (const std::size_t i : {0u, 1u, 2u})
                EXPECT_EQ(list.primitives[i].traits.fill, fill ? kAcGiFillAlways : kAcGiFillNever) << i;
        }
}

TEST(ArrowHead, WithoutLengthOrDirectionDrawsNothing) {
    EXPECT_EQ(headFrom(kTop, {0, 0, 0}), Lines());
    for (const double length : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(headFrom(kTop, {1, 0, 0}, true, length), Lines()) << length;
}

TEST(ArrowHead, TellsWhenToStopAndDrawsNoMoreThen) {
    embedded::ViewParameters view = viewFrom(kTop);
    view.mostPrimitives = 1;
    for (const AcGeVector3d& direction : {AcGeVector3d::kXAxis, AcGeVector3d::kZAxis}) {
        const auto list = seenIn(view, [&](orv::AcadViewportDraw& draw) {
            EXPECT_TRUE(orv::drawArrowHead2D(draw, {1, 2, 3}, direction, 3.0, true, true));
            EXPECT_TRUE(orv::drawArrowHead2D(draw, {1, 2, 3}, direction, 3.0, false, true));
            EXPECT_EQ(draw.subEntityTraits().fillType(), kAcGiFillNever);
        });
        EXPECT_EQ(list.primitives.size(), 1u);
    }
}

RC_GTEST_PROP(ArrowHeadProperty, LiesFlatBeforeTheViewerWhereverHeIs, ()) {
    const auto number = [] { return *rc::gen::inRange(-1000, 1001) / 1000.0; };
    const AcGeVector3d viewDir(number(), number(), number());
    const AcGeVector3d direction(number(), number(), number());
    const AcGePoint3d tip(10.0 * number(), 10.0 * number(), 10.0 * number());
    RC_PRE(viewDir.length() > 0.1 && direction.length() > 0.1);
    RC_PRE(viewDir.normal().crossProduct(direction.normal()).length() > 0.01);
    const auto list = seenFrom(viewDir, [&](orv::AcadViewportDraw& draw) {
        RC_ASSERT(!orv::drawArrowHead2D(draw, tip, direction, 3.0, false, true));
    });
    RC_ASSERT(list.primitives.size() == 1u);
    const std::vector<AcGePoint3d>& corners = list.primitives[0].points;
    RC_ASSERT(corners.size() == 3u);
    RC_ASSERT(corners[0].distanceTo(tip) < 1.0e-9);
    for (const AcGePoint3d& corner : corners)
        RC_ASSERT(std::fabs((corner - tip).dotProduct(viewDir.normal())) < 1.0e-9);
    const AcGeVector3d axis = corners[1] + (corners[2] - corners[1]) * 0.5 - tip;
    RC_ASSERT(std::fabs(axis.length() - 3.0) < 1.0e-9);
    RC_ASSERT(std::fabs((corners[2] - corners[1]).length() - 1.0) < 1.0e-9);
    // The direction without what leads towards the viewer.
    RC_ASSERT(axis.dotProduct(direction) > 0.0);
    RC_ASSERT(std::fabs(axis.crossProduct(direction).dotProduct(viewDir)) < 1.0e-6);
}
