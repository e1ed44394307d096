#include "rx/class_record.h"

#include "embedded/classes.h"
#include "rx/dictionary.h"
#include "rx/sys_registry.h"

#include <unordered_map>

namespace embedded::rx {

namespace {

// Never destroyed: descriptors outlive the modules that use them.
std::unordered_map<std::wstring, AcRxClass*>& allClasses() {
    static auto& all = *new std::unordered_map<std::wstring, AcRxClass*>;
    return all;
}

unsigned g_hierarchyBuilds = 0;

} // namespace

AcRxClass* knownClass(const std::wstring& name) {
    const auto found = allClasses().find(name);
    return found == allClasses().end() ? nullptr : found->second;
}

AcRxClass* ClassRecord::enter(ClassRecord&& values) {
    AcRxClass*& known = allClasses()[values.name];
    if (known == nullptr) {
        auto record = std::make_unique<ClassRecord>(std::move(values));
        known = new AcRxClass(std::move(record));
    } else {
        const bool moved = known->m_record->parentName != values.parentName;
        values.extensions = std::move(known->m_record->extensions);
        if (!moved)
            values.ancestors = std::move(known->m_record->ancestors);
        *known->m_record = std::move(values);
        // A class with another parent gives all that derive from it another road to the root.
        for (auto& entry : allClasses())
            if (moved)
                entry.second->m_ancestors = nullptr;
    }
    Adesk::UInt32 id = 0;
    classDictionary().atPut(known->name(), known, id);
    return known;
}

Dictionary& classDictionary() {
    static Dictionary& dictionary = *new Dictionary(true, false);
    return dictionary;
}

AcRxClass* registeredClass(const ACHAR* name) {
    acrxSysRegistry(); // brings the host's first classes up
    auto* found = static_cast<AcRxClass*>(classDictionary().at(name));
    if (found == nullptr)
        acrx_abort(L"The class \"%ls\" is used, but is not registered", name);
    return found;
}

bool isRegistered(const AcRxClass* descriptor, const ACHAR* name) {
    const AcRxObject* found = classDictionary().at(name);
    if (found != nullptr && found != descriptor)
        acrx_abort(L"Class mismatch");
    return found != nullptr;
}

unsigned hierarchyBuilds() { return g_hierarchyBuilds; }
unsigned classGeneration() { return classDictionary().changes(); }

} // namespace embedded::rx

void acrxBuildClassHierarchy() {
    ++embedded::rx::g_hierarchyBuilds;
    // Asking for the parent resolves the road to the root.
    for (const auto& entry : embedded::rx::allClasses())
        entry.second->myParent();
}
