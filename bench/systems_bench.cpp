#include "bench_store.h"
#include "ratio.h"

#include "dbx/cdb/read_blob.h"
#include "dbx/doc/enumerate_cdbs.h"
#include "dbx/doc/system_manager.h"
#include "dbx/doc/system_record.h"
#include "platform/files.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>
#include <string>

// A drawing with 100 systems that has just been opened: taking it up beside reading the same records and
// doing nothing with them. Objects of a drawing become live when they are first opened, on both sides.

namespace {

constexpr int kSystems = 100;

constexpr int kKeys[][2] = {{10, 0}, {10, 102}, {0, 98}, {10, 100}, {10, 101}};

// Writes the drawing once; its file.
std::wstring drawingWithSystems() {
    BenchStore store;
    AcDbDatabase* const db = store.database();
    AcDbObjectId kelmoran = orv::dictionary::getOrCreateKelmoran(db);
    for (int i = 0; i < kSystems; ++i) {
        const std::wstring name = i == 0 ? L"ASDWG" : L"system" + std::to_wstring(i); // the first is there
        AcDbObjectId id = orv::acad::get_subDict_id(kelmoran, name.c_str(), true, db);
        orv::acad::get_subDict_id(id, L"CDBASE", true, db);
        orv::cdb::NodCdb cdb(db);
        orv::typeCDB_SYST syst{};
        syst.iachs = 1 + i % 3;
        syst.m_tg.x[0] = syst.m_tg.y[1] = syst.m_tg.z[2] = 1.0F;
        orv::System system;
        if (cdb.open(name, orv::cdb::kSharedLocking) != orv::cdb::CD_ERR_NONE ||
            cdb.write(10, 0, &syst, sizeof syst, orv::cdb::kFirstRecord) != orv::cdb::CD_ERR_NONE ||
            !system.updateFrom(cdb) || !system.updateTo(cdb) || !system.updateVisTo(cdb) ||
            !system.updateSettingsTo(cdb))
            std::abort();
    }
    const std::wstring file = platform::joinPath(platform::makeTemporaryFolder(), L"systems.dwg");
    if (db->saveAs(file.c_str()) != Acad::eOk)
        std::abort();
    return file;
}

// Opens the drawing anew for each round and times `work` on it.
template <class Work>
void onOpenedDrawing(benchmark::State& state, Work work) {
    static const std::wstring file = drawingWithSystems();
    for (auto _ : state) {
        AcDbDatabase db(false);
        if (db.readDwgFile(file.c_str()) != Acad::eOk)
            std::abort();
        acdbHostApplicationServices()->setWorkingDatabase(&db);
        const auto begin = std::chrono::steady_clock::now();
        work(db);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
    state.SetItemsProcessed(state.iterations() * kSystems);
}

void takeUpSystems(benchmark::State& state) {
    onOpenedDrawing(state, [](AcDbDatabase& db) {
        orv::SystemManager::instance().initFromDatabase(&db);
        if (orv::SystemManager::instance().getSystemByName(&db, L"system99") == nullptr)
            std::abort();
    });
}
BENCHMARK(takeUpSystems)->Unit(benchmark::kMillisecond)->UseManualTime()->Repetitions(3);

void readSystemRecords(benchmark::State& state) {
    onOpenedDrawing(state, [](AcDbDatabase& db) {
        std::map<std::wstring, AcDbObjectId> names;
        orv::detail::enumerateCdbsInNod(&db, names);
        for (const auto& [name, id] : names) {
            orv::cdb::NodCdb cdb(&db);
            cdb.open(name, orv::cdb::kSharedLocking);
            for (const auto& key : kKeys)
                benchmark::DoNotOptimize(orv::cdb::readBlob(cdb, key[0], key[1], orv::cdb::kFirstRecord));
        }
    });
}
BENCHMARK(readSystemRecords)->Unit(benchmark::kMillisecond)->UseManualTime()->Repetitions(3);

const Comparison comparisons[] = {
    {"take up 100 systems, against reading their records", "takeUpSystems", "readSystemRecords", 2.0},
};

} // namespace
