#pragma once

#include "dbx/elem/element_load.h"
#include "structure/export.h"
#include "structure/load_of.h"

#include <boost/shared_ptr.hpp>

namespace structure {

// A load on a beam. Its vertices say by their positions which part of the beam it acts on.
class STRUCTURE_API BeamLoad : public LoadOf<orv::elem::ElementLoad> {
public:
    BeamLoad();
    ~BeamLoad() override;

    // "str.load.beam.1"
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    static boost::shared_ptr<orv::elem::ElementBase::IPlugin> createPlugin();

    // Write. Sets the beam in both places in which a load on an element has it; null for none.
    void standOn(const AcDbObjectId& beam);

protected:
    void onAppendElementInfo(orv::ElementInfoContext& info) const override;
};

} // namespace structure
