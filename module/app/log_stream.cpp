#include "app/log_stream.h"

#include "app/log.h"
#include "platform/text.h"

namespace orv {

LogStream::LogStream(const std::string& channel) : m_channel(channel), m_level(kLogDebug) {}

LogStream::~LogStream() {
    try {
        flush();
    } catch (...) {
        // A listener's failure must not end the program from here.
    }
}

LogStream& LogStream::operator<<(const std::string& text) {
    append(text);
    return *this;
}

LogStream& LogStream::operator<<(const std::wstring& text) { return *this << platform::toSystem(text); }

LogStream& LogStream::operator<<(const wchar_t* text) { return *this << std::wstring(text); }

LogStream& LogStream::operator<<(setLevel wanted) {
    m_level = wanted.level;
    return *this;
}

void LogStream::append(const std::string& text) {
    std::string::size_type begin = 0;
    for (;;) {
        const std::string::size_type end = text.find('\n', begin);
        const std::string piece = text.substr(begin, end == std::string::npos ? end : end - begin);
        if (piece.empty())
            flush();
        else
            m_pending += piece;
        if (end == std::string::npos)
            return;
        begin = end + 1;
    }
}

void LogStream::flush() {
    if (m_pending.empty())
        return;
    // Cleared also when a listener throws: a message is sent once.
    std::string message;
    message.swap(m_pending);
    log(m_channel, m_level, message);
}

} // namespace orv
