#pragma once

#include "gepnt3d.h"

#include <cstddef>
#include <vector>

namespace embedded {

// A spline by its knots and control points, with a weight for each point or none.
struct Bspline {
    std::size_t degree = 0;
    std::vector<double> knots;
    std::vector<AcGePoint3d> controls;
    std::vector<double> weights;

    // Whether the numbers belong together and are of a size that is drawn: knots ascend, and there are as
    // many as points, degree and 1; no degree above 25, no more than 10,000 points.
    bool isSound() const;
    // At a parameter of the span that begins at `knots[span]`.
    AcGePoint3d pointAt(std::size_t span, double parameter) const;
    // Points along it with their parameters, from its begin to its end, `perSpan` for each span of its knots.
    // Only for a sound one.
    void sample(int perSpan, std::vector<AcGePoint3d>& points, std::vector<double>& parameters) const;
};

} // namespace embedded
