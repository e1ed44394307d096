#pragma once

#include "base/export.h"
#include "dbx/blob_ref.h"
#include "dbx/filed_integer.h"

#include <boost/noncopyable.hpp>

#include <cstdint>
#include <string>
#include <type_traits>

class AcDbObjectId;
class AcGeMatrix2d;
class AcGeMatrix3d;
class AcGePoint2d;
class AcGePoint3d;
class AcGeVector2d;
class AcGeVector3d;

namespace orv {
class Blob;
}

namespace orv::serialization {

// What an element or a plugin saves itself into. Values are written one behind the other, without tags: who
// reads them back asks for the same types in the same order.
//
// Every operation but `offset` answers the archive itself, so that calls chain. None of them fails unless it
// says so, but for want of memory.
//
// Ids do not enter the bytes, since the host has to see and translate them: they go into two lists, which the
// owner of the archive files as true pointers beside the bytes.
//
// The order of the virtual operations is known to other modules. A compiler that groups overloads in its
// table of virtual operations puts those of `operator<<` in the opposite order; those modules are built with
// the same.
struct TALDORK_API IOutArchive : boost::noncopyable {
    virtual ~IOutArchive() = default;

    // How many bytes have been written.
    virtual std::uint64_t offset() const = 0;

    // Appends to the list of that strength. A null id is an entry like any other.
    virtual IOutArchive& hardPointer(const AcDbObjectId& id) = 0;
    virtual IOutArchive& softPointer(const AcDbObjectId& id) = 0;

    // As doubles, a matrix row after row.
    virtual IOutArchive& operator<<(const AcGeMatrix3d& value) = 0;
    virtual IOutArchive& operator<<(const AcGePoint3d& value) = 0;
    virtual IOutArchive& operator<<(const AcGeVector3d& value) = 0;
    virtual IOutArchive& operator<<(const AcGeMatrix2d& value) = 0;
    virtual IOutArchive& operator<<(const AcGePoint2d& value) = 0;
    virtual IOutArchive& operator<<(const AcGeVector2d& value) = 0;
    // The size as `unsigned int`, then the bytes. Of a size of 4 GiB and more the low 32 bits are written.
    // Null with a size above 0 is reported, and ends in orv::Exception "filer error" with nothing written.
    virtual IOutArchive& operator<<(const Blob& value) = 0;
    virtual IOutArchive& operator<<(const BlobRef& value) = 0;
    // The number of 16-bit units, then each of them as `unsigned int`.
    virtual IOutArchive& operator<<(const std::wstring& value) = 0;
    // Like a BlobRef over its characters.
    virtual IOutArchive& operator<<(const std::string& value) = 0;
    // Each in its own width.
    virtual IOutArchive& operator<<(double value) = 0;
    virtual IOutArchive& operator<<(float value) = 0;
    virtual IOutArchive& operator<<(std::int64_t value) = 0;
    virtual IOutArchive& operator<<(int value) = 0;
    virtual IOutArchive& operator<<(short value) = 0;
    virtual IOutArchive& operator<<(signed char value) = 0;
    virtual IOutArchive& operator<<(std::uint64_t value) = 0;
    virtual IOutArchive& operator<<(unsigned int value) = 0;
    virtual IOutArchive& operator<<(unsigned short value) = 0;
    virtual IOutArchive& operator<<(unsigned char value) = 0;
    // One byte, 1 for true.
    virtual IOutArchive& operator<<(bool value) = 0;

    // The other names of 32 and 64 bits.
    template <class Integer, std::enable_if_t<kHasNoOperation<Integer>, int> = 0>
    IOutArchive& operator<<(Integer value) {
        return *this << static_cast<FiledInteger<Integer>>(value);
    }

    // Would be taken as a bool: a text without a class, an address, an id without a strength.
    template <class T>
    IOutArchive& operator<<(const T* value) = delete;
    IOutArchive& operator<<(const AcDbObjectId& value) = delete;
};

} // namespace orv::serialization
