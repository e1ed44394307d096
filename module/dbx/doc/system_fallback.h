#pragma once

#include "base/export.h"

#include <string>

class AcDbDatabase;

namespace orv {

class System;
namespace cdb {
struct ICdb;
}

namespace detail {

// Old drawings describe a system by an object of the class ORV_CCSysPar in the store's dictionary "SYSTEM",
// under "SYST". From it this makes the record 10/0, whose box is empty until something sets it, and gives the
// system its names of project and design code; the version text goes to the general data of the working
// drawing, whose user's plane also decides on the kind of problem; both are those of `db` where `db` is the
// working one. False, with nothing done, if there is no such object. Throws AlreadyExistsException if the
// system has one of the names.
TALDORK_API bool makeSystemRecord(AcDbDatabase& db, const std::wstring& name, System& system,
                                  cdb::ICdb& store);

} // namespace detail
} // namespace orv
