#include "cli/arx/systems.h"

#include "cli/common/failure.h"

#include "dbx/doc/enumerate_cdbs.h"
#include "dbx/doc/system_manager.h"
#include "platform/text.h"

#include <algorithm>

namespace taldork::cli {

std::vector<std::string> systemStores(AcDbDatabase& database) {
    std::map<std::wstring, AcDbObjectId> stores;
    orv::detail::enumerateCdbsInNod(&database, stores);
    std::vector<std::string> names;
    names.reserve(stores.size());
    for (const auto& [name, id] : stores)
        names.push_back(platform::toUtf8(name));
    return names;
}

boost::shared_ptr<orv::System> systemOf(AcDbDatabase& database, const std::string& store) {
    return orv::SystemManager::instance().getSystemByName(&database, platform::fromUtf8(store));
}

boost::shared_ptr<orv::System> findSystem(const Drawing& drawing, const std::string& store) {
    auto system = systemOf(drawing.database(), store);
    if (system)
        return system;
    const auto stores = systemStores(drawing.database());
    if (std::find(stores.begin(), stores.end(), store) == stores.end())
        throw Failure(drawing.path(),
                      "has no store '" + store + "' ('taldork systems list' names those that there are)");
    throw Failure(drawing.path(), "the store '" + store +
                                      "' has no system ('taldork systems check' tells why, 'taldork "
                                      "systems create' makes one)");
}

} // namespace taldork::cli
