#include "app/taldork_dbx_application.h"

#include "app/class_table.h"
#include "dbx/NamedSelection.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"
#include "dbx/elem/legacy_load.h"
#include "embedded/classes.h"
#include "rxclass.h"
#include "rxdict.h"
#include "support/linker_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing_support::Calls;
using testing_support::LinkerRecorder;

namespace {

struct Release {
    int dwgVersion, maintenance;
};

void expectClass(AcRxClass* found, const wchar_t* name, const wchar_t* dxfName,
                 const wchar_t* parent = L"AcDbObject", Release release = {21, 126}) {
    ASSERT_NE(found, nullptr);
    EXPECT_STREQ(found->name(), name);
    EXPECT_STREQ(found->dxfName(), dxfName);
    EXPECT_STREQ(found->appName(), L"ORV_OE_LOADER_191");
    ASSERT_NE(found->myParent(), nullptr);
    EXPECT_STREQ(found->myParent()->name(), parent);
    int dwgVersion = 0;
    int maintenance = 0;
    found->getClassVersion(dwgVersion, maintenance);
    EXPECT_EQ(dwgVersion, release.dwgVersion);
    EXPECT_EQ(maintenance, release.maintenance);
    EXPECT_EQ(found->proxyFlags(), 0u);
}

// Stands in the place of the class dictionary while it lives, and writes down the names that are looked up
// and how often the hierarchy had been built by then. Everything else goes to the true dictionary.
class LookupRecorder : public AcRxDictionary {
public:
    LookupRecorder() : m_true(acrxClassDictionary) { stand(this); }
    ~LookupRecorder() override { stand(m_true); }

    const std::vector<std::wstring>& names() const { return m_names; }
    const std::vector<unsigned>& hierarchyBuilds() const { return m_builds; }

    AcRxObject* at(const ACHAR* key) const override {
        m_names.push_back(key);
        m_builds.push_back(embedded::rx::hierarchyBuilds());
        return m_true->at(key);
    }
    AcRxObject* at(Adesk::UInt32 id) const override { return m_true->at(id); }
    AcRxObject* atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id) override {
        return m_true->atPut(key, object, id);
    }
    AcRxObject* atPut(Adesk::UInt32 id, AcRxObject* object) override { return m_true->atPut(id, object); }
    bool resetKey(const ACHAR* from, const ACHAR* to) override { return m_true->resetKey(from, to); }
    bool resetKey(Adesk::UInt32 id, const ACHAR* to) override { return m_true->resetKey(id, to); }
    AcRxObject* remove(const ACHAR* key) override { return m_true->remove(key); }
    AcRxObject* remove(Adesk::UInt32 id) override { return m_true->remove(id); }
    bool has(const ACHAR* key) const override { return m_true->has(key); }
    bool has(Adesk::UInt32 id) const override { return m_true->has(id); }
    Adesk::UInt32 idAt(const ACHAR* key) const override { return m_true->idAt(key); }
    const ACHAR* keyAt(Adesk::UInt32 id) const override { return m_true->keyAt(id); }
    Adesk::UInt32 numEntries() const override { return m_true->numEntries(); }
    AcRxDictionaryIterator* newIterator(AcRx::DictIterType type) override {
        return m_true->newIterator(type);
    }
    bool deletesObjects() const override { return m_true->deletesObjects(); }
    bool isCaseSensitive() const override { return m_true->isCaseSensitive(); }

private:
    static void stand(AcRxDictionary* dictionary) {
        Adesk::UInt32 id = 0;
        acrxSysRegistry()->atPut(ACRX_CLASS_DICTIONARY, dictionary, id);
    }

    AcRxDictionary* m_true;
    mutable std::vector<std::wstring> m_names;
    mutable std::vector<unsigned> m_builds;
};

} // namespace

TEST(TaldorkApplication, KnowsItsModule) {
    EXPECT_EQ(Taldork_DBX_Application::instance().moduleName(), L"taldork191_x64.dbx");
}

TEST(TaldorkApplication, RegistersItsClassesInOrderUnderOneDxfName) {
    ASSERT_EQ(orv::kRegisteredClassCount, 5);
    EXPECT_STREQ(orv::kRegisteredClasses[0].row->className, L"ORV_CObjCdbRecord");
    EXPECT_STREQ(orv::kRegisteredClasses[1].row->className, L"ORV_CdbRecord");
    EXPECT_EQ(Taldork_DBX_Application::instance().registerClasses(nullptr), AcRx::kRetOK);
    expectClass(ORV_CObjCdbRecord::desc(), L"ORV_CObjCdbRecord", L"ORV_CDBRECORD");
    expectClass(orv::ORV_CdbRecord::desc(), L"ORV_CdbRecord", L"ORV_CDBRECORD");
}

TEST(TaldorkApplication, RegistersLoadsAndNamedSelectionsBetweenTheRecordsAndTheOlderSystem) {
    Taldork_DBX_Application::instance().registerClasses(nullptr);
    expectClass(orv::elem::legacy::ORV_Load::desc(), L"ORV_Load", L"ORV_LOAD", L"AcDbEntity", {31, 7});
    expectClass(orv::ORV_NamedSelection::desc(), L"ORV_NamedSelection", L"ORV_NAMED_SELECTION");
    EXPECT_STREQ(orv::kRegisteredClasses[2].row->className, L"ORV_Load");
    EXPECT_STREQ(orv::kRegisteredClasses[3].row->className, L"ORV_NamedSelection");
    EXPECT_STREQ(orv::kRegisteredClasses[4].row->className, L"ORV_CCSysPar");
}

TEST(TaldorkApplication, BuildsTheHierarchyOnceAfterTheLastClass) {
    const unsigned before = embedded::rx::hierarchyBuilds();
    Taldork_DBX_Application::instance().registerClasses(nullptr);
    EXPECT_EQ(embedded::rx::hierarchyBuilds(), before + 1);
}

TEST(TaldorkApplication, EntersTheClassesInTheirOrderBeforeTheHierarchyIsBuilt) {
    // Classes that are already known are not entered again, so they are taken out first.
    for (int i = 0; i < orv::kRegisteredClassCount; ++i)
        deleteAcRxClass(
            static_cast<AcRxClass*>(acrxClassDictionary->at(orv::kRegisteredClasses[i].row->className)));
    ASSERT_FALSE(acrxClassDictionary->has(L"ORV_CObjCdbRecord"));
    ASSERT_FALSE(acrxClassDictionary->has(L"ORV_CdbRecord"));
    ASSERT_FALSE(acrxClassDictionary->has(L"ORV_Load"));
    ASSERT_FALSE(acrxClassDictionary->has(L"ORV_NamedSelection"));
    ASSERT_FALSE(acrxClassDictionary->has(L"ORV_CCSysPar"));

    const unsigned before = embedded::rx::hierarchyBuilds();
    {
        LookupRecorder lookups;
        EXPECT_EQ(Taldork_DBX_Application::instance().registerClasses(nullptr), AcRx::kRetOK);
        // Each class looks for its own name when it is entered.
        EXPECT_EQ(lookups.names(),
                  (std::vector<std::wstring>{L"ORV_CObjCdbRecord", L"ORV_CdbRecord", L"ORV_Load",
                                             L"ORV_NamedSelection", L"ORV_CCSysPar"}));
        EXPECT_EQ(lookups.hierarchyBuilds(), std::vector<unsigned>(5, before));
    }
    EXPECT_EQ(embedded::rx::hierarchyBuilds(), before + 1);
    EXPECT_LT(acrxClassDictionary->idAt(L"ORV_CObjCdbRecord"), acrxClassDictionary->idAt(L"ORV_CdbRecord"));
    EXPECT_LT(acrxClassDictionary->idAt(L"ORV_CdbRecord"), acrxClassDictionary->idAt(L"ORV_Load"));
    EXPECT_LT(acrxClassDictionary->idAt(L"ORV_Load"), acrxClassDictionary->idAt(L"ORV_NamedSelection"));
    EXPECT_LT(acrxClassDictionary->idAt(L"ORV_NamedSelection"), acrxClassDictionary->idAt(L"ORV_CCSysPar"));
}

TEST(TaldorkApplication, ClassesThatAreKnownAreNotEnteredAgain) {
    const Adesk::UInt32 first = acrxClassDictionary->idAt(L"ORV_CObjCdbRecord");
    const unsigned generation = embedded::rx::classGeneration();
    AcRxClass* const descriptor = ORV_CObjCdbRecord::desc();
    ORV_CObjCdbRecord::rxInit();
    EXPECT_EQ(ORV_CObjCdbRecord::desc(), descriptor);
    EXPECT_EQ(acrxClassDictionary->idAt(L"ORV_CObjCdbRecord"), first);
    EXPECT_EQ(embedded::rx::classGeneration(), generation);
}

TEST(TaldorkApplication, AnUnloadWithNoSiblingLoadedAsksForAllInTheFixedOrder) {
    LinkerRecorder linker;
    EXPECT_EQ(Taldork_DBX_Application::instance().On_kUnloadAppMsg(nullptr), AcRx::kRetOK);
    EXPECT_EQ(linker.calls(),
              (Calls{"unload taldork.arx", "unload orv_velmar.arx", "unload orv_velmar191_x64.dbx",
                     "unload orv_tondrik.arx", "unload orv_tondrik191_x64.dbx", "unload drennoc.arx",
                     "unload drennoc191_x64.dbx", "unload hasmuir191_x64.dbx", "unload quillet.arx",
                     "unload quillet191_x64.dbx", "unload kelmoran.arx", "unload kelmoran191_x64.dbx",
                     "unload taldork.arx", "unload taldork191_x64.dbx", "unload orv_brisel191_x64.dbx"}));
}
