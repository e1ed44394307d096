#include "cli/arx/system_complaints.h"

#include "cli/arx/report_scope.h"
#include "cli/common/messages.h"
#include "cli/common/terminal.h"

#include "dbx/doc/enumerate_cdbs.h"
#include "dbx/doc/system_manager.h"
#include "platform/text.h"

#include <utility>

namespace taldork::cli {

SystemComplaints readSystems(AcDbDatabase& database) {
    SystemComplaints complaints;
    std::optional<std::string> store;
    const ReportScope scope(
        [&](const orv::smartassert::Report& report) {
            complaints.list.push_back({store, report, ""});
        },
        ReportScope::Before::kHearsToo);
    // The module throws text as well as exceptions; neither may hide the stores behind.
    const auto attempt = [&](auto&& work) {
        try {
            work();
        } catch (...) {
            complaints.list.push_back({store, std::nullopt, caughtMessage()});
        }
    };
    orv::SystemManager::Names names;
    attempt([&] { complaints.stores = orv::detail::enumerateCdbsInNod(&database, names); });
    Progress progress("reading systems", names.size());
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        store = platform::toUtf8(it->first);
        attempt([&] { orv::SystemManager::instance()._initForStore(database, it); });
        progress.step();
    }
    return complaints;
}

} // namespace taldork::cli
