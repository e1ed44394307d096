#pragma once

#include "AcString.h"

namespace AcadApp {

enum ErrorStatus { eOk = 0, eNoName = 1, eRegistryOpen = 2, eRegistryRead = 3, eRegistryWrite = 4 };

// On what occasions the host loads an application; bits.
enum LoadReasons {
    kNoReason = 0x00,
    kOnProxyDetection = 0x01,
    kOnAutoCADStartup = 0x02,
    kOnCommandInvocation = 0x04,
    kOnLoadRequest = 0x08,
    kLoadDisabled = 0x10,
    kTransparentlyLoadable = 0x20,
    kOnIdleLoad = 0x40
};

} // namespace AcadApp

// The entry of an application in the user's registry, from which the host loads it when it is needed.
class AcadAppInfo {
public:
    AcadAppInfo() = default;

    const ACHAR* appName() const { return m_appName.kACharPtr(); }
    const ACHAR* moduleName() const { return m_moduleName.kACharPtr(); }
    const ACHAR* appDesc() const { return m_description.kACharPtr(); }
    AcadApp::LoadReasons loadReason() const { return m_loadReason; }

    void setAppName(const ACHAR* name) { m_appName = name; }
    void setModuleName(const ACHAR* fileName) { m_moduleName = fileName; }
    void setAppDesc(const ACHAR* description) { m_description = description; }
    void setLoadReason(AcadApp::LoadReasons reason) { m_loadReason = reason; }

    // Makes the entry what this object says: a value that was not set is not in the entry afterwards. Nothing
    // is written unless `overwrite` is true or there is no entry yet. The user's registry is the only one
    // there is, so `allUsers` writes there too. eOk; eNoName; eRegistryOpen, eRegistryWrite.
    AcadApp::ErrorStatus writeToRegistry(bool overwrite = true, bool allUsers = false);
    // Takes over the entry under the application name. eOk; eNoName; eRegistryOpen if there is none;
    // eRegistryRead.
    AcadApp::ErrorStatus readFromRegistry(bool allUsers = false);
    // Deletes the entry. eOk; eNoName; eRegistryOpen if there is none; eRegistryWrite.
    AcadApp::ErrorStatus delFromRegistry(bool allUsers = false);

private:
    AcString m_appName;
    AcString m_moduleName;
    AcString m_description;
    AcadApp::LoadReasons m_loadReason = AcadApp::kNoReason;
};
