#pragma once

#include "db/database_core.h"
#include "dbdict.h"
#include "dbsymtb.h"
#include "drawing_files.h"
#include "embedded/host_start.h"
#include "embedded/inventory.h"
#include "embedded/session.h"
#include "filed_things.h"

#include <memory>

// Drawings with objects of the test's own classes.
class ThingFixture : public FolderFixture {
protected:
    void SetUp() override {
        embedded::startHost();
        registerThings();
        filingFaults() = {};
    }
    void TearDown() override {
        filingFaults() = {};
        registerThings();
    }

    template <class T>
    static T* made(const std::wstring& text) {
        auto* thing = new T;
        thing->fields.text = text;
        thing->fields.bytes = {0, 1, 2, 0xFF};
        thing->fields.point = AcGePoint3d(1.0, 0.0, -2.5);
        return thing;
    }

    // Puts an object into the named object dictionary and closes it.
    static AcDbObjectId put(AcDbDatabase& database, const wchar_t* name, AcDbObject* object) {
        AcDbDictionary* named = nullptr;
        AcDbObjectId id;
        EXPECT_EQ(database.getNamedObjectsDictionary(named, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(named->setAt(name, object, id), Acad::eOk);
        object->close();
        named->close();
        return id;
    }

    static AcDbObjectId find(AcDbDatabase& database, const wchar_t* name) {
        AcDbDictionary* named = nullptr;
        AcDbObjectId id;
        EXPECT_EQ(database.getNamedObjectsDictionary(named, AcDb::kForRead), Acad::eOk);
        EXPECT_EQ(named->getAt(name, id), Acad::eOk) << platform::toUtf8(name);
        named->close();
        return id;
    }

    // Appends an entity to model space and closes it.
    static AcDbObjectId append(AcDbDatabase& database, AcDbEntity* entity) {
        AcDbBlockTableRecord* space = nullptr;
        AcDbObjectId id;
        EXPECT_EQ(acdbOpenObject(space, database.core().roots.modelSpace, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        space->close();
        return id;
    }

    void save(AcDbDatabase& database, const wchar_t* name) const {
        ASSERT_EQ(database.saveAs(path(name).c_str()), Acad::eOk) << embedded::lastFileError();
    }

    std::unique_ptr<AcDbDatabase> read(const wchar_t* name) const { return readFile(path(name)); }

    static std::unique_ptr<AcDbDatabase> readFile(const std::wstring& file) {
        auto database = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(database->readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
        return database;
    }

    static std::string bytesOf(const embedded::dwg::Bytes& file, AcDbObjectId id) {
        return objectsOf(file).at(static_cast<Adesk::UInt64>(id.handle()));
    }
};
