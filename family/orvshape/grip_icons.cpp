#include "orvshape/grip_icons.h"

#include "orvshape/acad_draw.h"
#include "orvshape/colours.h"
#include "orvshape/save_entity_traits.h"

#include <algorithm>
#include <cmath>

namespace orv {

namespace {

Adesk::UInt8 byteOf(double part) {
    return static_cast<Adesk::UInt8>(std::lround(std::clamp(part, 0.0, 1.0) * 255.0));
}

AcCmEntityColor hostColour(const ColourRGBA& colour) {
    return AcCmEntityColor(byteOf(colour.red), byteOf(colour.green), byteOf(colour.blue));
}

const ColourRGBA& colourFor(AcDbGripOperations::DrawType type, const GripPointColors& colours) {
    switch (type) {
    case AcDbGripOperations::kHoverGrip:
        return colours.hover;
    case AcDbGripOperations::kHotGrip:
        return colours.hot;
    default:
        return colours.warm;
    }
}

} // namespace

GripPointColors getReferenceGeometryGripPointColors() {
    return {Colours::Cyan, Colours::Yellow, Colours::Red, ColourRGBA(0.0, 0.0, 0.0, 1.0)};
}

void drawGripPointIcon_GripButton(AcGiViewportDraw& draw, const AcGePoint3d& point,
                                  AcDbGripOperations::DrawType type, int size,
                                  const GripPointColors& colours) {
    AcGePoint2d pixelsPerUnit;
    draw.viewport().getNumPixelsInUnitSquare(point, pixelsPerUnit);
    if (size < 1 || !(pixelsPerUnit.x > 0.0) || !(pixelsPerUnit.y > 0.0))
        return;
    const AcadViewportDraw over(draw);
    const AcGeVector3d right = over.viewRight() * (size / pixelsPerUnit.x);
    const AcGeVector3d up = over.viewUp() * (size / pixelsPerUnit.y);
    const std::vector<AcGePoint3d> corners = {point - right - up, point + right - up, point + right + up,
                                              point - right + up};
    AcGiSubEntityTraits& traits = over.subEntityTraits();
    const SaveEntityTraits scope(traits);
    traits.setFillType(kAcGiFillAlways);
    traits.setTrueColor(hostColour(colourFor(type, colours)));
    if (over.polygon(corners))
        return;
    traits.setFillType(kAcGiFillNever);
    traits.setTrueColor(hostColour(colours.border));
    over.polygon(corners);
}

} // namespace orv
