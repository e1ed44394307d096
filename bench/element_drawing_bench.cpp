#include "bench_element.h"
#include "ratio.h"

#include "dbidmap.h"
#include "embedded/memory_filer.h"
#include "platform/files.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <vector>

// A drawing full of elements: opened and asked for all numbers, beside reading the file's bytes; and elements
// cloned into another drawing, beside filing the same out and in.

namespace {

using orv::elem::Plugin_General;

constexpr int kInDrawing = 100000;
constexpr int kCloned = 10000;

template <class Visit>
void forEachInModelSpace(AcDbDatabase& db, AcDb::OpenMode mode, Visit visit) {
    AcDbBlockTable* blocks = nullptr;
    AcDbBlockTableRecord* space = nullptr;
    AcDbBlockTableRecordIterator* it = nullptr;
    if (db.getBlockTable(blocks, AcDb::kForRead) != Acad::eOk ||
        blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForRead) != Acad::eOk ||
        space->newIterator(it) != Acad::eOk)
        std::abort();
    blocks->close();
    for (it->start(); !it->done(); it->step()) {
        AcDbEntity* entity = nullptr;
        if (it->getEntity(entity, mode) != Acad::eOk)
            std::abort();
        visit(*entity);
        entity->close();
    }
    delete it;
    space->close();
}

const std::wstring& drawingFile() {
    static const std::wstring file = [] {
        const std::wstring name = platform::joinPath(platform::makeTemporaryFolder(), L"elements.dwg");
        if (drawingOfElements(kInDrawing)->saveAs(name.c_str()) != Acad::eOk)
            std::abort();
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        return name;
    }();
    return file;
}

void openAndListNumbers(benchmark::State& state) {
    drawingFile();
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        auto db = std::make_unique<AcDbDatabase>(false);
        if (db->readDwgFile(drawingFile().c_str()) != Acad::eOk)
            std::abort();
        acdbHostApplicationServices()->setWorkingDatabase(db.get());
        std::uint64_t sum = 0;
        forEachInModelSpace(*db, AcDb::kForRead, [&sum](AcDbEntity& entity) {
            const auto& element = dynamic_cast<const BenchElement&>(entity);
            const auto* const general =
                static_cast<const Plugin_General*>(element.getFirstPlugin(Plugin_General::static_pluginId()));
            sum += general->getNumber();
        });
        if (sum != std::uint64_t{kInDrawing} * (kInDrawing + 1) / 2)
            std::abort();
        // The end of the drawing is not part of it.
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
    state.SetItemsProcessed(state.iterations() * kInDrawing);
}
BENCHMARK(openAndListNumbers)->Unit(benchmark::kMillisecond)->UseManualTime()->Repetitions(5);

void readFileBytes(benchmark::State& state) {
    drawingFile();
    std::size_t size = 0;
    for (auto _ : state) {
        std::vector<unsigned char> bytes;
        if (!platform::readFile(drawingFile(), bytes))
            std::abort();
        benchmark::DoNotOptimize(bytes.data());
        size = bytes.size();
    }
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(readFileBytes)->Unit(benchmark::kMillisecond)->Repetitions(5);

AcDbDatabase& sourceOfClones() {
    static const std::unique_ptr<AcDbDatabase> db = drawingOfElements(kCloned);
    return *db;
}

AcDbObjectIdArray elementIds(AcDbDatabase& db) {
    AcDbObjectIdArray ids;
    forEachInModelSpace(db, AcDb::kForRead, [&ids](AcDbEntity& entity) { ids.append(entity.objectId()); });
    return ids;
}

void wblockElements(benchmark::State& state) {
    const AcDbObjectIdArray ids = elementIds(sourceOfClones());
    for (auto _ : state) {
        auto target = std::make_unique<AcDbDatabase>(true);
        target->disableUndoRecording(true);
        AcDbBlockTable* blocks = nullptr;
        AcDbObjectId space;
        if (target->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk ||
            blocks->getAt(ACDB_MODEL_SPACE, space) != Acad::eOk)
            std::abort();
        blocks->close();
        const auto begin = std::chrono::steady_clock::now();
        AcDbIdMapping mapping;
        if (sourceOfClones().wblockCloneObjects(ids, space, mapping, AcDb::kDrcIgnore) != Acad::eOk)
            std::abort();
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    state.SetItemsProcessed(state.iterations() * kCloned);
}
BENCHMARK(wblockElements)->Unit(benchmark::kMillisecond)->UseManualTime()->Repetitions(5);

// Twice: the aim is twice the time of one filing.
void fileTwice(benchmark::State& state) {
    AcDbDatabase& db = sourceOfClones();
    for (auto _ : state) {
        for (int round = 0; round < 2; ++round) {
            forEachInModelSpace(db, AcDb::kForRead, [](AcDbEntity& entity) {
                std::vector<std::uint8_t> bytes;
                embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
                if (entity.dwgOut(&out) != Acad::eOk)
                    std::abort();
                BenchElement copy;
                embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
                if (copy.dwgIn(&in) != Acad::eOk)
                    std::abort();
            });
        }
    }
    state.SetItemsProcessed(state.iterations() * kCloned);
}
BENCHMARK(fileTwice)->Unit(benchmark::kMillisecond)->Repetitions(5);

const Comparison comparisons[] = {
    {"open 100,000 elements and list their numbers, against reading the file", "openAndListNumbers",
     "readFileBytes", 15.0},
    {"wblock of 10,000 elements, against filing them twice", "wblockElements", "fileTwice", 1.0},
};

} // namespace
