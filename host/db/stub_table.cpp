#include "db/stub_table.h"

#include <algorithm>

namespace embedded {

namespace {

// Keeps every slab reachable for the life of the process; see StubTable. The slab's stubs by its first byte.
std::map<std::intptr_t, std::size_t>& slabKeeper() {
    static auto* keeper = new std::map<std::intptr_t, std::size_t>;
    return *keeper;
}

} // namespace

AcDbStub* StubTable::find(std::uint64_t handle) const {
    const std::uint64_t number = handle / kPageSize;
    Page* page = nullptr;
    if (number < kLowPages) {
        if (number < m_low.size())
            page = m_low[number];
    } else {
        auto it = m_high.find(number);
        if (it != m_high.end())
            page = it->second;
    }
    if (page == nullptr)
        return nullptr;
    AcDbStub& stub = page->stubs[handle % kPageSize];
    return stub.has(kUsed) ? &stub : nullptr;
}

bool StubTable::isStub(std::intptr_t address) {
    const auto& slabs = slabKeeper();
    auto slab = slabs.upper_bound(address);
    if (slab == slabs.begin())
        return false;
    --slab;
    const auto offset = static_cast<std::size_t>(address - slab->first);
    return offset % sizeof(AcDbStub) == 0 && offset / sizeof(AcDbStub) < slab->second &&
           reinterpret_cast<const AcDbStub*>(address)->has(kUsed);
}

StubTable::Page*& StubTable::pageSlot(std::uint64_t pageNumber) {
    if (pageNumber >= kLowPages)
        return m_high[pageNumber];
    if (pageNumber >= m_low.size())
        m_low.resize(std::max<std::size_t>(pageNumber + 1, m_low.size() * 3 / 2), nullptr);
    return m_low[pageNumber];
}

StubTable::Page* StubTable::newPage() {
    constexpr std::size_t kLargestSlab = 256;
    if (m_slabLeft == 0) {
        m_slab = new Page[m_slabSize];
        slabKeeper()[reinterpret_cast<std::intptr_t>(m_slab)] = m_slabSize * kPageSize;
        m_slabLeft = m_slabSize;
        m_slabSize = std::min(m_slabSize * 2, kLargestSlab);
    }
    --m_slabLeft;
    return m_slab++;
}

AcDbStub& StubTable::make(std::uint64_t handle) {
    Page*& page = pageSlot(handle / kPageSize);
    if (page == nullptr)
        page = newPage();
    AcDbStub& stub = page->stubs[handle % kPageSize];
    if (!stub.has(kUsed)) {
        stub.tag = m_tag;
        stub.handle = handle;
        stub.set(kUsed);
        ++m_size;
        m_highest = std::max(m_highest, handle);
    }
    return stub;
}

} // namespace embedded
