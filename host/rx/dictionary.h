#pragma once

#include "rxdict.h"

#include <map>
#include <string>

namespace embedded::rx {

class Dictionary : public AcRxDictionary {
public:
    Dictionary(bool caseSensitive, bool deletesObjects);
    ~Dictionary() override;

    AcRxObject* at(const ACHAR* key) const override;
    AcRxObject* at(Adesk::UInt32 id) const override;
    AcRxObject* atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id) override;
    AcRxObject* atPut(Adesk::UInt32 id, AcRxObject* object) override;
    bool resetKey(const ACHAR* oldKey, const ACHAR* newKey) override;
    bool resetKey(Adesk::UInt32 id, const ACHAR* newKey) override;
    AcRxObject* remove(const ACHAR* key) override;
    AcRxObject* remove(Adesk::UInt32 id) override;
    bool has(const ACHAR* key) const override;
    bool has(Adesk::UInt32 id) const override;
    Adesk::UInt32 idAt(const ACHAR* key) const override;
    const ACHAR* keyAt(Adesk::UInt32 id) const override;
    Adesk::UInt32 numEntries() const override;
    AcRxDictionaryIterator* newIterator(AcRx::DictIterType type) override;
    bool deletesObjects() const override { return m_deletesObjects; }
    bool isCaseSensitive() const override { return m_caseSensitive; }

    // Goes up with each entry that comes, goes or is put again.
    unsigned changes() const { return m_changes; }

private:
    struct Entry {
        std::wstring key;
        AcRxObject* object;
    };

    std::wstring folded(const ACHAR* key) const;
    AcRxObject* release(AcRxObject* object) const;
    AcRxObject* put(Entry& entry, AcRxObject* object);

    const bool m_caseSensitive;
    const bool m_deletesObjects;
    unsigned m_changes = 0;
    Adesk::UInt32 m_lastId = 0;
    std::map<Adesk::UInt32, Entry> m_entries;
    std::map<std::wstring, Adesk::UInt32> m_ids;
};

} // namespace embedded::rx
