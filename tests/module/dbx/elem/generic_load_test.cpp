// The data of a load, and what is told and asked for when they change.

#include "dbx/elem/generic_load.h"

#include "base/exceptions.h"
#include "base/key_value_storage.h"
#include "dbidmap.h"
#include "dbx/elem/load_visualization_data.h"
#include "dbx/elem/loadbase.h"
#include "module/dbx/elem/load_plugins.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "orvshape/element_contexts.h"
#include "support/slots.h"
#include "support/system_store.h"

#include <limits>
#include <map>
#include <type_traits>

using namespace testing_support;
using orv::ElementCloneContext;
using orv::elem::GenericLoad;
using orv::elem::LoadVertex;

namespace {

const Texts kNone;

struct LoadOn {
    explicit LoadOn(TestElement& element) : load(*new PlainLoad) {
        element.addPlugin(&load);
        element.readChecks = element.writeChecks = 0;
    }
    PlainLoad& load;
};

// Of a drawing, and of nothing that is an element.
struct SomeIds {
    SomeIds() : db(true), a(db.blockTableId()), b(db.layerTableId()) {}
    AcDbDatabase db;
    AcDbObjectId a;
    AcDbObjectId b;
};

} // namespace

TEST(GenericLoad, BeginsFreeInSpaceAsAPointLoadAlongGravityOfNoLoadCase) {
    PlainLoad load;
    EXPECT_TRUE(load.getElement().isNull());
    EXPECT_EQ(load.getType(), 10);
    EXPECT_EQ(load.getClass(), 1);
    EXPECT_EQ(load.getCategory(), 0);
    EXPECT_EQ(load.getDistribution(), orv::elem::kPointLoad);
    EXPECT_TRUE(load.getLoadCases().empty());
    EXPECT_TRUE(load.getVertices().empty());
    EXPECT_EQ(load.numVertices(), 0u);
    EXPECT_FALSE(load.refreshGraphics());
    EXPECT_FALSE(load.getOwnCurve());
}

TEST(GenericLoad, ItsVertexHasTheDefaultsOfEveryLoad) {
    const GenericLoad::Vertex vertex;
    EXPECT_EQ(vertex.posSource, 1);
    EXPECT_EQ(vertex.segment, 0u);
    EXPECT_EQ(vertex.distanceMode, 0);
    EXPECT_EQ(vertex.position, 0.0);
    EXPECT_EQ(vertex.node, 0u);
    EXPECT_EQ(vertex.point, AcGePoint3d(0, 0, 0));
    EXPECT_EQ(vertex.value, 10.0);
    EXPECT_TRUE(vertex.text.empty());
}

TEST(GenericLoad, IsAnAbstractPluginThatMarksLoads) {
    EXPECT_TRUE((std::is_base_of_v<orv::elem::ElementBase::IPlugin, orv::elem::ILoad>));
    EXPECT_TRUE((std::is_base_of_v<orv::elem::ILoad, GenericLoad>));
    EXPECT_TRUE(std::is_abstract_v<orv::elem::ILoad>);
    EXPECT_TRUE(std::is_abstract_v<GenericLoad>);
    EXPECT_EQ(GenericLoad::kVersion, 3u);
    EXPECT_EQ(GenericLoad::kMagic, 0x57c5d8c1u);
}

TEST(GenericLoad, AMarkOfALoadDoesNothingWhenItsElementGoes) {
    struct Marker : orv::elem::ILoad {
        using ILoad::onErase;
        const std::string& pluginId() const override {
            static const std::string s_id = "test.marker";
            return s_id;
        }
    };
    TestElement element;
    auto* const marker = new Marker;
    element.addPlugin(marker);
    element.readChecks = element.writeChecks = 0;
    marker->onErase(true);
    marker->onErase(false);
    EXPECT_EQ(element.readChecks + element.writeChecks, 0);
}

// What each setter checks, tells and asks for.
TEST(GenericLoad, EachSetterChecksAsksForNewArrowsAndTellsItsOwnChange) {
    const SomeIds ids;
    struct Row {
        const char* name;
        std::function<void(PlainLoad&)> call;
        int writeChecks;
        bool refresh;
        Texts hooks;
    };
    const Row rows[] = {
        {"setType", [](PlainLoad& load) { load.setType(17); }, 1, true, {"onLoadTypeChanged"}},
        {"setType, the same", [](PlainLoad& load) { load.setType(10); }, 1, true, {"onLoadTypeChanged"}},
        {"setClass", [](PlainLoad& load) { load.setClass(orv::elem::kLoadKindDashed); }, 1, true, {}},
        {"setCategory",
         [](PlainLoad& load) { load.setCategory(static_cast<orv::elem::LoadTypeCategory>(2)); },
         1,
         true,
         {}},
        {"setDistribution", [](PlainLoad& load) { load.setDistribution(orv::elem::kAreaLoad); }, 1, true, {}},
        {"setVertices",
         [](PlainLoad& load) { load.setVertices(verticesOf(2)); },
         1,
         true,
         {"onValuesChanged"}},
        {"setVertices, none", [](PlainLoad& load) { load.setVertices({}); }, 1, true, {}},
        {"setValueAt", [](PlainLoad& load) { load.setValueAt(2, 7.0); }, 1, true, {"onValuesChanged"}},
        {"setValueAt, out of range", [](PlainLoad& load) { load.setValueAt(5, 7.0); }, 1, false, {}},
        {"setTextAt", [](PlainLoad& load) { load.setTextAt(1, L"q"); }, 1, true, {}},
        {"setTextAt, out of range", [](PlainLoad& load) { load.setTextAt(3, L"q"); }, 1, true, {}},
        {"setLoadCase", [](PlainLoad& load) { load.setLoadCase(4); }, 1, true, {}},
        {"setLoadCases",
         [](PlainLoad& load) {
             load.setLoadCases({4, 5});
         },
         1,
         true,
         {}},
        {"setElement", [&ids](PlainLoad& load) { load.setElement(ids.a); }, 3, true, {"onElementChanged"}},
        {"getVerticesForWrite", [](PlainLoad& load) { load.getVerticesForWrite(); }, 1, true, {}},
        {"setOwnCurve", [](PlainLoad& load) { load.setOwnCurve(shortCurve()); }, 1, true, {}},
        {"setOwnCurve, none", [](PlainLoad& load) { load.setOwnCurve({}); }, 1, true, {}},
        {"onMoved", [](PlainLoad& load) { load.onMoved(); }, 1, true, {}},
        {"onPostTransform",
         [](PlainLoad& load) { load.onPostTransform(AcGeMatrix3d::kIdentity); },
         1,
         false,
         {}},
        {"requestRefreshGraphics", [](PlainLoad& load) { load.requestRefreshGraphics(); }, 0, true, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ReportRecorder recorder;
        TestElement element;
        PlainLoad& load = LoadOn(element).load;
        load.getVerticesForWrite() = verticesOf(3);
        drawOnce(load);
        element.readChecks = element.writeChecks = 0;
        row.call(load);
        EXPECT_EQ(element.writeChecks, row.writeChecks);
        EXPECT_EQ(element.readChecks, 0);
        EXPECT_EQ(load.refreshGraphics(), row.refresh);
        EXPECT_EQ(load.hooks, row.hooks);
    }
}

TEST(GenericLoad, EachGetterChecksForReadAndAsksForNothing) {
    const std::pair<const char*, std::function<void(const PlainLoad&)>> rows[] = {
        {"getElement", [](const PlainLoad& load) { load.getElement(); }},
        {"getVertices", [](const PlainLoad& load) { load.getVertices(); }},
        {"numVertices", [](const PlainLoad& load) { load.numVertices(); }},
        {"getType", [](const PlainLoad& load) { load.getType(); }},
        {"getClass", [](const PlainLoad& load) { load.getClass(); }},
        {"getCategory", [](const PlainLoad& load) { load.getCategory(); }},
        {"getDistribution", [](const PlainLoad& load) { load.getDistribution(); }},
        {"getLoadCases", [](const PlainLoad& load) { load.getLoadCases(); }},
        {"getOwnCurve", [](const PlainLoad& load) { load.getOwnCurve(); }},
        {"getValueAt", [](const PlainLoad& load) { load.getValueAt(0); }},
        {"getTextAt", [](const PlainLoad& load) { load.getTextAt(0); }},
        {"getPointAt",
         [](const PlainLoad& load) {
             AcGePoint3d point;
             load.getPointAt(0, point);
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        TestElement element;
        PlainLoad& load = LoadOn(element).load;
        load.setVertices(verticesOf(1));
        drawOnce(load);
        element.readChecks = element.writeChecks = 0;
        row.second(load);
        EXPECT_EQ(element.readChecks, 1);
        EXPECT_EQ(element.writeChecks, 0);
        EXPECT_FALSE(load.refreshGraphics());
    }
    TestElement element;
    PlainLoad& load = LoadOn(element).load;
    EXPECT_FALSE(load.refreshGraphics());
    EXPECT_EQ(element.readChecks + element.writeChecks, 0);
}

TEST(GenericLoad, KeepsWhatItIsGiven) {
    const SomeIds ids;
    PlainLoad load;
    fillGeneric(load, ids.a);
    expectGeneric(load, ids.a);
    load.setLoadCase(9);
    EXPECT_EQ(load.getLoadCases(), std::set<unsigned int>{9});
    load.setType(-4);
    EXPECT_EQ(load.getType(), -4);
    load.getVerticesForWrite().push_back(vertexAt(3));
    EXPECT_EQ(load.numVertices(), 3u);
}

TEST(GenericLoad, TakesItsOwnListsBack) {
    PlainLoad load;
    load.setVertices(verticesOf(3));
    load.setLoadCases({1, 2});
    load.setVertices(load.getVertices());
    load.setLoadCases(load.getLoadCases());
    const auto curve = shortCurve();
    load.setOwnCurve(curve);
    load.setOwnCurve(load.getOwnCurve());
    EXPECT_EQ(load.getOwnCurve(), curve);
    EXPECT_EQ(load.numVertices(), 3u);
    EXPECT_EQ(load.getLoadCases(), (std::set<unsigned int>{1, 2}));
}

TEST(GenericLoad, TellsOfAChangeWhenItIsDone) {
    const SomeIds ids;
    struct Clearing {
        ~Clearing() { LoadHooks::all().call = nullptr; }
    } const clearing;
    Texts seen;
    LoadHooks::all().call = [&](GenericLoad& load, const std::string& hook) {
        if (hook == "onLoadTypeChanged")
            seen.push_back(std::to_string(load.getType()));
        else if (hook == "onElementChanged")
            seen.push_back(load.getElement() == ids.a ? "a" : "other");
        else
            seen.push_back(std::to_string(load.numVertices()) + " " + std::to_string(*load.getValueAt(0)));
    };
    PlainLoad load;
    load.setType(23);
    load.setElement(ids.a);
    load.setVertices(verticesOf(2));
    load.setValueAt(0, 5.0);
    EXPECT_EQ(seen, (Texts{"23", "a", "2 1.000000", "2 5.000000"}));
}

TEST(GenericLoad, ATellingMayChangeTheLoadOrFail) {
    struct Clearing {
        ~Clearing() { LoadHooks::all().call = nullptr; }
    } const clearing;
    PlainLoad load;
    LoadHooks::all().call = [](GenericLoad& told, const std::string& hook) {
        if (hook == "onValuesChanged" && told.numVertices() > 0)
            told.setVertices({});
    };
    load.setVertices(verticesOf(4));
    EXPECT_EQ(load.numVertices(), 0u);
    EXPECT_EQ(load.hooks, Texts{"onValuesChanged"});
    LoadHooks::all().call = [](GenericLoad&, const std::string&) { throw std::runtime_error("no"); };
    EXPECT_THROW(load.setType(11), std::runtime_error);
    EXPECT_EQ(load.getType(), 11);
    EXPECT_TRUE(load.refreshGraphics());
}

TEST(GenericLoad, ATellingMayTakeTheLoadOutOfItsElement) {
    struct Clearing {
        ~Clearing() { LoadHooks::all().call = nullptr; }
    } const clearing;
    const SomeIds ids;
    const std::function<void(PlainLoad&)> changes[] = {
        [](PlainLoad& load) { load.setType(11); },
        [](PlainLoad& load) { load.setVertices(verticesOf(1)); },
        [](PlainLoad& load) { load.setValueAt(0, 1.0); },
        [&ids](PlainLoad& load) { load.setElement(ids.a); },
    };
    for (const auto& change : changes) {
        TestElement element;
        PlainLoad& load = LoadOn(element).load;
        load.getVerticesForWrite() = verticesOf(1);
        LoadHooks::all().call = [&element](GenericLoad& told, const std::string&) {
            element.detachPlugin(&told); // its end
        };
        change(load);
        EXPECT_TRUE(element.getConstPluginIterator().done());
    }
}

TEST(GenericLoad, AValueOfAnIndexOutOfRangeIsReportedAndChangesNothing) {
    for (const int index : {5, 3, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        ReportRecorder recorder;
        PlainLoad load;
        load.setVertices(verticesOf(3));
        load.hooks.clear();
        load.setValueAt(index, 99.0);
        EXPECT_EQ(recorder.conditions(), Texts{"indexInBounds"});
        EXPECT_TRUE(recorder.at(0).values.empty());
        EXPECT_EQ(load.hooks, kNone);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ(load.getVertices()[i].value, i + 1.0);
    }
}

TEST(GenericLoad, ATextOfAnIndexOutOfRangeIsReportedAndEmptyForEver) {
    ReportRecorder recorder;
    const std::wstring* kept = nullptr;
    {
        PlainLoad load;
        load.setVertices(verticesOf(2));
        load.setTextAt(2, L"q");
        load.setTextAt(-1, L"q");
        kept = &load.getTextAt(2);
        EXPECT_EQ(&load.getTextAt(-1), kept);
        load.setTextAt(1, L"p");
        EXPECT_EQ(load.getTextAt(0), L"");
        EXPECT_EQ(load.getTextAt(1), L"p");
    }
    EXPECT_TRUE(kept->empty());
    EXPECT_EQ(recorder.conditions(), Texts(4, "indexInBounds"));
}

TEST(GenericLoad, AValueIsReadWithoutAReportAndAPointWithOne) {
    ReportRecorder recorder;
    PlainLoad load;
    load.setVertices(verticesOf(2));
    EXPECT_EQ(*load.getValueAt(1), 2.0);
    EXPECT_FALSE(load.getValueAt(2));
    EXPECT_FALSE(load.getValueAt(-1));
    EXPECT_EQ(recorder.size(), 0u);
    AcGePoint3d point(9, 9, 9);
    load.getPointAt(2, point);
    load.getPointAt(-1, point);
    EXPECT_EQ(point, AcGePoint3d(9, 9, 9));
    EXPECT_EQ(recorder.conditions(), Texts(2, "indexInBounds"));
    load.getPointAt(1, point);
    EXPECT_EQ(point, AcGePoint3d(1, 0, 0));
}

TEST(GenericLoad, AnotherElementDropsTwoSettingsOfTheLoadsOwn) {
    const SomeIds ids;
    TestElement element;
    PlainLoad& load = LoadOn(element).load;
    load.setElement(ids.a);
    EXPECT_EQ(*element.getProperties().getValueNotThrow<bool>(30004), false);
    EXPECT_EQ(*element.getProperties().getValueNotThrow<bool>(1012), false);
    EXPECT_EQ(element.getProperties().size(), 2u);
    EXPECT_TRUE(load.getProperties().empty());
    element.setProperties().getCasted<bool>(30004) = true;
    element.setProperties().getCasted<bool>(1012) = true;
    load.setElement(AcDbObjectId());
    EXPECT_EQ(*element.getProperties().getValueNotThrow<bool>(30004), false);
    EXPECT_EQ(*element.getProperties().getValueNotThrow<bool>(1012), false);
    EXPECT_EQ(load.hooks, Texts(2, "onElementChanged"));
}

TEST(GenericLoad, ASettingOfAnotherTypeIsNotReplaced) {
    const SomeIds ids;
    TestElement element;
    PlainLoad& load = LoadOn(element).load;
    element.setProperties().add(30004, 5);
    EXPECT_THROW(load.setElement(ids.a), orv::TypeMismatchException);
    EXPECT_EQ(load.getElement(), ids.a);
    EXPECT_TRUE(load.refreshGraphics());
    EXPECT_EQ(load.hooks, kNone);
    EXPECT_EQ(*element.getProperties().getValueNotThrow<int>(30004), 5);
    EXPECT_FALSE(element.getProperties().get(1012)) << "which comes behind it";
}

TEST(GenericLoad, ATransformTakesThePointsAlongAndNotThePositions) {
    PlainLoad load;
    std::deque<LoadVertex> vertices = verticesOf(2);
    vertices[0].posSource = static_cast<orv::elem::PositionSource>(3);
    vertices[1].position = 0.5;
    load.setVertices(vertices);
    load.onPostTransform(AcGeMatrix3d::translation(AcGeVector3d(10, 20, 30)) *
                         AcGeMatrix3d::rotation(std::acos(0.0), AcGeVector3d::kZAxis));
    EXPECT_TRUE(load.getVertices()[0].point.isEqualTo(AcGePoint3d(10, 20, 30)));
    EXPECT_TRUE(load.getVertices()[1].point.isEqualTo(AcGePoint3d(10, 21, 30)));
    EXPECT_EQ(load.getVertices()[1].position, 0.5);
}

TEST(GenericLoad, IsClonedWithoutAMappingWithoutAnElementAndWithItsElementAlone) {
    const SomeIds ids;
    AcDbIdMapping map;
    map.assign(AcDbIdPair(ids.a, ids.b, true));
    ElementCloneContext without;
    ElementCloneContext with;
    with.idMapping = &map;
    PlainLoad load;
    EXPECT_TRUE(load.canElementBeCloned(without));
    EXPECT_TRUE(load.canElementBeCloned(with));
    load.setElement(ids.a);
    EXPECT_TRUE(load.canElementBeCloned(without));
    EXPECT_TRUE(load.canElementBeCloned(with));
    load.setElement(ids.b);
    EXPECT_TRUE(load.canElementBeCloned(without));
    EXPECT_FALSE(load.canElementBeCloned(with));
    // Somebody who knows what will be cloned may say so before it is.
    map.assign(AcDbIdPair(ids.b, AcDbObjectId(), false));
    EXPECT_TRUE(load.canElementBeCloned(with));
}

TEST(GenericLoad, ErasingWithoutAnOwnerDoesNothing) {
    const SomeIds ids;
    ReportRecorder recorder;
    PlainLoad load;
    load.setElement(ids.a);
    load.onErase(true);
    EXPECT_EQ(load.getElement(), ids.a);
    EXPECT_EQ(recorder.size(), 0u);
}

#ifndef _MSC_VER

namespace {

using orv::elem::detail::LoadVisualizationData;

struct SlotLoad : PlainLoad {
    void postprocessInterpolationData(LoadVisualizationData&) const override { ++postprocessed; }
    mutable int postprocessed = 0;
};

} // namespace

// Each one is called through its place in the table, and known by its effect.
TEST(GenericLoadSlots, WhatIsOverriddenKeepsThePlaceOfAPlugin) {
    const SomeIds ids;
    TestElement element;
    PlainLoad& load = LoadOn(element).load;
    EXPECT_EQ(slotOf<const std::string& (*)(const void*)>(&load, 2)(&load), "test.load.plain");
    load.setVertices(verticesOf(1));
    const AcGeMatrix3d move = AcGeMatrix3d::translation(AcGeVector3d(4, 0, 0));
    slotOf<void (*)(void*, const AcGeMatrix3d&)>(&load, 8)(&load, move);
    EXPECT_EQ(load.getVertices()[0].point, AcGePoint3d(4, 0, 0));
    AcDbIdMapping map;
    ElementCloneContext context;
    context.idMapping = &map;
    load.setElement(ids.a);
    using Ask = bool (*)(const void*, const ElementCloneContext&);
    EXPECT_FALSE(slotOf<Ask>(&load, 16)(&load, context));
    drawOnce(load);
    slotOf<void (*)(void*)>(&load, 18)(&load);
    EXPECT_TRUE(load.refreshGraphics());
    orv::serialization::BinaryOutArchive archive;
    using Save = bool (*)(const void*, orv::serialization::IOutArchive&);
    EXPECT_TRUE(slotOf<Save>(&load, 20)(&load, archive));
    orv::KeyValueStorage storage;
    using SaveValues = bool (*)(const void*, orv::KeyValueStorage&);
    EXPECT_TRUE(slotOf<SaveValues>(&load, 21)(&load, storage));
    EXPECT_EQ(storage.getValue<int>("load/line/element_based/type", 0), 10);
    const StoredBody stored(blockOf(archive), archive.softPointers(), {});
    load.setType(44);
    EXPECT_TRUE(stored.read([&load](orv::serialization::IInArchive& in) {
        using Load = bool (*)(void*, orv::serialization::IInArchive&, unsigned int);
        return slotOf<Load>(&load, 22)(&load, in, 6);
    }));
    EXPECT_EQ(load.getType(), 10);
}

TEST(GenericLoadSlots, ItsOwnOperationsStandBehindThoseOfAPlugin) {
    SlotLoad load;
    FilledSystem system;
    LoadVisualizationData data;
    slotOf<void (*)(void*)>(&load, 24)(&load);
    slotOf<void (*)(void*)>(&load, 25)(&load);
    using Setup = void (*)(void*, orv::System&, LoadVisualizationData&);
    slotOf<Setup>(&load, 26)(&load, system, data);
    slotOf<void (*)(const void*, LoadVisualizationData&)>(&load, 27)(&load, data);
    EXPECT_EQ(load.postprocessed, 1);
    slotOf<void (*)(void*)>(&load, 28)(&load);
    slotOf<void (*)(void*)>(&load, 29)(&load);
    slotOf<void (*)(void*)>(&load, 30)(&load);
    EXPECT_EQ(load.hooks, (Texts{"onEdited", "onGeometryModified", "setupInterpolationData",
                                 "onValuesChanged", "onElementChanged", "onLoadTypeChanged"}));
}

#endif

TEST(LoadVisualizationData, BeginsEmptyWithTheScale1AndHeadsUpTo02) {
    const orv::elem::detail::LoadVisualizationData data;
    EXPECT_EQ(data.flags, 0u);
    EXPECT_TRUE(data.direction == AcGeVector3d(0, 0, 0));
    EXPECT_FALSE(data.projected);
    EXPECT_FALSE(data.owned);
    EXPECT_EQ(data.scale, 1.0);
    EXPECT_EQ(data.visCurve, nullptr);
    EXPECT_TRUE(data.getValueAtDistFn.empty());
    EXPECT_TRUE(data.getValueAtPosFn.empty());
    EXPECT_EQ(data.arrowLength, 0.2);
    EXPECT_TRUE(data.vertices.empty());
}
