#pragma once

#include "db/database_core.h"
#include "dwg/file_frame.h"

#include <string>

namespace embedded::dwg {

// The bytes of a database's drawing as a file. Objects that were not written to stand in it as the bytes that
// were read, in the order in which they stood; new ones follow. eOk; what an object's filer answered, or
// eFilerError for a drawing too big for the format, with the reason in `error`.
Acad::ErrorStatus writeDrawing(DatabaseCore& core, FileFrame& frame, Bytes& file, std::string& error);

} // namespace embedded::dwg
