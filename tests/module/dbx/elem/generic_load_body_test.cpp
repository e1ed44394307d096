// What a load saves and loads, as bytes, ids and named values.

#include "base/key_value_storage.h"
#include "module/dbx/elem/load_plugins.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "orvshape/segmented_curve.h"

#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

using namespace testing_support;
using orv::KeyValueStorage;
using orv::elem::GenericLoad;
using orv::elem::LoadDistribution;
using orv::elem::LoadVertex;
using Ids = std::deque<AcDbObjectId>;

namespace {

struct SomeIds {
    SomeIds() : db(true), a(db.blockTableId()), b(db.layerTableId()) {}
    AcDbDatabase db;
    AcDbObjectId a;
    AcDbObjectId b;
};

constexpr char kEnd[] = "c1 d8 c5 57";
const std::string kBody1 = joined({"01 00 00 00", kEnd});
// As version 3, but no id in the lists.
const std::string kBody2 = "02" + kGenericHex.substr(2);

bool load(PlainLoad& plugin, const StoredBody& body) {
    std::uint64_t taken = 0;
    const bool loaded = body.read([&plugin](auto& archive) { return plugin.onLoad(archive, 1); }, &taken);
    EXPECT_TRUE(!loaded || taken == body.bytes.size());
    return loaded;
}

} // namespace

TEST(GenericLoadBody, ANewLoadIsWrittenAsVersion3WithOneNullSoftPointer) {
    PlainLoad plugin;
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.onSave(archive));
    EXPECT_EQ(hexOf(archive), joined({"03 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00", kEnd}));
    EXPECT_EQ(archive.softPointers(), Ids{AcDbObjectId()});
    EXPECT_TRUE(archive.hardPointers().empty());
}

TEST(GenericLoadBody, IsWrittenAsVersion3WithTheElementAmongTheSoftPointers) {
    const SomeIds ids;
    PlainLoad plugin;
    fillGeneric(plugin, ids.a);
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.onSave(archive));
    EXPECT_EQ(hexOf(archive), kGenericHex);
    EXPECT_EQ(archive.softPointers(), Ids{ids.a});
    EXPECT_TRUE(archive.hardPointers().empty());
}

TEST(GenericLoadBody, NumbersAreCutToTheLowBitsAndComeBackWithoutASign) {
    PlainLoad plugin;
    plugin.setType(-1);
    plugin.setClass(static_cast<orv::elem::LOAD_KIND>(0x12345));
    plugin.setCategory(static_cast<orv::elem::LoadTypeCategory>(0xffff));
    plugin.setDistribution(static_cast<LoadDistribution>(0x8001));
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.onSave(archive));
    EXPECT_EQ(hexOf(archive).substr(12, 23), "ff ff 45 23 ff ff 01 80");
    PlainLoad back;
    EXPECT_TRUE(load(back, {blockOf(archive), archive.softPointers(), {}}));
    EXPECT_EQ(back.getType(), 0xffff);
    EXPECT_EQ(back.getClass(), 0x2345);
    EXPECT_EQ(back.getCategory(), 0xffff);
    EXPECT_EQ(back.getDistribution(), 0x8001);
}

TEST(GenericLoadBody, OfVersion3IsRead) {
    const SomeIds ids;
    PlainLoad plugin;
    plugin.setVertices(verticesOf(3));
    plugin.setLoadCases({8, 9});
    plugin.hooks.clear();
    drawOnce(plugin);
    ASSERT_TRUE(plugin.getOwnCurve());
    EXPECT_TRUE(load(plugin, {kGenericHex, {ids.a}}));
    expectGeneric(plugin, ids.a);
    EXPECT_TRUE(plugin.refreshGraphics());
    EXPECT_FALSE(plugin.getOwnCurve());
    EXPECT_TRUE(plugin.hooks.empty()) << "loading is no change";
}

TEST(GenericLoadBody, OfVersion2LeavesTheElementNullEvenIfTheLoadWasAttached) {
    const SomeIds ids;
    PlainLoad plugin;
    plugin.setElement(ids.b);
    drawOnce(plugin);
    ASSERT_TRUE(plugin.getOwnCurve());
    EXPECT_TRUE(load(plugin, {kBody2, {ids.a}}));
    expectGeneric(plugin, AcDbObjectId());
    EXPECT_TRUE(plugin.refreshGraphics());
    EXPECT_FALSE(plugin.getOwnCurve());
}

TEST(GenericLoadBody, OfVersion1TakesVerticesAndLoadCasesAwayAndNothingElse) {
    const SomeIds ids;
    PlainLoad plugin;
    fillGeneric(plugin, ids.b);
    drawOnce(plugin);
    ASSERT_TRUE(plugin.getOwnCurve());
    EXPECT_TRUE(load(plugin, {kBody1, {ids.a}}));
    EXPECT_EQ(plugin.numVertices(), 0u);
    EXPECT_TRUE(plugin.getLoadCases().empty());
    EXPECT_EQ(plugin.getType(), 12);
    EXPECT_EQ(plugin.getClass(), 2);
    EXPECT_EQ(plugin.getCategory(), 4);
    EXPECT_EQ(plugin.getDistribution(), orv::elem::kLineLoad);
    EXPECT_EQ(plugin.getElement(), ids.b);
    EXPECT_TRUE(plugin.getOwnCurve());
    EXPECT_TRUE(plugin.refreshGraphics());
}

TEST(GenericLoadBody, OfVersion4IsRefusedWithNothingTaken) {
    const SomeIds ids;
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    PlainLoad plugin;
    fillGeneric(plugin, ids.b);
    drawOnce(plugin);
    ASSERT_TRUE(plugin.getOwnCurve());
    std::uint64_t taken = 0;
    const StoredBody body("04" + kGenericHex.substr(2), {ids.a});
    EXPECT_FALSE(body.read([&plugin](auto& archive) { return plugin.onLoad(archive, 1); }, &taken));
    EXPECT_EQ(taken, 4u);
    expectGeneric(plugin, ids.b);
    EXPECT_TRUE(plugin.getOwnCurve());
    EXPECT_TRUE(plugin.refreshGraphics()) << "asked for by every loading";
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "version <= kVersion");
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "4"}, {"kVersion", "3"}}));
    ASSERT_EQ(warned.warnings.size(), 1u);
    EXPECT_EQ(warned.warnings[0].version, 4);
    EXPECT_EQ(warned.warnings[0].current, 3);
    EXPECT_EQ(warned.warnings[0].name, "Taldork.ARX");
}

TEST(GenericLoadBody, WithAWrongEndIsTakenAndRefused) {
    const SomeIds ids;
    ReportRecorder recorder;
    PlainLoad plugin;
    EXPECT_FALSE(load(plugin, {kGenericHex.substr(0, kGenericHex.size() - 2) + "58", {ids.a}}));
    expectGeneric(plugin, ids.a);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "magic == kMagic");
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "1489361089"}, {"kMagic", "1472583873"}}));
    EXPECT_EQ(recorder.at(0).message, "filing error");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
}

TEST(GenericLoadBody, CountsAboveWhatIsThereEndInAFilerErrorWithWhatWasRead) {
    const std::string head = "02 00 00 00 0c 00 02 00 04 00 01 00";
    const ReportRecorder reports;
    PlainLoad plugin;
    EXPECT_THROW(load(plugin, joined({head, "ff ff ff ff", kNewVertexHex, "01 00"})), orv::Exception);
    EXPECT_EQ(plugin.numVertices(), 1u);
    EXPECT_THROW(load(plugin, joined({head, "00 00 00 00 ff ff ff ff 05 00 00 00 07 00 00 00 01"})),
                 orv::Exception);
    EXPECT_EQ(plugin.numVertices(), 0u);
    EXPECT_EQ(plugin.getLoadCases(), (std::set<unsigned int>{5, 7}));
}

TEST(GenericLoadBody, AMissingPointerEndsInAFilerErrorWithNullAsTheElement) {
    const SomeIds ids;
    const ReportRecorder reports;
    PlainLoad plugin;
    plugin.setElement(ids.a);
    EXPECT_THROW(load(plugin, {kGenericHex, {}, {ids.a}}), orv::Exception);
    EXPECT_TRUE(plugin.getElement().isNull());
    EXPECT_EQ(plugin.getType(), 12);
}

TEST(GenericLoadBody, LoadCasesThatComeTwiceOrInAnyOrderAreASet) {
    PlainLoad plugin;
    EXPECT_TRUE(load(plugin, joined({"02 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 03 00 00 00",
                                     "07 00 00 00 02 00 00 00 07 00 00 00", kEnd})));
    EXPECT_EQ(plugin.getLoadCases(), (std::set<unsigned int>{2, 7}));
}

TEST(GenericLoadBody, StandsInTheFrameOfAPlugin) {
    const SomeIds ids;
    PlainLoad plugin;
    const StoredBody stored(framed(kGenericHex), {ids.a});
    EXPECT_TRUE(stored.read([&plugin](auto& archive) { return plugin.load(archive, 6); }));
    expectGeneric(plugin, ids.a);
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.save(archive));
    EXPECT_EQ(hexOf(archive), framed(kGenericHex));
    EXPECT_EQ(archive.softPointers(), Ids{ids.a});
}

TEST(GenericLoadBody, EveryPrefixEndsInAFilerError) {
    const SomeIds ids;
    for (const std::string& body : {kBody1, kBody2, kGenericHex})
        expectEveryPrefixToFail<PlainLoad>({framed(body), {ids.a}});
}

TEST(GenericLoadBody, EveryTurnedBitEndsCleanly) {
    const SomeIds ids;
    for (const std::string& body : {kBody1, kBody2, kGenericHex})
        // The frame's and the body's end: any other value there is refused.
        EXPECT_GE(refusedOfDamaged<PlainLoad>({framed(body), {ids.a}}), 64) << body;
}

RC_GTEST_PROP(GenericLoadProperty, WhatIsSavedComesBack, ()) {
    static const SomeIds ids;
    PlainLoad plugin;
    plugin.setType(*rc::gen::inRange(0, 0x10000));
    plugin.setClass(static_cast<orv::elem::LOAD_KIND>(*rc::gen::inRange(0, 0x10000)));
    plugin.setCategory(static_cast<orv::elem::LoadTypeCategory>(*rc::gen::inRange(0, 0x10000)));
    plugin.setDistribution(static_cast<LoadDistribution>(*rc::gen::inRange(0, 0x10000)));
    plugin.setElement(*rc::gen::element(ids.a, ids.b, AcDbObjectId()));
    plugin.setLoadCases(*rc::gen::arbitrary<std::set<unsigned int>>());
    std::deque<LoadVertex> vertices(*rc::gen::inRange<std::size_t>(0, 9));
    for (LoadVertex& vertex : vertices) {
        vertex.posSource = static_cast<orv::elem::PositionSource>(*rc::gen::arbitrary<std::uint8_t>());
        vertex.segment = *rc::gen::arbitrary<unsigned int>();
        vertex.distanceMode = static_cast<orv::elem::DistanceMode>(*rc::gen::arbitrary<std::uint8_t>());
        vertex.position = *rc::gen::arbitrary<double>();
        vertex.node = *rc::gen::arbitrary<unsigned int>();
        vertex.point.set(*rc::gen::arbitrary<double>(), *rc::gen::arbitrary<double>(),
                         *rc::gen::arbitrary<double>());
        vertex.value = *rc::gen::arbitrary<double>();
        for (const char letter : *rc::gen::arbitrary<std::string>())
            vertex.text += static_cast<wchar_t>(0x100 + static_cast<unsigned char>(letter));
    }
    plugin.setVertices(vertices);
    orv::serialization::BinaryOutArchive archive;
    RC_ASSERT(plugin.onSave(archive));
    PlainLoad back;
    RC_ASSERT(load(back, StoredBody(blockOf(archive), archive.softPointers(), archive.hardPointers())));
    RC_ASSERT(back.getType() == plugin.getType());
    RC_ASSERT(back.getClass() == plugin.getClass());
    RC_ASSERT(back.getCategory() == plugin.getCategory());
    RC_ASSERT(back.getDistribution() == plugin.getDistribution());
    RC_ASSERT(back.getElement() == plugin.getElement());
    RC_ASSERT(back.getLoadCases() == plugin.getLoadCases());
    RC_ASSERT(back.numVertices() == vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i)
        expectSameVertex(back.getVertices()[i], vertices[i]);
    RC_ASSERT(!::testing::Test::HasFailure());
}

// The named values.

namespace {

const AcDbObjectId& anyId() {
    static const SomeIds s_ids;
    return s_ids.a;
}

template <class T>
T valueOf(const KeyValueStorage& storage, const std::string& key) {
    const auto value = storage.getValue<T>(key);
    EXPECT_TRUE(value) << key;
    return value ? *value : T();
}

} // namespace

TEST(GenericLoadValues, AreKindTypeFirstLoadCaseAndValuesUnderTheirNames) {
    PlainLoad plugin;
    plugin.setDistribution(orv::elem::kAreaLoad);
    plugin.setType(14);
    plugin.setClass(static_cast<orv::elem::LOAD_KIND>(6));
    plugin.setLoadCases({7, 3});
    plugin.setVertices(verticesOf(11));
    KeyValueStorage storage;
    EXPECT_TRUE(plugin.onSave(storage));
    EXPECT_EQ(valueOf<int>(storage, "load/area/free/kind"), 6);
    EXPECT_EQ(valueOf<int>(storage, "load/area/free/type"), 14);
    EXPECT_EQ(valueOf<int>(storage, "load/area/free/loadcase"), 3);
    EXPECT_EQ(valueOf<double>(storage, "load/area/free/values/0"), 1.0);
    EXPECT_EQ(valueOf<double>(storage, "load/area/free/values/9"), 10.0);
    EXPECT_EQ(valueOf<double>(storage, "load/area/free/values/10"), 11.0);
    EXPECT_TRUE(storage.get("load/area/free/values/11").empty());
    EXPECT_TRUE(storage.get("load/area/free/name").empty());
}

TEST(GenericLoadValues, StandUnderWhatTheLoadActsAlongAndOn) {
    const struct {
        LoadDistribution distribution;
        bool isAttached;
        const char* key;
    } rows[] = {
        {orv::elem::kPointLoad, false, "load/point/free/kind"},
        {orv::elem::kLineLoad, false, "load/line/free/kind"},
        {orv::elem::kAreaLoad, false, "load/area/free/kind"},
        {orv::elem::kVolumeLoad, false, "load/volume/free/kind"},
        {orv::elem::kPointLoad, true, "load/point/element_based/kind"},
        {orv::elem::kVolumeLoad, true, "load/volume/element_based/kind"},
    };
    for (const auto& row : rows) {
        PlainLoad plugin;
        plugin.setDistribution(row.distribution);
        plugin.setElement(row.isAttached ? anyId() : AcDbObjectId());
        KeyValueStorage storage;
        EXPECT_TRUE(plugin.onSave(storage));
        EXPECT_EQ(valueOf<int>(storage, row.key), 1);
    }
}

TEST(GenericLoadValues, OfAnUnknownDistributionAreReportedAndUnknown) {
    ReportRecorder recorder;
    PlainLoad plugin;
    plugin.setDistribution(static_cast<LoadDistribution>(4));
    KeyValueStorage storage;
    EXPECT_TRUE(plugin.onSave(storage));
    EXPECT_EQ(valueOf<int>(storage, "load/unknown/free/type"), 10);
    EXPECT_EQ(recorder.conditions(), Texts{"0"});
}

TEST(GenericLoadValues, OfAPointLoadWithoutCasesAreKindTypeAndOneValueAlone) {
    PlainLoad plugin;
    plugin.setVertices({vertexAt(0, 4.5)});
    KeyValueStorage storage;
    EXPECT_TRUE(plugin.onSave(storage));
    EXPECT_EQ(valueOf<double>(storage, "load/point/free/values/0"), 4.5);
    for (const char* const key : {"name", "loadcase", "relative", "a", "b", "c", "values/1"})
        EXPECT_TRUE(storage.get(std::string("load/point/free/") + key).empty()) << key;
}

TEST(GenericLoadValues, OfARelativeLoadTellTheLoadedStretch) {
    PlainLoad plugin;
    plugin.setDistribution(orv::elem::kLineLoad);
    std::deque<LoadVertex> vertices = verticesOf(3);
    vertices[0].position = 0.25;
    vertices[1].position = 0.5;
    vertices[1].distanceMode = orv::elem::kAbsoluteDistance;
    vertices[2].position = 0.75;
    plugin.setVertices(vertices);
    KeyValueStorage storage;
    EXPECT_TRUE(plugin.onSave(storage));
    EXPECT_TRUE(valueOf<bool>(storage, "load/line/free/relative"));
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/a"), 0.25);
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/b"), 0.5);
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/c"), 0.25);
}

TEST(GenericLoadValues, OfAnAbsoluteLoadGoByTheSameFormulas) {
    PlainLoad plugin;
    plugin.setDistribution(orv::elem::kLineLoad);
    std::deque<LoadVertex> vertices = verticesOf(2);
    vertices[0].position = 1.5;
    vertices[0].distanceMode = orv::elem::kAbsoluteDistance;
    vertices[1].position = 4.0; // the mode of the last one plays no part
    plugin.setVertices(vertices);
    KeyValueStorage storage;
    EXPECT_TRUE(plugin.onSave(storage));
    EXPECT_FALSE(valueOf<bool>(storage, "load/line/free/relative"));
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/a"), 1.5);
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/b"), 3.5);
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/c"), 3.0);
}

TEST(GenericLoadValues, HaveTheNameOfTheElementIfThatHasOne) {
    TestElement element;
    auto* const plugin = new PlainLoad;
    element.addPlugin(plugin);
    element.setProperties().add(30001, std::wstring(L"wind"));
    plugin->setProperties().add(30001, std::wstring(L"not this one"));
    KeyValueStorage storage;
    EXPECT_TRUE(plugin->onSave(storage));
    EXPECT_EQ(valueOf<std::wstring>(storage, "load/point/free/name"), L"wind");
}

TEST(GenericLoadValues, ANameThatIsNoTextIsReportedAndLeftOut) {
    ReportRecorder recorder;
    TestElement element;
    auto* const plugin = new PlainLoad;
    element.addPlugin(plugin);
    element.setProperties().add(30001, 5);
    KeyValueStorage storage;
    EXPECT_TRUE(plugin->onSave(storage));
    EXPECT_TRUE(storage.get("load/point/free/name").empty());
    EXPECT_EQ(recorder.messages(), Texts{"getValueNotThrow() failed"});
}
