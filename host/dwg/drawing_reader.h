#pragma once

#include "db/database_core.h"
#include "dwg/byte_span.h"

#include <memory>

namespace embedded::dwg {

// Makes a database, which must be empty, that of the drawing in these bytes: stubs for all objects, which
// stay bytes. FileError, with the database untouched, if they are no drawing that this host can read.
void readDrawing(DatabaseCore& core, std::shared_ptr<const Bytes> file);

} // namespace embedded::dwg
