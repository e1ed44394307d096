#include "platform/code_page.h"

#include <windows.h>

namespace platform {

CodePage::CodePage(int windowsNumber) : m_converter(nullptr), m_number(windowsNumber) {}

CodePage::~CodePage() = default;

bool CodePage::isKnown() const { return IsValidCodePage(static_cast<UINT>(m_number)) != 0; }

CodePage::Outcome CodePage::decode(const unsigned char* bytes, std::size_t count, char32_t& character) const {
    const UINT page = static_cast<UINT>(m_number);
    if (!isKnown())
        return kNoCharacter;
    if (count == 1 && IsDBCSLeadByteEx(page, bytes[0]))
        return kIncomplete;
    wchar_t units[4];
    const int made = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, reinterpret_cast<const char*>(bytes),
                                         static_cast<int>(count), units, 4);
    if (made != 1)
        return kNoCharacter;
    character = units[0];
    return kCharacter;
}

} // namespace platform
