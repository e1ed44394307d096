#pragma once

#include "db/stub.h"
#include "dbents.h"

#include <vector>

namespace embedded {

// What the host's own rooms may touch of a block reference.
struct ReferenceAccess {
    static AcDbObjectId block(const AcDbBlockReference& reference) { return reference.m_fields.block; }
    // The attributes that are not erased, in their order.
    static std::vector<AcDbStub*> liveAttributes(const AcDbBlockReference& reference);
};

} // namespace embedded
