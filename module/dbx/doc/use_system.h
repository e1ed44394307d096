#pragma once

#include "base/export.h"
#include "dbx/doc/save_layer.h"

class AcDbEntity;

namespace orv {

class System;

// Finds the structural system of an entity: an element's by its link, anything else's by the name of its
// layer, which is a prefix of nine characters and the store's name. The drawing is looked through first if
// that has not been done. Holds the system without owning it: a guard may outlive neither the drawing nor the
// drawing's next look-through. Belongs on the stack.
class TALDORK_API UseSystem {
public:
    // Empty, with a report, for null, for an entity of which no drawing can be told, and for a store that the
    // drawing does not have; empty without one for a layer that names no store. Exceptions as
    // SystemManager::_initForDatabase, when the drawing is looked through.
    explicit UseSystem(const AcDbEntity* entity);
    ~UseSystem();

    UseSystem(const UseSystem&) = delete;
    UseSystem& operator=(const UseSystem&) = delete;

    bool empty() const { return m_system == nullptr; }
    operator bool() const { return m_system != nullptr; }

    // Null, without a report, for an empty guard.
    System* operator->() const { return m_system; }
    // An empty guard is reported and gives a null reference: who may hold one asks `empty`, or calls `get`.
    System& operator*() const;
    // Throws Exception, after a report, for an empty guard.
    System& get() const;

    const ORV_CSaveLayer& layer() const { return m_layer; }

private:
    ORV_CSaveLayer m_layer;
    System* m_system = nullptr;
};

} // namespace orv
