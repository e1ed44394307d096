#include "dbx/doc/enumerate_cdbs.h"

#include "dbxrecrd.h"
#include "embedded/session.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::Texts;

namespace {

using Names = std::map<std::wstring, AcDbObjectId>;

TEST(EnumerateCdbs, ListsEachStoreWithTheIdOfItsDictionary) {
    StoreDrawing drawing(L"second");
    const AcDbObjectId first = testing_support::subDictionary(drawing.kelmoran, L"First");
    Names names;
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&drawing.db, names), 2u);
    EXPECT_EQ(names, (Names{{L"First", first}, {L"second", drawing.named}}));
}

TEST(EnumerateCdbs, EntriesThatBeginWithADollarAreNoStores) {
    StoreDrawing drawing(L"$Kelmoran");
    testing_support::subDictionary(drawing.kelmoran, L"$x");
    testing_support::subDictionary(drawing.kelmoran, L"a$");
    Names names;
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&drawing.db, names), 1u);
    EXPECT_EQ(names.count(L"a$"), 1u);
}

TEST(EnumerateCdbs, ADrawingWithoutStoresHasNoneAndReportsNothing) {
    ReportRecorder reports;
    AcDbDatabase db(true);
    Names names{{L"old", AcDbObjectId()}};
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&db, names), 0u);
    EXPECT_TRUE(names.empty());
    testing_support::subDictionary(db.namedObjectsDictionaryId(), L"KELMORAN");
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&db, names), 0u);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(EnumerateCdbs, ANullDrawingIsReportedAndEmptiesTheList) {
    ReportRecorder reports;
    Names names{{L"old", AcDbObjectId()}};
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(nullptr, names), 0u);
    EXPECT_TRUE(names.empty());
    EXPECT_EQ(reports.conditions(), Texts{"db"});
}

TEST(EnumerateCdbs, ADrawingWithoutItsNamedDictionaryIsReported) {
    ReportRecorder reports;
    AcDbDatabase db(false);
    Names names;
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&db, names), 0u);
    EXPECT_EQ(reports.conditions(), Texts{"namedDict"});
}

TEST(EnumerateCdbs, SomethingElseInThePlaceOfTheStoresIsReported) {
    ReportRecorder reports;
    AcDbDatabase db(true);
    testing_support::putObject(db.namedObjectsDictionaryId(), L"KELMORAN", new AcDbXrecord);
    Names names;
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&db, names), 0u);
    EXPECT_EQ(reports.conditions(), Texts{"namedDict"});
}

TEST(EnumerateCdbs, StoresThatAreGoneForGoodAreReportedOnce) {
    StoreDrawing drawing;
    testing_support::eraseObject(drawing.kelmoran);
    embedded::forgetHistory(drawing.db);
    ReportRecorder reports;
    Names names;
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&drawing.db, names), 0u);
    EXPECT_EQ(reports.conditions(), (Texts{"obj", "namedDict"}));
    reports.clear();
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&drawing.db, names), 0u);
    EXPECT_EQ(reports.size(), 0u) << "the entry went with the first look";
}

TEST(EnumerateCdbs, AStoreOfAnyKindOfObjectIsListed) {
    StoreDrawing drawing;
    const AcDbObjectId id = testing_support::putObject(drawing.kelmoran, L"record", new AcDbXrecord);
    Names names;
    EXPECT_EQ(orv::detail::enumerateCdbsInNod(&drawing.db, names), 2u);
    EXPECT_EQ(names.at(L"record"), id);
}

} // namespace
