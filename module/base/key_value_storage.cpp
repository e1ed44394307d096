#include "base/key_value_storage.h"

#include <boost/make_shared.hpp>

namespace orv {

KeyValueStorage::KeyValueStorage() : m_map(boost::make_shared<Map>()) {}

KeyValueStorage KeyValueStorage::set(const std::string& key, const boost::any& value) {
    (*m_map)[key] = value;
    return *this;
}

boost::any KeyValueStorage::get(const std::string& key) const {
    const auto found = m_map->find(key);
    return found != m_map->end() ? found->second : boost::any();
}

} // namespace orv
