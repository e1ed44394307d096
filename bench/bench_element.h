#pragma once

#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "dbx/elem/base.h"
#include "dbx/elem/plugin_connected_elements.h"
#include "embedded/host_start.h"
#include "rxclass.h"

#include <cstdlib>
#include <memory>
#include <string>

// An element as a front end's usual one: number, name, identifier, and two connected objects.
class BenchElement : public AcDbEntity, public orv::elem::ElementBase {
public:
    ACRX_DECLARE_MEMBERS(BenchElement);
    BenchElement() : ElementBase(static_cast<AcDbObject&>(*this)) {}

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        assertWriteEnabled();
        const Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
        return es != Acad::eOk ? es : ElementBase::dwgInFields(*filer);
    }
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        assertReadEnabled();
        const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
        return es != Acad::eOk ? es : ElementBase::dwgOutFields(*filer);
    }
    Acad::ErrorStatus outStream(AcDbDwgFiler& filer) const { return ElementBase::dwgOutFields(filer); }
    Acad::ErrorStatus inStream(AcDbDwgFiler& filer) { return ElementBase::dwgInFields(filer); }

    void acdb_assertWriteEnabled() override { assertWriteEnabled(); }
    void acdb_assertReadEnabled() const override { assertReadEnabled(); }
    AcRxClass* acdb_isA() const override { return isA(); }
    int acdb_isNewObject() const override { return isNewObject(); }
    AcDbObjectId acdb_id() override { return objectId(); }
};

// Stores numbers as they come, and leaves them alone otherwise.
class BenchNumbers : public orv::elem::Plugin_General_PE {
public:
    void setNumber(orv::elem::Plugin_General& plugin, unsigned int number) override {
        storeNumber(plugin, number);
    }
    void onPostClone(orv::elem::Plugin_General&) override {}
    void onErase(orv::elem::Plugin_General&, bool) override {}
};

inline void startElements() {
    static BenchNumbers numbers;
    embedded::startHost();
    if (orv::elem::Plugin_General::getProtExt() != nullptr)
        return;
    BenchElement::rxInit();
    acrxBuildClassHierarchy();
    orv::elem::Plugin_General::setProtExt(&numbers);
}

// Fills a fresh element in. In a drawing that is read, its plugins come by themselves.
inline void equip(BenchElement& element, int index, const AcDbObjectId& store, const AcDbObjectId& first,
                  const AcDbObjectId& second) {
    auto* const general = new orv::elem::Plugin_General;
    element.addPlugin(general);
    general->setNumber(static_cast<unsigned int>(index + 1));
    general->setName(L"Beam " + std::to_wstring(index + 1));
    general->createBIMID();
    auto* const connected = new orv::elem::Plugin_ConnectedElements;
    element.addPlugin(connected);
    connected->setBehaviour(orv::elem::Plugin_ConnectedElements::kRefreshOnTransform);
    connected->add(first);
    connected->add(second);
    element.setNodDatabaseId(store, L"ASDWG");
}

// A drawing whose model space holds that many elements, each connected with the two ahead of it.
inline std::unique_ptr<AcDbDatabase> drawingOfElements(int count) {
    startElements();
    auto db = std::make_unique<AcDbDatabase>(true);
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    db->disableUndoRecording(true);
    AcDbBlockTable* blocks = nullptr;
    AcDbBlockTableRecord* space = nullptr;
    if (db->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk ||
        blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite) != Acad::eOk)
        std::abort();
    blocks->close();
    AcDbObjectId last[2] = {db->layerZero(), db->layerZero()};
    for (int i = 0; i < count; ++i) {
        auto* const element = new BenchElement;
        AcDbObjectId id;
        if (space->appendAcDbEntity(id, element) != Acad::eOk)
            std::abort();
        element->setDatabaseDefaults(db.get());
        equip(*element, i, db->namedObjectsDictionaryId(), last[0], last[1]);
        element->close();
        last[0] = last[1];
        last[1] = id;
    }
    space->close();
    return db;
}
