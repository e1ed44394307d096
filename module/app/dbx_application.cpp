#include "app/dbx_application.h"

#include "app/extension_record.h"
#include "app/linker.h"
#include "appinfo.h"
#include "base/file_path.h"
#include "base/product_name.h"
#include "platform/shared_library.h"
#include "rxdlinkr.h"
#include "rxregsvc.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <exception>

namespace orv {

namespace {

// A small module that may stand beside this one and loads it.
constexpr const wchar_t* kLoaderModule = L"orv_oe_loader191_x64.dbx";

constexpr int kLoadReasons = AcadApp::kOnProxyDetection | AcadApp::kOnLoadRequest;

bool hasModuleSuffix(const std::wstring& path) {
    const std::wstring lower = boost::algorithm::to_lower_copy(path, std::locale());
    return toFilePath(lower).extension() == toFilePath(L".dbx");
}

// The file that the host is to load: the loader if it stands beside the module, else the module.
std::wstring fileToLoad(const std::wstring& modulePath) {
    try {
        const boost::filesystem::path loader =
            toFilePath(modulePath).parent_path() / toFilePath(kLoaderModule);
        const boost::filesystem::file_type type = boost::filesystem::status(loader).type();
        if (type == boost::filesystem::status_error || type == boost::filesystem::file_not_found)
            return modulePath;
        std::wstring file = toWide(loader);
        std::replace(file.begin(), file.end(), L'/', L'\\');
        return file;
    } catch (std::exception&) {
        return modulePath;
    }
}

} // namespace

DBX_Application::DBX_Application(const std::wstring& name) : m_moduleName(name), m_moduleHandle(nullptr) {
    m_bUnlock = true;
    m_bMDIAware = true;
    if (name.empty())
        return;
    m_moduleHandle = static_cast<HMODULE>(platform::moduleHandle(name.c_str()));
    wchar_t path[platform::kMaxModulePath] = {};
    platform::moduleFileName(m_moduleHandle, path, platform::kMaxModulePath);
    m_modulePath = path;
    if (!hasModuleSuffix(m_modulePath))
        m_modulePath.clear();
}

DBX_Application::~DBX_Application() = default;

AcRx::AppRetCode DBX_Application::On_kInitAppMsg(void* packet) {
    if (AcRxDynamicLinker* const present = linker()) {
        present->unlockApplication(packet);
        present->registerAppMDIAware(packet);
    }
    acrxRegisterAppMDIAware(packet);

    ExtensionRecord& extension = ExtensionRecord::instance();
    if (m_moduleHandle != nullptr && !extension.isAttached())
        extension.attach(m_moduleHandle);

    AcRx::AppRetCode code = onBeforeInit(packet);
    if (code == AcRx::kRetOK)
        code = AcRxDbxApp::On_kInitAppMsg(packet);
    if (code == AcRx::kRetOK)
        code = registerClasses(packet);
    if (code != AcRx::kRetOK)
        return code;
    writeLoaderEntry();
    return AcRx::kRetOK;
}

AcRx::AppRetCode DBX_Application::On_kUnloadAppMsg(void* packet) {
    for (auto name = m_dependencies.rbegin(); name != m_dependencies.rend(); ++name)
        unloadModule(name->c_str());
    ExtensionRecord& extension = ExtensionRecord::instance();
    if (m_moduleHandle != nullptr && extension.isAttached())
        extension.detach();
    return AcRxDbxApp::On_kUnloadAppMsg(packet);
}

void DBX_Application::RegisterServerComponents() {}

void DBX_Application::loadDependency(const wchar_t* name) {
    AcRxDynamicLinker* const present = linker();
    if (name != nullptr && present != nullptr && present->loadModule(name, false, false))
        m_dependencies.emplace_back(name);
}

AcRx::AppRetCode DBX_Application::onBeforeInit(void*) { return AcRx::kRetOK; }

AcRx::AppRetCode DBX_Application::registerClasses(void*) { return AcRx::kRetOK; }

void DBX_Application::onRegistered() {}

void DBX_Application::writeLoaderEntry() {
    AcadAppInfo entry;
    entry.setAppName(kLoaderApplication);
    if (!m_moduleName.empty()) {
        if (!m_modulePath.empty())
            entry.setModuleName(fileToLoad(m_modulePath).c_str());
        entry.setLoadReason(static_cast<AcadApp::LoadReasons>(kLoadReasons));
    }
    entry.writeToRegistry(true, false);
    onRegistered();
}

} // namespace orv
