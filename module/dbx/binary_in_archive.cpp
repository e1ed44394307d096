#include "dbx/binary_in_archive.h"

#include "base/assert.h"
#include "base/blob.h"
#include "base/exceptions.h"
#include "platform/text.h"

#include "gemat2d.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace orv::serialization {

namespace {

using uint32 = std::uint32_t;

// What has no number to answer with.
[[noreturn]] void fail() { throw Exception("filer error"); }

bool isSurrogate(std::uint32_t unit) { return (unit & 0xF800) == 0xD800; }

} // namespace

BinaryInArchive::BinaryInArchive(const void* data, std::uint64_t size)
    : m_begin(static_cast<const unsigned char*>(data)), size_(data != nullptr ? size : 0),
      m_current(m_begin) {}

BinaryInArchive::~BinaryInArchive() = default;

// Whether somebody may be looking at the single values that larger ones are made of.
inline bool BinaryInArchive::isDerived() const { return &typeid(*this) != &typeid(BinaryInArchive); }

// Of bytes that are known to be there. Inline, like the others below: most of a value's time is the way to
// it.
inline void BinaryInArchive::take(void* to, std::uint64_t size) {
    std::memcpy(to, m_current, size);
    m_current += size;
}

template <class T>
inline IInArchive& BinaryInArchive::get(T& value) {
    if (left() < sizeof(T))
        failAtNumber<T>();
    take(&value, sizeof(T));
    return *this;
}

template <class T>
void BinaryInArchive::failAtNumber() const {
    const std::uint64_t currOffset = offset();
    ORV_ASSERT((currOffset + sizeof(T)) <= size_)(currOffset)(size_)(sizeof(T))(typeid(T).name());
    fail();
}

// A size that the block does not hold was never written by an archive.
void BinaryInArchive::failAtRun(std::uint64_t size) const {
    const std::uint64_t currOffset = offset();
    ORV_ASSERT(size <= size_ - currOffset)(currOffset)(size_)(size);
    fail();
}

void BinaryInArchive::reportBlobWithoutSize() const {
    const std::uint64_t currOffset = offset();
    ORV_ASSERT((currOffset + sizeof(uint32)) <= size_)(currOffset)(size_);
}

// The start of `size` bytes, which are passed over.
inline const unsigned char* BinaryInArchive::takeRun(std::uint64_t size) {
    if (size > left())
        failAtRun(size);
    const unsigned char* const run = m_current;
    m_current += size;
    return run;
}

// Points, vectors and matrices are doubles in their order and nothing else.
template <std::size_t count, class Geometry>
inline IInArchive& BinaryInArchive::getDoubles(Geometry& value) {
    static_assert(std::is_trivially_copyable<Geometry>::value && std::is_standard_layout<Geometry>::value &&
                  sizeof value == count * sizeof(double));
    if (sizeof value > left() || isDerived())
        return getEachDouble<count>(&value);
    take(&value, sizeof value);
    return *this;
}

// Apart, so that the usual way is short. The target stays as it is until all are there.
template <std::size_t count>
IInArchive& BinaryInArchive::getEachDouble(void* values) {
    double read[count];
    for (double& value : read)
        *this >> value;
    std::memcpy(values, read, sizeof read);
    return *this;
}

// Through the operation, unless nobody looks.
inline std::uint32_t BinaryInArchive::getCount() {
    unsigned int count = 0;
    if (isDerived())
        *this >> count;
    else
        get(count);
    return count;
}

IInArchive& BinaryInArchive::hardPointer(AcDbObjectId& id) {
    ORV_ASSERT(!hardPointers_.empty());
    if (hardPointers_.empty())
        fail();
    id = hardPointers_.front();
    hardPointers_.pop_front();
    return *this;
}

IInArchive& BinaryInArchive::softPointer(AcDbObjectId& id) {
    ORV_ASSERT(!softPointers_.empty());
    if (softPointers_.empty())
        fail();
    id = softPointers_.front();
    softPointers_.pop_front();
    return *this;
}

IInArchive& BinaryInArchive::operator>>(AcGeMatrix3d& value) { return getDoubles<16>(value); }
IInArchive& BinaryInArchive::operator>>(AcGePoint3d& value) { return getDoubles<3>(value); }
IInArchive& BinaryInArchive::operator>>(AcGeVector3d& value) { return getDoubles<3>(value); }
IInArchive& BinaryInArchive::operator>>(AcGeMatrix2d& value) { return getDoubles<9>(value); }
IInArchive& BinaryInArchive::operator>>(AcGePoint2d& value) { return getDoubles<2>(value); }
IInArchive& BinaryInArchive::operator>>(AcGeVector2d& value) { return getDoubles<2>(value); }

IInArchive& BinaryInArchive::operator>>(Blob& value) {
    if (left() < sizeof(uint32))
        reportBlobWithoutSize();
    const std::uint32_t size = getCount();
    const unsigned char* const from = takeRun(size);
    // A block of the same size is used again.
    value.resize(size);
    if (size > 0)
        std::memcpy(value.data(), from, size);
    return *this;
}

IInArchive& BinaryInArchive::operator>>(BlobRef& in) {
    const std::uint64_t currOffset = offset();
    ORV_ASSERT((currOffset + sizeof(uint32) + in.size_) <= size_)(currOffset)(size_)(in.size_);
    unsigned int storedSize = 0;
    *this >> storedSize;
    ORV_ASSERT(storedSize == in.size_)(storedSize)(in.size_);
    const std::uint64_t common = std::min<std::uint64_t>(storedSize, in.size_);
    if (common == 0)
        return *this;
    void* const to = in.data_;
    ORV_ASSERT(to);
    if (to == nullptr)
        fail();
    std::memcpy(to, takeRun(storedSize), common);
    return *this;
}

IInArchive& BinaryInArchive::operator>>(std::wstring& value) {
    const std::uint32_t count = getCount();
    const unsigned char* const from = takeRun(std::uint64_t{count} * sizeof(uint32));
    value.resize(count);
    wchar_t* const to = &value[0];
    bool hasSurrogate = false;
    for (std::size_t at = 0; at < count; ++at) {
        uint32 filed = 0;
        std::memcpy(&filed, from + at * sizeof filed, sizeof filed);
        to[at] = static_cast<wchar_t>(filed & 0xFFFF);
        hasSurrogate |= isSurrogate(filed);
    }
    if (sizeof(wchar_t) > sizeof(char16_t) && hasSurrogate)
        value = platform::fromUtf16(std::u16string(value.begin(), value.end()));
    return *this;
}

IInArchive& BinaryInArchive::operator>>(std::string& value) {
    const std::uint32_t count = getCount();
    value.assign(reinterpret_cast<const char*>(takeRun(count)), count);
    return *this;
}

IInArchive& BinaryInArchive::operator>>(double& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(float& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(std::int64_t& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(int& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(short& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(signed char& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(std::uint64_t& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(unsigned int& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(unsigned short& value) { return get(value); }
IInArchive& BinaryInArchive::operator>>(unsigned char& value) { return get(value); }

IInArchive& BinaryInArchive::operator>>(bool& value) {
    unsigned char byte = 0;
    get(byte);
    value = byte == 1;
    return *this;
}

} // namespace orv::serialization
