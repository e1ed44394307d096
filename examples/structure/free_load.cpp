#include "structure/free_load.h"

#include "dbx/elem/plugin_registry.h"
#include "structure/load_info.h"

#include <boost/make_shared.hpp>

namespace structure {

namespace {

// The table of creators is filled while the module is loaded, before any drawing opens.
const bool s_registered = [] {
    orv::elem::ElementPluginRegistry::registerCreator(FreeLoad::static_pluginId(), &FreeLoad::createPlugin);
    return true;
}();

} // namespace

FreeLoad::FreeLoad() = default;
FreeLoad::~FreeLoad() = default;

const std::string& FreeLoad::static_pluginId() {
    static const std::string id = "str.load.free.1";
    return id;
}

const std::string& FreeLoad::pluginId() const { return static_pluginId(); }

boost::shared_ptr<orv::elem::ElementBase::IPlugin> FreeLoad::createPlugin() {
    return boost::make_shared<FreeLoad>();
}

void FreeLoad::onAppendElementInfo(orv::ElementInfoContext& info) const {
    appendLoadInfo(L"Free load", *this, shape(), info);
}

} // namespace structure
