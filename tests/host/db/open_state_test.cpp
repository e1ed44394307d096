#include "db_fixture.h"
#include "embedded/abort.h"

#include <stdexcept>

namespace {

using OpenState = DbFixture;

TEST_F(OpenState, ReadersAreCountedAndTheLastOneLetsAWriterIn) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* first = nullptr;
    AcDbObject* second = nullptr;
    AcDbObject* writer = nullptr;
    ASSERT_EQ(acdbOpenObject(first, id), Acad::eOk);
    ASSERT_EQ(acdbOpenObject(second, id), Acad::eOk);
    EXPECT_EQ(first, second);
    EXPECT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_EQ(writer, nullptr);
    EXPECT_EQ(first->close(), Acad::eOk);
    EXPECT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_EQ(second->close(), Acad::eOk);
    ASSERT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(acdbOpenObject(first, id), Acad::eWasOpenForWrite);
    EXPECT_EQ(acdbOpenObject(second, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
    EXPECT_EQ(writer->close(), Acad::eOk);
    EXPECT_EQ(writer->close(), Acad::eNotOpenForRead);
}

TEST_F(OpenState, The257thReaderIsRefused) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* object = nullptr;
    for (int i = 0; i < 256; ++i)
        ASSERT_EQ(acdbOpenObject(object, id), Acad::eOk) << i;
    AcDbObject* refused = nullptr;
    EXPECT_EQ(acdbOpenObject(refused, id), Acad::eAtMaxReaders);
    for (int i = 0; i < 256; ++i)
        ASSERT_EQ(object->close(), Acad::eOk) << i;
    EXPECT_EQ(object->close(), Acad::eNotOpenForRead);
}

TEST_F(OpenState, UpgradeNeedsToBeTheOnlyReader) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* one = nullptr;
    AcDbObject* other = nullptr;
    ASSERT_EQ(acdbOpenObject(one, id), Acad::eOk);
    ASSERT_EQ(acdbOpenObject(other, id), Acad::eOk);
    EXPECT_EQ(one->upgradeOpen(), Acad::eHadMultipleReaders);
    other->close();
    EXPECT_EQ(one->upgradeOpen(), Acad::eOk);
    EXPECT_TRUE(one->isWriteEnabled());
    EXPECT_EQ(one->downgradeOpen(), Acad::eOk);
    EXPECT_FALSE(one->isWriteEnabled());
    EXPECT_TRUE(one->isReadEnabled());
    EXPECT_EQ(one->downgradeOpen(), Acad::eNotOpenForWrite);
    one->close();
    EXPECT_EQ(one->upgradeOpen(), Acad::eNotOpenForRead);
}

TEST_F(OpenState, NotifyStandsBesideReadersAndBecomesWriteWhenNobodyReads) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* reader = nullptr;
    AcDbObject* told = nullptr;
    AcDbObject* again = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, id), Acad::eOk);
    ASSERT_EQ(acdbOpenObject(told, id, AcDb::kForNotify), Acad::eOk);
    EXPECT_TRUE(told->isNotifyEnabled());
    EXPECT_EQ(acdbOpenObject(again, id, AcDb::kForNotify), Acad::eWasOpenForNotify);
    bool wasWritable = true;
    EXPECT_EQ(told->upgradeFromNotify(wasWritable), Acad::eWasOpenForRead);
    reader->close();
    EXPECT_EQ(told->upgradeFromNotify(wasWritable), Acad::eOk);
    EXPECT_FALSE(wasWritable);
    EXPECT_TRUE(told->isWriteEnabled());
    EXPECT_EQ(told->downgradeToNotify(wasWritable), Acad::eOk);
    EXPECT_FALSE(told->isWriteEnabled());
    EXPECT_EQ(told->close(), Acad::eOk);
    EXPECT_FALSE(told->isNotifyEnabled());
}

TEST_F(OpenState, ANullIdAndAnIdOfAnEndedDrawingAreRefused) {
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenObject(object, AcDbObjectId()), Acad::eNullObjectId);
    const AcDbObjectId id = put(L"A", L"a");
    const AcDbHandle handle = id.handle();
    EXPECT_TRUE(id.isValid());
    m_database.reset();
    EXPECT_FALSE(id.isValid());
    EXPECT_FALSE(id.isNull());
    EXPECT_EQ(id.handle(), handle);
    EXPECT_EQ(id.database(), nullptr);
    EXPECT_EQ(id.objectClass(), nullptr);
    EXPECT_EQ(acdbOpenObject(object, id), Acad::eInvalidInput);
    EXPECT_EQ(object, nullptr);
}

TEST_F(OpenState, WritingAnObjectThatIsOnlyReadEndsInAbort) {
    const AcDbObjectId id = put(L"A", L"a");
    TestRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, id), Acad::eOk);
    auto before = embedded::setAbortHandler(
        [](const std::wstring& text) { throw std::runtime_error(std::string(text.begin(), text.end())); });
    EXPECT_THROW(record->setText(L"b"), std::runtime_error);
    EXPECT_EQ(record->text(), L"a");
    record->close();
    EXPECT_THROW(record->text(), std::runtime_error);
    embedded::setAbortHandler(before);
}

TEST_F(OpenState, AnErasedObjectOpensOnlyWhenAskedFor) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(object->erase(), Acad::eOk);
    EXPECT_EQ(object->erase(), Acad::eWasErased);
    object->close();
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(acdbOpenObject(object, id), Acad::eWasErased);
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(object->erase(false), Acad::eOk);
    EXPECT_EQ(object->erase(false), Acad::eWasNotErased);
    object->close();
    EXPECT_FALSE(id.isErased());
}

TEST_F(OpenState, WithTheHistoryDroppedAnErasedObjectIsGoneForGood) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    object->erase();
    object->close();
    embedded::forgetHistory(*m_database);
    EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead, true), Acad::ePermanentlyErased);
    EXPECT_EQ(static_cast<int>(Acad::ePermanentlyErased), 81);
    // Its dictionary still names it: whoever opens the entry is told.
    AcDbDictionary* dictionary = open(AcDb::kForRead);
    AcDbObjectId found;
    EXPECT_EQ(dictionary->getAt(L"A", found), Acad::eOk);
    EXPECT_EQ(found, id);
    dictionary->close();
}

TEST_F(OpenState, IdsOrderByHandleInsideADrawingAndByDrawing) {
    const AcDbObjectId a = put(L"A", L"a");
    const AcDbObjectId b = put(L"B", L"b");
    AcDbDatabase other(true);
    EXPECT_TRUE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_FALSE(a < a);
    EXPECT_TRUE(AcDbObjectId() < a);
    EXPECT_TRUE(b < other.namedObjectsDictionaryId());
}

TEST_F(OpenState, TheClassOfAnotherKindIsRefusedAndLeavesTheObjectClosed) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbDictionary* dictionary = nullptr;
    EXPECT_EQ(acdbOpenObject(dictionary, id), Acad::eNotThatKindOfClass);
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    object->close();
}

} // namespace
