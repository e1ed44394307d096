#include "platform/text.h"

#include <cwctype>
#include <locale.h>

namespace platform {

std::wstring fromSystem(std::string_view text) { return fromUtf8(text); }
std::string toSystem(std::wstring_view text) { return toUtf8(text); }

namespace {

// Made once and never freed: texts are converted until the process ends.
locale_t unicode() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

} // namespace

wchar_t foldCase(wchar_t character) {
    if (character < 0x80)
        return character >= L'A' && character <= L'Z' ? character + (L'a' - L'A') : character;
    return unicode() == nullptr ? character
                                : static_cast<wchar_t>(towlower_l(static_cast<wint_t>(character), unicode()));
}

std::wstring upperCase(std::wstring_view text) {
    std::wstring upper(text);
    for (wchar_t& character : upper)
        if (character < 0x80)
            character = character >= L'a' && character <= L'z' ? character - (L'a' - L'A') : character;
        else if (unicode() != nullptr)
            character = static_cast<wchar_t>(towupper_l(static_cast<wint_t>(character), unicode()));
    return upper;
}

} // namespace platform
