#include "dbx/elem/plugin_general.h"

#include "base/key_value_storage.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "platform/uuid.h"
#include "support/slots.h"
#include "support/test_element.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <string>
#include <vector>

using namespace testing_support;
using orv::KeyValueStorage;
using orv::elem::ElementPluginRegistry;
using orv::elem::Plugin_General;
using orv::elem::Plugin_General_PE;
using orv::smartassert::Severity;

namespace {

// With what is protected laid open.
struct OpenGeneral : Plugin_General {
    using Plugin_General::lastLoadVersion;
    using Plugin_General::onErase;
    using Plugin_General::onLoad;
    using Plugin_General::onPostClone;
    using Plugin_General::onSave;
};

// The numbering of a front end that gives every element the number that is asked for, and ten more to a
// clone.
struct SimpleNumbering : Plugin_General_PE {
    SimpleNumbering() { Plugin_General::setProtExt(this); }
    ~SimpleNumbering() { Plugin_General::setProtExt(nullptr); }

    void setNumber(Plugin_General& plugin, unsigned int number) override {
        calls.push_back("setNumber " + std::to_string(number));
        storeNumber(plugin, number);
    }
    void onPostClone(Plugin_General& plugin) override {
        calls.push_back("onPostClone");
        storeNumber(plugin, plugin.getNumber() + 10);
    }
    void onErase(Plugin_General& plugin, bool erasing) override {
        calls.push_back("onErase " + std::to_string(plugin.getNumber()) + (erasing ? " 1" : " 0"));
    }

    Texts calls;
};

// Of the BIM identifiers below.
constexpr char kGuidBytes[] = "33 22 11 00 55 44 77 66 88 99 aa bb cc dd ee ff";
constexpr char kGuidText[] = "guid:128:00112233-4455-6677-8899-aabbccddeeff";

// The pieces of the bodies: the name "B1", the number 7, the offset (1, 2, -0.5) and the end.
constexpr char kName[] = "02 00 00 00 42 00 00 00 31 00 00 00";
constexpr char kNumber[] = "07 00 00 00";
constexpr char kOffset[] = "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 00 00 00 00 00 00 e0 bf";
constexpr char kEnd[] = "e7 af 7a c6";

std::string version(int number) { return joined({"0" + std::to_string(number), "00 00 00"}); }
std::string bodyOf(int versionNumber, const std::string& identifier) {
    return joined({version(versionNumber), kName, kNumber, identifier, kOffset, kEnd});
}
std::string uuidBody(int versionNumber) { return bodyOf(versionNumber, joined({"10 00 00 00", kGuidBytes})); }
const std::string kTextBody = bodyOf(4, "05 00 00 00 67 75 69 64 3a"); // "guid:"

bool load(OpenGeneral& plugin, const std::string& body) {
    const StoredBody stored(body);
    std::uint64_t taken = 0;
    const bool loaded = stored.read([&plugin](auto& archive) { return plugin.onLoad(archive, 1); }, &taken);
    EXPECT_TRUE(!loaded || taken == stored.bytes.size());
    return loaded;
}

std::string saved(const OpenGeneral& plugin) {
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.onSave(archive));
    EXPECT_TRUE(archive.softPointers().empty());
    EXPECT_TRUE(archive.hardPointers().empty());
    return hexOf(archive);
}

void expectFields(const OpenGeneral& plugin, const std::string& id) {
    EXPECT_EQ(plugin.getName(), L"B1");
    EXPECT_EQ(plugin.getNumber(), 7u);
    EXPECT_EQ(plugin.getBIMID(), id);
    const AcGeVector3d offset = plugin.getTextAttachmentOffset();
    EXPECT_EQ(offset.x, 1.0);
    EXPECT_EQ(offset.y, 2.0);
    EXPECT_EQ(offset.z, -0.5);
}

// An element in no drawing, with one general plugin.
struct GeneralElement : TestElement {
    GeneralElement() : general(new OpenGeneral) {
        addPlugin(general);
        readChecks = writeChecks = 0;
    }
    OpenGeneral* general;
};

const char* const kNoExtension = "This functionality is only available when the ARX is loaded!";

void expectMissingExtension(const ReportRecorder& recorder, std::size_t count) {
    EXPECT_EQ(recorder.conditions(), Texts(count, "getProtExt()"));
    EXPECT_EQ(recorder.messages(), Texts(count, kNoExtension));
    for (const auto& report : recorder.reports()) {
        EXPECT_TRUE(report.values.empty());
        EXPECT_EQ(report.severity, Severity::kDebug);
    }
}

} // namespace

TEST(PluginGeneral, BeginsWithItsDefaults) {
    const OpenGeneral plugin;
    EXPECT_EQ(plugin.lastLoadVersion(), 4u);
    EXPECT_EQ(plugin.getName(), L"");
    EXPECT_EQ(plugin.getNumber(), 0u);
    EXPECT_EQ(plugin.getBIMID(), "");
    EXPECT_EQ(plugin.getTextAttachmentOffset(), AcGeVector3d(0, 0, 0));
    EXPECT_EQ(Plugin_General::getProtExt(), nullptr);
}

TEST(PluginGeneral, IsKnownToTheRegistry) {
    const auto plugin = ElementPluginRegistry::create("orv.base.general");
    ASSERT_TRUE(plugin);
    EXPECT_NE(dynamic_cast<Plugin_General*>(plugin.get()), nullptr);
    EXPECT_EQ(plugin->pluginId(), "orv.base.general");
    EXPECT_EQ(&plugin->pluginId(), &Plugin_General::static_pluginId());
}

TEST(PluginGeneral, ThePlainClassHasNoCoordinateSystem) {
    EXPECT_FALSE(Plugin_General().getCoordinateSystem());
}

#ifndef _MSC_VER
TEST(PluginGeneral, TheCoordinateSystemStandsBehindTheSlotsOfAPlugin) {
    struct Placed : Plugin_General {
        boost::optional<AcGeMatrix3d> getCoordinateSystem() const override { return AcGeMatrix3d(); }
    };
    const Placed plugin;
    using Operation = boost::optional<AcGeMatrix3d> (*)(const void*);
    EXPECT_TRUE(slotOf<Operation>(&plugin, 24)(&plugin));
    const Plugin_General plain;
    EXPECT_FALSE(slotOf<Operation>(&plain, 24)(&plain));
}

TEST(PluginGeneral, TheExtensionsOperationsStandInTheirSlots) {
    SimpleNumbering numbering;
    Plugin_General plugin;
    slotOf<void (*)(void*, Plugin_General&, unsigned int)>(&numbering, 0)(&numbering, plugin, 5);
    slotOf<void (*)(void*, Plugin_General&)>(&numbering, 1)(&numbering, plugin);
    slotOf<void (*)(void*, Plugin_General&, bool)>(&numbering, 2)(&numbering, plugin, true);
    EXPECT_EQ(numbering.calls, (Texts{"setNumber 5", "onPostClone", "onErase 15 1"}));
}
#endif

TEST(PluginGeneral, WithoutAnOwnerNothingIsChecked) {
    SimpleNumbering numbering;
    OpenGeneral plugin;
    plugin.setName(L"N");
    plugin.setBIMID("not looked at");
    plugin.setTextAttachmentOffset(AcGeVector3d(1, 2, 3));
    plugin.setNumber(3);
    EXPECT_EQ(plugin.getName(), L"N");
    EXPECT_EQ(plugin.getBIMID(), "not looked at");
    EXPECT_EQ(plugin.getTextAttachmentOffset(), AcGeVector3d(1, 2, 3));
    EXPECT_EQ(plugin.getNumber(), 3u);
}

TEST(PluginGeneral, ReadingAsksForReadAndWritingForWrite) {
    SimpleNumbering numbering;
    GeneralElement element;
    Plugin_General& plugin = *element.general;
    const auto checks = [&element](auto call) {
        element.readChecks = element.writeChecks = 0;
        call();
        return std::pair<int, int>(element.readChecks, element.writeChecks);
    };
    const std::pair<int, int> read(1, 0);
    const std::pair<int, int> write(0, 1);
    EXPECT_EQ(checks([&] { plugin.getNumber(); }), read);
    EXPECT_EQ(checks([&] { plugin.getName(); }), read);
    EXPECT_EQ(checks([&] { plugin.getBIMID(); }), read);
    EXPECT_EQ(checks([&] { plugin.getTextAttachmentOffset(); }), read);
    EXPECT_EQ(checks([&] { plugin.setName(L"N"); }), write);
    EXPECT_EQ(checks([&] { plugin.setBIMID("b"); }), write);
    EXPECT_EQ(checks([&] { plugin.createBIMID(); }), write);
    EXPECT_EQ(checks([&] { plugin.setTextAttachmentOffset(AcGeVector3d(1, 0, 0)); }), write);
    EXPECT_EQ(checks([&] { plugin.setNumber(1); }), write) << "by the extension's store";
    EXPECT_EQ(checks([&] { plugin.getCoordinateSystem(); }), (std::pair<int, int>(0, 0)));
}

TEST(PluginGeneral, ACreatedIdentifierIsAGuid) {
    Plugin_General plugin;
    plugin.setBIMID("old");
    plugin.createBIMID();
    EXPECT_EQ(plugin.getBIMID().substr(0, 9), "guid:128:");
    EXPECT_EQ(plugin.getBIMID().size(), 45u);
}

TEST(PluginGeneral, ACreatedIdentifierIsEmptyWhenTheSystemHasNone) {
    struct NilCalls : platform::UuidCalls {
        NilCalls() { platform::setUuidCalls(this); }
        ~NilCalls() override { platform::setUuidCalls(nullptr); }
        int createSequential(platform::Uuid& uuid) override {
            uuid = {};
            return 0;
        }
    } calls;
    Plugin_General plugin;
    plugin.setBIMID("old");
    plugin.createBIMID();
    EXPECT_EQ(plugin.getBIMID(), "");
}

TEST(PluginGeneral, SettingTheNumberWithoutAnExtensionReportsAndLeavesIt) {
    OpenGeneral plugin;
    ASSERT_TRUE(load(plugin, kTextBody));
    ReportRecorder recorder;
    plugin.setNumber(9);
    EXPECT_EQ(plugin.getNumber(), 7u);
    expectMissingExtension(recorder, 1);
}

TEST(PluginGeneral, CloneAndEraseWithoutAnExtensionReportAndKeepTheNumber) {
    OpenGeneral plugin;
    ASSERT_TRUE(load(plugin, kTextBody));
    ReportRecorder recorder;
    plugin.onPostClone();
    plugin.onErase(true);
    plugin.onErase(false);
    EXPECT_EQ(plugin.getNumber(), 7u);
    expectMissingExtension(recorder, 3);
}

TEST(PluginGeneral, TheExtensionGetsNumberCloneAndErase) {
    SimpleNumbering numbering;
    ReportRecorder recorder;
    OpenGeneral plugin;
    plugin.setNumber(5);
    plugin.onPostClone();
    plugin.onErase(true);
    plugin.onErase(false);
    EXPECT_EQ(numbering.calls, (Texts{"setNumber 5", "onPostClone", "onErase 15 1", "onErase 15 0"}));
    EXPECT_EQ(recorder.size(), 0u);
}

// Bodies.

TEST(PluginGeneralBody, OfVersion4HasTheIdentifierAsText) {
    SimpleNumbering numbering;
    OpenGeneral plugin;
    plugin.setName(L"B1");
    plugin.setNumber(7);
    plugin.setBIMID("guid:");
    plugin.setTextAttachmentOffset(AcGeVector3d(1, 2, -0.5));
    EXPECT_EQ(saved(plugin), kTextBody);
    ReportRecorder recorder;
    OpenGeneral back;
    EXPECT_TRUE(load(back, kTextBody));
    expectFields(back, "guid:");
    EXPECT_EQ(back.lastLoadVersion(), 4u);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginGeneralBody, OfAnEmptyPluginHasZerosBetweenVersionAndEnd) {
    const OpenGeneral plugin;
    const std::string zeros = "00 00 00 00";
    EXPECT_EQ(saved(plugin), joined({"04 00 00 00", zeros, zeros, zeros, zeros, zeros, zeros, zeros, zeros,
                                     zeros, "e7 af 7a c6"}));
}

TEST(PluginGeneralBody, StandsInTheFrameOfAPlugin) {
    OpenGeneral plugin;
    ASSERT_TRUE(StoredBody(framed(kTextBody)).read([&](auto& archive) { return plugin.load(archive, 6); }));
    expectFields(plugin, "guid:");
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(plugin.save(archive));
    EXPECT_EQ(hexOf(archive), framed(kTextBody));
}

TEST(PluginGeneralBody, OfVersions1And2HasAGuid) {
    for (const int number : {1, 2}) {
        ReportRecorder recorder;
        OpenGeneral plugin;
        EXPECT_TRUE(load(plugin, uuidBody(number)));
        expectFields(plugin, kGuidText);
        EXPECT_EQ(plugin.lastLoadVersion(), static_cast<unsigned int>(number));
        EXPECT_EQ(recorder.size(), 0u);
    }
}

TEST(PluginGeneralBody, OfVersion2WithAShorterGuidReportsAndFillsItWithZeros) {
    ReportRecorder recorder;
    OpenGeneral plugin;
    EXPECT_TRUE(load(plugin, bodyOf(2, "04 00 00 00 33 22 11 00")));
    expectFields(plugin, "guid:128:00112233-0000-0000-0000-000000000000");
    EXPECT_EQ(recorder.conditions(), Texts{"storedSize == in.size_"});
}

TEST(PluginGeneralBody, OfVersion3HasABlob) {
    ReportRecorder recorder;
    OpenGeneral plugin;
    EXPECT_TRUE(load(plugin, uuidBody(3)));
    expectFields(plugin, kGuidText);
    EXPECT_EQ(plugin.lastLoadVersion(), 3u);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginGeneralBody, OfVersion3WithAnEmptyBlobYieldsAnEmptyIdentifier) {
    ReportRecorder recorder;
    OpenGeneral plugin;
    plugin.setBIMID("old");
    EXPECT_TRUE(load(plugin, bodyOf(3, "00 00 00 00")));
    expectFields(plugin, "");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginGeneralBody, OfVersion3WithABlobOf8BytesReportsAndGetsANewIdentifier) {
    ReportRecorder recorder;
    OpenGeneral plugin;
    EXPECT_TRUE(load(plugin, bodyOf(3, "08 00 00 00 01 02 03 04 05 06 07 08")));
    const std::string id = plugin.getBIMID();
    EXPECT_EQ(id.substr(0, 9), "guid:128:");
    EXPECT_EQ(id.size(), 45u);
    expectFields(plugin, id);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "oldid.size() == sizeof(GUID)");
    EXPECT_TRUE(recorder.at(0).values.empty());
    EXPECT_EQ(recorder.at(0).message, "Cannot not convert from previous GUID format - creating new GUID.");
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
}

TEST(PluginGeneralBody, OfVersion3WithABlobOf17BytesIsNoGuidEither) {
    ReportRecorder recorder;
    OpenGeneral plugin;
    EXPECT_TRUE(load(plugin, bodyOf(3, joined({"11 00 00 00", kGuidBytes, "00"}))));
    EXPECT_NE(plugin.getBIMID(), kGuidText);
    EXPECT_EQ(recorder.conditions(), Texts{"oldid.size() == sizeof(GUID)"});
}

TEST(PluginGeneralBody, OldOnesAreSavedAsVersion4) {
    OpenGeneral plugin;
    ASSERT_TRUE(load(plugin, uuidBody(1)));
    OpenGeneral back;
    ASSERT_TRUE(load(back, saved(plugin)));
    expectFields(back, kGuidText);
    EXPECT_EQ(back.lastLoadVersion(), 4u);
}

TEST(PluginGeneralBody, OfVersion5ReportsAndIsRefusedWithNothingTaken) {
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    OpenGeneral plugin;
    ASSERT_TRUE(load(plugin, kTextBody));
    EXPECT_FALSE(load(plugin, joined({"05 00 00 00 00 00 00 00 09 00 00 00 00 00 00 00", kOffset, kEnd})));
    expectFields(plugin, "guid:");
    EXPECT_EQ(plugin.lastLoadVersion(), 5u);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "version <= kVersion");
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "5"}, {"kVersion", "4"}}));
    EXPECT_EQ(recorder.at(0).message, "");
    ASSERT_EQ(warned.warnings.size(), 1u);
    EXPECT_EQ(warned.warnings[0].version, 5);
    EXPECT_EQ(warned.warnings[0].current, 4);
    EXPECT_EQ(warned.warnings[0].name, "Taldork.ARX");
}

TEST(PluginGeneralBody, WithAWrongEndIsTakenAndRefused) {
    ReportRecorder recorder;
    OpenGeneral plugin;
    EXPECT_FALSE(load(
        plugin, joined({version(4), kName, kNumber, "05 00 00 00 67 75 69 64 3a", kOffset, "e8 af 7a c6"})));
    expectFields(plugin, "guid:");
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "magic == kMagic");
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "3329929192"}, {"kMagic", "3329929191"}}));
    EXPECT_EQ(recorder.at(0).message, "filing error");
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
}

TEST(PluginGeneralBody, EveryPrefixEndsInAFilerError) {
    for (const std::string& body :
         {uuidBody(1), uuidBody(2), uuidBody(3), bodyOf(3, "00 00 00 00"), kTextBody})
        expectEveryPrefixToFail<OpenGeneral>(StoredBody(framed(body)));
}

TEST(PluginGeneralBody, EveryTurnedBitEndsCleanly) {
    for (const std::string& body :
         {uuidBody(1), uuidBody(2), uuidBody(3), bodyOf(3, "00 00 00 00"), kTextBody})
        // The frame's and the body's end: any other value there is refused.
        EXPECT_GE(refusedOfDamaged<OpenGeneral>(StoredBody(framed(body))), 64) << body;
}

RC_GTEST_PROP(PluginGeneralProperty, WhatIsSavedComesBack, ()) {
    SimpleNumbering numbering;
    OpenGeneral plugin;
    std::wstring name;
    for (const auto unit : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 0xD800)))
        name += static_cast<wchar_t>(unit);
    plugin.setName(name);
    plugin.setNumber(*rc::gen::arbitrary<unsigned int>());
    plugin.setBIMID(*rc::gen::arbitrary<std::string>());
    plugin.setTextAttachmentOffset(AcGeVector3d(*rc::gen::arbitrary<double>(), *rc::gen::arbitrary<double>(),
                                                *rc::gen::arbitrary<double>()));
    OpenGeneral back;
    RC_ASSERT(load(back, saved(plugin)));
    RC_ASSERT(back.getName() == plugin.getName());
    RC_ASSERT(back.getNumber() == plugin.getNumber());
    RC_ASSERT(back.getBIMID() == plugin.getBIMID());
    RC_ASSERT(saved(back) == saved(plugin));
}

// Values under names.

TEST(PluginGeneralValues, NameNumberAndGroupArePut) {
    SimpleNumbering numbering;
    GeneralElement element;
    element.general->setName(L"Beam \u00e4");
    element.general->setNumber(4000000000u);
    element.general->setBIMID("id");
    element.setProperties().add(30003, 12u);
    KeyValueStorage storage;
    EXPECT_TRUE(element.general->onSave(storage));
    EXPECT_EQ(storage.getValue<std::wstring>("general/name", std::wstring(L"none")),
              std::wstring(L"Beam \u00e4"));
    EXPECT_EQ(storage.getValue<int>("general/number"), static_cast<int>(4000000000u));
    EXPECT_EQ(storage.getValue<int>("general/group"), 12);
}

TEST(PluginGeneralValues, AnElementWithoutAGroupPutsNone) {
    GeneralElement element;
    KeyValueStorage storage;
    EXPECT_TRUE(element.general->onSave(storage));
    EXPECT_TRUE(storage.get("general/group").empty());
    EXPECT_EQ(storage.getValue<std::wstring>("general/name", std::wstring(L"none")), std::wstring());
    EXPECT_EQ(storage.getValue<int>("general/number"), 0);
}

TEST(PluginGeneralValues, AGroupOfAnotherTypeIsReportedAndNotPut) {
    GeneralElement element;
    element.setProperties().add(30003, 12);
    ReportRecorder recorder;
    KeyValueStorage storage;
    EXPECT_TRUE(element.general->onSave(storage));
    EXPECT_TRUE(storage.get("general/group").empty());
    EXPECT_EQ(recorder.conditions(), Texts{"false"});
    EXPECT_EQ(recorder.messages(), Texts{"getValueNotThrow() failed"});
}

TEST(PluginGeneralValues, SavingReadsTheElementAndLoadingWritesIt) {
    GeneralElement element;
    KeyValueStorage storage;
    element.general->onSave(storage);
    EXPECT_EQ(element.readChecks, 1);
    EXPECT_EQ(element.writeChecks, 0);
    element.readChecks = 0;
    element.general->onLoad(storage);
    EXPECT_EQ(element.readChecks, 0);
    EXPECT_EQ(element.writeChecks, 1);
}

TEST(PluginGeneralValues, AnEmptyStorageSetsTheHighestGroupNumber0AndNoName) {
    SimpleNumbering numbering;
    GeneralElement element;
    element.general->setName(L"old");
    element.general->setNumber(5);
    EXPECT_TRUE(element.general->onLoad(KeyValueStorage()));
    EXPECT_EQ(element.setProperties().getCasted<unsigned int>(30003), 4294967295u);
    EXPECT_EQ(element.general->getNumber(), 0u);
    EXPECT_EQ(element.general->getName(), L"");
}

TEST(PluginGeneralValues, AnUnsignedGroupIsTakenInThePlaceOfTheOldOne) {
    GeneralElement element;
    element.setProperties().add(30003, 1u);
    KeyValueStorage storage;
    storage.set("general/group", 12u).set("general/number", 5).set("general/name", std::wstring(L"N"));
    ReportRecorder recorder;
    EXPECT_TRUE(element.general->onLoad(storage));
    EXPECT_EQ(element.setProperties().getCasted<unsigned int>(30003), 12u);
    EXPECT_EQ(element.setProperties().size(), 1u);
    EXPECT_EQ(element.general->getNumber(), 5u) << "without an extension";
    EXPECT_EQ(element.general->getName(), L"N");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PluginGeneralValues, WhatWasPutDirectlyComesBackWithTheHighestGroup) {
    GeneralElement element;
    element.setProperties().add(30003, 12u);
    KeyValueStorage storage;
    ASSERT_TRUE(element.general->onSave(storage));
    ASSERT_TRUE(element.general->onLoad(storage));
    EXPECT_EQ(element.setProperties().getCasted<unsigned int>(30003),
              std::numeric_limits<unsigned int>::max());
}

TEST(PluginGeneralValues, IdentifierAndOffsetStay) {
    GeneralElement element;
    element.general->setBIMID("id");
    element.general->setTextAttachmentOffset(AcGeVector3d(1, 2, 3));
    ASSERT_TRUE(element.general->onLoad(KeyValueStorage()));
    EXPECT_EQ(element.general->getBIMID(), "id");
    EXPECT_EQ(element.general->getTextAttachmentOffset(), AcGeVector3d(1, 2, 3));
}

TEST(PluginGeneralValues, WithoutAnOwnerThereIsAReportAndNothingElse) {
    ReportRecorder recorder;
    OpenGeneral plugin;
    KeyValueStorage storage;
    EXPECT_FALSE(plugin.onSave(storage));
    EXPECT_FALSE(plugin.onLoad(storage));
    EXPECT_TRUE(storage.get("general/name").empty());
    EXPECT_EQ(recorder.conditions(), (Texts{"owner()", "owner()"}));
}
