#include "dbx/binary_out_archive.h"

#include "base/exceptions.h"
#include "support/archive_bytes.h"
#include "support/report_recorder.h"

#include "gemat2d.h"
#include "gemat3d.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

using namespace orv::serialization;
using namespace testing_support;
using orv::Blob;
using orv::BlobRef;

namespace {

// Bytes that one value takes.
template <class T>
std::string filed(const T& value) {
    BinaryOutArchive archive;
    archive << value;
    return hexOf(archive);
}

AcDbObjectId idOf(std::intptr_t number) { return AcDbObjectId().setFromOldId(number); }

std::uint64_t capacityOf(const BinaryOutArchive& archive) { return archive.buffer().size(); }

// Sees the parts of larger values pass.
struct ListeningArchive : BinaryOutArchive {
    std::vector<std::string> seen;
    using BinaryOutArchive::operator<<;
    IOutArchive& operator<<(double value) override { return note("double", value); }
    IOutArchive& operator<<(unsigned int value) override { return note("unsigned", value); }
    IOutArchive& operator<<(const BlobRef& value) override {
        seen.push_back("BlobRef " + std::to_string(value.size_));
        return BinaryOutArchive::operator<<(value);
    }

private:
    template <class T>
    IOutArchive& note(const char* name, T value) {
        std::ostringstream line;
        line << name << " " << value;
        seen.push_back(line.str());
        return BinaryOutArchive::operator<<(value);
    }
};

} // namespace

TEST(BinaryOutArchive, StartsWithNothing) {
    const BinaryOutArchive archive;
    EXPECT_EQ(archive.offset(), 0u);
    EXPECT_TRUE(archive.buffer().is_empty());
    EXPECT_TRUE(archive.softPointers().empty());
    EXPECT_TRUE(archive.hardPointers().empty());
}

TEST(BinaryOutArchiveBytes, Bool) {
    EXPECT_EQ(filed(true), "01");
    EXPECT_EQ(filed(false), "00");
}

TEST(BinaryOutArchiveBytes, SignedChar) {
    EXPECT_EQ(filed(static_cast<signed char>(-2)), "fe");
    EXPECT_EQ(filed(static_cast<signed char>(127)), "7f");
}

TEST(BinaryOutArchiveBytes, UnsignedChar) { EXPECT_EQ(filed(static_cast<unsigned char>(0xab)), "ab"); }

TEST(BinaryOutArchiveBytes, Short) { EXPECT_EQ(filed(static_cast<short>(-2)), "fe ff"); }

TEST(BinaryOutArchiveBytes, UnsignedShort) { EXPECT_EQ(filed(static_cast<unsigned short>(0x1234)), "34 12"); }

TEST(BinaryOutArchiveBytes, Int) {
    EXPECT_EQ(filed(-2), "fe ff ff ff");
    EXPECT_EQ(filed(0x12345678), "78 56 34 12");
}

TEST(BinaryOutArchiveBytes, UnsignedInt) { EXPECT_EQ(filed(0xafdb7de5u), "e5 7d db af"); }

TEST(BinaryOutArchiveBytes, Int64) { EXPECT_EQ(filed(std::int64_t{-2}), "fe ff ff ff ff ff ff ff"); }

TEST(BinaryOutArchiveBytes, UnsignedInt64) {
    EXPECT_EQ(filed(std::uint64_t{0x0123456789abcdef}), "ef cd ab 89 67 45 23 01");
}

TEST(BinaryOutArchiveBytes, Float) { EXPECT_EQ(filed(-1.5f), "00 00 c0 bf"); }

TEST(BinaryOutArchiveBytes, Double) { EXPECT_EQ(filed(-1.5), "00 00 00 00 00 00 f8 bf"); }

TEST(BinaryOutArchiveBytes, Point2d) {
    EXPECT_EQ(filed(AcGePoint2d(1.0, 2.0)), "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40");
}

TEST(BinaryOutArchiveBytes, Vector2d) {
    EXPECT_EQ(filed(AcGeVector2d(1.0, 2.0)), "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40");
}

TEST(BinaryOutArchiveBytes, Point3d) {
    EXPECT_EQ(filed(AcGePoint3d(1.0, 2.0, -1.5)),
              "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 00 00 00 00 00 00 f8 bf");
}

TEST(BinaryOutArchiveBytes, Vector3d) {
    EXPECT_EQ(filed(AcGeVector3d(1.0, 2.0, -1.5)),
              "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 00 00 00 00 00 00 f8 bf");
}

TEST(BinaryOutArchiveBytes, Matrix2dRowAfterRow) {
    AcGeMatrix2d matrix;
    std::string expected;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            matrix.entry[row][column] = 10.0 * row + column;
            expected += (expected.empty() ? "" : " ") + filed(10.0 * row + column);
        }
    EXPECT_EQ(filed(matrix), expected);
    EXPECT_EQ(filed(matrix).substr(3 * 8, 3 * 8), "00 00 00 00 00 00 f0 3f ");
}

TEST(BinaryOutArchiveBytes, Matrix3dRowAfterRow) {
    AcGeMatrix3d matrix;
    std::string expected;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            matrix.entry[row][column] = 10.0 * row + column;
            expected += (expected.empty() ? "" : " ") + filed(10.0 * row + column);
        }
    EXPECT_EQ(filed(matrix), expected);
    EXPECT_EQ(filed(matrix).substr(3 * 8, 3 * 8), "00 00 00 00 00 00 f0 3f ");
}

TEST(BinaryOutArchiveBytes, BlobAndBlobRef) {
    EXPECT_EQ(filed(Blob("\x01\x02\xff", 3)), "03 00 00 00 01 02 ff");
    EXPECT_EQ(filed(Blob()), "00 00 00 00");
    EXPECT_EQ(filed(BlobRef("\x01\x02\xff", 3)), "03 00 00 00 01 02 ff");
    EXPECT_EQ(filed(BlobRef("\x01", 0)), "00 00 00 00");
}

TEST(BinaryOutArchiveBytes, StringWithoutATerminator) {
    EXPECT_EQ(filed(std::string("abc")), "03 00 00 00 61 62 63");
    EXPECT_EQ(filed(std::string("a\0b", 3)), "03 00 00 00 61 00 62");
}

TEST(BinaryOutArchiveBytes, AnEmptyStringTakesFourBytes) { EXPECT_EQ(filed(std::string()), "00 00 00 00"); }

TEST(BinaryOutArchiveBytes, AnEmptyWideStringTakesFourBytes) {
    EXPECT_EQ(filed(std::wstring()), "00 00 00 00");
}

TEST(BinaryOutArchiveBytes, AWideStringOfThreeCharactersTakesFourAndTwelveBytes) {
    BinaryOutArchive archive;
    archive << std::wstring(L"a\u00f6\u20ac");
    EXPECT_EQ(archive.offset(), 4u + 12u);
    EXPECT_EQ(hexOf(archive), "03 00 00 00 61 00 00 00 f6 00 00 00 ac 20 00 00");
}

// One character here where wchar_t is wide, two where it is not; the bytes are the same.
TEST(BinaryOutArchiveBytes, ACharacterOutsideTheFirstPlaneIsTwoUnits) {
    EXPECT_EQ(filed(std::wstring(L"x\U0001F3D7y")),
              "04 00 00 00 78 00 00 00 3c d8 00 00 d7 df 00 00 79 00 00 00");
    EXPECT_EQ(filed(std::wstring(L"\U0010FFFF")), "02 00 00 00 ff db 00 00 ff df 00 00");
}

TEST(BinaryOutArchiveBytes, ALoneSurrogateStaysAsItIs) {
    EXPECT_EQ(filed(std::wstring(1, static_cast<wchar_t>(0xD83C))), "01 00 00 00 3c d8 00 00");
}

TEST(BinaryOutArchiveBytes, ValuesFollowEachOtherWithoutFiller) {
    BinaryOutArchive archive;
    archive << true << 1 << static_cast<short>(2) << 1.0 << std::string("a");
    EXPECT_EQ(hexOf(archive), "01 01 00 00 00 02 00 00 00 00 00 00 00 f0 3f 01 00 00 00 61");
}

TEST(BinaryOutArchive, EveryOperationAnswersTheArchive) {
    BinaryOutArchive archive;
    const auto isItself = [&](const IOutArchive& answer) { return &answer == &archive; };
    EXPECT_TRUE(isItself(archive.hardPointer(AcDbObjectId())));
    EXPECT_TRUE(isItself(archive.softPointer(AcDbObjectId())));
    EXPECT_TRUE(isItself(archive << AcGeMatrix3d()));
    EXPECT_TRUE(isItself(archive << AcGePoint3d()));
    EXPECT_TRUE(isItself(archive << AcGeVector3d()));
    EXPECT_TRUE(isItself(archive << AcGeMatrix2d()));
    EXPECT_TRUE(isItself(archive << AcGePoint2d()));
    EXPECT_TRUE(isItself(archive << AcGeVector2d()));
    EXPECT_TRUE(isItself(archive << Blob("x", 1)));
    EXPECT_TRUE(isItself(archive << BlobRef("x", 1)));
    EXPECT_TRUE(isItself(archive << std::wstring(L"w")));
    EXPECT_TRUE(isItself(archive << std::string("n")));
    EXPECT_TRUE(isItself(archive << 1.0));
    EXPECT_TRUE(isItself(archive << 1.0f));
    EXPECT_TRUE(isItself(archive << std::int64_t{1}));
    EXPECT_TRUE(isItself(archive << 1));
    EXPECT_TRUE(isItself(archive << short{1}));
    EXPECT_TRUE(isItself(archive << static_cast<signed char>(1)));
    EXPECT_TRUE(isItself(archive << std::uint64_t{1}));
    EXPECT_TRUE(isItself(archive << 1u));
    EXPECT_TRUE(isItself(archive << static_cast<unsigned short>(1)));
    EXPECT_TRUE(isItself(archive << static_cast<unsigned char>(1)));
    EXPECT_TRUE(isItself(archive << true));
}

TEST(BinaryOutArchive, AfterNBytesTheOffsetIsN) {
    BinaryOutArchive archive;
    const auto expectOffset = [&](std::uint64_t n) { EXPECT_EQ(archive.offset(), n); };
    archive << true;
    expectOffset(1);
    archive << AcGeMatrix3d();
    expectOffset(129);
    archive << std::wstring(L"abc");
    expectOffset(145);
    archive << std::string("abc");
    expectOffset(152);
    archive << 1.0f;
    expectOffset(156);
}

TEST(BinaryOutArchivePointers, AnArchiveOfPointersOnlyHasNoBytesAndBothLists) {
    BinaryOutArchive archive;
    archive.hardPointer(idOf(1)).softPointer(idOf(2)).hardPointer(AcDbObjectId()).softPointer(idOf(3));
    EXPECT_EQ(archive.offset(), 0u);
    EXPECT_TRUE(archive.buffer().is_empty());
    EXPECT_EQ(archive.hardPointers(), (std::deque<AcDbObjectId>{idOf(1), AcDbObjectId()}));
    EXPECT_EQ(archive.softPointers(), (std::deque<AcDbObjectId>{idOf(2), idOf(3)}));
}

TEST(BinaryOutArchiveGrowth, TheFirstValueMakesRoomForItselfAnd512More) {
    BinaryOutArchive archive;
    archive << 1;
    EXPECT_EQ(capacityOf(archive), 4u + 512u);
    EXPECT_EQ(archive.offset(), 4u);
}

TEST(BinaryOutArchiveGrowth, AValueThatJustFitsDoesNotGrowIt) {
    BinaryOutArchive archive;
    archive << 1;
    for (int i = 0; i < 128; ++i)
        archive << i;
    EXPECT_EQ(archive.offset(), 516u);
    EXPECT_EQ(capacityOf(archive), 516u);
    archive << true;
    EXPECT_EQ(archive.offset(), 517u);
    EXPECT_EQ(capacityOf(archive), 516u + 1u + 512u);
}

TEST(BinaryOutArchiveGrowth, TheStepIsAConstant) {
    BinaryOutArchive archive;
    std::uint64_t capacity = 0;
    for (std::uint64_t offset = 0; offset < 100000; offset += 8) {
        archive << 1.0;
        if (offset + 8 > capacity)
            capacity = offset + 8 + 512;
        if (offset % 1000 == 0) {
            EXPECT_EQ(capacityOf(archive), capacity) << offset;
        }
    }
    EXPECT_EQ(capacityOf(archive), capacity);
}

TEST(BinaryOutArchiveGrowth, RoomForABlobIsMadeInOneStep) {
    BinaryOutArchive archive;
    const Blob blob(std::string(700, 'x').data(), 700);
    archive << blob;
    EXPECT_EQ(archive.offset(), 704u);
    EXPECT_EQ(capacityOf(archive), 704u + 512u);
    archive << blob;
    EXPECT_EQ(capacityOf(archive), 704u + 704u + 512u);
}

TEST(BinaryOutArchiveGrowth, RoomForAStringIsMadeInOneStep) {
    BinaryOutArchive archive;
    archive << std::string(700, 'x');
    EXPECT_EQ(capacityOf(archive), 704u + 512u);
}

TEST(BinaryOutArchiveGrowth, RoomForAMatrixIsMadeDoubleByDouble) {
    BinaryOutArchive archive;
    archive << AcGeMatrix3d();
    EXPECT_EQ(capacityOf(archive), 8u + 512u);
    for (int i = 0; i < 4; ++i)
        archive << AcGeMatrix3d();
    // The double at 520 was the one that did not fit.
    EXPECT_EQ(archive.offset(), 640u);
    EXPECT_EQ(capacityOf(archive), 520u + 8u + 512u);
}

TEST(BinaryOutArchiveGrowth, RoomForAWideStringIsMadeCharacterByCharacter) {
    BinaryOutArchive archive;
    archive << std::wstring(200, L'x');
    EXPECT_EQ(archive.offset(), 804u);
    EXPECT_EQ(capacityOf(archive), 516u + 4u + 512u);
}

TEST(BinaryOutArchiveGrowth, WhatWasWrittenStaysAndTheRestIsZero) {
    BinaryOutArchive archive;
    for (int i = 0; i < 5000; ++i)
        archive << i;
    const Blob& buffer = archive.buffer();
    ASSERT_GT(buffer.size(), 20000u);
    for (int i = 0; i < 5000; ++i)
        EXPECT_EQ(buffer.cast<const int*>()[i], i);
    for (std::size_t at = 20000; at < buffer.size(); ++at)
        EXPECT_EQ(buffer.data()[at], 0) << at;
}

TEST(BinaryOutArchiveGrowth, LookingAtTheBufferChangesNothing) {
    BinaryOutArchive watched;
    BinaryOutArchive other;
    for (int i = 0; i < 1000; ++i) {
        watched << i << std::wstring(i % 50, L'w');
        EXPECT_GE(watched.buffer().size(), watched.offset());
        other << i << std::wstring(i % 50, L'w');
    }
    EXPECT_EQ(blockOf(watched), blockOf(other));
    EXPECT_EQ(capacityOf(watched), capacityOf(other));
}

TEST(BinaryOutArchiveBlobRef, NullWithASizeIsReportedAndWritesNothing) {
    ReportRecorder recorder;
    BinaryOutArchive archive;
    archive << 1;
    try {
        archive << BlobRef(static_cast<const void*>(nullptr), 4);
        FAIL() << "no exception";
    } catch (const orv::Exception& failure) {
        EXPECT_STREQ(failure.what(), "filer error");
    }
    EXPECT_EQ(recorder.conditions(), (Texts{"from"}));
    EXPECT_EQ(recorder.at(0).values, Values());
    EXPECT_EQ(hexOf(archive), "01 00 00 00");
    EXPECT_EQ(capacityOf(archive), 516u);
    archive << 2;
    EXPECT_EQ(hexOf(archive), "01 00 00 00 02 00 00 00");
}

TEST(BinaryOutArchiveBlobRef, NullWithoutASizeIsFine) {
    ReportRecorder recorder;
    EXPECT_EQ(filed(BlobRef()), "00 00 00 00");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(BinaryOutArchiveBlobRef, ASizeThatNoMemoryHoldsIsRefusedAndWritesNothing) {
    BinaryOutArchive archive;
    archive << 1;
    const char byte = 'x';
    for (std::uint64_t size : {std::numeric_limits<std::uint64_t>::max(),
                               std::numeric_limits<std::uint64_t>::max() - 3, std::uint64_t{1} << 63})
        EXPECT_THROW(archive << BlobRef(&byte, size), std::bad_alloc) << size;
    EXPECT_EQ(hexOf(archive), "01 00 00 00");
}

TEST(BinaryOutArchiveBlobRef, AnArchiveWhoseOffsetDoesNotStepIsReported) {
    struct Stuck : BinaryOutArchive {
        std::uint64_t offset() const override { return 40; }
    } archive;
    ReportRecorder recorder;
    archive << BlobRef("abc", 3);
    ASSERT_EQ(recorder.conditions(), (Texts{"(m1-m0) == value.size_"}));
    EXPECT_EQ(recorder.at(0).values,
              (Values{{"m0", "40"}, {"m1", "40"}, {"m1-m0", "0"}, {"value.size_", "3"}}));
}

TEST(BinaryOutArchiveDerived, SeesGeometryAsDoubles) {
    ListeningArchive archive;
    archive << AcGePoint2d(1, 2) << AcGeVector2d(3, 4) << AcGePoint3d(5, 6, 7) << AcGeVector3d(8, 9, 10);
    EXPECT_EQ(archive.seen, (Texts{"double 1", "double 2", "double 3", "double 4", "double 5", "double 6",
                                   "double 7", "double 8", "double 9", "double 10"}));
    archive.seen.clear();
    archive << AcGeMatrix2d();
    EXPECT_EQ(archive.seen, (Texts{"double 1", "double 0", "double 0", "double 0", "double 1", "double 0",
                                   "double 0", "double 0", "double 1"}));
    archive.seen.clear();
    archive << AcGeMatrix3d();
    EXPECT_EQ(archive.seen.size(), 16u);
    EXPECT_EQ(archive.seen[5], "double 1");
    EXPECT_EQ(archive.seen[6], "double 0");
}

TEST(BinaryOutArchiveDerived, SeesAWideStringCharacterByCharacter) {
    ListeningArchive archive;
    archive << std::wstring(L"a\U0001F3D7");
    EXPECT_EQ(archive.seen, (Texts{"unsigned 3", "unsigned 97", "unsigned 55356", "unsigned 57303"}));
}

TEST(BinaryOutArchiveDerived, SeesAStringAndABlobAsABlobRef) {
    ListeningArchive archive;
    archive << std::string("abc") << Blob("xy", 2) << std::string();
    EXPECT_EQ(archive.seen, (Texts{"BlobRef 3", "BlobRef 2", "BlobRef 0"}));
}

TEST(BinaryOutArchiveDerived, WritesTheSameBytes) {
    const auto fill = [](BinaryOutArchive& archive) {
        for (int i = 0; i < 40; ++i)
            archive << AcGeMatrix3d() << std::wstring(L"some text \U0001F3D7") << std::string("abc")
                    << AcGePoint3d(1, 2, i) << Blob("xyz", 3) << AcGeMatrix2d();
    };
    ListeningArchive derived;
    BinaryOutArchive plain;
    fill(derived);
    fill(plain);
    EXPECT_EQ(blockOf(derived), blockOf(plain));
    EXPECT_EQ(capacityOf(derived), capacityOf(plain));
}

TEST(BinaryOutArchive, DataIsTheBlockWithoutTheRoomBehindIt) {
    BinaryOutArchive archive;
    EXPECT_EQ(archive.data(), nullptr);
    archive << std::string("abc") << 7;
    const std::vector<unsigned char> seen(archive.data(), archive.data() + archive.offset());
    EXPECT_EQ(hexOf(seen), "03 00 00 00 61 62 63 07 00 00 00");
    EXPECT_EQ(seen, blockOf(archive));
}

TEST(BinaryOutArchiveGrowth, TheBufferStaysUntilItIsAskedForAgain) {
    BinaryOutArchive archive;
    archive << 1;
    const Blob& buffer = archive.buffer();
    for (int i = 0; i < 1000; ++i)
        archive << -1;
    EXPECT_EQ(buffer.size(), 516u);
    EXPECT_EQ(buffer.cast<const int*>()[0], 1);
    EXPECT_EQ(buffer.cast<const int*>()[1], 0);
    archive.buffer();
    EXPECT_EQ(buffer.cast<const int*>()[1], -1);
}
