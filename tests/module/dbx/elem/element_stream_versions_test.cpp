// Streams that older releases have written, by hand, and one of a newer release.

#include "module/dbx/elem/element_streams.h"
#include "orvcore/warn_on_new_version.h"

using namespace testing_support;

namespace {

class ElementStreamVersions : public ElementStreams {
protected:
    void SetUp() override {
        ElementStreams::SetUp();
        fileOwnNumber();
    }
    // What came out of a stream with one living plugin, an unknown one, properties and a log.
    void expectCommonParts(const TestElement& element) {
        ASSERT_EQ(recordingPlugins(element).size(), 1u);
        EXPECT_EQ(recordingPlugins(element)[0]->getProperties().getValueNotThrow<int>(7).value_or(0), -5);
        ASSERT_EQ(element.unknownPlugins().size(), 1u);
        EXPECT_EQ(element.unknownPlugins()[0].second->m_data->size(), 3u);
        EXPECT_TRUE(
            element.unknownPlugins()[0].second->m_properties.getValueNotThrow<bool>(4).value_or(false));
        EXPECT_EQ(element.getNodDatabaseName(), L"ASDWG");
        EXPECT_EQ(element.getProperties().getValueNotThrow<std::wstring>(1).value_or(L""), L"named");
        EXPECT_EQ(element.getLog().size(), 1u);
        EXPECT_TRUE(element.properties().empty());
        EXPECT_EQ(console.text(), L"Warning: Plugin type not registered: test.gone!\n");
    }

    TestElement element;
};

// The data of a recording plugin with the text "hi" and no ids, as they were before ids had lists.
const Lines kOldLiving = {"String test.recording", "UInt32 22",
                          "Bytes 01 00 00 00 02 00 00 00 68 69 00 00 00 00 00 00 00 00 e5 7d db af"};

// What stands in a stream of the present version in place of what older ones lack.
Lines writtenNow(const Lines& idsOfLiving, const Lines& idsOfUnknown, const Lines& livingHead,
                 const Lines& ownData) {
    return joined({{"Int32 6", "UInt32 2"},
                   livingHead,
                   idsOfLiving,
                   kLivingProperties,
                   kEmptyTree,
                   kUnknownHead,
                   idsOfUnknown,
                   kUnknownProperties,
                   kEmptyTree,
                   kLink,
                   ownData,
                   kOwnProperties,
                   kEmptyTree,
                   kOwnLog,
                   kMagic});
}

} // namespace

TEST_F(ElementStreamVersions, OneHasAFlagBehindThePluginsAndNoOwnData) {
    for (const char* const flag : {"Bool true", "Bool false"}) {
        TestElement one;
        RecordingPlugin::events.clear();
        readAll(one, joined({{"Int32 1", "UInt32 2"},
                             kOldLiving,
                             kLivingProperties,
                             kUnknownHead,
                             kUnknownProperties,
                             {flag},
                             kLink,
                             kOwnProperties,
                             kOwnLog,
                             kMagic}));
        ASSERT_EQ(recordingPlugins(one).size(), 1u);
        EXPECT_EQ(recordingPlugins(one)[0]->elementVersion, 1u);
        EXPECT_EQ(loadedVersion, 0u);
        EXPECT_EQ(linesOf(one), writtenNow(kNoIds, kNoIds, kOldLiving, kNoOwnData));
    }
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamVersions, TwoHasNoFlagAndTheElementsOwnLoadingIsNotCalled) {
    readAll(element, joined({{"Int32 2", "UInt32 2"},
                             kOldLiving,
                             kLivingProperties,
                             kUnknownHead,
                             kUnknownProperties,
                             kLink,
                             kOwnProperties,
                             kOwnLog,
                             kMagic}));
    expectCommonParts(element);
    EXPECT_EQ(recordingPlugins(element)[0]->elementVersion, 2u);
    EXPECT_EQ(loadedVersion, 0u);
    EXPECT_EQ(linesOf(element), writtenNow(kNoIds, kNoIds, kOldLiving, kNoOwnData));
}

// No release has written it. It is older than all that came later, and the flag is in that of version 1
// alone.
TEST_F(ElementStreamVersions, ZeroIsReadLikeTwo) {
    readAll(element, joined({{"Int32 0", "UInt32 2"},
                             kOldLiving,
                             kLivingProperties,
                             kUnknownHead,
                             kUnknownProperties,
                             kLink,
                             kOwnProperties,
                             kOwnLog,
                             kMagic}));
    expectCommonParts(element);
    EXPECT_EQ(recordingPlugins(element)[0]->elementVersion, 0u);
    EXPECT_EQ(loadedVersion, 0u);
    EXPECT_EQ(linesOf(element), writtenNow(kNoIds, kNoIds, kOldLiving, kNoOwnData));
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamVersions, ThreeHasOwnDataAndNeitherListsOfIdsNorTrees) {
    readAll(element, joined({{"Int32 3", "UInt32 2"},
                             kOldLiving,
                             kLivingProperties,
                             kUnknownHead,
                             kUnknownProperties,
                             kLink,
                             kOwnData,
                             kOwnProperties,
                             kOwnLog,
                             kMagic}));
    expectCommonParts(element);
    EXPECT_EQ(recordingPlugins(element)[0]->elementVersion, 3u);
    EXPECT_EQ(loadedVersion, 3u);
    EXPECT_EQ(ownNumber, 7u);
    EXPECT_EQ(linesOf(element), writtenNow(kNoIds, kNoIds, kOldLiving, kOwnData));
}

TEST_F(ElementStreamVersions, FourAndFiveHaveListsOfIdsAndNoTrees) {
    for (const int version : {4, 5}) {
        TestElement one;
        ownNumber = 0;
        readAll(one, joined({{"Int32 " + std::to_string(version), "UInt32 2"},
                             kLivingHead,
                             kLivingIds,
                             kLivingProperties,
                             kUnknownHead,
                             kUnknownIds,
                             kUnknownProperties,
                             kLink,
                             kOwnData,
                             kOwnProperties,
                             kOwnLog,
                             kMagic}));
        ASSERT_EQ(recordingPlugins(one).size(), 1u);
        EXPECT_EQ(recordingPlugins(one)[0]->elementVersion, static_cast<unsigned int>(version));
        EXPECT_EQ(recordingPlugins(one)[0]->softIds, (std::deque<AcDbObjectId>{idOf(0x2a), AcDbObjectId()}));
        EXPECT_EQ(loadedVersion, static_cast<unsigned int>(version));
        EXPECT_EQ(ownNumber, 7u);
        EXPECT_EQ(linesOf(one), writtenNow(kLivingIds, kUnknownIds, kLivingHead, kOwnData));
    }
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamVersions, InAnOldStreamTheListsOfAPluginAreEmpty) {
    // The plugin asks for ids that the stream of version 3 cannot have.
    ScriptFiler filer(joined({{"Int32 3", "UInt32 1"}, kLivingHead, kLivingProperties}));
    EXPECT_THROW(element.inStream(filer), orv::Exception);
}

TEST_F(ElementStreamVersions, AStreamWithoutTreesLeavesThatOfTheElementAlone) {
    element.properties(AcDb::kForWrite) = singleNode("e", boost::any());
    readAll(element, joined({{"Int32 5", "UInt32 0"}, kLink, kOwnData, kNoProperties, kNoLog, kMagic}));
    EXPECT_EQ(element.properties().size(), 1u);
}

TEST_F(ElementStreamVersions, TheChecksForTreesComeWithTheTrees) {
    readAll(element, joined({{"Int32 5", "UInt32 1"},
                             kEmptyLivingHead,
                             kNoIds,
                             kNoProperties,
                             kLink,
                             kOwnData,
                             kNoProperties,
                             kNoLog,
                             kMagic}));
    // The properties of the plugin and of the element, and the link.
    EXPECT_EQ(element.writeChecks, 3);
}

TEST_F(ElementStreamVersions, ANewerOneIsLeftToTheHostWithTheElementUntouched) {
    int warned = 0;
    const ORV_NewVersionSink before = orv_setNewVersionSink([&](const ORV_NewVersionWarning&) { ++warned; });
    TestElement::asked = {};
    readAll(element, fullStream());
    const Lines held = linesOf(element);
    RecordingPlugin::events.clear();
    const auto plugins = recordingPlugins(element);
    element.writeChecks = 0;
    for (const char* const version : {"Int32 7", "Int32 2147483647", "Int32 -1", "Int32 -2147483648"}) {
        Lines stream = bareStream();
        stream[0] = version;
        ScriptFiler filer(stream);
        EXPECT_EQ(static_cast<int>(element.inStream(filer)), 301) << version;
        EXPECT_EQ(filer.callCount, 1) << version;
        EXPECT_EQ(element.activeFiler(), &filer);
    }
    orv_setNewVersionSink(before);
    EXPECT_EQ(warned, 0);
    EXPECT_EQ(element.writeChecks, 0);
    EXPECT_TRUE(RecordingPlugin::events.empty());
    EXPECT_EQ(recordingPlugins(element), plugins);
    EXPECT_EQ(element.unknownPlugins().size(), 1u);
    EXPECT_EQ(linesOf(element), held);
    EXPECT_EQ(reports.size(), 0u);
}
