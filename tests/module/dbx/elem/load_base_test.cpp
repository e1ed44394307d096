#include "dbx/elem/load_base.h"

#include "base/key_value_storage.h"
#include "dbx/binary_out_archive.h"
#include "dbx/elem/free_load_base.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "module/dbx/elem/test_load.h"
#include "support/slots.h"
#include "support/test_element.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using namespace testing_support;
using orv::KeyValueStorage;
using orv::elem::FreeLoadBase;
using orv::elem::LoadBase;

namespace {

// A free load that puts one value under a name of its own, and writes down what had been put before.
struct FreeLoad : FreeLoadBase {
    const std::string& pluginId() const override {
        static const std::string s_id = "test.free_load";
        return s_id;
    }
    void onEdited() override {}
    void setupInterpolationData(orv::System&, orv::elem::detail::LoadVisualizationData&) override {}
    using FreeLoadBase::onSave;
    bool onSave(KeyValueStorage& storage) const override {
        ++calls;
        kindBefore = storage.getValue<int>("load/area/free/kind", -1);
        storage.set("test/free", 5);
        return false;
    }

    mutable int calls = 0;
    mutable int kindBefore = 0;
};

LoadBase::Vertex vertexOf(double value) {
    LoadBase::Vertex vertex;
    vertex.value = value;
    return vertex;
}

std::vector<double> valuesOf(const TestLoad& load) {
    std::vector<double> values;
    for (const LoadBase::Vertex& vertex : load.getVertices())
        values.push_back(vertex.value);
    return values;
}

std::string prefixOf(int distribution, bool isFree) {
    std::string prefix = "old";
    LoadBase::createSaveString(static_cast<orv::elem::LoadDistribution>(distribution), isFree, prefix);
    return prefix;
}

// The values of a load by their names, read from what it saves. Fails where there is none of the type.
template <class T>
T valueAt(const KeyValueStorage& storage, const std::string& key) {
    const boost::optional<T> value = storage.getValue<T>(key);
    EXPECT_TRUE(value) << key;
    return value ? *value : T();
}

} // namespace

TEST(LoadVertex, BeginsWithItsDefaults) {
    const LoadBase::Vertex vertex;
    EXPECT_EQ(vertex.posSource, LoadBase::PS_POINT);
    EXPECT_EQ(vertex.posSource, 1);
    EXPECT_EQ(vertex.segment, 0u);
    EXPECT_EQ(vertex.distanceMode, 0);
    EXPECT_EQ(vertex.position, 0.0);
    EXPECT_EQ(vertex.node, 0u);
    EXPECT_EQ(vertex.point, AcGePoint3d(0, 0, 0));
    EXPECT_EQ(vertex.value, 10.0);
    EXPECT_EQ(vertex.text, L"");
}

TEST(LoadBase, ANewLoadBelongsToLoadCase1AndActsAlongGravity) {
    const TestLoad load;
    EXPECT_TRUE(load.getElement().isNull());
    EXPECT_FALSE(load.isUDL());
    EXPECT_EQ(load.getType(), 10);
    EXPECT_EQ(load.getClass(), 1);
    EXPECT_EQ(load.getCategory(), 0);
    EXPECT_EQ(load.getDistribution(), 0);
    EXPECT_EQ(load.getLoadCases(), std::set<unsigned int>{1});
    EXPECT_EQ(load.numVertices(), 0u);
    EXPECT_EQ(load.getUnitText(), L"");
    EXPECT_FALSE(load.isPolygonal());
}

TEST(LoadBase, WhatIsSetIsHandedBack) {
    AcDbDatabase db(true);
    TestLoad load;
    load.setElement(db.namedObjectsDictionaryId());
    load.setUDL(true);
    load.setType(-5);
    load.setClass(orv::elem::kLoadKindDashed);
    load.setCategory(static_cast<orv::elem::LoadTypeCategory>(8));
    load.setDistribution(orv::elem::kVolumeLoad);
    load.setUnitText(L"kN/m\u00b2");
    load.setPolygonal(true);
    EXPECT_EQ(load.getElement(), db.namedObjectsDictionaryId());
    EXPECT_TRUE(load.isUDL());
    EXPECT_EQ(load.getType(), -5);
    EXPECT_EQ(load.getClass(), 3);
    EXPECT_EQ(load.getCategory(), 8);
    EXPECT_EQ(load.getDistribution(), 3);
    EXPECT_EQ(load.getUnitText(), L"kN/m\u00b2");
    EXPECT_TRUE(load.isPolygonal());
}

TEST(LoadBase, GettersAskForReadAndSettersForWrite) {
    TestLoad load;
    load.appendVertex(vertexOf(1));
    const TestLoad& seen = load;
    const std::vector<std::function<void()>> readers = {
        [&] { seen.getElement(); },   [&] { seen.isUDL(); },       [&] { seen.getType(); },
        [&] { seen.getClass(); },     [&] { seen.getCategory(); }, [&] { seen.getDistribution(); },
        [&] { seen.getLoadCases(); }, [&] { seen.getVertices(); }, [&] { load.getVertices(); },
        [&] { seen.numVertices(); },  [&] { seen.getTextAt(0); },  [&] { seen.getTextAtStart(); },
        [&] { seen.getTextAtEnd(); }, [&] { seen.getUnitText(); }, [&] { seen.isPolygonal(); }};
    for (std::size_t i = 0; i < readers.size(); ++i) {
        load.readChecks = load.writeChecks = 0;
        readers[i]();
        EXPECT_EQ(std::make_pair(load.readChecks, load.writeChecks), std::make_pair(1, 0)) << i;
    }
    const std::vector<std::function<void()>> writers = {
        [&] { load.setElement(AcDbObjectId()); },
        [&] { load.setUDL(true); },
        [&] { load.setType(1); },
        [&] { load.setClass(orv::elem::kLoadKindDefault); },
        [&] { load.setCategory(orv::elem::kLoadTypeCategoryNone); },
        [&] { load.setDistribution(orv::elem::kLineLoad); },
        [&] {
            load.setLoadCases({1, 2});
        },
        [&] { load.setLoadCase(3); },
        [&] {
            load.setVertices({vertexOf(1), vertexOf(2)});
        },
        [&] { load.appendVertex(vertexOf(3)); },
        [&] { load.setTextAt(0, L"a"); },
        [&] { load.setTextAtStart(L"b"); },
        [&] { load.setTextAtEnd(L"c"); },
        [&] { load.setUnitText(L"kN"); },
        [&] { load.setPolygonal(true); }};
    for (std::size_t i = 0; i < writers.size(); ++i) {
        load.readChecks = load.writeChecks = 0;
        writers[i]();
        EXPECT_EQ(std::make_pair(load.readChecks, load.writeChecks), std::make_pair(0, 1)) << i;
    }
}

TEST(LoadBase, LoadCasesAreReplacedAsASet) {
    TestLoad load;
    load.setLoadCases({5, 2, 9});
    EXPECT_EQ(load.getLoadCases(), (std::set<unsigned int>{2, 5, 9}));
    load.setLoadCases(load.getLoadCases());
    EXPECT_EQ(load.getLoadCases(), (std::set<unsigned int>{2, 5, 9}));
    load.setLoadCase(7);
    EXPECT_EQ(load.getLoadCases(), std::set<unsigned int>{7});
    load.setLoadCase(*load.getLoadCases().begin());
    EXPECT_EQ(load.getLoadCases(), std::set<unsigned int>{7});
    load.setLoadCases({});
    EXPECT_TRUE(load.getLoadCases().empty());
}

TEST(LoadBase, AUniformLoadTakesTheFirstValueForAllItsVertices) {
    TestLoad load;
    load.setVertices({vertexOf(1), vertexOf(2), vertexOf(3)});
    EXPECT_EQ(valuesOf(load), (std::vector<double>{1, 2, 3}));
    load.setUDL(true);
    EXPECT_EQ(valuesOf(load), (std::vector<double>{1, 2, 3})) << "the flag alone changes nothing";
    load.setVertices({vertexOf(1), vertexOf(2), vertexOf(3)});
    EXPECT_EQ(valuesOf(load), (std::vector<double>{1, 1, 1}));
    load.setVertices({vertexOf(4)});
    EXPECT_EQ(valuesOf(load), std::vector<double>{4});
    load.appendVertex(vertexOf(5));
    EXPECT_EQ(valuesOf(load), (std::vector<double>{4, 5}));
    load.setVertices(load.getVertices());
    EXPECT_EQ(valuesOf(load), (std::vector<double>{4, 4}));
    load.setVertices({});
    EXPECT_EQ(load.numVertices(), 0u);
}

TEST(LoadBase, VerticesCanBeChangedInPlace) {
    TestLoad load;
    load.setVertices({vertexOf(1), vertexOf(2)});
    load.getVertices()[1].value = 7;
    EXPECT_EQ(valuesOf(load), (std::vector<double>{1, 7}));
}

TEST(LoadBase, ValuesAreNotLookedAt) {
    ReportRecorder recorder;
    TestLoad load;
    load.setVertices({vertexOf(std::numeric_limits<double>::quiet_NaN())});
    EXPECT_NE(valuesOf(load)[0], valuesOf(load)[0]);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(LoadBaseText, BelongsToTheVertexOfTheIndex) {
    ReportRecorder recorder;
    TestLoad load;
    load.setVertices({vertexOf(1), vertexOf(2), vertexOf(3)});
    load.setTextAt(1, L"middle");
    load.setTextAtStart(L"start");
    load.setTextAtEnd(L"end");
    EXPECT_EQ(load.getVertices()[0].text, L"start");
    EXPECT_EQ(load.getVertices()[1].text, L"middle");
    EXPECT_EQ(load.getVertices()[2].text, L"end");
    EXPECT_EQ(load.getTextAtStart(), L"start");
    EXPECT_EQ(load.getTextAt(1), L"middle");
    EXPECT_EQ(load.getTextAtEnd(), L"end");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(LoadBaseText, AnIndexOfNoVertexIsReportedAndStoresNothing) {
    TestLoad load;
    load.setVertices({vertexOf(1), vertexOf(2)});
    const int none[] = {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    for (const int index : none) {
        ReportRecorder recorder;
        load.setTextAt(index, L"lost");
        EXPECT_EQ(load.getTextAt(index), L"");
        EXPECT_EQ(recorder.conditions(), (Texts{"indexInBounds", "indexInBounds"}));
    }
    EXPECT_EQ(load.getTextAt(0), L"");
    EXPECT_EQ(load.getTextAt(1), L"");
}

TEST(LoadBaseText, ALoadWithoutVerticesHasNeitherStartNorEnd) {
    TestLoad load;
    ReportRecorder recorder;
    load.setTextAtEnd(L"end");
    EXPECT_EQ(recorder.conditions(), Texts{"indexInBounds"});
    EXPECT_EQ(load.numVertices(), 0u);
    load.setTextAtStart(L"start");
    EXPECT_EQ(load.getTextAtEnd(), L"");
    EXPECT_EQ(load.getTextAtStart(), L"");
    EXPECT_EQ(recorder.conditions(), Texts(4, "indexInBounds"));
}

TEST(LoadBaseText, TheTextOfNoVertexIsOneForAllAndLives) {
    const ReportRecorder recorder;
    const std::wstring* none = nullptr;
    {
        const TestLoad load;
        none = &load.getTextAt(3);
    }
    const TestLoad other;
    EXPECT_EQ(none, &other.getTextAtEnd());
    EXPECT_TRUE(none->empty());
}

TEST(LoadSaveString, TellsWhatTheLoadActsAlongAndWhetherItIsFree) {
    ReportRecorder recorder;
    EXPECT_EQ(prefixOf(0, true), "load/point/free/");
    EXPECT_EQ(prefixOf(1, true), "load/line/free/");
    EXPECT_EQ(prefixOf(2, false), "load/area/element_based/");
    EXPECT_EQ(prefixOf(3, false), "load/volume/element_based/");
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(LoadSaveString, AnUnknownDistributionIsReported) {
    ReportRecorder recorder;
    EXPECT_EQ(prefixOf(7, false), "load/unknown/element_based/");
    EXPECT_EQ(prefixOf(-1, true), "load/unknown/free/");
    EXPECT_EQ(recorder.conditions(), (Texts{"0", "0"}));
}

#ifndef _MSC_VER
TEST(LoadBase, FilingStandsInTheSlotsOfTheElement) {
    TestLoad load;
    ASSERT_TRUE(StoredBody(loadBody(8)).read([&load](auto& archive) { return load.onLoad(archive, 6); }));
    LoadBase* const base = &load;
    orv::serialization::BinaryOutArchive out;
    EXPECT_TRUE(slotOf<bool (*)(const void*, orv::serialization::IOutArchive&)>(base, 14)(base, out));
    EXPECT_EQ(hexOf(out), loadBody(8));
    KeyValueStorage storage;
    EXPECT_TRUE(slotOf<bool (*)(const void*, KeyValueStorage&)>(base, 15)(base, storage));
    EXPECT_EQ(valueAt<int>(storage, "load/line/element_based/type"), 12);
    const StoredBody old(loadBody(1));
    using Load = bool (*)(void*, orv::serialization::IInArchive&, unsigned int);
    EXPECT_TRUE(old.read([&](auto& archive) { return slotOf<Load>(base, 16)(base, archive, 6); }));
    EXPECT_EQ(load.getTextAt(0), L"");
    EXPECT_TRUE(slotOf<bool (*)(void*, const KeyValueStorage&)>(base, 17)(base, storage));
}
#endif

TEST(LoadBaseValues, EachHasItsNameAndType) {
    TestLoad load;
    load.setProperties().add(30001, std::wstring(L"Snow \u00e4"));
    load.setDistribution(orv::elem::kLineLoad);
    load.setClass(orv::elem::kLoadKindDashed);
    load.setType(17);
    load.setVertices({vertexOf(1.5), vertexOf(-2)});
    load.setUDL(true);
    load.setLoadCases({9, 4, 12});
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    const std::string prefix = "load/line/element_based/";
    EXPECT_EQ(valueAt<std::wstring>(storage, prefix + "name"), L"Snow \u00e4");
    EXPECT_EQ(valueAt<int>(storage, prefix + "loadcase"), 4);
    EXPECT_EQ(valueAt<int>(storage, prefix + "kind"), 3);
    EXPECT_EQ(valueAt<int>(storage, prefix + "type"), 17);
    EXPECT_EQ(valueAt<bool>(storage, prefix + "uniform_distribution_checked"), true);
    EXPECT_EQ(valueAt<double>(storage, prefix + "values/0"), 1.5);
    EXPECT_EQ(valueAt<double>(storage, prefix + "values/1"), -2.0);
    EXPECT_TRUE(storage.get(prefix + "values/2").empty());
}

TEST(LoadBaseValues, WithoutNameLoadCaseAndVerticesTheirKeysAreMissing) {
    TestLoad load;
    load.setLoadCases({});
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    const std::string prefix = "load/point/element_based/";
    for (const char* const key : {"name", "loadcase", "values/0"})
        EXPECT_TRUE(storage.get(prefix + key).empty()) << key;
    EXPECT_EQ(valueAt<int>(storage, prefix + "kind"), 1);
    EXPECT_EQ(valueAt<int>(storage, prefix + "type"), 10);
    EXPECT_EQ(valueAt<bool>(storage, prefix + "uniform_distribution_checked"), false);
}

TEST(LoadBaseValues, TheTenthVertexHasTwoDigits) {
    TestLoad load;
    for (int i = 0; i < 12; ++i)
        load.appendVertex(vertexOf(i));
    KeyValueStorage storage;
    load.onSave(storage);
    EXPECT_EQ(valueAt<double>(storage, "load/point/element_based/values/11"), 11.0);
}

TEST(LoadBaseValues, ALoadCaseAboveTheIntegersGoesRound) {
    TestLoad load;
    load.setLoadCase(0xffffffffu);
    KeyValueStorage storage;
    load.onSave(storage);
    EXPECT_EQ(valueAt<int>(storage, "load/point/element_based/loadcase"), -1);
}

TEST(LoadBaseValues, ANameOfAnotherTypeIsReportedAndLeftOut) {
    TestLoad load;
    load.setProperties().add(30001, 5);
    ReportRecorder recorder;
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_TRUE(storage.get("load/point/element_based/name").empty());
    EXPECT_EQ(recorder.messages(), Texts{"getValueNotThrow() failed"});
}

TEST(LoadBaseValues, AnUnknownDistributionIsReportedAndSavedAllTheSame) {
    TestLoad load;
    load.setDistribution(static_cast<orv::elem::LoadDistribution>(7));
    ReportRecorder recorder;
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_EQ(valueAt<int>(storage, "load/unknown/element_based/type"), 10);
    EXPECT_EQ(recorder.conditions(), Texts{"0"});
}

TEST(LoadBaseValues, AFreeLoadAmongThePluginsMakesItFreeAndSavesBehindIt) {
    TestLoad load;
    load.setDistribution(orv::elem::kAreaLoad);
    load.addPlugin(boost::make_shared<RecordingPlugin>());
    const auto first = boost::make_shared<FreeLoad>();
    const auto second = boost::make_shared<FreeLoad>();
    load.addPlugin(first);
    load.addPlugin(second);
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage)) << "whatever the plugin answers";
    EXPECT_EQ(valueAt<int>(storage, "load/area/free/type"), 10);
    EXPECT_TRUE(storage.get("load/area/element_based/type").empty());
    EXPECT_EQ(valueAt<int>(storage, "test/free"), 5);
    EXPECT_EQ(first->calls, 1);
    EXPECT_EQ(first->kindBefore, 1);
    EXPECT_EQ(second->calls, 0);
    EXPECT_TRUE(storage.get("iplugin/version").empty());
}

TEST(LoadBaseValues, AnyOtherPluginLeavesItElementBased) {
    RecordingPlugin::events.clear();
    TestLoad load;
    load.addPlugin(boost::make_shared<RecordingPlugin>());
    RecordingPlugin::events.clear();
    KeyValueStorage storage;
    EXPECT_TRUE(load.onSave(storage));
    EXPECT_EQ(valueAt<int>(storage, "load/point/element_based/type"), 10);
    EXPECT_TRUE(RecordingPlugin::events.empty());
}

TEST(LoadBaseValues, TheElementSavesTheLoadsValuesWithThoseOfThePlugins) {
    TestLoad load;
    load.setDistribution(orv::elem::kAreaLoad);
    const auto plugin = boost::make_shared<FreeLoad>();
    load.addPlugin(plugin);
    KeyValueStorage storage;
    EXPECT_TRUE(load.save(storage));
    EXPECT_EQ(valueAt<int>(storage, "load/area/free/type"), 10);
    EXPECT_EQ(plugin->calls, 2);
}

TEST(LoadBaseValues, NothingIsReadBack) {
    TestLoad load;
    load.setType(17);
    KeyValueStorage storage;
    ASSERT_TRUE(load.onSave(storage));
    TestLoad other;
    EXPECT_TRUE(other.onLoad(storage));
    EXPECT_TRUE(other.load(storage));
    EXPECT_EQ(other.getType(), 10);
}
