#include "embedded/abort.h"

#include "platform/text.h"
#include "rx/wide_format.h"
#include "rxdefs.h"

#include <cstdio>
#include <cstdlib>
#include <cwchar>

namespace embedded {

namespace {

AbortHandler& handler() {
    static AbortHandler& one = *new AbortHandler;
    return one;
}

} // namespace

AbortHandler setAbortHandler(AbortHandler replacement) {
    std::swap(handler(), replacement);
    return replacement;
}

namespace rx {

std::wstring wideFormat(const wchar_t* format, va_list arguments) {
    // The C library does not tell the length that it would need, so the buffer grows until the text fits.
    const std::size_t kMost = std::size_t(1) << 24;
    for (std::size_t size = 256; size <= kMost; size *= 4) {
        std::wstring text(size, L'\0');
        va_list again;
        va_copy(again, arguments);
        const int length = std::vswprintf(text.data(), size, format, again);
        va_end(again);
        if (length >= 0) {
            text.resize(static_cast<std::size_t>(length));
            return text;
        }
    }
    return {};
}

} // namespace rx

} // namespace embedded

void acrx_abort(const ACHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::wstring text = embedded::rx::wideFormat(format, arguments);
    va_end(arguments);
    if (embedded::handler())
        embedded::handler()(text);
    std::fprintf(stderr, "%s\n", platform::toUtf8(text).c_str());
    std::abort();
}
