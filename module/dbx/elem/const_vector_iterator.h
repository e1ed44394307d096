#pragma once

namespace orv {

// A walk over a sequence that belongs to somebody else, from the front. Valid until the sequence is changed.
template <class Sequence>
class ConstVectorIterator {
public:
    using const_iterator = typename Sequence::const_iterator;
    using value_type = typename Sequence::value_type;

    ConstVectorIterator(const_iterator begin, const_iterator end)
        : m_begin(begin), m_end(end), m_current(begin) {}
    explicit ConstVectorIterator(const Sequence& sequence)
        : ConstVectorIterator(sequence.begin(), sequence.end()) {}

    // The walk is over: there is no present entry.
    bool done() const { return m_current == m_end; }
    const value_type& get() const { return *m_current; }
    void next() { ++m_current; }
    void start() { m_current = m_begin; }

    // All of the range, wherever the walk is.
    const_iterator begin() const { return m_begin; }
    const_iterator end() const { return m_end; }

private:
    const_iterator m_begin;
    const_iterator m_end;
    const_iterator m_current;
};

} // namespace orv
