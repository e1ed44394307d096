#include "dbx/doc/object_logger.h"

#include "dbdict.h"
#include "dbmain.h"
#include "embedded/console.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class ObjectLoggerTest : public testing::Test {
protected:
    ObjectLoggerTest() { acdbHostApplicationServices()->setWorkingDatabase(&m_db); }
    ~ObjectLoggerTest() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    static std::wstring dump() {
        std::wstring printed;
        const auto before = embedded::setConsoleSink([&](const std::wstring& text) { printed += text; });
        orv::ObjectLogger::instance().dump();
        embedded::setConsoleSink(before);
        return printed;
    }

    orv::ObjectLogger& m_logger = orv::ObjectLogger::instance();
    AcDbDatabase m_db{true};
    AcDbObjectId m_id = m_db.layerTableId();
};

TEST_F(ObjectLoggerTest, AnEmptyMapPrintsOnlyTheFirstLine) {
    EXPECT_EQ(dump(), L"orv::ObjectLogger: 0 entries\n");
}

TEST_F(ObjectLoggerTest, TwoOpensAndOneCloseAreCounted) {
    m_logger.subOpen(m_id, AcDb::kForRead, AcDbDictionary::desc());
    m_logger.subOpen(m_id, AcDb::kForWrite, AcDbDictionary::desc());
    m_logger.subClose(m_id, AcDbDictionary::desc());
    EXPECT_EQ(dump(), L"orv::ObjectLogger: 1 entries\n"
                      L"  2 opened    1 closed    class 'AcDbDictionary'\n");
}

TEST_F(ObjectLoggerTest, AnObjectWithoutAClassIsUnknown) {
    m_logger.subOpen(m_id, AcDb::kForNotify, nullptr);
    EXPECT_EQ(dump(), L"orv::ObjectLogger: 1 entries\n  1 opened    0 closed    class 'unknown'\n");
}

TEST_F(ObjectLoggerTest, AClassThatComesWithTheCloseIsPrinted) {
    m_logger.subOpen(m_id, AcDb::kForRead, nullptr);
    m_logger.subClose(m_id, AcDbDictionary::desc());
    EXPECT_EQ(dump(), L"orv::ObjectLogger: 1 entries\n"
                      L"  1 opened    1 closed    class 'AcDbDictionary'\n");
}

TEST_F(ObjectLoggerTest, ALaterClassDoesNotReplaceTheFirst) {
    m_logger.subOpen(m_id, AcDb::kForRead, AcDbDictionary::desc());
    m_logger.subClose(m_id, AcDbEntity::desc());
    EXPECT_NE(dump().find(L"class 'AcDbDictionary'"), std::wstring::npos);
}

TEST_F(ObjectLoggerTest, TheWriteFlagIsSetByTheFirstOpenForWriteAndStays) {
    EXPECT_EQ(m_logger.find(m_id), nullptr);
    m_logger.subOpen(m_id, AcDb::kForRead, nullptr);
    m_logger.subOpen(m_id, AcDb::kForNotify, nullptr);
    m_logger.subClose(m_id, nullptr);
    ASSERT_NE(m_logger.find(m_id), nullptr);
    EXPECT_EQ(m_logger.find(m_id)->write, 0);
    m_logger.subOpen(m_id, AcDb::kForWrite, nullptr);
    EXPECT_EQ(m_logger.find(m_id)->write, 1);
    m_logger.subOpen(m_id, AcDb::kForRead, nullptr);
    m_logger.subClose(m_id, nullptr);
    EXPECT_EQ(m_logger.find(m_id)->write, 1);
    EXPECT_EQ(m_logger.find(m_id)->opened, 4u);
    EXPECT_EQ(m_logger.find(m_id)->closed, 2u);
}

TEST_F(ObjectLoggerTest, LinesComeInTheOrderOfTheIds) {
    m_logger.subClose(m_db.namedObjectsDictionaryId(), AcDbDictionary::desc());
    m_logger.subOpen(m_db.blockTableId(), AcDb::kForRead, AcDbEntity::desc());
    ASSERT_TRUE(m_db.blockTableId() < m_db.namedObjectsDictionaryId());
    EXPECT_EQ(dump(), L"orv::ObjectLogger: 2 entries\n"
                      L"  1 opened    0 closed    class 'AcDbEntity'\n"
                      L"  0 opened    1 closed    class 'AcDbDictionary'\n");
}

TEST_F(ObjectLoggerTest, DrawingsKeepSeparateTables) {
    m_logger.subOpen(m_id, AcDb::kForRead, nullptr);
    AcDbDatabase other(true);
    acdbHostApplicationServices()->setWorkingDatabase(&other);
    m_logger.subOpen(other.layerTableId(), AcDb::kForRead, nullptr);
    m_logger.subOpen(other.blockTableId(), AcDb::kForRead, nullptr);
    EXPECT_EQ(dump().substr(0, 29), L"orv::ObjectLogger: 2 entries\n");
    m_logger.clear();
    EXPECT_EQ(dump(), L"orv::ObjectLogger: 0 entries\n");
    acdbHostApplicationServices()->setWorkingDatabase(&m_db);
    EXPECT_EQ(dump().substr(0, 29), L"orv::ObjectLogger: 1 entries\n");
}

} // namespace
