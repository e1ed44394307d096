#include "gecurv3d.h"

#include <algorithm>
#include <cmath>

void AcGeCurve3d::getInterval(AcGeInterval& interval, AcGePoint3d& startPoint, AcGePoint3d& endPoint) const {
    interval = paramInterval();
    hasStartPoint(startPoint);
    hasEndPoint(endPoint);
}

Adesk::Boolean AcGeCurve3d::hasStartPoint(AcGePoint3d& startPoint) const {
    const AcGeInterval interval = paramInterval();
    if (!interval.isBoundedBelow())
        return false;
    startPoint = pointAt(interval.lowerBound());
    return true;
}

Adesk::Boolean AcGeCurve3d::hasEndPoint(AcGePoint3d& endPoint) const {
    const AcGeInterval interval = paramInterval();
    if (!interval.isBoundedAbove())
        return false;
    endPoint = pointAt(interval.upperBound());
    return true;
}

Adesk::Boolean AcGeCurve3d::isClosed(const AcGeTol& tol) const {
    AcGePoint3d start;
    AcGePoint3d end;
    return hasStartPoint(start) && hasEndPoint(end) && start.isEqualTo(end, tol);
}

AcGePoint3d AcGeCurve3d::evalPoint(double param, int numDeriv, AcGeVector3dArray& derivArray) const {
    derivArray.removeAll();
    for (int order = 1; order <= numDeriv; ++order)
        derivArray.append(derivativeAt(param, order));
    return pointAt(param);
}

double AcGeCurve3d::length(double fromParam, double toParam, double) const {
    // Lines and circles run at an even speed.
    return derivativeAt(fromParam, 1).length() * std::fabs(toParam - fromParam);
}

AcGePoint3d AcGeCurve3d::closestPointTo(const AcGePoint3d& point, const AcGeTol&) const {
    return pointAt(nearestParam(point));
}

double AcGeCurve3d::paramOf(const AcGePoint3d& point, const AcGeTol&) const { return nearestParam(point); }

double AcGeCurve3d::distanceTo(const AcGePoint3d& point, const AcGeTol& tol) const {
    return point.distanceTo(closestPointTo(point, tol));
}

Adesk::Boolean AcGeCurve3d::isOn(const AcGePoint3d& point, const AcGeTol& tol) const {
    return distanceTo(point, tol) <= tol.equalPoint();
}

Adesk::Boolean AcGeCurve3d::isOn(const AcGePoint3d& point, double& param, const AcGeTol& tol) const {
    param = nearestParam(point);
    return isOn(point, tol);
}

Adesk::Boolean AcGeCurve3d::isOn(double param, const AcGeTol&) const {
    return paramInterval().contains(param);
}

void AcGeCurve3d::sample(double fromParam, double toParam, int chords, AcGePoint3dArray& points,
                         AcGeDoubleArray& params) const {
    points.setPhysicalLength(chords + 1);
    params.setPhysicalLength(chords + 1);
    for (int i = 0; i <= chords; ++i) {
        // The last one is the end itself, whatever rounding makes of the sum.
        const double share = static_cast<double>(i) / std::max(chords, 1);
        const double param = i == chords && i > 0 ? toParam : fromParam + (toParam - fromParam) * share;
        points.append(pointAt(param));
        params.append(param);
    }
}

void AcGeCurve3d::getSamplePoints(double fromParam, double toParam, double approxEps,
                                  AcGePoint3dArray& pointArray, AcGeDoubleArray& paramArray, bool) const {
    pointArray.removeAll();
    paramArray.removeAll();
    const double span = std::fabs(toParam - fromParam);
    if (!std::isfinite(span))
        return;
    int chords = 0;
    if (span > 0.0) {
        // A whole number of steps stays one, whatever the last digit is.
        const double wanted = std::ceil(span / stepWithin(approxEps) * (1.0 - 1.0e-12));
        chords = wanted < kMostChords ? std::max(static_cast<int>(wanted), 1) : kMostChords;
    }
    sample(fromParam, toParam, chords, pointArray, paramArray);
}

void AcGeCurve3d::getSamplePoints(int numSample, AcGePoint3dArray& pointArray) const {
    AcGeDoubleArray params;
    getSamplePoints(numSample, pointArray, params);
}

void AcGeCurve3d::getSamplePoints(int numSample, AcGePoint3dArray& pointArray,
                                  AcGeDoubleArray& paramArray) const {
    pointArray.removeAll();
    paramArray.removeAll();
    const AcGeInterval interval = paramInterval();
    if (numSample >= 1 && interval.isBounded())
        sample(interval.lowerBound(), interval.upperBound(), numSample - 1, pointArray, paramArray);
}
