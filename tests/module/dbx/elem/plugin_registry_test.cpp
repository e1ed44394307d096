#include "dbx/elem/plugin_registry.h"

#include "module/dbx/elem/noted_element.h"
#include "support/console_recorder.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <string>

using namespace testing_support;
using orv::elem::ElementBase;
using orv::elem::ElementPluginRegistry;

namespace {

using PluginPointer = boost::shared_ptr<ElementBase::IPlugin>;

Notes s_notes;

template <char name>
PluginPointer createNoted() {
    return PluginPointer(
        new NotedPlugin(s_notes, std::string(1, name), std::string("tests.registry.") + name));
}

PluginPointer createNothing() { return PluginPointer(); }

} // namespace

TEST(ElementPluginRegistry, AnUnknownIdGivesNothingWithoutAWord) {
    ReportRecorder recorder;
    ConsoleRecorder console;
    EXPECT_FALSE(ElementPluginRegistry::create("tests.registry.never"));
    EXPECT_FALSE(ElementPluginRegistry::create(""));
    EXPECT_TRUE(console.text().empty());
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(ElementPluginRegistry, ACreatorMakesANewPluginEachTime) {
    ReportRecorder recorder;
    ElementPluginRegistry::registerCreator("tests.registry.n", &createNoted<'n'>);
    const PluginPointer one = ElementPluginRegistry::create("tests.registry.n");
    const PluginPointer other = ElementPluginRegistry::create("tests.registry.n");
    ASSERT_TRUE(one);
    ASSERT_TRUE(other);
    EXPECT_NE(one, other);
    EXPECT_EQ(one->pluginId(), "tests.registry.n");
    EXPECT_EQ(one->owner(), nullptr);
    EXPECT_EQ(one.use_count(), 1);
    // Ids are compared exactly.
    EXPECT_FALSE(ElementPluginRegistry::create("Tests.registry.n"));
    EXPECT_FALSE(ElementPluginRegistry::create("tests.registry.n "));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(ElementPluginRegistry, OfTwoCreatorsForAnIdTheFirstStays) {
    ReportRecorder recorder;
    ElementPluginRegistry::registerCreator("tests.registry.twice", &createNoted<'1'>);
    EXPECT_EQ(recorder.size(), 0u);
    ElementPluginRegistry::registerCreator("tests.registry.twice", &createNoted<'2'>);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "it == instance().m_creators.end()");
    EXPECT_EQ(recorder.at(0).message, "duplicate id registration");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
    EXPECT_EQ(recorder.at(0).values, (Values{{"pluginId", "tests.registry.twice"}}));
    EXPECT_EQ(ElementPluginRegistry::create("tests.registry.twice")->pluginId(), "tests.registry.1");
}

TEST(ElementPluginRegistry, ACreatorThatMakesNothingIsReported) {
    ElementPluginRegistry::registerCreator("tests.registry.nothing", &createNothing);
    ReportRecorder recorder;
    ConsoleRecorder console;
    EXPECT_FALSE(ElementPluginRegistry::create("tests.registry.nothing"));
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "plugin");
    EXPECT_EQ(recorder.at(0).message, "Creator failed to create the plugin!");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
    EXPECT_EQ(recorder.at(0).values, (Values{{"pluginId", "tests.registry.nothing"}}));
    EXPECT_TRUE(console.text().empty());
}
