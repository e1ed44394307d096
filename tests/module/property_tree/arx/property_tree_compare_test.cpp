#include "property_tree/arx/property_tree_filer.h"

#include "embedded/session.h"
#include "module/property_tree/arx/value_trees.h"
#include "support/report_recorder.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace orv::property_tree;
using namespace testing_support;
using boost::any;
using orv::smartassert::Severity;

namespace {

void expectUnknown(bool answer, const ReportRecorder& recorder, const char* message) {
    EXPECT_FALSE(answer);
    ASSERT_EQ(recorder.conditions(), (Texts{"false"}));
    EXPECT_EQ(recorder.messages(), (Texts{message}));
    EXPECT_EQ(recorder.at(0).severity, Severity::kError);
}

} // namespace

TEST(PropertyTreeIsEqual, DifferentTypesAreNotEqualWithoutAReport) {
    ReportRecorder recorder;
    EXPECT_FALSE(is_equal(any(1), any(1.0)));
    EXPECT_FALSE(is_equal(any(1), any(true)));
    EXPECT_FALSE(is_equal(any(), any(0)));
    EXPECT_FALSE(is_equal(any(AcDbObjectId()), any(AcDbSoftPointerId())));
    EXPECT_FALSE(is_equal(any(AcGePoint3d()), any(AcGeVector3d())));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeIsEqual, TruthValuesAndNumbersAreComparedExactly) {
    ReportRecorder recorder;
    EXPECT_TRUE(is_equal(any(true), any(true)));
    EXPECT_FALSE(is_equal(any(true), any(false)));
    EXPECT_TRUE(is_equal(any(-3), any(-3)));
    EXPECT_FALSE(is_equal(any(-3), any(3)));
    EXPECT_TRUE(is_equal(any(1.0), any(1.0)));
    EXPECT_FALSE(is_equal(any(1.0), any(1.0 + 1e-12)));
    EXPECT_TRUE(is_equal(any(0.0), any(-0.0)));
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(is_equal(any(none), any(none)));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeIsEqual, PointsVectorsAndMatricesAreEqualWithinTheContextsTolerance) {
    ReportRecorder recorder;
    const double withinPoint = AcGeContext::gTol.equalPoint() / 2;
    const double beyondPoint = AcGeContext::gTol.equalPoint() * 4;
    EXPECT_TRUE(is_equal(any(AcGePoint3d(1, 2, 3)), any(AcGePoint3d(1 + withinPoint, 2, 3))));
    EXPECT_FALSE(is_equal(any(AcGePoint3d(1, 2, 3)), any(AcGePoint3d(1 + beyondPoint, 2, 3))));
    const double within = AcGeContext::gTol.equalVector() / 2;
    const double beyond = AcGeContext::gTol.equalVector() * 4;
    EXPECT_TRUE(is_equal(any(AcGeVector3d(1, 2, 3)), any(AcGeVector3d(1, 2 + within, 3))));
    EXPECT_FALSE(is_equal(any(AcGeVector3d(1, 2, 3)), any(AcGeVector3d(1, 2 + beyond, 3))));
    AcGeMatrix3d near = numberedMatrix();
    near(2, 1) += within;
    AcGeMatrix3d far = numberedMatrix();
    far(2, 1) += beyond;
    EXPECT_TRUE(is_equal(any(numberedMatrix()), any(near)));
    EXPECT_FALSE(is_equal(any(numberedMatrix()), any(far)));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeIsEqual, TheToleranceIsTheOneThatIsSet) {
    const AcGeTol before = AcGeContext::gTol;
    AcGeContext::gTol.setEqualPoint(0.5);
    EXPECT_TRUE(is_equal(any(AcGePoint3d(0, 0, 0)), any(AcGePoint3d(0.4, 0, 0))));
    AcGeContext::gTol = before;
    EXPECT_FALSE(is_equal(any(AcGePoint3d(0, 0, 0)), any(AcGePoint3d(0.4, 0, 0))));
}

TEST(PropertyTreeIsEqual, IdsOfOneObjectAreEqual) {
    ReportRecorder recorder;
    StoreDrawing drawing;
    const AcDbObjectId one = drawing.named;
    const AcDbObjectId other = drawing.base;
    EXPECT_TRUE(is_equal(any(one), any(one)));
    EXPECT_FALSE(is_equal(any(one), any(other)));
    EXPECT_TRUE(is_equal(any(AcDbSoftPointerId(one)), any(AcDbSoftPointerId(one))));
    EXPECT_FALSE(is_equal(any(AcDbSoftPointerId(one)), any(AcDbSoftPointerId(other))));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeIsEqual, TwoEqualTextsAreReportedAndNotEqual) {
    ReportRecorder recorder;
    expectUnknown(is_equal(any(std::string("a")), any(std::string("a"))), recorder,
                  "orv::property_tree::is_equal(): unknown type");
}

TEST(PropertyTreeIsEqual, TwoEmptyValuesAreReportedAndNotEqual) {
    ReportRecorder recorder;
    expectUnknown(is_equal(any(), any()), recorder, "orv::property_tree::is_equal(): unknown type");
}

TEST(PropertyTreeIsEqual, ATypeWithoutATagIsReportedAndNotEqual) {
    ReportRecorder recorder;
    expectUnknown(is_equal(any(1u), any(1u)), recorder, "orv::property_tree::is_equal(): unknown type");
}

TEST(PropertyTreeIsLess, DifferentTypesDoNotOrderAtAll) {
    ReportRecorder recorder;
    EXPECT_FALSE(is_less(any(1), any(2.0)));
    EXPECT_FALSE(is_less(any(2.0), any(1)));
    EXPECT_FALSE(is_less(any(1.0), any(2)));
    EXPECT_FALSE(is_less(any(2), any(1.0)));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeIsLess, TruthValuesAndNumbersOrder) {
    ReportRecorder recorder;
    EXPECT_TRUE(is_less(any(false), any(true)));
    EXPECT_FALSE(is_less(any(true), any(false)));
    EXPECT_TRUE(is_less(any(-1), any(1)));
    EXPECT_FALSE(is_less(any(1), any(-1)));
    EXPECT_FALSE(is_less(any(1), any(1)));
    EXPECT_TRUE(is_less(any(1.0), any(1.0 + 1e-12)));
    EXPECT_FALSE(is_less(any(1.0), any(1.0)));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeIsLess, IdsOrderByTheirHandles) {
    ReportRecorder recorder;
    StoreDrawing drawing;
    AcDbObjectId low = drawing.kelmoran;
    AcDbObjectId high = drawing.base;
    ASSERT_LT(static_cast<Adesk::UInt64>(low.handle()), static_cast<Adesk::UInt64>(high.handle()));
    EXPECT_TRUE(is_less(any(low), any(high)));
    EXPECT_FALSE(is_less(any(high), any(low)));
    EXPECT_FALSE(is_less(any(low), any(low)));
    EXPECT_TRUE(is_less(any(AcDbSoftPointerId(low)), any(AcDbSoftPointerId(high))));
    EXPECT_FALSE(is_less(any(AcDbSoftPointerId(high)), any(AcDbSoftPointerId(low))));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(PropertyTreeIsLess, EveryOtherTypeIsReportedAndNotLess) {
    const std::pair<any, any> pairs[] = {
        {std::string("a"), std::string("b")},         {any(), any()},
        {AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1)}, {AcGeVector3d(0, 0, 0), AcGeVector3d(1, 1, 1)},
        {AcGeMatrix3d(), numberedMatrix()},           {1u, 2u}};
    for (const auto& [a, b] : pairs) {
        ReportRecorder recorder;
        expectUnknown(is_less(a, b), recorder, "orv::property_tree::is_less(): This type is not supported!");
    }
}
