#include "rx/print_format.h"

#include "platform/text.h"

#include <cstdio>
#include <cwchar>

namespace embedded::rx {

namespace {

// Wider fields are taken for a mistake.
constexpr int kMostWidth = 4096;

struct Directive {
    std::string flags;
    int width = -1;
    int precision = -1;
    wchar_t conversion = L'\0';
    bool sound = true; // no `*` lacked its number, no field is too wide
};

class Formatter {
public:
    Formatter(const wchar_t* format, const PrintArgument* arguments, std::size_t count)
        : m_at(format), m_arguments(arguments), m_left(count) {}

    std::wstring run() {
        while (*m_at != L'\0') {
            if (*m_at != L'%')
                m_text += *m_at++;
            else
                directive();
        }
        return std::move(m_text);
    }

private:
    void directive() {
        const wchar_t* const start = m_at++;
        const Directive parsed = parse();
        if (parsed.conversion == L'%' && m_at == start + 2)
            m_text += L'%';
        else if (!parsed.sound || !convert(parsed))
            m_text.append(start, m_at);
    }

    Directive parse() {
        Directive parsed;
        while (*m_at != L'\0' && std::wcschr(L"-+ #0", *m_at) != nullptr)
            parsed.flags += static_cast<char>(*m_at++);
        parsed.width = number(parsed);
        if (parsed.width < -1) { // a negative one that an argument gave
            parsed.flags += '-';
            parsed.width = -parsed.width;
        }
        if (*m_at == L'.') {
            ++m_at;
            parsed.precision = number(parsed);
            if (parsed.precision == -1)
                parsed.precision = 0;
        }
        if (parsed.width > kMostWidth || parsed.precision > kMostWidth)
            parsed.sound = false;
        while (*m_at != L'\0' && std::wcschr(L"hlLqjztwI", *m_at) != nullptr)
            skipLength();
        if (*m_at != L'\0')
            parsed.conversion = *m_at++;
        return parsed;
    }

    // What an argument is, it says itself: the length marks carry no news.
    void skipLength() {
        const bool sized = *m_at++ == L'I';
        if (sized && (std::wcsncmp(m_at, L"64", 2) == 0 || std::wcsncmp(m_at, L"32", 2) == 0))
            m_at += 2;
    }

    // A number in the format or, for a `*`, among the arguments; -1 if there is none.
    int number(Directive& parsed) {
        if (*m_at == L'*') {
            ++m_at;
            if (m_left == 0 || !m_arguments->isInteger()) {
                parsed.sound = false;
                return -1;
            }
            const std::int64_t value = next().integer();
            if (value < -kMostWidth || value > kMostWidth)
                parsed.sound = false;
            return parsed.sound ? static_cast<int>(value) : -1;
        }
        if (*m_at < L'0' || *m_at > L'9')
            return -1;
        int value = 0;
        for (; *m_at >= L'0' && *m_at <= L'9'; ++m_at)
            value = value > kMostWidth ? value : value * 10 + (*m_at - L'0');
        return value;
    }

    const PrintArgument& next() {
        --m_left;
        return *m_arguments++;
    }

    // False where there is no argument, or one that does not fit; it counts as used then.
    bool convert(const Directive& parsed) {
        if (parsed.conversion == L'\0' || std::wcschr(L"diuxXocCsSfFeEgGaAp", parsed.conversion) == nullptr ||
            m_left == 0)
            return false;
        const PrintArgument& argument = next();
        switch (parsed.conversion) {
        case L'd':
        case L'i':
        case L'u':
        case L'x':
        case L'X':
        case L'o':
            return argument.isInteger() && integer(parsed, argument);
        case L'c':
        case L'C':
            return argument.isInteger() && character(parsed, argument);
        case L's':
        case L'S':
            return text(parsed, argument);
        case L'p':
            return pointer(parsed, argument);
        default:
            return argument.kind() == PrintArgument::kDouble && real(parsed, argument);
        }
    }

    std::string pattern(const Directive& parsed, const char* length) const {
        std::string made = "%" + parsed.flags;
        if (parsed.width >= 0)
            made += std::to_string(parsed.width);
        if (parsed.precision >= 0)
            made += "." + std::to_string(parsed.precision);
        return made + length;
    }

    template <class Value>
    bool put(const std::string& pattern, Value value) {
        // A double has at most 309 places before the point.
        char buffer[2 * kMostWidth + 512];
        const int length = std::snprintf(buffer, sizeof(buffer), pattern.c_str(), value);
        if (length < 0 || length >= static_cast<int>(sizeof(buffer)))
            return false;
        m_text += platform::widen({buffer, static_cast<std::size_t>(length)});
        return true;
    }

    bool integer(const Directive& parsed, const PrintArgument& argument) {
        const bool isDecimal = parsed.conversion == L'd' || parsed.conversion == L'i';
        if (isDecimal && argument.kind() == PrintArgument::kSigned)
            return put(pattern(parsed, "lld"), static_cast<long long>(argument.integer()));
        std::uint64_t value = argument.natural();
        if (argument.kind() == PrintArgument::kSigned && argument.width() < sizeof(value))
            value &= (std::uint64_t(1) << (8 * argument.width())) - 1;
        const char conversion = isDecimal ? 'u' : static_cast<char>(parsed.conversion);
        return put(pattern(parsed, "ll") + conversion, static_cast<unsigned long long>(value));
    }

    bool real(const Directive& parsed, const PrintArgument& argument) {
        return put(pattern(parsed, "") + static_cast<char>(parsed.conversion), argument.number());
    }

    bool pointer(const Directive& parsed, const PrintArgument& argument) {
        if (argument.kind() == PrintArgument::kDouble || argument.isInteger())
            return false;
        return put(pattern(parsed, "p"), argument.pointer());
    }

    bool character(const Directive& parsed, const PrintArgument& argument) {
        pad(parsed, std::wstring(1, static_cast<wchar_t>(argument.integer())));
        return true;
    }

    bool text(const Directive& parsed, const PrintArgument& argument) {
        if (argument.kind() == PrintArgument::kWide)
            pad(parsed, cut(argument.wide(), parsed.precision));
        else if (argument.kind() == PrintArgument::kNarrow)
            pad(parsed, platform::fromSystem(cut(argument.narrow(), parsed.precision)));
        else
            return false;
        return true;
    }

    // A precision also allows a text without a terminator.
    template <class Character>
    std::basic_string<Character> cut(const Character* text, int precision) const {
        static constexpr Character kNull[] = {'(', 'n', 'u', 'l', 'l', ')', 0};
        const Character* from = text == nullptr ? kNull : text;
        std::size_t length = 0;
        while ((precision < 0 || length < static_cast<std::size_t>(precision)) && from[length] != 0)
            ++length;
        return {from, length};
    }

    void pad(const Directive& parsed, const std::wstring& text) {
        const std::size_t width = parsed.width < 0 ? 0 : static_cast<std::size_t>(parsed.width);
        const std::wstring blanks(width > text.size() ? width - text.size() : 0, L' ');
        m_text += parsed.flags.find('-') == std::string::npos ? blanks + text : text + blanks;
    }

    const wchar_t* m_at;
    const PrintArgument* m_arguments;
    std::size_t m_left;
    std::wstring m_text;
};

} // namespace

std::wstring formatted(const wchar_t* format, const PrintArgument* arguments, std::size_t count) {
    return Formatter(format, arguments, count).run();
}

} // namespace embedded::rx
