// Loads that have a curve of their own: from the front end, or from the load entity, with whose fields it
// comes.

#include "dbx/binary_in_archive.h"
#include "dbx/binary_out_archive.h"
#include "dbx/elem/plugin_registry.h"
#include "module/dbx/elem/drawn_loads.h"
#include "module/dbx/elem/legacy_loads.h"
#include "orvshape/acad_draw.h"

#include <gtest/gtest.h>

using namespace testing_support;
using embedded::PrimitiveKind;

namespace {

boost::shared_ptr<orv::elem::ElementBase::IPlugin> createDrawnLoad() {
    return boost::make_shared<DrawnLoad>();
}

// Draws a load whose element draws nothing.
class Pencil : public AcDbEntity {
public:
    DrawnLoad* load = nullptr;
    FilledSystem system;
    bool drawsWorld = true;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override {
        orv::AcadWorldDraw draw(*worldDraw);
        if (drawsWorld)
            load->onWorldDraw(draw, system);
        return false;
    }
    void subViewportDraw(AcGiViewportDraw* viewportDraw) override {
        orv::AcadViewportDraw draw(*viewportDraw);
        load->onViewportDraw(draw, system);
    }
};

class LoadOwnCurveTest : public testing::Test {
protected:
    LoadOwnCurveTest() {
        static const bool s_isRegistered = [] {
            orv::elem::ElementPluginRegistry::registerCreator("tests.drawn_load", &createDrawnLoad);
            return true;
        }();
        static_cast<void>(s_isRegistered);
        registerTestElement();
        // A line of two and half a circle about (2, 1, 0).
        Lines record = kPlainLoadRecord;
        record.front() = "String tests.drawn_load";
        readAllFields(entity,
                      joined({{"UInt32 3"}, loadElement(1, record), kActsOnNothing, kCurve, kLoadEntityEnd}));
        load = &pluginAt<DrawnLoad>(entity, 0);
        load->setDistribution(orv::elem::kLineLoad);
        load->setVertices(verticesOf(std::vector<double>{1, 1}));
        load->setTextAt(0, L"q");
        load->drawTexts = [this](orv::AcadViewportDraw& vd, orv::System& system) {
            load->_draw_lineload_text_at(vd, system, 1.0, 0);
        };
        pencil.load = load;
        pencil.system.visSettings().setSize(3, 1.0);
    }

    std::size_t texts(const embedded::DisplayList& list) const {
        std::size_t count = 0;
        for (const auto& primitive : list.primitives)
            count += primitive.kind == PrimitiveKind::kText ? 1 : 0;
        return count;
    }

    ORV_Load entity;
    DrawnLoad* load = nullptr;
    Pencil pencil;
};

} // namespace

TEST_F(LoadOwnCurveTest, aLoadWhoseElementIsNoCurveIsDrawnAlongItsOwnOne) {
    const auto list = embedded::draw(pencil);
    const auto& arrows = load->laidOut.vertices;
    ASSERT_EQ(arrows.size(), 6U); // on a length of 5.14
    EXPECT_TRUE(arrows.front().point.isEqualTo(AcGePoint3d(0, 0, 0)));
    EXPECT_NEAR(arrows.back().point.distanceTo({2, 2, 0}), 0.0, 1e-9);
    EXPECT_EQ(worldPart(list).size(), 11U);
    EXPECT_EQ(texts(list), 1U);
}

TEST_F(LoadOwnCurveTest, aFrontEndGivesALoadItsCurve) {
    boost::shared_ptr<ORV_SegmentedCurve> beam = boost::make_shared<ORV_SegmentedCurve>();
    orv::CurveSegment segment;
    ASSERT_TRUE(orv::CurveSegment::line({0, 3, 0}, {4, 3, 0}, segment));
    ASSERT_EQ(beam->append(segment), Acad::eOk);
    const auto loaded = boost::make_shared<DrawnLoad>();
    TestElement element;
    element.addPlugin(loaded);
    loaded->setDistribution(orv::elem::kLineLoad);
    loaded->setVertices(verticesOf(std::vector<double>{1, 1}));
    pencil.load = loaded.get();
    EXPECT_TRUE(worldPart(embedded::draw(pencil)).empty());
    loaded->setOwnCurve(beam);
    embedded::draw(pencil);
    ASSERT_EQ(loaded->laidOut.vertices.size(), 5U);
    EXPECT_TRUE(loaded->laidOut.vertices[1].point.isEqualTo(AcGePoint3d(1, 3, 0)));
    EXPECT_EQ(loaded->getOwnCurve(), beam);
    // The picture does not keep the curve.
    EXPECT_EQ(beam.use_count(), 2);
    loaded->setOwnCurve({});
    EXPECT_EQ(beam.use_count(), 1);
    EXPECT_TRUE(worldPart(embedded::draw(pencil)).empty());
}

TEST_F(LoadOwnCurveTest, anotherCurveIsLaidOutAnew) {
    embedded::draw(pencil);
    const int layouts = load->layouts;
    load->setOwnCurve(boost::make_shared<ORV_SegmentedCurve>());
    orv::CurveSegment segment;
    ASSERT_TRUE(orv::CurveSegment::line({0, 0, 7}, {0, 3, 7}, segment));
    ASSERT_EQ(load->getOwnCurve()->append(segment), Acad::eOk);
    EXPECT_TRUE(load->refreshGraphics());
    pencil.drawsWorld = false;
    EXPECT_EQ(texts(embedded::draw(pencil)), 0U) << "the old picture's curve is gone";
    pencil.drawsWorld = true;
    EXPECT_EQ(texts(embedded::draw(pencil)), 1U);
    EXPECT_EQ(load->layouts, layouts + 1);
    EXPECT_EQ(load->laidOut.vertices.size(), 4U);
    EXPECT_TRUE(load->laidOut.vertices.back().point.isEqualTo(AcGePoint3d(0, 3, 7)));
}

TEST_F(LoadOwnCurveTest, aLoadThatLostItsCurveHasNothingToPutATextTo) {
    embedded::draw(pencil);
    // Read again, as by an undo: a load's own data have no curve.
    orv::serialization::BinaryOutArchive saved;
    ASSERT_TRUE(load->save(saved));
    orv::serialization::BinaryInArchive body(saved.buffer().data(), saved.offset());
    body.softPointers() = saved.softPointers();
    ASSERT_TRUE(load->load(body, 6));
    pencil.drawsWorld = false;
    EXPECT_EQ(texts(embedded::draw(pencil)), 0U);
    pencil.drawsWorld = true;
    EXPECT_TRUE(worldPart(embedded::draw(pencil)).empty());
}
