#pragma once

#include "gedblar.h"
#include "geintrvl.h"
#include "gept3dar.h"
#include "gevc3dar.h"

// A curve in space: a place for each parameter. Points can be asked for beyond its ends too, where it goes on
// as it was; "on the curve" and "nearest" count only what is between the ends.
class AcGeCurve3d {
public:
    virtual ~AcGeCurve3d() = default;

    // The parameters of the curve; without bounds for a line without ends.
    void getInterval(AcGeInterval& interval) const { interval = paramInterval(); }
    // The points are left as they are where there is no end.
    void getInterval(AcGeInterval& interval, AcGePoint3d& startPoint, AcGePoint3d& endPoint) const;
    // False, with the point untouched, if there is no such end.
    Adesk::Boolean hasStartPoint(AcGePoint3d& startPoint) const;
    Adesk::Boolean hasEndPoint(AcGePoint3d& endPoint) const;
    // It has two ends, and they are one point.
    Adesk::Boolean isClosed(const AcGeTol& tol = AcGeContext::gTol) const;

    AcGePoint3d evalPoint(double param) const { return pointAt(param); }
    // With the derivatives by the parameter from the first to that of the order `numDeriv`. The array is
    // emptied first.
    AcGePoint3d evalPoint(double param, int numDeriv, AcGeVector3dArray& derivArray) const;

    // Along the curve, never below 0.
    double length(double fromParam, double toParam, double tol = AcGeContext::gTol.equalPoint()) const;

    // The nearest point of the curve, and its parameter. Of several that are equally near, the one whose
    // parameter is smallest.
    AcGePoint3d closestPointTo(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    double paramOf(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    double distanceTo(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;

    // No further away than equalPoint.
    Adesk::Boolean isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    // The same; `param` is that of the nearest point, whatever the answer.
    Adesk::Boolean isOn(const AcGePoint3d& point, double& param,
                        const AcGeTol& tol = AcGeContext::gTol) const;
    // Whether the curve has that parameter.
    Adesk::Boolean isOn(double param, const AcGeTol& tol = AcGeContext::gTol) const;

    // Turns it round: the same points, run through from the end to the start.
    virtual AcGeCurve3d& reverseParam() = 0;

    // A chain of points on the curve from one parameter to the other, against the curve if the first is the
    // larger one, with the parameter of each. Both ends are among them. No chord between neighbours is
    // further from the curve than `approxEps`: so a straight piece gives two points. A round piece gives a
    // point for a quarter turn at least, and kMostChords chords at most; where that many do not come as near
    // as `approxEps`, which may be 0, the points are evenly apart. One point if both parameters are the same;
    // none for numbers that are not finite. The arrays are emptied first.
    void getSamplePoints(double fromParam, double toParam, double approxEps, AcGePoint3dArray& pointArray,
                         AcGeDoubleArray& paramArray, bool forceResampling = false) const;
    // That many points, evenly apart, both ends among them; of a single one the start. None for a number
    // below 1 and for a curve that has not both ends.
    void getSamplePoints(int numSample, AcGePoint3dArray& pointArray) const;
    void getSamplePoints(int numSample, AcGePoint3dArray& pointArray, AcGeDoubleArray& paramArray) const;

    static constexpr int kMostChords = 16384;

protected:
    AcGeCurve3d() = default;
    AcGeCurve3d(const AcGeCurve3d&) = default;
    AcGeCurve3d& operator=(const AcGeCurve3d&) = default;

private:
    virtual AcGeInterval paramInterval() const = 0;
    virtual AcGePoint3d pointAt(double param) const = 0;
    // `order` is 1 or more.
    virtual AcGeVector3d derivativeAt(double param, int order) const = 0;
    virtual double nearestParam(const AcGePoint3d& point) const = 0;
    // How far apart in parameters two neighbours may be with a chord that is within `deviation`.
    virtual double stepWithin(double deviation) const = 0;
    void sample(double fromParam, double toParam, int chords, AcGePoint3dArray& points,
                AcGeDoubleArray& params) const;
};
