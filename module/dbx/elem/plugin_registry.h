#pragma once

#include "base/export.h"
#include "dbx/elem/plugin.h"

#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

namespace orv::elem {

// Which function makes the plugin of an id; one table for the process. Modules enter theirs while they are
// loaded, on the loader's thread. Nothing ever leaves the table and creators are called as long as the
// process lives, so a module that enters one must stay loaded.
class TALDORK_API ElementPluginRegistry : boost::noncopyable {
public:
    using CreatorFn = boost::shared_ptr<ElementBase::IPlugin> (*)();

    // A new plugin; empty for an unknown id, without a word, and for a creator that makes none, which is
    // reported.
    static boost::shared_ptr<ElementBase::IPlugin> create(const std::string& pluginId);
    // The creator is not null. A second one for an id is reported and the first one stays.
    static void registerCreator(const std::string& pluginId, CreatorFn creator);

private:
    ElementPluginRegistry() = default;
    static ElementPluginRegistry& instance();

    std::map<std::string, CreatorFn> m_creators;
};

} // namespace orv::elem
