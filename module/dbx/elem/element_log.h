#pragma once

#include "app/log_level.h"
#include "base/export.h"

#include <boost/any.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>

namespace orv {

// Messages about an element, in the order of appending. They are data: they carry a number and arguments
// instead of a text, and the front end words them.
class TALDORK_API ElementLog {
public:
    struct Entry {
        LogLevel level;
        std::uint64_t msgId;              // the low 32 bits are what a drawing keeps
        std::deque<boost::any> arguments; // to be put into the message
        unsigned int extra;               // bits by which entries are selected
    };
    using const_iterator = std::deque<Entry>::const_iterator;

    ElementLog();
    ~ElementLog();

    // Arguments are of the types that properties can have (docs/properties.md): an element whose log has one
    // of another type is written without it, and that log cannot be read again: the element stays a proxy.
    void append(LogLevel level, std::uint64_t msgId, unsigned int extra);
    void append(LogLevel level, std::uint64_t msgId, const boost::any& argument, unsigned int extra);
    void append(LogLevel level, std::uint64_t msgId, const std::deque<boost::any>& arguments,
                unsigned int extra);
    void append(const Entry& entry);

    // Whether an entry has this number.
    bool hasMsgId(std::uint64_t msgId) const;
    // The entries that have all bits of `mask`; 0 selects every entry.
    std::size_t count(unsigned int mask) const;

    // Take entries out; the others keep their order.
    void remove(std::uint64_t msgId);
    void clear();
    void clear(unsigned int mask);

    bool empty() const { return m_entries.empty(); }
    std::size_t size() const { return m_entries.size(); }
    // The entries in the order of appending. The iterators hold until an entry is appended or taken out.
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }

private:
    std::deque<Entry> m_entries;
};

} // namespace orv
