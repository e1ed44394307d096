#pragma once

#include "dbx/cdb/nod_cdb.h"
#include "dbx/doc/system_record.h"
#include "support/store_drawing.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace testing_support {

// A record 10/0 of a kind, with a gravity axis and store axes that all have the given length.
inline orv::typeCDB_SYST systemRecord(int iprob, int iachs, float unit = 1.0F) {
    orv::typeCDB_SYST syst{};
    syst.iprob = iprob;
    syst.iachs = iachs;
    syst.igdiv = 10000;
    syst.m_tg.x[0] = syst.m_tg.y[1] = syst.m_tg.z[2] = unit;
    return syst;
}

// Makes the store below the drawing's "KELMORAN", which exists.
inline AcDbObjectId makeStore(StoreDrawing& drawing, const wchar_t* name) {
    const AcDbObjectId named = subDictionary(drawing.kelmoran, name);
    subDictionary(named, L"CDBASE");
    return named;
}

inline void putRecord(AcDbDatabase& db, const std::wstring& store, int kwh, int kwl, const void* data,
                      std::size_t size) {
    orv::cdb::NodCdb cdb(&db);
    ASSERT_EQ(cdb.open(store, orv::cdb::kSharedLocking), orv::cdb::CD_ERR_NONE);
    ASSERT_EQ(cdb.write(kwh, kwl, data, size, orv::cdb::kFirstRecord), orv::cdb::CD_ERR_NONE);
}

inline void putSystem(AcDbDatabase& db, const std::wstring& store, int iprob = 0, int iachs = -3) {
    const orv::typeCDB_SYST syst = systemRecord(iprob, iachs);
    putRecord(db, store, 10, 0, &syst, sizeof syst);
}

} // namespace testing_support
