// Blocks in blocks: a few of them are more than can be drawn one by one.

#include "embedded/display_list.h"
#include "entity_fixture.h"

#include <cmath>

namespace {

constexpr int kLevels = 9;
constexpr int kReferences = 10;

class NestedBlocks : public EntityFixture {
protected:
    // The outermost of nine blocks: the innermost holds a line from (0, 0) to (1, 0), each other one ten
    // references to the one before, at 0 to 9 times its width. Each is turned by its number times `turn`.
    AcDbObjectId addNested(double turn) {
        AcDbObjectId block = addBlock(L"LEVEL0");
        add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}), block);
        double width = 1.0;
        for (int level = 1; level <= kLevels; ++level) {
            const AcDbObjectId next = addBlock((L"LEVEL" + std::to_wstring(level)).c_str());
            for (int i = 0; i < kReferences; ++i) {
                auto* reference = new AcDbBlockReference({i * width, 0.0, 0.0}, block);
                reference->setRotation(turn * i);
                add(reference, next);
            }
            block = next;
            width *= kReferences;
        }
        return block;
    }
    // A block that holds a line and itself twice.
    AcDbObjectId addSnake() {
        const AcDbObjectId block = addBlock(L"SNAKE");
        add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}), block);
        add(new AcDbBlockReference({1.0, 0.0, 0.0}, block), block);
        add(new AcDbBlockReference({0.0, 1.0, 0.0}, block), block);
        return block;
    }
};

} // namespace

TEST_F(NestedBlocks, ABillionLinesHaveTheirExactExtents) {
    AcDbBlockReference reference({5.0, 7.0, 0.0}, addNested(0.0));
    expectBox(extentsOf(reference), {5.0, 7.0, 0.0}, {1.0e9 + 5.0, 7.0, 0.0}, 1.0e-6);
    // Turned, the same walk has other numbers, and a line's box is no turned box.
    reference.setPosition({0.0, 0.0, 0.0});
    reference.setRotation(kTestPi / 4.0);
    const double side = 1.0e9 / std::sqrt(2.0);
    expectBox(extentsOf(reference), {0.0, 0.0, 0.0}, {side, side, 0.0}, 1.0e-5);
}

TEST_F(NestedBlocks, ABillionLinesEachTurnedAnotherWayHaveABoxThatHoldsThem) {
    const AcDbBlockReference reference({0.0, 0.0, 0.0}, addNested(0.123));
    const AcDbExtents box = extentsOf(reference);
    // The last reference of each level, all the way in: where the innermost line begins and ends.
    double angle = 0.0;
    AcGePoint3d at;
    for (double width = std::pow(10.0, kLevels - 1); width >= 1.0; width /= 10.0) {
        at += AcGeVector3d(std::cos(angle), std::sin(angle), 0.0) * (9.0 * width);
        angle += 0.123 * 9.0;
    }
    AcDbExtents known = box;
    known.addPoint(at);
    known.addPoint(at + AcGeVector3d(std::cos(angle), std::sin(angle), 0.0));
    known.addPoint({1.0, 0.0, 0.0});
    expectBox(known, box.minPoint(), box.maxPoint(), 1.0e-3);
    // Rough, but no more than the circles about the levels leave room for.
    EXPECT_LT(box.maxPoint().distanceTo(box.minPoint()), 1.0e10);
}

TEST_F(NestedBlocks, ABlockThatHoldsItselfTwiceHasExtents) {
    const AcDbBlockReference reference({0.0, 0.0, 0.0}, addSnake());
    const AcDbExtents box = extentsOf(reference);
    expectNear(box.minPoint(), {0.0, 0.0, 0.0});
    EXPECT_GE(box.maxPoint().x, 30.0);
    EXPECT_GE(box.maxPoint().y, 30.0);
}

TEST_F(NestedBlocks, AnArrayOfArraysHasItsExactExtents) {
    const AcDbObjectId inner = addBlock(L"INNER");
    add(new AcDbCircle({0.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 0.5), inner);
    const AcDbObjectId outer = addBlock(L"OUTER");
    add(new AcDbMInsertBlock({0.0, 0.0, 0.0}, inner, 200, 300, 1.0, 1.0), outer);
    const AcDbMInsertBlock array({10.0, 0.0, 0.0}, outer, 100, 100, 1000.0, 1000.0);
    expectBox(extentsOf(array), {9.5, -0.5, 0.0}, {10.0 + 99199.5, 99299.5, 0.0}, 1.0e-6);
}

TEST_F(NestedBlocks, TheExtentsOfOneBlockInTwoPosturesAreThoseOfBoth) {
    const AcDbObjectId inner = addBlock(L"INNER");
    add(new AcDbLine({0.0, 0.0, 0.0}, {2.0, 1.0, 0.0}), inner);
    const AcDbObjectId outer = addBlock(L"OUTER");
    add(new AcDbBlockReference({0.0, 0.0, 0.0}, inner), outer);
    auto* turned = new AcDbBlockReference({0.0, 0.0, 0.0}, inner);
    turned->setRotation(kTestPi / 2.0);
    add(turned, outer);
    auto* large = new AcDbBlockReference({0.0, 0.0, 0.0}, inner);
    large->setScaleFactors({3.0, 1.0, 1.0});
    add(large, outer);
    const AcDbBlockReference reference({0.0, 0.0, 0.0}, outer);
    expectBox(extentsOf(reference), {-1.0, 0.0, 0.0}, {6.0, 2.0, 0.0});
}

TEST_F(NestedBlocks, ADisplayListEndsAtTheMostNestedDrawables) {
    EXPECT_NE(embedded::ViewParameters().mostNested, 0u);
    add(new AcDbBlockReference({0.0, 0.0, 0.0}, addNested(0.0)));
    embedded::ViewParameters view;
    view.mostNested = 5000;
    const embedded::DisplayList list = embedded::draw(*m_database, view);
    EXPECT_TRUE(list.isCut);
    EXPECT_GT(list.primitives.size(), 2000u);
    EXPECT_LE(list.primitives.size(), 5000u);
    EXPECT_TRUE(list.failures.empty());
}

TEST_F(NestedBlocks, ADisplayListOfABlockThatHoldsItselfTwiceEnds) {
    add(new AcDbBlockReference({0.0, 0.0, 0.0}, addSnake()));
    embedded::ViewParameters view;
    view.mostNested = 5000;
    const embedded::DisplayList list = embedded::draw(*m_database, view);
    EXPECT_TRUE(list.isCut);
    EXPECT_LE(list.primitives.size() + list.failures.size(), 5000u);
}

TEST_F(NestedBlocks, WhatStandsInModelSpaceItselfIsNotCounted) {
    for (int i = 0; i < 5; ++i)
        add(new AcDbLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}));
    embedded::ViewParameters view;
    view.mostNested = 1;
    const embedded::DisplayList list = embedded::draw(*m_database, view);
    EXPECT_FALSE(list.isCut);
    EXPECT_EQ(list.primitives.size(), 5u);
}
