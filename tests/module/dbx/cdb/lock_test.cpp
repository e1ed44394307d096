#include "dbx/cdb/lock.h"

#include "base/exceptions.h"
#include "support/map_cdb.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

namespace orv::cdb {

struct LockAccess {
    static void add(Lock& lock, int kwh, int kwl) { lock.m_keys.insert({kwh, kwl}); }
    static void doLock(Lock& lock) { lock.doLock(); }
};

} // namespace orv::cdb

using orv::cdb::Lock;
using orv::cdb::LockAccess;
using testing_support::MapCdb;
using testing_support::ReportRecorder;
using testing_support::Texts;

TEST(Lock, AloneCallsNeitherLockNorUnlock) {
    MapCdb cdb;
    { Lock lock(cdb, 10, 0); }
    EXPECT_TRUE(cdb.log.empty());
}

TEST(Lock, TakesAndGivesBackInAscendingOrder) {
    MapCdb cdb;
    {
        Lock lock(cdb, 10, 0);
        LockAccess::add(lock, 10, 5);
        LockAccess::add(lock, 2, 9);
        LockAccess::add(lock, 10, 1);
        LockAccess::doLock(lock);
    }
    EXPECT_EQ(cdb.log,
              (Texts{"lock 2/9", "lock 10/1", "lock 10/5", "unlock 2/9", "unlock 10/1", "unlock 10/5"}));
}

TEST(Lock, ThrowsAtTheFirstRefusalWithTheKeyAndAFullStop) {
    MapCdb cdb;
    cdb.refusedLocks[{10, 5}] = true;
    ReportRecorder recorder;
    Lock lock(cdb, 0, 0);
    LockAccess::add(lock, 10, 4);
    LockAccess::add(lock, 10, 5);
    LockAccess::add(lock, 10, 6);
    try {
        LockAccess::doLock(lock);
        FAIL();
    } catch (const orv::Exception& e) {
        EXPECT_STREQ(e.what(), "cdb::Lock: failed to acquire lock for 10/5.");
    }
    EXPECT_EQ(cdb.log, (Texts{"lock 10/4", "lock 10/5"}));
    EXPECT_EQ(recorder.conditions(), (Texts{"err == CD_ERR_NONE"}));
}

TEST(Lock, GivingBackGoesOnBehindAFailure) {
    MapCdb cdb;
    ReportRecorder recorder;
    {
        Lock lock(cdb, 0, 0);
        LockAccess::add(lock, 1, 1);
        LockAccess::add(lock, 1, 2);
        LockAccess::doLock(lock);
        cdb.refusedLocks[{1, 1}] = true;
        cdb.log.clear();
    }
    EXPECT_EQ(cdb.log, (Texts{"unlock 1/1", "unlock 1/2"}));
    EXPECT_EQ(recorder.conditions(), (Texts{"err == CD_ERR_NONE"}));
}
