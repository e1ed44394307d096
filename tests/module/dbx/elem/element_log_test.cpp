#include "dbx/elem/element_log.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <deque>
#include <string>
#include <vector>

using orv::ElementLog;

namespace {

using Any = boost::any;
using Arguments = std::deque<Any>;
using Ids = std::vector<std::uint64_t>;

Ids idsOf(const ElementLog& log) {
    Ids ids;
    for (const ElementLog::Entry& entry : log)
        ids.push_back(entry.msgId);
    return ids;
}

// Four entries with the numbers 10 to 13 and the bits 1, 2, 3 and 7.
ElementLog fourEntries() {
    ElementLog log;
    log.append(orv::kLogError, 10, 1);
    log.append(orv::kLogError, 11, 2);
    log.append(orv::kLogError, 12, 3);
    log.append(orv::kLogError, 13, 7);
    return log;
}

} // namespace

TEST(ElementLog, IsEmptyAtFirst) {
    const ElementLog log;
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(log.size(), 0u);
    EXPECT_TRUE(log.begin() == log.end());
    EXPECT_EQ(log.count(0), 0u);
    EXPECT_FALSE(log.hasMsgId(0));
}

TEST(ElementLog, AppendKeepsTheOrderAndAllOfAnEntry) {
    ElementLog log;
    log.append(orv::kLogWarning, 5, 6);
    log.append(orv::kLogFatal, 4, Any(std::wstring(L"x")), 7);
    log.append(orv::kLogInfo, 3, Arguments{Any(1), Any(2.5)}, 8);
    log.append(ElementLog::Entry{orv::kLogDebug, 2, {Any(true)}, 9});
    ASSERT_EQ(idsOf(log), (Ids{5, 4, 3, 2}));
    EXPECT_FALSE(log.empty());
    EXPECT_EQ(log.size(), 4u);
    auto entry = log.begin();
    EXPECT_EQ(entry->level, orv::kLogWarning);
    EXPECT_TRUE(entry->arguments.empty());
    EXPECT_EQ(entry->extra, 6u);
    ++entry;
    EXPECT_EQ(entry->level, orv::kLogFatal);
    ASSERT_EQ(entry->arguments.size(), 1u);
    EXPECT_EQ(boost::any_cast<std::wstring>(entry->arguments[0]), L"x");
    EXPECT_EQ(entry->extra, 7u);
    ++entry;
    ASSERT_EQ(entry->arguments.size(), 2u);
    EXPECT_EQ(boost::any_cast<int>(entry->arguments[0]), 1);
    EXPECT_EQ(boost::any_cast<double>(entry->arguments[1]), 2.5);
    ++entry;
    EXPECT_EQ(entry->level, orv::kLogDebug);
    EXPECT_TRUE(boost::any_cast<bool>(entry->arguments.at(0)));
    EXPECT_EQ(entry->extra, 9u);
}

TEST(ElementLog, AppendWithNoArgumentsInADequeIsTheSameAsWithout) {
    ElementLog log;
    log.append(orv::kLogError, 1, 2);
    log.append(orv::kLogError, 1, Arguments(), 2);
    const ElementLog::Entry& first = *log.begin();
    const ElementLog::Entry& second = *(log.begin() + 1);
    EXPECT_EQ(first.level, second.level);
    EXPECT_EQ(first.msgId, second.msgId);
    EXPECT_EQ(first.extra, second.extra);
    EXPECT_TRUE(second.arguments.empty());
}

TEST(ElementLog, AnEmptyArgumentIsAnArgument) {
    ElementLog log;
    log.append(orv::kLogError, 1, Any(), 2);
    ASSERT_EQ(log.begin()->arguments.size(), 1u);
    EXPECT_TRUE(log.begin()->arguments[0].empty());
}

TEST(ElementLog, AppendOfAnOwnEntryCopiesIt) {
    ElementLog log = fourEntries();
    for (int i = 0; i < 500; ++i)
        log.append(*log.begin());
    EXPECT_EQ(log.size(), 504u);
    EXPECT_EQ((log.end() - 1)->msgId, 10u);
}

TEST(ElementLog, Count3OfTheBits1And2And3And7Is2) {
    EXPECT_EQ(fourEntries().count(3), 2u);
    EXPECT_EQ(fourEntries().count(1), 3u);
    EXPECT_EQ(fourEntries().count(8), 0u);
}

TEST(ElementLog, AMaskOf0SelectsEveryEntry) {
    ElementLog log = fourEntries();
    log.append(orv::kLogError, 14, 0);
    EXPECT_EQ(log.count(0), 5u);
    log.clear(0);
    EXPECT_TRUE(log.empty());
}

TEST(ElementLog, ClearOfAMaskKeepsTheOthersInOrder) {
    ElementLog log = fourEntries();
    log.clear(3);
    EXPECT_EQ(idsOf(log), (Ids{10, 11}));
    log.clear(8);
    EXPECT_EQ(idsOf(log), (Ids{10, 11}));
}

TEST(ElementLog, ClearTakesAll) {
    ElementLog log = fourEntries();
    log.clear();
    EXPECT_TRUE(log.empty());
    log.clear();
    log.clear(1);
    EXPECT_TRUE(log.empty());
}

TEST(ElementLog, RemoveOfAnUnknownNumberChangesNothing) {
    ElementLog log = fourEntries();
    log.remove(99);
    EXPECT_EQ(idsOf(log), (Ids{10, 11, 12, 13}));
    ElementLog none;
    none.remove(1);
    EXPECT_TRUE(none.empty());
}

TEST(ElementLog, RemoveTakesBothEntriesOfANumber) {
    ElementLog log = fourEntries();
    log.append(orv::kLogInfo, 11, 0);
    log.append(orv::kLogInfo, 15, 0);
    EXPECT_TRUE(log.hasMsgId(11));
    log.remove(11);
    EXPECT_FALSE(log.hasMsgId(11));
    EXPECT_EQ(idsOf(log), (Ids{10, 12, 13, 15}));
}

TEST(ElementLog, ANumberAbove32BitsLivesWhole) {
    ElementLog log;
    const std::uint64_t high = 0x100000001;
    log.append(orv::kLogError, high, 0);
    EXPECT_TRUE(log.hasMsgId(high));
    EXPECT_FALSE(log.hasMsgId(1));
    EXPECT_EQ(log.begin()->msgId, high);
}

RC_GTEST_PROP(ElementLogProperty, SelectsAsAPlainListDoes, ()) {
    const auto entries = *rc::gen::container<std::vector<std::pair<std::uint64_t, unsigned int>>>(
        rc::gen::pair(rc::gen::inRange<std::uint64_t>(0, 5), rc::gen::inRange(0u, 8u)));
    const auto id = *rc::gen::inRange<std::uint64_t>(0, 5);
    const auto mask = *rc::gen::inRange(0u, 8u);
    ElementLog removed;
    Ids withoutId;
    Ids withoutMask;
    for (const auto& [msgId, extra] : entries) {
        removed.append(orv::kLogInfo, msgId, extra);
        if (msgId != id)
            withoutId.push_back(msgId);
        if ((extra & mask) != mask)
            withoutMask.push_back(msgId);
    }
    ElementLog cleared = removed;
    RC_ASSERT(cleared.count(mask) == entries.size() - withoutMask.size());
    RC_ASSERT(removed.hasMsgId(id) == (withoutId.size() != entries.size()));
    removed.remove(id);
    cleared.clear(mask);
    RC_ASSERT(idsOf(removed) == withoutId);
    RC_ASSERT(idsOf(cleared) == withoutMask);
}
