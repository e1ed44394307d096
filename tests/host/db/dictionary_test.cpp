#include "acutmem.h"
#include "db_fixture.h"

namespace {

using Dictionary = DbFixture;
using Content = std::vector<std::pair<std::wstring, std::wstring>>;

TEST_F(Dictionary, NamesKeepTheirLettersAndIgnoreCase) {
    const AcDbObjectId id = put(L"Größe", L"a");
    AcDbDictionary* dictionary = open(AcDb::kForRead);
    AcDbObjectId found;
    EXPECT_EQ(dictionary->getAt(L"GRÖßE", found), Acad::eOk);
    EXPECT_EQ(found, id);
    ACHAR* name = nullptr;
    EXPECT_EQ(dictionary->nameAt(id, name), Acad::eOk);
    EXPECT_STREQ(name, L"Größe");
    acutDelBuffer(name);
    EXPECT_EQ(dictionary->getAt(L"Grosse", found), Acad::eKeyNotFound);
    EXPECT_TRUE(found.isNull());
    EXPECT_EQ(static_cast<int>(Acad::eKeyNotFound), 22);
    dictionary->close();
}

TEST_F(Dictionary, ASecondObjectUnderANameErasesTheFirst) {
    const AcDbObjectId first = put(L"A", L"1");
    put(L"B", L"b");
    const AcDbObjectId second = put(L"a", L"2");
    EXPECT_TRUE(first.isErased());
    EXPECT_FALSE(second.isErased());
    EXPECT_EQ(content(), (Content{{L"A", L"2"}, {L"B", L"b"}}));
}

TEST_F(Dictionary, AnErasedEntryIsHiddenUntilItComesBack) {
    const AcDbObjectId id = put(L"A", L"a");
    put(L"B", L"b");
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    object->erase();
    EXPECT_EQ(content(), (Content{{L"B", L"b"}}));
    AcDbDictionary* dictionary = open(AcDb::kForRead);
    EXPECT_EQ(dictionary->numEntries(), 1u);
    EXPECT_FALSE(dictionary->has(L"A"));
    dictionary->close();
    object->erase(false);
    object->close();
    EXPECT_EQ(content(), (Content{{L"A", L"a"}, {L"B", L"b"}}));
}

TEST_F(Dictionary, RemovingAnEntryLeavesItsObjectAlone) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    AcDbObjectId removed;
    EXPECT_EQ(dictionary->remove(L"A", removed), Acad::eOk);
    EXPECT_EQ(removed, id);
    EXPECT_EQ(dictionary->remove(L"A", removed), Acad::eKeyNotFound);
    EXPECT_TRUE(removed.isNull());
    EXPECT_EQ(dictionary->remove(id), Acad::eKeyNotFound);
    dictionary->close();
    EXPECT_FALSE(id.isErased());
}

TEST_F(Dictionary, ErasingItTakesItsEntriesWithItAndBringsThemBack) {
    const AcDbObjectId id = put(L"A", L"a");
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    EXPECT_EQ(dictionary->erase(), Acad::eOk);
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(dictionary->erase(false), Acad::eOk);
    EXPECT_FALSE(id.isErased());
    dictionary->close();
}

TEST_F(Dictionary, EmptyNamesAndForeignObjectsAreRefused) {
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    auto record = std::make_unique<TestRecord>(L"x");
    AcDbObjectId id;
    EXPECT_EQ(dictionary->setAt(L"", record.get(), id), Acad::eInvalidKey);
    EXPECT_EQ(dictionary->setAt(nullptr, record.get(), id), Acad::eInvalidKey);
    EXPECT_EQ(dictionary->setAt(L"A", nullptr, id), Acad::eInvalidInput);
    AcDbDatabase other(true);
    AcDbDictionary* foreign = nullptr;
    ASSERT_EQ(other.getNamedObjectsDictionary(foreign, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(dictionary->setAt(L"A", foreign, id), Acad::eWrongDatabase);
    foreign->close();
    dictionary->close();
}

TEST_F(Dictionary, ANewNameKeepsTheEntrysPlace) {
    put(L"A", L"a");
    put(L"B", L"b");
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    EXPECT_EQ(dictionary->setName(L"A", L"B"), Acad::eDuplicateKey);
    EXPECT_EQ(dictionary->setName(L"Z", L"C"), Acad::eKeyNotFound);
    EXPECT_EQ(dictionary->setName(L"a", L"C"), Acad::eOk);
    dictionary->close();
    EXPECT_EQ(content(), (Content{{L"C", L"a"}, {L"B", L"b"}}));
}

TEST_F(Dictionary, AWalkSurvivesTheRemovalOfEveryEntry) {
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < 200; ++i)
        ids.push_back(put(std::to_wstring(i).c_str(), L"x"));
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator());
    std::vector<AcDbObjectId> walked;
    while (!it->done()) {
        const AcDbObjectId id = it->objectId();
        walked.push_back(id);
        EXPECT_EQ(dictionary->remove(id), Acad::eOk);
        it->next();
    }
    EXPECT_EQ(walked, ids);
    EXPECT_EQ(dictionary->numEntries(), 0u);
    dictionary->close();
}

TEST_F(Dictionary, WithDefaultAnswersAnUnknownNameWithItsDefault) {
    AcDbDictionary* dictionary = open(AcDb::kForWrite);
    auto* withDefault = new AcDbDictionaryWithDefault;
    AcDbObjectId id;
    ASSERT_EQ(dictionary->setAt(L"D", withDefault, id), Acad::eOk);
    auto* record = new TestRecord(L"normal");
    AcDbObjectId normal;
    ASSERT_EQ(withDefault->setAt(L"Normal", record, normal), Acad::eOk);
    record->close();
    withDefault->setDefaultId(normal);
    AcDbObjectId found;
    EXPECT_EQ(withDefault->getAt(L"Other", found), Acad::eOk);
    EXPECT_EQ(found, normal);
    withDefault->close();
    dictionary->close();
}

} // namespace
