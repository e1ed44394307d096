// The load entity as the host sees it: its class, drawing, erasing, checks.

#include "app/class_table.h"
#include "dbextents.h"
#include "dbx/elem/load_pe.h"
#include "embedded/display_list.h"
#include "module/dbx/elem/legacy_loads.h"
#include "rxclass.h"
#include "rxdict.h"
#include "support/slots.h"

#include <memory>
#include <type_traits>

using namespace testing_support;
using orv::elem::legacy::LoadPE;

namespace {

class LegacyLoad : public LegacyLoadsInDrawing {
protected:
    ~LegacyLoad() override { ORV_Load::setProtExt(nullptr); }

    static void expectRegistered(AcRxClass* found) {
        ASSERT_NE(found, nullptr);
        EXPECT_STREQ(found->name(), L"ORV_Load");
        EXPECT_STREQ(found->dxfName(), L"ORV_LOAD");
        EXPECT_STREQ(found->appName(), L"ORV_OE_LOADER_191");
        ASSERT_NE(found->myParent(), nullptr);
        EXPECT_STREQ(found->myParent()->name(), L"AcDbEntity");
        int dwgVersion = 0, maintenance = 0;
        found->getClassVersion(dwgVersion, maintenance);
        EXPECT_EQ(dwgVersion, 31);
        EXPECT_EQ(maintenance, 7);
        EXPECT_EQ(found->proxyFlags(), 0u);
    }
};

void onSave(const AcRxClass*, wchar_t*&, int) {}

// Answers what it is set to, and remembers what it was asked.
class Extension : public LoadPE {
public:
    Acad::ErrorStatus audit(ORV_Load& load, AcDbAuditInfo* auditInfo) override {
        asked = &load;
        info = auditInfo;
        return answer;
    }
    Acad::ErrorStatus answer = Acad::eOk;
    ORV_Load* asked = nullptr;
    AcDbAuditInfo* info = nullptr;
};

} // namespace

static_assert(std::is_base_of_v<AcDbEntity, ORV_Load> && std::is_base_of_v<orv::elem::LoadBase, ORV_Load>);
static_assert(ORV_Load::kVersion == 3 && ORV_Load::kMagic == 0xAFFE6325);

TEST_F(LegacyLoad, IsRegisteredUnderItsRow) {
    expectRegistered(ORV_Load::desc());
    EXPECT_EQ(AcRxClass::cast(acrxClassDictionary->at(L"ORV_Load")), ORV_Load::desc());
}

TEST_F(LegacyLoad, IsRegisteredInEitherForm) {
    deleteAcRxClass(ORV_Load::gpDesc);
    ORV_Load::gpDesc = nullptr;
    EXPECT_EQ(ORV_Load::desc(), nullptr);
    ORV_Load::rxInit(&onSave);
    expectRegistered(ORV_Load::desc());
    AcRxClass* const known = ORV_Load::gpDesc;
    ORV_Load::rxInit();
    ORV_Load::rxInit(&onSave);
    EXPECT_EQ(ORV_Load::gpDesc, known);

    deleteAcRxClass(ORV_Load::gpDesc);
    ORV_Load::gpDesc = nullptr;
    ORV_Load::rxInit();
    acrxBuildClassHierarchy();
    expectRegistered(ORV_Load::desc());
}

TEST_F(LegacyLoad, IsMadeCastAndKnownByItsClass) {
    const std::unique_ptr<AcRxObject> made(ORV_Load::desc()->create());
    ORV_Load* const load = ORV_Load::cast(made.get());
    ASSERT_NE(load, nullptr);
    EXPECT_EQ(load->isA(), ORV_Load::desc());
    EXPECT_EQ(ORV_Load::cast(nullptr), nullptr);
    AcDbLine line;
    EXPECT_EQ(ORV_Load::cast(&line), nullptr);
}

TEST_F(LegacyLoad, StartsAsALoadWithoutPluginsAndElement) {
    ORV_Load load;
    EXPECT_TRUE(load.getElement().isNull());
    EXPECT_EQ(load.numVertices(), 0u);
    EXPECT_EQ(load.getLoadCases(), std::set<unsigned int>{1});
    EXPECT_TRUE(load.getConstPluginIterator().done());
    EXPECT_EQ(ORV_Load::getProtExt(), nullptr);
}

TEST_F(LegacyLoad, TheElementSeesTheEntity) {
    auto* const made = new ORV_Load;
    EXPECT_TRUE(made->acdb_id().isNull());
    const AcDbObjectId id = putEntity(db, made);
    look(id, [&id](ORV_Load& load) {
        EXPECT_EQ(load.acdb_id(), id);
        EXPECT_EQ(load.acdb_isA(), ORV_Load::desc());
        EXPECT_EQ(load.acdb_isNewObject(), 0);
        load.acdb_assertReadEnabled();
        load.getType();
    });
    change(id, [](ORV_Load& load) {
        EXPECT_EQ(load.isModified(), 0);
        load.acdb_assertWriteEnabled();
        EXPECT_NE(load.isModified(), 0);
    });
}

TEST_F(LegacyLoad, AChangeThroughItsDataIsAChangeOfTheEntity) {
    const AcDbObjectId id = loadWith();
    embedded::beginCommand(db);
    change(id, [](ORV_Load& load) { load.setType(12); });
    ASSERT_TRUE(embedded::undo(db));
    look(id, [](ORV_Load& load) { EXPECT_EQ(load.getType(), 10); });
}

TEST_F(LegacyLoad, DrawsNothingItself) {
    const AcDbObjectId id = loadWith<RecordingPlugin>();
    look(id, [](ORV_Load& load) {
        EXPECT_TRUE(embedded::draw(load).primitives.empty());
        // Nothing is looked at, and the host then asks for the viewport's picture too.
        EXPECT_EQ(load.worldDraw(nullptr), 0);
        load.viewportDraw(nullptr);
        AcDbExtents extents;
        EXPECT_EQ(load.getGeomExtents(extents), Acad::eInvalidExtents);
    });
    EXPECT_TRUE(embedded::draw(db).primitives.empty());
    EXPECT_TRUE(embedded::draw(db).failures.empty());
    for (const std::string& event : RecordingPlugin::events)
        EXPECT_EQ(event.find("Draw"), std::string::npos) << event;
}

TEST_F(LegacyLoad, HasNoClassId) {
    ORV_Load load;
    CLSID classId{};
    EXPECT_EQ(static_cast<int>(load.getClassID(&classId)), 1);
    EXPECT_EQ(static_cast<int>(load.getClassID(nullptr)), 1);
}

// Audit.

TEST_F(LegacyLoad, WithoutAnExtensionTheAuditFindsNothing) {
    ORV_Load load;
    EXPECT_EQ(load.audit(nullptr), Acad::eOk);
}

TEST_F(LegacyLoad, WithAnExtensionTheAuditIsItsOwn) {
    Extension extension;
    ORV_Load::setProtExt(&extension);
    EXPECT_EQ(ORV_Load::getProtExt(), &extension);
    ORV_Load load;
    int place = 0;
    auto* const info = reinterpret_cast<AcDbAuditInfo*>(&place);
    extension.answer = Acad::eVetoed;
    AcDbObject& object = load;
    EXPECT_EQ(object.audit(info), Acad::eVetoed);
    EXPECT_EQ(extension.asked, &load);
    EXPECT_EQ(extension.info, info);
    extension.answer = Acad::eOk;
    EXPECT_EQ(object.audit(nullptr), Acad::eOk);
    EXPECT_EQ(extension.info, nullptr);
    ORV_Load::setProtExt(nullptr);
    extension.answer = Acad::eVetoed;
    EXPECT_EQ(object.audit(info), Acad::eOk);
}

TEST_F(LegacyLoad, TheExtensionsAuditStandsInItsFirstSlot) {
    Extension extension;
    extension.answer = Acad::eVetoed;
    using Audit = Acad::ErrorStatus (*)(LoadPE*, ORV_Load&, AcDbAuditInfo*);
    ORV_Load load;
    EXPECT_EQ(slotOf<Audit>(static_cast<LoadPE*>(&extension), 0)(&extension, load, nullptr), Acad::eVetoed);
}

// Erasing.

TEST_F(LegacyLoad, ErasingTellsThePlugins) {
    const AcDbObjectId id = loadWith<RecordingPlugin>();
    RecordingPlugin::events.clear();
    change(id, [](ORV_Load& load) { EXPECT_EQ(load.erase(), Acad::eOk); });
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(RecordingPlugin::events, Texts{"onErase 1"});
    change(id, [](ORV_Load& load) { EXPECT_EQ(load.erase(false), Acad::eOk); });
    EXPECT_FALSE(id.isErased());
    EXPECT_EQ(RecordingPlugin::events, (Texts{"onErase 1", "onErase 0"}));
}

TEST_F(LegacyLoad, UndoAndRedoOfAnEraseTellThePluginsToo) {
    const AcDbObjectId id = loadWith<RecordingPlugin>();
    embedded::beginCommand(db);
    change(id, [](ORV_Load& load) { EXPECT_EQ(load.erase(), Acad::eOk); });
    const auto erasings = [] {
        Texts told;
        for (const std::string& event : RecordingPlugin::events)
            if (event.find("onErase") == 0)
                told.push_back(event);
        RecordingPlugin::events.clear();
        return told;
    };
    EXPECT_EQ(erasings(), Texts{"onErase 1"});
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_FALSE(id.isErased());
    EXPECT_EQ(erasings(), Texts{"onErase 0"});
    EXPECT_EQ(pointsOf(id).size(), 3u);
    ASSERT_TRUE(embedded::redo(db));
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(erasings(), Texts{"onErase 1"});
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_FALSE(id.isErased());
}
