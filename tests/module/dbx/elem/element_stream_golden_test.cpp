// The present version of the stream, call by call in both directions.

#include "embedded/memory_filer.h"
#include "module/dbx/elem/element_streams.h"
#include "support/archive_bytes.h"

using namespace testing_support;
using orv::elem::ElementBase;

namespace {

class ElementStreamGolden : public ElementStreams {
protected:
    // What fullStream() holds.
    void fill(TestElement& element) {
        RecordingPlugin& living = addRecording(element, "hi");
        living.softIds = {idOf(0x2a), AcDbObjectId()};
        living.hardIds = {idOf(0x2b)};
        living.setProperties().add(9, 0.5);
        living.setProperties().add(7, -5);
        living.properties(AcDb::kForWrite) = singleNode("k", 5);
        addRecording(element);
        element.setNodDatabaseId(idOf(0x10), L"ASDWG");
        element.setProperties().add(1, std::wstring(L"named"));
        element.properties(AcDb::kForWrite) = singleNode("e", boost::any());
        element.assertLog().append(orv::kLogWarning, 0x1000000005, boost::any(2), 3);
        fileOwnNumber();
        ownNumber = 7;
    }
    void expectFull(const TestElement& element) {
        const auto plugins = recordingPlugins(element);
        ASSERT_EQ(plugins.size(), 2u);
        EXPECT_EQ(plugins[0]->data, "hi");
        EXPECT_EQ(plugins[0]->softIds, (std::deque<AcDbObjectId>{idOf(0x2a), AcDbObjectId()}));
        EXPECT_EQ(plugins[0]->hardIds, std::deque<AcDbObjectId>{idOf(0x2b)});
        EXPECT_EQ(plugins[0]->getProperties().size(), 2u);
        EXPECT_EQ(plugins[0]->getProperties().getValueNotThrow<int>(7).value_or(0), -5);
        EXPECT_EQ(plugins[0]->getProperties().getValueNotThrow<double>(9).value_or(0), 0.5);
        EXPECT_EQ(boost::any_cast<int>(plugins[0]->properties(AcDb::kForRead).get_child("k").data()), 5);
        EXPECT_EQ(plugins[0]->owner(), &element);
        EXPECT_EQ(plugins[1]->data, "");
        EXPECT_TRUE(plugins[1]->softIds.empty());
        EXPECT_TRUE(plugins[1]->getProperties().empty());
        EXPECT_TRUE(plugins[1]->properties(AcDb::kForRead).empty());
        expectUnknown(element);
        EXPECT_EQ(const_cast<TestElement&>(element).getNodDatabaseId(), idOf(0x10));
        EXPECT_EQ(element.getNodDatabaseName(), L"ASDWG");
        EXPECT_EQ(ownNumber, 7u);
        EXPECT_EQ(loadedVersion, 6u);
        EXPECT_EQ(element.getProperties().getValueNotThrow<std::wstring>(1).value_or(L""), L"named");
        EXPECT_TRUE(element.properties().get_child("e").data().empty());
        expectLog(element);
    }
    static void expectUnknown(const TestElement& element) {
        ASSERT_EQ(element.unknownPlugins().size(), 1u);
        EXPECT_EQ(element.unknownPlugins()[0].first, "test.gone");
        const ElementBase::ProxyPlugin& unknown = *element.unknownPlugins()[0].second;
        EXPECT_EQ(std::string(unknown.m_data->cast<const char*>(), unknown.m_data->size()), "\x01\x02\xff");
        EXPECT_EQ(unknown.m_softIds, std::deque<AcDbObjectId>{idOf(0x3a)});
        EXPECT_EQ(unknown.m_hardIds, (std::deque<AcDbObjectId>{idOf(0x3b), idOf(0x3c)}));
        EXPECT_EQ(unknown.m_properties.size(), 1u);
        EXPECT_TRUE(unknown.m_properties.getValueNotThrow<bool>(4).value_or(false));
        EXPECT_EQ(boost::any_cast<AcDbObjectId>(unknown.m_tree.get_child("u").data()), idOf(0x3d));
    }
    static void expectLog(const TestElement& element) {
        ASSERT_EQ(element.getLog().size(), 1u);
        const orv::ElementLog::Entry& entry = *element.getLog().begin();
        EXPECT_EQ(entry.level, orv::kLogWarning);
        EXPECT_EQ(entry.msgId, 5u);
        EXPECT_EQ(entry.extra, 3u);
        ASSERT_EQ(entry.arguments.size(), 1u);
        EXPECT_EQ(boost::any_cast<int>(entry.arguments[0]), 2);
    }

    TestElement element;
};

} // namespace

TEST_F(ElementStreamGolden, AnElementWithNothingFilesNineCallsAndTheLink) {
    EXPECT_EQ(linesOf(element),
              (Lines{"Int32 6", "UInt32 0", "HardPointerId null", "String ", "UInt32 0", "UInt32 0",
                     "Int32 1", "Int8 69", "Int32 -889262164", "Bool false", "Int32 1935955631"}));
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamGolden, AnElementWithALinkAlone) {
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    EXPECT_EQ(linesOf(element), bareStream());
    TestElement back;
    readAll(back, bareStream());
    EXPECT_EQ(back.getNodDatabaseId(), idOf(0x10));
    EXPECT_EQ(back.getNodDatabaseName(), L"ASDWG");
    EXPECT_TRUE(recordingPlugins(back).empty());
    EXPECT_TRUE(back.isLogEmpty());
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_TRUE(console.text().empty());
}

TEST_F(ElementStreamGolden, InRawWidthsABareElementTakesFortySixBytes) {
    const std::string golden = "06 00 00 00 00 00 00 00 10 00 00 00 00 00 00 00 02 00 00 00 41 00 42 00 "
                               "00 00 00 00 00 00 00 00 01 00 00 00 45 ac ef fe ca 00 af 56 64 73";
    element.setNodDatabaseId(idOf(0x10), L"AB");
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    EXPECT_EQ(element.outStream(out), Acad::eOk);
    EXPECT_EQ(hexOf(bytes), golden);
    const std::vector<unsigned char> filed = fromHex(golden);
    TestElement back;
    embedded::MemoryFiler in(AcDb::kCopyFiler, filed.data(), filed.size());
    EXPECT_EQ(back.inStream(in), Acad::eOk);
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(back.getNodDatabaseName(), L"AB");
}

TEST_F(ElementStreamGolden, InRawWidthsAPluginAndALog) {
    const std::string golden =
        // Version, one record, its id of 14 units, size and data.
        "06 00 00 00 01 00 00 00 0e 00 00 00 74 00 65 00 73 00 74 00 2e 00 72 00 65 00 63 00 6f 00 72 00 64 "
        "00 "
        "69 00 6e 00 67 00 15 00 00 00 01 00 00 00 01 00 00 00 78 01 00 00 00 00 00 00 00 e5 7d db af "
        // One soft id, no hard one; no properties and an empty tree.
        "01 00 00 00 2a 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 45 ac ef fe ca "
        // The link, no data, no properties, an empty tree.
        "10 00 00 00 00 00 00 00 02 00 00 00 41 00 42 00 00 00 00 00 00 00 00 00 01 00 00 00 45 ac ef fe ca "
        // A log of one entry with one argument, and the end.
        "01 01 00 00 00 01 00 00 00 02 00 00 00 05 00 00 00 03 00 00 00 01 00 00 00 0c 00 00 00 02 00 00 00 "
        "17 a7 e6 6b af 56 64 73";
    addRecording(element, "x").softIds = {idOf(0x2a)};
    element.setNodDatabaseId(idOf(0x10), L"AB");
    element.assertLog().append(orv::kLogWarning, 5, boost::any(2), 3);
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    EXPECT_EQ(element.outStream(out), Acad::eOk);
    EXPECT_EQ(hexOf(bytes), golden);
    const std::vector<unsigned char> filed = fromHex(golden);
    TestElement back;
    embedded::MemoryFiler in(AcDb::kCopyFiler, filed.data(), filed.size());
    EXPECT_EQ(back.inStream(in), Acad::eOk);
    EXPECT_EQ(in.left(), 0u);
    ASSERT_EQ(recordingPlugins(back).size(), 1u);
    EXPECT_EQ(recordingPlugins(back)[0]->data, "x");
    EXPECT_EQ(recordingPlugins(back)[0]->softIds, std::deque<AcDbObjectId>{idOf(0x2a)});
    EXPECT_TRUE(back.getLog().hasMsgId(5));
}

TEST_F(ElementStreamGolden, EverythingOfAnElementIsRead) {
    fileOwnNumber();
    readAll(element, fullStream());
    expectFull(element);
    EXPECT_EQ(console.text(), L"Warning: Plugin type not registered: test.gone!\n");
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamGolden, EverythingOfAnElementIsWritten) {
    // The record of the unknown plugin can only come out of a stream.
    readAll(element, streamWith(1, joined({kUnknownHead, kUnknownIds, kUnknownProperties, kUnknownTree})));
    fill(element);
    EXPECT_EQ(linesOf(element), fullStream());
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamGolden, WhatWasReadIsWrittenAgain) {
    fileOwnNumber();
    readAll(element, fullStream());
    EXPECT_EQ(linesOf(element), fullStream());
    EXPECT_EQ(linesOf(element), fullStream());
}

TEST_F(ElementStreamGolden, TwoLivingAndOneUnknownPluginAreThreeRecords) {
    fileOwnNumber();
    readAll(element, fullStream());
    EXPECT_EQ(linesOf(element)[1], "UInt32 3");
}

TEST_F(ElementStreamGolden, EachNumberOfLivingPlugins) {
    for (int count = 0; count <= 4; ++count) {
        TestElement some;
        some.setNodDatabaseId(idOf(0x10), L"ASDWG");
        Lines records;
        for (int i = 0; i < count; ++i) {
            addRecording(some, std::string(1, static_cast<char>('a' + i)));
            const std::string letter(1, "1234"[i]);
            records =
                joined({records,
                        {"String test.recording", "UInt32 21",
                         "Bytes 01 00 00 00 01 00 00 00 6" + letter + " 00 00 00 00 00 00 00 00 e5 7d db af"},
                        kNoIds,
                        kNoProperties,
                        kEmptyTree});
        }
        EXPECT_EQ(linesOf(some), streamWith(count, records));
        TestElement back;
        readAll(back, streamWith(count, records));
        const auto plugins = recordingPlugins(back);
        ASSERT_EQ(plugins.size(), static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(plugins[static_cast<std::size_t>(i)]->data, std::string(1, static_cast<char>('a' + i)));
    }
}

TEST_F(ElementStreamGolden, UnknownPluginsKeepTheirBytesIdsAndOrder) {
    const Lines one = joined({kUnknownHead, kUnknownIds, kUnknownProperties, kUnknownTree});
    const Lines other = joined({{"String test.away", "UInt32 0"}, kNoIds, kNoProperties, kEmptyTree});
    readAll(element, streamWith(3, joined({one, other, one})));
    EXPECT_EQ(console.text(), L"Warning: Plugin type not registered: test.gone!\n"
                              L"Warning: Plugin type not registered: test.away!\n"
                              L"Warning: Plugin type not registered: test.gone!\n");
    EXPECT_TRUE(recordingPlugins(element).empty());
    ASSERT_EQ(element.unknownPlugins().size(), 3u);
    EXPECT_EQ(element.unknownPlugins()[1].second->m_data->size(), 0u);
    EXPECT_EQ(linesOf(element), streamWith(3, joined({one, other, one})));
}

TEST_F(ElementStreamGolden, UnknownPluginsMoveBehindTheLivingOnes) {
    const Lines unknown = joined({kUnknownHead, kUnknownIds, kUnknownProperties, kUnknownTree});
    const Lines living = joined({kLivingHead, kLivingIds, kLivingProperties, kLivingTree});
    readAll(element, streamWith(3, joined({unknown, living, unknown})));
    EXPECT_EQ(linesOf(element), streamWith(3, joined({living, unknown, unknown})));
}

TEST_F(ElementStreamGolden, ACreatorThatMakesNothingLeavesARecord) {
    static bool s_missing = true;
    ElementBase::IPlugin* (*const make)() = [] {
        return static_cast<ElementBase::IPlugin*>(new RecordingPlugin("test.sometimes"));
    };
    static const auto s_make = make;
    orv::elem::ElementPluginRegistry::registerCreator("test.sometimes", [] {
        return boost::shared_ptr<ElementBase::IPlugin>(s_missing ? nullptr : s_make());
    });
    const Lines record = joined({{"String test.sometimes"},
                                 {kLivingHead.begin() + 1, kLivingHead.end()},
                                 kLivingIds,
                                 kLivingProperties,
                                 kLivingTree});
    readAll(element, streamWith(1, record));
    EXPECT_EQ(reports.messages(), Texts{"Creator failed to create the plugin!"});
    EXPECT_EQ(console.text(), L"Warning: Plugin type not registered: test.sometimes!\n");
    EXPECT_EQ(element.unknownPlugins().size(), 1u);
    // With the code there again it comes to life from the same bytes.
    s_missing = false;
    TestElement later;
    readAll(later, linesOf(element));
    EXPECT_TRUE(later.unknownPlugins().empty());
    ASSERT_EQ(recordingPlugins(later).size(), 1u);
    EXPECT_EQ(recordingPlugins(later)[0]->data, "hi");
    EXPECT_EQ(linesOf(later), streamWith(1, record));
    s_missing = true;
}

TEST_F(ElementStreamGolden, ReadingReplacesAllOfTheElement) {
    fill(element);
    readAll(element, fullStream());
    RecordingPlugin::events.clear();
    TestElement::asked = {};
    readAll(element, bareStream());
    EXPECT_TRUE(RecordingPlugin::events.empty());
    EXPECT_TRUE(recordingPlugins(element).empty());
    EXPECT_TRUE(element.unknownPlugins().empty());
    EXPECT_TRUE(element.getProperties().empty());
    EXPECT_TRUE(static_cast<const ElementBase&>(element).properties().empty());
    EXPECT_TRUE(element.isLogEmpty());
    EXPECT_EQ(linesOf(element), bareStream());
}

TEST_F(ElementStreamGolden, AnEmptyLogIsFiledAsALog) {
    const Lines stream = joined({{"Int32 6", "UInt32 0"},
                                 kLink,
                                 kNoOwnData,
                                 kNoProperties,
                                 kEmptyTree,
                                 {"Bool true", "Int32 1", "UInt32 0", "Int32 1810278167"},
                                 kMagic});
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    element.assertLog();
    EXPECT_EQ(linesOf(element), stream);
    TestElement back;
    readAll(back, stream);
    EXPECT_EQ(back.getLog().size(), 0u);
}

TEST_F(ElementStreamGolden, APluginIsAttachedBeforeItLoads) {
    RecordingPlugin::onCreate = [this](RecordingPlugin& plugin) {
        plugin.onHook = [this, &plugin](const std::string& hook) {
            if (hook == "onAttached") {
                EXPECT_EQ(plugin.owner(), &element);
                EXPECT_TRUE(recordingPlugins(element).empty());
                EXPECT_EQ(plugin.data, "");
            }
        };
    };
    readAll(element, streamWith(1, joined({kLivingHead, kLivingIds, kLivingProperties, kLivingTree})));
    EXPECT_EQ(RecordingPlugin::events, (Texts{"onDetached null", "onAttached owner", "onLoad 6"}));
}

TEST_F(ElementStreamGolden, TheElementsDataAreLoadedBehindItsPluginsAndItsLink) {
    TestElement::asked.load = [](TestElement& loaded, orv::serialization::IInArchive& archive, unsigned int) {
        unsigned int number = 0;
        archive >> number;
        EXPECT_EQ(recordingPlugins(loaded).size(), 2u);
        EXPECT_EQ(loaded.unknownPlugins().size(), 1u);
        EXPECT_EQ(loaded.getNodDatabaseName(), L"ASDWG");
        EXPECT_TRUE(loaded.getProperties().empty());
        return true;
    };
    readAll(element, fullStream());
}

TEST_F(ElementStreamGolden, TheLinkIsRestoredThroughTheVirtualOperation) {
    struct Watched : TestElement {
        void setNodDatabaseId(const AcDbObjectId& id, const std::wstring& name) override {
            set.push_back(name);
            TestElement::setNodDatabaseId(id, name);
        }
        std::vector<std::wstring> set;
    } watched;
    readAll(watched, bareStream());
    EXPECT_EQ(watched.set, std::vector<std::wstring>{L"ASDWG"});
    EXPECT_EQ(watched.getNodDatabaseId(), idOf(0x10));
}

TEST_F(ElementStreamGolden, PropertiesAndTreesAreReadAndWrittenUnderTheChecks) {
    const Lines stream = streamWith(1, joined({kEmptyLivingHead, kNoIds, kNoProperties, kEmptyTree}));
    // Of the plugin two, of the element two, and the link.
    readAll(element, stream);
    EXPECT_EQ(element.writeChecks, 5);
    // The same for reading, and id and name of the link.
    element.readChecks = 0;
    linesOf(element);
    EXPECT_EQ(element.readChecks, 6);
}

TEST_F(ElementStreamGolden, TheFilerIsKnownWhileFilingRuns) {
    ScriptFiler in(fullStream());
    ScriptFiler out;
    AcDbDwgFiler* expected = &in;
    int asked = 0;
    const auto look = [&] {
        ++asked;
        EXPECT_EQ(element.activeFiler(), expected);
    };
    RecordingPlugin::onCreate = [&](RecordingPlugin& plugin) {
        plugin.onHook = [&](const std::string&) { look(); };
    };
    TestElement::asked.load = [&](TestElement&, orv::serialization::IInArchive& archive, unsigned int) {
        archive >> ownNumber;
        look();
        return true;
    };
    TestElement::asked.save = [&](const TestElement&, orv::serialization::IOutArchive& archive) {
        archive << ownNumber;
        look();
        return true;
    };
    EXPECT_EQ(element.activeFiler(), nullptr);
    EXPECT_EQ(element.inStream(in), Acad::eOk);
    EXPECT_EQ(asked, 7);
    EXPECT_EQ(element.activeFiler(), nullptr);
    expected = &out;
    EXPECT_EQ(element.outStream(out), Acad::eOk);
    EXPECT_EQ(asked, 10);
    EXPECT_EQ(element.activeFiler(), nullptr);
    EXPECT_EQ(out.lines, fullStream());
}

TEST_F(ElementStreamGolden, ThePointersOfTheElementsOwnDataAreNotFiled) {
    TestElement::asked.save = [](const TestElement&, orv::serialization::IOutArchive& archive) {
        archive << 5u;
        archive.softPointer(idOf(0x77)).hardPointer(idOf(0x78));
        return true;
    };
    const Lines lines = linesOf(element);
    EXPECT_EQ(lines, joined({{"Int32 6", "UInt32 0", "HardPointerId null", "String ", "UInt32 4",
                              "Bytes 05 00 00 00"},
                             kNoProperties,
                             kEmptyTree,
                             kNoLog,
                             kMagic}));
}
