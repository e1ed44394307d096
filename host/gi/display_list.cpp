#include "embedded/display_list.h"

#include "db/database_core.h"
#include "dbsymtb.h"
#include "gi/display_recorder.h"
#include "rxclass.h"

#include <memory>

namespace embedded {
namespace {

void drawEntity(AcDbObjectId id, DisplayRecorder& recorder, DisplayList& list) {
    AcDbEntity* entity = nullptr;
    const Acad::ErrorStatus es = acdbOpenAcDbEntity(entity, id, AcDb::kForRead);
    if (es != Acad::eOk) {
        list.failures.push_back({id, id.objectClass(), textOf(es)});
        return;
    }
    recorder.draw(*entity);
    entity->close();
}

} // namespace

DisplayList draw(AcDbDatabase& database, AcDbObjectId block, const ViewParameters& view) {
    DisplayList list;
    DisplayRecorder recorder(&database, view, list);
    AcDbBlockTableRecord* record = nullptr;
    const Acad::ErrorStatus es = acdbOpenObject(record, block, AcDb::kForRead);
    if (es != Acad::eOk) {
        list.failures.push_back({block, nullptr, textOf(es)});
        return list;
    }
    AcDbBlockTableRecordIterator* made = nullptr;
    record->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (; !entities->done() && !list.isCut; entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) == Acad::eOk)
            drawEntity(id, recorder, list);
    }
    record->close();
    return list;
}

DisplayList draw(AcDbDatabase& database, const ViewParameters& view) {
    return draw(database, database.core().roots.modelSpace, view);
}

DisplayList draw(AcGiDrawable& drawable, const ViewParameters& view) {
    DisplayList list;
    DisplayRecorder recorder(drawable.id().database(), view, list);
    recorder.draw(drawable);
    return list;
}

Acad::ErrorStatus drawnExtents(const AcDbEntity& entity, AcDbExtents& extents) {
    DisplayList list;
    ViewParameters view;
    view.regenType = kAcGiForExtents;
    view.showsHidden = true;
    view.mostNested = 0; // each block is walked through once, however often it is there
    DisplayRecorder recorder(entity.database(), view, list);
    recorder.keepBoxesOnly();
    // Drawing changes nothing of an entity; only its interface is older than that knowledge.
    recorder.draw(const_cast<AcDbEntity&>(entity));
    const DrawnBoxes& boxes = recorder.boxes();
    const AcDbExtents& box = boxes.told.isEmpty() ? boxes.drawn : boxes.told;
    if (box.isEmpty())
        return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

} // namespace embedded
