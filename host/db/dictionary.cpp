#include "dbdict.h"

#include "acutmem.h"
#include "db/database_core.h"
#include "db/dictionary_iterator.h"
#include "db/name_table.h"
#include "db/object_access.h"
#include "db/open_close.h"
#include "db/reactors/notices.h"

using namespace embedded;

namespace {

// What a partial undo record of a dictionary says.
enum EntryChange : Adesk::UInt8 {
    kWasAbsent = 0, // the name is to go
    kWasPresent = 1 // the entry is to stand again as filed
};

bool hidden(const AcDbStub* stub) {
    return stub != nullptr && stub->has(kErased) && !stub->has(kPermanentlyErased);
}

void recordChange(AcDbDictionary& dictionary, const NameTable& names, std::size_t slot,
                  std::string_view name) {
    AcDbDwgFiler* filer = dictionary.undoFiler();
    if (filer == nullptr)
        return;
    filer->writeAddress(AcDbDictionary::desc());
    filer->writeUInt8(slot == NameTable::kNone ? kWasAbsent : kWasPresent);
    filer->writeUInt32(static_cast<Adesk::UInt32>(name.size()));
    filer->writeBytes(name.data(), name.size());
    if (slot == NameTable::kNone)
        return;
    filer->writeUInt32(names.at(slot).order);
    filer->writeAddress(names.at(slot).stub);
}

} // namespace

AcDbDictionary::AcDbDictionary() : m_names(new NameTable) {}
AcDbDictionary::~AcDbDictionary() { delete m_names; }

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObjectId& id) const {
    assertReadEnabled();
    id.setNull();
    if (name == nullptr)
        return Acad::eInvalidInput;
    const std::size_t slot = m_names->find(NameKey(name));
    if (slot == NameTable::kNone || hidden(m_names->at(slot).stub))
        return Acad::eKeyNotFound;
    id = AcDbObjectId(m_names->at(slot).stub);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObject*& object, AcDb::OpenMode mode) const {
    object = nullptr;
    AcDbObjectId id;
    Acad::ErrorStatus es = getAt(name, id);
    return es == Acad::eOk ? acdbOpenAcDbObject(object, id, mode) : es;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, ACHAR*& name) const {
    assertReadEnabled();
    name = nullptr;
    const std::size_t slot = m_names->find(static_cast<AcDbStub*>(id));
    if (slot == NameTable::kNone)
        return Acad::eKeyNotFound;
    name = acutNewString(wideName(m_names->at(slot).name).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, AcString& name) const {
    assertReadEnabled();
    const std::size_t slot = m_names->find(static_cast<AcDbStub*>(id));
    if (slot == NameTable::kNone)
        return Acad::eKeyNotFound;
    name = wideName(m_names->at(slot).name).c_str();
    return Acad::eOk;
}

bool AcDbDictionary::has(const ACHAR* name) const {
    AcDbObjectId id;
    return AcDbDictionary::getAt(name, id) == Acad::eOk;
}

bool AcDbDictionary::has(AcDbObjectId id) const {
    assertReadEnabled();
    return m_names->find(static_cast<AcDbStub*>(id)) != NameTable::kNone && !hidden(id);
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    assertReadEnabled();
    Adesk::UInt32 count = 0;
    for (std::size_t i = 0; i < m_names->slots(); ++i)
        count += m_names->at(i).live && !hidden(m_names->at(i).stub) ? 1 : 0;
    return count;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* name, AcDbObject* object, AcDbObjectId& id) {
    if (name == nullptr || name[0] == 0)
        return Acad::eInvalidKey;
    if (object == nullptr)
        return Acad::eInvalidInput;
    if (objectId().isNull())
        return Acad::eNoDatabase;
    if (!object->objectId().isNull() && object->database() != database())
        return Acad::eWrongDatabase;
    assertWriteEnabled(false);
    const bool fresh = object->objectId().isNull();
    if (fresh)
        coreOf(objectId())->add(object);
    else
        object->assertWriteEnabled();
    id = object->objectId();
    ObjectAccess::setOwner(*object, objectId());
    // The dictionary hears of what happens to its entries: every entry of a drawing says so.
    ObjectAccess::bits(*object) |= kOwnerIsReactor;

    const NameKey key(name);
    const std::size_t slot = m_names->find(key);
    recordChange(*this, *m_names, slot, key.text());
    AcDbStub* before = nullptr;
    if (slot == NameTable::kNone) {
        m_names->append(key.text(), key.hash(), id);
    } else {
        before = m_names->at(slot).stub;
        m_names->replace(slot, id);
    }
    if (fresh)
        notices::appended(*object);
    if (before != nullptr && before != static_cast<AcDbStub*>(id))
        eraseOwned(*before, true);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* name, AcDbObjectId& id) {
    id.setNull();
    if (name == nullptr)
        return Acad::eInvalidInput;
    assertWriteEnabled(false, false);
    const std::size_t slot = m_names->find(NameKey(name));
    if (slot == NameTable::kNone || hidden(m_names->at(slot).stub))
        return Acad::eKeyNotFound;
    assertWriteEnabled(false);
    id = AcDbObjectId(m_names->at(slot).stub);
    recordChange(*this, *m_names, slot, m_names->at(slot).name);
    m_names->remove(slot);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* name) {
    AcDbObjectId id;
    return remove(name, id);
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId id) {
    assertWriteEnabled(false, false);
    const std::size_t slot = m_names->find(static_cast<AcDbStub*>(id));
    if (slot == NameTable::kNone)
        return Acad::eKeyNotFound;
    assertWriteEnabled(false);
    recordChange(*this, *m_names, slot, m_names->at(slot).name);
    m_names->remove(slot);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::setName(const ACHAR* oldName, const ACHAR* newName) {
    if (oldName == nullptr || newName == nullptr || newName[0] == 0)
        return Acad::eInvalidKey;
    assertWriteEnabled(false, false);
    const std::size_t slot = m_names->find(NameKey(oldName));
    if (slot == NameTable::kNone || hidden(m_names->at(slot).stub))
        return Acad::eKeyNotFound;
    const NameKey key(newName);
    const std::size_t taken = m_names->find(key);
    if (taken != NameTable::kNone && taken != slot)
        return Acad::eDuplicateKey;
    assertWriteEnabled();
    AcDbStub* stub = m_names->at(slot).stub;
    const std::uint32_t order = m_names->at(slot).order;
    m_names->remove(slot);
    m_names->insert(key.text(), stub, order);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::applyPartialUndo(AcDbDwgFiler* filer, AcRxClass* classObj) {
    if (classObj != AcDbDictionary::desc())
        return AcDbObject::applyPartialUndo(filer, classObj);
    assertWriteEnabled(false);
    Adesk::UInt8 change = kWasAbsent;
    Adesk::UInt32 length = 0;
    filer->readUInt8(&change);
    filer->readUInt32(&length);
    std::string name(length, '\0');
    filer->readBytes(name.data(), length);
    const std::size_t slot = m_names->find(NameKey(wideName(name).c_str()));
    recordChange(*this, *m_names, slot, slot == NameTable::kNone ? name : m_names->at(slot).name);
    if (slot != NameTable::kNone)
        m_names->remove(slot);
    if (change == kWasPresent) {
        Adesk::UInt32 order = 0;
        void* stub = nullptr;
        filer->readUInt32(&order);
        filer->readAddress(&stub);
        m_names->insert(name, static_cast<AcDbStub*>(stub), order);
    }
    return filer->filerStatus();
}

bool AcDbDictionary::isTreatElementsAsHard() const {
    assertReadEnabled();
    return m_hard != 0;
}

void AcDbDictionary::setTreatElementsAsHard(bool hard) {
    assertWriteEnabled();
    m_hard = hard ? 1 : 0;
}

AcDb::DuplicateRecordCloning AcDbDictionary::mergeStyle() const {
    assertReadEnabled();
    return static_cast<AcDb::DuplicateRecordCloning>(m_cloning);
}

void AcDbDictionary::setMergeStyle(AcDb::DuplicateRecordCloning style) {
    assertWriteEnabled();
    m_cloning = static_cast<Adesk::UInt8>(style);
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const {
    assertReadEnabled();
    return new embedded::DictionaryIterator(*m_names);
}

Acad::ErrorStatus AcDbDictionary::subErase(Adesk::Boolean erasing) {
    for (std::size_t i = 0; i < m_names->slots(); ++i) {
        AcDbStub* stub = m_names->at(i).stub;
        if (m_names->at(i).live && stub != nullptr)
            eraseOwned(*stub, erasing != 0);
    }
    return AcDbObject::subErase(erasing);
}

// As the drawing file has it: count, cloning, ownership, then the names; the ids go their own way there.
Acad::ErrorStatus AcDbDictionary::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk)
        return es;
    const bool toFile = filer->filerType() == AcDb::kFileFiler;
    const bool forUndo = filer->filerType() == AcDb::kUndoFiler;
    const auto filed = [&](const NameTable::Entry& entry) {
        return entry.live &&
               !(toFile && entry.stub != nullptr && entry.stub->has(kErased | kPermanentlyErased));
    };
    Adesk::UInt32 count = 0;
    for (std::size_t i = 0; i < m_names->slots(); ++i)
        count += filed(m_names->at(i)) ? 1 : 0;
    filer->writeUInt32(count);
    filer->writeUInt16(m_cloning);
    filer->writeUInt8(m_hard);
    for (std::size_t i = 0; i < m_names->slots(); ++i) {
        const NameTable::Entry& entry = m_names->at(i);
        if (!filed(entry))
            continue;
        filer->writeString(wideName(entry.name).c_str());
        // In a drawing file the flag alone tells; products name every entry as softly owned.
        if (m_hard != 0 && !toFile)
            filer->writeHardOwnershipId(AcDbObjectId(entry.stub));
        else
            filer->writeSoftOwnershipId(AcDbObjectId(entry.stub));
        if (forUndo)
            filer->writeUInt32(entry.order);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    const bool forUndo = filer->filerType() == AcDb::kUndoFiler;
    Adesk::UInt32 count = 0;
    Adesk::UInt16 cloning = 0;
    filer->readUInt32(&count);
    filer->readUInt16(&cloning);
    filer->readUInt8(&m_hard);
    m_cloning = static_cast<Adesk::UInt8>(cloning);
    m_names->clear();
    for (Adesk::UInt32 i = 0; i < count; ++i) {
        AcString name;
        filer->readString(name);
        AcDbHardOwnershipId hard;
        AcDbSoftOwnershipId soft;
        if (m_hard != 0)
            filer->readHardOwnershipId(&hard);
        else
            filer->readSoftOwnershipId(&soft);
        Adesk::UInt32 order = 0;
        if (forUndo)
            filer->readUInt32(&order);
        if (filer->filerStatus() != Acad::eOk)
            return filer->filerStatus();
        AcDbStub* stub = m_hard != 0 ? static_cast<AcDbStub*>(hard) : static_cast<AcDbStub*>(soft);
        const NameKey key(name.kACharPtr());
        if (forUndo)
            m_names->insert(key.text(), stub, order);
        else
            m_names->append(key.text(), key.hash(), stub);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDictionaryWithDefault::getAt(const ACHAR* name, AcDbObjectId& id) const {
    Acad::ErrorStatus es = AcDbDictionary::getAt(name, id);
    if (es != Acad::eKeyNotFound || m_default.isNull())
        return es;
    id = m_default;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionaryWithDefault::setDefaultId(AcDbObjectId id) {
    assertWriteEnabled();
    m_default = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionaryWithDefault::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbDictionary::dwgOutFields(filer);
    if (es == Acad::eOk)
        es = filer->writeHardPointerId(m_default);
    return es;
}

Acad::ErrorStatus AcDbDictionaryWithDefault::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbDictionary::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    AcDbHardPointerId id;
    filer->readHardPointerId(&id);
    m_default = id;
    return filer->filerStatus();
}
