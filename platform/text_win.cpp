#include "platform/text.h"

#include <windows.h>

namespace platform {

std::wstring fromSystem(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string toSystem(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    std::string bytes(WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
    return bytes;
}

wchar_t foldCase(wchar_t character) {
    wchar_t folded = character;
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, &character, 1, &folded, 1, nullptr, nullptr, 0);
    return folded;
}

std::wstring upperCase(std::wstring_view text) {
    std::wstring upper(text);
    const int size = static_cast<int>(text.size());
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, text.data(), size, upper.data(), size, nullptr,
                  nullptr, 0);
    return upper;
}

} // namespace platform
