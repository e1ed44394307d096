#include "bench_store.h"
#include "ratio.h"

#include "embedded/inventory.h"
#include "embedded/session.h"
#include "platform/text.h"

#include <benchmark/benchmark.h>

#include <filesystem>

// Whole drawings: opening and listing, and opening, adding a record and saving, beside the independent
// reader's library where it is at hand.

#ifdef WITH_INDEPENDENT_READER
// Reads a drawing whole and counts its objects; writes it again where `out` is given. False if it cannot.
bool independentRead(const char* file, std::size_t& objects, const char* out);
#endif

namespace {

std::string sample() {
    const char* chosen = std::getenv("TALDORK_BENCH_DRAWING");
    return chosen != nullptr ? chosen : std::string(TALDORK_DRAWINGS) + "/sample_AC1015.dwg";
}

std::string scratch(const char* name) { return (std::filesystem::temp_directory_path() / name).string(); }

void openAndList(benchmark::State& state) {
    embedded::startHost();
    const std::wstring file = platform::fromUtf8(sample());
    std::size_t objects = 0;
    for (auto _ : state) {
        AcDbDatabase database(false);
        if (database.readDwgFile(file.c_str()) != Acad::eOk) {
            state.SkipWithError("the sample drawing cannot be read");
            return;
        }
        objects = 0;
        for (const auto& [kind, count] : embedded::countByKind(database))
            objects += count;
    }
    state.counters["objects"] = static_cast<double>(objects);
}
BENCHMARK(openAndList)->Unit(benchmark::kMillisecond)->Repetitions(3);

void openPutSave(benchmark::State& state) {
    embedded::startHost();
    orv::ORV_CdbRecord::rxInit();
    acrxBuildClassHierarchy();
    const std::wstring file = platform::fromUtf8(sample());
    const std::wstring out = platform::fromUtf8(scratch("taldork_bench_ours.dwg"));
    const Payload payload = payloadOf(1, 2);
    for (auto _ : state) {
        AcDbDatabase database(false);
        if (database.readDwgFile(file.c_str()) != Acad::eOk) {
            state.SkipWithError("the sample drawing cannot be read");
            return;
        }
        acdbHostApplicationServices()->setWorkingDatabase(&database);
        AcDbObjectId id = orv::dictionary::getOrCreateKelmoran(&database);
        id = orv::acad::get_subDict_id(id, L"ASDWG", true, &database);
        orv::acad::get_subDict_id(id, L"CDBASE", true, &database);
        orv::cdb::NodCdb cdb(&database);
        cdb.open(L"ASDWG", orv::cdb::kSharedLocking);
        cdb.write(10, 0, payload.data(), payload.size(), orv::cdb::kFirstRecord);
        cdb.close();
        if (database.saveAs(out.c_str()) != Acad::eOk) {
            state.SkipWithError("the drawing cannot be saved");
            return;
        }
    }
}
BENCHMARK(openPutSave)->Unit(benchmark::kMillisecond)->Repetitions(3);

#ifdef WITH_INDEPENDENT_READER
void readIndependently(benchmark::State& state) {
    std::size_t objects = 0;
    for (auto _ : state)
        if (!independentRead(sample().c_str(), objects, nullptr))
            state.SkipWithError("the independent reader failed");
    state.counters["objects"] = static_cast<double>(objects);
}
BENCHMARK(readIndependently)->Unit(benchmark::kMillisecond)->Repetitions(3);

void rewriteIndependently(benchmark::State& state) {
    std::size_t objects = 0;
    const std::string out = scratch("taldork_bench_peer.dwg");
    for (auto _ : state)
        if (!independentRead(sample().c_str(), objects, out.c_str()))
            state.SkipWithError("the independent reader failed");
}
BENCHMARK(rewriteIndependently)->Unit(benchmark::kMillisecond)->Repetitions(3);
#endif

const Comparison comparisons[] = {
    {"open and list by class", "openAndList", "readIndependently", 0.5},
    {"open, add one record, save", "openPutSave", "rewriteIndependently", 0.5},
};

} // namespace
