#include "rx/dictionary.h"

#include "platform/text.h"
#include "rx/dictionary_iterator.h"
#include "rxclass.h"

#include <utility>

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDictionary, AcRxObject)

AcRxDictionary* acrxNewDictionary(bool caseSensitive, bool deletesObjects) {
    return new embedded::rx::Dictionary(caseSensitive, deletesObjects);
}

namespace embedded::rx {

Dictionary::Dictionary(bool caseSensitive, bool deletesObjects)
    : m_caseSensitive(caseSensitive), m_deletesObjects(deletesObjects) {}

Dictionary::~Dictionary() {
    for (auto& entry : m_entries)
        release(entry.second.object);
}

std::wstring Dictionary::folded(const ACHAR* key) const {
    const std::wstring text = key == nullptr ? L"" : key;
    return m_caseSensitive ? text : platform::foldCase(std::wstring_view(text));
}

// What the caller gets of an object that leaves.
AcRxObject* Dictionary::release(AcRxObject* object) const {
    if (!m_deletesObjects)
        return object;
    delete object;
    return nullptr;
}

AcRxObject* Dictionary::put(Entry& entry, AcRxObject* object) {
    ++m_changes;
    AcRxObject* before = std::exchange(entry.object, object);
    return before == object ? nullptr : release(before);
}

AcRxObject* Dictionary::at(const ACHAR* key) const { return at(idAt(key)); }

AcRxObject* Dictionary::at(Adesk::UInt32 id) const {
    const auto found = m_entries.find(id);
    return found == m_entries.end() ? nullptr : found->second.object;
}

AcRxObject* Dictionary::atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id) {
    Adesk::UInt32& known = m_ids[folded(key)];
    if (known == 0) {
        known = ++m_lastId;
        m_entries[known] = {key == nullptr ? L"" : key, nullptr};
    }
    id = known;
    return put(m_entries[id], object);
}

AcRxObject* Dictionary::atPut(Adesk::UInt32 id, AcRxObject* object) {
    const auto found = m_entries.find(id);
    return found == m_entries.end() ? nullptr : put(found->second, object);
}

bool Dictionary::resetKey(const ACHAR* oldKey, const ACHAR* newKey) { return resetKey(idAt(oldKey), newKey); }

bool Dictionary::resetKey(Adesk::UInt32 id, const ACHAR* newKey) {
    const auto found = m_entries.find(id);
    const Adesk::UInt32 taken = idAt(newKey);
    if (found == m_entries.end() || newKey == nullptr || (taken != 0 && taken != id))
        return false;
    m_ids.erase(folded(found->second.key.c_str()));
    found->second.key = newKey;
    m_ids[folded(newKey)] = id;
    ++m_changes;
    return true;
}

AcRxObject* Dictionary::remove(const ACHAR* key) { return remove(idAt(key)); }

AcRxObject* Dictionary::remove(Adesk::UInt32 id) {
    const auto found = m_entries.find(id);
    if (found == m_entries.end())
        return nullptr;
    AcRxObject* object = found->second.object;
    m_ids.erase(folded(found->second.key.c_str()));
    m_entries.erase(found);
    ++m_changes;
    return release(object);
}

bool Dictionary::has(const ACHAR* key) const { return idAt(key) != 0; }
bool Dictionary::has(Adesk::UInt32 id) const { return m_entries.count(id) != 0; }

Adesk::UInt32 Dictionary::idAt(const ACHAR* key) const {
    const auto found = m_ids.find(folded(key));
    return found == m_ids.end() ? 0 : found->second;
}

const ACHAR* Dictionary::keyAt(Adesk::UInt32 id) const {
    const auto found = m_entries.find(id);
    return found == m_entries.end() ? nullptr : found->second.key.c_str();
}

Adesk::UInt32 Dictionary::numEntries() const { return static_cast<Adesk::UInt32>(m_entries.size()); }

AcRxDictionaryIterator* Dictionary::newIterator(AcRx::DictIterType type) {
    std::vector<Adesk::UInt32> ids;
    if (type == AcRx::kDictSorted)
        for (const auto& entry : m_ids)
            ids.push_back(entry.second);
    else
        for (const auto& entry : m_entries)
            ids.push_back(entry.first);
    return new DictionaryIterator(*this, std::move(ids));
}

} // namespace embedded::rx
