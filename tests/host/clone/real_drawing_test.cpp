#include "clone_fixture.h"

#include "db/database_core.h"
#include "db/entity_list.h"
#include "dbproxy.h"
#include "platform/text.h"
#include "rxclass.h"

#include <filesystem>

namespace {

// A drawing that a CAD product wrote, written anew from its model space and paper space.
class RealDrawing : public CloneFixture, public ::testing::WithParamInterface<const char*> {
protected:
    static std::vector<AcDbStub*> entitiesOf(AcDbDatabase& database) {
        auto* block = open<AcDbBlockTableRecord>(modelSpace(database));
        std::vector<AcDbStub*> all = embedded::BlockAccess::entities(*block).live();
        block->close();
        return all;
    }
    static std::wstring kind(AcDbStub* stub) { return AcDbObjectId(stub).objectClass()->name(); }
    static bool forbidsCloning(AcDbStub* stub) {
        const auto* proxy = AcDbProxyEntity::cast(stub->object);
        return proxy != nullptr && (proxy->proxyFlags() & kCloningAllowed) == 0;
    }
};

TEST_P(RealDrawing, EntitiesGoIntoANewDrawingThatIsSavedAndReadAgain) {
    const std::string file = std::string(TALDORK_DRAWINGS) + "/" + GetParam();
    if (!std::filesystem::exists(file))
        GTEST_SKIP() << "no " << file;
    AcDbDatabase source(false);
    ASSERT_EQ(source.readDwgFile(platform::fromUtf8(file).c_str()), Acad::eOk);
    const std::vector<AcDbStub*> entities = entitiesOf(source);
    ASSERT_FALSE(entities.empty());
    Texts cloned, refused;
    const std::size_t before = everything(*m_to).size();
    for (AcDbStub* stub : entities) {
        AcDbIdMapping mapping;
        const Acad::ErrorStatus es =
            m_to->wblockCloneObjects(ids({AcDbObjectId(stub)}), modelSpace(*m_to), mapping, AcDb::kDrcIgnore);
        if (es == Acad::eOk)
            cloned.push_back(kind(stub));
        else
            refused.push_back(kind(stub) + L" " + std::to_wstring(es));
    }
    EXPECT_FALSE(cloned.empty());
    for (const std::wstring& one : refused)
        EXPECT_NE(one.find(std::to_wstring(Acad::eNotImplementedYet)), std::wstring::npos)
            << platform::toUtf8(one);
    EXPECT_GT(everything(*m_to).size(), before);
    CloneFolder folder;
    std::string error;
    ASSERT_TRUE(embedded::saveDocument(*m_to, folder.file(L"a.dwg"), error)) << error;
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(folder.file(L"a.dwg").c_str()), Acad::eOk);
    Texts read;
    for (AcDbStub* stub : entitiesOf(again))
        read.push_back(kind(stub));
    EXPECT_EQ(read.size(), entitiesOf(*m_to).size());
    EXPECT_EQ(difference(everything(again), everything(*m_to)), L"");
}

TEST_P(RealDrawing, EntitiesAreCopiedInsideTheirDrawingAndTheCopyIsUndone) {
    const std::string file = std::string(TALDORK_DRAWINGS) + "/" + GetParam();
    if (!std::filesystem::exists(file))
        GTEST_SKIP() << "no " << file;
    AcDbDatabase drawing(false);
    ASSERT_EQ(drawing.readDwgFile(platform::fromUtf8(file).c_str()), Acad::eOk);
    const std::vector<AcDbStub*> entities = entitiesOf(drawing);
    const Texts before = everything(drawing);
    std::size_t copies = 0;
    for (AcDbStub* stub : entities) {
        embedded::beginCommand(drawing);
        AcDbIdMapping mapping;
        const Acad::ErrorStatus es =
            drawing.deepCloneObjects(ids({AcDbObjectId(stub)}), modelSpace(drawing), mapping);
        EXPECT_TRUE(es == Acad::eOk || es == Acad::eNotImplementedYet);
        const bool leftOut = es == Acad::eOk && cloneOf(mapping, AcDbObjectId(stub)).isNull();
        copies += es == Acad::eOk && !leftOut ? 1 : 0;
        EXPECT_EQ(leftOut, es == Acad::eOk && forbidsCloning(stub));
    }
    EXPECT_GT(copies, 0u);
    EXPECT_EQ(entitiesOf(drawing).size(), entities.size() + copies);
    for (std::size_t i = 0; i < copies; ++i)
        ASSERT_TRUE(embedded::undo(drawing));
    EXPECT_EQ(entitiesOf(drawing), entities);
    EXPECT_EQ(difference(everything(drawing), before), L"");
}

INSTANTIATE_TEST_SUITE_P(Drawings, RealDrawing,
                         ::testing::Values("small_AC1015.dwg", "sample_AC1015.dwg", "leader_AC1015.dwg"));

} // namespace
