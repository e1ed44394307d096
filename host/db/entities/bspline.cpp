#include "db/entities/bspline.h"

#include <algorithm>

namespace embedded {
namespace {

constexpr std::size_t kMostDegree = 25;
constexpr std::size_t kMostControls = 10000;

} // namespace

bool Bspline::isSound() const {
    return degree >= 1 && degree <= kMostDegree && controls.size() > degree &&
           controls.size() <= kMostControls && knots.size() == controls.size() + degree + 1 &&
           std::is_sorted(knots.begin(), knots.end()) &&
           (weights.empty() || weights.size() == controls.size());
}

// De Boor's way: between the points that count for the span, round by round, until one is left.
AcGePoint3d Bspline::pointAt(std::size_t span, double parameter) const {
    struct Weighted {
        AcGeVector3d place;
        double weight = 0.0;
    };
    Weighted points[kMostDegree + 1];
    for (std::size_t i = 0; i <= degree; ++i) {
        const std::size_t at = span - degree + i;
        const double weight = weights.empty() ? 1.0 : weights[at];
        points[i] = {controls[at].asVector() * weight, weight};
    }
    for (std::size_t round = 1; round <= degree; ++round) {
        for (std::size_t i = degree; i >= round; --i) {
            const double low = knots[span - degree + i];
            const double high = knots[span + 1 + i - round];
            const double share = high > low ? (parameter - low) / (high - low) : 0.0;
            points[i] = {points[i - 1].place * (1.0 - share) + points[i].place * share,
                         points[i - 1].weight * (1.0 - share) + points[i].weight * share};
        }
    }
    const Weighted& found = points[degree];
    return found.weight != 0.0 ? AcGePoint3d::kOrigin + found.place / found.weight : controls[span - degree];
}

void Bspline::sample(int perSpan, std::vector<AcGePoint3d>& points, std::vector<double>& parameters) const {
    for (std::size_t span = degree; span < controls.size(); ++span) {
        const double from = knots[span], to = knots[span + 1];
        if (!(to > from))
            continue;
        for (int i = points.empty() ? 0 : 1; i <= perSpan; ++i) {
            parameters.push_back(i < perSpan ? from + (to - from) * i / perSpan : to);
            points.push_back(pointAt(span, parameters.back()));
        }
    }
}

} // namespace embedded
