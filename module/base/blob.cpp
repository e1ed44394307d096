#include "base/blob.h"

#include "base/assert.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "dbfiler.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace orv {

namespace {

// What is asked of a stream at once. A damaged size costs at most this much memory before the stream runs
// dry.
constexpr std::size_t kReadStep = std::size_t{16} << 20;

} // namespace

void Blob::swap(Blob& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_size, other.m_size);
}

Blob& Blob::operator=(const Blob& other) {
    if (this != &other)
        assign(other.m_data, other.m_size);
    return *this;
}

void Blob::assign(const void* data, std::size_t len) {
    unsigned char* copy = nullptr;
    if (data != nullptr && len > 0) {
        copy = new unsigned char[len];
        std::memcpy(copy, data, len);
    } else if (data != nullptr || len > 0) {
        ORV_ASSERT(data && len);
        len = 0;
    }
    delete[] m_data;
    m_data = copy;
    m_size = len;
}

void Blob::resize(std::size_t n) {
    if (n == m_size)
        return;
    unsigned char* grown = n > 0 ? new unsigned char[n] : nullptr;
    const std::size_t kept = std::min(n, m_size);
    if (kept > 0)
        std::memcpy(grown, m_data, kept);
    if (n > kept)
        std::memset(grown + kept, 0, n - kept);
    delete[] m_data;
    m_data = grown;
    m_size = n;
}

Acad::ErrorStatus Blob::dwgOut(AcDbDwgFiler* filer) const {
    try {
        const auto filedSize = static_cast<Adesk::UInt32>(m_size);
        ORV_ASSERT_STATUS(filer->writeUInt32(filedSize));
        if (filedSize > 0)
            ORV_ASSERT_STATUS(filer->writeBytes(m_data, filedSize));
        return Acad::eOk;
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
}

Acad::ErrorStatus Blob::dwgIn(AcDbDwgFiler* filer) {
    try {
        resize(0);
        Adesk::UInt32 filedSize = 0;
        ORV_ASSERT_STATUS(filer->readUInt32(&filedSize));
        return dwgInBytes(filer, filedSize);
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
}

Acad::ErrorStatus Blob::dwgInBytes(AcDbDwgFiler* filer, std::uint32_t size) {
    try {
        resize(0);
        while (m_size < size) {
            const std::size_t have = m_size;
            const std::size_t step = std::min<std::size_t>(size - have, std::max(kReadStep, have));
            resize(have + step);
            ORV_ASSERT_STATUS(filer->readBytes(m_data + have, step));
        }
        return Acad::eOk;
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
}

} // namespace orv
