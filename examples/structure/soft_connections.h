#pragma once

#include "dbx/elem/plugin_connected_elements.h"
#include "structure/export.h"

#include <boost/shared_ptr.hpp>

namespace structure {

// Connections that keep nothing alive: what they name stays behind when its element goes into another drawing
// alone. They have an id of their own, since the registry's creator of the base makes hard ones.
class STRUCTURE_API SoftConnections : public orv::elem::Plugin_ConnectedElements {
public:
    SoftConnections();

    // "str.softconnections.1"; the data are those of the base.
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    static boost::shared_ptr<orv::elem::ElementBase::IPlugin> createPlugin();
};

} // namespace structure
