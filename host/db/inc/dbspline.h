#pragma once

#include "dbcurve.h"

#include <vector>

// A spline, told by control points and knots or by points that it fits. Its parameter is that of the knots;
// of the second form the number of the point. Where it is drawn or measured it stands for eight chords to
// each span of its knots; one told by points that it fits, or by numbers that do not belong together, for the
// chords between its points.
class AcDbSpline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbSpline);
    // Without points.
    AcDbSpline();
    // `weights` is empty for one that is not rational.
    AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
               const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
               const AcGeDoubleArray& weights, double controlPointTolerance = 0.0,
               double knotTolerance = 0.0);

    // Getters need read; setters need write and answer eOk; eInvalidIndex where there is no such point.
    int degree() const;
    Adesk::Boolean isRational() const;
    // It has the form of points that it fits.
    Adesk::Boolean hasFitData() const;
    int numControlPoints() const;
    Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point);
    // 1 where there is none.
    double weightAt(int index) const;
    int numFitPoints() const;
    Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setFitPointAt(int index, const AcGePoint3d& point);

    Adesk::Boolean isClosed() const override;
    Adesk::Boolean isPeriodic() const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool getPath(embedded::CurvePath& path) const override;
    // The form with data is left to the plain one.
    using AcDbEntity::subGetGripPoints;
    using AcDbEntity::subMoveGripPointsAt;
    // The points that it is told by.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
    // Its ends.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;

private:
    struct Fields {
        Adesk::UInt32 form = 1; // 1 control points, 2 points that it fits
        Adesk::UInt32 degree = 3;
        bool isRational = false;
        bool isClosed = false;
        bool isPeriodic = false;
        bool hasWeights = false;
        double knotTolerance = 0.0;
        double controlTolerance = 0.0;
        double fitTolerance = 0.0;
        AcGeVector3d startTangent, endTangent;
        std::vector<double> knots;
        std::vector<AcGePoint3d> controls;
        std::vector<double> weights; // one for each control point, or none
        std::vector<AcGePoint3d> fitPoints;
    };
    std::vector<AcGePoint3d>& toldBy();
    const std::vector<AcGePoint3d>& toldBy() const;
    void writeControls(AcDbDwgFiler& filer) const;
    static void readControls(AcDbDwgFiler& filer, Fields& fields);
    Fields m_fields;
};
