#include "embedded/console.h"

#include "acutads.h"
#include "platform/text.h"
#include "rx/print_format.h"

#include <cstdio>

namespace embedded {

namespace {

ConsoleSink& sink() {
    static ConsoleSink& one = *new ConsoleSink;
    return one;
}

} // namespace

ConsoleSink setConsoleSink(ConsoleSink replacement) {
    std::swap(sink(), replacement);
    return replacement;
}

void writeToConsole(const std::wstring& text) {
    if (const ConsoleSink current = sink()) {
        current(text);
        return;
    }
    const std::string bytes = platform::toUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

namespace rx {

int print(const ACHAR* format, const PrintArgument* arguments, std::size_t count) {
    if (format == nullptr)
        return RTERROR;
    writeToConsole(formatted(format, arguments, count));
    return RTNORM;
}

} // namespace rx

} // namespace embedded
