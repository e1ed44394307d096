#pragma once

#include "base/export.h"
#include "base/registry.h"

#include <boost/optional.hpp>

#include <deque>
#include <string>

namespace orv {

class KeyValueStorage;

// A cursor on a tree of texts in the user's registry: each node is a key, each value a text. It stands at the
// base path, or at a node that has been opened below it. Nodes come into being with their first value; going
// to one that is not there is no failure.
class TALDORK_API KeyValueTreeReaderWriter {
public:
    KeyValueTreeReaderWriter();
    explicit KeyValueTreeReaderWriter(const std::string& basePath);

    // One node down, and back up. Up from the base path is reported, and the cursor stays.
    KeyValueTreeReaderWriter& nodeBegin(const std::string& name);
    KeyValueTreeReaderWriter& nodeEnd();

    // Writes a value of the present node. A failure is told on std::wcerr alone. Each write is a message on
    // the channel "KeyValueTreeReaderWriter".
    KeyValueTreeReaderWriter& keyvalue(const std::string& key, const std::string& value);

    // The text of a value; none, or the default, if there is no such node or value or it is no text.
    boost::optional<std::string> get_keyvalue(const std::string& key);
    std::string get_keyvalue(const std::string& key, const std::string& defaultValue);

    // On the present node: first its values, then the nodes below.
    registry::iterator get_keyvalue_iterator();

    // Reads each entry of the present node with KeyValueSerialization and stores it under its name. An entry
    // that cannot be read is stored empty. A node that is not there leaves the storage as it was.
    void read(KeyValueStorage& storage);

private:
    void updateCachedPath();

    std::string m_basePath;
    std::deque<std::string> m_nodes; // the outermost first
    boost::optional<std::string> m_cachedPath;
};

} // namespace orv
