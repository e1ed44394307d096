#pragma once

#include "orvshape/acad_draw.h"

namespace orv {

// Draws the head of an arrow flat before the viewer: a slender triangle with its point at `tip`. `direction`
// leads from the tip back to where the arrow comes from; the head's body extends along it as it is seen in
// the view, `length` long, a third of that wide. With `doubleHead`, as moments have it, a second head of the
// same size stands right behind the first. With `fill` they are filled, otherwise outlines.
//
// A direction that leads towards the viewer or away from him shows the head as a dot, a circle as wide as the
// head, and a second circle around it for a double head. A length that is not above 0 or no number, and a
// direction without length, draw nothing and give false.
//
// True if the host wants whoever draws to stop. The fill type of the traits is put back.
ORVSHAPE_API bool drawArrowHead2D(AcadViewportDraw& draw, const AcGePoint3d& tip,
                                  const AcGeVector3d& direction, double length, bool doubleHead, bool fill);

} // namespace orv
