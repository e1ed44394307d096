#pragma once

#include "base/export.h"

// Entry points under which older modules of the family expect a store file. They only satisfy linkage: each
// reports the attempt and answers its fixed value, whatever it is given.
extern "C" {
TALDORK_API void orv_cdb_free_ex();
TALDORK_API int orv_cdb_get();          // 3
TALDORK_API int orv_cdb_put();          // 3
TALDORK_API int orv_cdb_getupdate_ex(); // -1
TALDORK_API int orv_cdb_getname();      // 0
TALDORK_API int orv_cdb_status();       // 3
}
