#pragma once

#include "acadstrc.h"
#include "db/hatch/hatch_rings.h"

#include <cstddef>
#include <vector>

namespace embedded {

struct HatchLine {
    AcGePoint2d from, to;
};

// Which parts of a line are filled, from the places where it crosses the rings. A ring is left as often as it
// is entered, whatever way it goes and however often it crosses itself.
class HatchSpans {
public:
    struct Crossing {
        double at;
        std::size_t ring;
        std::size_t edge;
    };
    struct Span {
        Crossing from, to;
    };

    // `style` as AcDbHatch::HatchStyle; any other number counts as normal.
    HatchSpans(std::size_t rings, int style) : m_isInside(rings, 0), m_style(style) {}

    // Sorts the crossings. The spans stand until the next call.
    const std::vector<Span>& of(Crossing* first, Crossing* last);

private:
    bool isFilled(int depth) const;

    std::vector<char> m_isInside;
    int m_style;
    std::vector<Span> m_spans;
};

// How much of a hatch is evaluated before it counts as too dense.
struct HatchLimits {
    std::size_t lines = 100000;
    std::size_t dashes = 1000000;
};

// Appends the lines of the families inside of the rings. eOk; eExcessiveItemCount beyond the limits.
Acad::ErrorStatus hatchLines(const std::vector<HatchRing>& rings, int style,
                             const std::vector<HatchFamily>& families, const HatchLimits& limits,
                             std::vector<HatchLine>& lines);

// Appends the filled area as polygons without holes, side by side, each counter-clockwise, from the lowest
// on. They are cut only at heights where areas part or join, and keep the corners of the rings. eOk;
// eExcessiveItemCount for rings that cross too often.
Acad::ErrorStatus hatchPieces(const std::vector<HatchRing>& rings, int style, std::vector<HatchRing>& pieces);

// What is shorter counts as a point: a share of the size of the largest ring.
double smallestLength(const std::vector<HatchRing>& rings);

// Of a closed chain, above 0 for one that goes counter-clockwise.
double signedArea(const HatchRing& ring);

} // namespace embedded
