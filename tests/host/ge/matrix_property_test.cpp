#include "gemat3d.h"
#include "geplane.h"
#include "near.h"

#include <eigen3/Eigen/Dense>
#include <rapidcheck/gtest.h>

namespace {

double real(double low, double high) {
    return low + (high - low) * (*rc::gen::inRange(0, 1 << 30)) / static_cast<double>(1 << 30);
}

AcGeVector3d vector(double size) { return {real(-size, size), real(-size, size), real(-size, size)}; }
AcGePoint3d point(double size) { return AcGePoint3d() + vector(size); }

AcGeVector3d axis() {
    const AcGeVector3d v = vector(1.0);
    RC_PRE(v.length() > 0.01);
    return v;
}

AcGeMatrix3d rotation() { return AcGeMatrix3d::rotation(real(-7.0, 7.0), axis(), point(100.0)); }

// Another implementation of the same laws.
Eigen::Matrix4d oracle(const AcGeMatrix3d& m) {
    Eigen::Matrix4d e;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            e(row, column) = m.entry[row][column];
    return e;
}
Eigen::Vector3d oracle(const AcGeVector3d& v) { return {v.x, v.y, v.z}; }
Eigen::Vector3d oracle(const AcGePoint3d& p) { return {p.x, p.y, p.z}; }

template <class A, class B>
bool closeTo(const A& a, const B& b, double distance) {
    return (a - b).cwiseAbs().maxCoeff() <= distance;
}

RC_GTEST_PROP(MatrixProperty, InverseTimesMatrixIsTheIdentity, ()) {
    const AcGeMatrix3d m = rotation() * AcGeMatrix3d::scaling(real(0.001, 1000.0), point(10.0));
    RC_ASSERT((m.inverse() * m).isEqualTo(AcGeMatrix3d::kIdentity, tolerance(1e-6)));
    const AcGePoint3d p = point(100.0);
    RC_ASSERT((m.inverse() * (m * p)).isEqualTo(p, tolerance(1e-6, 1e-6)));
}

RC_GTEST_PROP(MatrixProperty, RotationKeepsLengthsAndAngles, ()) {
    const AcGeMatrix3d m = rotation();
    const AcGeVector3d a = vector(50.0);
    const AcGeVector3d b = vector(50.0);
    RC_ASSERT(std::fabs((m * a).length() - a.length()) < 1e-9);
    RC_ASSERT(std::fabs((m * a).dotProduct(m * b) - a.dotProduct(b)) < 1e-8);
    RC_ASSERT(std::fabs(m.det() - 1.0) < 1e-12);
    RC_ASSERT(m.isUniScaledOrtho());
    const AcGeVector3d along = axis();
    RC_ASSERT((AcGeMatrix3d::rotation(real(-7.0, 7.0), along) * along).isEqualTo(along, tolerance(1e-12)));
}

RC_GTEST_PROP(MatrixProperty, RotationIsTheOraclesRotation, ()) {
    const double angle = real(-7.0, 7.0);
    const AcGeVector3d a = axis();
    const AcGePoint3d centre = point(20.0);
    const Eigen::Affine3d e = Eigen::Translation3d(oracle(centre)) *
                              Eigen::AngleAxisd(angle, oracle(a).normalized()) *
                              Eigen::Translation3d(-oracle(centre));
    const AcGeMatrix3d m = AcGeMatrix3d::rotation(angle, a, centre);
    RC_ASSERT(closeTo(oracle(m), e.matrix(), 1e-12));
    const AcGePoint3d p = point(100.0);
    RC_ASSERT(closeTo(oracle(m * p), e * oracle(p), 1e-11));
    const AcGeVector3d v = vector(100.0);
    RC_ASSERT(closeTo(oracle(m * v), e.linear() * oracle(v), 1e-11));
    AcGeVector3d turned = v;
    RC_ASSERT(closeTo(oracle(turned.rotateBy(angle, a)), e.linear() * oracle(v), 1e-11));
}

RC_GTEST_PROP(MatrixProperty, ProductInverseAndDeterminantAreTheOracles, ()) {
    AcGeMatrix3d a;
    AcGeMatrix3d b;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            a.entry[row][column] = real(-5.0, 5.0);
            b.entry[row][column] = real(-5.0, 5.0);
        }
    RC_ASSERT(closeTo(oracle(a * b), oracle(a) * oracle(b), 1e-12));
    RC_ASSERT(std::fabs(a.det() - oracle(a).determinant()) < 1e-9);
    RC_PRE(!a.isSingular() && std::fabs(oracle(a).determinant()) > 0.1);
    RC_ASSERT(closeTo(oracle(a.inverse()), oracle(a).fullPivLu().inverse().eval(), 1e-7));
}

RC_GTEST_PROP(MatrixProperty, AlignmentMapsFramesOntoFrames, ()) {
    AcGePoint3d fromOrigin;
    AcGePoint3d toOrigin;
    AcGeVector3d from[3];
    AcGeVector3d to[3];
    const AcGeMatrix3d source = rotation() * AcGeMatrix3d::scaling(real(0.1, 10.0));
    source.getCoordSystem(fromOrigin, from[0], from[1], from[2]);
    const AcGeMatrix3d target = rotation() * AcGeMatrix3d::scaling(real(0.1, 10.0));
    target.getCoordSystem(toOrigin, to[0], to[1], to[2]);
    const AcGeMatrix3d m =
        AcGeMatrix3d::alignCoordSys(fromOrigin, from[0], from[1], from[2], toOrigin, to[0], to[1], to[2]);
    RC_ASSERT((m * fromOrigin).isEqualTo(toOrigin, tolerance(0.0, 1e-8)));
    for (int i = 0; i < 3; ++i)
        RC_ASSERT((m * from[i]).isEqualTo(to[i], tolerance(1e-8)));
}

RC_GTEST_PROP(MatrixProperty, MirroringTwiceIsNothing, ()) {
    const AcGePlane plane(point(50.0), axis());
    const AcGeMatrix3d m = AcGeMatrix3d::mirroring(plane);
    RC_ASSERT((m * m).isEqualTo(AcGeMatrix3d::kIdentity, tolerance(1e-10)));
    AcGePoint3d p = point(50.0);
    const AcGePoint3d mirrored = m * p;
    RC_ASSERT(mirrored.isEqualTo(p.mirror(plane), tolerance(0.0, 1e-10)));
    RC_ASSERT(plane.isOn(mirrored + (m * mirrored - mirrored) * 0.5, tolerance(0.0, 1e-10)));
}

RC_GTEST_PROP(MatrixProperty, NormalsFrameIsRightHanded, ()) {
    const AcGeVector3d normal = axis();
    const AcGeMatrix3d m = AcGeMatrix3d::planeToWorld(normal);
    RC_ASSERT(m.isUniScaledOrtho());
    RC_ASSERT(std::fabs(m.det() - 1.0) < 1e-12);
    RC_ASSERT((m * AcGeVector3d::kZAxis).isEqualTo(normal.normal(), tolerance(1e-12)));
    RC_ASSERT((m * AcGeMatrix3d::worldToPlane(normal)).isEqualTo(AcGeMatrix3d::kIdentity));
    RC_ASSERT(normal.perpVector().isPerpendicularTo(normal));
}

RC_GTEST_PROP(MatrixProperty, LocalFormDrawsTheSame, ()) {
    const AcGeMatrix3d m = rotation() * AcGeMatrix3d::scaling(real(0.1, 10.0), point(10.0));
    const AcGeVector3d before = axis().normal();
    AcGeVector3d after = before;
    const double low = real(-10.0, 10.0);
    double high = low;
    const AcGePoint2d drawn(real(-10.0, 10.0), real(-10.0, 10.0));
    const AcGePoint2d moved = m.convertToLocal(after, high) * drawn;
    const AcGePoint3d expected =
        m * (AcGeMatrix3d::planeToWorld(before) * AcGePoint3d(drawn.x, drawn.y, low));
    RC_ASSERT((AcGeMatrix3d::planeToWorld(after) * AcGePoint3d(moved.x, moved.y, high))
                  .isEqualTo(expected, tolerance(0.0, 1e-8)));
}

// Which is what an angle is: turning by it leads from the one to the other.
RC_GTEST_PROP(MatrixProperty, TurningByTheAngleLeadsThere, ()) {
    const AcGeVector3d a = axis().normal();
    const AcGeVector3d b = axis().normal();
    RC_PRE(!a.isParallelTo(b, tolerance(0.01)));
    const AcGeVector3d reference = *rc::gen::element(1.0, -1.0) * a.crossProduct(b);
    AcGeVector3d turned = a;
    turned.rotateBy(a.angleTo(b, reference), reference);
    RC_ASSERT(turned.isEqualTo(b, tolerance(1e-9)));
    turned = a;
    turned.rotateBy(a.angleTo(b), a.crossProduct(b));
    RC_ASSERT(turned.isEqualTo(b, tolerance(1e-9)));
}

} // namespace
