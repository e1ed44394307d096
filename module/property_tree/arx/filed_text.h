#pragma once

#include "acadstrc.h"

#include <string>

class AcDbDwgFiler;

namespace orv::property_tree {

// Narrow text as its length in bytes and, if there are any, the bytes. The status of the first call that
// fails, or eOk.
Acad::ErrorStatus writeText(AcDbDwgFiler& filer, const std::string& text);
// Replaces `text`; after a failure it is what it was. A length that the stream does not hold never takes more
// memory than the stream could fill, or one step of 16 MiB.
Acad::ErrorStatus readText(AcDbDwgFiler& filer, std::string& text);

} // namespace orv::property_tree
