#include "acgi.h"
#include "db/entities/curve_path.h"
#include "db/entities/entity_parts.h"
#include "dbpl.h"
#include "embedded/display_list.h"

#include <algorithm>

using namespace embedded;

namespace {

// The two edges of a piece whose width goes from one to another, as one outline.
std::vector<AcGePoint3d> outlineOf(const PathSegment& piece, const AcGeVector3d& normal, double startWidth,
                                   double endWidth, double deviation) {
    std::vector<AcGePoint3d> middle = {piece.from, piece.to};
    if (!piece.isStraight)
        middle = piece.arc.chords(deviation);
    std::vector<AcGePoint3d> outline(2 * middle.size());
    const AcGeVector3d left =
        piece.isStraight ? normal.crossProduct((piece.to - piece.from).normal()) : normal;
    for (std::size_t i = 0; i < middle.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(middle.size() - 1);
        const double half = (startWidth + (endWidth - startWidth) * share) / 2.0;
        const AcGeVector3d aside = piece.isStraight ? left : (piece.arc.centre - middle[i]).normal();
        // Behind its centre an arc has no inner edge.
        const double inside = piece.isStraight ? half : std::min(half, piece.arc.radius);
        outline[i] = middle[i] + aside * inside;
        outline[outline.size() - 1 - i] = middle[i] - aside * half;
    }
    return outline;
}

} // namespace

namespace embedded {

void drawWidePath(const CurvePath& path, const std::vector<WidthPair>& widths, const AcGeVector3d& normal,
                  AcGiWorldDraw& worldDraw) {
    AcGiSubEntityTraits& traits = worldDraw.subEntityTraits();
    const AcGiFillType before = traits.fillType();
    for (std::size_t i = 0; i < path.segments.size() && !worldDraw.regenAbort(); ++i) {
        const PathSegment& piece = path.segments[i];
        if (widths[i].start == 0.0 && widths[i].end == 0.0) {
            CurvePath alone;
            alone.segments = {piece};
            drawPath(alone, &normal, false, worldDraw.geometry());
            continue;
        }
        const double deviation = worldDraw.deviation(kAcGiMaxDevForCurve, piece.pointAt(0.0));
        const std::vector<AcGePoint3d> outline =
            outlineOf(piece, normal, widths[i].start, widths[i].end, deviation);
        traits.setFillType(kAcGiFillAlways);
        worldDraw.geometry().polygon(static_cast<Adesk::UInt32>(outline.size()), outline.data());
        traits.setFillType(before);
    }
}

Acad::ErrorStatus wideExtents(const AcDbEntity& entity, const AcGeVector3d& thickness, AcDbExtents& extents) {
    AcDbExtents box;
    const Acad::ErrorStatus es = drawnExtents(entity, box);
    if (es != Acad::eOk)
        return es;
    box.expandBy(thickness);
    extents = box;
    return es;
}

} // namespace embedded

Adesk::Boolean AcDbPolyline::subWorldDraw(AcGiWorldDraw* worldDraw) {
    if (!hasWidth())
        return AcDbCurve::subWorldDraw(worldDraw);
    CurvePath path;
    getPath(path);
    std::vector<WidthPair> widths(path.segments.size());
    for (std::size_t i = 0; i < widths.size(); ++i)
        getWidthsAt(static_cast<unsigned int>(i), widths[i].start, widths[i].end);
    worldDraw->subEntityTraits().setThickness(m_fields.thickness);
    drawWidePath(path, widths, m_fields.normal, *worldDraw);
    return true;
}

Acad::ErrorStatus AcDbPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    return hasWidth() ? wideExtents(*this, thicknessVector(), extents)
                      : AcDbCurve::subGetGeomExtents(extents);
}
