#include "db/text/binary_groups.h"

#include "db/text/group_text.h"
#include "db/text/group_values.h"

#include <cstring>

namespace embedded::text {

namespace {

// The format fixes these.
constexpr char kSentinelBytes[] = {0x41, 0x75, 0x74, 0x6F, 0x43, 0x41, 0x44, 0x20, 0x42, 0x69, 0x6E,
                                   0x61, 0x72, 0x79, 0x20, 0x44, 0x58, 0x46, 0x0D, 0x0A, 0x1A, 0x00};

} // namespace

const std::string_view kBinarySentinel(kSentinelBytes, sizeof kSentinelBytes);

BinaryGroupWriter::BinaryGroupWriter(std::string& bytes) : m_bytes(bytes) { m_bytes += kBinarySentinel; }

template <class T>
void BinaryGroupWriter::raw(T value) {
    char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    m_bytes.append(bytes, sizeof(T));
}

void BinaryGroupWriter::put(const Group& group, int) {
    if (group.code == kComment)
        return;
    raw(static_cast<std::int16_t>(group.code));
    switch (group.type) {
    case GroupType::kReal:
        return raw(group.real);
    case GroupType::kInt16:
        return raw(static_cast<std::int16_t>(group.integer));
    case GroupType::kInt32:
        return raw(static_cast<std::int32_t>(group.integer));
    case GroupType::kInt64:
        return raw(group.integer);
    case GroupType::kSwitch:
        return raw(static_cast<std::uint8_t>(group.integer));
    case GroupType::kChunk:
        raw(static_cast<std::uint8_t>(group.bytes.size()));
        m_bytes += group.bytes;
        return;
    case GroupType::kHandle:
    case GroupType::kObjectId:
        m_bytes += handleText(group.handle);
        m_bytes += '\0';
        return;
    default:
        m_bytes += encodeText(group.text);
        m_bytes += '\0';
    }
}

BinaryGroupReader::BinaryGroupReader(std::string_view bytes) : m_bytes(bytes) { toBegin(); }

void BinaryGroupReader::toBegin() { m_at = m_begin = kBinarySentinel.size(); }

std::wstring BinaryGroupReader::place() const { return L"offset " + std::to_wstring(m_begin); }

template <class T>
bool BinaryGroupReader::raw(T& value) {
    if (left() < sizeof(T))
        return false;
    std::memcpy(&value, m_bytes.data() + m_at, sizeof(T));
    m_at += sizeof(T);
    return true;
}

template <class T>
bool BinaryGroupReader::integer(Group& group) {
    T number = 0;
    if (!raw(number))
        return false;
    group.integer = number;
    return true;
}

bool BinaryGroupReader::text(std::string_view& value) {
    const std::size_t end = m_bytes.find('\0', m_at);
    if (end == std::string_view::npos)
        return false;
    value = m_bytes.substr(m_at, end - m_at);
    m_at = end + 1;
    return true;
}

bool BinaryGroupReader::chunk(Group& group) {
    std::uint8_t length = 0;
    if (!raw(length) || left() < length)
        return false;
    group.bytes = m_bytes.substr(m_at, length);
    m_at += length;
    return true;
}

bool BinaryGroupReader::value(Group& group) {
    std::string_view line;
    switch (group.type) {
    case GroupType::kReal:
        return raw(group.real);
    case GroupType::kInt16:
        return integer<std::int16_t>(group);
    case GroupType::kInt32:
        return integer<std::int32_t>(group);
    case GroupType::kInt64:
        return integer<std::int64_t>(group);
    case GroupType::kSwitch:
        return integer<std::uint8_t>(group);
    case GroupType::kChunk:
        return chunk(group);
    default:
        if (!text(line))
            return false;
        group.text = decodeText(line);
        return true;
    }
}

GroupReader::Result BinaryGroupReader::handle(Group& group) {
    std::string_view digits;
    if (!text(digits))
        return damaged(L"the bytes break off in a value");
    return parseHandle(digits, group.handle) ? kGroup : damaged(L"no handle");
}

GroupReader::Result BinaryGroupReader::read(Group& group) {
    do {
        if (left() == 0)
            return kEnd;
        const Result result = readOne(group);
        if (result != kGroup)
            return result;
    } while (group.code == kComment);
    return kGroup;
}

GroupReader::Result BinaryGroupReader::readOne(Group& group) {
    m_begin = m_at;
    std::int16_t code = 0;
    if (!raw(code))
        return damaged(L"the bytes break off in a group code");
    group = Group();
    group.code = code;
    group.type = groupTypeOf(code);
    if (group.type == GroupType::kNone)
        return damaged(L"no group code: " + std::to_wstring(code));
    if (group.type == GroupType::kHandle || group.type == GroupType::kObjectId)
        return handle(group);
    if (!value(group))
        return damaged(L"the bytes break off in a value");
    return inRange(group.type, group.integer) ? kGroup : damaged(L"out of range");
}

} // namespace embedded::text
