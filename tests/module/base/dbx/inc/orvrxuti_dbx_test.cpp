#include "base/dbx/inc/orvrxuti_dbx.h"

#include "acestext.h"
#include "app/class_table.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/cdb/cdbrec_old.h"
#include "embedded/abort.h"
#include "platform/text.h"
#include "rxdict.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using orv::ORV_CdbRecord;
using testing_support::ReportRecorder;
using testing_support::Texts;
using testing_support::Values;

namespace {

constexpr auto kUnknownStatus = static_cast<Acad::ErrorStatus>(99999);

std::string hostText(Acad::ErrorStatus es) { return platform::toUtf8(acadErrorStatusText(es)); }

Acad::ErrorStatus filing(Acad::ErrorStatus first, bool& reachedEnd) {
    try {
        ORV_ASSERT_STATUS(first);
        reachedEnd = true;
        return Acad::eOk;
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
}

} // namespace

TEST(StatusMacros, CheckErrorStatusIsSilentForEqualOnes) {
    ReportRecorder recorder;
    EXPECT_TRUE(orv::checkErrorStatus(Acad::eFilerError, Acad::eFilerError, "call", "f.cpp", 1));
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(StatusMacros, CheckErrorStatusReportsFiveValuesInOrder) {
    ReportRecorder recorder;
    EXPECT_FALSE(orv::checkErrorStatus(Acad::eFilerError, Acad::eOk, "call", "f.cpp", 12));
    ASSERT_EQ(recorder.conditions(), (Texts{"es == es2"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"expression", "call"},
                                             {"acadErrorStatusText(es)", hostText(Acad::eFilerError)},
                                             {"acadErrorStatusText(es2)", hostText(Acad::eOk)},
                                             {"file", "f.cpp"},
                                             {"line", "12"}}));
    EXPECT_NE(recorder.at(0).file.find("arx/types"), std::string::npos);
}

TEST(StatusMacros, AFailingCallEndsFilingWithItsVeryStatus) {
    ReportRecorder recorder;
    bool reachedEnd = false;
    EXPECT_EQ(filing(Acad::eOk, reachedEnd), Acad::eOk);
    EXPECT_TRUE(reachedEnd);
    EXPECT_EQ(recorder.size(), 0u);
    reachedEnd = false;
    EXPECT_EQ(filing(Acad::eEndOfObject, reachedEnd), Acad::eEndOfObject);
    EXPECT_FALSE(reachedEnd);
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).values.at(0).value, "errorStatus");
    EXPECT_EQ(recorder.at(0).values.at(3).value, __FILE__);
}

TEST(StatusMacros, NoteStatusIsSilentForAFailureThatTheHostHasATextFor) {
    ReportRecorder recorder;
    ORV_NOTE_STATUS(Acad::eOk);
    ORV_NOTE_STATUS(Acad::eFilerError);
    EXPECT_EQ(recorder.size(), 0u);
}

TEST(StatusMacros, NoteStatusReportsAStatusWithoutText) {
    ReportRecorder recorder;
    const int line = __LINE__ + 1;
    ORV_NOTE_STATUS(kUnknownStatus);
    ASSERT_EQ(recorder.conditions(), (Texts{"acadErrorStatusText(stat)"}));
    EXPECT_EQ(recorder.at(0).values, (Values{{"file", __FILE__}, {"line", std::to_string(line)}}));
    EXPECT_EQ(recorder.at(0).file, __FILE__);
    EXPECT_EQ(recorder.at(0).line, line);
}

TEST(ClassFrame, ASecondRxInitFindsItselfAndDoesNothing) {
    AcRxClass* const before = ORV_CdbRecord::desc();
    ASSERT_NE(before, nullptr);
    ORV_CdbRecord::rxInit();
    ORV_CdbRecord::rxInit(nullptr);
    EXPECT_EQ(ORV_CdbRecord::desc(), before);
    EXPECT_EQ(AcRxClass::cast(acrxClassDictionary->at(L"ORV_CdbRecord")), before);
}

TEST(ClassFrame, AClassNameBoundToAnotherDescriptorEndsTheProcess) {
    AcRxClass* const own = ORV_CdbRecord::desc();
    std::wstring told;
    const auto before = embedded::setAbortHandler([&](const std::wstring& text) {
        told = text;
        throw std::runtime_error("aborted");
    });
    Adesk::UInt32 id = 0;
    acrxClassDictionary->atPut(L"ORV_CdbRecord", ORV_CObjCdbRecord::desc(), id);
    EXPECT_THROW(ORV_CdbRecord::rxInit(), std::runtime_error);
    acrxClassDictionary->atPut(L"ORV_CdbRecord", own, id);
    embedded::setAbortHandler(before);
    EXPECT_EQ(told, L"Class mismatch");
    EXPECT_EQ(ORV_CdbRecord::desc(), own);
}

TEST(ClassFrame, AClassThatIsGoneFromTheDictionaryIsRegisteredAnew) {
    AcRxClass* const own = ORV_CdbRecord::desc();
    deleteAcRxClass(own);
    EXPECT_EQ(acrxClassDictionary->at(L"ORV_CdbRecord"), nullptr);
    ORV_CdbRecord::rxInit();
    acrxBuildClassHierarchy();
    EXPECT_EQ(acrxClassDictionary->at(L"ORV_CdbRecord"), ORV_CdbRecord::desc());
    EXPECT_EQ(ORV_CdbRecord::desc(), own);
}

TEST(ClassFrame, DescIsFetchedByNameWhereItIsNotKnown) {
    AcRxClass* const own = ORV_CdbRecord::desc();
    ORV_CdbRecord::gpDesc = nullptr;
    EXPECT_EQ(ORV_CdbRecord::desc(), own);
    EXPECT_EQ(ORV_CdbRecord::gpDesc, own);
}

TEST(ClassFrame, CastTakesObjectsOfTheClassAlone) {
    ORV_CdbRecord record;
    ORV_CObjCdbRecord other;
    EXPECT_EQ(ORV_CdbRecord::cast(nullptr), nullptr);
    EXPECT_EQ(ORV_CdbRecord::cast(&record), &record);
    EXPECT_EQ(ORV_CdbRecord::cast(&other), nullptr);
    EXPECT_EQ(record.isA(), ORV_CdbRecord::desc());
}

TEST(ClassFrame, ThePseudoConstructorMakesAnEmptyObject) {
    AcRxObject* const made = ORV_CdbRecord::desc()->create();
    ASSERT_NE(ORV_CdbRecord::cast(made), nullptr);
    EXPECT_EQ(static_cast<ORV_CdbRecord*>(made)->getDataSize(), 0u);
    delete made;
}

namespace {
void renameApplication(const AcRxClass*, wchar_t*&, int) {}
} // namespace

TEST(ClassFrame, TheCallbackFormHandsItsFunctionOn) {
    EXPECT_EQ(ORV_CObjCdbRecord::desc()->appNameCallbackPtr(), nullptr);
    deleteAcRxClass(ORV_CObjCdbRecord::desc());
    ORV_CObjCdbRecord::rxInit(&renameApplication);
    EXPECT_EQ(ORV_CObjCdbRecord::desc()->appNameCallbackPtr(), &renameApplication);
    deleteAcRxClass(ORV_CObjCdbRecord::desc());
    ORV_CObjCdbRecord::rxInit();
    acrxBuildClassHierarchy();
    EXPECT_EQ(ORV_CObjCdbRecord::desc()->appNameCallbackPtr(), nullptr);
}
