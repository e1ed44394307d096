#include "embedded/object_text.h"

#include "dbdict.h"
#include "list_filer.h"
#include "rxclass.h"
#include "text_fixture.h"
#include "text_thing.h"

#include <vector>

using namespace testing_text;
using embedded::makeObjectFromText;
using embedded::readObjectText;
using embedded::writeObjectText;

namespace {

class ObjectText : public testing::Test {
protected:
    ObjectText() { registerTextThings(); }

    static std::string section(const std::string& object) {
        return lines({"  0", "SECTION", "  2", "OBJECTS"}) + object + lines({"  0", "ENDSEC", "  0", "EOF"});
    }
    static std::string head() { return lines({"  0", "TEXTTHING", "  5", "0", "330", "0"}); }
    static std::string own() {
        return lines({"100", "TextThing", " 90", "       -4", "  1", "abc", "340", "0"});
    }

    static std::string asciiOf(const AcDbObject& object) {
        std::string bytes;
        EXPECT_EQ(writeObjectText(object, TextForm::kAscii, bytes), Acad::eOk);
        return bytes;
    }

    // The status of reading, and the reason that is told.
    Acad::ErrorStatus readInto(AcDbObject& object, const std::string& bytes) {
        return readObjectText(object, bytes, nullptr, &reason);
    }

    std::wstring reason;
};

// A drawing with one thing in its named object dictionary.
class ObjectTextInDrawing : public ObjectText {
protected:
    ObjectTextInDrawing() {
        AcDbDictionary* named = nullptr;
        db.getNamedObjectsDictionary(named, AcDb::kForWrite);
        auto* const thing = new TextThing;
        thing->number = 7;
        named->setAt(L"THING", thing, id);
        thing->close();
        named->close();
    }

    TextThing* open(AcDb::OpenMode mode) {
        TextThing* thing = nullptr;
        EXPECT_EQ(acdbOpenObject(thing, id, mode), Acad::eOk);
        return thing;
    }
    static std::string hex(const AcDbObjectId& id) {
        wchar_t text[17];
        id.handle().getIntoAsciiBuffer(text);
        return std::string(text, text + wcslen(text));
    }

    AcDbDatabase db;
    AcDbObjectId id;
};

} // namespace

TEST_F(ObjectText, AnObjectIsASectionOfItsOwn) {
    TextThing thing;
    thing.number = -4;
    thing.text = L"abc";
    EXPECT_EQ(asciiOf(thing), section(head() + own()));
}

TEST_F(ObjectText, AnObjectInPackedForm) {
    TextThing thing;
    thing.number = -4;
    thing.text = L"abc";
    std::string bytes;
    ASSERT_EQ(writeObjectText(thing, TextForm::kBinary, bytes), Acad::eOk);
    EXPECT_EQ(bytes, sentinel() + packed("\0\0SECTION\0\x02\0OBJECTS\0\0\0TEXTTHING\0\x05\0"
                                         "0\0\x4A\x01"
                                         "0\0\x64\0TextThing\0\x5A\0\xFC\xFF\xFF\xFF\x01\0"
                                         "abc\0\x54\x01"
                                         "0\0\0\0ENDSEC\0\0\0EOF\0"));
}

TEST_F(ObjectText, BothFormsReadBackIntoAnObjectOfTheClass) {
    TextThing thing;
    thing.number = 2147483647;
    thing.text = L"\u00e4\n^";
    for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
        std::string bytes;
        ASSERT_EQ(writeObjectText(thing, form, bytes), Acad::eOk);
        TextThing back;
        EXPECT_EQ(readInto(back, bytes), Acad::eOk);
        EXPECT_EQ(reason, L"");
        EXPECT_EQ(back.number, thing.number);
        EXPECT_EQ(back.text, thing.text);
    }
}

TEST_F(ObjectText, AnObjectIsMadeByItsDxfName) {
    DerivedTextThing thing;
    thing.text = L"derived";
    thing.real = 0.1;
    std::unique_ptr<AcDbObject> made;
    ASSERT_EQ(makeObjectFromText(made, asciiOf(thing)), Acad::eOk);
    DerivedTextThing* const back = DerivedTextThing::cast(made.get());
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->text, L"derived");
    EXPECT_EQ(back->real, 0.1);
}

TEST_F(ObjectText, AGroupWithoutASectionIsAnObjectToo) {
    TextThing thing;
    EXPECT_EQ(readInto(thing, lines({"  0", "TEXTTHING"}) + own() + lines({"  0", "NEXT"})), Acad::eOk);
    EXPECT_EQ(thing.number, -4);
}

TEST_F(ObjectText, OtherSectionsArePassedOver) {
    const std::string before =
        lines({"999", "made by hand", "  0", "SECTION", "  2", "HEADER",  "  9", "$ACADVER",
               "  1", "AC1015",       "  0", "ENDSEC",  "  0", "SECTION", "  2", "ENTITIES",
               "  0", "TEXTTHING",    " 90", "1",       "  0", "ENDSEC"});
    TextThing thing;
    EXPECT_EQ(readInto(thing, before + section(head() + own())), Acad::eOk);
    EXPECT_EQ(thing.number, -4);
}

TEST_F(ObjectText, WithoutAnObjectThereIsNothingToRead) {
    TextThing thing;
    for (const std::string& bytes :
         {std::string(), section(""), lines({" 70", "1"}), lines({"  0", "SECTION", "  0", "ENDSEC"}),
          lines({"  0", "SECTION", "  1", "OBJECTS", "  0", "ENDSEC"}),
          lines({"  0", "SECTION", "  2", "TABLES", "  0", "TEXTTHING"})}) {
        EXPECT_EQ(readInto(thing, bytes), Acad::eEndOfFile) << bytes;
        EXPECT_EQ(reason, L"there is no object");
    }
}

TEST_F(ObjectText, AnObjectOfAnotherClassIsRefused) {
    DerivedTextThing thing;
    EXPECT_EQ(readInto(thing, section(head() + own())), Acad::eNotThatKindOfClass);
    EXPECT_EQ(reason, L"the object is a TEXTTHING");
    EXPECT_EQ(thing.number, 0);
}

TEST_F(ObjectText, AClassWithoutADxfNameIsNotWritten) {
    std::string bytes = "before";
    EXPECT_EQ(writeObjectText(NamelessThing(), TextForm::kAscii, bytes), Acad::eNotPersistable);
    EXPECT_EQ(bytes, "");
    NamelessThing thing;
    EXPECT_EQ(readInto(thing, section(head())), Acad::eNotThatKindOfClass);
}

TEST_F(ObjectText, NoClassOrSeveralOfOneDxfNameMakeNothing) {
    std::unique_ptr<AcDbObject> made = std::make_unique<TextThing>();
    EXPECT_EQ(makeObjectFromText(made, section(lines({"  0", "STRANGER"})), nullptr, &reason),
              Acad::eClassNotRegistered);
    EXPECT_EQ(reason, L"no class has the DXF name STRANGER");
    EXPECT_FALSE(made);
    EXPECT_EQ(makeObjectFromText(made, asciiOf(FirstTwin()), nullptr, &reason), Acad::eAmbiguousInput);
    EXPECT_EQ(reason, L"several classes have the DXF name TWIN");
    EXPECT_FALSE(made);
    FirstTwin twin;
    EXPECT_EQ(readInto(twin, asciiOf(SecondTwin())), Acad::eOk) << "into a given object it is no question";
}

TEST_F(ObjectText, AnObjectThatRefusesLeavesNoBytes) {
    TextThing thing;
    thing.refusal = Acad::eInvalidInput;
    std::string bytes = "before";
    EXPECT_EQ(writeObjectText(thing, TextForm::kAscii, bytes), Acad::eInvalidInput);
    EXPECT_EQ(bytes, "");
}

TEST_F(ObjectText, GroupsThatTheClassDoesNotTakeAreToldOf) {
    TextThing thing;
    EXPECT_EQ(readInto(thing, section(head() + own() + lines({" 70", "1"}))), Acad::eSomeInputDataLeftUnread);
    EXPECT_EQ(thing.number, -4);
    std::unique_ptr<AcDbObject> made;
    EXPECT_EQ(makeObjectFromText(made, section(head() + lines({"100", "Other"}))),
              Acad::eSomeInputDataLeftUnread);
    EXPECT_FALSE(made);
}

TEST_F(ObjectText, ExtendedDataArePassedOver) {
    TextThing thing;
    EXPECT_EQ(readInto(thing, section(head() + own() + lines({"1001", "APP", "1070", "1"}))), Acad::eOk);
    EXPECT_EQ(readInto(thing, section(head() + own() + lines({"1001", "APP", " 70", "1"}))), Acad::eOk);
}

TEST_F(ObjectText, ADamageBehindTheObjectsFieldsIsFound) {
    TextThing thing;
    EXPECT_EQ(readInto(thing, head() + own() + lines({"1001", "APP", "1070", "x"})), Acad::eBadDxfSequence);
    EXPECT_EQ(reason, L"line 18: no integer: \"x\"");
    EXPECT_EQ(readInto(thing, head() + own()), Acad::eEndOfObject);
    EXPECT_EQ(readInto(thing, lines({"  0", "TEXTTHING", "102", "{ACAD_REACTORS", "330", "0", "  0", "X"})),
              Acad::eBadDxfSequence);
    EXPECT_EQ(reason, L"a group of code 102 has no end");
}

TEST_F(ObjectText, EveryPrefixThatEndsBeforeTheNextObjectFails) {
    DerivedTextThing thing;
    thing.text = L"x";
    for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
        std::string bytes;
        ASSERT_EQ(writeObjectText(thing, form, bytes), Acad::eOk);
        const std::size_t whole = bytes.find("ENDSEC") + 6 + (form == TextForm::kAscii ? 2 : 1);
        for (std::size_t length = 0; length <= bytes.size(); ++length) {
            DerivedTextThing back;
            const Acad::ErrorStatus es = readInto(back, std::string(bytes, 0, length));
            EXPECT_EQ(es == Acad::eOk, length >= whole) << length;
        }
    }
}

TEST_F(ObjectText, ForOtherFilersThanAFilesTheBaseWritesNothing) {
    std::string bytes;
    TextFiler out(TextForm::kAscii, bytes);
    ListFiler list(out);
    FirstTwin twin;
    EXPECT_EQ(twin.dxfOut(&list), Acad::eOk);
    EXPECT_EQ(bytes, "");
    const std::string groups = lines({"  5", "1", "  0", "X"});
    TextFiler in(groups);
    ListFiler listIn(in);
    EXPECT_EQ(twin.dxfIn(&listIn), Acad::eOk);
    EXPECT_EQ(read(in)->restype, 5) << "and reads nothing";
}

TEST_F(ObjectTextInDrawing, HandleReactorsExtensionDictionaryAndOwnerStandInFront) {
    TextThing* const thing = open(AcDb::kForWrite);
    thing->addPersistentReactor(db.layerZero());
    ASSERT_EQ(thing->createExtensionDictionary(), Acad::eOk);
    const AcDbObjectId named = db.namedObjectsDictionaryId();
    const std::string owner = hex(named), zero = hex(db.layerZero()), handle = hex(id),
                      dictionary = hex(thing->extensionDictionary());
    const std::string expected = section(lines({"  0", "TEXTTHING",
                                                "  5", handle.c_str(),
                                                "102", "{ACAD_REACTORS",
                                                "330", owner.c_str(),
                                                "330", zero.c_str(),
                                                "102", "}",
                                                "102", "{ACAD_XDICTIONARY",
                                                "360", dictionary.c_str(),
                                                "102", "}",
                                                "330", owner.c_str(),
                                                "100", "TextThing",
                                                " 90", "        7",
                                                "  1", "",
                                                "340", "0"}));
    EXPECT_EQ(asciiOf(*thing), expected);
    thing->close();
}

TEST_F(ObjectTextInDrawing, AFreshObjectTakesReactorsAndOwnerAndNoExtensionDictionary) {
    TextThing* const thing = open(AcDb::kForWrite);
    thing->addPersistentReactor(db.layerZero());
    thing->createExtensionDictionary();
    thing->reference = db.layerTableId();
    const std::string bytes = asciiOf(*thing);
    thing->close();
    TextThing back;
    ASSERT_EQ(readObjectText(back, bytes, &db), Acad::eOk);
    EXPECT_EQ(back.ownerId(), db.namedObjectsDictionaryId());
    EXPECT_TRUE(back.hasPersistentReactor(db.layerZero()));
    EXPECT_TRUE(back.extensionDictionary().isNull());
    EXPECT_EQ(back.reference, db.layerTableId());
    EXPECT_EQ(back.number, 7);
}

TEST_F(ObjectTextInDrawing, AnObjectOfADrawingKeepsItsPlace) {
    TextThing* const thing = open(AcDb::kForWrite);
    ASSERT_EQ(
        readObjectText(*thing, section(lines({"  0", "TEXTTHING", "  5", "FFFF", "330", "0"}) + own()), &db),
        Acad::eOk);
    EXPECT_EQ(thing->number, -4);
    EXPECT_EQ(thing->ownerId(), db.namedObjectsDictionaryId());
    EXPECT_TRUE(thing->hasPersistentReactor(db.namedObjectsDictionaryId()));
    EXPECT_EQ(thing->objectId(), id);
    thing->close();
}

TEST_F(ObjectTextInDrawing, AnObjectThatWasReadCountsAsModified) {
    TextThing* const thing = open(AcDb::kForWrite);
    ASSERT_EQ(readObjectText(*thing, section(head() + own()), &db), Acad::eOk);
    EXPECT_TRUE(thing->isModified());
    thing->close();
}

TEST_F(ObjectTextInDrawing, GroupsThatAnApplicationDefinedAreLeftAside) {
    TextThing back;
    const std::string group = lines({"102", "{APP", "  1", "text", "310", "AB", "330", "1", "102", "}"});
    EXPECT_EQ(
        readObjectText(back,
                       section(lines({"  0", "TEXTTHING", "  5", "0"}) + group + lines({"330", "0"}) + own()),
                       &db),
        Acad::eOk);
    EXPECT_EQ(back.number, -4);
    EXPECT_FALSE(back.hasPersistentReactor(db.namedObjectsDictionaryId()));
}
