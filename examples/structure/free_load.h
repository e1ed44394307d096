#pragma once

#include "dbx/elem/free_load_base.h"
#include "structure/export.h"
#include "structure/load_of.h"

#include <boost/shared_ptr.hpp>

namespace structure {

// A load that stands in space.
class STRUCTURE_API FreeLoad : public LoadOf<orv::elem::FreeLoadBase> {
public:
    FreeLoad();
    ~FreeLoad() override;

    // "str.load.free.1"
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    static boost::shared_ptr<orv::elem::ElementBase::IPlugin> createPlugin();

    using FreeLoadBase::setFreeLoadType;

protected:
    void onAppendElementInfo(orv::ElementInfoContext& info) const override;
};

} // namespace structure
