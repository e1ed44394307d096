#pragma once

#include "gecurv3d.h"
#include "gegbl.h"
#include "orvshape/export.h"

#include <memory>

class AcGePlane;

namespace orv {
class CurveSegment;
}

namespace orv::geom {

// When two places or two vectors are the same for whoever looks at a drawing: a millionth of a drawing unit
// apart at most. Coarser than the host's tolerance, so that what rounding leaves of a length counts as none.
extern ORVSHAPE_API const AcGeTol gTol;

// The piece as a curve of the host, which belongs to the caller: an AcGeLineSeg3d, or an AcGeCircArc3d that
// begins at angle 0. It runs the same way. Null for a kind of piece that the host has no curve for; at
// present there is none.
ORVSHAPE_API std::unique_ptr<AcGeCurve3d> createGeCurve(const CurveSegment& segment);

// A value that is spread over a plane, at a point. The values stand as ordinates on the geometry's plane,
// along its normal n; their ends lie in the values' plane, which has the normal m and holds the point q. The
// point's foot f in the geometry's plane has the value
//
//     v = (q - f) . m / (n . m)
//
// so that f + v n lies in the values' plane: above 0 on the side to which n points. 0 where n lies in the
// values' plane, or a plane has no normal: no ordinate ends there.
ORVSHAPE_API double getValueOnGeomAndValuePlanes(const AcGePlane& geometry, const AcGePlane& values,
                                                 const AcGePoint3d& point);

} // namespace orv::geom
