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

// What an element or a plugin loads itself from: the counterpart of IOutArchive, read with the same types in
// the order of writing. Each of the two lists of ids is read in its own order.
//
// Every operation but `offset` answers the archive itself. One that asks for more than there is reports that,
// throws orv::Exception "filer error" and leaves its target as it was; parts of a value that were read before
// stay read.
//
// The order of the virtual operations is known to other modules. A compiler that groups overloads in its
// table of virtual operations puts those of `operator>>` in the opposite order; those modules are built with
// the same.
struct TALDORK_API IInArchive : boost::noncopyable {
    virtual ~IInArchive() = default;

    // How many bytes have been read.
    virtual std::uint64_t offset() const = 0;

    // Takes the front of the list of that strength.
    virtual IInArchive& hardPointer(AcDbObjectId& id) = 0;
    virtual IInArchive& softPointer(AcDbObjectId& id) = 0;

    virtual IInArchive& operator>>(AcGeMatrix3d& value) = 0;
    virtual IInArchive& operator>>(AcGePoint3d& value) = 0;
    virtual IInArchive& operator>>(AcGeVector3d& value) = 0;
    virtual IInArchive& operator>>(AcGeMatrix2d& value) = 0;
    virtual IInArchive& operator>>(AcGePoint2d& value) = 0;
    virtual IInArchive& operator>>(AcGeVector2d& value) = 0;
    // Gets the size that was written.
    virtual IInArchive& operator>>(Blob& value) = 0;
    // `in` names the room and the size that the caller expects. Another stored size is reported; the smaller
    // one is copied, and the stored one is passed over. But where the smaller one is 0, only the stored size
    // itself is passed over and its bytes come next.
    virtual IInArchive& operator>>(BlobRef& in) = 0;
    // Of each `unsigned int` the lower 16 bits are taken.
    virtual IInArchive& operator>>(std::wstring& value) = 0;
    virtual IInArchive& operator>>(std::string& value) = 0;
    virtual IInArchive& operator>>(double& value) = 0;
    virtual IInArchive& operator>>(float& value) = 0;
    virtual IInArchive& operator>>(std::int64_t& value) = 0;
    virtual IInArchive& operator>>(int& value) = 0;
    virtual IInArchive& operator>>(short& value) = 0;
    virtual IInArchive& operator>>(signed char& value) = 0;
    virtual IInArchive& operator>>(std::uint64_t& value) = 0;
    virtual IInArchive& operator>>(unsigned int& value) = 0;
    virtual IInArchive& operator>>(unsigned short& value) = 0;
    virtual IInArchive& operator>>(unsigned char& value) = 0;
    // Only the byte 1 is true.
    virtual IInArchive& operator>>(bool& value) = 0;

    // The other names of 32 and 64 bits.
    template <class Integer, std::enable_if_t<kHasNoOperation<Integer>, int> = 0>
    IInArchive& operator>>(Integer& value) {
        FiledInteger<Integer> filed = 0;
        *this >> filed;
        value = filed;
        return *this;
    }
};

} // namespace orv::serialization
