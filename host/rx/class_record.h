#pragma once

#include "rxclass.h"

#include <string>
#include <utility>
#include <vector>

namespace embedded::rx {

class Dictionary;

// What a descriptor keeps.
struct ClassRecord {
    std::wstring name;
    std::wstring parentName;
    std::wstring dxfName;
    std::wstring appName;
    bool hasDxfName = false;
    bool hasAppName = false;
    int dwgVersion = 0;
    int maintenanceVersion = 0;
    Adesk::UInt32 proxyFlags = 0;
    AcRxPseudoConstructor constructor = nullptr;
    AppNameChangeFuncPtr callback = nullptr;

    // The road from the root to the class itself, once it is known.
    std::vector<const AcRxClass*> ancestors;
    bool isResolving = false;
    std::vector<std::pair<const AcRxClass*, AcRxObject*>> extensions;

    // The descriptor of a name, made or found, with these values.
    static AcRxClass* enter(ClassRecord&& values);
};

// The descriptor that a name has or once had; null if it never had one.
AcRxClass* knownClass(const std::wstring& name);

// The class dictionary as the host itself uses it.
Dictionary& classDictionary();

} // namespace embedded::rx
