#include "dbx/doc/system.h"

#include "support/log_recorder.h"
#include "support/report_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <stdexcept>

using namespace orv;
using testing_support::LogRecorder;
using testing_support::ReportRecorder;
using testing_support::systemRecord;
using testing_support::SystemStore;
using testing_support::Texts;
using testing_support::Values;

namespace {

constexpr int kMinusOne = -1;

// The first `size` bytes of what lies in memory.
template <class Record>
std::string cut(const Record& record, std::size_t size) {
    return SystemStore::bytesOf(record).substr(0, size);
}

struct Derived {
    int unit;
    double scale;
};

Derived takenFrom(SystemStore& store) {
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    return {system.drawingUnit(), system.scaleWcs2Cdb()};
}

} // namespace

TEST(SystemUpdateFrom, AStoreWithoutARecordIsLoggedAndFalse) {
    LogRecorder log("sys");
    ReportRecorder reports;
    SystemStore store;
    store.put(10, 102, PersistentSystemInfo{2, 16, 0.001});
    System system;
    EXPECT_FALSE(system.updateFrom(store));
    EXPECT_EQ(log.messages(), (Texts{"3 no system settings 10/0 available!"}));
    EXPECT_EQ(store.log, (Texts{"read 10/0 first"}));
    EXPECT_EQ(system.drawingUnit(), 13);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemUpdateFrom, ReadsItsRecordsInOrderFromTheirBeginning) {
    SystemStore store(systemRecord(0, -3));
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    EXPECT_EQ(store.log, (Texts{"read 10/0 first", "read 10/102 first", "read 0/98 first"}));
}

TEST(SystemUpdateFrom, LogsWhereTheScaleIsFromAndTheProblemNumberAsOneMessage) {
    LogRecorder log("sys");
    SystemStore store(systemRecord(20, -3));
    System system;
    system.updateFrom(store);
    EXPECT_EQ(log.messages(), (Texts{"3 10/102: does not exist. updating from 10/0.iprob = 20"}));
    log.clear();
    store.put(10, 102, PersistentSystemInfo{2, 13, 1.0});
    system.updateFrom(store);
    EXPECT_EQ(log.messages(), (Texts{"3 10/102 exists.iprob = 20"}));
    log.clear();
    store.put(10, 102, PersistentSystemInfo{1, 13, 1.0});
    system.updateFrom(store);
    EXPECT_EQ(log.messages(), (Texts{"3 10/102 exists.10/102: upgrading from previous version.iprob = 20"}));
}

TEST(SystemUpdateFrom, AListenerThatThrowsHearsOfItWhenAllIsDone) {
    struct Throwing : ILogListener {
        void onLog(const std::string&, const std::string&, LogLevel, const std::string&) override {
            throw std::runtime_error("listener");
        }
    };
    addLogListener("sys", boost::make_shared<Throwing>());
    SystemStore store(systemRecord(0, -3, 0.01F));
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    clearLogs();
    EXPECT_EQ(system.drawingUnit(), 15);
    EXPECT_DOUBLE_EQ(system.converter().toCdb(100.0), 100.0 * static_cast<double>(0.01F));
}

TEST(SystemUpdateFrom, WhatFailsBehindTheRecordLeavesTheDefaultUnit) {
    struct Failing : SystemStore {
        using SystemStore::SystemStore;
        cdb::cd_error_t read(int kwh, int kwl, void* data, std::size_t& len,
                             cdb::CdbReadWriteMode mode) const override {
            if (fails && kwh == 10 && kwl == 102)
                throw std::runtime_error("store");
            return SystemStore::read(kwh, kwl, data, len, mode);
        }
        bool fails = false;
    };
    LogRecorder log("sys");
    Failing store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{2, 16, 0.001});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    ASSERT_EQ(system.drawingUnit(), 16);
    log.clear();
    store.fails = true;
    EXPECT_THROW(system.updateFrom(store), std::runtime_error);
    EXPECT_EQ(system.drawingUnit(), 13);
    EXPECT_EQ(system.scaleWcs2Cdb(), 1.0);
    EXPECT_EQ(log.messages(), Texts()) << "nothing was told before";
}

TEST(SystemUpdateFrom, AStoreWithTheSystemRecordAloneIsMeasured) {
    const struct {
        float length;
        int unit;
    } cases[] = {{1.0F, 13}, {0.01F, 15}, {0.001F, 16}, {2.0F, 13}};
    for (const auto& test : cases) {
        ReportRecorder reports;
        SystemStore store(systemRecord(0, -3, test.length));
        const Derived derived = takenFrom(store);
        EXPECT_EQ(derived.unit, test.unit);
        EXPECT_EQ(derived.scale, static_cast<double>(test.length)) << "as it was measured";
        EXPECT_EQ(reports.size(), 0u);
    }
}

TEST(SystemUpdateFrom, ASystemInfoOfVersion1GetsItsScaleByTheUnit) {
    const struct {
        int unit;
        double scale;
    } cases[] = {{13, 1.0}, {15, 0.01}, {16, 0.001}};
    for (const auto& test : cases)
        for (const int version : {1, 0, kMinusOne}) {
            ReportRecorder reports;
            SystemStore store(systemRecord(0, -3));
            store.put(10, 102, PersistentSystemInfo{version, test.unit, 77.0});
            System system;
            ASSERT_TRUE(system.updateFrom(store));
            EXPECT_EQ(system.drawingUnit(), test.unit);
            EXPECT_EQ(system.scaleWcs2Cdb(), test.scale);
            EXPECT_EQ(reports.size(), 0u);
            ASSERT_TRUE(system.updateTo(store));
            EXPECT_EQ(store.taken<PersistentSystemInfo>(10, 102).version, 2);
        }
}

TEST(SystemUpdateFrom, ASystemInfoOfVersion1WithUnit15ComesBackAsVersion2WithScale0_01) {
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{1, 15, 1.0});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    ASSERT_TRUE(system.updateTo(store));
    const auto info = store.taken<PersistentSystemInfo>(10, 102);
    EXPECT_EQ(info.version, 2);
    EXPECT_EQ(info.drawingUnit, 15);
    EXPECT_EQ(info.drawing_unit_wcs2cdb, 0.01);
}

TEST(SystemUpdateFrom, AnOldSystemInfoWithAnUnknownUnitIsReportedAndKeepsItsScale) {
    ReportRecorder reports;
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{1, 14, 0.3});
    const Derived derived = takenFrom(store);
    EXPECT_EQ(derived.unit, 14);
    EXPECT_EQ(derived.scale, 0.3);
    EXPECT_EQ(reports.conditions(), (Texts{"0"}));
    EXPECT_EQ(reports.at(0).values, Values());
    EXPECT_EQ(reports.at(0).message, "");
}

TEST(SystemUpdateFrom, ACurrentSystemInfoIsTakenAsItStandsAlsoAgainstTheAxes) {
    ReportRecorder reports;
    SystemStore store(systemRecord(0, -3, 0.01F));
    store.put(10, 102, PersistentSystemInfo{2, 16, 0.5});
    Derived derived = takenFrom(store);
    EXPECT_EQ(derived.unit, 16);
    EXPECT_EQ(derived.scale, 0.5);
    store.put(10, 102, PersistentSystemInfo{2, 99, 0.5});
    derived = takenFrom(store);
    EXPECT_EQ(derived.unit, 99);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemUpdateFrom, ASystemInfoOfANewerVersionIsWrittenBackAsVersion2) {
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{3, 16, 0.5});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    ASSERT_TRUE(system.updateTo(store));
    const auto info = store.taken<PersistentSystemInfo>(10, 102);
    EXPECT_EQ(info.version, 2);
    EXPECT_EQ(info.drawing_unit_wcs2cdb, 0.5);
}

TEST(SystemUpdateFrom, AShortSystemInfoKeepsTheDefaultsInItsMissingTail) {
    SystemStore store(systemRecord(0, -3, 0.001F));
    const PersistentSystemInfo info{2, 15, 0.25};
    store.putBytes(10, 102, cut(info, 4));
    Derived derived = takenFrom(store);
    EXPECT_EQ(derived.unit, 13);
    EXPECT_EQ(derived.scale, 1.0);
    store.putBytes(10, 102, cut(info, 8));
    derived = takenFrom(store);
    EXPECT_EQ(derived.unit, 15);
    EXPECT_EQ(derived.scale, 1.0);
    store.putBytes(10, 102, SystemStore::bytesOf(info) + "more");
    derived = takenFrom(store);
    EXPECT_EQ(derived.scale, 0.25);
}

TEST(SystemUpdateFrom, ASystemInfoOfAnEarlierTimeIsForgotten) {
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{2, 16, 0.001});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    store.putBytes(10, 102, std::string("\x02\0\0\0", 4));
    ASSERT_TRUE(system.updateFrom(store));
    EXPECT_EQ(system.drawingUnit(), 13);
    EXPECT_EQ(system.scaleWcs2Cdb(), 1.0);
}

TEST(SystemUpdateFrom, AnAxisWithoutLengthIsReportedAndTheSystemIsThereAllTheSame) {
    typeCDB_SYST syst = systemRecord(0, -3);
    syst.m_tg.y[1] = 0.0F;
    ReportRecorder reports;
    SystemStore store(syst);
    EXPECT_EQ(takenFrom(store).scale, 1.0);
    EXPECT_EQ(reports.conditions(), (Texts{"!y.isZeroLength()"}));
    EXPECT_EQ(reports.messages(), (Texts{"invalid xform"}));
}

TEST(SystemUpdateFrom, ARecordNotAbove96BytesIsReportedAndReadAsFarAsItGoes) {
    typeCDB_SYST syst = systemRecord(10, 2, 0.01F);
    syst.sys_maxkn = 44;
    ReportRecorder reports;
    SystemStore store;
    store.putBytes(10, 0, cut(syst, 96));
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    EXPECT_EQ(reports.conditions(),
              (Texts{"m_data_10_0.size() > (offsetof(typeCDB_SYST,m_tg) + sizeof((syst).m_tg))"}));
    EXPECT_EQ(reports.at(0).values,
              (Values{{"sizeof((syst).m_tg)", "48"}, {"offsetof(typeCDB_SYST,m_tg)", "48"}}));
    EXPECT_EQ(reports.at(0).message, "10/0 system entry is corrupt.");
    EXPECT_EQ(reports.at(0).severity, orv::smartassert::Severity::kError);
    EXPECT_EQ(system.get_type(), EBENE);
    EXPECT_EQ(system.get_sys_maxkn(), 44);
    EXPECT_EQ(system.drawingUnit(), 15);
}

TEST(SystemUpdateFrom, ARecordOf97BytesIsNotReported) {
    ReportRecorder reports;
    SystemStore store;
    store.putBytes(10, 0, cut(systemRecord(0, -3), 97));
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemUpdateFrom, TheMaskIsCorrectedInMemoryAndWrittenBack) {
    const struct {
        int iprob;
        int igres;
    } cases[] = {{0, 127}, {10, 35}, {30, 28}, {32, 127}};
    for (const auto& test : cases) {
        typeCDB_SYST syst = systemRecord(test.iprob, -3);
        syst.igres = 99;
        SystemStore store(syst);
        ReportRecorder reports; // of the number that is no kind
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        EXPECT_EQ(store.taken<typeCDB_SYST>(10, 0).igres, 99) << "not before it is written";
        ASSERT_TRUE(system.updateTo(store));
        syst.igres = test.igres;
        EXPECT_EQ(store.bytes(10, 0), SystemStore::bytesOf(syst));
    }
}

TEST(SystemUpdateFrom, ASecondTimeReplacesAllButTheProperties) {
    SystemStore first(systemRecord(0, 3, 0.01F));
    SystemStore second(systemRecord(10, -2));
    System system;
    ASSERT_TRUE(system.updateFrom(first));
    system.properties().add<int>("designcode.nation", 49);
    ASSERT_TRUE(system.updateFrom(second));
    EXPECT_EQ(system.get_type(), EBENE);
    EXPECT_EQ(system.xformWcs2Cdb(), AcGeMatrix3d::kIdentity);
    EXPECT_EQ(system.scaleWcs2Cdb(), 1.0);
    EXPECT_EQ(system.converter().toCdb(5.0), 5.0);
    EXPECT_EQ(*system.properties().getValueNotThrow<int>("designcode.nation"), 49);
}

TEST(SystemUpdateFrom, ASystemThatLostItsRecordKeepsItsTransform) {
    SystemStore store(systemRecord(0, 3, 0.01F));
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    const AcGeMatrix3d before = system.xformWcs2Cdb();
    store.groups.clear();
    EXPECT_FALSE(system.updateFrom(store));
    EXPECT_EQ(system.xformWcs2Cdb(), before);
    EXPECT_EQ(system.converter().getWcs2Cdb(), before);
    EXPECT_EQ(system.drawingUnit(), 15);
    ReportRecorder reports;
    EXPECT_EQ(system.get_type(), RAUM);
    EXPECT_EQ(reports.conditions(), (Texts{"!m_data_10_0.is_empty()"})) << "the record is gone";
}

TEST(SystemUpdateFrom, TheConverterTurnsAndScales) {
    SystemStore store(systemRecord(0, 1));
    store.put(10, 102, PersistentSystemInfo{2, 15, 0.01});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    EXPECT_TRUE(system.converter().toCdb(AcGePoint3d(100, 200, 300)).isEqualTo(AcGePoint3d(-3, 2, 1)));
    EXPECT_TRUE(system.converter().fromCdb(AcGePoint3d(-3, 2, 1)).isEqualTo(AcGePoint3d(100, 200, 300)));
}

TEST(SystemUpdateFrom, AClosedStoreIsReportedByEachRead) {
    SystemStore store(systemRecord(0, -3));
    store.opened = false;
    ReportRecorder reports;
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    EXPECT_EQ(reports.conditions(), Texts(3, "cdb.isOpen()"));
}

TEST(SystemUpdateTo, WritesSystemInfoAndRecordAsTheyAre) {
    typeCDB_SYST syst = systemRecord(20, -3);
    syst.igres = 127;
    for (std::size_t i = 0; i < sizeof syst.rest; ++i)
        syst.rest[i] = static_cast<unsigned char>(i * 7 + 1);
    SystemStore store(syst);
    store.put(10, 102, PersistentSystemInfo{2, 16, 0.001});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    SystemStore target;
    ReportRecorder reports;
    EXPECT_TRUE(system.updateTo(target));
    EXPECT_EQ(target.log, (Texts{"write 10/102 first", "write 10/0 first"}));
    EXPECT_EQ(target.bytes(10, 0), store.bytes(10, 0));
    EXPECT_EQ(target.bytes(10, 102), store.bytes(10, 102));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemUpdateTo, ReplacesTheWholeKey) {
    SystemStore store(systemRecord(0, -3));
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    store.MapCdb::put(10, 0, {"old", "records", "behind"});
    store.MapCdb::put(10, 102, {"old", "too"});
    ASSERT_TRUE(system.updateTo(store));
    EXPECT_EQ(store.get(10, 0).size(), 1u);
    EXPECT_EQ(store.get(10, 102).size(), 1u);
}

TEST(SystemUpdateTo, AStoreThatIsNotOpenIsReportedAndFalse) {
    ReportRecorder reports;
    SystemStore store;
    store.opened = false;
    System system;
    EXPECT_FALSE(system.updateTo(store));
    EXPECT_FALSE(system.updateVisTo(store));
    EXPECT_EQ(reports.conditions(), (Texts{"db.isOpen()", "db.isOpen()"}));
    EXPECT_EQ(reports.at(0).message, "");
    EXPECT_TRUE(store.log.empty());
}

TEST(SystemUpdateTo, AnEmptyRecordIsReportedYetTheSystemInfoIsWrittenAndItIsTrue) {
    ReportRecorder reports;
    SystemStore store;
    System system;
    EXPECT_TRUE(system.updateTo(store));
    EXPECT_EQ(reports.conditions(), (Texts{"!m_data_10_0.is_empty()"}));
    EXPECT_EQ(store.log, (Texts{"write 10/102 first"}));
    EXPECT_EQ(store.bytes(10, 102), SystemStore::bytesOf(PersistentSystemInfo{2, 13, 1.0}));
}

TEST(SystemUpdateTo, ARefusedRecordIsReportedAndFalse) {
    SystemStore store(systemRecord(0, -3));
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    ReportRecorder reports;
    store.refuseWrites = true;
    EXPECT_FALSE(system.updateTo(store));
    EXPECT_EQ(reports.conditions(), (Texts{"err == CD_ERR_NONE"})) << "that of 10/102 is not looked at";
}
