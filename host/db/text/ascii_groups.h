#pragma once

#include "db/text/group.h"

#include <string_view>

namespace embedded::text {

// Two lines for each group: the code, right-aligned in three columns, and the value. Lines end in CR and LF.
class AsciiGroupWriter final : public GroupWriter {
public:
    explicit AsciiGroupWriter(std::string& bytes) : m_bytes(bytes) {}
    void put(const Group& group, int digits) override;

private:
    std::string& m_bytes;
};

// Takes lines that end in LF with or without CR. Comments are passed over.
class AsciiGroupReader final : public GroupReader {
public:
    // The bytes must outlive the reader.
    explicit AsciiGroupReader(std::string_view bytes) : m_bytes(bytes) {}
    std::wstring place() const override;

private:
    Result read(Group& group) override;
    void toBegin() override;
    bool line(std::string_view& text);
    Result parseValue(Group& group, std::string_view value);

    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::size_t m_line = 0;
};

} // namespace embedded::text
