#pragma once

#include "db/name_table.h"
#include "db/stub.h"
#include "symbols/symbol_table.h"

#include <unordered_map>
#include <vector>

namespace embedded {

// Whether an object is there, or can be made from its bytes. An erased one is; one that is gone for good is
// not.
inline bool objectExists(const AcDbStub* stub) {
    return stub != nullptr && !stub->has(kPermanentlyErased) &&
           (stub->object != nullptr || stub->fileIndex != kNoFileIndex);
}

inline bool objectIsLive(const AcDbStub* stub) { return objectExists(stub) && !stub->has(kErased); }

// The records of a table in its order. A record is never taken out: undoing an addition, like erasing, leaves
// it here erased, and what is erased is passed over.
class SymbolIndex {
public:
    // Slots may hold null, where a file has a gap.
    std::size_t slots() const { return m_slots.size(); }
    AcDbStub* at(std::size_t slot) const { return m_slots[slot]; }
    std::size_t slotOf(const AcDbStub* stub) const;
    // The leading slots that the file names apart from the others (model space, "ByLayer").
    std::size_t leading() const { return m_leading; }

    void append(AcDbStub* stub);
    void setLeading(const std::vector<AcDbStub*>& stubs);
    void clear();

    // The first record of that name: a live one, or with `erasedToo` an erased one where no live one has it.
    AcDbStub* find(const NameKey& key, bool erasedToo) const;
    // A record has got another name.
    void noteName(AcDbStub* stub, const ACHAR* name);

private:
    void buildNames() const;

    std::vector<AcDbStub*> m_slots;
    std::size_t m_leading = 0;
    // Slots by the hash of the name. Entries of names that a record once had stay: what is found is compared
    // with the record's present name. Built at the first look-up, since that opens all records.
    mutable std::unordered_multimap<std::uint32_t, std::uint32_t> m_byName;
    mutable std::size_t m_named = 0; // slots that are in there
};

// What the host's own rooms may touch of symbol tables and their records.
struct SymbolAccess {
    // The record of a stub, made from its bytes if need be; null if it cannot be.
    static AcDbSymbolTableRecord* record(AcDbStub* stub);
    static const AcString& name(const AcDbSymbolTableRecord& record) { return record.m_fields.name; }
    // Without the checks and the history of setName.
    static void setName(AcDbSymbolTableRecord& record, const ACHAR* name) { record.m_fields.name = name; }
    static void nameChanged(const AcDbSymbolTableRecord& record);
    static bool isReferenced(const AcDbSymbolTableRecord& record) { return record.m_fields.referenced; }
    static bool allowsSameNames(const AcDbSymbolTable& table) { return table.allowsSameNames(); }
    static SymbolIndex& index(const AcDbSymbolTable& table) { return *table.m_index; }
    // Puts a fresh record with its handle into a table, whatever its name. `leading` puts it among those that
    // the file names apart.
    static void addWithHandle(AcDbSymbolTable& table, AcDbSymbolTableRecord& record, std::uint64_t handle,
                              bool leading = false);
};

} // namespace embedded
