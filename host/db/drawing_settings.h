#pragma once

#include "gepnt3d.h"

namespace embedded {

class DatabaseCore;

// The point of a drawing that stands at the insertion point when all of it is inserted elsewhere (INSBASE).
AcGePoint3d basePointOf(const DatabaseCore& core);

// By which the patterns of all line types are multiplied (LTSCALE); 1 for what is no number above 0.
double lineTypeScaleOf(const DatabaseCore& core);

// Gives a new drawing the settings of another one: units, limits, sizes and modes, and where the user works.
// What names objects stays as it is. With `withPlaces` also what says where things are: base point, extents,
// coordinate systems.
void copyDrawingSettings(const DatabaseCore& from, DatabaseCore& to, bool withPlaces);

} // namespace embedded
