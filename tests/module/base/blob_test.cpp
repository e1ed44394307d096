#include "base/blob.h"

#include "embedded/memory_filer.h"
#include "support/allocation_watch.h"
#include "support/recording_filer.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

using orv::Blob;
using testing_support::RecordingFiler;
using testing_support::ReportRecorder;
using testing_support::takeLargestAllocation;
using testing_support::Texts;

namespace {

Blob blobOf(const std::string& text) { return Blob(text.data(), text.size()); }
std::string textOf(const Blob& blob) {
    return std::string(reinterpret_cast<const char*>(blob.data()), blob.size());
}

} // namespace

TEST(Blob, IsEmptyAtFirst) {
    const Blob blob;
    EXPECT_TRUE(blob.is_empty());
    EXPECT_EQ(blob.size(), 0u);
    EXPECT_EQ(blob.data(), nullptr);
}

TEST(Blob, AssignTakesACopy) {
    char source[] = "abc";
    Blob blob(source, 3);
    source[0] = 'x';
    EXPECT_EQ(textOf(blob), "abc");
    blob.assign(blob.data() + 1, 2);
    EXPECT_EQ(textOf(blob), "bc");
}

TEST(Blob, AssignOfNothingIsSilentAndEmpty) {
    ReportRecorder recorder;
    Blob blob = blobOf("abc");
    blob.assign(nullptr, 0);
    EXPECT_TRUE(blob.is_empty());
    EXPECT_EQ(blob.data(), nullptr);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(Blob, AssignOfNullWithALengthReportsAndLeavesItEmpty) {
    ReportRecorder recorder;
    Blob blob = blobOf("abc");
    blob.assign(nullptr, 4);
    EXPECT_TRUE(blob.is_empty());
    EXPECT_EQ(blob.data(), nullptr);
    EXPECT_EQ(recorder.conditions(), (Texts{"data && len"}));
}

TEST(Blob, AssignOfBytesWithoutALengthReportsAndLeavesItEmpty) {
    ReportRecorder recorder;
    Blob blob = blobOf("abc");
    blob.assign("x", 0);
    EXPECT_TRUE(blob.is_empty());
    EXPECT_EQ(recorder.conditions(), (Texts{"data && len"}));
}

TEST(Blob, CopiesAreDeep) {
    Blob original = blobOf("abc");
    Blob copy = original;
    Blob assigned;
    assigned = original;
    original.data()[0] = 'x';
    EXPECT_EQ(textOf(copy), "abc");
    EXPECT_EQ(textOf(assigned), "abc");
    const Blob& same = assigned;
    assigned = same;
    EXPECT_EQ(textOf(assigned), "abc");
}

TEST(Blob, ResizeKeepsTheBeginningAndAddsZeros) {
    Blob blob = blobOf("abc");
    blob.resize(5);
    EXPECT_EQ(textOf(blob), std::string("abc\0\0", 5));
    blob.resize(2);
    EXPECT_EQ(textOf(blob), "ab");
    blob.resize(0);
    EXPECT_EQ(blob.data(), nullptr);
    blob.resize(3);
    EXPECT_EQ(textOf(blob), std::string(3, '\0'));
}

TEST(Blob, CastGivesTheBytesAsAPointer) {
    const int number = 0x01020304;
    const Blob blob(&number, sizeof number);
    EXPECT_EQ(*blob.cast<const int*>(), number);
}

TEST(Blob, FilesSizeAndBytes) {
    RecordingFiler filer;
    EXPECT_EQ(blobOf("\x01\x02\xff").dwgOut(&filer), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 3", "writeBytes 3: 01 02 ff"}));
}

TEST(Blob, FilesNoBytesWhenEmpty) {
    RecordingFiler filer;
    EXPECT_EQ(Blob().dwgOut(&filer), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 0"}));
}

TEST(Blob, ReadsSizeAndBytes) {
    RecordingFiler filer;
    filer.feed<Adesk::UInt32>(3).feedBytes("xyz");
    Blob blob = blobOf("before");
    EXPECT_EQ(blob.dwgIn(&filer), Acad::eOk);
    EXPECT_EQ(textOf(blob), "xyz");
    EXPECT_EQ(filer.calls, (Texts{"readUInt32", "readBytes 3"}));
    EXPECT_TRUE(filer.allRead());
}

TEST(Blob, ReadsAnEmptyOneWithoutAskingForBytes) {
    RecordingFiler filer;
    filer.feed<Adesk::UInt32>(0);
    Blob blob = blobOf("before");
    EXPECT_EQ(blob.dwgIn(&filer), Acad::eOk);
    EXPECT_TRUE(blob.is_empty());
    EXPECT_EQ(filer.calls, (Texts{"readUInt32"}));
}

TEST(Blob, FilingStopsAtTheFirstFailureAndReportsIt) {
    ReportRecorder recorder;
    RecordingFiler filer;
    filer.failAt = 0;
    EXPECT_EQ(blobOf("abc").dwgOut(&filer), Acad::eFilerError);
    EXPECT_EQ(filer.calls.size(), 1u);
    ASSERT_EQ(recorder.conditions(), (Texts{"es == es2"}));
    EXPECT_EQ(recorder.at(0).values.at(0).value, "errorStatus");

    RecordingFiler reading;
    reading.failAt = 0;
    Blob blob;
    EXPECT_EQ(blob.dwgIn(&reading), Acad::eFilerError);
    EXPECT_EQ(reading.calls.size(), 1u);
}

TEST(Blob, ADamagedSizeTakesNoMoreMemoryThanTheStreamCouldFill) {
    ReportRecorder recorder;
    const std::vector<std::uint8_t> bytes = {0xff, 0xff, 0xff, 0xff, 1, 2, 3};
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    Blob blob;
    takeLargestAllocation();
    EXPECT_EQ(blob.dwgIn(&filer), Acad::eEndOfObject);
    EXPECT_LE(takeLargestAllocation(), std::size_t{16} << 20);
    EXPECT_LE(blob.size(), std::size_t{16} << 20);
}

TEST(Blob, ReadsBytesWhoseNumberIsKnown) {
    RecordingFiler filer;
    filer.feedBytes("abc");
    Blob blob = blobOf("what was there before");
    EXPECT_EQ(blob.dwgInBytes(&filer, 3), Acad::eOk);
    EXPECT_EQ(textOf(blob), "abc");
    EXPECT_EQ(filer.calls, Texts{"readBytes 3"});
    EXPECT_EQ(blob.dwgInBytes(&filer, 0), Acad::eOk);
    EXPECT_TRUE(blob.is_empty());
    EXPECT_EQ(filer.calls.size(), 1u);
}

TEST(Blob, ReadingBytesWhoseNumberIsKnownFailsWithTheFiler) {
    ReportRecorder recorder;
    const std::vector<std::uint8_t> bytes = {1, 2, 3};
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    Blob blob;
    EXPECT_EQ(blob.dwgInBytes(&filer, 4), Acad::eEndOfObject);
    EXPECT_EQ(recorder.conditions(), Texts{"es == es2"});
    takeLargestAllocation();
    EXPECT_EQ(blob.dwgInBytes(&filer, 0xffffffff), Acad::eEndOfObject);
    EXPECT_LE(takeLargestAllocation(), std::size_t{16} << 20);
    EXPECT_LE(blob.size(), std::size_t{16} << 20);
}

TEST(Blob, LargeContentComesBackWhole) {
    Blob large;
    large.resize((std::size_t{16} << 20) * 3 + 5);
    for (std::size_t i = 0; i < large.size(); i += 4099)
        large.data()[i] = static_cast<unsigned char>(i >> 12);
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    ASSERT_EQ(large.dwgOut(&out), Acad::eOk);
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    Blob back;
    ASSERT_EQ(back.dwgIn(&in), Acad::eOk);
    ASSERT_EQ(back.size(), large.size());
    EXPECT_EQ(std::memcmp(back.data(), large.data(), large.size()), 0);
}
