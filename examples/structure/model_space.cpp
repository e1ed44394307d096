#include "structure/model_space.h"

namespace structure {

namespace {

template <class Table>
void get(AcDbDatabase& database, Table*& table, AcDbObjectId id, AcDb::OpenMode mode, const char* what) {
    AcDbObject* object = nullptr;
    demand(database.transactionManager()->getObject(object, id, mode), what);
    table = Table::cast(object);
    demand(table != nullptr ? Acad::eOk : Acad::eNotThatKindOfClass, what);
}

} // namespace

void demand(Acad::ErrorStatus es, const char* what) {
    if (es != Acad::eOk)
        throw std::runtime_error(what);
}

ModelSpace::ModelSpace(AcDbDatabase& database, const ModelStore& store)
    : m_database(database), m_store(store) {
    AcDbBlockTable* blocks = nullptr;
    get(database, blocks, database.blockTableId(), AcDb::kForRead, "the block table cannot be opened");
    AcDbObjectId space;
    demand(blocks->getAt(ACDB_MODEL_SPACE, space), "the drawing has no model space");
    get(database, m_space, space, AcDb::kForWrite, "model space cannot be written");
}

AcDbObjectId ModelSpace::layerOf(const wchar_t* prefix) {
    const std::wstring name = prefix + m_store.name;
    AcDbLayerTable* layers = nullptr;
    get(m_database, layers, m_database.layerTableId(), AcDb::kForRead, "the layer table cannot be opened");
    AcDbObjectId id;
    if (layers->getAt(name.c_str(), id) == Acad::eOk)
        return id;
    get(m_database, layers, m_database.layerTableId(), AcDb::kForWrite, "the layer table cannot be written");
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    demand(layer->setName(name.c_str()), "a layer cannot be named after the store");
    demand(layers->add(id, layer.get()), "a layer cannot be made");
    AcDbLayerTableRecord* const added = layer.release(); // the drawing's from here on
    added->close();
    return id;
}

void ModelSpace::provideDashes(const wchar_t* name, double dash) {
    AcDbLinetypeTable* lineTypes = nullptr;
    get(m_database, lineTypes, m_database.linetypeTableId(), AcDb::kForRead,
        "the line type table cannot be opened");
    if (lineTypes->has(name))
        return;
    get(m_database, lineTypes, m_database.linetypeTableId(), AcDb::kForWrite,
        "the line type table cannot be written");
    auto lineType = std::make_unique<AcDbLinetypeTableRecord>();
    demand(lineType->setName(name), "a line type cannot be named");
    lineType->setNumDashes(2);
    lineType->setDashLengthAt(0, dash);
    lineType->setDashLengthAt(1, -dash / 2.0);
    lineType->setPatternLength(dash * 1.5);
    AcDbObjectId id;
    demand(lineTypes->add(id, lineType.get()), "a line type cannot be made");
    AcDbLinetypeTableRecord* const added = lineType.release(); // the drawing's from here on
    added->close();
}

} // namespace structure
