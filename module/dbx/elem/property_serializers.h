#pragma once

#include "base/export.h"
#include "dbx/elem/property.h"

#include "acadstrc.h"

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <map>

class AcDbDwgFiler;

namespace orv {

// Files values of a fixed table of types: the id of the type, then the value. The table is complete; a value
// of any other type cannot be filed. The 64-bit types of the table are std::uint64_t and std::int64_t, and no
// other type of that width: types match exactly.
class TALDORK_API PropertySerializers {
public:
    // The one that files everything. Filled when the module is loaded.
    static PropertySerializers& instance();

    PropertySerializers(const PropertySerializers&) = delete;
    PropertySerializers& operator=(const PropertySerializers&) = delete;

    // Type id and value. The status of the value's last call; 301 for a type without an id.
    Acad::ErrorStatus dwgOutProperty(AcDbDwgFiler& filer, const property_base& property) const;
    // Gives `property` a new object for what the filer delivers; null for an unknown id, with status 301. A
    // value that cannot be read leaves a zero in the object, and its status is returned.
    Acad::ErrorStatus dwgInProperty(AcDbDwgFiler& filer, boost::shared_ptr<property_base>& property) const;

    // The same for bare values. Status 34 for a type without an id, and nothing is written.
    Acad::ErrorStatus dwgOutAny(AcDbDwgFiler& filer, const boost::any& value) const;
    // Replaces `value`. Status 301 for an unknown id, and `value` stays. A value that cannot be read becomes
    // a zero of its type, and the status is eOk all the same: who needs to know asks the filer.
    Acad::ErrorStatus dwgInAny(AcDbDwgFiler& filer, boost::any& value) const;

protected:
    using OutAny = boost::function<Acad::ErrorStatus(AcDbDwgFiler&, const boost::any&)>;
    using InAny = boost::function<Acad::ErrorStatus(AcDbDwgFiler&, boost::any&)>;
    struct PropertyFunctions {
        boost::function<boost::shared_ptr<property_base>()> fn;
        boost::function<Acad::ErrorStatus(AcDbDwgFiler&, const property_base&)> writeFn;
        boost::function<Acad::ErrorStatus(AcDbDwgFiler&, property_base&)> readfn;
    };

    // All tables empty.
    PropertySerializers();
    ~PropertySerializers();
    // Enters every type that can be filed.
    void registerTypes();

    std::map<TypeInfo, OutAny> m_out;
    std::map<TypeInfo, InAny> m_in;
    std::map<unsigned int, InAny> m_id2in;
    std::map<unsigned int, PropertyFunctions> m_id2createProp;
    std::map<TypeInfo, unsigned int> m_ti2id;

private:
    template <class T>
    void registerType(unsigned int id);
};

} // namespace orv
