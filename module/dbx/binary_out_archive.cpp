#include "dbx/binary_out_archive.h"

#include "base/assert.h"
#include "base/exceptions.h"
#include "platform/text.h"

#include "gemat2d.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <typeinfo>

namespace orv::serialization {

namespace {

// How much more room than needed the buffer shows after it has grown.
constexpr std::uint64_t kGrowthStep = 512;

// More than any memory holds, and little enough that sums of offsets and sizes stay numbers.
constexpr std::uint64_t kTooMany = std::numeric_limits<std::size_t>::max() / 4;

// Characters that are not one 16-bit unit each. All are looked at, which is faster than to stop at the first.
bool hasBeyondFirstPlane(const std::wstring& text) {
    using Number = std::make_unsigned_t<wchar_t>;
    Number bits = 0;
    for (wchar_t character : text)
        bits |= static_cast<Number>(character);
    return bits > 0xFFFF;
}

} // namespace

BinaryOutArchive::~BinaryOutArchive() = default;

const Blob& BinaryOutArchive::buffer() const {
    m_buffer.resize(0);
    m_buffer.resize(m_capacity);
    if (m_offset > 0)
        std::memcpy(m_buffer.data(), m_bytes.data(), m_offset);
    return m_buffer;
}

// Whether somebody may be looking at the single values. Where nobody does, they may go in together, as long
// as they cause no growth.
inline bool BinaryOutArchive::isDerived() const { return &typeid(*this) != &typeid(BinaryOutArchive); }

void BinaryOutArchive::grow(std::uint64_t size) {
    const std::uint64_t capacity = m_offset + size + kGrowthStep;
    m_bytes.reserve(capacity);
    m_capacity = capacity;
}

// Inline, like the others below: most of a value's time is the way to it.
inline void BinaryOutArchive::makeRoom(std::uint64_t size) {
    if (!fits(size))
        grow(size);
}

// Into room that is there.
inline void BinaryOutArchive::append(const void* data, std::uint64_t size) {
    std::memcpy(m_bytes.data() + m_offset, data, size);
    m_offset += size;
}

template <class T>
inline IOutArchive& BinaryOutArchive::put(T value) {
    if (!fits(sizeof value))
        return putGrowing(value);
    append(&value, sizeof value);
    return *this;
}

// Apart, so that the way of nearly all values is short.
template <class T>
IOutArchive& BinaryOutArchive::putGrowing(T value) {
    grow(sizeof value);
    append(&value, sizeof value);
    return *this;
}

// Values of one width together: room is made as for one by one.
inline IOutArchive& BinaryOutArchive::putAll(const void* values, std::uint64_t width, std::uint64_t count) {
    const auto* from = static_cast<const unsigned char*>(values);
    std::uint64_t size = width * count;
    while (!fits(size)) {
        const std::uint64_t fitting = (m_capacity - m_offset) / width * width;
        if (fitting > 0)
            append(from, fitting);
        from += fitting;
        size -= fitting;
        grow(width);
    }
    append(from, size);
    return *this;
}

// Points, vectors and matrices are doubles in their order and nothing else.
template <std::size_t count, class Geometry>
inline IOutArchive& BinaryOutArchive::putDoubles(const Geometry& value) {
    static_assert(std::is_standard_layout<Geometry>::value && sizeof value == count * sizeof(double));
    if (!fits(sizeof value) || isDerived())
        return putEachDouble(&value, count);
    append(&value, sizeof value);
    return *this;
}

IOutArchive& BinaryOutArchive::putEachDouble(const void* values, std::size_t count) {
    if (!isDerived())
        return putAll(values, sizeof(double), count);
    for (std::size_t i = 0; i < count; ++i) {
        double value = 0.0;
        std::memcpy(&value, static_cast<const unsigned char*>(values) + i * sizeof value, sizeof value);
        *this << value;
    }
    return *this;
}

template <class Unit>
inline IOutArchive& BinaryOutArchive::putUnits(const Unit* units, std::uint64_t count) {
    if (isDerived()) {
        *this << static_cast<unsigned int>(count);
        for (std::uint64_t i = 0; i < count; ++i)
            *this << static_cast<unsigned int>(units[i]);
        return *this;
    }
    put(static_cast<std::uint32_t>(count));
    if (sizeof(Unit) == sizeof(std::uint32_t) && count > 0)
        return putAll(units, sizeof(std::uint32_t), count);
    for (std::uint64_t i = 0; i < count; ++i)
        put(static_cast<std::uint32_t>(units[i]));
    return *this;
}

// What goes as a BlobRef where nobody looks. The room for size and bytes is made in one step.
inline void BinaryOutArchive::putRun(const void* from, std::uint64_t size) {
    makeRoom(sizeof(std::uint32_t) + size);
    put(static_cast<std::uint32_t>(size));
    if (size > 0)
        append(from, size);
}

IOutArchive& BinaryOutArchive::hardPointer(const AcDbObjectId& id) {
    hardPointers_.push_back(id);
    return *this;
}

IOutArchive& BinaryOutArchive::softPointer(const AcDbObjectId& id) {
    softPointers_.push_back(id);
    return *this;
}

IOutArchive& BinaryOutArchive::operator<<(const AcGeMatrix3d& value) { return putDoubles<16>(value); }
IOutArchive& BinaryOutArchive::operator<<(const AcGePoint3d& value) { return putDoubles<3>(value); }
IOutArchive& BinaryOutArchive::operator<<(const AcGeVector3d& value) { return putDoubles<3>(value); }
IOutArchive& BinaryOutArchive::operator<<(const AcGeMatrix2d& value) { return putDoubles<9>(value); }
IOutArchive& BinaryOutArchive::operator<<(const AcGePoint2d& value) { return putDoubles<2>(value); }
IOutArchive& BinaryOutArchive::operator<<(const AcGeVector2d& value) { return putDoubles<2>(value); }

IOutArchive& BinaryOutArchive::operator<<(const Blob& value) {
    if (isDerived())
        return *this << BlobRef(value.data(), value.size());
    putRun(value.data(), value.size());
    return *this;
}

// The condition texts below are part of the reports and stand as they are.
// clang-format off
IOutArchive& BinaryOutArchive::operator<<(const BlobRef& value) {
    const void* const from = value.data_;
    if (value.size_ > 0 && from == nullptr) {
        ORV_ASSERT(from);
        throw Exception("filer error");
    }
    if (value.size_ >= kTooMany)
        throw std::bad_alloc();
    makeRoom(sizeof(std::uint32_t) + value.size_);
    put(static_cast<std::uint32_t>(value.size_));
    const std::uint64_t m0 = offset();
    if (value.size_ == 0)
        return *this;
    append(from, value.size_);
    const std::uint64_t m1 = offset();
    ORV_ASSERT((m1-m0) == value.size_)(m0)(m1)(m1-m0)(value.size_);
    return *this;
}
// clang-format on

IOutArchive& BinaryOutArchive::operator<<(const std::wstring& value) {
    if (!hasBeyondFirstPlane(value))
        return putUnits(value.data(), value.size());
    const std::u16string units = platform::toUtf16(value);
    return putUnits(units.data(), units.size());
}

IOutArchive& BinaryOutArchive::operator<<(const std::string& value) {
    if (isDerived())
        return *this << BlobRef(value.data(), value.size());
    putRun(value.data(), value.size());
    return *this;
}

IOutArchive& BinaryOutArchive::operator<<(double value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(float value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(std::int64_t value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(int value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(short value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(signed char value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(std::uint64_t value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(unsigned int value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(unsigned short value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(unsigned char value) { return put(value); }
IOutArchive& BinaryOutArchive::operator<<(bool value) { return put(static_cast<unsigned char>(value)); }

} // namespace orv::serialization
