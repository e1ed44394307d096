// Loads stand on their beams, and go where these go.

#include "examples/structure/loads_test.h"

#include "embedded/session.h"

#include <cmath>

namespace structure_tests {
namespace {

using structure::copyElements;
using structure::eraseElements;
using structure::moveElements;

const AcGeVector3d kUp(0.0, 0.0, 1.5);

TEST_F(LoadsTest, ALoadLiesOnTheLoadedPartOfItsBeam) {
    const AcDbObjectId load = addLoad(beam, 0.25, 0.75, linear(1.0, 2.0));
    EXPECT_TRUE(isAt(startOf(load), 1.5, 0.0, 3.0));
    EXPECT_TRUE(isAt(endOf(load), 4.5, 0.0, 3.0));
    EXPECT_TRUE(isAt(vertexOf(load, 0), 1.5, 0.0, 3.0));
    EXPECT_TRUE(isAt(vertexOf(load, 1), 4.5, 0.0, 3.0));
    EXPECT_EQ(loadsOf(beam), std::set<AcDbObjectId>{load});
    EXPECT_EQ(connectionsOf(beam), std::set<AcDbObjectId>()) << "loads are kept apart from nodes";
    EXPECT_EQ(numberOf(load), 1u);
}

TEST_F(LoadsTest, ALoadOnABeamHasItsBeamInBothPlaces) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    const Open<Load> element(load);
    const auto* const plugin = dynamic_cast<const structure::BeamLoad*>(element->plugin());
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(plugin->getElement(), beam);
    EXPECT_EQ(plugin->GenericLoad::getElement(), beam);
}

TEST_F(LoadsTest, APointLoadStandsAtItsPlaceOnTheBeam) {
    LoadProperties properties;
    properties.values = {5.0};
    const AcDbObjectId load = addLoad(beam, 0.5, 0.5, properties);
    EXPECT_TRUE(Open<Load>(load)->isEmpty());
    EXPECT_TRUE(isAt(vertexOf(load, 0), 3.0, 0.0, 3.0));
    ASSERT_EQ(moveElements(*db, {beam}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(vertexOf(load, 0), 3.0, 0.0, 4.5));
}

TEST_F(LoadsTest, LoadsFollowTheirBeamAlsoThroughUndoAndRedo) {
    const AcDbObjectId load = addLoad(beam, 0.5, 1.0, linear(1.0, 2.0));
    const Streams before = streams();
    embedded::beginCommand(*db);
    ASSERT_EQ(moveElements(*db, {beam}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(startOf(load), 3.0, 0.0, 4.5));
    EXPECT_TRUE(isAt(vertexOf(load, 1), 6.0, 0.0, 4.5));
    const Streams after = streams();
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
    EXPECT_TRUE(isAt(startOf(load), 3.0, 0.0, 3.0));
    ASSERT_TRUE(embedded::redo(*db));
    EXPECT_TRUE(streams() == after);
}

TEST_F(LoadsTest, ALoadThatIsMovedWithItsBeamMovesOnce) {
    const AcDbObjectId load = addLoad(beam, 0.5, 1.0, linear(1.0, 2.0));
    ASSERT_EQ(moveElements(*db, {beam, load}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(startOf(load), 3.0, 0.0, 4.5));
    EXPECT_TRUE(isAt(vertexOf(load, 0), 3.0, 0.0, 4.5));
}

TEST_F(LoadsTest, ALoadThatIsMovedAloneComesBackToItsBeam) {
    const AcDbObjectId load = addLoad(beam, 0.5, 1.0, linear(1.0, 2.0));
    ASSERT_EQ(moveElements(*db, {load}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(startOf(load), 3.0, 0.0, 3.0));
    EXPECT_TRUE(isAt(vertexOf(load, 0), 3.0, 0.0, 3.0));
}

TEST_F(LoadsTest, ADraggedBeamEndStretchesItsLoads) {
    const AcDbObjectId load = addLoad(beam, 0.5, 1.0, linear(1.0, 2.0));
    {
        AcDbIntArray last;
        last.append(1);
        EXPECT_EQ(
            Open<AcDbEntity>(beam, AcDb::kForWrite)->moveGripPointsAt(last, AcGeVector3d(2.0, 0.0, 0.0)),
            Acad::eOk);
    }
    structure::processMovedElements(*db);
    EXPECT_TRUE(isAt(startOf(load), 4.0, 0.0, 3.0));
    EXPECT_TRUE(isAt(endOf(load), 8.0, 0.0, 3.0));
}

TEST_F(LoadsTest, ALocalLoadIsDrawnAnewWhereItsBeamTurnsUnderIt) {
    LoadProperties properties;
    properties.values = {5.0};
    const AcDbObjectId weight = addLoad(beam, 0.0, 0.0, properties);
    properties.type = 13;
    const AcDbObjectId local = addLoad(beam, 0.0, 0.0, properties);
    // Opening for write takes the marks of before away.
    for (const AcDbObjectId& load : {weight, local}) {
        const Open<AcDbEntity> open(load, AcDb::kForWrite);
        EXPECT_FALSE(open->isModifiedGraphics());
    }
    const AcGePoint3d before = vertexOf(local, 0);
    {
        AcDbIntArray last;
        last.append(1);
        EXPECT_EQ(
            Open<AcDbEntity>(beam, AcDb::kForWrite)->moveGripPointsAt(last, AcGeVector3d(0.0, 0.0, 6.0)),
            Acad::eOk);
    }
    structure::processMovedElements(*db);
    EXPECT_EQ(vertexOf(local, 0), before) << "it stands at the other end";
    EXPECT_TRUE(Open<AcDbEntity>(local)->isModifiedGraphics());
    EXPECT_FALSE(Open<AcDbEntity>(weight)->isModifiedGraphics()) << "it looks as before";
}

TEST_F(LoadsTest, ABeamIsCopiedWithItsLoads) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    const std::vector<std::uint8_t> original = streamOf(load);
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*db, {beam, load}, AcGeVector3d(0.0, 5.0, 0.0), copies), Acad::eOk);
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(beamOf(copies[1]), copies[0]);
    EXPECT_EQ(loadsOf(copies[0]), std::set<AcDbObjectId>{copies[1]});
    EXPECT_EQ(loadsOf(beam), std::set<AcDbObjectId>{load});
    EXPECT_TRUE(isAt(startOf(copies[1]), 0.0, 5.0, 3.0));
    EXPECT_TRUE(isAt(vertexOf(copies[1], 1), 6.0, 5.0, 3.0));
    EXPECT_NE(bimOf(copies[1]), bimOf(load));
    EXPECT_EQ(numberOf(copies[1]), 2u);
    EXPECT_TRUE(streamOf(load) == original);
    // The copy follows the copy.
    ASSERT_EQ(moveElements(*db, {copies[0]}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(startOf(copies[1]), 0.0, 5.0, 4.5));
    EXPECT_TRUE(isAt(startOf(load), 0.0, 0.0, 3.0));
}

TEST_F(LoadsTest, ALoadThatIsNamedBeforeItsBeamIsCopiedWithIt) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*db, {load, beam}, kUp, copies), Acad::eOk);
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(beamOf(copies[0]), copies[1]);
}

TEST_F(LoadsTest, ALoadWithoutItsBeamStaysBehindAndABeamAloneHasNone) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    const std::size_t before = entities(*db).size();
    std::vector<AcDbObjectId> copies;
    EXPECT_EQ(copyElements(*db, {load}, kUp, copies), Acad::eOk);
    EXPECT_TRUE(copies.empty());
    EXPECT_EQ(entities(*db).size(), before);
    ASSERT_EQ(copyElements(*db, {beam}, kUp, copies), Acad::eOk);
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_TRUE(loadsOf(copies[0]).empty());
    EXPECT_EQ(loadsOf(beam), std::set<AcDbObjectId>{load});
    // Erasing the copy does not reach the load of the original.
    ASSERT_EQ(eraseElements(copies), Acad::eOk);
    EXPECT_FALSE(load.isErased());
}

TEST_F(LoadsTest, AnErasedBeamTakesItsLoadsAndAnUndoBringsAllBack) {
    const AcDbObjectId first = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    const AcDbObjectId second = addLoad(beam, 0.0, 0.5, linear(3.0, 4.0));
    const Streams before = streams();
    embedded::beginCommand(*db);
    ASSERT_EQ(eraseElements({beam}), Acad::eOk);
    EXPECT_TRUE(first.isErased());
    EXPECT_TRUE(second.isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
    EXPECT_EQ(loadsOf(beam), (std::set<AcDbObjectId>{first, second}));
    ASSERT_TRUE(embedded::redo(*db));
    EXPECT_TRUE(first.isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(LoadsTest, AnErasedLoadIsForgottenByItsBeamAndAnUndoBringsItBack) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    const Streams before = streams();
    embedded::beginCommand(*db);
    ASSERT_EQ(eraseElements({load}), Acad::eOk);
    EXPECT_TRUE(loadsOf(beam).empty());
    EXPECT_FALSE(beam.isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_EQ(loadsOf(beam), std::set<AcDbObjectId>{load});
    EXPECT_TRUE(streams() == before);
    ASSERT_TRUE(embedded::redo(*db));
    EXPECT_TRUE(loadsOf(beam).empty());
}

TEST_F(LoadsTest, AnErasedNodeTakesBeamAndLoads) {
    const structure::Frame made = frame();
    const AcDbObjectId corner = made.columns.front();
    const std::set<AcDbObjectId> wind = loadsOf(corner);
    ASSERT_EQ(wind.size(), 1u);
    const Streams before = streams();
    embedded::beginCommand(*db);
    ASSERT_EQ(eraseElements({made.nodes.front()}), Acad::eOk);
    EXPECT_TRUE(corner.isErased());
    EXPECT_TRUE(wind.begin()->isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
}

TEST_F(LoadsTest, ABeamBringsItsLoadsIntoAnotherDrawingWhereTheyFollowIt) {
    const AcDbObjectId load = addLoad(beam, 0.5, 1.0, linear(1.0, 2.0));
    AcDbDatabase* const target = embedded::newDocument();
    AcDbObjectIdArray ids;
    ids.append(beam);
    AcDbIdMapping mapping;
    ASSERT_EQ(target->wblockCloneObjects(ids, modelSpace(*target), mapping, AcDb::kDrcIgnore), Acad::eOk);
    ASSERT_EQ(entities(*target).size(), 2u);
    const AcDbObjectId newBeam = valueIn(mapping, beam), newLoad = valueIn(mapping, load);
    EXPECT_EQ(beamOf(newLoad), newBeam);
    EXPECT_EQ(loadsOf(newBeam), std::set<AcDbObjectId>{newLoad});
    EXPECT_EQ(loadsOf(beam), std::set<AcDbObjectId>{load});

    embedded::beginCommand(*target);
    ASSERT_EQ(moveElements(*target, {newBeam}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(startOf(newLoad), 3.0, 0.0, 4.5));
    EXPECT_TRUE(isAt(startOf(load), 3.0, 0.0, 3.0));
    ASSERT_TRUE(embedded::undo(*target));
    EXPECT_TRUE(isAt(startOf(newLoad), 3.0, 0.0, 3.0));

    embedded::beginCommand(*target);
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*target, {newBeam, newLoad}, kUp, copies), Acad::eOk);
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(beamOf(copies[1]), copies[0]);
    ASSERT_TRUE(embedded::undo(*target));
    EXPECT_EQ(entities(*target).size(), 2u);

    embedded::beginCommand(*target);
    ASSERT_EQ(eraseElements({newLoad}), Acad::eOk);
    EXPECT_TRUE(loadsOf(newBeam).empty());
    ASSERT_TRUE(embedded::undo(*target));
    EXPECT_EQ(loadsOf(newBeam), std::set<AcDbObjectId>{newLoad});

    embedded::beginCommand(*target);
    ASSERT_EQ(eraseElements({newBeam}), Acad::eOk);
    EXPECT_TRUE(newLoad.isErased());
    EXPECT_FALSE(load.isErased());
    ASSERT_TRUE(embedded::undo(*target));
    EXPECT_FALSE(newLoad.isErased());
    EXPECT_EQ(loadsOf(newBeam), std::set<AcDbObjectId>{newLoad});
}

TEST_F(LoadsTest, ALoadGoesIntoNoOtherDrawingAlone) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    AcDbDatabase* const target = embedded::newDocument();
    AcDbObjectIdArray ids;
    ids.append(load);
    AcDbIdMapping mapping;
    ASSERT_EQ(target->wblockCloneObjects(ids, modelSpace(*target), mapping, AcDb::kDrcIgnore), Acad::eOk);
    EXPECT_TRUE(entities(*target).empty());
}

TEST_F(LoadsTest, ANewDrawingOfALoadedBeamAtAnotherOriginHasTheLoadOnIt) {
    addLoad(beam, 0.5, 1.0, linear(1.0, 2.0));
    AcDbObjectIdArray ids;
    ids.append(beam);
    AcDbDatabase* raw = nullptr;
    ASSERT_EQ(db->wblock(raw, ids, AcGePoint3d(1.0, 0.0, 0.0)), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> output(raw);
    ASSERT_EQ(entities(*output).size(), 2u);
    for (const AcDbObjectId& id : entities(*output)) {
        if (id.objectClass() == Load::desc()) {
            EXPECT_TRUE(isAt(startOf(id), 2.0, 0.0, 3.0));
        }
    }
}

TEST_F(LoadsTest, ACopyInNoDrawingHasNoBeamWhenItIsAppended) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    AcRxObject* raw = nullptr;
    {
        const Open<Load> original(load);
        raw = original->clone();
    }
    const AcDbObjectId copy = append(AcDbEntity::cast(raw));
    structure::processMovedElements(*db);
    EXPECT_TRUE(beamOf(copy).isNull());
    EXPECT_EQ(loadsOf(beam), std::set<AcDbObjectId>{load});
}

TEST_F(LoadsTest, ALoadThatIsAttachedElsewhereLeavesItsBeam) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    const AcDbObjectId other = addBeam(AcGePoint3d(0.0, 1.0, 0.0), AcGePoint3d(0.0, 5.0, 0.0));
    {
        const Open<Beam> holder(other, AcDb::kForWrite);
        EXPECT_EQ(Open<Load>(load, AcDb::kForWrite)->attachTo(*holder), Acad::eOk);
    }
    EXPECT_TRUE(loadsOf(beam).empty());
    EXPECT_EQ(loadsOf(other), std::set<AcDbObjectId>{load});
    EXPECT_TRUE(isAt(endOf(load), 0.0, 5.0, 0.0));
}

TEST_F(LoadsTest, OnlyLoadsOfTheSameDrawingThatAreMadeForBeamsAreAttached) {
    const AcDbObjectId free = addBound(Load::atPoint(AcGePoint3d(1.0, 1.0, 1.0), linear(5.0, 5.0)));
    {
        const Open<Beam> holder(beam, AcDb::kForWrite);
        EXPECT_EQ(Open<Load>(free, AcDb::kForWrite)->attachTo(*holder), Acad::eNotApplicable);
        const std::unique_ptr<Load> loose = Load::forBeam(0.0, 1.0, linear(1.0, 2.0));
        EXPECT_EQ(loose->attachTo(*holder), Acad::eWrongDatabase);
    }
    EXPECT_TRUE(loadsOf(beam).empty());
}

TEST_F(LoadsTest, WhatMakesNoLoadGivesNone) {
    LoadProperties none;
    EXPECT_EQ(Load::forBeam(0.0, 1.0, none), nullptr);
    EXPECT_EQ(Load::atPoint(AcGePoint3d(), none), nullptr);
    EXPECT_EQ(Load::alongLine({AcGePoint3d(), AcGePoint3d(1.0, 0.0, 0.0)}, none), nullptr);
    EXPECT_EQ(Load::alongLine({AcGePoint3d()}, linear(1.0, 2.0)), nullptr);
    EXPECT_EQ(Load::alongLine({AcGePoint3d(), AcGePoint3d()}, linear(1.0, 2.0)), nullptr);
    EXPECT_EQ(Load::overArea({AcGePoint3d(), AcGePoint3d(1.0, 0.0, 0.0)}, linear(1.0, 2.0)), nullptr);
}

TEST_F(LoadsTest, AFreeLoadStaysAndItsVerticesGoWithItsCurve) {
    LoadProperties properties = linear(4.0, 8.0);
    properties.values = {4.0, 8.0, 2.0};
    const AcDbObjectId line =
        addBound(Load::alongLine({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 3.0, 0.0}}, properties));
    EXPECT_EQ(Open<Load>(line)->plugin()->getVertices()[1].position, 0.25);
    ASSERT_EQ(moveElements(*db, {beam}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(startOf(line), 0.0, 0.0, 0.0));
    ASSERT_EQ(moveElements(*db, {line}, kUp), Acad::eOk);
    EXPECT_TRUE(isAt(vertexOf(line, 1), 1.0, 0.0, 1.5));
    {
        AcDbIntArray middle;
        middle.append(1);
        EXPECT_EQ(
            Open<AcDbEntity>(line, AcDb::kForWrite)->moveGripPointsAt(middle, AcGeVector3d(0.5, 0.0, 0.0)),
            Acad::eOk);
    }
    structure::processMovedElements(*db);
    // The vertex stays at the corner.
    EXPECT_TRUE(isAt(vertexOf(line, 1), 1.5, 0.0, 1.5));
    EXPECT_NEAR(Open<Load>(line)->plugin()->getVertices()[1].position, 1.5 / (1.5 + std::sqrt(9.25)), 1e-12);
}

std::vector<double> valuesOf(const Load& load) {
    std::vector<double> values;
    for (const auto& vertex : load.plugin()->getVertices())
        values.push_back(vertex.value);
    return values;
}

std::vector<double> positionsOf(const Load& load) {
    std::vector<double> positions;
    for (const auto& vertex : load.plugin()->getVertices())
        positions.push_back(vertex.position);
    return positions;
}

using Numbers = std::vector<double>;
// Pieces of 1, 1, 2 and 4.
const std::vector<AcGePoint3d> kBentLine = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {3, 1, 0}, {3, 5, 0}};

TEST_F(LoadsTest, ALineWithFewerValuesThanCornersHasOneAtEachCorner) {
    const std::unique_ptr<Load> load = Load::alongLine(kBentLine, linear(0.0, 8.0));
    EXPECT_EQ(valuesOf(*load), (Numbers{0.0, 1.0, 2.0, 4.0, 8.0}));
    EXPECT_EQ(positionsOf(*load), (Numbers{0.0, 0.125, 0.25, 0.5, 1.0}));
    EXPECT_EQ(load->plugin()->getVertices()[2].point, AcGePoint3d(1.0, 1.0, 0.0));
    LoadProperties single;
    single.values = {5.0};
    EXPECT_EQ(valuesOf(*Load::alongLine(kBentLine, single)), Numbers(5, 5.0));
}

TEST_F(LoadsTest, AValueBetweenTheCornersOfALineIsKept) {
    LoadProperties properties;
    properties.values = {0.0, 6.0, 0.0, 3.0};
    const std::unique_ptr<Load> load =
        Load::alongLine({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {4, 2, 0}, {4, 4, 0}}, properties);
    EXPECT_EQ(positionsOf(*load), (Numbers{0.0, 0.25, 1.0 / 3.0, 0.5, 2.0 / 3.0, 0.75, 1.0}));
    EXPECT_EQ(valuesOf(*load), (Numbers{0.0, 4.5, 6.0, 3.0, 0.0, 0.75, 3.0}));
}

TEST_F(LoadsTest, AShapeThatGoesByItsMiddleValueHasItInTheMiddleOfItsVertices) {
    for (const std::size_t pieces : {2u, 3u, 4u, 5u}) {
        LoadProperties properties;
        properties.shape = LoadShape::kQuadraticMid;
        properties.values = {0.0, 8.0, 0.0};
        std::vector<AcGePoint3d> points;
        for (std::size_t i = 0; i <= pieces; ++i)
            points.emplace_back(static_cast<double>(i * i), static_cast<double>(i), 0.0);
        const Numbers values = valuesOf(*Load::alongLine(points, properties));
        ASSERT_EQ(values.size(), pieces + 1);
        EXPECT_EQ(values[values.size() / 2], 8.0) << pieces;
        EXPECT_EQ(values.front(), 0.0);
        EXPECT_EQ(values.back(), 0.0);
    }
}

TEST_F(LoadsTest, AGripMovesAFreePointLoad) {
    const AcDbObjectId load = addBound(Load::atPoint(AcGePoint3d(1.0, 1.0, 1.0), linear(5.0, 5.0)));
    const Open<AcDbEntity> entity(load, AcDb::kForWrite);
    AcDbGripDataPtrArray grips;
    ASSERT_EQ(entity->getGripPoints(grips, 1.0, 4, AcGeVector3d::kZAxis, 0), Acad::eOk);
    ASSERT_EQ(grips.length(), 1);
    AcDbVoidPtrArray held;
    held.append(grips[0]->appData());
    EXPECT_EQ(entity->moveGripPointsAt(held, kUp, 0), Acad::eOk);
    for (AcDbGripData* grip : grips)
        delete grip;
    AcDbExtents box;
    ASSERT_EQ(entity->getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(isAt(box.minPoint(), 1.0, 1.0, 2.5));
    AcDbIntArray indices;
    indices.append(0);
    EXPECT_EQ(entity->moveGripPointsAt(indices, kUp), Acad::eOk);
    indices.append(1);
    EXPECT_EQ(entity->moveGripPointsAt(indices, kUp), Acad::eInvalidIndex);
    ASSERT_EQ(entity->getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(isAt(box.minPoint(), 1.0, 1.0, 4.0));
}

TEST_F(LoadsTest, AnAuditOfABeamForgetsErasedLoads) {
    const AcDbObjectId load = addLoad(beam, 0.0, 1.0, linear(1.0, 2.0));
    {
        // While the beam is open the load cannot tell it.
        const Open<Beam> holder(beam, AcDb::kForWrite);
        EXPECT_EQ(Open<Load>(load, AcDb::kForWrite)->erase(), Acad::eOk);
    }
    EXPECT_EQ(loadsOf(beam), std::set<AcDbObjectId>{load});
    EXPECT_EQ(Open<AcDbEntity>(beam, AcDb::kForWrite)->audit(nullptr), Acad::eOk);
    EXPECT_TRUE(loadsOf(beam).empty());
}

TEST_F(LoadsTest, ProjectedLoadsLieInTheLevelOfTheEndThatTheyMeetFirst) {
    const AcDbObjectId rafter = addBeam(AcGePoint3d(0.0, 0.0, 0.0), AcGePoint3d(4.0, 0.0, 3.0));
    ASSERT_EQ(Open<Beam>(rafter, AcDb::kForWrite)->appendLineTo(AcGePoint3d(8.0, 0.0, 0.0)), Acad::eOk);
    LoadProperties snow = linear(-4.0, -4.0);
    snow.type = 19;
    const AcDbObjectId load = addLoad(rafter, 0.0, 1.0, snow);
    // Snow comes from above, and meets the ridge first.
    EXPECT_TRUE(isAt(startOf(load), 0.0, 0.0, 3.0));
    EXPECT_TRUE(isAt(endOf(load), 8.0, 0.0, 3.0));
    EXPECT_EQ(Open<Load>(load)->getLength(), 8.0);
    LoadProperties lift = linear(4.0, 4.0);
    lift.type = 19;
    const AcDbObjectId other = addLoad(rafter, 0.0, 0.5, lift);
    EXPECT_TRUE(isAt(startOf(other), 0.0, 0.0, 0.0));
    EXPECT_TRUE(isAt(endOf(other), 4.0, 0.0, 0.0));
    // Along a column nothing is left of it: it lies in the column.
    const AcDbObjectId column = addBeam(AcGePoint3d(0.0, 0.0, 0.0), AcGePoint3d(0.0, 0.0, 3.0));
    EXPECT_EQ(endOf(addLoad(column, 0.0, 1.0, snow)), AcGePoint3d(0.0, 0.0, 3.0));
}

TEST_F(LoadsTest, TheAxesOfABeamRunAlongItAndUpAndTurnWithItsRoll) {
    const auto axesOf = [](const AcDbObjectId& id) {
        const Open<Beam> open(id);
        const auto system = open->general()->getCoordinateSystem();
        EXPECT_TRUE(system.has_value());
        AcGePoint3d origin;
        std::vector<AcGeVector3d> axes(3);
        system->getCoordSystem(origin, axes[0], axes[1], axes[2]);
        EXPECT_TRUE(origin.isEqualTo(open->startPoint()));
        return axes;
    };
    const auto is = [](const AcGeVector3d& v, double x, double y, double z) {
        return v.isEqualTo(AcGeVector3d(x, y, z), orv::geom::gTol);
    };
    auto axes = axesOf(beam);
    EXPECT_TRUE(is(axes[0], 1, 0, 0) && is(axes[1], 0, 1, 0) && is(axes[2], 0, 0, 1));
    const double quarter = std::acos(0.0);
    Open<Beam>(beam, AcDb::kForWrite)->setRoll(quarter);
    axes = axesOf(beam);
    EXPECT_TRUE(is(axes[0], 1, 0, 0) && is(axes[1], 0, 0, 1) && is(axes[2], 0, -1, 0));
    axes = axesOf(addBeam(AcGePoint3d(1.0, 1.0, 0.0), AcGePoint3d(1.0, 1.0, 3.0)));
    EXPECT_TRUE(is(axes[0], 0, 0, 1) && is(axes[1], 0, 1, 0) && is(axes[2], -1, 0, 0));
    axes = axesOf(addBeam(AcGePoint3d(0.0, 0.0, 0.0), AcGePoint3d(3.0, 0.0, 4.0)));
    EXPECT_TRUE(is(axes[0], 0.6, 0, 0.8) && is(axes[1], 0, 1, 0) && is(axes[2], -0.8, 0, 0.6));
}

TEST_F(LoadsTest, TheAxesOfABeamAreThereAgainAfterSaveUndoAndCopy) {
    const AcDbHandle handle = beam.handle();
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*db, {beam}, kUp, copies), Acad::eOk);
    EXPECT_TRUE(Open<Beam>(copies[0])->general()->getCoordinateSystem().has_value());
    embedded::beginCommand(*db);
    ASSERT_EQ(moveElements(*db, {beam}, kUp), Acad::eOk);
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(Open<Beam>(beam)->general()->getCoordinateSystem().has_value());
    saveAndOpen();
    AcDbObjectId read;
    ASSERT_EQ(db->getAcDbObjectId(read, false, handle), Acad::eOk);
    EXPECT_TRUE(Open<Beam>(read)->general()->getCoordinateSystem().has_value());
}

TEST_F(LoadsTest, AFrameWithoutLoadsHasNone) {
    structure::FrameOptions options;
    options.hasLoads = false;
    const structure::Frame made = structure::buildFrame(*db, options);
    EXPECT_TRUE(made.loads.empty());
    EXPECT_EQ(made.size(), 50u);
}

TEST_F(LoadsTest, FreeLoadsOfAFrameReferToTheirSlabs) {
    const structure::Frame made = frame();
    const Open<Load> last(made.loads.back());
    const auto* const plugin = dynamic_cast<const structure::FreeLoad*>(last->plugin());
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(plugin->getAffectedNos(), std::set<unsigned int>{numberOf(made.slabs.back())});
}

TEST_F(LoadsTest, TheSmallestFrameHasLoadsToo) {
    structure::FrameOptions options;
    options.bays = 1;
    options.storeys = 1;
    const structure::Frame made = structure::buildFrame(*db, options);
    // Four beams, rafter, curved beam, a column, and four over the slab.
    EXPECT_EQ(made.loads.size(), 11u);
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(LoadsTest, ALoadIsRegisteredBesideItsSiblings) {
    const AcRxClass* const row = Load::desc();
    EXPECT_STREQ(row->name(), L"STR_Load");
    EXPECT_STREQ(row->dxfName(), L"STR_LOAD");
    EXPECT_STREQ(row->appName(), kApplication);
    EXPECT_EQ(row->myParent(), ORV_SegmentedCurve::desc());
}

} // namespace
} // namespace structure_tests
