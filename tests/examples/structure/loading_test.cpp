// The module comes when a drawing needs it, and drawings keep its elements when it is not there.

#include "examples/structure/structure_test.h"

#include "dbproxy.h"
#include "embedded/applications.h"
#include "support/linker_recorder.h"

#include <algorithm>
#include <filesystem>

namespace structure_tests {
namespace {

using structure::Frame;
using structure::Node;

bool isLoaded() {
    const std::vector<embedded::Application> applications = embedded::applications();
    return std::any_of(applications.begin(), applications.end(),
                       [](const embedded::Application& one) { return one.name == kModule; });
}

class LoadingTest : public StructureTest {};
class RealDrawingTest : public StructureTest, public ::testing::WithParamInterface<const char*> {};

TEST_F(LoadingTest, ItsEntryNamesTheModuleAndTheOccasions) {
    AcadAppInfo entry;
    entry.setAppName(kApplication);
    ASSERT_EQ(entry.readFromRegistry(), AcadApp::eOk);
    const std::wstring module = entry.moduleName();
    ASSERT_GT(module.size(), std::wstring(kModule).size());
    EXPECT_EQ(module.substr(module.size() - std::wstring(kModule).size()), kModule);
    EXPECT_EQ(entry.loadReason(), AcadApp::kOnProxyDetection | AcadApp::kOnLoadRequest);
}

TEST_F(LoadingTest, ItBringsTheModuleItStandsOn) {
    embedded::closeAllDocuments();
    ASSERT_TRUE(acrxDynamicLinker->unloadModule(kModule));
    ASSERT_TRUE(acrxDynamicLinker->unloadModule(L"taldork191_x64.dbx"));
    ASSERT_TRUE(acrxDynamicLinker->loadModule(kModule, false));
    const std::vector<embedded::Application> applications = embedded::applications();
    EXPECT_TRUE(std::any_of(applications.begin(), applications.end(), [](const embedded::Application& one) {
        return one.name == L"taldork191_x64.dbx";
    }));
}

TEST_F(LoadingTest, ItDoesNotStartWithoutTheModuleItStandsOn) {
    embedded::closeAllDocuments();
    ASSERT_TRUE(acrxDynamicLinker->unloadModule(kModule));
    AcRxDynamicLinker* const linker = acrxDynamicLinker;
    {
        testing_support::LinkerRecorder asked;
        asked.refuse(L"taldork191_x64.dbx");
        EXPECT_FALSE(linker->loadModule(kModule, false));
        EXPECT_EQ(asked.calls(), testing_support::Calls{"load taldork191_x64.dbx"});
    }
    EXPECT_FALSE(isLoaded());
    EXPECT_EQ(orv::elem::Plugin_General::getProtExt(), nullptr);
    EXPECT_EQ(acrxClassDictionary->at(L"STR_Node"), nullptr);
    ASSERT_TRUE(linker->loadModule(kModule, false));
    EXPECT_TRUE(isLoaded());
    EXPECT_NE(acrxClassDictionary->at(L"STR_Node"), nullptr);
}

TEST_F(LoadingTest, AnUnloadedModuleTakesItsNumberingWithIt) {
    EXPECT_NE(orv::elem::Plugin_General::getProtExt(), nullptr);
    {
        const WithoutModule away;
        EXPECT_EQ(orv::elem::Plugin_General::getProtExt(), nullptr);
    }
    EXPECT_NE(orv::elem::Plugin_General::getProtExt(), nullptr);
}

TEST_P(RealDrawingTest, ANodeInItBringsTheModuleWhenItOpens) {
    const std::string original = std::string(TALDORK_DRAWINGS) + "/" + GetParam();
    if (!std::filesystem::exists(original))
        GTEST_SKIP() << "no " << original;
    open(std::filesystem::path(original).wstring());
    const std::size_t before = entities(*db).size();
    append(new Node(AcGePoint3d(1.0, 2.0, 3.0)));
    structure::processMovedElements(*db);
    save(file(L"real.dwg"));
    const Streams written = streams();
    ASSERT_EQ(written.size(), 1u);

    embedded::closeAllDocuments();
    ASSERT_TRUE(acrxDynamicLinker->unloadModule(kModule));
    ASSERT_FALSE(isLoaded());
    open(file(L"real.dwg"));
    EXPECT_TRUE(isLoaded());
    EXPECT_EQ(entities(*db).size(), before + 1);
    EXPECT_TRUE(streams() == written);
    const AcDbObjectId id = entities(*db).back();
    EXPECT_TRUE(Open<Node>(id)->position().isEqualTo(AcGePoint3d(1.0, 2.0, 3.0)));
    EXPECT_EQ(numberOf(id), 1u);
}

TEST_P(RealDrawingTest, ANodeInItIsAProxyWithoutTheModuleAndComesBackAsItWas) {
    const std::string original = std::string(TALDORK_DRAWINGS) + "/" + GetParam();
    if (!std::filesystem::exists(original))
        GTEST_SKIP() << "no " << original;
    open(std::filesystem::path(original).wstring());
    append(new Node(AcGePoint3d(4.0, 5.0, 6.0)));
    const Streams written = streams();
    save(file(L"real.dwg"));
    embedded::closeAllDocuments();
    {
        const WithoutModule away;
        open(file(L"real.dwg"));
        const Open<AcDbEntity> node(entities(*db).back());
        EXPECT_TRUE(node->isAProxy());
        save(file(L"kept.dwg"));
    }
    embedded::closeAllDocuments();
    open(file(L"kept.dwg"));
    EXPECT_TRUE(streams() == written);
}

INSTANTIATE_TEST_SUITE_P(Drawings, RealDrawingTest,
                         ::testing::Values("sample_AC1015.dwg", "small_AC1015.dwg", "leader_AC1015.dwg"),
                         [](const auto& info) {
                             const std::string name = info.param;
                             return name.substr(0, name.find('_'));
                         });

TEST_F(LoadingTest, AFrameGoesThroughASaveWithoutTheModuleUnchanged) {
    const Frame made = frame();
    const Streams written = streams();
    ASSERT_EQ(written.size(), made.size());
    save(file(L"with.dwg"));
    embedded::closeAllDocuments();
    {
        const WithoutModule away;
        open(file(L"with.dwg"));
        for (const AcDbObjectId& id : entities(*db))
            EXPECT_TRUE(Open<AcDbEntity>(id)->isAProxy());
        // A change elsewhere makes the whole file be written anew.
        append(new AcDbPoint(AcGePoint3d(0.0, 0.0, 0.0)));
        save(file(L"without.dwg"));
    }
    open(file(L"without.dwg"));
    EXPECT_TRUE(streams() == written);
}

TEST_F(LoadingTest, AnElementIsErasedWithoutTheModuleAndIsGone) {
    const Frame made = frame();
    const AcDbHandle slab = made.slabs.front().handle();
    save(file(L"with.dwg"));
    embedded::closeAllDocuments();
    {
        const WithoutModule away;
        open(file(L"with.dwg"));
        AcDbObjectId id;
        ASSERT_EQ(db->getAcDbObjectId(id, false, slab), Acad::eOk);
        EXPECT_EQ(Open<AcDbEntity>(id, AcDb::kForWrite)->erase(), Acad::eOk);
        save(file(L"without.dwg"));
    }
    open(file(L"without.dwg"));
    EXPECT_EQ(streams().size(), made.size() - 1);
}

TEST_F(LoadingTest, AProxyOfAnElementIsNotMoved) {
    const Frame made = frame();
    const AcDbHandle slab = made.slabs.front().handle();
    save(file(L"with.dwg"));
    embedded::closeAllDocuments();
    const WithoutModule away;
    open(file(L"with.dwg"));
    AcDbObjectId id;
    ASSERT_EQ(db->getAcDbObjectId(id, false, slab), Acad::eOk);
    EXPECT_NE(
        Open<AcDbEntity>(id, AcDb::kForWrite)->transformBy(AcGeMatrix3d::translation(AcGeVector3d::kXAxis)),
        Acad::eOk);
    embedded::closeAllDocuments();
}

} // namespace
} // namespace structure_tests
