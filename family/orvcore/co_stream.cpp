#include "orvcore/co_stream.h"

#include "acutads.h"
#include "platform/text.h"

#include <utility>

namespace {

void printOnConsole(const std::wstring& line) { acutPrintf(L"\n%ls\n", line.c_str()); }

} // namespace

ORV_COStream orvBeep;

ORV_COStream::ORV_COStream() : m_sink(printOnConsole) {}

ORV_COStream& ORV_COStream::operator<<(const wchar_t* text) {
    if (text != nullptr)
        m_line += text;
    return *this;
}

ORV_COStream& ORV_COStream::operator<<(const std::wstring& text) {
    m_line += text;
    return *this;
}

ORV_COStream& ORV_COStream::operator<<(const char* text) {
    return text != nullptr ? *this << std::string(text) : *this;
}

ORV_COStream& ORV_COStream::operator<<(const std::string& text) {
    m_line += platform::fromSystem(text);
    return *this;
}

ORV_COStream& ORV_COStream::operator<<(int number) {
    m_line += std::to_wstring(number);
    return *this;
}

ORV_COStream& ORV_COStream::operator<<(ORV_COStream& (*manipulator)(ORV_COStream&)) {
    return manipulator(*this);
}

void ORV_COStream::endLine() {
    // Emptied before it is handed on, so that a sink that throws or streams itself finds a fresh line.
    std::wstring line;
    std::swap(line, m_line);
    const Sink sink = m_sink;
    sink(line);
}

ORV_COStream::Sink ORV_COStream::setSink(Sink sink) {
    if (!sink)
        sink = printOnConsole;
    std::swap(m_sink, sink);
    return sink;
}

ORV_COStream& endl(ORV_COStream& stream) {
    stream.endLine();
    return stream;
}
