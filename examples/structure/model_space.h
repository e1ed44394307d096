#pragma once

#include "structure/model_store.h"

#include "dbmain.h"
#include "dbsymtb.h"
#include "dbtrans.h"

#include <memory>
#include <stdexcept>

namespace structure {

// Throws std::runtime_error with the text for any status but eOk.
void demand(Acad::ErrorStatus es, const char* what);

// Puts elements of one system into model space. All of them stay open until the transaction ends that is
// running. What cannot be done throws std::runtime_error.
class ModelSpace {
public:
    ModelSpace(AcDbDatabase& database, const ModelStore& store);

    // The drawing's from then on. The prefix of its layer says in nine characters what is on it; the name of
    // the store follows.
    template <class Kind>
    Kind* add(std::unique_ptr<Kind> element, const wchar_t* layerPrefix) {
        element->setDatabaseDefaults(&m_database);
        demand(element->setLayer(layerOf(layerPrefix)), "an element cannot be put on its layer");
        demand(m_space->appendAcDbEntity(element.get()), "an element cannot be put into model space");
        Kind* const added = element.release(); // the drawing's from here on
        demand(m_database.transactionManager()->addNewlyCreatedDBRObject(added),
               "an element cannot be handed to the transaction");
        added->bindTo(m_store.id, m_store.name);
        return added;
    }

    // The line type of that name, of dashes, where the drawing has none.
    void provideDashes(const wchar_t* name, double dash);

private:
    AcDbObjectId layerOf(const wchar_t* prefix);

    AcDbDatabase& m_database;
    const ModelStore m_store;
    AcDbBlockTableRecord* m_space = nullptr;
};

} // namespace structure
