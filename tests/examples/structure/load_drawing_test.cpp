// What is seen of loads: every shape, direction and kind, on members of every form.

#include "examples/structure/loads_test.h"

#include "dbx/doc/system_manager.h"
#include "embedded/display_list.h"
#include "embedded/session.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace structure_tests {
namespace {

using embedded::Primitive;
using embedded::PrimitiveKind;

// Sizes of the settings go through single numbers.
constexpr double kRounding = 1e-6;
// A spacing of 0.6, as a single number a little more, on 6 m.
constexpr std::size_t kArrows = 10;

class LoadDrawingTest : public LoadsTest {
protected:
    std::vector<Primitive> drawn(const AcDbObjectId& load, const AcGeVector3d& from = AcGeVector3d::kZAxis) {
        embedded::ViewParameters view;
        view.direction = from;
        const embedded::DisplayList list = embedded::draw(*db, view);
        EXPECT_TRUE(list.failures.empty());
        std::vector<Primitive> mine;
        for (const Primitive& primitive : list.primitives)
            if (primitive.owner == load)
                mine.push_back(primitive);
        return mine;
    }

    // Lines of the world from a place on the load's curve to the tail of an arrow there.
    std::vector<Primitive> stemsOf(const AcDbObjectId& load) {
        std::vector<Primitive> stems;
        const Open<Load> curve(load);
        for (const Primitive& primitive : drawn(load)) {
            if (primitive.kind != PrimitiveKind::kPolyline || primitive.ofViewport ||
                primitive.points.size() != 2)
                continue;
            AcGePoint3d nearest;
            curve->getClosestPointTo(primitive.points[0], nearest);
            const AcGeVector3d stem = primitive.points[1] - primitive.points[0];
            if (nearest.isEqualTo(primitive.points[0], orv::geom::gTol) &&
                std::abs(stem.z) > 0.999 * stem.length())
                stems.push_back(primitive);
        }
        return stems;
    }

    std::vector<std::wstring> textsOf(const AcDbObjectId& load) {
        std::vector<std::wstring> texts;
        for (const Primitive& primitive : drawn(load))
            if (primitive.kind == PrimitiveKind::kText)
                texts.push_back(primitive.text);
        return texts;
    }

    // The settings draw a value by its logarithm.
    static double lengthOf(double value) { return 0.2 * 10.0 * std::log(value * 0.1 + 1.0); }
};

struct ShapeRow {
    LoadShape shape;
    std::vector<double> values;
    // How long the arrow is at a share of the beam.
    std::function<double(double share)> length;
};

TEST_F(LoadDrawingTest, TheArrowsOfEveryShapeFollowIt) {
    const double four = lengthOf(4.0), eight = lengthOf(8.0);
    const ShapeRow rows[] = {
        {LoadShape::kLinear, {4.0, 8.0}, [=](double s) { return four + (eight - four) * s; }},
        {LoadShape::kLinear,
         {4.0, 8.0, 4.0},
         [=](double s) {
             return s < 0.5 ? four + (eight - four) * 2 * s : eight - (eight - four) * (2 * s - 1);
         }},
        {LoadShape::kLinearMid,
         {4.0, 8.0, 4.0},
         [=](double s) { return eight - (eight - four) * std::abs(2 * s - 1); }},
        {LoadShape::kQuadraticStart, {8.0, 0.0}, [=](double s) { return eight * (1 - s) * (1 - s); }},
        {LoadShape::kQuadraticEnd, {0.0, 8.0}, [=](double s) { return eight * s * s; }},
        {LoadShape::kCubicStart, {8.0, 0.0}, [=](double s) { return eight * (1 - s) * (1 - s) * (1 - s); }},
        {LoadShape::kCubicEnd, {0.0, 8.0}, [=](double s) { return eight * s * s * s; }},
        {LoadShape::kQuadraticMid, {0.0, 8.0, 0.0}, [=](double s) { return eight * 4 * s * (1 - s); }},
    };
    for (const ShapeRow& row : rows) {
        LoadProperties properties;
        properties.shape = row.shape;
        properties.values = row.values;
        const AcDbObjectId load = addLoad(beam, 0.0, 1.0, properties);
        const std::vector<Primitive> stems = stemsOf(load);
        // Less those without a length.
        EXPECT_GE(stems.size(), kArrows - 2) << static_cast<int>(row.shape);
        for (const Primitive& stem : stems) {
            const double share = stem.points[0].x / 6.0;
            EXPECT_NEAR(stem.points[1].z - 3.0, row.length(share), kRounding)
                << static_cast<int>(row.shape) << " at " << share;
        }
        ASSERT_EQ(structure::eraseElements({load}), Acad::eOk);
    }
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(LoadDrawingTest, PeaksAndCornersHaveAnArrowOfTheirOwn) {
    const auto highestAt = [&](const AcDbObjectId& load, double x) {
        double highest = 0.0;
        for (const Primitive& stem : stemsOf(load))
            if (std::abs(stem.points[0].x - x) < kRounding)
                highest = std::max(highest, stem.points[1].z - stem.points[0].z);
        return highest;
    };
    LoadProperties properties = linear(0.0, 0.0);
    properties.shape = LoadShape::kQuadraticMid;
    properties.values = {0.0, 8.0, 0.0};
    EXPECT_NEAR(highestAt(addLoad(beam, 0.0, 1.0, properties), 3.0), lengthOf(8.0), kRounding);
    properties = linear(5.0, 5.0);
    properties.values = {5.0, 5.0, 5.0};
    EXPECT_NEAR(highestAt(addBound(Load::alongLine({{0.0, 0.0, 0.0}, {1.25, 0.0, 0.0}, {1.25, 2.0, 0.0}},
                                                   properties)),
                          1.25),
                lengthOf(5.0), kRounding);
}

TEST_F(LoadDrawingTest, ALineWithFewerValuesThanPiecesIsDrawn) {
    LoadProperties properties = linear(0.0, 0.0);
    properties.values = {8.0};
    const std::vector<AcGePoint3d> bent = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {3, 1, 0}, {3, 5, 0}};
    const AcDbObjectId uniform = addBound(Load::alongLine(bent, properties));
    EXPECT_GE(stemsOf(uniform).size(), kArrows);
    for (const Primitive& stem : stemsOf(uniform))
        EXPECT_NEAR(stem.points[1].z, lengthOf(8.0), kRounding);
    EXPECT_EQ(textsOf(uniform), std::vector<std::wstring>{L"8 kN/m"});
    properties.shape = LoadShape::kQuadraticMid;
    properties.values = {0.0, 8.0, 0.0};
    const AcDbObjectId arched = addBound(Load::alongLine(bent, properties));
    double highest = 0.0;
    for (const Primitive& stem : stemsOf(arched)) {
        double distance = 0.0;
        ASSERT_EQ(Open<Load>(arched)->getDistAtPoint(stem.points[0], distance), Acad::eOk);
        const double share = distance / 8.0;
        EXPECT_NEAR(stem.points[1].z, lengthOf(8.0) * 4.0 * share * (1.0 - share), kRounding);
        highest = std::max(highest, stem.points[1].z);
    }
    EXPECT_NEAR(highest, lengthOf(8.0), kRounding);
    EXPECT_EQ(textsOf(arched), std::vector<std::wstring>{L"8 kN/m"}) << "what lies between is not told";
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(LoadDrawingTest, ALineOfManyPiecesHasNoMoreArrowsThanOthersAndShowsItsPeaks) {
    std::vector<AcGePoint3d> zigzag;
    for (int i = 0; i <= 10000; ++i)
        zigzag.emplace_back(0.01 * i, i % 2 * 0.01, 0.0);
    LoadProperties properties = linear(0.0, 0.0);
    properties.values.assign(zigzag.size(), 2.0);
    properties.values[3333] = 6.0;
    const AcDbObjectId load = addBound(Load::alongLine(zigzag, properties));
    const std::vector<Primitive> stems = stemsOf(load);
    EXPECT_EQ(stems.size(), 51u);
    EXPECT_TRUE(std::is_sorted(stems.begin(), stems.end(), [](const Primitive& a, const Primitive& b) {
        return a.points[0].x < b.points[0].x;
    }));
    const auto highest =
        std::max_element(stems.begin(), stems.end(), [](const Primitive& a, const Primitive& b) {
            return a.points[1].z < b.points[1].z;
        });
    EXPECT_NEAR(highest->points[0].x, 33.33, kRounding);
    EXPECT_NEAR(highest->points[1].z, lengthOf(6.0), kRounding);
    // So much data is told of, but no harm.
    for (const std::string& condition : reports.conditions())
        EXPECT_EQ(condition, "pluginDataSize <= (1024*10)");
}

TEST_F(LoadDrawingTest, AFullRowOfArrowsGivesOneForAPeakInBetween) {
    // 50 intervals of 2; a peak at 33.3.
    LoadProperties properties = linear(2.0, 2.0);
    const AcDbObjectId load = addBound(Load::alongLine({{0, 0, 0}, {100, 0, 0}}, properties));
    ASSERT_EQ(stemsOf(load).size(), 51u);
    {
        const Open<Load> open(load, AcDb::kForWrite);
        std::deque<orv::elem::LoadVertex> vertices(3);
        vertices[0].value = vertices[2].value = 2.0;
        vertices[1].value = 6.0;
        vertices[1].position = 0.333;
        vertices[2].position = 1.0;
        open->plugin()->setVertices(vertices);
    }
    const std::vector<Primitive> stems = stemsOf(load);
    ASSERT_EQ(stems.size(), 51u);
    std::vector<double> places;
    double highest = 0.0;
    for (const Primitive& stem : stems) {
        places.push_back(stem.points[0].x);
        highest = std::max(highest, stem.points[1].z);
    }
    EXPECT_NEAR(highest, lengthOf(6.0), kRounding);
    EXPECT_NEAR(places[17], 33.3, kRounding) << "that of 34";
    EXPECT_NEAR(places[16], 32.0, kRounding);
    EXPECT_NEAR(places[18], 36.0, kRounding);
}

TEST_F(LoadDrawingTest, ALoadOfTheExportHasItsOwnValuesHoweverTheyAreDrawn) {
    LoadProperties properties;
    properties.shape = LoadShape::kQuadraticStart;
    properties.values = {8.0, 0.0};
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, properties);
    drawn(load);
    const auto points = Open<Load>(load)->plugin()->getVerticesForExport();
    ASSERT_GE(points.size(), 2u);
    EXPECT_EQ(points.front().value, 8.0);
    EXPECT_EQ(points.back().value, 0.0);
    for (const auto& vertex : points) {
        const double left = 1.0 - vertex.point.x / 6.0;
        EXPECT_NEAR(vertex.value, 8.0 * left * left, kRounding);
    }
}

TEST_F(LoadDrawingTest, TheExportOfAProjectedLoadGoesAlongItsBeam) {
    const AcDbObjectId rafter = addBeam(AcGePoint3d(0.0, 0.0, 0.0), AcGePoint3d(4.0, 0.0, 3.0));
    LoadProperties snow = linear(-4.0, -2.0);
    snow.type = 19;
    const AcDbObjectId load = addLoad(rafter, 0.0, 1.0, snow);
    EXPECT_TRUE(isAt(startOf(load), 0.0, 0.0, 3.0));
    const auto points = Open<Load>(load)->plugin()->getVerticesForExport();
    ASSERT_GE(points.size(), 2u);
    EXPECT_TRUE(isAt(points.front().point, 0.0, 0.0, 0.0));
    EXPECT_TRUE(isAt(points.back().point, 4.0, 0.0, 3.0));
    EXPECT_EQ(points.front().value, -4.0);
    EXPECT_EQ(points.back().value, -2.0);
}

TEST_F(LoadDrawingTest, PositiveWeightStandsAboveAndNegativeBelow) {
    for (const double value : {5.0, -5.0}) {
        const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(value, value));
        const std::vector<Primitive> stems = stemsOf(load);
        ASSERT_EQ(stems.size(), kArrows);
        for (const Primitive& stem : stems)
            EXPECT_NEAR(stem.points[1].z - 3.0, std::copysign(lengthOf(5.0), value), kRounding);
        ASSERT_EQ(structure::eraseElements({load}), Acad::eOk);
    }
}

TEST_F(LoadDrawingTest, ASignChangingLoadHasArrowsOnBothSides) {
    const std::vector<Primitive> stems = stemsOf(addLoad(beam, 0.0, 1.0, linear(-5.0, 5.0)));
    ASSERT_EQ(stems.size(), kArrows);
    EXPECT_LT(stems.front().points[1].z, 3.0);
    EXPECT_GT(stems.back().points[1].z, 3.0);
}

TEST_F(LoadDrawingTest, TextsStandAtBothEndsAndOnceWhereAllIsTheSame) {
    EXPECT_EQ(textsOf(addLoad(beam, 0.0, 1.0, linear(4.0, 8.5))),
              (std::vector<std::wstring>{L"4 kN/m", L"8.5 kN/m"}));
    LoadProperties named = linear(4.0, 4.0);
    named.name = L"Snow";
    EXPECT_EQ(textsOf(addLoad(beam, 0.0, 1.0, named)), std::vector<std::wstring>{L"Snow:4 kN/m"});
    LoadProperties point = linear(12.0, 0.0);
    point.values = {12.0};
    point.unit = L"kN";
    EXPECT_EQ(textsOf(addLoad(beam, 0.5, 0.5, point)), std::vector<std::wstring>{L"12 kN"});
}

TEST_F(LoadDrawingTest, TextsFollowTheValues) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(4.0, 8.0));
    Open<Load>(load, AcDb::kForWrite)->plugin()->setValueAt(1, 9.25);
    EXPECT_EQ(textsOf(load), (std::vector<std::wstring>{L"4 kN/m", L"9.25 kN/m"}));
    Open<Load>(load, AcDb::kForWrite)->plugin()->setValueAt(1, 0.0);
    EXPECT_EQ(textsOf(load), std::vector<std::wstring>{L"4 kN/m"});
}

TEST_F(LoadDrawingTest, AnAreaHasItsTextsAtTheCornersAndAHatch) {
    const std::vector<AcGePoint3d> corners = {{0, 0, 3}, {4, 0, 3}, {4, 2, 3}, {0, 2, 3}};
    LoadProperties properties;
    properties.unit = L"kN/m2";
    properties.shape = LoadShape::kUniform;
    properties.values = {5.0};
    const AcDbObjectId uniform = addBound(Load::overArea(corners, properties));
    EXPECT_EQ(textsOf(uniform), std::vector<std::wstring>{L"5 kN/m2"});
    properties.shape = LoadShape::kPlanar;
    properties.values = {2.0, 6.0, 6.0, 2.0};
    const AcDbObjectId planar = addBound(Load::overArea(corners, properties));
    EXPECT_EQ(textsOf(planar), (std::vector<std::wstring>{L"2 kN/m2", L"6 kN/m2", L"6 kN/m2", L"2 kN/m2"}));
    const double two = lengthOf(2.0), six = lengthOf(6.0);
    for (const Primitive& stem : stemsOf(planar))
        EXPECT_NEAR(stem.points[1].z - 3.0, two + (six - two) * stem.points[0].x / 4.0, kRounding);
    std::size_t inside = 0;
    for (const Primitive& primitive : drawn(uniform))
        if (primitive.kind == PrimitiveKind::kPolyline && primitive.points.size() == 2) {
            const AcGePoint3d middle =
                primitive.points[0] + (primitive.points[1] - primitive.points[0]) / 2.0;
            inside += middle.x > 0.1 && middle.x < 3.9 && middle.y > 0.1 && middle.y < 1.9 ? 1 : 0;
        }
    EXPECT_GT(inside, 0u) << "lines of the hatch";
}

TEST_F(LoadDrawingTest, AnAreaWhoseFirstCornersStandInALineHasThePlaneOfTheOthers) {
    LoadProperties properties;
    properties.shape = LoadShape::kPlanar;
    properties.values = {2.0, 4.0, 6.0, 6.0, 2.0};
    const AcDbObjectId load =
        addBound(Load::overArea({{0, 0, 3}, {2, 0, 3}, {4, 0, 3}, {4, 2, 3}, {0, 2, 3}}, properties));
    const auto points = Open<Load>(load)->plugin()->getVerticesForExport();
    ASSERT_GE(points.size(), 5u);
    for (const auto& vertex : points)
        EXPECT_NEAR(vertex.value, 2.0 + vertex.point.x, kRounding);
    EXPECT_FALSE(stemsOf(load).empty());
}

TEST_F(LoadDrawingTest, AnAreaWhoseVerticesAllStandInALineIsUniform) {
    LoadProperties properties;
    properties.shape = LoadShape::kPlanar;
    properties.values = {5.0, 6.0, 7.0};
    const AcDbObjectId load =
        addBound(Load::overArea({{0, 0, 3}, {4, 0, 3}, {4, 2, 3}, {0, 2, 3}}, properties));
    for (auto& vertex : Open<Load>(load, AcDb::kForWrite)->plugin()->getVerticesForWrite())
        vertex.point.y = 0.0;
    const auto points = Open<Load>(load)->plugin()->getVerticesForExport();
    ASSERT_GE(points.size(), 4u);
    for (const auto& vertex : points)
        EXPECT_EQ(vertex.value, 5.0);
}

TEST_F(LoadDrawingTest, TheExportOfAPlanarAreaHasTheValuesOfItsPlane) {
    LoadProperties properties;
    properties.shape = LoadShape::kPlanar;
    properties.values = {2.0, 6.0, 6.0, 2.0};
    const AcDbObjectId load =
        addBound(Load::overArea({{0, 0, 3}, {4, 0, 3}, {4, 2, 3}, {0, 2, 3}}, properties));
    const auto points = Open<Load>(load)->plugin()->getVerticesForExport();
    ASSERT_GE(points.size(), 4u);
    for (const auto& vertex : points)
        EXPECT_NEAR(vertex.value, 2.0 + vertex.point.x, kRounding);
}

TEST_F(LoadDrawingTest, ATemperatureShowsTwoStemsAndNoHeads) {
    LoadProperties properties = linear(0.06, 0.06);
    properties.type = 53;
    properties.unit.clear();
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, properties);
    EXPECT_EQ(stemsOf(load).size(), 2u);
    for (const Primitive& primitive : drawn(load, AcGeVector3d(0.0, -1.0, 0.0)))
        EXPECT_NE(primitive.kind, PrimitiveKind::kPolygon) << "a head";
}

TEST_F(LoadDrawingTest, AMomentHasTwiceTheHeadsOfAForce) {
    const auto heads = [&](int type) {
        LoadProperties properties = linear(4.0, 4.0);
        properties.type = type;
        std::size_t count = 0;
        for (const Primitive& primitive : drawn(addLoad(beam, 0.0, 1.0, properties)))
            count += primitive.kind == PrimitiveKind::kPolygon ? 1 : 0;
        return count;
    };
    const std::size_t force = heads(15), moment = heads(25);
    EXPECT_EQ(force, kArrows);
    EXPECT_EQ(moment, 2 * kArrows);
}

TEST_F(LoadDrawingTest, ALocalLoadTurnsWithItsBeamAlsoThroughAnUndo) {
    LoadProperties properties = linear(5.0, 5.0);
    properties.type = 13;
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, properties);
    EXPECT_EQ(stemsOf(load).size(), kArrows) << "along Z";
    embedded::beginCommand(*db);
    Open<Beam>(beam, AcDb::kForWrite)->setRoll(std::acos(0.0));
    EXPECT_EQ(stemsOf(load).size(), 0u) << "along Y";
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_EQ(stemsOf(load).size(), kArrows);
}

TEST_F(LoadDrawingTest, ALocalLoadTurnsWithABeamThatIsDraggedUnderItAlsoThroughAnUndo) {
    const AcDbObjectId bent = addBeam(AcGePoint3d(0.0, 0.0, 3.0), AcGePoint3d(3.0, 0.0, 3.0));
    ASSERT_EQ(Open<Beam>(bent, AcDb::kForWrite)->appendLineTo(AcGePoint3d(6.0, 0.0, 3.0)), Acad::eOk);
    LoadProperties properties = linear(5.0, 5.0);
    properties.type = 13;
    const AcDbObjectId load = addLoad(bent, 0.5, 1.0, properties);
    const std::size_t upright = stemsOf(load).size();
    EXPECT_GE(upright, 3u);
    embedded::beginCommand(*db);
    {
        // The first half stands then: the load's curve stays, and the axes lean.
        AcDbIntArray first;
        first.append(0);
        EXPECT_EQ(
            Open<AcDbEntity>(bent, AcDb::kForWrite)->moveGripPointsAt(first, AcGeVector3d(3.0, 0.0, -3.0)),
            Acad::eOk);
    }
    structure::processMovedElements(*db);
    EXPECT_TRUE(isAt(startOf(load), 3.0, 0.0, 3.0));
    EXPECT_EQ(stemsOf(load).size(), 0u) << "across the beam";
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_EQ(stemsOf(load).size(), upright);
}

TEST_F(LoadDrawingTest, ALocalLoadThatLostItsBeamShowsItsValuesOnItsCurveAndNoArrows) {
    LoadProperties properties = linear(4.0, 8.0);
    properties.type = 13;
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, properties);
    AcRxObject* raw = nullptr;
    {
        const Open<Load> original(load);
        raw = original->clone();
    }
    const AcDbObjectId copy = append(AcDbEntity::cast(raw));
    structure::processMovedElements(*db);
    ASSERT_TRUE(beamOf(copy).isNull());
    EXPECT_FALSE(stemsOf(load).empty());
    EXPECT_TRUE(stemsOf(copy).empty());
    EXPECT_EQ(textsOf(copy), (std::vector<std::wstring>{L"4 kN/m", L"8 kN/m"}));
    // Each has a dot; those of the copy lie on the beam, the others at the arrows' tails.
    const auto dots = [&](const AcDbObjectId& id) {
        std::vector<double> levels;
        for (const Primitive& primitive : drawn(id))
            if (primitive.kind == PrimitiveKind::kCircle)
                levels.push_back(primitive.points[0].z);
        return levels;
    };
    EXPECT_EQ(dots(copy), (std::vector<double>{3.0, 3.0}));
    EXPECT_NE(dots(load), dots(copy));
}

TEST_F(LoadDrawingTest, ALoadThatMovedWithItsBeamIsDrawnThere) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(5.0, 5.0));
    ASSERT_EQ(stemsOf(load).size(), kArrows);
    ASSERT_EQ(structure::moveElements(*db, {beam}, AcGeVector3d(0.0, 0.0, 1.0)), Acad::eOk);
    const auto stems = stemsOf(load);
    ASSERT_EQ(stems.size(), kArrows);
    for (const Primitive& stem : stems)
        EXPECT_EQ(stem.points[0].z, 4.0);
}

TEST_F(LoadDrawingTest, ADashedPointLoadOfTheFrameHasItsLineType) {
    const structure::Frame made = frame();
    std::size_t dashed = 0;
    for (const Primitive& primitive : drawn(made.loads.back()))
        if (primitive.kind == PrimitiveKind::kPolyline && !primitive.traits.lineType.isNull()) {
            const Open<AcDbLinetypeTableRecord> lineType(primitive.traits.lineType);
            const ACHAR* name = nullptr;
            lineType->getName(name);
            dashed += std::wstring(name) == L"STRICHLINIE" ? 1 : 0;
        }
    EXPECT_GE(dashed, 1u);
}

TEST_F(LoadDrawingTest, EveryLoadOfTheFrameIsSeenFromEverywhereWithoutAComplaint) {
    const structure::Frame made = frame();
    for (const AcGeVector3d& from :
         {AcGeVector3d(0, 0, 1), AcGeVector3d(0, -1, 0), AcGeVector3d(1, 0, 0), AcGeVector3d(-1, -1, 1)}) {
        embedded::ViewParameters view;
        view.direction = from;
        const embedded::DisplayList list = embedded::draw(*db, view);
        EXPECT_TRUE(list.failures.empty());
        std::set<AcDbObjectId> seen;
        for (const Primitive& primitive : list.primitives)
            seen.insert(primitive.owner);
        for (const AcDbObjectId& load : made.loads)
            EXPECT_EQ(seen.count(load), 1u) << numberOf(load);
    }
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

} // namespace
} // namespace structure_tests
