#include "rx/dictionary_iterator.h"

#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDictionaryIterator, AcRxIterator)

namespace embedded::rx {

DictionaryIterator::DictionaryIterator(const AcRxDictionary& dictionary, std::vector<Adesk::UInt32> ids)
    : m_dictionary(dictionary), m_ids(std::move(ids)) {}

bool DictionaryIterator::done() const { return m_at >= m_ids.size(); }

bool DictionaryIterator::next() {
    do
        m_at += done() ? 0 : 1;
    while (!done() && !m_dictionary.has(m_ids[m_at]));
    return !done();
}

AcRxObject* DictionaryIterator::object() const { return done() ? nullptr : m_dictionary.at(m_ids[m_at]); }
const ACHAR* DictionaryIterator::key() const { return done() ? nullptr : m_dictionary.keyAt(m_ids[m_at]); }
Adesk::UInt32 DictionaryIterator::id() const { return done() ? 0 : m_ids[m_at]; }

} // namespace embedded::rx
