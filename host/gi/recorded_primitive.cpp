#include "embedded/display_list.h"
#include "gi/plane_arc.h"
#include "gi/text_metrics.h"

#include <cmath>

namespace embedded {
namespace {

AcDbExtents ofText(const Primitive& text) {
    AcDbExtents box;
    const AcGeVector3d up = text.normal.crossProduct(text.direction) * text.height;
    const AcGeVector3d slant = text.direction * (std::tan(text.oblique) * text.height);
    const double width = textWidth(text.text, text.height, text.widthFactor, settingOf(text.style));
    // Mirrored letters go the other way from where the text stands.
    const AcGeVector3d along = text.direction * (text.style.isBackward() ? -width : width);
    const AcGeVector3d rise = text.style.isUpsideDown() ? -(up + slant) : up + slant;
    for (const AcGePoint3d& foot : {text.points.front(), text.points.front() + along}) {
        box.addPoint(foot);
        box.addPoint(foot + rise);
    }
    return box;
}

} // namespace

AcDbExtents Primitive::extents() const {
    AcDbExtents box;
    switch (kind) {
    case PrimitiveKind::kCircle:
    case PrimitiveKind::kArc: {
        PlaneArc arc;
        arc.centre = points.front();
        arc.normal = normal;
        arc.xAxis = direction;
        arc.radius = radius;
        arc.sweep = sweep;
        arc.addTo(box);
        if (arcType == kAcGiArcSector)
            box.addPoint(arc.centre);
        break;
    }
    case PrimitiveKind::kText:
        box = ofText(*this);
        break;
    case PrimitiveKind::kXline:
    case PrimitiveKind::kRay:
        return box;
    default:
        for (const AcGePoint3d& point : points)
            box.addPoint(point);
    }
    if (traits.thickness != 0.0)
        box.expandBy(normal * traits.thickness);
    return box;
}

AcDbExtents DisplayList::extents() const {
    AcDbExtents box;
    for (const Primitive& primitive : primitives)
        box.addExt(primitive.extents());
    return box;
}

} // namespace embedded
