#include "dbx/doc/visual_settings.h"

#include "base/exceptions.h"
#include "dbx/serArchives.h"
#include "support/archive_bytes.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace orv::settings;
using namespace testing_support;
using orv::ColourRGBA;
using orv::serialization::BinaryInArchive;
using orv::serialization::BinaryOutArchive;

namespace {

void nothing(Settings&, int, bool) {}

// Tables in which each number has a value of its own that the record keeps exactly.
void fill(Settings& settings, int, bool) {
    for (int i = 0; i < 300; ++i) {
        settings.setColour(i, {i % 256 / 255.0, (i + 1) % 256 / 255.0, 1.0, 0.0});
        settings.setSize(i, size{static_cast<std::uint32_t>(i * 3), i * 0.5});
        settings.setSwitch(i, static_cast<std::uint8_t>(i));
    }
}

std::vector<unsigned char> written(const Settings& settings) {
    BinaryOutArchive archive;
    writeVis(archive, settings);
    return blockOf(archive);
}

int readFrom(const std::vector<unsigned char>& bytes, Settings& settings) {
    BinaryInArchive archive(bytes.data(), bytes.size());
    return readVis(archive, settings);
}

// A record made by hand.
struct Record {
    BinaryOutArchive archive;
    int read(Settings& settings) const { return readFrom(blockOf(archive), settings); }
};

std::string hexAt(const std::vector<unsigned char>& bytes, std::size_t at, std::size_t count) {
    return hexOf(std::vector<unsigned char>(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                                            bytes.begin() + static_cast<std::ptrdiff_t>(at + count)));
}

// Where things stand in a whole record.
constexpr std::size_t kColoursAt = 8;
constexpr std::size_t kSizesAt = kColoursAt + 4 + 300 * 4;
constexpr std::size_t kSwitchesAt = kSizesAt + 4 + 300 * 8;
constexpr std::size_t kEnd = kSwitchesAt + 4 + 300;

void expectUntouched(const Settings& settings) {
    const Settings fresh(fill, 15, true);
    EXPECT_EQ(written(settings), written(fresh));
}

std::string filedColour(const ColourRGBA& colour) {
    Settings settings(nothing, 15, true);
    settings.setColour(0, colour);
    return hexAt(written(settings), kColoursAt + 4, 4);
}

} // namespace

TEST(VisualSettingsBytes, OfAWholeRecord) {
    const std::vector<unsigned char> bytes = written(Settings(fill, 15, true));
    ASSERT_EQ(bytes.size(), kEnd);
    EXPECT_EQ(hexAt(bytes, 0, 8), "01 00 00 00 0f 00 00 00");
    EXPECT_EQ(hexAt(bytes, kColoursAt, 4), "2c 01 00 00");
    EXPECT_EQ(hexAt(bytes, kSizesAt, 4), "2c 01 00 00");
    EXPECT_EQ(hexAt(bytes, kSwitchesAt, 4), "2c 01 00 00");
    // Alpha, blue, green, red: red is the highest byte of a number that is filed low byte first.
    EXPECT_EQ(hexAt(bytes, kColoursAt + 4, 8), "00 ff 01 00 00 ff 02 01");
    EXPECT_EQ(hexAt(bytes, kColoursAt + 4 + 299 * 4, 4), "00 ff 2c 2b");
    EXPECT_EQ(hexAt(bytes, kSizesAt + 4, 24),
              "00 00 00 00 00 00 00 00 00 00 00 3f 03 00 00 00 00 00 80 3f 06 00 00 00");
    EXPECT_EQ(hexAt(bytes, kSizesAt + 4 + 299 * 8, 8), "00 80 15 43 81 03 00 00");
    EXPECT_EQ(hexAt(bytes, kSwitchesAt + 4, 3), "00 01 02");
    EXPECT_EQ(hexAt(bytes, kEnd - 2, 2), "2a 2b");
}

TEST(VisualSettingsBytes, OfTheDefaults) {
    const std::vector<unsigned char> bytes = written(Settings(applyVisDefaults, kVisVersion, true));
    ASSERT_EQ(bytes.size(), kEnd);
    const auto colour = [&](std::size_t index) { return hexAt(bytes, kColoursAt + 4 + index * 4, 4); };
    const auto sized = [&](std::size_t index) { return hexAt(bytes, kSizesAt + 4 + index * 8, 8); };
    EXPECT_EQ(colour(0), "ff ff ff ff");
    EXPECT_EQ(colour(1), "ff 00 00 ff");
    EXPECT_EQ(colour(104), "ff ff bf 7f");
    EXPECT_EQ(colour(151), "e5 00 00 e5");
    EXPECT_EQ(colour(253), "ff 66 3f 3f");
    EXPECT_EQ(sized(0), "00 00 80 3f 00 00 00 00");
    EXPECT_EQ(sized(1), "00 00 80 3f 02 00 00 00");
    EXPECT_EQ(sized(2), "cd cc 4c 3e 00 00 00 00");
    EXPECT_EQ(sized(154), "00 00 20 41 02 00 00 00");
    EXPECT_EQ(hexAt(bytes, kSwitchesAt + 4, 10), "01 01 01 01 01 01 01 01 00 00");
}

TEST(VisualSettingsBytes, WhiteIsAllOnes) { EXPECT_EQ(filedColour({1, 1, 1, 1}), "ff ff ff ff"); }

TEST(VisualSettingsBytes, APartOfNineTenthsIs229) {
    EXPECT_EQ(filedColour({0.9, 0.9, 0.9, 0.9}), "e5 e5 e5 e5");
}

TEST(VisualSettingsBytes, APartOutsideItsRangeIsTheNearerEnd) {
    EXPECT_EQ(filedColour({-0.5, 1.5, 1e300, std::nan("")}), "00 ff ff 00");
    EXPECT_EQ(filedColour({-1e300, 256.0 / 255.0, -0.0, std::numeric_limits<double>::infinity()}),
              "ff 00 ff 00");
}

TEST(VisualSettingsBytes, SizesAreFiledAsTheyWereSetAndNotAsTheyAreScaled) {
    Settings settings(fill, 15, true);
    const std::vector<unsigned char> before = written(settings);
    settings.scaleBy(100.0);
    EXPECT_EQ(written(settings), before);
}

TEST(VisualSettings, AWrittenRecordReadsBackEqual) {
    ReportRecorder recorder;
    const std::vector<unsigned char> bytes = written(Settings(fill, 15, true));
    Settings settings(nothing, 15, true);
    EXPECT_EQ(readFrom(bytes, settings), 15);
    EXPECT_EQ(written(settings), bytes);
    EXPECT_EQ(settings.getSize(299), 149.5);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(VisualSettings, ReadingStopsBehindTheRecord) {
    BinaryOutArchive out;
    writeVis(out, Settings(fill, 15, true));
    out << 4711;
    const std::vector<unsigned char> bytes = blockOf(out);
    BinaryInArchive in(bytes.data(), bytes.size());
    Settings settings(nothing, 15, true);
    readVis(in, settings);
    int next = 0;
    in >> next;
    EXPECT_EQ(next, 4711);
}

TEST(VisualSettings, AColourReadBackIsEachByteOf255) {
    Record record;
    record.archive << 1 << 15 << 1 << 0x01807FFFu << 0 << 0;
    Settings settings(nothing, 15, true);
    EXPECT_EQ(record.read(settings), 15);
    EXPECT_EQ(settings.getColour(0), ColourRGBA(1 / 255.0, 128 / 255.0, 127 / 255.0, 1.0));
}

TEST(VisualSettings, ASizeIsFiledAsAFloat) {
    Settings settings(nothing, 15, true);
    settings.setSize(101, 0.1);
    Settings back(nothing, 15, true);
    readFrom(written(settings), back);
    EXPECT_EQ(back.getRawSize(101).value, 0.10000000149011612);
}

TEST(VisualSettings, ASizeThatIsReadFollowsTheFactor) {
    Record record;
    record.archive << 1 << 15 << 0 << 2 << 2.0f << 0u << 3.0f << kFixedSize << 0;
    Settings settings(nothing, 15, true);
    settings.scaleBy(10.0);
    record.read(settings);
    EXPECT_EQ(settings.getSize(0), 20.0);
    EXPECT_EQ(settings.getSize(1), 3.0);
}

TEST(VisualSettings, WhatTheRecordDoesNotReachKeepsItsValue) {
    ReportRecorder recorder;
    Record record;
    record.archive << 1 << 7 << 1 << 0u << 2 << 8.0f << 1u << 9.0f << 0u << 1
                   << static_cast<unsigned char>(99);
    Settings settings(fill, 15, true);
    EXPECT_EQ(record.read(settings), 7);
    EXPECT_EQ(settings.getVersion(), 15);
    Settings expected(fill, 15, true);
    expected.setColour(0, {0, 0, 0, 0});
    expected.setSize(0, size{1, 8.0});
    expected.setSize(1, size{0, 9.0});
    expected.setSwitch(0, 99);
    EXPECT_EQ(written(settings), written(expected));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(VisualSettings, ARecordWithId2YieldsZeroAndReadsNothing) {
    ReportRecorder recorder;
    Record record;
    record.archive << 2 << 15 << 1 << 0u << 0 << 0;
    const std::vector<unsigned char> bytes = blockOf(record.archive);
    BinaryInArchive in(bytes.data(), bytes.size());
    Settings settings(fill, 15, true);
    EXPECT_EQ(readVis(in, settings), 0);
    EXPECT_EQ(in.offset(), 4u);
    expectUntouched(settings);
    ASSERT_EQ(recorder.conditions(), (Texts{"id == 1"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"id", "2"}}));
}

TEST(VisualSettings, ARecordOfVersion16Yields16AndReadsNoTable) {
    ReportRecorder recorder;
    Record record;
    record.archive << 1 << 16 << 1 << 0u << 0 << 0;
    const std::vector<unsigned char> bytes = blockOf(record.archive);
    BinaryInArchive in(bytes.data(), bytes.size());
    Settings settings(fill, 15, true);
    EXPECT_EQ(readVis(in, settings), 16);
    EXPECT_EQ(in.offset(), 8u);
    expectUntouched(settings);
    ASSERT_EQ(recorder.conditions(), (Texts{"version <= static_cast<int32>(settings.getVersion())"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"settings.getVersion()", "15"}, {"version", "16"}}));
}

TEST(VisualSettings, EveryOlderVersionIsReadWhole) {
    for (int version = 0; version <= 15; ++version) {
        std::vector<unsigned char> bytes = written(Settings(fill, 15, true));
        bytes[4] = static_cast<unsigned char>(version);
        Settings settings(nothing, 15, true);
        EXPECT_EQ(readFrom(bytes, settings), version);
        EXPECT_EQ(settings.getVersion(), 15);
        bytes[4] = 15;
        EXPECT_EQ(written(settings), bytes) << version;
    }
}

TEST(VisualSettings, MoreColoursThanTheTableHasAreReportedOnceAndReadOver) {
    ReportRecorder recorder;
    Record record;
    record.archive << 1 << 15 << 302;
    for (int i = 0; i < 302; ++i)
        record.archive << 0x01020304u;
    record.archive << 0 << 1 << static_cast<unsigned char>(5);
    Settings settings(nothing, 15, true);
    EXPECT_EQ(record.read(settings), 15);
    EXPECT_EQ(settings.getColour(299).alpha, 4 / 255.0);
    EXPECT_EQ(settings.getSwitch(0), 5);
    ASSERT_EQ(recorder.conditions(), (Texts{"count <= settings.numColours()"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"settings.numColours()", "300"}, {"count", "302"}}));
}

TEST(VisualSettings, MoreSizesThanTheTableHasAreReportedOnceAndReadOver) {
    ReportRecorder recorder;
    Record record;
    record.archive << 1 << 15 << 0 << 301;
    for (int i = 0; i < 301; ++i)
        record.archive << 2.5f << 2u;
    record.archive << 1 << static_cast<unsigned char>(5);
    Settings settings(nothing, 15, true);
    EXPECT_EQ(record.read(settings), 15);
    EXPECT_EQ(settings.getRawSize(299).value, 2.5);
    EXPECT_EQ(settings.getSwitch(0), 5);
    ASSERT_EQ(recorder.conditions(), (Texts{"count <= settings.numSizes()"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"settings.numSizes()", "300"}, {"count", "301"}}));
}

TEST(VisualSettings, MoreSwitchesThanTheTableHasAreReportedOnceAndReadOver) {
    ReportRecorder recorder;
    Record record;
    record.archive << 1 << 15 << 0 << 0 << 301;
    for (int i = 0; i < 301; ++i)
        record.archive << static_cast<unsigned char>(6);
    Settings settings(nothing, 15, true);
    EXPECT_EQ(record.read(settings), 15);
    EXPECT_EQ(settings.getSwitch(299), 6);
    ASSERT_EQ(recorder.conditions(), (Texts{"count <= settings.numSwitches()"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"settings.numSwitches()", "300"}, {"count", "301"}}));
}

TEST(VisualSettings, AHugeCountEndsWithTheBytes) {
    ReportRecorder recorder;
    Record record;
    record.archive << 1 << 15 << std::numeric_limits<int>::max() << 0u << 0u;
    Settings settings(nothing, 15, true);
    try {
        record.read(settings);
        FAIL() << "no exception";
    } catch (const orv::Exception& failure) {
        EXPECT_STREQ(failure.what(), "filer error");
    }
    EXPECT_EQ(settings.getColour(1), ColourRGBA(0, 0, 0, 0));
    EXPECT_EQ(settings.getColour(2), ColourRGBA(1, 1, 1, 1));
    EXPECT_EQ(recorder.conditions(),
              (Texts{"count <= settings.numColours()", "(currOffset + sizeof(T)) <= size_"}));
}

TEST(VisualSettings, ANegativeCountReadsNone) {
    ReportRecorder recorder;
    Record record;
    record.archive << 1 << 15 << -1 << std::numeric_limits<int>::min() << -300;
    const std::vector<unsigned char> bytes = blockOf(record.archive);
    Settings settings(fill, 15, true);
    EXPECT_EQ(readFrom(bytes, settings), 15);
    expectUntouched(settings);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(VisualSettings, EveryPrefixEndsInTheFailureAndSetsWhatItReached) {
    ReportRecorder recorder;
    const std::vector<unsigned char> bytes = written(Settings(fill, 15, true));
    for (std::size_t kept = 0; kept < bytes.size(); ++kept) {
        std::vector<unsigned char> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(kept));
        cut.shrink_to_fit();
        Settings settings(nothing, 15, true);
        EXPECT_THROW(readFrom(cut, settings), orv::Exception) << kept;
        const bool firstColour = kept >= kColoursAt + 8;
        EXPECT_EQ(settings.getColour(0).alpha, firstColour ? 0.0 : 1.0) << kept;
        const bool firstSize = kept >= kSizesAt + 12;
        EXPECT_EQ(settings.getRawSize(0).value, firstSize ? 0.0 : 1.0) << kept;
    }
}

TEST(VisualSettings, EverySingleBitEndsInAVersionOrTheFailure) {
    // A small record, since a large one differs in nothing but its length.
    Record record;
    record.archive << 1 << 15 << 2 << 0x11223344u << 0x55667788u << 1 << 1.5f << 2u << 3
                   << static_cast<unsigned char>(1) << static_cast<unsigned char>(0)
                   << static_cast<unsigned char>(1);
    const std::vector<unsigned char> bytes = blockOf(record.archive);
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        ReportRecorder recorder;
        std::vector<unsigned char> damaged = bytes;
        damaged[bit / 8] ^= static_cast<unsigned char>(1u << bit % 8);
        damaged.shrink_to_fit();
        Settings settings(fill, 15, true);
        try {
            const int version = readFrom(damaged, settings);
            if (bit < 32) {
                EXPECT_EQ(version, 0) << bit;
            } else if (bit >= 64) {
                EXPECT_EQ(version, 15) << bit;
            }
        } catch (const orv::Exception& failure) {
            EXPECT_STREQ(failure.what(), "filer error");
            EXPECT_GE(recorder.size(), 1u);
        }
    }
}

RC_GTEST_PROP(VisualSettingsProperty, AnyBytesEndInAVersionOrTheFailure, ()) {
    ReportRecorder recorder;
    BinaryOutArchive archive;
    archive << 1 << *rc::gen::inRange(-2, 18);
    for (int table = 0; table < 3; ++table)
        archive << *rc::gen::inRange(-3, 12);
    std::vector<unsigned char> bytes = blockOf(archive);
    const auto tail = *rc::gen::container<std::vector<unsigned char>>(rc::gen::arbitrary<unsigned char>());
    bytes.insert(bytes.end(), tail.begin(), tail.end());
    bytes.shrink_to_fit();
    Settings settings(fill, 15, true);
    try {
        readFrom(bytes, settings);
    } catch (const orv::Exception& failure) {
        RC_ASSERT(std::string(failure.what()) == "filer error");
    }
    RC_ASSERT(settings.getVersion() == 15);
}

RC_GTEST_PROP(VisualSettingsProperty, WhatIsReadFromAWholeRecordIsReadAgainEqual, ()) {
    Settings settings(nothing, 15, true);
    for (int i = 0; i < 300; ++i) {
        settings.setSize(
            i, size{*rc::gen::arbitrary<std::uint32_t>(), static_cast<double>(*rc::gen::arbitrary<float>())});
        settings.setSwitch(i, *rc::gen::arbitrary<std::uint8_t>());
    }
    const std::vector<unsigned char> bytes = written(settings);
    Settings back(nothing, 15, true);
    RC_ASSERT(readFrom(bytes, back) == 15);
    RC_ASSERT(written(back) == bytes);
}
