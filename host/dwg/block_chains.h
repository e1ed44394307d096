#pragma once

#include "db/database_core.h"
#include "dwg/file_frame.h"
#include "dwg/object_envelope.h"

#include <unordered_map>
#include <unordered_set>

namespace embedded::dwg {

// How the entities of changed blocks are to be chained in a file: those of blocks whose record was written
// to, and of blocks that have lost an entity. The attributes of block references likewise.
class BlockChains {
public:
    BlockChains(DatabaseCore& core, FileFrame& frame);

    // The neighbours that an entity is to have; null if its block has not changed.
    const EntityLinks* find(const AcDbStub& entity) const;
    // The record names other entities as first and last than in the file.
    bool hasNewEnds(const AcDbStub& record) const { return m_newEnds.count(&record) != 0; }

private:
    void collectRecords(std::unordered_set<AcDbStub*>& records);
    void chain(AcDbStub& record);

    DatabaseCore& m_core;
    FileFrame& m_frame;
    std::unordered_map<const AcDbStub*, EntityLinks> m_links;
    std::unordered_set<const AcDbStub*> m_newEnds;
};

} // namespace embedded::dwg
