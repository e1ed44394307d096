#include "structure/beam_load.h"

#include "dbx/elem/plugin_registry.h"
#include "structure/load_info.h"

#include <boost/make_shared.hpp>

namespace structure {

namespace {

// The table of creators is filled while the module is loaded, before any drawing opens.
const bool s_registered = [] {
    orv::elem::ElementPluginRegistry::registerCreator(BeamLoad::static_pluginId(), &BeamLoad::createPlugin);
    return true;
}();

} // namespace

BeamLoad::BeamLoad() = default;
BeamLoad::~BeamLoad() = default;

const std::string& BeamLoad::static_pluginId() {
    static const std::string id = "str.load.beam.1";
    return id;
}

const std::string& BeamLoad::pluginId() const { return static_pluginId(); }

boost::shared_ptr<orv::elem::ElementBase::IPlugin> BeamLoad::createPlugin() {
    return boost::make_shared<BeamLoad>();
}

void BeamLoad::standOn(const AcDbObjectId& beam) {
    GenericLoad::setElement(beam);
    ElementLoad::setElement(beam);
}

void BeamLoad::onAppendElementInfo(orv::ElementInfoContext& info) const {
    appendLoadInfo(L"Load on a beam", *this, shape(), info);
}

} // namespace structure
