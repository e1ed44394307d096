#include "db/database_core.h"
#include "db/entity_list.h"
#include "db/symbol_index.h"
#include "dbdict.h"
#include "dblayout.h"
#include "dbmstyle.h"
#include "dbplhldr.h"
#include "dbsymtb.h"

namespace embedded {

namespace {

// The handles that CAD products give to what every drawing has. Some readers rely on those of the tables.
enum FixedHandle : std::uint64_t {
    kBlockTable = 0x1,
    kLayerTable = 0x2,
    kTextStyleTable = 0x3,
    kLinetypeTable = 0x5,
    kViewTable = 0x6,
    kUcsTable = 0x7,
    kViewportTable = 0x8,
    kRegAppTable = 0x9,
    kDimStyleTable = 0xA,
    kVxTable = 0xB,
    kNamedObjects = 0xC,
    kGroups = 0xD,
    kPlotStyles = 0xE,
    kNormalPlotStyle = 0xF,
    kLayerZero = 0x10,
    kTextStyleStandard = 0x11,
    kRegAppAcad = 0x12,
    kByBlock = 0x14,
    kByLayer = 0x15,
    kContinuous = 0x16,
    kMlineStyles = 0x17,
    kMlineStyleStandard = 0x18,
    kPlotSettings = 0x19,
    kLayouts = 0x1A,
    kPaperSpace = 0x1B,
    kPaperBegin = 0x1C,
    kPaperEnd = 0x1D,
    kPaperLayout = 0x1E,
    kModelSpace = 0x1F,
    kModelBegin = 0x20,
    kModelEnd = 0x21,
    kModelLayout = 0x22,
    kDimStyleStandard = 0x27,
    kActiveViewport = 0x29,
    kFirstFree = 0x2A
};

// Makes the objects one after the other; later ones refer to earlier ones through the roots.
class Builder {
public:
    explicit Builder(DatabaseCore& core) : m_core(core), m_roots(core.roots) {}

    void tables();
    void linetypes();
    void styles();
    void dictionaries();
    void layers();
    void blocks();
    void layouts();
    void viewport();

private:
    template <class Table>
    AcDbObjectId table(std::uint64_t handle) {
        auto* made = new Table;
        const AcDbObjectId id = m_core.addWithHandle(made, handle);
        made->close();
        return id;
    }

    // Puts a record into a table under its name, lets `fill` set the rest, and closes it.
    template <class Table, class Record, class Fill>
    AcDbObjectId record(AcDbObjectId tableId, Record* made, const ACHAR* name, std::uint64_t handle,
                        Fill fill, bool leading = false) {
        Table* owner = nullptr;
        if (acdbOpenObject(owner, tableId, AcDb::kForWrite) != Acad::eOk)
            return AcDbObjectId();
        SymbolAccess::setName(*made, name);
        SymbolAccess::addWithHandle(*owner, *made, handle, leading);
        fill(*made);
        made->close();
        owner->close();
        return AcDbObjectId(m_core.idOf(handle));
    }

    // Puts an object into a dictionary, and closes it.
    AcDbObjectId entry(AcDbObjectId dictionaryId, const ACHAR* name, AcDbObject* made, std::uint64_t handle) {
        AcDbDictionary* owner = nullptr;
        AcDbObjectId id = m_core.addWithHandle(made, handle);
        if (acdbOpenObject(owner, dictionaryId, AcDb::kForWrite) == Acad::eOk) {
            owner->setAt(name, made, id);
            owner->close();
        }
        made->close();
        return id;
    }

    AcDbObjectId block(const ACHAR* name, std::uint64_t handle, std::uint64_t begin, std::uint64_t end);
    AcDbObjectId layout(const ACHAR* name, std::uint64_t handle, AcDbObjectId blockId, int tab);

    DatabaseCore& m_core;
    RootIds& m_roots;
};

const auto asItIs = [](const AcDbObject&) {};

void Builder::tables() {
    m_roots.blockTable = table<AcDbBlockTable>(kBlockTable);
    m_roots.layerTable = table<AcDbLayerTable>(kLayerTable);
    m_roots.textStyleTable = table<AcDbTextStyleTable>(kTextStyleTable);
    m_roots.linetypeTable = table<AcDbLinetypeTable>(kLinetypeTable);
    m_roots.viewTable = table<AcDbViewTable>(kViewTable);
    m_roots.ucsTable = table<AcDbUCSTable>(kUcsTable);
    m_roots.viewportTable = table<AcDbViewportTable>(kViewportTable);
    m_roots.regAppTable = table<AcDbRegAppTable>(kRegAppTable);
    m_roots.dimStyleTable = table<AcDbDimStyleTable>(kDimStyleTable);
    m_roots.viewportEntityTable = table<AcDbVXTable>(kVxTable);
    m_roots.namedObjects = table<AcDbDictionary>(kNamedObjects);
}

void Builder::linetypes() {
    const AcDbObjectId owner = m_roots.linetypeTable;
    m_roots.byBlockLinetype = record<AcDbLinetypeTable>(owner, new AcDbLinetypeTableRecord, ACRX_T("ByBlock"),
                                                        kByBlock, asItIs, true);
    m_roots.byLayerLinetype = record<AcDbLinetypeTable>(owner, new AcDbLinetypeTableRecord, ACRX_T("ByLayer"),
                                                        kByLayer, asItIs, true);
    m_roots.continuousLinetype =
        record<AcDbLinetypeTable>(owner, new AcDbLinetypeTableRecord, ACRX_T("Continuous"), kContinuous,
                                  [](AcDbLinetypeTableRecord& r) { r.setComments(ACRX_T("Solid line")); });
}

void Builder::styles() {
    m_roots.textStyleStandard =
        record<AcDbTextStyleTable>(m_roots.textStyleTable, new AcDbTextStyleTableRecord, ACRX_T("Standard"),
                                   kTextStyleStandard, [](AcDbTextStyleTableRecord& r) {
                                       r.setFileName(ACRX_T("txt"));
                                       r.setPriorSize(0.2);
                                   });
    m_roots.dimStyleStandard = record<AcDbDimStyleTable>(
        m_roots.dimStyleTable, new AcDbDimStyleTableRecord, ACRX_T("Standard"), kDimStyleStandard,
        [this](AcDbDimStyleTableRecord& r) { r.setDimtxsty(m_roots.textStyleStandard); });
    record<AcDbRegAppTable>(m_roots.regAppTable, new AcDbRegAppTableRecord, ACRX_T("ACAD"), kRegAppAcad,
                            asItIs);
}

void Builder::dictionaries() {
    const AcDbObjectId named = m_roots.namedObjects;
    m_roots.groups = entry(named, ACRX_T("ACAD_GROUP"), new AcDbDictionary, kGroups);
    m_roots.layouts = entry(named, ACRX_T("ACAD_LAYOUT"), new AcDbDictionary, kLayouts);
    m_roots.mlineStyles = entry(named, ACRX_T("ACAD_MLINESTYLE"), new AcDbDictionary, kMlineStyles);
    m_roots.plotSettings = entry(named, ACRX_T("ACAD_PLOTSETTINGS"), new AcDbDictionary, kPlotSettings);
    m_roots.plotStyles =
        entry(named, ACRX_T("ACAD_PLOTSTYLENAME"), new AcDbDictionaryWithDefault, kPlotStyles);

    const AcDbObjectId normal =
        entry(m_roots.plotStyles, ACRX_T("Normal"), new AcDbPlaceHolder, kNormalPlotStyle);
    AcDbDictionaryWithDefault* plotStyles = nullptr;
    if (acdbOpenObject(plotStyles, m_roots.plotStyles, AcDb::kForWrite) == Acad::eOk) {
        plotStyles->setDefaultId(normal);
        plotStyles->close();
    }

    auto* style = new AcDbMlineStyle;
    int index = 0;
    style->set(ACRX_T("STANDARD"));
    style->addElement(index, 0.5);
    style->addElement(index, -0.5);
    m_roots.mlineStyleStandard = entry(m_roots.mlineStyles, ACRX_T("Standard"), style, kMlineStyleStandard);
}

void Builder::layers() {
    m_roots.layerZero = record<AcDbLayerTable>(m_roots.layerTable, new AcDbLayerTableRecord, ACRX_T("0"),
                                               kLayerZero, [this](AcDbLayerTableRecord& r) {
                                                   r.setLinetypeObjectId(m_roots.continuousLinetype);
                                                   r.setPlotStyleName(m_core.idOf(kNormalPlotStyle));
                                               });
    m_roots.currentLayer = m_roots.layerZero;
}

AcDbObjectId Builder::block(const ACHAR* name, std::uint64_t handle, std::uint64_t begin, std::uint64_t end) {
    return record<AcDbBlockTable>(
        m_roots.blockTable, new AcDbBlockTableRecord, name, handle,
        [&](AcDbBlockTableRecord& r) { BlockAccess::frame(r, begin, end); }, true);
}

void Builder::blocks() {
    m_roots.modelSpace = block(ACDB_MODEL_SPACE, kModelSpace, kModelBegin, kModelEnd);
    m_roots.paperSpace = block(ACDB_PAPER_SPACE, kPaperSpace, kPaperBegin, kPaperEnd);
}

AcDbObjectId Builder::layout(const ACHAR* name, std::uint64_t handle, AcDbObjectId blockId, int tab) {
    auto* made = new AcDbLayout;
    made->setLayoutName(name);
    made->setTabOrder(tab);
    made->setModelType(tab == 0);
    made->setBlockTableRecordId(blockId);
    const AcDbObjectId id = entry(m_roots.layouts, name, made, handle);
    AcDbBlockTableRecord* shown = nullptr;
    if (acdbOpenObject(shown, blockId, AcDb::kForWrite) == Acad::eOk) {
        shown->setLayoutId(id);
        shown->close();
    }
    return id;
}

void Builder::layouts() {
    layout(ACRX_T("Model"), kModelLayout, m_roots.modelSpace, 0);
    layout(ACRX_T("Layout1"), kPaperLayout, m_roots.paperSpace, 1);
}

void Builder::viewport() {
    record<AcDbViewportTable>(m_roots.viewportTable, new AcDbViewportTableRecord, ACRX_T("*Active"),
                              kActiveViewport, [](AcDbViewportTableRecord& r) {
                                  r.setHeight(9.0);
                                  r.setWidth(12.0);
                                  r.setCenterPoint(AcGePoint2d(6.0, 4.5));
                              });
}

} // namespace

void buildDefaultDrawing(AcDbDatabase& database) {
    DatabaseCore& core = database.core();
    Builder builder(core);
    builder.tables();
    builder.linetypes();
    builder.styles();
    builder.dictionaries();
    builder.layers();
    builder.blocks();
    builder.layouts();
    builder.viewport();
    if (core.handseed < kFirstFree)
        core.handseed = kFirstFree;
}

} // namespace embedded
