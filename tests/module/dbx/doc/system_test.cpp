#include "dbx/doc/system.h"

#include "support/report_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

using namespace orv;
using testing_support::FilledSystem;
using testing_support::ReportRecorder;
using testing_support::systemRecord;
using testing_support::SystemStore;
using testing_support::Texts;
using testing_support::Values;

namespace {

constexpr const char* kNoRecord = "!m_data_10_0.is_empty()";
const AcGeVector3d kMinusY(0.0, -1.0, 0.0);
const AcGeVector3d kMinusZ(0.0, 0.0, -1.0);

typeCDB_SYST withBox(typeCDB_SYST syst, const AcGePoint3d& min, const AcGePoint3d& max) {
    for (unsigned int axis = 0; axis < 3; ++axis) {
        syst.box_min[axis] = static_cast<float>(min[axis]);
        syst.box_max[axis] = static_cast<float>(max[axis]);
    }
    return syst;
}

// The corners of the box as the record has them.
std::pair<AcGePoint3d, AcGePoint3d> boxOf(const System& system) {
    std::pair<AcGePoint3d, AcGePoint3d> box;
    system.getExtents(box.first, box.second);
    return box;
}

// Of store axes of a length, in a kind of system under a gravity axis.
FilledSystem made(int iprob, int iachs, float unit = 1.0F) {
    return FilledSystem(systemRecord(iprob, iachs, unit));
}

} // namespace

TEST(System, AFreshOneHasTheDefaultsOfItsFields) {
    ReportRecorder reports;
    const System system;
    EXPECT_EQ(system.scaleWcs2Cdb(), 1.0);
    EXPECT_EQ(system.scaleCdb2Wcs(), 1.0);
    EXPECT_EQ(system.drawingUnit(), 13);
    EXPECT_EQ(system.xformWcs2Cdb(), AcGeMatrix3d::kIdentity);
    EXPECT_EQ(system.converter().getWcs2Cdb(), AcGeMatrix3d::kIdentity);
    EXPECT_EQ(system.converter().toCdb(3.0), 3.0);
    EXPECT_EQ(system.converter().fromCdb(3.0), 3.0);
    EXPECT_EQ(system.pointSize(), 0.01);
    EXPECT_TRUE(system.properties().empty());
    EXPECT_EQ(system.visSettings().getVersion(), 15);
    EXPECT_TRUE(system.visSettings().isOn(61));
    EXPECT_EQ(system.visSettings().getRawSize(151).value, 3.0);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, HasNoTableOfVirtualOperationsAndIsNotCopied) {
    EXPECT_FALSE(std::is_polymorphic_v<System>);
    EXPECT_FALSE(std::is_copy_constructible_v<System>);
    EXPECT_FALSE(std::is_copy_assignable_v<System>);
}

TEST(System, EditableIsFalseForEverySystem) {
    EXPECT_FALSE(System().editable());
    EXPECT_FALSE(made(10, -2).editable());
}

TEST(System, FixedAnswers) {
    ReportRecorder reports;
    const System system;
    EXPECT_EQ(system.get_zustand(), 0);
    EXPECT_FALSE(system.isPrestressed());
    EXPECT_EQ(system.getGroupLayerMode(), 1);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, EachProblemNumberLeadsToItsKind) {
    ReportRecorder reports;
    for (const int iprob : {0, 20})
        EXPECT_EQ(System::get_type(systemRecord(iprob, -3)), RAUM) << iprob;
    for (int iprob = 10; iprob <= 19; ++iprob)
        EXPECT_EQ(System::get_type(systemRecord(iprob, -3)), EBENE) << iprob;
    for (const int iprob : {30, 31, 34, 35})
        EXPECT_EQ(System::get_type(systemRecord(iprob, -3)), PLATTE) << iprob;
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, ProblemNumber20IsASpaceSystem) {
    ReportRecorder reports;
    const FilledSystem system(systemRecord(20, -3));
    EXPECT_EQ(system.get_type(), RAUM);
    EXPECT_EQ(system.get_system(), RAUM);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, ProblemNumber9ReportsTwiceAndIsASpaceSystem) {
    ReportRecorder reports;
    EXPECT_EQ(System::get_type(systemRecord(9, -3)), RAUM);
    EXPECT_EQ(reports.conditions(), (Texts{"iprob != 9", "false"}));
    EXPECT_EQ(reports.messages(),
              (Texts{"invalid/unsupported system type",
                     "System::get_type() encountered an invalid system type. Using 'RAUM'."}));
    EXPECT_EQ(reports.at(0).values, (Values{{"iprob", "9"}}));
    EXPECT_EQ(reports.at(1).values, (Values{{"iprob", "9"}}));
    EXPECT_EQ(reports.at(1).severity, orv::smartassert::Severity::kDebug);
}

TEST(System, ProblemNumbers32And33AreNoPlate) {
    for (const int iprob : {32, 33}) {
        ReportRecorder reports;
        EXPECT_EQ(System::get_type(systemRecord(iprob, -3)), RAUM);
        EXPECT_EQ(reports.conditions(), (Texts{"false"}));
        EXPECT_EQ(reports.at(0).values, (Values{{"iprob", std::to_string(iprob)}}));
    }
}

TEST(System, EveryOtherProblemNumberIsReportedOnceAndASpaceSystem) {
    for (const int iprob :
         {std::numeric_limits<int>::min(), -1, 1, 8, 21, 29, 36, 100, std::numeric_limits<int>::max()}) {
        ReportRecorder reports;
        EXPECT_EQ(System::get_type(systemRecord(iprob, -3)), RAUM);
        EXPECT_EQ(reports.conditions(), (Texts{"false"})) << iprob;
    }
}

TEST(System, WithoutARecordTheKindIsReportedAndSpace) {
    ReportRecorder reports;
    const System system;
    EXPECT_EQ(system.get_type(), RAUM);
    EXPECT_EQ(system.get_system(), RAUM);
    EXPECT_EQ(reports.conditions(), (Texts{kNoRecord, kNoRecord}));
    EXPECT_EQ(reports.at(0).values, Values());
    EXPECT_EQ(reports.at(0).message, "");
}

TEST(System, TheSignedAxesOfGravity) {
    ReportRecorder reports;
    for (const int iachs : {-3, -2, -1, 1, 2, 3})
        EXPECT_EQ(made(0, iachs).gravityDirection(), iachs);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, AnAxisOfGravityThatIsNoneIsReportedAndZero) {
    for (const int iachs : {0, -4, 4, 1000}) {
        ReportRecorder reports;
        const FilledSystem system = made(0, iachs);
        reports.clear();
        EXPECT_EQ(system.gravityDirection(), kGravityNone);
        EXPECT_EQ(reports.conditions(), (Texts{"iachs!=0 && iachs >= -3 && iachs <= 3"}));
        EXPECT_EQ(reports.at(0).values, (Values{{"iachs", std::to_string(iachs)}}));
        EXPECT_EQ(reports.at(0).message, "unknown/unhandled IACHS");
    }
}

TEST(System, WithoutARecordThereIsNoGravityAxisAndNoReport) {
    ReportRecorder reports;
    EXPECT_EQ(System().gravityDirection(), kGravityNone);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, GravityInTheDrawingGoesByTheKind) {
    EXPECT_EQ(System::gravityDirectionVectorWcs(EBENE), kMinusY);
    EXPECT_EQ(System::gravityDirectionVectorWcs(RAUM), kMinusZ);
    EXPECT_EQ(System::gravityDirectionVectorWcs(PLATTE), kMinusZ);
    EXPECT_EQ(System::gravityDirectionVectorWcs(static_cast<SYSTEM>(2)), kMinusZ);
    EXPECT_EQ(made(10, 1).gravityDirectionVectorWcs(), kMinusY);
    EXPECT_EQ(made(10, 1).gravityDirectionVectorWcs2(), kMinusY);
    EXPECT_EQ(made(30, 1).gravityDirectionVectorWcs(), kMinusZ);
}

TEST(System, WithoutARecordGravityIsMinusZWithAReportEach) {
    ReportRecorder reports;
    const System system;
    EXPECT_EQ(system.gravityDirectionVectorWcs(), kMinusZ);
    EXPECT_EQ(system.gravityDirectionVectorWcs2(), kMinusZ);
    EXPECT_EQ(system.gravityDirectionVector(), kMinusZ);
    EXPECT_EQ(reports.conditions(), (Texts{kNoRecord, kNoRecord, kNoRecord}));
}

TEST(System, GravityInTheStoreIsTheRecordsAxis) {
    EXPECT_TRUE(made(0, 1, 0.01F).gravityDirectionVector().isEqualTo(AcGeVector3d::kXAxis));
    EXPECT_TRUE(made(10, 3).gravityDirectionVector().isEqualTo(AcGeVector3d::kZAxis));
    EXPECT_TRUE(made(30, -2).gravityDirectionVector().isEqualTo(kMinusY));
}

TEST(System, NumbersOfTheRecordAreRead) {
    typeCDB_SYST syst = systemRecord(0, -3);
    syst.sys_numkn = 12;
    syst.sys_maxkn = 4711;
    syst.igdiv = 77;
    ReportRecorder reports;
    const FilledSystem system(syst);
    EXPECT_EQ(system.get_sys_anzkn(), 12);
    EXPECT_EQ(system.get_sys_maxkn(), 4711);
    EXPECT_EQ(system.get_igdiv(), 77);
    EXPECT_EQ(syst.sys_anzkn, 12);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, NumbersOfNodesAreSetInTheRecord) {
    ReportRecorder reports;
    FilledSystem system;
    system.set_sys_maxkn(5);
    system.set_sys_numkn(3);
    EXPECT_EQ(system.get_sys_maxkn(), 5);
    EXPECT_EQ(system.get_sys_anzkn(), 3);
    system.set_sys_anzkn(4);
    EXPECT_EQ(system.get_sys_anzkn(), 4);
    EXPECT_EQ(system.written().sys_maxkn, 5);
    EXPECT_EQ(system.written().sys_numkn, 4);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, WithoutARecordTheDivisionIsReportedAnd10000AndTheNodeNumberIs0) {
    ReportRecorder reports;
    const System system;
    EXPECT_EQ(system.get_igdiv(), 10000);
    EXPECT_EQ(system.get_sys_maxkn(), 0);
    EXPECT_EQ(system.get_sys_anzkn(), 0);
    EXPECT_EQ(reports.conditions(), (Texts{kNoRecord, kNoRecord, kNoRecord}));
}

TEST(System, WithoutARecordNothingIsSet) {
    ReportRecorder reports;
    System system;
    system.set_sys_maxkn(5);
    system.set_sys_numkn(3);
    system.set_sys_anzkn(3);
    system.set_sys_box({0, 0, 0}, {1, 1, 1});
    system.set_sys_box({1, 1, 1}, {0, 0, 0});
    system.setDefaultExtents();
    EXPECT_EQ(reports.conditions(), Texts(6, kNoRecord));
    EXPECT_EQ(system.get_sys_maxkn(), 0);
    SystemStore store;
    system.updateTo(store);
    EXPECT_FALSE(store.exists(10, 0));
}

TEST(System, WithoutARecordTheExtentsAreABoxThatStandsInNoRecord) {
    ReportRecorder reports;
    System system;
    EXPECT_EQ(boxOf(system), std::make_pair(AcGePoint3d(0, 0, 0), AcGePoint3d(20, 20, 0)));
    EXPECT_EQ(reports.conditions(), (Texts{kNoRecord}));
    SystemStore store;
    EXPECT_TRUE(system.updateTo(store));
    EXPECT_FALSE(store.exists(10, 0));
    AcGePoint3d min;
    AcGePoint3d max;
    system.getExtentsWCS(min, max);
    EXPECT_EQ(min, AcGePoint3d(0, 0, 0));
    EXPECT_EQ(max, AcGePoint3d(20, 20, 0));
}

TEST(System, ExtentsAreTheRecordsBox) {
    const FilledSystem system(withBox(systemRecord(0, -3), {-1.5, 2, 3}, {4, 5.25, 6}));
    EXPECT_EQ(boxOf(system), std::make_pair(AcGePoint3d(-1.5, 2, 3), AcGePoint3d(4, 5.25, 6)));
}

TEST(System, ExtentsInTheDrawingAreTurnedAndScaled) {
    // Gravity along the store's -Y: its X is the drawing's, its Y the drawing's Z, its Z the drawing's -Y.
    // The drawing is in centimetres.
    const FilledSystem system(withBox(systemRecord(0, -2, 0.01F), {1, 2, 3}, {4, 5, 6}));
    AcGePoint3d min;
    AcGePoint3d max;
    system.getExtentsWCS(min, max);
    const double scale = system.scaleCdb2Wcs();
    EXPECT_NEAR(scale, 100.0, 1e-5);
    EXPECT_TRUE(min.isEqualTo(AcGePoint3d(1, -3, 2) * scale)) << min.y << ' ' << min.z;
    EXPECT_TRUE(max.isEqualTo(AcGePoint3d(4, -6, 5) * scale)) << max.y << ' ' << max.z;
}

TEST(System, TheBoxIsSetFromPointsOfTheDrawing) {
    ReportRecorder reports;
    SystemStore store(systemRecord(0, -2));
    store.put(10, 102, PersistentSystemInfo{2, 16, 0.001});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    system.set_sys_box({1000, 2000, 3000}, {4000, 5000, 6000});
    ASSERT_TRUE(system.updateTo(store));
    const auto syst = store.taken<typeCDB_SYST>(10, 0);
    const float wanted[] = {1, 3, -2, 4, 6, -5};
    for (int i = 0; i < 3; ++i) {
        EXPECT_FLOAT_EQ(syst.box_min[i], wanted[i]) << i;
        EXPECT_FLOAT_EQ(syst.box_max[i], wanted[i + 3]) << i;
    }
    EXPECT_EQ(reports.size(), 0u);
    AcGePoint3d min;
    AcGePoint3d max;
    system.getExtentsWCS(min, max);
    EXPECT_LT(min.distanceTo({1000, 2000, 3000}), 1e-3);
    EXPECT_LT(max.distanceTo({4000, 5000, 6000}), 1e-3);
}

TEST(System, ABoxInTheWrongOrderInOneAxisReportsThatAxisOnlyAndIsWritten) {
    const struct {
        AcGePoint3d min, max;
        const char* condition;
        const char* minText;
        const char* maxText;
    } cases[] = {
        {{2, 0, 0}, {1, 1, 1}, "min.x <= max.x", "Point3d(2, 0, 0)", "Point3d(1, 1, 1)"},
        {{0, 2.5, 0}, {1, 1, 1}, "min.y <= max.y", "Point3d(0, 2.5, 0)", "Point3d(1, 1, 1)"},
        {{0, 0, -1}, {1, 1, -2}, "min.z <= max.z", "Point3d(0, 0, -1)", "Point3d(1, 1, -2)"},
    };
    for (const auto& test : cases) {
        FilledSystem system;
        ReportRecorder reports;
        system.set_sys_box(test.min, test.max);
        EXPECT_EQ(reports.conditions(), (Texts{test.condition}));
        EXPECT_EQ(reports.at(0).values, (Values{{"min", test.minText}, {"max", test.maxText}}));
        EXPECT_EQ(reports.at(0).message, "invalid system box");
        EXPECT_EQ(boxOf(system), std::make_pair(test.min, test.max));
    }
}

TEST(System, ABoxThatIsWrongInEveryAxisOrNoNumberIsReportedInXYZ) {
    FilledSystem system;
    ReportRecorder reports;
    system.set_sys_box({1, 1, 1}, {0, 0, 0});
    EXPECT_EQ(reports.conditions(), (Texts{"min.x <= max.x", "min.y <= max.y", "min.z <= max.z"}));
    reports.clear();
    system.set_sys_box({0, std::nan(""), 0}, {1, 1, 1});
    EXPECT_EQ(reports.conditions(), (Texts{"min.y <= max.y"}));
    EXPECT_TRUE(std::isnan(boxOf(system).first.y));
}

TEST(System, ABoxOfASinglePointIsNotReported) {
    FilledSystem system;
    ReportRecorder reports;
    system.set_sys_box({1, 1, 1}, {1, 1, 1});
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, DefaultExtentsReplaceABoxThatIsNothingButTheOrigin) {
    ReportRecorder reports;
    FilledSystem system;
    system.setDefaultExtents();
    EXPECT_EQ(boxOf(system), std::make_pair(AcGePoint3d(0, 0, 0), AcGePoint3d(20, 20, 0)));
    const typeCDB_SYST written = system.written();
    EXPECT_EQ(written.box_max[0], 20.0F);
    EXPECT_EQ(written.box_max[1], 20.0F);
    EXPECT_EQ(written.box_max[2], 0.0F);
    EXPECT_EQ(reports.size(), 0u);
}

TEST(System, DefaultExtentsLeaveABoxAloneThatIsNotWhollyZero) {
    const std::pair<AcGePoint3d, AcGePoint3d> boxes[] = {
        {{0, 0, 0}, {0, 0, 5}}, {{-1, 0, 0}, {0, 0, 0}}, {{1, 1, 1}, {2, 2, 2}}, {{1e8, 0, 0}, {-1e8, 0, 0}}};
    for (const auto& box : boxes) {
        FilledSystem system(withBox(systemRecord(0, -3), box.first, box.second));
        system.setDefaultExtents();
        EXPECT_EQ(boxOf(system), box);
    }
}

TEST(System, TheAxesOfTheStoreAsTheDrawingSeesThem) {
    const FilledSystem system = made(0, -2, 0.01F);
    AcGeVector3d x;
    AcGeVector3d y;
    AcGeVector3d z;
    system.getCoordinateSystem(x, y, z);
    EXPECT_TRUE(x.isEqualTo(AcGeVector3d::kXAxis));
    EXPECT_TRUE(y.isEqualTo(AcGeVector3d::kZAxis));
    EXPECT_TRUE(z.isEqualTo(kMinusY));
    EXPECT_EQ(y.x, 0.0) << "no dust";
    EXPECT_EQ(y.y, 0.0) << "no dust";
    AcGePoint3d origin(1, 1, 1);
    system.getCoordinateSystem(origin, x, y, z);
    EXPECT_EQ(origin, AcGePoint3d::kOrigin);
    EXPECT_TRUE(y.isEqualTo(AcGeVector3d::kZAxis));
}

TEST(System, TheMatrixOfTheStoresFrameTakesTheDrawingsAxesToIt) {
    for (const int iachs : {-3, -2, -1, 1, 2, 3}) {
        const FilledSystem system = made(10, iachs, 0.001F);
        AcGeMatrix3d matrix;
        system.getCoordinateSystem(matrix);
        AcGeVector3d x;
        AcGeVector3d y;
        AcGeVector3d z;
        system.getCoordinateSystem(x, y, z);
        EXPECT_TRUE((matrix * AcGeVector3d::kXAxis).isEqualTo(x));
        EXPECT_TRUE((matrix * AcGeVector3d::kYAxis).isEqualTo(y));
        EXPECT_TRUE((matrix * AcGeVector3d::kZAxis).isEqualTo(z));
        EXPECT_TRUE((system.xformWcs2Cdb() * matrix).isEqualTo(AcGeMatrix3d::kIdentity)) << iachs;
    }
}

TEST(System, AScaleOfExactly0IsReportedAndTheWayBackIs1) {
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{2, 13, 0.0});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    ReportRecorder reports;
    EXPECT_EQ(system.scaleCdb2Wcs(), 1.0);
    EXPECT_EQ(reports.conditions(), (Texts{"m_sysInfo->drawing_unit_wcs2cdb > 0."}));
    EXPECT_EQ(reports.at(0).values, Values());
    EXPECT_EQ(system.scaleWcs2Cdb(), 0.0);
    EXPECT_EQ(reports.size(), 1u);
    EXPECT_TRUE(std::isinf(system.converter().fromCdb(1.0))) << "not caught there";
}

TEST(System, AScaleBelow0IsReportedAndUsedAllTheSame) {
    SystemStore store(systemRecord(0, -3));
    store.put(10, 102, PersistentSystemInfo{2, 13, -4.0});
    System system;
    ASSERT_TRUE(system.updateFrom(store));
    ReportRecorder reports;
    EXPECT_EQ(system.scaleCdb2Wcs(), -0.25);
    EXPECT_EQ(reports.conditions(), (Texts{"m_sysInfo->drawing_unit_wcs2cdb > 0."}));
}

TEST(System, PointSizeAndSettingsAndPropertiesCanBeChanged) {
    System system;
    system.setPointSize(0.5);
    EXPECT_EQ(system.pointSize(), 0.5);
    system.visSettings().setSwitch(63, 1);
    system.properties().add<std::wstring>("project.name", L"bridge");
    const System& seen = system;
    EXPECT_TRUE(seen.visSettings().isOn(63));
    EXPECT_EQ(*seen.properties().getValueNotThrow<std::wstring>("project.name"), L"bridge");
}
