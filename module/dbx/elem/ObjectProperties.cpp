#include "dbx/elem/ObjectProperties.h"

#include "arx/types.h"
#include "dbfiler.h"
#include "dbx/elem/property_serializers.h"

#include <utility>

namespace orv {

Acad::ErrorStatus dwgOutProperties(AcDbDwgFiler& filer, const AcadObjectProperties& owner) {
    Acad::ErrorStatus es = filer.writeUInt32(static_cast<Adesk::UInt32>(owner.size()));
    if (es != Acad::eOk)
        return es;
    for (const auto& [name, prop] : owner) {
        ORV_ASSERT(prop.get());
        if (!prop)
            return status::kMakeProxy;
        es = filer.writeUInt32(name);
        if (es != Acad::eOk)
            return es;
        es = PropertySerializers::instance().dwgOutProperty(filer, *prop);
        if (es != Acad::eOk)
            return es;
    }
    return Acad::eOk;
}

Acad::ErrorStatus dwgInProperties(AcDbDwgFiler& filer, AcadObjectProperties& owner) {
    owner.clear();
    Adesk::UInt32 count = 0;
    Acad::ErrorStatus es = filer.readUInt32(&count);
    if (es != Acad::eOk)
        return es;
    for (Adesk::UInt32 i = 0; i < count; ++i) {
        // A stream that ends here ends the reading at the value behind the key.
        Adesk::UInt32 name = 0;
        filer.readUInt32(&name);
        boost::shared_ptr<property_base> prop;
        es = PropertySerializers::instance().dwgInProperty(filer, prop);
        if (es != Acad::eOk)
            return es;
        ORV_ASSERT((name != 0) && prop.get());
        owner.add(name, std::move(prop));
    }
    return Acad::eOk;
}

} // namespace orv
