#include "structure/moved_elements_reactor.h"

#include "base/assert.h"
#include "base/guard.h"
#include "dbx/elem/MovedElements.h"
#include "orvcore/transaction_manager.h"
#include "structure/element.h"
#include "structure/numbering.h"
#include "structure/working_database.h"

#include "dbapserv.h"
#include "dbidmap.h"

#include <string>

namespace structure {

namespace {

using orv::MovedElements;

// What is done about one element may move others, and so on. More rounds than that are two elements that
// push each other about.
constexpr int kMostRounds = 20;

template <class Work>
void withElement(const AcDbObjectId& id, Work work) {
    if (!id.isValid() || id.isErased())
        return;
    ORV_CDBTransactionManager manager(id.database(), false);
    AcDbObject* object = nullptr;
    if (manager.getObject(object, id, AcDb::kForWrite, false, false) != Acad::eOk)
        return;
    if (Element* const element = Element::cast(object))
        work(*element);
}

void settle(const AcDbObjectId& id) {
    withElement(id, [](Element& element) {
        Element::General* const general = element.general();
        if (general != nullptr && general->getNumber() == 0)
            Numbering::instance().giveNumber(*general);
        element.triggerOnMoved();
    });
}

void becomeOneOfItsOwn(const AcDbObjectId& id) {
    withElement(id, [](Element& element) { element.triggerOnPostClone(); });
}

void note(const AcDbDatabase* database, const AcDbObjectId& id, void (*work)(const AcDbObjectId&)) {
    auto* const drawing = const_cast<AcDbDatabase*>(database);
    const WorkingDatabase working(drawing);
    MovedElements::instance(drawing).add(id, [id, work] { work(id); });
}

} // namespace

void processMovedElements(AcDbDatabase& database) {
    const WorkingDatabase working(&database);
    const NumberingBatch batch;
    MovedElements& moved = MovedElements::instance(&database);
    int round = 0;
    for (; !moved.getHandlers().empty() && round < kMostRounds; ++round) {
        const auto handlers = moved.getHandlers();
        moved.clear();
        for (const auto& handler : handlers) {
            try {
                handler.second();
            }
            ORV_GUARD
        }
    }
    ORV_ASSERT(round < kMostRounds).debug("elements that move each other without end");
    moved.clear();
}

void MovedElementsReactor::start() {
    acedEditor->addReactor(this);
    const AcDbVoidPtrArray& present = *acdbActiveDatabaseArray();
    for (void* const database : present)
        m_drawings.watch(static_cast<AcDbDatabase*>(database));
}

void MovedElementsReactor::stop() {
    acedEditor->removeReactor(this);
    m_drawings.leaveAll();
}

void MovedElementsReactor::databaseConstructed(AcDbDatabase* database) { m_drawings.watch(database); }
void MovedElementsReactor::databaseToBeDestroyed(AcDbDatabase* database) { m_drawings.leave(database); }

void MovedElementsReactor::beginDeepClone(AcDbDatabase*, AcDbIdMapping&) { ++m_drawings.clonings; }
void MovedElementsReactor::abortDeepClone(AcDbIdMapping&) { --m_drawings.clonings; }

void MovedElementsReactor::endDeepClone(AcDbIdMapping& mapping) {
    --m_drawings.clonings;
    AcDbDatabase* database = nullptr;
    if (mapping.destDb(database) != Acad::eOk)
        return;
    std::set<AcDbObjectId> copies;
    for (AcDbIdMappingIter pairs(mapping); !pairs.done(); pairs.next()) {
        AcDbIdPair pair;
        if (pairs.getMap(pair) && pair.isCloned())
            copies.insert(pair.value());
    }
    MovedElements& moved = MovedElements::instance(database);
    for (const AcDbObjectId& id : copies)
        note(database, id, &becomeOneOfItsOwn);
    moved.queuePostCloneProcessing();
    const CopiedTogether together(copies);
    processMovedElements(*database);
}

void MovedElementsReactor::endWblock(AcDbDatabase* to) { processMovedElements(*to); }

void MovedElementsReactor::commandEnded(const ACHAR* command) {
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr)
        return;
    const std::wstring name = command;
    if (name == L"U" || name == L"REDO")
        MovedElements::instance(database).clear();
    else
        processMovedElements(*database);
}

void MovedElementsReactor::DrawingReactor::objectAppended(const AcDbDatabase* database,
                                                          const AcDbObject* object) {
    const Element* const element = Element::cast(object);
    if (element == nullptr)
        return;
    const bool isCopy = element->takeCopied();
    if (clonings == 0 && !ORV_CDBTransactionManager::getUndoRedoActive())
        note(database, object->objectId(), isCopy ? &becomeOneOfItsOwn : &settle);
}

void MovedElementsReactor::DrawingReactor::objectModified(const AcDbDatabase* database,
                                                          const AcDbObject* object) {
    const Element* const element = Element::cast(object);
    if (element != nullptr && element->takeMoved() && !ORV_CDBTransactionManager::getUndoRedoActive())
        note(database, object->objectId(), &settle);
}

void MovedElementsReactor::DrawingReactor::goodbye(const AcDbDatabase* database) {
    m_watched.erase(const_cast<AcDbDatabase*>(database));
}

void MovedElementsReactor::DrawingReactor::watch(AcDbDatabase* database) {
    if (m_watched.insert(database).second)
        database->addReactor(this);
}

void MovedElementsReactor::DrawingReactor::leave(AcDbDatabase* database) {
    if (m_watched.erase(database) != 0)
        database->removeReactor(this);
}

void MovedElementsReactor::DrawingReactor::leaveAll() {
    for (AcDbDatabase* const database : m_watched)
        database->removeReactor(this);
    m_watched.clear();
}

} // namespace structure
