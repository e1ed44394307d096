#include "bits.h"

#include <gtest/gtest.h>

#include <memory>

using namespace embedded::dwg;

namespace {

// One of each code.
void writeAll(BitWriter& out) {
    out.bit(true);
    out.bitShort(513);
    out.bitLong(70000);
    out.rawDouble(0.1);
    out.bitDouble(0.3);
    out.bitDouble(0.7, 0.3);
    out.extrusion({0.5, 0.25, 0.125});
    out.handle(HandleReference(kHardOwner, 0x12345));
    out.modularChar(300);
    out.signedModularChar(-300);
    out.modularShort(70000);
    out.filedText("some text");
    out.rawShort(7);
    out.rawLong(8);
}

void readAll(BitReader& in) {
    in.bit();
    in.bitShort();
    in.bitLong();
    in.rawDouble();
    in.bitDouble();
    in.bitDouble(0.3);
    in.extrusion();
    in.handle();
    in.modularChar();
    in.signedModularChar();
    in.modularShort();
    in.text();
    in.rawShort();
    in.rawLong();
}

// In memory of its exact size, so that a read outside is caught.
std::unique_ptr<std::uint8_t[]> exactCopy(const Bytes& bytes, std::size_t length) {
    std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[length]);
    std::copy(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length), copy.get());
    return copy;
}

} // namespace

TEST(BitReader, EveryPrefixOfAValidInputFailsAndReadsNothingOutside) {
    BitWriter writer;
    writeAll(writer);
    for (std::size_t bits = 0; bits < writer.length(); ++bits) {
        const std::size_t length = (bits + 7) / 8;
        const auto copy = exactCopy(writer.bytes(), length);
        BitReader reader(ByteSpan(copy.get(), length), 0, bits);
        readAll(reader);
        EXPECT_FALSE(reader.ok()) << bits;
        EXPECT_LE(reader.position(), bits);
        EXPECT_LE(reader.failedAt(), bits);
    }
    BitReader whole(writer.bytes(), 0, writer.length());
    readAll(whole);
    EXPECT_TRUE(whole.ok());
    EXPECT_EQ(whole.left(), 0u);
}

TEST(BitReader, EverySingleDamagedBitStaysInsideTheInput) {
    BitWriter writer;
    writeAll(writer);
    for (std::size_t bit = 0; bit < writer.length(); ++bit) {
        Bytes damaged = writer.bytes();
        damaged[bit / 8] ^= static_cast<std::uint8_t>(0x80 >> bit % 8);
        const auto copy = exactCopy(damaged, damaged.size());
        BitReader reader(ByteSpan(copy.get(), damaged.size()), 0, writer.length());
        readAll(reader);
        EXPECT_LE(reader.position(), writer.length()) << bit;
    }
}

TEST(BitReader, AfterAFailureEverythingIsZeroAndThePlaceOfTheFirstIsKept) {
    const Bytes bytes = bytesOfHex("FF FF FF");
    BitReader reader(bytes);
    reader.take(10);
    EXPECT_EQ(reader.rawLong(), 0u);
    EXPECT_FALSE(reader.ok());
    EXPECT_EQ(reader.failedAt(), 10u);
    EXPECT_FALSE(reader.bit());
    EXPECT_EQ(reader.text(), "");
    EXPECT_EQ(reader.failedAt(), 10u);
}

TEST(BitReader, ATextLongerThanTheInputIsEmptyAndTakesNoMemory) {
    BitWriter writer;
    writer.bitShort(0xFFFF);
    writer.rawChar('x');
    BitReader reader(writer.bytes());
    EXPECT_EQ(reader.text(), "");
    EXPECT_FALSE(reader.ok());
}

TEST(BitReader, SeekOutsideFails) {
    const Bytes bytes(2, 0);
    BitReader reader(bytes);
    reader.seek(16);
    EXPECT_TRUE(reader.ok());
    reader.seek(17);
    EXPECT_FALSE(reader.ok());
}

TEST(BitReader, EmptyInputHasNothing) {
    BitReader reader{ByteSpan()};
    EXPECT_TRUE(reader.ok());
    EXPECT_EQ(reader.left(), 0u);
    EXPECT_FALSE(reader.bit());
    EXPECT_FALSE(reader.ok());
}
