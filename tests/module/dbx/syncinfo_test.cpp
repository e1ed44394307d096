#include "dbx/syncinfo.h"

#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>
#include <string>

using orv::SyncEntry;
using orv::SyncInfo;
using testing_support::ReportRecorder;

namespace {

struct Row {
    int kwh, from, to;
    unsigned int flags;
    // headersOnly, isNodMaster, syncFromSdbOnUpdate, isSystemDialogData, saveToNOD, saveToCDB, onExport
    const char* answers;
};

const Row kRows[] = {
    {10, 0, 0, 124, "nnyyyyy"},    {10, 1, 1, 124, "nnyyyyy"},
    {0, 96, 96, 124, "nnyyyyy"},   {0, 97, 97, 116, "nnynyyy"},
    {0, 98, 98, 116, "nnynyyy"},   {0, 99, 99, 124, "nnyyyyy"},
    {0, 100, 100, 116, "nnynyyy"}, {1, -1, -2, 116, "nnynyyy"},
    {2, -1, -2, 116, "nnynyyy"},   {4, -1, -2, 116, "nnynyyy"},
    {9, -1, -2, 116, "nnynyyy"},   {173, -1, -2, 116, "nnynyyy"},
    {12, -1, -2, 87, "yyynyny"},   {14, 1000000, INT_MAX, 86, "nyynyny"},
    {10, 100, 999, 26, "nynyynn"},
};

std::string answersOf(const SyncEntry* it) {
    std::string answers;
    for (const bool answer : {SyncInfo::headersOnly(it), SyncInfo::isNodMaster(it),
                              SyncInfo::syncFromSdbOnUpdate(it), SyncInfo::isSystemDialogData(it),
                              SyncInfo::saveToNOD(it), SyncInfo::saveToCDB(it), SyncInfo::onExport(it)})
        answers += answer ? 'y' : 'n';
    return answers;
}

bool hasFourBytes(const orv::Blob& header) { return header.size() == 4; }

} // namespace

TEST(SyncInfo, HasItsFifteenRows) {
    EXPECT_EQ(SyncInfo::count(), 15u);
    EXPECT_EQ(orv::synchroSize(), 15u);
    ASSERT_EQ(SyncInfo::end() - SyncInfo::begin(), 15);
    const SyncEntry* it = SyncInfo::begin();
    for (const Row& row : kRows) {
        EXPECT_EQ(it->kwh, row.kwh);
        EXPECT_EQ(it->kwlFrom, row.from);
        EXPECT_EQ(it->kwlTo, row.to);
        EXPECT_EQ(it->flags, row.flags);
        EXPECT_EQ(answersOf(it), row.answers) << it - SyncInfo::begin();
        EXPECT_TRUE(it->headerAnalyzer.empty());
        ++it;
    }
}

TEST(SyncInfo, At14IsTheLastRowAndAt15Throws) {
    EXPECT_EQ(&SyncInfo::at(14), SyncInfo::end() - 1);
    try {
        SyncInfo::at(15);
        FAIL();
    } catch (const std::out_of_range& e) {
        EXPECT_STREQ(e.what(), "SyncInfo::at(): index out of range");
    }
}

TEST(SyncInfo, CopyAllIsTrueForRows7To12Alone) {
    for (std::size_t i = 0; i < SyncInfo::count(); ++i)
        EXPECT_EQ(SyncInfo::copyAll(&SyncInfo::at(i)), i >= 7 && i <= 12) << i;
}

TEST(SyncInfo, ANullRowAnswersFalseAndReports) {
    ReportRecorder recorder;
    EXPECT_EQ(answersOf(nullptr), "nnnnnnn");
    EXPECT_FALSE(SyncInfo::copyAll(nullptr));
    EXPECT_TRUE(SyncInfo::analyzeHeader(nullptr).empty());
    EXPECT_EQ(recorder.conditions(), testing_support::Texts(9, "it"));
}

TEST(SyncInfo, Row12IsTheOnlyOneWithHeadersOnly) {
    for (std::size_t i = 0; i < SyncInfo::count(); ++i)
        EXPECT_EQ(SyncInfo::headersOnly(&SyncInfo::at(i)), i == 12) << i;
}

TEST(SyncInfo, Row14IsTheOnlyOneThatIsNotSyncedOnUpdate) {
    for (std::size_t i = 0; i < SyncInfo::count(); ++i)
        EXPECT_EQ(SyncInfo::syncFromSdbOnUpdate(&SyncInfo::at(i)), i != 14) << i;
}

TEST(SyncInfo, AnInstalledHeaderAnalyserIsHandedOutAsACopy) {
    SyncInfo::at(3).headerAnalyzer = &hasFourBytes;
    const auto analyser = SyncInfo::analyzeHeader(SyncInfo::begin() + 3);
    SyncInfo::at(3).headerAnalyzer.clear();
    ASSERT_FALSE(analyser.empty());
    EXPECT_TRUE(analyser(orv::Blob("abcd", 4)));
    EXPECT_FALSE(analyser(orv::Blob("abc", 3)));
    EXPECT_TRUE(SyncInfo::analyzeHeader(SyncInfo::begin() + 3).empty());
}
