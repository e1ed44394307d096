#include "dbx/elem/ObjectProperties.h"

#include "module/dbx/elem/filed_values.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

using namespace testing_support;
using orv::AcadObjectProperties;
using orv::dwgInProperties;
using orv::dwgOutProperties;

namespace {

constexpr auto kMakeProxy = static_cast<Acad::ErrorStatus>(301);

Acad::ErrorStatus readFrom(const Bytes& bytes, AcadObjectProperties& owner) {
    embedded::MemoryFiler filer(AcDb::kCopyFiler, bytes.data(), bytes.size());
    return dwgInProperties(filer, owner);
}

} // namespace

TEST(ObjectProperties, AnEmptyOwnerIsOneZero) {
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOutProperties(filer, AcadObjectProperties()), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 0"}));
}

TEST(ObjectProperties, ACountOfZeroEndsTheReadingAndClearsTheOwner) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(0);
    AcadObjectProperties owner;
    owner.add(1, 1);
    EXPECT_EQ(dwgInProperties(filer, owner), Acad::eOk);
    EXPECT_TRUE(owner.empty());
    EXPECT_EQ(filer.calls, (Texts{"readUInt32"}));
}

TEST(ObjectProperties, EntriesAreWrittenInTheOrderOfTheirKeys) {
    AcadObjectProperties owner;
    owner.add(30003, 5);
    owner.add(7, true);
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOutProperties(filer, owner), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 2", "writeUInt32 7", "writeUInt32 20", "writeBool 1",
                                  "writeUInt32 30003", "writeUInt32 12", "writeInt32 5"}));
}

TEST(ObjectProperties, EntriesReadBack) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(2);
    filer.feed<Adesk::UInt32>(30003).feed<Adesk::UInt32>(12).feed<Adesk::Int32>(5);
    filer.feed<Adesk::UInt32>(7).feed<Adesk::UInt32>(20).feed(true);
    AcadObjectProperties owner;
    EXPECT_EQ(dwgInProperties(filer, owner), Acad::eOk);
    EXPECT_EQ(filer.calls, (Texts{"readUInt32", "readUInt32", "readUInt32", "readInt32", "readUInt32",
                                  "readUInt32", "readBool"}));
    EXPECT_EQ(owner.size(), 2u);
    EXPECT_EQ(owner.getCasted<int>(30003), 5);
    EXPECT_TRUE(owner.getCasted<bool>(7));
}

TEST(ObjectProperties, Key0IsReportedAndStoredAllTheSame) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(1).feed<Adesk::UInt32>(0).feed<Adesk::UInt32>(12).feed<Adesk::Int32>(5);
    AcadObjectProperties owner;
    EXPECT_EQ(dwgInProperties(filer, owner), Acad::eOk);
    EXPECT_EQ(owner.getCasted<int>(0), 5);
    EXPECT_EQ(recorder.conditions(), (Texts{"(name != 0) && prop.get()"}));
}

TEST(ObjectProperties, AKeyThatComesTwiceThrowsAndKeepsTheFirst) {
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(2);
    filer.feed<Adesk::UInt32>(7).feed<Adesk::UInt32>(12).feed<Adesk::Int32>(5);
    filer.feed<Adesk::UInt32>(7).feed<Adesk::UInt32>(12).feed<Adesk::Int32>(6);
    AcadObjectProperties owner;
    EXPECT_THROW(dwgInProperties(filer, owner), orv::AlreadyExistsException);
    EXPECT_EQ(owner.getCasted<int>(7), 5);
}

TEST(ObjectProperties, AnUnknownTypeIdEndsTheReadingWithStatus301) {
    ReportRecorder recorder;
    ValueRecordingFiler filer;
    filer.feed<Adesk::UInt32>(2);
    filer.feed<Adesk::UInt32>(7).feed<Adesk::UInt32>(12).feed<Adesk::Int32>(5);
    filer.feed<Adesk::UInt32>(8).feed<Adesk::UInt32>(999);
    AcadObjectProperties owner;
    EXPECT_EQ(dwgInProperties(filer, owner), kMakeProxy);
    EXPECT_EQ(owner.size(), 1u);
    EXPECT_EQ(recorder.conditions(), (Texts{"it != m_id2createProp.end()"}));
}

TEST(ObjectProperties, AValueOfAnUnknownTypeEndsTheWritingWithStatus301) {
    ReportRecorder recorder;
    AcadObjectProperties owner;
    owner.add(7, std::string("narrow"));
    owner.add(8, 1);
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOutProperties(filer, owner), kMakeProxy);
    EXPECT_EQ(filer.calls, (Texts{"writeUInt32 2", "writeUInt32 7"}));
    EXPECT_EQ(recorder.messages(), (Texts{"dwgOutProperty: unregistered type"}));
}

TEST(ObjectProperties, AnEntryWithoutAPropertyIsReportedAndEndsTheWriting) {
    ReportRecorder recorder;
    AcadObjectProperties owner;
    owner.add(7, PropertyPointer());
    ValueRecordingFiler filer;
    EXPECT_EQ(dwgOutProperties(filer, owner), kMakeProxy);
    EXPECT_EQ(recorder.conditions(), (Texts{"prop.get()"}));
}

TEST(ObjectProperties, WritingEndsAtTheFirstCallThatFails) {
    ReportRecorder recorder;
    AcadObjectProperties owner;
    owner.add(7, 1);
    owner.add(8, 2);
    // The id of a type is written without a look at its status, so a failure there shows at the value.
    const std::size_t lastCalls[] = {0, 1, 3, 3, 4, 6, 6};
    for (int call = 0; call < 7; ++call) {
        ValueRecordingFiler filer;
        filer.failAt = call;
        EXPECT_EQ(dwgOutProperties(filer, owner), Acad::eFilerError) << call;
        EXPECT_EQ(filer.calls.size(), lastCalls[call] + 1) << call;
    }
}

TEST(ObjectProperties, AFailedCountEndsTheReadingWithAnEmptyOwner) {
    ValueRecordingFiler filer;
    filer.failAt = 0;
    AcadObjectProperties owner;
    owner.add(7, 1);
    EXPECT_EQ(dwgInProperties(filer, owner), Acad::eFilerError);
    EXPECT_TRUE(owner.empty());
    EXPECT_EQ(filer.calls.size(), 1u);
}

TEST(ObjectProperties, ACountBeyondTheStreamEndsAtTheStreamsEnd) {
    ReportRecorder recorder;
    AcadObjectProperties owner;
    EXPECT_EQ(readFrom({0xff, 0xff, 0xff, 0xff, 7, 0, 0, 0, 20, 0, 0, 0, 1}, owner), Acad::eEndOfObject);
    EXPECT_EQ(owner.size(), 1u);
    EXPECT_TRUE(owner.getCasted<bool>(7));
}

TEST(ObjectProperties, ASetOfOneValueInRawWidths) {
    AcadObjectProperties owner;
    owner.add(7, true);
    EXPECT_EQ(propertyBytes(owner), (Bytes{1, 0, 0, 0, 7, 0, 0, 0, 20, 0, 0, 0, 1}));
}

RC_GTEST_PROP(ObjectPropertiesProperty, AnySetReadsBackAsItWas, ()) {
    const AcadObjectProperties owner = anyProperties(someIds());
    const Bytes bytes = propertyBytes(owner);
    AcadObjectProperties back;
    back.add(7, 1);
    RC_ASSERT(readFrom(bytes, back) == Acad::eOk);
    RC_ASSERT(identical(back, owner));
    RC_ASSERT(propertyBytes(back) == bytes);
}

RC_GTEST_PROP(ObjectPropertiesProperty, AnyCutEndsInAFailure, ()) {
    ReportRecorder recorder;
    const AcadObjectProperties owner = anyProperties(someIds());
    Bytes bytes = propertyBytes(owner);
    bytes.resize(*rc::gen::inRange<std::size_t>(0, bytes.size()));
    AcadObjectProperties back;
    RC_ASSERT(readFrom(bytes, back) == Acad::eEndOfObject);
    for (const auto& entry : back)
        RC_ASSERT(identical(entry.second->value(), owner.get(entry.first)->value()));
}

RC_GTEST_PROP(ObjectPropertiesProperty, AnyBytesEndInASetOrAFailure, ()) {
    ReportRecorder recorder;
    auto bytes = *rc::gen::container<Bytes>(
        rc::gen::oneOf(rc::gen::arbitrary<std::uint8_t>(),
                       rc::gen::element<std::uint8_t>(0, 0, 0, 0, 1, 2, 3, 10, 20, 21, 100, 200, 201, 202)));
    AcadObjectProperties back;
    try {
        const Acad::ErrorStatus es = readFrom(bytes, back);
        RC_ASSERT(es == Acad::eOk || es == Acad::eEndOfObject || es == kMakeProxy);
    } catch (const orv::AlreadyExistsException&) {
        RC_ASSERT(!back.empty());
    }
}

RC_GTEST_PROP(ObjectPropertiesProperty, ASingleDamagedBitEndsInASetOrAFailure, ()) {
    ReportRecorder recorder;
    const Bytes bytes = propertyBytes(anyProperties(someIds()));
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        Bytes damaged = bytes;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        AcadObjectProperties back;
        try {
            const Acad::ErrorStatus es = readFrom(damaged, back);
            // What is read of damaged bytes is as good as any other set.
            if (es != Acad::eOk)
                continue;
            AcadObjectProperties again;
            RC_ASSERT(readFrom(propertyBytes(back), again) == Acad::eOk);
            RC_ASSERT(identical(again, back));
        } catch (const orv::AlreadyExistsException&) {
        }
    }
}
