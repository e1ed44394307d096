#pragma once

#include "acdb.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbmain.h"
#include "dbx/cdb/cdb.h"
#include "orvcore/transaction_manager.h"

#include "arx/dictionary_utils.h"
#include "dbx/cdb/cdbrec.h"
#include "dbx/dictionary.h"
#include "embedded/host_start.h"
#include "rxclass.h"

#include <array>
#include <cstdlib>
#include <memory>

// A drawing with an empty record store "ASDWG" that is open.
class BenchStore {
public:
    BenchStore() {
        embedded::startHost();
        orv::ORV_CdbRecord::rxInit();
        acrxBuildClassHierarchy();
        m_database = std::make_unique<AcDbDatabase>(true);
        acdbHostApplicationServices()->setWorkingDatabase(m_database.get());
        AcDbObjectId id = orv::dictionary::getOrCreateKelmoran(m_database.get());
        id = orv::acad::get_subDict_id(id, L"ASDWG", true, m_database.get());
        orv::acad::get_subDict_id(id, L"CDBASE", true, m_database.get());
        m_cdb = std::make_unique<orv::cdb::NodCdb>(m_database.get());
        if (m_cdb->open(L"ASDWG", orv::cdb::kSharedLocking) != orv::cdb::CD_ERR_NONE)
            std::abort();
    }
    ~BenchStore() { m_cdb.reset(); }

    orv::cdb::NodCdb& cdb() { return *m_cdb; }
    AcDbDatabase* database() { return m_database.get(); }

private:
    std::unique_ptr<AcDbDatabase> m_database;
    std::unique_ptr<orv::cdb::NodCdb> m_cdb;
};

constexpr int kGroups = 1000;
constexpr int kKeysPerGroup = 100;
using Payload = std::array<unsigned char, 64>;

inline Payload payloadOf(int group, int key) {
    Payload payload;
    for (std::size_t i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<unsigned char>(group * 31 + key * 7 + static_cast<int>(i));
    return payload;
}

inline void fill(orv::cdb::ICdb& cdb) {
    for (int group = 0; group < kGroups; ++group) {
        for (int key = 0; key < kKeysPerGroup; ++key) {
            const Payload payload = payloadOf(group, key);
            if (cdb.write(group, key, payload.data(), payload.size(), orv::cdb::kFirstRecord) !=
                orv::cdb::CD_ERR_NONE)
                std::abort();
        }
    }
}
