#include "db/clone/access_rights.h"
#include "db/clone/clone_events.h"
#include "db/clone/clone_run.h"
#include "db/database_core.h"
#include "db/drawing_settings.h"
#include "db/entity_list.h"
#include "dbsymtb.h"
#include "gemat3d.h"

#include <functional>
#include <memory>

using namespace embedded;

namespace {

// All of one drawing, which is `from`; the owner in another one, or in the same.
Acad::ErrorStatus checkIds(const AcDbObjectIdArray& ids, const AcDbObjectId& owner, AcDbDatabase*& from) {
    if (ids.isEmpty())
        return Acad::eInvalidInput;
    if (owner.isNull())
        return Acad::eNullObjectId;
    if (owner.database() == nullptr)
        return Acad::eInvalidInput;
    from = ids.first().database();
    for (const AcDbObjectId& id : ids) {
        if (id.isNull())
            return Acad::eNullObjectId;
        if (id.database() == nullptr)
            return Acad::eInvalidInput;
        if (id.database() != from)
            return Acad::eWrongDatabase;
    }
    return Acad::eOk;
}

// Runs one call's share of a cloning that has begun. What goes wrong, an exception included, takes all of the
// cloning back.
Acad::ErrorStatus carryOut(CloneRun& run, const std::function<Acad::ErrorStatus()>& work) {
    try {
        const Acad::ErrorStatus es = work();
        if (es != Acad::eOk)
            run.abort();
        return es;
    } catch (...) {
        run.abort();
        throw;
    }
}

// Clones the objects below an owner, which is closed before ids are translated.
Acad::ErrorStatus cloneBelow(CloneRun& run, const AcDbObjectIdArray& ids, const AcDbObjectId& ownerId) {
    AcDbObject* owner = nullptr;
    Acad::ErrorStatus es = acdbOpenAcDbObject(owner, ownerId, AcDb::kForWrite);
    if (es != Acad::eOk)
        return es;
    try {
        es = run.clonePrimaries(ids, *owner);
    } catch (...) {
        owner->close();
        throw;
    }
    owner->close();
    return es;
}

AcDbObjectIdArray entitiesOf(const AcDbObjectId& blockId) {
    AcDbObjectIdArray ids;
    const ReadRight reading(blockId);
    if (const auto* block = AcDbBlockTableRecord::cast(reading.object()))
        for (AcDbStub* stub : BlockAccess::entities(*block).live())
            ids.append(AcDbObjectId(stub));
    return ids;
}

struct Share {
    AcDbObjectIdArray ids;
    AcDbObjectId owner;
};

Acad::ErrorStatus moveAndClose(AcDbEntity& entity, const AcGeMatrix3d& move) {
    Acad::ErrorStatus es = Acad::eOk;
    try {
        es = entity.transformBy(move);
    } catch (...) {
        entity.close();
        throw;
    }
    entity.close();
    return es;
}

// Moves what was asked for.
Acad::ErrorStatus transformPrimaries(const AcDbIdMapping& mapping, const AcGeMatrix3d& move) {
    for (AcDbIdMappingIter it(mapping); !it.done(); it.next()) {
        AcDbIdPair pair;
        it.getMap(pair);
        if (!pair.isPrimary() || !pair.isCloned())
            continue;
        AcDbEntity* entity = nullptr;
        Acad::ErrorStatus es = acdbOpenObject(entity, pair.value(), AcDb::kForWrite);
        if (es == Acad::eOk)
            es = moveAndClose(*entity, move);
        if (es != Acad::eOk)
            return es;
    }
    return Acad::eOk;
}

// ... to the new origin.
Acad::ErrorStatus moveOrigin(const AcDbIdMapping& mapping, const AcGePoint3d& basePoint) {
    if (basePoint.x == 0.0 && basePoint.y == 0.0 && basePoint.z == 0.0)
        return Acad::eOk;
    return transformPrimaries(
        mapping, AcGeMatrix3d::translation(AcGeVector3d(-basePoint.x, -basePoint.y, -basePoint.z)));
}

// The other drawing's current layer, where it came along.
void takeCurrentLayer(const CloneRun& run, const DatabaseCore& from, DatabaseCore& to) {
    const AcDbIdPair* pair = run.find(from.roots.currentLayer);
    if (pair != nullptr && !pair->value().isNull())
        to.roots.currentLayer = pair->value();
}

using SharesFor = std::function<std::vector<Share>(AcDbDatabase&)>;

Acad::ErrorStatus fillNewDrawing(AcDbDatabase& from, AcDbDatabase& to, const SharesFor& sharesFor,
                                 const AcGePoint3d& basePoint) {
    AcDbIdMapping mapping;
    CloneRun& run = mapping.run();
    Acad::ErrorStatus es = run.begin(to, from, AcDb::kDcWblock, AcDb::kDrcReplace);
    if (es != Acad::eOk)
        return es;
    es = carryOut(run, [&] {
        for (const Share& share : sharesFor(to)) {
            const Acad::ErrorStatus cloned = cloneBelow(run, share.ids, share.owner);
            if (cloned != Acad::eOk)
                return cloned;
        }
        events::otherWblock(&to, mapping, &from);
        return run.finish();
    });
    if (es != Acad::eOk)
        return es;
    takeCurrentLayer(run, from.core(), to.core());
    return moveOrigin(mapping, basePoint);
}

// A new drawing from parts of another one. With `whole` it has the same places.
Acad::ErrorStatus writeBlock(AcDbDatabase& from, AcDbDatabase*& out,
                             const std::function<void(AcDbDatabase&)>& announce, const SharesFor& sharesFor,
                             const AcGePoint3d& basePoint, bool whole = false) {
    out = nullptr;
    events::wblockNotice(&from);
    auto to = std::make_unique<AcDbDatabase>(true);
    to->disableUndoRecording(true);
    copyDrawingSettings(from.core(), to->core(), whole);
    announce(*to);
    Acad::ErrorStatus es = Acad::eOk;
    try {
        es = fillNewDrawing(from, *to, sharesFor, basePoint);
    } catch (...) {
        events::abortWblock(to.get());
        throw;
    }
    if (es != Acad::eOk) {
        events::abortWblock(to.get());
        return es;
    }
    to->disableUndoRecording(false);
    events::endWblock(to.get());
    out = to.release();
    return Acad::eOk;
}

} // namespace

namespace {

// Takes back what is done to a drawing in its scope, unless it is kept; also in a drawing without a history.
class Attempt {
public:
    explicit Attempt(UndoLog& undo) : m_undo(undo), m_recordingBefore(undo.recording()) {
        if (!m_recordingBefore)
            m_undo.setRecording(true);
        m_mark = m_undo.beginScope();
    }
    ~Attempt() {
        if (!m_kept)
            m_undo.rollBack(m_mark);
        if (!m_recordingBefore)
            m_undo.setRecording(false);
    }
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;

    void keep() { m_kept = true; }

private:
    UndoLog& m_undo;
    const bool m_recordingBefore;
    std::size_t m_mark = 0;
    bool m_kept = false;
};

// Brings all of another drawing's model space below an owner here, which `prepare` makes or names. Whatever
// goes wrong, an exception included, is taken back, what `prepare` and `complete` did too.
Acad::ErrorStatus bring(AcDbDatabase& to, AcDbDatabase& from,
                        const std::function<Acad::ErrorStatus(AcDbObjectId& owner)>& prepare,
                        const std::function<Acad::ErrorStatus(const AcDbIdMapping&)>& complete) {
    UndoLog& undo = to.core().undo();
    if (undo.active())
        return Acad::eInvalidContext;
    Attempt attempt(undo);
    AcDbIdMapping mapping;
    CloneRun& run = mapping.run();
    AcDbObjectId owner;
    Acad::ErrorStatus es = prepare(owner);
    if (es == Acad::eOk)
        es = run.begin(to, from, AcDb::kDcInsert, AcDb::kDrcIgnore);
    if (es == Acad::eOk)
        es = carryOut(run, [&] {
            const Acad::ErrorStatus cloned = cloneBelow(run, entitiesOf(from.core().roots.modelSpace), owner);
            return cloned == Acad::eOk ? run.finish() : cloned;
        });
    if (es == Acad::eOk)
        es = complete(mapping);
    if (es == Acad::eOk)
        attempt.keep();
    return es;
}

Acad::ErrorStatus addBlock(AcDbDatabase& database, const ACHAR* name, const AcGePoint3d& origin,
                           AcDbObjectId& id) {
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus es = database.getBlockTable(table, AcDb::kForWrite);
    if (es != Acad::eOk)
        return es;
    auto block = std::make_unique<AcDbBlockTableRecord>();
    es = block->setName(name);
    if (es == Acad::eOk)
        es = block->setOrigin(origin);
    if (es == Acad::eOk)
        es = table->add(id, block.get());
    if (es == Acad::eOk)
        block.release()->close();
    table->close();
    return es;
}

} // namespace

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const ACHAR* blockName, AcDbDatabase* database,
                                       bool) {
    blockId.setNull();
    if (database == nullptr || database == this || blockName == nullptr)
        return Acad::eInvalidInput;
    AcDbObjectId block;
    const Acad::ErrorStatus es = bring(
        *this, *database,
        [&](AcDbObjectId& owner) {
            const Acad::ErrorStatus added = addBlock(*this, blockName, basePointOf(database->core()), block);
            owner = block;
            return added;
        },
        [](const AcDbIdMapping&) { return Acad::eOk; });
    if (es == Acad::eOk)
        blockId = block;
    return es;
}

Acad::ErrorStatus AcDbDatabase::insert(const AcGeMatrix3d& xform, AcDbDatabase* database, bool) {
    if (database == nullptr || database == this)
        return Acad::eInvalidInput;
    return bring(
        *this, *database,
        [&](AcDbObjectId& owner) {
            owner = m_core->roots.modelSpace;
            return Acad::eOk;
        },
        [&](const AcDbIdMapping& mapping) { return transformPrimaries(mapping, xform); });
}

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const AcDbObjectIdArray& objectIds,
                                                 const AcDbObjectId& owner, AcDbIdMapping& idMap,
                                                 bool deferXlation) {
    AcDbDatabase* from = nullptr;
    Acad::ErrorStatus es = checkIds(objectIds, owner, from);
    if (es != Acad::eOk)
        return es;
    if (from != this || owner.database() != this)
        return Acad::eWrongDatabase;
    CloneRun& run = idMap.run();
    es = run.begin(*this, *this, AcDb::kDcObjects, AcDb::kDrcNotApplicable);
    if (es != Acad::eOk)
        return es;
    return carryOut(run, [&] {
        const Acad::ErrorStatus cloned = cloneBelow(run, objectIds, owner);
        return cloned == Acad::eOk && !deferXlation ? run.finish() : cloned;
    });
}

Acad::ErrorStatus AcDbDatabase::wblockCloneObjects(const AcDbObjectIdArray& objectIds,
                                                   const AcDbObjectId& owner, AcDbIdMapping& idMap,
                                                   AcDb::DuplicateRecordCloning drc, bool deferXlation) {
    AcDbDatabase* from = nullptr;
    Acad::ErrorStatus es = checkIds(objectIds, owner, from);
    if (es != Acad::eOk)
        return es;
    AcDbDatabase* to = owner.database();
    if (from != this && to != this)
        return Acad::eWrongDatabase;
    if (from == to)
        return Acad::eInvalidInput;
    CloneRun& run = idMap.run();
    if (!run.active())
        events::beginWblockObjects(from, idMap);
    es = run.begin(*to, *from, AcDb::kDcWblkObjects, drc);
    if (es != Acad::eOk)
        return es;
    return carryOut(run, [&] {
        const Acad::ErrorStatus cloned = cloneBelow(run, objectIds, owner);
        return cloned == Acad::eOk && !deferXlation ? run.finish() : cloned;
    });
}

void AcDbDatabase::abortDeepClone(AcDbIdMapping& idMap) { idMap.run().abort(); }

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output, const AcDbObjectIdArray& objectIds,
                                       const AcGePoint3d& basePoint) {
    output = nullptr;
    AcDbDatabase* from = nullptr;
    const Acad::ErrorStatus es = checkIds(objectIds, blockTableId(), from);
    if (es != Acad::eOk)
        return es;
    if (from != this)
        return Acad::eWrongDatabase;
    return writeBlock(
        *this, output, [&](AcDbDatabase& to) { events::beginWblock(&to, this, basePoint); },
        [&](AcDbDatabase& to) {
            return std::vector<Share>{{objectIds, to.core().roots.modelSpace}};
        },
        basePoint);
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output, AcDbObjectId blockId) {
    output = nullptr;
    AcDbBlockTableRecord* block = nullptr;
    if (blockId.database() != this)
        return blockId.isNull() ? Acad::eNullObjectId : Acad::eWrongDatabase;
    const Acad::ErrorStatus es = acdbOpenObject(block, blockId, AcDb::kForRead);
    if (es != Acad::eOk)
        return es;
    const AcGePoint3d origin = block->origin();
    block->close();
    return writeBlock(
        *this, output, [&](AcDbDatabase& to) { events::beginWblock(&to, this, blockId); },
        [&](AcDbDatabase& to) {
            return std::vector<Share>{{entitiesOf(blockId), to.core().roots.modelSpace}};
        },
        origin);
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output) {
    const RootIds& roots = m_core->roots;
    return writeBlock(
        *this, output, [&](AcDbDatabase& to) { events::beginWblock(&to, this); },
        [&](AcDbDatabase& to) {
            const RootIds& own = to.core().roots;
            return std::vector<Share>{{entitiesOf(roots.modelSpace), own.modelSpace},
                                      {entitiesOf(roots.paperSpace), own.paperSpace}};
        },
        AcGePoint3d(), true);
}
