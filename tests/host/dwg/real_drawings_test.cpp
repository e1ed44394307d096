#include "dbmain.h"
#include "drawing_files.h"
#include "embedded/inventory.h"
#include "embedded/session.h"
#include "rxclass.h"

#include <nlohmann/json.hpp>

#include <algorithm>

using nlohmann::json;

namespace {

class RealDrawing : public FolderFixture, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        m_original = drawingFile(std::string(GetParam()) + "_AC1015.dwg");
        if (!std::filesystem::exists(m_original))
            GTEST_SKIP() << "no " << m_original;
        m_database = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(m_database->readDwgFile(platform::fromUtf8(m_original).c_str()), Acad::eOk)
            << embedded::lastFileError();
    }

    json content() const {
        std::ifstream in(drawingFile(std::string(GetParam()) + "_AC1015.content.json"));
        return json::parse(in);
    }

    embedded::dwg::Bytes saved() {
        EXPECT_EQ(m_database->saveAs(path(L"saved.dwg").c_str()), Acad::eOk) << embedded::lastFileError();
        return bytesOfFile(narrowPath(L"saved.dwg"));
    }

    std::string m_original;
    std::unique_ptr<AcDbDatabase> m_database;
};

// The other reader's name of a kind, or "UNKNOWN" as it says itself.
std::string theirName(const std::wstring& ours, const json& theirs) {
    std::string name = platform::toUtf8(ours);
    const auto cut = [&](const std::string& front, const std::string& back) {
        std::string rest = name;
        if (rest.rfind(front, 0) == 0)
            rest.erase(0, front.size());
        if (rest.size() > back.size() && rest.compare(rest.size() - back.size(), back.size(), back) == 0)
            rest.resize(rest.size() - back.size());
        return rest;
    };
    for (const std::string& candidate : {name, cut("ACDB", ""), cut("ACDB_", "_CLASS"), cut("ACDB_", "_DATA"),
                                         cut("ACDB_", "_VERSION"), cut("ACAD_", "")})
        if (theirs.contains(candidate))
            return candidate;
    return "UNKNOWN";
}

std::vector<AcDbObjectId> allIds(const AcDbDatabase& database) {
    std::vector<AcDbObjectId> ids;
    embedded::forEachObject(database, [&](AcDbObjectId id) { ids.push_back(id); });
    return ids;
}

} // namespace

TEST_P(RealDrawing, HasTheObjectsThatAnIndependentReaderFound) {
    const json theirs = content();
    std::map<std::string, std::size_t> expected, found;
    for (const auto& kind : theirs["objects"].items()) {
        const bool unknown = kind.key().rfind("UNKNOWN", 0) == 0;
        expected[unknown ? "UNKNOWN" : kind.key()] += kind.value().get<std::size_t>();
    }
    std::size_t total = 0;
    for (const auto& kind : embedded::countByKind(*m_database)) {
        found[theirName(kind.first, theirs["objects"])] += kind.second;
        total += kind.second;
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(total, theirs["total"].get<std::size_t>());
}

TEST_P(RealDrawing, HasTheClassTableThatAnIndependentReaderFound) {
    const json theirs = content()["classes"];
    const auto ours = embedded::classTable(*m_database);
    ASSERT_EQ(ours.size(), theirs.size());
    for (std::size_t i = 0; i < ours.size(); ++i) {
        EXPECT_EQ(ours[i].number, theirs[i]["number"].get<int>());
        EXPECT_EQ(platform::toUtf8(ours[i].dxfName), theirs[i]["dxfname"].get<std::string>());
        EXPECT_EQ(platform::toUtf8(ours[i].className), theirs[i]["cppname"].get<std::string>());
        EXPECT_EQ(platform::toUtf8(ours[i].applicationName), theirs[i]["appname"].get<std::string>());
        EXPECT_EQ(ours[i].proxyFlags, theirs[i]["proxyflag"].get<int>());
        EXPECT_EQ(ours[i].wasAZombie, theirs[i]["is_zombie"].get<int>() != 0);
        EXPECT_EQ(ours[i].isEntity, theirs[i]["item_class_id"].get<int>() == 0x1F2);
    }
    EXPECT_EQ(embedded::fileVersion(*m_database), "AC1015");
}

TEST_P(RealDrawing, TheNextHandleIsTheOneThatTheHeaderNames) {
    EXPECT_EQ(static_cast<Adesk::UInt64>(m_database->handseed()),
              content()["handseed"][3].get<std::uint64_t>());
}

TEST_P(RealDrawing, SavedWithoutAChangeIsTheSameFile) { EXPECT_TRUE(saved() == bytesOfFile(m_original)); }

TEST_P(RealDrawing, SavedAfterEveryObjectWasOpenedIsTheSameFile) {
    for (const AcDbObjectId& id : allIds(*m_database)) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk)
            << embedded::lastFileError() << " " << platform::toUtf8(embedded::kindOf(id));
        object->close();
    }
    EXPECT_TRUE(saved() == bytesOfFile(m_original));
}

TEST_P(RealDrawing, EveryObjectFiledAnewHasTheBytesThatItHad) {
    // Opened for write and touched, each object goes through its own filer, or through its parts where it has
    // none.
    for (const AcDbObjectId& id : allIds(*m_database)) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForWrite), Acad::eOk) << embedded::lastFileError();
        object->assertWriteEnabled(false);
        object->close();
    }
    const auto before = objectsOf(bytesOfFile(m_original));
    const auto after = objectsOf(saved());
    ASSERT_EQ(after.size(), before.size());
    for (const auto& object : before) {
        AcDbObjectId id;
        m_database->getAcDbObjectId(id, false, AcDbHandle(static_cast<Adesk::UInt64>(object.first)));
        EXPECT_TRUE(after.at(object.first) == object.second)
            << std::hex << object.first << " " << platform::toUtf8(embedded::kindOf(id));
    }
}

TEST_P(RealDrawing, AChangedCommonPartLeavesTheOwnBitsOfEveryOtherObject) {
    AcDbObjectId line;
    for (const AcDbObjectId& id : allIds(*m_database)) {
        if (embedded::kindOf(id) == L"LINE")
            line = id;
    }
    ASSERT_FALSE(line.isNull());
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(entity, line, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(entity->setColorIndex(77), Acad::eOk);
    entity->close();
    const auto before = objectsOf(bytesOfFile(m_original));
    const auto after = objectsOf(saved());
    std::vector<std::uint64_t> changed;
    for (const auto& object : before) {
        if (after.at(object.first) != object.second)
            changed.push_back(object.first);
    }
    EXPECT_EQ(changed, std::vector<std::uint64_t>{static_cast<Adesk::UInt64>(line.handle())});
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(path(L"saved.dwg").c_str()), Acad::eOk);
    AcDbObjectId sameLine;
    ASSERT_EQ(again.getAcDbObjectId(sameLine, false, line.handle()), Acad::eOk);
    ASSERT_EQ(acdbOpenAcDbEntity(entity, sameLine, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(entity->colorIndex(), 77);
    entity->close();
}

TEST_P(RealDrawing, TheRootsAreThere) {
    EXPECT_EQ(embedded::kindOf(m_database->blockTableId()), L"BLOCK_CONTROL");
    EXPECT_EQ(embedded::kindOf(m_database->namedObjectsDictionaryId()), L"DICTIONARY");
    EXPECT_EQ(embedded::kindOf(m_database->layerZero()), L"LAYER");
    EXPECT_EQ(embedded::kindOf(m_database->byLayerLinetype()), L"LTYPE");
}

INSTANTIATE_TEST_SUITE_P(Drawings, RealDrawing, testing::Values("small", "leader", "sample"));

TEST_F(FolderFixture, NewerDrawingsAreRefusedInOneLine) {
    for (const char* version : {"1018", "1024", "1027", "1032"}) {
        const std::string file = drawingFile(std::string("sample_AC") + version + ".dwg");
        if (!std::filesystem::exists(file))
            GTEST_SKIP() << "no " << file;
        AcDbDatabase database(false);
        EXPECT_EQ(database.readDwgFile(platform::fromUtf8(file).c_str()), Acad::eInvalidDwgVersion);
        EXPECT_NE(embedded::lastFileError().find("drawing version AC" + std::string(version)),
                  std::string::npos);
        EXPECT_NE(embedded::lastFileError().find("is not supported; only AC1015 (2000) is"),
                  std::string::npos);
    }
}
