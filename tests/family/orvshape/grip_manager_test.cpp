#include "orvshape/grip_manager.h"

#include "curve_fixture.h"
#include "embedded/display_list.h"
#include "host/gi/sketch.h"

using orv::GripManager;

namespace {

AcDbVoidPtrArray row(const std::vector<void*>& pointers) {
    AcDbVoidPtrArray array;
    for (void* pointer : pointers)
        array.append(pointer);
    return array;
}

struct Move {
    AcDbEntity* entity;
    AcGeVector3d offset;
    int which;
};

class GripManagerTest : public CurveDrawing {
protected:
    GripManager::MoveHandler noting(int which) {
        return [this, which](AcDbEntity& entity, const AcGeVector3d& offset) {
            m_moves.push_back({&entity, offset, which});
        };
    }
    // One point grip for each number.
    void make(const AcDbEntity& entity, Grips& grips, const std::vector<int>& numbers) {
        GripManager::ScopedCreator creator(entity, grips.array);
        for (const int number : numbers)
            creator.createPointGrip({1.0 * number, 0, 0}, noting(number));
    }
    std::vector<int> moved() const {
        std::vector<int> numbers;
        for (const Move& move : m_moves)
            numbers.push_back(move.which);
        return numbers;
    }
    static bool isMine(const AcDbDatabase* database, void* pointer) {
        AcDbVoidPtrArray mine, others;
        GripManager::filterMyAppData(database, row({pointer}), mine, others);
        EXPECT_EQ(mine.length() + others.length(), 1);
        return mine.length() == 1;
    }

    std::vector<Move> m_moves;
};

} // namespace

TEST_F(GripManagerTest, MoveCallsTheHandlersOfTheHeldGripsInOrder) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    Grips grips;
    make(line, grips, {1, 2, 3});
    ASSERT_EQ(grips.array.length(), 3);
    expectNear(grips.array[1]->gripPoint(), {2, 0, 0});
    GripManager::onMove(line, grips.held({2, 0}), {5, 6, 7});
    EXPECT_EQ(moved(), (std::vector<int>{3, 1}));
    EXPECT_EQ(m_moves[0].entity, &line);
    expectNear(m_moves[0].offset, {5, 6, 7});
}

TEST_F(GripManagerTest, SplitsItsOwnFromTheRest) {
    AcDbDatabase other(true);
    AcDbLine* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    const AcDbObjectId id = add(line);
    AcDbLine* opened = open<AcDbLine>(id);
    Grips grips;
    make(*opened, grips, {1, 2});
    opened->close();
    int foreign = 0;
    const AcDbVoidPtrArray all = row({grips.dataOf(1), &foreign, nullptr, grips.dataOf(0)});
    AcDbVoidPtrArray mine = row({&foreign}), others = row({&foreign});
    GripManager::filterMyAppData(m_database.get(), all, mine, others);
    EXPECT_EQ(mine, row({grips.dataOf(1), grips.dataOf(0)}));
    EXPECT_EQ(others, row({&foreign, nullptr}));
    // Not of that drawing.
    GripManager::filterMyAppData(&other, all, mine, others);
    EXPECT_TRUE(mine.isEmpty());
    EXPECT_EQ(others, all);
    // A copy that is dragged stands in no drawing.
    GripManager::filterMyAppData(nullptr, all, mine, others);
    EXPECT_EQ(mine.length(), 2);
}

TEST_F(GripManagerTest, GripsMadeAnewEndTheOldOnes) {
    AcDbLine line({0, 0, 0}, {1, 0, 0}), second({0, 0, 0}, {1, 0, 0});
    Grips old, ofSecond;
    make(line, old, {1});
    make(second, ofSecond, {2});
    Grips fresh;
    make(line, fresh, {3});
    EXPECT_FALSE(isMine(nullptr, old.dataOf(0)));
    EXPECT_TRUE(isMine(nullptr, fresh.dataOf(0)));
    EXPECT_TRUE(isMine(nullptr, ofSecond.dataOf(0)));
    GripManager::onMove(line, old.held({0}), {1, 0, 0});
    EXPECT_TRUE(m_moves.empty());
}

TEST_F(GripManagerTest, CreatorsOnOneArrayAddUp) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    Grips grips;
    {
        GripManager::ScopedCreator outer(line, grips.array);
        outer.createPointGrip({0, 0, 0}, noting(1));
        make(line, grips, {2});
        outer.createPointGrip({0, 0, 0}, noting(3));
    }
    make(line, grips, {4});
    GripManager::onMove(line, grips.held({0, 1, 2, 3}), {1, 0, 0});
    EXPECT_EQ(moved(), (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(GripManagerTest, EndOfTheEntityEndsItsData) {
    Grips grips;
    {
        AcDbLine line({0, 0, 0}, {1, 0, 0});
        make(line, grips, {1});
        EXPECT_TRUE(isMine(nullptr, grips.dataOf(0)));
    }
    EXPECT_FALSE(isMine(nullptr, grips.dataOf(0)));
}

TEST_F(GripManagerTest, EndOfTheDrawingEndsAllDataOfIt) {
    Grips grips;
    AcDbLine* line = open<AcDbLine>(add(new AcDbLine({0, 0, 0}, {1, 0, 0})));
    make(*line, grips, {1, 2});
    line->close();
    EXPECT_TRUE(isMine(m_database.get(), grips.dataOf(0)));
    m_database.reset();
    EXPECT_FALSE(isMine(nullptr, grips.dataOf(0)));
    EXPECT_FALSE(isMine(nullptr, grips.dataOf(1)));
    AcDbLine other({0, 0, 0}, {1, 0, 0});
    GripManager::onMove(other, grips.held({0, 1}), {1, 0, 0});
    EXPECT_TRUE(m_moves.empty());
}

TEST_F(GripManagerTest, HandlerMayHaveTheGripsMadeAnew) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    Grips grips, fresh;
    {
        GripManager::ScopedCreator creator(line, grips.array);
        creator.createPointGrip({0, 0, 0}, [&](AcDbEntity& entity, const AcGeVector3d&) {
            make(entity, fresh, {7});
            m_moves.push_back({&entity, {}, 1});
        });
        creator.createPointGrip({0, 0, 0}, noting(2));
    }
    GripManager::onMove(line, grips.held({0, 1}), {1, 0, 0});
    EXPECT_EQ(moved(), (std::vector<int>{1})); // the second one ended meanwhile
}

TEST_F(GripManagerTest, HandlerMayHoldTheLastOfAnotherEntity) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    Grips grips, ofHeld;
    auto held = std::make_shared<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
    make(*held, ofHeld, {1, 2});
    {
        GripManager::ScopedCreator creator(line, grips.array);
        creator.createPointGrip({0, 0, 0}, [held](AcDbEntity&, const AcGeVector3d&) {});
        creator.createPointGrip({0, 0, 0}, noting(3));
    }
    held.reset();
    EXPECT_TRUE(isMine(nullptr, ofHeld.dataOf(0)));
    Grips fresh;
    make(line, fresh, {4}); // ends the handler, which ends the line, which ends its grips
    EXPECT_FALSE(isMine(nullptr, ofHeld.dataOf(0)));
    EXPECT_FALSE(isMine(nullptr, ofHeld.dataOf(1)));
    EXPECT_FALSE(isMine(nullptr, grips.dataOf(1)));
    EXPECT_TRUE(isMine(nullptr, fresh.dataOf(0)));
}

TEST_F(GripManagerTest, ThrowingHandlerEndsTheRow) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    Grips grips;
    {
        GripManager::ScopedCreator creator(line, grips.array);
        creator.createPointGrip({0, 0, 0},
                                [](AcDbEntity&, const AcGeVector3d&) { throw std::runtime_error("no"); });
        creator.createPointGrip({0, 0, 0}, noting(2));
        creator.createPointGrip({0, 0, 0}, GripManager::MoveHandler());
    }
    EXPECT_THROW(GripManager::onMove(line, grips.held({0, 1}), {1, 0, 0}), std::runtime_error);
    EXPECT_TRUE(m_moves.empty());
    GripManager::onMove(line, grips.held({2, 1}), {1, 0, 0}); // one without a handler is passed over
    EXPECT_EQ(moved(), (std::vector<int>{2}));
}

TEST_F(GripManagerTest, TipAndIconAreThoseOfTheGrip) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    Grips grips;
    std::vector<std::string> icons;
    {
        GripManager::ScopedCreator creator(line, grips.array);
        creator.createPointGrip(
            {3, 0, 0}, noting(1), L"Move the end",
            [&](AcGiViewportDraw& draw, const AcGePoint3d& at, AcDbGripOperations::DrawType type, int size) {
                icons.push_back(std::to_string(at.x) + " " + std::to_string(type) + " " +
                                std::to_string(size));
                draw.geometry().circle(at, size, AcGeVector3d::kZAxis);
            });
        creator.createPointGrip({4, 0, 0}, noting(2));
    }
    ASSERT_NE(grips.array[0]->toolTipFunc(), nullptr);
    EXPECT_STREQ(grips.array[0]->toolTipFunc()(grips.array[0]), L"Move the end");
    EXPECT_EQ(grips.array[1]->toolTipFunc(), nullptr);
    EXPECT_EQ(grips.array[1]->viewportDraw(), nullptr);

    Sketch sketch;
    sketch.world = [](AcGiWorldDraw&) { return false; };
    sketch.viewport = [&](AcGiViewportDraw& draw) {
        AcGePoint3d dragged(8, 0, 0);
        const auto icon = grips.array[0]->viewportDraw();
        icon(grips.array[0], &draw, AcDbObjectId(), AcDbGripOperations::kHotGrip, nullptr, 5);
        icon(grips.array[0], &draw, AcDbObjectId(), AcDbGripOperations::kDragImageGrip, &dragged, 5);
    };
    const embedded::DisplayList list = embedded::draw(sketch);
    EXPECT_EQ(icons, (std::vector<std::string>{"3.000000 2 5", "8.000000 3 5"}));
    EXPECT_EQ(list.primitives.size(), 2u);

    Grips fresh;
    make(line, fresh, {9});
    EXPECT_EQ(grips.array[0]->toolTipFunc()(grips.array[0]), nullptr); // what it told of has ended
}
