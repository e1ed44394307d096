#include "ratio.h"

#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "dbx/doc/system.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_distribution_functions.h"
#include "dbx/elem/load_visualization_data.h"
#include "embedded/display_list.h"
#include "embedded/host_start.h"
#include "orvshape/acad_draw.h"
#include "orvshape/segmented_curve.h"
#include "rxclass.h"

#include <boost/bind/bind.hpp>
#include <boost/make_shared.hpp>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <vector>

// A drawing of ten thousand line loads of 51 arrows each, drawn for the first time and again, beside writing
// as many primitives straight into a display list.

namespace {

constexpr int kLoads = 10000;
constexpr int kArrows = 51;
constexpr double kLength = 100.0;

// A line load as a front end has it: linear between two values.
class BenchLoad : public orv::elem::GenericLoad {
public:
    const std::string& pluginId() const override {
        static const std::string s_id = "bench.load";
        return s_id;
    }
    void onEdited() override {}

protected:
    void setupInterpolationData(orv::System&, orv::elem::detail::LoadVisualizationData& data) override {
        data.getValueAtDistFn =
            boost::bind(&orv::elem::_getValueAtDist_linear, kLength, 1.0, 3.0, boost::placeholders::_1);
    }
};

class BenchMember : public ORV_SegmentedCurve, public orv::elem::ElementBase {
public:
    ACRX_DECLARE_MEMBERS(BenchMember);
    BenchMember() : ElementBase(static_cast<AcDbObject&>(*this)) {}

    orv::System* system = nullptr;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        const Acad::ErrorStatus es = ORV_SegmentedCurve::dwgInFields(filer);
        return es != Acad::eOk ? es : ElementBase::dwgInFields(*filer);
    }
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        const Acad::ErrorStatus es = ORV_SegmentedCurve::dwgOutFields(filer);
        return es != Acad::eOk ? es : ElementBase::dwgOutFields(*filer);
    }
    void acdb_assertWriteEnabled() override { assertWriteEnabled(); }
    void acdb_assertReadEnabled() const override { assertReadEnabled(); }
    AcRxClass* acdb_isA() const override { return isA(); }
    int acdb_isNewObject() const override { return isNewObject(); }
    AcDbObjectId acdb_id() override { return objectId(); }

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override {
        triggerOnPreWorldDraw(*worldDraw);
        orv::AcadWorldDraw draw(*worldDraw);
        triggerOnWorldDraw(draw, *system);
        return false;
    }
    void subViewportDraw(AcGiViewportDraw* viewportDraw) override {
        triggerOnPreViewportDraw(*viewportDraw);
        orv::AcadViewportDraw draw(*viewportDraw);
        triggerOnViewportDraw(draw, *system);
    }
};

ACRX_DXF_DEFINE_MEMBERS(BenchMember, ORV_SegmentedCurve, AcDb::kDHL_1015, 0, 0, BENCHMEMBER, LoadsBench)

class LoadDrawing {
public:
    LoadDrawing() : m_db((start(), std::make_unique<AcDbDatabase>(true))) {
        acdbHostApplicationServices()->setWorkingDatabase(m_db.get());
        m_db->disableUndoRecording(true);
        m_system.visSettings().setSize(3, kLength / (kArrows - 1));
        AcDbBlockTable* blocks = nullptr;
        AcDbBlockTableRecord* space = nullptr;
        if (m_db->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk ||
            blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite) != Acad::eOk)
            std::abort();
        blocks->close();
        for (int i = 0; i < kLoads; ++i)
            m_members.push_back(addMember(*space, i));
        space->close();
    }

    // As after reading the drawing: nothing is laid out yet.
    void renewLoads() {
        for (const AcDbObjectId& id : m_members) {
            AcDbEntity* entity = nullptr;
            if (acdbOpenAcDbEntity(entity, id, AcDb::kForWrite) != Acad::eOk)
                std::abort();
            auto& member = dynamic_cast<BenchMember&>(*entity);
            member.detachPlugin(member.getFirstPlugin("bench.load"));
            equip(member);
            member.close();
        }
    }

    embedded::DisplayList draw() const {
        embedded::ViewParameters view;
        view.direction = -AcGeVector3d::kYAxis;
        return embedded::draw(*m_db, view);
    }

private:
    static void start() {
        embedded::startHost();
        BenchMember::rxInit();
        acrxBuildClassHierarchy();
    }

    AcDbObjectId addMember(AcDbBlockTableRecord& space, int index) {
        auto* const member = new BenchMember;
        AcDbObjectId id;
        if (space.appendAcDbEntity(id, member) != Acad::eOk)
            std::abort();
        member->setDatabaseDefaults(m_db.get());
        orv::CurveSegment segment;
        orv::CurveSegment::line({0.0, 0.0, 10.0 * index}, {kLength, 0.0, 10.0 * index}, segment);
        member->append(segment);
        member->system = &m_system;
        equip(*member);
        member->close();
        return id;
    }

    void equip(BenchMember& member) {
        const auto load = boost::make_shared<BenchLoad>();
        member.addPlugin(load);
        load->setDistribution(orv::elem::kLineLoad);
        load->setVertices(std::deque<orv::elem::LoadVertex>(2));
    }

    std::unique_ptr<AcDbDatabase> m_db;
    orv::System m_system;
    std::vector<AcDbObjectId> m_members;
};

LoadDrawing& drawing() {
    static LoadDrawing s_drawing;
    return s_drawing;
}

using Clock = std::chrono::steady_clock;

void finish(benchmark::State& state, const embedded::DisplayList& list, Clock::time_point begin) {
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
    // Stems, joins and heads.
    if (list.primitives.size() != std::size_t{kLoads} * (3 * kArrows - 1))
        std::abort();
}

void drawLoadsFirst(benchmark::State& state) {
    drawing();
    for (auto _ : state) {
        drawing().renewLoads();
        const auto begin = Clock::now();
        const embedded::DisplayList list = drawing().draw();
        finish(state, list, begin);
    }
}
BENCHMARK(drawLoadsFirst)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1)->Repetitions(5);

void drawLoadsAgain(benchmark::State& state) {
    drawing().draw();
    for (auto _ : state) {
        const auto begin = Clock::now();
        const embedded::DisplayList list = drawing().draw();
        finish(state, list, begin);
    }
}
BENCHMARK(drawLoadsAgain)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1)->Repetitions(5);

embedded::Primitive made(embedded::PrimitiveKind kind) {
    embedded::Primitive primitive;
    primitive.kind = kind;
    primitive.traits.trueColour = AcCmEntityColor(229, 0, 0);
    primitive.ofViewport = kind == embedded::PrimitiveKind::kPolygon;
    return primitive;
}

// Two points for each line, three for each head, and everything else as it is for all of them.
void writeIntoList(benchmark::State& state) {
    for (auto _ : state) {
        const auto begin = Clock::now();
        embedded::DisplayList list;
        const auto write = [&list](embedded::PrimitiveKind kind, const std::vector<AcGePoint3d>& points) {
            embedded::Primitive primitive = made(kind);
            primitive.points = points;
            list.primitives.push_back(std::move(primitive));
        };
        std::vector<AcGePoint3d> line(2);
        std::vector<AcGePoint3d> head(3);
        for (int load = 0; load < kLoads; ++load) {
            for (int i = 0; i < 2 * kArrows - 1; ++i) {
                line[0].x = line[1].x = i;
                write(embedded::PrimitiveKind::kPolyline, line);
            }
            for (int i = 0; i < kArrows; ++i) {
                head[0].x = head[1].x = head[2].x = i;
                write(embedded::PrimitiveKind::kPolygon, head);
            }
        }
        finish(state, list, begin);
    }
}
BENCHMARK(writeIntoList)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1)->Repetitions(5);

const Comparison comparisons[] = {
    {"first drawing of 10,000 line loads, against their lines alone", "drawLoadsFirst", "writeIntoList", 3.0},
    {"drawing them again, against their lines alone", "drawLoadsAgain", "writeIntoList", 1.5},
};

} // namespace
