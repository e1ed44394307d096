#pragma once

// The framework library's string class, as far as it is used here.
#if defined(_WIN32)

#include <atlstr.h>

#else

#include "platform/text.h"

#include <cwchar>
#include <string>

// A text of narrow or wide characters. Text of the other width is converted by the system's code page, that
// is UTF-8. A null pointer counts as empty.
template <class Character>
class CStringT {
public:
    using XCHAR = Character;
    using YCHAR = std::conditional_t<std::is_same_v<Character, char>, wchar_t, char>;

    CStringT() = default;
    CStringT(const XCHAR* text) : m_text(text == nullptr ? std::basic_string<XCHAR>() : text) {}
    CStringT(const XCHAR* text, int length) : m_text(text, static_cast<std::size_t>(length)) {}
    CStringT(const YCHAR* text) : m_text(text == nullptr ? std::basic_string<XCHAR>() : converted(text)) {}
    CStringT(const YCHAR* text, int length)
        : m_text(converted(std::basic_string_view<YCHAR>(text, static_cast<std::size_t>(length)))) {}
    CStringT(const CStringT<YCHAR>& text) : m_text(converted(text.GetString())) {}

    operator const XCHAR*() const { return m_text.c_str(); }
    // Never null; valid until the text is changed.
    const XCHAR* GetString() const { return m_text.c_str(); }
    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    XCHAR GetAt(int index) const { return m_text.at(static_cast<std::size_t>(index)); }
    XCHAR operator[](int index) const { return GetAt(index); }

    CStringT& operator+=(const CStringT& text) {
        m_text += text.m_text;
        return *this;
    }
    CStringT& operator+=(XCHAR character) {
        m_text += character;
        return *this;
    }

    // Negative, 0 or positive, by character number.
    int Compare(const XCHAR* other) const {
        return m_text.compare(other == nullptr ? CStringT().GetString() : other);
    }

    friend CStringT operator+(CStringT left, const CStringT& right) { return left += right; }
    friend bool operator==(const CStringT& left, const CStringT& right) {
        return left.m_text == right.m_text;
    }
    friend bool operator!=(const CStringT& left, const CStringT& right) {
        return left.m_text != right.m_text;
    }
    friend bool operator<(const CStringT& left, const CStringT& right) { return left.m_text < right.m_text; }
    friend bool operator==(const CStringT& left, const XCHAR* right) { return left.Compare(right) == 0; }
    friend bool operator!=(const CStringT& left, const XCHAR* right) { return left.Compare(right) != 0; }

private:
    static std::basic_string<XCHAR> converted(std::basic_string_view<YCHAR> text) {
        if constexpr (std::is_same_v<XCHAR, char>)
            return platform::toSystem(text);
        else
            return platform::fromSystem(text);
    }

    std::basic_string<XCHAR> m_text;
};

using CStringA = CStringT<char>;
using CStringW = CStringT<wchar_t>;
using CString = CStringW;

#endif
