#include "curve_fixture.h"
#include "geplane.h"

#include <rapidcheck/gtest.h>

#include <cmath>

using orv::CurveSegment;

namespace {

double number(double low, double high) {
    const int steps = *rc::gen::inRange(0, 1000001);
    return low + (high - low) * steps / 1000000.0;
}

AcGePoint3d point() { return {number(-50.0, 50.0), number(-50.0, 50.0), number(-50.0, 50.0)}; }

AcGeVector3d direction() {
    const AcGeVector3d vector(number(-1.0, 1.0), number(-1.0, 1.0), number(-1.0, 1.0));
    return vector.length() < 0.1 ? AcGeVector3d::kYAxis : vector.normal();
}

// Up to six pieces of all kinds, anywhere in space.
std::unique_ptr<ORV_SegmentedCurve> curve() {
    auto made = std::make_unique<ORV_SegmentedCurve>();
    AcGePoint3d at = point();
    const int count = *rc::gen::inRange(1, 7);
    for (int i = 0; i < count; ++i) {
        CurveSegment segment;
        if (*rc::gen::arbitrary<bool>()) {
            const AcGeVector3d normal = direction();
            RC_ASSERT(CurveSegment::arcAbout(at, at + normal.perpVector() * number(0.5, 20.0), normal,
                                             number(0.1, 6.2) * (*rc::gen::arbitrary<bool>() ? 1 : -1),
                                             segment));
        } else {
            RC_ASSERT(CurveSegment::line(at, at + direction() * number(0.5, 30.0), segment));
        }
        RC_ASSERT(made->append(segment) == Acad::eOk);
        at = segment.end();
    }
    return made;
}

AcGePoint3d at(const ORV_SegmentedCurve& curve, double distance) {
    AcGePoint3d point;
    RC_ASSERT(curve.getPointAtDist(distance, point) == Acad::eOk);
    return point;
}

} // namespace

RC_GTEST_PROP(SegmentedCurveProperty, PointOfADistanceLeadsBackToThePoint, ()) {
    const auto made = curve();
    const AcGePoint3d there = at(*made, made->getLength() * number(0.0, 1.0));
    double distance = -1.0;
    RC_ASSERT(made->getDistAtPoint(there, distance) == Acad::eOk);
    // A curve that crosses itself has two distances for one point.
    RC_ASSERT(at(*made, distance).distanceTo(there) < 1.0e-7);
}

RC_GTEST_PROP(SegmentedCurveProperty, DistancesAreLengthsAlongTheCurve, ()) {
    const auto made = curve();
    const double from = made->getLength() * number(0.0, 1.0);
    const double to = made->getLength() * number(0.0, 1.0);
    // Chords of a fine chain are as long as the way between, and never longer.
    constexpr int kSteps = 400;
    double chain = 0.0;
    for (int i = 0; i < kSteps; ++i)
        chain += at(*made, from + (to - from) * i / kSteps)
                     .distanceTo(at(*made, from + (to - from) * (i + 1) / kSteps));
    const double way = std::fabs(to - from);
    RC_ASSERT(chain <= way + 1.0e-9);
    // Chords cut corners by no more than a step each, and arcs by their heights.
    const double step = way / kSteps;
    RC_ASSERT(way - chain <= 6 * step + way * step * step / (24.0 * 0.25) + 1.0e-9);
}

RC_GTEST_PROP(SegmentedCurveProperty, PartsAddUpAndLieOnTheCurve, ()) {
    const auto made = curve();
    const double length = made->getLength();
    const double cut = length * number(0.01, 0.99);
    std::unique_ptr<ORV_SegmentedCurve> first, second;
    RC_ASSERT(made->createCurve(0.0, cut, first) == Acad::eOk);
    RC_ASSERT(made->createCurve(cut, length, second) == Acad::eOk);
    RC_ASSERT(std::fabs(first->getLength() - cut) < 1.0e-8);
    RC_ASSERT(std::fabs(first->getLength() + second->getLength() - length) < 1.0e-8);
    const double share = number(0.0, 1.0);
    RC_ASSERT(at(*first, first->getLength() * share).distanceTo(at(*made, cut * share)) < 1.0e-7);
    RC_ASSERT(at(*second, second->getLength() * share).distanceTo(at(*made, cut + (length - cut) * share)) <
              1.0e-7);
}

RC_GTEST_PROP(SegmentedCurveProperty, FirstDerivativeIsHowThePointMoves, ()) {
    const auto made = curve();
    const double step = 1.0e-5;
    const int index = *rc::gen::inRange(0, made->getSegmentCount());
    double before = 0.0;
    for (int i = 0; i < index; ++i)
        before += made->getSegmentAt(i)->length();
    const double distance = before + made->getSegmentAt(index)->length() * number(0.1, 0.9);
    AcGeVector3d first, second, later;
    RC_ASSERT(made->getFirstDeriv(distance, first) == Acad::eOk);
    RC_ASSERT(made->getSecondDeriv(distance, second) == Acad::eOk);
    RC_ASSERT(made->getFirstDeriv(distance + step, later) == Acad::eOk);
    RC_ASSERT(std::fabs(first.length() - 1.0) < 1.0e-9);
    RC_ASSERT(((at(*made, distance + step) - at(*made, distance)) / step - first).length() < 1.0e-4);
    RC_ASSERT(((later - first) / step - second).length() < 1.0e-3);
}

RC_GTEST_PROP(SegmentedCurveProperty, SimilarityTakesEveryPointAlong, ()) {
    const auto made = curve();
    const double share = number(0.0, 1.0);
    const double factor = number(0.2, 5.0);
    AcGeMatrix3d matrix = AcGeMatrix3d::rotation(number(-3.0, 3.0), direction(), point()) *
                          AcGeMatrix3d::scaling(factor, point());
    if (*rc::gen::arbitrary<bool>())
        matrix = AcGeMatrix3d::mirroring(AcGePlane(point(), direction())) * matrix;
    const double length = made->getLength();
    const AcGePoint3d there = matrix * at(*made, length * share);
    RC_ASSERT(made->transformBy(matrix) == Acad::eOk);
    RC_ASSERT(std::fabs(made->getLength() - length * factor) < 1.0e-7);
    RC_ASSERT(at(*made, made->getLength() * share).distanceTo(there) < 1.0e-6);
}

RC_GTEST_PROP(SegmentedCurveProperty, NearestPointIsNoFartherThanAnyOther, ()) {
    const auto made = curve();
    const AcGePoint3d from = point();
    AcGePoint3d nearest;
    RC_ASSERT(made->getClosestPointTo(from, nearest) == Acad::eOk);
    for (int i = 0; i <= 50; ++i)
        RC_ASSERT(from.distanceTo(nearest) <=
                  from.distanceTo(at(*made, made->getLength() * i / 50)) + 1.0e-8);
}

RC_GTEST_PROP(SegmentedCurveProperty, BoxHoldsEveryPoint, ()) {
    const auto made = curve();
    AcDbExtents box;
    RC_ASSERT(made->getGeomExtents(box) == Acad::eOk);
    for (int i = 0; i <= 50; ++i) {
        const AcGePoint3d there = at(*made, made->getLength() * i / 50);
        for (unsigned axis = 0; axis < 3; ++axis)
            RC_ASSERT(there[axis] >= box.minPoint()[axis] - 1.0e-8 &&
                      there[axis] <= box.maxPoint()[axis] + 1.0e-8);
    }
}

RC_GTEST_PROP(SegmentedCurveProperty, VertexThereAndBackIsAsBefore, ()) {
    const auto made = curve();
    std::unique_ptr<AcRxObject> before(made->clone());
    const int index = *rc::gen::inRange(0, static_cast<int>(made->getVertices().size()));
    const AcGeVector3d offset = direction() * number(0.1, 5.0);
    if (made->moveVertices({index}, offset) == Acad::eOk) {
        RC_ASSERT(made->moveVertices({index}, -offset) == Acad::eOk);
    }
    const auto* old = ORV_SegmentedCurve::cast(before.get());
    for (int i = 0; i <= 20; ++i)
        RC_ASSERT(at(*made, made->getLength() * i / 20).distanceTo(at(*old, old->getLength() * i / 20)) <
                  1.0e-5);
}
