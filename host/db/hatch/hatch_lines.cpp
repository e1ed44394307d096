#include "db/hatch/hatch_area.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace embedded {
namespace {

constexpr double kSmallestShare = 1.0e-12;
// How far below a corner a line may be that counts as through it, in lengths that count as none.
constexpr double kSlack = 100.0;
constexpr std::size_t kMostCrossings = 4000000;
// Beyond that, numbers of lines are no whole numbers any more.
constexpr double kFarthestLine = 1.0e15;

// The lines of one family, in coordinates of its own: u along the lines, v across them.
class FamilyLines {
public:
    FamilyLines(const HatchFamily& family, const AcGePoint2d& origin, double slack)
        : m_family(family), m_origin(origin), m_slack(slack),
          m_along(std::cos(family.angle), std::sin(family.angle)) {
        const AcGeVector2d base = family.base - origin;
        m_u = base.dotProduct(m_along);
        m_v = base.dotProduct(m_along.perpVector());
        m_uStep = family.offset.dotProduct(m_along);
        m_vStep = family.offset.dotProduct(m_along.perpVector());
        if (m_vStep < 0.0) {
            m_uStep = -m_uStep;
            m_vStep = -m_vStep;
        }
        for (const double dash : family.dashes)
            m_period += std::fabs(dash);
    }

    bool isFinite() const {
        return std::isfinite(m_u) && std::isfinite(m_v) && std::isfinite(m_uStep) && std::isfinite(m_vStep) &&
               std::isfinite(m_period);
    }
    AcGePoint2d toOwn(const AcGePoint2d& point) const {
        const AcGeVector2d from = point - m_origin;
        return {from.dotProduct(m_along), from.dotProduct(m_along.perpVector())};
    }
    AcGePoint2d toPlane(double u, double v) const {
        return m_origin + m_along * u + m_along.perpVector() * v;
    }
    double heightOf(double line) const { return m_v + line * m_vStep; }
    double startOf(double line) const { return m_u + line * m_uStep; }

    // The number of the first line that is not below that height. A line that rounding alone has put below is
    // not. Without a step there is one line, 0.
    double firstFrom(double height) const {
        const double v = height - m_slack;
        if (!(m_vStep > 0.0))
            return m_v >= v ? 0.0 : 1.0;
        double line = std::ceil((v - m_v) / m_vStep);
        // Rounding may put the line on the wrong side of the height, by one; lines that are closer together
        // than their numbers can tell need not be right.
        if (heightOf(line) < v)
            line += 1.0;
        else if (heightOf(line - 1.0) >= v)
            line -= 1.0;
        return line;
    }

    // Appends a span, or its dashes. False if that would be more than `most` lines.
    bool addSpan(double line, double from, double to, std::size_t most, std::vector<HatchLine>& lines) const;

private:
    const HatchFamily& m_family;
    AcGePoint2d m_origin;
    double m_slack;
    AcGeVector2d m_along;
    double m_u = 0.0, m_v = 0.0, m_uStep = 0.0, m_vStep = 0.0;
    double m_period = 0.0;
};

bool FamilyLines::addSpan(double line, double from, double to, std::size_t most,
                          std::vector<HatchLine>& lines) const {
    const double v = heightOf(line);
    if (!(m_period > 0.0)) {
        lines.push_back({toPlane(from, v), toPlane(to, v)});
        return lines.size() <= most;
    }
    const double start = startOf(line);
    const double firstPeriod = std::floor((from - start) / m_period);
    const double periods = std::ceil((to - start) / m_period) - firstPeriod;
    const std::size_t room = most - lines.size();
    if (!(periods * static_cast<double>(m_family.dashes.size()) <= 4.0 * static_cast<double>(room) + 16.0))
        return false;
    for (double i = 0.0; i < periods; i += 1.0) {
        double at = start + (firstPeriod + i) * m_period;
        for (const double dash : m_family.dashes) {
            const double end = at + std::fabs(dash);
            const double low = std::max(at, from), high = std::min(end, to);
            if (dash >= 0.0 && (low < high || (dash == 0.0 && low == high)))
                lines.push_back({toPlane(low, v), toPlane(high, v)});
            at = end;
        }
        if (lines.size() > most)
            return false;
    }
    return true;
}

struct OwnRings {
    std::vector<HatchRing> rings;
    std::vector<std::vector<double>> firstLines; // for each corner
    // Of the lines that may cross a ring.
    double firstLine = 0.0, endLine = 0.0;
};

OwnRings ownRings(const std::vector<HatchRing>& rings, const FamilyLines& family) {
    OwnRings own;
    own.firstLine = std::numeric_limits<double>::infinity();
    own.endLine = -own.firstLine;
    for (const HatchRing& ring : rings) {
        own.rings.emplace_back();
        own.firstLines.emplace_back();
        own.rings.back().reserve(ring.size());
        own.firstLines.back().reserve(ring.size());
        for (const AcGePoint2d& point : ring) {
            const AcGePoint2d moved = family.toOwn(point);
            const double line = family.firstFrom(moved.y);
            own.rings.back().push_back(moved);
            own.firstLines.back().push_back(line);
            own.firstLine = std::min(own.firstLine, line);
            own.endLine = std::max(own.endLine, line);
        }
    }
    return own;
}

// Calls `cross(place, line, low corner, high corner, ring)` for each line that an edge crosses; places count
// from the first line.
template <class Cross>
void walkCrossings(const OwnRings& own, Cross cross) {
    for (std::size_t r = 0; r < own.rings.size(); ++r) {
        const HatchRing& ring = own.rings[r];
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const std::size_t next = i + 1 < ring.size() ? i + 1 : 0;
            const bool rises = own.firstLines[r][i] < own.firstLines[r][next];
            const std::size_t low = rises ? i : next, high = rises ? next : i;
            const AcGePoint2d& a = ring[low];
            const AcGePoint2d& b = ring[high];
            for (double line = own.firstLines[r][low]; line < own.firstLines[r][high]; line += 1.0)
                cross(static_cast<std::size_t>(line - own.firstLine), line, a, b, r);
        }
    }
}

Acad::ErrorStatus addFamily(const std::vector<HatchRing>& rings, const HatchFamily& told, double same,
                            HatchSpans& spans, std::size_t& linesLeft, std::size_t most,
                            std::vector<HatchLine>& lines) {
    const FamilyLines family(told, rings.front().front(), kSlack * same);
    if (!family.isFinite())
        return Acad::eOk;
    const OwnRings own = ownRings(rings, family);
    const double count = own.endLine - own.firstLine;
    if (!(count <= static_cast<double>(linesLeft)) || std::fabs(own.firstLine) >= kFarthestLine)
        return Acad::eExcessiveItemCount;
    linesLeft -= static_cast<std::size_t>(count);

    // Crossings line by line in one row. An edge has one on each line from its lower corner to its higher
    // one.
    std::vector<std::ptrdiff_t> changes(static_cast<std::size_t>(count) + 1, 0);
    double total = 0.0;
    for (const std::vector<double>& corners : own.firstLines) {
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const double a = corners[i], b = corners[i + 1 < corners.size() ? i + 1 : 0];
            total += std::fabs(a - b);
            ++changes[static_cast<std::size_t>(std::min(a, b) - own.firstLine)];
            --changes[static_cast<std::size_t>(std::max(a, b) - own.firstLine)];
        }
    }
    if (total > static_cast<double>(kMostCrossings))
        return Acad::eExcessiveItemCount;
    std::vector<std::size_t> ends(changes.size(), 0);
    std::ptrdiff_t here = 0;
    for (std::size_t i = 0; i + 1 < ends.size(); ++i) {
        here += changes[i];
        ends[i + 1] = ends[i] + static_cast<std::size_t>(here);
    }
    std::vector<HatchSpans::Crossing> crossings(ends.back());
    std::vector<std::size_t> places = ends;
    walkCrossings(
        own, [&](std::size_t at, double line, const AcGePoint2d& a, const AcGePoint2d& b, std::size_t ring) {
            const double share = (family.heightOf(line) - a.y) / (b.y - a.y);
            const double u = a.x + (b.x - a.x) * std::min(std::max(share, 0.0), 1.0);
            crossings[places[at]++] = {u, ring, 0};
        });
    for (std::size_t at = 0; at + 1 < ends.size(); ++at) {
        const double line = own.firstLine + static_cast<double>(at);
        for (const HatchSpans::Span& span :
             spans.of(crossings.data() + ends[at], crossings.data() + ends[at + 1]))
            if (span.to.at - span.from.at > same &&
                !family.addSpan(line, span.from.at, span.to.at, most, lines))
                return Acad::eExcessiveItemCount;
    }
    return Acad::eOk;
}

} // namespace

double smallestLength(const std::vector<HatchRing>& rings) {
    double size = 0.0;
    for (const HatchRing& ring : rings)
        for (const AcGePoint2d& point : ring)
            size = std::max({size, std::fabs(point.x - ring.front().x), std::fabs(point.y - ring.front().y)});
    return size * kSmallestShare;
}

bool HatchSpans::isFilled(int depth) const {
    switch (m_style) {
    case 1: // the outermost alone
        return depth == 1;
    case 2: // all that is inside of any
        return depth > 0;
    default:
        return depth % 2 != 0;
    }
}

const std::vector<HatchSpans::Span>& HatchSpans::of(Crossing* first, Crossing* last) {
    std::sort(first, last, [](const Crossing& a, const Crossing& b) { return a.at < b.at; });
    m_spans.clear();
    int depth = 0;
    bool isOpen = false;
    for (const Crossing* crossing = first; crossing != last; ++crossing) {
        char& isInside = m_isInside[crossing->ring];
        isInside = isInside == 0 ? 1 : 0;
        depth += isInside != 0 ? 1 : -1;
        if (isFilled(depth) == isOpen)
            continue;
        isOpen = !isOpen;
        if (!isOpen) {
            m_spans.back().to = *crossing;
            // Nothing between two crossings at one place.
            if (!(m_spans.back().from.at < crossing->at))
                m_spans.pop_back();
        } else if (!m_spans.empty() && m_spans.back().to.at == crossing->at) {
            // Areas that touch are one.
        } else {
            m_spans.push_back({*crossing, *crossing});
        }
    }
    return m_spans;
}

Acad::ErrorStatus hatchLines(const std::vector<HatchRing>& rings, int style,
                             const std::vector<HatchFamily>& families, const HatchLimits& limits,
                             std::vector<HatchLine>& lines) {
    if (rings.empty())
        return Acad::eOk;
    HatchSpans spans(rings.size(), style);
    std::size_t linesLeft = limits.lines;
    const double same = smallestLength(rings);
    for (const HatchFamily& family : families) {
        const Acad::ErrorStatus es = addFamily(rings, family, same, spans, linesLeft, limits.dashes, lines);
        if (es != Acad::eOk)
            return es;
    }
    return Acad::eOk;
}

} // namespace embedded
