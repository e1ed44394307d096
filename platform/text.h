#pragma once

#include "platform/export.h"

#include <string>
#include <string_view>

// Conversions of text. None of them fails; each says what becomes of what cannot be converted.
namespace platform {

// UTF-8 to wide. A byte that is no UTF-8 becomes the lone surrogate 0xDC00 + byte, which toUtf8 turns back
// into it, so that file names survive whatever they hold.
PLATFORM_API std::wstring fromUtf8(std::string_view text);
// Wide to UTF-8. Other lone surrogates keep their three bytes; numbers that are no characters become U+FFFD.
PLATFORM_API std::string toUtf8(std::wstring_view text);

// Wide text as 16-bit units and back. Lone surrogates stay as they are, in both directions.
PLATFORM_API std::u16string toUtf16(std::wstring_view text);
PLATFORM_API std::wstring fromUtf16(std::u16string_view units);

// Character by character: a byte is the character of that number, 0 to 255, and back; what is above becomes
// "?".
PLATFORM_API std::wstring widen(std::string_view text);
PLATFORM_API std::string narrow(std::wstring_view text);

// The system's narrow text: its code page on Windows, UTF-8 elsewhere.
PLATFORM_API std::wstring fromSystem(std::string_view text);
PLATFORM_API std::string toSystem(std::wstring_view text);

// The letter that names are compared by where case does not count. Does not depend on the locale that is set.
PLATFORM_API wchar_t foldCase(wchar_t character);
PLATFORM_API std::wstring foldCase(std::wstring_view text);
// Capital letters, likewise.
PLATFORM_API std::wstring upperCase(std::wstring_view text);
PLATFORM_API bool equalNoCase(std::wstring_view left, std::wstring_view right);

} // namespace platform
