#include "db/entities/curve_meeting.h"
#include "gepnt2d.h"

#include <algorithm>
#include <cmath>

namespace embedded {
namespace {

constexpr double kAlongside = 1.0e-11;

double crossOf(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }
double dotOf(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.x + a.y * b.y; }

// A piece as the view shows it. A round one is an ellipse: origin + x * cos + y * sin; a straight one
// origin + x * share.
struct SeenPiece {
    MeetingPiece piece;
    bool isStraight = true;
    AcGePoint2d origin;
    AcGeVector2d x, y;

    SeenPiece(const MeetingPiece& of, const AcGeMatrix3d& toView)
        : piece(of), isStraight(of.segment->isStraight) {
        const PathSegment& s = *of.segment;
        const auto flat = [&](const AcGeVector3d& vector) {
            const AcGeVector3d seen = toView * vector;
            return AcGeVector2d(seen.x, seen.y);
        };
        const AcGePoint3d begin = toView * (isStraight ? s.from : s.arc.centre);
        origin.set(begin.x, begin.y);
        x = flat(isStraight ? s.to - s.from : s.arc.xAxis * s.arc.radius);
        if (!isStraight)
            y = flat(s.arc.yAxis() * s.arc.radius);
    }

    AcGePoint2d at(double angle) const { return origin + x * std::cos(angle) + y * std::sin(angle); }
    // Seen from the side it is a stretch of a line.
    bool isFlattened() const { return std::fabs(crossOf(x, y)) <= kAlongside * (dotOf(x, x) + dotOf(y, y)); }
    bool isCircle() const {
        const double size = dotOf(x, x) + dotOf(y, y);
        return std::fabs(dotOf(x, y)) <= 1.0e-12 * size &&
               std::fabs(dotOf(x, x) - dotOf(y, y)) <= 1.0e-12 * size;
    }
    // In the coordinates in which the ellipse is the circle of radius 1 about the origin.
    AcGeVector2d roundCoordinates(const AcGeVector2d& fromOrigin) const {
        const double area = crossOf(x, y);
        return {crossOf(fromOrigin, y) / area, crossOf(x, fromOrigin) / area};
    }
};

double angleShare(const SeenPiece& round, double angle) {
    return wholeTurns(angle) / round.piece.segment->arc.sweep;
}

// Whether a point of the view lies on the piece.
bool covers(const SeenPiece& seen, const AcGePoint2d& point, double slack) {
    const AcGeVector2d off = point - seen.origin;
    const double length = seen.piece.segment->length();
    const double shareSlack = length > 0.0 ? 4.0 * slack / length : 0.0;
    if (seen.isStraight) {
        const double size = dotOf(seen.x, seen.x);
        if (size <= slack * slack)
            return off.length() <= 4.0 * slack;
        return std::fabs(crossOf(seen.x, off)) <= 4.0 * slack * std::sqrt(size) &&
               seen.piece.reaches(dotOf(off, seen.x) / size, 4.0 * slack / std::sqrt(size));
    }
    const AcGeVector2d round = seen.roundCoordinates(off);
    return std::fabs(round.length() - 1.0) * seen.piece.segment->arc.radius <= 4.0 * slack &&
           seen.piece.reaches(angleShare(seen, std::atan2(round.y, round.x)), shareSlack);
}

void addAngle(const SeenPiece& a, const SeenPiece& b, double angle, double slack,
              std::vector<double>& shares) {
    const double share = angleShare(a, angle);
    if (a.piece.reaches(share, slack / a.piece.segment->length()) && covers(b, a.at(angle), slack))
        shares.push_back(share);
}

void addShare(const SeenPiece& a, const SeenPiece& b, double share, double slack,
              std::vector<double>& shares) {
    const double length = a.x.length();
    if (a.piece.reaches(share, length > slack ? slack / length : 0.0) &&
        covers(b, a.origin + a.x * share, slack))
        shares.push_back(share);
}

// What is seen from its end is a point.
bool isPoint(const SeenPiece& seen, double slack) { return seen.isStraight && seen.x.length() <= slack; }

void lineAndLine(const SeenPiece& a, const SeenPiece& b, double slack, std::vector<double>& shares) {
    const double across = crossOf(a.x, b.x);
    const AcGeVector2d between = b.origin - a.origin;
    if (std::fabs(across) > kAlongside * a.x.length() * b.x.length()) {
        addShare(a, b, crossOf(between, b.x) / across, slack, shares);
        return;
    }
    // Side by side or one behind the other: the ends of the common stretch.
    const double size = dotOf(a.x, a.x);
    if (!b.piece.beyondBegin)
        addShare(a, b, dotOf(between, a.x) / size, slack, shares);
    if (!b.piece.beyondEnd)
        addShare(a, b, dotOf(between + b.x, a.x) / size, slack, shares);
    if (!a.piece.beyondBegin)
        addShare(a, b, 0.0, slack, shares);
    if (!a.piece.beyondEnd)
        addShare(a, b, 1.0, slack, shares);
}

void lineAndRound(const SeenPiece& a, const SeenPiece& b, double slack, std::vector<double>& shares) {
    const AcGeVector2d from = b.roundCoordinates(a.origin - b.origin);
    const AcGeVector2d along = b.roundCoordinates(a.x);
    const double foot = -dotOf(from, along) / dotOf(along, along);
    std::vector<double> places;
    placesAtDistance(foot, (from + along * foot).length(), along.length(), 1.0,
                     slack / b.piece.segment->arc.radius, places);
    for (const double place : places)
        addShare(a, b, place, slack, shares);
}

// Where origin + x * cos + y * sin comes to a line.
void roundAndLine(const SeenPiece& a, const SeenPiece& b, double slack, std::vector<double>& shares) {
    const AcGeVector2d across = AcGeVector2d(-b.x.y, b.x.x) / b.x.length();
    const double cosine = dotOf(across, a.x);
    const double sine = dotOf(across, a.y);
    const double reach = std::hypot(cosine, sine);
    const double distance = dotOf(across, b.origin - a.origin);
    if (reach <= slack || std::fabs(distance) > reach + slack)
        return;
    const double middle = std::atan2(sine, cosine);
    const double half = std::acos(std::min(1.0, std::max(-1.0, distance / reach)));
    addAngle(a, b, middle - half, slack, shares);
    if (half > 0.0)
        addAngle(a, b, middle + half, slack, shares);
}

void circleAndCircle(const SeenPiece& a, const SeenPiece& b, double slack, std::vector<double>& shares) {
    const AcGeVector2d between = b.origin - a.origin;
    const double apart = between.length();
    double along = 0.0;
    double aside = 0.0;
    if (apart <= slack || !circlesMeet(apart, a.x.length(), b.x.length(), slack, along, aside))
        return;
    const AcGeVector2d direction = between / apart;
    for (const double side : {aside, -aside}) {
        const AcGeVector2d off = direction * along + AcGeVector2d(-direction.y, direction.x) * side;
        const AcGeVector2d round = a.roundCoordinates(off);
        addAngle(a, b, std::atan2(round.y, round.x), slack, shares);
        if (aside == 0.0)
            break;
    }
}

// How far outside of b's ellipse a's is at an angle: a trigonometric polynomial of the second degree, with
// four zeros at most.
class Outside {
public:
    Outside(const SeenPiece& a, const SeenPiece& b)
        : m_origin(b.roundCoordinates(a.origin - b.origin)), m_x(b.roundCoordinates(a.x)),
          m_y(b.roundCoordinates(a.y)) {}
    double at(double angle) const {
        const AcGeVector2d point = m_origin + m_x * std::cos(angle) + m_y * std::sin(angle);
        return dotOf(point, point) - 1.0;
    }
    // The zero between two angles at which it has differing signs.
    double zero(double low, double high) const {
        const bool rises = at(low) < 0.0;
        for (int i = 0; i < 100 && high - low > 1.0e-15; ++i) {
            const double middle = (low + high) / 2.0;
            ((at(middle) < 0.0) == rises ? low : high) = middle;
        }
        return (low + high) / 2.0;
    }
    // Where it comes nearest to zero between two angles, from the side of `sign`.
    double turn(double low, double high, double sign) const {
        for (int i = 0; i < 100; ++i) {
            const double third = (high - low) / 3.0;
            if (sign * at(low + third) < sign * at(high - third))
                high -= third;
            else
                low += third;
        }
        return (low + high) / 2.0;
    }

private:
    AcGeVector2d m_origin, m_x, m_y;
};

void roundAndRound(const SeenPiece& a, const SeenPiece& b, double slack, std::vector<double>& shares) {
    const Outside outside(a, b);
    constexpr int kSteps = 180;
    const double step = kTwoPi / kSteps;
    for (int i = 0; i < kSteps; ++i) {
        const double low = step * i;
        const double high = low + step;
        const double before = outside.at(low);
        const double behind = outside.at(high);
        if (before == 0.0) {
            addAngle(a, b, low, slack, shares);
        } else if (before * behind < 0.0) {
            addAngle(a, b, outside.zero(low, high), slack, shares);
        } else if (before * behind > 0.0) {
            // It may touch zero in between, or go through it and back.
            const double sign = before > 0.0 ? 1.0 : -1.0;
            const double turn = outside.turn(low, high, sign);
            const double there = sign * outside.at(turn);
            if (there < 0.0) {
                addAngle(a, b, outside.zero(low, turn), slack, shares);
                addAngle(a, b, outside.zero(turn, high), slack, shares);
            } else if (there * b.piece.segment->arc.radius <= slack) {
                addAngle(a, b, turn, slack, shares);
            }
        }
    }
}

// The stretch that an arc covers that is seen from the side.
PathSegment flattened(const MeetingPiece& piece, const SeenPiece& seen) {
    const PlaneArc& arc = piece.segment->arc;
    const bool alongX = dotOf(seen.x, seen.x) >= dotOf(seen.y, seen.y);
    const AcGeVector2d& longer = alongX ? seen.x : seen.y;
    const double turn = std::atan2(dotOf(seen.y, longer), dotOf(seen.x, longer));
    std::vector<double> angles = {0.0, arc.sweep};
    for (const double angle : {wholeTurns(turn), wholeTurns(turn + kPi)})
        if (angle <= arc.sweep || !piece.isBounded())
            angles.push_back(angle);
    const auto reach = [&](double angle) { return dotOf(seen.at(angle) - seen.origin, longer); };
    const auto ends = std::minmax_element(angles.begin(), angles.end(),
                                          [&](double a, double b) { return reach(a) < reach(b); });
    return PathSegment::straight(arc.pointAt(*ends.first), arc.pointAt(*ends.second), 0.0, 1.0);
}

} // namespace

void meetInView(const MeetingPiece& a, const MeetingPiece& b, const AcGeMatrix3d& toView,
                std::vector<double>& shares) {
    const double slack = meetingSlack(a, b);
    const SeenPiece first(a, toView);
    const SeenPiece second(b, toView);
    if (!second.isStraight && second.isFlattened()) {
        const PathSegment stretch = flattened(b, second);
        meetInView(a, {&stretch, false, false}, toView, shares);
        return;
    }
    if (isPoint(first, slack)) {
        addShare(first, second, 0.0, slack, shares);
    } else if (isPoint(second, slack)) {
        // Turned round, the point is on the first one where that comes to it.
        const AcGeVector2d off = second.origin - first.origin;
        if (first.isStraight) {
            addShare(first, second, dotOf(off, first.x) / dotOf(first.x, first.x), slack, shares);
        } else if (!first.isFlattened()) {
            const AcGeVector2d round = first.roundCoordinates(off);
            addAngle(first, second, std::atan2(round.y, round.x), slack, shares);
        }
    } else if (first.isStraight) {
        second.isStraight ? lineAndLine(first, second, slack, shares)
                          : lineAndRound(first, second, slack, shares);
    } else if (second.isStraight) {
        roundAndLine(first, second, slack, shares);
    } else if (first.isCircle() && second.isCircle()) {
        circleAndCircle(first, second, slack, shares);
    } else {
        roundAndRound(first, second, slack, shares);
    }
}

} // namespace embedded
