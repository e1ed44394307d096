#pragma once

#include "clone_node.h"
#include "dbdict.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "embedded/session.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using Texts = std::vector<std::wstring>;

// Two drawings without history, and what it takes to fill and compare them.
class CloneFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    template <class T>
    static T* open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
        T* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, id, mode, openErased), Acad::eOk);
        return object;
    }
    template <class T, class Change>
    static void change(AcDbObjectId id, Change with) {
        T* object = open<T>(id, AcDb::kForWrite);
        object->assertWriteEnabled();
        with(*object);
        EXPECT_EQ(object->close(), Acad::eOk);
    }

    static AcDbObjectId modelSpace(AcDbDatabase& database);
    // The dictionary at a path below the named object dictionary, made if need be.
    static AcDbObjectId dictionary(AcDbDatabase& database, const Texts& path);
    static AcDbObjectId node(AcDbObjectId dictionary, const wchar_t* name);
    // Owned by the fields of another one.
    static AcDbObjectId ownedNode(AcDbObjectId owner, const wchar_t* text, bool hard = true);
    static AcDbObjectId entity(AcDbObjectId block, const wchar_t* text);
    static AcDbObjectId layer(AcDbDatabase& database, const wchar_t* name, Adesk::UInt16 colour);
    static AcDbObjectId block(AcDbDatabase& database, const wchar_t* name, const Texts& entities);

    static NodeFields fieldsOf(AcDbObjectId id);
    static AcDbObjectId ownerOf(AcDbObjectId id);
    static AcDbObjectId at(AcDbObjectId dictionary, const wchar_t* name);
    static AcDbObjectId record(AcDbObjectId table, const wchar_t* name);
    // Names of a dictionary's entries; texts of a block's entities.
    static Texts names(AcDbObjectId dictionary);
    static Texts texts(AcDbObjectId block);
    // Every live object of a database as one line: handle, class, and what it files with handles for ids.
    static Texts everything(AcDbDatabase& database);

    // The first line that differs; empty if none does.
    static std::wstring difference(const Texts& a, const Texts& b);

    static AcDbObjectIdArray ids(std::initializer_list<AcDbObjectId> all);
    static AcDbObjectId cloneOf(const AcDbIdMapping& mapping, AcDbObjectId key);

    std::unique_ptr<AcDbDatabase> m_from;
    std::unique_ptr<AcDbDatabase> m_to;
};

// A folder of this process's own that goes with the object.
class CloneFolder {
public:
    CloneFolder();
    ~CloneFolder();
    std::wstring file(const wchar_t* name) const;

private:
    std::wstring m_path;
};
