#include "dbx/elem/element_log_access.h"

#include "dbx/elem/element_base.h"

namespace orv::elem {

const ElementLog* logOf(const ElementBase& element) {
    element.acdb_assertReadEnabled();
    return element.m_log.get();
}

} // namespace orv::elem
