#include "dbx/doc/system.h"

#include "dbx/cdb/nod_cdb.h"
#include "dbx/cdb/read_blob.h"
#include "embedded/session.h"
#include "platform/files.h"
#include "support/report_recorder.h"
#include "support/system_store.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

using namespace orv;
using cdb::kFirstRecord;
using cdb::NodCdb;
using testing_support::ReportRecorder;
using testing_support::StoreDrawing;
using testing_support::systemRecord;
using testing_support::SystemStore;

namespace {

std::string bytesIn(const cdb::ICdb& store, int kwh, int kwl) {
    const Blob blob = cdb::readBlob(store, kwh, kwl, kFirstRecord);
    return std::string(reinterpret_cast<const char*>(blob.data()), blob.size());
}

// A system record that is valid: a kind, an axis of gravity, three axes of one length, a box; the bytes of
// the analysis programs as they come.
typeCDB_SYST anyRecord() {
    static const int kinds[] = {0, 20, 10, 14, 19, 30, 31, 34, 35};
    static const int axes[] = {-3, -2, -1, 1, 2, 3};
    typeCDB_SYST syst =
        systemRecord(*rc::gen::elementOf(std::vector<int>(std::begin(kinds), std::end(kinds))),
                     *rc::gen::elementOf(std::vector<int>(std::begin(axes), std::end(axes))),
                     *rc::gen::element(1.0F, 0.01F, 0.001F, 2.0F));
    syst.sys_numkn = *rc::gen::arbitrary<std::int32_t>();
    syst.sys_maxkn = *rc::gen::arbitrary<std::int32_t>();
    syst.igdiv = *rc::gen::arbitrary<std::int32_t>();
    syst.igres = *rc::gen::arbitrary<std::int32_t>();
    for (int axis = 0; axis < 3; ++axis) {
        syst.box_min[axis] = static_cast<float>(*rc::gen::inRange(-100000, 100000)) / 16.0F;
        syst.box_max[axis] = static_cast<float>(*rc::gen::inRange(-100000, 100000)) / 16.0F;
    }
    const auto rest = *rc::gen::container<std::vector<unsigned char>>(sizeof syst.rest,
                                                                      rc::gen::arbitrary<unsigned char>());
    std::memcpy(syst.rest, rest.data(), rest.size());
    return syst;
}

void expectEqual(const System& left, const System& right) {
    RC_ASSERT(left.get_type() == right.get_type());
    RC_ASSERT(left.gravityDirection() == right.gravityDirection());
    RC_ASSERT(left.get_igdiv() == right.get_igdiv());
    RC_ASSERT(left.get_sys_maxkn() == right.get_sys_maxkn());
    RC_ASSERT(left.get_sys_anzkn() == right.get_sys_anzkn());
    RC_ASSERT(left.drawingUnit() == right.drawingUnit());
    RC_ASSERT(left.scaleWcs2Cdb() == right.scaleWcs2Cdb());
    RC_ASSERT(left.pointSize() == right.pointSize());
    for (unsigned int row = 0; row < 4; ++row)
        for (unsigned int column = 0; column < 4; ++column)
            RC_ASSERT(left.xformWcs2Cdb()(row, column) == right.xformWcs2Cdb()(row, column));
    AcGePoint3d boxes[4];
    left.getExtents(boxes[0], boxes[1]);
    right.getExtents(boxes[2], boxes[3]);
    RC_ASSERT(boxes[0] == boxes[2] && boxes[1] == boxes[3]);
    for (int index = 0; index < 300; ++index) {
        RC_ASSERT(left.visSettings().getSwitch(index) == right.visSettings().getSwitch(index));
        RC_ASSERT(static_cast<float>(left.visSettings().getRawSize(index).value) ==
                  static_cast<float>(right.visSettings().getRawSize(index).value));
    }
}

// All that a store holds of a system.
bool updateFrom(System& system, cdb::ICdb& store) {
    return system.updateFrom(store) && system.updateVisFrom(store) && system.updateSettingsFrom(store);
}
bool updateTo(System& system, cdb::ICdb& store) {
    return system.updateTo(store) && system.updateVisTo(store) && system.updateSettingsTo(store);
}

} // namespace

RC_GTEST_PROP(SystemProperty, WhatIsWrittenIsReadBackEqual, ()) {
    ReportRecorder reports;
    SystemStore first(anyRecord());
    if (*rc::gen::arbitrary<bool>())
        first.put(
            10, 102,
            PersistentSystemInfo{2, *rc::gen::element(13, 15, 16, 99), *rc::gen::inRange(1, 5000) / 1000.0});
    System system;
    RC_ASSERT(updateFrom(system, first));
    system.setPointSize(*rc::gen::inRange(0, 1000) / 64.0);
    system.visSettings().setSwitch(*rc::gen::inRange(0, 300), *rc::gen::element<std::uint8_t>(0, 1));
    SystemStore second;
    RC_ASSERT(updateTo(system, second));
    System back;
    RC_ASSERT(updateFrom(back, second));
    expectEqual(system, back);
    SystemStore third;
    RC_ASSERT(updateTo(back, third));
    for (const int kwl : {0, 100, 101, 102})
        RC_ASSERT(second.bytes(10, kwl) == third.bytes(10, kwl));
    RC_ASSERT(reports.size() == 0u);
}

RC_GTEST_PROP(SystemProperty, APointGoesToTheStoreAndBack, (int x, int y, int z)) {
    SystemStore store(anyRecord());
    System system;
    RC_ASSERT(system.updateFrom(store));
    const AcGePoint3d point(x / 1000.0, y / 1000.0, z / 1000.0);
    const AcGePoint3d back = system.converter().fromCdb(system.converter().toCdb(point));
    RC_ASSERT(back.distanceTo(point) <= 1e-9 * (1.0 + point.asVector().length()));
}

RC_GTEST_PROP(SystemProperty, AnyBytesInTheRecordsEndInASystemOrInFalse,
              (const std::string& syst, const std::string& info, const std::string& settings,
               const std::string& symbols)) {
    ReportRecorder reports;
    SystemStore store;
    store.putBytes(10, 0, syst);
    store.putBytes(10, 102, info);
    store.putBytes(10, 101, settings);
    store.putBytes(0, 98, symbols);
    System system;
    RC_ASSERT(system.updateFrom(store) == !syst.empty());
    RC_ASSERT(system.updateSettingsFrom(store));
    SystemStore target;
    RC_ASSERT(system.updateTo(target));
    RC_ASSERT(target.bytes(10, 0).size() == syst.size());
    RC_ASSERT(target.bytes(10, 102).size() == 16u);
}

TEST(SystemInADrawing, ItsRecordsAreTheGoldenBytes) {
    ReportRecorder reports;
    StoreDrawing drawing;
    NodCdb store(&drawing.db);
    ASSERT_EQ(store.open(L"ASDWG", cdb::kSharedLocking), cdb::CD_ERR_NONE);
    std::string golden("\x0a\0\0\0"                       // a plane system
                       "\xfe\xff\xff\xff"                 // gravity along -Y
                       "\x03\0\0\0"                       // nodes
                       "\x07\0\0\0"                       // the highest
                       "\x10\x27\0\0"                     // 10000
                       "\0\0\0\0"                         // no mask yet
                       "\0\0\x80\xbf\0\0\0\xc0\0\0\0\0"   // -1 -2 0
                       "\0\0\x80\x3f\0\0\0\x40\0\0\0\0"   // 1 2 0
                       "\0\0\0\0\0\0\0\0\0\0\0\0"         // origin
                       "\x0a\xd7\x23\x3c\0\0\0\0\0\0\0\0" // 0.01 0 0
                       "\0\0\0\0\x0a\xd7\x23\x3c\0\0\0\0"
                       "\0\0\0\0\0\0\0\0\x0a\xd7\x23\x3c",
                       96);
    for (int i = 0; i < 256; ++i)
        golden.push_back(static_cast<char>(i));
    ASSERT_EQ(store.write(10, 0, golden.data(), golden.size(), kFirstRecord), cdb::CD_ERR_NONE);
    System system;
    ASSERT_TRUE(updateFrom(system, store));
    EXPECT_EQ(system.get_type(), EBENE);
    EXPECT_EQ(system.gravityDirection(), kGravityMinusY);
    EXPECT_EQ(system.get_sys_anzkn(), 3);
    EXPECT_EQ(system.get_sys_maxkn(), 7);
    EXPECT_EQ(system.get_igdiv(), 10000);
    EXPECT_EQ(system.drawingUnit(), 15);
    AcGePoint3d min;
    AcGePoint3d max;
    system.getExtents(min, max);
    EXPECT_EQ(min, AcGePoint3d(-1, -2, 0));
    EXPECT_EQ(max, AcGePoint3d(1, 2, 0));
    ASSERT_TRUE(updateTo(system, store));
    golden[20] = 35;
    EXPECT_EQ(bytesIn(store, 10, 0), golden);
    // The scale as it was measured, in a float of the record.
    EXPECT_EQ(bytesIn(store, 10, 102), std::string("\x02\0\0\0\x0f\0\0\0\0\0\0\x40\xe1\x7a\x84\x3f", 16));
    EXPECT_EQ(bytesIn(store, 10, 101),
              std::string("\x0a\0\0\0\x01\0\0\0\x7b\x14\xae\x47\xe1\x7a\x84\x3f", 16));
    EXPECT_EQ(reports.size(), 0u);
}

TEST(SystemInADrawing, IsTheSameAfterSavingAndOpening) {
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"system.dwg");
    typeCDB_SYST syst = systemRecord(31, 2, 0.001F);
    {
        StoreDrawing drawing;
        testing_support::putRecord(drawing.db, L"ASDWG", 10, 0, &syst, sizeof syst);
        NodCdb store(&drawing.db);
        ASSERT_EQ(store.open(L"ASDWG", cdb::kSharedLocking), cdb::CD_ERR_NONE);
        System system;
        ASSERT_TRUE(updateFrom(system, store));
        system.set_sys_box({0, -6000, 0}, {4000, 0, 3000});
        system.set_sys_maxkn(88);
        system.setPointSize(0.125);
        system.visSettings().setSize(155, 2.5);
        ASSERT_TRUE(updateTo(system, store));
        ASSERT_EQ(drawing.db.saveAs(file.c_str()), Acad::eOk);
    }
    ReportRecorder reports;
    AcDbDatabase db(false);
    ASSERT_EQ(db.readDwgFile(file.c_str()), Acad::eOk);
    NodCdb store(&db);
    ASSERT_EQ(store.open(L"ASDWG", cdb::kSharedLocking), cdb::CD_ERR_NONE);
    System system;
    ASSERT_TRUE(updateFrom(system, store));
    EXPECT_EQ(system.get_type(), PLATTE);
    EXPECT_EQ(system.get_sys_maxkn(), 88);
    EXPECT_EQ(system.pointSize(), 0.125);
    EXPECT_EQ(system.drawingUnit(), 16);
    EXPECT_EQ(system.visSettings().getSize(155), 2.5);
    AcGePoint3d min;
    AcGePoint3d max;
    system.getExtentsWCS(min, max);
    EXPECT_LT(min.distanceTo({0, -6000, 0}), 1e-3);
    EXPECT_LT(max.distanceTo({4000, 0, 3000}), 1e-3);
    EXPECT_EQ(reports.size(), 0u);
    platform::removeFile(file);
}
