#pragma once

#include "db/text/group_types.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace embedded::text {

// A code and its value, which stands in the member for its type.
struct Group {
    int code = 0;
    GroupType type = GroupType::kNone;
    std::wstring text;        // kText
    double real = 0.0;        // kReal
    std::int64_t integer = 0; // kInt16, kInt32, kInt64, kSwitch
    std::uint64_t handle = 0; // kHandle, kObjectId
    std::string bytes;        // kChunk
};

// The most bytes of a chunk that one group is written with, and that one can hold.
constexpr std::size_t kWrittenChunk = 127;
constexpr std::size_t kReadChunk = 255;

// A remark for whom reads the text; not part of what is filed. The binary form has none.
constexpr int kComment = 999;

// The stream of groups as bytes, in one of its two forms.
class GroupWriter {
public:
    virtual ~GroupWriter() = default;
    // `digits` is for reals: how many are significant; negative: as many as it takes to read the value back.
    virtual void put(const Group& group, int digits) = 0;
};

class GroupReader {
public:
    enum Result { kGroup, kEnd, kDamaged };

    virtual ~GroupReader() = default;
    // kEnd where the bytes end between two groups. After kDamaged, `failure` says what is wrong, and so it
    // stays until the reader is rewound.
    Result next(Group& group) { return m_failure.empty() ? read(group) : kDamaged; }
    void rewind() {
        m_failure.clear();
        toBegin();
    }
    // The place of the group that was read last: "line 12", "offset 34".
    virtual std::wstring place() const = 0;
    const std::wstring& failure() const { return m_failure; }

protected:
    virtual Result read(Group& group) = 0;
    virtual void toBegin() = 0;
    Result damaged(std::wstring failure) {
        m_failure = std::move(failure);
        return kDamaged;
    }

private:
    std::wstring m_failure;
};

} // namespace embedded::text
