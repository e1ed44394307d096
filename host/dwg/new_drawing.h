#pragma once

#include "dwg/drawing_parts.h"
#include "dwg/header_variables.h"

namespace embedded::dwg {

// The parts of a container that a drawing has which was never in a file: an empty preview, an auxiliary
// header, a template.
DrawingParts partsOfNewDrawing();

// The time of making and the two identifiers of a new drawing.
void fillNewVariables(HeaderVariables& variables);

} // namespace embedded::dwg
