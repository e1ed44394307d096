#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace orv::detail {

// Room for bytes that come in one behind the other. What has not been written to is of any value. Lengthened
// where it lies if the heap can do that, which is why it is no vector.
class GrowingBytes {
public:
    GrowingBytes() = default;
    ~GrowingBytes() { std::free(m_bytes); }
    GrowingBytes(const GrowingBytes&) = delete;
    GrowingBytes& operator=(const GrowingBytes&) = delete;

    unsigned char* data() { return m_bytes; }
    const unsigned char* data() const { return m_bytes; }

    // At least `size` bytes, and at least twice what there was when that is not enough. std::bad_alloc leaves
    // everything as it is.
    void reserve(std::size_t size) {
        if (size <= m_size)
            return;
        const std::size_t wanted = std::max(size, m_size * 2);
        void* const grown = std::realloc(m_bytes, wanted);
        if (grown == nullptr)
            throw std::bad_alloc();
        m_bytes = static_cast<unsigned char*>(grown);
        m_size = wanted;
    }

private:
    unsigned char* m_bytes = nullptr;
    std::size_t m_size = 0;
};

} // namespace orv::detail
