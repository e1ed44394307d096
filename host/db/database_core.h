#pragma once

#include "db/object_source.h"
#include "db/stub_table.h"
#include "db/undo_log.h"
#include "dbid.h"
#include "dbmain.h"
#include "embedded/class_table_row.h"

#include <memory>
#include <string>
#include <unordered_map>

class AcDbTransactionManager;

namespace embedded {

class TransactionManager;

// The objects that every drawing names in its header.
struct RootIds {
    AcDbObjectId blockTable, layerTable, textStyleTable, linetypeTable, viewTable, ucsTable, viewportTable,
        regAppTable, dimStyleTable, viewportEntityTable, namedObjects, groups, mlineStyles, layouts,
        plotSettings, plotStyles, modelSpace, paperSpace, layerZero, byLayerLinetype, byBlockLinetype,
        continuousLinetype, textStyleStandard, dimStyleStandard, mlineStyleStandard, currentLayer;
};

// Where a drawing's user works in model space, in world coordinates.
struct UserCoordinateSystem {
    AcGePoint3d origin;
    AcGeVector3d xAxis = AcGeVector3d::kXAxis;
    AcGeVector3d yAxis = AcGeVector3d::kYAxis;
    // Set since the drawing was read: no entry of the table of coordinate systems stands behind it any more.
    bool unnamed = false;
};

// What a file format keeps of a drawing beside its objects (header variables, class rows, sections as they
// came).
class DrawingFrame {
public:
    virtual ~DrawingFrame() = default;
    // See embedded/inventory.h.
    virtual std::vector<ClassTableRow> classTable() const = 0;
    virtual std::string version() const = 0;
};

// The inside of a database.
class DatabaseCore {
public:
    explicit DatabaseCore(AcDbDatabase& owner);
    ~DatabaseCore();

    AcDbDatabase& owner() { return m_owner; }
    DatabaseTag* tag() { return m_tag; }
    StubTable& stubs() { return m_stubs; }
    const StubTable& stubs() const { return m_stubs; }
    UndoLog& undo() { return m_undo; }
    TransactionManager& transactions() { return *m_transactions; }

    // The id of a handle that something names: its stub, made without an object if there is none, so that a
    // dangling reference goes back to the file as it came. Null for handle 0.
    AcDbObjectId idOf(std::uint64_t handle);

    // Gives a fresh object its stub and handle, open for write.
    AcDbObjectId add(AcDbObject* object);
    // The same with a handle that the caller knows to be free; raises the seed above it.
    AcDbObjectId addWithHandle(AcDbObject* object, std::uint64_t handle);

    // The live object of a stub, made from the drawing's bytes if need be.
    Acad::ErrorStatus resident(AcDbStub& stub, AcDbObject*& object);

    std::uint64_t handseed = 1; // the next handle to be given
    RootIds roots;
    UserCoordinateSystem ucs;
    std::unique_ptr<ObjectSource> source;
    std::unique_ptr<DrawingFrame> frame;
    std::wstring fileName;
    std::wstring originalFileName;
    bool modified = false;
    std::vector<AcDbDatabaseReactor*> reactors;
    // Permanently erased, then forgotten by saves and listings.
    void dropErased();

private:
    AcDbDatabase& m_owner;
    DatabaseTag* m_tag;
    StubTable m_stubs;
    UndoLog m_undo;
    std::unique_ptr<TransactionManager> m_transactions;
    std::unordered_map<const AcDbStub*, Acad::ErrorStatus> m_loadFailures;
};

// Core of the database of a stub, or null.
inline DatabaseCore* coreOf(const AcDbStub* stub) { return stub != nullptr ? stub->tag->core : nullptr; }

// Makes all that a new drawing must have.
void buildDefaultDrawing(AcDbDatabase& database);

} // namespace embedded
