#include "dbx/elem/element_load.h"

#include "base/key_value_storage.h"
#include "module/dbx/elem/load_plugins.h"
#include "module/dbx/elem/plugin_bodies.h"

#include <rapidcheck/gtest.h>

#include <type_traits>

using namespace testing_support;
using orv::elem::ElementLoad;
using orv::elem::GenericLoad;
using Ids = std::deque<AcDbObjectId>;

namespace {

constexpr char kEnd[] = "c1 a7 a7 81";
const std::string kBody1 = joined({kGenericHex, "01 00 00 00", kEnd});
const std::string kBody2 = joined({kGenericHex, "02 00 00 00", kEnd});

struct SomeIds {
    SomeIds() : db(true), a(db.blockTableId()), b(db.layerTableId()), c(db.namedObjectsDictionaryId()) {}
    AcDbDatabase db;
    AcDbObjectId a;
    AcDbObjectId b;
    AcDbObjectId c;
};

GenericLoad& generic(BeamLoad& load) { return load; }

bool load(BeamLoad& plugin, const StoredBody& body) {
    std::uint64_t taken = 0;
    const bool loaded = body.read([&plugin](auto& archive) { return plugin.onLoad(archive, 1); }, &taken);
    EXPECT_TRUE(!loaded || taken == body.bytes.size());
    return loaded;
}

} // namespace

TEST(ElementLoad, BeginsWithoutAnElement) {
    BeamLoad load;
    EXPECT_TRUE(load.getElement().isNull());
    EXPECT_TRUE(std::is_abstract_v<ElementLoad>);
    EXPECT_EQ(ElementLoad::kVersion, 2u);
    EXPECT_EQ(ElementLoad::kMagic, 0x81a7a7c1u);
}

TEST(ElementLoad, SettingItsElementLeavesThatOfEveryLoadAsItWas) {
    const SomeIds ids;
    TestElement element;
    auto* const load = new BeamLoad;
    element.addPlugin(load);
    generic(*load).setElement(ids.a);
    load->hooks.clear();
    drawOnce(*load);
    element.readChecks = element.writeChecks = 0;
    load->setElement(ids.b);
    EXPECT_EQ(element.writeChecks, 1);
    EXPECT_EQ(load->getElement(), ids.b);
    EXPECT_EQ(element.readChecks, 1);
    EXPECT_EQ(generic(*load).getElement(), ids.a);
    EXPECT_FALSE(load->refreshGraphics());
    EXPECT_TRUE(load->hooks.empty());
}

TEST(ElementLoadBody, IsWrittenWithTheGenericPartInFrontAndTwoSoftPointers) {
    const SomeIds ids;
    BeamLoad load;
    fillGeneric(load, ids.a);
    load.setElement(ids.b);
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(load.onSave(archive));
    EXPECT_EQ(hexOf(archive), kBody2);
    EXPECT_EQ(archive.softPointers(), (Ids{ids.a, ids.b}));
    EXPECT_TRUE(archive.hardPointers().empty());
}

TEST(ElementLoadBody, OfVersion2IsRead) {
    const SomeIds ids;
    BeamLoad plugin;
    EXPECT_TRUE(load(plugin, {kBody2, {ids.a, ids.b}}));
    expectGeneric(plugin, ids.a);
    EXPECT_EQ(plugin.getElement(), ids.b);
}

TEST(ElementLoadBody, OfVersion1HasNoElementAndKeepsThatOfTheLoad) {
    const SomeIds ids;
    BeamLoad plugin;
    plugin.setElement(ids.c);
    EXPECT_TRUE(load(plugin, {kBody1, {ids.a, ids.b}}));
    expectGeneric(plugin, ids.a);
    EXPECT_EQ(plugin.getElement(), ids.c);
}

TEST(ElementLoadBody, OfVersion3IsReportedWarnedOfAndRefusedBehindTheGenericPart) {
    const SomeIds ids;
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    BeamLoad plugin;
    EXPECT_FALSE(load(plugin, {joined({kGenericHex, "03 00 00 00", kEnd}), {ids.a, ids.b}}));
    expectGeneric(plugin, ids.a);
    EXPECT_TRUE(plugin.getElement().isNull());
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "version <= kVersion");
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "3"}, {"kVersion", "2"}}));
    ASSERT_EQ(warned.warnings.size(), 1u);
    EXPECT_EQ(warned.warnings[0].version, 3);
    EXPECT_EQ(warned.warnings[0].current, 2);
    EXPECT_EQ(warned.warnings[0].name, "Taldork.ARX");
}

TEST(ElementLoadBody, ARefusedGenericPartEndsTheLoading) {
    const SomeIds ids;
    ReportRecorder recorder;
    BeamLoad plugin;
    std::string damaged = kBody2;
    damaged.replace(kGenericHex.size() - 2, 2, "58");
    EXPECT_FALSE(load(plugin, {damaged, {ids.a, ids.b}}));
    EXPECT_TRUE(plugin.getElement().isNull());
    EXPECT_EQ(recorder.conditions(), Texts{"magic == kMagic"});
}

TEST(ElementLoadBody, WithAWrongEndIsTakenAndRefused) {
    const SomeIds ids;
    ReportRecorder recorder;
    BeamLoad plugin;
    EXPECT_FALSE(load(plugin, {kBody2.substr(0, kBody2.size() - 2) + "82", {ids.a, ids.b}}));
    EXPECT_EQ(plugin.getElement(), ids.b);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "magic == kMagic");
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "2192025537"}, {"kMagic", "2175248321"}}));
    EXPECT_EQ(recorder.at(0).message, "filing error");
}

TEST(ElementLoadBody, WithoutItsOwnPointerEndsInAFilerError) {
    const SomeIds ids;
    const ReportRecorder reports;
    BeamLoad plugin;
    plugin.setElement(ids.c);
    EXPECT_THROW(load(plugin, {kBody2, {ids.a}}), orv::Exception);
    EXPECT_EQ(plugin.getElement(), ids.c);
}

TEST(ElementLoadBody, EveryPrefixEndsInAFilerError) {
    const SomeIds ids;
    for (const std::string& body : {kBody1, kBody2})
        expectEveryPrefixToFail<BeamLoad>({framed(body), {ids.a, ids.b}});
}

TEST(ElementLoadBody, EveryTurnedBitEndsCleanly) {
    const SomeIds ids;
    for (const std::string& body : {kBody1, kBody2})
        // The ends of the frame, of the body and of the generic part.
        EXPECT_GE(refusedOfDamaged<BeamLoad>({framed(body), {ids.a, ids.b}}), 96) << body;
}

RC_GTEST_PROP(ElementLoadProperty, BothElementsComeBack, ()) {
    static const SomeIds ids;
    BeamLoad plugin;
    generic(plugin).setElement(*rc::gen::element(ids.a, ids.b, ids.c, AcDbObjectId()));
    plugin.setElement(*rc::gen::element(ids.a, ids.b, ids.c, AcDbObjectId()));
    orv::serialization::BinaryOutArchive archive;
    RC_ASSERT(plugin.onSave(archive));
    BeamLoad back;
    RC_ASSERT(load(back, StoredBody(blockOf(archive), archive.softPointers(), {})));
    RC_ASSERT(back.getElement() == plugin.getElement());
    RC_ASSERT(generic(back).getElement() == generic(plugin).getElement());
}

TEST(ElementLoadValues, StandUnderTheNameThatTheElementOfEveryLoadGives) {
    const SomeIds ids;
    BeamLoad load;
    load.setElement(ids.a);
    orv::KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_EQ(storage.getValue<int>("load/point/free/type", 0), 10);
    EXPECT_TRUE(storage.get("load/point/element_based/type").empty());
    generic(load).setElement(ids.a);
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_EQ(storage.getValue<int>("load/point/element_based/type", 0), 10);
}
