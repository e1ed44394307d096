// Streams that are cut off or damaged: they end in a status or an exception, within the memory that they
// hold.

#include "embedded/memory_filer.h"
#include "module/dbx/elem/element_streams.h"
#include "support/allocation_watch.h"

#include <cstdint>
#include <exception>
#include <functional>

using namespace testing_support;

namespace {

using Bytes = std::vector<std::uint8_t>;

class ElementStreamDamage : public ElementStreams {
protected:
    void SetUp() override {
        ElementStreams::SetUp();
        fileOwnNumber();
        readAll(m_element, fullStream());
        whole = bytesOf(m_element);
    }

    static Bytes bytesOf(const TestElement& element) {
        Bytes bytes;
        embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
        EXPECT_EQ(element.outStream(filer), Acad::eOk);
        return bytes;
    }
    // Whether the bytes are read to a good end.
    static bool reads(const Bytes& bytes) {
        TestElement element;
        // A copy of its own, so that reading behind the end is found.
        const Bytes exact(bytes);
        embedded::MemoryFiler filer(AcDb::kCopyFiler, exact.data(), exact.size());
        try {
            return element.inStream(filer) == Acad::eOk;
        } catch (const std::exception&) {
            return false;
        }
    }
    // Reading takes what it gets step by step, so a size that is not there costs one step.
    static constexpr std::size_t kMostAtOnce = std::size_t{17} << 20;

    Bytes whole;

private:
    TestElement m_element;
};

} // namespace

TEST_F(ElementStreamDamage, TheWholeStreamIsRead) { EXPECT_TRUE(reads(whole)); }

TEST_F(ElementStreamDamage, NoPartOfAStreamIsReadToAGoodEnd) {
    takeLargestAllocation();
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(reads(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))))
            << length;
    EXPECT_LE(takeLargestAllocation(), kMostAtOnce);
}

TEST_F(ElementStreamDamage, EveryWrongBitEndsCleanly) {
    takeLargestAllocation();
    int refused = 0;
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        Bytes damaged = whole;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1u << bit % 8);
        if (!reads(damaged))
            ++refused;
        ASSERT_LE(takeLargestAllocation(), kMostAtOnce) << "bit " << bit;
    }
    // Version, frames, sizes and ends are among them.
    EXPECT_GT(refused, 500);
}

TEST_F(ElementStreamDamage, EveryWordOfOnesEndsCleanly) {
    takeLargestAllocation();
    std::size_t refused = 0;
    for (std::size_t at = 0; at + 4 <= whole.size(); ++at) {
        Bytes damaged = whole;
        for (std::size_t i = at; i < at + 4; ++i)
            damaged[i] = 0xff;
        refused += reads(damaged) ? 0 : 1;
        ASSERT_LE(takeLargestAllocation(), kMostAtOnce) << "byte " << at;
    }
    // What is left are the values themselves: names, numbers, ids.
    EXPECT_GT(refused, whole.size() / 2);
    EXPECT_LT(refused, whole.size());
    EXPECT_TRUE(reads(whole));
}

TEST_F(ElementStreamDamage, WhatIsReadFromADamagedStreamCanBeFiledAgain) {
    int read = 0;
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        Bytes damaged = whole;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1u << bit % 8);
        TestElement element;
        embedded::MemoryFiler filer(AcDb::kCopyFiler, damaged.data(), damaged.size());
        try {
            if (element.inStream(filer) != Acad::eOk)
                continue;
        } catch (const std::exception&) {
            continue;
        }
        ++read;
        const Bytes again = bytesOf(element);
        TestElement back;
        embedded::MemoryFiler second(AcDb::kCopyFiler, again.data(), again.size());
        EXPECT_EQ(back.inStream(second), Acad::eOk) << bit;
        EXPECT_EQ(bytesOf(back), again) << bit;
    }
    EXPECT_GT(read, 100);
}
