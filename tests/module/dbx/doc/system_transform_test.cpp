#include "dbx/doc/system_transform.h"

#include "support/report_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

using namespace orv;
using orv::detail::gravityVectorCdb;
using orv::detail::measuredScale;
using orv::detail::rotationWcs2Cdb;
using testing_support::FilledSystem;
using testing_support::ReportRecorder;
using testing_support::systemRecord;
using testing_support::Texts;
using testing_support::Values;

namespace {

const AcGeVector3d kX(1, 0, 0);
const AcGeVector3d kY(0, 1, 0);
const AcGeVector3d kZ(0, 0, 1);

// Where the drawing's three axes lie in the store, as signed axes: {1, 3, -2} is X on X, Y on Z, Z on -Y.
struct Mapping {
    int iprob;
    int iachs;
    int x, y, z;
};

AcGeVector3d axis(int signedAxis) {
    const double sign = signedAxis < 0 ? -1.0 : 1.0;
    const int number = std::abs(signedAxis);
    return {number == 1 ? sign : 0.0, number == 2 ? sign : 0.0, number == 3 ? sign : 0.0};
}

// Worked out by hand. The rotation brings gravity of the drawing upon that of the store; the rows in which
// the first column is no positive axis, and none of the others is 1, had half a turn about gravity first.
constexpr Mapping kInSpace[] = {
    {0, -3, 1, 2, 3},  // gravity as in the drawing
    {0, 3, 1, -2, -3}, // opposite: half a turn about X
    {0, -2, 1, -3, 2}, // a quarter turn about -X
    {0, 2, 1, 3, -2},  // about X
    {0, -1, 3, -2, 1}, // about Y, and half a turn before
    {0, 1, 3, 2, -1},  // about -Y: the store's Z looks along X
    {0, 0, 1, 2, 3},   // none given: as -3
};
constexpr Mapping kInPlane[] = {
    {10, -2, 1, 2, 3},  // gravity as in the drawing
    {10, 2, 1, -2, -3}, // opposite: half a turn about X
    {10, -3, 1, 3, -2}, // a quarter turn about X
    {10, 3, 1, -3, 2},  // about -X
    {10, -1, 2, 1, -3}, // about -Z, and half a turn before
    {10, 1, 2, -1, 3},  // about Z: the store's Y looks along X
    {10, 0, 1, 3, -2},  // none given: as -3
};

void expectMapping(const Mapping& wanted, int iprob) {
    ReportRecorder reports; // of kinds and axes that are none
    const FilledSystem system(systemRecord(iprob, wanted.iachs));
    const AcGeMatrix3d& matrix = system.xformWcs2Cdb();
    SCOPED_TRACE("iprob " + std::to_string(iprob) + " iachs " + std::to_string(wanted.iachs));
    EXPECT_TRUE((matrix * kX).isEqualTo(axis(wanted.x)));
    EXPECT_TRUE((matrix * kY).isEqualTo(axis(wanted.y)));
    EXPECT_TRUE((matrix * kZ).isEqualTo(axis(wanted.z)));
    EXPECT_EQ(matrix.translation(), AcGeVector3d());
    EXPECT_NEAR(matrix.det(), 1.0, 1e-12);
    EXPECT_TRUE((system.converter().getCdb2Wcs() * matrix).isEqualTo(AcGeMatrix3d::kIdentity));
}

bool anAxisIsX(const AcGeMatrix3d& matrix) {
    const AcGeVector3d image = matrix * kX;
    return image.isEqualTo(kX) || image.isEqualTo(kY) || image.isEqualTo(kZ);
}

} // namespace

TEST(SystemTransform, EveryGravityAxisOfASpaceSystem) {
    for (const Mapping& mapping : kInSpace)
        for (const int iprob : {0, 20})
            expectMapping(mapping, iprob);
}

TEST(SystemTransform, EveryGravityAxisOfAPlate) {
    for (const Mapping& mapping : kInSpace)
        for (const int iprob : {30, 31, 34, 35})
            expectMapping(mapping, iprob);
}

TEST(SystemTransform, EveryGravityAxisOfAPlaneSystem) {
    for (const Mapping& mapping : kInPlane)
        for (const int iprob : {10, 14, 19})
            expectMapping(mapping, iprob);
}

TEST(SystemTransform, AnUnknownKindAndAnUnknownAxisAreASpaceSystemUnderMinusZ) {
    for (const int iprob : {9, 32})
        expectMapping(kInSpace[1], iprob);
    for (const int iachs : {4, -4, 77}) {
        ReportRecorder reports;
        const FilledSystem system(systemRecord(0, iachs));
        EXPECT_EQ(system.xformWcs2Cdb(), AcGeMatrix3d::kIdentity);
    }
}

TEST(SystemTransform, GravityUpInASpaceSystemIsHalfATurnAboutX) {
    const AcGeMatrix3d matrix = FilledSystem(systemRecord(0, 3)).xformWcs2Cdb();
    EXPECT_EQ(matrix.entry[1][1], std::cos(3.141592653589793));
    EXPECT_EQ(matrix.entry[2][1], std::sin(3.141592653589793));
    EXPECT_EQ(matrix.entry[0][0], 1.0);
}

TEST(SystemTransform, GravityDownInASpaceSystemIsTheIdentityToTheBit) {
    const AcGeMatrix3d matrix = FilledSystem(systemRecord(0, -3)).xformWcs2Cdb();
    for (unsigned int row = 0; row < 4; ++row)
        for (unsigned int column = 0; column < 4; ++column)
            EXPECT_EQ(matrix(row, column), row == column ? 1.0 : 0.0);
}

TEST(SystemTransform, GravityAlongMinusXGetsTheHalfTurnOnlySinceNoAxisLooksAlongX) {
    // Without it the store's Y stays and its Z looks along -X. The opposite axis has Z along X and gets none.
    const AcGeMatrix3d turned = FilledSystem(systemRecord(0, -1)).xformWcs2Cdb();
    EXPECT_TRUE((turned * kY).isEqualTo(-kY)) << "turned";
    const AcGeMatrix3d plain = FilledSystem(systemRecord(0, 1)).xformWcs2Cdb();
    EXPECT_TRUE((plain * kY).isEqualTo(kY)) << "not turned";
}

TEST(SystemTransform, AnAxisWithinTenDegreesOfXNeedsNoHalfTurn) {
    const auto tilted = [](double degrees) {
        const double angle = degrees * 3.141592653589793 / 180.0;
        return rotationWcs2Cdb(-kZ, AcGeVector3d(-std::sin(angle), 0.0, -std::cos(angle)));
    };
    // Turning about Y leaves Y where it is; the half turn about Z first would mirror it.
    EXPECT_TRUE((tilted(9.9) * kY).isEqualTo(kY));
    EXPECT_TRUE((tilted(10.1) * kY).isEqualTo(-kY));
}

TEST(SystemTransform, TheStoresGravityByItsAxis) {
    EXPECT_EQ(gravityVectorCdb(kGravityMinusX), -kX);
    EXPECT_EQ(gravityVectorCdb(kGravityMinusY), -kY);
    EXPECT_EQ(gravityVectorCdb(kGravityMinusZ), -kZ);
    EXPECT_EQ(gravityVectorCdb(kGravityPlusX), kX);
    EXPECT_EQ(gravityVectorCdb(kGravityPlusY), kY);
    EXPECT_EQ(gravityVectorCdb(kGravityPlusZ), kZ);
    EXPECT_EQ(gravityVectorCdb(kGravityNone), -kZ);
    EXPECT_EQ(gravityVectorCdb(static_cast<GravityOrientation>(9)), -kZ);
}

TEST(SystemTransform, ForEveryPairOfAxesGravityFitsAndAnAxisLooksAlongX) {
    for (const AcGeVector3d& drawing : {-kY, -kZ})
        for (const int iachs : {-3, -2, -1, 1, 2, 3}) {
            const AcGeVector3d store = axis(iachs);
            const AcGeMatrix3d matrix = rotationWcs2Cdb(drawing, store);
            EXPECT_TRUE((matrix * drawing).isEqualTo(store)) << iachs;
            EXPECT_TRUE(anAxisIsX(matrix)) << iachs;
        }
}

RC_GTEST_PROP(SystemTransform, IsAProperRotationThatBringsAnyGravityUponAnyOther, ()) {
    const auto direction = [] {
        const double turn = *rc::gen::inRange(-3141, 3141) / 1000.0;
        const double rise = *rc::gen::inRange(-1570, 1570) / 1000.0;
        return AcGeVector3d(std::cos(turn) * std::cos(rise), std::sin(turn) * std::cos(rise), std::sin(rise));
    };
    const AcGeVector3d drawing = direction();
    const AcGeVector3d store = direction();
    // Opposite ones turn about X, which fits only those across it.
    RC_PRE(!drawing.isParallelTo(store) || drawing.isCodirectionalTo(store));
    AcGeTol near;
    near.setEqualVector(1e-9);
    const AcGeMatrix3d matrix = rotationWcs2Cdb(drawing, store);
    RC_ASSERT((matrix * drawing).isEqualTo(store, near));
    RC_ASSERT(std::fabs(matrix.det() - 1.0) < 1e-9);
    RC_ASSERT((matrix * matrix.transpose()).isEqualTo(AcGeMatrix3d::kIdentity, near));
}

TEST(MeasuredScale, IsTheLengthOfTheXAxisWhateverTheOthersAre) {
    ReportRecorder reports;
    EXPECT_EQ(measuredScale({{5, 6, 7}, {0, 0, 2}, {0, 3, 0}, {4, 0, 0}}), 2.0);
    EXPECT_EQ(measuredScale({{0, 0, 0}, {3, 4, 0}, {0, 1, 0}, {0, 0, 1}}), 5.0);
    EXPECT_NEAR(measuredScale({{0, 0, 0}, {0.01F, 0, 0}, {0, 1, 0}, {0, 0, 1}}), 0.01, 1e-9);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(MeasuredScale, EachAxisWithoutLengthIsReportedWithTheFrame) {
    const struct {
        typeCDB_SYST::Axes axes;
        const char* condition;
        double scale;
    } cases[] = {{{{1, 2, 3}, {0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, "!x.isZeroLength()", 0.0},
                 {{{1, 2, 3}, {2, 0, 0}, {0, 0, 0}, {0, 0, 1}}, "!y.isZeroLength()", 2.0},
                 {{{1, 2, 3}, {2, 0, 0}, {0, 1, 0}, {0, 0, 0}}, "!z.isZeroLength()", 2.0}};
    for (const auto& test : cases) {
        ReportRecorder reports;
        EXPECT_EQ(measuredScale(test.axes), test.scale);
        EXPECT_EQ(reports.conditions(), (Texts{test.condition}));
        EXPECT_EQ(reports.at(0).message, "invalid xform");
    }
    ReportRecorder reports;
    measuredScale({{1, 2.5F, 3}, {2, 0, 0}, {0, 0, 0}, {0, -0.5F, 1}});
    EXPECT_EQ(reports.at(0).values, (Values{{"origin", "Point3d(1, 2.5, 3)"},
                                            {"x", "Vector3d(2, 0, 0)"},
                                            {"y", "Vector3d(0, 0, 0)"},
                                            {"z", "Vector3d(0, -0.5, 1)"}}));
}

TEST(MeasuredScale, AFrameOfZerosIsReportedThreeTimesInXYZ) {
    ReportRecorder reports;
    EXPECT_EQ(measuredScale({}), 0.0);
    EXPECT_EQ(reports.conditions(), (Texts{"!x.isZeroLength()", "!y.isZeroLength()", "!z.isZeroLength()"}));
}
