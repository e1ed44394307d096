#pragma once

#include <cstdint>

namespace orv {

// Names bytes that somebody else owns: what an archive is to write, or the room into which it is to read.
struct BlobRef {
    BlobRef() = default;
    BlobRef(void* data, std::uint64_t size) : data_(data), size_(size) {}
    // For writing only: an archive reads into whatever it is given.
    BlobRef(const void* data, std::uint64_t size) : data_(const_cast<void*>(data)), size_(size) {}

    void* data_ = nullptr;
    std::uint64_t size_ = 0; // in bytes
};

} // namespace orv
