#pragma once

#include "base/dbx/inc/orvrxuti_dbx.h"

// What the host is told of this module's classes. The names stand in drawings: they stay.
namespace structure {

// The application under which the host finds the module when a drawing has elements of it.
extern const wchar_t* const kApplicationName;

extern const orv::ClassRow kNodeRow;
extern const orv::ClassRow kBeamRow;
extern const orv::ClassRow kSlabRow;
extern const orv::ClassRow kLoadRow;

} // namespace structure
