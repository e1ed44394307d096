#include "embedded/plot.h"

#include "gi/draw_view.h"
#include "gi/plane_arc.h"
#include "gi/text_metrics.h"
#include "plot/plotted_layers.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

// How far letters like g hang below the base line, in heights of capital letters.
constexpr double kBelow = 0.33;
// The sine of an angle below which a text is not seen.
constexpr double kSeenFromSide = 1.0e-3;

bool isSomewhere(const AcGePoint3d& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

void addText(const Primitive& text, const AcGeMatrix3d& toEye, AcDbExtents& box) {
    const AcGeVector3d up = text.normal.crossProduct(text.direction) * text.height;
    const AcGeVector3d slant = text.direction * (std::tan(text.oblique) * text.height);
    const AcGeVector3d alongEye = toEye * text.direction;
    const AcGeVector3d upEye = toEye * up;
    // From its side it is not seen.
    if (!(std::fabs(alongEye.x * upEye.y - alongEye.y * upEye.x) > kSeenFromSide * text.height))
        return;
    const double width = textWidth(text.text, text.height, text.widthFactor, settingOf(text.style)) *
                         (text.style.isBackward() ? -1.0 : 1.0);
    const double upwards = text.style.isUpsideDown() ? -1.0 : 1.0;
    for (const double along : {0.0, width})
        for (const double level : {-kBelow, 1.0})
            box.addPoint(toEye *
                         (text.points.front() + text.direction * along + (up + slant) * (level * upwards)));
}

void addPrimitive(const Primitive& primitive, const AcGeMatrix3d& toEye, AcDbExtents& all) {
    AcDbExtents box;
    switch (primitive.kind) {
    case PrimitiveKind::kXline:
    case PrimitiveKind::kRay:
        return;
    case PrimitiveKind::kText:
        addText(primitive, toEye, box);
        break;
    case PrimitiveKind::kCircle:
    case PrimitiveKind::kArc: {
        PlaneArc arc;
        arc.centre = toEye * primitive.points.front();
        arc.normal = toEye * primitive.normal;
        arc.xAxis = toEye * primitive.direction;
        arc.radius = primitive.radius;
        arc.sweep = primitive.kind == PrimitiveKind::kCircle ? kTwoPi : primitive.sweep;
        arc.addTo(box);
        if (primitive.arcType == kAcGiArcSector)
            box.addPoint(arc.centre);
        break;
    }
    default:
        for (const AcGePoint3d& point : primitive.points)
            if (isSomewhere(point))
                box.addPoint(toEye * point);
    }
    if (primitive.traits.thickness != 0.0 && !box.isEmpty())
        box.expandBy(toEye * (primitive.normal * primitive.traits.thickness));
    if (!box.isEmpty() && isSomewhere(box.minPoint()) && isSomewhere(box.maxPoint()))
        all.addExt(box);
}

} // namespace

AcDbExtents eyeExtents(const DisplayList& list, const ViewParameters& view) {
    const AcGeMatrix3d toEye = eyeToWorldOf(view).inverse();
    AcDbExtents box;
    PlottedLayers plotted;
    for (const Primitive& primitive : list.primitives)
        if (!primitive.points.empty() && plotted.has(primitive))
            addPrimitive(primitive, toEye, box);
    return box;
}

ViewParameters fittedView(const DisplayList& list, ViewParameters view, const PlotPage& page) {
    view.pixelsWide = page.pixelsWide();
    view.pixelsHigh = page.pixelsHigh();
    const AcDbExtents box = eyeExtents(list, view);
    if (box.isEmpty())
        return view;
    const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5;
    view.target = eyeToWorldOf(view) * AcGePoint3d(middle.x, middle.y, 0.0);
    const AcGeVector3d size = box.maxPoint() - box.minPoint();
    // A page that is all margin has none.
    const double margin = std::max(page.margin, 0.0) * 2.0;
    const double wide = page.width > margin ? page.width - margin : page.width;
    const double high = page.height > margin ? page.height - margin : page.height;
    const double height = std::max(size.y / high, size.x / wide) * page.height;
    if (std::isfinite(height) && height > 0.0)
        view.height = height;
    return view;
}

} // namespace embedded
