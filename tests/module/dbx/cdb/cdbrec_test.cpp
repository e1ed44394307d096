#include "dbx/cdb/cdbrec.h"

#include "embedded/memory_filer.h"
#include "orvcore/warn_on_new_version.h"
#include "support/beep_recorder.h"
#include "support/own_calls.h"
#include "support/recording_filer.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using orv::ORV_CdbRecord;
using testing_support::baseReads;
using testing_support::baseWrites;
using testing_support::BeepRecorder;
using testing_support::ownCalls;
using testing_support::ownReads;
using testing_support::RecordingFiler;
using testing_support::ReportRecorder;
using testing_support::Texts;

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string contentOf(const ORV_CdbRecord& record) {
    return std::string(static_cast<const char*>(record.getDataPtr()), record.getDataSize());
}

} // namespace

TEST(CdbRecord, AFreshOneHasNoContent) {
    const ORV_CdbRecord record;
    EXPECT_EQ(record.getDataPtr(), nullptr);
    EXPECT_EQ(record.getDataSize(), 0u);
}

TEST(CdbRecord, HoldsACopyOfItsBytes) {
    char bytes[] = "abc";
    const ORV_CdbRecord record(bytes, 3);
    bytes[0] = 'x';
    EXPECT_EQ(contentOf(record), "abc");
}

TEST(CdbRecord, FilesVersionSizeBytesAndMagic) {
    const ORV_CdbRecord record("\x01\x02\xff", 3);
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    EXPECT_EQ(record.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(ownCalls(filer),
              (Texts{"writeUInt32 1", "writeUInt32 3", "writeBytes 3: 01 02 ff", "writeUInt32 2885145922"}));
    EXPECT_EQ(ORV_CdbRecord::kMagic, 2885145922u);
    EXPECT_EQ(ORV_CdbRecord::kMagic, 0xabf7d542u);
}

TEST(CdbRecord, ARecordOf3BytesTakes15BytesOfItsOwn) {
    const ORV_CdbRecord record("\x01\x02\xff", 3);
    Bytes bytes;
    embedded::MemoryFiler filer(AcDb::kFileFiler, bytes);
    ASSERT_EQ(record.dwgOutFields(&filer), Acad::eOk);
    ASSERT_GE(bytes.size(), 15u);
    const Bytes own(bytes.end() - 15, bytes.end());
    EXPECT_EQ(own, (Bytes{1, 0, 0, 0, 3, 0, 0, 0, 0x01, 0x02, 0xff, 0x42, 0xd5, 0xf7, 0xab}));
    ORV_CdbRecord back;
    embedded::MemoryFiler in(AcDb::kFileFiler, bytes.data(), bytes.size());
    EXPECT_EQ(back.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(contentOf(back), "\x01\x02\xff");
    EXPECT_EQ(in.left(), 0u);
}

TEST(CdbRecord, WithoutABlobFilesSizeZeroAndReadsBackEmpty) {
    const ORV_CdbRecord record;
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    ASSERT_EQ(record.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(ownCalls(filer), (Texts{"writeUInt32 1", "writeUInt32 0", "writeUInt32 2885145922"}));

    ORV_CdbRecord back("old", 3);
    RecordingFiler in;
    in.type = AcDb::kFileFiler;
    in.feed<Adesk::UInt32>(1).feed<Adesk::UInt32>(0).feed<Adesk::UInt32>(ORV_CdbRecord::kMagic);
    ASSERT_EQ(back.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(back.getDataPtr(), nullptr);
    EXPECT_EQ(back.getDataSize(), 0u);
    EXPECT_TRUE(in.allRead());
}

TEST(CdbRecord, AVersionAboveOneIsRefusedWith67BeforeTheContentIsTouched) {
    orv_forgetNewVersionWarnings();
    int warnings = 0;
    const auto before = orv_setNewVersionSink([&](const ORV_NewVersionWarning&) { ++warnings; });
    ORV_CdbRecord record("kept", 4);
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    filer.feed<Adesk::UInt32>(2).feed<Adesk::UInt32>(0);
    EXPECT_EQ(static_cast<int>(record.dwgInFields(&filer)), 67);
    EXPECT_EQ(filer.calls.back(), "readUInt32");
    EXPECT_FALSE(filer.allRead());
    EXPECT_EQ(contentOf(record), "kept");
    EXPECT_EQ(warnings, 0);
    orv_setNewVersionSink(before);
}

TEST(CdbRecord, AWrongMagicIsReadWithoutComplaint) {
    ReportRecorder recorder;
    ORV_CdbRecord record;
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    filer.feed<Adesk::UInt32>(1).feed<Adesk::UInt32>(2).feedBytes("ab").feed<Adesk::UInt32>(1234);
    EXPECT_EQ(record.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(contentOf(record), "ab");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(CdbRecord, AFailureOnAFieldIsNotedAndTheFilersOwnStatusComesBack) {
    ReportRecorder recorder;
    const ORV_CdbRecord record("ab", 2);
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    RecordingFiler whole;
    whole.type = AcDb::kFileFiler;
    record.dwgOutFields(&whole);
    filer.failAt = static_cast<int>(whole.calls.size()) - 4; // at the version
    filer.failure = static_cast<Acad::ErrorStatus>(99999);   // one that the host has no text for
    EXPECT_EQ(record.dwgOutFields(&filer), static_cast<Acad::ErrorStatus>(99999));
    // Version, then the block, which itself stops at its size, then the magic.
    EXPECT_EQ(filer.calls.size(), whole.calls.size() - 1);
    EXPECT_EQ(recorder.conditions(), (Texts{"acadErrorStatusText(stat)", "es == es2",
                                            "acadErrorStatusText(stat)", "acadErrorStatusText(stat)"}));
}

TEST(CdbRecord, ATruncatedStreamGivesTheFilersStatus) {
    ReportRecorder recorder;
    const Bytes bytes = {1, 0, 0, 0, 200, 0, 0, 0, 1, 2, 3};
    ORV_CdbRecord record;
    embedded::MemoryFiler filer(AcDb::kFileFiler, bytes.data(), bytes.size());
    EXPECT_EQ(record.dwgInFields(&filer), Acad::eEndOfObject);
}

TEST(CdbRecord, AnExceptionInAFilerTellsOnceAndGivesTheFixedStatus) {
    BeepRecorder beep;
    ORV_CdbRecord record("ab", 2);
    for (int round = 0; round < 2; ++round) {
        RecordingFiler in;
        in.throwAt = 0;
        EXPECT_EQ(static_cast<int>(record.dwgInFields(&in)), 67);
        EXPECT_EQ(beep.lines().size(), 1u);
    }
    for (int round = 0; round < 2; ++round) {
        RecordingFiler out;
        out.throwAt = 0;
        EXPECT_EQ(static_cast<int>(record.dwgOutFields(&out)), 2);
        EXPECT_EQ(beep.lines().size(), 2u);
    }
}

TEST(CdbRecord, WritingGoesOnBehindAFailureAtTheVersionAndEndsInTheFilersStatus) {
    ReportRecorder recorder;
    const ORV_CdbRecord record("ab", 2);
    RecordingFiler filer;
    filer.failAt = baseWrites(filer.type);
    EXPECT_EQ(record.dwgOutFields(&filer), Acad::eFilerError);
    EXPECT_EQ(filer.filerStatus(), Acad::eFilerError);
    EXPECT_EQ(ownCalls(filer), (Texts{"writeUInt32 1", "writeUInt32 2", "writeUInt32 2885145922"}));
    EXPECT_EQ(recorder.conditions(), (Texts{"es == es2"})) << "only the block checks its status";
}

TEST(CdbRecord, ReadingGoesOnBehindAFailureAtTheVersionAndEndsInTheFilersStatus) {
    ReportRecorder recorder;
    ORV_CdbRecord record("old", 3);
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    filer.failAt = baseReads(filer.type);
    EXPECT_EQ(record.dwgInFields(&filer), Acad::eFilerError);
    EXPECT_EQ(filer.filerStatus(), Acad::eFilerError);
    EXPECT_EQ(ownReads(filer), (Texts{"readUInt32", "readUInt32", "readUInt32"}));
    EXPECT_EQ(recorder.conditions(), (Texts{"es == es2"}));
    EXPECT_EQ(record.getDataSize(), 0u) << "the held content has been replaced by an empty one";
}
