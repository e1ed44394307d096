#include "dbx/elem/plugin_connected_elements.h"

#include "embedded/memory_filer.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "support/recording_filer.h"
#include "support/slots.h"
#include "support/test_element.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>
#include <string>
#include <vector>

using namespace testing_support;
using orv::elem::ElementBase;
using orv::elem::ElementPluginRegistry;
using orv::elem::kHardPointer;
using orv::elem::kSoftPointer;
using orv::elem::Ownership;
using orv::elem::Plugin_ConnectedElements;
using orv::smartassert::Severity;
using Ids = std::deque<AcDbObjectId>;

namespace {

// With what is protected laid open, and a list of the hooks that were called.
struct OpenConnected : Plugin_ConnectedElements {
    using Plugin_ConnectedElements::onErase;
    using Plugin_ConnectedElements::onLoad;
    using Plugin_ConnectedElements::onPreTransform;
    using Plugin_ConnectedElements::onSave;
    using Plugin_ConnectedElements::Plugin_ConnectedElements;

    void onConnectedElementAdded(const AcDbObjectId& id) override { note("added", id); }
    void onConnectedElementRemoved(const AcDbObjectId& id) override { note("removed", id); }
    void onOwnerChanged(ElementBase& element, unsigned int flags) override {
        hooks.push_back("changed " + std::to_string(flags) + (&element == owner() ? " owner" : " other"));
    }
    void note(const std::string& hook, const AcDbObjectId& id) {
        hooks.push_back(hook + " " + std::to_string(number(id)) + " of " + std::to_string(size()));
    }
    static std::uint64_t number(const AcDbObjectId& id) { return static_cast<Adesk::UInt64>(id.handle()); }

    Texts hooks;
};

// Ids of a drawing in ascending order. What they name is no entity, so nothing comes of erasing them.
struct SomeIds {
    SomeIds() : db(true) {
        a = db.blockTableId();
        b = db.layerTableId();
        c = db.namedObjectsDictionaryId();
        std::set<AcDbObjectId> order = {a, b, c};
        auto next = order.begin();
        a = *next++;
        b = *next++;
        c = *next;
    }
    std::uint64_t number(const AcDbObjectId& id) const { return OpenConnected::number(id); }

    AcDbDatabase db;
    AcDbObjectId a;
    AcDbObjectId b;
    AcDbObjectId c;
};

Ids idsOf(const Plugin_ConnectedElements& plugin) { return Ids(plugin.begin(), plugin.end()); }

bool load(OpenConnected& plugin, const StoredBody& body) {
    std::uint64_t taken = 0;
    const bool loaded = body.read([&plugin](auto& archive) { return plugin.onLoad(archive, 1); }, &taken);
    EXPECT_TRUE(!loaded || taken == body.bytes.size());
    return loaded;
}

// What setBehaviour, of which there is no reading, set: the second number of the data.
std::string behaviourOf(const OpenConnected& plugin) {
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.onSave(archive));
    return hexOf(archive).substr(12, 11);
}

constexpr char kEnd[] = "7a a7 5c bd";

// Each body holds what its version knows of: behaviour 2, ids.
const std::string kBody0 = joined({"00 00 00 00 02 00 00 00", kEnd});
const std::string kBody1 = joined({"01 00 00 00", kEnd});
const std::string kBody2 = joined({"02 00 00 00 02 00 00 00", kEnd});
const std::string kBody3 = joined({"03 00 00 00 02 00 00 00 02 00 00 00", kEnd});
const std::string kHardBody = joined({"04 00 00 00 02 00 00 00 00 00 00 00 02 00 00 00", kEnd});
const std::string kSoftBody = joined({"04 00 00 00 02 00 00 00 01 00 00 00 02 00 00 00", kEnd});

} // namespace

TEST(PluginConnectedElements, BeginsEmptyAndWithHardPointers) {
    OpenConnected plugin;
    EXPECT_EQ(plugin.ownership(), kHardPointer);
    EXPECT_EQ(plugin.size(), 0u);
    EXPECT_TRUE(plugin.begin() == plugin.end());
    EXPECT_EQ(behaviourOf(plugin), "00 00 00 00");
    EXPECT_EQ(OpenConnected(kSoftPointer).ownership(), kSoftPointer);
}

TEST(PluginConnectedElements, IsKnownToTheRegistry) {
    const auto plugin = ElementPluginRegistry::create("orv.se.connectedelements.1");
    ASSERT_TRUE(plugin);
    auto* const connected = dynamic_cast<Plugin_ConnectedElements*>(plugin.get());
    ASSERT_NE(connected, nullptr);
    EXPECT_EQ(connected->ownership(), kHardPointer);
    EXPECT_EQ(plugin->pluginId(), "orv.se.connectedelements.1");
    EXPECT_EQ(&plugin->pluginId(), &Plugin_ConnectedElements::static_pluginId());
}

#ifndef _MSC_VER
TEST(PluginConnectedElements, ItsOperationsStandBehindTheSlotsOfAPlugin) {
    const SomeIds ids;
    OpenConnected plugin;
    TestElement element;
    slotOf<void (*)(void*, const AcDbObjectId&)>(&plugin, 24)(&plugin, ids.a);
    slotOf<void (*)(void*, const AcDbObjectId&)>(&plugin, 25)(&plugin, ids.a);
    slotOf<void (*)(void*, ElementBase&, unsigned int)>(&plugin, 26)(&plugin, element, 5);
    const std::string a = std::to_string(ids.number(ids.a));
    EXPECT_EQ(plugin.hooks, (Texts{"added " + a + " of 0", "removed " + a + " of 0", "changed 5 other"}));
}
#endif

TEST(PluginConnectedElements, AddingTwiceLeavesOneEntryAndCallsTheHookTwice) {
    const SomeIds ids;
    OpenConnected plugin;
    EXPECT_EQ(plugin.add(ids.a), ids.a);
    EXPECT_EQ(plugin.add(ids.a), ids.a);
    EXPECT_EQ(plugin.size(), 1u);
    const std::string line = "added " + std::to_string(ids.number(ids.a)) + " of 1";
    EXPECT_EQ(plugin.hooks, (Texts{line, line}));
}

TEST(PluginConnectedElements, RemovingAnAbsentIdCallsTheHook) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.add(ids.a);
    plugin.hooks.clear();
    plugin.remove(ids.b);
    plugin.remove(ids.a);
    EXPECT_EQ(plugin.size(), 0u);
    EXPECT_EQ(plugin.hooks, (Texts{"removed " + std::to_string(ids.number(ids.b)) + " of 1",
                                   "removed " + std::to_string(ids.number(ids.a)) + " of 0"}));
}

TEST(PluginConnectedElements, RemovingAllEmptiesTheSetBeforeTheHooks) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.add(ids.b);
    plugin.add(ids.a);
    plugin.hooks.clear();
    plugin.removeAll();
    EXPECT_EQ(plugin.size(), 0u);
    EXPECT_EQ(plugin.hooks, (Texts{"removed " + std::to_string(ids.number(ids.a)) + " of 0",
                                   "removed " + std::to_string(ids.number(ids.b)) + " of 0"}));
}

TEST(PluginConnectedElements, AnIdOutOfTheSetItselfIsRemoved) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.add(ids.a);
    plugin.remove(*plugin.begin());
    EXPECT_EQ(plugin.size(), 0u);
    EXPECT_EQ(plugin.hooks.back(), "removed " + std::to_string(ids.number(ids.a)) + " of 0");
}

TEST(PluginConnectedElements, TheReferenceOfAnAbsentIdIsNull) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.add(ids.a);
    EXPECT_EQ(plugin.getReference(ids.a), ids.a);
    EXPECT_TRUE(plugin.contains(ids.a));
    EXPECT_TRUE(plugin.getReference(ids.b).isNull());
    EXPECT_FALSE(plugin.contains(ids.b));
}

TEST(PluginConnectedElements, TheWalkGoesInAscendingOrder) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.add(ids.c);
    plugin.add(ids.a);
    plugin.add(ids.b);
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b, ids.c}));
}

TEST(PluginConnectedElements, ReadingAsksForReadAndWritingForWrite) {
    const SomeIds ids;
    TestElement element;
    auto* const plugin = new OpenConnected;
    element.addPlugin(plugin);
    const auto checks = [&element](auto call) {
        element.readChecks = element.writeChecks = 0;
        call();
        return std::pair<int, int>(element.readChecks, element.writeChecks);
    };
    const std::pair<int, int> none(0, 0);
    const std::pair<int, int> read(1, 0);
    const std::pair<int, int> write(0, 1);
    EXPECT_EQ(checks([&] { plugin->ownership(); }), read);
    EXPECT_EQ(checks([&] { plugin->setBehaviour(3); }), write);
    EXPECT_EQ(checks([&] { plugin->size(); }), read);
    EXPECT_EQ(checks([&] { plugin->begin(); }), read);
    EXPECT_EQ(checks([&] { plugin->end(); }), read);
    EXPECT_EQ(checks([&] { plugin->contains(ids.a); }), read);
    EXPECT_EQ(checks([&] { plugin->getReference(ids.a); }), none);
    // The test's own hooks ask for the size, which reads.
    EXPECT_EQ(checks([&] { plugin->add(ids.a); }), (std::pair<int, int>(1, 1)));
    EXPECT_EQ(checks([&] { plugin->remove(ids.b); }), (std::pair<int, int>(1, 1)));
    EXPECT_EQ(checks([&] { plugin->removeAll(); }), (std::pair<int, int>(1, 1)));
    EXPECT_EQ(checks([&] { plugin->recordGraphicsModifiedForAll(); }), none);
    RecordingFiler filer;
    EXPECT_EQ(checks([&] { plugin->_read(&filer.feed(Adesk::UInt32{0})); }), none);
}

TEST(PluginConnectedElements, AChangeOfTheOwnerIsToldToThoseOfThisClassInOrder) {
    TestElement element;
    auto* const first = new OpenConnected;
    auto* const second = new OpenConnected(kSoftPointer);
    element.addPlugin(first);
    element.addPlugin(new RecordingPlugin);
    element.addPlugin(second);
    element.writeChecks = 0;
    Plugin_ConnectedElements::triggerOwnerChanged(element, 9);
    EXPECT_EQ(element.writeChecks, 1);
    EXPECT_EQ(first->hooks, Texts{"changed 9 owner"});
    EXPECT_EQ(second->hooks, Texts{"changed 9 owner"});
}

TEST(PluginConnectedElements, AHookMayTakePluginsOutWhileTheChangeIsTold) {
    struct Leaving : Plugin_ConnectedElements {
        void onOwnerChanged(ElementBase& element, unsigned int) override {
            ++called;
            element.detachPlugin(this);
        }
        int called = 0;
    };
    TestElement element;
    const auto first = boost::make_shared<Leaving>();
    const auto second = boost::make_shared<Leaving>();
    element.addPlugin(first);
    element.addPlugin(second);
    Plugin_ConnectedElements::triggerOwnerChanged(element, 0);
    EXPECT_EQ(first->called, 1);
    EXPECT_EQ(second->called, 1);
    EXPECT_TRUE(element.getConstPluginIterator().done());
}

TEST(PluginConnectedElements, ErasingWithoutAnOwnerReportsAndEmptiesTheSet) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    plugin.setBehaviour(Plugin_ConnectedElements::kEraseConnected);
    plugin.add(ids.a);
    plugin.onErase(false);
    EXPECT_EQ(plugin.size(), 1u);
    plugin.onErase(true);
    EXPECT_EQ(plugin.size(), 0u);
    EXPECT_EQ(recorder.conditions(), (Texts{"owner()", "owner()"}));
}

TEST(PluginConnectedElements, WithoutAnOwnerNothingIsMarked) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.setBehaviour(Plugin_ConnectedElements::kRefreshOnTransform);
    plugin.add(ids.a);
    AcGeMatrix3d matrix;
    EXPECT_NO_THROW(plugin.onPreTransform(matrix));
    EXPECT_EQ(plugin.size(), 1u);
}

// Bodies.

TEST(PluginConnectedElementsBody, TwoSoftIdsAndNoneTakeTheSameBytesButForTheCount) {
    const SomeIds ids;
    OpenConnected plugin(kSoftPointer);
    plugin.setBehaviour(2);
    orv::serialization::BinaryOutArchive none;
    EXPECT_TRUE(plugin.onSave(none));
    EXPECT_EQ(hexOf(none), joined({"04 00 00 00 02 00 00 00 01 00 00 00 00 00 00 00", kEnd}));
    EXPECT_TRUE(none.softPointers().empty());
    plugin.add(ids.b);
    plugin.add(ids.a);
    orv::serialization::BinaryOutArchive two;
    EXPECT_TRUE(plugin.onSave(two));
    EXPECT_EQ(hexOf(two), kSoftBody);
    EXPECT_EQ(two.offset(), 20u);
    EXPECT_EQ(two.softPointers(), (Ids{ids.a, ids.b}));
    EXPECT_TRUE(two.hardPointers().empty());
}

TEST(PluginConnectedElementsBody, HardIdsGoToTheHardList) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.setBehaviour(2);
    plugin.add(ids.b);
    plugin.add(ids.a);
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.onSave(archive));
    EXPECT_EQ(hexOf(archive), kHardBody);
    EXPECT_EQ(archive.hardPointers(), (Ids{ids.a, ids.b}));
    EXPECT_TRUE(archive.softPointers().empty());
}

TEST(PluginConnectedElementsBody, OfVersion4HasBehaviourOwnershipAndIds) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected hard;
    hard.add(ids.c);
    EXPECT_TRUE(load(hard, {kHardBody, {ids.c}, {ids.a, ids.b}}));
    EXPECT_EQ(idsOf(hard), (Ids{ids.a, ids.b}));
    EXPECT_EQ(behaviourOf(hard), "02 00 00 00");
    OpenConnected soft(kSoftPointer);
    EXPECT_TRUE(load(soft, {kSoftBody, {ids.a, ids.b}, {ids.c}}));
    EXPECT_EQ(idsOf(soft), (Ids{ids.a, ids.b}));
    EXPECT_EQ(soft.ownership(), kSoftPointer);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginConnectedElementsBody, AnyOtherOwnershipIsSoftAndKept) {
    const SomeIds ids;
    const std::string body = joined({"04 00 00 00 00 00 00 00 05 00 00 00 01 00 00 00", kEnd});
    OpenConnected plugin(static_cast<Ownership>(5));
    ReportRecorder recorder;
    EXPECT_TRUE(load(plugin, {body, {ids.a}, {}}));
    EXPECT_EQ(recorder.size(), 0u);
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.onSave(archive));
    EXPECT_EQ(hexOf(archive), body);
    EXPECT_EQ(archive.softPointers(), Ids{ids.a});
}

// Only version 1 has no behaviour.
TEST(PluginConnectedElementsBody, OfVersion0HasABehaviourAndLeavesTheSetAlone) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    plugin.add(ids.a);
    EXPECT_TRUE(load(plugin, {kBody0, {}, {ids.b}}));
    EXPECT_EQ(behaviourOf(plugin), "02 00 00 00");
    EXPECT_EQ(idsOf(plugin), Ids{ids.a});
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginConnectedElementsBody, OfVersion1GivesBehaviour3AndLeavesTheSetAlone) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    plugin.add(ids.a);
    EXPECT_TRUE(load(plugin, {kBody1, {}, {ids.b}}));
    EXPECT_EQ(behaviourOf(plugin), "03 00 00 00");
    EXPECT_EQ(idsOf(plugin), Ids{ids.a});
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginConnectedElementsBody, OfVersion2HasABehaviourAndLeavesTheSetAlone) {
    const SomeIds ids;
    OpenConnected plugin;
    plugin.add(ids.a);
    EXPECT_TRUE(load(plugin, {kBody2, {}, {ids.b}}));
    EXPECT_EQ(behaviourOf(plugin), "02 00 00 00");
    EXPECT_EQ(idsOf(plugin), Ids{ids.a});
}

TEST(PluginConnectedElementsBody, OfVersion3HasHardIds) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    plugin.add(ids.c);
    EXPECT_TRUE(load(plugin, {kBody3, {ids.c}, {ids.b, ids.a}}));
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b}));
    EXPECT_EQ(behaviourOf(plugin), "02 00 00 00");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginConnectedElementsBody, OfVersion3InAPluginOfSoftPointersReportsAndMakesItHard) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin(kSoftPointer);
    EXPECT_TRUE(load(plugin, {kBody3, {ids.c}, {ids.a, ids.b}}));
    EXPECT_EQ(plugin.ownership(), kHardPointer);
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b}));
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "m_ownership == tmpOwnership");
    EXPECT_EQ(recorder.at(0).values, (Values{{"m_ownership", "1"}, {"tmpOwnership", "0"}}));
    EXPECT_EQ(recorder.at(0).message, "ownership type mismatch - intentional change?");
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
}

TEST(PluginConnectedElementsBody, OfVersion4WithAnotherOwnershipReportsAndTakesIt) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    EXPECT_TRUE(load(plugin, {kSoftBody, {ids.a, ids.b}, {}}));
    EXPECT_EQ(plugin.ownership(), kSoftPointer);
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b}));
    EXPECT_EQ(recorder.conditions(), Texts{"m_ownership == tmpOwnership"});
}

TEST(PluginConnectedElementsBody, OfVersion5IsReportedAndReadAllTheSame) {
    const SomeIds ids;
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    OpenConnected plugin;
    EXPECT_TRUE(load(plugin, {"05" + kHardBody.substr(2), {}, {ids.a, ids.b}}));
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b}));
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "version <= kVersion");
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "5"}, {"kVersion", "4"}}));
    EXPECT_EQ(recorder.at(0).message, "version mismatch");
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
    ASSERT_EQ(warned.warnings.size(), 1u);
    EXPECT_EQ(warned.warnings[0].version, 5);
    EXPECT_EQ(warned.warnings[0].current, 4);
    EXPECT_EQ(warned.warnings[0].name, "Taldork.ARX");
}

TEST(PluginConnectedElementsBody, WithAWrongEndIsTakenAndRefused) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    std::string body = kHardBody;
    body.replace(body.size() - 11, 2, "7b");
    EXPECT_FALSE(load(plugin, {body, {}, {ids.a, ids.b}}));
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b}));
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "magic == kMagic");
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "3176966011"}, {"kMagic", "3176966010"}}));
    EXPECT_EQ(recorder.at(0).message, "filing error");
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
}

TEST(PluginConnectedElementsBody, ACountAboveTheIdsThatAreThereEndsInAFilerError) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    const StoredBody body(joined({"04 00 00 00 00 00 00 00 00 00 00 00 ff ff ff ff", kEnd}), {ids.c},
                          {ids.a, ids.b});
    EXPECT_THROW(load(plugin, body), orv::Exception);
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b}));
    EXPECT_EQ(recorder.conditions(), Texts{"!hardPointers_.empty()"});
}

TEST(PluginConnectedElementsBody, StandsInTheFrameOfAPlugin) {
    const SomeIds ids;
    OpenConnected plugin;
    const StoredBody stored(framed(kHardBody), {}, {ids.a, ids.b});
    EXPECT_TRUE(stored.read([&plugin](auto& archive) { return plugin.load(archive, 6); }));
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.save(archive));
    EXPECT_EQ(hexOf(archive), framed(kHardBody));
    EXPECT_EQ(archive.hardPointers(), (Ids{ids.a, ids.b}));
}

TEST(PluginConnectedElementsBody, EveryPrefixEndsInAFilerError) {
    const SomeIds ids;
    for (const std::string& body : {kBody1, kBody2, kBody3, kHardBody, kSoftBody})
        expectEveryPrefixToFail<OpenConnected>({framed(body), {ids.a, ids.b}, {ids.a, ids.b}});
}

TEST(PluginConnectedElementsBody, EveryTurnedBitEndsCleanly) {
    const SomeIds ids;
    for (const std::string& body : {kBody1, kBody2, kBody3, kHardBody})
        // The frame's and the body's end: any other value there is refused.
        EXPECT_GE(refusedOfDamaged<OpenConnected>({framed(body), {ids.a, ids.b}, {ids.a, ids.b}}), 64)
            << body;
}

RC_GTEST_PROP(PluginConnectedElementsProperty, WhatIsSavedComesBack, ()) {
    static const SomeIds ids;
    const auto ownership = static_cast<Ownership>(*rc::gen::inRange(0, 3));
    OpenConnected plugin(ownership);
    plugin.setBehaviour(*rc::gen::arbitrary<unsigned int>());
    for (const AcDbObjectId& id : *rc::gen::container<std::vector<AcDbObjectId>>(
             rc::gen::element(ids.a, ids.b, ids.c, AcDbObjectId())))
        plugin.add(id);
    orv::serialization::BinaryOutArchive archive;
    RC_ASSERT(plugin.onSave(archive));
    OpenConnected back(ownership);
    RC_ASSERT(load(back, StoredBody(blockOf(archive), archive.softPointers(), archive.hardPointers())));
    RC_ASSERT(idsOf(back) == idsOf(plugin));
    RC_ASSERT(back.ownership() == ownership);
    RC_ASSERT(behaviourOf(back) == behaviourOf(plugin));
}

// The reading of old entities.

TEST(PluginConnectedElementsOldReader, TakesHardPointersAndLeavesNullOut) {
    const SomeIds ids;
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    out.writeUInt32(3);
    out.writeHardPointerId(ids.b);
    out.writeHardPointerId(AcDbHardPointerId());
    out.writeHardPointerId(ids.a);
    out.writeUInt32(77);
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    OpenConnected plugin;
    plugin.add(ids.c);
    EXPECT_EQ(plugin._read(&in), Acad::eOk);
    EXPECT_EQ(idsOf(plugin), (Ids{ids.a, ids.b}));
    EXPECT_EQ(in.left(), 4u);
}

TEST(PluginConnectedElementsOldReader, CallsNothingButCountAndIds) {
    RecordingFiler filer;
    filer.feed(Adesk::UInt32{2});
    OpenConnected plugin;
    EXPECT_EQ(plugin._read(&filer), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"readUInt32", "readHardPointerId", "readHardPointerId"}));
    EXPECT_TRUE(plugin.hooks.empty());
}

TEST(PluginConnectedElementsOldReader, AFailingReadEndsItWithItsStatus) {
    const SomeIds ids;
    for (int call = 0; call < 3; ++call) {
        RecordingFiler filer;
        filer.feed(Adesk::UInt32{2});
        filer.failAt = call;
        filer.failure = Acad::eHandleExists;
        OpenConnected plugin;
        plugin.add(ids.a);
        EXPECT_EQ(plugin._read(&filer), Acad::eHandleExists);
        EXPECT_EQ(filer.calls.size(), static_cast<std::size_t>(call + 1));
        EXPECT_EQ(plugin.size(), 0u);
    }
}

TEST(PluginConnectedElementsOldReader, ACountAboveTheEndStopsThere) {
    const SomeIds ids;
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    out.writeUInt32(0xFFFFFFFF);
    out.writeHardPointerId(ids.a);
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    OpenConnected plugin;
    EXPECT_EQ(plugin._read(&in), Acad::eEndOfObject);
    EXPECT_EQ(idsOf(plugin), Ids{ids.a});
}

TEST(PluginConnectedElementsOldReader, NoFilerIsReportedAndTheSetStays) {
    const SomeIds ids;
    ReportRecorder recorder;
    OpenConnected plugin;
    plugin.add(ids.a);
    EXPECT_EQ(plugin._read(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(recorder.conditions(), Texts{"pFiler"});
    EXPECT_EQ(plugin.size(), 1u);
}
