#pragma once

#include "dbdict.h"
#include "embedded/session.h"
#include "test_record.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

// A fresh drawing with a dictionary "TEST" in its named object dictionary.
class DbFixture : public ::testing::Test {
protected:
    void SetUp() override {
        registerTestRecord();
        m_database = std::make_unique<AcDbDatabase>(true);
        AcDbDictionary* named = nullptr;
        ASSERT_EQ(m_database->getNamedObjectsDictionary(named, AcDb::kForWrite), Acad::eOk);
        auto* dictionary = new AcDbDictionary;
        ASSERT_EQ(named->setAt(L"TEST", dictionary, m_dictionary), Acad::eOk);
        dictionary->close();
        named->close();
        embedded::forgetHistory(*m_database);
    }

    AcDbDictionary* open(AcDb::OpenMode mode) {
        AcDbDictionary* dictionary = nullptr;
        EXPECT_EQ(acdbOpenObject(dictionary, m_dictionary, mode), Acad::eOk);
        return dictionary;
    }

    AcDbObjectId put(const wchar_t* name, const wchar_t* text) {
        AcDbDictionary* dictionary = open(AcDb::kForWrite);
        auto* record = new TestRecord(text);
        AcDbObjectId id;
        EXPECT_EQ(dictionary->setAt(name, record, id), Acad::eOk);
        EXPECT_EQ(record->close(), Acad::eOk);
        dictionary->close();
        return id;
    }

    // Name and text of each visible entry, in the order of the walk.
    std::vector<std::pair<std::wstring, std::wstring>> content() {
        std::vector<std::pair<std::wstring, std::wstring>> entries;
        AcDbDictionary* dictionary = open(AcDb::kForRead);
        std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator());
        for (; !it->done(); it->next()) {
            TestRecord* record = nullptr;
            EXPECT_EQ(acdbOpenObject(record, it->objectId()), Acad::eOk);
            entries.emplace_back(it->name(), record->text());
            record->close();
        }
        dictionary->close();
        return entries;
    }

    std::unique_ptr<AcDbDatabase> m_database;
    AcDbObjectId m_dictionary;
};
