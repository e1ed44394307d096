#pragma once

#include "dbid.h"

#include <vector>

class AcDbEntity;

// Walks what an entity owns, the attributes of a block reference or the vertices of a polyline, in their
// order. Erased ones are passed over. The owner must stay as it is.
class AcDbObjectIterator {
public:
    explicit AcDbObjectIterator(std::vector<AcDbObjectId> ids, std::vector<AcDbEntity*> entities = {})
        : m_ids(std::move(ids)), m_entities(std::move(entities)) {}
    void start() { m_at = 0; }
    Adesk::Boolean done() const { return m_at >= m_ids.size() + m_entities.size(); }
    void step() { ++m_at; }
    // Null behind the last, and for what is in no database.
    AcDbObjectId objectId() const { return m_at < m_ids.size() ? m_ids[m_at] : AcDbObjectId(); }
    // What is in no database, since its owner is not; it stays the owner's. Null for all others.
    AcDbEntity* entity() const {
        return done() || m_at < m_ids.size() ? nullptr : m_entities[m_at - m_ids.size()];
    }

private:
    std::vector<AcDbObjectId> m_ids;
    std::vector<AcDbEntity*> m_entities;
    std::size_t m_at = 0;
};
