#pragma once

#include "AcString.h"
#include "dbid.h"
#include "gepnt2d.h"
#include "gevec3d.h"

#include <vector>

// What a hatch holds, as the drawing file has it: numbers that no hatch needs are kept, so that it goes back
// as it came.
namespace embedded {

enum class HatchEdgeKind : Adesk::UInt8 { kLine = 1, kArc = 2, kEllipse = 3, kSpline = 4 };

// One edge of a loop. Which fields count depends on the kind.
struct HatchEdge {
    HatchEdgeKind kind = HatchEdgeKind::kLine;
    AcGePoint2d from; // line; centre of arc and ellipse
    AcGePoint2d to;   // line; ellipse: from the centre to the end of the larger half axis
    double radius = 0.0;
    double ratio = 1.0; // ellipse: smaller half axis to larger one
    // Radians. Those of a clockwise edge are told the other way round: its points are at the negative angles.
    double startAngle = 0.0;
    double endAngle = 0.0;
    bool isCounterClockwise = true;
    Adesk::UInt32 degree = 0;
    bool isRational = false;
    bool isPeriodic = false;
    std::vector<double> knots;
    std::vector<AcGePoint2d> controls;
    std::vector<double> weights;
};

struct HatchLoop {
    Adesk::UInt32 type = 0;
    bool hasBulges = false;
    bool isClosed = true;
    std::vector<AcGePoint2d> vertices; // of a loop of vertices
    std::vector<double> bulges;        // one for each vertex, or none
    std::vector<HatchEdge> edges;      // of one of edges
    std::vector<AcDbObjectId> boundary;
};

// A family of lines, as it is drawn.
struct HatchFamily {
    double angle = 0.0;
    AcGePoint2d base;
    AcGeVector2d offset;
    std::vector<double> dashes;
};

struct HatchFields {
    double elevation = 0.0;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcString name = L"SOLID";
    bool isSolid = true;
    bool isAssociative = true;
    std::vector<HatchLoop> loops;
    Adesk::UInt16 style = 0;
    Adesk::UInt16 patternType = 1;
    double angle = 0.0;
    double scale = 1.0;
    double space = 1.0;
    // The space was set since the scale was.
    bool spaceCounts = false;
    bool isDouble = false;
    std::vector<HatchFamily> families;
    double pixelSize = 0.0;
    std::vector<AcGePoint2d> seeds;
};

} // namespace embedded
