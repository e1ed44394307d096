#pragma once

#include "dbmain.h"
#include "gedblar.h"

class AcGiGeometry;

namespace embedded {
class CurvePath;
}

// An entity along which one can walk. A parameter runs from the start to the end, as the class says;
// distances are lengths along the curve from its start. Every operation needs read and answers eOk;
// eNotImplementedYet where a class does not say how; eInvalidInput for a parameter, distance or point that is
// not on the curve. Results are untouched by a failure.
class AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve);

    virtual Adesk::Boolean isClosed() const;
    virtual Adesk::Boolean isPeriodic() const { return false; }

    virtual Acad::ErrorStatus getStartParam(double& param) const;
    virtual Acad::ErrorStatus getEndParam(double& param) const;
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;

    virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
    virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
    virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
    virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
    virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;

    // By the parameter. At a corner that of the piece behind it.
    virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& deriv) const;
    virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const;
    virtual Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& deriv) const;
    virtual Acad::ErrorStatus getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const;

    // With `extend` also on the curve as it would go on: a line without end, an arc's whole circle.
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPoint, AcGePoint3d& pointOnCurve,
                                                Adesk::Boolean extend = false) const;
    // An open curve counts as closed by a straight line.
    virtual Acad::ErrorStatus getArea(double& area) const;
    // From the end to the start. Needs write.
    virtual Acad::ErrorStatus reverseCurve();

protected:
    AcDbCurve();

    // The host's own curves: what they consist of; all of the above, extents, snap points and drawing come
    // from that. False where a class writes them itself, or while the curve has no length.
    virtual bool getPath(embedded::CurvePath& path) const;
    // How far it stands up, as a vector; without length for what does not.
    virtual AcGeVector3d thicknessVector() const;

    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // End, middle, centre, quadrant, nearest and perpendicular points.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    // Between curves of lines and arcs: points on this curve, along it, each once. Lengthened are a line
    // without end, an arc to its whole circle, an open polyline at its first and last segment. What runs
    // along each other meets at the ends of the common stretch. Seen in a plane, round pieces may be
    // ellipses. Another curve is what it explodes into. eOk also for no points; eNotImplementedYet for
    // others.
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                       AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                       Adesk::GsMarker otherGsMarker) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                       const AcGePlane& projPlane, AcGePoint3dArray& points,
                                       Adesk::GsMarker thisGsMarker,
                                       Adesk::GsMarker otherGsMarker) const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;
};
