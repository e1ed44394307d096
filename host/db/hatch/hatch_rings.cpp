#include "db/hatch/hatch_rings.h"

#include "db/entities/bspline.h"
#include "gi/plane_arc.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

constexpr double kChordsOfTurn = 256.0;
// Products of coordinates further away would be no numbers.
constexpr double kFarthest = 1.0e100;
constexpr int kChordsOfSpan = 8;
int chordsOf(double sweep) {
    // What is no number is one chord.
    const double turns = std::fabs(sweep) <= kTwoPi ? std::fabs(sweep) / kTwoPi : 1.0;
    return std::max(1, static_cast<int>(std::ceil(turns * kChordsOfTurn - 1.0e-9)));
}

// From one angle on counter-clockwise to the other; a whole turn where they are the same.
double sweepOf(const HatchEdge& edge) {
    double sweep = std::fmod(edge.endAngle - edge.startAngle, kTwoPi);
    if (sweep <= 1.0e-12)
        sweep += kTwoPi;
    return sweep;
}

// Arcs are ellipses with axes of the same length.
void appendRound(const HatchEdge& edge, HatchRing& ring) {
    const bool isArc = edge.kind == HatchEdgeKind::kArc;
    const AcGeVector2d larger = isArc ? AcGeVector2d(edge.radius, 0.0) : edge.to.asVector();
    const AcGeVector2d smaller = larger.perpVector() * (isArc ? 1.0 : edge.ratio);
    const double way = edge.isCounterClockwise ? 1.0 : -1.0;
    const double sweep = sweepOf(edge);
    const int chords = chordsOf(sweep);
    for (int i = 0; i <= chords; ++i) {
        const double angle = way * (edge.startAngle + sweep * i / chords);
        ring.push_back(edge.from + larger * std::cos(angle) + smaller * std::sin(angle));
    }
}

void appendSpline(const HatchEdge& edge, HatchRing& ring) {
    Bspline spline;
    spline.degree = edge.degree;
    spline.knots = edge.knots;
    spline.weights = edge.weights;
    for (const AcGePoint2d& control : edge.controls)
        spline.controls.emplace_back(control.x, control.y, 0.0);
    std::vector<AcGePoint3d> points = spline.controls;
    if (spline.isSound()) {
        std::vector<double> parameters;
        points.clear();
        spline.sample(kChordsOfSpan, points, parameters);
    }
    for (const AcGePoint3d& point : points)
        ring.emplace_back(point.x, point.y);
}

HatchRing chainOf(const HatchEdge& edge) {
    HatchRing chain;
    switch (edge.kind) {
    case HatchEdgeKind::kLine:
        chain = {edge.from, edge.to};
        break;
    case HatchEdgeKind::kArc:
    case HatchEdgeKind::kEllipse:
        appendRound(edge, chain);
        break;
    case HatchEdgeKind::kSpline:
        appendSpline(edge, chain);
        break;
    }
    return chain;
}

// Behind each other: the first edge ends where the second one has an end, and so on.
HatchRing ringOfEdges(const std::vector<HatchEdge>& edges) {
    HatchRing ring;
    std::vector<HatchRing> chains;
    for (const HatchEdge& edge : edges) {
        chains.push_back(chainOf(edge));
        if (chains.back().empty())
            chains.pop_back();
    }
    for (std::size_t i = 0; i < chains.size(); ++i) {
        HatchRing& chain = chains[i];
        const auto gap = [](const AcGePoint2d& point, const HatchRing& other) {
            return std::min(point.distanceTo(other.front()), point.distanceTo(other.back()));
        };
        const bool turnsRound =
            i == 0 ? chains.size() > 1 && gap(chain.front(), chains[1]) < gap(chain.back(), chains[1])
                   : ring.back().distanceTo(chain.back()) < ring.back().distanceTo(chain.front());
        if (turnsRound)
            std::reverse(chain.begin(), chain.end());
        ring.insert(ring.end(), chain.begin(), chain.end());
    }
    return ring;
}

} // namespace

void appendBulge(const AcGePoint2d& from, const AcGePoint2d& to, double bulge, HatchRing& ring) {
    const AcGeVector2d chord = to - from;
    if (bulge == 0.0 || !(chord.length() > 0.0)) {
        ring.push_back(to);
        return;
    }
    // The centre is left of the chord for a counter-clockwise arc of less than half a turn.
    const double sweep = 4.0 * std::atan(bulge);
    const AcGePoint2d centre =
        from + chord * 0.5 + chord.perpVector() * ((1.0 - bulge * bulge) / (4.0 * bulge));
    const AcGeVector2d start = from - centre;
    const int chords = chordsOf(sweep);
    for (int i = 1; i < chords; ++i) {
        const double angle = sweep * i / chords;
        ring.push_back(centre + start * std::cos(angle) + start.perpVector() * std::sin(angle));
    }
    ring.push_back(to);
}

std::size_t pointsOf(const HatchLoop& loop) {
    std::size_t points = loop.vertices.size() + 1;
    for (const double bulge : loop.bulges)
        points += static_cast<std::size_t>(chordsOf(4.0 * std::atan(bulge)));
    for (const HatchEdge& edge : loop.edges) {
        const bool isRound = edge.kind == HatchEdgeKind::kArc || edge.kind == HatchEdgeKind::kEllipse;
        points += isRound ? static_cast<std::size_t>(kChordsOfTurn) + 1
                          : 2 + edge.controls.size() * static_cast<std::size_t>(kChordsOfSpan);
    }
    return points;
}

HatchRing ringOf(const HatchLoop& loop) {
    HatchRing ring;
    if (loop.edges.empty() && !loop.vertices.empty()) {
        ring.push_back(loop.vertices.front());
        for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
            const AcGePoint2d& to = loop.vertices[(i + 1) % loop.vertices.size()];
            appendBulge(loop.vertices[i], to, loop.bulges.empty() ? 0.0 : loop.bulges[i], ring);
        }
    } else {
        ring = ringOfEdges(loop.edges);
    }
    const auto isSame = [](const AcGePoint2d& a, const AcGePoint2d& b) { return a.x == b.x && a.y == b.y; };
    ring.erase(std::unique(ring.begin(), ring.end(), isSame), ring.end());
    while (ring.size() > 1 && isSame(ring.front(), ring.back()))
        ring.pop_back();
    for (const AcGePoint2d& point : ring)
        if (!(std::fabs(point.x) <= kFarthest) || !(std::fabs(point.y) <= kFarthest))
            return {};
    return ring;
}

} // namespace embedded
