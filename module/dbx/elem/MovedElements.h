#pragma once

#include "base/export.h"

#include "dbid.h"

#include <boost/function.hpp>

#include <map>
#include <set>

class AcDbDatabase;
class AcRxClass;

namespace orv {

// The elements of a drawing that the host has moved, and what is to be done about them once a clone has
// ended. A list and no more: others fill it, walk it, run its handlers and clear it. Goes with its drawing,
// and the handlers that nobody has run go unrun. For the host's main thread.
struct TALDORK_API MovedElements {
    // The list of a drawing, made at the first call. Null is reported and taken for the working drawing;
    // without one it has a list too, which is no drawing's. The reference holds until the drawing ends, that
    // of no drawing until the module does.
    static MovedElements& instance(AcDbDatabase* db);

    MovedElements();
    ~MovedElements();

    // Notes an element of the working drawing under a class. An id of another drawing is reported and noted
    // all the same; one that is null or invalid is reported and left out.
    void add(const AcDbObjectId& id, AcRxClass* cls);
    // Notes an element under its own class, with its handler. The first handler of an id stays. That of an id
    // that was left out is kept too.
    void add(const AcDbObjectId& id, boost::function<void()> handler);
    // Forgets all, and that processing was asked for. What is noted while the handlers go stays noted.
    void clear();

    // Asks for a pass over the list after the clone.
    void queuePostCloneProcessing();
    bool isPostCloneProcessingQueued() const;

    const std::set<AcDbObjectId>& getAllMovedElements() const;
    const std::map<AcRxClass*, std::set<AcDbObjectId>>& getAllMovedElementsByClass() const;
    const std::map<AcDbObjectId, boost::function<void()>>& getHandlers() const;

private:
    std::map<AcRxClass*, std::set<AcDbObjectId>> m_byClass;
    std::set<AcDbObjectId> m_all;
    std::map<AcDbObjectId, boost::function<void()>> m_handlers;
    bool m_postCloneQueued = false;
};

} // namespace orv
