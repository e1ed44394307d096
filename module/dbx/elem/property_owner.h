#pragma once

#include "base/assert.h"
#include "base/exceptions.h"
#include "dbx/elem/property.h"

#include <boost/make_shared.hpp>
#include <boost/optional.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <map>
#include <type_traits>
#include <utility>

namespace orv {

// A small typed dictionary: values of any type under keys, in the order of the keys. Copies share the
// properties. Key is `unsigned int` or `std::string`.
template <class Key>
class property_owner {
public:
    using map_type = std::map<Key, boost::shared_ptr<property_base>>;
    using const_iterator = typename map_type::const_iterator;

    // The entry, or an empty pointer.
    boost::shared_ptr<property_base> get(const Key& key) const {
        const auto found = m_properties.find(key);
        return found != m_properties.end() ? found->second : boost::shared_ptr<property_base>();
    }

    // Inserts. AlreadyExistsException if there is such a key; the old entry stays.
    void add(const Key& key, boost::shared_ptr<property_base> property) {
        // A set that is filled in its own order, as reading does, never searches.
        const bool behindAll = m_properties.empty() || m_properties.rbegin()->first < key;
        const auto place = behindAll ? m_properties.end() : m_properties.lower_bound(key);
        if (place != m_properties.end() && !(key < place->first))
            throw AlreadyExistsException(key, "property_owner<>::add()");
        m_properties.emplace_hint(place, key, std::move(property));
    }
    // Makes a property of this value and inserts it, likewise. A pointer to a property is no value: it goes
    // to the operation above.
    template <class T>
    std::enable_if_t<!std::is_convertible_v<T, boost::shared_ptr<property_base>>,
                     boost::shared_ptr<property<T>>>
    add(const Key& key, const T& value) {
        auto made = boost::make_shared<property<T>>(value);
        add(key, boost::shared_ptr<property_base>(made));
        return made;
    }

    // The value, for reading and writing; valid as long as the entry. NotFoundException for a missing key,
    // TypeMismatchException for a property of another type than exactly T.
    template <class T>
    T& getCasted(const Key& key) {
        return casted<T>(key);
    }

    // A copy of the value; empty for a missing key. A property of another type is reported, and is empty too.
    template <class T>
    boost::optional<T> getValueNotThrow(const Key& key) const {
        const T* value = nullptr;
        if (get(key)) {
            try {
                value = &casted<T>(key);
            } catch (const Exception&) {
                ORV_ASSERT(false).debug("getValueNotThrow() failed");
            }
        }
        boost::optional<T> copy;
        if (value != nullptr)
            copy = *value;
        return copy;
    }

    void clear() { m_properties.clear(); }
    std::size_t size() const { return m_properties.size(); }
    bool empty() const { return m_properties.empty(); }
    const_iterator begin() const { return m_properties.begin(); }
    const_iterator end() const { return m_properties.end(); }

private:
    template <class T>
    T& casted(const Key& key) const {
        const boost::shared_ptr<property_base> found = get(key);
        if (!found)
            throw NotFoundException(key, "property_owner<>::getCasted<>()");
        if (found->type() != TypeInfo(typeid(property<T>)))
            throw TypeMismatchException(&typeid(T), &found->valueType().get(),
                                        "property_owner<>::getCasted<>(): type mismatch");
        return static_cast<property<T>&>(*found).m_value;
    }

    map_type m_properties;
};

} // namespace orv
