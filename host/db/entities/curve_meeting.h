#pragma once

#include "db/entities/curve_path.h"
#include "gemat3d.h"

#include <vector>

namespace embedded {

// A piece of a path, and where it may be lengthened: a straight one at those ends, a round one, at either, to
// its whole circle.
struct MeetingPiece {
    const PathSegment* segment = nullptr;
    bool beyondBegin = false;
    bool beyondEnd = false;

    // Whether a place belongs to the piece. A share that rounding has taken past an end counts, as far as
    // `slack` goes.
    bool reaches(double share, double slack) const;
    bool isBounded() const { return !beyondBegin && !beyondEnd; }
};

// How far apart two computed points may be that are one.
double meetingSlack(const MeetingPiece& a, const MeetingPiece& b);

// Appends the shares of the first piece at which it meets the second. What runs along each other meets at the
// ends of the common stretch, if it has ends.
void meetInSpace(const MeetingPiece& a, const MeetingPiece& b, std::vector<double>& shares);
// The same, seen along the Z axis of a view: `toView` turns the world's coordinates into the view's.
void meetInView(const MeetingPiece& a, const MeetingPiece& b, const AcGeMatrix3d& toView,
                std::vector<double>& shares);

// For both: what two pieces share that lie on one line or circle, once it is known that they do.
void meetAlong(const MeetingPiece& a, const MeetingPiece& b, double slack, std::vector<double>& shares);

// The one or two places, in units of the direction, where a line comes to a distance from a point, or none.
void placesAtDistance(double alongToFoot, double distanceOfFoot, double length, double radius, double slack,
                      std::vector<double>& places);
// Two circles in a plane whose centres are `apart`: from the first centre the way along the line of both and
// the way aside, to both sides. False for circles that do not meet.
bool circlesMeet(double apart, double radius, double otherRadius, double slack, double& along, double& aside);

} // namespace embedded
