#include "dbx/serArchives.h"

#include "support/slots.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

using namespace orv::serialization;
using orv::Blob;
using orv::BlobRef;

namespace {

// Each operation notes its own number.
struct NumberedOut : IOutArchive {
    mutable int called = 0;
    IOutArchive& note(int number) {
        called = number;
        return *this;
    }
    std::uint64_t offset() const override {
        called = 2;
        return 0;
    }
    IOutArchive& hardPointer(const AcDbObjectId&) override { return note(3); }
    IOutArchive& softPointer(const AcDbObjectId&) override { return note(4); }
    using IOutArchive::operator<<;
    IOutArchive& operator<<(const AcGeMatrix3d&) override { return note(5); }
    IOutArchive& operator<<(const AcGePoint3d&) override { return note(6); }
    IOutArchive& operator<<(const AcGeVector3d&) override { return note(7); }
    IOutArchive& operator<<(const AcGeMatrix2d&) override { return note(8); }
    IOutArchive& operator<<(const AcGePoint2d&) override { return note(9); }
    IOutArchive& operator<<(const AcGeVector2d&) override { return note(10); }
    IOutArchive& operator<<(const Blob&) override { return note(11); }
    IOutArchive& operator<<(const BlobRef&) override { return note(12); }
    IOutArchive& operator<<(const std::wstring&) override { return note(13); }
    IOutArchive& operator<<(const std::string&) override { return note(14); }
    IOutArchive& operator<<(double) override { return note(15); }
    IOutArchive& operator<<(float) override { return note(16); }
    IOutArchive& operator<<(std::int64_t) override { return note(17); }
    IOutArchive& operator<<(int) override { return note(18); }
    IOutArchive& operator<<(short) override { return note(19); }
    IOutArchive& operator<<(signed char) override { return note(20); }
    IOutArchive& operator<<(std::uint64_t) override { return note(21); }
    IOutArchive& operator<<(unsigned int) override { return note(22); }
    IOutArchive& operator<<(unsigned short) override { return note(23); }
    IOutArchive& operator<<(unsigned char) override { return note(24); }
    IOutArchive& operator<<(bool) override { return note(25); }
};

struct NumberedIn : IInArchive {
    mutable int called = 0;
    IInArchive& note(int number) {
        called = number;
        return *this;
    }
    std::uint64_t offset() const override {
        called = 2;
        return 0;
    }
    IInArchive& hardPointer(AcDbObjectId&) override { return note(3); }
    IInArchive& softPointer(AcDbObjectId&) override { return note(4); }
    using IInArchive::operator>>;
    IInArchive& operator>>(AcGeMatrix3d&) override { return note(5); }
    IInArchive& operator>>(AcGePoint3d&) override { return note(6); }
    IInArchive& operator>>(AcGeVector3d&) override { return note(7); }
    IInArchive& operator>>(AcGeMatrix2d&) override { return note(8); }
    IInArchive& operator>>(AcGePoint2d&) override { return note(9); }
    IInArchive& operator>>(AcGeVector2d&) override { return note(10); }
    IInArchive& operator>>(Blob&) override { return note(11); }
    IInArchive& operator>>(BlobRef&) override { return note(12); }
    IInArchive& operator>>(std::wstring&) override { return note(13); }
    IInArchive& operator>>(std::string&) override { return note(14); }
    IInArchive& operator>>(double&) override { return note(15); }
    IInArchive& operator>>(float&) override { return note(16); }
    IInArchive& operator>>(std::int64_t&) override { return note(17); }
    IInArchive& operator>>(int&) override { return note(18); }
    IInArchive& operator>>(short&) override { return note(19); }
    IInArchive& operator>>(signed char&) override { return note(20); }
    IInArchive& operator>>(std::uint64_t&) override { return note(21); }
    IInArchive& operator>>(unsigned int&) override { return note(22); }
    IInArchive& operator>>(unsigned short&) override { return note(23); }
    IInArchive& operator>>(unsigned char&) override { return note(24); }
    IInArchive& operator>>(bool&) override { return note(25); }
};

template <class T, class = void>
struct Writable : std::false_type {};
template <class T>
struct Writable<T, std::void_t<decltype(std::declval<IOutArchive&>() << std::declval<T>())>>
    : std::true_type {};
template <class T, class = void>
struct WritableToBinary : std::false_type {};
template <class T>
struct WritableToBinary<T, std::void_t<decltype(std::declval<BinaryOutArchive&>() << std::declval<T>())>>
    : std::true_type {};

} // namespace

#if !defined(_MSC_VER)
// The destructor, which is the first, takes two slots, so that operation n stands at n.
TEST(ArchiveInterfaces, OutOperationsStandInTheirSlots) {
    const NumberedOut archive;
    using Operation = void (*)(const void*);
    for (int operation = 2; operation <= 25; ++operation) {
        archive.called = 0;
        testing_support::slotOf<Operation>(&archive, operation)(&archive);
        EXPECT_EQ(archive.called, operation);
    }
}

TEST(ArchiveInterfaces, InOperationsStandInTheirSlots) {
    const NumberedIn archive;
    using Operation = void (*)(const void*);
    for (int operation = 2; operation <= 25; ++operation) {
        archive.called = 0;
        testing_support::slotOf<Operation>(&archive, operation)(&archive);
        EXPECT_EQ(archive.called, operation);
    }
}

TEST(ArchiveInterfaces, BinaryArchivesAddNoSlotBeforeThem) {
    BinaryOutArchive out;
    const int number = 7;
    testing_support::slotOf<IOutArchive& (*)(IOutArchive*, int)>(&out, 18)(&out, number);
    EXPECT_EQ(testing_support::slotOf<std::uint64_t (*)(const IOutArchive*)>(&out, 2)(&out), 4u);
    BinaryInArchive in(&number, sizeof number);
    int back = 0;
    testing_support::slotOf<IInArchive& (*)(IInArchive*, int&)>(&in, 18)(&in, back);
    EXPECT_EQ(back, 7);
}
#endif

TEST(ArchiveInterfaces, ArchivesAreNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible<BinaryOutArchive>::value);
    EXPECT_FALSE(std::is_copy_assignable<BinaryOutArchive>::value);
    EXPECT_FALSE(std::is_copy_constructible<BinaryInArchive>::value);
    EXPECT_FALSE(std::is_copy_assignable<BinaryInArchive>::value);
    EXPECT_TRUE((std::is_base_of<boost::noncopyable, IOutArchive>::value));
    EXPECT_TRUE((std::is_base_of<boost::noncopyable, IInArchive>::value));
}

TEST(ArchiveInterfaces, EachTypeReachesItsOwnOperation) {
    NumberedOut out;
    NumberedIn in;
    const auto expectOperation = [&](int operation, auto value) {
        out << value;
        EXPECT_EQ(out.called, operation);
        in >> value;
        EXPECT_EQ(in.called, operation);
    };
    expectOperation(13, std::wstring());
    expectOperation(14, std::string());
    expectOperation(15, 1.0);
    expectOperation(16, 1.0f);
    expectOperation(17, std::int64_t{1});
    expectOperation(18, 1);
    expectOperation(19, short{1});
    expectOperation(20, static_cast<signed char>(1));
    expectOperation(21, std::uint64_t{1});
    expectOperation(22, 1u);
    expectOperation(23, static_cast<unsigned short>(1));
    expectOperation(24, static_cast<unsigned char>(1));
    expectOperation(25, true);
}

TEST(ArchiveInterfaces, LongAndLongLongAreFiledByTheirWidth) {
    NumberedOut out;
    NumberedIn in;
    const auto expectOperation = [&](int operation, auto value) {
        out.called = in.called = 0;
        out << value;
        EXPECT_EQ(out.called, operation);
        in >> value;
        EXPECT_EQ(in.called, operation);
    };
    expectOperation(17, 1ll);
    expectOperation(21, 1ull);
    expectOperation(sizeof(long) == 8 ? 17 : 18, 1l);
    expectOperation(sizeof(long) == 8 ? 21 : 22, 1ul);
}

TEST(ArchiveInterfaces, LongLongComesBackWhole) {
    BinaryOutArchive out;
    out << -2ll << 0xfedcba9876543210ull << -3l;
    EXPECT_EQ(out.offset(), 16 + sizeof(long));
    BinaryInArchive in(out.buffer().data(), out.offset());
    long long first = 0;
    unsigned long long second = 0;
    long third = 0;
    in >> first >> second >> third;
    EXPECT_EQ(first, -2);
    EXPECT_EQ(second, 0xfedcba9876543210ull);
    EXPECT_EQ(third, -3);
}

TEST(ArchiveInterfaces, WhatWouldSilentlyBecomeABoolIsRefused) {
    EXPECT_FALSE(Writable<const char*>::value);
    EXPECT_FALSE(Writable<char*>::value);
    EXPECT_FALSE(Writable<const char(&)[5]>::value);
    EXPECT_FALSE(Writable<const wchar_t*>::value);
    EXPECT_FALSE(Writable<void*>::value);
    EXPECT_FALSE(Writable<AcDbObjectId>::value);
    EXPECT_FALSE(Writable<AcDbHardPointerId>::value);
    EXPECT_FALSE(WritableToBinary<const char*>::value);
    EXPECT_FALSE(WritableToBinary<AcDbObjectId>::value);
    EXPECT_TRUE(Writable<std::string>::value);
    EXPECT_TRUE(Writable<bool>::value);
    EXPECT_TRUE(WritableToBinary<std::wstring>::value);
}
