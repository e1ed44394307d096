#include "dbx/serArchives.h"

#include "base/blob.h"
#include "base/exceptions.h"
#include "platform/text.h"
#include "support/archive_bytes.h"
#include "support/report_recorder.h"

#include "gemat2d.h"
#include "gemat3d.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstring>
#include <string>
#include <variant>
#include <vector>

using namespace orv::serialization;
using namespace testing_support;
using orv::Blob;
using orv::BlobRef;

namespace {

// Bytes that an archive is handed as a BlobRef.
struct Room {
    std::vector<unsigned char> bytes;
};
// Ids go into the list of their strength and leave the bytes as they are.
struct HardId {
    AcDbObjectId id;
};
struct SoftId {
    AcDbObjectId id;
};

using Value =
    std::variant<bool, signed char, unsigned char, short, unsigned short, int, unsigned int, std::int64_t,
                 std::uint64_t, float, double, std::string, std::wstring, Blob, AcGePoint2d, AcGeVector2d,
                 AcGePoint3d, AcGeVector3d, AcGeMatrix2d, AcGeMatrix3d, Room, HardId, SoftId>;

// Any bits at all, numbers that are none included.
template <class T>
T anyNumber() {
    const auto bits = *rc::gen::arbitrary<std::uint64_t>();
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <class Geometry>
Geometry anyGeometry() {
    double parts[sizeof(Geometry) / sizeof(double)];
    for (double& part : parts)
        part = anyNumber<double>();
    Geometry geometry;
    std::memcpy(static_cast<void*>(&geometry), parts, sizeof geometry);
    return geometry;
}

// Also longer than the buffer grows at once.
std::size_t anyLength() {
    return *rc::gen::weightedOneOf<std::size_t>(
        {{9, rc::gen::inRange<std::size_t>(0, 12)}, {1, rc::gen::inRange<std::size_t>(0, 1500)}});
}

std::string anyBytes(std::size_t length) {
    return *rc::gen::container<std::string>(length, rc::gen::arbitrary<char>());
}

// From all planes, and lone surrogates.
std::wstring anyWide() {
    std::u16string units(anyLength(), u' ');
    for (char16_t& unit : units)
        unit = static_cast<char16_t>(*rc::gen::oneOf(
            rc::gen::inRange(0, 0x10000), rc::gen::inRange(0xD800, 0xE000), rc::gen::inRange(32, 127)));
    return platform::fromUtf16(units);
}

AcDbObjectId anyId() { return AcDbObjectId().setFromOldId(anyNumber<Adesk::IntPtr>()); }

// Of a type that has bytes.
Value anyFiledValue() {
    switch (*rc::gen::inRange(0, 21)) {
    case 0:
        return *rc::gen::arbitrary<bool>();
    case 1:
        return anyNumber<signed char>();
    case 2:
        return anyNumber<unsigned char>();
    case 3:
        return anyNumber<short>();
    case 4:
        return anyNumber<unsigned short>();
    case 5:
        return anyNumber<int>();
    case 6:
        return anyNumber<unsigned int>();
    case 7:
        return anyNumber<std::int64_t>();
    case 8:
        return anyNumber<std::uint64_t>();
    case 9:
        return anyNumber<float>();
    case 10:
        return anyNumber<double>();
    case 11:
        return anyBytes(anyLength());
    case 12:
        return anyWide();
    case 13: {
        const std::string bytes = anyBytes(anyLength());
        return bytes.empty() ? Blob() : Blob(bytes.data(), bytes.size());
    }
    case 14:
        return anyGeometry<AcGePoint2d>();
    case 15:
        return anyGeometry<AcGeVector2d>();
    case 16:
        return anyGeometry<AcGePoint3d>();
    case 17:
        return anyGeometry<AcGeVector3d>();
    case 18:
        return anyGeometry<AcGeMatrix2d>();
    case 19:
        return anyGeometry<AcGeMatrix3d>();
    default: {
        const std::string bytes = anyBytes(anyLength());
        return Room{{bytes.begin(), bytes.end()}};
    }
    }
}

Value anyValue() {
    switch (*rc::gen::inRange(0, 23)) {
    case 0:
        return HardId{anyId()};
    case 1:
        return SoftId{anyId()};
    default:
        return anyFiledValue();
    }
}

std::vector<Value> anyValues(int most) {
    std::vector<Value> values(*rc::gen::inRange(0, most));
    for (Value& value : values)
        value = anyValue();
    return values;
}

template <class T>
void writeOne(IOutArchive& archive, const T& value) {
    archive << value;
}
void writeOne(IOutArchive& archive, const Room& value) {
    archive << BlobRef(value.bytes.data(), value.bytes.size());
}
void writeOne(IOutArchive& archive, const HardId& value) { archive.hardPointer(value.id); }
void writeOne(IOutArchive& archive, const SoftId& value) { archive.softPointer(value.id); }

void write(IOutArchive& archive, const std::vector<Value>& values) {
    for (const Value& value : values)
        std::visit([&](const auto& typed) { writeOne(archive, typed); }, value);
}

template <class T>
T readOne(IInArchive& archive, const T&) {
    T value{};
    archive >> value;
    return value;
}
Room readOne(IInArchive& archive, const Room& like) {
    Room value;
    value.bytes.resize(like.bytes.size());
    value.bytes.shrink_to_fit();
    BlobRef in(value.bytes.data(), value.bytes.size());
    archive >> in;
    return value;
}
HardId readOne(IInArchive& archive, const HardId&) {
    HardId value;
    archive.hardPointer(value.id);
    return value;
}
SoftId readOne(IInArchive& archive, const SoftId&) {
    SoftId value;
    archive.softPointer(value.id);
    return value;
}

// Values of the same types, read one by one; what has been read before a failure is kept.
void read(IInArchive& archive, const std::vector<Value>& like, std::vector<Value>& values) {
    for (const Value& value : like)
        std::visit([&](const auto& typed) { values.emplace_back(readOne(archive, typed)); }, value);
}

// As the owner of an archive hands them on beside the bytes.
void copyIds(const BinaryOutArchive& from, BinaryInArchive& to) {
    to.hardPointers() = from.hardPointers();
    to.softPointers() = from.softPointers();
}

bool same(const Blob& a, const Blob& b) {
    return a.size() == b.size() && (a.is_empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}
bool same(const std::string& a, const std::string& b) { return a == b; }
bool same(const std::wstring& a, const std::wstring& b) { return a == b; }
bool same(const Room& a, const Room& b) { return a.bytes == b.bytes; }
bool same(const HardId& a, const HardId& b) { return a.id == b.id; }
bool same(const SoftId& a, const SoftId& b) { return a.id == b.id; }
// By their bits, since a number that is none equals nothing.
template <class T>
bool same(const T& a, const T& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}
bool same(const Value& a, const Value& b) {
    return a.index() == b.index() &&
           std::visit(
               [&](const auto& typed) { return same(typed, std::get<std::decay_t<decltype(typed)>>(b)); }, a);
}

// The buffer's size as its rule gives it: values one by one, geometry by doubles, wide text by units.
struct CapacityModel {
    std::uint64_t offset = 0;
    std::uint64_t capacity = 0;

    void put(std::uint64_t size) {
        if (offset + size > capacity)
            capacity = offset + size + 512;
        offset += size;
    }
    void putTimes(std::uint64_t size, std::uint64_t times) {
        for (std::uint64_t i = 0; i < times; ++i)
            put(size);
    }
    void operator()(const std::string& text) { put(4 + text.size()); }
    void operator()(const Blob& blob) { put(4 + blob.size()); }
    void operator()(const Room& room) { put(4 + room.bytes.size()); }
    void operator()(const HardId&) {}
    void operator()(const SoftId&) {}
    void operator()(const std::wstring& text) { putTimes(4, 1 + platform::toUtf16(text).size()); }
    template <class T>
    void operator()(const T&) {
        if (std::is_arithmetic<T>::value)
            put(sizeof(T));
        else
            putTimes(8, sizeof(T) / 8);
    }
};

std::vector<unsigned char> exactCopy(const std::vector<unsigned char>& bytes, std::size_t size) {
    std::vector<unsigned char> copy(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    copy.shrink_to_fit();
    return copy;
}

// Whatever the bytes: values, or the one failure. How many values were read. The ids are those of `written`.
std::size_t readAll(const std::vector<unsigned char>& bytes, const BinaryOutArchive& written,
                    const std::vector<Value>& like, std::vector<Value>& values) {
    BinaryInArchive archive(bytes.data(), bytes.size());
    copyIds(written, archive);
    try {
        read(archive, like, values);
    } catch (const orv::Exception& failure) {
        RC_ASSERT(std::string(failure.what()) == "filer error");
    }
    RC_ASSERT(archive.offset() <= bytes.size());
    return values.size();
}

} // namespace

RC_GTEST_PROP(ArchiveProperty, AnySequenceOfValuesReadsBackEqual, ()) {
    ReportRecorder recorder;
    const std::vector<Value> values = anyValues(30);
    BinaryOutArchive out;
    write(out, values);
    const std::vector<unsigned char> bytes = blockOf(out);
    BinaryInArchive in(bytes.data(), bytes.size());
    copyIds(out, in);
    std::vector<Value> back;
    read(in, values, back);
    RC_ASSERT(in.offset() == out.offset());
    RC_ASSERT(in.hardPointers().empty() && in.softPointers().empty());
    RC_ASSERT(back.size() == values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        RC_ASSERT(same(values[i], back[i]));
    RC_ASSERT(recorder.size() == 0u);
}

RC_GTEST_PROP(ArchiveProperty, TheBufferGrowsByWhatIsMissingAnd512More, ()) {
    const std::vector<Value> values = anyValues(60);
    const int lookAt = *rc::gen::inRange(0, 60);
    BinaryOutArchive out;
    CapacityModel model;
    for (std::size_t i = 0; i < values.size(); ++i) {
        write(out, {values[i]});
        std::visit([&](const auto& typed) { model(typed); }, values[i]);
        RC_ASSERT(out.offset() == model.offset);
        if (static_cast<int>(i) == lookAt)
            RC_ASSERT(out.buffer().size() == model.capacity);
    }
    const Blob& buffer = out.buffer();
    RC_ASSERT(buffer.size() == model.capacity);
    for (std::size_t at = out.offset(); at < buffer.size(); ++at)
        RC_ASSERT(buffer.data()[at] == 0);
}

RC_GTEST_PROP(ArchiveProperty, AnyTruncationEndsInTheFailure, ()) {
    ReportRecorder recorder;
    std::vector<Value> values = anyValues(8);
    values.push_back(anyFiledValue());
    BinaryOutArchive out;
    write(out, values);
    const std::vector<unsigned char> bytes = blockOf(out);
    const auto kept = *rc::gen::inRange<std::size_t>(0, bytes.size());
    const std::vector<unsigned char> cut = exactCopy(bytes, kept);
    std::vector<Value> back;
    RC_ASSERT(readAll(cut, out, values, back) < values.size());
    for (std::size_t i = 0; i < back.size(); ++i)
        RC_ASSERT(same(values[i], back[i]));
    RC_ASSERT(recorder.size() >= 1u);
}

RC_GTEST_PROP(ArchiveProperty, AnyBytesEndInValuesOrTheFailure, ()) {
    ReportRecorder recorder;
    const std::vector<Value> like = anyValues(20);
    auto bytes = *rc::gen::container<std::vector<unsigned char>>(
        rc::gen::oneOf(rc::gen::arbitrary<unsigned char>(), rc::gen::element<unsigned char>(0, 0, 1, 2)));
    bytes.shrink_to_fit();
    BinaryOutArchive out;
    write(out, like);
    std::vector<Value> back;
    readAll(bytes, out, like, back);
}

RC_GTEST_PROP(ArchiveProperty, AnyBytesIntoABlobRefStayInItsRoom, ()) {
    ReportRecorder recorder;
    const auto size = *rc::gen::inRange<std::size_t>(0, 20);
    auto bytes = *rc::gen::container<std::vector<unsigned char>>(
        rc::gen::oneOf(rc::gen::arbitrary<unsigned char>(), rc::gen::element<unsigned char>(0, 0, 1, 2)));
    bytes.shrink_to_fit();
    std::vector<unsigned char> room(size, 0xee);
    room.shrink_to_fit();
    BinaryInArchive archive(bytes.data(), bytes.size());
    BlobRef in(room.data(), size);
    try {
        archive >> in;
    } catch (const orv::Exception& failure) {
        RC_ASSERT(std::string(failure.what()) == "filer error");
        RC_ASSERT(room == std::vector<unsigned char>(size, 0xee));
    }
    RC_ASSERT(archive.offset() <= bytes.size());
}

namespace {

// One of each, small.
std::vector<Value> oneOfEach() {
    return {true,
            static_cast<signed char>(-1),
            static_cast<unsigned char>(2),
            short{-3},
            static_cast<unsigned short>(4),
            -5,
            6u,
            std::int64_t{-7},
            std::uint64_t{8},
            9.5f,
            10.5,
            std::string("ab"),
            std::wstring(L"c\U0001F3D7"),
            Blob("d", 1),
            Room{{'e', 'f'}},
            HardId{AcDbObjectId().setFromOldId(0x2a)},
            SoftId{AcDbObjectId().setFromOldId(0x2b)},
            AcGePoint2d(1, 2),
            AcGeVector2d(3, 4),
            AcGePoint3d(5, 6, 7),
            AcGeVector3d(8, 9, 10),
            AcGeMatrix2d(),
            AcGeMatrix3d()};
}

// The upper halves of the three wide characters, which begin behind 49 bytes and their count.
bool isUnread(std::size_t at) { return at >= 53 && at < 65 && (at - 53) % 4 >= 2; }

} // namespace

TEST(ArchiveDamage, EveryPrefixEndsInTheFailure) {
    ReportRecorder recorder;
    const std::vector<Value> values = oneOfEach();
    BinaryOutArchive out;
    write(out, values);
    const std::vector<unsigned char> bytes = blockOf(out);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        recorder.clear();
        const std::vector<unsigned char> cut = exactCopy(bytes, size);
        std::vector<Value> back;
        BinaryInArchive archive(cut.data(), cut.size());
        copyIds(out, archive);
        EXPECT_THROW(read(archive, values, back), orv::Exception) << size;
        EXPECT_LT(back.size(), values.size());
        EXPECT_GE(recorder.size(), 1u);
    }
    std::vector<Value> back;
    EXPECT_EQ(readAll(bytes, out, values, back), values.size());
}

TEST(ArchiveDamage, EverySingleBitEndsInValuesOrTheFailure) {
    ReportRecorder recorder;
    const std::vector<Value> values = oneOfEach();
    BinaryOutArchive out;
    write(out, values);
    const std::vector<unsigned char> bytes = blockOf(out);
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        std::vector<unsigned char> damaged = bytes;
        damaged[bit / 8] ^= static_cast<unsigned char>(1u << bit % 8);
        damaged.shrink_to_fit();
        std::vector<Value> back;
        const std::size_t count = readAll(damaged, out, values, back);
        bool differs = count < values.size();
        for (std::size_t i = 0; i < count; ++i)
            differs = differs || !same(values[i], back[i]);
        EXPECT_EQ(differs, !isUnread(bit / 8)) << bit;
    }
}
