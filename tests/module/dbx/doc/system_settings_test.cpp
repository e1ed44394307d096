#include "dbx/doc/system.h"

#include "app/log.h"
#include "base/exceptions.h"
#include "dbx/doc/symbol_setup.h"
#include "support/log_recorder.h"
#include "support/report_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <cstring>
#include <stdexcept>

using namespace orv;
using legacy::typeSymbolSetup;
using testing_support::LogRecorder;
using testing_support::ReportRecorder;
using testing_support::systemRecord;
using testing_support::SystemStore;
using testing_support::Texts;
using testing_support::Values;

namespace {

// An older record of graphic settings in which every field in use differs from the default.
typeSymbolSetup symbolSetup() {
    typeSymbolSetup setup{};
    setup.version = 7;
    setup.size151 = 11;
    setup.size152 = 12;
    setup.size153 = 13;
    setup.size154 = 14.5;
    setup.size155 = 15;
    setup.switch63 = 1;
    return setup;
}

// A store with the first bytes of such a record.
struct SetupStore : SystemStore {
    explicit SetupStore(const typeSymbolSetup& setup, std::size_t size = sizeof(typeSymbolSetup))
        : SystemStore(systemRecord(0, -3)) {
        putBytes(0, 98, bytesOf(setup).substr(0, size));
    }
};

void put32(std::string& bytes, std::size_t offset, std::int32_t number) {
    std::memcpy(&bytes[offset], &number, sizeof number);
}
void putDouble(std::string& bytes, std::size_t offset, double number) {
    std::memcpy(&bytes[offset], &number, sizeof number);
}

Texts switchesAndSizes(const System& system) {
    Texts found;
    for (const int index : {61, 62, 63})
        found.push_back(system.visSettings().isOn(index) ? "on" : "off");
    for (const int index : {151, 152, 153, 154, 155})
        found.push_back(std::to_string(system.visSettings().getRawSize(index).value).substr(0, 5));
    return found;
}

const Texts kDefaults = {"on", "on", "off", "3.000", "5.000", "9.000", "10.00", "5.000"};

} // namespace

TEST(SymbolSetup, EachFieldStandsAtItsPlaceInTheRecord) {
    std::string bytes(3536, '\0');
    put32(bytes, 8, 42);
    put32(bytes, 664, 1);
    put32(bytes, 668, 2);
    put32(bytes, 752, 3);
    putDouble(bytes, 888, 4.25);
    put32(bytes, 828, 5);
    put32(bytes, 3248, 1);  // switch 62
    put32(bytes, 3252, 0);  // switch 63
    put32(bytes, 3268, -1); // switch 61
    SystemStore store(systemRecord(0, -3));
    store.putBytes(0, 98, bytes);
    LogRecorder log("sys");
    ReportRecorder reports;
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    EXPECT_EQ(switchesAndSizes(system),
              (Texts{"off", "on", "off", "1.000", "2.000", "3.000", "4.250", "5.000"}));
    EXPECT_EQ(log.messages(),
              (Texts{"3 10/102: does not exist. updating from 10/0.iprob = 0visual: db version=42"}));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SymbolSetup, ASwitchIsSetWhenItsFieldIsAbove0) {
    for (const std::int32_t value : {-5, 0, 1, 1000}) {
        typeSymbolSetup setup = symbolSetup();
        setup.switch61 = setup.switch62 = setup.switch63 = value;
        SetupStore store(setup);
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        for (const int index : {61, 62, 63})
            EXPECT_EQ(system.visSettings().isOn(index), value > 0) << value;
    }
}

TEST(SymbolSetup, OnlyItsOwnSwitchesAndSizesChange) {
    SetupStore store{symbolSetup()};
    System system;
    const System fresh;
    ASSERT_TRUE(system.updateFrom(store));
    const auto& settings = system.visSettings();
    for (int index = 0; index < settings.numSwitches(); ++index) {
        if (index >= 61 && index <= 63)
            continue;
        EXPECT_EQ(settings.getSwitch(index), fresh.visSettings().getSwitch(index)) << index;
    }
    for (int index = 0; index < settings.numSizes(); ++index) {
        EXPECT_EQ(settings.getRawSize(index).flags, fresh.visSettings().getRawSize(index).flags) << index;
        if (index >= 151 && index <= 155)
            continue;
        EXPECT_EQ(settings.getRawSize(index).value, fresh.visSettings().getRawSize(index).value) << index;
    }
}

TEST(SymbolSetup, ARecordNotAbove3224BytesIsReportedAndReadAllTheSame) {
    SetupStore store(symbolSetup(), 3224);
    ReportRecorder reports;
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    ASSERT_EQ(reports.size(), 1u);
    const std::string size = "sizeof((*newVisData.cast<legacy::typeSymbolSetup*>()).globalScalingValue)";
    const std::string offset = "offsetof(legacy::typeSymbolSetup,globalScalingValue)";
    EXPECT_EQ(reports.at(0).condition, "newVisData.size() > (" + offset + " + " + size + ")");
    EXPECT_EQ(reports.at(0).values, (Values{{size, "8"}, {offset, "3216"}}));
    EXPECT_EQ(reports.at(0).message, "0/98 entry is corrupt.");
    EXPECT_EQ(reports.at(0).severity, orv::smartassert::Severity::kError);
    EXPECT_EQ(switchesAndSizes(system),
              (Texts{"off", "off", "off", "11.00", "12.00", "13.00", "14.50", "15.00"}));
}

TEST(SymbolSetup, ARecordOf3225BytesIsNotReported) {
    SetupStore store(symbolSetup(), 3225);
    ReportRecorder reports;
    System system;
    EXPECT_TRUE(system.updateFrom(store));
    EXPECT_EQ(reports.size(), 0u);
}

// Around the beginning and end of each field: what the record does not hold reads as zero.
TEST(SymbolSetup, FieldsBehindTheRecordsEndReadAsZero) {
    std::string bytes(3536, '\xff');
    put32(bytes, 664, 11);
    put32(bytes, 668, 12);
    put32(bytes, 752, 13);
    put32(bytes, 828, 15);
    putDouble(bytes, 888, 14.5);
    for (const std::size_t offset : {std::size_t{3248}, std::size_t{3252}, std::size_t{3268}})
        put32(bytes, offset, 1);
    const struct {
        std::size_t offset;
        std::size_t width;
        std::size_t index; // in switchesAndSizes
        const char* value;
        const char* without;
    } fields[] = {{664, 4, 3, "11.00", "0.000"}, {668, 4, 4, "12.00", "0.000"}, {752, 4, 5, "13.00", "0.000"},
                  {828, 4, 7, "15.00", "0.000"}, {888, 8, 6, "14.50", "0.000"}, {3248, 4, 1, "on", "off"},
                  {3252, 4, 2, "on", "off"},     {3268, 4, 0, "on", "off"}};
    ReportRecorder reports;
    for (const auto& field : fields) {
        for (const std::size_t size : {field.offset, field.offset + field.width}) {
            SystemStore store(systemRecord(0, -3));
            store.putBytes(0, 98, bytes.substr(0, size));
            System system;
            ASSERT_TRUE(system.updateFrom(store));
            EXPECT_EQ(switchesAndSizes(system).at(field.index),
                      size == field.offset ? field.without : field.value)
                << field.offset << " of " << size;
        }
    }
}

TEST(SymbolSetup, EveryLengthIsHarmless) {
    ReportRecorder reports;
    const std::string bytes(3600, '\x01');
    std::size_t expected = 0;
    // One by one where it matters, in steps in between.
    for (std::size_t size = 1; size <= bytes.size();
         size += size < 24 || (size > 3200 && size < 3290) || (size > 3515 && size < 3545) ? 1 : 17) {
        SystemStore store(systemRecord(0, -3));
        store.putBytes(0, 98, bytes.substr(0, size));
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        expected += size <= 3224 ? 1 : 0;
        EXPECT_EQ(reports.size(), expected) << size;
    }
}

TEST(SymbolSetup, WithOrWithoutItSizesAreScaledByTheWayFromTheStore) {
    typeSymbolSetup setup = symbolSetup();
    for (const bool there : {true, false}) {
        SystemStore store(systemRecord(0, -3));
        store.put(10, 102, PersistentSystemInfo{2, 15, 0.01});
        if (there)
            store.put(0, 98, setup);
        System system;
        ASSERT_TRUE(system.updateFrom(store));
        EXPECT_DOUBLE_EQ(system.visSettings().getSize(2), 0.2 * 100.0);
        EXPECT_EQ(system.visSettings().getSize(1), 1.0) << "fixed";
        EXPECT_EQ(system.visSettings().getSize(151), there ? 11.0 : 3.0) << "fixed";
    }
}

TEST(SymbolSetup, ADrawingWithItButWithoutCurrentSettingsEndsWithTheDefaults) {
    SetupStore store{symbolSetup()};
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    EXPECT_EQ(switchesAndSizes(system),
              (Texts{"off", "off", "on", "11.00", "12.00", "13.00", "14.50", "15.00"}));
    EXPECT_TRUE(system.updateVisFrom(store));
    EXPECT_EQ(switchesAndSizes(system), kDefaults);
}

TEST(SystemVisUpdate, WithoutARecordTheDefaultsAreLoggedAndComplete) {
    LogRecorder log("sys");
    ReportRecorder reports;
    SystemStore store;
    System system;
    system.visSettings().setSwitch(299, 1);
    system.visSettings().setSwitch(122, 0);
    EXPECT_TRUE(system.updateVisFrom(store));
    EXPECT_EQ(log.messages(), (Texts{"3 visual: defaulting"}));
    EXPECT_EQ(store.log, (Texts{"read 10/100 first"}));
    EXPECT_FALSE(system.visSettings().isOn(299));
    EXPECT_TRUE(system.visSettings().isOn(122));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemVisUpdate, AListenerThatThrowsEndsIt) {
    struct Throwing : orv::ILogListener {
        void onLog(const std::string&, const std::string&, orv::LogLevel, const std::string&) override {
            throw std::runtime_error("listener");
        }
    };
    orv::addLogListener("sys", boost::make_shared<Throwing>());
    SystemStore store;
    System system;
    EXPECT_THROW(system.updateVisFrom(store), std::runtime_error);
    orv::clearLogs();
    EXPECT_TRUE(system.updateVisFrom(store));
}

TEST(SystemVisUpdate, WhatIsWrittenIsReadBack) {
    LogRecorder log("sys");
    ReportRecorder reports;
    SystemStore store;
    System system;
    system.visSettings().setSwitch(63, 1);
    system.visSettings().setSize(151, 6.5);
    system.visSettings().setColour(1, ColourRGBA(0.0, 1.0, 0.2, 1.0));
    EXPECT_TRUE(system.updateVisTo(store));
    EXPECT_EQ(store.log, (Texts{"write 10/100 first"}));
    System other;
    EXPECT_TRUE(other.updateVisFrom(store));
    EXPECT_EQ(log.messages(), (Texts{"3 visual: loading"}));
    EXPECT_TRUE(other.visSettings().isOn(63));
    EXPECT_EQ(other.visSettings().getSize(151), 6.5);
    EXPECT_EQ(other.visSettings().getColour(1), ColourRGBA(0.0, 1.0, 0.2, 1.0));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemVisUpdate, TheRecordHoldsWhatWasWrittenAndNotTheArchivesReserve) {
    SystemStore store;
    System system;
    ASSERT_TRUE(system.updateVisTo(store));
    const std::string bytes = store.bytes(10, 100);
    EXPECT_EQ(bytes.size(), 8u + 4 + 300 * 4 + 4 + 300 * 8 + 4 + 300);
    EXPECT_EQ(bytes.substr(0, 12), std::string("\x01\0\0\0\x0f\0\0\0\x2c\x01\0\0", 12));
}

TEST(SystemVisUpdate, SizesThatAreReadAreScaledByTheWayFromTheStore) {
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{2, 16, 0.001});
    System system;
    ASSERT_TRUE(system.updateVisTo(store));
    ASSERT_TRUE(system.updateFrom(store));
    ASSERT_TRUE(system.updateVisFrom(store));
    EXPECT_NEAR(system.visSettings().getSize(3), 600.0, 1e-3);
    EXPECT_EQ(system.visSettings().getSize(1), 1.0);
}

TEST(SystemVisUpdate, ARecordOfAnotherKindIsReportedAndRaisedFromVersion0) {
    SystemStore store;
    const std::int32_t record[] = {2, 15, 0, 0, 0};
    store.put(10, 100, record);
    System system;
    system.visSettings().setSwitch(122, 0);
    system.visSettings().setSwitch(299, 1);
    ReportRecorder reports;
    EXPECT_TRUE(system.updateVisFrom(store));
    EXPECT_EQ(reports.conditions(), (Texts{"id == 1", "version > 0"}));
    EXPECT_EQ(reports.at(1).values, (Values{{"version", "0"}}));
    EXPECT_EQ(reports.at(1).message, "failed to load vis settings");
    EXPECT_TRUE(system.visSettings().isOn(122)) << "set by a numbered step";
    EXPECT_TRUE(system.visSettings().isOn(299)) << "the step that turns all off is not among them";
}

TEST(SystemVisUpdate, ARecordOfALaterVersionIsReportedAndNotRaised) {
    SystemStore store;
    const std::int32_t record[] = {1, 16, 0, 0, 0};
    store.put(10, 100, record);
    System system;
    system.visSettings().setSwitchRange(0, 299, 1);
    ReportRecorder reports;
    EXPECT_TRUE(system.updateVisFrom(store));
    ASSERT_EQ(reports.conditions(), (Texts{"version <= static_cast<int32>(settings.getVersion())"}));
    EXPECT_EQ(reports.at(0).values, (Values{{"settings.getVersion()", "15"}, {"version", "16"}}));
    for (int index = 0; index < 300; ++index)
        EXPECT_TRUE(system.visSettings().isOn(index)) << index << ", also 127 and 128 of the last step";
}

TEST(SystemVisUpdate, AnOlderRecordGetsWhatNewerVersionsAdded) {
    SystemStore store;
    const std::int32_t record[] = {1, 14, 0, 0, 0};
    store.put(10, 100, record);
    System system;
    system.visSettings().setSwitchRange(0, 299, 1);
    EXPECT_TRUE(system.updateVisFrom(store));
    for (int index = 0; index < 300; ++index)
        EXPECT_EQ(system.visSettings().isOn(index), index != 127 && index != 128) << index;
}

TEST(SystemVisUpdate, ARecordThatEndsEarlyThrowsAndIsNotRaised) {
    SystemStore store;
    System system;
    ASSERT_TRUE(system.updateVisTo(store));
    const std::string whole = store.bytes(10, 100);
    for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::size_t{500}, whole.size() - 1}) {
        store.putBytes(10, 100, whole.substr(0, size));
        ReportRecorder reports;
        try {
            system.updateVisFrom(store);
            ADD_FAILURE() << size;
        } catch (const Exception& failed) {
            EXPECT_STREQ(failed.what(), "filer error");
        }
        EXPECT_EQ(reports.size(), 1u);
    }
}

TEST(SystemVisUpdate, ARefusedRecordIsReportedAndFalse) {
    ReportRecorder reports;
    SystemStore store;
    store.refuseWrites = true;
    System system;
    EXPECT_FALSE(system.updateVisTo(store));
    EXPECT_EQ(reports.conditions(), (Texts{"err == CD_ERR_NONE"}));
}

TEST(SystemSettingsUpdate, TheRecordIs16BytesWithItsDefaults) {
    SystemStore store;
    System system;
    EXPECT_TRUE(system.updateSettingsTo(store));
    EXPECT_EQ(store.log, (Texts{"write 10/101 first"}));
    EXPECT_EQ(store.bytes(10, 101), std::string("\x0a\0\0\0\x01\0\0\0\x7b\x14\xae\x47\xe1\x7a\x84\x3f", 16));
}

TEST(SystemSettingsUpdate, ItIsReadAndCarried) {
    SystemStore store;
    const std::string record("\x05\0\0\0\xfe\xff\xff\xff\0\0\0\0\0\0\xf8\x3f", 16);
    store.putBytes(10, 101, record);
    System system;
    EXPECT_TRUE(system.updateSettingsFrom(store));
    EXPECT_EQ(store.log, (Texts{"read 10/101 first"}));
    EXPECT_EQ(system.pointSize(), 1.5);
    EXPECT_TRUE(system.updateSettingsTo(store));
    EXPECT_EQ(store.bytes(10, 101), record);
    system.setPointSize(0.25);
    system.updateSettingsTo(store);
    EXPECT_EQ(store.bytes(10, 101), record.substr(0, 8) + std::string("\0\0\0\0\0\0\xd0\x3f", 8));
}

TEST(SystemSettingsUpdate, WithoutARecordTheDefaultsComeBack) {
    SystemStore store;
    System system;
    system.setPointSize(7.0);
    EXPECT_TRUE(system.updateSettingsFrom(store));
    EXPECT_EQ(system.pointSize(), 0.01);
}

TEST(SystemSettingsUpdate, ARefusedRecordIsTrueAllTheSame) {
    ReportRecorder reports;
    SystemStore store;
    store.refuseWrites = true;
    store.opened = false;
    System system;
    EXPECT_TRUE(system.updateSettingsTo(store));
    EXPECT_EQ(reports.size(), 0u);
}
