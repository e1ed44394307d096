#pragma once

#include "plot/page_lines.h"

namespace embedded {

// Draws primitives, one after the other.
class PrimitivePlotter {
public:
    PrimitivePlotter(Canvas& canvas, PageLines& lines, LineLooks& looks, const PageTransform& toPage)
        : m_canvas(canvas), m_lines(lines), m_looks(looks), m_toPage(toPage) {}

    void draw(const Primitive& primitive);

private:
    bool isFilled() const { return m_primitive->traits.fill == kAcGiFillAlways; }
    // The way of the thickness, as it is seen; none if there is no thickness.
    bool thickness(PagePoint& way) const;

    void points(bool isClosed);
    void round();
    void mesh();
    void shell();
    void text();

    void chainWithThickness(const PagePoints& chain, bool isClosed);
    PageArc pageArc() const;
    void roundBoundary(const PageArc& arc);
    std::vector<PagePoints> face(std::size_t& at) const;

    Canvas& m_canvas;
    PageLines& m_lines;
    LineLooks& m_looks;
    const PageTransform& m_toPage;
    // Of the primitive that is just drawn.
    const Primitive* m_primitive = nullptr;
    const LineLook* m_look = nullptr;
    PagePoints m_chain;
};

} // namespace embedded
