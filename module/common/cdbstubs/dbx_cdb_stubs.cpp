#include "common/cdbstubs/dbx_cdb_stubs.h"

#include "base/assert.h"

namespace {

template <class T>
T reportAttempt(T result) {
    ORV_ASSERT(false).debug("Attempt to use CDB STUBs!");
    return result;
}

} // namespace

void orv_cdb_free_ex() { reportAttempt(0); }

int orv_cdb_get() { return reportAttempt(3); }

int orv_cdb_put() { return reportAttempt(3); }

int orv_cdb_getupdate_ex() { return reportAttempt(-1); }

int orv_cdb_getname() { return reportAttempt(0); }

int orv_cdb_status() { return reportAttempt(3); }
