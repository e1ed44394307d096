#include "db/entities/reference_lists.h"

#include "db/database_core.h"
#include "db/entities/reference_access.h"
#include "db/entity_list.h"
#include "db/object_access.h"
#include "dbsymtb.h"

#include <algorithm>
#include <map>
#include <set>

namespace embedded {
namespace {

// The reference at a stub, if it is one and has been made an object of.
const AcDbBlockReference* referenceAt(const AcDbStub* stub) {
    return stub != nullptr && stub->object != nullptr ? AcDbBlockReference::cast(stub->object) : nullptr;
}

bool isErased(const AcDbStub& stub) { return stub.has(kErased | kPermanentlyErased); }

// Which references are to stand in which block's list.
using Wanted = std::map<AcDbStub*, std::vector<AcDbStub*>>;

void bringUpToDate(AcDbStub& block, const std::vector<AcDbStub*>& wanted) {
    auto* record = AcDbBlockTableRecord::cast(block.object);
    if (record == nullptr || isErased(block))
        return;
    BlockAccess::Frame frame = BlockAccess::frameOf(*record);
    const std::vector<AcDbObjectId> before = frame.inserts;
    std::set<const AcDbStub*> listed;
    const auto isGone = [&](const AcDbObjectId& id) {
        const AcDbStub* stub = id;
        listed.insert(stub);
        const AcDbBlockReference* reference = referenceAt(stub);
        return reference != nullptr &&
               (isErased(*stub) || ReferenceAccess::block(*reference) != record->objectId());
    };
    frame.inserts.erase(std::remove_if(frame.inserts.begin(), frame.inserts.end(), isGone),
                        frame.inserts.end());
    for (AcDbStub* stub : wanted)
        if (listed.insert(stub).second)
            frame.inserts.push_back(AcDbObjectId(stub));
    if (frame.inserts == before)
        return;
    BlockAccess::setFrame(*record, frame);
    block.set(kDirty);
}

} // namespace

void bringReferenceListsUpToDate(DatabaseCore& core) {
    Wanted wanted;
    bool retargeted = false;
    core.stubs().forEach([&](AcDbStub& stub) {
        const AcDbBlockReference* reference = referenceAt(&stub);
        if (reference == nullptr)
            return;
        AcDbStub* block = ReferenceAccess::block(*reference);
        const bool written = stub.has(kDirty);
        retargeted = retargeted || written;
        if (block == nullptr || !(written || block->has(kDirty)))
            return;
        AcDbObject* record = nullptr;
        if (core.resident(*block, record) == Acad::eOk && !isErased(stub))
            wanted[block].push_back(&stub);
    });
    if (!retargeted)
        return;
    // A reference that was written to may have shown another block before, whichever.
    core.stubs().forEach([&](AcDbStub& stub) {
        AcDbObject* record = stub.object;
        if (record != nullptr && record->isKindOf(AcDbBlockTableRecord::desc()))
            bringUpToDate(stub, wanted[&stub]);
    });
}

} // namespace embedded
