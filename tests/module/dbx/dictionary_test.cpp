#include "dbx/dictionary.h"

#include "AcString.h"
#include "embedded/session.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

using namespace orv::dictionary;
using namespace testing_support;

TEST(Dictionary, TheTopDictionariesAreMadeOnceAndFound) {
    AcDbDatabase db(true);
    EXPECT_TRUE(getKelmoran(&db).isNull());
    EXPECT_TRUE(getKelmoranDATA(&db).isNull());
    const AcDbObjectId kelmoran = getOrCreateKelmoran(&db);
    const AcDbObjectId data = getOrCreateKelmoranDATA(&db);
    EXPECT_EQ(entryOf(db.namedObjectsDictionaryId(), L"KELMORAN"), kelmoran);
    EXPECT_EQ(entryOf(db.namedObjectsDictionaryId(), L"KELMORAN_DATA"), data);
    EXPECT_EQ(getOrCreateKelmoran(&db), kelmoran);
    EXPECT_EQ(getKelmoran(&db), kelmoran);
    EXPECT_EQ(getKelmoranDATA(&db), data);
    const AcDbObjectId other = getOrCreateX(&db, AcString(L"OTHER"));
    EXPECT_EQ(entryOf(db.namedObjectsDictionaryId(), L"OTHER"), other);
}

TEST(Dictionary, ANullDatabaseIsReported) {
    ReportRecorder recorder;
    EXPECT_TRUE(getOrCreateX(nullptr, AcString(L"X")).isNull());
    EXPECT_TRUE(getOrCreateKelmoran(nullptr).isNull());
    EXPECT_TRUE(getKelmoran(nullptr).isNull());
    EXPECT_TRUE(getKelmoranDATA(nullptr).isNull());
    eraseKelmoran(nullptr);
    EXPECT_EQ(recorder.conditions(), Texts(5, "db"));
}

TEST(Dictionary, ADrawingWithoutNamedObjectDictionaryIsReported) {
    AcDbDatabase empty(false);
    ReportRecorder recorder;
    EXPECT_TRUE(getOrCreateKelmoran(&empty).isNull());
    EXPECT_EQ(recorder.conditions(), (Texts{"namedDict"}));
}

TEST(Dictionary, EraseTakesBothWithAllBelow) {
    AcDbDatabase db(true);
    const AcDbObjectId below = subDictionary(getOrCreateKelmoran(&db), L"STORE");
    const AcDbObjectId data = getOrCreateKelmoranDATA(&db);
    eraseKelmoran(&db);
    EXPECT_TRUE(getKelmoran(&db).isNull());
    EXPECT_TRUE(getKelmoranDATA(&db).isNull());
    EXPECT_TRUE(below.isErased());
    EXPECT_TRUE(data.isErased());
    ReportRecorder recorder;
    eraseKelmoran(&db);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(Dictionary, EraseOfATopDictionaryThatIsGoneForGoodIsReportedAndGoesOn) {
    AcDbDatabase db(true);
    eraseObject(getOrCreateKelmoran(&db));
    embedded::forgetHistory(db);
    const AcDbObjectId data = getOrCreateKelmoranDATA(&db);
    ReportRecorder recorder;
    eraseKelmoran(&db);
    EXPECT_EQ(recorder.conditions(), Texts{"obj"});
    EXPECT_TRUE(data.isErased());
    recorder.clear();
    eraseKelmoran(&db);
    EXPECT_EQ(recorder.size(), 0u) << "the entry went with the first look";
}
