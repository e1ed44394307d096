#include "dbx/cdb/cdbrec_old.h"

#include "embedded/memory_filer.h"
#include "orvcore/warn_on_new_version.h"
#include "support/allocation_watch.h"
#include "support/beep_recorder.h"
#include "support/own_calls.h"
#include "support/recording_filer.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing_support::baseReads;
using testing_support::baseWrites;
using testing_support::BeepRecorder;
using testing_support::ownCalls;
using testing_support::ownReads;
using testing_support::RecordingFiler;
using testing_support::ReportRecorder;
using testing_support::takeLargestAllocation;
using testing_support::Texts;

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string contentOf(ORV_CObjCdbRecord& record) {
    return std::string(static_cast<const char*>(record.getData()), static_cast<std::size_t>(record.getLen()));
}

RecordingFiler fileFiler() {
    RecordingFiler filer;
    filer.type = AcDb::kFileFiler;
    return filer;
}

// Counts the warnings of newer versions that come while it lives.
class WarningCounter {
public:
    WarningCounter() {
        orv_forgetNewVersionWarnings();
        m_before = orv_setNewVersionSink([this](const ORV_NewVersionWarning&) { ++count; });
    }
    ~WarningCounter() { orv_setNewVersionSink(m_before); }

    int count = 0;

private:
    ORV_NewVersionSink m_before;
};

} // namespace

TEST(ObjCdbRecord, AFreshOneHasNoContent) {
    ORV_CObjCdbRecord record;
    EXPECT_EQ(record.getData(), nullptr);
    EXPECT_EQ(record.getLen(), 0);
}

TEST(ObjCdbRecord, SetDataOfTheSameLengthWritesIntoTheBlockAndOfANewOneReplacesIt) {
    ORV_CObjCdbRecord record("abc", 3);
    void* const block = record.getData();
    record.setData("xyz", 3);
    EXPECT_EQ(record.getData(), block);
    EXPECT_EQ(contentOf(record), "xyz");
    record.setData("longer", 6);
    EXPECT_EQ(contentOf(record), "longer");
    EXPECT_EQ(record.getLen(), 6);
    record.setData("", 0);
    EXPECT_EQ(record.getLen(), 0);
}

TEST(ObjCdbRecord, FilesVersionLengthAndBytes) {
    ORV_CObjCdbRecord record("\x01\xff", 2);
    RecordingFiler filer = fileFiler();
    EXPECT_EQ(record.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(ownCalls(filer), (Texts{"writeInt16 0", "writeInt32 2", "writeBytes 2: 01 ff"}));
}

TEST(ObjCdbRecord, CallsForBytesAlsoWhenThereAreNone) {
    ORV_CObjCdbRecord record;
    RecordingFiler filer = fileFiler();
    EXPECT_EQ(record.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(ownCalls(filer), (Texts{"writeInt16 0", "writeInt32 0", "writeBytes 0:"}));
    RecordingFiler in = fileFiler();
    in.feed<Adesk::Int16>(0).feed<Adesk::Int32>(0);
    EXPECT_EQ(record.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(ownReads(in), (Texts{"readInt16", "readInt32", "readBytes 0"}));
}

TEST(ObjCdbRecord, BytesGoThroughAMemoryFilerAndBack) {
    ORV_CObjCdbRecord record("abc", 3);
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kFileFiler, bytes);
    ASSERT_EQ(record.dwgOutFields(&out), Acad::eOk);
    const Bytes own(bytes.end() - 9, bytes.end());
    EXPECT_EQ(own, (Bytes{0, 0, 3, 0, 0, 0, 'a', 'b', 'c'}));
    ORV_CObjCdbRecord back;
    embedded::MemoryFiler in(AcDb::kFileFiler, bytes.data(), bytes.size());
    EXPECT_EQ(back.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(contentOf(back), "abc");
    EXPECT_EQ(in.left(), 0u);
}

TEST(ObjCdbRecord, Version1IsRefusedWith67AndVersions0AndMinus1AreRead) {
    WarningCounter warnings;
    ORV_CObjCdbRecord record("kept", 4);
    RecordingFiler one = fileFiler();
    one.feed<Adesk::Int16>(1).feed<Adesk::Int32>(2).feedBytes("ab");
    EXPECT_EQ(static_cast<int>(record.dwgInFields(&one)), 67);
    EXPECT_EQ(contentOf(record), "kept");
    EXPECT_EQ(ownReads(one), (Texts{"readInt16"}));
    EXPECT_EQ(warnings.count, 0) << "what is refused is not warned of";
    for (const Adesk::Int16 version : {Adesk::Int16(0), Adesk::Int16(-1)}) {
        RecordingFiler filer = fileFiler();
        filer.feed<Adesk::Int16>(version).feed<Adesk::Int32>(2).feedBytes(version == 0 ? "ab" : "cd");
        EXPECT_EQ(record.dwgInFields(&filer), Acad::eOk);
        EXPECT_EQ(contentOf(record), version == 0 ? "ab" : "cd");
        EXPECT_EQ(ownReads(filer), (Texts{"readInt16", "readInt32", "readBytes 2"}));
    }
    EXPECT_EQ(warnings.count, 0);
    RecordingFiler out = fileFiler();
    record.dwgOutFields(&out);
    EXPECT_EQ(ownCalls(out).front(), "writeInt16 0") << "the version of the object never changes";
}

TEST(ObjCdbRecord, ReadingTheSameLengthReusesTheBlock) {
    ORV_CObjCdbRecord record("abc", 3);
    void* const block = record.getData();
    RecordingFiler filer = fileFiler();
    filer.feed<Adesk::Int16>(0).feed<Adesk::Int32>(3).feedBytes("xyz");
    ASSERT_EQ(record.dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(record.getData(), block);
    EXPECT_EQ(contentOf(record), "xyz");
}

// Stands before the damaged lengths, which make a filer throw too: the message comes once in a process.
TEST(ObjCdbRecord, AnExceptionInAFilerTellsOnceAndGivesTheFixedStatus) {
    BeepRecorder beep;
    ORV_CObjCdbRecord record("ab", 2);
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
    for (const std::wstring& line : beep.lines())
        EXPECT_EQ(line.find(L"Kritischer Fehler in Vandril, "), 0u);
}

TEST(ObjCdbRecord, ADamagedLengthIsRefusedAndTakesNoMemory) {
    ReportRecorder recorder;
    BeepRecorder beep;
    for (const Adesk::Int32 length : {Adesk::Int32(-7), Adesk::Int32(0x7FFFFFFF)}) {
        ORV_CObjCdbRecord record("abc", 3);
        Bytes bytes = {0, 0, 0, 0, 0, 0, 'x'};
        for (int i = 0; i < 4; ++i)
            bytes[2 + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(length) >> (8 * i));
        embedded::MemoryFiler filer(AcDb::kFileFiler, bytes.data(), bytes.size());
        takeLargestAllocation();
        EXPECT_NE(record.dwgInFields(&filer), Acad::eOk);
        EXPECT_LE(takeLargestAllocation(), std::size_t{16} << 20);
        EXPECT_EQ(record.getLen(), 0);
    }
}

TEST(ObjCdbRecord, WritingGoesOnBehindAFailureAtTheVersionAndEndsInTheFilersStatus) {
    const Texts all = {"writeInt16 0", "writeInt32 2", "writeBytes 2: 61 62"};
    const ORV_CObjCdbRecord record("ab", 2);
    ReportRecorder recorder;
    RecordingFiler filer;
    filer.failAt = baseWrites(filer.type);
    EXPECT_EQ(record.dwgOutFields(&filer), Acad::eFilerError);
    EXPECT_EQ(filer.filerStatus(), Acad::eFilerError);
    EXPECT_EQ(ownCalls(filer), all);
    EXPECT_EQ(recorder.size(), 0u) << "the host has a text for this status";

    RecordingFiler unknown;
    unknown.failAt = baseWrites(unknown.type);
    unknown.failure = static_cast<Acad::ErrorStatus>(99999);
    EXPECT_EQ(record.dwgOutFields(&unknown), static_cast<Acad::ErrorStatus>(99999));
    EXPECT_EQ(ownCalls(unknown), all);
    EXPECT_EQ(recorder.conditions(), Texts(3, "acadErrorStatusText(stat)"));
}

TEST(ObjCdbRecord, ReadingGoesOnBehindAFailureAtTheVersionAndEndsInTheFilersStatus) {
    const Texts all = {"readInt16", "readInt32", "readBytes 0"};
    ReportRecorder recorder;
    for (const auto status : {Acad::eFilerError, static_cast<Acad::ErrorStatus>(99999)}) {
        ORV_CObjCdbRecord record("old", 3);
        RecordingFiler filer = fileFiler();
        filer.failAt = baseReads(filer.type);
        filer.failure = status;
        EXPECT_EQ(record.dwgInFields(&filer), status);
        EXPECT_EQ(filer.filerStatus(), status);
        EXPECT_EQ(ownReads(filer), all);
        EXPECT_EQ(record.getLen(), 0);
    }
    EXPECT_EQ(recorder.conditions(), Texts(3, "acadErrorStatusText(stat)")) << "none for the first status";
}
