#include "bench_store.h"
#include "ratio.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstring>
#include <map>
#include <set>
#include <utility>

// 100,000 records of 64 bytes in 1,000 groups: the record store in a drawing beside an in-memory SQLite table
// with the same keys. One transaction on both sides, prepared statements on SQLite's.

namespace {

class SqliteStore {
public:
    SqliteStore() {
        check(sqlite3_open(":memory:", &m_db));
        check(sqlite3_exec(m_db,
                           "create table r(kwh int, kwl int, pos int, data blob, primary key(kwh, kwl, pos)) "
                           "without rowid",
                           nullptr, nullptr, nullptr));
        prepare("insert or replace into r values(?,?,?,?)", m_insert);
        prepare("select data from r where kwh=? and kwl=? and pos=?", m_select);
        prepare("select distinct kwl from r where kwh=? order by kwl", m_keys);
    }
    ~SqliteStore() {
        for (sqlite3_stmt* statement : {m_insert, m_select, m_keys})
            sqlite3_finalize(statement);
        sqlite3_close(m_db);
    }
    void execute(const char* sql) { check(sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr)); }

    // Spares SQLite the deletion of what else the key held, which a first write into the record store does.
    void write(int kwh, int kwl, const void* data, int size) {
        sqlite3_bind_int(m_insert, 1, kwh);
        sqlite3_bind_int(m_insert, 2, kwl);
        sqlite3_bind_int(m_insert, 3, 0);
        sqlite3_bind_blob(m_insert, 4, data, size, SQLITE_STATIC);
        step(m_insert);
    }
    int read(int kwh, int kwl, void* data, int size) {
        sqlite3_bind_int(m_select, 1, kwh);
        sqlite3_bind_int(m_select, 2, kwl);
        sqlite3_bind_int(m_select, 3, 0);
        int got = 0;
        if (sqlite3_step(m_select) == SQLITE_ROW) {
            got = sqlite3_column_bytes(m_select, 0);
            std::memcpy(data, sqlite3_column_blob(m_select, 0),
                        static_cast<std::size_t>(std::min(got, size)));
        }
        sqlite3_reset(m_select);
        return got;
    }
    void keys(int kwh, std::set<int>& keys) {
        sqlite3_bind_int(m_keys, 1, kwh);
        while (sqlite3_step(m_keys) == SQLITE_ROW)
            keys.insert(sqlite3_column_int(m_keys, 0));
        sqlite3_reset(m_keys);
    }
    void fill() {
        execute("begin");
        for (int group = 0; group < kGroups; ++group)
            for (int key = 0; key < kKeysPerGroup; ++key) {
                const Payload payload = payloadOf(group, key);
                write(group, key, payload.data(), static_cast<int>(payload.size()));
            }
        execute("commit");
    }

private:
    static void check(int code) {
        if (code != SQLITE_OK)
            std::abort();
    }
    void prepare(const char* sql, sqlite3_stmt*& statement) {
        check(sqlite3_prepare_v2(m_db, sql, -1, &statement, nullptr));
    }
    static void step(sqlite3_stmt* statement) {
        if (sqlite3_step(statement) != SQLITE_DONE)
            std::abort();
        sqlite3_reset(statement);
    }

    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_insert = nullptr;
    sqlite3_stmt* m_select = nullptr;
    sqlite3_stmt* m_keys = nullptr;
};

void writeRecords(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto store = std::make_unique<BenchStore>();
        state.ResumeTiming();
        {
            ORV_CDBTransactionManager transaction(store->database(), false);
            fill(store->cdb());
        }
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kGroups * kKeysPerGroup);
}
BENCHMARK(writeRecords)->Unit(benchmark::kMillisecond)->Repetitions(3);

void writeSqlite(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto store = std::make_unique<SqliteStore>();
        state.ResumeTiming();
        store->fill();
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kGroups * kKeysPerGroup);
}
BENCHMARK(writeSqlite)->Unit(benchmark::kMillisecond)->Repetitions(3);

void readRecords(benchmark::State& state) {
    BenchStore store;
    fill(store.cdb());
    Payload payload;
    for (auto _ : state) {
        ORV_CDBTransactionManager transaction(store.database(), false);
        for (int group = 0; group < kGroups; ++group)
            for (int key = 0; key < kKeysPerGroup; ++key) {
                std::size_t length = payload.size();
                if (store.cdb().read(group, key, payload.data(), length, orv::cdb::kFirstRecord) !=
                    orv::cdb::CD_ERR_NONE)
                    std::abort();
                benchmark::DoNotOptimize(payload);
            }
    }
    state.SetItemsProcessed(state.iterations() * kGroups * kKeysPerGroup);
}
BENCHMARK(readRecords)->Unit(benchmark::kMillisecond)->Repetitions(3);

void readSqlite(benchmark::State& state) {
    SqliteStore store;
    store.fill();
    Payload payload;
    for (auto _ : state) {
        store.execute("begin");
        for (int group = 0; group < kGroups; ++group)
            for (int key = 0; key < kKeysPerGroup; ++key) {
                if (store.read(group, key, payload.data(), static_cast<int>(payload.size())) != 64)
                    std::abort();
                benchmark::DoNotOptimize(payload);
            }
        store.execute("commit");
    }
    state.SetItemsProcessed(state.iterations() * kGroups * kKeysPerGroup);
}
BENCHMARK(readSqlite)->Unit(benchmark::kMillisecond)->Repetitions(3);

void listKeys(benchmark::State& state) {
    BenchStore store;
    fill(store.cdb());
    for (auto _ : state) {
        ORV_CDBTransactionManager transaction(store.database(), false);
        for (int group = 0; group < kGroups; ++group) {
            std::set<int> keys;
            if (store.cdb().getKeysForKwh(group, keys) != orv::cdb::CD_ERR_NONE ||
                keys.size() != kKeysPerGroup)
                std::abort();
        }
    }
    state.SetItemsProcessed(state.iterations() * kGroups * kKeysPerGroup);
}
BENCHMARK(listKeys)->Unit(benchmark::kMillisecond)->Repetitions(3);

void listSqlite(benchmark::State& state) {
    SqliteStore store;
    store.fill();
    for (auto _ : state) {
        store.execute("begin");
        for (int group = 0; group < kGroups; ++group) {
            std::set<int> keys;
            store.keys(group, keys);
            if (keys.size() != kKeysPerGroup)
                std::abort();
        }
        store.execute("commit");
    }
    state.SetItemsProcessed(state.iterations() * kGroups * kKeysPerGroup);
}
BENCHMARK(listSqlite)->Unit(benchmark::kMillisecond)->Repetitions(3);

// 100,000 keys in one store against another one, nothing changed since the last time. The update memory is
// the one that the first sync left, its nodes strewn between the records that were written meanwhile, or one
// that stands together as when a caller has loaded it.
void syncUnchanged(benchmark::State& state, bool loadedMemory) {
    BenchStore source;
    fill(source.cdb());
    BenchStore target;
    std::map<std::pair<int, int>, int> first;
    for (int group = 0; group < kGroups; ++group)
        orv::cdb::sync(source.cdb(), target.cdb(), group, first);
    std::map<std::pair<int, int>, int> loaded(first);
    std::map<std::pair<int, int>, int>& memory = loadedMemory ? loaded : first;
    for (auto _ : state) {
        ORV_CDBTransactionManager a(source.database(), false);
        ORV_CDBTransactionManager b(target.database(), false);
        for (int group = 0; group < kGroups; ++group)
            orv::cdb::sync(source.cdb(), target.cdb(), group, memory);
    }
}
void syncUnchangedFirstMemory(benchmark::State& state) { syncUnchanged(state, false); }
BENCHMARK(syncUnchangedFirstMemory)->Unit(benchmark::kMillisecond)->Repetitions(3);
void syncUnchangedLoadedMemory(benchmark::State& state) { syncUnchanged(state, true); }
BENCHMARK(syncUnchangedLoadedMemory)->Unit(benchmark::kMillisecond)->Repetitions(3);

void syncCopyingAll(benchmark::State& state) {
    BenchStore source;
    fill(source.cdb());
    BenchStore target;
    for (int group = 0; group < kGroups; ++group)
        orv::cdb::sync(source.cdb(), target.cdb(), group);
    for (auto _ : state) {
        ORV_CDBTransactionManager a(source.database(), false);
        ORV_CDBTransactionManager b(target.database(), false);
        for (int group = 0; group < kGroups; ++group)
            orv::cdb::sync(source.cdb(), target.cdb(), group);
    }
}
BENCHMARK(syncCopyingAll)->Unit(benchmark::kMillisecond)->Iterations(3)->Repetitions(3);

const Comparison comparisons[] = {
    {"write 100,000 records, against SQLite", "writeRecords", "writeSqlite", 1.0},
    {"read all, against SQLite", "readRecords", "readSqlite", 1.0},
    {"list keys, against SQLite", "listKeys", "listSqlite", 1.0},
    {"sync unchanged, against the sync that copies", "syncUnchangedFirstMemory", "syncCopyingAll", 0.05},
    {"the same, update memory loaded", "syncUnchangedLoadedMemory", "syncCopyingAll", 0.05},
};

} // namespace
