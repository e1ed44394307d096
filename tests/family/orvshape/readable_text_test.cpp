#include "orvshape/readable_text.h"

#include "curve_fixture.h"
#include "geplane.h"
#include "seen.h"

#include <rapidcheck/gtest.h>

#include <cmath>

using embedded::Primitive;

namespace {

const AcGeVector3d kTop(0, 0, 1);
const AcGeVector3d kFront(0, -1, 0);
const AcGeVector3d kBelow(0, 0, -1);
const AcGeVector3d kIso(1, -1, 1);
const AcGePoint3d kPosition(10, 20, 30);

// A line of text as it is seen: the ends of its middle line.
struct SeenText {
    Primitive drawn;
    AcGePoint3d begin;
    AcGePoint3d end;
    AcGeVector3d viewDir, viewRight, viewUp;
};

// With an arrow whose text lies that way from its tail.
SeenText textFrom(const AcGeVector3d& view, const AcGeVector3d& away) {
    SeenText seen;
    double width = 0.0;
    const auto list = seenFrom(view, [&](orv::AcadViewportDraw& draw) {
        draw.textSize(2.0);
        width = draw.textWidth(L"q: 12.5");
        seen.viewDir = draw.viewDir();
        seen.viewRight = draw.viewRight();
        seen.viewUp = draw.viewUp();
        EXPECT_FALSE(orv::drawOrientedReadableText(draw, kPosition, -away, L"q: 12.5"));
    });
    EXPECT_EQ(list.primitives.size(), 1u);
    if (list.primitives.empty())
        return seen;
    seen.drawn = list.primitives[0];
    EXPECT_EQ(seen.drawn.text, L"q: 12.5");
    EXPECT_NEAR(seen.drawn.height, 2.0, 1.0e-9);
    const AcGeVector3d up = seen.drawn.normal.crossProduct(seen.drawn.direction);
    seen.begin = seen.drawn.points.at(0) + up * 1.0;
    seen.end = seen.begin + seen.drawn.direction * width;
    return seen;
}

void expectReadable(const SeenText& seen) {
    expectNear(seen.drawn.normal, seen.viewDir);
    const double toRight = seen.drawn.direction.dotProduct(seen.viewRight);
    EXPECT_GE(toRight, -1.0e-6);
    if (toRight < 1.0e-6) {
        EXPECT_GT(seen.drawn.direction.dotProduct(seen.viewUp), 0.0);
    }
}

} // namespace

TEST(ReadableText, BeginsBesideThePointAndGoesAway) {
    const SeenText seen = textFrom(kTop, {5, 0, 0});
    expectNear(seen.begin, {11, 20, 30});
    expectNear(seen.drawn.direction, {1, 0, 0});
    expectReadable(seen);
}

TEST(ReadableText, ToTheLeftItEndsAtThePointInstead) {
    const SeenText seen = textFrom(kTop, {-5, 0, 0});
    expectNear(seen.end, {9, 20, 30});
    expectNear(seen.drawn.direction, {1, 0, 0});
    expectReadable(seen);
}

TEST(ReadableText, UprightItReadsUpwardsBothWays) {
    const SeenText up = textFrom(kTop, {0, 5, 0});
    expectNear(up.begin, {10, 21, 30});
    expectNear(up.drawn.direction, {0, 1, 0});
    const SeenText down = textFrom(kTop, {0, -5, 0});
    expectNear(down.end, {10, 19, 30});
    expectNear(down.drawn.direction, {0, 1, 0});
    // A rounding beside of upright is upright.
    expectNear(textFrom(kTop, {-1.0e-9, 5, 0}).drawn.direction, {0, 1, 0}, 1.0e-6);
    expectNear(textFrom(kTop, {1.0e-9, -5, 0}).drawn.direction, {0, 1, 0}, 1.0e-6);
}

TEST(ReadableText, LeaningToTheLeftIsTurned) {
    const SeenText seen = textFrom(kTop, {-1, 1, 0});
    expectNear(seen.drawn.direction, AcGeVector3d(1, -1, 0).normal());
    expectNear(seen.end, kPosition + AcGeVector3d(-1, 1, 0).normal());
    expectReadable(seen);
}

TEST(ReadableText, FromBelowTheOtherSideIsTheLeft) {
    const SeenText seen = textFrom(kBelow, {5, 0, 0});
    expectNear(seen.viewRight, {-1, 0, 0});
    expectNear(seen.drawn.direction, {-1, 0, 0});
    expectNear(seen.end, {11, 20, 30});
    expectReadable(seen);
}

TEST(ReadableText, IsNeverMirroredNorUpsideDown) {
    for (const AcGeVector3d& view : {kTop, kFront, kIso, kBelow, -kFront, -kIso})
        for (int step = 0; step < 24; ++step) {
            const AcGeVector3d flat(std::cos(step * kPi / 12), std::sin(step * kPi / 12), 0.0);
            for (const AcGeVector3d& direction :
                 {flat, AcGeVector3d(flat.x, 0, flat.y), AcGeVector3d(0, flat.x, flat.y)})
                expectReadable(textFrom(view, direction));
        }
}

TEST(ReadableText, DirectionTowardsTheViewerPutsItInTheMiddle) {
    const std::pair<AcGeVector3d, AcGeVector3d> rows[] = {{kTop, kTop},        {kTop, -kTop},
                                                          {kFront, {0, 7, 0}}, {kIso, kIso},
                                                          {kTop, {0, 0, 0}},   {kTop, {0.0005, 0, 1}}};
    for (const auto& [view, direction] : rows) {
        const SeenText seen = textFrom(view, direction);
        expectNear(seen.drawn.direction, seen.viewRight);
        expectNear(seen.begin + (seen.end - seen.begin) * 0.5, kPosition);
        expectReadable(seen);
    }
}

TEST(ReadableText, AttachmentIsPutBack) {
    seenFrom(kTop, [](orv::AcadViewportDraw& draw) {
        draw.textAttachment(3);
        for (const AcGeVector3d& direction :
             {AcGeVector3d(1, 0, 0), AcGeVector3d(-1, 0, 0), AcGeVector3d(0, 0, 1)}) {
            orv::drawOrientedReadableText(draw, {0, 0, 0}, direction, L"a");
            EXPECT_EQ(draw.textAttachment(), 3);
        }
    });
}

TEST(ReadableText, EmptyTextDrawsNothing) {
    const auto list = seenFrom(kTop, [](orv::AcadViewportDraw& draw) {
        EXPECT_FALSE(orv::drawOrientedReadableText(draw, {0, 0, 0}, {1, 0, 0}, L""));
        EXPECT_FALSE(orv::drawOrientedReadableText(draw, {0, 0, 0}, {0, 0, 1}, L""));
    });
    EXPECT_TRUE(list.primitives.empty());
}

TEST(ReadableText, TellsWhenToStop) {
    embedded::ViewParameters view = viewFrom(kTop);
    view.mostPrimitives = 1;
    seenIn(view, [](orv::AcadViewportDraw& draw) {
        orv::drawOrientedReadableText(draw, {0, 0, 0}, {1, 0, 0}, L"a");
        EXPECT_TRUE(orv::drawOrientedReadableText(draw, {0, 0, 0}, {1, 0, 0}, L"a"));
        EXPECT_TRUE(orv::drawOrientedReadableText(draw, {0, 0, 0}, {0, 0, 1}, L"a"));
    });
}

// A block's reference that mirrors what is inside turns right and left about.
TEST(ReadableText, IsReadableInsideOfAMirroredBlock) {
    Sketch sketch;
    sketch.world = [](AcGiWorldDraw&) { return false; };
    sketch.viewport = [](AcGiViewportDraw& viewportDraw) {
        viewportDraw.geometry().pushModelTransform(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane));
        orv::AcadViewportDraw draw(viewportDraw);
        for (const AcGeVector3d& direction :
             {AcGeVector3d(1, 0, 0), AcGeVector3d(-1, 0, 0), AcGeVector3d(0, -1, 0), AcGeVector3d(0, 0, 1)})
            orv::drawOrientedReadableText(draw, {5, 0, 0}, -direction, L"a");
        viewportDraw.geometry().popModelTransform();
    };
    const auto list = embedded::draw(sketch, viewFrom(kTop));
    ASSERT_EQ(list.primitives.size(), 4u);
    for (const Primitive& text : list.primitives)
        expectNear(text.normal, kTop);
    const AcGeVector3d expected[] = {{1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 0, 0}};
    for (std::size_t i = 0; i < 4; ++i)
        expectNear(list.primitives[i].direction, expected[i]);
    // Away from the point in the world, too: there the first one runs to the left.
    EXPECT_LT(list.primitives[0].points.at(0).x, -5.5);
    EXPECT_NEAR(list.primitives[1].points.at(0).x, -4.5, 1.0e-9);
}

RC_GTEST_PROP(ReadableTextProperty, LiesBehindThePointAsTheDirectionIsSeen, ()) {
    const auto number = [] { return *rc::gen::inRange(-1000, 1001) / 1000.0; };
    const AcGeVector3d view(number(), number(), number());
    const AcGeVector3d direction(number(), number(), number());
    RC_PRE(view.length() > 0.1 && direction.length() > 0.1);
    RC_PRE(view.normal().crossProduct(direction.normal()).length() > 0.01);
    const SeenText seen = textFrom(view, direction);
    const AcGeVector3d away = direction.orthoProject(view.normal()).normal();
    RC_ASSERT(std::fabs(std::fabs(seen.drawn.direction.dotProduct(away)) - 1.0) < 1.0e-9);
    RC_ASSERT(seen.drawn.normal.dotProduct(view.normal()) > 1.0 - 1.0e-9);
    RC_ASSERT(seen.drawn.direction.dotProduct(seen.viewRight) > -1.0e-5);
    const bool isTurned = seen.drawn.direction.dotProduct(away) < 0.0;
    RC_ASSERT((isTurned ? seen.end : seen.begin).distanceTo(kPosition + away) < 1.0e-6);
}
