#include "orvshape/approximate_curve.h"

#include "orvshape/segmented_curve.h"

#include <algorithm>
#include <cmath>

namespace orv {

namespace {

constexpr double kQuarterTurn = 1.57079632679489661923;

// How many steps a piece takes with chords no longer than that.
double stepsOfArc(const CurveSegment& arc, double chordLength) {
    double step = kQuarterTurn;
    if (chordLength > 0.0)
        step = std::min(step, 2.0 * std::asin(std::min(chordLength / (2.0 * arc.radius()), 1.0)));
    return arc.sweep() / step;
}
double stepsOfLine(const CurveSegment& line, double chordLength) {
    return chordLength > 0.0 ? line.length() / chordLength : 1.0;
}

// The same in whole chords; as a real, since it may be any number or none.
double wantedChords(const CurveSegment& segment, double chordLength) {
    const double steps =
        segment.isArc() ? stepsOfArc(segment, chordLength) : stepsOfLine(segment, chordLength);
    // A whole number of steps stays one, whatever the last digit is.
    const double wanted = std::ceil(steps * (1.0 - 1.0e-12));
    return std::min(std::max(1.0, wanted), static_cast<double>(ApproximateCurve::kMostChords));
}

double wantedChords(const ORV_SegmentedCurve& curve, double chordLength) {
    double sum = 0.0;
    for (int i = 0; i < curve.getSegmentCount(); ++i)
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
        const double granted = std::floor(wantedChords(segment, m_chordLength) * share);
        const int chords = static_cast<int>(std::max(granted, wantedChords(segment, 0.0)));
        for (int k = 1; k < chords; ++k)
            points.append(segment.pointAt(segment.length() * k / chords));
        points.append(segment.end());
    }
    if (curve.isClosed())
        points.last() = points.first();
    return true;
}

} // namespace orv
