#pragma once

#include "embedded/display_list.h"
#include "host/gi/sketch.h"
#include "orvshape/acad_draw.h"

#include <functional>

// How the view lies that looks from there: no twist, the drawing unit ten pixels.
inline embedded::ViewParameters viewFrom(const AcGeVector3d& direction) {
    embedded::ViewParameters view;
    view.direction = direction;
    view.height = 100.0;
    view.pixelsHigh = 1000;
    return view;
}

// What the call draws in that view.
inline embedded::DisplayList seenIn(const embedded::ViewParameters& view,
                                    const std::function<void(orv::AcadViewportDraw&)>& draw) {
    Sketch sketch;
    sketch.world = [](AcGiWorldDraw&) { return false; };
    sketch.viewport = [&](AcGiViewportDraw& viewportDraw) {
        orv::AcadViewportDraw over(viewportDraw);
        draw(over);
    };
    return embedded::draw(sketch, view);
}
inline embedded::DisplayList seenFrom(const AcGeVector3d& direction,
                                      const std::function<void(orv::AcadViewportDraw&)>& draw) {
    return seenIn(viewFrom(direction), draw);
}
