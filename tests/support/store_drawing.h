#pragma once

#include "dbapserv.h"
#include "dbdict.h"
#include "dbmain.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace testing_support {

// The dictionary under a name, made if it is missing; its id.
inline AcDbObjectId subDictionary(AcDbObjectId father, const wchar_t* name) {
    AcDbDictionary* dict = nullptr;
    EXPECT_EQ(acdbOpenObject(dict, father, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    if (dict->getAt(name, id) != Acad::eOk) {
        auto* const added = new AcDbDictionary;
        EXPECT_EQ(dict->setAt(name, added, id), Acad::eOk);
        added->close();
    }
    dict->close();
    return id;
}

// Null if there is none, or the father is null.
inline AcDbObjectId entryOf(AcDbObjectId father, const wchar_t* name) {
    AcDbObjectId id;
    AcDbDictionary* dict = nullptr;
    if (acdbOpenObject(dict, father, AcDb::kForRead) != Acad::eOk)
        return id;
    dict->getAt(name, id);
    dict->close();
    return id;
}

inline AcDbObjectId entryAt(AcDbObjectId father, const std::vector<std::wstring>& path) {
    for (const std::wstring& name : path)
        father = entryOf(father, name.c_str());
    return father;
}

// The names of a dictionary in its order.
inline std::vector<std::wstring> namesOf(AcDbObjectId id) {
    std::vector<std::wstring> names;
    AcDbDictionary* dict = nullptr;
    if (acdbOpenObject(dict, id, AcDb::kForRead) != Acad::eOk)
        return names;
    AcDbDictionaryIterator* const entries = dict->newIterator();
    for (; !entries->done(); entries->next())
        names.push_back(entries->name());
    delete entries;
    dict->close();
    return names;
}

// Puts a fresh object under a name, and closes it.
inline AcDbObjectId putObject(AcDbObjectId father, const wchar_t* name, AcDbObject* object) {
    AcDbDictionary* dict = nullptr;
    EXPECT_EQ(acdbOpenObject(dict, father, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(dict->setAt(name, object, id), Acad::eOk);
    object->close();
    dict->close();
    return id;
}

inline void removeEntry(AcDbObjectId father, const wchar_t* name) {
    AcDbDictionary* dict = nullptr;
    ASSERT_EQ(acdbOpenObject(dict, father, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(dict->remove(name), Acad::eOk);
    dict->close();
}

inline void eraseObject(AcDbObjectId id) {
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(object->erase(), Acad::eOk);
    object->close();
}

// A drawing with an empty store, which is the one that is worked in.
class StoreDrawing {
public:
    explicit StoreDrawing(const wchar_t* store = L"ASDWG") : db(true) {
        acdbHostApplicationServices()->setWorkingDatabase(&db);
        kelmoran = subDictionary(db.namedObjectsDictionaryId(), L"KELMORAN");
        named = subDictionary(kelmoran, store);
        base = subDictionary(named, L"CDBASE");
    }
    ~StoreDrawing() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    AcDbDatabase db;
    AcDbObjectId kelmoran;
    AcDbObjectId named;
    AcDbObjectId base;
};

} // namespace testing_support
