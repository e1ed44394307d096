// How arrows are laid out along a curve, and when.

#include "module/dbx/elem/drawn_loads.h"
#include "support/beep_recorder.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

using namespace testing_support;
using orv::elem::kAreaLoad;
using orv::elem::kLineLoad;
using orv::elem::LOAD_KIND;
using orv::elem::LoadDistribution;
using Arrow = DrawnLoad::Picture::Arrow;

namespace {

const Arrow& arrowAt(const LoadedMember& loaded, std::size_t index) {
    return loaded.load->laidOut.vertices.at(index);
}

class LoadLayoutTest : public testing::Test {
protected:
    // A straight member of that length, drawn once with arrows that far apart.
    std::size_t arrowsOn(double length, double spacing) {
        LoadedMember loaded;
        loaded.system.visSettings().setSize(3, spacing);
        loaded.through({{0, 0, 0}, {length, 0, 0}}).values([](double, double) { return 1.0; });
        loaded.draw();
        return loaded.load->laidOut.vertices.size();
    }
    void drawStraight() {
        loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double) { return 1.0; });
        loaded.draw();
    }

    LoadedMember loaded;
};

struct CountRow {
    double length;
    double spacing;
    std::size_t arrows;
};
const CountRow kCounts[] = {
    {10.0, 0.6, 17},    // 16.67 intervals
    {100.0, 0.6, 51},   // never more than fifty
    {0.5, 0.6, 2},      // shorter than the spacing
    {30.0, 0.6, 51},    // fifty, exactly
    {29.9, 0.6, 50},    //
    {8.0, 2.0, 5},      //
    {7.99, 2.0, 4},     //
    {8.0, -2.0, 2},     // a spacing below 0 asks for no arrow between the ends
    {1.0e9, 1.0e-9, 51} //
};

} // namespace

TEST_F(LoadLayoutTest, aCurvesLengthAndTheSpacingTellHowManyArrowsThereAre) {
    for (const CountRow& row : kCounts)
        EXPECT_EQ(arrowsOn(row.length, row.spacing), row.arrows) << row.length << " / " << row.spacing;
}

TEST_F(LoadLayoutTest, aSpacingThatIsNoNumberGivesTwoArrows) { EXPECT_EQ(arrowsOn(8.0, std::nan("")), 2U); }

TEST_F(LoadLayoutTest, onALongCurveTheSpacingIsAFiftiethOfIt) {
    loaded.system.visSettings().setSize(3, 0.6);
    loaded.through({{0, 0, 0}, {100, 0, 0}}).values([](double, double) { return 1.0; });
    loaded.draw();
    ASSERT_EQ(loaded->laidOut.vertices.size(), 51U);
    for (std::size_t i = 0; i < 51; ++i) {
        EXPECT_NEAR(arrowAt(loaded, i).distance, 2.0 * static_cast<double>(i), 1e-9);
        EXPECT_NEAR(arrowAt(loaded, i).point.x, 2.0 * static_cast<double>(i), 1e-9);
    }
    EXPECT_LE(arrowAt(loaded, 50).distance, 100.0);
}

TEST_F(LoadLayoutTest, aSpacingOfNothingIsReportedAndReplacedByTheStoresUsualOne) {
    const double usual = loaded.system.converter().fromCdb(0.6);
    for (const double none : {0.0, 2.220446049250313e-10, -2.220446049250313e-10}) {
        ReportRecorder reports;
        const std::size_t expected = static_cast<std::size_t>(8.0 / usual) + 1;
        EXPECT_EQ(arrowsOn(8.0, none), expected);
        EXPECT_EQ(reports.conditions(), Texts{"0"});
    }
    ReportRecorder reports;
    EXPECT_EQ(arrowsOn(8.0, 2.3e-10), 51U);
    EXPECT_EQ(reports.size(), 0U);
}

TEST_F(LoadLayoutTest, theReplacementFollowsTheStoresUnit) {
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, orv::PersistentSystemInfo{2, 16, 0.001});
    orv::System inMillimetres;
    ASSERT_TRUE(inMillimetres.updateFrom(store));
    inMillimetres.visSettings().setSize(3, 0.0);
    loaded.member.system = &inMillimetres;
    loaded.through({{0, 0, 0}, {6100, 0, 0}}).values([](double, double) { return 1.0; });
    ReportRecorder reports;
    loaded.draw();
    EXPECT_EQ(loaded->laidOut.vertices.size(), 11U); // 600 apart, or a little more
}

TEST_F(LoadLayoutTest, eachArrowTellsWhereItIsHowLargeAndWhichWay) {
    loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double distance) { return distance - 3.0; });
    loaded.draw();
    const double values[] = {-3.0, -1.0, 1.0, 3.0, 5.0};
    ASSERT_EQ(loaded->laidOut.vertices.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        const Arrow& arrow = arrowAt(loaded, i);
        EXPECT_NEAR(arrow.point.x, 2.0 * static_cast<double>(i), 1e-12);
        EXPECT_NEAR(arrow.value, values[i], 1e-12);
        // Along gravity: what is above 0 comes from above.
        EXPECT_NEAR(arrow.base.z, values[i], 1e-12);
        EXPECT_EQ(arrow.sign, values[i] < 0.0 ? 1 : -1);
        EXPECT_TRUE(arrow.visible);
        EXPECT_NEAR(arrow.distance, 2.0 * static_cast<double>(i), 1e-12);
    }
}

TEST_F(LoadLayoutTest, aValueOfZeroIsNotBelowZero) {
    loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double) { return -0.0; });
    loaded.draw();
    EXPECT_EQ(arrowAt(loaded, 0).sign, -1);
}

TEST_F(LoadLayoutTest, aValueByPlaceIsAskedForAtThePointsOfTheCurve) {
    loaded.through({{0, 0, 0}, {8, 0, 0}});
    loaded->setVertices(verticesOf({1, 1}));
    loaded->setup = [](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtPosFn = [](const AcGePoint3d& point) { return point.x * 10.0; };
    };
    loaded.draw();
    EXPECT_NEAR(arrowAt(loaded, 3).value, 60.0, 1e-9);
}

TEST_F(LoadLayoutTest, aValueByDistanceGoesBeforeOneByPlace) {
    loaded.through({{0, 0, 0}, {8, 0, 0}});
    loaded->setVertices(verticesOf({1, 1}));
    loaded->setup = [](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtPosFn = [](const AcGePoint3d&) { return 10.0; };
        picture.getValueAtDistFn = [](double) { return 20.0; };
    };
    loaded.draw();
    EXPECT_EQ(arrowAt(loaded, 0).value, 20.0);
}

TEST_F(LoadLayoutTest, withoutAValueFunctionNothingIsLaidOut) {
    loaded.through({{0, 0, 0}, {8, 0, 0}});
    loaded->setVertices(verticesOf({1, 1}));
    loaded->setup = [](orv::System&, DrawnLoad::Picture&) {};
    ReportRecorder reports;
    loaded.draw();
    EXPECT_EQ(reports.conditions(), (Texts{"visData.getValueAtDistFn || visData.getValueAtPosFn",
                                           "visData.vertices.size() >= 2", "visData.vertices.size() >= 2"}));
    EXPECT_EQ(reports.at(1).values, (Values{{"visData.vertices.size()", "0"}}));
    EXPECT_EQ(loaded->layouts, 1);
}

TEST_F(LoadLayoutTest, bothFunctionsAreEmptyWhenTheLoadIsAskedForOne) {
    loaded.through({{0, 0, 0}, {8, 0, 0}});
    loaded->setVertices(verticesOf({1, 1}));
    bool areEmpty = false;
    loaded->setup = [&areEmpty](orv::System&, DrawnLoad::Picture& picture) {
        areEmpty = picture.getValueAtDistFn.empty() && picture.getValueAtPosFn.empty();
        picture.getValueAtDistFn = [](double) { return 1.0; };
        picture.getValueAtPosFn = [](const AcGePoint3d&) { return 1.0; };
    };
    loaded.draw();
    EXPECT_TRUE(areEmpty);
    loaded->requestRefreshGraphics();
    areEmpty = false;
    loaded.draw();
    EXPECT_TRUE(areEmpty);
}

TEST_F(LoadLayoutTest, whatTheLoadMakesOfItsArrowsIsDrawn) {
    loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double) { return 1.0; });
    loaded->change = [](DrawnLoad::Picture& picture) { picture.vertices.at(2).base.z = 7.0; };
    const auto lines = worldPart(loaded.draw());
    ASSERT_EQ(lines.size(), 9U);
    EXPECT_NEAR(lines.at(2).points.at(1).z, 7.0, 1e-12);
}

TEST_F(LoadLayoutTest, arrowsAreLaidOutOnceAndAgainAfterAChange) {
    drawStraight();
    EXPECT_EQ(loaded->layouts, 1);
    EXPECT_FALSE(loaded->refreshGraphics());
    loaded.draw();
    loaded.draw(fromTop());
    EXPECT_EQ(loaded->layouts, 1);
    loaded->setValueAt(0, 2.0);
    EXPECT_TRUE(loaded->refreshGraphics());
    EXPECT_EQ(loaded->layouts, 1);
    loaded.draw();
    EXPECT_EQ(loaded->layouts, 2);
    loaded->requestRefreshGraphics();
    loaded.draw();
    EXPECT_EQ(loaded->layouts, 3);
}

TEST_F(LoadLayoutTest, theLongestHeadFollowsTheSettingsWithoutANewLayout) {
    drawStraight();
    const double before = viewPart(loaded.draw()).at(0).extents().maxPoint().z;
    loaded.system.visSettings().setSize(2, 0.1);
    const double after = viewPart(loaded.draw()).at(0).extents().maxPoint().z;
    EXPECT_NEAR(before, 0.2, 1e-9);
    EXPECT_NEAR(after, 0.1, 1e-9);
    EXPECT_EQ(loaded->layouts, 1);
}

TEST_F(LoadLayoutTest, thePictureBelongsToItsLoad) {
    drawStraight();
    EXPECT_TRUE(loaded->laidOut.owned);
    EXPECT_EQ(loaded->laidOut.visCurve, static_cast<ORV_SegmentedCurve*>(&loaded.member));
    EXPECT_EQ(loaded->laidOut.arrowLength, 0.2);
    EXPECT_EQ(loaded->laidOut.scale, 1.0);
}

TEST_F(LoadLayoutTest, anAreaIsLaidOutAroundItsBoundary) {
    loaded.through({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}}).ofArea(2.0);
    loaded.draw();
    ASSERT_EQ(loaded->laidOut.vertices.size(), 9U);
    EXPECT_NEAR(arrowAt(loaded, 3).point.y, 2.0, 1e-9);
    EXPECT_NEAR(arrowAt(loaded, 8).point.distanceTo(arrowAt(loaded, 0).point), 0.0, 1e-9);
    EXPECT_NEAR(arrowAt(loaded, 8).base.z, 2.0, 1e-9);
}

namespace {

struct FlagRow {
    int type;
    unsigned int flags;
    bool projected;
};
const FlagRow kFlags[] = {
    {10, 15, false}, {15, 15, false}, {17, 15, true},  {18, 15, true},    {19, 15, true},
    {24, 31, false}, {20, 31, false}, {29, 31, false}, {1004, 31, false}, {1011, 31, false},
    {51, 6, false},  {56, 6, false},  {50, 15, false}, {57, 15, false},   {30, 15, false},
};

} // namespace

TEST_F(LoadLayoutTest, theTypeTellsWhichArrowsAndHeadsAreShown) {
    loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double) { return 1.0; });
    for (const FlagRow& row : kFlags) {
        loaded->setType(row.type);
        loaded.draw();
        EXPECT_EQ(loaded->laidOut.flags, row.flags) << row.type;
        EXPECT_EQ(loaded->laidOut.projected, row.projected) << row.type;
    }
}

namespace {

// What a load with such vertices, on a member with that many pieces, reports at its first drawing, and
// whether its values are asked for.
struct StopRow {
    const char* what;
    LoadDistribution distribution;
    int pieces;
    std::size_t vertices;
    Texts reports;
    bool isPrepared;
};

const char* const kFew = "visData.vertices.size() >= 2";
const char* const kThree = "vertices.size() >= 3";

const StopRow kStops[] = {
    {"a line without vertices", kLineLoad, 1, 0, {"0", kFew, kFew}, false},
    {"a line with fewer vertices than pieces", kLineLoad, 3, 2, {"0", kFew, kFew}, false},
    {"a line with as many", kLineLoad, 3, 3, {}, true},
    {"an area of two vertices", kAreaLoad, 4, 2, {kThree, kThree, kFew, kFew}, false},
    {"an area of three", kAreaLoad, 4, 3, {}, true},
    {"a line without a curve", kLineLoad, 0, 2, {}, false},
    {"an area without a curve", kAreaLoad, 0, 2, {}, false},
};

} // namespace

TEST_F(LoadLayoutTest, aLoadWithTooLittleIsReportedAndNotLaidOut) {
    const std::vector<AcGePoint3d> corners = {{0, 0, 0}, {8, 0, 0}, {8, 8, 0}, {0, 8, 0}, {0, 0, 0}};
    for (const StopRow& row : kStops) {
        LoadedMember one;
        if (row.pieces > 0)
            one.through({corners.begin(), corners.begin() + row.pieces + 1});
        one->setDistribution(row.distribution);
        one->setVertices(verticesOf(std::vector<double>(row.vertices, 1.0)));
        ReportRecorder reports;
        one.draw();
        EXPECT_EQ(reports.conditions(), row.reports) << row.what;
        EXPECT_EQ(one->setups, row.isPrepared ? 1 : 0) << row.what;
        EXPECT_EQ(one->layouts, row.isPrepared ? 1 : 0) << row.what;
        // Without a curve the layout is still to come.
        EXPECT_EQ(one->refreshGraphics(), row.pieces == 0) << row.what;
    }
}

TEST_F(LoadLayoutTest, anAreaWithTooFewVerticesTellsHowManyItHas) {
    loaded.through({{0, 0, 0}, {8, 0, 0}, {8, 8, 0}, {0, 0, 0}});
    loaded->setDistribution(kAreaLoad);
    loaded->setVertices(verticesOf({1, 1}));
    ReportRecorder reports;
    loaded.draw();
    ASSERT_GE(reports.size(), 2U);
    EXPECT_EQ(reports.at(0).values, (Values{{"vertices.size()", "2"}, {"visCurve->getSegmentCount()", "3"}}));
    EXPECT_EQ(reports.at(1).values,
              (Values{{"vertices.size()", "2"}, {"visData.visCurve->getSegmentCount()", "3"}}));
}

TEST_F(LoadLayoutTest, aLineOnAnElementNeedsNoVertexForEachPiece) {
    AcDbDatabase db(true);
    loaded.through({{0, 0, 0}, {4, 0, 0}, {4, 0, 4}, {8, 0, 4}});
    loaded->setElement(db.layerZero());
    loaded->setVertices(verticesOf({1, 1}));
    ReportRecorder reports;
    loaded.draw();
    EXPECT_EQ(reports.size(), 0U);
    EXPECT_EQ(loaded->layouts, 1);
}

TEST_F(LoadLayoutTest, aPictureThatCannotBePreparedStaysAsItWas) {
    drawStraight();
    const std::size_t before = loaded.draw().primitives.size();
    loaded->setVertices({});
    ReportRecorder reports;
    EXPECT_EQ(loaded.draw().primitives.size(), before);
    EXPECT_EQ(reports.conditions(), Texts{"0"});
    EXPECT_EQ(loaded->layouts, 1);
    EXPECT_FALSE(loaded->refreshGraphics());
}

TEST_F(LoadLayoutTest, aLoadThatAskedForNothingHasNoArrowsYet) {
    // Three pieces are too many for two vertices. Then the curve becomes one that the load could stand on,
    // without a word to the load.
    loaded.through({{0, 0, 0}, {8, 0, 0}, {8, 0, 8}, {0, 0, 8}});
    loaded->setVertices(verticesOf({1, 1}));
    {
        const ReportRecorder ignored;
        loaded.draw();
    }
    loaded.member.clear();
    loaded.through({{0, 0, 0}, {8, 0, 0}});
    ASSERT_FALSE(loaded->refreshGraphics());
    {
        ReportRecorder reports;
        EXPECT_TRUE(loaded.draw().primitives.empty());
        EXPECT_EQ(reports.conditions(), Texts(2, "visData.vertices.size() >= 2"));
    }
    EXPECT_EQ(loaded->setups, 0);
    loaded->requestRefreshGraphics();
    EXPECT_FALSE(loaded.draw().primitives.empty());
    EXPECT_EQ(loaded->layouts, 1);
}

TEST_F(LoadLayoutTest, aVolumeIsNeitherLaidOutNorDrawn) {
    LoadedMember volume;
    volume.through({{0, 0, 0}, {8, 0, 0}});
    volume->setDistribution(orv::elem::kVolumeLoad);
    ReportRecorder reports;
    EXPECT_TRUE(volume.draw().primitives.empty());
    EXPECT_EQ(reports.size(), 0U);
    EXPECT_TRUE(volume->refreshGraphics());
}

TEST_F(LoadLayoutTest, aLocalLoadInSpaceIsLaidOutButNotDrawn) {
    for (const LoadDistribution distribution : {kLineLoad, kAreaLoad}) {
        LoadedMember one;
        one.through({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 0, 0}});
        one->setDistribution(distribution);
        one->setType(13);
        one->setVertices(verticesOf({1, 1, 1}));
        EXPECT_TRUE(one.draw().primitives.empty());
        EXPECT_EQ(one->layouts, 1);
        EXPECT_FALSE(one->refreshGraphics());
        EXPECT_GE(one->laidOut.vertices.size(), 2U);
    }
}

TEST_F(LoadLayoutTest, anExceptionOfTheValuesEndsTheDrawingAndAsksForTheLayoutAgain) {
    loaded.through({{0, 0, 0}, {8, 0, 0}});
    loaded->setVertices(verticesOf({1, 1}));
    bool fails = true;
    loaded->setup = [&fails](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtDistFn = [&fails](double distance) {
            if (fails && distance > 3.0)
                throw std::runtime_error("no value there");
            return 1.0;
        };
    };
    BeepRecorder beeps;
    const auto list = loaded.draw();
    EXPECT_EQ(beeps.lines().size(), 1U);
    EXPECT_TRUE(worldPart(list).empty());
    EXPECT_TRUE(list.failures.empty());
    EXPECT_TRUE(loaded->refreshGraphics());
    fails = false;
    EXPECT_EQ(worldPart(loaded.draw()).size(), 9U);
}
