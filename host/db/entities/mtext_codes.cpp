#include "db/entities/mtext_codes.h"

#include "gi/text_metrics.h"

#include <algorithm>

namespace embedded {
namespace {

const wchar_t kFixedBlank = 0x00A0;

class CodeReader {
public:
    explicit CodeReader(const std::wstring& contents) : m_contents(contents) {}

    std::wstring read() {
        while (m_at < m_contents.size()) {
            const wchar_t letter = m_contents[m_at++];
            if (letter == L'\\')
                readCode();
            else if (letter == L'^')
                readControl();
            else if (letter == L'\t')
                m_plain.push_back(L' ');
            else if (letter != L'{' && letter != L'}' && letter != L'\r')
                m_plain.push_back(letter);
        }
        return m_plain;
    }

private:
    void readCode() {
        if (m_at == m_contents.size()) {
            m_plain.push_back(L'\\');
            return;
        }
        const wchar_t code = m_contents[m_at++];
        switch (code) {
        case L'P':
        case L'N':
            m_plain.push_back(L'\n');
            break;
        case L'~':
            m_plain.push_back(kFixedBlank);
            break;
        case L'\\':
        case L'{':
        case L'}':
            m_plain.push_back(code);
            break;
        case L'S':
            readStack();
            break;
        case L'U':
            readNumber();
            break;
        case L'L':
        case L'l':
        case L'O':
        case L'o':
        case L'K':
        case L'k':
            break;
        case L'H':
        case L'W':
        case L'Q':
        case L'T':
        case L'A':
        case L'C':
        case L'c':
        case L'f':
        case L'F':
        case L'p':
            m_at = std::min(m_contents.find(L';', m_at), m_contents.size() - 1) + 1;
            break;
        default:
            m_plain.push_back(L'\\');
            m_plain.push_back(code);
        }
    }

    // A control letter: a tabulator is a blank, a line feed a new paragraph, a blank the caret itself.
    void readControl() {
        const wchar_t next = m_at < m_contents.size() ? m_contents[m_at] : 0;
        if (next == L'I')
            m_plain.push_back(L' ');
        else if (next == L'J')
            m_plain.push_back(L'\n');
        else if (next == L' ')
            m_plain.push_back(L'^');
        else if (next != L'M')
            m_plain.push_back(L'^');
        if (next == L'I' || next == L'J' || next == L' ' || next == L'M')
            ++m_at;
    }

    // Two halves, one above the other; an empty one only raises or lowers the other.
    void readStack() {
        std::wstring halves[2];
        std::size_t half = 0;
        while (m_at < m_contents.size() && m_contents[m_at] != L';') {
            wchar_t letter = m_contents[m_at++];
            const bool isPlain = letter == L'\\' && m_at < m_contents.size();
            if (isPlain)
                letter = m_contents[m_at++];
            const bool isBar = letter == L'/' || letter == L'^' || letter == L'#';
            if (!isPlain && half == 0 && isBar)
                half = 1;
            else
                halves[half].push_back(letter);
        }
        m_at = std::min(m_at + 1, m_contents.size());
        const auto isBlank = [](const std::wstring& text) {
            return text.find_first_not_of(L' ') == std::wstring::npos;
        };
        if (isBlank(halves[0]) || isBlank(halves[1]))
            m_plain += isBlank(halves[1]) ? halves[0] : halves[1];
        else
            m_plain += halves[0] + L"/" + halves[1];
    }

    // A letter by four hexadecimal digits.
    void readNumber() {
        unsigned number = 0;
        std::size_t digits = 0;
        for (; digits < 4 && m_at + 1 + digits < m_contents.size(); ++digits) {
            const wchar_t digit = m_contents[m_at + 1 + digits];
            const bool isDecimal = digit >= L'0' && digit <= L'9';
            const wchar_t small = static_cast<wchar_t>(digit | 0x20);
            if (!isDecimal && (small < L'a' || small > L'f'))
                break;
            number = number * 16 + static_cast<unsigned>(isDecimal ? digit - L'0' : small - L'a' + 10);
        }
        if (digits == 4 && number != 0 && m_contents[m_at] == L'+') {
            m_plain.push_back(static_cast<wchar_t>(number));
            m_at += 5;
        } else {
            m_plain += L"\\U";
        }
    }

    const std::wstring& m_contents;
    std::size_t m_at = 0;
    std::wstring m_plain;
};

void breakParagraph(const std::wstring& paragraph, double width,
                    const std::function<double(const std::wstring&)>& widthOf,
                    std::vector<std::wstring>& lines) {
    // Blanks have no picture of their own, so they are measured between letters.
    const double blank = widthOf(L"i i") - widthOf(L"ii");
    std::wstring line;
    double lineWidth = 0.0;
    std::size_t at = 0;
    bool isFirst = true;
    while (at <= paragraph.size()) {
        const std::size_t end = std::min(paragraph.find(L' ', at), paragraph.size());
        const std::wstring word = paragraph.substr(at, end - at);
        const double wordWidth = word.empty() ? 0.0 : widthOf(word);
        if (isFirst) {
            line = word;
            lineWidth = wordWidth;
        } else if (lineWidth + blank + wordWidth <= width || word.empty()) {
            line += L" " + word;
            lineWidth += blank + wordWidth;
        } else {
            lines.push_back(line);
            line = word;
            lineWidth = wordWidth;
        }
        isFirst = false;
        at = end + 1;
    }
    lines.push_back(line);
}

} // namespace

std::wstring withoutFormatCodes(const std::wstring& contents) {
    return withoutTextCodes(CodeReader(contents).read());
}

std::vector<std::wstring> brokenLines(const std::wstring& text, double width,
                                      const std::function<double(const std::wstring&)>& widthOf) {
    std::vector<std::wstring> lines;
    std::size_t at = 0;
    while (at <= text.size()) {
        const std::size_t end = std::min(text.find(L'\n', at), text.size());
        const std::wstring paragraph = text.substr(at, end - at);
        if (width > 0.0)
            breakParagraph(paragraph, width, widthOf, lines);
        else
            lines.push_back(paragraph);
        at = end + 1;
    }
    for (std::wstring& line : lines) {
        line.erase(line.find_last_not_of(L' ') + 1);
        std::replace(line.begin(), line.end(), kFixedBlank, L' ');
    }
    return lines;
}

} // namespace embedded
