#pragma once

#include "dbgrip.h"
#include "orvshape/colour_rgba.h"
#include "orvshape/export.h"

namespace orv {

// The colours of a grip's icon, by what the user does with the grip.
struct GripPointColors {
    ColourRGBA warm;   // nothing yet; the picture of a dragged grip, too
    ColourRGBA hover;  // the cursor rests on it
    ColourRGBA hot;    // he has taken hold of it
    ColourRGBA border; // of the icon, in all three
};

// Those of grips that move the geometry which an element refers to, rather than the element: cyan, yellow,
// red, with a black border.
ORVSHAPE_API GripPointColors getReferenceGeometryGripPointColors();

// Draws a grip as a button: a filled square that faces the viewer, and its border; `size` pixels from the
// point to each side, whatever the scale of the view is. Point and view are the world's. A size below 1 draws
// nothing. The traits are put back. With the last argument bound this is a GripManager::IconFunction.
ORVSHAPE_API void drawGripPointIcon_GripButton(AcGiViewportDraw& draw, const AcGePoint3d& point,
                                               AcDbGripOperations::DrawType type, int size,
                                               const GripPointColors& colours);

} // namespace orv
