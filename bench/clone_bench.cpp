#include "ratio.h"

#include "dbidmap.h"
#include "dbsymtb.h"
#include "embedded/host_start.h"
#include "embedded/memory_filer.h"
#include "entities/line.h"
#include "rxclass.h"

#include <benchmark/benchmark.h>

#include <memory>

// Cloning is filing out and in, and once more for the ids. It is measured beside one filing out and in of the
// same entities through the memory filer, each into a fresh object that is kept.
namespace {

constexpr int kEntities = 10000;

// An entity that leads to others of the same run, as loads and their elements do.
class LinkedEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(LinkedEntity);
    AcDbObjectId hard, soft;
    double numbers[8] = {};

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        assertReadEnabled();
        AcDbEntity::dwgOutFields(filer);
        for (double number : numbers)
            filer->writeDouble(number);
        filer->writeHardPointerId(hard);
        filer->writeSoftPointerId(soft);
        return filer->filerStatus();
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        assertWriteEnabled();
        AcDbEntity::dwgInFields(filer);
        for (double& number : numbers)
            filer->readDouble(&number);
        AcDbHardPointerId readHard;
        AcDbSoftPointerId readSoft;
        filer->readHardPointerId(&readHard);
        filer->readSoftPointerId(&readSoft);
        hard = readHard;
        soft = readSoft;
        return filer->filerStatus();
    }
};

ACRX_DXF_DEFINE_MEMBERS(LinkedEntity, AcDbEntity, AcDb::kDHL_1015, 0, 0xFFF, BENCHLINKED, Bench)

AcDbObjectId modelSpace(AcDbDatabase& database) {
    AcDbBlockTable* table = nullptr;
    AcDbObjectId id;
    database.getBlockTable(table, AcDb::kForRead);
    table->getAt(ACDB_MODEL_SPACE, id);
    table->close();
    return id;
}

struct Drawing {
    std::unique_ptr<AcDbDatabase> database = std::make_unique<AcDbDatabase>(true);
    AcDbObjectIdArray ids;

    template <class Make>
    explicit Drawing(Make make) {
        AcDbBlockTableRecord* space = nullptr;
        acdbOpenObject(space, modelSpace(*database), AcDb::kForWrite);
        for (int i = 0; i < kEntities; ++i) {
            AcDbEntity* entity = make(i, ids);
            entity->setDatabaseDefaults(database.get());
            AcDbObjectId id;
            space->appendAcDbEntity(id, entity);
            entity->close();
            ids.append(id);
        }
        space->close();
    }
};

Drawing& lines() {
    static Drawing drawing([](int i, const AcDbObjectIdArray&) {
        return new AcDbLine({0, 0, 0}, {1.0 * i, 1, 2});
    });
    return drawing;
}

Drawing& linked() {
    embedded::startHost();
    LinkedEntity::rxInit();
    acrxBuildClassHierarchy();
    static Drawing drawing([](int i, const AcDbObjectIdArray& ids) {
        auto* entity = new LinkedEntity;
        if (i > 0) {
            entity->hard = ids[i - 1];
            entity->soft = ids[i / 2];
        }
        return entity;
    });
    return drawing;
}

void file(benchmark::State& state, Drawing& drawing) {
    for (auto _ : state) {
        std::vector<std::uint8_t> bytes;
        std::vector<std::unique_ptr<AcRxObject>> copies;
        for (const AcDbObjectId& id : drawing.ids) {
            AcDbObject* object = nullptr;
            acdbOpenAcDbObject(object, id, AcDb::kForRead);
            bytes.clear();
            embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
            object->dwgOutFields(&out);
            embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
            copies.emplace_back(object->isA()->create());
            static_cast<AcDbObject*>(copies.back().get())->dwgInFields(&in);
            object->close();
        }
        state.PauseTiming();
        copies.clear();
        state.ResumeTiming();
    }
}

void wblock(benchmark::State& state, Drawing& drawing) {
    for (auto _ : state) {
        state.PauseTiming();
        auto target = std::make_unique<AcDbDatabase>(true);
        const AcDbObjectId space = modelSpace(*target);
        state.ResumeTiming();
        {
            AcDbIdMapping mapping;
            if (drawing.database->wblockCloneObjects(drawing.ids, space, mapping, AcDb::kDrcIgnore) !=
                Acad::eOk)
                state.SkipWithError("not cloned");
        }
        state.PauseTiming();
        target.reset();
        state.ResumeTiming();
    }
}

void deepClone(benchmark::State& state, Drawing& drawing) {
    for (auto _ : state) {
        {
            AcDbIdMapping mapping;
            if (drawing.database->deepCloneObjects(drawing.ids, modelSpace(*drawing.database), mapping) !=
                Acad::eOk)
                state.SkipWithError("not cloned");
        }
        state.PauseTiming();
        drawing.database->disableUndoRecording(true);
        drawing.database->disableUndoRecording(false);
        state.ResumeTiming();
    }
}

void fileLines(benchmark::State& state) { file(state, lines()); }
void fileLinked(benchmark::State& state) { file(state, linked()); }
void wblockLines(benchmark::State& state) { wblock(state, lines()); }
void wblockLinked(benchmark::State& state) { wblock(state, linked()); }
void deepCloneLines(benchmark::State& state) { deepClone(state, lines()); }
void deepCloneLinked(benchmark::State& state) { deepClone(state, linked()); }

BENCHMARK(fileLines)->Unit(benchmark::kMillisecond);
BENCHMARK(fileLinked)->Unit(benchmark::kMillisecond);
BENCHMARK(wblockLines)->Unit(benchmark::kMillisecond);
BENCHMARK(wblockLinked)->Unit(benchmark::kMillisecond);
BENCHMARK(deepCloneLines)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(deepCloneLinked)->Unit(benchmark::kMillisecond)->Iterations(20);

const Comparison rows[] = {
    {"wblock of 10,000 lines", "wblockLines", "fileLines", 2.0},
    {"wblock of 10,000 entities with pointers", "wblockLinked", "fileLinked", 2.0},
    {"deep clone of 10,000 lines", "deepCloneLines", "fileLines", 2.0},
    {"deep clone of 10,000 entities with pointers", "deepCloneLinked", "fileLinked", 2.0},
};

} // namespace
