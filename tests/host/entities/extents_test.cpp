#include "entity_fixture.h"

TEST(Extents, AFreshBoxHoldsNothing) {
    AcDbExtents box;
    EXPECT_TRUE(box.isEmpty());
    EXPECT_GT(box.minPoint().x, box.maxPoint().x);
    box.expandBy({1.0, 1.0, 1.0});
    box.transformBy(AcGeMatrix3d::scaling(2.0));
    box.addExt(AcDbExtents());
    EXPECT_TRUE(box.isEmpty());
}

TEST(Extents, SetRefusesPointsInTheWrongOrderAndLeavesTheBox) {
    AcDbExtents box({0.0, 0.0, 0.0}, {1.0, 2.0, 3.0});
    EXPECT_EQ(box.set({0.0, 5.0, 0.0}, {1.0, 4.0, 1.0}), Acad::eInvalidExtents);
    EXPECT_EQ(box.set({std::nan(""), 0.0, 0.0}, {1.0, 4.0, 1.0}), Acad::eInvalidExtents);
    expectBox(box, {0.0, 0.0, 0.0}, {1.0, 2.0, 3.0});
    EXPECT_EQ(box.set({1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}), Acad::eOk);
    EXPECT_FALSE(box.isEmpty());
}

TEST(Extents, GrowsByPointsAndBoxes) {
    AcDbExtents box;
    box.addPoint({1.0, -1.0, 2.0});
    expectBox(box, {1.0, -1.0, 2.0}, {1.0, -1.0, 2.0});
    box.addPoint({0.0, 5.0, 2.0});
    expectBox(box, {0.0, -1.0, 2.0}, {1.0, 5.0, 2.0});
    box.addExt(AcDbExtents({-3.0, 0.0, 0.0}, {0.0, 0.0, 9.0}));
    expectBox(box, {-3.0, -1.0, 0.0}, {1.0, 5.0, 9.0});
}

TEST(Extents, ExpandingHoldsTheBoxAndTheBoxMoved) {
    AcDbExtents box({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
    box.expandBy({-2.0, 3.0, 0.0});
    expectBox(box, {-2.0, 0.0, 0.0}, {1.0, 4.0, 1.0});
}

TEST(Extents, TransformingTakesAllEightCorners) {
    AcDbExtents box({-1.0, -1.0, 0.0}, {1.0, 1.0, 0.0});
    box.transformBy(AcGeMatrix3d::rotation(kTestPi / 4.0, AcGeVector3d::kZAxis));
    const double half = std::sqrt(2.0);
    expectBox(box, {-half, -half, 0.0}, {half, half, 0.0});
}
