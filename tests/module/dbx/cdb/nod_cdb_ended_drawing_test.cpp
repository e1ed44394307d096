// A store whose drawing has ended: with no other, with another one that is worked in, and with another one
// that stands in its very place.
#include "dbx/cdb/nod_cdb.h"

#include "dbx/cdb/read_blob.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace orv::cdb;
using namespace testing_support;
using Names = std::vector<std::wstring>;

namespace {

enum class Other { kNone, kBeside, kInItsPlace };

std::string nameOf(Other other) {
    return other == Other::kNone ? "none" : other == Other::kBeside ? "beside" : "inItsPlace";
}

class NodCdbEndedDrawing : public testing::TestWithParam<Other> {
protected:
    NodCdbEndedDrawing() {
        EXPECT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
        EXPECT_EQ(cdb.write(1, 1, "gone", 4, kFirstRecord), CD_ERR_NONE);
        if (GetParam() == Other::kBeside)
            other = &beside.emplace();
        drawing.reset();
        if (GetParam() == Other::kInItsPlace)
            other = &drawing.emplace();
        if (other == nullptr)
            return;
        acdbHostApplicationServices()->setWorkingDatabase(&other->db);
        NodCdb store(&other->db);
        EXPECT_EQ(store.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
        EXPECT_EQ(store.write(1, 1, "other", 5, kFirstRecord), CD_ERR_NONE);
    }

    // What a call reports.
    template <class Call>
    static Texts reportsOf(Call call) {
        ReportRecorder recorder;
        call();
        return recorder.conditions();
    }
    void expectTheOtherAsItWas() {
        if (other == nullptr)
            return;
        EXPECT_EQ(namesOf(other->base), Names{L"1"});
        EXPECT_EQ(namesOf(entryOf(other->base, L"1")), Names{L"1"});
        NodCdb store(&other->db);
        ASSERT_EQ(store.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
        const orv::Blob blob = readBlob(store, 1, 1, kFirstRecord);
        EXPECT_EQ(std::string(blob.data(), blob.data() + blob.size()), "other");
    }

    std::optional<StoreDrawing> drawing{std::in_place};
    NodCdb cdb{&drawing->db};
    std::optional<StoreDrawing> beside;
    StoreDrawing* other = nullptr; // has a store of the same name
};

} // namespace

TEST_P(NodCdbEndedDrawing, ReadFindsNothing) {
    EXPECT_FALSE(cdb.isOpen());
    char buffer[8];
    std::size_t len = sizeof buffer;
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.read(1, 1, buffer, len, kFirstRecord), CD_ERR_NOTFOUND); }),
              (Texts{"isOpen()", "pDictFather"}));
    EXPECT_EQ(reportsOf([&] { EXPECT_TRUE(readBlob(cdb, 1, 1, kFirstRecord).is_empty()); }),
              (Texts{"cdb.isOpen()", "isOpen()", "pDictFather"}));
}

TEST_P(NodCdbEndedDrawing, WriteStoresNothingAnywhere) {
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.write(2, 2, "a", 1, kFirstRecord), CD_ERR_NOTFOUND); }),
              (Texts{"isOpen()", "isOpen()", "isOpen()", "pDictFather", "pDictFather"}));
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.write(2, 2, "a", 1, kNextRecord), CD_ERR_NOTFOUND); }),
              (Texts{"isOpen()", "isOpen()", "pDictFather"}));
    expectTheOtherAsItWas();
}

TEST_P(NodCdbEndedDrawing, DelRemovesNothingAnywhere) {
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.del(1, 1), CD_ERR_NOTFOUND); }),
              (Texts{"isOpen()", "pDictFather"}));
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.del(1, -1), CD_ERR_FAILED); }), (Texts{"isOpen()", "cdbDict"}));
    expectTheOtherAsItWas();
}

TEST_P(NodCdbEndedDrawing, ListsNoKeys) {
    std::set<int> keys;
    std::vector<int> listed = {7};
    int kwh = 1;
    int kwl = -1;
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.getKeysForKwh(1, keys), CD_ERR_NOTFOUND); }),
              Texts{"pDictFather"});
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.getKeysForKwhAndRange(1, keys, 0, 9), CD_ERR_NOTFOUND); }),
              Texts{"pDictFather"});
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.listKeysForKwh(1, listed), CD_ERR_NOTFOUND); }),
              Texts{"pDictFather"});
    EXPECT_EQ(reportsOf([&] { EXPECT_EQ(cdb.getNextKey(kwh, kwl), CD_ERR_NOTFOUND); }), Texts{"pDictFather"});
    EXPECT_EQ(reportsOf([&] { EXPECT_FALSE(cdb.exists(1, 1)); }), Texts{"pDictFather"});
    EXPECT_TRUE(keys.empty());
    EXPECT_TRUE(listed.empty());
    EXPECT_EQ(kwl, -1);
}

TEST_P(NodCdbEndedDrawing, OpenTakesTheDrawingThatIsWorkedInWithAReport) {
    const bool isOther = other != nullptr;
    ReportRecorder recorder;
    EXPECT_EQ(cdb.open(L"ASDWG", kSharedLocking), isOther ? CD_ERR_NONE : CD_ERR_FAILED);
    EXPECT_EQ(recorder.conditions(), Texts(isOther ? 1 : 2, "m_db"));
    EXPECT_EQ(cdb.isOpen(), isOther);
    EXPECT_EQ(cdb._dbId(), isOther ? other->named : AcDbObjectId());
}

TEST_P(NodCdbEndedDrawing, CloseEndsQuietly) {
    ReportRecorder recorder;
    EXPECT_EQ(cdb.close(), CD_ERR_NONE);
    EXPECT_TRUE(cdb._dbId().isNull());
    EXPECT_EQ(recorder.size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Others, NodCdbEndedDrawing,
                         testing::Values(Other::kNone, Other::kBeside, Other::kInItsPlace),
                         [](const auto& tested) { return nameOf(tested.param); });

TEST(NodCdbEnded, AStoreThatWasNeverFoundOpensTheDrawingThatIsWorkedIn) {
    auto ended = std::make_unique<StoreDrawing>();
    NodCdb cdb(&ended->db);
    EXPECT_EQ(cdb.open(L"UNKNOWN", kSharedLocking), CD_ERR_NOTFOUND);
    StoreDrawing next(L"UNKNOWN");
    ended.reset();
    acdbHostApplicationServices()->setWorkingDatabase(&next.db);
    ReportRecorder recorder;
    EXPECT_EQ(cdb.open(L"UNKNOWN", kSharedLocking), CD_ERR_NONE);
    EXPECT_EQ(recorder.conditions(), Texts{"m_db"});
    EXPECT_EQ(cdb._dbId(), next.named);
}
