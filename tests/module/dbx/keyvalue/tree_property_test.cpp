#include "dbx/keyvalue_serialization.h"

#include "platform/text.h"
#include "support/registry_tree.h"
#include "support/report_recorder.h"

#include <boost/optional/optional_io.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <set>

using namespace testing_support;
using orv::KeyValueSerialization;
using orv::KeyValueTreeReaderWriter;
using orv::registry;

namespace {

// A node of texts and of nodes below.
struct Node {
    std::map<std::string, std::string> texts;
    std::map<std::string, Node> nodes;

    bool operator==(const Node& other) const { return texts == other.texts && nodes == other.nodes; }
};

std::ostream& operator<<(std::ostream& out, const Node& node) {
    out << "{" << node.texts.size() << " texts";
    for (const auto& [name, below] : node.nodes)
        out << ", '" << name << "' " << below;
    return out << "}";
}

void writeNode(KeyValueTreeReaderWriter& cursor, const Node& node) {
    for (const auto& [name, text] : node.texts)
        cursor.keyvalue(name, text);
    for (const auto& [name, below] : node.nodes)
        RC_ASSERT(KeyValueSerialization::instance().tryWrite(cursor, name, boost::any(below)));
}

void readNode(KeyValueTreeReaderWriter& cursor, Node& node) {
    for (registry::iterator entry = cursor.get_keyvalue_iterator(); !entry.atEnd(); entry.next()) {
        const std::string name = platform::narrow(entry.name());
        if (entry.kind() == registry::kSubKey) {
            boost::any below;
            RC_ASSERT(KeyValueSerialization::instance().tryRead(cursor, name, below));
            node.nodes[name] = boost::any_cast<Node>(below);
        } else if (name != "__type") {
            node.texts[name] = *cursor.get_keyvalue(name);
        }
    }
}

// Any bytes without a zero, at which the system's texts end.
rc::Gen<std::string> anyText() {
    return rc::gen::container<std::string>(
        rc::gen::map(rc::gen::inRange(1, 256), [](int number) { return static_cast<char>(number); }));
}

// Names that the registry tells apart, without the one that a node's type has.
std::set<std::string> anyNames(int most) {
    std::set<std::string> names;
    std::set<std::wstring> folded = {L"__type"};
    for (int count = *rc::gen::inRange(0, most); count > 0; --count) {
        std::string name = *rc::gen::nonEmpty(anyText());
        for (char& byte : name)
            byte = byte == '\\' ? '/' : byte;
        name.resize(std::min<std::size_t>(name.size(), 254));
        if (folded.insert(platform::foldCase(platform::widen(name))).second)
            names.insert(name);
    }
    return names;
}

Node anyNode(int depth) {
    Node node;
    for (const std::string& name : anyNames(5))
        node.texts[name] = *anyText();
    if (depth > 0)
        for (const std::string& name : anyNames(4))
            node.nodes[name] = anyNode(depth - 1);
    return node;
}

class AnyTree : public RegistryTreeTest {
protected:
    AnyTree() { KeyValueSerialization::instance().addValue<Node>("node", &writeNode, &readNode); }
    ~AnyTree() override { KeyValueSerialization::instance().clear(); }
};

} // namespace

RC_GTEST_FIXTURE_PROP(AnyTree, IsReadBackAsItWasWritten, ()) {
    platform::registry::deleteKey(kWideBase);
    const Node written = anyNode(3);
    KeyValueTreeReaderWriter rw(kBase);
    const ReportRecorder reports;
    RC_ASSERT(KeyValueSerialization::instance().tryWrite(rw, "tree", boost::any(written)));
    boost::any read;
    RC_ASSERT(KeyValueSerialization::instance().tryRead(rw, "tree", read));
    RC_ASSERT(boost::any_cast<Node>(read) == written);
    orv::KeyValueStorage storage;
    rw.read(storage);
    RC_ASSERT(storage.getValue<Node>("tree") == written);
    RC_ASSERT(reports.size() == 0u);
}
