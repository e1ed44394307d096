#pragma once

#include "base/blob.h"
#include "dbx/elem/element_base.h"

namespace orv::elem {

// What a drawing has stored of a plugin whose code is not there: filed again as it came, its ids as pointers
// that the host translates.
struct ElementBase::ProxyPlugin {
    boost::shared_ptr<Blob> m_data; // never looked into; without it the record cannot be written
    AcadObjectProperties m_properties;
    PropertyTree m_tree;
    std::deque<AcDbObjectId> m_softIds;
    std::deque<AcDbObjectId> m_hardIds;
};

} // namespace orv::elem
