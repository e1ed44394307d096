#pragma once

#include "base/export.h"

#include <boost/any.hpp>
#include <boost/optional.hpp>
#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

namespace orv {

// A handle on a flat map from names to values of any type. Copies share the map. A slash in a name is part of
// the name.
class TALDORK_API KeyValueStorage {
public:
    // A handle on a new, empty map.
    KeyValueStorage();
    // No handle is ever without a map, so there is no move.
    KeyValueStorage(const KeyValueStorage&) = default;
    KeyValueStorage& operator=(const KeyValueStorage&) = default;
    ~KeyValueStorage() = default;

    // Puts a copy of the value under the key, in the place of what stood there. A handle on the same map, so
    // that calls can be chained.
    KeyValueStorage set(const std::string& key, const boost::any& value);

    // A copy of the value; empty for a missing key.
    boost::any get(const std::string& key) const;

    // The value if it is exactly a T, else none. Nothing is converted.
    template <class T>
    boost::optional<T> getValue(const std::string& key) const {
        const boost::any value = get(key);
        const T* const held = boost::any_cast<T>(&value);
        return held != nullptr ? boost::optional<T>(*held) : boost::none;
    }
    // The same with a default.
    template <class T>
    T getValue(const std::string& key, const T& defaultValue) const {
        return getValue<T>(key).value_or(defaultValue);
    }

private:
    using Map = std::map<std::string, boost::any>;

    boost::shared_ptr<Map> m_map;
};

} // namespace orv
