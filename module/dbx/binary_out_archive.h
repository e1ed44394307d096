#pragma once

#include "base/blob.h"
#include "base/export.h"
#include "dbx/growing_bytes.h"
#include "dbx/id_list.h"
#include "dbx/out_archive.h"
#include "platform/noinline.h"

#include "dbid.h"

#include <cstdint>
#include <deque>

namespace orv::serialization {

// Gathers the bytes in memory. What is written in parts (geometry in doubles, wide text in `unsigned int`,
// text and Blob as a BlobRef) goes through this archive's virtual operations, so that a derived archive sees
// the parts.
class TALDORK_API BinaryOutArchive : public IOutArchive {
public:
    BinaryOutArchive() = default;
    ~BinaryOutArchive() override;

    // The first offset() bytes of the buffer, which are the block that the owner files. Null if there are
    // none. Valid until the next value is written.
    const unsigned char* data() const { return m_bytes.data(); }
    // The block with the room behind it, which is zero. Whenever a value does not fit, the buffer grows by
    // what is missing and 512 more. Made when it is asked for; valid until it is asked for again.
    const Blob& buffer() const;
    std::uint64_t offset() const override { return m_offset; }

    // In the order of writing.
    const std::deque<AcDbObjectId>& softPointers() const { return softPointers_.all(); }
    const std::deque<AcDbObjectId>& hardPointers() const { return hardPointers_.all(); }

    IOutArchive& hardPointer(const AcDbObjectId& id) override;
    IOutArchive& softPointer(const AcDbObjectId& id) override;

    using IOutArchive::operator<<;
    IOutArchive& operator<<(const AcGeMatrix3d& value) override;
    IOutArchive& operator<<(const AcGePoint3d& value) override;
    IOutArchive& operator<<(const AcGeVector3d& value) override;
    IOutArchive& operator<<(const AcGeMatrix2d& value) override;
    IOutArchive& operator<<(const AcGePoint2d& value) override;
    IOutArchive& operator<<(const AcGeVector2d& value) override;
    IOutArchive& operator<<(const Blob& value) override;
    IOutArchive& operator<<(const BlobRef& value) override;
    IOutArchive& operator<<(const std::wstring& value) override;
    IOutArchive& operator<<(const std::string& value) override;
    IOutArchive& operator<<(double value) override;
    IOutArchive& operator<<(float value) override;
    IOutArchive& operator<<(std::int64_t value) override;
    IOutArchive& operator<<(int value) override;
    IOutArchive& operator<<(short value) override;
    IOutArchive& operator<<(signed char value) override;
    IOutArchive& operator<<(std::uint64_t value) override;
    IOutArchive& operator<<(unsigned int value) override;
    IOutArchive& operator<<(unsigned short value) override;
    IOutArchive& operator<<(unsigned char value) override;
    IOutArchive& operator<<(bool value) override;

private:
    bool isDerived() const;
    bool fits(std::uint64_t size) const { return size <= m_capacity - m_offset; }
    void makeRoom(std::uint64_t size);
    void grow(std::uint64_t size);
    void append(const void* data, std::uint64_t size);
    template <class T>
    IOutArchive& put(T value);
    template <class T>
    PLATFORM_NOINLINE IOutArchive& putGrowing(T value);
    IOutArchive& putAll(const void* values, std::uint64_t width, std::uint64_t count);
    template <std::size_t count, class Geometry>
    IOutArchive& putDoubles(const Geometry& value);
    PLATFORM_NOINLINE IOutArchive& putEachDouble(const void* values, std::size_t count);
    template <class Unit>
    IOutArchive& putUnits(const Unit* units, std::uint64_t count);
    void putRun(const void* from, std::uint64_t size);

    mutable Blob m_buffer;
    std::uint64_t m_offset = 0;
    detail::IdList softPointers_;
    detail::IdList hardPointers_;
    std::uint64_t m_capacity = 0; // what the buffer shows as its size
    detail::GrowingBytes m_bytes; // no shorter than that
};

} // namespace orv::serialization
