#include "dbx/tools.h"

#include "base/assert.h"
#include "orvcore/transaction_manager.h"

#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "dbxutil.h"
#include "geassign.h"

#include <memory>

AcDbEntity* orvGetEntity(ORV_CDBTransactionManager& tm, const AcDbObjectId& id, AcDb::OpenMode mode,
                         bool openErased) {
    AcDbObject* obj = nullptr;
    const Acad::ErrorStatus es = tm.getObject(obj, id, mode, openErased, true);
    ORV_ASSERT(es == Acad::eOk)(es);
    ORV_ASSERT(obj);
    if (obj == nullptr)
        return nullptr;
    AcDbEntity* const ent = AcDbEntity::cast(obj);
    ORV_ASSERT(ent);
    return ent;
}

AcDbEntity* orvGetEntity(ORV_CDBTransactionManager& tm, const ads_name name, AcDb::OpenMode mode,
                         bool openErased) {
    AcDbObjectId id;
    const Acad::ErrorStatus es = acdbGetObjectId(id, name);
    ORV_ASSERT(es == Acad::eOk)(es);
    return orvGetEntity(tm, id, mode, openErased);
}

namespace orv {

namespace {

constexpr ACHAR kLayerMark = L'X';

struct Closing {
    void operator()(AcDbObject* object) const { object->close(); }
};

bool isOfModel(const AcDbLayerTableRecord& layer) {
    const ACHAR* name = nullptr;
    layer.getName(name);
    return name != nullptr && name[0] == kLayerMark;
}

} // namespace

void openAllKelmoranLayers(ORV_CDBTransactionManager& tm, AcDb::OpenMode mode,
                           std::set<AcDbLayerTableRecord*>& layers) {
    layers.clear();
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    AcDbLayerTable* opened = nullptr;
    if (db == nullptr || db->getLayerTable(opened, AcDb::kForRead) != Acad::eOk) {
        ORV_ASSERT(0);
        return;
    }
    const std::unique_ptr<AcDbLayerTable, Closing> table(opened);
    AcDbLayerTableIterator* iterator = nullptr;
    table->newIterator(iterator, true, true);
    const std::unique_ptr<AcDbLayerTableIterator> pLayTblItr(iterator);
    ORV_ASSERT(pLayTblItr);
    if (!pLayTblItr)
        return;
    for (pLayTblItr->start(true, true); !pLayTblItr->done(); pLayTblItr->step(true, true)) {
        AcDbObjectId id;
        pLayTblItr->getRecordId(id);
        AcDbObject* object = nullptr;
        tm.getObject(object, id, mode, false, false);
        AcDbLayerTableRecord* const layer = AcDbLayerTableRecord::cast(object);
        if (layer == nullptr)
            ORV_ASSERT(0);
        else if (isOfModel(*layer))
            layers.insert(layer);
    }
}

AcGePoint3d wcs2ucs(const AcGePoint3d& point) {
    AcGePoint3d converted = point;
    acdbWcs2Ucs(asDblArray(point), asDblArray(converted), false);
    return converted;
}

AcGeVector3d wcs2ucs(const AcGeVector3d& vector) {
    AcGeVector3d converted = vector;
    acdbWcs2Ucs(asDblArray(vector), asDblArray(converted), true);
    return converted;
}

AcGePoint3d ucs2wcs(const AcGePoint3d& point) {
    AcGePoint3d converted = point;
    acdbUcs2Wcs(asDblArray(point), asDblArray(converted), false);
    return converted;
}

AcGeVector3d ucs2wcs(const AcGeVector3d& vector) {
    AcGeVector3d converted = vector;
    acdbUcs2Wcs(asDblArray(vector), asDblArray(converted), true);
    return converted;
}

} // namespace orv
