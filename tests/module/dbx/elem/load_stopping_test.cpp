// What loads draw once the host wants them to stop: nothing.

#include "dbx/elem/load_draw.h"
#include "module/dbx/elem/drawn_loads.h"
#include "module/dbx/elem/stopping_draw.h"
#include "orvshape/acad_draw.h"

#include <gtest/gtest.h>

using namespace testing_support;
using orv::elem::kLineLoad;
using orv::elem::kPointLoad;

namespace {

// Draws a load that belongs to a member on draws that stop.
class StoppedLoad : public AcDbEntity {
public:
    explicit StoppedLoad(LoadedMember& loaded) : m_loaded(loaded) {}

    DrawnCalls world;
    DrawnCalls viewport;
    // What the functions below answered, called directly on the picture that is laid out.
    bool linesAnswer = false;
    bool headsAnswer = false;

    void draw(int stopAt) {
        world = viewport = DrawnCalls{stopAt, 0};
        embedded::draw(*this, fromFront());
    }
    void drawDirectly(int stopAt) {
        m_isDirect = true;
        draw(stopAt);
        m_isDirect = false;
    }

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* host) override {
        StoppingWorldDraw stopping(*host, world);
        orv::AcadWorldDraw draw(stopping);
        if (m_isDirect)
            linesAnswer = orv::elem::detail::drawLoadLines(draw, m_loaded->laidOut);
        else
            m_loaded->onWorldDraw(draw, m_loaded.system);
        return false;
    }
    void subViewportDraw(AcGiViewportDraw* host) override {
        StoppingViewportDraw stopping(*host, viewport);
        orv::AcadViewportDraw draw(stopping);
        if (m_isDirect)
            headsAnswer = orv::elem::detail::drawLoadArrowHeads(draw, m_loaded->laidOut);
        else
            m_loaded->onViewportDraw(draw, m_loaded.system);
    }

private:
    LoadedMember& m_loaded;
    bool m_isDirect = false;
};

class LoadStoppingTest : public testing::Test {
protected:
    LoadStoppingTest() : stopped(loaded) { loaded.system.visSettings().setSwitch(151, 0); }
    void line() {
        loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double) { return 2.0; });
    }
    void area() { loaded.through({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}}).ofArea(2.0); }

    LoadedMember loaded;
    StoppedLoad stopped;
};

} // namespace

TEST_F(LoadStoppingTest, noStemAndNoJoinIsDrawnBehindTheLastOne) {
    line();
    stopped.draw(0);
    ASSERT_EQ(stopped.world.made, 5 + 4);
    for (int stopAt = 1; stopAt <= 9; ++stopAt) {
        stopped.draw(stopAt);
        EXPECT_EQ(stopped.world.made, stopAt);
    }
}

TEST_F(LoadStoppingTest, anAreaThatIsToStopHasNoHatch) {
    area();
    stopped.draw(0);
    // Nine stems, the lines between them, and the hatch as one.
    ASSERT_EQ(stopped.world.made, 9 + 8 + 1);
    for (int stopAt = 1; stopAt <= 18; ++stopAt) {
        stopped.draw(stopAt);
        EXPECT_EQ(stopped.world.made, stopAt);
    }
}

TEST_F(LoadStoppingTest, noHeadIsDrawnBehindTheLastOne) {
    line();
    for (const int type : {10, 26}) {
        loaded->setType(type);
        const int heads = type == 26 ? 10 : 5;
        stopped.draw(0);
        ASSERT_EQ(stopped.viewport.made, heads);
        for (int stopAt = 1; stopAt <= heads; ++stopAt) {
            stopped.draw(stopAt);
            EXPECT_EQ(stopped.viewport.made, stopAt) << type;
        }
    }
}

TEST_F(LoadStoppingTest, linesAndHeadsTellThatTheyWereStopped) {
    line();
    loaded.draw();
    stopped.drawDirectly(0);
    EXPECT_EQ(stopped.world.made, 9);
    EXPECT_EQ(stopped.viewport.made, 5);
    EXPECT_FALSE(stopped.linesAnswer);
    EXPECT_FALSE(stopped.headsAnswer);
    for (const int stopAt : {1, 5}) {
        stopped.drawDirectly(stopAt);
        EXPECT_TRUE(stopped.linesAnswer);
        EXPECT_TRUE(stopped.headsAnswer);
        EXPECT_EQ(stopped.world.made, stopAt);
        EXPECT_EQ(stopped.viewport.made, stopAt);
    }
    stopped.drawDirectly(9);
    EXPECT_TRUE(stopped.linesAnswer);
    EXPECT_FALSE(stopped.headsAnswer);
}

TEST_F(LoadStoppingTest, twoArrowsAreJoinedByOneLineThatTellsOfTheStop) {
    line();
    loaded.system.visSettings().setSize(3, 100.0);
    loaded.draw();
    stopped.drawDirectly(3);
    EXPECT_EQ(stopped.world.made, 3);
    EXPECT_TRUE(stopped.linesAnswer);
}

TEST_F(LoadStoppingTest, theSecondHalfOfAPointLoadsDoubleHeadIsLeftOut) {
    loaded->setDistribution(kPointLoad);
    loaded->setType(26);
    loaded->setVertices(vertexAt({1, 2, 3}, 25.0));
    stopped.draw(0);
    EXPECT_EQ(stopped.viewport.made, 2);
    stopped.draw(1);
    EXPECT_EQ(stopped.viewport.made, 1);
}
