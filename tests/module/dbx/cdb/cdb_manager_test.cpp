#include "dbx/cdb/cdb_manager.h"

#include "app/log.h"
#include "dbx/cdb/nod_cdb.h"
#include "dbx/cdb/use_cdb.h"
#include "support/map_cdb.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

using namespace orv::cdb;
using orv::smartassert::Severity;
using testing_support::MapCdb;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::Texts;
using testing_support::Values;

namespace {

// The manager's stores are closed before the drawing that they are open on goes.
struct Drawing : StoreDrawing {
    ~Drawing() { CdbManager::instance().closeAll(); }
};

// Creators stay for the life of the process, so each test that brings one has a kind of its own.
constexpr auto kCounted = static_cast<CdbType>(101);
constexpr auto kFailing = static_cast<CdbType>(102);
constexpr auto kTwice = static_cast<CdbType>(103);
constexpr auto kEmptyFunction = static_cast<CdbType>(105);
constexpr auto kNobody = static_cast<CdbType>(104);
constexpr auto kOpenedByAListener = static_cast<CdbType>(106);

class CdbManagerTest : public testing::Test {
protected:
    ~CdbManagerTest() override { manager.closeAll(); }
    CdbManager& manager = CdbManager::instance();
};

int s_made = 0;

boost::shared_ptr<ICdb> makeMapCdb(const std::wstring&, CdbLockMode) {
    ++s_made;
    return boost::make_shared<MapCdb>();
}

} // namespace

TEST_F(CdbManagerTest, ASecondCreatorIsReportedAndTheFirstStays) {
    ReportRecorder recorder;
    manager.regCreator(kTwice, &makeMapCdb);
    EXPECT_EQ(recorder.size(), 0u);
    manager.regCreator(kTwice, [](const std::wstring&, CdbLockMode) { return boost::shared_ptr<ICdb>(); });
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "it == m_creators.end()");
    EXPECT_EQ(recorder.at(0).values, (Values{{"type", "103"}}));
    EXPECT_EQ(recorder.at(0).message, "cdb creator already registered");
    EXPECT_NE(manager.createOnly(L"x", kTwice, kSharedLocking), nullptr);
}

TEST_F(CdbManagerTest, OpenOfAKindWithoutCreatorReportsTwiceAndIsEmpty) {
    ReportRecorder recorder;
    EXPECT_EQ(manager.open(L"name", kNobody, kSharedLocking), nullptr);
    EXPECT_EQ(recorder.conditions(), (Texts{"it != m_creators.end()", "createCdbFn"}));
    EXPECT_EQ(
        recorder.messages(),
        (Texts{"cdb creator not found", "no function available for creating CDB object of requested type."}));
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
    EXPECT_EQ(recorder.at(1).severity, Severity::kError);
    EXPECT_EQ(recorder.at(1).values, (Values{{"type", "104"}, {"name", "name"}}));
    recorder.clear();
    EXPECT_EQ(manager.createOnly(L"name", kNobody, kSharedLocking), nullptr);
    EXPECT_EQ(recorder.size(), 2u);
}

TEST_F(CdbManagerTest, AnEmptyFunctionAsCreatorIsReportedAndGivesNothing) {
    manager.regCreator(kEmptyFunction, CdbManager::Creator());
    ReportRecorder recorder;
    EXPECT_EQ(manager.open(L"name", kEmptyFunction, kSharedLocking), nullptr);
    ASSERT_EQ(recorder.conditions(), Texts{"createCdbFn"});
    EXPECT_EQ(recorder.at(0).message, "no function available for creating CDB object of requested type.");
    recorder.clear();
    EXPECT_EQ(manager.createOnly(L"name", kEmptyFunction, kSharedLocking), nullptr);
    EXPECT_EQ(recorder.conditions(), Texts{"createCdbFn"});
}

TEST_F(CdbManagerTest, AGuardOfSuchAKindReportsWhenItIsUsed) {
    ReportRecorder recorder;
    UseCdb guard(L"name", kNobody);
    const UseCdb& constGuard = guard;
    recorder.clear();
    EXPECT_EQ(guard.operator->(), nullptr);
    EXPECT_EQ(constGuard.operator->(), nullptr);
    EXPECT_EQ(recorder.conditions(), (Texts{"m_cdb.get()", "m_cdb.get()"}));
    EXPECT_EQ(recorder.at(0).message, "no CDB object available");
}

TEST_F(CdbManagerTest, TwoOpensNeedTwoClosesAndAHeldStoreLivesOn) {
    manager.regCreator(kCounted, &makeMapCdb);
    s_made = 0;
    const boost::shared_ptr<ICdb> first = manager.open(L"a", kCounted, kSharedLocking);
    EXPECT_EQ(manager.open(L"a", kCounted, static_cast<CdbLockMode>(7)), first);
    EXPECT_NE(manager.open(L"b", kCounted, kSharedLocking), first);
    EXPECT_EQ(s_made, 2);
    manager.close(L"a", kCounted);
    EXPECT_EQ(manager.open(L"a", kCounted, kSharedLocking), first);
    EXPECT_EQ(s_made, 2);
    manager.close(L"a", kCounted);
    manager.close(L"a", kCounted);
    EXPECT_TRUE(first->isOpen());
    EXPECT_NE(manager.open(L"a", kCounted, kSharedLocking), first);
    EXPECT_EQ(s_made, 3);
}

TEST_F(CdbManagerTest, CloseOfAPairThatIsNotRegisteredDoesNothing) {
    ReportRecorder recorder;
    manager.close(L"never", kNodCdb);
    manager.close(L"never", kNobody);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(CdbManagerTest, CloseAllForgetsStoresAndKeepsCreators) {
    Drawing drawing;
    const boost::shared_ptr<ICdb> first = manager.open(L"ASDWG", kNodCdb, kSharedLocking);
    manager.open(L"ASDWG", kNodCdb, kSharedLocking);
    manager.closeAll();
    const boost::shared_ptr<ICdb> second = manager.open(L"ASDWG", kNodCdb, kSharedLocking);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second, first);
}

TEST_F(CdbManagerTest, ACreatorThatMakesNothingIsReportedAndNothingIsRegistered) {
    s_made = 0;
    manager.regCreator(kFailing, [](const std::wstring&, CdbLockMode) {
        ++s_made;
        return boost::shared_ptr<ICdb>();
    });
    ReportRecorder recorder;
    EXPECT_EQ(manager.open(L"a", kFailing, kSharedLocking), nullptr);
    ASSERT_EQ(recorder.conditions(), (Texts{"cdb.get()"}));
    EXPECT_EQ(recorder.at(0).message, "creation of CDB object failed");
    EXPECT_EQ(recorder.at(0).severity, Severity::kWarning);
    EXPECT_EQ(manager.open(L"a", kFailing, kSharedLocking), nullptr);
    EXPECT_EQ(s_made, 2);
    recorder.clear();
    EXPECT_EQ(manager.createOnly(L"a", kFailing, kSharedLocking), nullptr);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(CdbManagerTest, AnUnknownStoreOfADrawingIsAliveUnopenedAndRegistered) {
    Drawing drawing;
    ReportRecorder recorder;
    const boost::shared_ptr<ICdb> store = manager.open(L"UNKNOWN", kNodCdb, kSharedLocking);
    ASSERT_NE(store, nullptr);
    EXPECT_FALSE(store->isOpen());
    EXPECT_EQ(recorder.conditions(), (Texts{"cdb->isOpen()"}));
    EXPECT_EQ(recorder.at(0).message, "CDB object has not been opened");
    EXPECT_EQ(recorder.at(0).severity, Severity::kWarning);
    recorder.clear();
    EXPECT_EQ(manager.open(L"UNKNOWN", kNodCdb, kSharedLocking), store);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(CdbManagerTest, WithoutADrawingTheCreatorReportsAndGivesNothing) {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    ReportRecorder recorder;
    EXPECT_EQ(manager.open(L"ASDWG", kNodCdb, kSharedLocking), nullptr);
    EXPECT_EQ(recorder.conditions(),
              (Texts{"m_db", "m_db", "err == CD_ERR_NOTFOUND || err == CD_ERR_NONE", "cdb.get()"}));
    EXPECT_EQ(recorder.at(2).values, (Values{{"err", "99"}}));
}

TEST_F(CdbManagerTest, CreateOnlyGivesAStoreThatTheManagerDoesNotKnow) {
    Drawing drawing;
    const boost::shared_ptr<ICdb> own = manager.createOnly(L"ASDWG", kNodCdb, kSharedLocking);
    ASSERT_NE(own, nullptr);
    EXPECT_TRUE(own->isOpen());
    EXPECT_NE(manager.open(L"ASDWG", kNodCdb, kSharedLocking), own);
}

TEST_F(CdbManagerTest, AGuardLeavesItsCountBehind) {
    Drawing drawing;
    boost::shared_ptr<ICdb> store;
    {
        UseCdb guard(L"ASDWG", kNodCdb);
        EXPECT_TRUE(guard->isOpen());
        store = manager.open(L"ASDWG", kNodCdb, kSharedLocking);
        EXPECT_EQ(guard.operator->(), store.get());
    }
    manager.close(L"ASDWG", kNodCdb);
    EXPECT_EQ(manager.open(L"ASDWG", kNodCdb, kSharedLocking), store) << "the guard's count is left";
}

TEST_F(CdbManagerTest, AStoreThatAGuardHoldsStaysAliveAndOpenAfterTheLastClose) {
    Drawing drawing;
    UseCdb guard(L"ASDWG", kNodCdb);
    EXPECT_EQ(guard->write(1, 2, "abc", 3, kFirstRecord), CD_ERR_NONE);
    ICdb* const held = guard.operator->();
    manager.close(L"ASDWG", kNodCdb);
    const boost::shared_ptr<ICdb> next = manager.open(L"ASDWG", kNodCdb, kSharedLocking);
    EXPECT_NE(next.get(), held) << "the manager has let go of it";
    EXPECT_TRUE(guard->isOpen());
    char buffer[4] = {};
    std::size_t len = 3;
    EXPECT_EQ(guard->read(1, 2, buffer, len, kFirstRecord), CD_ERR_NONE);
    EXPECT_STREQ(buffer, "abc");
}

TEST_F(CdbManagerTest, AnUnopenedStoreMayOutliveItsDrawing) {
    boost::weak_ptr<ICdb> store;
    {
        StoreDrawing drawing;
        store = manager.open(L"UNKNOWN", kNodCdb, kSharedLocking);
        ASSERT_FALSE(store.expired());
    }
    EXPECT_FALSE(store.lock()->isOpen());
    manager.closeAll();
    EXPECT_TRUE(store.expired());
}

namespace {

// Calls the manager at the end of each store in a drawing, and keeps what it gets.
struct CallingListener : orv::ILogListener {
    void onLog(const std::string&, const std::string&, orv::LogLevel, const std::string&) override {
        CdbManager& manager = CdbManager::instance();
        manager.close(L"ASDWG", kNodCdb);
        manager.close(L"TWO", kNodCdb);
        stores.push_back(manager.open(L"own", kOpenedByAListener, kSharedLocking));
    }
    std::vector<boost::shared_ptr<ICdb>> stores;
};

class CdbManagerHeard : public CdbManagerTest {
protected:
    CdbManagerHeard() {
        static const bool registered = [] {
            CdbManager::instance().regCreator(kOpenedByAListener, &makeMapCdb);
            return true;
        }();
        EXPECT_TRUE(registered);
        testing_support::subDictionary(testing_support::subDictionary(drawing.kelmoran, L"TWO"), L"CDBASE");
        manager.open(L"ASDWG", kNodCdb, kSharedLocking);
        manager.open(L"TWO", kNodCdb, kSharedLocking);
        orv::addLogListener("cdb.nod", listener);
    }
    ~CdbManagerHeard() override { orv::clearLogs(); }

    Drawing drawing;
    boost::shared_ptr<CallingListener> listener = boost::make_shared<CallingListener>();
};

} // namespace

TEST_F(CdbManagerHeard, WhoHearsOfAStoresEndMayCallTheManagerDuringCloseAll) {
    manager.closeAll();
    ASSERT_EQ(listener->stores.size(), 2u) << "one for each store";
    ASSERT_NE(listener->stores[0], nullptr);
    EXPECT_EQ(listener->stores[1], listener->stores[0]);
    EXPECT_EQ(manager.open(L"own", kOpenedByAListener, kSharedLocking), listener->stores[0])
        << "what is opened meanwhile stays";
}

TEST_F(CdbManagerHeard, WhoHearsOfAStoresEndMayCallTheManagerDuringClose) {
    manager.close(L"ASDWG", kNodCdb); // its end takes TWO out, whose end is heard too
    ASSERT_EQ(listener->stores.size(), 2u);
    EXPECT_EQ(listener->stores[1], listener->stores[0]);
    EXPECT_EQ(manager.open(L"own", kOpenedByAListener, kSharedLocking), listener->stores[0]);
}
