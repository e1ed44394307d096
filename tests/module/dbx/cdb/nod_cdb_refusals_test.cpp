// Dictionaries that refuse what the store asks of them, put in the place of its own.
#include "dbx/cdb/nod_cdb.h"

#include "dbdict.h"
#include "dbx/cdb/cdbrec.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <string>

using namespace orv::cdb;
using namespace testing_support;
using Names = std::vector<std::wstring>;

namespace {

// Takes no entry while it refuses, or takes it and does not tell its id.
struct RefusingDictionary : AcDbDictionary {
    enum Manner { kTakes, kRefuses, kHidesTheId };
    Manner manner = kTakes;

    using AcDbDictionary::setAt;
    Acad::ErrorStatus setAt(const ACHAR* name, AcDbObject* object, AcDbObjectId& id) override {
        if (manner == kRefuses)
            return Acad::eInvalidKey;
        const Acad::ErrorStatus es = AcDbDictionary::setAt(name, object, id);
        if (manner == kHidesTheId)
            id.setNull();
        return es;
    }
};

// Finds each entry, and no id for it.
struct ForgetfulDictionary : AcDbDictionary {
    using AcDbDictionary::getAt;
    Acad::ErrorStatus getAt(const ACHAR*, AcDbObjectId& id) const override {
        id.setNull();
        return Acad::eOk;
    }
};

class NodCdbRefusals : public testing::Test {
protected:
    NodCdbRefusals() { EXPECT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE); }

    StoreDrawing drawing;
    NodCdb cdb{&drawing.db};
};

} // namespace

TEST_F(NodCdbRefusals, AKeyThatTakesNoRecordFailsTheWriteWithTheHostsStatus) {
    auto* const key = new RefusingDictionary;
    const AcDbObjectId keyId = putObject(subDictionary(drawing.base, L"3"), L"5", key);
    key->manner = RefusingDictionary::kRefuses;
    ReportRecorder recorder;
    EXPECT_EQ(cdb.write(3, 5, "x", 1, kSameRecord), CD_ERR_FAILED);
    EXPECT_EQ(recorder.conditions(), (Texts{"es == Acad::eOk", "!recordId.isNull()"}));
    ASSERT_EQ(recorder.at(0).values.size(), 1u);
    EXPECT_EQ(recorder.at(0).values[0].name, "es");
    EXPECT_TRUE(namesOf(keyId).empty());
    key->manner = RefusingDictionary::kTakes;
    EXPECT_EQ(cdb.write(3, 5, "x", 1, kSameRecord), CD_ERR_NONE);
}

TEST_F(NodCdbRefusals, ARecordWhoseIdIsNotToldCountsAsRefused) {
    auto* const key = new RefusingDictionary;
    putObject(subDictionary(drawing.base, L"3"), L"5", key);
    key->manner = RefusingDictionary::kHidesTheId;
    ReportRecorder recorder;
    EXPECT_EQ(cdb.write(3, 5, "x", 1, kSameRecord), CD_ERR_FAILED);
    EXPECT_EQ(recorder.conditions(), Texts{"!recordId.isNull()"});
}

TEST_F(NodCdbRefusals, AnEntryWithoutAnIdIsReportedAndFailsTheRead) {
    putObject(subDictionary(drawing.base, L"3"), L"5", new ForgetfulDictionary);
    ReportRecorder recorder;
    char buffer[4];
    std::size_t len = sizeof buffer;
    EXPECT_EQ(cdb.read(3, 5, buffer, len, kFirstRecord), CD_ERR_FAILED);
    EXPECT_EQ(recorder.conditions(), (Texts{"!recordId.isNull()", "oldrec"}));
}

TEST_F(NodCdbRefusals, AGroupThatTakesNoKeyLosesTheOldOneAndTheWriteFindsNone) {
    auto* const group = new RefusingDictionary;
    const AcDbObjectId groupId = putObject(drawing.base, L"3", group);
    ASSERT_EQ(cdb.write(3, 5, "old", 3, kFirstRecord), CD_ERR_NONE);
    ASSERT_EQ(cdb.write(3, 6, "x", 1, kFirstRecord), CD_ERR_NONE);
    group->manner = RefusingDictionary::kRefuses;
    ReportRecorder recorder;
    EXPECT_EQ(cdb.write(3, 5, "new", 3, kFirstRecord), CD_ERR_NOTFOUND);
    EXPECT_EQ(recorder.size(), 0u) << "the host has a text for its status";
    EXPECT_EQ(namesOf(groupId), Names{L"6"}) << "a first write deletes the key before it makes it anew";
}

// A default entry is found under every name, and is taken out under none.
TEST_F(NodCdbRefusals, AGroupThatItsFatherDoesNotLetGoIsNotRemoved) {
    const AcDbObjectId named = subDictionary(drawing.kelmoran, L"DEFAULT");
    auto* const base = new AcDbDictionaryWithDefault;
    const AcDbObjectId elsewhere = subDictionary(drawing.kelmoran, L"elsewhere");
    ASSERT_EQ(base->setDefaultId(elsewhere), Acad::eOk);
    putObject(named, L"CDBASE", base);
    NodCdb store(&drawing.db);
    ASSERT_EQ(store.open(L"DEFAULT", kSharedLocking), CD_ERR_NONE);
    ReportRecorder recorder;
    EXPECT_EQ(store.del(7, -1), CD_ERR_REMOVE);
    EXPECT_EQ(recorder.size(), 0u) << "the host has a text for its status";
    EXPECT_FALSE(elsewhere.isErased());
}
