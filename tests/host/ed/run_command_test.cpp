// Work that is done as a command of the editor.

#include "aced.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "embedded/host_start.h"
#include "embedded/session.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

class CommandRecorder : public AcEditorReactor {
public:
    CommandRecorder() { acedEditor->addReactor(this); }
    ~CommandRecorder() override { acedEditor->removeReactor(this); }
    void commandWillStart(const ACHAR* name) override { events.push_back(std::wstring(L"start ") + name); }
    void commandEnded(const ACHAR* name) override { events.push_back(std::wstring(L"end ") + name); }
    void commandFailed(const ACHAR* name) override { events.push_back(std::wstring(L"fail ") + name); }

    std::vector<std::wstring> events;
};

class RunCommand : public ::testing::Test {
protected:
    void SetUp() override {
        embedded::startHost();
        database = embedded::newDocument();
    }
    void TearDown() override { embedded::closeDocument(database); }

    AcDbObjectId addPoint() const {
        AcDbBlockTable* blocks = nullptr;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(database->getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
        EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
        auto* const point = new AcDbPoint(AcGePoint3d(1.0, 2.0, 3.0));
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, point), Acad::eOk);
        point->close();
        space->close();
        blocks->close();
        return id;
    }

    AcDbDatabase* database = nullptr;
};

} // namespace

TEST_F(RunCommand, StartAndEndAreToldAroundTheWork) {
    CommandRecorder recorder;
    EXPECT_TRUE(embedded::runCommand(*database, L"MOVE", [&] {
        recorder.events.emplace_back(L"work");
        return true;
    }));
    EXPECT_EQ(recorder.events, (std::vector<std::wstring>{L"start MOVE", L"work", L"end MOVE"}));
}

TEST_F(RunCommand, WorkThatIsNotDoneOrThrowsIsAFailure) {
    CommandRecorder recorder;
    EXPECT_FALSE(embedded::runCommand(*database, L"A", [] { return false; }));
    EXPECT_THROW(embedded::runCommand(*database, L"B", []() -> bool { throw std::runtime_error("no"); }),
                 std::runtime_error);
    EXPECT_EQ(recorder.events, (std::vector<std::wstring>{L"start A", L"fail A", L"start B", L"fail B"}));
}

TEST_F(RunCommand, OneUndoTakesOneCommandBack) {
    AcDbObjectId first, second, third;
    embedded::runCommand(*database, L"POINT", [&] {
        first = addPoint();
        second = addPoint();
        return true;
    });
    embedded::runCommand(*database, L"POINT", [&] {
        third = addPoint();
        return true;
    });
    EXPECT_TRUE(embedded::undo(*database));
    EXPECT_TRUE(third.isErased());
    EXPECT_FALSE(first.isErased() || second.isErased());
    EXPECT_TRUE(embedded::undo(*database));
    EXPECT_TRUE(first.isErased() && second.isErased());
    EXPECT_TRUE(embedded::redo(*database));
    EXPECT_FALSE(first.isErased() || second.isErased());
    EXPECT_TRUE(third.isErased());
}
