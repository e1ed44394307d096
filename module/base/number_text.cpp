#include "base/number_text.h"

#include <climits>
#include <cstdint>

namespace orv {

int toInt(const wchar_t* text) {
    while (*text == L' ' || (*text >= L'\t' && *text <= L'\r'))
        ++text;
    const bool negative = *text == L'-';
    if (negative || *text == L'+')
        ++text;
    const std::int64_t limit = negative ? -static_cast<std::int64_t>(INT_MIN) : INT_MAX;
    std::int64_t number = 0;
    for (; *text >= L'0' && *text <= L'9'; ++text) {
        number = number * 10 + (*text - L'0');
        if (number > limit)
            number = limit;
    }
    return static_cast<int>(negative ? -number : number);
}

IntText::IntText(int number, int digits) : m_begin(m_text + kCapacity - 1) {
    *m_begin = L'\0';
    std::uint32_t rest =
        number < 0 ? 0u - static_cast<std::uint32_t>(number) : static_cast<std::uint32_t>(number);
    const wchar_t* const end = m_begin;
    while (rest != 0 || end - m_begin < digits) {
        *--m_begin = static_cast<wchar_t>(L'0' + rest % 10);
        rest /= 10;
    }
    if (number < 0)
        *--m_begin = L'-';
}

} // namespace orv
