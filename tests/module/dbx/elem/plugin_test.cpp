#include "dbx/elem/plugin.h"

#include "base/exceptions.h"
#include "base/key_value_storage.h"
#include "dbgrip.h"
#include "dbx/binary_in_archive.h"
#include "dbx/binary_out_archive.h"
#include "host/gi/sketch.h"
#include "module/dbx/elem/noted_element.h"
#include "orvcore/warn_on_new_version.h"
#include "orvshape/endpoint_interface.h"
#include "support/archive_bytes.h"
#include "support/console_recorder.h"
#include "support/report_recorder.h"
#include "support/slots.h"
#include "support/system_store.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

using namespace testing_support;
using orv::elem::ElementBase;
using orv::serialization::BinaryInArchive;
using orv::serialization::BinaryOutArchive;

namespace {

// A plugin with nothing but an id: all hooks are the default ones, laid open.
class BarePlugin : public ElementBase::IPlugin {
public:
    const std::string& pluginId() const override { return m_id; }

    using IPlugin::assertReadEnabled;
    using IPlugin::assertWriteEnabled;
    using IPlugin::canElementBeCloned;
    using IPlugin::canElementBeTransformed;
    using IPlugin::onAppendElementInfo;
    using IPlugin::onAttached;
    using IPlugin::onDetached;
    using IPlugin::onErase;
    using IPlugin::onGetGrips;
    using IPlugin::onLoad;
    using IPlugin::onMoved;
    using IPlugin::onPostClone;
    using IPlugin::onPostTransform;
    using IPlugin::onPreMoveGrips;
    using IPlugin::onPreTransform;
    using IPlugin::onPreViewportDraw;
    using IPlugin::onPreWorldDraw;
    using IPlugin::onSave;
    using IPlugin::onViewportDraw;
    using IPlugin::onWorldDraw;

private:
    std::string m_id = "tests.bare";
};

// Saves and loads one number.
class NumberPlugin : public BarePlugin {
public:
    unsigned int number = 0;
    unsigned int elementVersion = 0;
    bool succeeds = true;

    bool onSave(orv::serialization::IOutArchive& archive) const override {
        archive << number;
        return succeeds;
    }
    bool onSave(orv::KeyValueStorage& storage) const override {
        storage.set("number", static_cast<int>(number));
        return succeeds;
    }
    bool onLoad(orv::serialization::IInArchive& archive, unsigned int version) override {
        elementVersion = version;
        archive >> number;
        return succeeds;
    }
    bool onLoad(const orv::KeyValueStorage& storage) override {
        number = static_cast<unsigned int>(storage.getValue<int>("number", 0));
        return succeeds;
    }
};

class Plugin : public testing::Test {
protected:
    Plugin() { orv_forgetNewVersionWarnings(); }

    // Loads from bytes in an element of version 6.
    static bool load(ElementBase::IPlugin& plugin, const std::string& hex, unsigned int elementVersion = 6) {
        const std::vector<unsigned char> bytes = fromHex(hex);
        BinaryInArchive archive(bytes.data(), bytes.size());
        return plugin.load(archive, elementVersion);
    }

    struct PlainObject : AcDbObject {};
    Notes notes;
    PlainObject host;
    NotedElement element{host, notes};
};

} // namespace

TEST_F(Plugin, HasNoOwnerAndNoValuesAtFirst) {
    BarePlugin plugin;
    EXPECT_EQ(plugin.owner(), nullptr);
    EXPECT_TRUE(plugin.getProperties().empty());
    EXPECT_TRUE(plugin.properties(AcDb::kForRead).empty());
    EXPECT_EQ(ElementBase::IPlugin::kVersion, 1u);
    EXPECT_EQ(ElementBase::IPlugin::kMagic, 0xafdb7de5u);
    EXPECT_FALSE(std::is_copy_constructible<BarePlugin>::value);
    EXPECT_FALSE(std::is_copy_assignable<BarePlugin>::value);
}

TEST_F(Plugin, AFreshOneIsDetachedFromNothingBeforeItIsAttached) {
    NotedPlugin plugin(notes, "p");
    plugin.setOwner(&element);
    EXPECT_EQ(notes, (Notes{"p.onDetached null", "p.onAttached"}));
    EXPECT_EQ(plugin.ownerAtDetached, nullptr);
    EXPECT_EQ(plugin.ownerAtAttached, &element);
}

TEST_F(Plugin, AtDetachingTheOwnerIsStillTheOldOne) {
    NotedElement second(host, notes);
    NotedPlugin plugin(notes, "p");
    plugin.setOwner(&element);
    plugin.setOwner(&second);
    EXPECT_EQ(plugin.lastPreviousOwner, &element);
    EXPECT_EQ(plugin.ownerAtDetached, &element);
    EXPECT_EQ(plugin.ownerAtAttached, &second);
    plugin.setOwner(nullptr);
    EXPECT_EQ(plugin.lastPreviousOwner, &second);
    EXPECT_EQ(plugin.ownerAtAttached, nullptr);
}

TEST_F(Plugin, TheSameOwnerIsSetLikeAnyOther) {
    NotedPlugin plugin(notes, "p");
    plugin.setOwner(&element);
    notes.clear();
    plugin.setOwner(&element);
    EXPECT_EQ(notes, (Notes{"p.onDetached", "p.onAttached"}));
}

TEST_F(Plugin, ChecksAreThoseOfTheOwner) {
    BarePlugin plugin;
    plugin.assertReadEnabled();
    plugin.assertWriteEnabled();
    EXPECT_TRUE(notes.empty());
    plugin.setOwner(&element);
    plugin.assertReadEnabled();
    plugin.assertWriteEnabled();
    EXPECT_EQ(notes, (Notes{"read", "write"}));
}

TEST_F(Plugin, ValuesAreReadAndWrittenUnderTheOwnersChecks) {
    BarePlugin plugin;
    plugin.setProperties().add(1, 5);
    plugin.setOwner(&element);
    EXPECT_EQ(plugin.getProperties().getValueNotThrow<int>(1).value_or(0), 5);
    EXPECT_EQ(taken(notes), Notes{"read"});
    plugin.setProperties().clear();
    EXPECT_EQ(taken(notes), Notes{"write"});
    plugin.properties(AcDb::kForWrite);
    EXPECT_EQ(taken(notes), Notes{"write"});
    plugin.properties(AcDb::kForRead);
    EXPECT_EQ(taken(notes), Notes{"read"});
    plugin.properties(AcDb::kForNotify);
    EXPECT_EQ(taken(notes), Notes{"read"});
    const BarePlugin& constant = plugin;
    EXPECT_EQ(&constant.properties(), &plugin.properties(AcDb::kForRead));
}

TEST_F(Plugin, ByDefaultHooksDoNothingAndAgree) {
    BarePlugin plugin;
    AcGeVector3d offset(1, 2, 3);
    AcGeMatrix3d xform;
    orv::ElementInfoContext info;
    plugin.onDetached(nullptr);
    plugin.onAttached();
    plugin.onPreMoveGrips(offset);
    plugin.onPreTransform(xform);
    plugin.onPostTransform(xform);
    plugin.onErase(true);
    plugin.onPostClone();
    plugin.onAppendElementInfo(info);
    plugin.onMoved();
    orv::geom::EndpointList endpoints;
    plugin.onQueryEndpointInterface(endpoints);
    EXPECT_EQ(offset, AcGeVector3d(1, 2, 3));
    EXPECT_EQ(xform, AcGeMatrix3d());
    EXPECT_TRUE(info.sections().empty());
    EXPECT_TRUE(endpoints.endpoints().empty());
    EXPECT_TRUE(plugin.canElementBeCloned(orv::ElementCloneContext()));
    EXPECT_TRUE(plugin.canElementBeTransformed());
    BinaryOutArchive out;
    BinaryInArchive in(nullptr, 0);
    orv::KeyValueStorage storage;
    EXPECT_TRUE(plugin.onSave(out));
    EXPECT_EQ(out.offset(), 0u);
    EXPECT_TRUE(plugin.onSave(storage));
    EXPECT_TRUE(plugin.onLoad(in, 6));
    EXPECT_TRUE(plugin.onLoad(storage));
}

TEST_F(Plugin, ByDefaultThereAreNoGrips) {
    BarePlugin plugin;
    Sketch entity;
    AcDbGripDataPtrArray grips;
    {
        orv::GripManager::ScopedCreator creator(entity, grips);
        plugin.onGetGrips(creator);
    }
    EXPECT_EQ(grips.length(), 0);
}

TEST_F(Plugin, ByDefaultDrawingHooksDrawNothingAndLeaveTheTraits) {
    BarePlugin plugin;
    Sketch entity;
    FilledSystem system;
    const orv::typeCDB_SYST before = system.written();
    int calls = 0;
    entity.world = [&](AcGiWorldDraw& wd) {
        wd.subEntityTraits().setColor(10);
        orv::AcadWorldDraw draw(wd);
        plugin.onPreWorldDraw(entity, wd);
        plugin.onWorldDraw(draw, system);
        EXPECT_EQ(wd.subEntityTraits().color(), 10);
        ++calls;
        return false;
    };
    entity.viewport = [&](AcGiViewportDraw& vd) {
        vd.subEntityTraits().setColor(11);
        orv::AcadViewportDraw draw(vd);
        plugin.onPreViewportDraw(entity, vd);
        plugin.onViewportDraw(draw, system);
        EXPECT_EQ(vd.subEntityTraits().color(), 11);
        ++calls;
    };
    EXPECT_TRUE(embedded::draw(entity).primitives.empty());
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(SystemStore::bytesOf(system.written()), SystemStore::bytesOf(before));
}

TEST_F(Plugin, AnEmptyOneSavesExactlyEightBytes) {
    const BarePlugin plugin;
    BinaryOutArchive archive;
    EXPECT_TRUE(plugin.save(archive));
    EXPECT_EQ(hexOf(archive), "01 00 00 00 e5 7d db af");
    EXPECT_TRUE(archive.softPointers().empty());
    EXPECT_TRUE(archive.hardPointers().empty());
}

TEST_F(Plugin, DataStandsInsideItsFrame) {
    NumberPlugin plugin;
    plugin.number = 0x04030201;
    BinaryOutArchive archive;
    EXPECT_TRUE(plugin.save(archive));
    EXPECT_EQ(hexOf(archive), "01 00 00 00 01 02 03 04 e5 7d db af");
    NumberPlugin back;
    EXPECT_TRUE(load(back, "01 00 00 00 01 02 03 04 e5 7d db af", 4));
    EXPECT_EQ(back.number, 0x04030201u);
}

TEST_F(Plugin, LoadingHandsOverTheVersionOfTheElement) {
    NumberPlugin plugin;
    for (unsigned int version = 1; version <= 6; ++version) {
        EXPECT_TRUE(load(plugin, "01 00 00 00 05 00 00 00 e5 7d db af", version));
        EXPECT_EQ(plugin.elementVersion, version);
    }
}

TEST_F(Plugin, ASavingThatFailsLeavesTheFrameOpen) {
    NumberPlugin plugin;
    plugin.number = 5;
    plugin.succeeds = false;
    BinaryOutArchive archive;
    EXPECT_FALSE(plugin.save(archive));
    EXPECT_EQ(hexOf(archive), "01 00 00 00 05 00 00 00");
}

TEST_F(Plugin, AnOpenFrameEndsLoadingInAnException) {
    ReportRecorder recorder;
    NumberPlugin plugin;
    try {
        load(plugin, "01 00 00 00 05 00 00 00");
        FAIL();
    } catch (const orv::Exception& thrown) {
        EXPECT_STREQ(thrown.what(), "filer error");
    }
}

TEST_F(Plugin, AnOpenFrameThatHoldsMoreThanIsReadEndsInAMismatch) {
    ReportRecorder recorder;
    NumberPlugin plugin;
    EXPECT_FALSE(load(plugin, "01 00 00 00 05 00 00 00 06 00 00 00"));
    EXPECT_EQ(recorder.conditions(), Texts{"magic == kMagic"});
}

TEST_F(Plugin, AWrongEndIsReportedAndRefused) {
    ReportRecorder recorder;
    NumberPlugin plugin;
    EXPECT_FALSE(load(plugin, "01 00 00 00 05 00 00 00 e4 7d db af"));
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "magic == kMagic");
    EXPECT_EQ(recorder.at(0).message, "filing error");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "2950397412"}, {"kMagic", "2950397413"}}));
    EXPECT_EQ(plugin.number, 5u);
}

TEST_F(Plugin, ALoadingThatFailsReadsNoFurther) {
    ReportRecorder recorder;
    NumberPlugin plugin;
    plugin.succeeds = false;
    EXPECT_FALSE(load(plugin, "01 00 00 00 05 00 00 00"));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(Plugin, ANewerFrameIsReportedAndReadAllTheSame) {
    ReportRecorder recorder;
    std::vector<std::wstring> warned;
    const ORV_NewVersionSink before = orv_setNewVersionSink([&](const ORV_NewVersionWarning& warning) {
        warned.push_back(std::to_wstring(warning.version) + L" " + std::to_wstring(warning.current) + L" " +
                         std::wstring(warning.name));
    });
    NumberPlugin plugin;
    EXPECT_TRUE(load(plugin, "02 00 00 00 05 00 00 00 e5 7d db af"));
    orv_setNewVersionSink(before);
    EXPECT_EQ(plugin.number, 5u);
    EXPECT_EQ(warned, std::vector<std::wstring>{L"2 1 Taldork.ARX"});
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "version <= kVersion");
    EXPECT_EQ(recorder.at(0).message, "version mismatch");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "2"}, {"kVersion", "1"}}));
}

TEST_F(Plugin, ANewerFrameWithAWrongEndIsRefused) {
    ReportRecorder recorder;
    ConsoleRecorder console;
    NumberPlugin plugin;
    EXPECT_FALSE(load(plugin, "02 00 00 00 05 00 00 00 00 00 00 00"));
    EXPECT_EQ(recorder.conditions(), (Texts{"version <= kVersion", "magic == kMagic"}));
}

TEST_F(Plugin, AnOlderFrameIsReadWithoutAWord) {
    ReportRecorder recorder;
    NumberPlugin plugin;
    EXPECT_TRUE(load(plugin, "00 00 00 00 05 00 00 00 e5 7d db af"));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(Plugin, EveryPartOfAFrameEndsInAnException) {
    ReportRecorder recorder;
    const std::string whole = "01 00 00 00 05 00 00 00 e5 7d db af";
    for (std::size_t bytes = 0; bytes < 12; ++bytes) {
        NumberPlugin plugin;
        EXPECT_THROW(load(plugin, bytes == 0 ? "" : whole.substr(0, 3 * bytes - 1)), orv::Exception) << bytes;
    }
}

TEST_F(Plugin, ValuesUnderNamesBeginWithTheFramesVersion) {
    NumberPlugin plugin;
    plugin.number = 5;
    orv::KeyValueStorage storage;
    EXPECT_TRUE(plugin.save(storage));
    EXPECT_EQ(storage.getValue<int>("iplugin/version", 0), 1);
    EXPECT_EQ(storage.getValue<int>("number", 0), 5);
    NumberPlugin back;
    EXPECT_TRUE(back.load(storage));
    EXPECT_EQ(back.number, 5u);
}

TEST_F(Plugin, TheFramesVersionAmongValuesUnderNamesIsIgnored) {
    NumberPlugin plugin;
    orv::KeyValueStorage storage;
    storage.set("number", 5);
    EXPECT_TRUE(plugin.load(storage));
    storage.set("iplugin/version", 99);
    EXPECT_TRUE(plugin.load(storage));
    storage.set("iplugin/version", std::string("text"));
    EXPECT_TRUE(plugin.load(storage));
    EXPECT_EQ(plugin.number, 5u);
}

TEST_F(Plugin, TheVersionIsSetBeforeThePluginsOwnValues) {
    NotedPlugin plugin(notes, "p");
    orv::KeyValueStorage storage;
    int versionAtSaving = 0;
    plugin.on["onSave"] = [&] { versionAtSaving = storage.getValue<int>("iplugin/version", 0); };
    EXPECT_TRUE(plugin.save(storage));
    EXPECT_EQ(versionAtSaving, 1);
}

TEST_F(Plugin, WithValuesUnderNamesTheAnswerIsThePluginsOwn) {
    NumberPlugin plugin;
    plugin.succeeds = false;
    orv::KeyValueStorage storage;
    EXPECT_FALSE(plugin.save(storage));
    EXPECT_FALSE(plugin.load(storage));
}

#if !defined(_MSC_VER)
namespace {

// Remembers the number of the operation that was called.
class NumberedPlugin : public ElementBase::IPlugin {
public:
    mutable int called = 0;

    const std::string& pluginId() const override {
        called = 2;
        return m_id;
    }
    void onDetached(ElementBase*) override { called = 3; }
    void onAttached() override { called = 4; }
    void onPreMoveGrips(AcGeVector3d&) override { called = 5; }
    void onGetGrips(orv::GripManager::ScopedCreator&) const override { called = 6; }
    void onPreTransform(AcGeMatrix3d&) override { called = 7; }
    void onPostTransform(const AcGeMatrix3d&) override { called = 8; }
    void onPreWorldDraw(const AcDbEntity&, AcGiWorldDraw&) override { called = 9; }
    void onWorldDraw(orv::AcadWorldDraw&, orv::System&) override { called = 10; }
    void onPreViewportDraw(const AcDbEntity&, AcGiViewportDraw&) override { called = 11; }
    void onViewportDraw(orv::AcadViewportDraw&, orv::System&) override { called = 12; }
    void onErase(bool) override { called = 13; }
    void onPostClone() override { called = 14; }
    void onAppendElementInfo(orv::ElementInfoContext&) const override { called = 15; }
    bool canElementBeCloned(const orv::ElementCloneContext&) const override { return call(16); }
    bool canElementBeTransformed() const override { return call(17); }
    void onMoved() override { called = 18; }
    void onQueryEndpointInterface(orv::geom::EndpointInterface&) const override { called = 19; }
    bool onSave(orv::serialization::IOutArchive&) const override { return call(20); }
    bool onSave(orv::KeyValueStorage&) const override { return call(21); }
    bool onLoad(orv::serialization::IInArchive&, unsigned int) override { return call(22); }
    bool onLoad(const orv::KeyValueStorage&) override { return call(23); }
    // The first operation of a derived plugin.
    virtual void ownOperation() { called = 24; }

private:
    bool call(int number) const {
        called = number;
        return true;
    }

    std::string m_id;
};

} // namespace

// The destructor, which is the first, takes two slots, so that operation n stands at n.
TEST_F(Plugin, OperationsStandInTheirSlots) {
    NumberedPlugin plugin;
    using Operation = void (*)(void*, const void*, const void*);
    for (int slot = 2; slot <= 24; ++slot) {
        plugin.called = 0;
        slotOf<Operation>(&plugin, slot)(&plugin, &plugin, &plugin);
        EXPECT_EQ(plugin.called, slot);
    }
}
#endif
