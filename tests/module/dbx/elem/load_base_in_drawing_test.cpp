// Loads that are entities by themselves, in drawings that are saved, opened, copied and undone.

#include "AcString.h"
#include "dbidmap.h"
#include "embedded/memory_filer.h"
#include "embedded/session.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "module/dbx/elem/test_load.h"
#include "platform/files.h"
#include "support/test_element.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace testing_support;
using orv::elem::LoadBase;

namespace {

std::string saved(const TestLoad& load) {
    orv::serialization::BinaryOutArchive archive;
    EXPECT_TRUE(load.onSave(archive));
    return hexOf(archive);
}

void withLoad(AcDbObjectId id, AcDb::OpenMode mode, const std::function<void(TestLoad&)>& use) {
    TestLoad* load = nullptr;
    ASSERT_EQ(acdbOpenObject(load, id, mode), Acad::eOk);
    use(*load);
    load->close();
}

std::string bodyOf(AcDbObjectId id) {
    std::string body;
    withLoad(id, AcDb::kForRead, [&body](TestLoad& load) { body = saved(load); });
    return body;
}

class LoadInDrawing : public ::testing::Test {
protected:
    LoadInDrawing() : db(true) { registerTestLoad(); }

    // With the data of version 8.
    AcDbObjectId load() {
        auto* const made = new TestLoad;
        made->setNodDatabaseId(AcDbObjectId(), L"ASDWG");
        EXPECT_TRUE(StoredBody(loadBody(8)).read([made](auto& archive) { return made->onLoad(archive, 6); }));
        return putEntity(db, made);
    }

    AcDbDatabase db;
};

// An element's stream of version 6 without plugins, whose own data are these.
std::vector<std::uint8_t> streamOf(const std::string& body) {
    const std::vector<unsigned char> data = fromHex(body);
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    filer.writeInt32(6);
    filer.writeUInt32(0); // plugins
    filer.writeHardPointerId(AcDbHardPointerId());
    filer.writeString(AcString(L"ASDWG"));
    filer.writeUInt32(static_cast<Adesk::UInt32>(data.size()));
    filer.writeBytes(data.data(), data.size());
    filer.writeUInt32(0); // properties
    filer.writeInt32(1);  // an empty tree
    filer.writeInt8(69);
    filer.writeInt32(-889262164);
    filer.writeBool(false); // log
    filer.writeInt32(0x736456af);
    return bytes;
}

Acad::ErrorStatus readStream(TestLoad& load, const std::string& body) {
    const std::vector<std::uint8_t> bytes = streamOf(body);
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    const Acad::ErrorStatus es = load.LoadBase::dwgInFields(filer);
    EXPECT_TRUE(es != Acad::eOk || filer.left() == 0);
    return es;
}

} // namespace

TEST_F(LoadInDrawing, AllOfItComesBackFromAFile) {
    const AcDbObjectId id = load();
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"load.dwg");
    ASSERT_EQ(db.saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbObjectId found;
    ASSERT_EQ(back.getAcDbObjectId(found, false, id.handle()), Acad::eOk);
    EXPECT_EQ(bodyOf(found), loadBody(8));
    withLoad(found, AcDb::kForRead, [](TestLoad& read) {
        EXPECT_EQ(read.getTextAtEnd(), L"bc");
        EXPECT_EQ(read.getVertices()[0].point.z, -0.5);
    });
    platform::removeFile(file);
}

TEST_F(LoadInDrawing, ACloneHasItAll) {
    const AcDbObjectId id = load();
    AcDbObjectId space;
    withLoad(id, AcDb::kForRead, [&space](TestLoad& original) { space = original.blockId(); });
    AcDbObjectIdArray ids;
    ids.append(id);
    AcDbIdMapping map;
    ASSERT_EQ(db.deepCloneObjects(ids, space, map), Acad::eOk);
    AcDbIdPair pair(id, AcDbObjectId(), false);
    ASSERT_TRUE(map.compute(pair));
    EXPECT_EQ(bodyOf(pair.value()), loadBody(8));
}

TEST_F(LoadInDrawing, UndoBringsTheOldDataBack) {
    const AcDbObjectId id = load();
    embedded::beginCommand(db);
    withLoad(id, AcDb::kForWrite, [](TestLoad& changed) {
        changed.setLoadCase(99);
        changed.setVertices({LoadBase::Vertex()});
        changed.setUnitText(L"MN");
    });
    const std::string after = bodyOf(id);
    ASSERT_NE(after, loadBody(8));
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_EQ(bodyOf(id), loadBody(8));
    ASSERT_TRUE(embedded::redo(db));
    EXPECT_EQ(bodyOf(id), after);
}

TEST_F(LoadInDrawing, AnElementsStreamOfEveryVersionOfTheDataIsRead) {
    for (unsigned int version = 1; version <= 8; ++version) {
        TestLoad fromStream;
        EXPECT_EQ(readStream(fromStream, loadBody(version)), Acad::eOk) << version;
        TestLoad fromData;
        ASSERT_TRUE(
            StoredBody(loadBody(version)).read([&](auto& archive) { return fromData.onLoad(archive, 6); }));
        EXPECT_EQ(saved(fromStream), saved(fromData)) << version;
        EXPECT_EQ(fromStream.getType(), 12) << version;
    }
}

TEST_F(LoadInDrawing, NewerDataMakeTheElementAProxy) {
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    TestLoad read;
    EXPECT_EQ(readStream(read, joined({loadVersion(9), loadBody(8).substr(12)})), Acad::eMakeMeProxy);
    EXPECT_EQ(recorder.conditions(), Texts{"version <= kVersion"});
}

TEST_F(LoadInDrawing, DataWithAWrongEndMakeTheElementAProxy) {
    ReportRecorder recorder;
    TestLoad read;
    std::string body = loadBody(8);
    body.replace(body.size() - 2, 2, "fc");
    EXPECT_EQ(readStream(read, body), Acad::eMakeMeProxy);
    EXPECT_EQ(recorder.conditions(), Texts{"magic == kMagic"});
}

TEST_F(LoadInDrawing, DataThatEndEarlyThrowOutOfTheElementsStream) {
    const ReportRecorder recorder;
    TestLoad read;
    EXPECT_THROW(readStream(read, loadBody(8).substr(0, 60)), orv::Exception);
}
