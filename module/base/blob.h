#pragma once

#include "base/export.h"

#include "acadstrc.h"

#include <cstddef>
#include <cstdint>

class AcDbDwgFiler;

namespace orv {

// One owned block of bytes. Copies are deep; who wants to share one holds it through boost::shared_ptr.
class TALDORK_API Blob {
public:
    Blob() = default;
    Blob(const void* data, std::size_t len) { assign(data, len); }
    Blob(const Blob& other) { assign(other.m_data, other.m_size); }
    Blob(Blob&& other) noexcept { swap(other); }
    ~Blob() { delete[] m_data; }

    Blob& operator=(const Blob& other);
    Blob& operator=(Blob&& other) noexcept {
        swap(other);
        return *this;
    }
    void swap(Blob& other) noexcept;

    // Takes a copy of `len` bytes. Null and 0 together make it empty; just one of them is reported and makes
    // it empty too. `data` may lie in this very block.
    void assign(const void* data, std::size_t len);

    // Cuts the block, or lengthens it with zeros. 0 makes it empty.
    void resize(std::size_t n);

    std::size_t size() const { return m_size; }
    bool is_empty() const { return m_size == 0; }

    // Null exactly when the block is empty. Belongs to this object, until it is next changed.
    const unsigned char* data() const { return m_data; }
    unsigned char* data() { return m_data; }

    // The bytes as a pointer type, untested: who asks has compared the size with the layout first.
    template <class T>
    T cast() const {
        return reinterpret_cast<T>(m_data);
    }

    // The size as 32 bits, and the bytes if there are any. The first failing status, or eOk. Of a size of 4
    // GiB and more the low 32 bits are filed.
    Acad::ErrorStatus dwgOut(AcDbDwgFiler* filer) const;
    // Replaces the content with what dwgOut wrote. After a failure the block is no longer than what was asked
    // for so far; a size that the stream does not hold never takes more memory than the stream could fill.
    Acad::ErrorStatus dwgIn(AcDbDwgFiler* filer);
    // The same for `size` bytes whose number has been read already.
    Acad::ErrorStatus dwgInBytes(AcDbDwgFiler* filer, std::uint32_t size);

private:
    unsigned char* m_data = nullptr;
    std::size_t m_size = 0;
};

} // namespace orv
