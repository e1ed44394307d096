// Elements in drawings that are saved, opened and copied: with their code, and without some or all of it.

#include "base/exceptions.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "module/dbx/elem/element_streams.h"
#include "platform/files.h"

#include <functional>
#include <memory>

using namespace testing_support;

namespace {

AcDbObjectId modelSpaceOf(AcDbDatabase& database) {
    AcDbBlockTable* blocks = nullptr;
    EXPECT_EQ(database.getBlockTable(blocks, AcDb::kForRead), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, id), Acad::eOk);
    blocks->close();
    return id;
}

class ElementInDrawing : public ElementStreams {
protected:
    void SetUp() override {
        ElementStreams::SetUp();
        m_folder = platform::makeTemporaryFolder();
        m_database = std::make_unique<AcDbDatabase>(true);
        m_line = putEntity(*m_database, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
        m_otherLine = putEntity(*m_database, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 1, 0)));
        m_element = putEntity(*m_database, makeElement());
        fileOwnNumber();
        ownNumber = 7;
    }
    void TearDown() override {
        m_database.reset();
        for (const wchar_t* const name : {L"1.dwg", L"2.dwg", L"3.dwg"})
            platform::removeFile(file(name));
        TestElement::letsExceptionsOut = false;
        registerTestElement();
        ElementStreams::TearDown();
    }

    // A plugin that is known, one that is not, and values of each kind with ids among them.
    TestElement* makeElement() {
        auto* const element = new TestElement;
        for (const char* const id : {"test.recording", "test.gone"}) {
            RecordingPlugin& plugin = addRecording(*element, std::string("a\0\xff", 3), id);
            plugin.softIds = {m_line, AcDbObjectId(), m_line};
            plugin.hardIds = {m_otherLine};
            plugin.setProperties().add(3, m_otherLine);
            plugin.setProperties().add(4, std::wstring(L"t\u00E4\u4E2D"));
            plugin.properties(AcDb::kForWrite) = singleNode("soft", AcDbSoftPointerId(m_line));
        }
        element->setNodDatabaseId(m_database->namedObjectsDictionaryId(), L"ASDWG");
        element->setProperties().add(1, 0.1);
        element->properties(AcDb::kForWrite) = singleNode("id", m_line);
        element->assertLog().append(orv::kLogError, 5, boost::any(m_otherLine), 6);
        return element;
    }
    std::wstring file(const std::wstring& name) const { return platform::joinPath(m_folder, name); }

    // Saves the drawing and opens what was saved in its place.
    void reopen(const std::wstring& name) {
        ASSERT_EQ(m_database->saveAs(file(name).c_str()), Acad::eOk);
        const AcDbHandle handle = m_element.handle();
        m_database = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(m_database->readDwgFile(file(name).c_str()), Acad::eOk);
        ASSERT_EQ(m_database->getAcDbObjectId(m_element, false, handle), Acad::eOk);
    }
    // Opens the element for read.
    void look(const std::function<void(TestElement&)>& look) {
        TestElement* element = nullptr;
        ASSERT_EQ(acdbOpenObject(element, m_element, AcDb::kForRead), Acad::eOk);
        look(*element);
        element->close();
    }
    Lines lines() {
        ScriptFiler filer;
        filer.showsHandles = true;
        look([&](TestElement& element) { EXPECT_EQ(element.outStream(filer), Acad::eOk); });
        return filer.lines;
    }
    bool isProxy() {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, m_element, AcDb::kForRead), Acad::eOk);
        const bool proxy = entity->isAProxy();
        EXPECT_EQ(proxy, AcDbProxyEntity::cast(entity) != nullptr);
        entity->close();
        return proxy;
    }

    std::wstring m_folder;
    std::unique_ptr<AcDbDatabase> m_database;
    AcDbObjectId m_line;
    AcDbObjectId m_otherLine;
    AcDbObjectId m_element;
};

} // namespace

TEST_F(ElementInDrawing, EverythingComesBackFromTheFile) {
    const Lines before = lines();
    reopen(L"1.dwg");
    EXPECT_EQ(lines(), before);
    look([&](TestElement& element) {
        ASSERT_EQ(recordingPlugins(element).size(), 1u);
        const RecordingPlugin& plugin = *recordingPlugins(element)[0];
        EXPECT_EQ(plugin.data, std::string("a\0\xff", 3));
        ASSERT_EQ(plugin.softIds.size(), 3u);
        EXPECT_EQ(plugin.softIds[0].handle(), m_line.handle());
        EXPECT_EQ(plugin.softIds[0].database(), m_database.get());
        EXPECT_TRUE(plugin.softIds[1].isNull());
        ASSERT_EQ(element.unknownPlugins().size(), 1u);
        EXPECT_EQ(element.unknownPlugins()[0].second->m_hardIds.at(0).handle(), m_otherLine.handle());
        EXPECT_EQ(element.getNodDatabaseId(), m_database->namedObjectsDictionaryId());
        EXPECT_EQ(element.activeFiler(), nullptr);
    });
    EXPECT_EQ(ownNumber, 7u);
    EXPECT_EQ(console.text(), L"Warning: Plugin type not registered: test.gone!\n");
    reopen(L"2.dwg");
    EXPECT_EQ(lines(), before);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementInDrawing, WithoutItsClassItIsAProxyAndIsTheSameAfterwards) {
    const Lines before = lines();
    reopen(L"1.dwg");
    m_database->saveAs(file(L"1.dwg").c_str());
    unregisterTestElement();
    reopen(L"2.dwg");
    EXPECT_TRUE(isProxy());
    reopen(L"3.dwg");
    registerTestElement();
    reopen(L"1.dwg");
    EXPECT_FALSE(isProxy());
    EXPECT_EQ(lines(), before);
}

TEST_F(ElementInDrawing, APluginThatDoesNotLoadMakesAProxyThatLosesNothing) {
    const Lines before = lines();
    RecordingPlugin::onCreate = [](RecordingPlugin& plugin) { plugin.loads = false; };
    reopen(L"1.dwg");
    EXPECT_TRUE(isProxy());
    EXPECT_EQ(console.text(), L"Warning: Failed to de-serialize plugin: test.recording!\n");
    reopen(L"2.dwg");
    EXPECT_TRUE(isProxy());
    RecordingPlugin::onCreate = {};
    reopen(L"3.dwg");
    EXPECT_FALSE(isProxy());
    EXPECT_EQ(lines(), before);
}

TEST_F(ElementInDrawing, AnElementThatDoesNotLoadMakesAProxyThatLosesNothing) {
    const Lines before = lines();
    const auto load = TestElement::asked.load;
    TestElement::asked.load = [](TestElement&, orv::serialization::IInArchive&, unsigned int) {
        return false;
    };
    reopen(L"1.dwg");
    EXPECT_TRUE(isProxy());
    TestElement::asked.load = load;
    reopen(L"2.dwg");
    EXPECT_FALSE(isProxy());
    EXPECT_EQ(lines(), before);
}

TEST_F(ElementInDrawing, AnExceptionThatTheElementLetsOutKeepsItUnreadAndLosesNothing) {
    const Lines before = lines();
    TestElement::letsExceptionsOut = true;
    RecordingPlugin::onCreate = [](RecordingPlugin& plugin) {
        plugin.onHook = [](const std::string& hook) {
            if (hook == "onLoad")
                throw orv::Exception("own");
        };
    };
    reopen(L"1.dwg");
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, m_element, AcDb::kForRead), Acad::eDwgObjectImproperlyRead);
    EXPECT_EQ(entity, nullptr);
    // The others of the drawing are there.
    AcDbLine* line = nullptr;
    AcDbObjectId lineId;
    EXPECT_EQ(m_database->getAcDbObjectId(lineId, false, m_line.handle()), Acad::eOk);
    ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForRead), Acad::eOk);
    line->close();
    reopen(L"2.dwg");
    RecordingPlugin::onCreate = {};
    reopen(L"3.dwg");
    EXPECT_EQ(lines(), before);
}

TEST_F(ElementInDrawing, AnExceptionThatTheElementTurnsIntoAStatusMakesAProxy) {
    const Lines before = lines();
    RecordingPlugin::onCreate = [](RecordingPlugin& plugin) {
        plugin.onHook = [](const std::string& hook) {
            if (hook == "onLoad")
                throw orv::Exception("own");
        };
    };
    reopen(L"1.dwg");
    EXPECT_TRUE(isProxy());
    RecordingPlugin::onCreate = {};
    reopen(L"2.dwg");
    EXPECT_EQ(lines(), before);
}

TEST_F(ElementInDrawing, KeptRecordsLeadToTheCopiesInAnotherDrawing) {
    reopen(L"1.dwg");
    AcDbDatabase other(true);
    AcDbObjectId lineId;
    ASSERT_EQ(m_database->getAcDbObjectId(lineId, false, m_line.handle()), Acad::eOk);
    AcDbObjectIdArray ids;
    ids.append(m_element);
    ids.append(lineId);
    AcDbIdMapping mapping;
    ASSERT_EQ(other.wblockCloneObjects(ids, modelSpaceOf(other), mapping, AcDb::kDrcIgnore), Acad::eOk);
    const auto copyOf = [&](AcDbObjectId id) {
        AcDbIdPair pair(id, AcDbObjectId(), false);
        EXPECT_TRUE(mapping.compute(pair));
        return pair.value();
    };
    const AcDbObjectId lineCopy = copyOf(lineId);
    EXPECT_EQ(lineCopy.database(), &other);
    TestElement* copy = nullptr;
    ASSERT_EQ(acdbOpenObject(copy, copyOf(m_element), AcDb::kForRead), Acad::eOk);
    // The link is a hard reference too, here to the dictionary of named objects, of which each drawing has
    // one.
    EXPECT_EQ(copy->getNodDatabaseId(), other.namedObjectsDictionaryId());
    EXPECT_EQ(copy->getNodDatabaseName(), L"ASDWG");
    ASSERT_EQ(recordingPlugins(*copy).size(), 1u);
    EXPECT_EQ(recordingPlugins(*copy)[0]->softIds,
              (std::deque<AcDbObjectId>{lineCopy, AcDbObjectId(), lineCopy}));
    ASSERT_EQ(copy->unknownPlugins().size(), 1u);
    const auto& record = *copy->unknownPlugins()[0].second;
    EXPECT_EQ(record.m_softIds, (std::deque<AcDbObjectId>{lineCopy, AcDbObjectId(), lineCopy}));
    // What a hard reference leads to comes along.
    ASSERT_EQ(record.m_hardIds.size(), 1u);
    EXPECT_EQ(record.m_hardIds[0].database(), &other);
    EXPECT_EQ(record.m_hardIds[0], recordingPlugins(*copy)[0]->hardIds.at(0));
    EXPECT_EQ(boost::any_cast<AcDbSoftPointerId>(record.m_tree.get_child("soft").data()),
              AcDbSoftPointerId(lineCopy));
    EXPECT_EQ(record.m_properties.getValueNotThrow<AcDbObjectId>(3).value_or(AcDbObjectId()),
              record.m_hardIds[0]);
    look([&](TestElement& element) {
        const auto& source = *element.unknownPlugins().at(0).second;
        ASSERT_EQ(record.m_data->size(), source.m_data->size());
        EXPECT_EQ(std::memcmp(record.m_data->data(), source.m_data->data(), source.m_data->size()), 0);
    });
    copy->close();
}
