#include "dbxEntryPoint.h"

#include "embedded/classes.h"
#include "platform/shared_library.h"
#include "rxclass.h"
#include "rxdict.h"

#include <gtest/gtest.h>

namespace {

class Plain : public AcRxDbxApp {
public:
    void RegisterServerComponents() override { ++registrations; }
    int registrations = 0;
};

class WithClasses : public Plain {
public:
    WithClasses() { setClassTable({kTable, kTable + 2}); }

private:
    static void initOne() { newAcRxClass(L"RxTableOne", L"AcRxObject"); }
    static void initTwo() { newAcRxClass(L"RxTableTwo", L"RxTableOne"); }
    static void remove(const wchar_t* name) {
        deleteAcRxClass(static_cast<AcRxClass*>(acrxClassDictionary->at(name)));
    }
    static void removeOne() { remove(L"RxTableOne"); }
    static void removeTwo() { remove(L"RxTableTwo"); }

    static constexpr ClassEntry kTable[] = {{&initOne, &removeOne}, {&initTwo, &removeTwo}};
};

class Application : public testing::Test {
protected:
    void SetUp() override { acrxSysRegistry(); }
};

TEST_F(Application, EveryMessageIsAnsweredWithSuccess) {
    Plain application;
    AcRxDbxApp& app = application;
    EXPECT_EQ(app.On_kInitAppMsg(nullptr), AcRx::kRetOK);
    for (const auto message :
         {&AcRxDbxApp::On_kLoadDwgMsg, &AcRxDbxApp::On_kUnloadDwgMsg, &AcRxDbxApp::On_kInvkSubrMsg,
          &AcRxDbxApp::On_kCfgMsg, &AcRxDbxApp::On_kEndMsg, &AcRxDbxApp::On_kQuitMsg,
          &AcRxDbxApp::On_kSaveMsg, &AcRxDbxApp::On_kDependencyMsg, &AcRxDbxApp::On_kNoDependencyMsg,
          &AcRxDbxApp::On_kOleUnloadAppMsg, &AcRxDbxApp::On_kPreQuitMsg, &AcRxDbxApp::On_kInitDialogMsg,
          &AcRxDbxApp::On_kEndDialogMsg, &AcRxDbxApp::On_kSuspendMsg, &AcRxDbxApp::On_kUnloadAppMsg})
        EXPECT_EQ((app.*message)(nullptr), AcRx::kRetOK);
    EXPECT_EQ(application.registrations, 1);
}

TEST_F(Application, WithoutAClassTableTheHierarchyIsNotBuilt) {
    Plain application;
    const unsigned before = embedded::rx::hierarchyBuilds();
    application.On_kInitAppMsg(nullptr);
    EXPECT_EQ(embedded::rx::hierarchyBuilds(), before);
}

TEST_F(Application, ClassTableIsRegisteredAndTakenOutAgain) {
    WithClasses application;
    const unsigned before = embedded::rx::hierarchyBuilds();
    application.On_kInitAppMsg(nullptr);
    EXPECT_EQ(embedded::rx::hierarchyBuilds(), before + 1);
    const auto* two = static_cast<AcRxClass*>(acrxClassDictionary->at(L"RxTableTwo"));
    ASSERT_NE(two, nullptr);
    EXPECT_STREQ(two->myParent()->name(), L"RxTableOne");
    application.On_kUnloadAppMsg(nullptr);
    EXPECT_FALSE(acrxClassDictionary->has(L"RxTableOne"));
    EXPECT_FALSE(acrxClassDictionary->has(L"RxTableTwo"));
}

} // namespace
