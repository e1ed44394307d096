#include "AcString.h"

#include "platform/text.h"
#include "rx/wide_format.h"

#include <algorithm>
#include <cwchar>

namespace {

const ACHAR* orEmpty(const ACHAR* text) { return text == nullptr ? L"" : text; }

} // namespace

AcString::AcString(const char* utf8) : m_text(utf8 == nullptr ? std::wstring() : platform::fromUtf8(utf8)) {}

AcString& AcString::assign(const ACHAR* text) {
    m_text = std::wstring(orEmpty(text)); // the text may be a part of this one
    return *this;
}

std::string AcString::utf8() const { return platform::toUtf8(m_text); }

const char* AcString::kszPtr() const {
    if (isAscii()) {
        // Asked for again and again, it is made once.
        if (!std::equal(m_text.begin(), m_text.end(), m_narrow.begin(), m_narrow.end()))
            m_narrow.assign(m_text.begin(), m_text.end());
        return m_narrow.c_str();
    }
    const std::u16string units = platform::toUtf16(m_text);
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        if (unit < 0xD800 || unit > 0xDFFF)
            continue;
        const bool isPair =
            unit < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF;
        if (!isPair)
            return nullptr;
        ++i;
    }
    m_narrow = platform::toSystem(m_text);
    return m_narrow.c_str();
}

bool AcString::isAscii() const {
    return std::all_of(m_text.begin(), m_text.end(),
                       [](ACHAR character) { return static_cast<unsigned>(character) < 128; });
}

AcString& AcString::append(const ACHAR* text) {
    m_text += std::wstring(orEmpty(text));
    return *this;
}

AcString& AcString::format(const ACHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    formatV(format, arguments);
    va_end(arguments);
    return *this;
}

AcString& AcString::formatV(const ACHAR* format, va_list arguments) {
    m_text = embedded::rx::wideFormat(orEmpty(format), arguments);
    return *this;
}

int AcString::compare(const ACHAR* other) const { return std::wcscmp(m_text.c_str(), orEmpty(other)); }

int AcString::compareNoCase(const ACHAR* other) const {
    return std::wcscmp(platform::foldCase(std::wstring_view(m_text)).c_str(),
                       platform::foldCase(std::wstring_view(orEmpty(other))).c_str());
}

int AcString::find(const ACHAR* part) const {
    const std::size_t at = m_text.find(orEmpty(part));
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int AcString::find(ACHAR character) const {
    const std::size_t at = m_text.find(character);
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int AcString::findRev(ACHAR character) const {
    const std::size_t at = m_text.rfind(character);
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

AcString AcString::mid(int start, int count) const {
    const std::size_t from = start < 0 ? 0 : static_cast<std::size_t>(start);
    if (from >= m_text.size())
        return {};
    return AcString(
        m_text.substr(from, count < 0 ? std::wstring::npos : static_cast<std::size_t>(count)).c_str());
}

AcString AcString::right(int count) const {
    const int have = static_cast<int>(m_text.size());
    return count <= 0 ? AcString() : mid(count >= have ? 0 : have - count);
}

AcString& AcString::makeLower() {
    m_text = platform::foldCase(std::wstring_view(m_text));
    return *this;
}

AcString& AcString::makeUpper() {
    m_text = platform::upperCase(m_text);
    return *this;
}

AcString& AcString::trim() {
    static const wchar_t* const kBlanks = L" \t\r\n";
    const std::size_t first = m_text.find_first_not_of(kBlanks);
    m_text = first == std::wstring::npos ? std::wstring()
                                         : m_text.substr(first, m_text.find_last_not_of(kBlanks) - first + 1);
    return *this;
}
