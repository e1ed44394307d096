#include "structure/soft_connections.h"

#include "dbx/elem/plugin_registry.h"

#include <boost/make_shared.hpp>

namespace structure {

namespace {

// The table of creators is filled while the module is loaded, before any drawing opens.
const bool s_registered = [] {
    orv::elem::ElementPluginRegistry::registerCreator(SoftConnections::static_pluginId(),
                                                      &SoftConnections::createPlugin);
    return true;
}();

} // namespace

SoftConnections::SoftConnections() : Plugin_ConnectedElements(orv::elem::kSoftPointer) {}

const std::string& SoftConnections::static_pluginId() {
    static const std::string id = "str.softconnections.1";
    return id;
}

const std::string& SoftConnections::pluginId() const { return static_pluginId(); }

boost::shared_ptr<orv::elem::ElementBase::IPlugin> SoftConnections::createPlugin() {
    return boost::make_shared<SoftConnections>();
}

} // namespace structure
