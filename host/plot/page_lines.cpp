#include "plot/page_lines.h"

#include "gi/plane_arc.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace embedded {
namespace {

// Millimetres.
constexpr double kDeviation = 0.02;
constexpr double kAround = 10.0;
// An area that is that thin, measured by its outline's length, is seen from its side.
constexpr double kThinnest = 1.0e-7;

bool isSomewhere(PagePoint p) { return std::isfinite(p.x) && std::isfinite(p.y); }

bool areSomewhere(const PagePoints& points) { return std::all_of(points.begin(), points.end(), isSomewhere); }

double lengthOf(PagePoint way) { return std::hypot(way.x, way.y); }

} // namespace

// Walks along a chain and puts the pen down for its dashes.
class PageLines::Dashes {
public:
    Dashes(Canvas& canvas, const std::vector<double>& pattern) : m_canvas(canvas), m_pattern(pattern) {
        for (const double dash : pattern)
            m_length += std::fabs(dash);
    }

    void skip(double length) {
        m_walked += length;
        m_isDown = false;
    }

    void walk(PagePoint from, PagePoint to) {
        const double length = lengthOf(to - from);
        double done = 0.0;
        std::size_t index = 0;
        double left = leftOf(index);
        while (done < length) {
            const double part = std::min(left, length - done);
            put(m_pattern[index], from + (to - from) * (done / length),
                from + (to - from) * ((done + part) / length));
            done += part;
            left -= part;
            if (done < length)
                next(index, left);
        }
        m_walked += length;
    }

private:
    // Where in the pattern the walk is, and how much is left of that dash.
    double leftOf(std::size_t& index) const {
        double at = std::fmod(m_walked, m_length);
        for (index = 0; index + 1 < m_pattern.size() && at >= std::fabs(m_pattern[index]); ++index)
            at -= std::fabs(m_pattern[index]);
        return std::max(std::fabs(m_pattern[index]) - at, 0.0);
    }

    void next(std::size_t& index, double& left) {
        index = (index + 1) % m_pattern.size();
        left = std::fabs(m_pattern[index]);
        m_isDown = false;
    }

    void put(double dash, PagePoint from, PagePoint to) {
        if (dash < 0.0) {
            m_isDown = false;
            return;
        }
        if (!m_isDown)
            m_canvas.move(from);
        m_canvas.line(to);
        m_isDown = dash > 0.0;
    }

    Canvas& m_canvas;
    const std::vector<double>& m_pattern;
    double m_length = 0.0;
    double m_walked = 0.0;
    bool m_isDown = false;
};

PageLines::PageLines(Canvas& canvas, const PlotPage& page) : m_canvas(canvas) {
    const double far = 2.0 * std::max(page.width, page.height) + kAround;
    m_far = {{-far, -far}, {page.width + far, page.height + far}};
    m_near = {{-kAround, -kAround}, {page.width + kAround, page.height + kAround}};
}

void PageLines::addChords(const PageArc& arc, PagePoints& points) { arc.addChords(kDeviation, points); }

void PageLines::wholeSegment(PagePoint from, PagePoint to, bool& isDown) {
    if (m_far.holds(from) && m_far.holds(to)) {
        if (!isDown)
            m_canvas.move(from);
        m_canvas.line(to);
        isDown = true;
        return;
    }
    double begin = 0.0, end = 1.0;
    isDown = false;
    if (!m_far.clip(from, to - from, begin, end))
        return;
    m_canvas.move(from + (to - from) * begin);
    m_canvas.line(from + (to - from) * end);
}

void PageLines::whole(const PagePoints& points, bool isClosed) {
    bool isDown = false, isWhole = true;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        wholeSegment(points[i], points[i + 1], isDown);
        isWhole = isWhole && isDown;
    }
    if (!isClosed)
        return;
    if (isWhole)
        m_canvas.close();
    else
        wholeSegment(points.back(), points.front(), isDown);
}

void PageLines::dashed(const PagePoints& points, bool isClosed, const LineLook& look) {
    Dashes dashes(m_canvas, look.pattern);
    const std::size_t segments = points.size() - (isClosed ? 0 : 1);
    for (std::size_t i = 0; i < segments; ++i) {
        const PagePoint from = points[i];
        const PagePoint way = points[(i + 1) % points.size()] - from;
        double begin = 0.0, end = 1.0;
        if (!m_near.clip(from, way, begin, end)) {
            dashes.skip(lengthOf(way));
            continue;
        }
        if (begin > 0.0)
            dashes.skip(lengthOf(way) * begin);
        dashes.walk(from + way * begin, from + way * end);
        if (end < 1.0)
            dashes.skip(lengthOf(way) * (1.0 - end));
    }
}

void PageLines::chain(const PagePoints& points, bool isClosed, const LineLook& look) {
    if (points.empty() || !areSomewhere(points))
        return;
    m_canvas.setPen(look.colour, look.width);
    double length = 0.0;
    for (std::size_t i = 0; i + 1 < points.size() && length == 0.0; ++i)
        length += lengthOf(points[i + 1] - points[i]);
    bool isDown = false;
    if (length == 0.0)
        wholeSegment(points.front(), points.front(), isDown);
    else if (look.pattern.empty())
        whole(points, isClosed);
    else
        dashed(points, isClosed, look);
}

void PageLines::segment(PagePoint from, PagePoint to, const LineLook& look) {
    if (!look.pattern.empty()) {
        m_points = {from, to};
        chain(m_points, false, look);
    } else if (isSomewhere(from) && isSomewhere(to)) {
        m_canvas.setPen(look.colour, look.width);
        bool isDown = false;
        wholeSegment(from, to, isDown);
    }
}

void PageLines::arc(const PageArc& arc, const LineLook& look) {
    const PagePoint reach = {std::fabs(arc.u.x) + std::fabs(arc.v.x),
                             std::fabs(arc.u.y) + std::fabs(arc.v.y)};
    if (!isSomewhere(arc.centre) || !isSomewhere(reach) || !std::isfinite(arc.sweep))
        return;
    const bool isNearAll = m_far.holds(arc.centre - reach) && m_far.holds(arc.centre + reach);
    if (!isNearAll || !look.pattern.empty()) {
        m_points.clear();
        addChords(arc, m_points);
        chain(m_points, false, look);
        return;
    }
    m_canvas.setPen(look.colour, look.width);
    // An eighth of a turn as one curve is nearer to the arc than any eye.
    const int pieces = std::max(1, static_cast<int>(std::ceil(arc.sweep / (kPi / 4.0) - 1.0e-9)));
    const double step = arc.sweep / pieces;
    const double reachOfCurve = 4.0 / 3.0 * std::tan(step / 4.0);
    m_canvas.move(arc.at(0.0));
    for (int i = 0; i < pieces; ++i) {
        const double begin = step * i, end = step * (i + 1);
        m_canvas.curve(arc.at(begin) + arc.wayAt(begin) * reachOfCurve,
                       arc.at(end) - arc.wayAt(end) * reachOfCurve, arc.at(end));
    }
}

void PageLines::endless(PagePoint from, PagePoint through, bool isRay, const LineLook& look) {
    const double infinite = std::numeric_limits<double>::infinity();
    const PagePoint way = through - from;
    const double length = lengthOf(way);
    if (!isSomewhere(from) || !isSomewhere(through))
        return;
    if (!(length > 0.0)) {
        segment(from, from, look);
        return;
    }
    const PagePoint along = way * (1.0 / length);
    double begin = isRay ? 0.0 : -infinite, end = infinite;
    if (m_near.clip(from, along, begin, end))
        segment(from + along * begin, from + along * end, look);
}

void PageLines::area(const PagePoints& outline, const LineLook& look) {
    area(std::vector<PagePoints>{outline}, look);
}

void PageLines::area(const std::vector<PagePoints>& outlines, const LineLook& look) {
    double size = 0.0, length = 0.0;
    bool isTurned = false;
    for (const PagePoints& outline : outlines) {
        if (!areSomewhere(outline))
            return;
        double twice = 0.0;
        for (std::size_t i = 0; i < outline.size(); ++i) {
            const PagePoint a = outline[i], b = outline[(i + 1) % outline.size()];
            twice += crossProduct(a - outline.front(), b - outline.front());
            length += lengthOf(b - a);
        }
        size += std::fabs(twice);
        isTurned = twice < 0.0;
    }
    if (!(size > kThinnest * length * length)) {
        LineLook line = look;
        line.pattern.clear();
        for (const PagePoints& outline : outlines)
            chain(outline, true, line);
        return;
    }
    const bool isSingle = outlines.size() == 1;
    isSingle ? m_canvas.setBrush(look.colour) : m_canvas.setOwnBrush(look.colour);
    for (PagePoints outline : outlines) {
        if (isSingle && isTurned)
            std::reverse(outline.begin(), outline.end());
        if (!std::all_of(outline.begin(), outline.end(), [&](PagePoint p) { return m_far.holds(p); }))
            m_far.clip(outline);
        for (std::size_t i = 0; i < outline.size(); ++i)
            i == 0 ? m_canvas.move(outline[i]) : m_canvas.line(outline[i]);
        if (!outline.empty())
            m_canvas.close();
    }
    if (!isSingle)
        m_canvas.fill(true);
}

} // namespace embedded
