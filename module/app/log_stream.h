#pragma once

#include "app/log_level.h"
#include "base/export.h"

#include <sstream>
#include <string>

namespace orv {

// Composes messages piece by piece. A line feed at the end of what is streamed, or an empty line in it, sends
// what was gathered; a line feed between two words just joins them. Whatever is left is sent at the stream's
// end. Belongs to one function; the level is DEBUG until setLevel changes it.
class TALDORK_API LogStream {
public:
    explicit LogStream(const std::string& channel);
    ~LogStream();

    LogStream(const LogStream&) = delete;
    LogStream& operator=(const LogStream&) = delete;

    template <class T>
    LogStream& operator<<(const T& value) {
        std::ostringstream stream;
        stream << value;
        append(stream.str());
        return *this;
    }
    LogStream& operator<<(const std::string& text);
    // Wide text is converted to the system's narrow text.
    LogStream& operator<<(const std::wstring& text);
    LogStream& operator<<(const wchar_t* text);
    // These two keep the template from taking them for an address and a number.
    LogStream& operator<<(wchar_t* text) { return *this << static_cast<const wchar_t*>(text); }
    LogStream& operator<<(wchar_t character) { return *this << std::wstring(1, character); }
    LogStream& operator<<(setLevel wanted);

private:
    void append(const std::string& text);
    void flush();

    std::string m_channel;
    std::string m_pending;
    LogLevel m_level;
};

} // namespace orv
