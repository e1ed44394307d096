#include "dbx/cdb/use_pl_cdb.h"

#include "app/log.h"
#include "base/exceptions.h"
#include "support/map_cdb.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

namespace orv::cdb {

struct UsePlCdbAccess {
    static void fillPlain(UsePlCdb& project, const orv::path& path) {
        project.m_plain = UseCdb(path.full, kPlainCdb);
    }
};

} // namespace orv::cdb

using namespace orv::cdb;
using testing_support::MapCdb;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::Texts;

namespace {

// The manager's stores are closed before the drawing that they are open on goes.
struct Drawing : StoreDrawing {
    ~Drawing() { CdbManager::instance().closeAll(); }
};

std::vector<std::wstring> s_files;
boost::shared_ptr<ICdb> makeMapCdb() { return boost::make_shared<MapCdb>(); }
boost::shared_ptr<ICdb> makeNothing() { return boost::shared_ptr<ICdb>(); }

boost::shared_ptr<ICdb> (*s_makeFile)() = &makeMapCdb;

boost::shared_ptr<ICdb> makeFile(const std::wstring& name, CdbLockMode) {
    s_files.push_back(name);
    return s_makeFile();
}

class UsePlCdbTest : public testing::Test {
protected:
    UsePlCdbTest() {
        static const bool registered = [] {
            CdbManager::instance().regCreator(kFileCdb, &makeFile);
            return true;
        }();
        EXPECT_TRUE(registered);
        s_files.clear();
        s_makeFile = &makeMapCdb;
    }
    ~UsePlCdbTest() override { manager.closeAll(); }

    static orv::path project(const wchar_t* name) {
        return {std::wstring(L"/projects/") + name + L".cdb", L"", L"/projects/", name, L".cdb"};
    }
    // Takes the entry out if it has exactly that count.
    bool hasCount(const wchar_t* name, CdbType type, int count) {
        const boost::shared_ptr<ICdb> store = manager.open(name, type, kSharedLocking);
        // One short of the count, and of the one that the look added.
        for (int i = 0; i < count; ++i)
            manager.close(name, type);
        const bool there = manager.open(name, type, kSharedLocking) == store;
        manager.close(name, type);
        manager.close(name, type);
        const bool gone = manager.open(name, type, kSharedLocking) != store;
        return there && gone;
    }

    CdbManager& manager = CdbManager::instance();
};

} // namespace

TEST_F(UsePlCdbTest, NodTwiceOpensOnceAndItsCountStaysWithTheManager) {
    Drawing drawing;
    boost::shared_ptr<ICdb> store;
    {
        UsePlCdb project1(project(L"X"));
        ICdb* const opened = &project1.nod();
        EXPECT_EQ(&project1.nod(), opened);
        const UsePlCdb& asConst = project1;
        EXPECT_EQ(&asConst.nod(), opened);
        EXPECT_TRUE(opened->isOpen());
        store = manager.open(L"ASDWG", kNodCdb, kSharedLocking);
        EXPECT_EQ(store.get(), opened);
    }
    EXPECT_EQ(manager.open(L"ASDWG", kNodCdb, kSharedLocking), store);
    manager.close(L"ASDWG", kNodCdb);
    manager.close(L"ASDWG", kNodCdb);
    EXPECT_TRUE(hasCount(L"ASDWG", kNodCdb, 1));
}

TEST_F(UsePlCdbTest, AProjectCalledAsTheDrawingsStoreGivesItsCountBack) {
    Drawing drawing;
    boost::shared_ptr<ICdb> kept;
    {
        UsePlCdb project1(project(L"ASDWG"));
        project1.nod();
        kept = manager.open(L"ASDWG", kNodCdb, kSharedLocking);
    }
    manager.close(L"ASDWG", kNodCdb);
    EXPECT_NE(manager.open(L"ASDWG", kNodCdb, kSharedLocking), kept);
}

TEST_F(UsePlCdbTest, FileIsOpenedByTheWholePathAndGivenBack) {
    const orv::path path = project(L"X");
    {
        UsePlCdb project1(path);
        EXPECT_TRUE(s_files.empty());
        ICdb* const store = &project1.file();
        const UsePlCdb& asConst = project1;
        EXPECT_EQ(&asConst.file(), store);
        EXPECT_EQ(s_files, std::vector<std::wstring>{path.full});
    }
    manager.open(path.full, kFileCdb, kSharedLocking);
    EXPECT_EQ(s_files.size(), 2u) << "the manager had let go of it";
}

TEST_F(UsePlCdbTest, ADrawingWithoutTheStoreGivesOneThatIsNotOpen) {
    AcDbDatabase db(true);
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    ReportRecorder recorder;
    {
        UsePlCdb project1(project(L"X"));
        EXPECT_FALSE(project1.nod().isOpen());
    }
    EXPECT_EQ(recorder.messages(), (Texts{"CDB object has not been opened"}));
    manager.closeAll();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

TEST_F(UsePlCdbTest, ThrowsWhenThereIsNoStoreObject) {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    ReportRecorder recorder;
    UsePlCdb project1(project(L"X"));
    try {
        project1.nod();
        FAIL();
    } catch (const orv::IOErrorException& e) {
        EXPECT_STREQ(e.what(), "failed to open NOD cdb '/projects/X.cdb'.");
    }
    EXPECT_EQ(recorder.reports().back().condition, "m_nod.get()");
    EXPECT_EQ(recorder.reports().back().message, "no NOD CDB object available");
    s_makeFile = &makeNothing;
    try {
        project1.file();
        FAIL();
    } catch (const orv::IOErrorException& e) {
        EXPECT_STREQ(e.what(), "failed to open FILE cdb '/projects/X.cdb'.");
    }
    EXPECT_EQ(recorder.reports().back().condition, "m_file.get()");
    EXPECT_EQ(recorder.reports().back().message, "no FILE CDB object available");
}

// The count of "ASDWG" stays with the manager, and with it a view on a drawing that has ended.
TEST_F(UsePlCdbTest, InTheNextDrawingTheStoreOfTheEndedOneIsFoundClosedAndHarmsNothing) {
    const ICdb* first = nullptr;
    {
        StoreDrawing ended;
        UsePlCdb before(project(L"X"));
        first = &before.nod();
        EXPECT_EQ(before.nod().write(1, 1, "a", 1, kFirstRecord), CD_ERR_NONE);
    }
    Drawing next;
    ReportRecorder recorder;
    {
        UsePlCdb after(project(L"X"));
        ICdb& store = after.nod();
        EXPECT_EQ(&store, first);
        EXPECT_FALSE(store.isOpen());
        EXPECT_FALSE(store.exists(1, 1));
        EXPECT_EQ(store.write(1, 1, "b", 1, kFirstRecord), CD_ERR_NOTFOUND);
    }
    EXPECT_TRUE(testing_support::namesOf(next.base).empty());
    manager.closeAll();
    recorder.clear();
    UsePlCdb again(project(L"X"));
    EXPECT_TRUE(again.nod().isOpen());
    EXPECT_EQ(again.nod().write(1, 1, "b", 1, kFirstRecord), CD_ERR_NONE);
    EXPECT_EQ(recorder.size(), 0u);
}

namespace {

Texts s_ends;

// Notes its end.
struct EndingCdb : MapCdb {
    explicit EndingCdb(const char* what) : name(what) {}
    ~EndingCdb() override { s_ends.push_back(name); }
    std::string name;
};

struct NodEnds : orv::ILogListener {
    void onLog(const std::string&, const std::string&, orv::LogLevel, const std::string&) override {
        s_ends.push_back("nod");
    }
};

} // namespace

TEST_F(UsePlCdbTest, ReleasesThePlainStoreThenTheDrawingsThenTheFile) {
    Drawing drawing;
    manager.regCreator(kPlainCdb, [](const std::wstring&, CdbLockMode) {
        return boost::shared_ptr<ICdb>(boost::make_shared<EndingCdb>("plain"));
    });
    s_makeFile = [] { return boost::shared_ptr<ICdb>(boost::make_shared<EndingCdb>("file")); };
    orv::addLogListener("cdb.nod", boost::make_shared<NodEnds>());
    s_ends.clear();
    const orv::path path = project(L"ASDWG"); // so that the drawing's store goes too
    {
        UsePlCdb project1(path);
        project1.file();
        project1.nod();
        UsePlCdbAccess::fillPlain(project1, path);
        EXPECT_TRUE(s_ends.empty());
    }
    orv::clearLogs();
    EXPECT_EQ(s_ends, (Texts{"plain", "nod", "file"}));
}
