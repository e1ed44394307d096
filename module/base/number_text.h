#pragma once

#include "base/export.h"

namespace orv {

// The number at the beginning of a text: leading blanks, a sign, digits; whatever follows ends it. 0 if there
// is no digit; numbers outside the range of int give its nearest end.
TALDORK_API int toInt(const wchar_t* text);

// A number as text without a heap: the characters live in the object.
class TALDORK_API IntText {
public:
    // In decimal, padded with zeros on the left to at least `digits` digits; a sign is not counted.
    explicit IntText(int number, int digits = 1);

    const wchar_t* c_str() const { return m_begin; }
    operator const wchar_t*() const { return m_begin; }

private:
    static constexpr int kCapacity = 16;
    wchar_t m_text[kCapacity];
    wchar_t* m_begin;
};

} // namespace orv
