#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace embedded::dwg {

using Bytes = std::vector<std::uint8_t>;

// Bytes that someone else owns.
struct ByteSpan {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;

    ByteSpan() = default;
    ByteSpan(const std::uint8_t* begin, std::size_t length) : data(begin), size(length) {}
    ByteSpan(const Bytes& bytes) : data(bytes.data()), size(bytes.size()) {}

    std::uint8_t operator[](std::size_t i) const { return data[i]; }
    const std::uint8_t* begin() const { return data; }
    const std::uint8_t* end() const { return data + size; }
    bool empty() const { return size == 0; }

    // Whether `length` bytes from `offset` on lie inside.
    bool holds(std::uint64_t offset, std::uint64_t length) const {
        return offset <= size && length <= size - offset;
    }
    // The caller has asked `holds`.
    ByteSpan part(std::size_t offset, std::size_t length) const { return {data + offset, length}; }
    Bytes copy() const { return Bytes(begin(), end()); }
};

} // namespace embedded::dwg
