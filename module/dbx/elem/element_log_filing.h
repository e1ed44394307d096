#pragma once

#include "base/export.h"

#include "acadstrc.h"

class AcDbDwgFiler;

namespace orv {

class ElementLog;

// Files version, number of entries, the entries with their arguments, and magic. The first failing status of
// the filer, or eOk. An argument that cannot be filed is reported and left out,
// although it is counted: such a block cannot be read again. See docs/element-stream.md.
TALDORK_API Acad::ErrorStatus dwgOutLog(AcDbDwgFiler& filer, const ElementLog& log);

// Replaces the entries by what the filer delivers. The first failing status, or eOk; 301 for a newer block,
// an argument of an unknown type, and a wrong end. What was read until then stays.
TALDORK_API Acad::ErrorStatus dwgInLog(AcDbDwgFiler& filer, ElementLog& log);

} // namespace orv
