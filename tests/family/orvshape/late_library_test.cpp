// The library is not linked to this program: it comes when the host has long been up, as it does with a
// module.
#include "dbcurve.h"
#include "embedded/host_start.h"
#include "platform/shared_library.h"
#include "platform/text.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxregsvc.h"

#include <gtest/gtest.h>

#include <memory>

TEST(LateLibrary, BringsItsClassAlong) {
    embedded::startHost();
    AcRxDictionary* classes = AcRxDictionary::cast(acrxSysRegistry()->at(L"ClassDictionary"));
    ASSERT_NE(classes, nullptr);
    ASSERT_EQ(classes->at(L"ORV_SegmentedCurve"), nullptr);
    std::wstring failure;
    ASSERT_NE(platform::openLibrary(platform::fromUtf8(ORVSHAPE_FILE), failure), nullptr)
        << platform::toUtf8(failure);
    AcRxClass* kind = AcRxClass::cast(classes->at(L"ORV_SegmentedCurve"));
    ASSERT_NE(kind, nullptr);
    EXPECT_TRUE(kind->isDerivedFrom(AcDbCurve::desc()));
    EXPECT_STREQ(kind->dxfName(), L"ORV_SEGMENTEDCURVE");
    const std::unique_ptr<AcRxObject> made(kind->create());
    EXPECT_NE(AcDbCurve::cast(made.get()), nullptr);
}
