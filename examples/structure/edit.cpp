#include "structure/edit.h"

#include "structure/load.h"
#include "structure/moved_elements_reactor.h"

#include "dbidmap.h"
#include "dbsymtb.h"
#include "gemat3d.h"

namespace structure {

namespace {

Acad::ErrorStatus moveEach(const std::vector<AcDbObjectId>& ids, const AcGeVector3d& offset) {
    const AcGeMatrix3d move = AcGeMatrix3d::translation(offset);
    for (const AcDbObjectId& id : ids) {
        AcDbEntity* entity = nullptr;
        Acad::ErrorStatus es = acdbOpenObject(entity, id, AcDb::kForWrite);
        if (es != Acad::eOk)
            return es;
        es = entity->transformBy(move);
        entity->close();
        if (es != Acad::eOk)
            return es;
    }
    return Acad::eOk;
}

AcDbObjectId modelSpaceOf(AcDbDatabase& database) {
    AcDbObjectId id;
    AcDbBlockTable* blocks = nullptr;
    if (database.getBlockTable(blocks, AcDb::kForRead) == Acad::eOk) {
        blocks->getAt(ACDB_MODEL_SPACE, id);
        blocks->close();
    }
    return id;
}

} // namespace

Acad::ErrorStatus moveElements(AcDbDatabase& database, const std::vector<AcDbObjectId>& ids,
                               const AcGeVector3d& offset) {
    const Acad::ErrorStatus es = moveEach(ids, offset);
    processMovedElements(database);
    return es;
}

Acad::ErrorStatus copyElements(AcDbDatabase& database, const std::vector<AcDbObjectId>& ids,
                               const AcGeVector3d& offset, std::vector<AcDbObjectId>& copies) {
    copies.clear();
    // A load is cloned if its beam has been.
    AcDbObjectIdArray originals;
    for (const bool areLoads : {false, true})
        for (const AcDbObjectId& id : ids)
            if ((id.objectClass() == Load::desc()) == areLoads)
                originals.append(id);
    AcDbIdMapping mapping;
    const Acad::ErrorStatus es = database.deepCloneObjects(originals, modelSpaceOf(database), mapping);
    if (es != Acad::eOk)
        return es;
    for (const AcDbObjectId& id : ids) {
        AcDbIdPair pair(id, AcDbObjectId(), false);
        if (mapping.compute(pair) && pair.isCloned())
            copies.push_back(pair.value());
    }
    return moveElements(database, copies, offset);
}

Acad::ErrorStatus eraseElements(const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId& id : ids) {
        if (id.isErased())
            continue;
        AcDbEntity* entity = nullptr;
        Acad::ErrorStatus es = acdbOpenObject(entity, id, AcDb::kForWrite);
        if (es != Acad::eOk)
            return es;
        es = entity->erase();
        entity->close();
        if (es != Acad::eOk)
            return es;
    }
    return Acad::eOk;
}

} // namespace structure
