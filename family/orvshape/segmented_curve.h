#pragma once

#include "dbcurve.h"
#include "orvshape/curve_segment.h"
#include "orvshape/export.h"

#include <functional>
#include <memory>
#include <vector>

// A curve of straight and round pieces, one behind the other, in any plane or in none. It may be empty. It is
// closed when its end comes back to its start. Its parameter is the distance from the start along the curve,
// from 0 to its length.
//
// Made by itself or as the base of an element. Operations on it need read, those that change it write. Those
// of AcDbCurve answer as AcDbCurve documents them, and eDegenerateGeometry while the curve is empty.
class ORVSHAPE_API ORV_SegmentedCurve : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(ORV_SegmentedCurve);

    static constexpr Adesk::UInt32 kVersion = 1;
    static constexpr Adesk::UInt32 kMagic = 0x5E6CB1D3;

    ORV_SegmentedCurve();
    ~ORV_SegmentedCurve() override;

    bool isEmpty() const;
    bool empty() const { return isEmpty(); }
    int getSegmentCount() const;
    // Belongs to the curve, until that is changed; null outside of 0 to the count.
    const orv::CurveSegment* getSegmentAt(int index) const;
    // 0 for an empty curve.
    double getLength() const;
    // The origin for an empty curve.
    AcGePoint3d startPoint() const;
    AcGePoint3d endPoint() const;
    // The normal of the one plane that all pieces lie in, of length 1. The pieces run counter-clockwise about
    // it, the last one closing with the first. False, with `normal` untouched, if there is no such plane or
    // more than one.
    bool getNormalFromSegments(AcGeVector3d& normal) const;

    // Appends a piece. eInvalidInput, with nothing changed, if it does not begin where the curve ends; an
    // empty curve takes any.
    Acad::ErrorStatus append(const orv::CurveSegment& segment);
    // From the end on. eDegenerateGeometry, with nothing changed, for an empty curve and for what makes no
    // piece (see CurveSegment).
    Acad::ErrorStatus appendLineTo(const AcGePoint3d& point);
    Acad::ErrorStatus appendArcTo(const AcGePoint3d& point, double bulge, const AcGeVector3d& normal);
    Acad::ErrorStatus appendArcThrough(const AcGePoint3d& middle, const AcGePoint3d& point);
    Acad::ErrorStatus appendArcAbout(const AcGePoint3d& centre, const AcGeVector3d& normal, double sweep);
    // A straight line back to the start; nothing for a closed curve. Statuses as above.
    Acad::ErrorStatus appendClosingLine();
    // All pieces at once. eInvalidInput, with nothing changed, if one does not begin where the one before
    // ends.
    Acad::ErrorStatus setSegments(const std::vector<orv::CurveSegment>& segments);
    void clear();

    // The part of this curve between two distances, in no database; it runs from the first to the second,
    // against this curve if that is smaller. eInvalidInput for distances outside of the curve;
    // eDegenerateGeometry for two that are one.
    Acad::ErrorStatus createCurve(double param1, double param2,
                                  std::unique_ptr<ORV_SegmentedCurve>& newCurve) const;

    // Where pieces begin and end: one more than there are pieces, or as many for a closed curve.
    std::vector<AcGePoint3d> getVertices() const;
    // Moves vertices, all at once. The pieces between go with their ends, arcs with the same sweep.
    // eInvalidIndex, or eDegenerateGeometry if two neighbours come together; nothing is changed then.
    Acad::ErrorStatus moveVertices(const std::vector<int>& indices, const AcGeVector3d& offset);

    Adesk::Boolean isClosed() const override;
    // A single full circle.
    Adesk::Boolean isPeriodic() const override;
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override;
    Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;
    using AcDbCurve::getFirstDeriv;
    using AcDbCurve::getSecondDeriv;
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& deriv) const override;
    Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& deriv) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPoint, AcGePoint3d& pointOnCurve,
                                        Adesk::Boolean extend = false) const override;
    // 0 for pieces on a line; eNonPlanarEntity for a curve that lies in no plane.
    Acad::ErrorStatus getArea(double& area) const override;
    Acad::ErrorStatus reverseCurve() override;

    // True also for pieces on a line.
    Adesk::Boolean isPlanar() const override;
    // Through the start. For pieces on a line one of the planes that have it; eNonPlanarEntity.
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const override;

    // Writes the fields of AcDbCurve, then version, pieces and magic; docs/segmented-curve.md has the bytes.
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    // eMakeMeProxy for a version above kVersion; eDwgObjectImproperlyRead for numbers that make no curve and
    // for another magic, with the filer's status set to it; the status of a filer that fails. The pieces are
    // then as they were.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;

protected:
    // eCannotScaleNonUniformly, with nothing changed, where it would make an ellipse of an arc;
    // eDegenerateGeometry where it would leave nothing of a piece.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // The vertices, in both forms. The form with data makes the grips through orv::GripManager; moving takes
    // those that are its own and leaves others alone, so that an element may add its own grips.
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize, int gripSize,
                                       const AcGeVector3d& curViewDir, int bitflags) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData, const AcGeVector3d& offset,
                                          int bitflags) override;
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices,
                                             const AcGeVector3d& offset) override;
    // End, middle (of each piece), centre, quadrant, nearest and perpendicular points. Perpendicular is the
    // nearest place at which the way from the last point meets the curve at a right angle, an open curve
    // going on beyond its ends; there may be none.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    // Points on this curve, along it, each once, as the host finds them for the lines and arcs that the curve
    // explodes into; lengthened only at the two ends of an open curve. Statuses of the host's for such a line
    // or arc and the other entity; eDegenerateGeometry.
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                       AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                       Adesk::GsMarker otherGsMarker) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                       const AcGePlane& projPlane, AcGePoint3dArray& points,
                                       Adesk::GsMarker thisGsMarker,
                                       Adesk::GsMarker otherGsMarker) const override;
    // Into AcDbLine and AcDbArc, a full circle into AcDbCircle, with this entity's settings.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;

private:
    using Segments = std::vector<orv::CurveSegment>;

    void take(Segments segments);
    bool locate(double distance, std::size_t& index, double& onSegment) const;
    double nearestDistance(const AcGePoint3d& point, bool extend, AcGePoint3d& nearest) const;
    bool nearestPerpendicular(const AcGePoint3d& point, AcGePoint3d& nearest) const;
    // Intersects one piece, a line or an arc in no drawing, with the other entity.
    using MeetPiece =
        std::function<Acad::ErrorStatus(const AcDbEntity& piece, AcDb::Intersect type, AcGePoint3dArray&)>;
    Acad::ErrorStatus meetPieces(AcDb::Intersect type, const MeetPiece& meet, AcGePoint3dArray& points) const;

    void moveHeld(int index, const AcGeVector3d& offset);
    Acad::ErrorStatus appendMade(bool isMade, const orv::CurveSegment& segment);
    bool withMovedVertices(const std::vector<int>& indices, const AcGeVector3d& offset,
                           Segments& moved) const;

    Segments m_segments;
    // How far it is from the curve's start to the end of each piece.
    std::vector<double> m_distances;
    // The vertices that a drag holds, while their handlers are called; null otherwise.
    std::vector<int>* m_held = nullptr;
};
