#include "dbx/doc/system_manager.h"

#include "app/taldork_dbx_application.h"
#include "base/exceptions.h"
#include "support/beep_recorder.h"
#include "support/report_recorder.h"
#include "support/system_records.h"

using orv::SystemManager;
using testing_support::makeStore;
using testing_support::putRecord;
using testing_support::putSystem;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::Texts;
using testing_support::Values;

namespace {

SystemManager& manager() { return SystemManager::instance(); }

// A record of graphic settings that ends in the middle of its tables.
void putShortSettings(AcDbDatabase& db, const std::wstring& store) {
    const std::int32_t record[] = {1, 15, 300, -1};
    putRecord(db, store, 10, 100, record, sizeof record);
}

using Systems = std::vector<boost::shared_ptr<orv::System>>;

Systems systemsOf(AcDbDatabase& db, const std::vector<std::wstring>& names) {
    Systems systems;
    for (const std::wstring& name : names)
        systems.push_back(manager().getSystemByName(&db, name));
    return systems;
}

constexpr int none = -1;

std::vector<int> kinds(const Systems& systems) {
    std::vector<int> kinds;
    for (const auto& system : systems)
        kinds.push_back(system ? static_cast<int>(system->get_type()) : none);
    return kinds;
}

TEST(SystemManager, ADrawingIsLookedThroughOnceItIsAskedFor) {
    StoreDrawing drawing(L"ASDWG");
    putSystem(drawing.db, L"ASDWG", 10);
    EXPECT_FALSE(manager().wasDatabaseCheckedAtLeastOnce(&drawing.db));
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"ASDWG"), nullptr);
    manager().initFromDatabase(&drawing.db);
    EXPECT_TRUE(manager().wasDatabaseCheckedAtLeastOnce(&drawing.db));
    const auto system = manager().getSystemByName(&drawing.db, L"ASDWG");
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(system->get_type(), orv::EBENE);
    EXPECT_FALSE(system->editable());
    EXPECT_EQ(manager().getSystemById(drawing.named), system);
}

TEST(SystemManager, ADrawingWithoutStoresHasNoSystemsAndCountsAsChecked) {
    ReportRecorder reports;
    AcDbDatabase db(true);
    manager().initFromDatabase(&db);
    EXPECT_TRUE(manager().wasDatabaseCheckedAtLeastOnce(&db));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemManager, TheFlagStaysThoughNoStoreWasFound) {
    AcDbDatabase db(true);
    manager().initFromDatabase(&db);
    manager().initFromDatabase(&db);
    EXPECT_TRUE(manager().wasDatabaseCheckedAtLeastOnce(&db));
}

TEST(SystemManager, NullDrawings) {
    ReportRecorder reports;
    manager().initFromDatabase(nullptr);
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_FALSE(manager().wasDatabaseCheckedAtLeastOnce(nullptr));
    EXPECT_EQ(manager().getSystemByName(nullptr, L"ASDWG"), nullptr);
    EXPECT_EQ(reports.conditions(), (Texts{"db", "db"}));
}

TEST(SystemManager, ANullIdHasNoSystemAndMakesNoReport) {
    ReportRecorder reports;
    EXPECT_EQ(manager().getSystemById(AcDbObjectId()), nullptr);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemManager, GeneralDataNeverBecomesASystem) {
    ReportRecorder reports;
    StoreDrawing drawing(L"ASDWG");
    putSystem(drawing.db, L"ASDWG");
    makeStore(drawing, L"$Kelmoran");
    makeStore(drawing, L"$other");
    putSystem(drawing.db, L"$Kelmoran");
    manager().initFromDatabase(&drawing.db);
    EXPECT_NE(manager().getSystemByName(&drawing.db, L"ASDWG"), nullptr);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"$Kelmoran"), nullptr);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemManager, TwoStoresGiveTwoSystemsThoughTheFirstFails) {
    StoreDrawing drawing(L"first");
    makeStore(drawing, L"second");
    makeStore(drawing, L"third");
    putSystem(drawing.db, L"second", 10);
    putSystem(drawing.db, L"third", 30);
    ReportRecorder reports;
    manager().initFromDatabase(&drawing.db);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"first"), nullptr);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"second")->get_type(), orv::EBENE);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"third")->get_type(), orv::PLATTE);
    EXPECT_EQ(reports.conditions(), (Texts{"false", "success"}));
    EXPECT_EQ(reports.messages(),
              (Texts{"Failed to find fallback record for 10/0.", "system could not be initialized"}));
    EXPECT_EQ(reports.at(0).values.size(), 0u);
    EXPECT_EQ(reports.at(1).values, (Values{{"it->first", "first"}}));
}

TEST(SystemManager, AStoreThatCannotBeOpenedIsReportedAndSkipped) {
    StoreDrawing drawing(L"good");
    putSystem(drawing.db, L"good");
    testing_support::subDictionary(drawing.kelmoran, L"bare"); // no records below it
    ReportRecorder reports;
    manager().initFromDatabase(&drawing.db);
    ASSERT_EQ(reports.size(), 1u);
    const auto& report = reports.at(0);
    EXPECT_EQ(report.condition, "nod && nod->isOpen()");
    EXPECT_EQ(report.severity, orv::smartassert::Severity::kDebug);
    EXPECT_EQ(report.values, (Values{{"it->first", "bare"}}));
    EXPECT_EQ(report.message,
              "could not access NOD database information in drawing. => DWG too old or defect.");
    EXPECT_NE(manager().getSystemByName(&drawing.db, L"good"), nullptr);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"bare"), nullptr);
}

TEST(SystemManager, TheMatchOfANameIsExact) {
    StoreDrawing drawing(L"ASDWG");
    putSystem(drawing.db, L"ASDWG");
    manager().initFromDatabase(&drawing.db);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"asdwg"), nullptr);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L""), nullptr);
}

TEST(SystemManager, ASecondLookThroughYieldsNewSystems) {
    StoreDrawing drawing(L"ASDWG");
    putSystem(drawing.db, L"ASDWG");
    manager().initFromDatabase(&drawing.db);
    const auto first = manager().getSystemByName(&drawing.db, L"ASDWG");
    manager().initFromDatabase(&drawing.db);
    EXPECT_TRUE(manager().wasDatabaseCheckedAtLeastOnce(&drawing.db));
    const auto second = manager().getSystemByName(&drawing.db, L"ASDWG");
    EXPECT_NE(second, first);
    EXPECT_EQ(first.use_count(), 1);
}

TEST(SystemManager, AStoreThatIsGoneIsForgotten) {
    StoreDrawing drawing(L"ASDWG");
    putSystem(drawing.db, L"ASDWG");
    makeStore(drawing, L"other");
    putSystem(drawing.db, L"other");
    manager().initFromDatabase(&drawing.db);
    testing_support::removeEntry(drawing.kelmoran, L"ASDWG");
    manager().initFromDatabase(&drawing.db);
    EXPECT_EQ(manager().getSystemByName(&drawing.db, L"ASDWG"), nullptr);
    EXPECT_EQ(manager().getSystemById(drawing.named), nullptr);
    EXPECT_NE(manager().getSystemByName(&drawing.db, L"other"), nullptr);
}

TEST(SystemManager, ADamagedRecordOfSettingsThrowsWhenAllStoresWereTakenUp) {
    StoreDrawing drawing(L"a");
    makeStore(drawing, L"b");
    makeStore(drawing, L"c");
    for (const wchar_t* const name : {L"a", L"b", L"c"})
        putSystem(drawing.db, name);
    putShortSettings(drawing.db, L"b");
    ReportRecorder reports;
    try {
        manager().initFromDatabase(&drawing.db);
        FAIL();
    } catch (const orv::Exception& failure) {
        EXPECT_STREQ(failure.what(), "filer error");
    }
    EXPECT_TRUE(manager().wasDatabaseCheckedAtLeastOnce(&drawing.db));
    for (const wchar_t* const name : {L"a", L"b", L"c"})
        EXPECT_NE(manager().getSystemByName(&drawing.db, name), nullptr) << name;
}

TEST(SystemManager, OneStoreAloneThrowsItsOwnException) {
    StoreDrawing drawing(L"a");
    putSystem(drawing.db, L"a");
    putShortSettings(drawing.db, L"a");
    ReportRecorder reports;
    const SystemManager::Names names{{L"a", drawing.named}};
    EXPECT_THROW(manager()._initForStore(drawing.db, names.begin()), orv::Exception);
}

// Two drawings with five whole systems; among those of the first a store without a record of its system, and
// one whose settings are cut off.
TEST(SystemManager, ClosingOneDrawingLeavesTheOthersSystems) {
    ReportRecorder reports;
    StoreDrawing kept(L"ASDWG");
    for (const wchar_t* const name : {L"Bare", L"Cut", L"x", L"y"})
        makeStore(kept, name);
    putSystem(kept.db, L"ASDWG", 0);
    putSystem(kept.db, L"Cut", 10);
    putSystem(kept.db, L"x", 10);
    putSystem(kept.db, L"y", 30);
    putShortSettings(kept.db, L"Cut");
    EXPECT_THROW(manager().initFromDatabase(&kept.db), orv::Exception);
    const auto keptSystems = systemsOf(kept.db, {L"ASDWG", L"Bare", L"Cut", L"x", L"y"});
    EXPECT_EQ(reports.messages().at(0), "Failed to find fallback record for 10/0.");
    EXPECT_EQ(reports.at(1).values, (Values{{"it->first", "Bare"}}));
    reports.clear();

    boost::shared_ptr<orv::System> held;
    {
        StoreDrawing going(L"ASDWG");
        makeStore(going, L"z");
        putSystem(going.db, L"ASDWG", 30);
        putSystem(going.db, L"z", 10);
        manager().initFromDatabase(&going.db);
        held = manager().getSystemByName(&going.db, L"z");
        ASSERT_NE(held, nullptr);
        EXPECT_EQ(held.use_count(), 2);
        EXPECT_EQ(manager().getSystemByName(&going.db, L"ASDWG")->get_type(), orv::PLATTE);
        EXPECT_EQ(manager().getSystemByName(&kept.db, L"z"), nullptr);
        EXPECT_EQ(manager().getSystemByName(&going.db, L"x"), nullptr);
        EXPECT_NE(manager().getSystemById(going.named), manager().getSystemById(kept.named));
    }
    EXPECT_EQ(held.use_count(), 1); // only who holds a copy keeps it
    EXPECT_EQ(held->get_type(), orv::EBENE);

    EXPECT_TRUE(manager().wasDatabaseCheckedAtLeastOnce(&kept.db));
    EXPECT_EQ(systemsOf(kept.db, {L"ASDWG", L"Bare", L"Cut", L"x", L"y"}), keptSystems);
    EXPECT_EQ(kinds(keptSystems), (std::vector<int>{orv::RAUM, none, orv::EBENE, orv::EBENE, orv::PLATTE}));
    for (const auto& system : keptSystems)
        EXPECT_FALSE(system && system->editable());
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemManager, TheMessageOfAnOpenedDrawingTakesItUp) {
    StoreDrawing drawing(L"ASDWG");
    putSystem(drawing.db, L"ASDWG");
    EXPECT_EQ(Taldork_DBX_Application::instance().On_kLoadDwgMsg(nullptr), AcRx::kRetOK);
    EXPECT_NE(manager().getSystemByName(&drawing.db, L"ASDWG"), nullptr);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(Taldork_DBX_Application::instance().On_kLoadDwgMsg(nullptr), AcRx::kRetOK);
}

TEST(SystemManager, ADrawingWithDamagedSettingsOpensWithALineOnTheConsole) {
    StoreDrawing drawing(L"a");
    makeStore(drawing, L"b");
    putSystem(drawing.db, L"a", 10);
    putSystem(drawing.db, L"b", 30);
    putShortSettings(drawing.db, L"a");
    ReportRecorder reports;
    const testing_support::BeepRecorder beep;
    EXPECT_EQ(Taldork_DBX_Application::instance().On_kLoadDwgMsg(nullptr), AcRx::kRetOK);
    EXPECT_EQ(kinds(systemsOf(drawing.db, {L"a", L"b"})), (std::vector<int>{orv::EBENE, orv::PLATTE}));
    ASSERT_EQ(beep.lines().size(), 1u);
    EXPECT_EQ(beep.lines()[0].find(L"Caught Exception: filer error "), 0u) << "no exception reaches the host";
}

} // namespace
