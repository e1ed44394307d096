#include "dbx/elem/element_log_filing.h"

#include "dbx/elem/element_log.h"
#include "embedded/memory_filer.h"
#include "module/dbx/elem/script_filer.h"
#include "module/dbx/elem/value_recording_filer.h"
#include "orvcore/warn_on_new_version.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace testing_support;
using orv::ElementLog;

namespace {

using Any = boost::any;
using Arguments = std::deque<Any>;

// Three entries: without arguments, with one, and with one of each type that can be filed.
ElementLog threeEntries() {
    ElementLog log;
    log.append(orv::kLogInfo, 0, 0);
    log.append(orv::kLogFatal, 0xfedcba9876543210, Any(2.5), 0xffffffff);
    Arguments all = {Any(static_cast<unsigned char>(255)),
                     Any(static_cast<unsigned short>(65535)),
                     Any(4294967295u),
                     Any(std::uint64_t{0x0807060504030201}),
                     Any(static_cast<signed char>(-1)),
                     Any(static_cast<short>(-2)),
                     Any(-3),
                     Any(std::int64_t{-4}),
                     Any(true),
                     Any(0.5),
                     Any(std::wstring(L"text")),
                     Any(AcGePoint3d(1, 2, 3)),
                     Any(AcGeVector3d(4, 5, 6)),
                     Any(idOf(0x2a))};
    log.append(orv::kLogWarning, 77, all, 4);
    return log;
}

const Lines kThreeEntries = {
    "Int32 1", "UInt32 3",
    // Level, low half of the number, bits, arguments.
    "UInt32 1", "UInt32 0", "UInt32 0", "UInt32 0", "UInt32 5", "UInt32 1985229328", "UInt32 4294967295",
    "UInt32 1", "UInt32 21", "Double 2.5", "UInt32 2", "UInt32 77", "UInt32 4", "UInt32 14", "UInt32 0",
    "UInt8 255", "UInt32 1", "UInt16 65535", "UInt32 2", "UInt32 4294967295", "UInt32 3",
    "Bytes 01 02 03 04 05 06 07 08", "UInt32 10", "Int8 -1", "UInt32 11", "Int16 -2", "UInt32 12", "Int32 -3",
    "UInt32 13", "Bytes fc ff ff ff ff ff ff ff", "UInt32 20", "Bool true", "UInt32 21", "Double 0.5",
    "UInt32 100", "String text", "UInt32 200", "Point3d 1 2 3", "UInt32 201", "Vector3d 4 5 6", "UInt32 202",
    "SoftPointerId 2a", "Int32 1810278167"};

Acad::ErrorStatus readLog(const Lines& lines, ElementLog& log) {
    ScriptFiler filer(lines);
    return dwgInLog(filer, log);
}

const orv::ElementLog::Entry& entryAt(const ElementLog& log, std::size_t index) {
    return *(log.begin() + static_cast<std::ptrdiff_t>(index));
}

} // namespace

TEST(ElementLogFiling, AnEmptyLogIsThreeCallsBothWays) {
    const Lines empty = {"Int32 1", "UInt32 0", "Int32 1810278167"};
    ScriptFiler out;
    EXPECT_EQ(dwgOutLog(out, ElementLog()), Acad::eOk);
    EXPECT_EQ(out.lines, empty);
    ElementLog log = threeEntries();
    ScriptFiler in(empty);
    EXPECT_EQ(dwgInLog(in, log), Acad::eOk);
    EXPECT_TRUE(in.isAtEnd());
    EXPECT_TRUE(log.empty());
}

TEST(ElementLogFiling, EntriesAreWrittenInTheirOrderWithTheirArguments) {
    ReportRecorder reports;
    ScriptFiler out;
    EXPECT_EQ(dwgOutLog(out, threeEntries()), Acad::eOk);
    EXPECT_EQ(out.lines, kThreeEntries);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(ElementLogFiling, EntriesAreReadInTheirOrderWithTheirArguments) {
    ReportRecorder reports;
    ElementLog log;
    log.append(orv::kLogError, 1, 1);
    ScriptFiler in(kThreeEntries);
    EXPECT_EQ(dwgInLog(in, log), Acad::eOk);
    EXPECT_TRUE(in.isAtEnd());
    ASSERT_EQ(log.size(), 3u);
    EXPECT_EQ(entryAt(log, 0).level, orv::kLogInfo);
    EXPECT_TRUE(entryAt(log, 0).arguments.empty());
    EXPECT_EQ(entryAt(log, 1).level, orv::kLogFatal);
    EXPECT_EQ(entryAt(log, 1).extra, 0xffffffffu);
    EXPECT_EQ(boost::any_cast<double>(entryAt(log, 1).arguments.at(0)), 2.5);
    EXPECT_EQ(entryAt(log, 2).msgId, 77u);
    EXPECT_EQ(entryAt(log, 2).extra, 4u);
    const Arguments& all = entryAt(log, 2).arguments;
    ASSERT_EQ(all.size(), 14u);
    EXPECT_EQ(boost::any_cast<std::uint64_t>(all[3]), 0x0807060504030201u);
    EXPECT_EQ(boost::any_cast<std::wstring>(all[10]), L"text");
    EXPECT_EQ(boost::any_cast<AcDbObjectId>(all[13]), idOf(0x2a));
    // All of the rest shows when it is written again.
    ScriptFiler out;
    EXPECT_EQ(dwgOutLog(out, log), Acad::eOk);
    EXPECT_EQ(out.lines, kThreeEntries);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(ElementLogFiling, AMessageNumberAbove32BitsLosesItsHighHalf) {
    ElementLog log;
    log.append(orv::kLogError, 0x123456789abcdef0, 0);
    EXPECT_TRUE(log.hasMsgId(0x123456789abcdef0));
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    EXPECT_EQ(dwgOutLog(out, log), Acad::eOk);
    ElementLog back;
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    EXPECT_EQ(dwgInLog(in, back), Acad::eOk);
    EXPECT_TRUE(back.hasMsgId(0x9abcdef0));
    EXPECT_FALSE(back.hasMsgId(0x123456789abcdef0));
}

TEST(ElementLogFiling, AnArgumentThatCannotBeFiledIsReportedAndTheRestGoesOn) {
    ElementLog log;
    log.append(orv::kLogError, 5, Arguments{Any(1), Any(std::string("narrow")), Any(2)}, 0);
    log.append(orv::kLogInfo, 6, 0);
    ReportRecorder reports;
    ScriptFiler out;
    EXPECT_EQ(dwgOutLog(out, log), Acad::eOk);
    EXPECT_EQ(out.lines, (Lines{"Int32 1", "UInt32 2", "UInt32 4", "UInt32 5", "UInt32 0", "UInt32 3",
                                "UInt32 12", "Int32 1", "UInt32 12", "Int32 2", "UInt32 1", "UInt32 6",
                                "UInt32 0", "UInt32 0", "Int32 1810278167"}));
    ASSERT_EQ(reports.size(), 2u);
    EXPECT_EQ(reports.at(0).condition, "it != m_out.end()");
    EXPECT_EQ(reports.at(1).condition, "es == Acad::eOk");
    EXPECT_EQ(reports.at(1).message, "no filer available!");
    EXPECT_EQ(reports.at(1).severity, orv::smartassert::Severity::kWarning);
}

TEST(ElementLogFiling, AnArgumentWhoseCallFailsIsReportedAndTheRestGoesOn) {
    ElementLog log;
    log.append(orv::kLogError, 5, Any(1), 0);
    ReportRecorder reports;
    ScriptFiler out;
    // The value of the argument, and that call alone.
    out.failAt = 7;
    out.failsOnce = true;
    EXPECT_EQ(dwgOutLog(out, log), Acad::eOk);
    EXPECT_EQ(out.lines.back(), "Int32 1810278167");
    EXPECT_EQ(reports.messages().back(), "no filer available!");
}

TEST(ElementLogFiling, EveryCallThatFailsEndsTheWriting) {
    ReportRecorder reports;
    for (int call = 0; call < static_cast<int>(kThreeEntries.size()); ++call) {
        ScriptFiler out;
        out.failAt = call;
        out.failure = Acad::eOutOfDisk;
        EXPECT_EQ(dwgOutLog(out, threeEntries()), Acad::eOutOfDisk) << call;
        EXPECT_EQ(out.lines, Lines(kThreeEntries.begin(), kThreeEntries.begin() + call));
    }
}

TEST(ElementLogFiling, EveryCallThatFailsEndsTheReading) {
    ReportRecorder reports;
    for (int call = 0; call < static_cast<int>(kThreeEntries.size()); ++call) {
        ElementLog log;
        ScriptFiler in(kThreeEntries);
        in.failAt = call;
        in.failure = Acad::eOutOfDisk;
        EXPECT_EQ(dwgInLog(in, log), Acad::eOutOfDisk) << call;
        EXPECT_LE(in.callCount, call + 2) << call;
    }
}

TEST(ElementLogFiling, ANewerBlockIsRefusedWithNothingReadBehindItsVersion) {
    ReportRecorder reports;
    int warned = 0;
    const ORV_NewVersionSink before = orv_setNewVersionSink([&](const ORV_NewVersionWarning&) { ++warned; });
    ElementLog log = threeEntries();
    ScriptFiler in({"Int32 2", "UInt32 0", "Int32 1810278167"});
    EXPECT_EQ(static_cast<int>(dwgInLog(in, log)), 301);
    orv_setNewVersionSink(before);
    EXPECT_EQ(in.callCount, 1);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(warned, 0);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(ElementLogFiling, AWrongEndIsReportedAndRefused) {
    ReportRecorder reports;
    ElementLog log;
    Lines lines = kThreeEntries;
    lines.back() = "Int32 -1";
    EXPECT_EQ(static_cast<int>(readLog(lines, log)), 301);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports.at(0).condition, "magic == kMagic");
    EXPECT_EQ(reports.at(0).message, "Filing error. Possible reason: data corruption.");
    EXPECT_EQ(reports.at(0).severity, orv::smartassert::Severity::kDebug);
    EXPECT_EQ(reports.at(0).values, (Values{{"magic", "-1"}, {"kMagic", "1810278167"}}));
    EXPECT_EQ(log.size(), 3u);
}

TEST(ElementLogFiling, AnArgumentOfAnUnknownTypeIsRefused) {
    ReportRecorder reports;
    ElementLog log;
    const Lines lines = {"Int32 1", "UInt32 1", "UInt32 1", "UInt32 5", "UInt32 0", "UInt32 1", "UInt32 99"};
    EXPECT_EQ(static_cast<int>(readLog(lines, log)), 301);
    EXPECT_EQ(reports.conditions().front(), "it != m_id2in.end()");
    EXPECT_TRUE(log.empty());
}

TEST(ElementLogFiling, CountsThatTheStreamDoesNotHoldEndWithTheStream) {
    ReportRecorder reports;
    ElementLog log;
    EXPECT_EQ(readLog({"Int32 1", "UInt32 4294967295"}, log), Acad::eEndOfObject);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(readLog({"Int32 1", "UInt32 1", "UInt32 1", "UInt32 5", "UInt32 0", "UInt32 4294967295"}, log),
              Acad::eEndOfObject);
    // Type id 0 is that of a byte, which is what a filer at its end seems to deliver.
    EXPECT_EQ(readLog({"Int32 1", "UInt32 1", "UInt32 1", "UInt32 5", "UInt32 0", "UInt32 4294967295",
                       "UInt32 0", "UInt8 1"},
                      log),
              Acad::eEndOfObject);
    EXPECT_TRUE(log.empty());
}
