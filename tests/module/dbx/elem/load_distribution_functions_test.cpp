#include "dbx/elem/load_distribution_functions.h"

#include "dbx/elem/whole_power.h"
#include "geplane.h"
#include "gepnt3d.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace testing_support;
using namespace orv::elem;

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

double anyNumber() { return *rc::gen::inRange(-100000, 100000) / 128.0; }

// The reports of values that are no finite numbers, by the names of the values.
Texts namesOf(const ReportRecorder& recorder) {
    Texts names;
    for (const auto& report : recorder.reports()) {
        EXPECT_EQ(report.values.size(), 1u);
        const std::string& name = report.values.at(0).name;
        EXPECT_EQ(report.condition, "!isNaN(" + name + ") && !isInfinite(" + name + ")");
        names.push_back(name);
    }
    return names;
}

} // namespace

TEST(LoadDistributionLinear, GoesFromOneValueToTheOther) {
    EXPECT_EQ(_getValueAtDist_linear(10, 2, 4, 5), 3.0);
    EXPECT_EQ(_getValueAtDist_linear(10, 2, 4, 0), 2.0);
    EXPECT_EQ(_getValueAtDist_linear(10, 2, 4, 10), 4.0);
    EXPECT_EQ(_getValueAtDist_linear(10, 4, 2, 2.5), 3.5);
    EXPECT_EQ(_getValueAtDist_linear(10, 3, 3, 7), 3.0);
}

TEST(LoadDistributionLinear, BeyondTheEndsTheirValuesStay) {
    EXPECT_EQ(_getValueAtDist_linear(10, 2, 4, 20), 4.0);
    EXPECT_EQ(_getValueAtDist_linear(10, 2, 4, -1), 2.0);
    EXPECT_EQ(_getValueAtDist_linear(10, 4, 2, 20), 2.0);
    EXPECT_EQ(_getValueAtDist_linear(10, 4, 2, -1), 4.0);
}

TEST(LoadDistributionLinear, NoLengthGivesNoNumberAtTheStartAndAnEndElsewhere) {
    EXPECT_TRUE(std::isnan(_getValueAtDist_linear(0, 2, 4, 0)));
    EXPECT_EQ(_getValueAtDist_linear(0, 2, 4, 1), 4.0);
    EXPECT_EQ(_getValueAtDist_linear(0, 2, 4, -1), 2.0);
}

TEST(LoadDistributionLinear, AValueThatIsNoFiniteNumberIsReportedAndCountedWith) {
    ReportRecorder recorder;
    EXPECT_TRUE(std::isnan(_getValueAtDist_linear(10, kNaN, 4, 5)));
    EXPECT_TRUE(std::isnan(_getValueAtDist_linear(10, 2, kNaN, 5)));
    EXPECT_EQ(_getValueAtDist_linear(10, 2, kInfinity, 5), kInfinity);
    EXPECT_EQ(_getValueAtDist_linear(10, 2, -kInfinity, 5), -kInfinity);
    _getValueAtDist_linear(10, kInfinity, kNaN, 5);
    EXPECT_EQ(namesOf(recorder), (Texts{"startV", "endV", "endV", "endV", "startV", "endV"}));
}

TEST(LoadDistributionLinear, LengthAndDistanceAreNotLookedAt) {
    ReportRecorder recorder;
    EXPECT_TRUE(std::isnan(_getValueAtDist_linear(kNaN, 2, 4, 5)));
    EXPECT_TRUE(std::isnan(_getValueAtDist_linear(10, 2, 4, kNaN)));
    EXPECT_EQ(_getValueAtDist_linear(10, 2, 4, kInfinity), 4.0);
    EXPECT_EQ(_getValueAtDist_linear(kInfinity, 2, 4, 5), 2.0);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(LoadDistributionLinearMid, HasTheEndValueInTheMiddleAndTheStartValueAtBothEnds) {
    EXPECT_EQ(_getValueAtDist_linearMid(10, 0, 8, 5), 8.0);
    EXPECT_EQ(_getValueAtDist_linearMid(10, 0, 8, 10), 0.0);
    EXPECT_EQ(_getValueAtDist_linearMid(10, 0, 8, 0), 0.0);
    EXPECT_EQ(_getValueAtDist_linearMid(10, 0, 8, 2.5), 4.0);
    EXPECT_EQ(_getValueAtDist_linearMid(10, 0, 8, 7.5), 4.0);
    EXPECT_EQ(_getValueAtDist_linearMid(10, 0, 8, -3), 0.0);
    EXPECT_EQ(_getValueAtDist_linearMid(10, 0, 8, 30), 0.0);
}

TEST(LoadDistributionLinearMid, TheExactMiddleBelongsToTheSecondHalf) {
    // Without a length only the second half has its start there, and its start is no number.
    EXPECT_TRUE(std::isnan(_getValueAtDist_linearMid(0, 2, 4, 0)));
    // Beyond the start the first half answers, with its own start.
    EXPECT_EQ(_getValueAtDist_linearMid(0, 2, 4, -1), 2.0);
    ReportRecorder recorder;
    _getValueAtDist_linearMid(10, kNaN, 4, 5);
    // Its own test, and that of the half, in which the two change places.
    EXPECT_EQ(namesOf(recorder), (Texts{"startV", "endV"}));
    recorder.clear();
    _getValueAtDist_linearMid(10, kNaN, 4, 4.999);
    EXPECT_EQ(namesOf(recorder), (Texts{"startV", "startV"}));
}

TEST(LoadDistributionPower, PAtTheStartFallsToNothing) {
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_start(10, 4, 5), 1.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_start(10, 4, 0), 4.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_start(10, 4, 10), 0.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_start(10, 8, 5), 1.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_start(10, 8, 0), 8.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_start(10, 8, 10), 0.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_start(8, 16, 2), 9.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_start(8, 64, 2), 27.0);
}

TEST(LoadDistributionPower, PAtTheEndRisesFromNothing) {
    EXPECT_EQ(_getValueAtDist_cubic_P_at_end(10, 8, 5), 1.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_end(10, 8, 0), 0.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_end(10, 8, 10), 8.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_end(10, 4, 5), 1.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_end(10, 4, 0), 0.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_end(10, 4, 10), 4.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_end(8, 16, 2), 1.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_end(8, 64, 2), 1.0);
}

TEST(LoadDistributionPower, DistancesBeyondTheEndsCountAsTheEnds) {
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_start(10, 4, -5), 4.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_start(10, 4, 15), 0.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_start(10, 4, -5), 4.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_start(10, 4, 15), 0.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_end(10, 4, -5), 0.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_end(10, 4, 15), 4.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_end(10, 4, -5), 0.0);
    EXPECT_EQ(_getValueAtDist_cubic_P_at_end(10, 4, 15), 4.0);
}

TEST(LoadDistributionPower, NothingIsNeverANegativeZero) {
    EXPECT_FALSE(std::signbit(_getValueAtDist_quadratic_P_at_start(10, -4, 10)));
    EXPECT_FALSE(std::signbit(_getValueAtDist_quadratic_P_at_end(10, -4, 0)));
    EXPECT_FALSE(std::signbit(_getValueAtDist_cubic_P_at_start(10, -4, 10)));
    EXPECT_FALSE(std::signbit(_getValueAtDist_cubic_P_at_end(10, -4, 0)));
    EXPECT_EQ(_getValueAtDist_cubic_P_at_end(10, -4, 10), -4.0);
}

TEST(LoadDistributionPower, PInTheMiddleFallsToBothEnds) {
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_mid_inverse(10, 4, 5), 4.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_mid_inverse(10, 4, 0), 0.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_mid_inverse(10, 4, 10), 0.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_mid_inverse(10, 4, 2.5), 3.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_mid_inverse(10, 4, 7.5), 3.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_mid_inverse(10, 4, 20), 0.0);
    EXPECT_EQ(_getValueAtDist_quadratic_P_at_mid_inverse(10, 4, -20), 0.0);
}

TEST(LoadDistributionPower, APThatIsNoFiniteNumberIsReportedAndCountedWith) {
    struct {
        double (*shape)(double, double, double);
        bool isInfiniteInside;
    } const rows[] = {{_getValueAtDist_quadratic_P_at_start, true},
                      {_getValueAtDist_quadratic_P_at_end, true},
                      {_getValueAtDist_cubic_P_at_start, true},
                      {_getValueAtDist_cubic_P_at_end, true},
                      {_getValueAtDist_quadratic_P_at_mid_inverse, false}};
    for (const auto& row : rows) {
        ReportRecorder recorder;
        EXPECT_TRUE(std::isnan(row.shape(10, kNaN, 5)));
        const double value = row.shape(10, -kInfinity, 5);
        EXPECT_TRUE(row.isInfiniteInside ? value == -kInfinity : std::isnan(value));
        row.shape(10, kInfinity, 5);
        EXPECT_EQ(namesOf(recorder), Texts(3, "P"));
    }
}

TEST(LoadDistributionPower, LengthAndDistanceAreNotLookedAt) {
    const ReportRecorder recorder;
    for (const auto shape : {_getValueAtDist_quadratic_P_at_start, _getValueAtDist_quadratic_P_at_end,
                             _getValueAtDist_cubic_P_at_start, _getValueAtDist_cubic_P_at_end,
                             _getValueAtDist_quadratic_P_at_mid_inverse}) {
        EXPECT_TRUE(std::isnan(shape(0, 1, 0)));
        EXPECT_TRUE(std::isnan(shape(kNaN, 1, 0)));
        EXPECT_TRUE(std::isnan(shape(10, 1, kNaN)));
        EXPECT_EQ(shape(10, 1, kInfinity), shape(10, 1, 10));
    }
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(LoadDistributionPower, WholePowersOfBothSigns) {
    EXPECT_EQ(wholePower(3.0, 0), 1.0);
    EXPECT_EQ(wholePower(3.0, 1), 3.0);
    EXPECT_EQ(wholePower(3.0, 2), 9.0);
    EXPECT_EQ(wholePower(3.0, 13), 1594323.0);
    EXPECT_EQ(wholePower(-2.0, 3), -8.0);
    EXPECT_EQ(wholePower(2.0, -3), 0.125);
    EXPECT_EQ(wholePower(0.0, -1), kInfinity);
    EXPECT_EQ(wholePower(1.0, std::numeric_limits<int>::min()), 1.0);
    EXPECT_EQ(wholePower(2.0, std::numeric_limits<int>::max()), kInfinity);
}

TEST(LoadDistributionInSpace, AUniformValueIsTheSameEverywhere) {
    EXPECT_EQ(_getValueAtPos_uniform(2.5, AcGePoint3d(1, 2, 3)), 2.5);
    EXPECT_TRUE(std::isnan(_getValueAtPos_uniform(kNaN, AcGePoint3d(kNaN, 0, 0))));
}

TEST(LoadDistributionInSpace, APlaneOfValuesStandsOverThePlaneOfTheGeometry) {
    const AcGePlane ground(AcGePoint3d(0, 0, 0), AcGeVector3d(0, 0, 1));
    // 2 at the origin, and 1 more for each unit along x.
    const AcGePlane values(AcGePoint3d(0, 0, 2), AcGeVector3d(-1, 0, 1));
    EXPECT_DOUBLE_EQ(_getValueAtPos_planar(ground, values, AcGePoint3d(0, 0, 0)), 2.0);
    EXPECT_DOUBLE_EQ(_getValueAtPos_planar(ground, values, AcGePoint3d(3, 5, 0)), 5.0);
    EXPECT_DOUBLE_EQ(_getValueAtPos_planar(ground, values, AcGePoint3d(-4, -5, 0)), -2.0);
}

RC_GTEST_PROP(LoadDistributionProperty, ALinearValueStaysBetweenBothEnds, ()) {
    const double startV = anyNumber();
    const double endV = anyNumber();
    const double length = *rc::gen::inRange(1, 100000) / 64.0;
    const double dist = anyNumber();
    const double linear = _getValueAtDist_linear(length, startV, endV, dist);
    const double mid = _getValueAtDist_linearMid(length, startV, endV, dist);
    for (const double value : {linear, mid}) {
        RC_ASSERT(value >= std::min(startV, endV));
        RC_ASSERT(value <= std::max(startV, endV));
    }
}

RC_GTEST_PROP(LoadDistributionProperty, ThePowersAreThoseOfTheMathematics, ()) {
    const double P = anyNumber();
    const double length = *rc::gen::inRange(1, 100000) / 64.0;
    const double dist = length * *rc::gen::inRange(0, 1025) / 1024.0;
    const double share = dist / length;
    const auto isNear = [P](double value, double expected) {
        return std::abs(value - expected) <= 1e-12 * std::abs(P);
    };
    RC_ASSERT(isNear(_getValueAtDist_quadratic_P_at_start(length, P, dist), P * std::pow(1 - share, 2)));
    RC_ASSERT(isNear(_getValueAtDist_quadratic_P_at_end(length, P, dist), P * std::pow(share, 2)));
    RC_ASSERT(isNear(_getValueAtDist_cubic_P_at_start(length, P, dist), P * std::pow(1 - share, 3)));
    RC_ASSERT(isNear(_getValueAtDist_cubic_P_at_end(length, P, dist), P * std::pow(share, 3)));
    RC_ASSERT(
        isNear(_getValueAtDist_quadratic_P_at_mid_inverse(length, P, dist), 4 * P * share * (1 - share)));
}
