#include "db/hatch/hatch_area.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

constexpr std::size_t kMostPairs = 50000000;
constexpr std::size_t kMostPlaces = 20000000;

struct RisingEdge {
    AcGePoint2d low, high;
    std::size_t ring;

    double xAt(double y) const {
        if (y <= low.y)
            return low.x;
        if (y >= high.y)
            return high.x;
        return low.x + (high.x - low.x) * ((y - low.y) / (high.y - low.y));
    }
};

std::vector<RisingEdge> risingEdges(const std::vector<HatchRing>& rings) {
    std::vector<RisingEdge> edges;
    for (std::size_t r = 0; r < rings.size(); ++r) {
        for (std::size_t i = 0; i < rings[r].size(); ++i) {
            const AcGePoint2d& a = rings[r][i];
            const AcGePoint2d& b = rings[r][(i + 1) % rings[r].size()];
            if (a.y < b.y)
                edges.push_back({a, b, r});
            else if (b.y < a.y)
                edges.push_back({b, a, r});
        }
    }
    std::sort(edges.begin(), edges.end(),
              [](const RisingEdge& a, const RisingEdge& b) { return a.low.y < b.low.y; });
    return edges;
}

// The height where two edges cross, if they do.
bool crossingHeight(const RisingEdge& a, const RisingEdge& b, double& y) {
    const AcGeVector2d p = a.high - a.low, q = b.high - b.low, between = b.low - a.low;
    const double across = p.x * q.y - p.y * q.x;
    if (across == 0.0)
        return false;
    const double onA = (between.x * q.y - between.y * q.x) / across;
    const double onB = (between.x * p.y - between.y * p.x) / across;
    y = a.low.y + p.y * onA;
    return onA > 0.0 && onA < 1.0 && onB > 0.0 && onB < 1.0;
}

// Heights between which no edge begins, ends or crosses another. False if it takes too long to find them.
bool findLevels(const std::vector<RisingEdge>& edges, double same, std::vector<double>& levels) {
    std::vector<double> crossings;
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        levels.push_back(edges[i].low.y);
        levels.push_back(edges[i].high.y);
        const double left = std::min(edges[i].low.x, edges[i].high.x);
        const double right = std::max(edges[i].low.x, edges[i].high.x);
        for (std::size_t j = i + 1; j < edges.size() && edges[j].low.y < edges[i].high.y; ++j) {
            if (++pairs > kMostPairs)
                return false;
            double y = 0.0;
            if (std::max(edges[j].low.x, edges[j].high.x) >= left &&
                std::min(edges[j].low.x, edges[j].high.x) <= right && crossingHeight(edges[i], edges[j], y))
                crossings.push_back(y);
        }
    }
    std::sort(levels.begin(), levels.end());
    levels.erase(std::unique(levels.begin(), levels.end()), levels.end());
    // A crossing at a corner's height adds nothing but rounding.
    const std::size_t corners = levels.size();
    for (const double y : crossings) {
        const auto above =
            std::lower_bound(levels.begin(), levels.begin() + static_cast<std::ptrdiff_t>(corners), y);
        const bool isNear =
            (above != levels.begin() + static_cast<std::ptrdiff_t>(corners) && *above - y <= same) ||
            (above != levels.begin() && y - *(above - 1) <= same);
        if (!isNear)
            levels.push_back(y);
    }
    std::sort(levels.begin(), levels.end());
    levels.erase(std::unique(levels.begin(), levels.end(),
                             [same](double a, double b) { return b - a <= same * 1.0e-3; }),
                 levels.end());
    return true;
}

// A polygon that grows upwards between two chains.
struct GrowingPiece {
    HatchRing left, right;
    std::size_t leftEdge = 0, rightEdge = 0;
    double leftX = 0.0, rightX = 0.0; // at the height that it has reached
};

void addCorner(HatchRing& chain, const AcGePoint2d& point) {
    if (chain.empty() || chain.back().x != point.x || chain.back().y != point.y)
        chain.push_back(point);
}

class PieceBuilder {
public:
    PieceBuilder(const std::vector<RisingEdge>& edges, double same, std::vector<HatchRing>& pieces)
        : m_edges(edges), m_same(same), m_pieces(pieces) {}

    // The filled spans between two heights, from the left on.
    void addSlab(std::vector<HatchSpans::Span> spans, double low, double high) {
        const auto width = [this](const HatchSpans::Span& span, double y) {
            return m_edges[span.to.edge].xAt(y) - m_edges[span.from.edge].xAt(y);
        };
        spans.erase(std::remove_if(spans.begin(), spans.end(),
                                   [&](const HatchSpans::Span& span) {
                                       return std::max(width(span, low), width(span, high)) <= m_same;
                                   }),
                    spans.end());
        std::vector<GrowingPiece> next;
        const std::vector<std::size_t> heirs = onlyNeighbours(spans, low);
        for (std::size_t i = 0; i < spans.size(); ++i) {
            GrowingPiece piece;
            if (heirs[i] != kNone) {
                piece = std::move(m_open[heirs[i]]);
                m_open[heirs[i]].left.clear();
            }
            extend(piece, spans[i], low);
            piece.leftX = m_edges[piece.leftEdge].xAt(high);
            piece.rightX = m_edges[piece.rightEdge].xAt(high);
            next.push_back(std::move(piece));
        }
        closeAll(low);
        m_open = std::move(next);
    }

    void closeAll(double height) {
        for (GrowingPiece& piece : m_open)
            if (!piece.left.empty())
                close(piece, height);
        m_open.clear();
    }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // For each span the open piece below it, if the two have no other neighbour at that height.
    std::vector<std::size_t> onlyNeighbours(const std::vector<HatchSpans::Span>& spans, double height) const {
        std::vector<std::size_t> below(spans.size(), kNone), countBelow(spans.size(), 0);
        std::vector<std::size_t> countAbove(m_open.size(), 0);
        std::size_t p = 0, s = 0;
        while (p < m_open.size() && s < spans.size()) {
            const double left = m_edges[spans[s].from.edge].xAt(height);
            const double right = m_edges[spans[s].to.edge].xAt(height);
            if (std::min(right, m_open[p].rightX) - std::max(left, m_open[p].leftX) > m_same) {
                below[s] = p;
                ++countBelow[s];
                ++countAbove[p];
            }
            if (right < m_open[p].rightX)
                ++s;
            else
                ++p;
        }
        for (std::size_t i = 0; i < spans.size(); ++i)
            if (countBelow[i] != 1 || countAbove[below[i]] != 1)
                below[i] = kNone;
        return below;
    }

    void extend(GrowingPiece& piece, const HatchSpans::Span& span, double height) const {
        const double left = m_edges[span.from.edge].xAt(height);
        const double right = m_edges[span.to.edge].xAt(height);
        const bool isNew = piece.left.empty();
        if (isNew) {
            piece.left = {{left, height}};
            piece.right = {{right, height}};
        } else {
            grow(piece.left, piece.leftEdge, span.from.edge, piece.leftX, left, height);
            grow(piece.right, piece.rightEdge, span.to.edge, piece.rightX, right, height);
        }
        piece.leftEdge = span.from.edge;
        piece.rightEdge = span.to.edge;
    }

    // Where an edge goes on, there is no corner.
    void grow(HatchRing& chain, std::size_t before, std::size_t behind, double reached, double goesOnAt,
              double height) const {
        if (before == behind)
            return;
        addCorner(chain, {reached, height});
        if (std::fabs(goesOnAt - reached) > m_same)
            addCorner(chain, {goesOnAt, height});
    }

    void close(GrowingPiece& piece, double height) {
        addCorner(piece.right, {piece.rightX, height});
        addCorner(piece.left, {piece.leftX, height});
        HatchRing polygon = std::move(piece.right);
        for (std::size_t i = piece.left.size(); i-- > 0;)
            addCorner(polygon, piece.left[i]);
        while (polygon.size() > 1 && polygon.front().x == polygon.back().x &&
               polygon.front().y == polygon.back().y)
            polygon.pop_back();
        if (polygon.size() > 2 && signedArea(polygon) > 0.0)
            m_pieces.push_back(std::move(polygon));
    }

    const std::vector<RisingEdge>& m_edges;
    double m_same;
    std::vector<HatchRing>& m_pieces;
    std::vector<GrowingPiece> m_open;
};

} // namespace

double signedArea(const HatchRing& ring) {
    double twice = 0.0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
        const AcGeVector2d a = ring[i] - ring[0], b = ring[i + 1] - ring[0];
        twice += a.x * b.y - a.y * b.x;
    }
    return twice / 2.0;
}

Acad::ErrorStatus hatchPieces(const std::vector<HatchRing>& rings, int style,
                              std::vector<HatchRing>& pieces) {
    const double same = smallestLength(rings);
    const std::vector<RisingEdge> edges = risingEdges(rings);
    std::vector<double> levels;
    if (!std::isfinite(same) || !findLevels(edges, same, levels))
        return Acad::eExcessiveItemCount;
    HatchSpans spans(rings.size(), style);
    PieceBuilder builder(edges, same, pieces);
    std::vector<std::size_t> active;
    std::vector<HatchSpans::Crossing> crossings;
    std::size_t nextEdge = 0, places = 0;
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
        const double low = levels[i], high = levels[i + 1];
        const double middle = low + (high - low) / 2.0;
        while (nextEdge < edges.size() && edges[nextEdge].low.y <= middle)
            active.push_back(nextEdge++);
        active.erase(std::remove_if(active.begin(), active.end(),
                                    [&](std::size_t edge) { return edges[edge].high.y <= middle; }),
                     active.end());
        places += active.size();
        if (places > kMostPlaces)
            return Acad::eExcessiveItemCount;
        crossings.clear();
        for (const std::size_t edge : active)
            crossings.push_back({edges[edge].xAt(middle), edges[edge].ring, edge});
        builder.addSlab(spans.of(crossings.data(), crossings.data() + crossings.size()), low, high);
    }
    if (!levels.empty())
        builder.closeAll(levels.back());
    return Acad::eOk;
}

} // namespace embedded
