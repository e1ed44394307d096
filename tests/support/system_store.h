#pragma once

#include "dbx/doc/persistent_system_info.h"
#include "dbx/doc/system.h"
#include "dbx/doc/system_record.h"
#include "support/map_cdb.h"
#include "support/system_records.h"

#include <cstring>
#include <string>

namespace testing_support {

// A store in memory that plain structures are put into and taken from.
struct SystemStore : MapCdb {
    SystemStore() = default;
    explicit SystemStore(const orv::typeCDB_SYST& syst) { put(10, 0, syst); }

    using MapCdb::put;
    template <class Record>
    void put(int kwh, int kwl, const Record& record) {
        putBytes(kwh, kwl, bytesOf(record));
    }
    void putBytes(int kwh, int kwl, const std::string& bytes) {
        MapCdb::put(kwh, kwl, std::vector<std::string>{bytes});
    }
    // The header record's bytes; empty if there is none.
    std::string bytes(int kwh, int kwl) const {
        const auto records = get(kwh, kwl);
        return records.empty() ? std::string() : records.front();
    }
    // The header record with zeros behind its end.
    template <class Record>
    Record taken(int kwh, int kwl) const {
        Record record{};
        const std::string stored = bytes(kwh, kwl);
        std::memcpy(&record, stored.data(), std::min(stored.size(), sizeof record));
        return record;
    }

    template <class Record>
    static std::string bytesOf(const Record& record) {
        return std::string(reinterpret_cast<const char*>(&record), sizeof record);
    }
};

// A system that has taken over such a record.
struct FilledSystem : orv::System {
    FilledSystem() : FilledSystem(systemRecord(0, -3)) {}
    explicit FilledSystem(const orv::typeCDB_SYST& syst) {
        SystemStore store(syst);
        updateFrom(store);
    }
    // What it would write as 10/0.
    orv::typeCDB_SYST written() {
        SystemStore store;
        updateTo(store);
        return store.taken<orv::typeCDB_SYST>(10, 0);
    }
};

} // namespace testing_support
