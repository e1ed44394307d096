#include "plot/page_point.h"

#include "gi/plane_arc.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

// One side of a box: what of a + t * way has side >= 0, where side = distance + t * slope.
bool keepSide(double distance, double slope, double& from, double& to) {
    if (slope == 0.0)
        return distance >= 0.0;
    const double at = -distance / slope;
    (slope > 0.0 ? from : to) = slope > 0.0 ? std::max(from, at) : std::min(to, at);
    return from <= to;
}

// Cuts off what of a polygon has a distance below 0.
template <class Distance>
void cut(PagePoints& polygon, Distance distance) {
    PagePoints kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const PagePoint a = polygon[i];
        const PagePoint b = polygon[(i + 1) % polygon.size()];
        const double da = distance(a), db = distance(b);
        if (da >= 0.0)
            kept.push_back(a);
        if ((da >= 0.0) != (db >= 0.0))
            kept.push_back(a + (b - a) * (da / (da - db)));
    }
    polygon = std::move(kept);
}

} // namespace

bool PageBox::clip(PagePoint a, PagePoint way, double& from, double& to) const {
    return keepSide(a.x - least.x, way.x, from, to) && keepSide(most.x - a.x, -way.x, from, to) &&
           keepSide(a.y - least.y, way.y, from, to) && keepSide(most.y - a.y, -way.y, from, to);
}

void PageBox::clip(PagePoints& polygon) const {
    cut(polygon, [&](PagePoint p) { return p.x - least.x; });
    cut(polygon, [&](PagePoint p) { return most.x - p.x; });
    cut(polygon, [&](PagePoint p) { return p.y - least.y; });
    cut(polygon, [&](PagePoint p) { return most.y - p.y; });
}

PagePoint PageArc::at(double angle) const { return centre + u * std::cos(angle) + v * std::sin(angle); }

PagePoint PageArc::wayAt(double angle) const { return v * std::cos(angle) - u * std::sin(angle); }

void PageArc::addChords(double deviation, PagePoints& points) const {
    const double radius = std::max(std::hypot(u.x, u.y), std::hypot(v.x, v.y));
    const double share = std::min(deviation / std::max(radius, deviation), 0.5);
    const double step = std::clamp(2.0 * std::acos(1.0 - share), 1.0e-4, kPi / 16.0);
    const int count = std::max(1, static_cast<int>(std::ceil(sweep / step)));
    for (int i = 0; i <= count; ++i)
        points.push_back(at(sweep * i / count));
}

} // namespace embedded
