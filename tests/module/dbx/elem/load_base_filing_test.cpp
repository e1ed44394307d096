// The data of a load as bytes, in all versions.

#include "module/dbx/elem/plugin_bodies.h"
#include "module/dbx/elem/test_load.h"
#include "support/allocation_watch.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace testing_support;
using orv::elem::LoadBase;
using orv::smartassert::Severity;

namespace {

bool load(TestLoad& read, const std::string& body) {
    const StoredBody stored(body);
    std::uint64_t taken = 0;
    const bool loaded = stored.read([&read](auto& archive) { return read.onLoad(archive, 6); }, &taken);
    EXPECT_TRUE(!loaded || taken == stored.bytes.size()) << taken << " of " << stored.bytes.size();
    return loaded;
}

std::string saved(const TestLoad& load) {
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(load.onSave(archive));
    EXPECT_TRUE(archive.softPointers().empty());
    EXPECT_TRUE(archive.hardPointers().empty());
    return hexOf(archive);
}

LoadBase::Vertex sampleVertex() {
    LoadBase::Vertex vertex;
    vertex.posSource = static_cast<orv::elem::PositionSource>(2);
    vertex.segment = 7;
    vertex.distanceMode = orv::elem::kAbsoluteDistance;
    vertex.position = 0.25;
    vertex.node = 9;
    vertex.point.set(1, 2, -0.5);
    vertex.value = 2.5;
    return vertex;
}

// With another value in each place than both the defaults and the bodies have.
void fillOtherwise(TestLoad& load) {
    load.setType(99);
    load.setClass(static_cast<orv::elem::LOAD_KIND>(98));
    load.setCategory(static_cast<orv::elem::LoadTypeCategory>(97));
    load.setDistribution(orv::elem::kVolumeLoad);
    load.setUDL(true);
    load.setUnitText(L"old");
    load.setPolygonal(true);
    load.setLoadCases({96, 95});
    LoadBase::Vertex vertex;
    vertex.text = L"old";
    load.setVertices({vertex, vertex, vertex});
}

void expectVertices(const TestLoad& load, const std::wstring& start, const std::wstring& end) {
    ASSERT_EQ(load.numVertices(), 2u);
    const LoadBase::Vertex& first = load.getVertices()[0];
    EXPECT_EQ(first.posSource, 2);
    EXPECT_EQ(first.segment, 7u);
    EXPECT_EQ(first.distanceMode, orv::elem::kAbsoluteDistance);
    EXPECT_EQ(first.position, 0.25);
    EXPECT_EQ(first.node, 9u);
    EXPECT_EQ(first.point.x, 1.0);
    EXPECT_EQ(first.point.y, 2.0);
    EXPECT_EQ(first.point.z, -0.5);
    EXPECT_EQ(first.value, 2.5);
    EXPECT_EQ(first.text, start);
    const LoadBase::Vertex& last = load.getVertices()[1];
    EXPECT_EQ(last.posSource, LoadBase::PS_POINT);
    EXPECT_EQ(last.value, -4.0);
    EXPECT_EQ(last.text, end);
}

// A body up to its vertices, of which there are so many like the first one.
std::string withVertices(unsigned int version, int count) {
    std::string body = joined({loadVersion(version), kLoadType, version >= 3 ? kLoadCategory : "",
                               version >= 4 ? kYes : "", loadVersion(static_cast<unsigned int>(count))});
    for (int i = 0; i < count; ++i)
        body = joined({body, kFirstVertex, version >= 8 ? kTextA : ""});
    return body;
}

// What a load of these vertices is filed as now, with those fields.
std::string written(const std::string& kind, const std::string& isUDL, const std::string& start,
                    const std::string& end, const std::string& cases, const std::string& unit,
                    const std::string& isPolygonal) {
    return joined({loadVersion(8), kLoadType, kind, isUDL, kTwo, kFirstVertex, start, kLastVertex, end, cases,
                   unit, isPolygonal, kLoadEnd});
}

} // namespace

TEST(LoadBaseFiling, AFreshLoadIsFiledWithItsDefaults) {
    TestLoad load;
    EXPECT_EQ(saved(load), "08 00 00 00 0a 00 01 00 00 00 00 00 00 00 00 00 00 01 00 00 00 01 00 00 00 "
                           "00 00 00 00 00 4d 6a 7e fd");
}

TEST(LoadBaseFiling, EveryFieldHasItsPlace) {
    TestLoad load;
    load.setType(12);
    load.setClass(orv::elem::kLoadKindDashed);
    load.setCategory(static_cast<orv::elem::LoadTypeCategory>(5));
    load.setDistribution(orv::elem::kLineLoad);
    LoadBase::Vertex last;
    last.value = -4.0;
    load.setVertices({sampleVertex(), last});
    load.setTextAtStart(L"a");
    load.setTextAtEnd(L"bc");
    load.setUDL(true);
    load.setLoadCases({7, 4});
    load.setUnitText(L"kN");
    EXPECT_EQ(saved(load), loadBody(8));
    load.setPolygonal(true);
    load.setUDL(false);
    EXPECT_EQ(saved(load), written(kLoadCategory, kNo, kTextA, kTextBc, kCases, kUnit, kYes));
}

TEST(LoadBaseFiling, TheNumbersOfTheKindAreCutTo16Bits) {
    TestLoad load;
    load.setType(-1);
    load.setClass(static_cast<orv::elem::LOAD_KIND>(0x12345));
    load.setCategory(static_cast<orv::elem::LoadTypeCategory>(0x7fffffff));
    load.setDistribution(static_cast<orv::elem::LoadDistribution>(0x10001));
    const std::string bytes = saved(load);
    EXPECT_EQ(bytes.substr(0, 35), "08 00 00 00 ff ff 45 23 ff ff 01 00");
    TestLoad read;
    ASSERT_TRUE(::load(read, bytes));
    EXPECT_EQ(read.getType(), 65535);
    EXPECT_EQ(read.getClass(), 0x2345);
    EXPECT_EQ(read.getCategory(), 65535);
    EXPECT_EQ(read.getDistribution(), orv::elem::kLineLoad);
}

TEST(LoadBaseFiling, Version8IsReadInFullAndWrittenTheSame) {
    ReportRecorder recorder;
    TestLoad read;
    fillOtherwise(read);
    ASSERT_TRUE(load(read, loadBody(8)));
    EXPECT_EQ(read.getType(), 12);
    EXPECT_EQ(read.getClass(), 3);
    EXPECT_EQ(read.getCategory(), 5);
    EXPECT_EQ(read.getDistribution(), orv::elem::kLineLoad);
    EXPECT_TRUE(read.isUDL());
    expectVertices(read, L"a", L"bc");
    EXPECT_EQ(read.getLoadCases(), (std::set<unsigned int>{4, 7}));
    EXPECT_EQ(read.getUnitText(), L"kN");
    EXPECT_FALSE(read.isPolygonal());
    EXPECT_EQ(saved(read), loadBody(8));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(LoadBaseFiling, Version7HasItsTextsInAList) {
    TestLoad read;
    fillOtherwise(read);
    ASSERT_TRUE(load(read, loadBody(7)));
    expectVertices(read, L"a", L"bc");
    EXPECT_EQ(saved(read), loadBody(8));
}

TEST(LoadBaseFiling, Version6HasNoPolygonalFlag) {
    TestLoad read;
    fillOtherwise(read);
    ASSERT_TRUE(load(read, loadBody(6)));
    EXPECT_EQ(read.getUnitText(), L"kN");
    EXPECT_EQ(saved(read), written(kLoadCategory, kYes, kTextA, kTextBc, kCases, kUnit, kYes));
}

TEST(LoadBaseFiling, Version5HasNoUnitText) {
    TestLoad read;
    fillOtherwise(read);
    ASSERT_TRUE(load(read, loadBody(5)));
    EXPECT_EQ(read.getUnitText(), L"");
    EXPECT_EQ(saved(read), written(kLoadCategory, kYes, kTextA, kTextBc, kCases, kNoText, kYes));
}

TEST(LoadBaseFiling, Version4HasNoLoadCasesAndTwoTexts) {
    TestLoad read;
    fillOtherwise(read);
    ASSERT_TRUE(load(read, loadBody(4)));
    expectVertices(read, L"a", L"bc");
    EXPECT_TRUE(read.getLoadCases().empty());
    EXPECT_EQ(saved(read), written(kLoadCategory, kYes, kTextA, kTextBc, kNoCases, kNoText, kYes));
}

TEST(LoadBaseFiling, Version3HasNoUDLFlag) {
    TestLoad read;
    fillOtherwise(read);
    ASSERT_TRUE(load(read, loadBody(3)));
    EXPECT_FALSE(read.isUDL());
    EXPECT_EQ(read.getCategory(), 5);
    EXPECT_EQ(saved(read), written(kLoadCategory, kNo, kTextA, kTextBc, kNoCases, kNoText, kYes));
}

TEST(LoadBaseFiling, Version2LeavesCategoryAndDistribution) {
    TestLoad read;
    fillOtherwise(read);
    ASSERT_TRUE(load(read, loadBody(2)));
    EXPECT_EQ(read.getCategory(), 97);
    EXPECT_EQ(read.getDistribution(), orv::elem::kVolumeLoad);
    EXPECT_EQ(saved(read), written("61 00 03 00", kNo, kTextA, kTextBc, kNoCases, kNoText, kYes));
}

TEST(LoadBaseFiling, Versions1And0HaveNoTexts) {
    for (const std::string& body : {loadBody(1), joined({loadVersion(0), loadBody(1).substr(12)})}) {
        TestLoad read;
        fillOtherwise(read);
        ASSERT_TRUE(load(read, body));
        expectVertices(read, L"", L"");
        EXPECT_EQ(saved(read), written("61 00 03 00", kNo, kNoText, kNoText, kNoCases, kNoText, kYes));
    }
}

TEST(LoadBaseFiling, WithoutAFlagOnlyAQuadIsNoPolygon) {
    for (const unsigned int version : {1u, 4u, 6u}) {
        for (const int count : {0, 1, 3, 4, 5}) {
            const std::string texts = version == 1   ? ""
                                      : version == 4 ? joined({kNoText, kNoText})
                                                     : joined({kCases, "00 00 00 00", kUnit});
            ReportRecorder recorder;
            TestLoad read;
            ASSERT_TRUE(load(read, joined({withVertices(version, count), texts, kLoadEnd})));
            EXPECT_EQ(read.isPolygonal(), count != 4) << version << ": " << count;
        }
    }
}

TEST(LoadBaseFiling, TheFlagOfTheStreamCountsForAQuad) {
    TestLoad read;
    ASSERT_TRUE(load(read, joined({withVertices(8, 4), kCases, kUnit, kYes, kLoadEnd})));
    EXPECT_TRUE(read.isPolygonal());
    ASSERT_TRUE(load(read, joined({withVertices(7, 3), kCases, "00 00 00 00", kUnit, kNo, kLoadEnd})));
    EXPECT_FALSE(read.isPolygonal());
}

TEST(LoadBaseFiling, TextsOfALoadWithoutVerticesAreReportedAndDropped) {
    ReportRecorder recorder;
    TestLoad read;
    ASSERT_TRUE(load(read, joined({withVertices(4, 0), kTextA, kTextBc, kLoadEnd})));
    EXPECT_EQ(recorder.conditions(), (Texts{"indexInBounds", "indexInBounds"}));
    EXPECT_EQ(read.numVertices(), 0u);
}

TEST(LoadBaseFiling, OfTwoTextsForOneVertexTheSecondStays) {
    ReportRecorder recorder;
    TestLoad read;
    ASSERT_TRUE(load(read, joined({withVertices(2, 1), kTextA, kTextBc, kLoadEnd})));
    EXPECT_EQ(read.getTextAt(0), L"bc");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(LoadBaseFiling, AListOfOneTextIsThatOfTheStart) {
    TestLoad read;
    ASSERT_TRUE(load(read, joined({withVertices(5, 3), kNoCases, loadVersion(1), kTextA, kLoadEnd})));
    EXPECT_EQ(read.getTextAt(0), L"a");
    EXPECT_EQ(read.getTextAt(1), L"");
    EXPECT_EQ(read.getTextAt(2), L"");
}

TEST(LoadBaseFiling, EachTextBehindTheSecondIsReportedAndGoesToTheEnd) {
    ReportRecorder recorder;
    TestLoad read;
    const std::string texts = joined({loadVersion(4), kTextA, kTextBc, kTextBc, kTextA});
    ASSERT_TRUE(load(read, joined({withVertices(5, 3), kNoCases, texts, kLoadEnd})));
    EXPECT_EQ(recorder.conditions(), (Texts{"i <= 1", "i <= 1"}));
    EXPECT_TRUE(recorder.at(0).values.empty());
    EXPECT_EQ(read.getTextAt(0), L"a");
    EXPECT_EQ(read.getTextAt(1), L"");
    EXPECT_EQ(read.getTextAt(2), L"a");
}

TEST(LoadBaseFiling, AUniformFlagDoesNotChangeTheValuesThatAreRead) {
    TestLoad read;
    ASSERT_TRUE(load(read, loadBody(8)));
    EXPECT_TRUE(read.isUDL());
    EXPECT_EQ(read.getVertices()[1].value, -4.0);
}

TEST(LoadBaseFiling, ALoadCaseThatComesTwiceIsThereOnce) {
    TestLoad read;
    ASSERT_TRUE(load(read, joined({withVertices(8, 0), "03 00 00 00 09 00 00 00 04 00 00 00 09 00 00 00",
                                   kUnit, kNo, kLoadEnd})));
    EXPECT_EQ(read.getLoadCases(), (std::set<unsigned int>{4, 9}));
}

TEST(LoadBaseFiling, ANewerVersionIsReportedAndLeavesTheLoadAlone) {
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    TestLoad read;
    fillOtherwise(read);
    const std::string before = saved(read);
    std::uint64_t taken = 0;
    const StoredBody stored(joined({loadVersion(9), loadBody(8).substr(12)}));
    EXPECT_FALSE(stored.read([&read](auto& archive) { return read.onLoad(archive, 6); }, &taken));
    EXPECT_EQ(taken, 4u);
    EXPECT_EQ(saved(read), before);
    ASSERT_EQ(recorder.conditions(), Texts{"version <= kVersion"});
    EXPECT_EQ(recorder.at(0).values, (Values{{"version", "9"}, {"kVersion", "8"}}));
    ASSERT_EQ(warned.warnings.size(), 1u);
}

TEST(LoadBaseFiling, AWrongEndIsReportedAndRefusedWithAllOfItTaken) {
    ReportRecorder recorder;
    TestLoad read;
    std::string body = loadBody(8);
    body.replace(body.size() - 2, 2, "fc");
    EXPECT_FALSE(load(read, body));
    EXPECT_EQ(saved(read), loadBody(8));
    ASSERT_EQ(recorder.conditions(), Texts{"magic == kMagic"});
    EXPECT_EQ(recorder.at(0).values, (Values{{"magic", "4236143181"}, {"kMagic", "4252920397"}}));
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
    EXPECT_EQ(recorder.at(0).message, "filing error");
}

TEST(LoadBaseFiling, WhatWasReadBeforeTheStreamEndedStays) {
    const ReportRecorder recorder;
    TestLoad read;
    fillOtherwise(read);
    const std::string body =
        joined({loadVersion(8), kLoadType, kLoadCategory, kYes, kTwo, kFirstVertex, kTextA, "01 00 00"});
    EXPECT_THROW(load(read, body), orv::Exception);
    EXPECT_EQ(read.getType(), 12);
    EXPECT_EQ(read.numVertices(), 1u);
    EXPECT_TRUE(read.getLoadCases().empty());
    EXPECT_EQ(read.getUnitText(), L"old");
}

TEST(LoadBaseFiling, FilingMakesNoCheckOfTheHost) {
    TestLoad load;
    ASSERT_TRUE(::load(load, loadBody(8)));
    load.readChecks = load.writeChecks = 0;
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(load.onSave(archive));
    EXPECT_EQ(load.readChecks, 0);
    EXPECT_EQ(load.writeChecks, 0);
}

TEST(LoadBaseFiling, EveryPrefixOfEveryVersionEndsInAFilerError) {
    for (unsigned int version = 1; version <= 8; ++version)
        expectEveryPrefixToFail<TestLoad>(StoredBody(loadBody(version)));
}

TEST(LoadBaseFiling, EveryTurnedBitOfEveryVersionEndsCleanly) {
    // At least the end, and most of the version, are told.
    for (unsigned int version = 1; version <= 8; ++version)
        EXPECT_GE(refusedOfDamaged<TestLoad>(StoredBody(loadBody(version))), 60) << version;
}

TEST(LoadBaseFiling, CountsBeyondTheDataTakeNoMemory) {
    const ReportRecorder recorder;
    constexpr char kMost[] = "ff ff ff ff";
    for (const std::string& body :
         {joined({loadVersion(8), kLoadType, kLoadCategory, kYes, kMost, kFirstVertex}),
          joined({withVertices(8, 0), kMost, "01 00 00 00"}),
          joined({withVertices(5, 1), kNoCases, kMost, kTextA}),
          joined({withVertices(8, 0), kNoCases, kMost, "61 00 00 00"})}) {
        TestLoad read;
        takeLargestAllocation();
        EXPECT_THROW(load(read, body), orv::Exception);
        EXPECT_LT(takeLargestAllocation(), 100000u);
    }
}
