#include "cli/arx/plot_loads.h"

#include "cli/arx/loads.h"
#include "cli/common/handles.h"
#include "cli/common/open_object.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_base.h"
#include "dbx/elem/plugin_general.h"

#include <algorithm>
#include <vector>

namespace taldork::cli {

namespace {

using orv::elem::GenericLoad;
using orv::elem::LoadBase;
using orv::elem::Plugin_General;

/// Whether nothing of the element is left once its loads are gone. Connections tell that it is a part of the
/// structure, and what a plugin without its code is nobody knows.
bool isNothingButLoads(const Element& element) {
    if (dynamic_cast<const LoadBase*>(&element) != nullptr)
        return true;
    const auto& unknown = element.unknownPlugins();
    const auto plugins = element.getConstPluginIterator();
    return unknown.begin() == unknown.end() &&
           std::all_of(plugins.begin(), plugins.end(), [](const auto& plugin) {
               return dynamic_cast<const GenericLoad*>(plugin.get()) != nullptr ||
                      dynamic_cast<const Plugin_General*>(plugin.get()) != nullptr;
           });
}

} // namespace

std::set<AcDbObjectId> leaveOneCase(const Drawing& drawing, unsigned int loadCase) {
    std::set<AcDbObjectId> ofCase, ofOthers, emptied;
    forEachLoad(drawing, std::nullopt, [&](const FoundLoad& load) {
        (load.cases().count(loadCase) != 0 ? ofCase : ofOthers).insert(load.found.id);
    });
    for (const AcDbObjectId& id : ofOthers)
        visitElement(drawing, id, [&](const FoundElement& found) {
            if (ofCase.count(id) == 0 && isNothingButLoads(*found.element))
                emptied.insert(id);
            std::vector<GenericLoad*> others;
            for (const auto& plugin : found.element->getConstPluginIterator())
                if (auto* const load = dynamic_cast<GenericLoad*>(plugin.get());
                    load != nullptr && load->getLoadCases().count(loadCase) == 0)
                    others.push_back(load);
            if (emptied.count(id) != 0 || others.empty())
                return;
            requireOpen(found.entity->upgradeOpen(), AcDb::kForWrite, drawing.path(), handleText(id));
            for (GenericLoad* const load : others)
                found.element->detachPlugin(load);
        });
    return emptied;
}

} // namespace taldork::cli
