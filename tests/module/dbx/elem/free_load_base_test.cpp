#include "dbx/elem/free_load_base.h"

#include "base/key_value_storage.h"
#include "module/dbx/elem/load_plugins.h"
#include "module/dbx/elem/plugin_bodies.h"

#include <rapidcheck/gtest.h>

#include <type_traits>

using namespace testing_support;
using orv::KeyValueStorage;
using orv::elem::FreeLoadBase;
using orv::elem::FreeLoadProjection;
using orv::elem::FreeLoadReference;
using orv::elem::LoadNature;
using Ids = std::deque<AcDbObjectId>;
using Numbers = std::set<unsigned int>;

namespace {

constexpr char kEnd[] = "c1 a7 a7 81";
// Nature 9; projection 2, depth -2.5, reference 104; the numbers 3 and any.
constexpr char kNature[] = "09 00 00 00";
constexpr char kReference[] = "02 00 00 00 00 00 00 00 00 00 04 c0 68 00 00 00";
constexpr char kNumbers[] = "02 00 00 00 03 00 00 00 ff ff ff ff";

const std::string kBody1 = joined({"01 00 00 00", kNature, kNumbers, kEnd});
const std::string kBody2 = joined({"02 00 00 00", kNature, kReference, kNumbers, kEnd});
const std::string kBody3 = joined({"03 00 00 00", kNature, kReference, kNumbers, kEnd});
const std::string kBody4 = joined({"04 00 00 00", kGenericHex, kNature, kReference, kNumbers, kEnd});

struct AnId {
    AnId() : db(true), id(db.blockTableId()) {}
    AcDbDatabase db;
    AcDbObjectId id;
};

void fill(FreeLoad& load) {
    load.setFreeLoadType(static_cast<LoadNature>(9));
    load.setProjectionType(static_cast<FreeLoadProjection::Type>(2));
    load.setDepth(-2.5);
    load.setReferenceType(static_cast<FreeLoadReference::Type>(104));
    load.setAffectedNos({FreeLoadBase::REFERENCE_ANY, 3});
}

void expectFilled(const FreeLoad& load) {
    EXPECT_EQ(load.getFreeLoadType(), 9);
    EXPECT_EQ(load.getProjectionType(), 2);
    EXPECT_EQ(load.getDepth(), -2.5);
    EXPECT_EQ(load.getReferenceType(), 104);
    EXPECT_EQ(load.getAffectedNos(), (Numbers{3, 0xffffffff}));
}

bool load(FreeLoad& plugin, const StoredBody& body) {
    std::uint64_t taken = 0;
    const bool loaded = body.read([&plugin](auto& archive) { return plugin.onLoad(archive, 1); }, &taken);
    EXPECT_TRUE(!loaded || taken == body.bytes.size());
    return loaded;
}

} // namespace

TEST(FreeLoadBase, BeginsWithTheGeneralReferenceAndNothingElse) {
    FreeLoad load;
    EXPECT_EQ(load.getReferenceType(), 108);
    EXPECT_EQ(load.getDepth(), 0.0);
    EXPECT_EQ(load.getProjectionType(), 0);
    EXPECT_TRUE(load.getAffectedNos().empty());
    EXPECT_EQ(load.getFreeLoadType(), 0);
    EXPECT_TRUE(std::is_abstract_v<FreeLoadBase>);
    EXPECT_EQ(FreeLoadBase::REFERENCE_ANY, 0xffffffffu);
    EXPECT_EQ(FreeLoadBase::kVersion, 4u);
    EXPECT_EQ(FreeLoadBase::kMagic, 0x81a7a7c1u);
}

TEST(FreeLoadBase, OnlyProjectionAndNatureAskForNewArrows) {
    struct Row {
        const char* name;
        std::function<void(FreeLoad&)> call;
        bool refresh;
    };
    const Row rows[] = {
        {"setReferenceType", [](FreeLoad& load) { load.setReferenceType(FreeLoadReference::kFirst); }, false},
        {"setProjectionType", [](FreeLoad& load) { load.setProjectionType(FreeLoadProjection::kNone); },
         true},
        {"setFreeLoadType", [](FreeLoad& load) { load.setFreeLoadType(orv::elem::kLoadNatureNone); }, true},
        {"setDepth", [](FreeLoad& load) { load.setDepth(1.0); }, false},
        {"setAffectedNos", [](FreeLoad& load) { load.setAffectedNos({1}); }, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TestElement element;
        auto* const load = new FreeLoad;
        element.addPlugin(load);
        element.readChecks = element.writeChecks = 0;
        row.call(*load);
        EXPECT_EQ(element.writeChecks, 1);
        EXPECT_EQ(element.readChecks, 0);
        EXPECT_EQ(load->refreshGraphics(), row.refresh);
        EXPECT_TRUE(load->hooks.empty());
    }
}

TEST(FreeLoadBase, EachGetterChecksForRead) {
    const std::function<void(const FreeLoad&)> calls[] = {
        [](const FreeLoad& load) { load.getReferenceType(); },
        [](const FreeLoad& load) { load.getProjectionType(); },
        [](const FreeLoad& load) { load.getFreeLoadType(); },
        [](const FreeLoad& load) { load.getDepth(); },
        [](const FreeLoad& load) { load.getAffectedNos(); },
    };
    for (const auto& call : calls) {
        TestElement element;
        auto* const load = new FreeLoad;
        element.addPlugin(load);
        element.readChecks = element.writeChecks = 0;
        call(*load);
        EXPECT_EQ(element.readChecks, 1);
        EXPECT_EQ(element.writeChecks, 0);
    }
}

TEST(FreeLoadBase, KeepsWhatItIsGivenAndTakesItsOwnNumbersBack) {
    FreeLoad load;
    fill(load);
    load.setAffectedNos(load.getAffectedNos());
    expectFilled(load);
}

TEST(FreeLoadBaseBody, IsWrittenAsVersion4WithTheGenericPartInside) {
    const AnId element;
    FreeLoad load;
    fillGeneric(load, element.id);
    fill(load);
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(load.onSave(archive));
    EXPECT_EQ(hexOf(archive), kBody4);
    EXPECT_EQ(archive.softPointers(), Ids{element.id});
    EXPECT_TRUE(archive.hardPointers().empty());
}

TEST(FreeLoadBaseBody, OfANewLoadIsWrittenWithTheGeneralReference) {
    FreeLoad load;
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(load.onSave(archive));
    EXPECT_EQ(
        hexOf(archive),
        joined({"04 00 00 00", "03 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 c1 d8 c5 57",
                "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 6c 00 00 00 00 00 00 00", kEnd}));
    EXPECT_EQ(archive.softPointers(), Ids{AcDbObjectId()});
}

TEST(FreeLoadBaseBody, OfVersion4IsReadWithItsGenericPart) {
    const AnId element;
    FreeLoad plugin;
    plugin.setAffectedNos({77});
    EXPECT_TRUE(load(plugin, {kBody4, {element.id}}));
    expectGeneric(plugin, element.id);
    expectFilled(plugin);
    EXPECT_TRUE(plugin.refreshGraphics());
}

TEST(FreeLoadBaseBody, OfVersion1HasTheGeneralReferenceAndKeepsTheVertices) {
    FreeLoad plugin;
    plugin.setVertices(verticesOf(3));
    fill(plugin);
    plugin.setFreeLoadType(orv::elem::kLoadNatureNone);
    plugin.setAffectedNos({77});
    EXPECT_TRUE(load(plugin, kBody1));
    EXPECT_EQ(plugin.numVertices(), 3u);
    EXPECT_EQ(plugin.getReferenceType(), 108);
    EXPECT_EQ(plugin.getProjectionType(), 0);
    EXPECT_EQ(plugin.getDepth(), 0.0);
    EXPECT_EQ(plugin.getFreeLoadType(), 9);
    EXPECT_EQ(plugin.getAffectedNos(), (Numbers{3, 0xffffffff}));
}

TEST(FreeLoadBaseBody, OfVersions2And3HasReferenceProjectionAndDepthButNoGenericPart) {
    for (const std::string& body : {kBody2, kBody3}) {
        FreeLoad plugin;
        plugin.setVertices(verticesOf(3));
        EXPECT_TRUE(load(plugin, body));
        EXPECT_EQ(plugin.numVertices(), 3u);
        expectFilled(plugin);
    }
}

TEST(FreeLoadBaseBody, OfVersion5IsRefusedWithNothingTaken) {
    const AnId element;
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    FreeLoad plugin;
    std::uint64_t taken = 0;
    const StoredBody body("05" + kBody4.substr(2), {element.id});
    EXPECT_FALSE(body.read([&plugin](auto& archive) { return plugin.onLoad(archive, 1); }, &taken));
    EXPECT_EQ(taken, 4u);
    EXPECT_EQ(plugin.numVertices(), 0u);
    EXPECT_FALSE(plugin.refreshGraphics());
    EXPECT_EQ(plugin.getReferenceType(), 108);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "version <= kVersion");
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "5"}, {"kVersion", "4"}}));
    ASSERT_EQ(warned.warnings.size(), 1u);
    EXPECT_EQ(warned.warnings[0].version, 5);
    EXPECT_EQ(warned.warnings[0].current, 4);
    EXPECT_EQ(warned.warnings[0].name, "Taldork.ARX");
}

TEST(FreeLoadBaseBody, ARefusedGenericPartEndsTheLoading) {
    const AnId element;
    ReportRecorder recorder;
    FreeLoad plugin;
    std::string damaged = kBody4;
    damaged.replace(12 + kGenericHex.size() - 2, 2, "58"); // the end of the generic part
    EXPECT_FALSE(load(plugin, {damaged, {element.id}}));
    expectGeneric(plugin, element.id);
    EXPECT_EQ(plugin.getFreeLoadType(), 0);
    EXPECT_EQ(recorder.conditions(), Texts{"magic == kMagic"});
}

TEST(FreeLoadBaseBody, WithAWrongEndIsTakenAndRefused) {
    const AnId element;
    ReportRecorder recorder;
    FreeLoad plugin;
    EXPECT_FALSE(load(plugin, {kBody4.substr(0, kBody4.size() - 2) + "82", {element.id}}));
    expectFilled(plugin);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "magic == kMagic");
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "2192025537"}, {"kMagic", "2175248321"}}));
    EXPECT_EQ(recorder.at(0).message, "filing error");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
}

TEST(FreeLoadBaseBody, ACountAboveWhatIsThereEndsInAFilerError) {
    const ReportRecorder reports;
    FreeLoad plugin;
    EXPECT_THROW(load(plugin, joined({"01 00 00 00", kNature, "ff ff ff ff 05 00 00 00 06 00"})),
                 orv::Exception);
    EXPECT_EQ(plugin.getAffectedNos(), Numbers{5});
}

TEST(FreeLoadBaseBody, EveryPrefixEndsInAFilerError) {
    const AnId element;
    for (const std::string& body : {kBody1, kBody2, kBody3, kBody4})
        expectEveryPrefixToFail<FreeLoad>({framed(body), {element.id}});
}

TEST(FreeLoadBaseBody, EveryTurnedBitEndsCleanly) {
    const AnId element;
    for (const std::string& body : {kBody1, kBody2, kBody3, kBody4})
        EXPECT_GE(refusedOfDamaged<FreeLoad>({framed(body), {element.id}}), 64) << body;
}

RC_GTEST_PROP(FreeLoadBaseProperty, WhatIsSavedComesBack, ()) {
    FreeLoad plugin;
    plugin.setFreeLoadType(static_cast<LoadNature>(*rc::gen::arbitrary<int>()));
    plugin.setProjectionType(static_cast<FreeLoadProjection::Type>(*rc::gen::arbitrary<int>()));
    plugin.setDepth(*rc::gen::arbitrary<double>());
    plugin.setReferenceType(static_cast<FreeLoadReference::Type>(*rc::gen::arbitrary<int>()));
    plugin.setAffectedNos(*rc::gen::arbitrary<Numbers>());
    plugin.setLoadCases(*rc::gen::arbitrary<Numbers>());
    orv::serialization::BinaryOutArchive archive;
    RC_ASSERT(plugin.onSave(archive));
    FreeLoad back;
    RC_ASSERT(load(back, StoredBody(blockOf(archive), archive.softPointers(), {})));
    RC_ASSERT(back.getFreeLoadType() == plugin.getFreeLoadType());
    RC_ASSERT(back.getProjectionType() == plugin.getProjectionType());
    RC_ASSERT(back.getDepth() == plugin.getDepth());
    RC_ASSERT(back.getReferenceType() == plugin.getReferenceType());
    RC_ASSERT(back.getAffectedNos() == plugin.getAffectedNos());
    RC_ASSERT(back.getLoadCases() == plugin.getLoadCases());
}

namespace {

template <class T>
T valueOf(const KeyValueStorage& storage, const std::string& key) {
    const auto value = storage.getValue<T>(key);
    EXPECT_TRUE(value) << key;
    return value ? *value : T();
}

} // namespace

TEST(FreeLoadBaseValues, AreThoseOfEveryLoadThenReferenceNumbersProjectionAndDepth) {
    FreeLoad load;
    load.setDistribution(orv::elem::kLineLoad);
    load.setVertices(verticesOf(2));
    load.setLoadCases({4});
    fill(load);
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_EQ(valueOf<int>(storage, "load/line/free/kind"), 1);
    EXPECT_EQ(valueOf<int>(storage, "load/line/free/loadcase"), 4);
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/values/1"), 2.0);
    EXPECT_EQ(valueOf<int>(storage, "load/line/free/reference_type"), 104) << "with no offset of a line";
    EXPECT_EQ(valueOf<int>(storage, "load/line/free/referenced_numbers/size"), 2);
    EXPECT_EQ(valueOf<int>(storage, "load/line/free/referenced_numbers/0"), 3);
    EXPECT_EQ(valueOf<int>(storage, "load/line/free/referenced_numbers/1"), -1);
    EXPECT_TRUE(storage.get("load/line/free/referenced_numbers/2").empty());
    EXPECT_EQ(valueOf<int>(storage, "load/line/free/projection_direction"), 2);
    EXPECT_EQ(valueOf<double>(storage, "load/line/free/depth"), -2.5);
}

TEST(FreeLoadBaseValues, WithoutNumbersHaveNoKeysForThemButTheOtherThree) {
    FreeLoad load;
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_TRUE(storage.get("load/point/free/referenced_numbers/size").empty());
    EXPECT_TRUE(storage.get("load/point/free/referenced_numbers/0").empty());
    EXPECT_EQ(valueOf<int>(storage, "load/point/free/reference_type"), 108);
    EXPECT_EQ(valueOf<int>(storage, "load/point/free/projection_direction"), 0);
    EXPECT_EQ(valueOf<double>(storage, "load/point/free/depth"), 0.0);
}

TEST(FreeLoadBaseValues, OfALoadThatHasAnElementStandUnderTwoNames) {
    const AnId element;
    FreeLoad load;
    load.setElement(element.id);
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_EQ(valueOf<int>(storage, "load/point/element_based/kind"), 1);
    EXPECT_EQ(valueOf<int>(storage, "load/point/free/reference_type"), 108);
    EXPECT_TRUE(storage.get("load/point/free/kind").empty());
}

TEST(FreeLoadBaseValues, SavingReachesWhatTheDerivedLoadSaves) {
    struct OwnValues : FreeLoad {
        using FreeLoad::onSave;
        bool onSave(KeyValueStorage& storage) const override {
            storage.set("own", 5);
            return false;
        }
    };
    const OwnValues load;
    KeyValueStorage storage;
    EXPECT_FALSE(static_cast<const FreeLoadBase&>(load).save(storage));
    EXPECT_EQ(valueOf<int>(storage, "own"), 5);
    EXPECT_TRUE(storage.get("iplugin/version").empty()) << "without the frame of a plugin";
}

TEST(FreeLoadBaseValues, SavingByTheElementHasTheFrameOfAPlugin) {
    TestElement element;
    element.addPlugin(new FreeLoad);
    KeyValueStorage storage;
    EXPECT_TRUE(element.save(storage));
    EXPECT_EQ(valueOf<int>(storage, "iplugin/version"), 1);
    EXPECT_EQ(valueOf<int>(storage, "load/point/free/reference_type"), 108);
}
