#include "dbx/doc/system.h"

#include "support/report_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace orv;
using testing_support::ReportRecorder;
using testing_support::systemRecord;
using testing_support::SystemStore;

namespace {

// Calls all that looks at the record or writes into it.
void useEverything(System& system) {
    system.get_type();
    system.gravityDirection();
    system.gravityDirectionVector();
    system.get_igdiv();
    system.get_sys_maxkn();
    system.get_sys_anzkn();
    system.set_sys_maxkn(-1);
    system.set_sys_numkn(-1);
    AcGePoint3d min;
    AcGePoint3d max;
    system.getExtents(min, max);
    system.getExtentsWCS(min, max);
    system.setDefaultExtents();
    system.set_sys_box({-1, -1, -1}, {-1, -1, -1});
    AcGeMatrix3d matrix;
    system.getCoordinateSystem(matrix);
    system.scaleCdb2Wcs();
}

// A record in which no byte of a field is zero.
typeCDB_SYST fullRecord() {
    typeCDB_SYST syst = systemRecord(19, 2, 0.01F);
    syst.sys_numkn = 0x01020304;
    syst.sys_maxkn = 0x05060708;
    syst.igdiv = 0x090a0b0c;
    syst.igres = 35;
    std::fill(std::begin(syst.box_min), std::end(syst.box_min), -1.1F);
    std::fill(std::begin(syst.box_max), std::end(syst.box_max), 2.3F);
    std::fill(std::begin(syst.rest), std::end(syst.rest), static_cast<unsigned char>(0xa5));
    return syst;
}

// What a reader of a record of `size` bytes sees: zeros behind its end.
typeCDB_SYST seen(std::size_t size) {
    typeCDB_SYST syst{};
    const typeCDB_SYST full = fullRecord();
    std::memcpy(&syst, &full, std::min(size, sizeof full));
    return syst;
}

} // namespace

TEST(SystemDamage, ASystemRecordOfAnyLengthIsReadAsFarAsItGoes) {
    const std::string whole = SystemStore::bytesOf(fullRecord()) + std::string(48, 'z');
    for (std::size_t size = 1; size <= whole.size(); ++size) {
        ReportRecorder reports;
        SystemStore store;
        store.putBytes(10, 0, whole.substr(0, size));
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        const auto corrupt = reports.messages();
        EXPECT_EQ(std::count(corrupt.begin(), corrupt.end(), "10/0 system entry is corrupt."),
                  size > 96 ? 0 : 1);
        const typeCDB_SYST wanted = seen(size);
        EXPECT_EQ(system.get_sys_anzkn(), wanted.sys_numkn) << size;
        EXPECT_EQ(system.get_sys_maxkn(), wanted.sys_maxkn) << size;
        EXPECT_EQ(system.get_igdiv(), wanted.igdiv) << size;
        AcGePoint3d min;
        AcGePoint3d max;
        system.getExtents(min, max);
        EXPECT_EQ(min, AcGePoint3d(wanted.box_min[0], wanted.box_min[1], wanted.box_min[2])) << size;
        EXPECT_EQ(max, AcGePoint3d(wanted.box_max[0], wanted.box_max[1], wanted.box_max[2])) << size;
    }
}

TEST(SystemDamage, NothingIsWrittenBehindTheEndOfARecordAndItsLengthStays) {
    const std::string whole = SystemStore::bytesOf(fullRecord()) + std::string(48, 'z');
    const typeCDB_SYST full = fullRecord();
    for (std::size_t size = 1; size <= whole.size(); ++size) {
        ReportRecorder reports;
        SystemStore store;
        store.putBytes(10, 0, whole.substr(0, size));
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        useEverything(system);
        ASSERT_TRUE(system.updateTo(store));
        const std::string written = store.bytes(10, 0);
        ASSERT_EQ(written.size(), size);
        const auto after = store.taken<typeCDB_SYST>(10, 0);
        EXPECT_EQ(after.sys_numkn, size >= 12 ? -1 : seen(size).sys_numkn) << size;
        EXPECT_EQ(after.sys_maxkn, size >= 16 ? -1 : seen(size).sys_maxkn) << size;
        EXPECT_NE(after.box_max[2], full.box_max[2]) << "either set or not all there; " << size;
        if (size > 48) {
            EXPECT_EQ(written.substr(48), whole.substr(48, size - 48)) << size;
        }
    }
}

TEST(SystemDamage, ASystemInfoOfAnyLengthIsLaidOverTheDefaults) {
    const PersistentSystemInfo info{2, 16, 0.5};
    const std::string whole = SystemStore::bytesOf(info) + "behind";
    ReportRecorder reports;
    for (std::size_t size = 1; size <= 20; ++size) {
        SystemStore store(systemRecord(0, -3));
        store.putBytes(10, 102, whole.substr(0, size));
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        PersistentSystemInfo wanted{2, 13, 1.0};
        std::memcpy(&wanted, whole.data(), std::min(size, sizeof wanted));
        EXPECT_EQ(system.drawingUnit(), wanted.drawingUnit) << size;
        EXPECT_EQ(system.scaleWcs2Cdb(), wanted.drawing_unit_wcs2cdb) << size;
    }
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemDamage, ASettingsRecordOfAnyLengthIsLaidOverTheDefaults) {
    const SettingsRecord record{-2, 0x01020304, 3.5};
    const std::string whole = SystemStore::bytesOf(record) + "behind";
    ReportRecorder reports;
    for (std::size_t size = 1; size <= 20; ++size) {
        SystemStore store;
        store.putBytes(10, 101, whole.substr(0, size));
        System system;
        system.setPointSize(99.0);
        ASSERT_TRUE(system.updateSettingsFrom(store));
        SettingsRecord wanted;
        std::memcpy(&wanted, whole.data(), std::min(size, sizeof wanted));
        EXPECT_EQ(system.pointSize(), wanted.pointSize) << size;
        ASSERT_TRUE(system.updateSettingsTo(store));
        EXPECT_EQ(store.bytes(10, 101), SystemStore::bytesOf(wanted)) << size;
    }
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemDamage, RecordsWithoutBytesCountAsMissing) {
    ReportRecorder reports;
    SystemStore store;
    store.putBytes(10, 0, "");
    System system;
    EXPECT_FALSE(system.updateFrom(store));
    store.put(10, 0, systemRecord(0, -3, 0.01F));
    for (const int kwl : {100, 101, 102})
        store.putBytes(10, kwl, "");
    store.putBytes(0, 98, "");
    EXPECT_TRUE(system.updateFrom(store));
    EXPECT_EQ(system.drawingUnit(), 15) << "measured";
    system.setPointSize(3.0);
    EXPECT_TRUE(system.updateSettingsFrom(store));
    EXPECT_EQ(system.pointSize(), 0.01);
    EXPECT_TRUE(system.updateVisFrom(store));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemDamage, AFlippedBitOfASystemRecordEndsInASystem) {
    const std::string whole = SystemStore::bytesOf(fullRecord());
    for (std::size_t bit = 0; bit < 104 * 8; ++bit) {
        std::string damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        ReportRecorder reports;
        SystemStore store;
        store.putBytes(10, 0, damaged);
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        useEverything(system);
        EXPECT_TRUE(system.updateTo(store));
        EXPECT_EQ(store.bytes(10, 0).substr(104), damaged.substr(104));
    }
}
