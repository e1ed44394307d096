#include "dbx/keyvalue/tree_reader_writer.h"

#include "app/log.h"
#include "app/log_stream.h"
#include "base/assert.h"
#include "base/key_value_storage.h"
#include "dbx/keyvalue/locale_text.h"
#include "dbx/keyvalue/serialization.h"
#include "orvcore/read_key.h"
#include "platform/text.h"

#include <cstdint>

namespace orv {

KeyValueTreeReaderWriter::KeyValueTreeReaderWriter() = default;

KeyValueTreeReaderWriter::KeyValueTreeReaderWriter(const std::string& basePath) : m_basePath(basePath) {}

KeyValueTreeReaderWriter& KeyValueTreeReaderWriter::nodeBegin(const std::string& name) {
    m_nodes.push_back(name);
    m_cachedPath.reset();
    return *this;
}

KeyValueTreeReaderWriter& KeyValueTreeReaderWriter::nodeEnd() {
    ORV_ASSERT(!m_nodes.empty());
    if (!m_nodes.empty())
        m_nodes.pop_back();
    m_cachedPath.reset();
    return *this;
}

KeyValueTreeReaderWriter& KeyValueTreeReaderWriter::keyvalue(const std::string& key,
                                                             const std::string& value) {
    updateCachedPath();
    log("KeyValueTreeReaderWriter", kLogDebug, *m_cachedPath + "\\" + key);
    // Stored as 16-bit units, whatever a wide character has here, and without a terminator.
    const std::u16string text = platform::toUtf16(widenByLocale(value));
    registry::set(platform::registry::currentUser(), widenByLocale(*m_cachedPath), widenByLocale(key),
                  platform::registry::kTextType, text.data(),
                  static_cast<std::uint32_t>(text.size() * sizeof(char16_t)));
    return *this;
}

boost::optional<std::string> KeyValueTreeReaderWriter::get_keyvalue(const std::string& key) {
    updateCachedPath();
    std::wstring text;
    if (orv_readKey(text, widenByLocale(key), widenByLocale(*m_cachedPath), ORV_RegistryRoot::kCurrentUser) !=
        0)
        return boost::none;
    return narrowByLocale(text);
}

std::string KeyValueTreeReaderWriter::get_keyvalue(const std::string& key, const std::string& defaultValue) {
    return get_keyvalue(key).value_or(defaultValue);
}

registry::iterator KeyValueTreeReaderWriter::get_keyvalue_iterator() {
    updateCachedPath();
    return registry::iterator(platform::registry::currentUser(), widenByLocale(*m_cachedPath));
}

void KeyValueTreeReaderWriter::read(KeyValueStorage& storage) {
    updateCachedPath();
    // One message for the whole node, sent at the end.
    LogStream message("KeyValueTreeReaderWriter::tryRead");
    message << *m_cachedPath;
    registry::iterator entry = get_keyvalue_iterator();
    for (; !entry.atEnd(); entry.next()) {
        const std::string name = narrowByLocale(entry.name());
        boost::any value;
        if (!KeyValueSerialization::instance().tryRead(*this, name, value))
            message << "-> failed to read";
        storage.set(name, value);
    }
    entry.close();
}

void KeyValueTreeReaderWriter::updateCachedPath() {
    if (m_cachedPath)
        return;
    std::string path = m_basePath;
    for (const std::string& name : m_nodes)
        path += "\\" + name;
    m_cachedPath = path;
}

} // namespace orv
