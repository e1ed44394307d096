#include "db/symbol_index.h"

#include "db/database_core.h"
#include "db/object_access.h"

#include <algorithm>

namespace embedded {

std::size_t SymbolIndex::slotOf(const AcDbStub* stub) const {
    return static_cast<std::size_t>(std::find(m_slots.begin(), m_slots.end(), stub) - m_slots.begin());
}

void SymbolIndex::append(AcDbStub* stub) { m_slots.push_back(stub); }

void SymbolIndex::setLeading(const std::vector<AcDbStub*>& stubs) {
    m_slots.erase(m_slots.begin(), m_slots.begin() + static_cast<std::ptrdiff_t>(m_leading));
    m_slots.insert(m_slots.begin(), stubs.begin(), stubs.end());
    m_leading = stubs.size();
    m_byName.clear();
    m_named = 0;
}

void SymbolIndex::clear() {
    m_slots.clear();
    m_leading = 0;
    m_byName.clear();
    m_named = 0;
}

void SymbolIndex::buildNames() const {
    for (; m_named < m_slots.size(); ++m_named) {
        const AcDbSymbolTableRecord* record = SymbolAccess::record(m_slots[m_named]);
        if (record != nullptr)
            m_byName.emplace(NameKey(SymbolAccess::name(*record).kACharPtr()).hash(),
                             static_cast<std::uint32_t>(m_named));
    }
}

AcDbStub* SymbolIndex::find(const NameKey& key, bool erasedToo) const {
    buildNames();
    std::size_t live = m_slots.size();
    std::size_t erased = m_slots.size();
    const auto range = m_byName.equal_range(key.hash());
    for (auto it = range.first; it != range.second; ++it) {
        AcDbStub* stub = m_slots[it->second];
        std::size_t& first = objectIsLive(stub) ? live : erased;
        if (it->second >= first || !objectExists(stub))
            continue;
        const AcDbSymbolTableRecord* record = SymbolAccess::record(stub);
        if (record != nullptr &&
            sameName(key.text(), NameKey(SymbolAccess::name(*record).kACharPtr()).text()))
            first = it->second;
    }
    if (live < m_slots.size())
        return m_slots[live];
    return erasedToo && erased < m_slots.size() ? m_slots[erased] : nullptr;
}

void SymbolIndex::noteName(AcDbStub* stub, const ACHAR* name) {
    const std::size_t slot = slotOf(stub);
    if (slot < m_named)
        m_byName.emplace(NameKey(name).hash(), static_cast<std::uint32_t>(slot));
}

AcDbSymbolTableRecord* SymbolAccess::record(AcDbStub* stub) {
    if (!objectExists(stub) || stub->tag->core == nullptr)
        return nullptr;
    AcDbObject* object = nullptr;
    if (stub->tag->core->resident(*stub, object) != Acad::eOk)
        return nullptr;
    return AcDbSymbolTableRecord::cast(object);
}

void SymbolAccess::nameChanged(const AcDbSymbolTableRecord& record) {
    AcDbStub* owner = record.ownerId();
    AcDbSymbolTable* table = owner != nullptr ? AcDbSymbolTable::cast(owner->object) : nullptr;
    if (table != nullptr)
        index(*table).noteName(record.objectId(), name(record).kACharPtr());
}

void SymbolAccess::addWithHandle(AcDbSymbolTable& table, AcDbSymbolTableRecord& record, std::uint64_t handle,
                                 bool leading) {
    AcDbStub* stub = coreOf(table.objectId())->addWithHandle(&record, handle);
    ObjectAccess::setOwner(record, table.objectId());
    SymbolIndex& records = index(table);
    if (!leading) {
        records.append(stub);
        return;
    }
    std::vector<AcDbStub*> stubs;
    for (std::size_t slot = 0; slot < records.leading(); ++slot)
        stubs.push_back(records.at(slot));
    stubs.push_back(stub);
    records.setLeading(stubs);
}

} // namespace embedded
