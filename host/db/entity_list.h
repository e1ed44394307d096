#pragma once

#include "db/stub.h"
#include "symbols/block_table.h"

#include <vector>

namespace embedded {

// The entities of one block in their order. An entity is never taken out: undoing its addition, like erasing,
// leaves it here erased, and what is erased is passed over.
class EntityList {
public:
    // What stands in the drawing that was read, where each entity names its neighbours.
    void setRead(std::vector<AcDbStub*> stubs);
    bool isRead() const { return m_read; }
    void forget();

    void append(AcDbStub* stub);
    std::size_t slots() const { return m_stubs.size(); }
    AcDbStub* at(std::size_t slot) const { return m_stubs[slot]; }

    // Null if all are erased, or there is none.
    AcDbStub* firstLive() const;
    AcDbStub* lastLive() const;
    std::vector<AcDbStub*> live() const;

    // Those that went with the block when it was erased, so that its return doesn't bring others back.
    std::vector<AcDbStub*> erasedWithBlock;

private:
    std::vector<AcDbStub*> m_stubs;
    bool m_read = true; // a fresh block has no chain to read
};

// What the host's own rooms may touch of a block.
struct BlockAccess {
    // The list, read from the file if need be.
    static EntityList& entities(const AcDbBlockTableRecord& block);
    static AcDbObjectId begin(const AcDbBlockTableRecord& block) { return block.m_fields.begin; }
    static AcDbObjectId end(const AcDbBlockTableRecord& block) { return block.m_fields.end; }
    // Makes the framing entities of a fresh block; handle 0 is the next free one.
    static void frame(AcDbBlockTableRecord& block, std::uint64_t beginHandle = 0,
                      std::uint64_t endHandle = 0);
    // What a copy of a block must not share with the other: frame, entities, references to it.
    struct Frame {
        AcDbObjectId begin, end;
        std::vector<AcDbObjectId> inserts;
        AcDbObjectId layout;
    };
    static Frame frameOf(const AcDbBlockTableRecord& block);
    static void setFrame(AcDbBlockTableRecord& block, const Frame& frame);
    static void disown(AcDbBlockTableRecord& block);
    static void setAnonymous(AcDbBlockTableRecord& block) { block.m_fields.anonymous = true; }
};

} // namespace embedded
