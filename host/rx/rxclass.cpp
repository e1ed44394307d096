#include "rxclass.h"

#include "rx/class_record.h"
#include "rx/dictionary.h"

#include <cwchar>

using embedded::rx::ClassRecord;

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxClass, AcRxObject)

AcRxClass::AcRxClass(std::unique_ptr<ClassRecord> record) : m_record(std::move(record)) {}
AcRxClass::~AcRxClass() = default;

const ACHAR* AcRxClass::name() const { return m_record->name.c_str(); }
const ACHAR* AcRxClass::dxfName() const { return m_record->hasDxfName ? m_record->dxfName.c_str() : nullptr; }
const ACHAR* AcRxClass::appName() const { return m_record->hasAppName ? m_record->appName.c_str() : nullptr; }

AcRxClass* AcRxClass::myParent() const {
    if ((m_ancestors == nullptr && !resolve()) || m_depth == 0)
        return nullptr;
    return const_cast<AcRxClass*>(m_ancestors[m_depth - 1]);
}

// False while a class on the road to the root is not registered, and for classes that name each other as
// parent.
bool AcRxClass::resolve() const {
    ClassRecord& record = *m_record;
    if (record.isResolving)
        return false;
    const AcRxClass* parent = nullptr;
    if (!record.parentName.empty()) {
        parent = embedded::rx::knownClass(record.parentName);
        record.isResolving = true;
        const bool known = parent != nullptr && (parent->m_ancestors != nullptr || parent->resolve());
        record.isResolving = false;
        if (!known)
            return false;
    }
    record.ancestors.clear();
    if (parent != nullptr)
        record.ancestors = parent->m_record->ancestors;
    record.ancestors.push_back(this);
    m_depth = static_cast<Adesk::UInt32>(record.ancestors.size() - 1);
    m_ancestors = record.ancestors.data();
    return true;
}

void AcRxClass::getClassVersion(int& dwgVersion, int& maintenanceVersion) const {
    dwgVersion = m_record->dwgVersion;
    maintenanceVersion = m_record->maintenanceVersion;
}

Adesk::UInt32 AcRxClass::proxyFlags() const { return m_record->proxyFlags; }
AcRxPseudoConstructor AcRxClass::constructor() const { return m_record->constructor; }
AppNameChangeFuncPtr AcRxClass::appNameCallbackPtr() const { return m_record->callback; }

AcRxObject* AcRxClass::create() const {
    return m_record->constructor == nullptr ? nullptr : m_record->constructor();
}

AcRxObject* AcRxClass::addX(AcRxClass* protocolClass, AcRxObject* protocolObject) {
    for (auto& extension : m_record->extensions)
        if (extension.first == protocolClass)
            return std::exchange(extension.second, protocolObject);
    m_record->extensions.emplace_back(protocolClass, protocolObject);
    return nullptr;
}

AcRxObject* AcRxClass::delX(const AcRxClass* protocolClass) {
    auto& extensions = m_record->extensions;
    for (auto at = extensions.begin(); at != extensions.end(); ++at)
        if (at->first == protocolClass) {
            AcRxObject* taken = at->second;
            extensions.erase(at);
            return taken;
        }
    return nullptr;
}

AcRxObject* AcRxClass::getX(const AcRxClass* protocolClass) const {
    for (const auto& extension : m_record->extensions)
        if (extension.first == protocolClass)
            return extension.second;
    return nullptr;
}

AcRxObject* AcRxClass::queryX(const AcRxClass* protocolClass) const {
    for (const AcRxClass* at = this; at != nullptr; at = at->myParent())
        if (AcRxObject* found = at->getX(protocolClass))
            return found;
    return nullptr;
}

AcRx::Ordering AcRxClass::comparedTo(const AcRxObject* other) const {
    const AcRxClass* otherClass = AcRxClass::cast(other);
    if (otherClass == nullptr)
        return AcRx::kNotOrderable;
    const int order = std::wcscmp(name(), otherClass->name());
    return order < 0 ? AcRx::kLessThan : order > 0 ? AcRx::kGreaterThan : AcRx::kEqual;
}

namespace {

// A name as the registering macros hand it on, with quotes or without.
std::wstring unquoted(const ACHAR* text) {
    std::wstring name = text == nullptr ? L"" : text;
    if (name.size() >= 2 && name.front() == L'"' && name.back() == L'"')
        name = name.substr(1, name.size() - 2);
    return name;
}

} // namespace

AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName, int dwgVersion,
                        int maintenanceVersion, int proxyFlags, AcRxPseudoConstructor constructor,
                        const ACHAR* dxfName, const ACHAR* appName, AppNameChangeFuncPtr callback) {
    ClassRecord values;
    values.name = className;
    values.parentName = parentClassName == nullptr ? L"" : parentClassName;
    values.dxfName = unquoted(dxfName);
    values.appName = unquoted(appName);
    values.hasDxfName = dxfName != nullptr;
    values.hasAppName = appName != nullptr;
    values.dwgVersion = dwgVersion;
    values.maintenanceVersion = maintenanceVersion;
    values.proxyFlags = static_cast<Adesk::UInt32>(proxyFlags);
    values.constructor = constructor;
    values.callback = callback;
    return ClassRecord::enter(std::move(values));
}

AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName,
                        AcRxPseudoConstructor constructor, const ACHAR* dxfName,
                        AppNameChangeFuncPtr callback) {
    return newAcRxClass(className, parentClassName, 0, 0, 0, constructor, dxfName, nullptr, callback);
}

void deleteAcRxClass(AcRxClass* classObj) {
    if (classObj != nullptr && embedded::rx::classDictionary().at(classObj->name()) == classObj)
        embedded::rx::classDictionary().remove(classObj->name());
}
