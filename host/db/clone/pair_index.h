#pragma once

#include "db/stub.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace embedded {

// Finds a pair of a cloning by its original. Every id of every clone is looked up here, so the slots lie in
// one row and are probed one behind the other.
class PairIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    // kNone if there is none.
    std::uint32_t find(const AcDbStub* key) const {
        return m_slots.empty() ? kNone : m_slots[slotOf(key)].pair;
    }

    // False if there is one already.
    bool add(const AcDbStub* key, std::uint32_t pair) {
        if ((m_used + 1) * 2 > m_slots.size())
            grow();
        Slot& slot = m_slots[slotOf(key)];
        if (slot.pair != kNone)
            return false;
        m_used += slot.key == nullptr ? 1 : 0;
        slot = {key, pair};
        return true;
    }

    void remove(const AcDbStub* key) {
        // The key stays, so that those behind it are still found.
        if (!m_slots.empty())
            m_slots[slotOf(key)].pair = kNone;
    }

    void clear() {
        m_slots.clear();
        m_used = 0;
    }

private:
    struct Slot {
        const AcDbStub* key = nullptr;
        std::uint32_t pair = kNone;
    };

    // The slot of the key, or the free one where it would stand.
    std::size_t slotOf(const AcDbStub* key) const {
        const std::size_t mask = m_slots.size() - 1;
        const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key));
        std::size_t at = static_cast<std::size_t>(address * 0x9E3779B97F4A7C15u >> 32) & mask;
        while (m_slots[at].key != nullptr && m_slots[at].key != key)
            at = (at + 1) & mask;
        return at;
    }

    void grow() {
        constexpr std::size_t kFirst = 64;
        std::vector<Slot> before(m_slots.empty() ? kFirst : m_slots.size() * 2);
        before.swap(m_slots);
        m_used = 0;
        for (const Slot& slot : before) {
            if (slot.key == nullptr || slot.pair == kNone)
                continue;
            m_slots[slotOf(slot.key)] = slot;
            ++m_used;
        }
    }

    std::vector<Slot> m_slots; // a power of two of them, at most half of them in use
    std::size_t m_used = 0;
};

} // namespace embedded
