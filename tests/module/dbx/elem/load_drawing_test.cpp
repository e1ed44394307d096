// What loads draw: stems, heads, texts, and what is reported.

#include "module/dbx/elem/loaded_shapes.h"
#include "orvshape/acad_draw.h"
#include "support/beep_recorder.h"
#include "support/report_recorder.h"
#include "support/test_element.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace testing_support;
using embedded::PrimitiveKind;
using orv::elem::kAreaLoad;
using orv::elem::kLineLoad;
using orv::elem::kPointLoad;
using Primitives = std::vector<embedded::Primitive>;

namespace {

std::size_t count(const Primitives& primitives, PrimitiveKind kind) {
    std::size_t counted = 0;
    for (const auto& primitive : primitives)
        counted += primitive.kind == kind ? 1 : 0;
    return counted;
}

class LoadDrawingTest : public testing::Test {
protected:
    LoadDrawingTest() { loaded.system.visSettings().setSwitch(151, 0); }
    ~LoadDrawingTest() override { orv::elem::GenericLoad::setAttachmentCallback({}); }

    void straight(double value = 1.0) {
        loaded.through({{0, 0, 0}, {8, 0, 0}}).values([value](double, double) { return value; });
    }
    // A point load at (1, 2, 3): five drawing units long with a value of 25.
    void point(double value = 25.0, const std::wstring& text = L"") {
        loaded->setDistribution(kPointLoad);
        loaded->setVertices(vertexAt({1, 2, 3}, value, text));
    }
    void nameElement(const std::wstring& name) { loaded.member.setProperties().add(30001U, name); }

    LoadedMember loaded;
};

} // namespace

TEST_F(LoadDrawingTest, aLoadIsDrawnInItsColour) {
    straight();
    for (const int type : {50, 51, 53, 56, 57}) {
        LoadedMember one;
        AcDbDatabase db(true);
        one->setElement(db.layerZero());
        one.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double) { return 1.0; });
        one->setType(type);
        const auto drawn = one.draw().primitives;
        ASSERT_FALSE(drawn.empty());
        const bool isThermal = type >= 51 && type <= 56;
        for (const auto& primitive : drawn)
            EXPECT_EQ(primitive.traits.trueColour,
                      isThermal ? AcCmEntityColor(27, 186, 0) : AcCmEntityColor(229, 0, 0))
                << type;
    }
}

TEST_F(LoadDrawingTest, stemsThenTheLineThroughTheTails) {
    straight(2.0);
    const Primitives lines = worldPart(loaded.draw());
    ASSERT_EQ(lines.size(), 9U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_TRUE(lines[i].points.at(0).isEqualTo(AcGePoint3d(2.0 * static_cast<double>(i), 0, 0)));
        EXPECT_TRUE(lines[i].points.at(1).isEqualTo(AcGePoint3d(2.0 * static_cast<double>(i), 0, 2)));
    }
    for (std::size_t i = 5; i < 9; ++i) {
        const double from = 2.0 * static_cast<double>(i - 5);
        EXPECT_TRUE(lines[i].points.at(0).isEqualTo(AcGePoint3d(from, 0, 2)));
        EXPECT_TRUE(lines[i].points.at(1).isEqualTo(AcGePoint3d(from + 2, 0, 2)));
    }
}

TEST_F(LoadDrawingTest, twoArrowsAreJoinedOnce) {
    loaded.system.visSettings().setSize(3, 100.0);
    straight();
    EXPECT_EQ(worldPart(loaded.draw()).size(), 3U);
}

TEST_F(LoadDrawingTest, anArrowWithoutLengthHasNoStemAndIsJoinedAllTheSame) {
    loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double distance) { return distance - 4.0; });
    const auto list = loaded.draw();
    EXPECT_EQ(worldPart(list).size(), 4U + 4U);
    EXPECT_EQ(viewPart(list).size(), 4U);
}

TEST_F(LoadDrawingTest, whatIsShorterThanAnyoneSeesHasNoStem) {
    straight(1.0e-7);
    EXPECT_EQ(worldPart(loaded.draw()).size(), 4U);
}

TEST_F(LoadDrawingTest, headsAreAThirdOfTheirStemAtMost) {
    loaded.through({{0, 0, 0}, {8, 0, 0}}).values([](double, double distance) { return distance * 0.1; });
    const Primitives heads = viewPart(loaded.draw());
    ASSERT_EQ(heads.size(), 4U); // the first one's length is 0
    const double lengths[] = {0.2 / 3.0, 0.4 / 3.0, 0.2, 0.2};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(heads[i].kind, PrimitiveKind::kPolygon);
        EXPECT_EQ(heads[i].traits.fill, kAcGiFillAlways);
        const AcDbExtents box = heads[i].extents();
        EXPECT_NEAR(box.minPoint().z, 0.0, 1e-12);
        EXPECT_NEAR(box.maxPoint().z, lengths[i], 1e-12);
    }
}

TEST_F(LoadDrawingTest, headsOfNegativeValuesPointTheOtherWay) {
    straight(-2.0);
    const auto list = loaded.draw();
    EXPECT_NEAR(worldPart(list).at(0).points.at(1).z, -2.0, 1e-12);
    const AcDbExtents box = viewPart(list).at(0).extents();
    EXPECT_NEAR(box.maxPoint().z, 0.0, 1e-12);
    EXPECT_NEAR(box.minPoint().z, -0.2, 1e-12);
}

TEST_F(LoadDrawingTest, aMomentHasDoubleHeads) {
    straight(2.0);
    const std::size_t single = viewPart(loaded.draw()).size();
    loaded->setType(26);
    EXPECT_EQ(viewPart(loaded.draw()).size(), 2 * single);
}

TEST_F(LoadDrawingTest, aThermalLoadShowsBothEndStemsNoHeadsAndTheBasesJoined) {
    AcDbDatabase db(true);
    straight(2.0);
    loaded->setElement(db.layerZero());
    loaded->setType(52);
    const auto list = loaded.draw();
    const Primitives lines = worldPart(list);
    ASSERT_EQ(lines.size(), 2U + 4U);
    EXPECT_NEAR(lines[0].points.at(0).x, 0.0, 1e-12);
    EXPECT_NEAR(lines[1].points.at(0).x, 8.0, 1e-12);
    EXPECT_NEAR(lines[1].points.at(1).y, 2.0, 1e-12); // along -Y
    EXPECT_TRUE(viewPart(list).empty());
}

// The last arrow's head goes by the flag of those between: flag 4 alone gives it none.
TEST_F(LoadDrawingTest, theLastHeadGoesByTheFlagOfThoseBetween) {
    straight(2.0);
    const auto headsWith = [this](unsigned int flags) {
        loaded->change = [flags](DrawnLoad::Picture& picture) { picture.flags = flags; };
        loaded->requestRefreshGraphics();
        return viewPart(loaded.draw()).size();
    };
    EXPECT_EQ(headsWith(15), 5U);
    EXPECT_EQ(headsWith(8 + 4), 0U);
    EXPECT_EQ(headsWith(8 + 2), 1U);
    EXPECT_EQ(headsWith(8 + 1), 4U);
    EXPECT_EQ(headsWith(8 + 4 + 2), 1U);
    EXPECT_EQ(headsWith(7), 0U);
}

TEST_F(LoadDrawingTest, anArrowThatIsNotVisibleHasNeitherStemNorHead) {
    straight(2.0);
    loaded->change = [](DrawnLoad::Picture& picture) { picture.vertices.at(1).visible = false; };
    const auto list = loaded.draw();
    EXPECT_EQ(worldPart(list).size(), 4U + 4U);
    EXPECT_EQ(viewPart(list).size(), 4U);
}

TEST_F(LoadDrawingTest, fewerThanTwoArrowsAreReportedInBothDrawings) {
    straight();
    loaded->change = [](DrawnLoad::Picture& picture) { picture.vertices.resize(1); };
    ReportRecorder reports;
    EXPECT_TRUE(loaded.draw().primitives.empty());
    ASSERT_EQ(reports.conditions(), Texts(2, "visData.vertices.size() >= 2"));
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_EQ(reports.at(i).values, (Values{{"visData.vertices.size()", "1"}}));
}

TEST_F(LoadDrawingTest, aDrawingThatIsCutHasNoMoreThanItTakes) {
    loaded.through({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}}).ofArea(2.0);
    for (const std::size_t most : {1U, 5U, 9U, 12U}) {
        embedded::ViewParameters view = fromFront();
        view.mostPrimitives = most;
        const auto list = loaded.draw(view);
        EXPECT_TRUE(list.isCut);
        EXPECT_EQ(list.primitives.size(), most);
    }
}

namespace {

// Draws a load that has no element.
class LoneLoad : public AcDbEntity {
public:
    boost::shared_ptr<DrawnLoad> load = boost::make_shared<DrawnLoad>();
    FilledSystem system;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override {
        orv::AcadWorldDraw draw(*worldDraw);
        load->onWorldDraw(draw, system);
        return false;
    }
    void subViewportDraw(AcGiViewportDraw* viewportDraw) override {
        orv::AcadViewportDraw draw(*viewportDraw);
        load->onViewportDraw(draw, system);
    }
};

} // namespace

TEST_F(LoadDrawingTest, aLoadWithoutAnOwnerReportsItAndIsDrawn) {
    LoneLoad lone;
    lone.load->setVertices(vertexAt({1, 2, 3}, 25.0, L"q"));
    ReportRecorder reports;
    const auto list = embedded::draw(lone);
    EXPECT_EQ(reports.conditions(), Texts{"owner()"});
    EXPECT_EQ(list.primitives.size(), 3U);
}

TEST_F(LoadDrawingTest, aLoadWithoutAnOwnerAndItsOwnCurveHasNothingToBeDrawnAlong) {
    LoneLoad lone;
    lone.load->setDistribution(kLineLoad);
    lone.load->setVertices(verticesOf({1, 1}));
    ReportRecorder reports;
    EXPECT_TRUE(embedded::draw(lone).primitives.empty());
    EXPECT_EQ(reports.conditions(), Texts{"owner()"});
    EXPECT_TRUE(lone.load->getVerticesForExport().empty());
    EXPECT_EQ(reports.conditions().back(), "system");
}

TEST_F(LoadDrawingTest, aPointLoadIsAStemAndAHead) {
    point();
    const auto list = loaded.draw();
    const Primitives lines = worldPart(list);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].points.at(0).isEqualTo(AcGePoint3d(1, 2, 3)));
    EXPECT_TRUE(lines[0].points.at(1).isEqualTo(AcGePoint3d(1, 2, 8)));
    const Primitives heads = viewPart(list);
    ASSERT_EQ(heads.size(), 1U);
    EXPECT_NEAR(heads[0].extents().minPoint().z, 3.0, 1e-12);
    EXPECT_NEAR(heads[0].extents().maxPoint().z, 3.2, 1e-12);
}

TEST_F(LoadDrawingTest, aNegativePointLoadComesFromTheOtherSide) {
    point(-25.0);
    const auto list = loaded.draw();
    EXPECT_NEAR(worldPart(list).at(0).points.at(1).z, -2.0, 1e-12);
    EXPECT_NEAR(viewPart(list).at(0).extents().maxPoint().z, 3.0, 1e-12);
    EXPECT_NEAR(viewPart(list).at(0).extents().minPoint().z, 2.8, 1e-12);
}

TEST_F(LoadDrawingTest, thePointLoadsHeadIsThreeTenthsOfItsStemAtMost) {
    point(1.0);
    EXPECT_NEAR(viewPart(loaded.draw()).at(0).extents().maxPoint().z, 3.0 + 0.3 * 0.2, 1e-12);
}

TEST_F(LoadDrawingTest, aPointMomentHasADoubleHead) {
    point();
    loaded->setType(26);
    EXPECT_EQ(viewPart(loaded.draw()).size(), 2U);
}

TEST_F(LoadDrawingTest, aLocalLoadInSpaceDrawsNeitherStemNorHead) {
    point(25.0);
    loaded->setType(13);
    EXPECT_TRUE(loaded.draw().primitives.empty());
}

TEST_F(LoadDrawingTest, aLocalLoadInSpaceShowsItsTextAllTheSame) {
    point(25.0, L"q");
    loaded->setType(13);
    const auto list = loaded.draw();
    ASSERT_EQ(list.primitives.size(), 1U);
    EXPECT_EQ(list.primitives[0].kind, PrimitiveKind::kText);
}

TEST_F(LoadDrawingTest, aLocalLoadOnAnElementGoesByTheElementsAxes) {
    registerTestElement();
    AcDbDatabase db(true);
    auto* const element = new TestElement;
    auto* const general = new TurnedGeneral;
    // X for Z, and Z for -X.
    general->matrix = AcGeMatrix3d::rotation(3.14159265358979323846 / 2.0, AcGeVector3d::kYAxis);
    element->addPlugin(general);
    loaded->setElement(putEntity(db, element));
    straight(2.0);
    loaded->setType(13);
    loaded.draw();
    EXPECT_TRUE(loaded->laidOut.direction.isEqualTo(AcGeVector3d::kXAxis));
    point();
    EXPECT_TRUE(worldPart(loaded.draw()).at(0).points.at(1).isEqualTo(AcGePoint3d(-4, 2, 3)));
}

TEST_F(LoadDrawingTest, anElementWithoutAxesLeavesTheWorlds) {
    AcDbDatabase db(true);
    loaded->setElement(db.layerZero());
    straight(2.0);
    loaded->setType(13);
    loaded.draw();
    EXPECT_TRUE(loaded->laidOut.direction.isEqualTo(AcGeVector3d::kZAxis));
}

TEST_F(LoadDrawingTest, severalVerticesOfAPointLoadAreReportedAndTheFirstOneIsDrawn) {
    loaded->setDistribution(kPointLoad);
    auto vertices = vertexAt({1, 2, 3}, -25.0);
    vertices.push_back(vertexAt({5, 5, 5}, 10.0).front());
    loaded->setVertices(vertices);
    ReportRecorder reports;
    const auto list = loaded.draw();
    EXPECT_EQ(reports.conditions(), Texts(2, "vertices.size() == 1"));
    EXPECT_EQ(reports.at(0).values, (Values{{"vertices.size()", "2"}}));
    EXPECT_EQ(worldPart(list).size(), 1U);
    EXPECT_NEAR(worldPart(list).at(0).points.at(1).z, -2.0, 1e-12);
    // With more than one vertex the head does not turn with the value.
    EXPECT_NEAR(viewPart(list).at(0).extents().minPoint().z, 3.0, 1e-12);
}

TEST_F(LoadDrawingTest, aPointLoadWithoutAVertexReportsAndThrowsOutOfRange) {
    loaded->setDistribution(kPointLoad);
    BeepRecorder beeps;
    ReportRecorder reports;
    EXPECT_TRUE(loaded.draw().primitives.empty());
    EXPECT_EQ(reports.conditions(), Texts(2, "vertices.size() == 1"));
    EXPECT_EQ(reports.at(1).values, (Values{{"vertices.size()", "0"}}));
    ASSERT_EQ(beeps.lines().size(), 1U);
    EXPECT_NE(beeps.lines()[0].find(L"Caught Exception: "), std::wstring::npos);
}

TEST_F(LoadDrawingTest, loadsOfTheDashedKindChangeTheLineTypeOnlyWhereTheyArePoints) {
    const DashedDrawing drawing;
    const AcDbObjectId dashed = drawing.lineType();
    loaded.through({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 0, 0}});
    for (const int kind : {1, 2, 3, 4}) {
        loaded->setClass(static_cast<orv::elem::LOAD_KIND>(kind));
        loaded->setDistribution(kPointLoad);
        loaded->setVertices(vertexAt({1, 2, 3}, 25.0));
        const auto list = loaded.draw();
        EXPECT_EQ(worldPart(list).at(0).traits.lineType == dashed, kind == 3) << kind;
        EXPECT_NE(viewPart(list).at(0).traits.lineType, dashed);
        for (const auto distribution : {kLineLoad, kAreaLoad}) {
            loaded->setDistribution(distribution);
            loaded->setVertices(verticesOf({1, 1, 1}));
            for (const auto& primitive : loaded.draw().primitives)
                EXPECT_NE(primitive.traits.lineType, dashed) << kind;
        }
    }
}

TEST_F(LoadDrawingTest, withoutThatLineTypeTheDashedKindIsDrawnAsAnother) {
    point();
    const auto plain = worldPart(loaded.draw()).at(0).traits.lineType;
    loaded->setClass(orv::elem::kLoadKindDashed);
    EXPECT_EQ(worldPart(loaded.draw()).at(0).traits.lineType, plain);
}

namespace {

struct TextRow {
    const wchar_t* name;
    const wchar_t* text;
    const wchar_t* shown; // null if nothing is
};
const TextRow kTexts[] = {
    {nullptr, L"", nullptr}, {nullptr, L"q = 5", L"q = 5"}, {L"", L"q = 5", L"q = 5"},
    {L"", L"", nullptr},     {L"Wind", L"", L"Wind:"},      {L"Wind", L"5 kN", L"Wind:5 kN"},
};

std::wstring textIn(const embedded::DisplayList& list) {
    for (const auto& primitive : list.primitives)
        if (primitive.kind == PrimitiveKind::kText)
            return primitive.text;
    return L"";
}

} // namespace

TEST_F(LoadDrawingTest, theTextIsTheElementsNameAndTheVertexs) {
    for (const TextRow& row : kTexts)
        for (const auto distribution : {kPointLoad, kLineLoad, kAreaLoad}) {
            LoadedMember one;
            one.through({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 0, 0}});
            one->setDistribution(distribution);
            auto vertices = verticesOf({1, 1, 1});
            if (distribution == kPointLoad)
                vertices = vertexAt({1, 2, 3}, 25.0);
            vertices.front().text = row.text;
            one->setVertices(vertices);
            if (row.name != nullptr)
                one.member.setProperties().add(30001U, std::wstring(row.name));
            if (distribution == kLineLoad)
                one->drawTexts = [&one](orv::AcadViewportDraw& vd, orv::System& system) {
                    one->_draw_lineload_text_at(vd, system, 2.0, 0);
                };
            if (distribution == kAreaLoad) {
                one->setup = [](orv::System&, DrawnLoad::Picture& picture) {
                    picture.getValueAtPosFn = [](const AcGePoint3d&) { return 1.0; };
                };
                one->drawTexts = [&one](orv::AcadViewportDraw& vd, orv::System& system) {
                    one->_draw_areaload_text_at(vd, system, {1, 1, 0}, 0, L"");
                };
            }
            const auto list = one.draw();
            EXPECT_EQ(count(list.primitives, PrimitiveKind::kText), row.shown == nullptr ? 0U : 1U);
            EXPECT_EQ(textIn(list), row.shown == nullptr ? L"" : row.shown);
        }
}

TEST_F(LoadDrawingTest, aNameOfAnotherTypeIsReportedAndLeftOut) {
    point(25.0, L"q");
    loaded.member.setProperties().add(30001U, std::string("narrow"));
    ReportRecorder reports;
    EXPECT_EQ(textIn(loaded.draw()), L"q");
    EXPECT_EQ(reports.messages(), Texts{"getValueNotThrow() failed"});
}

TEST_F(LoadDrawingTest, thePointLoadsTextHasTheHeightOfTheSettings) {
    loaded.system.visSettings().setSize(4, 0.7);
    point(25.0, L"q");
    const Primitives drawn = viewPart(loaded.draw());
    EXPECT_NEAR(drawn.back().height, 0.7, 1e-12);
}

namespace {

// The texts of a line or area load with a value along gravity, drawn at a place.
Primitives textsOfLine(LoadedMember& loaded, double dist, unsigned int index = 0) {
    loaded->drawTexts = [&loaded, dist, index](orv::AcadViewportDraw& vd, orv::System& system) {
        loaded->_draw_lineload_text_at(vd, system, dist, index);
    };
    Primitives texts;
    for (const auto& primitive : viewPart(loaded.draw()))
        if (primitive.kind != PrimitiveKind::kPolygon)
            texts.push_back(primitive);
    return texts;
}

} // namespace

TEST_F(LoadDrawingTest, aLineLoadsTextStandsBeyondTheTailWithADotThere) {
    straight(2.0);
    loaded->setTextAt(0, L"q");
    const Primitives drawn = textsOfLine(loaded, 3.0);
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_EQ(drawn[0].kind, PrimitiveKind::kCircle);
    EXPECT_TRUE(drawn[0].points.at(0).isEqualTo(AcGePoint3d(3, 0, 2)));
    EXPECT_NEAR(drawn[0].radius, 0.015, 1e-12);
    EXPECT_TRUE(drawn[0].normal.isEqualTo(-AcGeVector3d::kYAxis));
    EXPECT_EQ(drawn[0].traits.fill, kAcGiFillAlways);
    EXPECT_EQ(drawn[1].kind, PrimitiveKind::kText);
    EXPECT_EQ(drawn[1].traits.fill, kAcGiFillNever);
    EXPECT_TRUE(drawn[1].direction.isEqualTo(AcGeVector3d::kXAxis));
    EXPECT_TRUE(drawn[1].normal.isEqualTo(-AcGeVector3d::kYAxis));
    // One letter's height beyond the tail, attached by its middle.
    EXPECT_NEAR(drawn[1].points.at(0).z, 2.0 + 0.15 - 0.075, 1e-12);
    EXPECT_LT(drawn[1].points.at(0).x, 3.0);
}

TEST_F(LoadDrawingTest, ofANegativeValueItStandsBelow) {
    straight(-2.0);
    loaded->setTextAt(0, L"q");
    const Primitives drawn = textsOfLine(loaded, 3.0);
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_NEAR(drawn[0].points.at(0).z, -2.0, 1e-12);
    EXPECT_NEAR(drawn[1].points.at(0).z, -2.0 - 0.15 - 0.075, 1e-12);
}

TEST_F(LoadDrawingTest, ofALocalLoadInSpaceItStandsAtTheCurve) {
    straight(2.0);
    loaded->setType(13); // +Z, without an element
    loaded->setTextAt(0, L"q");
    const Primitives drawn = textsOfLine(loaded, 3.0);
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_TRUE(drawn[0].points.at(0).isEqualTo(AcGePoint3d(3, 0, 0)));
    EXPECT_NEAR(drawn[1].points.at(0).z, -0.15 - 0.075, 1e-12);
}

TEST_F(LoadDrawingTest, theScaleOfThePictureMovesItsTexts) {
    straight(2.0);
    loaded->setTextAt(0, L"q");
    loaded->change = [](DrawnLoad::Picture& picture) { picture.scale = 3.0; };
    EXPECT_NEAR(textsOfLine(loaded, 3.0).at(0).points.at(0).z, 6.0, 1e-12);
}

TEST_F(LoadDrawingTest, theAttachmentOfALineLoadsTextCanBeTold) {
    straight(2.0);
    loaded->setTextAt(0, L"q");
    AcGeVector3d asked;
    orv::elem::GenericLoad::setAttachmentCallback([&asked](const AcGeVector3d& direction) {
        asked = direction;
        return AcDbMText::kBottomLeft;
    });
    const AcGePoint3d begin = textsOfLine(loaded, 3.0).at(1).points.at(0);
    EXPECT_TRUE(asked.isEqualTo(-AcGeVector3d::kZAxis));
    EXPECT_TRUE(begin.isEqualTo(AcGePoint3d(3, 0, 2.15)));
    orv::elem::GenericLoad::setAttachmentCallback({});
    EXPECT_LT(textsOfLine(loaded, 3.0).at(1).points.at(0).x, 3.0);
}

TEST_F(LoadDrawingTest, aFailingAttachmentLeavesTheDotWithoutItsText) {
    straight(2.0);
    loaded->setTextAt(0, L"q");
    orv::elem::GenericLoad::setAttachmentCallback([](const AcGeVector3d&) -> AcDbMText::AttachmentPoint {
        throw std::runtime_error("no place for a text");
    });
    const Primitives drawn = textsOfLine(loaded, 3.0);
    orv::elem::GenericLoad::setAttachmentCallback({});
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_EQ(drawn[0].kind, PrimitiveKind::kCircle);
}

TEST_F(LoadDrawingTest, anAttachmentMayTakeItselfBackWhileItIsAsked) {
    straight(2.0);
    loaded->setTextAt(0, L"q");
    const std::string held(100, 'q');
    std::string seen;
    orv::elem::GenericLoad::setAttachmentCallback([held, &seen](const AcGeVector3d&) {
        orv::elem::GenericLoad::setAttachmentCallback({});
        seen = held;
        return AcDbMText::kBottomLeft;
    });
    EXPECT_TRUE(textsOfLine(loaded, 3.0).at(1).points.at(0).isEqualTo(AcGePoint3d(3, 0, 2.15)));
    EXPECT_EQ(seen, held);
}

TEST_F(LoadDrawingTest, anIndexBeyondTheVerticesIsReportedAndDrawsNothing) {
    straight(2.0);
    loaded->setTextAt(0, L"q");
    ReportRecorder reports;
    EXPECT_TRUE(textsOfLine(loaded, 3.0, 2).empty());
    EXPECT_EQ(reports.conditions(), Texts{"vertexIndex < m_vertices.size()"});
    reports.clear();
    loaded->drawTexts = [this](orv::AcadViewportDraw& vd, orv::System& system) {
        loaded->_draw_areaload_text_at(vd, system, {0, 0, 0}, 2, L"p");
    };
    loaded.draw();
    EXPECT_EQ(reports.conditions(), Texts{"vertexIndex < m_vertices.size()"});
}

TEST_F(LoadDrawingTest, aDistanceBeyondTheCurveIsReported) {
    straight(2.0);
    loaded->setTextAt(0, L"q");
    ReportRecorder reports;
    textsOfLine(loaded, 9.0);
    ASSERT_EQ(reports.conditions(), Texts{"es == es2"});
    EXPECT_EQ(reports.at(0).values.at(0).value, "m_vis->visCurve->getPointAtDist(dist,pt)");
}

TEST_F(LoadDrawingTest, beforeTheLoadWasDrawnThereIsNothingToPutATextTo) {
    loaded->setVertices(verticesOf({1, 1}));
    loaded->setTextAt(0, L"q");
    EXPECT_TRUE(textsOfLine(loaded, 0.0).empty());
}

TEST_F(LoadDrawingTest, anAreasTextTakesThePrefixAndIsAlwaysCentred) {
    loaded.through({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}}).ofArea(2.0);
    loaded->setTextAt(1, L"5");
    nameElement(L"Snow");
    orv::elem::GenericLoad::setAttachmentCallback([](const AcGeVector3d&) { return AcDbMText::kBottomLeft; });
    loaded->drawTexts = [this](orv::AcadViewportDraw& vd, orv::System& system) {
        loaded->_draw_areaload_text_at(vd, system, {1, 1, 0}, 1, L"s ");
    };
    Primitives drawn = viewPart(loaded.draw());
    ASSERT_GE(drawn.size(), 2U);
    const auto& text = drawn.back();
    const auto& dot = drawn[drawn.size() - 2];
    EXPECT_TRUE(dot.points.at(0).isEqualTo(AcGePoint3d(1, 1, 2)));
    EXPECT_EQ(text.text, L"s Snow:5");
    EXPECT_LT(text.points.at(0).x, 1.0);
    EXPECT_NEAR(text.points.at(0).z, 2.0 + 0.15 - 0.075, 1e-12);
}

TEST_F(LoadDrawingTest, aLoadThatBecameAPointLoadStillShowsItsOldHeads) {
    straight(2.0);
    loaded.draw();
    point();
    EXPECT_EQ(count(viewPart(loaded.draw()), PrimitiveKind::kPolygon), 5U + 1U);
}
