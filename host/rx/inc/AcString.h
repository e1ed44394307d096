#pragma once

#include "AdAChar.h"

#include <cstdarg>
#include <cstddef>
#include <string>

// A wide text that owns its characters. A null pointer counts as empty wherever a text is taken.
class AcString {
public:
    AcString() = default;
    AcString(const ACHAR* text) : m_text(text == nullptr ? L"" : text) {}
    AcString(const ACHAR* text, std::size_t length)
        : m_text(text == nullptr ? L"" : std::wstring(text, length)) {}
    AcString(ACHAR character, unsigned int count) : m_text(count, character) {}
    // Narrow text is UTF-8.
    explicit AcString(const char* utf8);

    AcString& operator=(const ACHAR* text) { return assign(text); }
    AcString& assign(const ACHAR* text);

    // Never null; valid until the text is changed.
    const ACHAR* kACharPtr() const { return m_text.c_str(); }
    const ACHAR* constPtr() const { return m_text.c_str(); }
    const wchar_t* kwszPtr() const { return m_text.c_str(); }
    operator const ACHAR*() const { return m_text.c_str(); }
    // The text as UTF-8.
    std::string utf8() const;
    // The text in the system's narrow characters (UTF-8 off Windows), valid until the text is changed. Null
    // for one that has no such form, since it holds half a character.
    const char* kszPtr() const;
    // No character beyond 127.
    bool isAscii() const;

    unsigned int length() const { return static_cast<unsigned int>(m_text.size()); }
    unsigned int tcharLength() const { return length(); }
    bool isEmpty() const { return m_text.empty(); }
    // True for an empty text, and one that is a null pointer.
    void setEmpty() { m_text.clear(); }
    AcString& clear() {
        m_text.clear();
        return *this;
    }
    ACHAR getAt(unsigned int index) const { return index < m_text.size() ? m_text[index] : L'\0'; }

    AcString& operator+=(const ACHAR* text) { return append(text); }
    AcString& operator+=(const AcString& text) { return append(text.kACharPtr()); }
    AcString& operator+=(ACHAR character) {
        m_text += character;
        return *this;
    }
    AcString& append(const ACHAR* text);
    // The text becomes what a wide printf of the C library gives.
    AcString& format(const ACHAR* format, ...);
    AcString& formatV(const ACHAR* format, va_list arguments);

    // Negative, 0 or positive; by character number, or with letters made small first.
    int compare(const ACHAR* other) const;
    int compareNoCase(const ACHAR* other) const;
    bool equals(const ACHAR* other) const { return compare(other) == 0; }
    bool equalsNoCase(const ACHAR* other) const { return compareNoCase(other) == 0; }

    // The index of the first or last place, or -1.
    int find(const ACHAR* part) const;
    int find(ACHAR character) const;
    int findRev(ACHAR character) const;
    // From `start`, `count` characters or, with -1, all; what lies outside is left out.
    AcString mid(int start, int count = -1) const;
    AcString left(int count) const { return mid(0, count < 0 ? 0 : count); }
    AcString right(int count) const;

    AcString& makeLower();
    AcString& makeUpper();
    AcString& trim();

private:
    std::wstring m_text;
    mutable std::string m_narrow; // what kszPtr gave
};

inline AcString operator+(const AcString& left, const AcString& right) { return AcString(left) += right; }
inline AcString operator+(const AcString& left, const ACHAR* right) { return AcString(left) += right; }
inline AcString operator+(const ACHAR* left, const AcString& right) { return AcString(left) += right; }

inline bool operator==(const AcString& left, const AcString& right) { return left.equals(right.kACharPtr()); }
inline bool operator==(const AcString& left, const ACHAR* right) { return left.equals(right); }
inline bool operator==(const ACHAR* left, const AcString& right) { return right.equals(left); }
inline bool operator!=(const AcString& left, const AcString& right) { return !(left == right); }
inline bool operator!=(const AcString& left, const ACHAR* right) { return !(left == right); }
inline bool operator!=(const ACHAR* left, const AcString& right) { return !(left == right); }
inline bool operator<(const AcString& left, const AcString& right) {
    return left.compare(right.kACharPtr()) < 0;
}
