#pragma once

#include "base/export.h"
#include "dbx/elem/type_info.h"
#include "dbx/keyvalue/tree_reader_writer.h"

#include <boost/any.hpp>
#include <boost/function.hpp>

#include <map>
#include <string>

namespace orv {

// Knows for each type of value how it is written into a node of a key-value tree and read back. The node
// names its type by a text, "__type". The module registers no type itself: front ends do, and what they have
// registered is dropped when the module goes, while their code is still there.
class TALDORK_API KeyValueSerialization {
public:
    // They find the cursor inside the value's node and leave it there.
    using AnyWriter = boost::function<void(KeyValueTreeReaderWriter&, const boost::any&)>;
    using AnyReader = boost::function<void(KeyValueTreeReaderWriter&, boost::any&)>;

    static KeyValueSerialization& instance();

    // Registers a writer for the type and a reader for the type id, in the place of those that were there. An
    // empty function registers nothing.
    void addValue_any(const TypeInfo& type, const std::string& id, AnyWriter writer, AnyReader reader);
    // The same for functions of the type itself. Both are registered: one that is empty throws
    // boost::bad_function_call when it is needed.
    template <class T>
    void addValue(const std::string& id, boost::function<void(KeyValueTreeReaderWriter&, const T&)> writer,
                  boost::function<void(KeyValueTreeReaderWriter&, T&)> reader) {
        addValue_any(typeid(T), id, anyWriter<T>(writer), anyReader<T>(reader));
    }
    template <class T>
    void addWriter(const std::string& id, boost::function<void(KeyValueTreeReaderWriter&, const T&)> writer) {
        addValue_any(typeid(T), id, anyWriter<T>(writer), AnyReader());
    }
    // The reader gets a T as its default constructor makes it.
    template <class T>
    void addReader(const std::string& id, boost::function<void(KeyValueTreeReaderWriter&, T&)> reader) {
        addValue_any(typeid(T), id, AnyWriter(), anyReader<T>(reader));
    }

    // Forgets the reader and the writer; what is not there is no failure.
    void _remove(const std::string& id, const TypeInfo& type);
    template <class T>
    void remove(const std::string& id) {
        _remove(id, typeid(T));
    }
    // Forgets all.
    void clear();

    // Empty for a type without a writer, which is reported.
    std::string getTypeId(const TypeInfo& type) const;

    // Writes a value into the node of that name below the cursor. False for a type without a writer, which is
    // reported and logged; then nothing was written. Whatever the writer throws comes out, and the cursor
    // then stands where the writer left it.
    bool tryWrite(KeyValueTreeReaderWriter& rw, const std::string& name, const boost::any& value);
    // Reads the value back. False, reported and logged, if the node names no type or one without a reader;
    // the cursor is where it was. Exceptions as before.
    bool tryRead(KeyValueTreeReaderWriter& rw, const std::string& name, boost::any& value);

private:
    struct WriterEntry {
        std::string id;
        AnyWriter writer;
    };

    KeyValueSerialization();
    ~KeyValueSerialization();
    KeyValueSerialization(const KeyValueSerialization&) = delete;
    KeyValueSerialization& operator=(const KeyValueSerialization&) = delete;

    template <class T>
    static AnyWriter anyWriter(const boost::function<void(KeyValueTreeReaderWriter&, const T&)>& writer) {
        return [writer](KeyValueTreeReaderWriter& rw, const boost::any& value) {
            writer(rw, boost::any_cast<const T&>(value));
        };
    }
    template <class T>
    static AnyReader anyReader(const boost::function<void(KeyValueTreeReaderWriter&, T&)>& reader) {
        return [reader](KeyValueTreeReaderWriter& rw, boost::any& value) {
            T read = T();
            reader(rw, read);
            value = read;
        };
    }

    std::map<TypeInfo, WriterEntry> any_writers;
    std::map<std::string, AnyReader> any_readers;
};

} // namespace orv
