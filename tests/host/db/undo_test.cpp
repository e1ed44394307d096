#include "db_fixture.h"

#include <rapidcheck/gtest.h>

namespace {

using Undo = DbFixture;
using Content = std::vector<std::pair<std::wstring, std::wstring>>;

TEST_F(Undo, AStepIsTakenBackAndComesAgainWhole) {
    put(L"A", L"a");
    embedded::beginCommand(*m_database);
    const AcDbObjectId id = put(L"B", L"b");
    TestRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, id, AcDb::kForWrite), Acad::eOk);
    record->setText(L"c");
    record->close();
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_EQ(content(), (Content{{L"A", L"a"}}));
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_EQ(content(), (Content{{L"A", L"a"}, {L"B", L"c"}}));
    EXPECT_FALSE(embedded::redo(*m_database));
}

TEST_F(Undo, ARemovedEntryComesBackToItsPlace) {
    put(L"A", L"a");
    const AcDbObjectId id = put(L"B", L"b");
    put(L"C", L"c");
    embedded::beginCommand(*m_database);
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    dictionary->remove(id);
    dictionary->close();
    put(L"D", L"d");
    EXPECT_EQ(content(), (Content{{L"A", L"a"}, {L"C", L"c"}, {L"D", L"d"}}));
    embedded::undo(*m_database);
    EXPECT_EQ(content(), (Content{{L"A", L"a"}, {L"B", L"b"}, {L"C", L"c"}}));
    embedded::redo(*m_database);
    EXPECT_EQ(content(), (Content{{L"A", L"a"}, {L"C", L"c"}, {L"D", L"d"}}));
}

TEST_F(Undo, AChangeAfterAnUndoEndsTheRedo) {
    put(L"A", L"a");
    embedded::beginCommand(*m_database);
    put(L"B", L"b");
    embedded::undo(*m_database);
    put(L"C", L"c");
    EXPECT_FALSE(embedded::redo(*m_database));
    EXPECT_EQ(content(), (Content{{L"A", L"a"}, {L"C", L"c"}}));
}

TEST_F(Undo, WithRecordingOffNothingIsTakenBack) {
    m_database->disableUndoRecording(true);
    put(L"A", L"a");
    EXPECT_FALSE(embedded::undo(*m_database));
    EXPECT_EQ(content(), (Content{{L"A", L"a"}}));
}

// Random steps on a dictionary against a plain list of states.
RC_GTEST_FIXTURE_PROP(Undo, AnyStepsAreTakenBackOneByOne, ()) {
    if (!m_database)
        SetUp();
    std::vector<Content> states{content()};
    std::size_t now = 0;
    int number = 0; // every change is a change: no text comes twice
    const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 1000));
    for (int step : steps) {
        const std::wstring name = L"N" + std::to_wstring(step % 7);
        const int kind = step % 6;
        if (kind == 4) {
            RC_ASSERT(embedded::undo(*m_database) == (now > 0));
            now -= now > 0 ? 1 : 0;
        } else if (kind == 5) {
            RC_ASSERT(embedded::redo(*m_database) == (now + 1 < states.size()));
            now += now + 1 < states.size() ? 1 : 0;
        } else {
            const Content before = content();
            embedded::beginCommand(*m_database);
            AcDbDictionary* dictionary = open(AcDb::kForWrite);
            AcDbObjectId id;
            if (kind == 0 || kind == 1) {
                auto* record = new TestRecord(std::to_wstring(++number));
                RC_ASSERT(dictionary->setAt(name.c_str(), record, id) == Acad::eOk);
                record->close();
            } else if (kind == 2) {
                dictionary->remove(name.c_str(), id);
            } else if (dictionary->getAt(name.c_str(), id) == Acad::eOk) {
                TestRecord* record = nullptr;
                RC_ASSERT(acdbOpenObject(record, id, AcDb::kForWrite) == Acad::eOk);
                if (step % 4 == 0)
                    record->erase();
                else
                    record->setText(L"t" + std::to_wstring(++number));
                record->close();
            }
            dictionary->close();
            if (content() != before) {
                states.resize(now + 1);
                states.push_back(content());
                ++now;
            }
        }
        RC_ASSERT(content() == states[now]);
    }
}

} // namespace
