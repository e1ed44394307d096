#pragma once

#include "orvshape/acad_draw.h"

#include <string>

namespace orv {

// Draws a line of text, of the size that `draw` has, at the tail of an arrow: `position` is the tail, and
// `direction` is where the arrow leads. The text stands on the other side of the tail, in line with the arrow
// as that is seen in the view, and begins or ends there. Half a letter's height is left free between the tail
// and the text; the middle of the letters' height is level with the tail.
//
// The text faces the viewer and is never upside down: where it would read from right to left, or straight
// down, it is turned round. A direction that leads towards the viewer or away from him, or has no length,
// puts the text's centre at the point and the text along the view's right.
//
// The attachment of `draw` is put back. An empty text draws nothing and gives false. True if the host wants
// whoever draws to stop.
ORVSHAPE_API bool drawOrientedReadableText(AcadViewportDraw& draw, const AcGePoint3d& position,
                                           const AcGeVector3d& direction, const std::wstring& text);

} // namespace orv
