#include "symbols/symbol_table.h"

#include "db/database_core.h"
#include "db/field_stream.h"
#include "db/object_access.h"
#include "db/reactors/notices.h"
#include "db/symbol_index.h"

using namespace embedded;

AcDbSymbolTable::AcDbSymbolTable() : m_index(std::make_unique<SymbolIndex>()) {}
AcDbSymbolTable::~AcDbSymbolTable() = default;

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord) const {
    assertReadEnabled();
    id.setNull();
    if (name == nullptr)
        return Acad::eInvalidInput;
    id = AcDbObjectId(m_index->find(NameKey(name), getErasedRecord));
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbSymbolTableRecord*& record,
                                         AcDb::OpenMode mode, bool openErasedRecord) const {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getAt(name, id, openErasedRecord);
    return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErasedRecord) : es;
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
    AcDbObjectId id;
    return getAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
    assertReadEnabled();
    return objectIsLive(id) && m_index->slotOf(id) < m_index->slots();
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
    assertReadEnabled();
    iterator = new AcDbSymbolTableIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    AcDbObjectId id;
    return add(id, record);
}

// Nothing is recorded for undo but that the record is new: taken back, it stays in the index, erased.
Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    id.setNull();
    if (record == nullptr || SymbolAccess::name(*record).isEmpty())
        return Acad::eInvalidInput;
    if (!record->isKindOf(recordClass()))
        return Acad::eNotThatKindOfClass;
    if (!record->objectId().isNull())
        return Acad::eAlreadyInDb;
    if (objectId().isNull())
        return Acad::eNoDatabase;
    assertWriteEnabled(false, false);
    if (!allowsSameNames() &&
        m_index->find(NameKey(SymbolAccess::name(*record).kACharPtr()), false) != nullptr)
        return Acad::eDuplicateRecordName;
    assertWriteEnabled(false);
    id = coreOf(objectId())->add(record);
    ObjectAccess::setOwner(*record, objectId());
    m_index->append(id);
    notices::appended(*record);
    return Acad::eOk;
}

// Count and records as the drawing file has them, those that it names apart left to the kind of table. The
// history needs none of it: the index only ever grows.
Acad::ErrorStatus AcDbSymbolTable::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk || filer->filerType() == AcDb::kUndoFiler)
        return es;
    FieldWriter out(*filer);
    const auto filed = [](const AcDbStub* stub) {
        return stub == nullptr || !stub->has(kErased | kPermanentlyErased);
    };
    Adesk::UInt32 count = 0;
    for (std::size_t slot = m_index->leading(); slot < m_index->slots(); ++slot)
        count += filed(m_index->at(slot)) ? 1 : 0;
    out.int32(count);
    for (std::size_t slot = m_index->leading(); slot < m_index->slots(); ++slot)
        if (filed(m_index->at(slot)))
            out.softOwner(AcDbObjectId(m_index->at(slot)));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTable::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk || filer->filerType() == AcDb::kUndoFiler)
        return es;
    FieldReader in(*filer);
    Adesk::UInt32 count = 0;
    in.int32(count);
    std::size_t handles = count;
    in.handleCount(handles);
    m_index->clear();
    for (std::size_t i = 0; i < handles && in.ok(); ++i) {
        AcDbObjectId id;
        in.softOwner(id);
        m_index->append(id);
    }
    return filer->filerStatus();
}
