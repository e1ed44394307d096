#pragma once

#include "db/database_core.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "embedded/host_start.h"
#include "embedded/inventory.h"
#include "embedded/session.h"
#include "geplane.h"
#include "host/dwg/drawing_files.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

constexpr double kTestPi = 3.14159265358979323846;

// A fresh drawing, and what is done with entities in it.
class EntityFixture : public FolderFixture {
protected:
    void SetUp() override { m_database = std::make_unique<AcDbDatabase>(true); }

    // Into model space, or another block; closed.
    template <class T>
    AcDbObjectId add(T* entity, AcDbObjectId block = AcDbObjectId()) {
        if (block.isNull())
            block = m_database->core().roots.modelSpace;
        AcDbBlockTableRecord* record = nullptr;
        AcDbObjectId id;
        EXPECT_EQ(acdbOpenObject(record, block, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        record->close();
        return id;
    }

    AcDbObjectId addBlock(const wchar_t* name, const AcGePoint3d& origin = AcGePoint3d::kOrigin) {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(m_database->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
        auto* record = new AcDbBlockTableRecord;
        record->setName(name);
        record->setOrigin(origin);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        table->close();
        return id;
    }

    template <class T>
    static T* open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
        T* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, id, mode, openErased), Acad::eOk);
        return object;
    }

    // Saves, reads again, and finds the same handle there.
    AcDbObjectId reopened(AcDbObjectId id) {
        const AcDbHandle handle = id.handle();
        EXPECT_EQ(m_database->saveAs(path(L"again.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
        m_database = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(m_database->readDwgFile(path(L"again.dwg").c_str()), Acad::eOk)
            << embedded::lastFileError();
        AcDbObjectId again;
        EXPECT_EQ(m_database->getAcDbObjectId(again, false, handle), Acad::eOk);
        return again;
    }

    std::unique_ptr<AcDbDatabase> m_database;
};

inline void expectNear(const AcGePoint3d& found, const AcGePoint3d& expected, double distance = 1.0e-9) {
    EXPECT_LE(found.distanceTo(expected), distance)
        << "(" << found.x << ", " << found.y << ", " << found.z << ") instead of (" << expected.x << ", "
        << expected.y << ", " << expected.z << ")";
}

inline void expectNear(const AcGeVector3d& found, const AcGeVector3d& expected, double distance = 1.0e-9) {
    expectNear(AcGePoint3d::kOrigin + found, AcGePoint3d::kOrigin + expected, distance);
}

inline void expectBox(const AcDbExtents& box, const AcGePoint3d& low, const AcGePoint3d& high,
                      double distance = 1.0e-9) {
    expectNear(box.minPoint(), low, distance);
    expectNear(box.maxPoint(), high, distance);
}

template <class T>
AcDbExtents extentsOf(const T& entity) {
    AcDbExtents box;
    EXPECT_EQ(entity.getGeomExtents(box), Acad::eOk);
    return box;
}
