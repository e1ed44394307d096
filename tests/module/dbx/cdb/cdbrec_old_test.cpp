#include "dbx/cdb/cdbrec_old.h"

#include "embedded/memory_filer.h"
#include "orvcore/warn_on_new_version.h"
#include "support/beep_recorder.h"
#include "support/recording_filer.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing_support::BeepRecorder;
using testing_support::RecordingFiler;
using testing_support::ReportRecorder;
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

Texts lastCalls(const RecordingFiler& filer, std::size_t count) {
    return Texts(filer.calls.end() - static_cast<long long>(count), filer.calls.end());
}

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
    EXPECT_EQ(lastCalls(filer, 3), (Texts{"writeInt16 0", "writeInt32 2", "writeBytes 2: 01 ff"}));
}

TEST(ObjCdbRecord, CallsForBytesAlsoWhenThereAreNone) {
    ORV_CObjCdbRecord record;
    RecordingFiler filer = fileFiler();
    EXPECT_EQ(record.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(lastCalls(filer, 3), (Texts{"writeInt16 0", "writeInt32 0", "writeBytes 0:"}));
    RecordingFiler in = fileFiler();
    in.feed<Adesk::Int16>(0).feed<Adesk::Int32>(0);
    EXPECT_EQ(record.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(lastCalls(in, 3), (Texts{"readInt16", "readInt32", "readBytes 0"}));
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
    ORV_CObjCdbRecord record("kept", 4);
    RecordingFiler one = fileFiler();
    one.feed<Adesk::Int16>(1).feed<Adesk::Int32>(2).feedBytes("ab");
    EXPECT_EQ(static_cast<int>(record.dwgInFields(&one)), 67);
    EXPECT_EQ(contentOf(record), "kept");
    for (const Adesk::Int16 version : {Adesk::Int16(0), Adesk::Int16(-1)}) {
        RecordingFiler filer = fileFiler();
        filer.feed<Adesk::Int16>(version).feed<Adesk::Int32>(2).feedBytes(version == 0 ? "ab" : "cd");
        EXPECT_EQ(record.dwgInFields(&filer), Acad::eOk);
        EXPECT_EQ(contentOf(record), version == 0 ? "ab" : "cd");
    }
    RecordingFiler out = fileFiler();
    record.dwgOutFields(&out);
    EXPECT_EQ(lastCalls(out, 3).front(), "writeInt16 0") << "the version of the object never changes";
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

TEST(ObjCdbRecord, ADamagedLengthIsRefusedAndTakesNoMemory) {
    ReportRecorder recorder;
    BeepRecorder beep;
    for (const Adesk::Int32 length : {Adesk::Int32(-7), Adesk::Int32(0x7FFFFFFF)}) {
        ORV_CObjCdbRecord record("abc", 3);
        Bytes bytes = {0, 0, 0, 0, 0, 0, 'x'};
        for (int i = 0; i < 4; ++i)
            bytes[2 + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(length) >> (8 * i));
        embedded::MemoryFiler filer(AcDb::kFileFiler, bytes.data(), bytes.size());
        EXPECT_NE(record.dwgInFields(&filer), Acad::eOk);
        EXPECT_EQ(record.getLen(), 0);
    }
}

TEST(ObjCdbRecord, AnExceptionInAFilerTellsOnceAndGivesTheFixedStatus) {
    BeepRecorder beep;
    ORV_CObjCdbRecord record("ab", 2);
    RecordingFiler first;
    first.throwAt = 0;
    const int told = static_cast<int>(beep.lines().size());
    EXPECT_EQ(static_cast<int>(record.dwgOutFields(&first)), 2);
    EXPECT_EQ(static_cast<int>(beep.lines().size()), told + 1);
    RecordingFiler second;
    second.throwAt = 0;
    EXPECT_EQ(static_cast<int>(record.dwgOutFields(&second)), 2);
    EXPECT_EQ(static_cast<int>(beep.lines().size()), told + 1);
    RecordingFiler reading;
    reading.throwAt = 0;
    EXPECT_EQ(static_cast<int>(record.dwgInFields(&reading)), 67);
}
