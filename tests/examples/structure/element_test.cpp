// What each kind of element files, shows, and lets its plugins decide.

#include "examples/structure/structure_test.h"
#include "support/archive_bytes.h"
#include "support/beep_recorder.h"
#include "support/console_recorder.h"
#include "support/own_calls.h"
#include "support/test_element.h"

#include "base/key_value_storage.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dbx/NamedSelection.h"
#include "dbx/binary_in_archive.h"
#include "dbx/binary_out_archive.h"
#include "embedded/display_list.h"
#include "orvcore/warn_on_new_version.h"
#include "orvshape/element_contexts.h"
#include "orvshape/endpoint_interface.h"
#include "orvshape/geom.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <limits>

namespace structure_tests {
namespace {

using namespace testing_support;
using structure::Beam;
using structure::Element;
using structure::Frame;
using structure::Node;
using structure::Section;
using structure::SectionPlugin;
using structure::Slab;

class ElementTest : public StructureTest {
protected:
    AcDbObjectId node() { return append(new Node(AcGePoint3d(1.0, 2.0, 3.0))); }
    AcDbObjectId beam() {
        orv::CurveSegment line;
        orv::CurveSegment::line(AcGePoint3d(0.0, 0.0, 0.0), AcGePoint3d(6.0, 0.0, 0.0), line);
        return append(new Beam(line));
    }
    AcDbObjectId slab() { return append(new Slab({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}, 0.2)); }
};

// The calls behind the element's stream, which ends with its magic.
Texts callsBehindStream(AcDbEntity& entity) {
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    EXPECT_EQ(entity.dwgOutFields(&filer), Acad::eOk);
    const std::string end = "writeInt32 " + std::to_string(orv::elem::ElementBase::kMagic);
    const auto magic = std::find(filer.calls.rbegin(), filer.calls.rend(), end);
    return {magic.base(), filer.calls.end()};
}

TEST_F(ElementTest, ANodeFilesVersionPositionAndMagicBehindItsStream) {
    Node fresh(AcGePoint3d(1.0, 2.0, 3.0));
    const Texts expected = {"writeInt32 1", "writePoint3d", "writeUInt32 1398035022"};
    EXPECT_EQ(callsBehindStream(fresh), expected);
}

TEST_F(ElementTest, ABeamFilesRollAndNodesBehindItsStream) {
    orv::CurveSegment line;
    ASSERT_TRUE(orv::CurveSegment::line(AcGePoint3d(), AcGePoint3d(1.0, 0.0, 0.0), line));
    Beam fresh(line);
    fresh.setRoll(0.5);
    const Texts expected = {"writeInt32 1", "writeDouble 0.500000", "writeSoftPointerId null",
                            "writeSoftPointerId null", "writeUInt32 1398030917"};
    EXPECT_EQ(callsBehindStream(fresh), expected);
}

TEST_F(ElementTest, ASlabFilesThicknessAndCornersBehindItsStream) {
    Slab fresh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.25);
    const Texts expected = {"writeInt32 1", "writeDouble 0.250000", "writeUInt32 3",         "writePoint3d",
                            "writePoint3d", "writePoint3d",         "writeUInt32 1398035276"};
    EXPECT_EQ(callsBehindStream(fresh), expected);
}

// Files an element to memory, lets the test damage the bytes, and reads them into a fresh one.
template <class Kind>
Acad::ErrorStatus readDamaged(const Kind& original,
                              const std::function<void(std::vector<std::uint8_t>&)>& damage) {
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    EXPECT_EQ(original.dwgOutFields(&out), Acad::eOk);
    damage(bytes);
    Kind fresh;
    embedded::MemoryFiler in(AcDb::kFileFiler, bytes.data(), bytes.size());
    return fresh.dwgInFields(&in);
}

TEST_F(ElementTest, ANewerClassVersionAndAWrongEndMakeAProxy) {
    const Node original(AcGePoint3d(1.0, 2.0, 3.0));
    const auto atOwn = [](std::vector<std::uint8_t>& bytes) { return bytes.size() - 4 - 24 - 4; };
    EXPECT_EQ(readDamaged(original, [](auto&) {}), Acad::eOk);
    EXPECT_EQ(readDamaged(original, [&](auto& bytes) { bytes[atOwn(bytes)] = 2; }), Acad::eMakeMeProxy);
    EXPECT_EQ(readDamaged(original, [&](auto& bytes) { bytes[atOwn(bytes)] = 0; }), Acad::eMakeMeProxy);
    EXPECT_EQ(readDamaged(original, [](auto& bytes) { bytes.back() ^= 1; }), Acad::eMakeMeProxy);
}

TEST_F(ElementTest, ShortenedStreamsOfEveryKindAreRefused) {
    orv::CurveSegment line;
    ASSERT_TRUE(orv::CurveSegment::line(AcGePoint3d(), AcGePoint3d(1.0, 0.0, 0.0), line));
    const Beam beam(line);
    const Slab slab({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.25);
    const Node node(AcGePoint3d(1.0, 2.0, 3.0));
    const ReportRecorder reports;
    const auto refusesEveryPrefix = [](const auto& original) {
        std::vector<std::uint8_t> whole;
        embedded::MemoryFiler out(AcDb::kFileFiler, whole);
        ASSERT_EQ(original.dwgOutFields(&out), Acad::eOk);
        for (std::size_t length = 0; length < whole.size(); ++length)
            EXPECT_NE(readDamaged(original, [length](auto& bytes) { bytes.resize(length); }), Acad::eOk)
                << length;
    };
    refusesEveryPrefix(node);
    refusesEveryPrefix(beam);
    refusesEveryPrefix(slab);
}

TEST_F(ElementTest, ASingleWrongBitIsReadOrRefusedAndDoesNoHarm) {
    const Slab slab({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.25);
    const ReportRecorder reports;
    const ConsoleRecorder console;
    const BeepRecorder beeps;
    std::vector<std::uint8_t> whole;
    embedded::MemoryFiler out(AcDb::kFileFiler, whole);
    ASSERT_EQ(slab.dwgOutFields(&out), Acad::eOk);
    std::size_t refused = 0;
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        const Acad::ErrorStatus es = readDamaged(
            slab, [bit](auto& bytes) { bytes[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8); });
        refused += es != Acad::eOk ? 1 : 0;
    }
    // The magic numbers alone are this many bits.
    EXPECT_GT(refused, 3u * 32u);
}

TEST_F(ElementTest, ACountOfCornersBeyondTheDataIsRefused) {
    const Slab original({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.25);
    const ReportRecorder reports;
    EXPECT_NE(readDamaged(original,
                          [](auto& bytes) {
                              const std::size_t count = bytes.size() - 4 - 3 * 24 - 4;
                              std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(count), 4, 0xff);
                          }),
              Acad::eOk);
}

// The plugin's data in its frame.
std::string bodyOf(const SectionPlugin& plugin) {
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.save(archive));
    return hexOf(archive);
}

bool load(SectionPlugin& plugin, const std::string& hex) {
    const std::vector<unsigned char> bytes = fromHex(hex);
    orv::serialization::BinaryInArchive archive(bytes.data(), bytes.size());
    return plugin.load(archive, orv::elem::ElementBase::kVersion);
}

// Width 0.5, height 2, name "A", material "B".
const std::string kFrameBegin = "01 00 00 00 ";
const std::string kFrameEnd = " e5 7d db af";
const std::string kName = "01 00 00 00 41 00 00 00 ";
const std::string kSizes = "00 00 00 00 00 00 e0 3f 00 00 00 00 00 00 00 40 ";
const std::string kMaterial = "01 00 00 00 42 00 00 00 ";
const std::string kMagic = "54 43 45 53";

TEST_F(ElementTest, ASectionFilesItsSecondVersion) {
    const SectionPlugin plugin(Section{L"A", L"B", 0.5, 2.0});
    const std::string golden = kFrameBegin + "02 00 00 00 " + kName + kSizes + kMaterial + kMagic + kFrameEnd;
    EXPECT_EQ(bodyOf(plugin), golden);
    SectionPlugin read;
    EXPECT_TRUE(load(read, golden));
    EXPECT_EQ(read.section(), plugin.section());
}

TEST_F(ElementTest, ASectionOfTheFirstVersionHasNoMaterial) {
    SectionPlugin read;
    ASSERT_TRUE(load(read, kFrameBegin + "01 00 00 00 " + kName + kSizes + kMagic + kFrameEnd));
    EXPECT_EQ(read.section(), (Section{L"A", L"", 0.5, 2.0}));
}

TEST_F(ElementTest, ASectionOfANewerVersionOrWithAWrongEndIsNotTaken) {
    SectionPlugin read(Section{L"old", L"", 1.0, 1.0});
    orv_forgetNewVersionWarnings();
    const ConsoleRecorder console;
    const ReportRecorder newer;
    EXPECT_FALSE(load(read, kFrameBegin + "03 00 00 00 " + kName + kSizes + kMaterial + kMagic + kFrameEnd));
    EXPECT_EQ(newer.conditions(), Texts{"version <= kVersion"});
    EXPECT_NE(console.text().find(L"version 3"), std::wstring::npos);
    const ReportRecorder reports;
    EXPECT_FALSE(
        load(read, kFrameBegin + "02 00 00 00 " + kName + kSizes + kMaterial + "00 00 00 00" + kFrameEnd));
    EXPECT_EQ(reports.conditions(), Texts{"magic == kMagic"});
    EXPECT_EQ(read.section().name, L"old");
}

TEST_F(ElementTest, ValuesGoThroughNames) {
    Slab source({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0.25);
    source.addPlugin(boost::make_shared<SectionPlugin>(Section{L"A", L"B", 0.5, 2.0}));
    orv::KeyValueStorage storage;
    ASSERT_TRUE(source.save(storage));
    EXPECT_EQ(storage.getValue("slab/thickness", 0.0), 0.25);
    EXPECT_EQ(storage.getValue<std::wstring>("section/material", L""), L"B");
    Slab target({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 1.0);
    target.addPlugin(boost::make_shared<SectionPlugin>());
    ASSERT_TRUE(target.load(storage));
    EXPECT_EQ(target.thickness(), 0.25);
    EXPECT_EQ(SectionPlugin::of(target)->section(), (Section{L"A", L"B", 0.5, 2.0}));
}

TEST_F(ElementTest, APluginMayForbidCloningAndTheOthersAreCloned) {
    const AcDbObjectId kept = slab();
    const AcDbObjectId free = slab();
    const auto veto = boost::make_shared<RecordingPlugin>();
    veto->canBeCloned = false;
    OpenElement(kept, AcDb::kForWrite)->addPlugin(veto);
    std::vector<AcDbObjectId> copies;
    ASSERT_EQ(structure::copyElements(*db, {kept, free}, AcGeVector3d::kXAxis, copies), Acad::eOk);
    EXPECT_EQ(copies.size(), 1u);
    EXPECT_EQ(entities(*db).size(), 3u);
}

TEST_F(ElementTest, APluginMayForbidMoving) {
    const AcDbObjectId id = slab();
    const auto veto = boost::make_shared<RecordingPlugin>();
    veto->canBeTransformed = false;
    OpenElement(id, AcDb::kForWrite)->addPlugin(veto);
    const std::vector<std::uint8_t> before = streamOf(id);
    EXPECT_EQ(structure::moveElements(*db, {id}, AcGeVector3d::kXAxis), Acad::eVetoed);
    AcDbIntArray indices;
    indices.append(0);
    EXPECT_EQ(Open<AcDbEntity>(id, AcDb::kForWrite)->moveGripPointsAt(indices, AcGeVector3d::kXAxis),
              Acad::eVetoed);
    EXPECT_EQ(Open<Slab>(id)->corners().front(), AcGePoint3d());
}

TEST_F(ElementTest, APluginMayChangeTheMoveAndHearsOfItOnceEach) {
    const AcDbObjectId id = slab();
    const auto plugin = boost::make_shared<RecordingPlugin>();
    plugin->changeMatrix = [](AcGeMatrix3d& matrix) {
        matrix = AcGeMatrix3d::translation(AcGeVector3d(0.0, 0.0, 9.0));
    };
    OpenElement(id, AcDb::kForWrite)->addPlugin(plugin);
    RecordingPlugin::events.clear();
    ASSERT_EQ(structure::moveElements(*db, {id}, AcGeVector3d::kXAxis), Acad::eOk);
    EXPECT_TRUE(Open<Slab>(id)->corners().front().isEqualTo(AcGePoint3d(0.0, 0.0, 9.0)));
    Texts hooks;
    for (const std::string& event : RecordingPlugin::events)
        if (event.compare(0, 6, "onSave") != 0) // filed for the history
            hooks.push_back(event.substr(0, event.find(' ')));
    const Texts expected = {"canElementBeTransformed", "onPreTransform", "onPostTransform", "onMoved"};
    EXPECT_EQ(hooks, expected);
}

TEST_F(ElementTest, APluginThatThrowsStopsNeitherEraseNorMove) {
    const AcDbObjectId id = slab();
    const auto plugin = boost::make_shared<RecordingPlugin>();
    OpenElement(id, AcDb::kForWrite)->addPlugin(plugin);
    plugin->onHook = [](const std::string& hook) {
        if (hook != "onSave")
            throw std::runtime_error("no");
    };
    const BeepRecorder beeps;
    EXPECT_EQ(structure::moveElements(*db, {id}, AcGeVector3d::kXAxis), Acad::eOk);
    EXPECT_TRUE(Open<Slab>(id)->corners().front().isEqualTo(AcGePoint3d(1.0, 0.0, 0.0)));
    EXPECT_EQ(structure::eraseElements({id}), Acad::eOk);
    EXPECT_TRUE(id.isErased());
    EXPECT_FALSE(beeps.lines().empty());
}

TEST_F(ElementTest, GripsMoveNodesAndCornersAndBeamEnds) {
    const auto drag = [&](AcDbObjectId id, int index, const AcGeVector3d& offset) {
        const Open<AcDbEntity> entity(id, AcDb::kForWrite);
        AcDbGripDataPtrArray grips;
        EXPECT_EQ(entity->getGripPoints(grips, 1.0, 4, AcGeVector3d::kZAxis, 0), Acad::eOk);
        AcDbVoidPtrArray held;
        if (index < grips.length())
            held.append(grips[index]->appData());
        EXPECT_EQ(entity->moveGripPointsAt(held, offset, 0), Acad::eOk);
        const int count = grips.length();
        for (AcDbGripData* grip : grips)
            delete grip;
        return count;
    };
    const AcDbObjectId point = node(), line = beam(), plate = slab();
    EXPECT_EQ(drag(point, 0, AcGeVector3d(0.0, 0.0, 1.0)), 1);
    EXPECT_TRUE(Open<Node>(point)->position().isEqualTo(AcGePoint3d(1.0, 2.0, 4.0)));
    EXPECT_EQ(drag(plate, 2, AcGeVector3d(1.0, 1.0, 0.0)), 4);
    EXPECT_TRUE(Open<Slab>(plate)->corners()[2].isEqualTo(AcGePoint3d(5.0, 4.0, 0.0)));
    EXPECT_EQ(drag(line, 1, AcGeVector3d(0.0, 2.0, 0.0)), 2);
    AcGePoint3d end;
    ASSERT_EQ(Open<Beam>(line)->getEndPoint(end), Acad::eOk);
    EXPECT_TRUE(end.isEqualTo(AcGePoint3d(6.0, 2.0, 0.0)));
}

TEST_F(ElementTest, ADraggedBeamEndTakesItsNodeAlong) {
    const Frame made = frame();
    const AcDbObjectId id = made.beams.front();
    {
        AcDbIntArray last;
        last.append(1);
        EXPECT_EQ(Open<AcDbEntity>(id, AcDb::kForWrite)->moveGripPointsAt(last, AcGeVector3d(0.0, 0.0, 0.5)),
                  Acad::eOk);
    }
    structure::processMovedElements(*db);
    const Open<Beam> moved(id);
    AcGePoint3d end;
    ASSERT_EQ(moved->getEndPoint(end), Acad::eOk);
    EXPECT_TRUE(Open<Node>(moved->endNode())->position().isEqualTo(end));
}

TEST_F(ElementTest, AGripFilterTakesGripsAway) {
    const AcDbObjectId id = slab();
    const Open<Slab> plate(id, AcDb::kForWrite);
    plate->addGripFilter([](const AcGePoint3d& point) { return point.x < 1.0; });
    AcDbGripDataPtrArray grips;
    ASSERT_EQ(plate->getGripPoints(grips, 1.0, 4, AcGeVector3d::kZAxis, 0), Acad::eOk);
    EXPECT_EQ(grips.length(), 2);
    for (AcDbGripData* grip : grips)
        delete grip;
}

TEST_F(ElementTest, AFrameIsDrawnWithTheNamesOfItsSections) {
    const Frame made = frame();
    const embedded::DisplayList list = embedded::draw(*db);
    EXPECT_TRUE(list.failures.empty());
    std::map<std::wstring, int> texts;
    int arcs = 0, marks = 0;
    for (const embedded::Primitive& primitive : list.primitives) {
        if (primitive.kind == embedded::PrimitiveKind::kText)
            ++texts[primitive.text];
        arcs += primitive.kind == embedded::PrimitiveKind::kArc ? 1 : 0;
        marks += primitive.ofViewport && primitive.ownerClass == Node::desc() ? 1 : 0;
    }
    EXPECT_EQ(texts[L"SHS 200x10"], 12);
    EXPECT_EQ(texts[L"I 300x150"], 16);
    EXPECT_EQ(texts[L"d = 22 cm"], 4);
    EXPECT_EQ(arcs, 1);
    EXPECT_EQ(marks, static_cast<int>(made.nodes.size()));
}

constexpr double kRounding = 1e-6;

AcGeVector3d screenRight(const embedded::ViewParameters& view) {
    AcGeVector3d right = view.direction.perpVector();
    right.rotateBy(-view.twist, view.direction);
    return right;
}

TEST_F(ElementTest, NamesOfSectionsCanBeReadFromEverywhere) {
    frame();
    for (const AcGeVector3d& from :
         {AcGeVector3d(0, 0, 1), AcGeVector3d(0, 0, -1), AcGeVector3d(0, -1, 0), AcGeVector3d(0, 1, 0),
          AcGeVector3d(1, 0, 0), AcGeVector3d(-1, -1, 1), AcGeVector3d(-1, -3, 1.6), AcGeVector3d(1, 3, 1)})
        for (const double twist : {0.0, 2.0}) {
            embedded::ViewParameters view;
            view.direction = from;
            view.twist = twist;
            const AcGeVector3d right = screenRight(view);
            const AcGeVector3d up = from.crossProduct(right);
            int names = 0;
            for (const embedded::Primitive& primitive : embedded::draw(*db, view).primitives) {
                if (primitive.kind != embedded::PrimitiveKind::kText ||
                    primitive.ownerClass == structure::Load::desc())
                    continue;
                ++names;
                EXPECT_TRUE(primitive.ofViewport);
                EXPECT_TRUE(primitive.normal.isEqualTo(from.normal(), orv::geom::gTol));
                const double toRight = primitive.direction.dotProduct(right);
                EXPECT_GT(toRight, -kRounding) << "from right to left";
                EXPECT_TRUE(toRight > kRounding || primitive.direction.dotProduct(up) > 0.0) << "downwards";
            }
            EXPECT_EQ(names, 32);
        }
}

TEST_F(ElementTest, EveryKindKnowsItsExtentsSnapPointsAndParts) {
    const AcDbObjectId plate = slab();
    const Open<AcDbEntity> entity(plate);
    AcDbExtents box;
    ASSERT_EQ(entity->getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(box.maxPoint().isEqualTo(AcGePoint3d(4.0, 3.0, 0.0)));
    AcGePoint3dArray points;
    AcDbIntArray ids;
    ASSERT_EQ(entity->getOsnapPoints(AcDb::kOsModeMid, 0, AcGePoint3d(), AcGePoint3d(), AcGeMatrix3d(),
                                     points, ids),
              Acad::eOk);
    ASSERT_EQ(points.length(), 4);
    EXPECT_TRUE(points[3].isEqualTo(AcGePoint3d(0.0, 1.5, 0.0)));
    AcDbVoidPtrArray parts;
    ASSERT_EQ(entity->explode(parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 4);
    for (void* part : parts) {
        EXPECT_NE(AcDbLine::cast(static_cast<AcDbEntity*>(part)), nullptr);
        delete static_cast<AcDbEntity*>(part);
    }
    EXPECT_EQ(Open<Slab>(plate)->area(), 12.0);
}

TEST_F(ElementTest, EveryKindHasAClassIdOfItsOwn) {
    std::set<int> last;
    structure::LoadProperties properties;
    properties.values = {1.0};
    const AcDbObjectId load = append(structure::Load::atPoint(AcGePoint3d(), properties).release());
    for (const AcDbObjectId& id : {node(), beam(), slab(), load}) {
        CLSID classId{};
        ASSERT_EQ(Open<AcDbEntity>(id)->getClassID(&classId), Acad::eOk);
        last.insert(classId.Data4[7]);
    }
    EXPECT_EQ(last.size(), 4u);
}

TEST_F(ElementTest, AnElementTellsAboutItself) {
    const Frame made = frame();
    orv::ElementInfoContext info;
    OpenElement(made.columns.front())->appendElementInfo(info);
    ASSERT_EQ(info.sections().size(), 2u);
    EXPECT_EQ(info.sections()[0].heading, L"beam");
    EXPECT_EQ(info.sections()[0].values[1].text, L"C1");
    EXPECT_EQ(info.sections()[1].heading, L"Section");
    EXPECT_EQ(info.sections()[1].values[1].text, L"S 355");
}

TEST_F(ElementTest, ANodeRefusesCoordinatesThatAreNoNumbers) {
    const Open<Node> point(node(), AcDb::kForWrite);
    EXPECT_EQ(point->setPosition(AcGePoint3d(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0)),
              Acad::eInvalidInput);
    EXPECT_EQ(point->position(), AcGePoint3d(1.0, 2.0, 3.0));
}

TEST_F(ElementTest, SelectionsAreFoundReplacedAndDeleted) {
    const AcDbObjectId a = node(), b = node();
    std::set<AcDbObjectId> found;
    EXPECT_EQ(structure::findSelection(*db, L"walls", found), Acad::eKeyNotFound);
    EXPECT_EQ(structure::setSelection(*db, L"", {a}), Acad::eInvalidKey);
    ASSERT_EQ(structure::setSelection(*db, L"walls", {a}), Acad::eOk);
    ASSERT_EQ(structure::setSelection(*db, L"Walls", {a, b}), Acad::eOk);
    EXPECT_EQ(structure::selectionNames(*db), std::vector<std::wstring>{L"walls"});
    ASSERT_EQ(structure::findSelection(*db, L"WALLS", found), Acad::eOk);
    EXPECT_EQ(found, (std::set<AcDbObjectId>{a, b}));
    ASSERT_EQ(structure::eraseElements({b}), Acad::eOk);
    ASSERT_EQ(structure::findSelection(*db, L"walls", found), Acad::eOk);
    EXPECT_EQ(found, std::set<AcDbObjectId>{a});
    EXPECT_EQ(structure::deleteSelection(*db, L"walls"), Acad::eOk);
    EXPECT_EQ(structure::deleteSelection(*db, L"walls"), Acad::eKeyNotFound);
    EXPECT_TRUE(structure::selectionNames(*db).empty());
}

TEST_F(ElementTest, ASelectionTakesNoIdOfAnotherDrawing) {
    const AcDbObjectId here = node();
    AcDbDatabase* const other = embedded::newDocument();
    EXPECT_EQ(structure::setSelection(*other, L"mixed", {here}), Acad::eWrongDatabase);
    EXPECT_TRUE(structure::selectionNames(*other).empty());
}

TEST_F(ElementTest, ErasedMembersAreForgottenSoThatAClonedSelectionIsWhole) {
    const AcDbObjectId a = node(), b = node(), c = node();
    ASSERT_EQ(structure::setSelection(*db, L"walls", {a, b, c}), Acad::eOk);
    ASSERT_EQ(structure::eraseElements({b}), Acad::eOk);
    ASSERT_EQ(structure::forgetErasedMembers(*db), Acad::eOk);
    AcDbObjectId list, selection;
    ASSERT_EQ(
        Open<AcDbDictionary>(db->namedObjectsDictionaryId())->getAt(structure::kSelectionDictionary, list),
        Acad::eOk);
    ASSERT_EQ(Open<AcDbDictionary>(list)->getAt(L"walls", selection), Acad::eOk);

    AcDbDatabase* const target = embedded::newDocument();
    EXPECT_EQ(structure::forgetErasedMembers(*target), Acad::eOk) << "it has no selections";
    AcDbObjectIdArray nodes, selections;
    nodes.append(a);
    nodes.append(c);
    selections.append(selection);
    AcDbIdMapping mapping;
    ASSERT_EQ(db->wblockCloneObjects(nodes, modelSpace(*target), mapping, AcDb::kDrcIgnore, true), Acad::eOk);
    ASSERT_EQ(
        db->wblockCloneObjects(selections, target->namedObjectsDictionaryId(), mapping, AcDb::kDrcIgnore),
        Acad::eOk);
    std::set<AcDbObjectId> copies;
    for (const AcDbObjectId& id : {a, c}) {
        AcDbIdPair pair(id, AcDbObjectId(), false);
        ASSERT_TRUE(mapping.compute(pair));
        copies.insert(pair.value());
    }
    AcDbIdPair pair(selection, AcDbObjectId(), false);
    ASSERT_TRUE(mapping.compute(pair));
    EXPECT_EQ(Open<orv::ORV_NamedSelection>(pair.value())->m_objects, copies);
}

TEST_F(ElementTest, TheSectionOfABeamTellsItsEnds) {
    const Frame made = frame();
    const OpenElement beam(made.columns.front());
    const auto& curve = static_cast<const ORV_SegmentedCurve&>(beam->entity());
    orv::geom::EndpointList ends;
    SectionPlugin::of(*beam)->onQueryEndpointInterface(ends);
    ASSERT_EQ(ends.endpoints().size(), 2u);
    AcGePoint3d start, end;
    curve.getStartPoint(start);
    curve.getEndPoint(end);
    EXPECT_EQ(ends.endpoints()[0].point, start);
    EXPECT_EQ(ends.endpoints()[1].point, end);
    EXPECT_EQ(ends.endpoints()[0].direction, (start - end).normal());
    EXPECT_EQ(ends.endpoints()[1].direction, (end - start).normal());
    for (const orv::geom::Endpoint& endpoint : ends.endpoints())
        EXPECT_EQ(endpoint.owner, made.columns.front());

    orv::geom::EndpointList none;
    const OpenElement slab(made.slabs.front());
    for (const auto& plugin : slab->getConstPluginIterator())
        plugin->onQueryEndpointInterface(none);
    EXPECT_TRUE(none.endpoints().empty());
}

} // namespace
} // namespace structure_tests
