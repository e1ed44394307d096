#include "dbx/keyvalue_serialization.h"

#include "support/log_recorder.h"
#include "support/registry_tree.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace testing_support;
using orv::KeyValueSerialization;
using orv::KeyValueTreeReaderWriter;
using orv::TypeInfo;

namespace {

struct Colour {
    int number = 3;
};

class Serialization : public RegistryTreeTest {
protected:
    Serialization() { types.clear(); }
    ~Serialization() override { types.clear(); }

    static void writeNumber(KeyValueTreeReaderWriter& cursor, const boost::any& value) {
        cursor.keyvalue("n", std::to_string(boost::any_cast<int>(value)));
    }
    static void readNumber(KeyValueTreeReaderWriter& cursor, boost::any& value) {
        value = std::stoi(cursor.get_keyvalue("n", "-1"));
    }
    void registerNumbers() { types.addValue_any(typeid(int), "number", &writeNumber, &readNumber); }

    // The cursor stands at the base: what is written now lands there.
    void expectAtBase() {
        rw.keyvalue("here", "yes");
        EXPECT_EQ(stored(L"", L"here"), L"yes");
    }

    KeyValueSerialization& types = KeyValueSerialization::instance();
    KeyValueTreeReaderWriter rw{kBase};
    ReportRecorder reports;
};

} // namespace

TEST_F(Serialization, AValueIsANodeThatBeginsWithItsType) {
    registerNumbers();
    LogRecorder log("KeyValueTreeReaderWriter");
    EXPECT_TRUE(types.tryWrite(rw, "x", boost::any(42)));
    EXPECT_EQ(log.messages(), (Texts{"3 Software\\TaldorkTest\\x\\__type", "3 Software\\TaldorkTest\\x\\n"}));
    EXPECT_EQ(storedValues(L"\\x"), (std::vector<std::wstring>{L"__type 1 12", L"n 1 4"}));
    EXPECT_EQ(stored(L"\\x", L"__type"), L"number");
    boost::any value;
    EXPECT_TRUE(types.tryRead(rw, "x", value));
    EXPECT_EQ(boost::any_cast<int>(value), 42);
    EXPECT_EQ(reports.size(), 0u);
    expectAtBase();
}

TEST_F(Serialization, AWalkMeetsTheTypeBeforeTheNodesBelow) {
    KeyValueSerialization::AnyWriter writer = [this](KeyValueTreeReaderWriter& cursor, const boost::any&) {
        types.tryWrite(cursor, "b", boost::any(1));
        types.tryWrite(cursor, "a", boost::any(2));
    };
    registerNumbers();
    types.addValue_any(typeid(Colour), "pair", writer, {});
    ASSERT_TRUE(types.tryWrite(rw, "x", boost::any(Colour())));
    rw.nodeBegin("x");
    std::vector<std::wstring> names;
    for (orv::registry::iterator entry = rw.get_keyvalue_iterator(); !entry.atEnd(); entry.next())
        names.push_back(entry.name());
    EXPECT_EQ(names, (std::vector<std::wstring>{L"__type", L"a", L"b"}));
}

TEST_F(Serialization, AnUnknownTypeIsNotWritten) {
    LogRecorder log("KeyValueSerialization::tryWrite");
    LogRecorder writes("KeyValueTreeReaderWriter");
    EXPECT_FALSE(types.tryWrite(rw, "x", boost::any(1.5)));
    EXPECT_EQ(reports.conditions(), (Texts{"it != any_writers.end()"}));
    EXPECT_EQ(log.messages(), (Texts{"3 FAILED to find serialization function for type: double"}));
    EXPECT_TRUE(writes.messages().empty());
    EXPECT_FALSE(platform::registry::keyExists(std::wstring(kWideBase) + L"\\x"));
    expectAtBase();
}

TEST_F(Serialization, AnEmptyValueIsOfTheTypeVoid) {
    LogRecorder log("KeyValueSerialization::tryWrite");
    EXPECT_FALSE(types.tryWrite(rw, "x", boost::any()));
    EXPECT_EQ(log.messages(), (Texts{"3 FAILED to find serialization function for type: void"}));
    types.addValue_any(typeid(void), "nothing", [](KeyValueTreeReaderWriter&, const boost::any&) {}, {});
    EXPECT_TRUE(types.tryWrite(rw, "x", boost::any()));
    EXPECT_EQ(stored(L"\\x", L"__type"), L"nothing");
}

TEST_F(Serialization, AReaderWithoutAWriterServesReadingOnly) {
    types.addValue_any(typeid(int), "number", {}, &readNumber);
    rw.nodeBegin("x").keyvalue("__type", "number").keyvalue("n", "7").nodeEnd();
    boost::any value;
    EXPECT_TRUE(types.tryRead(rw, "x", value));
    EXPECT_EQ(boost::any_cast<int>(value), 7);
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_FALSE(types.tryWrite(rw, "y", boost::any(7)));
    EXPECT_EQ(reports.conditions(), (Texts{"it != any_writers.end()"}));
}

TEST_F(Serialization, AWriterWithoutAReaderServesWritingOnly) {
    types.addValue_any(typeid(int), "number", &writeNumber, {});
    EXPECT_TRUE(types.tryWrite(rw, "x", boost::any(7)));
    boost::any value;
    EXPECT_FALSE(types.tryRead(rw, "x", value));
    EXPECT_EQ(reports.conditions(), (Texts{"it != any_readers.end()"}));
}

TEST_F(Serialization, ANodeWithoutATypeIsNotReadAndTheCursorIsWhereItWas) {
    LogRecorder log("KeyValueSerialization::tryRead");
    rw.nodeBegin("x").keyvalue("n", "7").nodeEnd();
    boost::any value = 5;
    EXPECT_FALSE(types.tryRead(rw, "x", value));
    EXPECT_FALSE(types.tryRead(rw, "nowhere", value));
    EXPECT_EQ(boost::any_cast<int>(value), 5);
    EXPECT_EQ(reports.conditions(), (Texts{"type", "type"}));
    EXPECT_EQ(log.messages(),
              (Texts{"3 FAILED to read __type for id 'x'", "3 FAILED to read __type for id 'nowhere'"}));
    expectAtBase();
}

TEST_F(Serialization, ATypeWithoutAReaderIsNotReadAndTheCursorIsWhereItWas) {
    LogRecorder log("KeyValueSerialization::tryRead");
    rw.nodeBegin("x").keyvalue("__type", "shape").nodeEnd();
    boost::any value;
    EXPECT_FALSE(types.tryRead(rw, "x", value));
    EXPECT_TRUE(value.empty());
    EXPECT_EQ(reports.conditions(), (Texts{"it != any_readers.end()"}));
    EXPECT_EQ(log.messages(), (Texts{"3 FAILED to find serialization function for id 'x' and type: shape"}));
    expectAtBase();
}

TEST_F(Serialization, AfterClearEveryReadFailsForWantOfAReader) {
    registerNumbers();
    ASSERT_TRUE(types.tryWrite(rw, "x", boost::any(7)));
    types.clear();
    LogRecorder log("KeyValueSerialization::tryRead");
    boost::any value;
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(types.tryRead(rw, "x", value));
    const std::string failure = "3 FAILED to find serialization function for id 'x' and type: number";
    EXPECT_EQ(log.messages(), (Texts{failure, failure}));
    EXPECT_FALSE(types.tryWrite(rw, "x", boost::any(7)));
    EXPECT_EQ(types.getTypeId(typeid(int)), "");
}

TEST_F(Serialization, TheTypeIdIsThatOfTheWriter) {
    registerNumbers();
    EXPECT_EQ(types.getTypeId(typeid(int)), "number");
    EXPECT_EQ(reports.size(), 0u);
    EXPECT_EQ(types.getTypeId(typeid(double)), "");
    EXPECT_EQ(types.getTypeId(TypeInfo()), "");
    EXPECT_EQ(reports.conditions(), (Texts{"it != any_writers.end()", "it != any_writers.end()"}));
}

TEST_F(Serialization, RemoveTakesBothAndNoOthers) {
    registerNumbers();
    types.addValue_any(typeid(Colour), "colour", &writeNumber, &readNumber);
    ASSERT_TRUE(types.tryWrite(rw, "x", boost::any(7)));
    types._remove("number", typeid(int));
    types._remove("number", typeid(int));
    boost::any value;
    EXPECT_FALSE(types.tryRead(rw, "x", value));
    EXPECT_FALSE(types.tryWrite(rw, "y", boost::any(7)));
    EXPECT_EQ(types.getTypeId(typeid(Colour)), "colour");
    types.remove<Colour>("colour");
    EXPECT_EQ(types.getTypeId(typeid(Colour)), "");
}

TEST_F(Serialization, ALaterRegistrationTakesThePlaceOfAnEarlierOne) {
    registerNumbers();
    types.addValue_any(typeid(int), "count", &writeNumber, &readNumber);
    EXPECT_EQ(types.getTypeId(typeid(int)), "count");
    rw.nodeBegin("x").keyvalue("__type", "number").keyvalue("n", "7").nodeEnd();
    boost::any value;
    EXPECT_TRUE(types.tryRead(rw, "x", value)) << "the reader of the earlier id stays";
}

TEST_F(Serialization, FunctionsOfATypeGetItsValues) {
    types.addValue<Colour>(
        "colour",
        [](KeyValueTreeReaderWriter& cursor, const Colour& colour) {
            cursor.keyvalue("c", std::to_string(colour.number));
        },
        [](KeyValueTreeReaderWriter& cursor, Colour& colour) {
            EXPECT_EQ(colour.number, 3) << "as its constructor makes it";
            colour.number = std::stoi(cursor.get_keyvalue("c", ""));
        });
    Colour blue;
    blue.number = 5;
    ASSERT_TRUE(types.tryWrite(rw, "x", boost::any(blue)));
    boost::any value;
    ASSERT_TRUE(types.tryRead(rw, "x", value));
    EXPECT_EQ(boost::any_cast<Colour>(value).number, 5);
}

TEST_F(Serialization, AnEmptyFunctionOfATypeThrowsWhenItIsNeeded) {
    types.addValue<Colour>("colour", {}, {});
    try {
        types.tryWrite(rw, "x", boost::any(Colour()));
        FAIL() << "nothing was thrown";
    } catch (const boost::bad_function_call& thrown) {
        EXPECT_STREQ(thrown.what(), "call to empty boost::function");
    }
    EXPECT_EQ(stored(L"\\x", L"__type"), L"colour") << "the node had been begun";
    boost::any value;
    KeyValueTreeReaderWriter other(kBase);
    EXPECT_THROW(types.tryRead(other, "x", value), boost::bad_function_call);
}

TEST_F(Serialization, OneFunctionAloneMayBeRegisteredForAType) {
    types.addWriter<int>("number", [](KeyValueTreeReaderWriter& cursor, const int& number) {
        cursor.keyvalue("n", std::to_string(number));
    });
    ASSERT_TRUE(types.tryWrite(rw, "x", boost::any(7)));
    boost::any value;
    EXPECT_FALSE(types.tryRead(rw, "x", value));
    types.addReader<int>("number", [](KeyValueTreeReaderWriter& cursor, int& number) {
        number = std::stoi(cursor.get_keyvalue("n", ""));
    });
    EXPECT_TRUE(types.tryRead(rw, "x", value));
    EXPECT_EQ(boost::any_cast<int>(value), 7);
}

TEST_F(Serialization, WhatAFunctionThrowsComesOut) {
    const auto fail = [](KeyValueTreeReaderWriter&, const boost::any&) { throw std::runtime_error("no"); };
    types.addValue_any(typeid(int), "number", fail, &readNumber);
    EXPECT_THROW(types.tryWrite(rw, "x", boost::any(7)), std::runtime_error);
}

TEST_F(Serialization, AReaderMayRemoveItself) {
    types.addValue_any(typeid(int), "number", &writeNumber,
                       [this](KeyValueTreeReaderWriter& cursor, boost::any& value) {
                           types._remove("number", typeid(int));
                           readNumber(cursor, value);
                       });
    ASSERT_TRUE(types.tryWrite(rw, "x", boost::any(7)));
    boost::any value;
    EXPECT_TRUE(types.tryRead(rw, "x", value));
    EXPECT_EQ(boost::any_cast<int>(value), 7);
    EXPECT_FALSE(types.tryRead(rw, "x", value));
}

TEST(TypeInfoOrder, OfTwoTypesIsThatOfTheRunTimeBothWays) {
    const std::type_info* const types[] = {&typeid(int), &typeid(double), &typeid(std::string),
                                           &typeid(TypeInfo)};
    for (const std::type_info* const left : types)
        for (const std::type_info* const right : types)
            EXPECT_EQ(TypeInfo(*left) < TypeInfo(*right), left->before(*right))
                << left->name() << " " << right->name();
}

TEST(TypeInfoOrder, NoTypeStandsBeforeEveryType) {
    const TypeInfo none;
    const TypeInfo number = typeid(int);
    EXPECT_TRUE(none < number);
    EXPECT_FALSE(number < none);
    EXPECT_FALSE(none < none);
    EXPECT_EQ(none, TypeInfo(static_cast<const std::type_info*>(nullptr)));
    EXPECT_NE(none, number);
    EXPECT_EQ(number, TypeInfo(&typeid(int)));
    EXPECT_EQ(number.pointer(), &typeid(int));
}
