#include "db/text/ascii_groups.h"

#include "db/text/group_text.h"
#include "db/text/group_values.h"
#include "platform/text.h"

#include <algorithm>

namespace embedded::text {

namespace {

constexpr char kLineEnd[] = "\r\n";
constexpr std::size_t kCodeColumns = 3;
constexpr std::size_t kNarrowColumns = 6;
constexpr std::size_t kWideColumns = 9;
constexpr std::size_t kShownLetters = 40;

std::string aligned(std::int64_t value, std::size_t columns) {
    std::string text = std::to_string(value);
    text.insert(0, columns - std::min(columns, text.size()), ' ');
    return text;
}

std::string valueText(const Group& group, int digits) {
    switch (group.type) {
    case GroupType::kReal:
        return realText(group.real, digits);
    case GroupType::kInt16:
    case GroupType::kSwitch:
        return aligned(group.integer, kNarrowColumns);
    case GroupType::kInt32:
        return aligned(group.integer, kWideColumns);
    case GroupType::kInt64:
        return std::to_string(group.integer);
    case GroupType::kHandle:
    case GroupType::kObjectId:
        return handleText(group.handle);
    case GroupType::kChunk:
        return hexText(group.bytes);
    default:
        return encodeText(group.text);
    }
}

std::wstring shown(const wchar_t* what, std::string_view value) {
    return what + (L" \"" + platform::fromUtf8(value.substr(0, kShownLetters)) + L"\"");
}

} // namespace

void AsciiGroupWriter::put(const Group& group, int digits) {
    m_bytes += aligned(group.code, kCodeColumns);
    m_bytes += kLineEnd;
    m_bytes += valueText(group, digits);
    m_bytes += kLineEnd;
}

void AsciiGroupReader::toBegin() {
    m_at = 0;
    m_line = 0;
}

std::wstring AsciiGroupReader::place() const { return L"line " + std::to_wstring(m_line); }

// A line counts only with its end: what is not ended may have been cut.
bool AsciiGroupReader::line(std::string_view& text) {
    ++m_line;
    const std::size_t end = m_bytes.find('\n', m_at);
    if (end == std::string_view::npos)
        return false;
    text = m_bytes.substr(m_at, end - m_at);
    if (!text.empty() && text.back() == '\r')
        text.remove_suffix(1);
    m_at = end + 1;
    return true;
}

GroupReader::Result AsciiGroupReader::read(Group& group) {
    for (;;) {
        if (m_at == m_bytes.size())
            return kEnd;
        std::string_view code, value;
        std::int64_t number = 0;
        if (!line(code))
            return damaged(L"the text breaks off in a group code");
        if (!parseInteger(code, number) || number < 0 || number > 0x7FFF ||
            groupTypeOf(static_cast<int>(number)) == GroupType::kNone)
            return damaged(shown(L"no group code:", code));
        if (!line(value))
            return damaged(L"the text breaks off in a value");
        if (number == kComment)
            continue;
        group = Group();
        group.code = static_cast<int>(number);
        group.type = groupTypeOf(group.code);
        return parseValue(group, value);
    }
}

GroupReader::Result AsciiGroupReader::parseValue(Group& group, std::string_view value) {
    switch (group.type) {
    case GroupType::kReal:
        return parseReal(value, group.real) ? kGroup : damaged(shown(L"no number:", value));
    case GroupType::kInt16:
    case GroupType::kInt32:
    case GroupType::kInt64:
    case GroupType::kSwitch:
        if (!parseInteger(value, group.integer))
            return damaged(shown(L"no integer:", value));
        return inRange(group.type, group.integer) ? kGroup : damaged(shown(L"out of range:", value));
    case GroupType::kHandle:
    case GroupType::kObjectId:
        return parseHandle(value, group.handle) ? kGroup : damaged(shown(L"no handle:", value));
    case GroupType::kChunk:
        if (value.size() > 2 * kReadChunk)
            return damaged(L"too much binary data for one group");
        return parseHex(value, group.bytes) ? kGroup : damaged(shown(L"no binary data:", value));
    default:
        group.text = decodeText(value);
        return kGroup;
    }
}

} // namespace embedded::text
