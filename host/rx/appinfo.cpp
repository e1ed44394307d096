#include "appinfo.h"

#include "embedded/demand_load.h"
#include "platform/registry.h"

namespace {

constexpr const wchar_t* kModuleValue = L"LOADER";
constexpr const wchar_t* kReasonValue = L"LOADCTRLS";
constexpr const wchar_t* kDescriptionValue = L"DESCRIPTION";

std::wstring keyOf(const AcString& appName) {
    return std::wstring(embedded::rx::kApplicationsKey) + L"\\" + appName.kACharPtr();
}

// Makes the text value what is given, or takes it out for an empty one.
int putText(const std::wstring& key, const wchar_t* name, const AcString& text) {
    if (!text.isEmpty())
        return platform::registry::setText(key, name, text.kACharPtr());
    const int error = platform::registry::deleteValue(key, name);
    return error == platform::registry::kNotFound ? platform::registry::kDone : error;
}

int putReason(const std::wstring& key, AcadApp::LoadReasons reason) {
    if (reason != AcadApp::kNoReason)
        return platform::registry::setNumber(key, kReasonValue, static_cast<std::uint32_t>(reason));
    const int error = platform::registry::deleteValue(key, kReasonValue);
    return error == platform::registry::kNotFound ? platform::registry::kDone : error;
}

// False for a failure other than that there is no such value.
bool readValue(const std::wstring& key, const wchar_t* name, platform::registry::Value& value) {
    const int error = platform::registry::getValue(key, name, value);
    return error == platform::registry::kDone || error == platform::registry::kNotFound;
}

} // namespace

AcadApp::ErrorStatus AcadAppInfo::writeToRegistry(bool overwrite, bool) {
    if (m_appName.isEmpty())
        return AcadApp::eNoName;
    const std::wstring key = keyOf(m_appName);
    if (!overwrite && platform::registry::keyExists(key))
        return AcadApp::eOk;
    if (platform::registry::createKey(key) != platform::registry::kDone)
        return AcadApp::eRegistryOpen;
    const bool written = putText(key, kModuleValue, m_moduleName) == platform::registry::kDone &&
                         putText(key, kDescriptionValue, m_description) == platform::registry::kDone &&
                         putReason(key, m_loadReason) == platform::registry::kDone;
    return written ? AcadApp::eOk : AcadApp::eRegistryWrite;
}

AcadApp::ErrorStatus AcadAppInfo::readFromRegistry(bool) {
    if (m_appName.isEmpty())
        return AcadApp::eNoName;
    const std::wstring key = keyOf(m_appName);
    if (!platform::registry::keyExists(key))
        return AcadApp::eRegistryOpen;
    platform::registry::Value module;
    platform::registry::Value description;
    platform::registry::Value reason;
    if (!readValue(key, kModuleValue, module) || !readValue(key, kDescriptionValue, description) ||
        !readValue(key, kReasonValue, reason))
        return AcadApp::eRegistryRead;
    m_moduleName = module.text.c_str();
    m_description = description.text.c_str();
    m_loadReason = static_cast<AcadApp::LoadReasons>(reason.number & 0x7F);
    return AcadApp::eOk;
}

AcadApp::ErrorStatus AcadAppInfo::delFromRegistry(bool) {
    if (m_appName.isEmpty())
        return AcadApp::eNoName;
    const int error = platform::registry::deleteKey(keyOf(m_appName));
    if (error == platform::registry::kDone)
        return AcadApp::eOk;
    return error == platform::registry::kNotFound ? AcadApp::eRegistryOpen : AcadApp::eRegistryWrite;
}
