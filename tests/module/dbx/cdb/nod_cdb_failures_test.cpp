// Stores whose drawing is in the way: held by somebody else, gone for good, closed, or with a listener that
// throws.
#include "dbx/cdb/nod_cdb.h"

#include "app/log.h"
#include "embedded/session.h"
#include "platform/files.h"
#include "platform/text.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

using namespace orv::cdb;
using namespace testing_support;
using Names = std::vector<std::wstring>;

namespace {

// Somebody else's open for read.
class Held {
public:
    explicit Held(AcDbObjectId id) { EXPECT_EQ(acdbOpenObject(m_object, id, AcDb::kForRead), Acad::eOk); }
    ~Held() { m_object->close(); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    AcDbObject* m_object = nullptr;
};

class NodCdbFailures : public testing::Test {
protected:
    NodCdbFailures() { EXPECT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE); }

    cd_error_t write(int kwh, int kwl, const std::string& bytes, CdbReadWriteMode mode) {
        return cdb.write(kwh, kwl, bytes.data(), bytes.size(), mode);
    }
    std::string read(int kwh, int kwl, CdbReadWriteMode mode) {
        char buffer[100];
        std::size_t len = sizeof buffer;
        const cd_error_t err = cdb.read(kwh, kwl, buffer, len, mode);
        return err == CD_ERR_NONE ? std::string(buffer, len) : "<" + std::to_string(err) + ">";
    }
    void loseForGood(AcDbObjectId id) {
        eraseObject(id);
        embedded::forgetHistory(drawing.db);
    }

    StoreDrawing drawing;
    NodCdb cdb{&drawing.db};
};

} // namespace

TEST_F(NodCdbFailures, ANewKeyInAGroupThatSomebodyElseReadsIsNotFoundAndNothingIsMade) {
    write(3, 5, "x", kFirstRecord);
    const AcDbObjectId group = entryOf(drawing.base, L"3");
    {
        const Held held(group);
        EXPECT_EQ(write(3, 6, "y", kSameRecord), CD_ERR_NOTFOUND);
    }
    EXPECT_EQ(namesOf(group), Names{L"5"});
}

TEST_F(NodCdbFailures, ANewGroupInAStoreThatSomebodyElseReadsIsNotFoundAndNothingIsMade) {
    {
        const Held held(drawing.base);
        EXPECT_EQ(write(3, 6, "y", kFirstRecord), CD_ERR_NOTFOUND);
        EXPECT_EQ(write(3, 6, "y", kSameRecord), CD_ERR_NOTFOUND);
        EXPECT_EQ(cdb.del(3, 6), CD_ERR_NOTFOUND);
        EXPECT_EQ(cdb.del(3, -1), CD_ERR_FAILED);
    }
    EXPECT_TRUE(namesOf(drawing.base).empty());
    EXPECT_EQ(write(3, 6, "y", kFirstRecord), CD_ERR_NONE);
}

TEST_F(NodCdbFailures, AKeyThatIsGoneForGoodInAGroupThatSomebodyElseReadsStays) {
    write(3, 5, "x", kFirstRecord);
    const AcDbObjectId group = entryOf(drawing.base, L"3");
    loseForGood(entryOf(group, L"5"));
    {
        const Held held(group);
        EXPECT_EQ(write(3, 5, "y", kSameRecord), CD_ERR_NOTFOUND);
        EXPECT_EQ(namesOf(group), Names{L"5"}) << "the stale entry";
    }
    EXPECT_EQ(write(3, 5, "y", kSameRecord), CD_ERR_NONE);
    EXPECT_EQ(read(3, 5, kFirstRecord), "y");
}

TEST_F(NodCdbFailures, ADelOfAKeyThatIsGoneForGoodSucceedsOnce) {
    write(3, 5, "x", kFirstRecord);
    loseForGood(entryAt(drawing.base, {L"3", L"5"}));
    EXPECT_EQ(cdb.del(3, 5), CD_ERR_NONE);
    EXPECT_TRUE(namesOf(entryOf(drawing.base, L"3")).empty());
    EXPECT_EQ(cdb.del(3, 5), CD_ERR_NOTFOUND);
}

TEST_F(NodCdbFailures, AFirstWriteOverAKeyThatIsGoneForGoodReadsBack) {
    write(3, 5, "x", kFirstRecord);
    loseForGood(entryAt(drawing.base, {L"3", L"5"}));
    EXPECT_EQ(write(3, 5, "y", kFirstRecord), CD_ERR_NONE);
    EXPECT_EQ(read(3, 5, kFirstRecord), "y");
}

TEST_F(NodCdbFailures, ARecordThatIsGoneForGoodFailsWithOneReportAndIsWrittenAnew) {
    write(3, 5, "x", kFirstRecord);
    loseForGood(entryAt(drawing.base, {L"3", L"5", L"000000"}));
    ReportRecorder recorder;
    EXPECT_EQ(read(3, 5, kFirstRecord), "<99>");
    EXPECT_EQ(recorder.conditions(), Texts{"oldrec"});
    recorder.clear();
    EXPECT_EQ(write(3, 5, "y", kSameRecord), CD_ERR_NONE);
    EXPECT_EQ(read(3, 5, kFirstRecord), "y");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(NodCdbFailures, AClosedStoreReportsCallByCall) {
    cdb.close();
    char buffer[4];
    std::size_t len = 4;
    std::set<int> keys;
    const auto reportsOf = [](const std::function<void()>& call) {
        ReportRecorder recorder;
        call();
        return recorder.conditions();
    };
    EXPECT_EQ(reportsOf([&] { cdb.read(1, 1, buffer, len, kFirstRecord); }),
              (Texts{"isOpen()", "pDictFather"}));
    EXPECT_EQ(reportsOf([&] { cdb.write(1, 1, "a", 1, kSameRecord); }),
              (Texts{"isOpen()", "isOpen()", "pDictFather"}));
    EXPECT_EQ(reportsOf([&] { cdb.write(1, 1, "a", 1, kFirstRecord); }),
              (Texts{"isOpen()", "isOpen()", "isOpen()", "pDictFather", "pDictFather"}));
    EXPECT_EQ(reportsOf([&] { cdb.del(1, 1); }), (Texts{"isOpen()", "pDictFather"}));
    EXPECT_EQ(reportsOf([&] { cdb.del(1, -1); }), (Texts{"isOpen()", "cdbDict"}));
    EXPECT_EQ(reportsOf([&] { cdb.getKeysForKwh(1, keys); }), Texts{"pDictFather"});
    EXPECT_EQ(reportsOf([&] { cdb.exists(1, 1); }), Texts{"pDictFather"});
}

TEST_F(NodCdbFailures, ThePositionSurvivesAClose) {
    for (const char* const record : {"a", "b", "c"})
        write(1, 1, record, record == std::string("a") ? kFirstRecord : kNextRecord);
    read(1, 1, kFirstRecord);
    EXPECT_EQ(read(1, 1, kNextRecord), "b");
    cdb.close();
    ReportRecorder recorder; // the store has lost its drawing and takes the one that is worked in
    ASSERT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
    EXPECT_EQ(read(1, 1, kNextRecord), "c");
}

namespace {

// Notes whether the store is open when it is heard, and throws if asked to.
struct Witness : orv::ILogListener {
    void onLog(const std::string&, const std::string& channel, orv::LogLevel level,
               const std::string& message) override {
        heard.push_back(channel + " " + std::to_string(static_cast<int>(level)) + " " + message);
        if (store != nullptr)
            sawOpen = sawOpen || store->isOpen();
        if (throws)
            throw std::runtime_error("listener");
    }
    Texts heard;
    const NodCdb* store = nullptr;
    bool sawOpen = false;
    bool throws = false;
};

class NodCdbClosing : public testing::Test {
protected:
    NodCdbClosing() {
        orv::clearLogs();
        orv::addLogListener("cdb.nod", witness);
    }
    ~NodCdbClosing() override { orv::clearLogs(); }
    boost::shared_ptr<Witness> witness = boost::make_shared<Witness>();
};

} // namespace

TEST_F(NodCdbClosing, AListenerFindsTheStoreClosedAndMayThrow) {
    StoreDrawing drawing;
    {
        NodCdb cdb(&drawing.db);
        ASSERT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
        witness->store = &cdb;
        witness->throws = true;
        EXPECT_EQ(cdb.close(), CD_ERR_NONE);
        EXPECT_EQ(witness->heard.size(), 1u);
        EXPECT_FALSE(witness->sawOpen);
        EXPECT_FALSE(cdb.isOpen());
        EXPECT_TRUE(cdb._dbId().isNull());
        witness->store = nullptr;
    }
    EXPECT_EQ(witness->heard.size(), 2u) << "the destructor's own, which threw too";
}

TEST_F(NodCdbClosing, ADrawingWithAFileIsNamed) {
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"closing.dwg");
    {
        StoreDrawing drawing;
        ASSERT_EQ(drawing.db.saveAs(file.c_str()), Acad::eOk);
    }
    AcDbDatabase db(false);
    ASSERT_EQ(db.readDwgFile(file.c_str()), Acad::eOk);
    NodCdb cdb(&db);
    ASSERT_EQ(cdb.open(L"ASDWG", kSharedLocking), CD_ERR_NONE);
    cdb.close();
    const std::string name = platform::toUtf8(file);
    EXPECT_EQ(witness->heard, Texts{"cdb.nod 3 close(current=" + name + "; orig=" + name + ")"});
    platform::removeFile(file);
}

TEST_F(NodCdbClosing, AStoreWithoutADrawingClosesWithABareMessage) {
    NodCdb cdb(nullptr);
    EXPECT_EQ(cdb.close(), CD_ERR_NONE);
    EXPECT_EQ(witness->heard, Texts{"cdb.nod 3 close()"});
}
