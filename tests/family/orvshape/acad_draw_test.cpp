#include "orvshape/acad_draw.h"

#include "curve_fixture.h"
#include "dbapserv.h"
#include "embedded/display_list.h"
#include "geplane.h"
#include "host/gi/sketch.h"

#include <cmath>

using embedded::Primitive;

namespace {

class AcadDraw : public CurveDrawing {
protected:
    embedded::DisplayList world(const std::function<void(orv::AcadWorldDraw&)>& draw) {
        Sketch* sketch = new Sketch;
        sketch->world = [&](AcGiWorldDraw& wd) {
            orv::AcadWorldDraw over(wd);
            EXPECT_EQ(&over.worldDraw(), &wd);
            EXPECT_EQ(&over.commonDraw(), &wd);
            EXPECT_EQ(&over.subEntityTraits(), &wd.subEntityTraits());
            draw(over);
            return true;
        };
        return drawn(sketch, {});
    }
    embedded::DisplayList viewport(const std::function<void(orv::AcadViewportDraw&)>& draw,
                                   const embedded::ViewParameters& view) {
        Sketch* sketch = new Sketch;
        sketch->world = [](AcGiWorldDraw&) { return false; };
        sketch->viewport = [&](AcGiViewportDraw& vd) {
            orv::AcadViewportDraw over(vd);
            EXPECT_EQ(&over.viewportDraw(), &vd);
            draw(over);
        };
        return drawn(sketch, view);
    }

private:
    embedded::DisplayList drawn(Sketch* sketch, const embedded::ViewParameters& view) {
        add(sketch);
        return embedded::draw(*m_database, view);
    }
};

} // namespace

TEST_F(AcadDraw, LineIsDrawnAndTellsWhenToStop) {
    bool isToStop = true;
    const auto list = world([&](orv::AcadWorldDraw& draw) { isToStop = draw.line({1, 2, 3}, {4, 5, 6}); });
    EXPECT_FALSE(isToStop);
    EXPECT_EQ(told(list), (std::vector<std::string>{"polyline (1 2 3) (4 5 6)"}));

    Sketch many;
    std::vector<bool> answers;
    many.world = [&](AcGiWorldDraw& wd) {
        const orv::AcadWorldDraw draw(wd);
        for (int i = 0; i < 3; ++i)
            answers.push_back(draw.line({0, 0, 0}, {1, 0, 0}));
        return true;
    };
    embedded::ViewParameters view;
    view.mostPrimitives = 1;
    embedded::draw(many, view);
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_TRUE(answers[2]);
}

TEST_F(AcadDraw, CirclesAndPolygonsAreDrawnAndTellWhenToStop) {
    const auto list = world([](orv::AcadWorldDraw& draw) {
        EXPECT_FALSE(draw.circle({1, 2, 3}, 4.0, {0, 5, 0}));
        EXPECT_FALSE(draw.polygon({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    });
    EXPECT_EQ(told(list), (std::vector<std::string>{"circle (1 2 3) radius 4 normal (0 1 0)",
                                                    "polygon (0 0 0) (1 0 0) (0 1 0)"}));
    Sketch many;
    many.world = [](AcGiWorldDraw& wd) {
        const orv::AcadWorldDraw draw(wd);
        draw.line({0, 0, 0}, {1, 0, 0});
        EXPECT_TRUE(draw.circle({1, 2, 3}, 4.0, {0, 5, 0}));
        EXPECT_TRUE(draw.polygon({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
        return true;
    };
    embedded::ViewParameters view;
    view.mostPrimitives = 1;
    embedded::draw(many, view);
}

TEST_F(AcadDraw, CirclesAndPolygonsOfNothingDrawNothing) {
    const auto list = world([](orv::AcadWorldDraw& draw) {
        EXPECT_FALSE(draw.circle({1, 2, 3}, 0.0, {0, 0, 1}));
        EXPECT_FALSE(draw.circle({1, 2, 3}, -1.0, {0, 0, 1}));
        EXPECT_FALSE(draw.circle({1, 2, 3}, std::nan(""), {0, 0, 1}));
        EXPECT_FALSE(draw.circle({1, 2, 3}, 1.0, {0, 0, 0}));
        EXPECT_FALSE(draw.polygon({}));
        EXPECT_FALSE(draw.polygon({{0, 0, 0}}));
    });
    EXPECT_TRUE(list.primitives.empty());
}

TEST_F(AcadDraw, LineTypeIsThatOfTheNameInTheDrawing) {
    AcDbLinetypeTable* table = nullptr;
    ASSERT_EQ(acdbOpenObject(table, m_database->linetypeTableId(), AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbLinetypeTableRecord;
    record->setName(L"DOTTED");
    AcDbObjectId dotted;
    ASSERT_EQ(table->add(dotted, record), Acad::eOk);
    record->close();
    table->close();
    bool isFound = false;
    bool isUnknownFound = true;
    const auto list = world([&](orv::AcadWorldDraw& draw) {
        isFound = draw.lineType(L"dotted");
        isUnknownFound = draw.lineType(L"no such type");
        draw.line({0, 0, 0}, {1, 0, 0});
    });
    EXPECT_TRUE(isFound);
    EXPECT_FALSE(isUnknownFound);
    EXPECT_EQ(list.primitives.at(0).traits.lineType, dotted);
}

TEST_F(AcadDraw, TextStandsWhereItsAttachmentSays) {
    struct Row {
        int attachment;
        double right, up; // of the point, as shares of width and height
    };
    const Row rows[] = {{1, 0, 1},   {2, 0.5, 1}, {3, 1, 1},   {4, 0, 0.5}, {5, 0.5, 0.5},
                        {6, 1, 0.5}, {7, 0, 0},   {8, 0.5, 0}, {9, 1, 0}};
    for (const Row& row : rows) {
        double width = 0.0;
        Sketch sketch;
        sketch.world = [&](AcGiWorldDraw& wd) {
            orv::AcadWorldDraw draw(wd);
            draw.textSize(2.0);
            draw.textAttachment(row.attachment);
            EXPECT_EQ(draw.textAttachment(), row.attachment);
            width = draw.textWidth(L"12.5 kN");
            EXPECT_FALSE(draw.text({10, 20, 0}, L"12.5 kN", {0, 3, 0}));
            return true;
        };
        const auto list = embedded::draw(sketch);
        ASSERT_EQ(list.primitives.size(), 1u);
        const Primitive& text = list.primitives[0];
        EXPECT_EQ(text.text, L"12.5 kN");
        EXPECT_EQ(text.height, 2.0);
        EXPECT_GT(width, 2.0);
        expectNear(text.direction, {0, 1, 0});
        // Along Y, up is to -X.
        expectNear(text.points.at(0), {10 + 2.0 * row.up, 20 - width * row.right, 0});
    }
}

TEST_F(AcadDraw, TextWithoutLettersOrDirectionDrawsNothing) {
    const auto list = world([](orv::AcadWorldDraw& draw) {
        EXPECT_FALSE(draw.text({0, 0, 0}, L"", {1, 0, 0}));
        EXPECT_FALSE(draw.text({0, 0, 0}, L"a", {0, 0, 0}));
        EXPECT_FALSE(draw.text({0, 0, 0}, L"a", {1, 0, 0}, {0, 0, 0}));
    });
    EXPECT_TRUE(list.primitives.empty());
}

TEST_F(AcadDraw, TextAlongItsNormalIsNotHandedToTheHost) {
    Sketch sketch;
    std::vector<bool> answers;
    sketch.world = [&](AcGiWorldDraw& wd) {
        orv::AcadWorldDraw draw(wd);
        draw.line({0, 0, 0}, {1, 0, 0});
        draw.line({0, 0, 0}, {1, 0, 0});
        // The host, which is to be asked no more, answers that whoever draws is to stop.
        answers = {draw.text({0, 0, 0}, L"a", {1, 0, 0}), draw.text({0, 0, 0}, L"a", {0, 0, 5}),
                   draw.text({0, 0, 0}, L"a", {0, 0, -2}),
                   draw.text({0, 0, 0}, L"a", {1, 1, 0}, {-3, -3, 0})};
        return true;
    };
    embedded::ViewParameters view;
    view.mostPrimitives = 1;
    embedded::draw(sketch, view);
    EXPECT_EQ(answers, (std::vector<bool>{true, false, false, false}));
}

TEST_F(AcadDraw, SettingsThatMakeNoSenseAreLeftAlone) {
    world([](orv::AcadWorldDraw& draw) {
        EXPECT_EQ(draw.textSize(), 1.0);
        EXPECT_EQ(draw.textAttachment(), 7);
        draw.textSize(0.0);
        draw.textSize(-1.0);
        draw.textSize(std::nan(""));
        draw.textAttachment(0);
        draw.textAttachment(10);
        EXPECT_EQ(draw.textSize(), 1.0);
        EXPECT_EQ(draw.textAttachment(), 7);
    });
}

TEST_F(AcadDraw, ViewIsSeenInThreeDirections) {
    embedded::ViewParameters view;
    view.direction = {0, -1, 0}; // from the front: X to the right, Z up
    viewport(
        [](orv::AcadViewportDraw& draw) {
            expectNear(draw.viewDir(), {0, -1, 0});
            expectNear(draw.viewRight(), {1, 0, 0});
            expectNear(draw.viewUp(), {0, 0, 1});
        },
        view);
}

TEST_F(AcadDraw, TextInAViewportFacesTheViewer) {
    embedded::ViewParameters view;
    view.direction = {0, -1, 0};
    const auto list = viewport(
        [](orv::AcadViewportDraw& draw) {
            draw.textAttachment(5);
            draw.text({0, 0, 0}, L"x", draw.viewRight());
        },
        view);
    ASSERT_EQ(list.primitives.size(), 1u);
    expectNear(list.primitives[0].normal, {0, -1, 0});
    EXPECT_TRUE(list.primitives[0].ofViewport);
    EXPECT_NEAR(list.primitives[0].points.at(0).z, -0.5, 1e-9);
}

TEST_F(AcadDraw, TextInAViewportFacesTheViewerFromAMirroredBlockToo) {
    embedded::ViewParameters view;
    view.direction = {0, 0, 1};
    const auto list = viewport(
        [](orv::AcadViewportDraw& draw) {
            draw.geometry().pushModelTransform(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane));
            draw.text({5, 0, 0}, L"x", draw.viewRight());
            draw.geometry().popModelTransform();
        },
        view);
    ASSERT_EQ(list.primitives.size(), 1u);
    expectNear(list.primitives[0].direction, {1, 0, 0});
    expectNear(list.primitives[0].normal, {0, 0, 1});
}

TEST_F(AcadDraw, DirectionsOfTheViewAreThoseInsideOfATurnedBlock) {
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(m_database->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* block = new AcDbBlockTableRecord;
    block->setName(L"TURNED");
    AcDbObjectId blockId, inside;
    ASSERT_EQ(table->add(blockId, block), Acad::eOk);
    auto* sketch = new Sketch;
    std::vector<AcGeVector3d> seen;
    sketch->world = [](AcGiWorldDraw&) { return false; };
    sketch->viewport = [&](AcGiViewportDraw& vd) {
        const orv::AcadViewportDraw draw(vd);
        seen = {draw.viewRight(), draw.viewUp(), draw.viewDir()};
    };
    ASSERT_EQ(block->appendAcDbEntity(inside, sketch), Acad::eOk);
    sketch->close();
    block->close();
    table->close();
    auto* reference = new AcDbBlockReference({5, 0, 0}, blockId);
    ASSERT_EQ(reference->setRotation(kPi / 2), Acad::eOk);
    ASSERT_EQ(reference->setScaleFactors({3, 3, 3}), Acad::eOk);
    add(reference);
    embedded::draw(*m_database);
    ASSERT_EQ(seen.size(), 3u);
    expectNear(seen[0], {0, -1, 0});
    expectNear(seen[1], {1, 0, 0});
    expectNear(seen[2], {0, 0, 1});
}
