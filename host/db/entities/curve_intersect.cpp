#include "db/entities/curve_meeting.h"
#include "dbcurve.h"
#include "geplane.h"

#include <algorithm>
#include <functional>
#include <memory>

using namespace embedded;

namespace {

using Meet = std::function<void(const MeetingPiece&, const MeetingPiece&, std::vector<double>&)>;

// An open curve that may be lengthened goes on at its first and behind its last piece.
std::vector<MeetingPiece> piecesOf(const CurvePath& path, bool extend) {
    std::vector<MeetingPiece> pieces;
    const bool open = extend && !path.isClosed;
    for (std::size_t i = 0; i < path.segments.size(); ++i)
        pieces.push_back({&path.segments[i], open && i == 0, open && i + 1 == path.segments.size()});
    return pieces;
}

// Along the first curve, each point once.
void appendPoints(const CurvePath& path, const CurvePath& other, AcDb::Intersect type, const Meet& meet,
                  AcGePoint3dArray& points) {
    const bool extendThis = type == AcDb::kExtendThis || type == AcDb::kExtendBoth;
    const bool extendOther = type == AcDb::kExtendArg || type == AcDb::kExtendBoth;
    const std::vector<MeetingPiece> others = piecesOf(other, extendOther);
    std::vector<AcGePoint3d> found;
    for (const MeetingPiece& piece : piecesOf(path, extendThis)) {
        std::vector<double> shares;
        double slack = 0.0;
        for (const MeetingPiece& one : others) {
            meet(piece, one, shares);
            slack = std::max(slack, 8.0 * meetingSlack(piece, one));
        }
        std::sort(shares.begin(), shares.end());
        for (const double share : shares) {
            const AcGePoint3d point = piece.segment->pointAt(share);
            const bool isNew = std::none_of(found.begin(), found.end(), [&](const AcGePoint3d& known) {
                return known.distanceTo(point) <= slack;
            });
            if (isNew)
                found.push_back(point);
        }
    }
    for (const AcGePoint3d& point : found)
        points.append(point);
}

using OwnPath = std::function<bool(const AcDbCurve&, CurvePath&)>;

// What a class of somebody else's consists of is known by exploding it: into one curve behind the other, each
// with a path. False for anything else.
bool explodedPath(const AcDbCurve& curve, const OwnPath& ownPath, CurvePath& path) {
    AcDbVoidPtrArray set;
    if (curve.explode(set) != Acad::eOk)
        return false;
    std::vector<std::unique_ptr<AcDbEntity>> parts;
    for (void* const part : set)
        parts.emplace_back(static_cast<AcDbEntity*>(part));
    for (const std::unique_ptr<AcDbEntity>& part : parts) {
        const AcDbCurve* const piece = AcDbCurve::cast(part.get());
        CurvePath found;
        if (piece == nullptr || !ownPath(*piece, found))
            return false;
        path.segments.insert(path.segments.end(), found.segments.begin(), found.segments.end());
    }
    path.isClosed = curve.isClosed() != 0;
    return !path.segments.empty();
}

// The paths of two curves that are to meet. False if one of them has none.
bool meetingPaths(const AcDbCurve& curve, const AcDbEntity* other, const OwnPath& ownPath, CurvePath& path,
                  CurvePath& otherPath) {
    const AcDbCurve* const otherCurve = AcDbCurve::cast(other);
    const auto pathOf = [&](const AcDbCurve& one, CurvePath& found) {
        return ownPath(one, found) || explodedPath(one, ownPath, found);
    };
    return otherCurve != nullptr && pathOf(curve, path) && pathOf(*otherCurve, otherPath);
}

} // namespace

Acad::ErrorStatus AcDbCurve::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                              AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                              Adesk::GsMarker otherGsMarker) const {
    const OwnPath ownPath = [](const AcDbCurve& curve, CurvePath& found) { return curve.getPath(found); };
    CurvePath path;
    CurvePath otherPath;
    if (!meetingPaths(*this, other, ownPath, path, otherPath))
        return AcDbEntity::subIntersectWith(other, type, points, thisGsMarker, otherGsMarker);
    appendPoints(path, otherPath, type, meetInSpace, points);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                              const AcGePlane& projPlane, AcGePoint3dArray& points,
                                              Adesk::GsMarker thisGsMarker,
                                              Adesk::GsMarker otherGsMarker) const {
    const OwnPath ownPath = [](const AcDbCurve& curve, CurvePath& found) { return curve.getPath(found); };
    CurvePath path;
    CurvePath otherPath;
    if (!meetingPaths(*this, other, ownPath, path, otherPath))
        return AcDbEntity::subIntersectWith(other, type, projPlane, points, thisGsMarker, otherGsMarker);
    const AcGeMatrix3d toView = AcGeMatrix3d::worldToPlane(projPlane.normal());
    appendPoints(
        path, otherPath, type,
        [&](const MeetingPiece& a, const MeetingPiece& b, std::vector<double>& shares) {
            meetInView(a, b, toView, shares);
        },
        points);
    return Acad::eOk;
}
