// Loads on curves that do not tell how long they are, or where a point is.

#include "dbx/elem/load_draw.h"
#include "dbx/elem/load_sampling.h"
#include "module/dbx/elem/drawn_loads.h"
#include "support/report_recorder.h"
#include "support/system_records.h"
#include "support/test_element.h"

#include <gtest/gtest.h>

using namespace testing_support;
using orv::elem::detail::LoadVisualizationData;

namespace {

// A member of somebody else's class, that fails where it is asked to.
class FailingMember : public LoadMember {
public:
    bool hasStart = true;
    bool hasEnd = true;
    bool hasDistances = true;
    bool hasPlaces = true;

    Acad::ErrorStatus getStartParam(double& param) const override {
        return hasStart ? LoadMember::getStartParam(param) : Acad::eNotImplementedYet;
    }
    Acad::ErrorStatus getEndParam(double& param) const override {
        return hasEnd ? LoadMember::getEndParam(param) : Acad::eNotImplementedYet;
    }
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override {
        return hasDistances ? LoadMember::getDistAtParam(param, dist) : Acad::eNotImplementedYet;
    }
    Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override {
        return hasPlaces ? LoadMember::getDistAtPoint(point, dist) : Acad::eInvalidInput;
    }
};

// In a drawing with a store, and held open.
class LoadFailingCurveTest : public testing::Test {
protected:
    LoadFailingCurveTest() {
        registerLoadMember();
        putSystem(drawing.db, L"ASDWG", 0);
        auto* const made = new FailingMember;
        orv::CurveSegment segment;
        EXPECT_TRUE(orv::CurveSegment::line({0, 0, 0}, {8, 0, 0}, segment));
        EXPECT_EQ(made->append(segment), Acad::eOk);
        made->addPlugin(load);
        load->setDistribution(orv::elem::kLineLoad);
        load->setVertices(verticesOf({1, 1}));
        load->setup = [](orv::System&, DrawnLoad::Picture& picture) {
            picture.getValueAtDistFn = [](double distance) { return distance + 1.0; };
        };
        const AcDbObjectId id = putEntity(drawing.db, made);
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
        member = dynamic_cast<FailingMember*>(entity);
        member->setNodDatabaseId(entryAt(drawing.db.namedObjectsDictionaryId(), {L"KELMORAN", L"ASDWG"}),
                                 L"ASDWG");
        system.visSettings().setSize(3, 2.0);
        member->system = &system;
    }
    ~LoadFailingCurveTest() override { member->close(); }

    StoreDrawing drawing;
    FilledSystem system;
    boost::shared_ptr<DrawnLoad> load = boost::make_shared<DrawnLoad>();
    FailingMember* member = nullptr;
};

void expectTwoArrowsAtTheStart(const DrawnLoad& load) {
    ASSERT_EQ(load.laidOut.vertices.size(), 2U);
    for (const auto& arrow : load.laidOut.vertices) {
        EXPECT_EQ(arrow.distance, 0.0);
        EXPECT_TRUE(arrow.point.isEqualTo(AcGePoint3d(0, 0, 0)));
        EXPECT_EQ(arrow.value, 1.0);
        EXPECT_TRUE(arrow.base.isEqualTo(AcGePoint3d(0, 0, 1)));
    }
}

} // namespace

TEST_F(LoadFailingCurveTest, aCurveThatTellsNoLengthHasBothArrowsAtItsStart) {
    bool FailingMember::*const answers[] = {&FailingMember::hasStart, &FailingMember::hasEnd,
                                            &FailingMember::hasDistances};
    for (const auto answer : answers) {
        member->*answer = false;
        ReportRecorder reports;
        load->requestRefreshGraphics();
        embedded::draw(*member, fromFront());
        expectTwoArrowsAtTheStart(*load);
        EXPECT_EQ(reports.size(), 0U);
        member->*answer = true;
    }
    load->requestRefreshGraphics();
    embedded::draw(*member, fromFront());
    EXPECT_EQ(load->laidOut.vertices.size(), 5U);
}

TEST_F(LoadFailingCurveTest, aPointThatTheCurveDoesNotKnowIsReportedAndHasTheValueOfTheStart) {
    member->hasPlaces = false;
    ReportRecorder reports;
    const auto exported = load->getVerticesForExport();
    ASSERT_GE(exported.size(), 2U);
    EXPECT_TRUE(exported.back().point.isEqualTo(AcGePoint3d(8, 0, 0)));
    for (const auto& vertex : exported)
        EXPECT_EQ(vertex.value, 1.0);
    ASSERT_EQ(reports.conditions(), Texts(exported.size(), "es == es2"));
    for (std::size_t i = 0; i < reports.size(); ++i)
        EXPECT_EQ(reports.at(i).values.at(0).value, "visData.visCurve->getDistAtPoint(pt,distance)");
    member->hasPlaces = true;
    EXPECT_EQ(load->getVerticesForExport().back().value, 9.0);
}

TEST_F(LoadFailingCurveTest, aLoadedPartOfACurveThatTellsNoLengthIsReported) {
    auto* const reference = new FailingMember;
    orv::CurveSegment segment;
    ASSERT_TRUE(orv::CurveSegment::line({0, 0, 0}, {10, 0, 0}, segment));
    ASSERT_EQ(reference->append(segment), Acad::eOk);
    reference->hasDistances = false;
    load->setElement(putEntity(drawing.db, reference));
    load->setType(18);
    std::deque<orv::elem::LoadVertex> vertices = verticesOf({1, 1});
    vertices.back().position = 1.0;
    load->setVertices(vertices);
    ReportRecorder reports;
    EXPECT_EQ(load->getExportCurveForProjectedLoad(), nullptr);
    EXPECT_EQ(reports.conditions(), Texts{"refCrv->createCurve(param1,param2,newCrv)"});
}

// Nobody but the load calls these; a picture that is not filled yet is theirs to refuse.
TEST_F(LoadFailingCurveTest, aPictureWithoutACurveIsReportedAndStays) {
    using Sample = void (*)(const orv::System&, LoadVisualizationData&);
    const Sample samples[] = {&orv::elem::detail::sampleAlongCurve, &orv::elem::detail::sampleForExport};
    for (const Sample sample : samples) {
        LoadVisualizationData picture;
        picture.getValueAtDistFn = [](double) { return 1.0; };
        picture.vertices.resize(3);
        ReportRecorder reports;
        sample(system, picture);
        EXPECT_EQ(reports.conditions(), Texts{"visData.visCurve"});
        EXPECT_EQ(picture.vertices.size(), 3U);
    }
}

TEST_F(LoadFailingCurveTest, preparingAPictureWithoutACurveIsReported) {
    LoadVisualizationData picture;
    picture.flags = 77;
    ReportRecorder reports;
    EXPECT_FALSE(orv::elem::detail::prepare(system, *load, picture));
    EXPECT_EQ(reports.conditions(), Texts{"visData.visCurve"});
    EXPECT_EQ(picture.flags, 77U);
}

TEST_F(LoadFailingCurveTest, aCurveWithoutPointsForExportIsReported) {
    LoadMember empty;
    LoadVisualizationData picture;
    picture.visCurve = &empty;
    picture.getValueAtDistFn = [](double) { return 1.0; };
    picture.vertices.resize(3);
    ReportRecorder reports;
    orv::elem::detail::sampleForExport(system, picture);
    ASSERT_FALSE(reports.conditions().empty());
    EXPECT_EQ(reports.conditions().back(), "points.length() >= 2");
    EXPECT_TRUE(picture.vertices.empty());
}
