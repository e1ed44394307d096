#include "dbx/elem/load_data.h"

#include "dbmain.h"
#include "dbx/keyvalue_serialization.h"
#include "support/beep_recorder.h"
#include "support/log_recorder.h"
#include "support/registry_tree.h"
#include "support/report_recorder.h"

#include <boost/optional/optional_io.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace orv::elem;
using namespace testing_support;
using orv::KeyValueTreeReaderWriter;

namespace {

AcDbObjectId anId() { return AcDbObjectId(reinterpret_cast<AcDbStub*>(std::uintptr_t(8))); }

// Everything that a record can have.
LoadData fullRecord() {
    LoadData data;
    data.m_state = 9;
    data.m_name = L"Wind \u00DC";
    data.m_loadCases = {12, 3, 4000000000u};
    data.m_kind = kLoadKindDashed;
    data.m_type = -5;
    data.m_distribution = kAreaLoad;
    data.m_distributionCurve = static_cast<LineLoadDistributionCurve>(7);
    data.m_value1 = 0.1;
    data.m_value2 = -1e300;
    data.m_value3 = 3.0;
    data.m_geometry = EditTwoVerticesData{1, 0.25, 2, 0.75, anId(), 5.0};
    return data;
}

class LoadDataTree : public RegistryTreeTest {
protected:
    LoadData loaded(LoadData into = LoadData()) {
        LoadData::load(rw, into);
        return into;
    }
    // The keys that saving writes, in their order.
    Texts keysOf(const LoadData& data) {
        LogRecorder log("KeyValueTreeReaderWriter");
        LoadData::save(rw, data);
        Texts keys = log.messages();
        for (std::string& key : keys)
            key = key.substr(std::string("3 Software\\TaldorkTest\\").size());
        return keys;
    }
    std::vector<std::wstring> textsOf(const Texts& keys) const {
        std::vector<std::wstring> texts;
        for (const std::string& key : keys)
            texts.push_back(stored(L"", std::wstring(key.begin(), key.end())));
        return texts;
    }

    KeyValueTreeReaderWriter rw{kBase};
};

} // namespace

TEST(LoadData, BeginsWithItsDefaults) {
    const LoadData data;
    EXPECT_EQ(data.m_state, 1);
    EXPECT_EQ(data.m_name, L"");
    EXPECT_TRUE(data.m_loadCases.empty());
    EXPECT_EQ(static_cast<int>(data.m_kind), 1);
    EXPECT_EQ(data.m_type, 10);
    EXPECT_FALSE(data.m_distribution);
    EXPECT_FALSE(data.m_distributionCurve);
    EXPECT_EQ(data.m_value1, 0.0);
    EXPECT_FALSE(data.m_value2);
    EXPECT_FALSE(data.m_value3);
    EXPECT_FALSE(data.m_geometry);
    const EditTwoVerticesData geometry;
    EXPECT_EQ(geometry.m_mode1, 0);
    EXPECT_EQ(geometry.m_p1, 0.0);
    EXPECT_EQ(geometry.m_mode2, 0);
    EXPECT_EQ(geometry.m_p2, 0.0);
    EXPECT_TRUE(geometry.m_element.isNull());
    EXPECT_EQ(geometry.m_length, 0.0);
}

TEST(LoadData, ACopyHasTheStateToo) {
    const LoadData first = fullRecord();
    const LoadData copy = first;
    EXPECT_EQ(copy.m_state, 9);
    EXPECT_EQ(copy, first);
    LoadData assigned;
    assigned = first;
    EXPECT_EQ(assigned.m_state, 9);
    EXPECT_EQ(assigned, first);
    EXPECT_EQ(assigned.m_geometry->m_element, anId());
}

TEST_F(LoadDataTree, AFullRecordIsSavedKeyByKey) {
    const Texts keys = keysOf(fullRecord());
    EXPECT_EQ(keys, (Texts{"name", "loadCases/count", "loadCases/0", "loadCases/1", "loadCases/2", "kind",
                           "type", "has_distribution", "distribution", "has_distributionCurve",
                           "distributionCurve", "value1", "has_value2", "value2", "has_value3", "value3",
                           "has_geometryParameters", "geometryParameters/p1", "geometryParameters/p2"}));
    EXPECT_EQ(textsOf(keys),
              (std::vector<std::wstring>{L"Wind \u00DC", L"3", L"3", L"12", L"4000000000", L"3", L"-5", L"1",
                                         L"2", L"1", L"7", L"0.10000000000000001", L"1",
                                         L"-1.0000000000000001e+300", L"1", L"3", L"1", L"0.25", L"0.75"}));
    EXPECT_EQ(storedValues(L"").size(), keys.size()) << "slashes are part of the names";
}

TEST_F(LoadDataTree, AnEmptyRecordSavesWhatIsAlwaysThere) {
    const Texts keys = keysOf(LoadData());
    EXPECT_EQ(keys,
              (Texts{"name", "loadCases/count", "kind", "type", "has_distribution", "has_distributionCurve",
                     "value1", "has_value2", "has_value3", "has_geometryParameters"}));
    EXPECT_EQ(textsOf(keys),
              (std::vector<std::wstring>{L"", L"0", L"1", L"10", L"0", L"0", L"0", L"0", L"0", L"0"}));
}

TEST_F(LoadDataTree, ARecordComesBackButForModesElementLengthAndState) {
    LoadData::save(rw, fullRecord());
    const LoadData back = loaded();
    EXPECT_EQ(back.m_state, 1);
    EXPECT_EQ(back.m_name, L"Wind \u00DC");
    EXPECT_EQ(back.m_loadCases, (std::set<unsigned int>{3, 12, 4000000000u}));
    EXPECT_EQ(back.m_kind, kLoadKindDashed);
    EXPECT_EQ(back.m_type, -5);
    EXPECT_EQ(back.m_distribution, kAreaLoad);
    ASSERT_TRUE(back.m_distributionCurve);
    EXPECT_EQ(static_cast<int>(*back.m_distributionCurve), 7);
    EXPECT_EQ(back.m_value1, 0.1);
    EXPECT_EQ(back.m_value2, -1e300);
    EXPECT_EQ(back.m_value3, 3.0);
    ASSERT_TRUE(back.m_geometry);
    EXPECT_EQ(back.m_geometry->m_p1, 0.25);
    EXPECT_EQ(back.m_geometry->m_p2, 0.75);
    EXPECT_EQ(back.m_geometry->m_mode1, 0);
    EXPECT_EQ(back.m_geometry->m_mode2, 0);
    EXPECT_TRUE(back.m_geometry->m_element.isNull());
    EXPECT_EQ(back.m_geometry->m_length, 0.0);
}

TEST_F(LoadDataTree, AnEmptyTreeLeavesAllButTheNameAndTakesTheGeometryNowhere) {
    BeepRecorder beeps;
    LoadData expected = fullRecord();
    const LoadData back = loaded(fullRecord());
    expected.m_name.clear();
    EXPECT_EQ(back, expected);
    EXPECT_EQ(back.m_state, 9);
    EXPECT_TRUE(beeps.lines().empty());
}

TEST_F(LoadDataTree, AFlagWithoutItsValueGivesTheValuesDefault) {
    for (const char* key : {"distribution", "distributionCurve", "value2", "value3", "geometryParameters"})
        rw.keyvalue(std::string("has_") + key, "1");
    const LoadData back = loaded(fullRecord());
    EXPECT_EQ(back.m_distribution, kPointLoad);
    ASSERT_TRUE(back.m_distributionCurve);
    EXPECT_EQ(static_cast<int>(*back.m_distributionCurve), 1);
    EXPECT_EQ(back.m_value2, 0.0);
    EXPECT_EQ(back.m_value3, 0.0);
    ASSERT_TRUE(back.m_geometry);
    EXPECT_EQ(*back.m_geometry, (EditTwoVerticesData{0, 0.0, 0, 1.0, AcDbObjectId(), 0.0}));
}

TEST_F(LoadDataTree, AValueWhoseFlagSaysNoStaysEmpty) {
    rw.keyvalue("has_value2", "0").keyvalue("value2", "5").keyvalue("value3", "5");
    const LoadData back = loaded();
    EXPECT_FALSE(back.m_value2);
    EXPECT_FALSE(back.m_value3);
}

TEST_F(LoadDataTree, ATreeThatIsLoadedTwiceGivesTheCasesOnce) {
    LoadData::save(rw, fullRecord());
    const LoadData once = loaded();
    EXPECT_EQ(loaded(once).m_loadCases, once.m_loadCases);
}

TEST_F(LoadDataTree, CasesAreAddedToThoseOfTheRecord) {
    rw.keyvalue("loadCases/count", "1").keyvalue("loadCases/0", "5").keyvalue("loadCases/1", "6");
    LoadData record;
    record.m_loadCases = {7};
    EXPECT_EQ(loaded(record).m_loadCases, (std::set<unsigned int>{5, 7}));
}

TEST_F(LoadDataTree, ACaseThatTheTreeLacksIs0) {
    rw.keyvalue("loadCases/count", "3").keyvalue("LOADCASES/2", "6");
    EXPECT_EQ(loaded().m_loadCases, (std::set<unsigned int>{0, 6}));
}

TEST_F(LoadDataTree, ACountBeyondAllBoundsIsNotCountedUpTo) {
    rw.keyvalue("loadCases/count", "18446744073709551615").keyvalue("loadCases/5000000000", "6");
    rw.keyvalue("loadCases/07", "8").keyvalue("loadCases/x", "9").keyvalue("loadCases/-1", "10");
    EXPECT_EQ(loaded().m_loadCases, (std::set<unsigned int>{0, 6}));
}

TEST_F(LoadDataTree, WhatCannotBeConvertedIsToldAndCountsAsMissing) {
    for (const char* key : {"loadCases/0", "kind", "type", "has_distribution", "value1", "value2"})
        rw.keyvalue(key, "x");
    rw.keyvalue("loadCases/count", "1").keyvalue("has_value2", "1");
    BeepRecorder beeps;
    LoadData record = fullRecord();
    record.m_loadCases.clear();
    const LoadData back = loaded(record);
    EXPECT_EQ(back.m_loadCases, (std::set<unsigned int>{0}));
    EXPECT_EQ(back.m_kind, kLoadKindDashed);
    EXPECT_EQ(back.m_type, -5);
    EXPECT_EQ(back.m_distribution, kAreaLoad);
    EXPECT_EQ(back.m_value1, 0.1);
    EXPECT_EQ(back.m_value2, 0.0);
    EXPECT_EQ(beeps.lines().size(), 6u);
}

TEST_F(LoadDataTree, ACharacterOutsideOfTheLocaleIsAQuestionMark) {
    LoadData data;
    data.m_name = L"\u03A9 1";
    LoadData::save(rw, data);
    EXPECT_EQ(loaded().m_name, L"? 1");
}

TEST(LoadDataEquality, StateIsNoDifference) {
    LoadData left, right;
    left.m_state = 5;
    EXPECT_EQ(left, right);
}

TEST(LoadDataEquality, EachOtherFieldIs) {
    const LoadData full = fullRecord();
    const auto differs = [&](auto change) {
        LoadData other = full;
        change(other);
        return other != full && full != other;
    };
    EXPECT_TRUE(differs([](LoadData& data) { data.m_name = L"wind \u00DC"; })) << "case counts";
    EXPECT_TRUE(differs([](LoadData& data) { data.m_name += L" "; }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_loadCases.erase(3); }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_loadCases = {12, 4, 4000000000u}; }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_kind = kLoadKindDefault; }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_type = 5; }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_distribution = kLineLoad; }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_distribution.reset(); }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_distributionCurve.reset(); }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_value1 = 0.2; }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_value2 = 1e300; }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_value3.reset(); }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_geometry.reset(); }));
    EXPECT_TRUE(differs([](LoadData& data) { data.m_geometry->m_p2 = 0.5; }));
}

TEST(LoadDataEquality, AMissingDistributionIsNotTheOneOfNumber0) {
    LoadData left, right;
    left.m_distribution = kPointLoad;
    EXPECT_NE(left, right);
}

TEST(LoadDataEquality, AMissingValueIsLikeOneNextTo0) {
    LoadData left, right;
    right.m_value2 = 1e-11;
    EXPECT_EQ(left, right);
    EXPECT_EQ(right, left);
    right.m_value2 = 1.0;
    EXPECT_NE(left, right);
    EXPECT_NE(right, left);
    left.m_value2 = 0.0;
    EXPECT_NE(left, right) << "a share of 0 is nothing";
    left.m_value2.reset();
    right.m_value2 = 2.220446049250313e-10;
    EXPECT_EQ(left, right);
    right.m_value2 = 2.3e-10;
    EXPECT_NE(left, right);
}

TEST(LoadDataEquality, LargeValuesMayDifferByAShare) {
    LoadData left, right;
    left.m_value1 = 1e9;
    right.m_value1 = 1e9 + 0.002;
    left.m_value3 = -1e9;
    right.m_value3 = -1e9 - 0.002;
    EXPECT_EQ(left, right);
    right.m_value1 = 1e9 + 0.003;
    EXPECT_NE(left, right);
    right.m_value1 = left.m_value1;
    right.m_value3 = -1e9 - 0.003;
    EXPECT_NE(left, right);
}

TEST(LoadDataEquality, WhatIsNoNumberEqualsNothing) {
    LoadData left;
    left.m_value1 = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(left, LoadData(left));
}

TEST(EditTwoVerticesDataEquality, PositionsAreEqualStrictlyBelowTheTolerance) {
    EditTwoVerticesData left, right;
    right.m_p1 = 2.220446049250313e-10;
    EXPECT_NE(left, right);
    right.m_p1 = 2.22e-10;
    EXPECT_EQ(left, right);
    right.m_p2 = -2.220446049250313e-10;
    EXPECT_NE(left, right);
    right.m_p2 = -2.22e-10;
    EXPECT_EQ(left, right);
    left.m_p1 = 1e9;
    right.m_p1 = 1e9 + 0.002;
    EXPECT_NE(left, right) << "no share of a position counts";
}

TEST(EditTwoVerticesDataEquality, ModesElementAndLengthCount) {
    const EditTwoVerticesData plain;
    EditTwoVerticesData other;
    other.m_mode1 = 1;
    EXPECT_NE(plain, other);
    other = plain;
    other.m_mode2 = 1;
    EXPECT_NE(plain, other);
    other = plain;
    other.m_element = anId();
    EXPECT_NE(plain, other);
    other = plain;
    other.m_length = 2.220446049250313e-10;
    EXPECT_EQ(plain, other);
    other.m_length = 1.0;
    EXPECT_NE(plain, other);
    EditTwoVerticesData far;
    other.m_length = 1e9;
    far.m_length = 1e9 + 0.002;
    EXPECT_EQ(other, far);
}
