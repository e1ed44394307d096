#include "app/taldork_dbx_application.h"

#include "app/class_table.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"
#include "embedded/classes.h"
#include "rxclass.h"
#include "support/linker_recorder.h"

#include <gtest/gtest.h>

#include <string>

using testing_support::Calls;
using testing_support::LinkerRecorder;

namespace {

void expectClass(AcRxClass* found, const wchar_t* name, const wchar_t* dxfName) {
    ASSERT_NE(found, nullptr);
    EXPECT_STREQ(found->name(), name);
    EXPECT_STREQ(found->dxfName(), dxfName);
    EXPECT_STREQ(found->appName(), L"ORV_OE_LOADER_191");
    ASSERT_NE(found->myParent(), nullptr);
    EXPECT_STREQ(found->myParent()->name(), L"AcDbObject");
    int dwgVersion = 0;
    int maintenance = 0;
    found->getClassVersion(dwgVersion, maintenance);
    EXPECT_EQ(dwgVersion, 21);
    EXPECT_EQ(maintenance, 126);
    EXPECT_EQ(found->proxyFlags(), 0u);
}

} // namespace

TEST(TaldorkApplication, KnowsItsModule) {
    EXPECT_EQ(Taldork_DBX_Application::instance().moduleName(), L"taldork191_x64.dbx");
}

TEST(TaldorkApplication, RegistersItsClassesInOrderUnderOneDxfName) {
    ASSERT_GE(orv::kRegisteredClassCount, 2);
    EXPECT_STREQ(orv::kRegisteredClasses[0].row->className, L"ORV_CObjCdbRecord");
    EXPECT_STREQ(orv::kRegisteredClasses[1].row->className, L"ORV_CdbRecord");
    EXPECT_EQ(Taldork_DBX_Application::instance().registerClasses(nullptr), AcRx::kRetOK);
    expectClass(ORV_CObjCdbRecord::desc(), L"ORV_CObjCdbRecord", L"ORV_CDBRECORD");
    expectClass(orv::ORV_CdbRecord::desc(), L"ORV_CdbRecord", L"ORV_CDBRECORD");
}

TEST(TaldorkApplication, BuildsTheHierarchyOnceAfterTheLastClass) {
    const unsigned before = embedded::rx::hierarchyBuilds();
    Taldork_DBX_Application::instance().registerClasses(nullptr);
    EXPECT_EQ(embedded::rx::hierarchyBuilds(), before + 1);
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
