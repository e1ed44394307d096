#include "structure/load_connections.h"

#include "dbx/elem/plugin_registry.h"

#include <boost/make_shared.hpp>

namespace structure {

namespace {

// The table of creators is filled while the module is loaded, before any drawing opens.
const bool s_registered = [] {
    orv::elem::ElementPluginRegistry::registerCreator(LoadConnections::static_pluginId(),
                                                      &LoadConnections::createPlugin);
    return true;
}();

} // namespace

LoadConnections::LoadConnections() : Plugin_ConnectedElements(orv::elem::kHardPointer) {
    setBehaviour(kEraseConnected | kRefreshOnTransform);
}

const std::string& LoadConnections::static_pluginId() {
    static const std::string id = "str.loadconnections.1";
    return id;
}

const std::string& LoadConnections::pluginId() const { return static_pluginId(); }

boost::shared_ptr<orv::elem::ElementBase::IPlugin> LoadConnections::createPlugin() {
    return boost::make_shared<LoadConnections>();
}

LoadConnections* LoadConnections::of(const orv::elem::ElementBase& element) {
    for (const auto& plugin : element.getConstPluginIterator())
        if (auto* const loads = dynamic_cast<LoadConnections*>(plugin.get()))
            return loads;
    return nullptr;
}

} // namespace structure
