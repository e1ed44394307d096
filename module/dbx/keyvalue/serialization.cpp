#include "dbx/keyvalue/serialization.h"

#include "app/log_stream.h"
#include "base/assert.h"

#include <boost/core/demangle.hpp>

namespace orv {

namespace {

// The value of a node that names the type of what the node holds.
constexpr const char* kTypeKey = "__type";

} // namespace

KeyValueSerialization::KeyValueSerialization() = default;
KeyValueSerialization::~KeyValueSerialization() = default;

KeyValueSerialization& KeyValueSerialization::instance() {
    static KeyValueSerialization one;
    return one;
}

void KeyValueSerialization::addValue_any(const TypeInfo& type, const std::string& id, AnyWriter writer,
                                         AnyReader reader) {
    if (!writer.empty())
        any_writers[type] = WriterEntry{id, writer};
    if (!reader.empty())
        any_readers[id] = reader;
}

void KeyValueSerialization::_remove(const std::string& id, const TypeInfo& type) {
    any_writers.erase(type);
    any_readers.erase(id);
}

void KeyValueSerialization::clear() {
    any_writers.clear();
    any_readers.clear();
}

std::string KeyValueSerialization::getTypeId(const TypeInfo& type) const {
    const auto it = any_writers.find(type);
    ORV_ASSERT(it != any_writers.end());
    return it != any_writers.end() ? it->second.id : std::string();
}

bool KeyValueSerialization::tryWrite(KeyValueTreeReaderWriter& rw, const std::string& name,
                                     const boost::any& value) {
    const std::type_info& type = value.type();
    const auto it = any_writers.find(type);
    ORV_ASSERT(it != any_writers.end());
    if (it == any_writers.end()) {
        LogStream("KeyValueSerialization::tryWrite")
            << "FAILED to find serialization function for type: " << boost::core::demangle(type.name())
            << "\n";
        return false;
    }
    // A writer may register or remove types, its own too.
    const WriterEntry entry = it->second;
    rw.nodeBegin(name);
    rw.keyvalue(kTypeKey, entry.id);
    entry.writer(rw, value);
    rw.nodeEnd();
    return true;
}

bool KeyValueSerialization::tryRead(KeyValueTreeReaderWriter& rw, const std::string& name,
                                    boost::any& value) {
    rw.nodeBegin(name);
    const boost::optional<std::string> type = rw.get_keyvalue(kTypeKey);
    ORV_ASSERT(type);
    if (!type) {
        LogStream("KeyValueSerialization::tryRead") << "FAILED to read __type for id '" << name << "'\n";
        rw.nodeEnd();
        return false;
    }
    const auto it = any_readers.find(*type);
    ORV_ASSERT(it != any_readers.end());
    if (it == any_readers.end()) {
        LogStream("KeyValueSerialization::tryRead")
            << "FAILED to find serialization function for id '" << name << "' and type: " << *type << "\n";
        rw.nodeEnd();
        return false;
    }
    const AnyReader reader = it->second;
    reader(rw, value);
    rw.nodeEnd();
    return true;
}

} // namespace orv
