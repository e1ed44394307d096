#include "embedded/memory_filer.h"

#include "AcString.h"
#include "acutmem.h"
#include "gepnt3d.h"

#include <gtest/gtest.h>

using embedded::MemoryFiler;

namespace {

TEST(MemoryFiler, ValuesStandInTheirRawWidths) {
    std::vector<std::uint8_t> bytes;
    MemoryFiler filer(AcDb::kCopyFiler, bytes);
    filer.writeUInt32(0x01020304);
    filer.writeInt16(-2);
    filer.writeBool(true);
    filer.writeUInt8(7);
    filer.writeString(L"a\u00E4");
    filer.writeBytes("xyz", 3);
    const std::vector<std::uint8_t> expected{4, 3, 2,    1, 0xFE, 0xFF, 1,   7,   2,  0,
                                             0, 0, 0x61, 0, 0xE4, 0,    'x', 'y', 'z'};
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(filer.filerStatus(), Acad::eOk);
}

TEST(MemoryFiler, CharactersOutsideTheFirstPlaneTakeTwoUnits) {
    std::vector<std::uint8_t> bytes;
    MemoryFiler out(AcDb::kCopyFiler, bytes);
    out.writeString(L"\U0001F600");
    EXPECT_EQ(bytes.size(), 4u + 4u);
    MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    AcString text;
    EXPECT_EQ(in.readString(text), Acad::eOk);
    EXPECT_STREQ(text.kACharPtr(), L"\U0001F600");
}

TEST(MemoryFiler, EveryShorterInputFailsAndGivesZero) {
    std::vector<std::uint8_t> bytes;
    MemoryFiler out(AcDb::kCopyFiler, bytes);
    out.writePoint3d(AcGePoint3d(1, 2, 3));
    out.writeString(L"text");
    char payload[] = "abc";
    out.writeBChunk({3, payload});
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const std::vector<std::uint8_t> prefix(bytes.begin(),
                                               bytes.begin() + static_cast<std::ptrdiff_t>(length));
        MemoryFiler in(AcDb::kCopyFiler, prefix.data(), prefix.size());
        AcGePoint3d point;
        ACHAR* text = nullptr;
        ads_binary chunk{};
        in.readPoint3d(&point);
        in.readString(&text);
        in.readBChunk(&chunk);
        EXPECT_EQ(in.filerStatus(), Acad::eEndOfObject) << length;
        acutDelBuffer(text);
        acutDelBuffer(chunk.buf);
    }
    MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    AcGePoint3d point;
    ACHAR* text = nullptr;
    ads_binary chunk{};
    in.readPoint3d(&point);
    in.readString(&text);
    in.readBChunk(&chunk);
    EXPECT_EQ(in.filerStatus(), Acad::eOk);
    EXPECT_EQ(point.z, 3.0);
    EXPECT_STREQ(text, L"text");
    EXPECT_EQ(std::string(chunk.buf, static_cast<std::size_t>(chunk.clen)), "abc");
    acutDelBuffer(text);
    acutDelBuffer(chunk.buf);
}

} // namespace
