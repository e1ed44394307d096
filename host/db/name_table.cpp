#include "db/name_table.h"

#include "platform/text.h"

#include <algorithm>

namespace embedded {

namespace {

// What a letter is compared by. Nearly every name is ASCII and needs no table.
char32_t foldedLetter(char32_t c) {
    if (c < 0x80)
        return c >= U'A' && c <= U'Z' ? c + 0x20 : c;
    // Where wide characters have 16 bits, what lies beyond them has no case that matters to names.
    if (sizeof(wchar_t) < sizeof(char32_t) && c > 0xFFFF)
        return c;
    return static_cast<char32_t>(platform::foldCase(static_cast<wchar_t>(c)));
}

// Reads one character of well-formed UTF-8 as NameKey writes it.
char32_t nextCharacter(const char*& p, const char* end) {
    const auto byte = [&](int i) { return p + i < end ? static_cast<unsigned char>(p[i]) & 0x3F : 0; };
    const unsigned char lead = static_cast<unsigned char>(*p);
    char32_t c;
    int length;
    if (lead < 0x80) {
        c = lead;
        length = 1;
    } else if (lead < 0xE0) {
        c = (lead & 0x1F) << 6 | byte(1);
        length = 2;
    } else if (lead < 0xF0) {
        c = (lead & 0x0F) << 12 | byte(1) << 6 | byte(2);
        length = 3;
    } else {
        c = (lead & 0x07) << 18 | byte(1) << 12 | byte(2) << 6 | byte(3);
        length = 4;
    }
    p = std::min(p + length, end);
    return c;
}

bool isPlain(const wchar_t* name, std::size_t& length) {
    length = 0;
    while (name[length] != 0) {
        if (static_cast<char32_t>(name[length]) >= 0x80)
            return false;
        ++length;
    }
    return true;
}

} // namespace

std::uint32_t hashName(std::string_view utf8) {
    std::uint32_t hash = 2166136261u;
    const char* p = utf8.data();
    const char* end = p + utf8.size();
    while (p < end) {
        hash ^= static_cast<std::uint32_t>(foldedLetter(nextCharacter(p, end)));
        hash *= 16777619u;
    }
    return hash;
}

bool sameName(std::string_view a, std::string_view b) {
    if (a == b)
        return true;
    const char* p = a.data();
    const char* q = b.data();
    const char* pEnd = p + a.size();
    const char* qEnd = q + b.size();
    while (p < pEnd && q < qEnd) {
        if (foldedLetter(nextCharacter(p, pEnd)) != foldedLetter(nextCharacter(q, qEnd)))
            return false;
    }
    return p == pEnd && q == qEnd;
}

std::wstring wideName(std::string_view utf8) {
    bool plain =
        std::all_of(utf8.begin(), utf8.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    if (plain)
        return std::wstring(utf8.begin(), utf8.end());
    return platform::fromUtf8(utf8);
}

NameKey::NameKey(const wchar_t* name) {
    std::size_t length = 0;
    if (isPlain(name, length) && length <= sizeof m_buffer) {
        for (std::size_t i = 0; i < length; ++i)
            m_buffer[i] = static_cast<char>(name[i]);
        m_text = std::string_view(m_buffer, length);
    } else {
        m_long = platform::toUtf8(name);
        m_text = m_long;
    }
    m_hash = hashName(m_text);
}

std::size_t NameTable::find(const NameKey& key) const {
    if (m_byName.empty()) {
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            const Entry& entry = m_entries[i];
            if (entry.live && entry.hash == key.hash() && sameName(entry.name, key.text()))
                return i;
        }
        return kNone;
    }
    const std::size_t mask = m_byName.size() - 1;
    for (std::size_t at = key.hash() & mask; m_byName[at] != 0; at = (at + 1) & mask) {
        const Entry& entry = m_entries[m_byName[at] - 1];
        if (entry.live && entry.hash == key.hash() && sameName(entry.name, key.text()))
            return m_byName[at] - 1;
    }
    return kNone;
}

namespace {
std::size_t hashOf(const AcDbStub* stub) {
    const auto bits = reinterpret_cast<std::uintptr_t>(stub) / sizeof(AcDbStub);
    return static_cast<std::size_t>(bits * 0x9E3779B97F4A7C15ull >> 20);
}
} // namespace

std::size_t NameTable::find(const AcDbStub* stub) const {
    for (std::size_t next : {m_lastById, m_lastById + 1}) {
        if (next < m_entries.size() && m_entries[next].live && m_entries[next].stub == stub) {
            m_lastById = next;
            return next;
        }
    }
    if (m_entries.size() <= kSmall) {
        for (std::size_t i = 0; i < m_entries.size(); ++i)
            if (m_entries[i].live && m_entries[i].stub == stub)
                return m_lastById = i;
        return kNone;
    }
    if (m_byId.empty())
        rebuildById();
    const std::size_t mask = m_byId.size() - 1;
    for (std::size_t at = hashOf(stub) & mask; m_byId[at] != 0; at = (at + 1) & mask) {
        const Entry& entry = m_entries[m_byId[at] - 1];
        if (entry.live && entry.stub == stub)
            return m_lastById = m_byId[at] - 1;
    }
    return kNone;
}

void NameTable::index(std::size_t slot) {
    const std::size_t mask = m_byName.size() - 1;
    std::size_t at = m_entries[slot].hash & mask;
    while (m_byName[at] != 0)
        at = (at + 1) & mask;
    m_byName[at] = static_cast<std::uint32_t>(slot + 1);
}

void NameTable::indexById(std::size_t slot) const {
    const std::size_t mask = m_byId.size() - 1;
    std::size_t at = hashOf(m_entries[slot].stub) & mask;
    while (m_byId[at] != 0)
        at = (at + 1) & mask;
    m_byId[at] = static_cast<std::uint32_t>(slot + 1);
}

void NameTable::rebuild(std::size_t room) {
    std::size_t capacity = 32;
    while (capacity < room * 2)
        capacity *= 2;
    m_byName.assign(capacity, 0);
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        index(i);
    if (!m_byId.empty())
        rebuildById();
}

void NameTable::rebuildById() const {
    std::size_t capacity = 32;
    while (capacity < (m_entries.size() + 1) * 2)
        capacity *= 2;
    m_byId.assign(capacity, 0);
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        indexById(i);
}

std::size_t NameTable::append(std::string_view name, std::uint32_t hash, AcDbStub* stub) {
    const std::size_t slot = m_entries.size();
    // Most tables hold one entry for ever: the first one gets just its room.
    if (slot == 0)
        m_entries.reserve(1);
    m_entries.push_back({std::string(name), stub, hash, m_nextOrder++, true});
    ++m_live;
    if (m_byName.empty() ? slot >= kSmall : m_entries.size() * 2 > m_byName.size()) {
        rebuild(m_entries.size() + 1);
        return slot;
    }
    if (!m_byName.empty())
        index(slot);
    if (!m_byId.empty()) {
        if (m_entries.size() * 2 > m_byId.size())
            rebuildById();
        else
            indexById(slot);
    }
    return slot;
}

std::size_t NameTable::slotAfter(std::uint32_t order) const {
    auto it = std::upper_bound(m_entries.begin(), m_entries.end(), order,
                               [](std::uint32_t value, const Entry& entry) { return value < entry.order; });
    return static_cast<std::size_t>(it - m_entries.begin());
}

void NameTable::insert(std::string_view name, AcDbStub* stub, std::uint32_t order) {
    const std::size_t slot = slotAfter(order);
    if (slot > 0 && m_entries[slot - 1].order == order) {
        // The gap that the entry left is still there.
        m_entries[slot - 1] = {std::string(name), stub, hashName(name), order, true};
    } else {
        m_entries.insert(m_entries.begin() + static_cast<std::ptrdiff_t>(slot),
                         {std::string(name), stub, hashName(name), order, true});
    }
    m_nextOrder = std::max(m_nextOrder, order + 1);
    ++m_live;
    ++m_layout;
    m_byId.clear();
    if (!m_byName.empty() || m_entries.size() > kSmall)
        rebuild(m_entries.size() + 1);
}

void NameTable::replace(std::size_t slot, AcDbStub* stub) {
    m_entries[slot].stub = stub;
    m_byId.clear();
}

void NameTable::remove(std::size_t slot) {
    m_entries[slot].live = false;
    --m_live;
    if (m_live == 0) {
        const std::uint32_t next = m_nextOrder;
        clear();
        m_nextOrder = next;
    } else if (m_entries.size() > 32 && m_live * 2 < m_entries.size()) {
        cleanUp();
    }
}

void NameTable::cleanUp() {
    m_entries.erase(
        std::remove_if(m_entries.begin(), m_entries.end(), [](const Entry& e) { return !e.live; }),
        m_entries.end());
    ++m_layout;
    m_byId.clear();
    rebuild(m_entries.size() + 1);
}

void NameTable::clear() {
    m_entries.clear();
    m_byName.clear();
    m_byId.clear();
    m_live = 0;
    m_nextOrder = 1;
    ++m_layout;
}

} // namespace embedded
