#pragma once

#include "gept3dar.h"
#include "orvshape/export.h"

class ORV_SegmentedCurve;

namespace orv {

// Makes a chain of points out of a curve.
class ORVSHAPE_API ApproximateCurve {
public:
    // The longest chord, in drawing units. One that is not above 0, or no number, asks for no more than what
    // shows how the curve goes: the ends of its pieces, and a point for each quarter turn of round ones.
    explicit ApproximateCurve(double chordLength);

    // Points on the curve, from its start to its end: every vertex, and on each piece, straight or round,
    // points evenly between, so that no chord is longer than the chord length or spans more than a quarter
    // turn. Of a closed curve the last point is the first one again. `points` is emptied first. False, with
    // no points, for an empty curve.
    //
    // All pieces share kMostChords chords: where the chord length asks for more, chords are longer. Only the
    // vertices and the quarter turns of a curve of very many pieces may take it above that.
    bool create(const ORV_SegmentedCurve& curve, AcGePoint3dArray& points) const;

    static constexpr int kMostChords = 65536;

private:
    double m_chordLength;
};

} // namespace orv
