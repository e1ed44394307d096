#include "dbx/keyvalue_serialization.h"

#include "support/beep_recorder.h"
#include "support/log_recorder.h"
#include "support/registry_tree.h"
#include "support/report_recorder.h"

#include <boost/optional/optional_io.hpp>
#include <gtest/gtest.h>

using namespace testing_support;
using orv::KeyValueSerialization;
using orv::KeyValueStorage;
using orv::KeyValueTreeReaderWriter;
using orv::registry;

namespace {

class KeyValueTree : public RegistryTreeTest {
protected:
    ~KeyValueTree() override { KeyValueSerialization::instance().clear(); }

    // Registers a type that is kept as the number in "n".
    static void registerNumbers() {
        KeyValueSerialization::instance().addValue<int>(
            "number",
            [](KeyValueTreeReaderWriter& cursor, const int& number) {
                orv::writeKeyValue(cursor, "n", number);
            },
            [](KeyValueTreeReaderWriter& cursor, int& number) {
                number = orv::readKeyValue(cursor, "n", -1);
            });
    }

    KeyValueTreeReaderWriter rw{kBase};
};

} // namespace

TEST_F(KeyValueTree, APathIsTheBaseAndTheOpenNodes) {
    LogRecorder log("KeyValueTreeReaderWriter");
    rw.keyvalue("k", "0");
    rw.nodeBegin("a").nodeBegin("b").keyvalue("k", "1");
    rw.nodeEnd().keyvalue("k", "2");
    EXPECT_EQ(log.messages(), (Texts{"3 Software\\TaldorkTest\\k", "3 Software\\TaldorkTest\\a\\b\\k",
                                     "3 Software\\TaldorkTest\\a\\k"}));
    EXPECT_EQ(stored(L"", L"k"), L"0");
    EXPECT_EQ(stored(L"\\a\\b", L"k"), L"1");
    EXPECT_EQ(stored(L"\\a", L"k"), L"2");
}

TEST_F(KeyValueTree, ANodeEndBringsReadsAndWalksBackToTheOuterNode) {
    rw.keyvalue("k", "outer").nodeBegin("a").keyvalue("k", "inner");
    EXPECT_EQ(rw.get_keyvalue("k"), boost::optional<std::string>("inner"));
    rw.nodeEnd();
    EXPECT_EQ(rw.get_keyvalue("k"), boost::optional<std::string>("outer"));
    EXPECT_EQ(rw.get_keyvalue_iterator().name(), L"k");
}

TEST_F(KeyValueTree, AValueIsATextWithoutItsTerminator) {
    rw.keyvalue("three", "abc").keyvalue("none", "").keyvalue("bytes", "\xC3\x9C");
    EXPECT_EQ(storedValues(L""), (std::vector<std::wstring>{L"three 1 6", L"none 1 0", L"bytes 1 4"}));
    EXPECT_EQ(stored(L"", L"bytes"), L"\u00C3\u009C");
    EXPECT_EQ(rw.get_keyvalue("bytes"), boost::optional<std::string>("\xC3\x9C"));
    EXPECT_EQ(rw.get_keyvalue("none"), boost::optional<std::string>(""));
}

TEST_F(KeyValueTree, AKeyMayHoldASlashAndTakesTheLastText) {
    rw.keyvalue("cases/0", "1").keyvalue("cases/0", "2");
    EXPECT_EQ(storedValues(L""), (std::vector<std::wstring>{L"cases/0 1 2"}));
    EXPECT_EQ(rw.get_keyvalue("CASES/0"), boost::optional<std::string>("2"));
}

TEST_F(KeyValueTree, AMissingValueIsNoneOrTheDefault) {
    EXPECT_EQ(rw.get_keyvalue("k"), boost::none);
    EXPECT_EQ(rw.get_keyvalue("k", "default"), "default");
    EXPECT_EQ(rw.nodeBegin("nowhere").get_keyvalue("k"), boost::none);
    rw.keyvalue("k", "there");
    EXPECT_EQ(rw.get_keyvalue("k", "default"), "there");
}

TEST_F(KeyValueTree, AValueThatIsNoTextIsNone) {
    platform::registry::createKey(kWideBase);
    platform::registry::setNumber(kWideBase, L"k", 7);
    EXPECT_EQ(rw.get_keyvalue("k"), boost::none);
    EXPECT_EQ(rw.get_keyvalue("k", "default"), "default");
}

TEST_F(KeyValueTree, WithoutABasePathItBeginsAtTheUsersOwnTree) {
    KeyValueTreeReaderWriter root;
    root.nodeBegin("Software").nodeBegin("TaldorkTest").keyvalue("k", "v");
    EXPECT_EQ(stored(L"", L"k"), L"v");
    EXPECT_EQ(root.get_keyvalue("k"), boost::optional<std::string>("v"));
}

TEST_F(KeyValueTree, AWriteThatFailsIsToldOnStandardErrorAlone) {
    const WideErrorRecorder errors;
    ReportRecorder reports;
    EXPECT_EQ(&rw.nodeBegin(std::string(300, 'n')).keyvalue("k", "v"), &rw);
    const std::wstring told = errors.text();
    EXPECT_EQ(told.find(L"registry::set(): "), 0u);
    EXPECT_EQ(told.find(L'\n'), told.size() - 1);
    EXPECT_EQ(rw.get_keyvalue("k"), boost::none);
    EXPECT_EQ(reports.size(), 0u);
}

TEST_F(KeyValueTree, OneNodeEndTooManyIsReportedAndStaysAtTheBase) {
    ReportRecorder reports;
    rw.nodeEnd().keyvalue("k", "v");
    EXPECT_EQ(reports.conditions(), Texts{"!m_nodes.empty()"});
    EXPECT_EQ(stored(L"", L"k"), L"v");
}

TEST_F(KeyValueTree, ReadFillsTheStorageFromTheNodesBelow) {
    registerNumbers();
    auto& types = KeyValueSerialization::instance();
    ASSERT_TRUE(types.tryWrite(rw, "one", boost::any(1)));
    ASSERT_TRUE(types.tryWrite(rw, "two", boost::any(2)));
    LogRecorder log("KeyValueTreeReaderWriter::tryRead");
    ReportRecorder reports;
    KeyValueStorage storage;
    rw.read(storage);
    EXPECT_EQ(storage.getValue<int>("one"), 1);
    EXPECT_EQ(storage.getValue<int>("two"), 2);
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_EQ(log.messages(), (Texts{"3 Software\\TaldorkTest"}));
}

TEST_F(KeyValueTree, ReadOnAMissingKeyLeavesTheStorageAsItWas) {
    LogRecorder log("KeyValueTreeReaderWriter::tryRead");
    KeyValueStorage storage;
    storage.set("one", 5);
    rw.nodeBegin("nowhere").read(storage);
    EXPECT_EQ(storage.getValue<int>("one"), 5);
    EXPECT_EQ(log.messages(), (Texts{"3 Software\\TaldorkTest\\nowhere"}));
}

TEST_F(KeyValueTree, ReadOverAPlainValueStoresItsNameEmptyAndGoesOn) {
    registerNumbers();
    rw.keyvalue("plain", "text").keyvalue("other", "text");
    KeyValueSerialization::instance().tryWrite(rw, "two", boost::any(2));
    LogRecorder log("KeyValueTreeReaderWriter::tryRead");
    LogRecorder failures("KeyValueSerialization::tryRead");
    ReportRecorder reports;
    KeyValueStorage storage;
    storage.set("plain", 5);
    rw.read(storage);
    EXPECT_TRUE(storage.get("plain").empty()) << "what stood there is replaced";
    EXPECT_TRUE(storage.get("other").empty());
    EXPECT_EQ(storage.getValue<int>("two"), 2);
    EXPECT_EQ(reports.conditions(), (Texts{"type", "type"}));
    EXPECT_EQ(failures.messages(),
              (Texts{"3 FAILED to read __type for id 'plain'", "3 FAILED to read __type for id 'other'"}));
    EXPECT_EQ(log.messages(), (Texts{"3 Software\\TaldorkTest-> failed to read-> failed to read"}));
    EXPECT_EQ(rw.get_keyvalue("plain", ""), "text") << "the cursor is where it was";
}

TEST_F(KeyValueTree, APlainValueDoesNotHideTheNodeOfItsName) {
    registerNumbers();
    rw.keyvalue("one", "text");
    KeyValueSerialization::instance().tryWrite(rw, "one", boost::any(1));
    LogRecorder log("KeyValueTreeReaderWriter::tryRead");
    ReportRecorder reports;
    KeyValueStorage storage;
    rw.read(storage);
    EXPECT_EQ(storage.getValue<int>("one"), 1);
    EXPECT_EQ(reports.size(), 0u) << "both entries of that name read the node";
    EXPECT_EQ(log.messages(), (Texts{"3 Software\\TaldorkTest"}));
    EXPECT_EQ(rw.get_keyvalue("one", ""), "text");
}

TEST_F(KeyValueTree, ATypedReadConvertsTheText) {
    rw.keyvalue("int", "-12").keyvalue("double", "0.1").keyvalue("yes", "1").keyvalue("text", "a b");
    BeepRecorder beeps;
    EXPECT_EQ(orv::readKeyValue(rw, "int", 5), -12);
    EXPECT_EQ(orv::readKeyValue(rw, "double", 5.0), 0.1);
    EXPECT_TRUE(orv::readKeyValue(rw, "yes", false));
    EXPECT_EQ(orv::readKeyValue<std::string>(rw, "text", ""), "a b");
    EXPECT_EQ(orv::readKeyValue(rw, "missing", 5), 5);
    EXPECT_TRUE(beeps.lines().empty());
}

TEST_F(KeyValueTree, ATypedReadThatCannotConvertIsGuardedAndGivesTheDefault) {
    rw.keyvalue("int", "12 ").keyvalue("flag", "true").keyvalue("empty", "");
    BeepRecorder beeps;
    EXPECT_EQ(orv::readKeyValue(rw, "int", 5), 5);
    EXPECT_TRUE(orv::readKeyValue(rw, "flag", true));
    EXPECT_EQ(orv::readKeyValue(rw, "empty", 0.5), 0.5);
    ASSERT_EQ(beeps.lines().size(), 3u);
    EXPECT_EQ(beeps.lines()[0].find(L"Caught Exception: bad lexical cast: source type value could not be "
                                    L"interpreted as target "),
              0u);
    EXPECT_NE(beeps.lines()[0].find(L"dbx/keyvalue_serialization.h@"), std::wstring::npos)
        << "the line tells the place of the guard";
}
