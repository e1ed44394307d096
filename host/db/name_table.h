#pragma once

#include "db/stub.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace embedded {

// A name as the tables keep it: UTF-8, so that the short names of records need no heap. Built on the stack
// for a look up; compares without regard to case.
class NameKey {
public:
    explicit NameKey(const wchar_t* name);

    std::string_view text() const { return m_text; }
    std::uint32_t hash() const { return m_hash; }

private:
    char m_buffer[48];
    std::string m_long;
    std::string_view m_text;
    std::uint32_t m_hash;
};

std::uint32_t hashName(std::string_view utf8);
bool sameName(std::string_view a, std::string_view b);
std::wstring wideName(std::string_view utf8);

// Objects by name and names by object, in the order in which they were put in. Small tables are searched;
// larger ones get indexes, the one by object when it is first asked for.
class NameTable {
public:
    struct Entry {
        std::string name;
        AcDbStub* stub;
        std::uint32_t hash;
        std::uint32_t order; // ascending; survives removal and is given back by undo
        bool live;           // a removed entry stays as a gap until the next clean-up
    };

    static constexpr std::size_t kNone = ~std::size_t(0);

    std::size_t find(const NameKey& key) const;
    std::size_t find(const AcDbStub* stub) const;
    const Entry& at(std::size_t index) const { return m_entries[index]; }

    // The name must not be there. Returns the index.
    std::size_t append(std::string_view name, std::uint32_t hash, AcDbStub* stub);
    // Puts an entry to the place that it had. The name must not be there.
    void insert(std::string_view name, AcDbStub* stub, std::uint32_t order);
    void replace(std::size_t index, AcDbStub* stub);
    void remove(std::size_t index);
    void clear();

    std::size_t size() const { return m_live; }
    // All entries including gaps: walk 0 to slots() and look at `live`.
    std::size_t slots() const { return m_entries.size(); }
    // The first slot whose order is above `order`.
    std::size_t slotAfter(std::uint32_t order) const;
    // Changes whenever slots move.
    std::uint32_t layout() const { return m_layout; }

private:
    static constexpr std::size_t kSmall = 8;

    void index(std::size_t slot);
    void indexById(std::size_t slot) const;
    void rebuild(std::size_t room);
    void rebuildById() const;
    void cleanUp();

    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_byName;       // slot + 1, 0 free; open addressing, a power of two
    mutable std::vector<std::uint32_t> m_byId; // likewise; empty until asked for
    std::size_t m_live = 0;
    std::uint32_t m_nextOrder = 1;
    std::uint32_t m_layout = 0;
    mutable std::size_t m_lastById = 0; // where the last look-up by object ended; walks ask in order
};

} // namespace embedded
