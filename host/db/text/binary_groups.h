#pragma once

#include "db/text/group.h"

#include <string_view>

namespace embedded::text {

// What the binary form begins with.
extern const std::string_view kBinarySentinel;

// For each group the code in two bytes and the value, little end first: text and handles end in a zero byte,
// binary data begin with their length in one byte, a switch is one byte, and numbers take their width.
class BinaryGroupWriter final : public GroupWriter {
public:
    // Puts the sentinel.
    explicit BinaryGroupWriter(std::string& bytes);
    void put(const Group& group, int digits) override;

private:
    template <class T>
    void raw(T value);

    std::string& m_bytes;
};

class BinaryGroupReader final : public GroupReader {
public:
    // The bytes begin with the sentinel, and must outlive the reader.
    explicit BinaryGroupReader(std::string_view bytes);
    std::wstring place() const override;

private:
    Result read(Group& group) override;
    void toBegin() override;
    std::size_t left() const { return m_bytes.size() - m_at; }
    template <class T>
    bool raw(T& value);
    template <class T>
    bool integer(Group& group);
    bool text(std::string_view& value);
    bool chunk(Group& group);
    bool value(Group& group);
    Result handle(Group& group);
    Result readOne(Group& group);

    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::size_t m_begin = 0; // of the group that was read last
};

} // namespace embedded::text
