#include "orvshape/approximate_curve.h"

#include "orvshape/segmented_curve.h"

#include <algorithm>
#include <cmath>

namespace orv {

namespace {

constexpr double kQuarterTurn = 1.57079632679489661923;

// How many chords of an arc are no longer than that; as a real, since it may be any number or none.
double wantedChords(const CurveSegment& arc, double chordLength) {
    double step = kQuarterTurn;
    if (chordLength > 0.0)
        step = std::min(step, 2.0 * std::asin(std::min(chordLength / (2.0 * arc.radius()), 1.0)));
    // A whole number of steps stays one, whatever the last digit is.
    const double wanted = std::ceil(arc.sweep() / step * (1.0 - 1.0e-12));
    return std::min(wanted, static_cast<double>(ApproximateCurve::kMostChords));
}

double wantedChords(const ORV_SegmentedCurve& curve, double chordLength) {
    double sum = 0.0;
    for (int i = 0; i < curve.getSegmentCount(); ++i)
        if (curve.getSegmentAt(i)->isArc())
            sum += wantedChords(*curve.getSegmentAt(i), chordLength);
    return sum;
}

} // namespace

ApproximateCurve::ApproximateCurve(double chordLength) : m_chordLength(chordLength) {}

bool ApproximateCurve::create(const ORV_SegmentedCurve& curve, AcGePoint3dArray& points) const {
    points.removeAll();
    if (curve.isEmpty())
        return false;
    const double all = wantedChords(curve, m_chordLength);
    const double share = all > kMostChords ? kMostChords / all : 1.0;
    points.append(curve.startPoint());
    for (int i = 0; i < curve.getSegmentCount(); ++i) {
        const CurveSegment& segment = *curve.getSegmentAt(i);
        int chords = 1;
        if (segment.isArc()) {
            const double granted = std::floor(wantedChords(segment, m_chordLength) * share);
            chords = static_cast<int>(std::max(granted, wantedChords(segment, 0.0)));
        }
        for (int k = 1; k < chords; ++k)
            points.append(segment.pointAt(segment.length() * k / chords));
        points.append(segment.end());
    }
    if (curve.isClosed())
        points.last() = points.first();
    return true;
}

} // namespace orv
