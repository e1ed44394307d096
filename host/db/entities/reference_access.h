#pragma once

#include "dbents.h"

namespace embedded {

// What the host's own rooms may touch of a block reference.
struct ReferenceAccess {
    static AcDbObjectId block(const AcDbBlockReference& reference) { return reference.m_fields.block; }
    static const OwnedChain& attributes(const AcDbBlockReference& reference) {
        return *reference.m_attributes;
    }
};

} // namespace embedded
