#pragma once

#include "base/export.h"

#include <string>

namespace orv {

// Narrow text as wide text and back, character by character, by the global locale. A byte that the locale has
// no character for is the character of its number; a character that it has no byte for is the byte of its
// number, or "?" above 255. So any narrow text comes back as it was.
TALDORK_API std::wstring widenByLocale(const std::string& text);
TALDORK_API std::string narrowByLocale(const std::wstring& text);

} // namespace orv
