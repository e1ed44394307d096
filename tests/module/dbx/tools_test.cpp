#include "dbx/tools.h"

#include "dbapserv.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "embedded/user_coordinate_system.h"
#include "orvcore/transaction_manager.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

using testing_support::eraseObject;
using testing_support::ReportRecorder;
using testing_support::Texts;
using testing_support::Values;

namespace {

using Layers = std::set<AcDbLayerTableRecord*>;

class Tools : public testing::Test {
protected:
    Tools() { acdbHostApplicationServices()->setWorkingDatabase(&m_db); }
    ~Tools() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    AcDbObjectId addPoint() {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(m_db.getBlockTable(table, AcDb::kForRead), Acad::eOk);
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
        table->close();
        auto* const point = new AcDbPoint;
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, point), Acad::eOk);
        point->close();
        space->close();
        return id;
    }
    AcDbObjectId addLayer(const wchar_t* name) {
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(m_db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
        auto* const layer = new AcDbLayerTableRecord;
        layer->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, layer), Acad::eOk);
        layer->close();
        table->close();
        return id;
    }
    static std::set<std::wstring> namesOf(const Layers& layers) {
        std::set<std::wstring> names;
        for (const AcDbLayerTableRecord* const layer : layers) {
            const ACHAR* name = nullptr;
            layer->getName(name);
            names.insert(name);
        }
        return names;
    }

    AcDbDatabase m_db{true};
    ReportRecorder m_reports;
};

} // namespace

TEST_F(Tools, GetsAnEntityOpenUntilTheTransactionEnds) {
    const AcDbObjectId id = addPoint();
    {
        ORV_CDBTransactionManager tm(&m_db, false);
        AcDbEntity* const entity = orvGetEntity(tm, id, AcDb::kForWrite, false);
        ASSERT_NE(entity, nullptr);
        EXPECT_EQ(entity->objectId(), id);
        EXPECT_TRUE(entity->isWriteEnabled());
    }
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk) << "it was closed";
    object->close();
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Tools, ADictionaryIsNoEntityAndStaysOpen) {
    ORV_CDBTransactionManager tm(&m_db, false);
    const AcDbObjectId id = m_db.namedObjectsDictionaryId();
    EXPECT_EQ(orvGetEntity(tm, id, AcDb::kForRead, false), nullptr);
    EXPECT_EQ(m_reports.conditions(), Texts{"ent"});
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eWasOpenForRead);
}

TEST_F(Tools, ANullIdReportsTheStatusAndTheMissingObject) {
    ORV_CDBTransactionManager tm(&m_db, false);
    EXPECT_EQ(orvGetEntity(tm, AcDbObjectId(), AcDb::kForRead, false), nullptr);
    EXPECT_EQ(m_reports.conditions(), (Texts{"es == Acad::eOk", "obj"}));
    EXPECT_EQ(m_reports.at(0).values,
              (Values{{"es", std::to_string(static_cast<int>(Acad::eNullObjectId))}}));
    EXPECT_TRUE(m_reports.at(1).values.empty());
}

TEST_F(Tools, AnErasedEntityIsGotOnlyIfAskedFor) {
    const AcDbObjectId id = addPoint();
    eraseObject(id);
    ORV_CDBTransactionManager tm(&m_db, false);
    EXPECT_EQ(orvGetEntity(tm, id, AcDb::kForRead, false), nullptr);
    EXPECT_EQ(m_reports.conditions(), (Texts{"es == Acad::eOk", "obj"}));
    m_reports.clear();
    AcDbEntity* const entity = orvGetEntity(tm, id, AcDb::kForRead, true);
    ASSERT_NE(entity, nullptr);
    EXPECT_TRUE(entity->isErased());
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Tools, GetsAnEntityByItsName) {
    const AcDbObjectId id = addPoint();
    ads_name name;
    ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    ORV_CDBTransactionManager tm(&m_db, false);
    AcDbEntity* const entity = orvGetEntity(tm, name, AcDb::kForRead, false);
    ASSERT_NE(entity, nullptr);
    EXPECT_EQ(entity->objectId(), id);
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Tools, ANameOfNothingIsReportedAndThenTheNullIdIs) {
    const ads_name name = {0, 0};
    ORV_CDBTransactionManager tm(&m_db, false);
    EXPECT_EQ(orvGetEntity(tm, name, AcDb::kForRead, false), nullptr);
    EXPECT_EQ(m_reports.conditions(), (Texts{"es == Acad::eOk", "es == Acad::eOk", "obj"}));
    ASSERT_EQ(m_reports.at(0).values.size(), 1u);
    EXPECT_EQ(m_reports.at(0).values.front().name, "es");
}

TEST_F(Tools, ModelLayersBeginWithACapitalX) {
    for (const wchar_t* const name : {L"X7", L"X", L"Xa", L"x1", L"AX", L"\u00d71"})
        addLayer(name);
    ORV_CDBTransactionManager tm(&m_db, false);
    Layers layers;
    orv::openAllKelmoranLayers(tm, AcDb::kForRead, layers);
    EXPECT_EQ(namesOf(layers), (std::set<std::wstring>{L"X", L"X7", L"Xa"}));
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Tools, AllLayersStayOpenAsAskedAndTheTableDoesNot) {
    addLayer(L"X1");
    {
        ORV_CDBTransactionManager tm(&m_db, false);
        Layers layers;
        orv::openAllKelmoranLayers(tm, AcDb::kForWrite, layers);
        ASSERT_EQ(layers.size(), 1u);
        EXPECT_TRUE((*layers.begin())->isWriteEnabled());
        AcDbObject* zero = nullptr;
        EXPECT_EQ(acdbOpenObject(zero, m_db.layerZero(), AcDb::kForRead), Acad::eWasOpenForWrite);
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(m_db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
        table->close();
    }
    AcDbObject* zero = nullptr;
    ASSERT_EQ(acdbOpenObject(zero, m_db.layerZero(), AcDb::kForWrite), Acad::eOk);
    zero->close();
}

TEST_F(Tools, EachCallDropsTheLayersOfTheOneBefore) {
    addLayer(L"X1");
    AcDbLayerTableRecord before;
    Layers layers{&before};
    ORV_CDBTransactionManager tm(&m_db, false);
    orv::openAllKelmoranLayers(tm, AcDb::kForRead, layers);
    EXPECT_EQ(layers.count(&before), 0u);
    EXPECT_EQ(layers.size(), 1u);
}

TEST_F(Tools, ALayerThatCannotBeOpenedIsReportedAndTheNextIsTaken) {
    const AcDbObjectId held = addLayer(L"X1");
    addLayer(L"X2");
    AcDbObject* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, held, AcDb::kForWrite), Acad::eOk);
    {
        ORV_CDBTransactionManager tm(&m_db, false);
        Layers layers;
        orv::openAllKelmoranLayers(tm, AcDb::kForRead, layers);
        EXPECT_EQ(namesOf(layers), std::set<std::wstring>{L"X2"});
        EXPECT_EQ(m_reports.conditions(), Texts{"0"});
    }
    layer->close();
}

TEST_F(Tools, ErasedLayersAreNotMet) {
    eraseObject(addLayer(L"X1"));
    ORV_CDBTransactionManager tm(&m_db, false);
    Layers layers;
    orv::openAllKelmoranLayers(tm, AcDb::kForRead, layers);
    EXPECT_TRUE(layers.empty());
    EXPECT_EQ(m_reports.size(), 0u);
}

TEST_F(Tools, WithoutALayerTableReportsAndLeavesNoLayers) {
    AcDbLayerTableRecord before;
    Layers layers{&before};
    ORV_CDBTransactionManager tm(&m_db, false);
    AcDbLayerTable* table = nullptr;
    ASSERT_EQ(m_db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    orv::openAllKelmoranLayers(tm, AcDb::kForRead, layers);
    table->close();
    EXPECT_TRUE(layers.empty());
    EXPECT_EQ(m_reports.conditions(), Texts{"0"});
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    orv::openAllKelmoranLayers(tm, AcDb::kForRead, layers);
    EXPECT_EQ(m_reports.conditions(), (Texts{"0", "0"}));
}

TEST_F(Tools, InTheWorldsCoordinatesNothingChanges) {
    const AcGePoint3d point(1.0, 2.0, 3.0);
    const AcGeVector3d vector(4.0, 5.0, 6.0);
    EXPECT_TRUE(orv::wcs2ucs(point).isEqualTo(point));
    EXPECT_TRUE(orv::ucs2wcs(point).isEqualTo(point));
    EXPECT_TRUE(orv::wcs2ucs(vector).isEqualTo(vector));
    EXPECT_TRUE(orv::ucs2wcs(vector).isEqualTo(vector));
}

// x points along the world's y, y along its z, so z along its x.
TEST_F(Tools, TheUsersOriginMovesPointsAndNoDirections) {
    ASSERT_EQ(embedded::setUserCoordinateSystem(m_db, AcGePoint3d(10.0, 20.0, 30.0), AcGeVector3d::kYAxis,
                                                AcGeVector3d::kZAxis),
              Acad::eOk);
    EXPECT_TRUE(orv::wcs2ucs(AcGePoint3d(11.0, 22.0, 33.0)).isEqualTo(AcGePoint3d(2.0, 3.0, 1.0)));
    EXPECT_TRUE(orv::ucs2wcs(AcGePoint3d(2.0, 3.0, 1.0)).isEqualTo(AcGePoint3d(11.0, 22.0, 33.0)));
    EXPECT_TRUE(orv::wcs2ucs(AcGeVector3d(1.0, 2.0, 3.0)).isEqualTo(AcGeVector3d(2.0, 3.0, 1.0)));
    EXPECT_TRUE(orv::ucs2wcs(AcGeVector3d(2.0, 3.0, 1.0)).isEqualTo(AcGeVector3d(1.0, 2.0, 3.0)));
}

TEST_F(Tools, WhatCannotBeConvertedComesBackAsItWas) {
    ASSERT_EQ(embedded::setUserCoordinateSystem(m_db, AcGePoint3d(10.0, 20.0, 30.0), AcGeVector3d::kYAxis,
                                                AcGeVector3d::kZAxis),
              Acad::eOk);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    const AcGePoint3d point(1.0, 2.0, 3.0);
    const AcGeVector3d vector(4.0, 5.0, 6.0);
    EXPECT_TRUE(orv::wcs2ucs(point).isEqualTo(point));
    EXPECT_TRUE(orv::ucs2wcs(point).isEqualTo(point));
    EXPECT_TRUE(orv::wcs2ucs(vector).isEqualTo(vector));
    EXPECT_TRUE(orv::ucs2wcs(vector).isEqualTo(vector));
}
