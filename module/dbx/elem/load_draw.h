#pragma once

#include "base/export.h"
#include "dbx/elem/load_hatch.h"
#include "dbx/elem/load_types.h"
#include "dbx/elem/load_visualization_data.h"
#include "orvshape/acad_draw.h"

#include "gepnt3d.h"
#include "gevec3d.h"

namespace orv {
class System;
}

// How loads are drawn. All that draws answers true if the host wants whoever draws to stop, and then draws
// nothing more.
namespace orv::elem {

struct GenericLoad;

// The stem of a point load: from its point along the direction, as far as the value.
TALDORK_API bool drawPointLoad(AcadWorldDraw& wd, const System& system, const AcGeVector3d& direction,
                               const AcGePoint3d& point, double value);

namespace detail {

// Sets flags, direction, projection and scale of the picture of a line or area load, and takes both value
// functions out. False, with the picture as it was, if the load has nothing to draw along that curve; that is
// reported, other than an area's empty curve.
bool prepare(const System& system, const GenericLoad& load, LoadVisualizationData& visData);

// Stems and the line through the tails. Fewer than two arrows are reported, and not drawn; for both.
bool drawLoadLines(const AcadWorldDraw& wd, const LoadVisualizationData& visData);
// Heads. The last arrow has one if those between have one.
bool drawLoadArrowHeads(AcadViewportDraw& vd, const LoadVisualizationData& visData);

} // namespace detail

} // namespace orv::elem
