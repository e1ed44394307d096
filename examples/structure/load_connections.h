#pragma once

#include "dbx/elem/plugin_connected_elements.h"
#include "structure/export.h"

#include <boost/shared_ptr.hpp>

namespace structure {

// The loads on a beam: they go when it goes, are drawn anew when it moves, and come along into another
// drawing. Apart from the beam's other connections, which stay when it goes, and with an id of its own to be
// told from them.
class STRUCTURE_API LoadConnections : public orv::elem::Plugin_ConnectedElements {
public:
    LoadConnections();

    // "str.loadconnections.1"; the data are those of the base.
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    static boost::shared_ptr<orv::elem::ElementBase::IPlugin> createPlugin();

    // The plugin of an element, or null. Needs read.
    static LoadConnections* of(const orv::elem::ElementBase& element);
};

} // namespace structure
