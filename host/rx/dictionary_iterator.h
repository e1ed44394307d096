#pragma once

#include "rxdict.h"

#include <vector>

namespace embedded::rx {

// Walks the entries that were there when it was made, and leaves out those that have gone since.
class DictionaryIterator : public AcRxDictionaryIterator {
public:
    DictionaryIterator(const AcRxDictionary& dictionary, std::vector<Adesk::UInt32> ids);

    bool done() const override;
    bool next() override;
    AcRxObject* object() const override;
    const ACHAR* key() const override;
    Adesk::UInt32 id() const override;

private:
    const AcRxDictionary& m_dictionary;
    std::vector<Adesk::UInt32> m_ids;
    std::size_t m_at = 0;
};

} // namespace embedded::rx
