#pragma once

#include "db/stub.h"

#include <map>
#include <vector>

namespace embedded {

// The stubs of one database by handle. Pages are handed to the process for good: they are never freed, so
// that ids outlive their database.
class StubTable {
public:
    explicit StubTable(DatabaseTag* tag) : m_tag(tag) {}

    // Null if no object has that handle.
    AcDbStub* find(std::uint64_t handle) const;
    // The stub of that handle, made if it is not there. `handle` must not be 0.
    AcDbStub& make(std::uint64_t handle);

    // Whether a number is the address of a stub of any database, gone ones included. Looks at nothing behind
    // it that is none.
    static bool isStub(std::intptr_t address);

    std::size_t size() const { return m_size; }
    std::uint64_t highestHandle() const { return m_highest; }

    // Calls `visit(AcDbStub&)` for each stub by ascending handle. Stubs made meanwhile may or may not be
    // visited.
    template <class Visit>
    void forEach(Visit visit) const {
        for (std::size_t i = 0; i < m_low.size(); ++i)
            visitPage(m_low[i], visit);
        for (auto it = m_high.begin(); it != m_high.end(); ++it)
            visitPage(it->second, visit);
    }

private:
    // Small, since a damaged file may name handles far apart: each costs a page.
    static constexpr std::uint64_t kPageSize = 16;
    // Handles below this are found through a plain vector of pages; a file may name wild ones beyond.
    static constexpr std::uint64_t kLowPages = 1u << 20;

    struct Page {
        AcDbStub stubs[kPageSize];
    };

    template <class Visit>
    static void visitPage(Page* page, Visit& visit) {
        if (page == nullptr)
            return;
        for (AcDbStub& stub : page->stubs)
            if (stub.has(kUsed))
                visit(stub);
    }

    Page*& pageSlot(std::uint64_t pageNumber);
    Page* newPage();

    DatabaseTag* m_tag;
    std::vector<Page*> m_low;
    std::map<std::uint64_t, Page*> m_high;
    // Pages come from slabs that double in size, so that a walk by handle runs through memory in one
    // direction.
    Page* m_slab = nullptr;
    std::size_t m_slabLeft = 0;
    std::size_t m_slabSize = 1;
    std::size_t m_size = 0;
    std::uint64_t m_highest = 0;
};

} // namespace embedded
