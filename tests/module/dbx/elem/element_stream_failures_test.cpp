// What goes wrong on the way of an element through a filer.

#include "base/exceptions.h"
#include "embedded/memory_filer.h"
#include "module/dbx/elem/element_streams.h"
#include "property_tree/arx/property_tree_filer.h"

#include <algorithm>
#include <stdexcept>

using namespace testing_support;
using orv::PropertyTree;
using orv::elem::ElementBase;
using orv::smartassert::Severity;

namespace {

class ElementStreamFailures : public ElementStreams {
protected:
    // The status of reading the lines, of which `calls` are asked for; -1 for all.
    int read(const Lines& lines, int calls = -1) {
        ScriptFiler filer(lines);
        const Acad::ErrorStatus es = element.inStream(filer);
        EXPECT_EQ(filer.callCount, calls < 0 ? static_cast<int>(lines.size()) : calls);
        EXPECT_EQ(element.activeFiler() == nullptr, es == Acad::eOk);
        return static_cast<int>(es);
    }
    void expectReport(std::size_t index, const std::string& condition, Severity severity,
                      const std::string& message, const Values& values = {}) {
        ASSERT_LT(index, reports.size());
        EXPECT_EQ(reports.at(index).condition, condition);
        EXPECT_EQ(reports.at(index).severity, severity);
        EXPECT_EQ(reports.at(index).message, message);
        EXPECT_EQ(reports.at(index).values, values);
    }
    // A record of a plugin that nobody knows, with a block of so many bytes.
    static Lines unknownOfSize(std::size_t size) {
        std::string bytes = "Bytes";
        for (std::size_t i = 0; i < size; ++i)
            bytes += " 5a";
        return joined({{"String test.gone", "UInt32 " + std::to_string(size), bytes},
                       kNoIds,
                       kNoProperties,
                       kEmptyTree});
    }

    TestElement element;
};

// The reports of calls that failed, by the expressions that they give; other ones by their conditions.
Texts expressionsOf(const ReportRecorder& reports) {
    Texts texts;
    for (const orv::smartassert::Report& report : reports.reports())
        texts.push_back(report.condition == "es == es2" ? report.values.at(0).value : report.condition);
    return texts;
}

// Where a call of the full stream stands among the keys, types and values of the properties: 0, 1 or 2; or
// -1.
int partOfProperty(int call) {
    const Lines stream = fullStream();
    for (const Lines& block : {kLivingProperties, kUnknownProperties, kOwnProperties}) {
        const auto found = std::search(stream.begin(), stream.end(), block.begin(), block.end());
        const int behindCount = call - static_cast<int>(found - stream.begin()) - 1;
        if (behindCount >= 0 && behindCount < static_cast<int>(block.size()) - 1)
            return behindCount % 3;
    }
    return -1;
}

// The same for the type and the value of the log's one argument: 1, 2 or -1. The ends of log and stream are
// behind it.
int partOfArgument(int call) {
    const int part = call - static_cast<int>(fullStream().size()) + 5;
    return part == 1 || part == 2 ? part : -1;
}

const Lines kLivingRecord = joined({kLivingHead, kLivingIds, kLivingProperties, kLivingTree});
const std::string kIdCondition = "pluginId.isAscii() && !pluginId.isEmpty()";
const std::string kPluginLimit = "pluginDataSize <= (1024*10)";
const std::string kPluginLimitMessage = "Sanity check. Maximum of 10K data per plugin!";

} // namespace

TEST_F(ElementStreamFailures, EveryCallThatFailsEndsTheReadingWithItsStatus) {
    fileOwnNumber();
    const Lines stream = fullStream();
    for (int call = 0; call < static_cast<int>(stream.size()); ++call) {
        SCOPED_TRACE(stream[static_cast<std::size_t>(call)]);
        TestElement one;
        reports.clear();
        ScriptFiler filer(stream);
        filer.failAt = call;
        filer.failure = Acad::eOutOfDisk;
        EXPECT_EQ(one.inStream(filer), Acad::eOutOfDisk);
        // A key or a type id that fails is noticed at the value behind it.
        EXPECT_LE(filer.callCount, call + 3);
        EXPECT_EQ(filer.next, static_cast<std::size_t>(call));
        EXPECT_EQ(one.activeFiler(), &filer);
        // Values check their own call, and that of a key or a type ahead of them.
        const bool isOfValue = partOfProperty(call) >= 0 || partOfArgument(call) >= 0;
        EXPECT_EQ(expressionsOf(reports), isOfValue ? (Texts{"es", "errorStatus"}) : Texts{"errorStatus"});
    }
}

TEST_F(ElementStreamFailures, EveryCallThatFailsEndsTheWritingWithItsStatus) {
    fileOwnNumber();
    readAll(element, fullStream());
    const Lines stream = fullStream();
    for (int call = 0; call < static_cast<int>(stream.size()); ++call) {
        SCOPED_TRACE(stream[static_cast<std::size_t>(call)]);
        reports.clear();
        ScriptFiler filer;
        filer.failAt = call;
        filer.failure = Acad::eOutOfDisk;
        EXPECT_EQ(element.outStream(filer), Acad::eOutOfDisk);
        EXPECT_LE(filer.callCount, call + 3);
        EXPECT_EQ(filer.lines, Lines(stream.begin(), stream.begin() + call));
        EXPECT_EQ(element.activeFiler(), &filer);
        Texts expected = {"errorStatus"};
        if (partOfProperty(call) > 0)
            expected = {"es", "errorStatus"};
        else if (partOfArgument(call) == 1)
            expected = {"filer.writeUInt32(Adesk::UInt32(id))", "es", "es == Acad::eOk", "errorStatus"};
        else if (partOfArgument(call) == 2)
            expected = {"es", "es == Acad::eOk", "errorStatus"};
        EXPECT_EQ(expressionsOf(reports), expected);
    }
    // Nothing of the failures stays.
    EXPECT_EQ(linesOf(element), stream);
    EXPECT_EQ(element.activeFiler(), nullptr);
}

TEST_F(ElementStreamFailures, ABlockThatCannotBeReadIsReportedOnceByTheCallItself) {
    for (const Lines& stream : {streamWith(1, kLivingRecord), streamWith(1, kUnknownHead),
                                joined({{"Int32 6", "UInt32 0"}, kLink, kOwnData})}) {
        const auto block = std::find_if(stream.begin(), stream.end(), [](const std::string& line) {
            return line.compare(0, 6, "Bytes ") == 0;
        });
        reports.clear();
        ScriptFiler filer(stream);
        filer.failAt = static_cast<int>(block - stream.begin());
        EXPECT_EQ(element.inStream(filer), Acad::eFilerError);
        ASSERT_EQ(reports.conditions(), Texts{"es == es2"});
        const Values& values = reports.at(0).values;
        ASSERT_EQ(values.size(), 5u);
        EXPECT_EQ(values[0], (orv::smartassert::NamedValue{"expression", "errorStatus"}));
        const std::string& file = values[3].value;
        ASSERT_GE(file.size(), 13u);
        EXPECT_EQ(file.substr(file.size() - 13), "base/blob.cpp");
    }
}

TEST_F(ElementStreamFailures, AWrongEndIsFoundAfterEverythingHasBeenRead) {
    Lines stream = fullStream();
    stream.back() = "Int32 5";
    TestElement::asked.load = [](TestElement&, orv::serialization::IInArchive&, unsigned int) {
        return true;
    };
    EXPECT_EQ(read(stream), 301);
    expectReport(0, "magic == kMagic", Severity::kDebug, "Filing error. Possible reason: data corruption.",
                 {{"magic", "5"}, {"kMagic", "1935955631"}});
    EXPECT_EQ(reports.size(), 1u);
    EXPECT_EQ(recordingPlugins(element).size(), 2u);
    EXPECT_EQ(element.getLog().size(), 1u);
}

TEST_F(ElementStreamFailures, APluginThatDoesNotLoadMakesAProxyOfTheElement) {
    int made = 0;
    RecordingPlugin::onCreate = [&made](RecordingPlugin& plugin) { plugin.loads = ++made != 2; };
    const Lines stream = streamWith(3, joined({kLivingRecord, kLivingRecord, kLivingRecord}));
    // Version, count, the first record, and of the second all that stands ahead of its properties.
    const auto recordLength = static_cast<int>(kLivingRecord.size());
    const auto headLength = static_cast<int>(kLivingHead.size() + kLivingIds.size());
    EXPECT_EQ(read(stream, 2 + recordLength + headLength), 301);
    EXPECT_EQ(console.text(), L"Warning: Failed to de-serialize plugin: test.recording!\n");
    EXPECT_EQ(recordingPlugins(element).size(), 1u);
    EXPECT_EQ(made, 2);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamFailures, APluginBlockWithAWrongEndMakesAProxyOfTheElement) {
    Lines record = kLivingRecord;
    record[2].replace(record[2].size() - 2, 2, "ae");
    EXPECT_EQ(read(streamWith(1, record), 2 + static_cast<int>(kLivingHead.size() + kLivingIds.size())), 301);
    EXPECT_EQ(console.text(), L"Warning: Failed to de-serialize plugin: test.recording!\n");
    expectReport(0, "magic == kMagic", Severity::kDebug, "filing error",
                 {{"magic", "2933620197"}, {"kMagic", "2950397413"}});
}

TEST_F(ElementStreamFailures, AnElementThatDoesNotLoadMakesAProxyOfItself) {
    TestElement::asked.load = [](TestElement&, orv::serialization::IInArchive&, unsigned int) {
        return false;
    };
    const Lines stream = bareStream();
    // Version, count, link and the size of the data.
    EXPECT_EQ(read(stream, 5), 301);
    EXPECT_EQ(console.text(), L"Warning: Failed to de-serialize self!\n");
    EXPECT_EQ(element.getNodDatabaseName(), L"ASDWG");
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamFailures, WhatTheElementAnswersWhenItSavesIsNotAsked) {
    TestElement::asked.save = [](const TestElement&, orv::serialization::IOutArchive& archive) {
        archive << 7u;
        return false;
    };
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    EXPECT_EQ(linesOf(element),
              joined({{"Int32 6", "UInt32 0"}, kLink, kOwnData, kNoProperties, kEmptyTree, kNoLog, kMagic}));
}

TEST_F(ElementStreamFailures, APluginThatDoesNotSaveLeavesItsFrameOpenAndTheElementIsSaved) {
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    addRecording(element).saves = false;
    const Lines stream = streamWith(1, joined({{"String test.recording", "UInt32 16",
                                                "Bytes 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"},
                                               kNoIds,
                                               kNoProperties,
                                               kEmptyTree}));
    EXPECT_EQ(linesOf(element), stream);
    EXPECT_EQ(reports.size(), 0u);
    // Such a record does not load again.
    ScriptFiler filer(stream);
    TestElement back;
    EXPECT_THROW(back.inStream(filer), orv::Exception);
}

TEST_F(ElementStreamFailures, AnArchiveThatEndsEarlyThrowsThroughTheReading) {
    Lines record = kLivingRecord;
    record[1] = "UInt32 5";
    record[2] = "Bytes 01 00 00 00 02";
    ScriptFiler filer(streamWith(1, record));
    try {
        element.inStream(filer);
        FAIL();
    } catch (const orv::Exception& thrown) {
        EXPECT_STREQ(thrown.what(), "filer error");
    }
    EXPECT_EQ(element.activeFiler(), &filer);
    EXPECT_TRUE(recordingPlugins(element).empty());
}

TEST_F(ElementStreamFailures, WhatAPluginThrowsPassesThrough) {
    RecordingPlugin::onCreate = [](RecordingPlugin& plugin) {
        plugin.onHook = [](const std::string& hook) {
            if (hook == "onLoad")
                throw orv::Exception("own");
        };
    };
    ScriptFiler in(fullStream());
    EXPECT_THROW(element.inStream(in), orv::Exception);
    EXPECT_EQ(element.activeFiler(), &in);
    RecordingPlugin& plugin = addRecording(element);
    plugin.onHook = [](const std::string& hook) {
        if (hook == "onSave")
            throw std::runtime_error("own");
    };
    ScriptFiler out;
    EXPECT_THROW(element.outStream(out), std::runtime_error);
    EXPECT_EQ(out.lines, (Lines{"Int32 6", "UInt32 1"}));
    EXPECT_EQ(element.activeFiler(), &out);
}

TEST_F(ElementStreamFailures, WhatTheElementsOwnHooksThrowPassesThrough) {
    TestElement::asked.save = [](const TestElement&, orv::serialization::IOutArchive&) -> bool {
        throw orv::Exception("own");
    };
    TestElement::asked.load = [](TestElement&, orv::serialization::IInArchive& archive, unsigned int) {
        unsigned int missing = 0;
        archive >> missing;
        return true;
    };
    ScriptFiler in(bareStream());
    EXPECT_THROW(element.inStream(in), orv::Exception);
    ScriptFiler out;
    EXPECT_THROW(element.outStream(out), orv::Exception);
}

TEST_F(ElementStreamFailures, APluginBlockUpToTheLimitIsNotReported) {
    readAll(element, streamWith(1, unknownOfSize(10240)));
    EXPECT_EQ(linesOf(element), streamWith(1, unknownOfSize(10240)));
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(ElementStreamFailures, APluginBlockBeyondTheLimitIsReportedAndReadAndWrittenWhole) {
    readAll(element, streamWith(1, unknownOfSize(10241)));
    EXPECT_EQ(reports.size(), 1u);
    expectReport(0, kPluginLimit, Severity::kDebug, kPluginLimitMessage);
    EXPECT_EQ(element.unknownPlugins().at(0).second->m_data->size(), 10241u);
    EXPECT_EQ(linesOf(element), streamWith(1, unknownOfSize(10241)));
    EXPECT_EQ(reports.size(), 2u);
    expectReport(1, kPluginLimit, Severity::kDebug, kPluginLimitMessage);
}

TEST_F(ElementStreamFailures, ALivingPluginsBlockBeyondTheLimitIsReportedAndWrittenWhole) {
    // The frame and the counts take 20 bytes.
    addRecording(element, std::string(10220, 'x'));
    linesOf(element);
    EXPECT_EQ(reports.size(), 0u);
    recordingPlugins(element)[0]->data += 'x';
    const Lines lines = linesOf(element);
    EXPECT_EQ(lines[3], "UInt32 10241");
    EXPECT_EQ(lines[4].size(), 5u + 3u * 10241u);
    EXPECT_EQ(reports.size(), 1u);
    expectReport(0, kPluginLimit, Severity::kDebug, kPluginLimitMessage);
    TestElement back;
    ScriptFiler filer(lines);
    EXPECT_EQ(back.inStream(filer), Acad::eOk);
    EXPECT_EQ(recordingPlugins(back).at(0)->data.size(), 10221u);
}

TEST_F(ElementStreamFailures, OwnDataBeyondTheLimitAreReportedWhenTheyAreReadAlone) {
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    std::size_t size = 10240;
    TestElement::asked.save = [&size](const TestElement&, orv::serialization::IOutArchive& archive) {
        for (std::size_t i = 0; i < size; ++i)
            archive << static_cast<unsigned char>(0x5a);
        return true;
    };
    readAll(element, linesOf(element));
    EXPECT_EQ(reports.size(), 0u);
    size = 10241;
    const Lines lines = linesOf(element);
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_EQ(lines[4], "UInt32 10241");
    readAll(element, lines);
    EXPECT_EQ(reports.size(), 1u);
    expectReport(0, "dataSize <= (1024*10)", Severity::kDebug,
                 "Sanity check. Maximum of 10K data per element base!");
}

TEST_F(ElementStreamFailures, AThousandPluginsAreReportedAndRead) {
    const Lines record = joined({{"String test.gone", "UInt32 0"}, kNoIds, kNoProperties, kEmptyTree});
    Lines records;
    for (int i = 0; i < 999; ++i)
        records.insert(records.end(), record.begin(), record.end());
    readAll(element, streamWith(999, records));
    EXPECT_EQ(reports.size(), 0u);
    records.insert(records.end(), record.begin(), record.end());
    readAll(element, streamWith(1000, records));
    EXPECT_EQ(reports.size(), 1u);
    expectReport(0, "(numPlugins >= 0) && (numPlugins < 1000)", Severity::kDebug,
                 "Sanity check. We don't expect more than 1000 plugins.", {{"numPlugins", "1000"}});
    EXPECT_EQ(element.unknownPlugins().size(), 1000u);
}

TEST_F(ElementStreamFailures, ACountThatTheStreamDoesNotHoldEndsWithTheStream) {
    EXPECT_EQ(read({"Int32 6", "UInt32 4294967295"}, 3), static_cast<int>(Acad::eEndOfObject));
    expectReport(0, "(numPlugins >= 0) && (numPlugins < 1000)", Severity::kDebug,
                 "Sanity check. We don't expect more than 1000 plugins.", {{"numPlugins", "4294967295"}});
    const Lines head = {"Int32 6", "UInt32 1", "String test.gone", "UInt32 0"};
    EXPECT_EQ(read(joined({head, {"UInt32 4294967295"}}), 6), static_cast<int>(Acad::eEndOfObject));
    EXPECT_EQ(read(joined({head, {"UInt32 0", "UInt32 4294967295"}}), 7),
              static_cast<int>(Acad::eEndOfObject));
}

TEST_F(ElementStreamFailures, AnElementOfNoStoreIsReportedAndRead) {
    const auto linkedTo = [](const char* id, const char* name) {
        return joined(
            {{"Int32 6", "UInt32 0", id, name}, kNoOwnData, kNoProperties, kEmptyTree, kNoLog, kMagic});
    };
    element.setNodDatabaseId(idOf(5), L"OLD");
    EXPECT_EQ(read(linkedTo("HardPointerId null", "String ")), 0);
    EXPECT_EQ(reports.size(), 1u);
    expectReport(0, "!id.isNull() || !name.isEmpty()", Severity::kWarning,
                 "filer: SE object does not belong to a database");
    EXPECT_TRUE(element.getNodDatabaseId().isNull());
    EXPECT_TRUE(element.getNodDatabaseName().empty());
    // One of the two is enough.
    EXPECT_EQ(read(linkedTo("HardPointerId 10", "String ")), 0);
    EXPECT_EQ(read(linkedTo("HardPointerId null", "String ASDWG")), 0);
    EXPECT_EQ(reports.size(), 1u);
    EXPECT_EQ(element.getNodDatabaseName(), L"ASDWG");
}

TEST_F(ElementStreamFailures, AnEmptyIdOfAPluginIsReportedBothWays) {
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    addRecording(element, "", "");
    const Lines stream = streamWith(
        1,
        joined({{"String ", kEmptyLivingHead[1], kEmptyLivingHead[2]}, kNoIds, kNoProperties, kEmptyTree}));
    EXPECT_EQ(linesOf(element), stream);
    EXPECT_EQ(reports.conditions(), Texts{kIdCondition});
    TestElement back;
    readAll(back, stream);
    EXPECT_EQ(reports.conditions(), (Texts{kIdCondition, kIdCondition}));
    EXPECT_EQ(console.text(), L"Warning: Plugin type not registered: !\n");
    EXPECT_EQ(linesOf(back), stream);
}

TEST_F(ElementStreamFailures, AnIdOfAPluginBeyondAsciiIsReportedBothWays) {
    Lines record = kUnknownHead;
    record[0] = "String test.\xc3\xa4";
    const Lines stream = streamWith(1, joined({record, kNoIds, kNoProperties, kEmptyTree}));
    readAll(element, stream);
    EXPECT_EQ(reports.conditions(), Texts{kIdCondition});
    EXPECT_EQ(console.text(), L"Warning: Plugin type not registered: test.\u00E4!\n");
    EXPECT_EQ(element.unknownPlugins().front().first, "test.\xc3\xa4") << "UTF-8, which the writer takes";
    EXPECT_EQ(linesOf(element), stream);
    EXPECT_EQ(reports.conditions(), (Texts{kIdCondition, kIdCondition}));
}

TEST_F(ElementStreamFailures, AnIdWithoutANarrowFormIsKeptUnknown) {
    // Half of a character of two units; only raw units can hold that.
    readAll(element, streamWith(1, joined({kUnknownHead, kNoIds, kNoProperties, kEmptyTree})));
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    ASSERT_EQ(element.outStream(out), Acad::eOk);
    // Version, count, length of the id; then its units.
    bytes.at(12) = 0x00;
    bytes.at(13) = 0xD8;
    const std::wstring before = console.text();
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    EXPECT_EQ(element.inStream(in), Acad::eOk);
    EXPECT_EQ(console.text().substr(before.size()), L"Warning: Cannot handle 0 type!\n");
    EXPECT_EQ(reports.conditions(), (Texts{kIdCondition, "pluginId.kszPtr()"}));
    ASSERT_EQ(element.unknownPlugins().size(), 1u);
    EXPECT_EQ(element.unknownPlugins()[0].second->m_data->size(), 3u);
    // It is written as it came.
    std::vector<std::uint8_t> again;
    embedded::MemoryFiler back(AcDb::kCopyFiler, again);
    EXPECT_EQ(element.outStream(back), Acad::eOk);
    EXPECT_EQ(again, bytes);
}

TEST_F(ElementStreamFailures, AnUnknownPluginWithoutDataIsReportedAndLeftOut) {
    readAll(element, streamWith(2, joined({kUnknownHead,
                                           kUnknownIds,
                                           kUnknownProperties,
                                           kUnknownTree,
                                           {"String test.away", "UInt32 0"},
                                           kNoIds,
                                           kNoProperties,
                                           kEmptyTree})));
    element.unknownPlugins()[0].second->m_data.reset();
    const Lines rest = joined({{"String test.away", "UInt32 0"}, kNoIds, kNoProperties, kEmptyTree});
    // The count includes it all the same.
    EXPECT_EQ(linesOf(element), streamWith(2, rest));
    EXPECT_EQ(reports.conditions(), Texts{"plugin.m_data"});
    reports.clear();
    const_cast<ElementBase::UnknownPlugins&>(element.unknownPlugins())[0].second.reset();
    EXPECT_EQ(linesOf(element), streamWith(2, rest));
    EXPECT_EQ(reports.conditions(), Texts{"itPlugin->second"});
}

TEST_F(ElementStreamFailures, ANullEntryAmongThePluginsIsReportedAndLeftOut) {
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    addRecording(element);
    addRecording(element);
    const_cast<boost::shared_ptr<ElementBase::IPlugin>&>(*element.getConstPluginIterator().begin()).reset();
    EXPECT_EQ(linesOf(element), streamWith(2, joined({kEmptyLivingHead, kNoIds, kNoProperties, kEmptyTree})));
    EXPECT_EQ(reports.conditions(), Texts{"plugin"});
}

TEST_F(ElementStreamFailures, APropertyThatCannotBeFiledStopsTheWriting) {
    RecordingPlugin& plugin = addRecording(element);
    plugin.setProperties().add(1, std::string("narrow"));
    ScriptFiler filer;
    EXPECT_EQ(static_cast<int>(element.outStream(filer)), 301);
    EXPECT_EQ(filer.lines.back(), "UInt32 1");
    plugin.setProperties().clear();
    plugin.properties(AcDb::kForWrite) = singleNode("k", boost::any(1u));
    EXPECT_EQ(static_cast<int>(element.outStream(filer)), 22);
}

TEST_F(ElementStreamFailures, ATreeThatIsTooDeepStopsTheWriting) {
    PropertyTree tree;
    PropertyTree* node = &tree;
    for (std::size_t depth = 0; depth < orv::property_tree::kMaxDepth; ++depth)
        node = &node->push_back({"n", PropertyTree()})->second;
    element.properties(AcDb::kForWrite) = tree;
    ScriptFiler filer;
    EXPECT_EQ(element.outStream(filer), Acad::eOk);
    node->push_back({"n", PropertyTree()});
    element.properties(AcDb::kForWrite) = tree;
    EXPECT_EQ(static_cast<int>(element.outStream(filer)), 33);
    element.properties(AcDb::kForWrite) = PropertyTree(boost::any(1));
    EXPECT_EQ(static_cast<int>(element.outStream(filer)), 3);
}

TEST_F(ElementStreamFailures, APropertyOfAnUnknownTypeMakesAProxyOfTheElement) {
    const Lines head = {"Int32 6", "UInt32 0"};
    EXPECT_EQ(read(joined({head, kLink, kNoOwnData, {"UInt32 1", "UInt32 5", "UInt32 999"}})), 301);
    const Lines unknownTag = {"Int32 1", "Int8 67", "UInt32 1", "Bytes 6b", "Int8 33"};
    EXPECT_EQ(read(joined({head, kLink, kNoOwnData, kNoProperties, unknownTag})), 22);
}

TEST_F(ElementStreamFailures, ALogThatCannotBeReadMakesAProxyOfTheElement) {
    const Lines before =
        joined({{"Int32 6", "UInt32 0"}, kLink, kNoOwnData, kNoProperties, kEmptyTree, {"Bool true"}});
    EXPECT_EQ(read(joined({before, {"Int32 2"}})), 301);
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_EQ(read(joined({before, {"Int32 1", "UInt32 0", "Int32 0"}})), 301);
    EXPECT_EQ(reports.size(), 1u);
    expectReport(0, "magic == kMagic", Severity::kDebug, "Filing error. Possible reason: data corruption.",
                 {{"magic", "0"}, {"kMagic", "1810278167"}});
    // The log that the element had is gone.
    element.assertLog().append(orv::kLogError, 1, 1);
    EXPECT_EQ(read(joined({before, {"Int32 2"}})), 301);
    EXPECT_EQ(element.getLog().size(), 0u);
}

TEST_F(ElementStreamFailures, ALogWithAnArgumentThatCannotBeFiledIsWrittenAndNotReadAgain) {
    element.setNodDatabaseId(idOf(0x10), L"ASDWG");
    element.assertLog().append(orv::kLogError, 5, boost::any(std::string("narrow")), 6);
    std::vector<std::uint8_t> bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    EXPECT_EQ(element.outStream(out), Acad::eOk);
    EXPECT_EQ(reports.conditions(), (Texts{"it != m_out.end()", "es == Acad::eOk"}));
    expectReport(1, "es == Acad::eOk", Severity::kWarning, "no filer available!");
    reports.clear();
    // The end of the log is taken for the type of the argument.
    TestElement back;
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    EXPECT_EQ(static_cast<int>(back.inStream(in)), 301);
    EXPECT_EQ(in.left(), 4u);
    EXPECT_EQ(reports.conditions(), (Texts{"it != m_id2in.end()", "es == es2"}));
    EXPECT_TRUE(back.isLogEmpty());
}

TEST_F(ElementStreamFailures, AKeyThatIsTwiceAmongThePropertiesThrowsThroughTheReading) {
    const Lines twice = {"UInt32 2", "UInt32 7", "UInt32 12", "Int32 -5", "UInt32 7", "UInt32 12", "Int32 6"};
    const Lines ofElement = joined({{"Int32 6", "UInt32 0"}, kLink, kNoOwnData, twice});
    const Lines ofLiving = joined({{"Int32 6", "UInt32 1"}, kLivingHead, kLivingIds, twice});
    const Lines ofUnknown = joined({{"Int32 6", "UInt32 1"}, kUnknownHead, kUnknownIds, twice});
    for (const Lines& stream : {ofElement, ofLiving, ofUnknown}) {
        ScriptFiler filer(stream);
        EXPECT_THROW(element.inStream(filer), orv::AlreadyExistsException);
        EXPECT_TRUE(filer.isAtEnd());
        EXPECT_EQ(element.activeFiler(), &filer);
        EXPECT_TRUE(recordingPlugins(element).empty());
        EXPECT_TRUE(element.unknownPlugins().empty());
    }
}

TEST_F(ElementStreamFailures, AfterAFailureThePluginsAreThoseReadSoFar) {
    addRecording(element, "old");
    const Lines stream = streamWith(3, joined({kLivingRecord, kLivingRecord, kLivingRecord}));
    ScriptFiler filer(stream);
    filer.failAt = 2 + 2 * static_cast<int>(kLivingRecord.size());
    EXPECT_EQ(element.inStream(filer), Acad::eFilerError);
    ASSERT_EQ(recordingPlugins(element).size(), 2u);
    EXPECT_EQ(recordingPlugins(element)[0]->data, "hi");
    // The next filing sets things right again.
    readAll(element, bareStream());
    EXPECT_TRUE(recordingPlugins(element).empty());
}
