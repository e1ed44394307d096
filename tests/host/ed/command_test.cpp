#include "aced.h"
#include "dbdict.h"
#include "embedded/session.h"
#include "support/console_recorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Heard = std::vector<std::wstring>;

class CommandListener : public AcEditorReactor {
public:
    CommandListener() { acedEditor->addReactor(this); }
    ~CommandListener() override { acedEditor->removeReactor(this); }

    Heard heard;
    std::function<void()> atEnd;

    void commandWillStart(const ACHAR* command) override { hear(L"start ", command); }
    void commandCancelled(const ACHAR* command) override { hear(L"cancel ", command); }
    void commandFailed(const ACHAR* command) override { hear(L"fail ", command); }
    void commandEnded(const ACHAR* command) override {
        hear(L"end ", command);
        if (atEnd)
            atEnd();
    }

private:
    void hear(const wchar_t* what, const ACHAR* command) { heard.push_back(std::wstring(what) + command); }
};

class Command : public testing::Test {
protected:
    Command() : m_database(std::make_unique<AcDbDatabase>(true)) { embedded::forgetHistory(*m_database); }

    AcDbObjectId put(const wchar_t* name) {
        AcDbDictionary* named = nullptr;
        EXPECT_EQ(m_database->getNamedObjectsDictionary(named, AcDb::kForWrite), Acad::eOk);
        auto* dictionary = new AcDbDictionary;
        AcDbObjectId id;
        EXPECT_EQ(named->setAt(name, dictionary, id), Acad::eOk);
        dictionary->close();
        named->close();
        return id;
    }

    std::unique_ptr<AcDbDatabase> m_database;
    CommandListener m_listener;
};

TEST_F(Command, UndoAndRedoAreCommandsThatFailWhereThereIsNothingToDo) {
    EXPECT_FALSE(embedded::undo(*m_database));
    embedded::runCommand(*m_database, L"MAKE", [&] { return put(L"A").isValid(); });
    m_listener.heard.erase(m_listener.heard.begin(), m_listener.heard.begin() + 4);
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_FALSE(embedded::redo(*m_database));
    EXPECT_EQ(m_listener.heard,
              (Heard{L"start U", L"end U", L"start REDO", L"end REDO", L"start REDO", L"fail REDO"}));
}

TEST_F(Command, WhatIsChangedAtItsEndIsUndoneWithIt) {
    AcDbObjectId first, second;
    m_listener.atEnd = [&] { second = put(L"B"); };
    embedded::runCommand(*m_database, L"MAKE", [&] { return (first = put(L"A")).isValid(); });
    m_listener.atEnd = nullptr;
    ASSERT_TRUE(second.isValid());
    EXPECT_TRUE(embedded::undo(*m_database));
    EXPECT_TRUE(first.isErased());
    EXPECT_TRUE(second.isErased());
    EXPECT_TRUE(embedded::redo(*m_database));
    EXPECT_FALSE(first.isErased());
    EXPECT_FALSE(second.isErased());
}

TEST_F(Command, WhoeverThrowsAtItsEndIsPrintedAndTheCommandIsDone) {
    const testing_support::ConsoleRecorder console;
    CommandListener second;
    m_listener.atEnd = [] { throw Acad::eInvalidInput; };
    EXPECT_TRUE(embedded::runCommand(*m_database, L"MOVE", [] { return true; }));
    EXPECT_EQ(second.heard, (Heard{L"start MOVE", L"end MOVE"}));
    EXPECT_EQ(console.text(), L"A reactor failed: eInvalidInput\n");
}

TEST_F(Command, ADatabaseEndsWhateverItsReactorsThrow) {
    class Bad : public AcEditorReactor {
    public:
        void databaseToBeDestroyed(AcDbDatabase*) override { throw std::runtime_error("stay"); }
    } bad;
    const testing_support::ConsoleRecorder console;
    acedEditor->addReactor(&bad);
    const AcDbObjectId id = put(L"A");
    m_database.reset();
    acedEditor->removeReactor(&bad);
    EXPECT_FALSE(id.isValid());
    EXPECT_EQ(console.text(), L"A reactor failed: stay\n");
}

} // namespace
