#pragma once

#include "db/database_core.h"
#include "dwg/container_r2000.h"
#include "dwg/file_frame.h"

namespace embedded::dwg {

// FileError if the header variables do not name an object of its kind for all that a drawing cannot be
// without.
void requireRoots(const FileFrame& frame);
// Finds the objects that the header variables name, and those that every drawing has under a fixed name; and
// where its user works.
void readRoots(DatabaseCore& core, const FileFrame& frame);
// Puts all that, and the next free handle, into the variables.
void writeRoots(const DatabaseCore& core, FileFrame& frame);
// Those that the second header repeats.
RootHandles rootHandles(const HeaderVariables& variables);

} // namespace embedded::dwg
