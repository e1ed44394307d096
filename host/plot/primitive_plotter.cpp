#include "plot/primitive_plotter.h"

#include "gi/glyph_outline.h"
#include "gi/plane_arc.h"
#include "gi/text_metrics.h"

#include <cmath>

namespace embedded {
namespace {

// Letters below that height, in millimetres, are no more than dust.
constexpr double kSmallestLetters = 0.02;
// Lines under and over a text, in heights of capital letters.
constexpr double kUnderline = -0.25;
constexpr double kOverline = 1.2;
constexpr double kLineOfText = 0.08;

} // namespace

void PrimitivePlotter::draw(const Primitive& primitive) {
    m_primitive = &primitive;
    m_look = &m_looks.of(primitive.traits);
    const std::vector<AcGePoint3d>& points = primitive.points;
    if (points.empty())
        return;
    switch (primitive.kind) {
    case PrimitiveKind::kPolyline:
        // By far the most of all.
        if (points.size() == 2 && primitive.traits.thickness == 0.0)
            m_lines.segment(m_toPage(points[0]), m_toPage(points[1]), *m_look);
        else
            this->points(false);
        break;
    case PrimitiveKind::kPolygon:
        this->points(true);
        break;
    case PrimitiveKind::kCircle:
    case PrimitiveKind::kArc:
        round();
        break;
    case PrimitiveKind::kMesh:
        mesh();
        break;
    case PrimitiveKind::kShell:
        shell();
        break;
    case PrimitiveKind::kText:
        text();
        break;
    case PrimitiveKind::kXline:
    case PrimitiveKind::kRay:
        if (points.size() >= 2)
            m_lines.endless(m_toPage(points[0]), m_toPage(points[1]), primitive.kind == PrimitiveKind::kRay,
                            *m_look);
        break;
    }
}

bool PrimitivePlotter::thickness(PagePoint& way) const {
    way = m_toPage(m_primitive->normal * m_primitive->traits.thickness);
    return m_primitive->traits.thickness != 0.0 && !m_primitive->normal.isZeroLength();
}

// The chain, the same at the other end of the thickness, and what stands up between the two.
void PrimitivePlotter::chainWithThickness(const PagePoints& chain, bool isClosed) {
    m_lines.chain(chain, isClosed, *m_look);
    PagePoint way;
    if (!thickness(way))
        return;
    PagePoints other;
    for (const PagePoint point : chain)
        other.push_back(point + way);
    m_lines.chain(other, isClosed, *m_look);
    for (std::size_t i = 0; i < chain.size(); ++i)
        m_lines.segment(chain[i], other[i], *m_look);
}

void PrimitivePlotter::points(bool isClosed) {
    m_chain.clear();
    for (const AcGePoint3d& point : m_primitive->points)
        m_chain.push_back(m_toPage(point));
    if (isClosed && isFilled())
        m_lines.area(m_chain, *m_look);
    else
        chainWithThickness(m_chain, isClosed);
}

PageArc PrimitivePlotter::pageArc() const {
    const Primitive& p = *m_primitive;
    return {m_toPage(p.points.front()), m_toPage(p.direction * p.radius),
            m_toPage(p.normal.crossProduct(p.direction) * p.radius),
            p.kind == PrimitiveKind::kCircle ? kTwoPi : p.sweep};
}

// Its curve, and the lines that close it.
void PrimitivePlotter::roundBoundary(const PageArc& arc) {
    m_lines.arc(arc, *m_look);
    if (m_primitive->kind == PrimitiveKind::kCircle || m_primitive->arcType == kAcGiArcSimple)
        return;
    PagePoints rest = {arc.at(arc.sweep), arc.at(0.0)};
    if (m_primitive->arcType == kAcGiArcSector)
        rest.insert(rest.begin() + 1, arc.centre);
    m_lines.chain(rest, false, *m_look);
}

void PrimitivePlotter::round() {
    PageArc arc = pageArc();
    const bool isWhole = m_primitive->kind == PrimitiveKind::kCircle;
    if (isFilled() && (isWhole || m_primitive->arcType != kAcGiArcSimple)) {
        m_chain.clear();
        PageLines::addChords(arc, m_chain);
        if (!isWhole && m_primitive->arcType == kAcGiArcSector)
            m_chain.push_back(arc.centre);
        m_lines.area(m_chain, *m_look);
        return;
    }
    roundBoundary(arc);
    PagePoint way;
    if (!thickness(way))
        return;
    PageArc other = arc;
    other.centre = arc.centre + way;
    roundBoundary(other);
    // A whole circle stands up in four lines, an arc at its ends.
    const int lines = isWhole ? 4 : 2;
    for (int i = 0; i < lines; ++i) {
        const double angle = isWhole ? arc.sweep * i / lines : arc.sweep * i;
        m_lines.segment(arc.at(angle), other.at(angle), *m_look);
    }
}

void PrimitivePlotter::mesh() {
    const Primitive& p = *m_primitive;
    const std::size_t rows = p.rows, columns = p.columns;
    if (rows == 0 || columns == 0 || p.points.size() / rows < columns)
        return;
    const auto at = [&](std::size_t row, std::size_t column) {
        return m_toPage(p.points[row * columns + column]);
    };
    for (std::size_t row = 0; isFilled() && row + 1 < rows; ++row)
        for (std::size_t column = 0; column + 1 < columns; ++column)
            m_lines.area({at(row, column), at(row, column + 1), at(row + 1, column + 1), at(row + 1, column)},
                         *m_look);
    for (std::size_t row = 0; row < rows; ++row) {
        m_chain.clear();
        for (std::size_t column = 0; column < columns; ++column)
            m_chain.push_back(at(row, column));
        m_lines.chain(m_chain, false, *m_look);
    }
    for (std::size_t column = 0; column < columns; ++column) {
        m_chain.clear();
        for (std::size_t row = 0; row < rows; ++row)
            m_chain.push_back(at(row, column));
        m_lines.chain(m_chain, false, *m_look);
    }
}

// The outline of the face there and those of its holes, which follow it. The recorder has checked the list.
std::vector<PagePoints> PrimitivePlotter::face(std::size_t& at) const {
    const std::vector<Adesk::Int32>& list = m_primitive->faces;
    std::vector<PagePoints> outlines;
    do {
        const std::size_t corners = static_cast<std::size_t>(std::abs(list[at]));
        PagePoints outline;
        for (std::size_t i = at + 1; i <= at + corners && i < list.size(); ++i) {
            const auto index = static_cast<std::size_t>(list[i]);
            if (index < m_primitive->points.size())
                outline.push_back(m_toPage(m_primitive->points[index]));
        }
        outlines.push_back(std::move(outline));
        at += corners + 1;
    } while (at < list.size() && list[at] < 0);
    return outlines;
}

void PrimitivePlotter::shell() {
    for (std::size_t at = 0; at < m_primitive->faces.size();) {
        const std::vector<PagePoints> outlines = face(at);
        if (isFilled())
            m_lines.area(outlines, *m_look);
        for (const PagePoints& outline : outlines)
            m_lines.chain(outline, true, *m_look);
    }
}

void PrimitivePlotter::text() {
    const Primitive& p = *m_primitive;
    const PagePoint origin = m_toPage(p.points.front());
    const AcGeVector3d rise = p.normal.crossProduct(p.direction) + p.direction * std::tan(p.oblique);
    PagePoint along = m_toPage(p.direction * (p.height * p.widthFactor));
    PagePoint up = m_toPage(rise * p.height);
    if (p.style.isBackward())
        along = along * -1.0;
    if (p.style.isUpsideDown())
        up = up * -1.0;
    const double size = std::fabs(crossProduct(along, up));
    // Also what is seen from its side, and what is nowhere.
    if (!std::isfinite(size) || !(size > kSmallestLetters * kSmallestLetters))
        return;
    const auto outline = glyphOutline(p.text, settingOf(p.style));
    const auto place = [&](double x, double y) { return origin + along * x + up * y; };
    const double room = 2.0;
    if (!std::isfinite(origin.x) || !m_lines.isNear(place(-room, -room)) ||
        !m_lines.isNear(place(outline->width + room, -room)) || !m_lines.isNear(place(-room, room)) ||
        !m_lines.isNear(place(outline->width + room, room)))
        return;
    m_canvas.setOwnBrush(m_look->colour);
    const GlyphOutline::Point* point = outline->points.data();
    const auto next = [&] {
        const PagePoint made = place(point->x, point->y);
        ++point;
        return made;
    };
    for (const GlyphOutline::Step step : outline->steps) {
        switch (step) {
        case GlyphOutline::Step::kMove:
            m_canvas.move(next());
            break;
        case GlyphOutline::Step::kLine:
            m_canvas.line(next());
            break;
        case GlyphOutline::Step::kCurve: {
            const PagePoint first = next();
            const PagePoint second = next();
            m_canvas.curve(first, second, next());
            break;
        }
        case GlyphOutline::Step::kClose:
            m_canvas.close();
            break;
        }
    }
    m_canvas.fill(false);
    for (const double level : {kUnderline, kOverline})
        if (level == kUnderline ? p.style.isUnderlined() : p.style.isOverlined())
            m_lines.area({place(0.0, level), place(outline->width, level),
                          place(outline->width, level + kLineOfText), place(0.0, level + kLineOfText)},
                         *m_look);
}

} // namespace embedded
