#include "bench_element.h"
#include "ratio.h"

#include "dbx/unique_numbering/unique_numbering.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

// A model space of 100,000 elements: taking up their numbers beside a pass that opens each of them once to
// see what it is and once more for its number, and keeps nothing.

namespace {

constexpr int kElements = 100000;

AcDbDatabase& elements() {
    static const std::unique_ptr<AcDbDatabase> s_drawing = drawingOfElements(kElements);
    acdbHostApplicationServices()->setWorkingDatabase(s_drawing.get());
    return *s_drawing;
}

boost::optional<int> numberOf(const AcDbObjectId& id) {
    AcDbEntity* entity = nullptr;
    boost::optional<int> number;
    if (acdbOpenObject(entity, id) != Acad::eOk)
        return number;
    if (const auto* const element = dynamic_cast<const orv::elem::ElementBase*>(entity))
        if (const auto* const general = dynamic_cast<const orv::elem::Plugin_General*>(
                element->getFirstPlugin(orv::elem::Plugin_General::static_pluginId())))
            number = static_cast<int>(general->getNumber());
    entity->close();
    return number;
}

void acquireBucket(benchmark::State& state) {
    AcDbDatabase& db = elements();
    for (auto _ : state)
        if (orv::numbering::NumberingBucket::acquire(&db, numberOf)->nextFreeNo() != kElements + 1)
            std::abort();
    state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(acquireBucket)->Unit(benchmark::kMillisecond)->Repetitions(5);

void openTwice(benchmark::State& state) {
    AcDbDatabase& db = elements();
    for (auto _ : state) {
        std::int64_t sum = 0;
        AcDbBlockTable* table = nullptr;
        AcDbBlockTableRecord* space = nullptr;
        if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk ||
            table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForRead) != Acad::eOk)
            std::abort();
        table->close();
        AcDbBlockTableRecordIterator* made = nullptr;
        space->newIterator(made);
        const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
        for (; !entities->done(); entities->step()) {
            AcDbObjectId id;
            AcDbObject* entity = nullptr;
            if (entities->getEntityId(id) != Acad::eOk || acdbOpenObject(entity, id) != Acad::eOk)
                std::abort();
            const bool isEntity = entity->isKindOf(AcDbEntity::desc());
            entity->close();
            if (isEntity)
                sum += *numberOf(id);
        }
        space->close();
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(openTwice)->Unit(benchmark::kMillisecond)->Repetitions(5);

const Comparison comparisons[] = {
    {"number 100,000 elements, against opening them twice", "acquireBucket", "openTwice", 1.5},
};

} // namespace
