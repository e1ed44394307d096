#include "dbx/keyvalue/locale_text.h"

#include "platform/text.h"

#include <cwchar>
#include <locale>

namespace orv {

namespace {

using Facet = std::ctype<wchar_t>;

wchar_t widened(const Facet& facet, char byte) {
    const wchar_t character = facet.widen(byte);
    return character != static_cast<wchar_t>(WEOF) ? character
                                                   : platform::widen(std::string_view(&byte, 1)).front();
}

char narrowed(const Facet& facet, wchar_t character) {
    const char byte = facet.narrow(character, '\0');
    return byte != '\0' ? byte : platform::narrow(std::wstring_view(&character, 1)).front();
}

} // namespace

std::wstring widenByLocale(const std::string& text) {
    const std::locale locale;
    const auto& facet = std::use_facet<Facet>(locale);
    std::wstring wide;
    wide.reserve(text.size());
    for (const char byte : text)
        wide += widened(facet, byte);
    return wide;
}

std::string narrowByLocale(const std::wstring& text) {
    const std::locale locale;
    const auto& facet = std::use_facet<Facet>(locale);
    std::string narrow;
    narrow.reserve(text.size());
    for (const wchar_t character : text)
        narrow += narrowed(facet, character);
    return narrow;
}

} // namespace orv
