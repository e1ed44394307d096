#include "db/dictionary_iterator.h"

namespace embedded {

DictionaryIterator::DictionaryIterator(const NameTable& names) : m_names(names), m_layout(names.layout()) {
    settle(0);
}

// Stands on the first visible entry from `slot` on.
void DictionaryIterator::settle(std::size_t slot) {
    for (; slot < m_names.slots(); ++slot) {
        const NameTable::Entry& entry = m_names.at(slot);
        const bool erased =
            entry.stub != nullptr && entry.stub->has(kErased) && !entry.stub->has(kPermanentlyErased);
        if (entry.live && !erased) {
            m_slot = slot;
            m_order = entry.order;
            m_stub = entry.stub;
            return;
        }
    }
    m_done = true;
}

bool DictionaryIterator::next() {
    if (m_done)
        return false;
    std::size_t slot = m_slot + 1;
    if (m_layout != m_names.layout()) {
        m_layout = m_names.layout();
        slot = m_names.slotAfter(m_order);
    }
    settle(slot);
    return !m_done;
}

const ACHAR* DictionaryIterator::name() const {
    std::size_t slot = NameTable::kNone;
    if (!m_done && m_layout == m_names.layout() && m_names.at(m_slot).live &&
        m_names.at(m_slot).stub == m_stub)
        slot = m_slot;
    else if (!m_done)
        slot = m_names.find(m_stub);
    m_name = slot == NameTable::kNone ? std::wstring() : wideName(m_names.at(slot).name);
    return m_name.c_str();
}

Acad::ErrorStatus DictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) {
    return acdbOpenAcDbObject(object, objectId(), mode);
}

bool DictionaryIterator::setPosition(AcDbObjectId objectId) {
    const std::size_t slot = m_names.find(static_cast<AcDbStub*>(objectId));
    if (slot == NameTable::kNone)
        return false;
    m_done = false;
    m_layout = m_names.layout();
    settle(slot);
    return !m_done && m_stub == static_cast<AcDbStub*>(objectId);
}

} // namespace embedded
