#include "dbx/elem/load_types.h"

#include "support/report_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace testing_support;
using orv::elem::FreeLoadReference;
using orv::elem::getArrowHeadLen;
using orv::elem::getDirectionFor;
using orv::elem::LoadDistribution;
using orv::elem::scaleLoadValueForDisplay;

namespace {

enum Kind { kMoment = 1, kProjected = 2, kLocal = 4 };
enum Direction { kNone, kGravity, kX, kY, kZ, kMinusX, kMinusY, kMinusZ };

struct TypeRow {
    int type;
    int kinds;
    Direction direction;
};

// clang-format off
constexpr TypeRow kTypes[] = {
    {0, 0, kNone},
    {1, 0, kNone},
    {2, 0, kNone},
    {3, 0, kNone},
    {4, 0, kNone},
    {5, 0, kNone},
    {6, 0, kNone},
    {7, 0, kNone},
    {8, 0, kNone},
    {9, 0, kNone},
    {10, 0, kGravity},
    {11, kLocal, kX},
    {12, kLocal, kY},
    {13, kLocal, kZ},
    {14, 0, kX},
    {15, 0, kY},
    {16, 0, kZ},
    {17, kProjected, kX},
    {18, kProjected, kY},
    {19, kProjected, kZ},
    {20, kMoment, kNone},
    {21, kMoment | kLocal, kX},
    {22, kMoment | kLocal, kY},
    {23, kMoment | kLocal, kZ},
    {24, kMoment, kX},
    {25, kMoment, kY},
    {26, kMoment, kZ},
    {27, kMoment, kX},
    {28, kMoment, kY},
    {29, kMoment, kZ},
    {30, 0, kNone},
    {31, kLocal, kX},
    {32, kLocal, kY},
    {33, kLocal, kZ},
    {34, 0, kX},
    {35, 0, kY},
    {36, 0, kZ},
    {37, kLocal, kX},
    {38, kLocal, kY},
    {39, kLocal, kZ},
    {40, 0, kNone},
    {41, kLocal, kX},
    {42, kLocal, kY},
    {43, kLocal, kZ},
    {44, 0, kX},
    {45, 0, kY},
    {46, 0, kZ},
    {47, kLocal, kNone},
    {48, kLocal, kNone},
    {49, kLocal, kNone},
    {50, 0, kNone},
    {51, kLocal, kMinusX},
    {52, kLocal, kMinusY},
    {53, kLocal, kMinusZ},
    {54, kLocal, kMinusX},
    {55, kLocal, kMinusY},
    {56, kLocal, kMinusZ},
    {57, 0, kNone},
    {58, 0, kNone},
    {59, 0, kNone},
    {60, 0, kNone},
    {101, kLocal, kNone},
    {102, kLocal, kNone},
    {103, kLocal, kNone},
    {104, kLocal, kNone},
    {105, kLocal, kNone},
    {106, kLocal, kNone},
    {107, kLocal, kNone},
    {108, kLocal, kNone},
    {1000, 0, kNone},
    {1001, 0, kNone},
    {1002, 0, kNone},
    {1003, 0, kNone},
    {1004, kMoment, kNone},
    {1005, kMoment, kNone},
    {1006, kMoment, kNone},
    {1007, 0, kNone},
    {1008, 0, kNone},
    {1009, 0, kNone},
    {1010, 0, kNone},
    {1011, kMoment, kNone},
    {1012, 0, kNone},
};
// clang-format on

constexpr int kLogarithmicScale = 151;
constexpr int kLoadSize = 7;
constexpr int kArrowHeadSize = 2;

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

struct Frame {
    AcGeVector3d x, y, z;

    AcGeVector3d along(Direction direction) const {
        switch (direction) {
        case kX:
            return x;
        case kY:
            return y;
        case kZ:
            return z;
        case kMinusX:
            return {-x.x, -x.y, -x.z};
        case kMinusY:
            return {-y.x, -y.y, -y.z};
        case kMinusZ:
            return {-z.x, -z.y, -z.z};
        default:
            return {};
        }
    }
};

Frame axesOf(const orv::System& system) {
    Frame axes;
    system.getCoordinateSystem(axes.x, axes.y, axes.z);
    return axes;
}

// A system in space in which gravity acts along -X of the store, so that none of its axes is the drawing's.
const FilledSystem& turnedSystem() {
    static const FilledSystem s_system(systemRecord(0, -1));
    const Frame axes = axesOf(s_system);
    EXPECT_NE(axes.x, AcGeVector3d::kXAxis);
    EXPECT_NE(axes.y, axes.x);
    EXPECT_NE(axes.z, AcGeVector3d::kZAxis);
    return s_system;
}

void expectVector(const AcGeVector3d& found, const AcGeVector3d& expected, int type) {
    EXPECT_NEAR(found.x, expected.x, 1e-12) << type;
    EXPECT_NEAR(found.y, expected.y, 1e-12) << type;
    EXPECT_NEAR(found.z, expected.z, 1e-12) << type;
}

// Sizes are 1 and values linear, unless a test says otherwise.
struct PlainSystem : FilledSystem {
    PlainSystem() {
        visSettings().setSize(kLoadSize, 1.0);
        visSettings().setSwitch(kLogarithmicScale, 0);
    }
};

} // namespace

TEST(LoadTypes, ThePredicatesFollowTheTable) {
    for (const TypeRow& row : kTypes) {
        EXPECT_EQ(orv::elem::isMoment(row.type), (row.kinds & kMoment) != 0) << row.type;
        EXPECT_EQ(orv::elem::isProjected(row.type), (row.kinds & kProjected) != 0) << row.type;
        EXPECT_EQ(orv::elem::isLocal(row.type), (row.kinds & kLocal) != 0) << row.type;
        EXPECT_EQ(orv::elem::isThermal(row.type), row.type >= 51 && row.type <= 56) << row.type;
    }
    for (const int type : {-20, -1, 61, 100, 109, 999, 1013, std::numeric_limits<int>::min(),
                           std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(orv::elem::isMoment(type)) << type;
        EXPECT_FALSE(orv::elem::isProjected(type)) << type;
        EXPECT_FALSE(orv::elem::isLocal(type)) << type;
        EXPECT_FALSE(orv::elem::isThermal(type)) << type;
    }
}

TEST(LoadTypes, WithoutAMatrixAllDirectionsGoByTheSystem) {
    const FilledSystem& system = turnedSystem();
    for (const TypeRow& row : kTypes)
        expectVector(getDirectionFor(system, row.type, boost::none),
                     axesOf(system).along(row.direction == kGravity ? kMinusX : row.direction), row.type);
}

TEST(LoadTypes, WithAMatrixLocalTypesGoByItAndNoOthers) {
    const FilledSystem& system = turnedSystem();
    AcGeMatrix3d matrix;
    matrix.setCoordSystem(AcGePoint3d(100, 200, 300), AcGeVector3d(0, 0, -1), AcGeVector3d(2, 0, 0),
                          AcGeVector3d(0, 1, 0));
    const Frame element = {AcGeVector3d(0, 0, -1), AcGeVector3d(2, 0, 0), AcGeVector3d(0, 1, 0)};
    for (const TypeRow& row : kTypes) {
        const Frame frame = (row.kinds & kLocal) != 0 ? element : axesOf(system);
        expectVector(getDirectionFor(system, row.type, matrix),
                     frame.along(row.direction == kGravity ? kMinusX : row.direction), row.type);
    }
}

TEST(LoadTypes, Type12TakesTheMatrixAndType14TheWorld) {
    const FilledSystem system;
    const AcGeMatrix3d matrix = AcGeMatrix3d::rotation(0.5, AcGeVector3d::kZAxis);
    const AcGeVector3d local = getDirectionFor(system, 12, matrix);
    EXPECT_NEAR(local.x, -std::sin(0.5), 1e-15);
    EXPECT_NEAR(local.y, std::cos(0.5), 1e-15);
    EXPECT_EQ(local.z, 0.0);
    expectVector(getDirectionFor(system, 14, matrix), AcGeVector3d(1, 0, 0), 14);
}

TEST(LoadTypes, GravityGoesAlongTheAxisThatTheSystemSays) {
    struct {
        int gravity;
        Direction direction;
    } const rows[] = {{1, kX}, {2, kY}, {3, kZ}, {0, kZ}, {-1, kMinusX}, {-2, kMinusY}, {-3, kMinusZ}};
    for (const auto& row : rows) {
        const ReportRecorder reports; // 0 is no axis of gravity
        const FilledSystem system(systemRecord(0, row.gravity));
        const AcGeVector3d expected = axesOf(system).along(row.direction);
        if (row.gravity != 0)
            expectVector(expected, AcGeVector3d(0, 0, -1), row.gravity); // the drawing's own gravity
        expectVector(getDirectionFor(system, 10, boost::none), expected, row.gravity);
        expectVector(getDirectionFor(system, 10, AcGeMatrix3d::scaling(7)), expected, row.gravity);
    }
}

TEST(LoadTypes, TypesOutsideOfAllListsHaveNoDirection) {
    const FilledSystem& system = turnedSystem();
    for (const int type :
         {-11, -1, 61, 100, 109, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        expectVector(getDirectionFor(system, type, AcGeMatrix3d()), AcGeVector3d(0, 0, 0), type);
}

TEST(FreeLoadReference, EachTypeHasACodeForEachDistribution) {
    const int offsets[] = {0, 10, 20, 30};
    for (int distribution = 0; distribution <= 3; ++distribution) {
        for (int type = 100; type <= 108; ++type) {
            const auto along = static_cast<LoadDistribution>(distribution);
            const int code = FreeLoadReference::toCdbCode(static_cast<FreeLoadReference::Type>(type), along);
            EXPECT_EQ(code, type + offsets[distribution]);
            EXPECT_EQ(FreeLoadReference::fromCdbCode(code, along), type);
        }
    }
}

TEST(FreeLoadReference, ALineReadAsAnAreaIsTheGeneralOne) {
    EXPECT_EQ(FreeLoadReference::toCdbCode(static_cast<FreeLoadReference::Type>(104), orv::elem::kAreaLoad),
              124);
    EXPECT_EQ(FreeLoadReference::fromCdbCode(124, orv::elem::kAreaLoad), 104);
    EXPECT_EQ(FreeLoadReference::fromCdbCode(124, orv::elem::kLineLoad), 108);
}

TEST(FreeLoadReference, AnythingElseIsTheGeneralOne) {
    for (const int type :
         {-1, 0, 99, 108, 109, 114, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(
            FreeLoadReference::toCdbCode(static_cast<FreeLoadReference::Type>(type), orv::elem::kPointLoad),
            108);
        EXPECT_EQ(
            FreeLoadReference::toCdbCode(static_cast<FreeLoadReference::Type>(type), orv::elem::kVolumeLoad),
            138);
        EXPECT_EQ(FreeLoadReference::fromCdbCode(type, orv::elem::kPointLoad), 108);
        EXPECT_EQ(FreeLoadReference::fromCdbCode(type, orv::elem::kVolumeLoad), 108);
    }
}

TEST(FreeLoadReference, AnUnknownDistributionCountsAsAPoint) {
    for (const int distribution : {-1, 4, 100}) {
        const auto along = static_cast<LoadDistribution>(distribution);
        EXPECT_EQ(FreeLoadReference::toCdbCode(static_cast<FreeLoadReference::Type>(101), along), 101);
        EXPECT_EQ(FreeLoadReference::fromCdbCode(101, along), 101);
    }
}

TEST(LoadScale, IsTheSizeForEachUnitOfTheValue) {
    PlainSystem system;
    system.visSettings().setSize(kLoadSize, 0.25);
    EXPECT_EQ(scaleLoadValueForDisplay(system, 10, 8.0), 2.0);
    EXPECT_EQ(scaleLoadValueForDisplay(system, 10, -8.0), -2.0);
    EXPECT_EQ(scaleLoadValueForDisplay(system, 10, 0.0), 0.0);
}

TEST(LoadScale, ThermalValuesAreDrawn200TimesLarger) {
    const PlainSystem system;
    for (int type = 51; type <= 56; ++type)
        EXPECT_EQ(scaleLoadValueForDisplay(system, type, 1.5), 300.0) << type;
    EXPECT_EQ(scaleLoadValueForDisplay(system, 50, 1.5), 1.5);
    EXPECT_EQ(scaleLoadValueForDisplay(system, 57, 1.5), 1.5);
}

TEST(LoadScale, TheLogarithmicScaleKeepsTheSign) {
    PlainSystem system;
    system.visSettings().setSwitch(kLogarithmicScale, 1);
    system.visSettings().setSize(kLoadSize, 2.0);
    EXPECT_DOUBLE_EQ(scaleLoadValueForDisplay(system, 10, 90.0), 20.0 * std::log(10.0));
    EXPECT_DOUBLE_EQ(scaleLoadValueForDisplay(system, 10, -90.0), -20.0 * std::log(10.0));
    EXPECT_DOUBLE_EQ(scaleLoadValueForDisplay(system, 52, 0.45), 20.0 * std::log(10.0));
    EXPECT_DOUBLE_EQ(scaleLoadValueForDisplay(system, 52, -0.45), -20.0 * std::log(10.0));
    EXPECT_EQ(scaleLoadValueForDisplay(system, 10, 0.0), 0.0);
}

TEST(LoadScale, AFreshSystemIsLogarithmicWithASizeOfAFifth) {
    const orv::System system;
    EXPECT_DOUBLE_EQ(scaleLoadValueForDisplay(system, 10, 10.0), 0.2 * 10.0 * std::log(2.0));
}

TEST(LoadScale, WhatIsNoFiniteNumberIsReportedAndGoesThrough) {
    const PlainSystem system;
    ReportRecorder recorder;
    EXPECT_TRUE(std::isnan(scaleLoadValueForDisplay(system, 10, kNaN)));
    EXPECT_EQ(scaleLoadValueForDisplay(system, 51, kInfinity), kInfinity);
    EXPECT_EQ(scaleLoadValueForDisplay(system, 10, -kInfinity), -kInfinity);
    EXPECT_EQ(recorder.conditions(), Texts(3, "!isNaN(v) && !isInfinite(v)"));
    for (const auto& report : recorder.reports()) {
        ASSERT_EQ(report.values.size(), 1u);
        EXPECT_EQ(report.values[0].name, "v");
    }
    EXPECT_EQ(recorder.at(1).values, (Values{{"v", "inf"}}));
}

TEST(LoadScale, AnArrowHeadIsAShareOfAShortArrowAndNeverLongerThanItsSize) {
    PlainSystem system;
    system.visSettings().setSize(kArrowHeadSize, 0.6);
    EXPECT_EQ(getArrowHeadLen(system, 0.0), 0.0);
    EXPECT_EQ(getArrowHeadLen(system, 1.0), 0.3);
    EXPECT_EQ(getArrowHeadLen(system, -1.0), 0.3);
    EXPECT_EQ(getArrowHeadLen(system, 1.5), 0.3 * 1.5);
    EXPECT_EQ(getArrowHeadLen(system, 5.0), 0.6);
    EXPECT_EQ(getArrowHeadLen(system, -5.0), 0.6);
}
