#pragma once

#include "plot/canvas.h"
#include "plot/line_looks.h"

namespace embedded {

// Lines, arcs and areas on a canvas: with their patterns, and cut where they leave the page, however far they
// go. What has coordinates that are no numbers is left out.
class PageLines {
public:
    PageLines(Canvas& canvas, const PlotPage& page);

    // A chain of lines. A single point, or two that are one, is a dot.
    void chain(const PagePoints& points, bool isClosed, const LineLook& look);
    void segment(PagePoint from, PagePoint to, const LineLook& look);
    // The simple arc.
    void arc(const PageArc& arc, const LineLook& look);
    // All that is within the page of a line through two points: in both directions, or only from the first
    // one on.
    void endless(PagePoint from, PagePoint through, bool isRay, const LineLook& look);

    // Areas, all together; one within another is a hole. What is seen from its side is drawn as a line.
    void area(const std::vector<PagePoints>& outlines, const LineLook& look);
    void area(const PagePoints& outline, const LineLook& look);

    // Points of an arc, as near to it as can be seen.
    static void addChords(const PageArc& arc, PagePoints& points);
    // Whether all of a path may go to the canvas as it is.
    bool isNear(PagePoint point) const { return m_far.holds(point); }

private:
    class Dashes;

    void whole(const PagePoints& points, bool isClosed);
    void wholeSegment(PagePoint from, PagePoint to, bool& isDown);
    void dashed(const PagePoints& points, bool isClosed, const LineLook& look);

    Canvas& m_canvas;
    PageBox m_far;  // what may go to the canvas
    PageBox m_near; // what is seen, with its line widths
    PagePoints m_points;
};

} // namespace embedded
