#include "db/entities/curve_meeting.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

// Directions whose sine is below this run alongside each other.
constexpr double kAlongside = 1.0e-11;

double sizeOf(const PathSegment& segment) {
    double size = 1.0;
    for (const double share : {0.0, 1.0}) {
        const AcGePoint3d point = segment.pointAt(share);
        size = std::max({size, std::fabs(point.x), std::fabs(point.y), std::fabs(point.z)});
    }
    return segment.isStraight ? size : std::max(size, segment.arc.radius);
}

double shareOf(const PathSegment& segment, const AcGePoint3d& point) {
    return segment.nearest(point, true, true);
}

bool holds(const MeetingPiece& piece, const AcGePoint3d& point, double slack) {
    const double share = shareOf(*piece.segment, point);
    const double length = piece.segment->length();
    return piece.segment->pointAt(share).distanceTo(point) <= 4.0 * slack &&
           piece.reaches(share, length > 0.0 ? slack / length : 0.0);
}

void addPoint(const MeetingPiece& a, const MeetingPiece& b, const AcGePoint3d& point, double slack,
              std::vector<double>& shares) {
    if (holds(a, point, slack) && holds(b, point, slack))
        shares.push_back(shareOf(*a.segment, point));
}

void meetLines(const MeetingPiece& a, const MeetingPiece& b, double slack, std::vector<double>& shares) {
    const AcGeVector3d u = a.segment->to - a.segment->from;
    const AcGeVector3d v = b.segment->to - b.segment->from;
    const AcGeVector3d between = b.segment->from - a.segment->from;
    const AcGeVector3d across = u.crossProduct(v);
    if (across.length() <= kAlongside * u.length() * v.length()) {
        const double off =
            u.length() > 0.0 ? between.crossProduct(u).length() / u.length() : between.length();
        if (off <= slack)
            meetAlong(a, b, slack, shares);
        return;
    }
    const double share = between.crossProduct(v).dotProduct(across) / across.lengthSqrd();
    addPoint(a, b, a.segment->from + u * share, slack, shares);
}

// The points of a circle on a line, in units of its direction.
std::vector<double> placesOnCircle(const AcGePoint3d& from, const AcGeVector3d& along, const PlaneArc& arc,
                                   double slack) {
    std::vector<double> places;
    const AcGeVector3d toCentre = arc.centre - from;
    const double rise = along.dotProduct(arc.normal);
    const double height = toCentre.dotProduct(arc.normal);
    if (std::fabs(rise) > kAlongside * along.length()) {
        places.push_back(height / rise);
        return places;
    }
    if (std::fabs(height) > slack)
        return places;
    const double foot = toCentre.dotProduct(along) / along.lengthSqrd();
    placesAtDistance(foot, (from + along * foot).distanceTo(arc.centre), along.length(), arc.radius, slack,
                     places);
    return places;
}

void meetLineAndArc(const MeetingPiece& a, const MeetingPiece& b, double slack, std::vector<double>& shares) {
    const MeetingPiece& line = a.segment->isStraight ? a : b;
    const MeetingPiece& round = a.segment->isStraight ? b : a;
    const AcGeVector3d along = line.segment->to - line.segment->from;
    if (!(along.length() > 0.0)) {
        addPoint(a, b, line.segment->from, slack, shares);
        return;
    }
    for (const double place : placesOnCircle(line.segment->from, along, round.segment->arc, slack))
        addPoint(a, b, line.segment->from + along * place, slack, shares);
}

void meetArcsInOnePlane(const MeetingPiece& a, const MeetingPiece& b, double slack,
                        std::vector<double>& shares) {
    const PlaneArc& first = a.segment->arc;
    const PlaneArc& second = b.segment->arc;
    const AcGeVector3d between = second.centre - first.centre;
    const double apart = between.length();
    if (apart <= slack) {
        if (std::fabs(first.radius - second.radius) <= slack)
            meetAlong(a, b, slack, shares);
        return;
    }
    double along = 0.0;
    double aside = 0.0;
    if (!circlesMeet(apart, first.radius, second.radius, slack, along, aside))
        return;
    const AcGeVector3d direction = between / apart;
    const AcGeVector3d across = first.normal.crossProduct(direction);
    addPoint(a, b, first.centre + direction * along + across * aside, slack, shares);
    if (aside > 0.0)
        addPoint(a, b, first.centre + direction * along - across * aside, slack, shares);
}

void meetArcs(const MeetingPiece& a, const MeetingPiece& b, double slack, std::vector<double>& shares) {
    const PlaneArc& first = a.segment->arc;
    const PlaneArc& second = b.segment->arc;
    const AcGeVector3d along = first.normal.crossProduct(second.normal);
    const double height = (second.centre - first.centre).dotProduct(second.normal);
    if (along.length() <= kAlongside) {
        if (std::fabs(height) <= slack)
            meetArcsInOnePlane(a, b, slack, shares);
        return;
    }
    // The line in which both planes meet, from where it is nearest to the first centre.
    const AcGeVector3d towards = along.crossProduct(first.normal);
    const AcGePoint3d from = first.centre + towards * (height / towards.dotProduct(second.normal));
    for (const double place : placesOnCircle(from, along, first, slack))
        addPoint(a, b, from + along * place, slack, shares);
}

// Whether the piece ends there, rather than going on or coming back.
bool endsAt(const MeetingPiece& piece, bool atEnd) {
    if (!piece.segment->isStraight)
        return piece.isBounded() && piece.segment->arc.sweep < kTwoPi - 1.0e-9;
    return atEnd ? !piece.beyondEnd : !piece.beyondBegin;
}

} // namespace

bool MeetingPiece::reaches(double share, double slack) const {
    if (!segment->isStraight) {
        if (!isBounded() || share <= 1.0 + slack)
            return true;
        // Just in front of the start is nearly a whole turn behind it.
        return share >= kTwoPi / segment->arc.sweep - slack;
    }
    return (beyondBegin || share >= -slack) && (beyondEnd || share <= 1.0 + slack);
}

double meetingSlack(const MeetingPiece& a, const MeetingPiece& b) {
    return std::max(AcGeContext::gTol.equalPoint(),
                    1.0e-9 * std::max(sizeOf(*a.segment), sizeOf(*b.segment)));
}

void placesAtDistance(double alongToFoot, double distanceOfFoot, double length, double radius, double slack,
                      std::vector<double>& places) {
    if (distanceOfFoot > radius + slack)
        return;
    if (distanceOfFoot >= radius - slack) {
        places.push_back(alongToFoot);
        return;
    }
    const double half = std::sqrt((radius - distanceOfFoot) * (radius + distanceOfFoot)) / length;
    places.push_back(alongToFoot - half);
    places.push_back(alongToFoot + half);
}

bool circlesMeet(double apart, double radius, double otherRadius, double slack, double& along,
                 double& aside) {
    const double outside = radius + otherRadius;
    const double inside = std::fabs(radius - otherRadius);
    if (apart > outside + slack || apart < inside - slack)
        return false;
    const bool touch = apart >= outside - slack || apart <= inside + slack;
    along = (apart * apart + (radius - otherRadius) * (radius + otherRadius)) / (2.0 * apart);
    if (touch)
        along = std::copysign(radius, along);
    aside = touch ? 0.0 : std::sqrt(std::max(0.0, (radius - along) * (radius + along)));
    return true;
}

void meetAlong(const MeetingPiece& a, const MeetingPiece& b, double slack, std::vector<double>& shares) {
    for (const MeetingPiece* piece : {&b, &a})
        for (const bool atEnd : {false, true})
            if (endsAt(*piece, atEnd))
                addPoint(a, b, piece->segment->pointAt(atEnd ? 1.0 : 0.0), slack, shares);
}

void meetInSpace(const MeetingPiece& a, const MeetingPiece& b, std::vector<double>& shares) {
    const double slack = meetingSlack(a, b);
    if (a.segment->isStraight && b.segment->isStraight)
        meetLines(a, b, slack, shares);
    else if (a.segment->isStraight || b.segment->isStraight)
        meetLineAndArc(a, b, slack, shares);
    else
        meetArcs(a, b, slack, shares);
}

} // namespace embedded
