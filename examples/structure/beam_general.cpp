#include "structure/beam_general.h"

#include "dbx/elem/plugin_registry.h"
#include "orvshape/geom.h"
#include "structure/beam.h"

#include <boost/make_shared.hpp>

namespace structure {

namespace {

// The table of creators is filled while the module is loaded, before any drawing opens.
const bool s_registered = [] {
    orv::elem::ElementPluginRegistry::registerCreator(BeamGeneral::static_pluginId(),
                                                      &BeamGeneral::createPlugin);
    return true;
}();

} // namespace

const std::string& BeamGeneral::static_pluginId() {
    static const std::string id = "str.general.beam.1";
    return id;
}

const std::string& BeamGeneral::pluginId() const { return static_pluginId(); }

boost::shared_ptr<orv::elem::ElementBase::IPlugin> BeamGeneral::createPlugin() {
    return boost::make_shared<BeamGeneral>();
}

boost::optional<AcGeMatrix3d> BeamGeneral::getCoordinateSystem() const {
    const auto* const beam = dynamic_cast<const Beam*>(owner());
    if (beam == nullptr || beam->isEmpty())
        return boost::none;
    AcGeVector3d x = beam->endPoint() - beam->startPoint();
    if (x.isZeroLength())
        beam->getFirstDeriv(0.0, x);
    if (x.isZeroLength())
        return boost::none;
    x.normalize();
    AcGeVector3d y = AcGeVector3d::kZAxis.crossProduct(x);
    y = y.isZeroLength(orv::geom::gTol) ? AcGeVector3d::kYAxis : y.normal();
    y.rotateBy(beam->roll(), x);
    AcGeMatrix3d system;
    system.setCoordSystem(beam->startPoint(), x, y, x.crossProduct(y));
    return system;
}

} // namespace structure
