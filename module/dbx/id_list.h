#pragma once

#include "dbid.h"

#include <deque>
#include <memory>

namespace orv::detail {

// The ids that an archive keeps beside its bytes. Most archives have none, and a deque takes memory even when
// it is empty: here it is made for the first id.
class IdList {
public:
    bool empty() const { return m_ids == nullptr || m_ids->empty(); }
    const AcDbObjectId& front() const { return m_ids->front(); }
    void pop_front() { m_ids->pop_front(); }
    void push_back(const AcDbObjectId& id) { all().push_back(id); }

    std::deque<AcDbObjectId>& all() {
        if (m_ids == nullptr)
            m_ids = std::make_unique<std::deque<AcDbObjectId>>();
        return *m_ids;
    }
    const std::deque<AcDbObjectId>& all() const {
        static const std::deque<AcDbObjectId> none;
        return m_ids != nullptr ? *m_ids : none;
    }

private:
    std::unique_ptr<std::deque<AcDbObjectId>> m_ids;
};

} // namespace orv::detail
