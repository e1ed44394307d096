// Elements with a general plugin in a drawing.

#include "AcString.h"
#include "base/key_value_storage.h"
#include "dbidmap.h"
#include "dbx/elem/plugin_general.h"
#include "embedded/display_list.h"
#include "embedded/memory_filer.h"
#include "embedded/session.h"
#include "module/dbx/elem/plugin_bodies.h"
#include "orvshape/acad_draw.h"
#include "platform/files.h"
#include "support/beep_recorder.h"
#include "support/system_store.h"
#include "support/test_element.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace testing_support;
using orv::KeyValueStorage;
using orv::elem::Plugin_General;
using orv::elem::Plugin_General_PE;

namespace {

// A front end's numbering: clones get the next free number, and what is erased is written down.
struct Numbering : Plugin_General_PE {
    Numbering() { Plugin_General::setProtExt(this); }
    ~Numbering() { Plugin_General::setProtExt(nullptr); }

    void setNumber(Plugin_General& plugin, unsigned int number) override {
        storeNumber(plugin, number);
        last = std::max(last, number);
    }
    void onPostClone(Plugin_General& plugin) override { storeNumber(plugin, ++last); }
    void onErase(Plugin_General& plugin, bool erasing) override {
        erased.push_back((erasing ? "erased " : "back ") + std::to_string(plugin.getNumber()));
        if (throws)
            throw std::runtime_error("no numbers");
    }

    unsigned int last = 0;
    bool throws = false;
    Texts erased;
};

Plugin_General& generalOf(TestElement& element) {
    return dynamic_cast<Plugin_General&>(*element.getFirstPlugin(Plugin_General::static_pluginId()));
}

void withElement(AcDbObjectId id, AcDb::OpenMode mode, const std::function<void(TestElement&)>& use) {
    TestElement* element = nullptr;
    ASSERT_EQ(acdbOpenObject(element, id, mode, true), Acad::eOk);
    use(*element);
    element->close();
}

unsigned int numberOf(AcDbObjectId id) {
    unsigned int number = 0;
    withElement(id, AcDb::kForRead,
                [&number](TestElement& element) { number = generalOf(element).getNumber(); });
    return number;
}

class GeneralInDrawing : public ::testing::Test {
protected:
    GeneralInDrawing() : db(true) { registerTestElement(); }

    // Number 7, name "B1", identifier "id", offset (1, 2, 3).
    AcDbObjectId element() {
        Numbering numbering;
        auto* const made = new TestElement;
        auto* const plugin = new Plugin_General;
        made->addPlugin(plugin);
        made->setNodDatabaseId(AcDbObjectId(), L"ASDWG");
        plugin->setNumber(7);
        plugin->setName(L"B1");
        plugin->setBIMID("id");
        plugin->setTextAttachmentOffset(AcGeVector3d(1, 2, 3));
        return putEntity(db, made);
    }
    AcDbObjectId cloneOf(AcDbObjectId id) {
        AcDbObjectId space;
        withElement(id, AcDb::kForRead, [&space](TestElement& original) { space = original.blockId(); });
        AcDbObjectIdArray ids;
        ids.append(id);
        AcDbIdMapping map;
        EXPECT_EQ(db.deepCloneObjects(ids, space, map), Acad::eOk);
        AcDbIdPair pair(id, AcDbObjectId(), false);
        EXPECT_TRUE(map.compute(pair));
        return pair.value();
    }
    static void erase(AcDbObjectId id, bool erasing = true) {
        withElement(id, AcDb::kForWrite,
                    [erasing](TestElement& changed) { EXPECT_EQ(changed.erase(erasing), Acad::eOk); });
    }

    AcDbDatabase db;
};

const char* const kNoExtension = "This functionality is only available when the ARX is loaded!";

// An element's stream of version 1 with one record of a general plugin.
std::vector<std::uint8_t> streamWith(const std::string& body) {
    const std::vector<unsigned char> data = fromHex(framed(body));
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes);
    filer.writeInt32(1);
    filer.writeUInt32(1);
    filer.writeString(AcString(L"orv.base.general"));
    filer.writeUInt32(static_cast<Adesk::UInt32>(data.size()));
    filer.writeBytes(data.data(), data.size());
    filer.writeUInt32(0); // the plugin's properties
    filer.writeBool(false);
    filer.writeHardPointerId(AcDbHardPointerId());
    filer.writeString(AcString(L"ASDWG"));
    filer.writeUInt32(0); // the element's properties
    filer.writeBool(false);
    filer.writeInt32(0x736456af);
    return bytes;
}

Acad::ErrorStatus readStream(TestElement& element, const std::vector<std::uint8_t>& bytes) {
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    const Acad::ErrorStatus es = element.inStream(filer);
    EXPECT_TRUE(es != Acad::eOk || filer.left() == 0);
    return es;
}

} // namespace

TEST_F(GeneralInDrawing, AllOfItComesBackFromAFile) {
    const AcDbObjectId id = element();
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"general.dwg");
    ASSERT_EQ(db.saveAs(file.c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(file.c_str()), Acad::eOk) << embedded::lastFileError();
    AcDbObjectId found;
    ASSERT_EQ(back.getAcDbObjectId(found, false, id.handle()), Acad::eOk);
    withElement(found, AcDb::kForRead, [](TestElement& read) {
        const Plugin_General& plugin = generalOf(read);
        EXPECT_EQ(plugin.getNumber(), 7u);
        EXPECT_EQ(plugin.getName(), L"B1");
        EXPECT_EQ(plugin.getBIMID(), "id");
        EXPECT_EQ(plugin.getTextAttachmentOffset(), AcGeVector3d(1, 2, 3));
        EXPECT_EQ(plugin.owner(), &read);
    });
    platform::removeFile(file);
}

TEST_F(GeneralInDrawing, AClonesNumberIsTheExtensions) {
    const AcDbObjectId id = element();
    Numbering numbering;
    numbering.last = 40;
    ReportRecorder recorder;
    const AcDbObjectId clone = cloneOf(id);
    EXPECT_EQ(numberOf(clone), 41u);
    EXPECT_EQ(numberOf(id), 7u);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST_F(GeneralInDrawing, WithoutAnExtensionACloneKeepsTheNumberAndReports) {
    const AcDbObjectId id = element();
    ReportRecorder recorder;
    EXPECT_EQ(numberOf(cloneOf(id)), 7u);
    EXPECT_EQ(recorder.messages(), Texts{kNoExtension});
}

TEST_F(GeneralInDrawing, DrawsNothingAndLeavesTheTraitsToThePluginsBehindIt) {
    const AcDbObjectId id = element();
    FilledSystem system;
    std::vector<int> colours;
    const auto witness = boost::make_shared<RecordingPlugin>();
    witness->drawWorld = [&colours](orv::AcadWorldDraw& draw, orv::System&) {
        colours.push_back(draw.subEntityTraits().color());
        draw.line(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
    };
    withElement(id, AcDb::kForWrite, [&](TestElement& drawn) {
        drawn.system = &system;
        EXPECT_TRUE(embedded::draw(drawn).primitives.empty());
        drawn.addPlugin(witness);
        EXPECT_EQ(embedded::draw(drawn).primitives.size(), 1u);
        // The same without it.
        drawn.detachPlugin(&generalOf(drawn));
        EXPECT_EQ(embedded::draw(drawn).primitives.size(), 1u);
    });
    ASSERT_EQ(colours.size(), 2u);
    EXPECT_EQ(colours[0], colours[1]);
}

TEST_F(GeneralInDrawing, TheExtensionHearsOfEraseUneraseUndoAndRedo) {
    const AcDbObjectId id = element();
    Numbering numbering;
    embedded::beginCommand(db);
    erase(id);
    erase(id, false);
    erase(id);
    EXPECT_EQ(numbering.erased, (Texts{"erased 7", "back 7", "erased 7"}));
    numbering.erased.clear();
    embedded::beginCommand(db);
    erase(id, false);
    ASSERT_TRUE(embedded::undo(db));
    ASSERT_TRUE(embedded::redo(db));
    EXPECT_EQ(numbering.erased, (Texts{"back 7", "erased 7", "back 7"}));
}

TEST_F(GeneralInDrawing, WithoutAnExtensionErasingReportsAndGoesOn) {
    const AcDbObjectId id = element();
    ReportRecorder recorder;
    erase(id);
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(recorder.messages(), Texts{kNoExtension});
}

TEST_F(GeneralInDrawing, AnExtensionThatThrowsDoesNotStopTheErasing) {
    const AcDbObjectId id = element();
    Numbering numbering;
    numbering.throws = true;
    BeepRecorder beeps;
    erase(id);
    EXPECT_TRUE(id.isErased());
    EXPECT_EQ(numbering.erased, Texts{"erased 7"});
    EXPECT_EQ(beeps.lines().size(), 1u);
}

TEST_F(GeneralInDrawing, UndoBringsTheOldNumberBack) {
    const AcDbObjectId id = element();
    Numbering numbering;
    embedded::beginCommand(db);
    withElement(id, AcDb::kForWrite, [](TestElement& changed) { generalOf(changed).setNumber(8); });
    ASSERT_EQ(numberOf(id), 8u);
    ASSERT_TRUE(embedded::undo(db));
    EXPECT_EQ(numberOf(id), 7u);
    ASSERT_TRUE(embedded::redo(db));
    EXPECT_EQ(numberOf(id), 8u);
}

TEST_F(GeneralInDrawing, AnOldBodyInAnOldStreamIsRead) {
    TestElement read;
    const std::string body =
        "02 00 00 00 01 00 00 00 41 00 00 00 05 00 00 00 10 00 00 00 "
        "33 22 11 00 55 44 77 66 88 99 aa bb cc dd ee ff "
        "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 e7 af 7a c6";
    ASSERT_EQ(readStream(read, streamWith(body)), Acad::eOk);
    EXPECT_EQ(generalOf(read).getName(), L"A");
    EXPECT_EQ(generalOf(read).getNumber(), 5u);
    EXPECT_EQ(generalOf(read).getBIMID(), "guid:128:00112233-4455-6677-8899-aabbccddeeff");
    EXPECT_EQ(generalOf(read).getTextAttachmentOffset(), AcGeVector3d(1, 0, 0));
}

TEST_F(GeneralInDrawing, ANewerBodyMakesTheElementAProxy) {
    const NewVersionRecorder warned;
    ReportRecorder recorder;
    TestElement read;
    EXPECT_EQ(readStream(read, streamWith("05 00 00 00")), Acad::eMakeMeProxy);
    EXPECT_EQ(recorder.conditions(), Texts{"version <= kVersion"});
    EXPECT_TRUE(read.getConstPluginIterator().done());
}

TEST_F(GeneralInDrawing, ABodyThatEndsEarlyThrowsOutOfTheElementsStream) {
    ReportRecorder recorder;
    TestElement read;
    EXPECT_THROW(readStream(read, streamWith("04 00 00 00 ff ff ff ff")), orv::Exception);
}

TEST_F(GeneralInDrawing, ValuesUnderNamesGoFromElementToElement) {
    const AcDbObjectId id = element();
    const AcDbObjectId other = element();
    KeyValueStorage storage;
    withElement(id, AcDb::kForRead, [&storage](TestElement& from) { EXPECT_TRUE(from.save(storage)); });
    storage.set("general/name", std::wstring(L"C2"));
    withElement(other, AcDb::kForWrite, [&storage](TestElement& to) {
        EXPECT_TRUE(to.load(storage));
        EXPECT_EQ(generalOf(to).getName(), L"C2");
        EXPECT_EQ(generalOf(to).getNumber(), 7u);
        EXPECT_EQ(to.setProperties().getCasted<unsigned int>(30003), 4294967295u);
    });
}

TEST_F(GeneralInDrawing, AGroupOfAnotherTypeIsReportedAndStaysAndTheRestIsLoaded) {
    BeepRecorder beeps;
    ReportRecorder reports;
    KeyValueStorage storage;
    storage.set("general/group", 5u).set("general/number", 8).set("general/name", std::wstring(L"C2"));
    withElement(element(), AcDb::kForWrite, [&storage](TestElement& to) {
        to.setProperties().add(30003, std::wstring(L"group"));
        EXPECT_TRUE(to.load(storage));
        EXPECT_EQ(to.setProperties().getCasted<std::wstring>(30003), L"group");
        EXPECT_EQ(generalOf(to).getNumber(), 8u);
        EXPECT_EQ(generalOf(to).getName(), L"C2");
    });
    EXPECT_EQ(reports.conditions(), Texts{"isSet"});
    EXPECT_EQ(reports.at(0).message, "the group is of another type");
    EXPECT_EQ(beeps.lines().size(), 0u);
}
