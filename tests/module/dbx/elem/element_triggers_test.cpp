// The host's events on their way through an element to its plugins.

#include "base/exceptions.h"
#include "base/key_value_storage.h"
#include "dbgrip.h"
#include "host/gi/sketch.h"
#include "module/dbx/elem/noted_element.h"
#include "support/beep_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <ostream>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

using namespace testing_support;
using orv::elem::ElementBase;

namespace {

// An element whose host object is an entity, with the plugins a, b and c, and all that events carry.
class Triggers : public testing::Test {
protected:
    Triggers() {
        for (const char* const name : {"a", "b", "c"})
            plugins.push_back(&addNoted(element, notes, name));
        notes.clear();
    }
    ~Triggers() override {
        for (int i = 0; i < grips.length(); ++i)
            delete grips[i];
    }

    // Runs one event of each kind through the element, within a draw of the host where it takes one.
    void drawWorld(const std::function<void(AcGiWorldDraw&)>& call) {
        entity.world = [&call](AcGiWorldDraw& wd) {
            call(wd);
            return true;
        };
        drawn = embedded::draw(entity);
    }
    void drawViewport(const std::function<void(AcGiViewportDraw&)>& call) {
        entity.world = [](AcGiWorldDraw&) { return false; };
        entity.viewport = call;
        drawn = embedded::draw(entity);
    }
    std::vector<int> drawnColours() const {
        std::vector<int> colours;
        for (const embedded::Primitive& primitive : drawn.primitives)
            colours.push_back(primitive.traits.colour);
        return colours;
    }

    Notes notes;
    Sketch entity;
    NotedElement element{entity, notes};
    std::vector<NotedPlugin*> plugins;
    FilledSystem system;
    orv::ElementInfoContext info;
    orv::ElementCloneContext context;
    AcDbGripDataPtrArray grips;
    embedded::DisplayList drawn;
};

struct Event {
    const char* name;
    const char* check;
    // The element's own hook that goes ahead of the plugins, or null.
    const char* ahead;
    // The plugin's operation, and what is noted of its arguments.
    const char* hook;
    std::vector<std::string> arguments;
};

void PrintTo(const Event& event, std::ostream* out) { *out << event.name; }

const std::vector<Event> kEvents = {
    {"triggerOnGetGrips", "read", nullptr, "onGetGrips", {"", "", ""}},
    {"triggerOnPreMoveGrips", "write", nullptr, "onPreMoveGrips", {" 5", " 6", " 7"}},
    {"triggerOnPreTransform", "write", nullptr, "onPreTransform", {" 0", " 1", " 2"}},
    {"triggerOnPostTransform", "write", nullptr, "onPostTransform", {" 0", " 0", " 0"}},
    {"triggerOnPreWorldDraw", "read", nullptr, "onPreWorldDraw", {"", "", ""}},
    {"triggerOnWorldDraw", "read", nullptr, "onWorldDraw", {"", "", ""}},
    {"triggerOnPreViewportDraw", "read", nullptr, "onPreViewportDraw", {"", "", ""}},
    {"triggerOnViewportDraw", "read", nullptr, "onViewportDraw", {"", "", ""}},
    {"triggerOnErase", "write", nullptr, "onErase", {" true", " true", " true"}},
    {"triggerOnPostClone", "write", "element.onPostClone", "onPostClone", {"", "", ""}},
    {"triggerOnMoved", "write", "element.onMoved", "onMoved", {"", "", ""}},
    {"appendElementInfo", "read", nullptr, "onAppendElementInfo", {"", "", ""}},
};

class EachTrigger : public Triggers, public testing::WithParamInterface<Event> {
protected:
    void trigger() {
        const std::string name = GetParam().name;
        AcGeVector3d offset(5, 0, 0);
        AcGeMatrix3d xform;
        if (name == "triggerOnGetGrips") {
            orv::GripManager::ScopedCreator creator(entity, grips);
            element.triggerOnGetGrips(creator);
        } else if (name == "triggerOnPreMoveGrips") {
            element.triggerOnPreMoveGrips(offset);
        } else if (name == "triggerOnPreTransform") {
            element.triggerOnPreTransform(xform);
        } else if (name == "triggerOnPostTransform") {
            element.triggerOnPostTransform(xform);
        } else if (name == "triggerOnPreWorldDraw") {
            drawWorld([&](AcGiWorldDraw& wd) { element.triggerOnPreWorldDraw(wd); });
        } else if (name == "triggerOnWorldDraw") {
            drawWorld([&](AcGiWorldDraw& wd) {
                orv::AcadWorldDraw draw(wd);
                element.triggerOnWorldDraw(draw, system);
            });
        } else if (name == "triggerOnPreViewportDraw") {
            drawViewport([&](AcGiViewportDraw& vd) { element.triggerOnPreViewportDraw(vd); });
        } else if (name == "triggerOnViewportDraw") {
            drawViewport([&](AcGiViewportDraw& vd) {
                orv::AcadViewportDraw draw(vd);
                element.triggerOnViewportDraw(draw, system);
            });
        } else if (name == "triggerOnErase") {
            element.triggerOnErase(true);
        } else if (name == "triggerOnPostClone") {
            element.triggerOnPostClone();
        } else if (name == "triggerOnMoved") {
            element.triggerOnMoved();
        } else {
            element.appendElementInfo(info);
        }
    }
    // What is noted when so many plugins hear of the event.
    Notes expected(std::size_t heard) const {
        const Event& event = GetParam();
        Notes all = {event.check};
        if (event.ahead != nullptr)
            all.push_back(event.ahead);
        for (std::size_t i = 0; i < heard; ++i)
            all.push_back(std::string(1, "abc"[i]) + "." + event.hook + event.arguments[i]);
        return all;
    }
};

// What a hook can throw, and the line of the console that it makes; empty for none.
struct Thrown {
    const char* name;
    std::function<void()> raise;
    std::wstring line;
};

wchar_t s_wideText[] = L"wide \u00E4";

const std::vector<Thrown> kThrown = {
    {"no output", [] { throw orv::ExceptionButNoOutput(); }, L""},
    {"own exception", [] { throw orv::Exception("own"); }, L"Caught Exception: own "},
    {"standard exception", [] { throw std::runtime_error("boom"); }, L"Caught Exception: boom "},
    {"wide text", [] { throw s_wideText; }, L"Caught Exception (tchar): wide \u00E4 "},
    {"anything else", [] { throw 4711; }, L"Unhandled Exception: "},
};

// The place at the end of a line of the console: a source file, and a line in it at which the guard of the
// operation of that name ends.
void expectPlace(const std::wstring& place, const std::string& file, const std::string& operation) {
    std::wsmatch parts;
    ASSERT_TRUE(std::regex_match(place, parts, std::wregex(L"(.*)@([1-9][0-9]*)")));
    const std::string path(parts[1].first, parts[1].second);
    ASSERT_GE(path.size(), file.size());
    EXPECT_EQ(path.substr(path.size() - file.size()), file);
    std::ifstream source(path);
    ASSERT_TRUE(source) << path;
    std::string line;
    std::string function;
    const int last = std::stoi(parts[2]);
    for (int number = 1; number <= last && std::getline(source, line); ++number)
        if (line.find("ElementBase::") != std::string::npos && line.front() != ' ')
            function = line;
    EXPECT_EQ(line, "    ORV_GUARD");
    EXPECT_NE(function.find("ElementBase::" + operation + "("), std::string::npos) << function;
}

// The one line that was printed for what `operation` caught.
void expectPrinted(const BeepRecorder& beep, const Thrown& thrown, const std::string& file,
                   const std::string& operation) {
    SCOPED_TRACE(thrown.name);
    if (thrown.line.empty()) {
        EXPECT_TRUE(beep.lines().empty());
        return;
    }
    ASSERT_EQ(beep.lines().size(), 1u);
    const std::wstring& line = beep.lines().front();
    ASSERT_EQ(line.substr(0, thrown.line.size()), thrown.line);
    expectPlace(line.substr(thrown.line.size()), file, operation);
}

constexpr const char* kTriggersFile = "module/dbx/elem/element_triggers.cpp";
constexpr const char* kBaseFile = "module/dbx/elem/element_base.cpp";

} // namespace

INSTANTIATE_TEST_SUITE_P(ElementBase, EachTrigger, testing::ValuesIn(kEvents),
                         [](const auto& event) { return std::string(event.param.name); });

TEST_P(EachTrigger, ChecksOnceAndReachesEveryPluginInOrder) {
    BeepRecorder beep;
    trigger();
    EXPECT_EQ(notes, expected(3));
    EXPECT_TRUE(beep.lines().empty());
}

TEST_P(EachTrigger, NeedsNoPlugins) {
    for (NotedPlugin* const plugin : plugins)
        element.detachPlugin(plugin);
    notes.clear();
    trigger();
    EXPECT_EQ(notes, expected(0));
}

TEST_P(EachTrigger, EndsAtThePluginThatThrowsAndPrintsOneLine) {
    for (const Thrown& thrown : kThrown) {
        BeepRecorder beep;
        notes.clear();
        plugins[1]->on[GetParam().hook] = thrown.raise;
        trigger();
        EXPECT_EQ(notes, expected(2)) << thrown.name;
        expectPrinted(beep, thrown, kTriggersFile, GetParam().name);
    }
}

TEST_P(EachTrigger, AFailingCheckReachesNoPlugin) {
    for (const Thrown& thrown : kThrown) {
        BeepRecorder beep;
        notes.clear();
        element.on[GetParam().check] = thrown.raise;
        trigger();
        EXPECT_EQ(notes, Notes{GetParam().check}) << thrown.name;
        expectPrinted(beep, thrown, kTriggersFile, GetParam().name);
    }
}

TEST_P(EachTrigger, APluginThatLeavesTheListMeanwhileLivesForItsCallAndTheOneBehindItHearsToo) {
    plugins[1]->on[GetParam().hook] = [&] { element.detachPlugin(plugins[1]); };
    trigger();
    Notes all = expected(3);
    const Notes leaving = {"write", "b.destroyed"};
    all.insert(all.end() - 1, leaving.begin(), leaving.end());
    EXPECT_EQ(notes, all);
    EXPECT_EQ(element.getConstPluginIterator().end() - element.getConstPluginIterator().begin(), 2);
}

TEST_P(EachTrigger, APluginThatTakesOutAnotherHidesTheEventFromThatOneAlone) {
    plugins[1]->on[GetParam().hook] = [&] { element.detachPlugin(plugins[0]); };
    trigger();
    Notes all = expected(3);
    const Notes leaving = {"write", "a.destroyed"};
    all.insert(all.end() - 1, leaving.begin(), leaving.end());
    EXPECT_EQ(taken(notes), all);
    plugins[1]->on[GetParam().hook] = [&] { element.detachPlugin(plugins[2]); };
    trigger();
    const std::string last = std::string("c.") + GetParam().hook;
    EXPECT_TRUE(std::none_of(notes.begin(), notes.end(), [&last](const std::string& note) {
        return note.compare(0, last.size(), last) == 0;
    }));
}

TEST_P(EachTrigger, APluginThatLeavesWithTheOneAheadOfItHidesTheEventFromNobody) {
    plugins[1]->on[GetParam().hook] = [&] {
        element.detachPlugin(plugins[0]);
        element.detachPlugin(plugins[1]);
    };
    trigger();
    const std::string last = std::string("c.") + GetParam().hook;
    EXPECT_EQ(
        std::count_if(notes.begin(), notes.end(),
                      [&last](const std::string& note) { return note.compare(0, last.size(), last) == 0; }),
        1);
}

TEST_P(EachTrigger, APluginThatLeavesAndComesBackHearsOfTheEventOnce) {
    plugins[1]->on[GetParam().hook] = [&] { element.addPlugin(element.detachPlugin(plugins[1])); };
    trigger();
    const std::string own = std::string("b.") + GetParam().hook;
    EXPECT_EQ(
        std::count_if(notes.begin(), notes.end(),
                      [&own](const std::string& note) { return note.compare(0, own.size(), own) == 0; }),
        1);
}

TEST_F(Triggers, PreMoveGripsHandsTheOffsetFromPluginToPluginAndBack) {
    AcGeVector3d offset(5, 0, 0);
    element.triggerOnPreMoveGrips(offset);
    EXPECT_EQ(notes, (Notes{"write", "a.onPreMoveGrips 5", "b.onPreMoveGrips 6", "c.onPreMoveGrips 7"}));
    EXPECT_EQ(offset.x, 8.0);
}

TEST_F(Triggers, PreTransformHandsTheMatrixFromPluginToPluginAndBack) {
    AcGeMatrix3d xform;
    element.triggerOnPreTransform(xform);
    EXPECT_EQ(xform(0, 3), 3.0);
}

TEST_F(Triggers, APluginThatThrowsInPreTransformHidesTheEventFromThoseBehindIt) {
    BeepRecorder beep;
    plugins[1]->on["onPreTransform"] = [] { throw std::runtime_error("stuck"); };
    AcGeMatrix3d xform;
    element.triggerOnPreTransform(xform);
    EXPECT_EQ(notes, (Notes{"write", "a.onPreTransform 0", "b.onPreTransform 1"}));
    EXPECT_EQ(xform(0, 3), 1.0);
    // The next event reaches all of them again.
    notes.clear();
    element.triggerOnPostTransform(xform);
    EXPECT_EQ(notes, (Notes{"write", "a.onPostTransform 1", "b.onPostTransform 1", "c.onPostTransform 1"}));
}

TEST_F(Triggers, EachPluginsGripsComeInTheOrderOfTheList) {
    orv::GripManager::ScopedCreator creator(entity, grips);
    element.triggerOnGetGrips(creator);
    EXPECT_EQ(grips.length(), 3);
}

TEST_F(Triggers, PreWorldDrawHandsOverTheHostObjectAndLeavesTheTraits) {
    drawWorld([&](AcGiWorldDraw& wd) {
        wd.subEntityTraits().setColor(10);
        element.triggerOnPreWorldDraw(wd);
        EXPECT_EQ(wd.subEntityTraits().color(), 13);
    });
    for (const NotedPlugin* const plugin : plugins)
        EXPECT_EQ(plugin->drawnEntity, &entity);
}

TEST_F(Triggers, PreViewportDrawHandsOverTheHostObjectAndLeavesTheTraits) {
    drawViewport([&](AcGiViewportDraw& vd) {
        vd.subEntityTraits().setColor(10);
        element.triggerOnPreViewportDraw(vd);
        EXPECT_EQ(vd.subEntityTraits().color(), 13);
    });
    for (const NotedPlugin* const plugin : plugins)
        EXPECT_EQ(plugin->drawnEntity, &entity);
}

TEST_F(Triggers, WorldDrawPutsTheTraitsBackBehindEachPlugin) {
    drawWorld([&](AcGiWorldDraw& wd) {
        wd.subEntityTraits().setColor(10);
        orv::AcadWorldDraw draw(wd);
        element.triggerOnWorldDraw(draw, system);
        EXPECT_EQ(wd.subEntityTraits().color(), 10);
    });
    EXPECT_EQ(drawnColours(), (std::vector<int>{11, 11, 11}));
    for (const NotedPlugin* const plugin : plugins)
        EXPECT_EQ(plugin->drawnSystem, &system);
}

TEST_F(Triggers, WorldDrawPutsTheTraitsBackBehindAPluginThatThrows) {
    BeepRecorder beep;
    drawWorld([&](AcGiWorldDraw& wd) {
        wd.subEntityTraits().setColor(10);
        plugins[1]->on["onWorldDraw"] = [&wd] {
            wd.subEntityTraits().setColor(77);
            throw std::runtime_error("stuck");
        };
        orv::AcadWorldDraw draw(wd);
        element.triggerOnWorldDraw(draw, system);
        EXPECT_EQ(wd.subEntityTraits().color(), 10);
    });
    EXPECT_EQ(drawnColours(), std::vector<int>{11});
}

TEST_F(Triggers, ViewportDrawLeavesTheTraitsOfEachPluginToTheNext) {
    drawViewport([&](AcGiViewportDraw& vd) {
        vd.subEntityTraits().setColor(10);
        orv::AcadViewportDraw draw(vd);
        element.triggerOnViewportDraw(draw, system);
        EXPECT_EQ(vd.subEntityTraits().color(), 13);
    });
    EXPECT_EQ(drawnColours(), (std::vector<int>{11, 12, 13}));
    for (const NotedPlugin* const plugin : plugins)
        EXPECT_EQ(plugin->drawnSystem, &system);
}

TEST_F(Triggers, PreDrawsOfAnElementWhoseHostObjectIsNoEntityCallNoPlugin) {
    struct Plain : AcDbObject {
    } plain;
    NotedElement other(plain, notes);
    addNoted(other, notes, "a");
    notes.clear();
    drawWorld([&](AcGiWorldDraw& wd) { other.triggerOnPreWorldDraw(wd); });
    drawViewport([&](AcGiViewportDraw& vd) { other.triggerOnPreViewportDraw(vd); });
    EXPECT_EQ(notes, (Notes{"read", "read"}));
    // The draws behind them need no entity.
    drawWorld([&](AcGiWorldDraw& wd) {
        orv::AcadWorldDraw draw(wd);
        other.triggerOnWorldDraw(draw, system);
    });
    EXPECT_EQ(notes, (Notes{"read", "read", "read", "a.onWorldDraw"}));
}

TEST_F(Triggers, WhatTheElementsOwnHookThrowsReachesNoPlugin) {
    for (const Thrown& thrown : kThrown) {
        element.on["element.onPostClone"] = thrown.raise;
        element.on["element.onMoved"] = thrown.raise;
        {
            BeepRecorder beep;
            element.triggerOnPostClone();
            EXPECT_EQ(taken(notes), (Notes{"write", "element.onPostClone"}));
            expectPrinted(beep, thrown, kTriggersFile, "triggerOnPostClone");
        }
        BeepRecorder beep;
        element.triggerOnMoved();
        EXPECT_EQ(taken(notes), (Notes{"write", "element.onMoved"}));
        expectPrinted(beep, thrown, kTriggersFile, "triggerOnMoved");
    }
}

TEST_F(Triggers, EraseTellsWhichWayItGoes) {
    element.triggerOnErase(false);
    EXPECT_EQ(notes, (Notes{"write", "a.onErase false", "b.onErase false", "c.onErase false"}));
}

TEST_F(Triggers, EveryPluginAppendsToTheSameInfo) {
    element.appendElementInfo(info);
    ASSERT_EQ(info.sections().size(), 1u);
    EXPECT_EQ(info.sections()[0].heading, L"from the plugin");
}

TEST_F(Triggers, AllPluginsAgreeingTheElementMayBeClonedAndTransformed) {
    context.operation = orv::ElementCloneContext::kWblockClone;
    EXPECT_TRUE(element.canElementBeCloned(context));
    EXPECT_EQ(taken(notes),
              (Notes{"read", "a.canElementBeCloned 2", "b.canElementBeCloned 2", "c.canElementBeCloned 2"}));
    EXPECT_TRUE(element.canBeTransformed());
    EXPECT_EQ(taken(notes), (Notes{"read", "a.canElementBeTransformed", "b.canElementBeTransformed",
                                   "c.canElementBeTransformed"}));
}

TEST_F(Triggers, AnElementWithoutPluginsMayBeClonedAndTransformed) {
    NotedElement bare(entity, notes);
    EXPECT_TRUE(bare.canElementBeCloned(context));
    EXPECT_TRUE(bare.canBeTransformed());
    EXPECT_EQ(notes, (Notes{"read", "read"}));
}

TEST_F(Triggers, TheFirstVetoEndsTheQuestion) {
    plugins[1]->agreesToClone = false;
    plugins[1]->agreesToTransform = false;
    EXPECT_FALSE(element.canElementBeCloned(context));
    EXPECT_EQ(taken(notes), (Notes{"read", "a.canElementBeCloned 0", "b.canElementBeCloned 0"}));
    EXPECT_FALSE(element.canBeTransformed());
    EXPECT_EQ(taken(notes), (Notes{"read", "a.canElementBeTransformed", "b.canElementBeTransformed"}));
}

TEST_F(Triggers, APluginThatThrowsDoesNotVeto) {
    // Nor do those behind it, which are not asked.
    plugins[2]->agreesToClone = false;
    plugins[2]->agreesToTransform = false;
    for (const Thrown& thrown : kThrown) {
        notes.clear();
        plugins[1]->on["canElementBeCloned"] = thrown.raise;
        plugins[1]->on["canElementBeTransformed"] = thrown.raise;
        {
            BeepRecorder beep;
            EXPECT_TRUE(element.canElementBeCloned(context));
            EXPECT_EQ(taken(notes), (Notes{"read", "a.canElementBeCloned 0", "b.canElementBeCloned 0"}));
            expectPrinted(beep, thrown, kTriggersFile, "canElementBeCloned");
        }
        BeepRecorder beep;
        EXPECT_TRUE(element.canBeTransformed());
        EXPECT_EQ(taken(notes), (Notes{"read", "a.canElementBeTransformed", "b.canElementBeTransformed"}));
        expectPrinted(beep, thrown, kTriggersFile, "canBeTransformed");
    }
}

TEST_F(Triggers, AFailingCheckDoesNotVetoAndAsksNoPlugin) {
    plugins[0]->agreesToClone = false;
    plugins[0]->agreesToTransform = false;
    for (const Thrown& thrown : kThrown) {
        element.on["read"] = thrown.raise;
        {
            BeepRecorder beep;
            EXPECT_TRUE(element.canElementBeCloned(context));
            EXPECT_EQ(taken(notes), Notes{"read"});
            expectPrinted(beep, thrown, kTriggersFile, "canElementBeCloned");
        }
        BeepRecorder beep;
        EXPECT_TRUE(element.canBeTransformed());
        EXPECT_EQ(taken(notes), Notes{"read"});
        expectPrinted(beep, thrown, kTriggersFile, "canBeTransformed");
    }
}

TEST_F(Triggers, APluginThatLeavesWhileItIsAskedHidesNoVetoBehindIt) {
    plugins[2]->agreesToClone = false;
    plugins[1]->on["canElementBeCloned"] = [&] { element.detachPlugin(plugins[1]); };
    EXPECT_FALSE(element.canElementBeCloned(context));
    EXPECT_EQ(taken(notes), (Notes{"read", "a.canElementBeCloned 0", "b.canElementBeCloned 0", "write",
                                   "b.destroyed", "c.canElementBeCloned 0"}));
    plugins[2]->agreesToTransform = false;
    plugins[0]->on["canElementBeTransformed"] = [&] { element.detachPlugin(plugins[0]); };
    EXPECT_FALSE(element.canBeTransformed());
    EXPECT_EQ(taken(notes), (Notes{"read", "a.canElementBeTransformed", "write", "a.destroyed",
                                   "c.canElementBeTransformed"}));
}

TEST_F(Triggers, AVetoAheadOfAPluginThatThrowsStands) {
    plugins[0]->agreesToTransform = false;
    plugins[1]->on["canElementBeTransformed"] = kThrown[2].raise;
    EXPECT_FALSE(element.canBeTransformed());
}

TEST_F(Triggers, ValuesUnderNamesComeFromTheElementAndThenEachPlugin) {
    orv::KeyValueStorage storage;
    EXPECT_TRUE(element.save(storage));
    EXPECT_EQ(taken(notes), (Notes{"read", "element.onSave storage", "a.onSave storage", "b.onSave storage",
                                   "c.onSave storage"}));
    EXPECT_TRUE(element.load(storage));
    EXPECT_EQ(taken(notes), (Notes{"write", "element.onLoad storage", "a.onLoad storage", "b.onLoad storage",
                                   "c.onLoad storage"}));
}

TEST_F(Triggers, WhatTheOnesAnswerAboutValuesUnderNamesIsIgnored) {
    orv::KeyValueStorage storage;
    element.succeeds = false;
    plugins[0]->succeeds = false;
    EXPECT_TRUE(element.save(storage));
    EXPECT_EQ(taken(notes).size(), 5u);
    EXPECT_TRUE(element.load(storage));
    EXPECT_EQ(taken(notes).size(), 5u);
}

TEST_F(Triggers, AnExceptionEndsTheSavingOfValuesUnderNames) {
    orv::KeyValueStorage storage;
    for (const Thrown& thrown : kThrown) {
        plugins[1]->on["onSave"] = thrown.raise;
        plugins[1]->on["onLoad"] = thrown.raise;
        {
            BeepRecorder beep;
            EXPECT_FALSE(element.save(storage));
            EXPECT_EQ(taken(notes),
                      (Notes{"read", "element.onSave storage", "a.onSave storage", "b.onSave storage"}));
            expectPrinted(beep, thrown, kBaseFile, "save");
        }
        BeepRecorder beep;
        EXPECT_FALSE(element.load(storage));
        EXPECT_EQ(taken(notes),
                  (Notes{"write", "element.onLoad storage", "a.onLoad storage", "b.onLoad storage"}));
        expectPrinted(beep, thrown, kBaseFile, "load");
    }
}

TEST_F(Triggers, AFailingCheckEndsTheSavingOfValuesUnderNames) {
    orv::KeyValueStorage storage;
    for (const Thrown& thrown : kThrown) {
        element.on["read"] = thrown.raise;
        element.on["write"] = thrown.raise;
        {
            BeepRecorder beep;
            EXPECT_FALSE(element.save(storage));
            EXPECT_EQ(taken(notes), Notes{"read"});
            expectPrinted(beep, thrown, kBaseFile, "save");
        }
        BeepRecorder beep;
        EXPECT_FALSE(element.load(storage));
        EXPECT_EQ(taken(notes), Notes{"write"});
        expectPrinted(beep, thrown, kBaseFile, "load");
    }
}

TEST_F(Triggers, WhatTheElementThrowsOfValuesUnderNamesReachesNoPlugin) {
    orv::KeyValueStorage storage;
    for (const Thrown& thrown : kThrown) {
        element.on["element.onSave"] = thrown.raise;
        element.on["element.onLoad"] = thrown.raise;
        {
            BeepRecorder beep;
            EXPECT_FALSE(element.save(storage));
            EXPECT_EQ(taken(notes), (Notes{"read", "element.onSave storage"}));
            expectPrinted(beep, thrown, kBaseFile, "save");
        }
        BeepRecorder beep;
        EXPECT_FALSE(element.load(storage));
        EXPECT_EQ(taken(notes), (Notes{"write", "element.onLoad storage"}));
        expectPrinted(beep, thrown, kBaseFile, "load");
    }
}

TEST_F(Triggers, APluginThatLeavesWithItsValuesHidesNoneBehindIt) {
    orv::KeyValueStorage storage;
    plugins[1]->on["onSave"] = [&] { element.detachPlugin(plugins[1]); };
    EXPECT_TRUE(element.save(storage));
    EXPECT_EQ(taken(notes), (Notes{"read", "element.onSave storage", "a.onSave storage", "b.onSave storage",
                                   "write", "b.destroyed", "c.onSave storage"}));
    plugins[0]->on["onLoad"] = [&] { element.detachPlugin(plugins[0]); };
    EXPECT_TRUE(element.load(storage));
    EXPECT_EQ(taken(notes), (Notes{"write", "element.onLoad storage", "a.onLoad storage", "write",
                                   "a.destroyed", "c.onLoad storage"}));
}
