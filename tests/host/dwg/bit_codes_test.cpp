#include "bits.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

using namespace embedded::dwg;

namespace {

// That `write` gives these bits, and that `read` takes exactly them.
void expectCode(const std::string& bits, const std::function<void(BitWriter&)>& write,
                const std::function<void(BitReader&)>& read) {
    EXPECT_EQ(bitsWritten(write), withoutBlanks(bits));
    const Bytes bytes = bytesOfBits(bits);
    BitReader reader(bytes, 0, withoutBlanks(bits).size());
    read(reader);
    EXPECT_TRUE(reader.ok());
    EXPECT_EQ(reader.left(), 0u);
}

void expectBitShort(std::uint16_t value, const std::string& bits) {
    expectCode(
        bits, [=](BitWriter& w) { w.bitShort(value); },
        [=](BitReader& r) { EXPECT_EQ(r.bitShort(), value); });
}

void expectBitLong(std::uint32_t value, const std::string& bits) {
    expectCode(
        bits, [=](BitWriter& w) { w.bitLong(value); }, [=](BitReader& r) { EXPECT_EQ(r.bitLong(), value); });
}

void expectBitDouble(double value, const std::string& bits) {
    expectCode(
        bits, [=](BitWriter& w) { w.bitDouble(value); },
        [=](BitReader& r) { EXPECT_EQ(r.bitDouble(), value); });
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

} // namespace

TEST(BitCodes, BitShortHasAShortFormForZeroFor256AndForBytes) {
    expectBitShort(0, "10");
    expectBitShort(256, "11");
    expectBitShort(15, "01 00001111");
    expectBitShort(255, "01 11111111");
    expectBitShort(257, "00 00000001 00000001");
    expectBitShort(0xFFFF, "00 11111111 11111111");
}

TEST(BitCodes, BitLongHasAShortFormForZeroAndForBytes) {
    expectBitLong(0, "10");
    expectBitLong(255, "01 11111111");
    expectBitLong(256, "00 00000000 00000001 00000000 00000000");
    expectBitLong(0xFFFFFFFF, "00 11111111 11111111 11111111 11111111");
}

TEST(BitCodes, BitDoubleHasAShortFormForZeroAndOne) {
    expectBitDouble(0.0, "10");
    expectBitDouble(1.0, "01");
    expectBitDouble(2.0, "00 00000000 00000000 00000000 00000000 00000000 00000000 00000000 01000000");
}

TEST(BitCodes, BitDoubleKeepsTheSignOfZero) {
    BitWriter writer;
    writer.bitDouble(-0.0);
    BitReader reader(writer.bytes());
    EXPECT_TRUE(std::signbit(reader.bitDouble()));
}

TEST(BitCodes, CodesThatTheFormatDoesNotHaveFail) {
    const Bytes bytes = bytesOfBits("11 000000 00000000");
    BitReader asLong(bytes);
    EXPECT_EQ(asLong.bitLong(), 0u);
    EXPECT_FALSE(asLong.ok());
    BitReader asDouble(bytes);
    EXPECT_EQ(asDouble.bitDouble(), 0.0);
    EXPECT_FALSE(asDouble.ok());
}

TEST(BitCodes, DoubleWithDefaultWritesOnlyTheBytesThatDiffer) {
    const double base = 1.5;
    std::uint64_t pattern;
    std::memcpy(&pattern, &base, sizeof pattern);
    const auto with = [](std::uint64_t bits) {
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    };
    const struct {
        double value;
        std::size_t bits;
    } rows[] = {{base, 2},
                {with(pattern ^ 0x12345678), 2 + 32},
                {with(pattern ^ 0x123400000000), 2 + 48},
                {-7.25, 66}};
    for (const auto& row : rows) {
        BitWriter writer;
        writer.bitDouble(row.value, base);
        EXPECT_EQ(writer.length(), row.bits);
        BitReader reader(writer.bytes(), 0, writer.length());
        EXPECT_TRUE(sameBits(reader.bitDouble(base), row.value));
        EXPECT_EQ(reader.left(), 0u);
    }
}

TEST(BitCodes, ThicknessAndExtrusionTakeOneBitForTheUsualValue) {
    expectCode(
        "1", [](BitWriter& w) { w.thickness(0.0); }, [](BitReader& r) { EXPECT_EQ(r.thickness(), 0.0); });
    expectCode(
        "0 01", [](BitWriter& w) { w.thickness(1.0); }, [](BitReader& r) { EXPECT_EQ(r.thickness(), 1.0); });
    expectCode(
        "1",
        [](BitWriter& w) {
            w.extrusion({0, 0, 1});
        },
        [](BitReader& r) { EXPECT_EQ(r.extrusion().z, 1.0); });
    expectCode(
        "0 01 10 10",
        [](BitWriter& w) {
            w.extrusion({1, 0, 0});
        },
        [](BitReader& r) { EXPECT_EQ(r.extrusion().x, 1.0); });
}

TEST(BitCodes, HandleTakesAsManyBytesAsItsValue) {
    const auto expectHandle = [](std::uint8_t code, std::uint64_t value, const std::string& bits) {
        expectCode(
            bits, [=](BitWriter& w) { w.handle(HandleReference(code, value)); },
            [=](BitReader& r) {
                const HandleReference handle = r.handle();
                EXPECT_EQ(handle.code, code);
                EXPECT_EQ(handle.value, value);
            });
    };
    expectHandle(kHardPointer, 0, "0101 0000");
    expectHandle(kPlainHandle, 0x1F, "0000 0001 00011111");
    expectHandle(kSoftOwner, 0x2A5, "0010 0010 00000010 10100101");
    expectHandle(kSoftPointer, 0x1122334455667788,
                 "0100 1000 00010001 00100010 00110011 01000100 01010101 01100110 01110111 10001000");
}

TEST(BitCodes, RelativeHandlesCountFromTheirObject) {
    EXPECT_EQ(HandleReference(kNextHandle, 0).absolute(0x50), 0x51u);
    EXPECT_EQ(HandleReference(kPreviousHandle, 0).absolute(0x50), 0x4Fu);
    EXPECT_EQ(HandleReference(kPlusOffset, 7).absolute(0x50), 0x57u);
    EXPECT_EQ(HandleReference(kMinusOffset, 7).absolute(0x50), 0x49u);
    EXPECT_EQ(HandleReference(kHardOwner, 7).absolute(0x50), 7u);
}

TEST(BitCodes, AHandleOfMoreThanEightBytesFails) {
    const Bytes bytes(20, 0x59);
    BitReader reader(bytes);
    EXPECT_EQ(reader.handle().value, 0u);
    EXPECT_FALSE(reader.ok());
}

TEST(BitCodes, ModularCharsContinueWhileTheHighBitStands) {
    const auto expectModular = [](std::uint64_t value, const std::string& hex) {
        BitWriter writer;
        writer.modularChar(value);
        EXPECT_EQ(writer.bytes(), bytesOfHex(hex));
        EXPECT_EQ(BitReader(writer.bytes()).modularChar(), value);
    };
    expectModular(0, "00");
    expectModular(0x7F, "7F");
    expectModular(0x80, "80 01");
    expectModular(112823273, "E9 97 E6 35");
}

TEST(BitCodes, SignedModularCharsBearTheSignInTheLastByte) {
    const auto expectModular = [](std::int64_t value, const std::string& hex) {
        BitWriter writer;
        writer.signedModularChar(value);
        EXPECT_EQ(writer.bytes(), bytesOfHex(hex));
        EXPECT_EQ(BitReader(writer.bytes()).signedModularChar(), value);
    };
    expectModular(0, "00");
    expectModular(63, "3F");
    expectModular(64, "C0 00");
    expectModular(-1, "41");
    expectModular(-1413, "85 4B");
}

TEST(BitCodes, ModularShortsContinueWhileTheHighBitStands) {
    const auto expectModular = [](std::uint32_t value, const std::string& hex) {
        BitWriter writer;
        writer.modularShort(value);
        EXPECT_EQ(writer.bytes(), bytesOfHex(hex));
        EXPECT_EQ(BitReader(writer.bytes()).modularShort(), value);
    };
    expectModular(0x7FFF, "FF 7F");
    expectModular(0x8000, "00 80 01 00");
    expectModular(4583731, "33 F1 8B 00");
}

TEST(BitCodes, ModularNumbersWithoutAnEndFail) {
    const Bytes bytes(32, 0xFF);
    BitReader chars(bytes), signedChars(bytes), shorts(bytes);
    chars.modularChar();
    signedChars.signedModularChar();
    shorts.modularShort();
    EXPECT_FALSE(chars.ok());
    EXPECT_FALSE(signedChars.ok());
    EXPECT_FALSE(shorts.ok());
}

TEST(BitCodes, TextLeavesOutOneZeroAtItsEnd) {
    BitWriter writer;
    writer.filedText(std::string("ab\0", 3));
    BitReader asText(writer.bytes());
    EXPECT_EQ(asText.text(), "ab");
    BitReader asFiled(writer.bytes());
    EXPECT_EQ(asFiled.filedText(), std::string("ab\0", 3));
}

TEST(BitCodes, RawBytesComeFromAnyBit) {
    for (unsigned shift = 0; shift < 8; ++shift) {
        BitWriter writer;
        writer.put(0, shift);
        const std::uint8_t bytes[] = {0x12, 0xFE, 0x81};
        writer.rawBytes(bytes, sizeof bytes);
        BitReader reader(writer.bytes(), shift, writer.length());
        std::uint8_t read[3] = {};
        EXPECT_TRUE(reader.rawBytes(read, sizeof read));
        EXPECT_EQ(std::memcmp(bytes, read, sizeof read), 0);
    }
}

TEST(BitWriter, GoesBackOverWrittenBitsAndKeepsTheOthers) {
    BitWriter writer;
    writer.put(0x1FF, 9);
    ASSERT_TRUE(writer.seek(3));
    writer.put(0, 2);
    EXPECT_EQ(writer.length(), 9u);
    EXPECT_EQ(bitsOf(writer), "111001111");
    EXPECT_FALSE(writer.seek(10));
}

RC_GTEST_PROP(BitCodesProperty, MixedCodesComeBackInTheirOrder, ()) {
    struct Step {
        int code;
        std::uint64_t value;
    };
    const auto steps = *rc::gen::container<std::vector<Step>>(
        rc::gen::map(rc::gen::pair(rc::gen::inRange(0, 8), rc::gen::arbitrary<std::uint64_t>()),
                     [](const std::pair<int, std::uint64_t>& p) {
                         return Step{p.first, p.second >> (p.second % 64)};
                     }));
    BitWriter writer;
    const auto asDouble = [](std::uint64_t bits) { return static_cast<double>(bits) / 7.0; };
    for (const Step& step : steps) {
        const std::uint64_t v = step.value;
        switch (step.code) {
        case 0:
            writer.bit(v & 1);
            break;
        case 1:
            writer.bitShort(static_cast<std::uint16_t>(v));
            break;
        case 2:
            writer.bitLong(static_cast<std::uint32_t>(v));
            break;
        case 3:
            writer.bitDouble(asDouble(v));
            break;
        case 4:
            writer.handle(HandleReference(kSoftPointer, v));
            break;
        case 5:
            writer.rawLong(static_cast<std::uint32_t>(v));
            break;
        case 6:
            writer.bitDouble(asDouble(v), 3.0);
            break;
        default:
            writer.rawChar(static_cast<std::uint8_t>(v));
            break;
        }
    }
    BitReader reader(writer.bytes(), 0, writer.length());
    for (const Step& step : steps) {
        const std::uint64_t v = step.value;
        switch (step.code) {
        case 0:
            RC_ASSERT(reader.bit() == ((v & 1) != 0));
            break;
        case 1:
            RC_ASSERT(reader.bitShort() == static_cast<std::uint16_t>(v));
            break;
        case 2:
            RC_ASSERT(reader.bitLong() == static_cast<std::uint32_t>(v));
            break;
        case 3:
            RC_ASSERT(reader.bitDouble() == asDouble(v));
            break;
        case 4:
            RC_ASSERT(reader.handle().value == v);
            break;
        case 5:
            RC_ASSERT(reader.rawLong() == static_cast<std::uint32_t>(v));
            break;
        case 6:
            RC_ASSERT(reader.bitDouble(3.0) == asDouble(v));
            break;
        default:
            RC_ASSERT(reader.rawChar() == static_cast<std::uint8_t>(v));
            break;
        }
    }
    RC_ASSERT(reader.ok());
    RC_ASSERT(reader.left() == 0u);
}
