#include "db/symbol_index.h"

using namespace embedded;

AcDbSymbolTableIterator::AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning,
                                                 bool skipDeleted)
    : m_table(table) {
    start(atBeginning, skipDeleted);
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    m_at = atBeginning ? -1 : static_cast<std::ptrdiff_t>(SymbolAccess::index(m_table).slots());
    step(atBeginning, skipDeleted);
}

bool AcDbSymbolTableIterator::done() const {
    return m_at < 0 || m_at >= static_cast<std::ptrdiff_t>(SymbolAccess::index(m_table).slots());
}

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
    const SymbolIndex& index = SymbolAccess::index(m_table);
    do {
        m_at += forward ? 1 : -1;
    } while (!done() && !(skipDeleted ? objectIsLive(index.at(static_cast<std::size_t>(m_at)))
                                      : objectExists(index.at(static_cast<std::size_t>(m_at)))));
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    id.setNull();
    if (done())
        return Acad::eIteratorDone;
    id = AcDbObjectId(SymbolAccess::index(m_table).at(static_cast<std::size_t>(m_at)));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                                     bool openErased) const {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getRecordId(id);
    return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : es;
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(AcDbObjectId id) {
    const SymbolIndex& index = SymbolAccess::index(m_table);
    const std::size_t slot = index.slotOf(id);
    if (id.isNull() || slot >= index.slots())
        return Acad::eRecordNotInTable;
    m_at = static_cast<std::ptrdiff_t>(slot);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(const AcDbSymbolTableRecord* record) {
    return record == nullptr ? Acad::eInvalidInput : seek(record->objectId());
}
