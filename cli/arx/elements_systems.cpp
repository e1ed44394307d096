#include "cli/arx/elements_systems.h"

#include "cli/arx/elements.h"
#include "cli/arx/store.h"
#include "cli/common/failure.h"
#include "cli/common/messages.h"
#include "cli/common/open_object.h"

#include "dbx/cdb/cdb.h"
#include "platform/text.h"

#include <exception>
#include <set>

namespace taldork::cli {

using namespace orv::cdb;

namespace {

/// The group of records that describe a system, and the one that must be there.
constexpr int kSystemGroup = 10;
constexpr int kSystemKey = 0;

std::set<std::wstring> systemsOf(const std::vector<AcDbObjectId>& elements) {
    std::set<std::wstring> names;
    for (const AcDbObjectId& id : elements) {
        Acad::ErrorStatus status = Acad::eOk;
        const auto entity = openObject<AcDbEntity>(id, AcDb::kForRead, status);
        if (const auto* const element = dynamic_cast<const Element*>(entity.get()))
            names.insert(element->getNodDatabaseName());
    }
    names.erase(L"");
    return names;
}

bool opensSystem(NodCdb& store, const std::wstring& name) {
    return store.open(name, kSharedLocking) == CD_ERR_NONE && store.exists(kSystemGroup, kSystemKey);
}

void copyRecords(NodCdb& from, const Drawing& target, const std::wstring& name) {
    createStore(target.database(), platform::toUtf8(name));
    NodCdb to(&target.database());
    to.open(name, kSharedLocking);
    try {
        orv::cdb::copy(from, to, kSystemGroup);
    } catch (...) {
        throw Failure(target.path(), "the system '" + platform::toUtf8(name) +
                                         "' cannot be copied: " + oneLine(caughtMessage()));
    }
}

} // namespace

std::vector<std::string> bringSystems(const Drawing& source, const Drawing& target,
                                      const std::vector<AcDbObjectId>& copies) {
    std::vector<std::string> brought;
    for (const std::wstring& name : systemsOf(copies)) {
        NodCdb from(&source.database());
        if (!opensSystem(from, name))
            continue;
        {
            NodCdb present(&target.database());
            if (opensSystem(present, name))
                continue;
        }
        copyRecords(from, target, name);
        brought.push_back(platform::toUtf8(name));
    }
    return brought;
}

} // namespace taldork::cli
