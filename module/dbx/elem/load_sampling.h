#pragma once

#include "dbx/elem/load_visualization_data.h"

class ORV_SegmentedCurve;

namespace orv {
class System;
}

namespace orv::elem::detail {

// The most arrows along a curve, and the most points of a load for export.
constexpr int kMostArrows = 51;
constexpr int kMostExportPoints = 63;

// How far it is along a curve, and where that begins; in drawing units.
struct CurveDistances {
    double start = 0.0;
    double end = 0.0;

    double length() const;
};
// Both 0 where the curve does not tell them.
CurveDistances distancesOf(const ORV_SegmentedCurve& curve);

// How long a length of the store is in the drawing.
double fromStore(const System& system, double size);

// Lay the arrows out anew, along the picture's curve by its value function. Both report, and leave the arrows
// as they are, if there is no curve or no value function.
//
// For drawing: evenly apart, as far as the settings' size 3 tells, at most kMostArrows.
void sampleAlongCurve(const System& system, LoadVisualizationData& visData);
// For export: at the ends of the chords that the curve is told by, at most kMostExportPoints, those that are
// nearest to the one before left out first. The bases are not scaled, and there are no distances.
void sampleForExport(const System& system, LoadVisualizationData& visData);

} // namespace orv::elem::detail
