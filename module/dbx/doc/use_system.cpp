#include "dbx/doc/use_system.h"

#include "base/assert.h"
#include "base/exceptions.h"
#include "dbmain.h"
#include "dbx/doc/database_element_base.h"
#include "dbx/doc/system_manager.h"
#include "platform/sanitizer.h"
#include "platform/text.h"

namespace orv {

namespace {

// A layer's name begins with a prefix of this length, in 16-bit units as the host counts them, which says
// what is on the layer; the store's name follows.
constexpr std::size_t kLayerPrefix = 9;

// The drawing of an entity; of an element that is in none yet, the one of its store. Null if there is
// neither.
AcDbDatabase* databaseOf(const AcDbEntity& entity, doc::DatabaseElementBase* element) {
    if (AcDbDatabase* const db = entity.database())
        return db;
    const AcDbObjectId store = element != nullptr ? element->getNodDatabaseId() : AcDbObjectId();
    return store.isNull() ? nullptr : store.database();
}

boost::shared_ptr<System> systemOf(AcDbDatabase* db, doc::DatabaseElementBase& element) {
    SystemManager& manager = SystemManager::instance();
    const AcDbObjectId store = element.getNodDatabaseId();
    if (!store.isNull())
        if (auto system = manager.getSystemById(store))
            return system;
    return manager.getSystemByName(db, element.getNodDatabaseName());
}

} // namespace

UseSystem::UseSystem(const AcDbEntity* entity) : m_layer(entity != nullptr ? entity->layer() : nullptr) {
    ORV_ASSERT(entity).error("You passed a null pointer! Cannot determine the database!");
    if (entity == nullptr)
        return;
    // An element's link is asked for by an operation that is not const.
    auto* const element = dynamic_cast<doc::DatabaseElementBase*>(const_cast<AcDbEntity*>(entity));
    AcDbDatabase* const db = databaseOf(*entity, element);
    if (db == nullptr) {
        ORV_ASSERT(0);
        return;
    }
    SystemManager& manager = SystemManager::instance();
    if (!manager.wasDatabaseCheckedAtLeastOnce(db))
        manager.initFromDatabase(db);
    // The registry's own entry keeps the system alive.
    if (element != nullptr)
        m_system = systemOf(db, *element).get();
    const std::wstring layerName = m_layer.name();
    const std::u16string units = platform::toUtf16(layerName);
    if (m_system == nullptr && units.size() > kLayerPrefix) {
        const std::wstring dbName = platform::fromUtf16(units.substr(kLayerPrefix));
        m_system = manager.getSystemByName(db, dbName).get();
        ORV_ASSERT(m_system)(layerName)(dbName).debug("system not found");
    }
}

UseSystem::~UseSystem() = default;

PLATFORM_ALLOW_NULL_REFERENCE System& UseSystem::operator*() const {
    ORV_ASSERT(m_system);
    return *m_system;
}

System& UseSystem::get() const {
    if (m_system == nullptr) {
        ORV_ASSERT(m_system).debug("attempt to dereference 0 pointer");
        throw Exception("attempt to dereference 0 pointer");
    }
    return *m_system;
}

} // namespace orv
