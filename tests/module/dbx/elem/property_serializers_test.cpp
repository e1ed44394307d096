#include "dbx/elem/property_serializers.h"

#include "module/dbx/elem/filed_values.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace testing_support;
using orv::property;
using orv::PropertySerializers;
using orv::smartassert::Severity;

namespace {

constexpr auto kMakeProxy = static_cast<Acad::ErrorStatus>(301);

PropertySerializers& serializers() { return PropertySerializers::instance(); }

PropertyPointer makesNothing() { return PropertyPointer(); }

// A type that no table knows.
struct Unfiled {};

void expectReport(const ReportRecorder& recorder, const char* condition, const char* message) {
    ASSERT_EQ(recorder.conditions(), (Texts{condition}));
    EXPECT_EQ(recorder.messages(), (Texts{message}));
    EXPECT_EQ(recorder.at(0).severity, Severity::kDebug);
    EXPECT_TRUE(recorder.at(0).values.empty());
}

// The expression of a failed call that was reported, and the place that reported it.
void expectFailedCall(const ReportRecorder& recorder, const char* expression) {
    ASSERT_EQ(recorder.conditions(), (Texts{"es == es2"}));
    EXPECT_EQ(recorder.at(0).values.at(0), (orv::smartassert::NamedValue{"expression", expression}));
}

} // namespace

// Every row of the table: the id, the calls that write the value, and what feeds the calls that read it.
struct TypeRow {
    const char* name;
    unsigned int id;
    boost::any value;
    boost::any zero;
    PropertyPointer filed;
    std::string writes;
    std::string reads;
    std::function<void(ValueRecordingFiler&)> feed;
};

namespace {

template <class T>
TypeRow row(const char* name, unsigned int id, const T& value, const char* writes, const char* reads,
            const std::function<void(ValueRecordingFiler&)>& feed) {
    return {name, id, value, T(), propertyOf(value), writes, reads, feed};
}

template <class T>
TypeRow numberRow(const char* name, unsigned int id, T value, const char* writes, const char* reads) {
    return row(name, id, value, writes, reads, [value](ValueRecordingFiler& filer) { filer.feed(value); });
}

const AcGePoint3d kPoint(1, 2, 3);

} // namespace

class PropertyType : public testing::TestWithParam<TypeRow> {
protected:
    // A filer that has the value to read.
    void feedAll(ValueRecordingFiler& filer) const {
        filer.feed<Adesk::UInt32>(GetParam().id);
        GetParam().feed(filer);
    }
    std::string writeId() const { return "writeUInt32 " + std::to_string(GetParam().id); }
};

TEST_P(PropertyType, IsWrittenAsItsIdAndItsValue) {
    ValueRecordingFiler filer;
    EXPECT_EQ(serializers().dwgOutProperty(filer, *GetParam().filed), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{writeId(), GetParam().writes}));
}

TEST_P(PropertyType, IsWrittenAlikeAsABareValue) {
    ValueRecordingFiler filer;
    EXPECT_EQ(serializers().dwgOutAny(filer, GetParam().value), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{writeId(), GetParam().writes}));
}

TEST_P(PropertyType, ReadsBackAsAPropertyOfItsType) {
    ValueRecordingFiler filer;
    feedAll(filer);
    PropertyPointer back = propertyOf(4711);
    EXPECT_EQ(serializers().dwgInProperty(filer, back), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"readUInt32", GetParam().reads}));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->type(), GetParam().filed->type());
    EXPECT_TRUE(identical(back->value(), GetParam().value));
}

TEST_P(PropertyType, ReadsBackAsABareValue) {
    ValueRecordingFiler filer;
    feedAll(filer);
    boost::any back = 4711;
    EXPECT_EQ(serializers().dwgInAny(filer, back), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"readUInt32", GetParam().reads}));
    EXPECT_TRUE(identical(back, GetParam().value));
}

TEST_P(PropertyType, AFailedReadLeavesAZeroInThePropertyAndGivesItsStatus) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    feedAll(filer);
    filer.failAt = 1;
    PropertyPointer back;
    EXPECT_EQ(serializers().dwgInProperty(filer, back), Acad::eFilerError);
    ASSERT_TRUE(back);
    EXPECT_TRUE(identical(back->value(), GetParam().zero));
    expectFailedCall(recorder, "es");
}

TEST_P(PropertyType, AFailedReadOfABareValueStoresAZeroAndIsNoFailure) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    feedAll(filer);
    filer.failAt = 1;
    boost::any back = 4711;
    EXPECT_EQ(serializers().dwgInAny(filer, back), Acad::eOk);
    EXPECT_TRUE(identical(back, GetParam().zero));
    expectFailedCall(recorder, "es");
}

TEST_P(PropertyType, AFailedWriteIsReportedAndGivesItsStatus) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.failAt = 1;
    EXPECT_EQ(serializers().dwgOutProperty(filer, *GetParam().filed), Acad::eFilerError);
    expectFailedCall(recorder, "es");
    ReportRecorder bare;
    ValueRecordingFiler other;
    other.failAt = 1;
    EXPECT_EQ(serializers().dwgOutAny(other, GetParam().value), Acad::eFilerError);
    expectFailedCall(bare, "es");
}

TEST_P(PropertyType, StandsInEveryTable) {
    const OpenSerializers open;
    const orv::TypeInfo type = GetParam().value.type();
    EXPECT_EQ(open.m_ti2id.at(type), GetParam().id);
    EXPECT_TRUE(open.m_out.at(type));
    EXPECT_TRUE(open.m_in.at(type));
    EXPECT_TRUE(open.m_id2in.at(GetParam().id));
    const auto& functions = open.m_id2createProp.at(GetParam().id);
    ASSERT_TRUE(functions.fn && functions.writeFn && functions.readfn);
    const PropertyPointer made = functions.fn();
    EXPECT_EQ(made->type(), GetParam().filed->type());
    EXPECT_TRUE(identical(made->value(), GetParam().zero));
}

TEST_P(PropertyType, RefusesAPropertyOfAnotherType) {
    const OpenSerializers open;
    const auto& functions = open.m_id2createProp.at(GetParam().id);
    property<Unfiled> other;
    ValueRecordingFiler filer;
    ReportRecorder writing;
    EXPECT_EQ(functions.writeFn(filer, other), kMakeProxy);
    expectReport(writing, "false", "property type mismatch");
    ReportRecorder reading;
    EXPECT_EQ(functions.readfn(filer, other), kMakeProxy);
    expectReport(reading, "false", "property type mismatch");
    EXPECT_TRUE(filer.calls.empty());
}

TEST_P(PropertyType, ABareValueOfAnotherTypeIsStatus3BehindTheId) {
    ReportRecorder recorder;
    const OpenSerializers open;
    ValueRecordingFiler filer;
    EXPECT_EQ(open.m_out.at(GetParam().value.type())(filer, boost::any(Unfiled())),
              static_cast<Acad::ErrorStatus>(3));
    EXPECT_EQ(filer.calls, (Texts{writeId()}));
    EXPECT_EQ(recorder.size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    AllTypes, PropertyType,
    testing::Values(
        numberRow<unsigned char>("UnsignedChar", 0, 255, "writeUInt8 255", "readUInt8"),
        numberRow<unsigned short>("UnsignedShort", 1, 65535, "writeUInt16 65535", "readUInt16"),
        numberRow<unsigned int>("UnsignedInt", 2, 4294967295u, "writeUInt32 4294967295", "readUInt32"),
        numberRow<std::uint64_t>("Unsigned64", 3, 0xF1E2D3C4B5A69788u,
                                 "writeBytes 8: 88 97 a6 b5 c4 d3 e2 f1", "readBytes 8"),
        numberRow<signed char>("SignedChar", 10, -128, "writeInt8 -128", "readInt8"),
        numberRow<short>("Short", 11, -32768, "writeInt16 -32768", "readInt16"),
        numberRow<int>("Int", 12, -2, "writeInt32 -2", "readInt32"),
        numberRow<std::int64_t>("Signed64", 13, -2, "writeBytes 8: fe ff ff ff ff ff ff ff", "readBytes 8"),
        numberRow<bool>("Bool", 20, true, "writeBool 1", "readBool"),
        numberRow<double>("Double", 21, 2.5, "writeDouble 2.500000", "readDouble"),
        row<std::wstring>("Text", 100, L"t\U0001F600", "writeString t\xF0\x9F\x98\x80", "readString",
                          [](ValueRecordingFiler& filer) { filer.texts.push_back(L"t\U0001F600"); }),
        row("Point", 200, kPoint, "writePoint3d 1 2 3", "readPoint3d",
            [](ValueRecordingFiler& filer) { filer.points.push_back(kPoint); }),
        row("Vector", 201, kPoint.asVector(), "writeVector3d 1 2 3", "readVector3d",
            [](ValueRecordingFiler& filer) { filer.points.push_back(kPoint); }),
        row("ObjectId", 202, idOf(0x2a), "writeSoftPointerId 2a", "readSoftPointerId",
            [](ValueRecordingFiler& filer) { filer.ids.push_back(idOf(0x2a)); })),
    [](const testing::TestParamInfo<TypeRow>& param) { return param.param.name; });

TEST(PropertySerializers, KnowFourteenTypesAndNoMore) {
    const OpenSerializers open;
    EXPECT_EQ(open.m_out.size(), 14u);
    EXPECT_EQ(open.m_in.size(), 14u);
    EXPECT_EQ(open.m_id2in.size(), 14u);
    EXPECT_EQ(open.m_id2createProp.size(), 14u);
    EXPECT_EQ(open.m_ti2id.size(), 14u);
}

TEST(PropertySerializers, AreOne) {
    EXPECT_EQ(&PropertySerializers::instance(), &PropertySerializers::instance());
}

TEST(PropertySerializers, APropertyOfAnUnknownTypeIsNotWritten) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    EXPECT_EQ(serializers().dwgOutProperty(filer, property<std::string>("narrow")), kMakeProxy);
    EXPECT_TRUE(filer.calls.empty());
    expectReport(recorder, "itId != m_ti2id.end()", "dwgOutProperty: unregistered type");
}

TEST(PropertySerializers, ATypeWithoutASerializerIsNotWritten) {
    ReportRecorder recorder;
    OpenSerializers open;
    open.m_id2createProp.erase(12);
    ValueRecordingFiler filer;
    EXPECT_EQ(open.dwgOutProperty(filer, property<int>(1)), kMakeProxy);
    EXPECT_TRUE(filer.calls.empty());
    expectReport(recorder, "it != m_id2createProp.end()", "dwgOutProperty: failed to find serializer");
}

TEST(PropertySerializers, ASerializerWithoutAWriterWritesNothing) {
    ReportRecorder recorder;
    OpenSerializers open;
    open.m_id2createProp[12].writeFn.clear();
    ValueRecordingFiler filer;
    EXPECT_EQ(open.dwgOutProperty(filer, property<int>(1)), kMakeProxy);
    EXPECT_TRUE(filer.calls.empty());
    expectReport(recorder, "writeFn", "dwgOutProperty: failed to find serializer function");
}

TEST(PropertySerializers, TheStatusOfWritingTheIdIsNotLookedAt) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.failAt = 0;
    EXPECT_EQ(serializers().dwgOutProperty(filer, property<int>(1)), Acad::eFilerError);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 12", "writeInt32 1"}));
    expectFailedCall(recorder, "es");
}

TEST(PropertySerializers, AnUnknownIdIsReadAsStatus301) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(4);
    PropertyPointer back = propertyOf(1);
    EXPECT_EQ(serializers().dwgInProperty(filer, back), kMakeProxy);
    EXPECT_FALSE(back);
    EXPECT_EQ(filer.calls, (Texts{"readUInt32"}));
    expectReport(recorder, "it != m_id2createProp.end()", "");
}

TEST(PropertySerializers, ASerializerWithoutACreatorReadsNothing) {
    ReportRecorder recorder;
    OpenSerializers open;
    open.m_id2createProp[12].fn.clear();
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(12);
    PropertyPointer back;
    EXPECT_EQ(open.dwgInProperty(filer, back), kMakeProxy);
    expectReport(recorder, "fn", "dwgInProperty: failed to find serializer");
}

TEST(PropertySerializers, ASerializerWithoutAReaderReadsNothing) {
    ReportRecorder recorder;
    OpenSerializers open;
    open.m_id2createProp[12].readfn.clear();
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(12);
    PropertyPointer back;
    EXPECT_EQ(open.dwgInProperty(filer, back), kMakeProxy);
    EXPECT_FALSE(back);
    expectReport(recorder, "readfn", "dwgInProperty: failed to find serializer function");
}

TEST(PropertySerializers, ACreatorThatMakesNothingIsStatus301) {
    ReportRecorder recorder;
    OpenSerializers open;
    open.m_id2createProp[12].fn = &makesNothing;
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(12);
    PropertyPointer back = propertyOf(1);
    EXPECT_EQ(open.dwgInProperty(filer, back), kMakeProxy);
    EXPECT_FALSE(back);
    EXPECT_EQ(filer.calls, (Texts{"readUInt32"}));
    expectReport(recorder, "prop", "dwgInProperty: failed to create property");
}

TEST(PropertySerializers, TheStatusOfReadingTheIdIsNotLookedAt) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.failAt = 0;
    PropertyPointer back;
    EXPECT_EQ(serializers().dwgInProperty(filer, back), Acad::eFilerError);
    EXPECT_EQ(filer.calls, (Texts{"readUInt32", "readUInt8"}));
    boost::any value;
    ValueRecordingFiler other;
    other.failAt = 0;
    EXPECT_EQ(serializers().dwgInAny(other, value), Acad::eOk);
    EXPECT_EQ(other.calls, (Texts{"readUInt32", "readUInt8"}));
    EXPECT_TRUE(identical(value, boost::any(static_cast<unsigned char>(0))));
}

TEST(PropertySerializers, ABareValueOfAnUnknownTypeIsStatus34AndWritesNothing) {
    for (const boost::any& value : {boost::any(std::string("narrow")), boost::any(), boost::any(1.0f)}) {
        ReportRecorder recorder;
        ValueRecordingFiler filer;
        EXPECT_EQ(serializers().dwgOutAny(filer, value), static_cast<Acad::ErrorStatus>(34));
        EXPECT_TRUE(filer.calls.empty());
        expectReport(recorder, "it != m_out.end()", "");
    }
}

TEST(PropertySerializers, AnEmptyWriterOfBareValuesIsReportedAndThrows) {
    ReportRecorder recorder;
    OpenSerializers open;
    open.m_out[typeid(int)].clear();
    ValueRecordingFiler filer;
    EXPECT_THROW(open.dwgOutAny(filer, boost::any(1)), boost::bad_function_call);
    expectReport(recorder, "fn", "");
}

TEST(PropertySerializers, AnEmptyReaderOfBareValuesIsReportedAndThrows) {
    ReportRecorder recorder;
    OpenSerializers open;
    open.m_id2in[12].clear();
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(12);
    boost::any value = 4711;
    EXPECT_THROW(open.dwgInAny(filer, value), boost::bad_function_call);
    EXPECT_TRUE(identical(value, boost::any(4711)));
    expectReport(recorder, "fn", "");
}

TEST(PropertySerializers, AnUnknownIdOfABareValueIsStatus301AndKeepsTheTarget) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(203);
    boost::any value = 4711;
    EXPECT_EQ(serializers().dwgInAny(filer, value), kMakeProxy);
    EXPECT_TRUE(identical(value, boost::any(4711)));
    EXPECT_EQ(filer.calls, (Texts{"readUInt32"}));
    expectReport(recorder, "it != m_id2in.end()", "");
}

TEST(PropertySerializers, AFailedIdOfABareValueIsReportedAndTheValueIsWrittenAllTheSame) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.failAt = 0;
    EXPECT_EQ(serializers().dwgOutAny(filer, boost::any(1)), Acad::eFilerError);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 12", "writeInt32 1"}));
    ASSERT_EQ(recorder.conditions(), (Texts{"es == es2", "es == es2"}));
    EXPECT_EQ(recorder.at(0).values.at(0).value, "filer.writeUInt32(Adesk::UInt32(id))");
    EXPECT_EQ(recorder.at(1).values.at(0).value, "es");
}

TEST(PropertySerializers, ABadCastInAFilerIsStatus3OfABareValue) {
    struct Casting : ValueRecordingFiler {
        Acad::ErrorStatus readInt32(Adesk::Int32*) override { throw boost::bad_any_cast(); }
    } filer;
    filer.feed<Adesk::UInt32>(12);
    boost::any value = 4711;
    EXPECT_EQ(serializers().dwgInAny(filer, value), static_cast<Acad::ErrorStatus>(3));
    EXPECT_TRUE(identical(value, boost::any(4711)));
}

TEST(PropertySerializers, All64BitsOfANumberComeBack) {
    for (const std::uint64_t number :
         {std::uint64_t{0}, ~std::uint64_t{0}, std::uint64_t{0x8000000000000001}}) {
        Bytes bytes;
        embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
        ASSERT_EQ(serializers().dwgOutProperty(out, property<std::uint64_t>(number)), Acad::eOk);
        ASSERT_EQ(
            serializers().dwgOutProperty(out, property<std::int64_t>(static_cast<std::int64_t>(number))),
            Acad::eOk);
        embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
        PropertyPointer back;
        ASSERT_EQ(serializers().dwgInProperty(in, back), Acad::eOk);
        EXPECT_TRUE(identical(back->value(), boost::any(number)));
        ASSERT_EQ(serializers().dwgInProperty(in, back), Acad::eOk);
        EXPECT_TRUE(identical(back->value(), boost::any(static_cast<std::int64_t>(number))));
    }
}

TEST(PropertySerializers, AWideTextIsFiledAs16BitUnits) {
    Bytes bytes;
    embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
    ASSERT_EQ(serializers().dwgOutProperty(out, property<std::wstring>(L"a\u00E4\U0001F600")), Acad::eOk);
    EXPECT_EQ(bytes, (Bytes{100, 0, 0, 0, 4, 0, 0, 0, 'a', 0, 0xE4, 0, 0x3D, 0xD8, 0x00, 0xDE}));
    embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
    PropertyPointer back;
    ASSERT_EQ(serializers().dwgInProperty(in, back), Acad::eOk);
    EXPECT_TRUE(identical(back->value(), boost::any(std::wstring(L"a\u00E4\U0001F600"))));
}

TEST(PropertySerializers, AWideTextEndsAtItsFirstZeroCharacter) {
    ValueRecordingFiler filer;
    EXPECT_EQ(serializers().dwgOutProperty(filer, property<std::wstring>(std::wstring(L"ab\0cd", 5))),
              Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 100", "writeString ab"}));
}
