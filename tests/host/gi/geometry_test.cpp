#include "dbpl.h"
#include "embedded/host_start.h"
#include "gi/plane_arc.h"
#include "sketch.h"

#include <gtest/gtest.h>

#include <cmath>

using Lines = std::vector<std::string>;

namespace {

const double kPi = embedded::kPi;

class DrawnGeometry : public testing::Test {
protected:
    void SetUp() override { embedded::startHost(); }

    Lines world(const std::function<void(AcGiWorldDraw&)>& draw) {
        Sketch sketch;
        sketch.world = [&](AcGiWorldDraw& wd) {
            draw(wd);
            return true;
        };
        m_list = embedded::draw(sketch, m_view);
        EXPECT_TRUE(m_list.failures.empty());
        return told(m_list);
    }

    Lines viewport(const std::function<void(AcGiViewportDraw&)>& draw) {
        Sketch sketch;
        sketch.world = [](AcGiWorldDraw&) { return false; };
        sketch.viewport = draw;
        m_list = embedded::draw(sketch, m_view);
        EXPECT_TRUE(m_list.failures.empty());
        return told(m_list);
    }

    embedded::ViewParameters m_view;
    embedded::DisplayList m_list;
};

const AcGePoint3d kTriangle[] = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}};

} // namespace

TEST_F(DrawnGeometry, EveryPrimitiveIsRecordedAsItIs) {
    EXPECT_EQ(
        world([](AcGiWorldDraw& wd) {
            AcGiWorldGeometry& to = wd.geometry();
            const AcGePoint3d four[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
            const Adesk::Int32 faces[] = {3, 0, 1, 2};
            EXPECT_FALSE(to.polyline(3, kTriangle));
            EXPECT_FALSE(to.polygon(3, kTriangle));
            EXPECT_FALSE(to.circle({1.0, 2.0, 3.0}, 4.0, AcGeVector3d::kXAxis));
            EXPECT_FALSE(to.circularArc({0, 0, 0}, 2.0, AcGeVector3d::kZAxis, AcGeVector3d::kYAxis, 1.5));
            EXPECT_FALSE(to.mesh(2, 2, four));
            EXPECT_FALSE(to.shell(3, kTriangle, 4, faces));
            EXPECT_FALSE(
                to.text({1, 1, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 2.5, 0.5, 0.25, L"%%c%%%"));
            EXPECT_FALSE(to.xline({0, 0, 0}, {1, 1, 1}));
            EXPECT_FALSE(to.ray({0, 0, 0}, {1, 1, 1}));
        }),
        (Lines{"polyline (0 0 0) (1 0 0) (0 1 0)", "polygon (0 0 0) (1 0 0) (0 1 0)",
               "circle (1 2 3) radius 4 normal (1 0 0)",
               "arc (0 0 0) radius 2 normal (0 0 1) from (0 1 0) sweep 1.5",
               "mesh (0 0 0) (1 0 0) (0 1 0) (1 1 0)", "shell (0 0 0) (1 0 0) (0 1 0) 3 0 1 2",
               "text (1 1 0) '\x05%' height 2.5 width 0.5 slant 0.25 along (1 0 0)", "xline (0 0 0) (1 1 1)",
               "ray (0 0 0) (1 1 1)"}));
    EXPECT_EQ(m_list.primitives[6].text, L"\x2205%");
}

TEST_F(DrawnGeometry, ThreePointsMakeACircleOrAnArc) {
    EXPECT_EQ(world([](AcGiWorldDraw& wd) {
                  wd.geometry().circle({1, 0, 0}, {0, 1, 0}, {-1, 0, 0});
                  wd.geometry().circularArc({1, 0, 0}, {0, 1, 0}, {-1, 0, 0});
                  wd.geometry().circularArc({1, 0, 0}, {0, -1, 0}, {-1, 0, 0});
                  wd.geometry().circle({0, 0, 0}, {1, 1, 0}, {2, 2, 0});
                  wd.geometry().circularArc({0, 0, 0}, {1, 1, 0}, {2, 2, 0});
              }),
              (Lines{"circle (0 0 0) radius 1 normal (0 0 1)",
                     "arc (0 0 0) radius 1 normal (0 0 1) from (1 0 0) sweep 3.14159",
                     "arc (0 0 0) radius 1 normal (0 0 -1) from (1 0 0) sweep 3.14159"}));
}

TEST_F(DrawnGeometry, ANegativeSweepRunsClockwiseAndAWholeTurnIsACircle) {
    EXPECT_EQ(world([](AcGiWorldDraw& wd) {
                  wd.geometry().circularArc({0, 0, 0}, 1.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, -1.0);
                  wd.geometry().circularArc({0, 0, 0}, 1.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 9.0);
              }),
              (Lines{"arc (0 0 0) radius 1 normal (0 0 -1) from (1 0 0) sweep 1",
                     "circle (0 0 0) radius 1 normal (0 0 1)"}));
}

TEST_F(DrawnGeometry, WhatMakesNoPictureIsLeftOut) {
    EXPECT_EQ(world([](AcGiWorldDraw& wd) {
                  AcGiWorldGeometry& to = wd.geometry();
                  const AcGeVector3d none, z = AcGeVector3d::kZAxis, x = AcGeVector3d::kXAxis;
                  const Adesk::Int32 wild[] = {3, 0, 1, 9};
                  const Adesk::Int32 cut[] = {3, 0, 1};
                  const Adesk::Int32 below[] = {3, 0, 1, -1};
                  const Adesk::Int32 empty[] = {0};
                  to.polyline(1, kTriangle);
                  to.polyline(3, nullptr);
                  to.polygon(0, kTriangle);
                  to.circle({0, 0, 0}, 0.0, z);
                  to.circle({0, 0, 0}, 1.0, none);
                  to.circularArc({0, 0, 0}, 1.0, z, z, 1.0);
                  to.circularArc({0, 0, 0}, 1.0, z, x, 0.0);
                  to.circularArc({0, 0, 0}, std::nan(""), z, x, 1.0);
                  to.mesh(1, 3, kTriangle);
                  to.mesh(2, 2, nullptr);
                  to.shell(3, kTriangle, 4, wild);
                  to.shell(3, kTriangle, 3, cut);
                  to.shell(3, kTriangle, 4, below);
                  to.shell(3, kTriangle, 1, empty);
                  to.shell(3, kTriangle, 0, wild);
                  to.text({0, 0, 0}, z, x, 0.0, 1.0, 0.0, L"x");
                  to.text({0, 0, 0}, z, x, 1.0, 1.0, 0.0, L"");
                  to.text({0, 0, 0}, z, x, 1.0, 1.0, 0.0, nullptr);
                  to.text({0, 0, 0}, x, x, 1.0, 1.0, 0.0, L"x");
                  to.xline({1, 1, 1}, {1, 1, 1});
                  to.ray({1, 1, 1}, {1, 1, 1});
                  to.draw(nullptr);
              }),
              Lines());
}

TEST_F(DrawnGeometry, AShellsHoleHasANegativeCount) {
    const Adesk::Int32 faces[] = {3, 0, 1, 2, -3, 0, 1, 2};
    EXPECT_EQ(world([&](AcGiWorldDraw& wd) { wd.geometry().shell(3, kTriangle, 8, faces); }),
              (Lines{"shell (0 0 0) (1 0 0) (0 1 0) 3 0 1 2 -3 0 1 2"}));
}

TEST_F(DrawnGeometry, PushedTransformsApplyInnermostFirst) {
    EXPECT_EQ(world([](AcGiWorldDraw& wd) {
                  AcGiWorldGeometry& to = wd.geometry();
                  EXPECT_FALSE(to.popModelTransform());
                  EXPECT_TRUE(to.pushModelTransform(AcGeMatrix3d::translation({10, 0, 0})));
                  EXPECT_TRUE(to.pushModelTransform(AcGeMatrix3d::scaling(2.0)));
                  to.polyline(2, kTriangle);
                  AcGeMatrix3d matrix;
                  to.getModelToWorldTransform(matrix);
                  EXPECT_NEAR((matrix * AcGePoint3d(1, 0, 0)).x, 12.0, 1e-12);
                  to.getWorldToModelTransform(matrix);
                  EXPECT_NEAR((matrix * AcGePoint3d(12, 0, 0)).x, 1.0, 1e-12);
                  const AcGePoint3d worldPoints[] = {{0, 0, 0}, {1, 0, 0}};
                  to.worldLine(worldPoints);
                  EXPECT_TRUE(to.popModelTransform());
                  to.polyline(2, kTriangle);
                  EXPECT_TRUE(to.popModelTransform());
                  EXPECT_TRUE(to.pushModelTransform(AcGeVector3d::kXAxis));
                  to.circle({0, 0, 5}, 1.0, AcGeVector3d::kZAxis);
                  EXPECT_FALSE(to.pushModelTransform(AcGeVector3d()));
              }),
              (Lines{"polyline (10 0 0) (12 0 0)", "polyline (0 0 0) (1 0 0)", "polyline (10 0 0) (11 0 0)",
                     "circle (5 0 0) radius 1 normal (1 0 0)"}));
}

TEST_F(DrawnGeometry, ACircleThatIsSquashedBecomesAChainOfChords) {
    m_view.height = 1.0;
    AcGeMatrix3d flat;
    flat(1, 1) = 0.5;
    world([&](AcGiWorldDraw& wd) {
        wd.geometry().pushModelTransform(flat);
        wd.geometry().circle({0, 0, 0}, 2.0, AcGeVector3d::kZAxis);
        wd.geometry().circularArc({0, 0, 0}, 2.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, kPi);
        wd.geometry().circularArc({0, 0, 0}, 2.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, kPi,
                                  kAcGiArcSector);
    });
    ASSERT_EQ(m_list.primitives.size(), 3u);
    EXPECT_EQ(m_list.primitives[0].kind, embedded::PrimitiveKind::kPolygon);
    EXPECT_EQ(m_list.primitives[1].kind, embedded::PrimitiveKind::kPolyline);
    EXPECT_EQ(m_list.primitives[2].kind, embedded::PrimitiveKind::kPolygon);
    for (const AcGePoint3d& point : m_list.primitives[0].points)
        EXPECT_NEAR(point.x * point.x / 4.0 + point.y * point.y, 1.0, 1.0e-12);
    EXPECT_GT(m_list.primitives[0].points.size(), 50u);
    // Squashed along its normal it stays what it is.
    AcGeMatrix3d low;
    low(2, 2) = 0.5;
    EXPECT_EQ(world([&](AcGiWorldDraw& wd) {
                  wd.geometry().pushModelTransform(low);
                  wd.geometry().circle({0, 0, 2}, 2.0, AcGeVector3d::kZAxis);
              }),
              (Lines{"circle (0 0 1) radius 2 normal (0 0 1)"}));
}

TEST_F(DrawnGeometry, ATextTakesWidthHeightAndSlantFromTheTransform) {
    AcGeMatrix3d matrix;
    matrix(0, 0) = 3.0;
    matrix(1, 1) = 2.0;
    EXPECT_EQ(
        world([&](AcGiWorldDraw& wd) {
            wd.geometry().pushModelTransform(matrix);
            wd.geometry().text({1, 1, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 1.0, 1.0, 0.0, L"x");
            wd.geometry().text({1, 1, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kYAxis, 1.0, 1.0, 0.0, L"x");
        }),
        (Lines{"text (3 2 0) 'x' height 2 width 1.5 slant 0 along (1 0 0)",
               "text (3 2 0) 'x' height 3 width 0.666667 slant 0 along (0 1 0)"}));
    AcGeMatrix3d shear;
    shear(0, 1) = 1.0;
    EXPECT_EQ(
        world([&](AcGiWorldDraw& wd) {
            wd.geometry().pushModelTransform(shear);
            wd.geometry().text({0, 0, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 1.0, 1.0, 0.0, L"x");
        }),
        (Lines{"text (0 0 0) 'x' height 1 width 1 slant 0.785398 along (1 0 0)"}));
}

TEST_F(DrawnGeometry, TheStyledTextTakesSomeCharactersRawOrNot) {
    AcGiTextStyle style(L"arial.ttf", L"", 2.0, 0.8, 0.1, 1.0, true, false, false, false, true);
    world([&](AcGiWorldDraw& wd) {
        for (const bool raw : {true, false})
            wd.geometry().text({0, 0, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, L"%%dxyz", 4, raw,
                               style);
    });
    ASSERT_EQ(m_list.primitives.size(), 2u);
    EXPECT_EQ(m_list.primitives[0].text, L"%%dx");
    EXPECT_EQ(m_list.primitives[1].text, L"\x00B0x");
    EXPECT_NEAR(m_list.primitives[0].height, 2.0, 1e-12);
    EXPECT_NEAR(m_list.primitives[0].widthFactor, 0.8, 1e-12);
    EXPECT_NEAR(m_list.primitives[0].oblique, 0.1, 1e-12);
    EXPECT_STREQ(m_list.primitives[0].style.fileName(), L"arial.ttf");
    EXPECT_TRUE(m_list.primitives[0].style.isBackward());
    EXPECT_TRUE(m_list.primitives[0].style.isUnderlined());
    EXPECT_FALSE(m_list.primitives[0].style.isOverlined());
}

TEST_F(DrawnGeometry, ATextStyleMeasuresWhatIsRead) {
    AcGiTextStyle style;
    style.setTextSize(2.0);
    EXPECT_EQ(style.extents(L"", true, -1, false).x, 0.0);
    EXPECT_EQ(style.extents(nullptr, true, -1, false).y, 0.0);
    EXPECT_EQ(style.extents(L"ab", true, -1, false).y, 2.0);
    EXPECT_DOUBLE_EQ(style.extents(L"abc", true, 2, false).x, style.extents(L"ab", true, -1, true).x);
    EXPECT_LT(style.extents(L"%%d", true, -1, false).x, style.extents(L"%%d", true, -1, true).x);
}

TEST_F(DrawnGeometry, ABaseMarkerNumbersThePolylinesSegments) {
    world([](AcGiWorldDraw& wd) {
        wd.subEntityTraits().setSelectionMarker(99);
        wd.geometry().polyline(3, kTriangle, nullptr, 7);
        wd.geometry().polyline(2, kTriangle);
    });
    ASSERT_EQ(m_list.primitives.size(), 3u);
    EXPECT_EQ(m_list.primitives[0].traits.marker, 7);
    EXPECT_EQ(m_list.primitives[1].traits.marker, 8);
    EXPECT_EQ(m_list.primitives[2].traits.marker, 99);
}

TEST_F(DrawnGeometry, APlineDrawsTheSegmentsThatAreAskedFor) {
    AcDbPolyline line;
    line.addVertexAt(0, {0.0, 0.0});
    line.addVertexAt(1, {1.0, 0.0}, 1.0);
    line.addVertexAt(2, {1.0, 2.0});
    line.addVertexAt(3, {0.0, 2.0});
    const auto drawn = [&](Adesk::UInt32 from, Adesk::UInt32 count) {
        return world([&](AcGiWorldDraw& wd) { wd.geometry().pline(line, from, count); });
    };
    const std::string arc = "arc (1 1 0) radius 1 normal (0 0 1) from (0 -1 0) sweep 3.14159";
    EXPECT_EQ(drawn(0, 0), (Lines{"polyline (0 0 0) (1 0 0)", arc, "polyline (1 2 0) (0 2 0)"}));
    EXPECT_EQ(drawn(1, 1), (Lines{arc}));
    EXPECT_EQ(drawn(2, 9), (Lines{"polyline (1 2 0) (0 2 0)"}));
    EXPECT_EQ(drawn(3, 0), Lines());
    EXPECT_EQ(drawn(77, 4000000000u), Lines());
}

TEST_F(DrawnGeometry, EyeAndDisplayCoordinatesAreTakenToTheWorld) {
    m_view.target.set(5.0, 0.0, 0.0);
    m_view.direction.set(0.0, -1.0, 0.0);
    const AcGePoint3d up[] = {{0, 0, 0}, {1, 2, 0}};
    EXPECT_EQ(viewport([&](AcGiViewportDraw& vd) {
                  vd.geometry().pushModelTransform(AcGeMatrix3d::scaling(9.0));
                  vd.geometry().polylineEye(2, up);
                  vd.geometry().polygonEye(2, up);
                  vd.geometry().polylineDc(2, up);
                  vd.geometry().polygonDc(2, up);
                  vd.geometry().polylineEye(1, up);
                  vd.geometry().polygonDc(2, nullptr);
              }),
              (Lines{"viewport polyline (5 0 0) (6 0 2)", "viewport polygon (5 0 0) (6 0 2)",
                     "viewport polyline (5 0 0) (6 0 2)", "viewport polygon (5 0 0) (6 0 2)"}));
}

TEST_F(DrawnGeometry, ExtentsHoldArcsTextsAndThickness) {
    world([](AcGiWorldDraw& wd) {
        wd.geometry().circularArc({0, 0, 0}, 1.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, kPi);
        wd.geometry().xline({0, 0, 0}, {1, 0, 0});
        wd.subEntityTraits().setThickness(3.0);
        wd.geometry().circle({0, 5, 0}, 1.0, AcGeVector3d::kZAxis);
    });
    const AcDbExtents box = m_list.extents();
    EXPECT_NEAR(box.minPoint().x, -1.0, 1e-12);
    EXPECT_NEAR(box.minPoint().y, 0.0, 1e-12);
    EXPECT_NEAR(box.maxPoint().y, 6.0, 1e-12);
    EXPECT_NEAR(box.maxPoint().z, 3.0, 1e-12);
    EXPECT_TRUE(m_list.primitives[1].extents().isEmpty());
}
