// The hatch of an area load.

#include "dbx/elem/load_draw.h"
#include "embedded/host_release.h"
#include "module/dbx/elem/drawn_loads.h"
#include "orvshape/acad_draw.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace testing_support;
using embedded::HostRelease;
using embedded::PrimitiveKind;
using Primitives = std::vector<embedded::Primitive>;

namespace {

class ScopedRelease {
public:
    explicit ScopedRelease(const HostRelease& release) : m_before(embedded::setHostRelease(release)) {}
    ~ScopedRelease() { embedded::setHostRelease(m_before); }
    ScopedRelease(const ScopedRelease&) = delete;
    ScopedRelease& operator=(const ScopedRelease&) = delete;

private:
    const HostRelease m_before;
};

// Draws nothing but a hatch of the boundary.
class HatchOnly : public AcDbEntity {
public:
    const ORV_SegmentedCurve* boundary = nullptr;
    const orv::System* system = nullptr;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    bool answer = true;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override {
        orv::AcadWorldDraw draw(*worldDraw);
        draw.subEntityTraits().setTrueColor(AcCmEntityColor(1, 2, 3));
        answer = orv::elem::drawHatch(draw, *system, *boundary, normal);
        return true;
    }
};

class LoadHatchTest : public testing::Test {
protected:
    LoadHatchTest() {
        square.through({{0, 0, 0}, {6, 0, 0}, {6, 6, 0}, {0, 6, 0}, {0, 0, 0}});
        hatch.system = &square.system;
        hatch.boundary = &square.member;
        square.system.visSettings().setSize(3, 2.0);
    }
    Primitives draw(std::size_t most = 0) {
        embedded::ViewParameters view;
        view.mostPrimitives = most;
        return embedded::draw(hatch, view).primitives;
    }
    void use(const std::vector<AcGePoint3d>& corners) {
        square.member.clear();
        square.through(corners);
    }

    LoadedMember square;
    HatchOnly hatch;
};

// How far apart the lines are, all of which are parallel.
double spacingOf(const Primitives& lines) {
    std::vector<double> offsets;
    const AcGeVector3d along = (lines.at(0).points.at(1) - lines.at(0).points.at(0)).normal();
    const AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(along);
    for (const auto& line : lines)
        offsets.push_back(line.points.at(0).asVector().dotProduct(across));
    std::sort(offsets.begin(), offsets.end());
    double least = 1.0e9;
    for (std::size_t i = 1; i < offsets.size(); ++i)
        if (offsets[i] - offsets[i - 1] > 1.0e-9)
            least = std::min(least, offsets[i] - offsets[i - 1]);
    return least;
}

double lengthOf(const Primitives& lines) {
    double sum = 0.0;
    for (const auto& line : lines)
        sum += line.points.at(0).distanceTo(line.points.at(1));
    return sum;
}

struct ReleaseRow {
    HostRelease release;
    bool isNew;
};
const ReleaseRow kReleases[] = {{{17, 2}, false}, {{18, 0}, false}, {{18, 1}, false}, {{18, 2}, true},
                                {{18, 3}, false}, {{19, 0}, true},  {{19, 1}, true},  {{24, 0}, true}};

} // namespace

TEST_F(LoadHatchTest, theLinesRunAtFortyFiveDegreesAcrossTheWholeArea) {
    const Primitives lines = draw();
    ASSERT_GE(lines.size(), 3U);
    for (const auto& line : lines) {
        ASSERT_EQ(line.points.size(), 2U);
        const AcGeVector3d along = line.points[1] - line.points[0];
        EXPECT_NEAR(std::fabs(along.x), std::fabs(along.y), 1e-9);
        EXPECT_GT(along.x * along.y, 0.0);
        for (const AcGePoint3d& end : line.points) {
            EXPECT_NEAR(end.z, 0.0, 1e-12);
            const double nearest = std::min(std::min(std::fabs(end.x), std::fabs(end.x - 6.0)),
                                            std::min(std::fabs(end.y), std::fabs(end.y - 6.0)));
            EXPECT_NEAR(nearest, 0.0, 1e-9);
        }
    }
    EXPECT_NEAR(lengthOf(lines) * spacingOf(lines), 36.0, 5.0);
    EXPECT_FALSE(hatch.answer);
}

TEST_F(LoadHatchTest, theLinesAreRedWhateverTheLoadIs) {
    for (const auto& line : draw()) {
        EXPECT_EQ(line.traits.colour, 1);
        EXPECT_FALSE(line.traits.trueColour.isByColor());
    }
}

TEST_F(LoadHatchTest, theDistanceOfTheLinesFollowsTheArrowsSpacing) {
    const double before = spacingOf(draw());
    square.system.visSettings().setSize(3, 1.0);
    EXPECT_NEAR(spacingOf(draw()), before / 2.0, 1e-9);
}

TEST_F(LoadHatchTest, anOlderHostHasLinesTwentyTimesAsFarApart) {
    // Large enough for the wide lines.
    use({{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}, {0, 0, 0}});
    const ScopedRelease newer({18, 2});
    const double fine = spacingOf(draw());
    const ScopedRelease older({18, 1});
    EXPECT_NEAR(spacingOf(draw()), 20.0 * fine, 1e-6);
}

TEST_F(LoadHatchTest, whichReleasesAreNew) {
    use({{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}, {0, 0, 0}});
    const ScopedRelease newer({19, 1});
    const double fine = spacingOf(draw());
    for (const ReleaseRow& row : kReleases) {
        const ScopedRelease scoped(row.release);
        EXPECT_NEAR(spacingOf(draw()), row.isNew ? fine : 20.0 * fine, 1e-6)
            << row.release.major << "." << row.release.minor;
    }
}

TEST_F(LoadHatchTest, aNormalThatPointsDownIsTurnedRound) {
    for (const double z : {0.0, 3.0, -3.0}) {
        use({{0, 0, z}, {6, 0, z}, {6, 6, z}, {0, 6, z}, {0, 0, z}});
        hatch.normal = AcGeVector3d::kZAxis;
        const Primitives up = draw();
        hatch.normal = AcGeVector3d(0, 0, -5);
        const Primitives down = draw();
        ASSERT_FALSE(up.empty());
        ASSERT_EQ(up.size(), down.size());
        for (std::size_t i = 0; i < up.size(); ++i)
            for (std::size_t end = 0; end < 2; ++end) {
                EXPECT_TRUE(up[i].points[end].isEqualTo(down[i].points[end]));
                EXPECT_NEAR(down[i].points[end].z, z, 1e-12);
            }
    }
}

TEST_F(LoadHatchTest, theHatchLiesInThePlaneOfItsBoundary) {
    struct Row {
        std::vector<AcGePoint3d> corners;
        AcGeVector3d normal;
    };
    const Row rows[] = {
        {{{0, 0, 3}, {6, 0, 3}, {6, 6, 3}, {0, 0, 3}}, {0, 0, 1}},
        {{{0, 0, -3}, {6, 0, -3}, {6, 6, -3}, {0, 0, -3}}, {0, 0, 1}},
        {{{1, 5, 1}, {7, 5, 1}, {7, 5, 7}, {1, 5, 1}}, {0, -1, 0}},
        {{{1, -5, 1}, {7, -5, 1}, {7, -5, 7}, {1, -5, 1}}, {0, -1, 0}},
        {{{2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {2, 0, 0}}, {1, 1, 1}},
        {{{-2, 0, 0}, {0, -2, 0}, {0, 0, -2}, {-2, 0, 0}}, {1, 1, 1}},
    };
    for (const Row& row : rows) {
        use(row.corners);
        square.system.visSettings().setSize(3, 0.05);
        hatch.normal = row.normal;
        const Primitives lines = draw();
        ASSERT_FALSE(lines.empty());
        AcDbExtents box;
        AcDbExtents drawn;
        for (const AcGePoint3d& corner : row.corners)
            box.addPoint(corner);
        for (const auto& line : lines)
            for (const AcGePoint3d& end : line.points) {
                EXPECT_NEAR((end - row.corners[0]).dotProduct(row.normal), 0.0, 1e-9);
                drawn.addPoint(end);
            }
        EXPECT_LT(drawn.minPoint().distanceTo(box.minPoint()), 0.2);
        EXPECT_LT(drawn.maxPoint().distanceTo(box.maxPoint()), 0.2);
    }
}

TEST_F(LoadHatchTest, whatStandsOffThePlaneIsProjectedOntoIt) {
    const Primitives flat = draw();
    use({{0, 0, 0}, {6, 0, 1}, {6, 6, 0}, {0, 6, 2}, {0, 0, 0}});
    const Primitives bent = draw();
    EXPECT_NEAR(lengthOf(flat), lengthOf(bent), 1e-9);
}

TEST_F(LoadHatchTest, roundPiecesAreFollowed) {
    square.member.clear();
    orv::CurveSegment half;
    ASSERT_TRUE(orv::CurveSegment::arcThrough({-3, 0, 0}, {0, -3, 0}, {3, 0, 0}, half));
    ASSERT_EQ(square.member.append(half), Acad::eOk);
    ASSERT_EQ(square.member.appendClosingLine(), Acad::eOk);
    square.system.visSettings().setSize(3, 0.2);
    const Primitives lines = draw();
    double furthest = 0.0;
    for (const auto& line : lines)
        for (const AcGePoint3d& end : line.points) {
            EXPECT_LE(end.distanceTo(AcGePoint3d::kOrigin), 3.0 + 1e-9);
            furthest = std::max(furthest, end.distanceTo(AcGePoint3d::kOrigin));
        }
    // Chords are no further from the arc than a twentieth of the store's unit.
    EXPECT_GE(furthest, 3.0 - square.system.converter().fromCdb(0.05));
    EXPECT_NEAR(lengthOf(lines) * spacingOf(lines), 14.14, 1.0);
}

TEST_F(LoadHatchTest, anEmptyBoundaryIsReported) {
    square.member.clear();
    ReportRecorder reports;
    EXPECT_TRUE(draw().empty());
    EXPECT_FALSE(hatch.answer);
    EXPECT_EQ(reports.conditions(), Texts{"!boundary.empty()"});
}

TEST_F(LoadHatchTest, aBoundaryWithoutAreaIsReportedWithTheHostsStatus) {
    use({{0, 0, 0}, {6, 0, 0}});
    ReportRecorder reports;
    EXPECT_TRUE(draw().empty());
    ASSERT_EQ(reports.conditions(), Texts{"es == es2"});
    EXPECT_EQ(reports.at(0).values.at(0).value, "h.appendLoop(AcDbHatch::kOutermost,hatchPoints,bulges)");
}

TEST_F(LoadHatchTest, theHostsWishToStopIsHandedOn) {
    EXPECT_EQ(draw(2).size(), 2U);
    EXPECT_TRUE(hatch.answer);
}

TEST_F(LoadHatchTest, anAreaLoadIsHatchedAndALineLoadIsNot) {
    square.ofArea(1.0);
    const auto hatched = [](const embedded::DisplayList& list) {
        return std::any_of(list.primitives.begin(), list.primitives.end(),
                           [](const auto& primitive) { return primitive.traits.colour == 1; });
    };
    EXPECT_TRUE(hatched(square.draw()));
    square->setDistribution(orv::elem::kLineLoad);
    square->setVertices(verticesOf({1, 1, 1, 1}));
    EXPECT_FALSE(hatched(square.draw()));
}

TEST_F(LoadHatchTest, aBoundaryInNoPlaneIsNotHatched) {
    use({{0, 0, 0}, {6, 0, 0}, {6, 6, 3}, {0, 6, -3}, {0, 0, 0}});
    square.ofArea(1.0);
    for (const auto& primitive : square.draw().primitives)
        EXPECT_NE(primitive.traits.colour, 1);
}

namespace {

class StemOnly : public AcDbEntity {
public:
    const orv::System* system = nullptr;
    bool answer = false;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override {
        orv::AcadWorldDraw draw(*worldDraw);
        answer = orv::elem::drawPointLoad(draw, *system, {0, 0, -2}, {1, 1, 1}, 3.0);
        return true;
    }
};

} // namespace

TEST_F(LoadHatchTest, thePointLoadsStemIsAsLongAsTheValueTellsTheDirection) {
    StemOnly stem;
    stem.system = &square.system;
    const auto list = embedded::draw(stem);
    ASSERT_EQ(list.primitives.size(), 1U);
    EXPECT_TRUE(list.primitives[0].points.at(0).isEqualTo(AcGePoint3d(1, 1, 1)));
    EXPECT_TRUE(list.primitives[0].points.at(1).isEqualTo(AcGePoint3d(1, 1, -5)));
    EXPECT_FALSE(stem.answer);
    embedded::ViewParameters view;
    view.mostPrimitives = 1;
    embedded::draw(stem, view);
    EXPECT_FALSE(stem.answer);
}
