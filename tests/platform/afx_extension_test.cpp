#include "platform/afx_extension.h"

#include <gtest/gtest.h>

namespace {

int g_handle = 0;

TEST(AfxExtension, InitFillsTheRecordOnce) {
    AFX_EXTENSION_MODULE record;
    EXPECT_FALSE(record.bInitialized);
    EXPECT_TRUE(AfxInitExtensionModule(record, &g_handle));
    EXPECT_TRUE(record.bInitialized);
    EXPECT_EQ(record.hModule, &g_handle);
    int other = 0;
    EXPECT_TRUE(AfxInitExtensionModule(record, &other));
    EXPECT_EQ(record.hModule, &g_handle);
}

TEST(AfxExtension, NullHandleFails) {
    AFX_EXTENSION_MODULE record;
    EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
    EXPECT_FALSE(record.bInitialized);
}

TEST(AfxExtension, CanBeMadeToFail) {
    AFX_EXTENSION_MODULE record;
    platform::refuseExtensionModules(true);
    EXPECT_FALSE(AfxInitExtensionModule(record, &g_handle));
    platform::refuseExtensionModules(false);
    EXPECT_TRUE(AfxInitExtensionModule(record, &g_handle));
}

TEST(AfxExtension, TermEndsTheLibrariesOfItsRecord) {
    AFX_EXTENSION_MODULE first;
    AFX_EXTENSION_MODULE second;
    AfxInitExtensionModule(first, &g_handle);
    AfxInitExtensionModule(second, &g_handle);
    new CDynLinkLibrary(first);
    new CDynLinkLibrary(second);
    EXPECT_EQ(platform::extensionLibraries(), 2);
    AfxTermExtensionModule(first, FALSE);
    EXPECT_EQ(platform::extensionLibraries(), 1);
    EXPECT_FALSE(first.bInitialized);
    EXPECT_TRUE(second.bInitialized);
    AfxTermExtensionModule(first, TRUE);
    EXPECT_EQ(platform::extensionLibraries(), 0);
}

TEST(AfxExtension, ResourceHandleIsTheStates) {
    EXPECT_EQ(AfxGetModuleState()->m_hCurrentResourceHandle, AfxGetResourceHandle());
    AfxSetResourceHandle(&g_handle);
    EXPECT_EQ(AfxGetModuleState()->m_hCurrentResourceHandle, &g_handle);
    AfxSetResourceHandle(nullptr);
}

} // namespace
