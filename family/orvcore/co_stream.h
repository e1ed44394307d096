#pragma once

#include "orvcore/export.h"

#include <functional>
#include <string>

// The stream for lines that the user has to see. Texts and numbers are gathered until `endl`, which hands the
// whole line to the sink.
class ORVCORE_API ORV_COStream {
public:
    // Gets each line without its end.
    using Sink = std::function<void(const std::wstring& line)>;

    ORV_COStream();

    ORV_COStream& operator<<(const wchar_t* text);
    ORV_COStream& operator<<(const std::wstring& text);
    // Narrow text is the system's (UTF-8 off Windows); a byte that is none stands for the character of its
    // number.
    ORV_COStream& operator<<(const char* text);
    ORV_COStream& operator<<(const std::string& text);
    ORV_COStream& operator<<(int number);
    ORV_COStream& operator<<(ORV_COStream& (*manipulator)(ORV_COStream&));

    // Ends the line. A line that is ended empty is handed on too.
    void endLine();

    // Replaces the sink and answers the one before. An empty one brings back the default: the host's console.
    Sink setSink(Sink sink);

private:
    std::wstring m_line;
    Sink m_sink;
};

// Ends the line of a stream.
ORVCORE_API ORV_COStream& endl(ORV_COStream& stream);

// The stream of warnings and failures.
extern ORVCORE_API ORV_COStream orvBeep;
