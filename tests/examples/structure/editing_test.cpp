// Elements are made, moved, copied, erased and brought back, in one drawing and into another.

#include "examples/structure/structure_test.h"

#include "dbidmap.h"
#include "dbx/doc/system_manager.h"
#include "dbx/elem/MovedElements.h"
#include "support/console_recorder.h"
#include "support/test_element.h"

#include <boost/make_shared.hpp>

#include <cstring>
#include <set>

namespace structure_tests {
namespace {

using structure::Beam;
using structure::copyElements;
using structure::Element;
using structure::eraseElements;
using structure::Frame;
using structure::moveElements;
using structure::Node;
using structure::Slab;

const AcGeVector3d kUp(0.0, 0.0, 1.5);

class EditingTest : public StructureTest {
protected:
    AcGePoint3d startOf(AcDbObjectId beam) const {
        AcGePoint3d point;
        EXPECT_EQ(Open<Beam>(beam)->getStartPoint(point), Acad::eOk);
        return point;
    }
    AcGePoint3d endOf(AcDbObjectId beam) const {
        AcGePoint3d point;
        EXPECT_EQ(Open<Beam>(beam)->getEndPoint(point), Acad::eOk);
        return point;
    }
    AcGePoint3d placeOf(AcDbObjectId node) const { return Open<Node>(node)->position(); }

    // No number twice in a kind, none missing.
    void expectUniqueNumbers() const {
        std::map<AcRxClass*, std::set<unsigned int>> numbers;
        for (const AcDbObjectId& id : entities(*db)) {
            const unsigned int number = numberOf(id);
            EXPECT_GT(number, 0u);
            EXPECT_TRUE(numbers[id.objectClass()].insert(number).second) << number;
        }
    }
    void expectUniqueIdentifiers() const {
        std::set<std::string> identifiers;
        for (const AcDbObjectId& id : entities(*db))
            EXPECT_TRUE(identifiers.insert(bimOf(id)).second);
    }
    // Every connection is one of these.
    void expectConnectedWithin(const std::vector<AcDbObjectId>& elements) const {
        const std::set<AcDbObjectId> known(elements.begin(), elements.end());
        for (const AcDbObjectId& id : elements)
            for (const AcDbObjectId& other : connectionsOf(id))
                EXPECT_EQ(known.count(other), 1u);
    }
};

TEST_F(EditingTest, AFrameHasItsElementsConnectionsAndSelections) {
    const Frame made = frame();
    EXPECT_EQ(made.nodes.size(), 18u);
    EXPECT_EQ(made.columns.size(), 12u);
    EXPECT_EQ(made.beams.size(), 16u);
    EXPECT_EQ(made.slabs.size(), 4u);
    EXPECT_EQ(made.loads.size(), 21u);
    EXPECT_EQ(entities(*db).size(), made.size());
    expectUniqueNumbers();
    expectUniqueIdentifiers();

    const AcDbObjectId column = made.columns.front();
    const std::set<AcDbObjectId> ends = {made.nodes[0], made.nodes[6]};
    EXPECT_EQ(connectionsOf(column), ends);
    EXPECT_EQ(Open<Beam>(column)->startNode(), made.nodes[0]);
    EXPECT_EQ(Open<Beam>(column)->endNode(), made.nodes[6]);
    EXPECT_EQ(connectionsOf(made.nodes[0]).count(column), 1u);
    EXPECT_EQ(connectionsOf(made.slabs.front()).size(), 4u);
    EXPECT_TRUE(Open<Beam>(made.beams.back())->getSegmentAt(0)->isArc());

    const OpenElement element(column);
    EXPECT_EQ(element->getNodDatabaseName(), L"ASDWG");
    EXPECT_EQ(element->general()->getName(), L"C1");
    EXPECT_EQ(structure::SectionPlugin::of(*element)->section().material, L"S 355");

    std::set<AcDbObjectId> selected;
    ASSERT_EQ(structure::findSelection(*db, L"ASDWG columns", selected), Acad::eOk);
    EXPECT_EQ(selected, std::set<AcDbObjectId>(made.columns.begin(), made.columns.end()));
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(EditingTest, AFrameIsBoundToTheSystemThatTheDrawingHas) {
    structure::FrameOptions options;
    options.system = L"HALL";
    options.unit = orv::kUnitMillimetre;
    EXPECT_EQ(structure::buildFrame(*db, options).system, L"HALL");
    options.origin = AcGePoint3d(0.0, 50000.0, 0.0);
    options.system.clear();
    options.unit = orv::kUnitMetre;
    const Frame second = structure::buildFrame(*db, options);
    EXPECT_EQ(second.system, L"HALL");
    EXPECT_TRUE(placeOf(second.nodes[1]).isEqualTo(AcGePoint3d(6000.0, 50000.0, 0.0)));
}

TEST_F(EditingTest, ANewSystemHasTheBoxAndTheNodesOfItsFrame) {
    const Frame made = frame();
    const auto system = orv::SystemManager::instance().getSystemByName(db, made.system);
    ASSERT_NE(system, nullptr);
    AcGePoint3d low, high;
    system->getExtentsWCS(low, high);
    EXPECT_TRUE(low.isEqualTo(AcGePoint3d(0.0, 0.0, 0.0)));
    EXPECT_TRUE(high.isEqualTo(AcGePoint3d(12.0, 5.0, 6.0)));
    EXPECT_EQ(system->get_sys_anzkn(), 18);
}

TEST_F(EditingTest, ASecondFrameGoesOnCounting) {
    frame();
    structure::FrameOptions options;
    options.origin = AcGePoint3d(100.0, 0.0, 0.0);
    const Frame second = structure::buildFrame(*db, options);
    EXPECT_EQ(numberOf(second.slabs.front()), 5u);
    expectUniqueNumbers();
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(EditingTest, AFrameThatCannotBeBuiltLeavesNothing) {
    structure::FrameOptions options;
    options.bays = 0;
    EXPECT_THROW(structure::buildFrame(*db, options), std::runtime_error);
    EXPECT_TRUE(entities(*db).empty());
}

TEST_F(EditingTest, ABeamThatIsConnectedElsewhereLetsGoOfItsNodes) {
    const Frame made = frame();
    const AcDbObjectId column = made.columns.front();
    const AcDbObjectId before = Open<Beam>(column)->startNode();
    const AcDbObjectId after = made.nodes.back();
    {
        const Open<Beam> beam(column, AcDb::kForWrite);
        const Open<Node> node(after, AcDb::kForWrite);
        ASSERT_EQ(beam->connect(&*node, nullptr), Acad::eOk);
    }
    EXPECT_EQ(connectionsOf(column), std::set<AcDbObjectId>{after});
    EXPECT_TRUE(Open<Beam>(column)->endNode().isNull());
    EXPECT_EQ(connectionsOf(before).count(column), 0u);
    EXPECT_EQ(connectionsOf(after).count(column), 1u);
}

TEST_F(EditingTest, ABeamTakesNoNodeOfAnotherDrawing) {
    const Frame made = frame();
    const AcDbObjectId column = made.columns.front();
    const std::set<AcDbObjectId> before = connectionsOf(column);
    db = embedded::newDocument();
    const Open<Node> stranger(append(new Node(AcGePoint3d())), AcDb::kForWrite);
    EXPECT_EQ(Open<Beam>(column, AcDb::kForWrite)->connect(&*stranger, nullptr), Acad::eWrongDatabase);
    EXPECT_EQ(connectionsOf(column), before);
}

TEST_F(EditingTest, NodesFollowTheEndsOfABeam) {
    const Frame made = frame();
    const AcDbObjectId beam = made.beams.front();
    const AcGePoint3d before = startOf(beam);
    ASSERT_EQ(moveElements(*db, {beam}, kUp), Acad::eOk);
    EXPECT_TRUE(startOf(beam).isEqualTo(before + kUp));
    EXPECT_TRUE(placeOf(Open<Beam>(beam)->startNode()).isEqualTo(startOf(beam)));
    EXPECT_TRUE(placeOf(Open<Beam>(beam)->endNode()).isEqualTo(endOf(beam)));
}

TEST_F(EditingTest, NodesThatMoveWithTheirBeamsMoveOnce) {
    const Frame made = frame();
    const AcGePoint3d before = placeOf(made.nodes.front());
    ASSERT_EQ(moveElements(*db, allOf(made), kUp), Acad::eOk);
    EXPECT_TRUE(placeOf(made.nodes.front()).isEqualTo(before + kUp));
    for (const AcDbObjectId& beam : made.beams)
        EXPECT_TRUE(placeOf(Open<Beam>(beam)->startNode()).isEqualTo(startOf(beam)));
}

TEST_F(EditingTest, ACopyOfAllIsAFrameOfItsOwn) {
    const Frame made = frame();
    const Streams before = streams();
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*db, allOf(made), AcGeVector3d(0.0, 20.0, 0.0), copies), Acad::eOk);
    ASSERT_EQ(copies.size(), made.size());
    expectUniqueNumbers();
    expectUniqueIdentifiers();
    expectConnectedWithin(allOf(made));
    expectConnectedWithin(copies);
    // As many connections as the originals have.
    const std::vector<AcDbObjectId> originals = allOf(made);
    for (std::size_t i = 0; i < copies.size(); ++i)
        EXPECT_EQ(connectionsOf(copies[i]).size(), connectionsOf(originals[i]).size());
    // The originals have not been touched.
    const Streams after = streams();
    for (const auto& stream : before)
        EXPECT_TRUE(after.at(stream.first) == stream.second) << stream.first;
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(EditingTest, ACopyOfABeamAloneIsFree) {
    const Frame made = frame();
    const AcDbObjectId beam = made.beams.front();
    const AcDbObjectId node = Open<Beam>(beam)->startNode();
    const AcGePoint3d place = placeOf(node);
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*db, {beam}, kUp, copies), Acad::eOk);
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_TRUE(connectionsOf(copies.front()).empty());
    EXPECT_TRUE(Open<Beam>(copies.front())->startNode().isNull());
    EXPECT_TRUE(placeOf(node).isEqualTo(place));
    EXPECT_EQ(connectionsOf(node).count(copies.front()), 0u);
}

TEST_F(EditingTest, ACopyOfANodeTakesNoBeamsWithIt) {
    const Frame made = frame();
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*db, {made.nodes.front()}, kUp, copies), Acad::eOk);
    EXPECT_TRUE(connectionsOf(copies.front()).empty());
    ASSERT_EQ(eraseElements(copies), Acad::eOk);
    EXPECT_FALSE(made.columns.front().isErased());
}

TEST_F(EditingTest, ABeamGoesIntoAnotherDrawingWithItsNodes) {
    const Frame made = frame();
    const AcDbObjectId column = made.columns[1]; // one without loads
    AcDbDatabase* const target = embedded::newDocument();
    AcDbObjectIdArray ids;
    ids.append(column);
    AcDbIdMapping mapping;
    ASSERT_EQ(target->wblockCloneObjects(ids, modelSpace(*target), mapping, AcDb::kDrcIgnore), Acad::eOk);
    ASSERT_EQ(entities(*target).size(), 3u);
    AcDbIdPair pair(column, AcDbObjectId(), false);
    ASSERT_TRUE(mapping.compute(pair));
    const AcDbObjectId clone = pair.value();
    EXPECT_EQ(clone.database(), target);
    const std::set<AcDbObjectId> nodes = connectionsOf(clone);
    ASSERT_EQ(nodes.size(), 2u);
    for (const AcDbObjectId& node : nodes) {
        EXPECT_EQ(node.database(), target);
        EXPECT_EQ(connectionsOf(node), std::set<AcDbObjectId>{clone});
        EXPECT_GT(numberOf(node), 0u);
    }
    EXPECT_EQ(Open<Beam>(clone)->startNode().database(), target);
    EXPECT_EQ(numberOf(clone), 1u);
    EXPECT_NE(bimOf(clone), bimOf(column));
    EXPECT_EQ(OpenElement(clone)->getNodDatabaseName(), L"ASDWG");
}

TEST_F(EditingTest, ASlabGoesIntoAnotherDrawingAlone) {
    const Frame made = frame();
    AcDbDatabase* const target = embedded::newDocument();
    AcDbObjectIdArray ids;
    ids.append(made.slabs.front());
    AcDbIdMapping mapping;
    ASSERT_EQ(target->wblockCloneObjects(ids, modelSpace(*target), mapping, AcDb::kDrcIgnore), Acad::eOk);
    ASSERT_EQ(entities(*target).size(), 1u);
    EXPECT_TRUE(connectionsOf(entities(*target).front()).empty());
}

TEST_F(EditingTest, ANewDrawingOfPartsHasItsOwnNumbers) {
    const Frame made = frame();
    AcDbObjectIdArray ids;
    ids.append(made.columns[3]);
    AcDbDatabase* raw = nullptr;
    ASSERT_EQ(db->wblock(raw, ids, AcGePoint3d(1.0, 0.0, 0.0)), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> output(raw);
    ASSERT_EQ(entities(*output).size(), 3u);
    for (const AcDbObjectId& id : entities(*output))
        if (id.objectClass() == Beam::desc()) {
            EXPECT_EQ(numberOf(id), 1u);
            EXPECT_TRUE(placeOf(Open<Beam>(id)->startNode()).isEqualTo(startOf(id)));
        }
}

TEST_F(EditingTest, AnErasedBeamLosesItsConnectionsAndAnUndoBringsThemBack) {
    const Frame made = frame();
    const AcDbObjectId beam = made.beams.front();
    const Streams before = streams();
    const std::set<AcDbObjectId> connections = connectionsOf(beam);
    ASSERT_FALSE(connections.empty());
    embedded::beginCommand(*db);
    ASSERT_EQ(eraseElements({beam}), Acad::eOk);
    EXPECT_TRUE(beam.isErased());
    for (const AcDbObjectId& node : connections)
        EXPECT_FALSE(node.isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_FALSE(beam.isErased());
    EXPECT_EQ(connectionsOf(beam), connections);
    EXPECT_TRUE(streams() == before);
    ASSERT_TRUE(embedded::redo(*db));
    EXPECT_TRUE(beam.isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
}

TEST_F(EditingTest, ABeamThatIsUnerasedByHandHasNoConnections) {
    const Frame made = frame();
    const AcDbObjectId beam = made.beams.front();
    ASSERT_EQ(eraseElements({beam}), Acad::eOk);
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, beam, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(entity->erase(false), Acad::eOk);
    entity->close();
    EXPECT_TRUE(connectionsOf(beam).empty());
}

TEST_F(EditingTest, AnElementThatComesBackGetsAnotherNumberIfItsOwnWasTaken) {
    const Frame made = frame();
    const AcDbObjectId slab = made.slabs.back();
    const unsigned int number = numberOf(slab);
    ASSERT_EQ(eraseElements({slab}), Acad::eOk);
    const AcDbObjectId other = append(new Slab({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.2));
    structure::processMovedElements(*db);
    EXPECT_EQ(numberOf(other), number);
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, slab, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(entity->erase(false), Acad::eOk);
    entity->close();
    EXPECT_NE(numberOf(slab), number);
    expectUniqueNumbers();
}

TEST_F(EditingTest, AnErasedNodeTakesItsBeamsAndAnUndoBringsAllBack) {
    const Frame made = frame();
    const AcDbObjectId node = made.nodes.front();
    const std::set<AcDbObjectId> beams = connectionsOf(node);
    ASSERT_FALSE(beams.empty());
    const Streams before = streams();
    embedded::beginCommand(*db);
    ASSERT_EQ(eraseElements({node}), Acad::eOk);
    for (const AcDbObjectId& beam : beams)
        EXPECT_TRUE(beam.isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
    ASSERT_TRUE(embedded::redo(*db));
    EXPECT_TRUE(beams.begin()->isErased());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
}

TEST_F(EditingTest, UndoAndRedoOfMovesAndCopiesGiveTheSameStreams) {
    const Frame made = frame();
    std::vector<Streams> states = {streams()};
    embedded::beginCommand(*db);
    ASSERT_EQ(moveElements(*db, {made.beams.front()}, kUp), Acad::eOk);
    states.push_back(streams());
    embedded::beginCommand(*db);
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(copyElements(*db, allOf(made), AcGeVector3d(0.0, 20.0, 0.0), copies), Acad::eOk);
    states.push_back(streams());
    embedded::beginCommand(*db);
    ASSERT_EQ(eraseElements({copies.front()}), Acad::eOk);
    states.push_back(streams());
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = states.size() - 1; i-- > 0;) {
            ASSERT_TRUE(embedded::undo(*db));
            EXPECT_TRUE(streams() == states[i]) << i;
        }
        for (std::size_t i = 1; i < states.size(); ++i) {
            ASSERT_TRUE(embedded::redo(*db));
            EXPECT_TRUE(streams() == states[i]) << i;
        }
    }
}

TEST_F(EditingTest, ASavedFrameIsTheSameWhenItIsOpenedAgain) {
    frame();
    const Streams before = streams();
    saveAndOpen();
    EXPECT_TRUE(streams() == before);
    expectUniqueNumbers();
    EXPECT_EQ(reports.conditions(), testing_support::Texts());
}

TEST_F(EditingTest, ACopyInNoDrawingBecomesAnElementOfItsOwnWhenItIsAppended) {
    const Frame made = frame();
    const AcDbObjectId slab = made.slabs.front();
    AcRxObject* raw = nullptr;
    {
        const Open<Slab> original(slab);
        raw = original->clone();
    }
    const AcDbObjectId copy = append(AcDbEntity::cast(raw));
    structure::processMovedElements(*db);
    EXPECT_NE(bimOf(copy), bimOf(slab));
    EXPECT_TRUE(connectionsOf(copy).empty());
    expectUniqueNumbers();
}

TEST_F(EditingTest, TheEndOfACommandDoesWhatIsDueAndOneUndoTakesAllBack) {
    const Frame made = frame();
    const AcDbObjectId beam = made.beams.front();
    const AcDbObjectId node = Open<Beam>(beam)->startNode();
    const Streams before = streams();
    EXPECT_TRUE(embedded::runCommand(*db, L"MOVE", [&] {
        {
            const Open<AcDbEntity> entity(beam, AcDb::kForWrite);
            EXPECT_EQ(entity->transformBy(AcGeMatrix3d::translation(kUp)), Acad::eOk);
        }
        EXPECT_FALSE(placeOf(node).isEqualTo(startOf(beam)));
        return true;
    }));
    EXPECT_TRUE(placeOf(node).isEqualTo(startOf(beam)));
    const Streams after = streams();
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(streams() == before);
    ASSERT_TRUE(embedded::redo(*db));
    EXPECT_TRUE(streams() == after);
}

TEST_F(EditingTest, ANewElementHasItsNumberAtTheEndOfItsCommand) {
    frame();
    AcDbObjectId slab;
    EXPECT_TRUE(embedded::runCommand(*db, L"SLAB", [&] {
        slab = append(new Slab({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.2));
        EXPECT_EQ(numberOf(slab), 0u);
        return true;
    }));
    EXPECT_NE(numberOf(slab), 0u);
    expectUniqueNumbers();
}

TEST_F(EditingTest, AfterAnUndoNothingIsDue) {
    const Frame made = frame();
    const Streams before = streams();
    embedded::beginCommand(*db);
    {
        const Open<AcDbEntity> beam(made.beams.front(), AcDb::kForWrite);
        ASSERT_EQ(beam->transformBy(AcGeMatrix3d::translation(kUp)), Acad::eOk);
    }
    EXPECT_FALSE(orv::MovedElements::instance(db).getHandlers().empty());
    ASSERT_TRUE(embedded::undo(*db));
    EXPECT_TRUE(orv::MovedElements::instance(db).getHandlers().empty());
    structure::processMovedElements(*db);
    EXPECT_TRUE(streams() == before);
}

TEST_F(EditingTest, APluginWithoutItsCodeIsKeptAndItsIdsAreTranslated) {
    const Frame made = frame();
    const AcDbObjectId column = made.columns.front();
    const auto plugin = boost::make_shared<testing_support::RecordingPlugin>("test.away.1");
    plugin->data = "kept";
    plugin->softIds = {Open<Beam>(column)->startNode()};
    plugin->hardIds = {made.nodes.back()};
    OpenElement(column, AcDb::kForWrite)->addPlugin(plugin);
    const Streams before = streams();
    const AcDbHandle handle = column.handle();
    const testing_support::ConsoleRecorder console;
    saveAndOpen();
    AcDbObjectId read;
    ASSERT_EQ(db->getAcDbObjectId(read, false, handle), Acad::eOk);
    ASSERT_EQ(OpenElement(read)->unknownPlugins().size(), 1u);
    EXPECT_NE(console.text().find(L"Warning: Plugin type not registered: test.away.1!\n"),
              std::wstring::npos);
    EXPECT_TRUE(streams() == before);

    AcDbDatabase* const target = embedded::newDocument();
    AcDbObjectIdArray ids;
    ids.append(read);
    AcDbIdMapping mapping;
    ASSERT_EQ(target->wblockCloneObjects(ids, modelSpace(*target), mapping, AcDb::kDrcIgnore), Acad::eOk);
    AcDbIdPair pair(read, AcDbObjectId(), false);
    ASSERT_TRUE(mapping.compute(pair));
    const OpenElement clone(pair.value());
    ASSERT_EQ(clone->unknownPlugins().size(), 1u);
    const auto& original = *OpenElement(read)->unknownPlugins().front().second;
    const auto& kept = *clone->unknownPlugins().front().second;
    ASSERT_EQ(kept.m_data->size(), original.m_data->size());
    EXPECT_EQ(std::memcmp(kept.m_data->cast<const char*>(), original.m_data->cast<const char*>(),
                          original.m_data->size()),
              0);
    ASSERT_EQ(kept.m_softIds.size(), 1u);
    EXPECT_EQ(kept.m_softIds.front(), dynamic_cast<Beam&>(*clone).startNode());
    // What only the kept record holds hard has come along, too.
    ASSERT_EQ(kept.m_hardIds.size(), 1u);
    EXPECT_EQ(kept.m_hardIds.front().database(), target);
    EXPECT_FALSE(kept.m_hardIds.front().isNull());
}

TEST_F(EditingTest, AnAuditForgetsConnectionsToWhatIsErased) {
    const Frame made = frame();
    const AcDbObjectId slab = made.slabs.front();
    const AcDbObjectId beam = *connectionsOf(slab).begin();
    ASSERT_EQ(eraseElements({beam}), Acad::eOk);
    EXPECT_EQ(connectionsOf(slab).count(beam), 1u);
    EXPECT_EQ(Open<AcDbEntity>(slab, AcDb::kForWrite)->audit(nullptr), Acad::eOk);
    EXPECT_EQ(connectionsOf(slab).count(beam), 0u);
    EXPECT_EQ(connectionsOf(slab).size(), 3u);
}

} // namespace
} // namespace structure_tests
