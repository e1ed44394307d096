// A load as points with values.

#include "dbx/doc/use_system.h"
#include "dbx/elem/load_distribution_functions.h"
#include "module/dbx/elem/drawn_loads.h"
#include "support/report_recorder.h"
#include "support/system_records.h"
#include "support/test_element.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace testing_support;
using orv::elem::kAbsoluteDistance;
using orv::elem::kAreaLoad;
using orv::elem::kLineLoad;
using orv::elem::kPointLoad;
using orv::elem::kRelativeDistance;
using orv::elem::kVolumeLoad;
using orv::elem::LoadVertex;

namespace {

// A drawing with a store, and in it a member whose load is exported.
class LoadExportTest : public testing::Test {
protected:
    LoadExportTest() {
        registerLoadMember();
        putSystem(drawing.db, L"ASDWG", 0);
        member = new LoadMember;
        load = boost::make_shared<DrawnLoad>();
        member->addPlugin(load);
        load->setDistribution(kLineLoad);
        load->setVertices(verticesOf({1, 1, 1, 1}));
        load->setup = [](orv::System&, DrawnLoad::Picture& picture) {
            picture.getValueAtDistFn = [](double distance) { return distance; };
        };
    }

    // Puts the member into the drawing, linked with its store, and holds it open.
    void place() {
        id = putEntity(drawing.db, member);
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
        member = dynamic_cast<LoadMember*>(entity);
        member->setNodDatabaseId(storeId(), L"ASDWG");
        isOpen = true;
        orv::UseSystem(member)->setPointSize(0.0);
    }
    // In drawing units; until then straight pieces have their ends alone.
    void setLongestChord(double length) {
        const orv::UseSystem system(member);
        system->setPointSize(length / (5.0 * system->converter().fromCdb(1.0)));
    }
    ~LoadExportTest() override {
        if (isOpen)
            member->close();
        else
            delete member;
    }

    AcDbObjectId storeId() { return entryAt(drawing.db.namedObjectsDictionaryId(), {L"KELMORAN", L"ASDWG"}); }

    void straight(const std::vector<AcGePoint3d>& points) {
        orv::CurveSegment segment;
        ASSERT_TRUE(orv::CurveSegment::line(points.at(0), points.at(1), segment));
        ASSERT_EQ(member->append(segment), Acad::eOk);
        for (std::size_t i = 2; i < points.size(); ++i)
            ASSERT_EQ(member->appendLineTo(points[i]), Acad::eOk);
    }

    // A curve from (0, 0, 0) to (10, 0, 0) in the drawing, for a load to be on.
    AcDbObjectId putReference() {
        auto* const reference = new LoadMember;
        orv::CurveSegment segment;
        orv::CurveSegment::line({0, 0, 0}, {10, 0, 0}, segment);
        reference->append(segment);
        return putEntity(drawing.db, reference);
    }
    void loadStretch(double from, double to, orv::elem::DistanceMode mode) {
        std::deque<LoadVertex> vertices = verticesOf({1, 1});
        vertices.front().position = from;
        vertices.back().position = to;
        vertices.front().distanceMode = vertices.back().distanceMode = mode;
        load->setVertices(vertices);
    }

    StoreDrawing drawing;
    LoadMember* member = nullptr;
    boost::shared_ptr<DrawnLoad> load;
    AcDbObjectId id;
    bool isOpen = false;
};

std::vector<double> valuesOf(const std::deque<LoadVertex>& vertices) {
    std::vector<double> values;
    for (const LoadVertex& vertex : vertices)
        values.push_back(vertex.value);
    return values;
}

} // namespace

TEST_F(LoadExportTest, theVerticesOfAPolygonComeWithTheValuesThere) {
    straight({{0, 0, 0}, {3, 0, 0}, {3, 0, 4}});
    place();
    const auto exported = load->getVerticesForExport();
    ASSERT_EQ(exported.size(), 3U);
    EXPECT_EQ(valuesOf(exported), (std::vector<double>{0.0, 3.0, 7.0}));
    for (const LoadVertex& vertex : exported)
        EXPECT_EQ(vertex.posSource, orv::elem::PS_POINT);
    EXPECT_TRUE(exported[2].point.isEqualTo(AcGePoint3d(3, 0, 4)));
    EXPECT_TRUE(exported[2].text.empty());
}

TEST_F(LoadExportTest, whatIsDrawnStaysAsItIs) {
    straight({{0, 0, 0}, {3, 0, 0}, {3, 0, 4}});
    place();
    load->getVerticesForExport();
    EXPECT_TRUE(load->refreshGraphics());
    EXPECT_EQ(load->setups, 1);
    EXPECT_EQ(load->layouts, 0);
}

TEST_F(LoadExportTest, aRoundCurveIsToldByChordsAsLongAsFivePointsOfTheStore) {
    orv::CurveSegment segment;
    ASSERT_TRUE(orv::CurveSegment::arcThrough({0, 0, 0}, {5, 0, 5}, {10, 0, 0}, segment));
    ASSERT_EQ(member->append(segment), Acad::eOk);
    place();
    const orv::UseSystem system(member);
    system->setPointSize(0.2);
    const double chord = system->converter().fromCdb(1.0);
    const auto exported = load->getVerticesForExport();
    ASSERT_GE(exported.size(), 3U);
    for (std::size_t i = 1; i < exported.size(); ++i)
        EXPECT_LE(exported[i - 1].point.distanceTo(exported[i].point), chord + 1e-9);
    // No finer than asked for.
    EXPECT_LE(static_cast<double>(exported.size()), 15.71 / chord + 3.0);
    EXPECT_NEAR(exported.back().value, 5.0 * 3.14159265358979, 1e-6);
}

TEST_F(LoadExportTest, aParabolaOnAStraightMemberKeepsItsPeak) {
    straight({{0, 0, 0}, {10, 0, 0}});
    load->setVertices(verticesOf({0, 0}));
    load->setup = [](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtDistFn = [](double distance) {
            return orv::elem::_getValueAtDist_quadratic_P_at_mid_inverse(10.0, 4.0, distance);
        };
    };
    place();
    setLongestChord(1.0);
    const auto exported = load->getVerticesForExport();
    ASSERT_EQ(exported.size(), 11U);
    for (std::size_t i = 0; i < exported.size(); ++i) {
        const double along = static_cast<double>(i);
        EXPECT_TRUE(exported[i].point.isEqualTo(AcGePoint3d(along, 0, 0)));
        EXPECT_NEAR(exported[i].value, 0.16 * along * (10.0 - along), 1e-12);
    }
    EXPECT_EQ(exported[5].value, 4.0);
}

TEST_F(LoadExportTest, ofPointsEquallyFarApartEverySecondOneGoesFromTheFrontOn) {
    straight({{0, 0, 0}, {128, 0, 0}});
    place();
    setLongestChord(1.0);
    // Of 129 points those at odd places, and then two more of those that are two apart.
    std::vector<double> expected{0, 4};
    for (int place = 8; place <= 128; place += 2)
        expected.push_back(place);
    ASSERT_EQ(expected.size(), 63U);
    EXPECT_EQ(valuesOf(load->getVerticesForExport()), expected);
}

TEST_F(LoadExportTest, neverMoreThanSixtyThreePointsAndBothEndsStay) {
    std::vector<AcGePoint3d> points;
    for (int i = 0; i < 200; ++i)
        points.push_back({static_cast<double>(i), 0.0, i % 2 == 0 ? 0.0 : 1.0});
    straight(points);
    load->setVertices(verticesOf(std::vector<double>(200, 1.0)));
    place();
    const auto exported = load->getVerticesForExport();
    ASSERT_EQ(exported.size(), 63U);
    EXPECT_TRUE(exported.front().point.isEqualTo(points.front()));
    EXPECT_TRUE(exported.back().point.isEqualTo(points.back()));
}

TEST_F(LoadExportTest, thePointNearestToTheOneBeforeGoesFirstAndOfTwoThoseInFront) {
    // Sixty-four points two apart, but two pairs that are nearer, equally so.
    std::vector<AcGePoint3d> points;
    for (int i = 0; i < 64; ++i)
        points.push_back({2.0 * i - (i == 20 || i == 40 ? 1.0 : 0.0), 0.0, i % 2 == 0 ? 0.0 : 0.01});
    straight(points);
    load->setVertices(verticesOf(std::vector<double>(64, 1.0)));
    place();
    const auto exported = load->getVerticesForExport();
    ASSERT_EQ(exported.size(), 63U);
    EXPECT_TRUE(exported[19].point.isEqualTo(points[19]));
    EXPECT_TRUE(exported[20].point.isEqualTo(points[21]));
    EXPECT_TRUE(exported[39].point.isEqualTo(points[40]));
}

TEST_F(LoadExportTest, theGapInFrontOfTheLastPointDoesNotCount) {
    std::vector<AcGePoint3d> points;
    for (int i = 0; i < 64; ++i)
        points.push_back({2.0 * i, 0.0, i % 2 == 0 ? 0.0 : 0.01});
    points.back().x = points[62].x + 0.001;
    points[10].x -= 0.5;
    straight(points);
    load->setVertices(verticesOf(std::vector<double>(64, 1.0)));
    place();
    const auto exported = load->getVerticesForExport();
    ASSERT_EQ(exported.size(), 63U);
    EXPECT_TRUE(exported[62].point.isEqualTo(points[63]));
    EXPECT_TRUE(exported[61].point.isEqualTo(points[62]));
    EXPECT_TRUE(exported[10].point.isEqualTo(points[11]));
}

TEST_F(LoadExportTest, aValueByPlaceIsAskedForAtThePoints) {
    straight({{0, 0, 0}, {3, 0, 0}, {3, 0, 4}});
    load->setup = [](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtPosFn = [](const AcGePoint3d& point) { return point.x + 10.0 * point.z; };
    };
    place();
    EXPECT_EQ(valuesOf(load->getVerticesForExport()), (std::vector<double>{0.0, 3.0, 43.0}));
}

TEST_F(LoadExportTest, anAreaIsExportedAroundItsBoundary) {
    straight({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}});
    load->setDistribution(kAreaLoad);
    load->setup = [](orv::System&, DrawnLoad::Picture& picture) {
        picture.getValueAtPosFn = [](const AcGePoint3d& point) { return point.y; };
    };
    place();
    EXPECT_EQ(valuesOf(load->getVerticesForExport()), (std::vector<double>{0.0, 0.0, 4.0, 4.0, 0.0}));
}

TEST_F(LoadExportTest, pointsAndVolumesHaveNothingToSample) {
    straight({{0, 0, 0}, {3, 0, 0}});
    place();
    for (const auto distribution : {kPointLoad, kVolumeLoad}) {
        load->setDistribution(distribution);
        ReportRecorder reports;
        EXPECT_TRUE(load->getVerticesForExport().empty());
        EXPECT_EQ(reports.size(), 0U);
    }
}

TEST_F(LoadExportTest, aLoadWithoutASystemIsReported) {
    straight({{0, 0, 0}, {3, 0, 0}});
    ReportRecorder reports;
    EXPECT_TRUE(load->getVerticesForExport().empty());
    ASSERT_GE(reports.size(), 1U);
    EXPECT_EQ(reports.conditions().back(), "system");
}

TEST_F(LoadExportTest, anEmptyCurveHasNothingToSample) {
    place();
    ReportRecorder reports;
    EXPECT_TRUE(load->getVerticesForExport().empty());
    EXPECT_EQ(reports.size(), 0U);
}

TEST_F(LoadExportTest, whatCannotBePreparedIsReportedAndEmpty) {
    straight({{0, 0, 0}, {3, 0, 0}});
    load->setVertices({});
    place();
    ReportRecorder reports;
    EXPECT_TRUE(load->getVerticesForExport().empty());
    EXPECT_EQ(reports.conditions(), Texts{"0"});
}

TEST_F(LoadExportTest, withoutAValueFunctionItIsReportedAndEmpty) {
    straight({{0, 0, 0}, {3, 0, 0}});
    load->setup = [](orv::System&, DrawnLoad::Picture&) {};
    place();
    ReportRecorder reports;
    EXPECT_TRUE(load->getVerticesForExport().empty());
    EXPECT_EQ(reports.conditions(), Texts{"visData.getValueAtDistFn || visData.getValueAtPosFn"});
}

TEST_F(LoadExportTest, aProjectedLoadIsExportedAlongTheLoadedPartOfItsElement) {
    straight({{0, 0, 5}, {1, 0, 5}});
    load->setElement(putReference());
    load->setType(19);
    loadStretch(0.2, 0.7, kRelativeDistance);
    place();
    const auto exported = load->getVerticesForExport();
    ASSERT_EQ(exported.size(), 2U);
    EXPECT_TRUE(exported[0].point.isEqualTo(AcGePoint3d(2, 0, 0)));
    EXPECT_TRUE(exported[1].point.isEqualTo(AcGePoint3d(7, 0, 0)));
    EXPECT_EQ(valuesOf(exported), (std::vector<double>{0.0, 5.0}));
}

TEST_F(LoadExportTest, aTypeThatIsNotProjectedKeepsTheLoadsOwnCurve) {
    straight({{0, 0, 5}, {1, 0, 5}});
    load->setElement(putReference());
    load->setType(16);
    loadStretch(0.2, 0.7, kRelativeDistance);
    place();
    EXPECT_EQ(load->getExportCurveForProjectedLoad(), nullptr);
    EXPECT_TRUE(load->getVerticesForExport().at(0).point.isEqualTo(AcGePoint3d(0, 0, 5)));
}

TEST_F(LoadExportTest, theLoadedPartMayBeToldInDistances) {
    straight({{0, 0, 5}, {1, 0, 5}});
    load->setElement(putReference());
    load->setType(17);
    loadStretch(1.5, 4.0, kAbsoluteDistance);
    place();
    const auto curve = load->getExportCurveForProjectedLoad();
    ASSERT_NE(curve, nullptr);
    EXPECT_NEAR(curve->startPoint().x, 1.5, 1e-9);
    EXPECT_NEAR(curve->endPoint().x, 4.0, 1e-9);
}

TEST_F(LoadExportTest, aPartOfNoLengthIsReportedAndTheLoadsOwnCurveIsTaken) {
    straight({{0, 0, 5}, {1, 0, 5}});
    load->setElement(putReference());
    load->setType(18);
    loadStretch(0.5, 0.5, kRelativeDistance);
    place();
    ReportRecorder reports;
    const auto exported = load->getVerticesForExport();
    EXPECT_EQ(reports.conditions(),
              (Texts{"refCrv->createCurve(param1,param2,newCrv)", "tempCurveForProjectedLoads.get()"}));
    ASSERT_EQ(exported.size(), 2U);
    EXPECT_TRUE(exported[0].point.isEqualTo(AcGePoint3d(0, 0, 5)));
}

TEST_F(LoadExportTest, anElementThatIsNoCurveIsReported) {
    registerTestElement();
    straight({{0, 0, 5}, {1, 0, 5}});
    load->setElement(putEntity(drawing.db, new TestElement));
    load->setType(18);
    loadStretch(0.0, 1.0, kRelativeDistance);
    place();
    ReportRecorder reports;
    EXPECT_EQ(load->getExportCurveForProjectedLoad(), nullptr);
    EXPECT_EQ(reports.conditions(), Texts{"refCrv"});
}

TEST_F(LoadExportTest, anElementThatIsErasedIsReported) {
    straight({{0, 0, 5}, {1, 0, 5}});
    const AcDbObjectId reference = putReference();
    eraseObject(reference);
    load->setElement(reference);
    load->setType(18);
    loadStretch(0.0, 1.0, kRelativeDistance);
    place();
    ReportRecorder reports;
    EXPECT_EQ(load->getExportCurveForProjectedLoad(), nullptr);
    EXPECT_EQ(reports.conditions(), Texts{"refCrv"});
}

TEST_F(LoadExportTest, aProjectedLoadInSpaceHasNoSuchCurve) {
    straight({{0, 0, 5}, {1, 0, 5}});
    load->setType(18);
    place();
    ReportRecorder reports;
    EXPECT_EQ(load->getExportCurveForProjectedLoad(), nullptr);
    EXPECT_EQ(load->getVerticesForExport().size(), 2U);
    EXPECT_EQ(reports.size(), 0U);
}

TEST_F(LoadExportTest, aProjectedLoadWithoutVerticesHasNoLoadedPart) {
    straight({{0, 0, 5}, {1, 0, 5}});
    load->setElement(putReference());
    load->setType(18);
    load->setVertices({});
    place();
    ReportRecorder reports;
    EXPECT_EQ(load->getExportCurveForProjectedLoad(), nullptr);
    EXPECT_EQ(reports.size(), 0U);
    EXPECT_TRUE(load->getVerticesForExport().empty());
    EXPECT_EQ(reports.conditions(), (Texts{"tempCurveForProjectedLoads.get()", "0"}));
}

TEST_F(LoadExportTest, theEndOfAClosedCurveHasTheValueOfItsStart) {
    straight({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 0, 0}});
    place();
    const auto exported = load->getVerticesForExport();
    ASSERT_EQ(exported.size(), 4U);
    // A point tells no distance beyond the first one that it has.
    EXPECT_EQ(exported.back().value, 0.0);
}
