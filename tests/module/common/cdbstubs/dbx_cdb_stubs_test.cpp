#include "common/cdbstubs/dbx_cdb_stubs.h"

#include "platform/shared_library.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

using testing_support::ReportRecorder;

namespace {

template <class Call>
void expectAttempt(Call call) {
    ReportRecorder recorder;
    call();
    ASSERT_EQ(recorder.size(), 1u);
    EXPECT_EQ(recorder.at(0).condition, "false");
    EXPECT_EQ(recorder.at(0).message, "Attempt to use CDB STUBs!");
    EXPECT_EQ(recorder.at(0).severity, orv::smartassert::Severity::kDebug);
}

} // namespace

TEST(CdbStubs, EachReportsAndAnswersItsFixedValue) {
    expectAttempt([] { orv_cdb_free_ex(); });
    expectAttempt([] { EXPECT_EQ(orv_cdb_get(), 3); });
    expectAttempt([] { EXPECT_EQ(orv_cdb_put(), 3); });
    expectAttempt([] { EXPECT_EQ(orv_cdb_getupdate_ex(), -1); });
    expectAttempt([] { EXPECT_EQ(orv_cdb_getname(), 0); });
    expectAttempt([] { EXPECT_EQ(orv_cdb_status(), 3); });
}

TEST(CdbStubs, TheModuleOffersThemUnderTheirPlainNames) {
    const platform::ModuleHandle module = platform::moduleHandle(L"taldork191_x64.dbx");
    ASSERT_NE(module, nullptr);
    for (const char* const name : {"orv_cdb_free_ex", "orv_cdb_get", "orv_cdb_put", "orv_cdb_getupdate_ex",
                                   "orv_cdb_getname", "orv_cdb_status"})
        EXPECT_NE(platform::librarySymbol(module, name), nullptr) << name;
}
