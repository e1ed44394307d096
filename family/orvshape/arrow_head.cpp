#include "orvshape/arrow_head.h"

#include <cmath>

namespace orv {

namespace {

// Half of the head's width, as a share of its length.
constexpr double kHalfWidth = 1.0 / 6.0;
// Of a direction of length 1 that is seen shorter than this nothing tells any more where it leads.
constexpr double kLeastSeen = 1.0e-3;

class FillScope {
public:
    FillScope(AcGiSubEntityTraits& traits, bool isFilled) : m_traits(traits), m_fill(traits.fillType()) {
        traits.setFillType(isFilled ? kAcGiFillAlways : kAcGiFillNever);
    }
    ~FillScope() { m_traits.setFillType(m_fill); }

    FillScope(const FillScope&) = delete;
    FillScope& operator=(const FillScope&) = delete;

private:
    AcGiSubEntityTraits& m_traits;
    AcGiFillType m_fill;
};

// Filled or not, the ring stays one, or nothing would tell it from a larger dot.
bool drawDot(const AcadViewportDraw& draw, const AcGePoint3d& tip, double radius, bool isDouble) {
    if (draw.circle(tip, radius, draw.viewDir()))
        return true;
    if (!isDouble)
        return false;
    const FillScope outline(draw.subEntityTraits(), false);
    return draw.circle(tip, 2.0 * radius, draw.viewDir());
}

bool drawTriangle(const AcadViewportDraw& draw, const AcGePoint3d& tip, const AcGeVector3d& back,
                  double length) {
    const AcGeVector3d aside = draw.viewDir().crossProduct(back) * (length * kHalfWidth);
    const AcGePoint3d base = tip + back * length;
    return draw.polygon({tip, base + aside, base - aside});
}

} // namespace

bool drawArrowHead2D(AcadViewportDraw& draw, const AcGePoint3d& tip, const AcGeVector3d& direction,
                     double length, bool doubleHead, bool fill) {
    if (!(length > 0.0) || !std::isfinite(length) || direction.isZeroLength())
        return false;
    const FillScope scope(draw.subEntityTraits(), fill);
    const AcGeVector3d viewDir = draw.viewDir();
    const AcGeVector3d whole = direction.normal();
    const AcGeVector3d seen = whole - viewDir * whole.dotProduct(viewDir);
    if (!(seen.length() > kLeastSeen))
        return drawDot(draw, tip, length * kHalfWidth, doubleHead);
    const AcGeVector3d back = seen.normal();
    if (drawTriangle(draw, tip, back, length))
        return true;
    return doubleHead && drawTriangle(draw, tip + back * length, back, length);
}

} // namespace orv
