#include "structure/model_store.h"

#include "arx/dictionary_utils.h"
#include "dbx/cdb/cdb.h"
#include "dbx/dictionary.h"
#include "dbx/doc/persistent_system_info.h"
#include "dbx/doc/system.h"
#include "dbx/doc/system_manager.h"
#include "dbx/doc/system_record.h"
#include "structure/working_database.h"

#include "dbdict.h"
#include "dbmain.h"

#include <memory>
#include <stdexcept>

namespace structure {

using namespace orv::cdb;

namespace {

// What the records of a system are in its store.
constexpr int kSystemGroup = 10;
constexpr int kSystemRecord = 0;
constexpr int kUnitRecord = 102;

constexpr std::int32_t kInSpace = 0;
constexpr std::int32_t kUsualDivision = 10000;

const wchar_t* const kUsualStore = L"ASDWG";

// A store is three dictionaries; records, keys and groups come into being when they are written.
AcDbObjectId createStore(AcDbDatabase& database, const std::wstring& name) {
    AcDbObjectId top = orv::dictionary::getOrCreateKelmoran(&database);
    AcDbObjectId store = orv::acad::get_subDict_id(top, name.c_str(), true, &database);
    AcDbObjectId named = store;
    orv::acad::get_subDict_id(named, L"CDBASE", true, &database);
    return store;
}

void demand(bool done, const char* what) {
    if (!done)
        throw std::runtime_error(what);
}

void openStore(NodCdb& store, const std::wstring& name) {
    demand(store.open(name.c_str(), kSharedLocking) == CD_ERR_NONE, "the record store cannot be opened");
}

// The store's axes lie as the drawing's, and are as long as a drawing unit is in the store.
void writeSystem(AcDbDatabase& database, const std::wstring& name, orv::DrawingUnit unit) {
    const double* const scale = orv::detail::scaleOfUnit(unit);
    demand(scale != nullptr, "the drawing's unit is not known");
    orv::PersistentSystemInfo info;
    info.drawingUnit = unit;
    info.drawing_unit_wcs2cdb = *scale;
    orv::typeCDB_SYST syst{};
    syst.iprob = kInSpace;
    syst.iachs = orv::kGravityMinusZ;
    syst.igdiv = kUsualDivision;
    syst.m_tg.x[0] = syst.m_tg.y[1] = syst.m_tg.z[2] = static_cast<float>(*scale);

    NodCdb store(&database);
    openStore(store, name);
    demand(store.write(kSystemGroup, kUnitRecord, &info, sizeof info, kFirstRecord) == CD_ERR_NONE &&
               store.write(kSystemGroup, kSystemRecord, &syst, sizeof syst, kFirstRecord) == CD_ERR_NONE,
           "the records of the system cannot be written");
    orv::System system;
    demand(system.updateFrom(store), "the records of the system cannot be read");
    system.setDefaultExtents();
    demand(system.updateTo(store) && system.updateVisTo(store) && system.updateSettingsTo(store),
           "the records of the system cannot be written");
}

// The first store that has a system, or an empty name.
std::wstring firstSystem(AcDbDatabase& database) {
    const AcDbObjectId top = orv::dictionary::getKelmoran(&database);
    AcDbDictionary* stores = nullptr;
    std::wstring first;
    if (top.isNull() || acdbOpenObject(stores, top, AcDb::kForRead) != Acad::eOk)
        return first;
    const std::unique_ptr<AcDbDictionaryIterator> store(stores->newIterator());
    for (; !store->done() && first.empty(); store->next())
        if (orv::SystemManager::instance().getSystemByName(&database, store->name()))
            first = store->name();
    stores->close();
    return first;
}

} // namespace

ModelStore findOrCreateStore(AcDbDatabase& database, const std::wstring& name, orv::DrawingUnit unit) {
    const WorkingDatabase working(&database);
    orv::SystemManager& systems = orv::SystemManager::instance();
    if (!systems.wasDatabaseCheckedAtLeastOnce(&database))
        systems.initFromDatabase(&database);
    ModelStore store;
    store.name = !name.empty() ? name : firstSystem(database);
    if (store.name.empty())
        store.name = kUsualStore;
    store.id = createStore(database, store.name);
    demand(!store.id.isNull(), "the record store cannot be made");
    if (!systems.getSystemByName(&database, store.name)) {
        writeSystem(database, store.name, unit);
        store.isNew = true;
        systems.initFromDatabase(&database);
    }
    const auto system = systems.getSystemByName(&database, store.name);
    demand(system != nullptr, "the records of the system cannot be read");
    store.metre = system->scaleCdb2Wcs();
    return store;
}

void describeModel(AcDbDatabase& database, const ModelStore& store, const AcGePoint3d& low,
                   const AcGePoint3d& high, int nodes) {
    const auto system = orv::SystemManager::instance().getSystemByName(&database, store.name);
    demand(system != nullptr, "the records of the system cannot be read");
    system->set_sys_box(low, high);
    system->set_sys_anzkn(nodes);
    system->set_sys_maxkn(nodes);
    NodCdb records(&database);
    openStore(records, store.name);
    demand(system->updateTo(records), "the records of the system cannot be written");
}

} // namespace structure
