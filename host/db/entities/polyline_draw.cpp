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

Adesk::Boolean AcDbPolyline::subWorldDraw(AcGiWorldDraw* worldDraw) {
    if (!hasWidth())
        return AcDbCurve::subWorldDraw(worldDraw);
    AcGiSubEntityTraits& traits = worldDraw->subEntityTraits();
    const AcGiFillType before = traits.fillType();
    traits.setThickness(m_fields.thickness);
    for (std::size_t i = 0; i < segmentCount() && !worldDraw->regenAbort(); ++i) {
        CurvePath path;
        appendSegment(i, path);
        double startWidth = 0.0;
        double endWidth = 0.0;
        getWidthsAt(static_cast<unsigned int>(i), startWidth, endWidth);
        if (startWidth == 0.0 && endWidth == 0.0) {
            drawPath(path, &m_fields.normal, false, worldDraw->geometry());
            continue;
        }
        const PathSegment& piece = path.segments.front();
        const double deviation = worldDraw->deviation(kAcGiMaxDevForCurve, piece.pointAt(0.0));
        const std::vector<AcGePoint3d> outline =
            outlineOf(piece, m_fields.normal, startWidth, endWidth, deviation);
        traits.setFillType(kAcGiFillAlways);
        worldDraw->geometry().polygon(static_cast<Adesk::UInt32>(outline.size()), outline.data());
        traits.setFillType(before);
    }
    return true;
}

Acad::ErrorStatus AcDbPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    if (!hasWidth())
        return AcDbCurve::subGetGeomExtents(extents);
    AcDbExtents box;
    const Acad::ErrorStatus es = drawnExtents(*this, box);
    if (es != Acad::eOk)
        return es;
    box.expandBy(thicknessVector());
    extents = box;
    return es;
}
