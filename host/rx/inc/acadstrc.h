#pragma once

namespace Acad {

// What host operations answer. The numbers are fixed: they pass between modules that were built apart.
enum ErrorStatus : int {
#define ACAD_STATUS(name, number) name = number,
#include "acad_statuses.inc"
#undef ACAD_STATUS
};

} // namespace Acad
