#pragma once

// The header to include for key-value trees in the user's registry.
#include "base/guard.h"
#include "base/key_value_storage.h"
#include "dbx/keyvalue/serialization.h"
#include "dbx/keyvalue/tree_reader_writer.h"

#include <boost/lexical_cast.hpp>

#include <string>

namespace orv {

// Reads a value of the cursor's node as a T, by the lexical conversion. The default for a value that is
// missing, and for one that cannot be converted, which is told on orvBeep.
template <class T>
T readKeyValue(KeyValueTreeReaderWriter& rw, const std::string& key, const T& defaultValue) {
    try {
        if (const boost::optional<std::string> text = rw.get_keyvalue(key))
            return boost::lexical_cast<T>(*text);
    }
    ORV_GUARD
    return defaultValue;
}

// Writes a value as the text that readKeyValue reads.
template <class T>
void writeKeyValue(KeyValueTreeReaderWriter& rw, const std::string& key, const T& value) {
    rw.keyvalue(key, boost::lexical_cast<std::string>(value));
}

} // namespace orv
