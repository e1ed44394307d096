#pragma once

#include "db/name_table.h"
#include "dbdict.h"

namespace embedded {

// Remembers the order number of its entry, which survives that slots move.
class DictionaryIterator : public AcDbDictionaryIterator {
public:
    explicit DictionaryIterator(const NameTable& names);

    const ACHAR* name() const override;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode) override;
    AcDbObjectId objectId() const override { return m_done ? AcDbObjectId() : AcDbObjectId(m_stub); }
    bool done() const override { return m_done; }
    bool next() override;
    bool setPosition(AcDbObjectId objectId) override;

private:
    void settle(std::size_t slot);

    const NameTable& m_names;
    std::uint32_t m_layout;
    std::size_t m_slot = 0;
    std::uint32_t m_order = 0;
    AcDbStub* m_stub = nullptr;
    bool m_done = false;
    mutable std::wstring m_name;
};

} // namespace embedded
