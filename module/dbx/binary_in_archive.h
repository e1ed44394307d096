#pragma once

#include "base/export.h"
#include "dbx/id_list.h"
#include "dbx/in_archive.h"
#include "platform/noinline.h"

#include "dbid.h"

#include <cstdint>
#include <deque>

namespace orv::serialization {

// Reads a block of bytes that a BinaryOutArchive has written. The two lists of ids are filled before reading.
class TALDORK_API BinaryInArchive : public IInArchive {
public:
    // The bytes belong to the caller and outlive the archive. Null is a block without bytes.
    BinaryInArchive(const void* data, std::uint64_t size);
    ~BinaryInArchive() override;

    std::uint64_t offset() const override { return static_cast<std::uint64_t>(m_current - m_begin); }

    // In the order of reading; what has been read is gone from them.
    std::deque<AcDbObjectId>& softPointers() { return softPointers_.all(); }
    const std::deque<AcDbObjectId>& softPointers() const { return softPointers_.all(); }
    std::deque<AcDbObjectId>& hardPointers() { return hardPointers_.all(); }
    const std::deque<AcDbObjectId>& hardPointers() const { return hardPointers_.all(); }

    IInArchive& hardPointer(AcDbObjectId& id) override;
    IInArchive& softPointer(AcDbObjectId& id) override;

    using IInArchive::operator>>;
    IInArchive& operator>>(AcGeMatrix3d& value) override;
    IInArchive& operator>>(AcGePoint3d& value) override;
    IInArchive& operator>>(AcGeVector3d& value) override;
    IInArchive& operator>>(AcGeMatrix2d& value) override;
    IInArchive& operator>>(AcGePoint2d& value) override;
    IInArchive& operator>>(AcGeVector2d& value) override;
    IInArchive& operator>>(Blob& value) override;
    IInArchive& operator>>(BlobRef& in) override;
    IInArchive& operator>>(std::wstring& value) override;
    IInArchive& operator>>(std::string& value) override;
    IInArchive& operator>>(double& value) override;
    IInArchive& operator>>(float& value) override;
    IInArchive& operator>>(std::int64_t& value) override;
    IInArchive& operator>>(int& value) override;
    IInArchive& operator>>(short& value) override;
    IInArchive& operator>>(signed char& value) override;
    IInArchive& operator>>(std::uint64_t& value) override;
    IInArchive& operator>>(unsigned int& value) override;
    IInArchive& operator>>(unsigned short& value) override;
    IInArchive& operator>>(unsigned char& value) override;
    IInArchive& operator>>(bool& value) override;

private:
    bool isDerived() const;
    std::uint64_t left() const { return size_ - static_cast<std::uint64_t>(m_current - m_begin); }
    void take(void* to, std::uint64_t size);
    template <class T>
    IInArchive& get(T& value);
    template <class T>
    [[noreturn]] void failAtNumber() const;
    [[noreturn]] void failAtRun(std::uint64_t size) const;
    void reportBlobWithoutSize() const;
    const unsigned char* takeRun(std::uint64_t size);
    template <std::size_t count, class Geometry>
    IInArchive& getDoubles(Geometry& value);
    template <std::size_t count>
    PLATFORM_NOINLINE IInArchive& getEachDouble(void* values);
    std::uint32_t getCount();

    const unsigned char* m_begin;
    std::uint64_t size_;
    const unsigned char* m_current;
    detail::IdList softPointers_;
    detail::IdList hardPointers_;
};

} // namespace orv::serialization
