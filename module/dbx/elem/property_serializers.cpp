#include "dbx/elem/property_serializers.h"

#include "arx/types.h"
#include "base/assert.h"
#include "dbx/elem/value_filing.h"

#include <boost/make_shared.hpp>

namespace orv {

namespace {

// A value of another type than the property's owner promised is a fault of the tables.
template <class T>
bool holds(const property_base& property) {
    const bool same = property.valueType() == TypeInfo(typeid(T));
    if (!same)
        ORV_ASSERT(false).debug("property type mismatch");
    return same;
}

template <class T>
Acad::ErrorStatus writeProperty(AcDbDwgFiler& filer, const property_base& filed) {
    if (!holds<T>(filed))
        return status::kMakeProxy;
    return writeChecked(filer, static_cast<const property<T>&>(filed).m_value);
}

template <class T>
Acad::ErrorStatus readProperty(AcDbDwgFiler& filer, property_base& filed) {
    if (!holds<T>(filed))
        return status::kMakeProxy;
    return readChecked(filer, static_cast<property<T>&>(filed).m_value);
}

template <class T>
Acad::ErrorStatus writeAny(AcDbDwgFiler& filer, unsigned int id, const boost::any& value) {
    try {
        checkErrorStatus(filer.writeUInt32(Adesk::UInt32(id)), Acad::eOk,
                         "filer.writeUInt32(Adesk::UInt32(id))", __FILE__, __LINE__);
        return writeChecked(filer, boost::any_cast<const T&>(value));
    } catch (const boost::bad_any_cast&) {
        return Acad::eInvalidInput;
    }
}

template <class T>
Acad::ErrorStatus readAny(AcDbDwgFiler& filer, boost::any& value) {
    try {
        T read = T();
        readChecked(filer, read);
        value = read;
        return Acad::eOk;
    } catch (const boost::bad_any_cast&) {
        return Acad::eInvalidInput;
    }
}

template <class T>
boost::shared_ptr<property_base> createProperty() {
    return boost::make_shared<property<T>>();
}

} // namespace

PropertySerializers::PropertySerializers() = default;
PropertySerializers::~PropertySerializers() = default;

template <class T>
void PropertySerializers::registerType(unsigned int id) {
    const OutAny out = [id](AcDbDwgFiler& filer, const boost::any& value) {
        return writeAny<T>(filer, id, value);
    };
    m_out[typeid(T)] = out;
    m_in[typeid(T)] = &readAny<T>;
    m_id2in[id] = &readAny<T>;
    m_id2createProp[id] = {&createProperty<T>, &writeProperty<T>, &readProperty<T>};
    m_ti2id.emplace(typeid(T), id);
}

void PropertySerializers::registerTypes() {
    registerType<unsigned char>(0);
    registerType<unsigned short>(1);
    registerType<unsigned int>(2);
    registerType<std::uint64_t>(3);
    registerType<signed char>(10);
    registerType<short>(11);
    registerType<int>(12);
    registerType<std::int64_t>(13);
    registerType<bool>(20);
    registerType<double>(21);
    registerType<std::wstring>(100);
    registerType<AcGePoint3d>(200);
    registerType<AcGeVector3d>(201);
    registerType<AcDbObjectId>(202);
}

PropertySerializers& PropertySerializers::instance() {
    static struct Filled : PropertySerializers {
        Filled() { registerTypes(); }
    } s_instance;
    return s_instance;
}

namespace {

// Fills the tables while the module is loaded, before any thread can file.
[[maybe_unused]] const PropertySerializers& s_filledAtLoad = PropertySerializers::instance();

} // namespace

Acad::ErrorStatus PropertySerializers::dwgOutProperty(AcDbDwgFiler& filer,
                                                      const property_base& property) const {
    const auto itId = m_ti2id.find(property.valueType());
    ORV_ASSERT(itId != m_ti2id.end()).debug("dwgOutProperty: unregistered type");
    if (itId == m_ti2id.end())
        return status::kMakeProxy;
    const auto it = m_id2createProp.find(itId->second);
    ORV_ASSERT(it != m_id2createProp.end()).debug("dwgOutProperty: failed to find serializer");
    if (it == m_id2createProp.end())
        return status::kMakeProxy;
    const auto& writeFn = it->second.writeFn;
    ORV_ASSERT(writeFn).debug("dwgOutProperty: failed to find serializer function");
    if (!writeFn)
        return status::kMakeProxy;
    filer.writeUInt32(itId->second);
    return writeFn(filer, property);
}

Acad::ErrorStatus PropertySerializers::dwgInProperty(AcDbDwgFiler& filer,
                                                     boost::shared_ptr<property_base>& property) const {
    property.reset();
    Adesk::UInt32 id = 0;
    filer.readUInt32(&id);
    const auto it = m_id2createProp.find(id);
    ORV_ASSERT(it != m_id2createProp.end());
    if (it == m_id2createProp.end())
        return status::kMakeProxy;
    const auto& fn = it->second.fn;
    ORV_ASSERT(fn).debug("dwgInProperty: failed to find serializer");
    if (!fn)
        return status::kMakeProxy;
    const auto& readfn = it->second.readfn;
    ORV_ASSERT(readfn).debug("dwgInProperty: failed to find serializer function");
    if (!readfn)
        return status::kMakeProxy;
    const auto& prop = property = fn();
    ORV_ASSERT(prop).debug("dwgInProperty: failed to create property");
    if (!prop)
        return status::kMakeProxy;
    return readfn(filer, *prop);
}

Acad::ErrorStatus PropertySerializers::dwgOutAny(AcDbDwgFiler& filer, const boost::any& value) const {
    const auto it = m_out.find(value.type());
    ORV_ASSERT(it != m_out.end());
    if (it == m_out.end())
        return Acad::eWrongObjectType;
    const auto& fn = it->second;
    ORV_ASSERT(fn);
    return fn(filer, value);
}

Acad::ErrorStatus PropertySerializers::dwgInAny(AcDbDwgFiler& filer, boost::any& value) const {
    Adesk::UInt32 id = 0;
    filer.readUInt32(&id);
    const auto it = m_id2in.find(id);
    ORV_ASSERT(it != m_id2in.end());
    if (it == m_id2in.end())
        return status::kMakeProxy;
    const auto& fn = it->second;
    ORV_ASSERT(fn);
    return fn(filer, value);
}

} // namespace orv
