#include "dwg/object_kinds.h"

#include "dbmain.h"
#include "dbproxy.h"
#include "embedded/classes.h"
#include "embedded/host_start.h"
#include "rxclass.h"
#include "rxdict.h"

namespace embedded::dwg {
namespace {

const RoomInitialiser roomInitialiser(60, registerFixedKinds);

// The application under which the host's own classes stand in a class table.
const wchar_t kHostApplication[] = L"ObjectDBX Classes";

AcRxClass* registeredClass(const std::wstring& name) {
    AcRxObject* dictionary = acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY);
    return AcRxClass::cast(static_cast<AcRxDictionary*>(dictionary)->at(name.c_str()));
}

AcRxClass* registerWithoutMaker(const std::wstring& name, bool isEntity) {
    AcRxClass* made = newAcRxClass(name.c_str(), isEntity ? L"AcDbEntity" : L"AcDbObject");
    acrxBuildClassHierarchy();
    return made;
}

bool fits(const AcRxClass* found, bool isEntity) {
    return found->isDerivedFrom(AcDbObject::desc()) && found->isDerivedFrom(AcDbEntity::desc()) == isEntity;
}

void findClasses(ObjectKind& kind) {
    AcRxClass* found = registeredClass(kind.className);
    const bool usable = found != nullptr && fits(found, kind.isEntity);
    const bool ofProxies = kind.type == kProxyEntityType || kind.type == kProxyObjectType;
    kind.maker = usable && !ofProxies && found->constructor() != nullptr ? found : nullptr;
    kind.standIn = kind.isEntity ? AcDbProxyEntity::desc() : AcDbProxyObject::desc();
    kind.standInIsProxy = true;
    if (ofProxies || (kind.fromClassTable && kind.application != kHostApplication))
        return;
    // A name that belongs to something else stays its own; such objects are proxies.
    if (found == nullptr && !kind.className.empty())
        found = registerWithoutMaker(kind.className, kind.isEntity);
    if (found != nullptr && fits(found, kind.isEntity)) {
        kind.standIn = found;
        kind.standInIsProxy = false;
    }
}

} // namespace

void registerFixedKinds() {
    for (std::uint16_t number = 1; number < ClassTable::kFirstNumber; ++number) {
        const FixedType* type = fixedType(number);
        if (type != nullptr && registeredClass(type->className) == nullptr)
            newAcRxClass(type->className, type->isEntity ? L"AcDbEntity" : L"AcDbObject");
    }
}

bool ObjectKinds::describe(std::uint16_t type, ObjectKind& kind) const {
    kind.type = type;
    if (const FixedType* fixed = fixedType(type)) {
        kind.isEntity = fixed->isEntity;
        kind.dxfName = std::wstring(fixed->name, fixed->name + std::char_traits<char>::length(fixed->name));
        kind.className = fixed->className;
        return true;
    }
    const ClassRow* row = m_classes.find(type);
    if (row == nullptr)
        return false;
    kind.isEntity = row->makesEntities();
    kind.fromClassTable = true;
    kind.dxfName = m_text.decode(ClassRow::text(row->dxfName));
    kind.className = m_text.decode(ClassRow::text(row->className));
    kind.application = m_text.decode(ClassRow::text(row->application));
    kind.proxyFlags = row->proxyFlags;
    return true;
}

const ObjectKind* ObjectKinds::find(std::uint16_t type) {
    const auto made = m_entries.try_emplace(type);
    Entry& entry = made.first->second;
    if (made.second)
        entry.known = describe(type, entry.kind);
    if (!entry.known) {
        // A row may be added later.
        m_entries.erase(made.first);
        return nullptr;
    }
    if (made.second || entry.generation != rx::classGeneration()) {
        findClasses(entry.kind);
        entry.generation = rx::classGeneration();
    }
    return &entry.kind;
}

} // namespace embedded::dwg
