#pragma once

#include "gept3dar.h"
#include "orvshape/export.h"

class ORV_SegmentedCurve;

namespace orv {

// Makes a chain of points out of a curve.
class ORVSHAPE_API ApproximateCurve {
public:
    // The longest chord on round pieces, in drawing units. One that is not above 0, or no number, asks for no
    // more than what shows that a piece is round: a point for each quarter turn.
    explicit ApproximateCurve(double chordLength);

    // Points on the curve, from its start to its end: every vertex, and on round pieces points evenly
    // between, so that no chord is longer than the chord length or spans more than a quarter turn. A straight
    // piece needs no more than its ends, however long it is. Of a closed curve the last point is the first
    // one again. `points` is emptied first. False, with no points, for an empty curve.
    //
    // A piece never gives more than kMostChords chords, and the curve not many more than that in all: where
    // the chord length asks for more, chords are longer.
    bool create(const ORV_SegmentedCurve& curve, AcGePoint3dArray& points) const;

    static constexpr int kMostChords = 65536;

private:
    double m_chordLength;
};

} // namespace orv
