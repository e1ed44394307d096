#include "db/entity_list.h"
#include "db/symbol_index.h"

using namespace embedded;

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& block,
                                                           bool atBeginning, bool skipDeleted)
    : m_block(block), m_list(BlockAccess::entities(block)) {
    start(atBeginning, skipDeleted);
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    m_at = atBeginning ? -1 : static_cast<std::ptrdiff_t>(m_list.slots());
    step(atBeginning, skipDeleted);
}

bool AcDbBlockTableRecordIterator::done() const {
    return m_at < 0 || m_at >= static_cast<std::ptrdiff_t>(m_list.slots());
}

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
    const auto passedOver = [&] {
        const AcDbStub* stub = m_list.at(static_cast<std::size_t>(m_at));
        return skipDeleted ? !objectIsLive(stub) : !objectExists(stub);
    };
    do {
        m_at += forward ? 1 : -1;
    } while (!done() && passedOver());
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
    id.setNull();
    if (done())
        return Acad::eIteratorDone;
    id = AcDbObjectId(m_list.at(static_cast<std::size_t>(m_at)));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
    entity = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getEntityId(id);
    return es == Acad::eOk ? acdbOpenObject(entity, id, mode, openErased) : es;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
    for (std::size_t slot = 0; slot < m_list.slots(); ++slot) {
        if (id == AcDbObjectId(m_list.at(slot))) {
            m_at = static_cast<std::ptrdiff_t>(slot);
            return Acad::eOk;
        }
    }
    return Acad::eNotInBlock;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(const AcDbEntity* entity) {
    return entity == nullptr ? Acad::eInvalidInput : seek(entity->objectId());
}

AcDbObjectId AcDbBlockTableRecordIterator::blockTableRecord() const { return m_block.objectId(); }
