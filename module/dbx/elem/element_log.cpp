#include "dbx/elem/element_log.h"

#include <algorithm>

namespace orv {

namespace {

bool hasAll(const ElementLog::Entry& entry, unsigned int mask) { return (entry.extra & mask) == mask; }

} // namespace

ElementLog::ElementLog() = default;
ElementLog::~ElementLog() = default;

void ElementLog::append(LogLevel level, std::uint64_t msgId, unsigned int extra) {
    append(Entry{level, msgId, {}, extra});
}

void ElementLog::append(LogLevel level, std::uint64_t msgId, const boost::any& argument, unsigned int extra) {
    append(level, msgId, extra);
    m_entries.back().arguments.push_back(argument);
}

void ElementLog::append(LogLevel level, std::uint64_t msgId, const std::deque<boost::any>& arguments,
                        unsigned int extra) {
    append(Entry{level, msgId, arguments, extra});
}

void ElementLog::append(const Entry& entry) { m_entries.push_back(entry); }

bool ElementLog::hasMsgId(std::uint64_t msgId) const {
    return std::any_of(begin(), end(), [msgId](const Entry& entry) { return entry.msgId == msgId; });
}

std::size_t ElementLog::count(unsigned int mask) const {
    return static_cast<std::size_t>(
        std::count_if(begin(), end(), [mask](const Entry& entry) { return hasAll(entry, mask); }));
}

void ElementLog::remove(std::uint64_t msgId) {
    const auto taken = std::remove_if(m_entries.begin(), m_entries.end(),
                                      [msgId](const Entry& entry) { return entry.msgId == msgId; });
    m_entries.erase(taken, m_entries.end());
}

void ElementLog::clear() { m_entries.clear(); }

void ElementLog::clear(unsigned int mask) {
    const auto taken = std::remove_if(m_entries.begin(), m_entries.end(),
                                      [mask](const Entry& entry) { return hasAll(entry, mask); });
    m_entries.erase(taken, m_entries.end());
}

} // namespace orv
