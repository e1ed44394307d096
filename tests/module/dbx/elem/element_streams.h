#pragma once

#include "module/dbx/elem/script_filer.h"
#include "module/dbx/elem/value_recording_filer.h"
#include "support/console_recorder.h"
#include "support/report_recorder.h"
#include "support/test_element.h"

#include "dbx/elem/ObjectProperties.h"
#include "dbx/elem/element_log.h"
#include "dbx/elem/plugin_registry.h"
#include "dbx/elem/proxy_plugin.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

// Streams of elements, written by hand line by line, and what to put into an element to get them.
namespace testing_support {

inline Lines joined(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

const Lines kNoProperties = {"UInt32 0"};
const Lines kEmptyTree = {"Int32 1", "Int8 69", "Int32 -889262164"};
const Lines kNoIds = {"UInt32 0", "UInt32 0"};
const Lines kNoLog = {"Bool false"};
const Lines kMagic = {"Int32 1935955631"};
const Lines kLink = {"HardPointerId 10", "String ASDWG"};
const Lines kNoOwnData = {"UInt32 0"};

// A RecordingPlugin with the text "hi", two soft ids and a hard one. Its data: the frame's version, length
// and characters, how many ids of each kind, the frame's end.
const Lines kLivingHead = {"String test.recording", "UInt32 22",
                           "Bytes 01 00 00 00 02 00 00 00 68 69 02 00 00 00 01 00 00 00 e5 7d db af"};
const Lines kLivingIds = {"UInt32 2", "SoftPointerId 2a", "SoftPointerId null", "UInt32 1",
                          "HardPointerId 2b"};
const Lines kLivingProperties = {"UInt32 2", "UInt32 7",  "UInt32 12", "Int32 -5",
                                 "UInt32 9", "UInt32 21", "Double 0.5"};
const Lines kLivingTree = {"Int32 1", "Int8 67", "UInt32 1", "Bytes 6b",        "Int8 105",
                           "Int32 5", "Int8 69", "Int8 69",  "Int32 -889262164"};

// A RecordingPlugin with nothing.
const Lines kEmptyLivingHead = {"String test.recording", "UInt32 20",
                                "Bytes 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 e5 7d db af"};

// A plugin of an id that nobody has registered.
const Lines kUnknownHead = {"String test.gone", "UInt32 3", "Bytes 01 02 ff"};
const Lines kUnknownIds = {"UInt32 1", "SoftPointerId 3a", "UInt32 2", "HardPointerId 3b",
                           "HardPointerId 3c"};
const Lines kUnknownProperties = {"UInt32 1", "UInt32 4", "UInt32 20", "Bool true"};
const Lines kUnknownTree = {"Int32 1",          "Int8 67", "UInt32 1", "Bytes 75",        "Int8 111",
                            "SoftPointerId 3d", "Int8 69", "Int8 69",  "Int32 -889262164"};

// What the element itself has.
const Lines kOwnData = {"UInt32 4", "Bytes 07 00 00 00"};
const Lines kOwnProperties = {"UInt32 1", "UInt32 1", "UInt32 100", "String named"};
const Lines kOwnTree = {"Int32 1", "Int8 67", "UInt32 1", "Bytes 65",
                        "Int8 78", "Int8 69", "Int8 69",  "Int32 -889262164"};
// One entry: a warning with the number 0x1000000005, of which the low half is kept, the bits 3, and the
// argument 2.
const Lines kOwnLog = {"Bool true", "Int32 1",  "UInt32 1",  "UInt32 2", "UInt32 5",
                       "UInt32 3",  "UInt32 1", "UInt32 12", "Int32 2",  "Int32 1810278167"};

// An element with all of the above, in the present version.
inline Lines fullStream() {
    return joined({{"Int32 6", "UInt32 3"},
                   kLivingHead,
                   kLivingIds,
                   kLivingProperties,
                   kLivingTree,
                   kEmptyLivingHead,
                   kNoIds,
                   kNoProperties,
                   kEmptyTree,
                   kUnknownHead,
                   kUnknownIds,
                   kUnknownProperties,
                   kUnknownTree,
                   kLink,
                   kOwnData,
                   kOwnProperties,
                   kOwnTree,
                   kOwnLog,
                   kMagic});
}

// An element without anything, but for its link.
inline Lines bareStream() {
    return joined({{"Int32 6", "UInt32 0"}, kLink, kNoOwnData, kNoProperties, kEmptyTree, kNoLog, kMagic});
}

// A stream with these plugin records and nothing else.
inline Lines streamWith(int count, const Lines& records) {
    return joined({{"Int32 6", "UInt32 " + std::to_string(count)},
                   records,
                   kLink,
                   kNoOwnData,
                   kNoProperties,
                   kEmptyTree,
                   kNoLog,
                   kMagic});
}

inline orv::PropertyTree singleNode(const std::string& key, const boost::any& value) {
    orv::PropertyTree tree;
    tree.push_back({key, orv::PropertyTree()})->second.data() = value;
    return tree;
}

// A recording plugin at the end of the list; it belongs to the element.
inline RecordingPlugin& addRecording(TestElement& element, const std::string& data = "",
                                     const std::string& id = RecordingPlugin::kRegisteredId) {
    auto* const plugin = new RecordingPlugin(id);
    plugin->data = data;
    element.addPlugin(plugin);
    return *plugin;
}

// The plugins of the element, which are all recording ones.
inline std::vector<RecordingPlugin*> recordingPlugins(const TestElement& element) {
    std::vector<RecordingPlugin*> plugins;
    for (auto held = element.getConstPluginIterator(); !held.done(); held.next())
        plugins.push_back(dynamic_cast<RecordingPlugin*>(held.get().get()));
    return plugins;
}

// Elements outside of any drawing, with everything that is reported, printed and recorded meanwhile. The
// element's own data are one number, which is `ownNumber`; none if that is 0.
class ElementStreams : public testing::Test {
protected:
    void SetUp() override {
        registerTestElement();
        RecordingPlugin::events.clear();
        TestElement::asked = {};
    }
    void TearDown() override {
        TestElement::asked = {};
        RecordingPlugin::onCreate = {};
    }

    // From now on elements have own data.
    void fileOwnNumber() {
        TestElement::asked.save = [this](const TestElement&, orv::serialization::IOutArchive& archive) {
            if (ownNumber != 0)
                archive << ownNumber;
            return true;
        };
        TestElement::asked.load = [this](TestElement&, orv::serialization::IInArchive& archive,
                                         unsigned int version) {
            loadedVersion = version;
            archive >> ownNumber;
            return true;
        };
    }

    // The lines that the element files; expects success.
    static Lines linesOf(const TestElement& element) {
        ScriptFiler filer;
        EXPECT_EQ(element.outStream(filer), Acad::eOk);
        return filer.lines;
    }
    // Reads all of the lines; expects success.
    static void readAll(TestElement& element, const Lines& lines) {
        ScriptFiler filer(lines);
        EXPECT_EQ(element.inStream(filer), Acad::eOk);
        EXPECT_TRUE(filer.isAtEnd()) << filer.next << " of " << lines.size();
    }

    unsigned int ownNumber = 0;
    unsigned int loadedVersion = 0;
    ReportRecorder reports;
    ConsoleRecorder console;
};

} // namespace testing_support
