#include "dbx/elem/plugin_registry.h"

#include "base/assert.h"

namespace orv::elem {

ElementPluginRegistry& ElementPluginRegistry::instance() {
    static const boost::shared_ptr<ElementPluginRegistry> s_instance(new ElementPluginRegistry);
    ORV_ASSERT(s_instance);
    return *s_instance;
}

boost::shared_ptr<ElementBase::IPlugin> ElementPluginRegistry::create(const std::string& pluginId) {
    const auto& creators = instance().m_creators;
    const auto it = creators.find(pluginId);
    if (it == creators.end())
        return {};
    boost::shared_ptr<ElementBase::IPlugin> plugin = it->second();
    ORV_ASSERT(plugin)(pluginId).debug("Creator failed to create the plugin!");
    return plugin;
}

void ElementPluginRegistry::registerCreator(const std::string& pluginId, CreatorFn creator) {
    const auto it = instance().m_creators.find(pluginId);
    ORV_ASSERT(it == instance().m_creators.end())(pluginId).debug("duplicate id registration");
    if (it == instance().m_creators.end())
        instance().m_creators.emplace(pluginId, creator);
}

} // namespace orv::elem
