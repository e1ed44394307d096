#include "dbx/binary_in_archive.h"

#include "base/blob.h"
#include "base/exceptions.h"
#include "support/archive_bytes.h"
#include "support/report_recorder.h"

#include "gemat2d.h"
#include "gemat3d.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

using namespace orv::serialization;
using namespace testing_support;
using orv::Blob;
using orv::BlobRef;

namespace {

// Owns its bytes on the heap, in just their number, so that a step beside them is noticed.
struct Block {
    explicit Block(const std::string& hex) : bytes(fromHex(hex)) { bytes.shrink_to_fit(); }
    std::vector<unsigned char> bytes;
};
struct HexArchive : Block, BinaryInArchive {
    explicit HexArchive(const std::string& hex) : Block(hex), BinaryInArchive(bytes.data(), bytes.size()) {}
};

template <class T>
T read(const std::string& hex) {
    HexArchive archive(hex);
    T value{};
    archive >> value;
    EXPECT_EQ(archive.offset(), archive.bytes.size());
    return value;
}

template <class Read>
void expectFilerError(Read read) {
    try {
        read();
        FAIL() << "no exception";
    } catch (const orv::Exception& failure) {
        EXPECT_STREQ(failure.what(), "filer error");
    }
}

AcDbObjectId idOf(std::intptr_t number) { return AcDbObjectId().setFromOldId(number); }

std::string wideText(std::size_t value) { return std::to_string(value); }

constexpr char kOne[] = "00 00 00 00 00 00 f0 3f";
constexpr char kTwo[] = "00 00 00 00 00 00 00 40";
constexpr char kThree[] = "00 00 00 00 00 00 08 40";

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : " ") + part;
    return text;
}

} // namespace

TEST(BinaryInArchive, StartsAtTheBeginningWithoutPointers) {
    HexArchive archive("01 02");
    EXPECT_EQ(archive.offset(), 0u);
    EXPECT_TRUE(archive.softPointers().empty());
    EXPECT_TRUE(archive.hardPointers().empty());
}

TEST(BinaryInArchiveBytes, Bool) {
    EXPECT_TRUE(read<bool>("01"));
    EXPECT_FALSE(read<bool>("00"));
}

TEST(BinaryInArchiveBytes, TrueThatIsStoredAsTwoReadsAsFalse) {
    EXPECT_FALSE(read<bool>("02"));
    EXPECT_FALSE(read<bool>("ff"));
}

TEST(BinaryInArchiveBytes, WholeNumbers) {
    EXPECT_EQ(read<signed char>("fe"), -2);
    EXPECT_EQ(read<unsigned char>("ab"), 0xab);
    EXPECT_EQ(read<short>("fe ff"), -2);
    EXPECT_EQ(read<unsigned short>("34 12"), 0x1234);
    EXPECT_EQ(read<int>("fe ff ff ff"), -2);
    EXPECT_EQ(read<unsigned int>("e5 7d db af"), 0xafdb7de5u);
    EXPECT_EQ(read<std::int64_t>("fe ff ff ff ff ff ff ff"), -2);
    EXPECT_EQ(read<std::uint64_t>("ef cd ab 89 67 45 23 01"), 0x0123456789abcdefu);
}

TEST(BinaryInArchiveBytes, RealNumbers) {
    EXPECT_EQ(read<float>("00 00 c0 bf"), -1.5f);
    EXPECT_EQ(read<double>("00 00 00 00 00 00 f8 bf"), -1.5);
}

TEST(BinaryInArchiveBytes, PointsAndVectors) {
    const auto point = read<AcGePoint3d>(joined({kOne, kTwo, kThree}));
    EXPECT_EQ((std::vector<double>{point.x, point.y, point.z}), (std::vector<double>{1, 2, 3}));
    const auto vector = read<AcGeVector3d>(joined({kThree, kTwo, kOne}));
    EXPECT_EQ((std::vector<double>{vector.x, vector.y, vector.z}), (std::vector<double>{3, 2, 1}));
    const auto point2d = read<AcGePoint2d>(joined({kOne, kTwo}));
    EXPECT_EQ((std::vector<double>{point2d.x, point2d.y}), (std::vector<double>{1, 2}));
    const auto vector2d = read<AcGeVector2d>(joined({kTwo, kThree}));
    EXPECT_EQ((std::vector<double>{vector2d.x, vector2d.y}), (std::vector<double>{2, 3}));
}

TEST(BinaryInArchiveBytes, MatricesRowAfterRow) {
    std::vector<std::string> parts(16, kOne);
    parts[1] = kTwo;
    parts[12] = kThree;
    const auto matrix = read<AcGeMatrix3d>(joined(parts));
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(matrix.entry[i / 4][i % 4], i == 1 ? 2.0 : i == 12 ? 3.0 : 1.0) << i;
    parts.resize(9);
    parts[6] = kThree;
    const auto matrix2d = read<AcGeMatrix2d>(joined(parts));
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(matrix2d.entry[i / 3][i % 3], i == 1 ? 2.0 : i == 6 ? 3.0 : 1.0) << i;
}

TEST(BinaryInArchiveBytes, Strings) {
    EXPECT_EQ(read<std::string>("03 00 00 00 61 00 62"), std::string("a\0b", 3));
    EXPECT_EQ(read<std::wstring>("02 00 00 00 f6 00 00 00 ac 20 00 00"), L"\u00f6\u20ac");
}

TEST(BinaryInArchiveBytes, AnEmptyStringClearsTheTarget) {
    HexArchive archive("00 00 00 00 00 00 00 00");
    std::string narrow = "before";
    std::wstring wide = L"before";
    archive >> narrow >> wide;
    EXPECT_EQ(narrow, "");
    EXPECT_EQ(wide, L"");
    EXPECT_EQ(archive.offset(), 8u);
}

TEST(BinaryInArchiveBytes, OfAWideCharacterTheLower16BitsAreTaken) {
    EXPECT_EQ(read<std::wstring>("02 00 00 00 61 00 ff 7f 62 00 01 00"), L"ab");
}

TEST(BinaryInArchiveBytes, TwoUnitsAreOneCharacterOutsideTheFirstPlane) {
    EXPECT_EQ(read<std::wstring>("04 00 00 00 78 00 00 00 3c d8 00 00 d7 df 00 00 79 00 00 00"),
              L"x\U0001F3D7y");
}

TEST(BinaryInArchiveBytes, ALoneSurrogateStaysAsItIs) {
    EXPECT_EQ(read<std::wstring>("02 00 00 00 3c d8 00 00 61 00 00 00"),
              std::wstring(1, static_cast<wchar_t>(0xD83C)) + L"a");
}

TEST(BinaryInArchiveBytes, ABlobReplacesTheTargetsBytes) {
    HexArchive archive("02 00 00 00 61 62 00 00 00 00");
    Blob blob("before", 6);
    archive >> blob;
    ASSERT_EQ(blob.size(), 2u);
    EXPECT_EQ(std::memcmp(blob.data(), "ab", 2), 0);
    archive >> blob;
    EXPECT_TRUE(blob.is_empty());
    EXPECT_EQ(archive.offset(), 10u);
}

TEST(BinaryInArchive, AfterNBytesTheOffsetIsN) {
    HexArchive archive(joined({"01", "fe ff", kOne, "02 00 00 00 61 62", "01 00 00 00 61 00 00 00"}));
    bool flag = false;
    short number = 0;
    double real = 0;
    std::string narrow;
    std::wstring wide;
    std::vector<std::uint64_t> offsets;
    archive >> flag;
    offsets.push_back(archive.offset());
    archive >> number;
    offsets.push_back(archive.offset());
    archive >> real;
    offsets.push_back(archive.offset());
    archive >> narrow;
    offsets.push_back(archive.offset());
    archive >> wide;
    offsets.push_back(archive.offset());
    EXPECT_EQ(offsets, (std::vector<std::uint64_t>{1, 3, 11, 17, 25}));
}

TEST(BinaryInArchive, EveryOperationAnswersTheArchive) {
    HexArchive archive(joined(std::vector<std::string>(60, "00 00 00 00 00 00 00 00")));
    archive.hardPointers() = archive.softPointers() = {idOf(1)};
    const auto isItself = [&](const IInArchive& answer) { return &answer == &archive; };
    const auto readsItself = [&](auto value) { return isItself(archive >> value); };
    AcDbObjectId id;
    EXPECT_TRUE(isItself(archive.hardPointer(id)));
    EXPECT_TRUE(isItself(archive.softPointer(id)));
    EXPECT_TRUE(readsItself(AcGeMatrix3d()));
    EXPECT_TRUE(readsItself(AcGePoint3d()));
    EXPECT_TRUE(readsItself(AcGeVector3d()));
    EXPECT_TRUE(readsItself(AcGeMatrix2d()));
    EXPECT_TRUE(readsItself(AcGePoint2d()));
    EXPECT_TRUE(readsItself(AcGeVector2d()));
    EXPECT_TRUE(readsItself(Blob()));
    EXPECT_TRUE(readsItself(BlobRef()));
    EXPECT_TRUE(readsItself(std::wstring()));
    EXPECT_TRUE(readsItself(std::string()));
    EXPECT_TRUE(readsItself(0.0));
    EXPECT_TRUE(readsItself(0.0f));
    EXPECT_TRUE(readsItself(std::int64_t{0}));
    EXPECT_TRUE(readsItself(0));
    EXPECT_TRUE(readsItself(short{0}));
    EXPECT_TRUE(readsItself(static_cast<signed char>(0)));
    EXPECT_TRUE(readsItself(std::uint64_t{0}));
    EXPECT_TRUE(readsItself(0u));
    EXPECT_TRUE(readsItself(static_cast<unsigned short>(0)));
    EXPECT_TRUE(readsItself(static_cast<unsigned char>(0)));
    EXPECT_TRUE(readsItself(false));
}

TEST(BinaryInArchiveEnd, AnIntTwoBytesBeforeTheEndThrowsAndLeavesTheOffset) {
    ReportRecorder recorder;
    HexArchive archive("01 00 00 00 02 00");
    int number = 0;
    archive >> number;
    number = 77;
    expectFilerError([&] { archive >> number; });
    EXPECT_EQ(number, 77);
    EXPECT_EQ(archive.offset(), 4u);
    ASSERT_EQ(recorder.conditions(), (Texts{"(currOffset + sizeof(T)) <= size_"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"currOffset", "4"},
                                             {"size_", "6"},
                                             {"sizeof(T)", "4"},
                                             {"typeid(T).name()", typeid(int).name()}}));
    EXPECT_EQ(recorder.at(0).message, "");
}

TEST(BinaryInArchiveEnd, EachNumberReportsItsOwnTypeAndKeepsItsValue) {
    const auto expectReport = [](auto target, const std::type_info& type, std::size_t size) {
        ReportRecorder recorder;
        std::vector<unsigned char> bytes(size - 1, 0x55);
        BinaryInArchive archive(bytes.data(), bytes.size());
        const auto before = target;
        expectFilerError([&] { archive >> target; });
        EXPECT_EQ(target, before);
        EXPECT_EQ(archive.offset(), 0u);
        ASSERT_EQ(recorder.conditions(), (Texts{"(currOffset + sizeof(T)) <= size_"}));
        EXPECT_EQ(recorder.at(0).values, (Values{{"currOffset", "0"},
                                                 {"size_", wideText(size - 1)},
                                                 {"sizeof(T)", wideText(size)},
                                                 {"typeid(T).name()", type.name()}}));
    };
    expectReport(1.5, typeid(double), 8);
    expectReport(1.5f, typeid(float), 4);
    expectReport(std::int64_t{5}, typeid(std::int64_t), 8);
    expectReport(5, typeid(int), 4);
    expectReport(short{5}, typeid(short), 2);
    expectReport(static_cast<signed char>(5), typeid(signed char), 1);
    expectReport(std::uint64_t{5}, typeid(std::uint64_t), 8);
    expectReport(5u, typeid(unsigned int), 4);
    expectReport(static_cast<unsigned short>(5), typeid(unsigned short), 2);
    expectReport(static_cast<unsigned char>(5), typeid(unsigned char), 1);
    expectReport(true, typeid(unsigned char), 1);
}

TEST(BinaryInArchiveEnd, GeometryThatEndsEarlyFailsAtItsMissingDouble) {
    ReportRecorder recorder;
    HexArchive archive(joined({kOne, kTwo, "00 00"}));
    AcGePoint3d point(7, 8, 9);
    expectFilerError([&] { archive >> point; });
    EXPECT_EQ((std::vector<double>{point.x, point.y, point.z}), (std::vector<double>{7, 8, 9}));
    ASSERT_EQ(recorder.conditions(), (Texts{"(currOffset + sizeof(T)) <= size_"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"currOffset", "16"},
                                             {"size_", "18"},
                                             {"sizeof(T)", "8"},
                                             {"typeid(T).name()", typeid(double).name()}}));
    // The doubles before it have been read.
    EXPECT_EQ(archive.offset(), 16u);
}

TEST(BinaryInArchiveEnd, EveryPieceOfGeometryKeepsItsValue) {
    ReportRecorder recorder;
    const auto expectKept = [](auto target, std::size_t doubles) {
        for (std::size_t size = 0; size < doubles * 8; size += 5) {
            std::vector<unsigned char> bytes(size, 0x55);
            BinaryInArchive archive(bytes.data(), bytes.size());
            auto read = target;
            expectFilerError([&] { archive >> read; });
            EXPECT_EQ(std::memcmp(&read, &target, sizeof read), 0) << size;
        }
    };
    expectKept(AcGeMatrix3d(), 16);
    expectKept(AcGeMatrix2d(), 9);
    expectKept(AcGePoint3d(1, 2, 3), 3);
    expectKept(AcGeVector3d(1, 2, 3), 3);
    expectKept(AcGePoint2d(1, 2), 2);
    expectKept(AcGeVector2d(1, 2), 2);
}

TEST(BinaryInArchiveEnd, ABlobWithoutItsSizeReportsTwiceAndKeepsItsBytes) {
    ReportRecorder recorder;
    HexArchive archive("01 02 03");
    Blob blob("before", 6);
    expectFilerError([&] { archive >> blob; });
    EXPECT_EQ(blob.size(), 6u);
    EXPECT_EQ(archive.offset(), 0u);
    ASSERT_EQ(recorder.conditions(),
              (Texts{"(currOffset + sizeof(uint32)) <= size_", "(currOffset + sizeof(T)) <= size_"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"currOffset", "0"}, {"size_", "3"}}));
    EXPECT_EQ(recorder.at(1).values.back().value, typeid(unsigned int).name());
}

TEST(BinaryInArchiveEnd, ABlobWhoseSizeRunsPastTheBlockFailsAndKeepsItsBytes) {
    for (const char* hex :
         {"04 00 00 00 61 62 63", "ff ff ff ff 61 62 63", "01 00 00 00", "00 00 00 80 61 62 63"}) {
        ReportRecorder recorder;
        HexArchive archive(hex);
        Blob blob("before", 6);
        expectFilerError([&] { archive >> blob; });
        EXPECT_EQ(std::memcmp(blob.data(), "before", 6), 0) << hex;
        EXPECT_EQ(archive.offset(), 4u);
        EXPECT_EQ(recorder.conditions(), (Texts{"size <= size_ - currOffset"}));
    }
}

TEST(BinaryInArchiveEnd, AStringThatRunsPastTheBlockFailsAndKeepsItsText) {
    for (const char* hex : {"04 00 00 00 61 62 63", "ff ff ff ff 61 62 63", "01 00 00 00"}) {
        ReportRecorder recorder;
        HexArchive archive(hex);
        std::string text = "before";
        expectFilerError([&] { archive >> text; });
        EXPECT_EQ(text, "before");
        EXPECT_EQ(archive.offset(), 4u);
        ASSERT_EQ(recorder.conditions(), (Texts{"size <= size_ - currOffset"}));
        EXPECT_EQ(recorder.at(0).values.at(0).name, "currOffset");
        EXPECT_EQ(recorder.at(0).values.at(1).name, "size_");
        EXPECT_EQ(recorder.at(0).values.at(2).name, "size");
    }
}

TEST(BinaryInArchiveEnd, AWideStringThatRunsPastTheBlockFailsAndKeepsItsText) {
    // The last of them asks for four times as much as 32 bits can tell.
    for (const char* hex :
         {"02 00 00 00 61 00 00 00 62 00 00", "01 00 00 00", "01 00 00 40 61 00 00 00", "ff ff ff ff"}) {
        ReportRecorder recorder;
        HexArchive archive(hex);
        std::wstring text = L"before";
        expectFilerError([&] { archive >> text; });
        EXPECT_EQ(text, L"before");
        EXPECT_EQ(archive.offset(), 4u);
        EXPECT_EQ(recorder.conditions(), (Texts{"size <= size_ - currOffset"}));
    }
}

TEST(BinaryInArchiveEnd, StringsWithoutACountKeepTheirText) {
    ReportRecorder recorder;
    HexArchive archive("01 00");
    std::string narrow = "before";
    std::wstring wide = L"before";
    expectFilerError([&] { archive >> narrow; });
    expectFilerError([&] { archive >> wide; });
    EXPECT_EQ(narrow, "before");
    EXPECT_EQ(wide, L"before");
    EXPECT_EQ(recorder.conditions(), Texts(2, "(currOffset + sizeof(T)) <= size_"));
}

TEST(BinaryInArchiveEnd, ABlockWithoutBytesHasNothing) {
    ReportRecorder recorder;
    BinaryInArchive none(nullptr, 100);
    unsigned char byte = 7;
    expectFilerError([&] { none >> byte; });
    EXPECT_EQ(byte, 7);
    EXPECT_EQ(none.offset(), 0u);
    Blob blob;
    expectFilerError([&] { none >> blob; });
}

TEST(BinaryInArchiveBlobRef, TheExpectedSizeIsCopied) {
    ReportRecorder recorder;
    HexArchive archive("03 00 00 00 61 62 63 64");
    char room[5] = "....";
    BlobRef in(room, 3);
    archive >> in;
    EXPECT_STREQ(room, "abc.");
    EXPECT_EQ(in.data_, room);
    EXPECT_EQ(in.size_, 3u);
    EXPECT_EQ(archive.offset(), 7u);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(BinaryInArchiveBlobRef, SixteenExpectedAndFourStoredCopiesFour) {
    ReportRecorder recorder;
    HexArchive archive(joined({"04 00 00 00 61 62 63 64", kOne, kOne}));
    char room[17] = "................";
    BlobRef in(room, 16);
    archive >> in;
    EXPECT_STREQ(room, "abcd............");
    EXPECT_EQ(in.size_, 16u);
    EXPECT_EQ(archive.offset(), 4u + 4u);
    ASSERT_EQ(recorder.conditions(), (Texts{"storedSize == in.size_"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"storedSize", "4"}, {"in.size_", "16"}}));
}

TEST(BinaryInArchiveBlobRef, ExpectingMoreThanTheBlockHoldsIsReportedAndStillReads) {
    ReportRecorder recorder;
    HexArchive archive("04 00 00 00 61 62 63 64");
    char room[17] = "................";
    BlobRef in(room, 16);
    archive >> in;
    EXPECT_STREQ(room, "abcd............");
    EXPECT_EQ(archive.offset(), 8u);
    ASSERT_EQ(recorder.conditions(),
              (Texts{"(currOffset + sizeof(uint32) + in.size_) <= size_", "storedSize == in.size_"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"currOffset", "0"}, {"size_", "8"}, {"in.size_", "16"}}));
}

TEST(BinaryInArchiveBlobRef, FewerExpectedThanStoredPassesOverTheStored) {
    ReportRecorder recorder;
    HexArchive archive("04 00 00 00 61 62 63 64 05");
    char room[5] = "....";
    BlobRef in(room, 2);
    archive >> in;
    EXPECT_STREQ(room, "ab..");
    EXPECT_EQ(archive.offset(), 8u);
    EXPECT_EQ(recorder.conditions(), (Texts{"storedSize == in.size_"}));
}

TEST(BinaryInArchiveBlobRef, NoneExpectedAndFourStoredStaysBehindThePrefix) {
    ReportRecorder recorder;
    HexArchive archive("04 00 00 00 61 62 63 64");
    BlobRef in;
    archive >> in;
    EXPECT_EQ(archive.offset(), 4u);
    ASSERT_EQ(recorder.conditions(), (Texts{"storedSize == in.size_"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"storedSize", "4"}, {"in.size_", "0"}}));
}

TEST(BinaryInArchiveBlobRef, FourExpectedAndNoneStoredStaysBehindThePrefix) {
    ReportRecorder recorder;
    HexArchive archive("00 00 00 00 61 62 63 64");
    char room[5] = "....";
    BlobRef in(room, 4);
    archive >> in;
    EXPECT_STREQ(room, "....");
    EXPECT_EQ(archive.offset(), 4u);
    EXPECT_EQ(recorder.conditions(), (Texts{"storedSize == in.size_"}));
}

TEST(BinaryInArchiveBlobRef, NoneExpectedAndNoneStoredSaysNothing) {
    ReportRecorder recorder;
    HexArchive archive("00 00 00 00");
    BlobRef in;
    archive >> in;
    EXPECT_EQ(archive.offset(), 4u);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(BinaryInArchiveBlobRef, AStoredSizeBeyondTheBlockFailsAndKeepsTheRoom) {
    ReportRecorder recorder;
    HexArchive archive("ff ff ff 7f 61 62 63 64");
    char room[5] = "....";
    BlobRef in(room, 4);
    expectFilerError([&] { archive >> in; });
    EXPECT_STREQ(room, "....");
    EXPECT_EQ(archive.offset(), 4u);
    EXPECT_EQ(recorder.conditions(), (Texts{"storedSize == in.size_", "size <= size_ - currOffset"}));
}

TEST(BinaryInArchiveBlobRef, TheExpectedSizeBeyondTheBlockFailsAndKeepsTheRoom) {
    ReportRecorder recorder;
    HexArchive archive("04 00 00 00 61 62");
    char room[5] = "....";
    BlobRef in(room, 4);
    expectFilerError([&] { archive >> in; });
    EXPECT_STREQ(room, "....");
    EXPECT_EQ(recorder.conditions(),
              (Texts{"(currOffset + sizeof(uint32) + in.size_) <= size_", "size <= size_ - currOffset"}));
}

TEST(BinaryInArchiveBlobRef, WithoutAPrefixItReportsAndFails) {
    ReportRecorder recorder;
    HexArchive archive("04 00 00");
    char room[5] = "....";
    BlobRef in(room, 4);
    expectFilerError([&] { archive >> in; });
    EXPECT_STREQ(room, "....");
    EXPECT_EQ(archive.offset(), 0u);
    EXPECT_EQ(recorder.conditions(), (Texts{"(currOffset + sizeof(uint32) + in.size_) <= size_",
                                            "(currOffset + sizeof(T)) <= size_"}));
}

TEST(BinaryInArchiveBlobRef, NullForRoomIsReportedAndFails) {
    ReportRecorder recorder;
    HexArchive archive("02 00 00 00 61 62");
    BlobRef in(static_cast<void*>(nullptr), 2);
    expectFilerError([&] { archive >> in; });
    EXPECT_EQ(recorder.conditions(), (Texts{"to"}));
}

TEST(BinaryInArchivePointers, EachListIsReadInItsOwnOrder) {
    ReportRecorder recorder;
    BinaryInArchive archive(nullptr, 0);
    archive.softPointers() = {idOf(1), AcDbObjectId(), idOf(3)};
    archive.hardPointers() = {idOf(4), idOf(5)};
    AcDbObjectId soft[3];
    AcDbObjectId hard[2];
    archive.softPointer(soft[0]).hardPointer(hard[0]).hardPointer(hard[1]).softPointer(soft[1]).softPointer(
        soft[2]);
    EXPECT_EQ(soft[0], idOf(1));
    EXPECT_TRUE(soft[1].isNull());
    EXPECT_EQ(soft[2], idOf(3));
    EXPECT_EQ(hard[0], idOf(4));
    EXPECT_EQ(hard[1], idOf(5));
    EXPECT_TRUE(archive.softPointers().empty());
    EXPECT_TRUE(archive.hardPointers().empty());
    EXPECT_EQ(archive.offset(), 0u);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(BinaryInArchivePointers, AnEmptyListIsReportedAndFailsAndKeepsTheTarget) {
    ReportRecorder recorder;
    HexArchive archive("01");
    archive.hardPointers() = {idOf(9)};
    AcDbObjectId id = idOf(7);
    expectFilerError([&] { archive.softPointer(id); });
    EXPECT_EQ(id, idOf(7));
    EXPECT_EQ(recorder.conditions(), (Texts{"!softPointers_.empty()"}));
    archive.hardPointers().clear();
    archive.softPointers() = {idOf(9)};
    recorder.clear();
    expectFilerError([&] { archive.hardPointer(id); });
    EXPECT_EQ(id, idOf(7));
    EXPECT_EQ(recorder.conditions(), (Texts{"!hardPointers_.empty()"}));
    EXPECT_EQ(archive.softPointers().size(), 1u);
}

TEST(BinaryInArchiveDerived, SeesGeometryAsDoubles) {
    struct Listening : HexArchive {
        using HexArchive::HexArchive;
        using BinaryInArchive::operator>>;
        IInArchive& operator>>(double& value) override {
            HexArchive::operator>>(value);
            seen.push_back(value);
            return *this;
        }
        std::vector<double> seen;
    } archive(joined({kOne, kTwo, kThree, kOne, kThree}));
    AcGePoint3d point;
    AcGeVector2d vector;
    archive >> point >> vector;
    EXPECT_EQ(archive.seen, (std::vector<double>{1, 2, 3, 1, 3}));
    EXPECT_EQ(point.z, 3.0);
    EXPECT_EQ(vector.y, 3.0);
}

TEST(BinaryInArchiveDerived, SeesCountsAndSizesAsUnsignedInt) {
    struct Listening : HexArchive {
        using HexArchive::HexArchive;
        using BinaryInArchive::operator>>;
        IInArchive& operator>>(unsigned int& value) override {
            HexArchive::operator>>(value);
            seen.push_back(value);
            return *this;
        }
        std::vector<unsigned int> seen;
    } archive("02 00 00 00 61 62 01 00 00 00 61 00 00 00 03 00 00 00 01 02 03 01 00 00 00 07");
    std::string narrow;
    std::wstring wide;
    Blob blob;
    unsigned char room = 0;
    BlobRef in(&room, 1);
    archive >> narrow >> wide >> blob >> in;
    EXPECT_EQ(archive.seen, (std::vector<unsigned int>{2, 1, 3, 1}));
    EXPECT_EQ(narrow, "ab");
    EXPECT_EQ(wide, L"a");
    EXPECT_EQ(blob.size(), 3u);
    EXPECT_EQ(room, 7);
}

TEST(BinaryInArchiveBytes, ABlobOfTheSameSizeIsReplacedToo) {
    HexArchive archive("03 00 00 00 61 62 63");
    Blob blob("xyz", 3);
    archive >> blob;
    EXPECT_EQ(std::memcmp(blob.data(), "abc", 3), 0);
}
