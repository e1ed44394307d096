#include "dbx/elem/MovedElements.h"

#include "base/assert.h"
#include "dbx/doc/doc_data.h"

#include "dbapserv.h"

#include <boost/shared_ptr.hpp>

#include <utility>

namespace orv {

MovedElements& MovedElements::instance(AcDbDatabase* db) {
    ORV_ASSERT(db != 0);
    static ORV_CDocData<boost::shared_ptr<MovedElements>> s_lists;
    boost::shared_ptr<MovedElements>& list = s_lists(db);
    if (!list)
        list.reset(new MovedElements);
    return *list;
}

MovedElements::MovedElements() = default;
MovedElements::~MovedElements() = default;

void MovedElements::add(const AcDbObjectId& id, AcRxClass* cls) {
    ORV_ASSERT(id.database() == acdbHostApplicationServices()->workingDatabase());
    ORV_ASSERT(!id.isNull() && id.isValid());
    if (id.isNull() || !id.isValid())
        return;
    m_byClass[cls].insert(id);
    m_all.insert(id);
}

void MovedElements::add(const AcDbObjectId& id, boost::function<void()> handler) {
    add(id, id.objectClass());
    m_handlers.emplace(id, std::move(handler));
}

void MovedElements::clear() {
    // The list is empty before the handlers go: what goes with one of them may note elements anew.
    m_byClass.clear();
    m_all.clear();
    m_postCloneQueued = false;
    std::map<AcDbObjectId, boost::function<void()>> gone;
    gone.swap(m_handlers);
}

void MovedElements::queuePostCloneProcessing() { m_postCloneQueued = true; }

bool MovedElements::isPostCloneProcessingQueued() const { return m_postCloneQueued; }

const std::set<AcDbObjectId>& MovedElements::getAllMovedElements() const { return m_all; }

const std::map<AcRxClass*, std::set<AcDbObjectId>>& MovedElements::getAllMovedElementsByClass() const {
    return m_byClass;
}

const std::map<AcDbObjectId, boost::function<void()>>& MovedElements::getHandlers() const {
    return m_handlers;
}

} // namespace orv
