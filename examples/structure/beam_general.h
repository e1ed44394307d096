#pragma once

#include "dbx/elem/plugin_general.h"
#include "structure/export.h"

#include <boost/shared_ptr.hpp>

namespace structure {

// A beam's general data, and the coordinate system that local loads go by. Beams of older drawings have the
// base's, and no such system.
class STRUCTURE_API BeamGeneral : public orv::elem::Plugin_General {
public:
    // "str.general.beam.1"; the data are those of the base.
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    static boost::shared_ptr<orv::elem::ElementBase::IPlugin> createPlugin();

    // At the beam's start: X towards its end, Z as far up as that allows, both turned by the beam's roll. A
    // column has Y along the world's. A beam that comes back to its start has X along its beginning. Needs
    // read; empty without a beam, and for one without a curve.
    boost::optional<AcGeMatrix3d> getCoordinateSystem() const override;
};

} // namespace structure
