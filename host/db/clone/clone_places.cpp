#include "db/clone/access_rights.h"
#include "db/clone/clone_run.h"
#include "db/database_core.h"
#include "db/entity_list.h"
#include "db/name_table.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "db/symbol_index.h"
#include "dbsymtb.h"
#include "rxclass.h"

#include <cwctype>
#include <filesystem>

namespace embedded {

namespace {

// What every drawing has once: a clone's references to it end at the target's own.
constexpr AcDbObjectId RootIds::*kRoots[] = {
    &RootIds::blockTable,          &RootIds::layerTable,      &RootIds::textStyleTable,
    &RootIds::linetypeTable,       &RootIds::viewTable,       &RootIds::ucsTable,
    &RootIds::viewportTable,       &RootIds::regAppTable,     &RootIds::dimStyleTable,
    &RootIds::viewportEntityTable, &RootIds::namedObjects,    &RootIds::groups,
    &RootIds::mlineStyles,         &RootIds::layouts,         &RootIds::plotSettings,
    &RootIds::plotStyles,          &RootIds::modelSpace,      &RootIds::paperSpace,
    &RootIds::layerZero,           &RootIds::byLayerLinetype, &RootIds::byBlockLinetype,
    &RootIds::continuousLinetype};

AcDbObject* residentOf(const AcDbObjectId& id) {
    AcDbStub* stub = id;
    AcDbObject* object = nullptr;
    if (stub == nullptr || coreOf(stub) == nullptr || coreOf(stub)->resident(*stub, object) != Acad::eOk)
        return nullptr;
    return object;
}

AcDbStub* liveEntry(AcDbDictionary& dictionary, const std::wstring& name) {
    const NameTable& names = ObjectAccess::names(dictionary);
    const std::size_t slot = names.find(NameKey(name.c_str()));
    AcDbStub* stub = slot == NameTable::kNone ? nullptr : names.at(slot).stub;
    return objectIsLive(stub) ? stub : nullptr;
}

// Of the same class, as far as that is known: a proxy may be anything.
bool standsForTheSame(const AcDbObject& source, const AcDbObject* other) {
    return other != nullptr && (other->isA() == source.isA() || other->isAProxy() || source.isAProxy());
}

// "*U12" and "*Paper_Space0": the stem that a number makes a name of; empty for any other name.
std::wstring anonymousStem(const std::wstring& name) {
    if (name.size() < 2 || name[0] != L'*')
        return std::wstring();
    std::size_t end = name.size();
    while (end > 1 && std::iswdigit(static_cast<std::wint_t>(name[end - 1])) != 0)
        --end;
    return end > 1 ? name.substr(0, end) : std::wstring();
}

std::wstring fileStem(const AcDbDatabase& database) {
    const ACHAR* file = nullptr;
    return database.getFilename(file) == Acad::eOk ? std::filesystem::path(file).stem().wstring()
                                                   : std::wstring();
}

// What stands behind the last number between two dollar signs.
std::wstring unmangled(const std::wstring& name) {
    const std::size_t last = name.rfind(L'$');
    if (last == std::wstring::npos || last == 0 || last + 1 == name.size())
        return name;
    std::size_t digit = last;
    while (digit > 0 && std::iswdigit(static_cast<std::wint_t>(name[digit - 1])) != 0)
        --digit;
    return digit < last && digit > 0 && name[digit - 1] == L'$' ? name.substr(last + 1) : name;
}

std::wstring shapeFileOf(AcDbStub* stub) {
    const ReadRight reading(stub);
    const auto* style = AcDbTextStyleTableRecord::cast(reading.object());
    const ACHAR* name = nullptr;
    return style != nullptr && style->fileName(name) == Acad::eOk && name != nullptr ? name : std::wstring();
}

// A shape file's record has no name: the file tells which one it is.
AcDbStub* sameShapeFile(const AcDbSymbolTable& table, const AcDbObject& source) {
    const std::wstring file = shapeFileOf(source.objectId());
    const SymbolIndex& index = SymbolAccess::index(table);
    for (std::size_t slot = 0; slot < index.slots(); ++slot) {
        AcDbStub* stub = index.at(slot);
        const AcDbSymbolTableRecord* record = objectIsLive(stub) ? SymbolAccess::record(stub) : nullptr;
        if (record != nullptr && SymbolAccess::name(*record).isEmpty() && shapeFileOf(stub) == file)
            return stub;
    }
    return nullptr;
}

bool givesOtherNames(AcDb::DuplicateRecordCloning drc) {
    return drc == AcDb::kDrcMangleName || drc == AcDb::kDrcXrefMangleName;
}

} // namespace

AcDbObjectId CloneRun::rootFor(const AcDbObjectId& id) const {
    const RootIds& from = original->core().roots;
    const RootIds& to = destination->core().roots;
    for (const auto root : kRoots)
        if (from.*root == id)
            return to.*root;
    return AcDbObjectId();
}

std::wstring CloneRun::mangled(const std::wstring& name, unsigned number) const {
    const std::wstring stem = duplicates == AcDb::kDrcXrefMangleName ? fileStem(*original) : std::wstring();
    return stem + L"$" + std::to_wstring(number) + L"$" + name;
}

// The clone of what the original stands in, made if need be.
Acad::ErrorStatus CloneRun::bringOwner(const AcDbObject& source, AcDbObjectId& owner) {
    AcDbStub* stub = source.ownerId();
    if (stub == nullptr)
        return Acad::eOwnerNotSet;
    const AcDbIdPair* pair = find(AcDbObjectId(stub));
    if (pair == nullptr || pair->value().isNull()) {
        // Objects that own each other in a circle have no place.
        if (!m_bringing.insert(stub).second)
            return Acad::eOwnerNotSet;
        AcDbObject* clone = nullptr;
        Acad::ErrorStatus es = Acad::eOwnerNotSet;
        const ReadRight reading(stub);
        if (reading.status() == Acad::eOk)
            es = reading.object()->wblockClone(destination, clone, m_mapping, false);
        m_bringing.erase(stub);
        if (clone != nullptr)
            clone->close();
        if (es != Acad::eOk)
            return es == Acad::eNotApplicable ? Acad::eOwnerNotSet : es;
        pair = find(AcDbObjectId(stub));
    }
    owner = pair != nullptr ? pair->value() : AcDbObjectId();
    return owner.isNull() ? Acad::eOwnerNotSet : Acad::eOk;
}

Acad::ErrorStatus CloneRun::placeRecord(const AcDbObject& source, AcDbObjectId tableId, ClonePlace& place) {
    const auto* table = AcDbSymbolTable::cast(residentOf(tableId));
    const auto& record = static_cast<const AcDbSymbolTableRecord&>(source);
    place.name = SymbolAccess::name(record).kACharPtr();
    if (duplicates == AcDb::kDrcUnmangleName)
        place.name = unmangled(place.name);
    const auto holder = [&](const std::wstring& name) {
        return SymbolAccess::index(*table).find(NameKey(name.c_str()), false);
    };
    const std::wstring stem = anonymousStem(place.name);
    AcDbStub* existing = place.name.empty() ? sameShapeFile(*table, source) : holder(place.name);
    if (existing == nullptr)
        return Acad::eOk;
    if (AcDbBlockTableRecord::cast(&source) != nullptr && !stem.empty()) {
        // Its name says nothing: another one of that name is another block.
        for (unsigned number = 0; holder(place.name) != nullptr; ++number)
            place.name = stem + std::to_wstring(number);
        return Acad::eOk;
    }
    if (!intoOther())
        return Acad::eDuplicateRecordName;
    if (givesOtherNames(duplicates) && !place.name.empty()) {
        const std::wstring name = place.name;
        for (unsigned number = 0; holder(place.name) != nullptr; ++number)
            place.name = mangled(name, number);
        return Acad::eOk;
    }
    place.existing = AcDbObjectId(existing);
    place.fillExisting = duplicates == AcDb::kDrcReplace;
    return Acad::eOk;
}

void CloneRun::placeEntry(const AcDbObject& source, AcDbObjectId dictionaryId, bool isPrimary,
                          ClonePlace& place) {
    auto& dictionary = static_cast<AcDbDictionary&>(*residentOf(dictionaryId));
    if (auto* from = AcDbDictionary::cast(residentOf(source.ownerId()))) {
        const NameTable& names = ObjectAccess::names(*from);
        const std::size_t slot = names.find(static_cast<AcDbStub*>(source.objectId()));
        if (slot != NameTable::kNone)
            place.name = wideName(names.at(slot).name);
    }
    AcDbStub* existing = place.name.empty() ? nullptr : liveEntry(dictionary, place.name);
    if (existing != nullptr && intoOther() && !(isPrimary && givesOtherNames(duplicates))) {
        const bool replaced = isPrimary && duplicates == AcDb::kDrcReplace;
        if (replaced)
            return;
        if (standsForTheSame(source, residentOf(AcDbObjectId(existing)))) {
            place.existing = AcDbObjectId(existing);
            return;
        }
    }
    const std::wstring name = place.name;
    for (unsigned number = intoOther() ? 0 : 1; existing != nullptr || place.name.empty(); ++number) {
        place.name = intoOther() && !name.empty() ? mangled(name, number) : L"*A" + std::to_wstring(number);
        existing = liveEntry(dictionary, place.name);
    }
}

Acad::ErrorStatus CloneRun::placeOf(const AcDbObject& source, AcDbObject* owner, bool isPrimary,
                                    ClonePlace& place) {
    if (intoOther() && AcDbEntity::cast(&source) == nullptr) {
        place.existing = rootFor(source.objectId());
        if (!place.existing.isNull())
            return Acad::eOk;
    }
    if (owner != nullptr) {
        place.owner = owner->objectId();
    } else {
        if (!intoOther())
            return Acad::eInvalidOwnerObject;
        const Acad::ErrorStatus es = bringOwner(source, place.owner);
        if (es != Acad::eOk)
            return es;
        // What was brought along with the owner may be the very object.
        if (const AcDbIdPair* pair = find(source.objectId()); pair != nullptr && !pair->value().isNull()) {
            place.existing = pair->value();
            return Acad::eOk;
        }
    }
    AcDbObject* stands = residentOf(place.owner);
    if (stands == nullptr)
        return Acad::eInvalidOwnerObject;
    if (AcDbBlockTableRecord::cast(stands) != nullptr && AcDbEntity::cast(&source) != nullptr)
        return Acad::eOk;
    if (AcDbSymbolTable::cast(stands) != nullptr) {
        if (AcDbSymbolTableRecord::cast(&source) == nullptr)
            return Acad::eInvalidOwnerObject;
        return placeRecord(source, place.owner, place);
    }
    if (AcDbDictionary::cast(stands) != nullptr)
        placeEntry(source, place.owner, isPrimary, place);
    else if (AcDbBlockTableRecord::cast(stands) != nullptr && isPrimary &&
             AcDbEntity::cast(&source) == nullptr)
        return Acad::eInvalidOwnerObject;
    return Acad::eOk;
}

namespace {

Acad::ErrorStatus addRecord(AcDbSymbolTable& table, AcDbSymbolTableRecord& record, const std::wstring& name) {
    SymbolAccess::setName(record, name.c_str());
    AcDbObjectId id;
    if (!name.empty())
        return table.add(id, &record);
    table.assertWriteEnabled(false);
    coreOf(table.objectId())->add(&record);
    ObjectAccess::setOwner(record, table.objectId());
    SymbolAccess::index(table).append(record.objectId());
    notices::appended(record);
    return Acad::eOk;
}

// Behind no list and no name: the owner's own fields lead to it.
void addPlainly(AcDbObject& owner, AcDbObject& made, const AcDbObject& source) {
    coreOf(owner.objectId())->add(&made);
    ObjectAccess::setOwner(made, owner.objectId());
    const AcDbObject* before = residentOf(source.ownerId());
    const ObjectExtras* extras = before != nullptr ? ObjectAccess::extras(*before) : nullptr;
    if (extras != nullptr && extras->extensionDictionary == source.objectId()) {
        owner.assertWriteEnabled();
        ObjectAccess::makeExtras(owner).extensionDictionary = made.objectId();
    }
}

} // namespace

// The object is the database's from here on, unless a failure is answered.
Acad::ErrorStatus CloneRun::attach(AcDbObject* made, const AcDbObject& source, const ClonePlace& place) {
    AcDbObject* owner = residentOf(place.owner);
    const WriteRight writing(*static_cast<AcDbStub*>(place.owner));
    AcDbObjectId id;
    Acad::ErrorStatus es = Acad::eOk;
    auto* entity = AcDbEntity::cast(made);
    auto* record = entity != nullptr ? nullptr : AcDbSymbolTableRecord::cast(made);
    if (auto* block = AcDbBlockTableRecord::cast(owner); block != nullptr && entity != nullptr)
        es = block->appendAcDbEntity(id, entity);
    else if (auto* dictionary = AcDbDictionary::cast(owner))
        es = dictionary->setAt(place.name.c_str(), made, id);
    else if (auto* table = AcDbSymbolTable::cast(owner); table != nullptr && record != nullptr)
        es = addRecord(*table, *record, place.name);
    else
        addPlainly(*owner, *made, source);
    if (es == Acad::eOk)
        m_made.push_back(made->objectId());
    return es;
}

} // namespace embedded
