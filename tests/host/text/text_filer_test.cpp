#include "AcString.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"
#include "text_fixture.h"

#include <functional>
#include <limits>
#include <vector>

using namespace testing_text;

namespace {

const auto kNoCode = static_cast<AcDb::DxfCode>(80);

AcDb::DxfCode code(int number) { return static_cast<AcDb::DxfCode>(number); }

// One write, and what it is in both forms.
struct Case {
    const char* name;
    std::function<Acad::ErrorStatus(AcDbDxfFiler&)> write;
    std::string ascii;
    std::string binary;
};

char kBytes[] = "\x01\x00\xAB";

std::vector<Case> cases() {
    return {
        {"text", [](AcDbDxfFiler& f) { return f.writeString(AcDb::kDxfText, L"a\u00e4"); },
         lines({"  1", "a\\U+00E4"}), packed("\x01\0a\\U+00E4\0")},
        {"text object", [](AcDbDxfFiler& f) { return f.writeString(AcDb::kDxfText, AcString(L"b")); },
         lines({"  1", "b"}), packed("\x01\0b\0")},
        {"null text",
         [](AcDbDxfFiler& f) { return f.writeString(AcDb::kDxfText, static_cast<const ACHAR*>(nullptr)); },
         lines({"  1", ""}), packed("\x01\0\0")},
        {"real", [](AcDbDxfFiler& f) { return f.writeDouble(AcDb::kDxfReal, 1.5); }, lines({" 40", "1.5"}),
         packed("\x28\0\0\0\0\0\0\0\xF8\x3F")},
        {"8 bits", [](AcDbDxfFiler& f) { return f.writeInt8(AcDb::kDxfInt8, -5); }, lines({"280", "    -5"}),
         packed("\x18\x01\xFB\xFF")},
        {"16 bits", [](AcDbDxfFiler& f) { return f.writeInt16(AcDb::kDxfInt16, -32768); },
         lines({" 70", "-32768"}), packed("\x46\0\0\x80")},
        {"32 bits", [](AcDbDxfFiler& f) { return f.writeInt32(AcDb::kDxfInt32, 30071996); },
         lines({" 90", " 30071996"}), packed("\x5A\0\xBC\xDC\xCA\x01")},
        {"64 bits", [](AcDbDxfFiler& f) { return f.writeInt64(AcDb::kDxfInt64, -2); }, lines({"160", "-2"}),
         packed("\xA0\0\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF")},
        {"unsigned 8 bits", [](AcDbDxfFiler& f) { return f.writeUInt8(AcDb::kDxfInt8, 255); },
         lines({"280", "   255"}), packed("\x18\x01\xFF\0")},
        {"unsigned 16 bits", [](AcDbDxfFiler& f) { return f.writeUInt16(AcDb::kDxfInt16, 65535); },
         lines({" 70", "    -1"}), packed("\x46\0\xFF\xFF")},
        {"unsigned 32 bits", [](AcDbDxfFiler& f) { return f.writeUInt32(AcDb::kDxfInt32, 0x80000000u); },
         lines({" 90", "-2147483648"}), packed("\x5A\0\0\0\0\x80")},
        {"unsigned 64 bits", [](AcDbDxfFiler& f) { return f.writeUInt64(AcDb::kDxfInt64, ~0ULL); },
         lines({"160", "-1"}), packed("\xA0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF")},
        {"switch", [](AcDbDxfFiler& f) { return f.writeBool(AcDb::kDxfBool, true); },
         lines({"290", "     1"}), packed("\x22\x01\x01")},
        {"boolean", [](AcDbDxfFiler& f) { return f.writeBoolean(AcDb::kDxfBool, false); },
         lines({"290", "     0"}), packed("\x22\x01\0")},
        {"handle", [](AcDbDxfFiler& f) { return f.writeAcDbHandle(AcDb::kDxfHandle, AcDbHandle(0x1AB)); },
         lines({"  5", "1AB"}),
         packed("\x05\0"
                "1AB\0")},
        {"null id", [](AcDbDxfFiler& f) { return f.writeObjectId(AcDb::kDxfHardPointerId, {}); },
         lines({"340", "0"}),
         packed("\x54\x01"
                "0\0")},
        {"binary data",
         [](AcDbDxfFiler& f) {
             return f.writeBChunk(AcDb::kDxfBinaryChunk, {3, kBytes});
         },
         lines({"310", "0100AB"}), packed("\x36\x01\x03\x01\0\xAB")},
        {"no binary data",
         [](AcDbDxfFiler& f) {
             return f.writeBChunk(AcDb::kDxfBinaryChunk, {0, nullptr});
         },
         lines({"310", ""}), packed("\x36\x01\0")},
        {"point in a plane",
         [](AcDbDxfFiler& f) {
             return f.writePoint2d(AcDb::kDxfXCoord, {1, 2});
         },
         lines({" 10", "1.0", " 20", "2.0"}), packed("\x0A\0\0\0\0\0\0\0\xF0\x3F\x14\0\0\0\0\0\0\0\0\x40")},
        {"point",
         [](AcDbDxfFiler& f) {
             return f.writePoint3d(code(11), {0, 0, 1});
         },
         lines({" 11", "0.0", " 21", "0.0", " 31", "1.0"}),
         packed("\x0B\0\0\0\0\0\0\0\0\0\x15\0\0\0\0\0\0\0\0\0\x1F\0\0\0\0\0\0\0\xF0\x3F")},
        {"vector in a plane",
         [](AcDbDxfFiler& f) {
             return f.writeVector2d(code(1011), {0, 1});
         },
         lines({"1011", "0.0", "1021", "1.0"}),
         packed("\xF3\x03\0\0\0\0\0\0\0\0\xFD\x03\0\0\0\0\0\0\xF0\x3F")},
        {"vector",
         [](AcDbDxfFiler& f) {
             return f.writeVector3d(AcDb::kDxfNormalX, {0, 0, 1});
         },
         lines({"210", "0.0", "220", "0.0", "230", "1.0"}),
         packed("\xD2\0\0\0\0\0\0\0\0\0\xDC\0\0\0\0\0\0\0\0\0\xE6\0\0\0\0\0\0\0\xF0\x3F")},
        {"scale", [](AcDbDxfFiler& f) { return f.writeScale3d(AcDb::kDxfUCSOrg, AcGeScale3d(0, 0, 0)); },
         lines({"110", "0.0", "120", "0.0", "130", "0.0"}),
         packed("\x6E\0\0\0\0\0\0\0\0\0\x78\0\0\0\0\0\0\0\0\0\x82\0\0\0\0\0\0\0\0\0")},
        {"embedded object", [](AcDbDxfFiler& f) { return f.writeEmbeddedObjectStart(); },
         lines({"101", "Embedded Object"}),
         packed("\x65\0"
                "Embedded Object\0")},
    };
}

std::string written(TextForm form, const std::function<Acad::ErrorStatus(AcDbDxfFiler&)>& write) {
    std::string bytes;
    TextFiler filer(form, bytes);
    EXPECT_EQ(write(filer), Acad::eOk);
    EXPECT_EQ(filer.filerStatus(), Acad::eOk);
    EXPECT_STREQ(filer.errorMessage(), L"");
    return bytes;
}

// The failure of a write that leaves nothing behind.
Acad::ErrorStatus refused(const std::function<Acad::ErrorStatus(AcDbDxfFiler&)>& write) {
    std::string bytes;
    TextFiler filer(TextForm::kAscii, bytes);
    const Acad::ErrorStatus es = write(filer);
    EXPECT_EQ(filer.filerStatus(), es);
    EXPECT_STRNE(filer.errorMessage(), L"");
    EXPECT_EQ(bytes, "");
    return es;
}

// With the start of what follows an object.
std::string ended(const std::string& bytes) { return bytes + lines({"  0", "ENDSEC"}); }

} // namespace

TEST(TextFiler, EveryKindOfValueAsLines) {
    for (const Case& one : cases())
        EXPECT_EQ(written(TextForm::kAscii, one.write), one.ascii) << one.name;
}

TEST(TextFiler, EveryKindOfValueAsPackedBytes) {
    for (const Case& one : cases())
        EXPECT_EQ(written(TextForm::kBinary, one.write), sentinel() + one.binary) << one.name;
}

TEST(TextFiler, BothFormsReadBackAndWriteTheSameAgain) {
    for (const Case& one : cases()) {
        for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
            const std::string bytes = written(form, one.write);
            const std::string end = form == TextForm::kAscii ? lines({"  0", "X"}) : packed("\0\0X\0");
            const std::string all = bytes + end;
            TextFiler in(all);
            std::string again;
            TextFiler out(form, again);
            while (!in.atEndOfObject()) {
                const Value value = read(in);
                ASSERT_TRUE(value) << one.name;
                const bool inPlane = std::string(one.name).find("plane") != std::string::npos;
                if (inPlane)
                    out.writePoint2d(code(value->restype),
                                     {value->resval.rpoint[0], value->resval.rpoint[1]});
                else
                    EXPECT_EQ(out.writeResBuf(*value), Acad::eOk) << one.name;
            }
            EXPECT_EQ(in.filerStatus(), Acad::eOk);
            EXPECT_EQ(again, bytes) << one.name;
        }
    }
}

TEST(TextFiler, ABooleanUnderASubclassCodeIsTheTextOne) {
    const auto write = [](AcDbDxfFiler& f) { return f.writeItem(AcDb::kDxfSubclass, true); };
    const std::string ascii = written(TextForm::kAscii, write);
    EXPECT_EQ(ascii, lines({"100", "1"}));
    EXPECT_EQ(written(TextForm::kBinary, write), sentinel() + packed("\x64\0"
                                                                     "1\0"));
    TextFiler filer(ascii);
    EXPECT_FALSE(filer.atSubclassData(L"ORV_CCSysPar"));
    EXPECT_FALSE(filer.atSubclassData(L"true"));
    EXPECT_TRUE(filer.atSubclassData(L"1"));
}

TEST(TextFiler, TheCodeDictatesTheKindOfANumber) {
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeInt32(AcDb::kDxfText, -7); }),
              lines({"  1", "-7"}));
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeInt16(AcDb::kDxfReal, 3); }),
              lines({" 40", "3.0"}));
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeInt64(AcDb::kDxfInt16, 9); }),
              lines({" 70", "     9"}));
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeBool(AcDb::kDxfInt32, true); }),
              lines({" 90", "        1"}));
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeInt32(AcDb::kDxfBool, 1); }),
              lines({"290", "     1"}));
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeDouble(AcDb::kDxfText, 2.0); }),
              lines({"  1", "2.0"}));
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeUInt64(AcDb::kDxfText, ~0ULL); }),
              lines({"  1", "18446744073709551615"}));
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeString(AcDb::kDxfHandle, L"2f"); }),
              lines({"  5", "2F"}));
    EXPECT_EQ(written(TextForm::kAscii,
                      [](auto& f) { return f.writeAcDbHandle(AcDb::kDxfSoftPointerId, AcDbHandle(16)); }),
              lines({"330", "10"}));
}

TEST(TextFiler, AValueThatTheCodeCannotHoldIsRefused) {
    EXPECT_EQ(refused([](auto& f) { return f.writeInt32(AcDb::kDxfInt16, 32768); }), Acad::eOutOfRange);
    EXPECT_EQ(refused([](auto& f) { return f.writeInt64(AcDb::kDxfInt32, 0x80000000LL); }),
              Acad::eOutOfRange);
    EXPECT_EQ(refused([](auto& f) { return f.writeUInt32(AcDb::kDxfInt16, 65536); }), Acad::eOutOfRange);
    EXPECT_EQ(refused([](auto& f) { return f.writeUInt64(AcDb::kDxfInt32, ~0ULL); }), Acad::eOutOfRange);
    EXPECT_EQ(refused([](auto& f) { return f.writeInt16(AcDb::kDxfBool, 2); }), Acad::eOutOfRange);
    EXPECT_EQ(refused([](auto& f) { return f.writeString(AcDb::kDxfHandle, L"xyz"); }), Acad::eOutOfRange);
    EXPECT_EQ(refused([](auto& f) { return f.writeDouble(AcDb::kDxfInt32, 1.0); }), Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writeString(AcDb::kDxfInt32, L"1"); }), Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writeInt32(AcDb::kDxfHandle, 1); }), Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writeBool(AcDb::kDxfBinaryChunk, true); }),
              Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) {
                  return f.writeBChunk(AcDb::kDxfText, {3, kBytes});
              }),
              Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writeAcDbHandle(AcDb::kDxfText, AcDbHandle(1)); }),
              Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writePoint3d(code(18), {}); }), Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writePoint2d(AcDb::kDxfYCoord, {}); }), Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writeInt32(kNoCode, 1); }), Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) { return f.writeInt32(AcDb::kDxfXDataStart, 1); }), Acad::eInvalidDxfCode);
    EXPECT_EQ(refused([](auto& f) {
                  return f.writeBChunk(AcDb::kDxfBinaryChunk, {-1, kBytes});
              }),
              Acad::eInvalidInput);
    EXPECT_EQ(refused([](auto& f) {
                  return f.writeBChunk(AcDb::kDxfBinaryChunk, {2, nullptr});
              }),
              Acad::eInvalidInput);
}

TEST(TextFiler, AfterAFailureNothingIsWritten) {
    std::string bytes;
    TextFiler filer(TextForm::kAscii, bytes);
    filer.writeInt16(AcDb::kDxfInt16, 1);
    filer.writeDouble(AcDb::kDxfInt16, 1.0);
    EXPECT_EQ(filer.writeInt16(AcDb::kDxfInt16, 2), Acad::eInvalidDxfCode);
    EXPECT_STREQ(filer.errorMessage(), L"group code 70 does not hold such a value");
    EXPECT_EQ(bytes, lines({" 70", "     1"}));
    filer.resetFilerStatus();
    EXPECT_STREQ(filer.errorMessage(), L"");
    EXPECT_EQ(filer.writeInt16(AcDb::kDxfInt16, 3), Acad::eOk);
    EXPECT_EQ(bytes, lines({" 70", "     1", " 70", "     3"}));
}

TEST(TextFiler, LongBinaryDataBecomeGroupsOfAtMost127Bytes) {
    for (const std::size_t length : {1u, 126u, 127u, 128u, 254u, 255u, 300u}) {
        std::string data(length, '\0');
        for (std::size_t i = 0; i < length; ++i)
            data[i] = static_cast<char>(i * 7);
        for (const TextForm form : {TextForm::kAscii, TextForm::kBinary}) {
            std::string bytes;
            TextFiler out(form, bytes);
            EXPECT_EQ(out.writeBChunk(AcDb::kDxfBinaryChunk, {static_cast<short>(length), data.data()}),
                      Acad::eOk);
            out.writeString(AcDb::kDxfStart, L"X");
            TextFiler in(bytes);
            std::string back;
            std::size_t groups = 0;
            for (; !in.atEndOfObject(); ++groups) {
                const Value value = read(in);
                ASSERT_TRUE(value);
                EXPECT_LE(value->resval.rbinary.clen, 127);
                back += chunkOf(*value);
            }
            EXPECT_EQ(back, data);
            EXPECT_EQ(groups, (length + 126) / 127);
        }
    }
}

TEST(TextFiler, BinaryDataOfUpTo255BytesAreRead) {
    const std::string ascii = ended(lines({"310", std::string(510, 'A').c_str()}));
    TextFiler in(ascii);
    const Value value = read(in);
    ASSERT_TRUE(value);
    EXPECT_EQ(chunkOf(*value), std::string(255, '\xAA'));
    const std::string tooLong = ended(lines({"310", std::string(512, 'A').c_str()}));
    TextFiler refusing(tooLong);
    EXPECT_FALSE(read(refusing));
    EXPECT_STREQ(refusing.errorMessage(), L"line 2: too much binary data for one group");
    const std::string binary = sentinel() + packed("\x36\x01\xFF") + std::string(255, 'x');
    TextFiler packedIn(binary);
    const Value second = read(packedIn);
    ASSERT_TRUE(second);
    EXPECT_EQ(chunkOf(*second), std::string(255, 'x'));
}

TEST(TextFiler, RealsHaveThePrecisionThatIsSet) {
    std::string bytes;
    TextFiler filer(TextForm::kAscii, bytes);
    EXPECT_EQ(filer.precision(), AcDbDxfFiler::kDfltPrec);
    filer.writeDouble(AcDb::kDxfReal, 2.0 / 3.0);
    filer.setPrecision(3);
    EXPECT_EQ(filer.precision(), 3);
    filer.writeDouble(AcDb::kDxfReal, 2.0 / 3.0);
    filer.writeDouble(AcDb::kDxfReal, 2.0 / 3.0, 5);
    filer.writeDouble(AcDb::kDxfText, 2.0 / 3.0);
    filer.writePoint2d(AcDb::kDxfXCoord, {2.0 / 3.0, 0}, 2);
    filer.setPrecision(99);
    EXPECT_EQ(filer.precision(), AcDbDxfFiler::kMaxPrec);
    filer.setPrecision(-99);
    EXPECT_EQ(filer.precision(), AcDbDxfFiler::kDfltPrec);
    EXPECT_EQ(bytes, lines({" 40", "0.6666666666666666", " 40", "0.667", " 40", "0.66667", "  1", "0.667",
                            " 10", "0.67", " 20", "0.0"}));
}

TEST(TextFiler, APointIsOneValueUnderItsFirstCode) {
    const std::string bytes = ended(lines({" 10", "1.0", " 20", "2.0", " 30", "3.0", " 11", "4.0", " 21",
                                           "5.0", " 12", "6.0", " 40", "7.0", " 20", "8.0"}));
    TextFiler filer(bytes);
    Value value = read(filer);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->restype, 10);
    EXPECT_EQ(value->resval.rpoint[2], 3.0);
    value = read(filer);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->restype, 11);
    EXPECT_EQ(value->resval.rpoint[1], 5.0);
    EXPECT_EQ(value->resval.rpoint[2], 0.0);
    value = read(filer);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->restype, 12) << "without further coordinates it is a plain real";
    EXPECT_EQ(value->resval.rreal, 6.0);
    EXPECT_EQ(read(filer)->restype, 40);
    value = read(filer);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->restype, 20) << "a second coordinate alone is a real";
    EXPECT_EQ(value->resval.rreal, 8.0);
}

TEST(TextFiler, AValueThatIsPushedBackIsReadAgain) {
    const std::string bytes = ended(lines({" 10", "1.0", " 20", "2.0", " 30", "3.0", "  1", "text"}));
    TextFiler filer(bytes);
    filer.pushBackItem();
    for (int round = 0; round < 3; ++round) {
        const Value value = read(filer);
        ASSERT_TRUE(value);
        EXPECT_EQ(value->restype, 10);
        EXPECT_EQ(value->resval.rpoint[2], 3.0);
        filer.pushBackItem();
        filer.pushBackItem();
    }
    read(filer);
    EXPECT_STREQ(read(filer)->resval.rstring, L"text");
    filer.pushBackItem();
    EXPECT_STREQ(read(filer)->resval.rstring, L"text");
    EXPECT_TRUE(filer.atEndOfObject());
}

TEST(TextFiler, AClassesDataBeginAtItsMark) {
    const std::string bytes = ended(lines({"100", "Base", " 70", "1", "100", "Derived"}));
    TextFiler filer(bytes);
    EXPECT_FALSE(filer.atSubclassData(L"Derived"));
    EXPECT_FALSE(filer.atSubclassData(nullptr));
    EXPECT_TRUE(filer.atSubclassData(L"Base"));
    EXPECT_FALSE(filer.atSubclassData(L"Base")) << "the mark is passed";
    EXPECT_EQ(read(filer)->resval.rint, 1);
    EXPECT_FALSE(filer.atSubclassData(L"derived")) << "case counts";
    EXPECT_TRUE(filer.atSubclassData(L"Derived"));
    filer.pushBackItem();
    EXPECT_TRUE(filer.atSubclassData(L"Derived"));
    EXPECT_TRUE(filer.atEndOfObject());
    EXPECT_FALSE(filer.atEOF());
}

TEST(TextFiler, TheEndOfAnObjectIsToldOnceAndThenAFailure) {
    const std::string bytes = ended(lines({" 70", "1"}));
    TextFiler filer(bytes);
    resbuf value;
    EXPECT_EQ(filer.readResBuf(&value), Acad::eOk);
    EXPECT_EQ(filer.readResBuf(&value), Acad::eEndOfFile);
    EXPECT_EQ(value.restype, AcDb::kDxfInvalid);
    EXPECT_EQ(filer.filerStatus(), Acad::eOk);
    EXPECT_EQ(filer.readResBuf(&value), Acad::eEndOfObject);
    EXPECT_EQ(filer.filerStatus(), Acad::eEndOfObject);
    EXPECT_STREQ(filer.errorMessage(), L"line 4: the object has ended");
}

TEST(TextFiler, BytesThatEndWithoutTheNextObjectAreCut) {
    for (const std::string& bytes : {lines({" 70", "1"}), sentinel() + packed("\x46\0\x01\0")}) {
        TextFiler filer(bytes);
        EXPECT_TRUE(read(filer));
        EXPECT_TRUE(filer.atEOF());
        EXPECT_FALSE(read(filer));
        EXPECT_EQ(filer.filerStatus(), Acad::eEndOfObject);
    }
}

TEST(TextFiler, ExtendedDataBeginWithCode1000OrAbove) {
    const std::string bytes = ended(lines({" 70", "1", "1001", "APP", "1040", "2.5"}));
    TextFiler filer(bytes);
    EXPECT_FALSE(filer.atExtendedData());
    read(filer);
    EXPECT_TRUE(filer.atExtendedData());
    EXPECT_FALSE(filer.atEndOfObject());
}

TEST(TextFiler, TheStartOfAnEmbeddedObjectIsPassed) {
    const std::string bytes = ended(lines({"101", "Embedded Object", " 70", "1"}));
    TextFiler filer(bytes);
    EXPECT_TRUE(filer.atEmbeddedObjectStart());
    EXPECT_FALSE(filer.atEmbeddedObjectStart());
    EXPECT_EQ(read(filer)->restype, 70);
}

TEST(TextFiler, ReadingAnewBeginsAtTheFirstGroup) {
    for (const std::string& bytes :
         {lines({" 70", "1", "  0", "X"}), sentinel() + packed("\x46\0\x01\0\0\0X\0")}) {
        TextFiler filer(bytes);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(read(filer)->resval.rint, 1);
            EXPECT_FALSE(read(filer));
            EXPECT_FALSE(read(filer));
            EXPECT_NE(filer.filerStatus(), Acad::eOk);
            EXPECT_EQ(filer.rewindFiler(), RTNORM);
            EXPECT_EQ(filer.filerStatus(), Acad::eOk);
        }
    }
    std::string bytes;
    TextFiler out(TextForm::kAscii, bytes);
    EXPECT_EQ(out.rewindFiler(), RTERROR);
}

TEST(TextFiler, LinesMayEndWithoutACarriageReturn) {
    TextFiler filer("  1\ntext\n 70\n 5\n  0\nX\n");
    EXPECT_STREQ(read(filer)->resval.rstring, L"text");
    EXPECT_EQ(read(filer)->resval.rint, 5);
}

TEST(TextFiler, CommentsArePassedOver) {
    const std::string bytes = ended(lines({"999", "hello", " 70", "1", "999", ""}));
    TextFiler filer(bytes);
    EXPECT_EQ(read(filer)->restype, 70);
    EXPECT_TRUE(filer.atEndOfObject());
    EXPECT_EQ(written(TextForm::kAscii, [](auto& f) { return f.writeString(AcDb::kDxfComment, L"c"); }),
              lines({"999", "c"}));
    EXPECT_EQ(written(TextForm::kBinary, [](auto& f) { return f.writeString(AcDb::kDxfComment, L"c"); }),
              sentinel());
    const std::string packedBytes = sentinel() + packed("\xE7\x03x\0\x46\0\x01\0");
    TextFiler packedFiler(packedBytes);
    EXPECT_EQ(read(packedFiler)->restype, 70);
}

TEST(TextFiler, AFailureThatStandsIsKept) {
    std::string bytes;
    TextFiler filer(TextForm::kAscii, bytes);
    EXPECT_EQ(filer.setError(Acad::eOk, L"none"), Acad::eOk);
    EXPECT_EQ(filer.setError(Acad::eMissingDxfField, L"%d of %ls", 2, L"them"), Acad::eMissingDxfField);
    EXPECT_STREQ(filer.errorMessage(), L"2 of them");
    EXPECT_EQ(filer.setError(Acad::eInvalidInput, L"other"), Acad::eMissingDxfField);
    EXPECT_EQ(filer.setError(L"third"), Acad::eMissingDxfField);
    EXPECT_STREQ(filer.errorMessage(), L"2 of them");
    filer.resetFilerStatus();
    EXPECT_EQ(filer.setError(L"no %ls", L"good"), Acad::eInvalidInput);
    EXPECT_STREQ(filer.errorMessage(), L"no good");
}

TEST(TextFiler, AReaderRefusesToWriteAndAWriterToRead) {
    const std::string bytes = ended(lines({" 70", "1"}));
    TextFiler in(bytes);
    EXPECT_EQ(in.writeInt16(AcDb::kDxfInt16, 1), Acad::eIsReading);
    std::string target;
    TextFiler out(TextForm::kAscii, target);
    resbuf value;
    EXPECT_EQ(out.readResBuf(&value), Acad::eIsWriting);
    EXPECT_TRUE(out.atEOF());
}

TEST(TextFiler, AValueIsWrittenUnderAnotherCode) {
    Value value(acutNewRb(70));
    value->resval.rint = 3;
    EXPECT_EQ(written(TextForm::kAscii, [&](auto& f) { return f.writeItem(code(71), *value); }),
              lines({" 71", "     3"}));
    EXPECT_EQ(written(TextForm::kAscii, [&](auto& f) { return f.writeItem(*value); }),
              lines({" 70", "     3"}));
}

TEST(TextFiler, IdsAreFoundByTheirHandles) {
    embedded::startHost();
    AcDbDatabase db;
    const AcDbObjectId id = db.namedObjectsDictionaryId();
    std::string bytes;
    TextFiler out(TextForm::kAscii, bytes, &db);
    out.writeItem(AcDb::kDxfSoftPointerId, id);
    out.writeAcDbHandle(AcDb::kDxfHardPointerId, AcDbHandle(0x7FFFFFFF));
    out.writeItem(AcDb::kDxfHardOwnershipId, AcDbObjectId());
    bytes = ended(bytes);
    TextFiler in(bytes, &db);
    EXPECT_EQ(in.database(), &db);
    AcDbObjectId found;
    EXPECT_EQ(found.setFromOldId(read(in)->resval.rlname[0]), id);
    EXPECT_EQ(read(in)->resval.rlname[0], 0) << "unknown in this database";
    EXPECT_EQ(read(in)->resval.rlname[0], 0);
    TextFiler without(bytes);
    EXPECT_EQ(read(without)->resval.rlname[0], 0);
}

TEST(TextFiler, SaysWhatItIs) {
    std::string bytes;
    TextFiler filer(TextForm::kAscii, bytes);
    AcDb::AcDbDwgVersion version{};
    AcDb::MaintenanceReleaseVersion maintenance{};
    EXPECT_EQ(filer.dwgVersion(version, maintenance), Acad::eOk);
    EXPECT_EQ(version, AcDb::kDHL_CURRENT);
    EXPECT_EQ(filer.filerType(), AcDb::kFileFiler);
    EXPECT_FALSE(filer.includesDefaultValues());
    EXPECT_FALSE(filer.isModifyingExistingObject());
    EXPECT_EQ(filer.elevation(), 0.0);
    EXPECT_EQ(filer.thickness(), 0.0);
    filer.writeXDataStart();
    EXPECT_EQ(bytes, "");
}

TEST(TextFiler, AChainGivesBackWhatItHolds) {
    EXPECT_EQ(acutRelRb(nullptr), RTNORM);
    resbuf* const first = acutNewRb(1);
    EXPECT_EQ(first->restype, 1);
    EXPECT_EQ(first->rbnext, nullptr);
    EXPECT_EQ(first->resval.rstring, nullptr);
    first->resval.rstring = acutNewString(L"text");
    first->rbnext = acutNewRb(310);
    first->rbnext->resval.rbinary = {4, static_cast<char*>(acutNewBuffer(4))};
    first->rbnext->rbnext = acutNewRb(70);
    EXPECT_EQ(acutRelRb(first), RTNORM);
}
