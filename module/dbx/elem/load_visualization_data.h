#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

#include <boost/function.hpp>

#include <deque>

class ORV_SegmentedCurve;

namespace orv::elem::detail {

// Bits of LoadVisualizationData::flags.
enum LoadVisualizationFlags : unsigned int {
    kShowsIntermediateArrows = 1,
    kShowsFirstArrow = 2,
    kShowsLastArrow = 4,
    kDrawsArrowHeads = 8,
    kDrawsDoubleHeads = 16, // of moments
};

// The picture of a line or area load, kept from one drawing to the next. Lengths in drawing units.
struct LoadVisualizationData {
    struct Arrow {
        AcGePoint3d point; // the tip, on the curve
        AcGePoint3d base;  // the tail
        double value = 0.0;
        bool visible = false;
        int sign = 0; // 1 for a value below 0, else -1: from the tip, the tail is that way along direction
        double distance = 0.0; // along the curve
    };

    unsigned int flags = 0;
    AcGeVector3d direction; // in which the load acts
    bool projected = false;
    bool owned = false;
    double scale = 1.0;                     // of the value, for the length of its arrow
    ORV_SegmentedCurve* visCurve = nullptr; // not owned
    // How large the load is at a distance along the curve, or at a point: one of them is set. They are kept,
    // and called for texts, until the arrows are laid out anew: what they hold has to live as long. An export
    // has data of its own, whose curve may be there for that export only: what is made of that curve must not
    // be kept in the load, nor get into the functions of the load's picture.
    boost::function<double(double)> getValueAtDistFn;
    boost::function<double(const AcGePoint3d&)> getValueAtPosFn;
    double arrowLength = 0.2; // of the longest head
    std::deque<Arrow> vertices;
};

} // namespace orv::elem::detail
