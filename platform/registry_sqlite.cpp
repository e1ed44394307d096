#include "platform/registry.h"

#include "platform/files.h"
#include "platform/registry_key.h"
#include "platform/sqlite_store.h"
#include "platform/text.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <system_error>

namespace platform::registry {

// When a registry is the same as at another time.
struct Version {
    std::uint64_t opening = 0; // which of the files that this process has opened
    std::int64_t own = 0;      // rows that this process has changed
    std::int64_t others = 0;   // another number whenever somebody else has changed any

    bool operator==(const Version& other) const {
        return opening == other.opening && own == other.own && others == other.others;
    }
};

// Where the last step of a walk by indexes has come to. Counting rows from the first one on at each step
// would take the square of the time; as long as nothing changes the next row is the one behind.
struct Walk {
    Version version;
    std::uint32_t next = 0; // 0: there was no step
    std::int64_t number = 0;
    std::string place;

    bool leadsTo(std::uint32_t index, const Version& now) const {
        return index != 0 && index == next && version == now;
    }
};

// What a handle stands for: a place, not a row, so that a key that is deleted meanwhile is just not there.
struct OpenKey {
    explicit OpenKey(std::string at = std::string()) : place(std::move(at)) {}

    const std::string place;
    // Only with the registry's guard held.
    Walk values, keys;
};

namespace {

constexpr int kBadHandle = static_cast<int>(std::errc::bad_file_descriptor);
constexpr int kNameTooLong = static_cast<int>(std::errc::filename_too_long);

// A key's place is its path in small letters; `name` is its last name as it was written first.
constexpr const char* kSchema =
    "BEGIN IMMEDIATE;"
    "CREATE TABLE IF NOT EXISTS keys(place TEXT PRIMARY KEY, parent TEXT NOT NULL, name TEXT NOT NULL) "
    "WITHOUT ROWID;"
    "CREATE INDEX IF NOT EXISTS keys_by_parent ON keys(parent);"
    "CREATE TABLE IF NOT EXISTS vals(number INTEGER PRIMARY KEY, place TEXT NOT NULL, folded TEXT NOT NULL,"
    " name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE(place, folded));"
    "CREATE INDEX IF NOT EXISTS vals_by_place ON vals(place);"
    "COMMIT;";

struct State {
    std::mutex guard;
    std::wstring chosenFile;
    std::wstring openFile;
    std::unique_ptr<SqliteStore> store;
    std::uint64_t openings = 0;
};

State& state() {
    static State one;
    return one;
}

std::wstring defaultFile() {
    std::wstring value;
    if (environmentVariable("TALDORK_REGISTRY", value) && !value.empty())
        return value;
    if (environmentVariable("XDG_CONFIG_HOME", value) && !value.empty())
        return joinPath(value, L"taldork/registry");
    return joinPath(homeFolder(), L".config/taldork/registry");
}

std::wstring currentFile(const State& now) { return now.chosenFile.empty() ? defaultFile() : now.chosenFile; }

// The open file, or null where there is none and none is to be made.
SqliteStore* open(State& now, bool create) {
    const std::wstring file = currentFile(now);
    const bool there = fileExists(file);
    if (now.store && (now.openFile != file || !there))
        now.store.reset();
    if (!now.store && (there || create)) {
        if (const FileResult made = makeFolders(folderOf(file)); !made)
            throw made.error;
        auto store = std::make_unique<SqliteStore>(toUtf8(file), create);
        // Many small writes: the log keeps the file whole without a flush for each of them.
        store->run("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;");
        store->run(kSchema);
        now.store = std::move(store);
        now.openFile = file;
        ++now.openings;
    }
    return now.store.get();
}

// Runs an operation on the open file; kNotFound where there is no file yet.
template <class Operation>
int guarded(bool create, Operation operation) {
    State& now = state();
    const std::lock_guard<std::mutex> lock(now.guard);
    try {
        SqliteStore* store = open(now, create);
        return store == nullptr ? kNotFound : operation(*store);
    } catch (int error) {
        return error;
    }
}

// A text as far as its first zero, as the system's calls take it.
std::wstring_view untilZero(std::wstring_view text) { return text.substr(0, text.find(L'\0')); }

std::vector<std::wstring> namesOf(std::wstring_view wholePath) {
    const std::wstring_view path = untilZero(wholePath);
    std::vector<std::wstring> names;
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find(L'\\', at), path.size());
        if (end > at)
            names.emplace_back(path.substr(at, end - at));
        at = end + 1;
    }
    return names;
}

std::string placeOf(std::wstring_view path) {
    std::string place;
    for (const std::wstring& name : namesOf(path))
        place += (place.empty() ? "" : "\\") + toUtf8(foldCase(name));
    return place;
}

// The place of a path below another place.
std::string placeBelow(const std::string& place, std::wstring_view path) {
    const std::string below = placeOf(path);
    return place.empty() || below.empty() ? place + below : place + "\\" + below;
}

bool hasKey(SqliteStore& store, const std::string& place) {
    return place.empty() ||
           SqliteStore::Statement(store, "SELECT 1 FROM keys WHERE place=?").bind(place).step();
}

std::vector<unsigned char> encoded(const Value& value) {
    std::vector<unsigned char> bytes;
    if (value.type == ValueType::kBinary)
        return value.binary;
    if (value.type == ValueType::kNumber) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<unsigned char>(value.number >> shift));
        return bytes;
    }
    for (const char16_t unit : toUtf16(value.text)) {
        bytes.push_back(static_cast<unsigned char>(unit));
        bytes.push_back(static_cast<unsigned char>(unit >> 8));
    }
    return bytes;
}

Value decoded(std::int64_t type, std::vector<unsigned char> bytes) {
    Value value;
    if (type == kTextType || type == kExpandableTextType) {
        std::u16string units;
        for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
            units += static_cast<char16_t>(bytes[at] | bytes[at + 1] << 8);
        // Some store the terminator with the text.
        while (!units.empty() && units.back() == u'\0')
            units.pop_back();
        value.text = fromUtf16(units);
    } else if (type == static_cast<int>(ValueType::kNumber)) {
        value.type = ValueType::kNumber;
        for (std::size_t at = 0; at < 4 && at < bytes.size(); ++at)
            value.number |= static_cast<std::uint32_t>(bytes[at]) << (8 * at);
    } else {
        value.type = ValueType::kBinary;
        value.binary = std::move(bytes);
    }
    return value;
}

// Makes the keys of a path below `place`, which becomes the place of the last.
int createBelow(SqliteStore& store, std::string& place, std::wstring_view path) {
    SqliteStore::Transaction transaction(store);
    if (!hasKey(store, place))
        return kNotFound;
    for (const std::wstring& name : namesOf(path)) {
        if (toUtf16(name).size() > kLongestKeyName)
            return kNameTooLong;
        const std::string next = (place.empty() ? "" : place + "\\") + toUtf8(foldCase(name));
        SqliteStore::Statement(store, "INSERT OR IGNORE INTO keys(place, parent, name) VALUES(?,?,?)")
            .bind(next)
            .bind(place)
            .bind(toUtf8(name))
            .step();
        place = next;
    }
    transaction.commit();
    return kDone;
}

int putData(SqliteStore& store, const std::string& place, std::wstring_view wholeName, std::int64_t type,
            const void* data, std::size_t size) {
    const std::wstring_view name = untilZero(wholeName);
    if (toUtf16(name).size() > kLongestValueName)
        return kNameTooLong;
    SqliteStore::Transaction transaction(store);
    if (!hasKey(store, place))
        return kNotFound;
    SqliteStore::Statement(store,
                           "INSERT INTO vals(place, folded, name, type, data) VALUES(?,?,?,?,?)"
                           " ON CONFLICT(place, folded) DO UPDATE SET type=excluded.type, data=excluded.data")
        .bind(place)
        .bind(toUtf8(foldCase(name)))
        .bind(toUtf8(name))
        .bind(type)
        .bindBytes(data, size)
        .step();
    transaction.commit();
    return kDone;
}

// With the registry's guard held.
Version versionOf(SqliteStore& store) {
    SqliteStore::Statement told(store, "SELECT total_changes(), data_version FROM pragma_data_version");
    if (!told.step())
        throw kBadHandle;
    return {state().openings, told.number(0), told.number(1)};
}

// Gives a name out if it is short enough.
int handOut(const std::string& found, std::size_t capacity, std::wstring& name) {
    std::wstring wide = fromUtf8(found);
    if (toUtf16(wide).size() >= capacity)
        return kNameTooLong;
    name = std::move(wide);
    return kDone;
}

} // namespace

int createKey(std::wstring_view path) {
    return guarded(true, [&](SqliteStore& store) {
        std::string place;
        return createBelow(store, place, path);
    });
}

bool keyExists(std::wstring_view path) {
    return placeOf(path).empty() || guarded(false, [&](SqliteStore& store) {
                                        return hasKey(store, placeOf(path)) ? kDone : kNotFound;
                                    }) == kDone;
}

int setValue(std::wstring_view path, std::wstring_view name, const Value& value) {
    const std::vector<unsigned char> data = encoded(value);
    return guarded(true, [&](SqliteStore& store) {
        return putData(store, placeOf(path), name, static_cast<std::int64_t>(value.type), data.data(),
                       data.size());
    });
}

int getValue(std::wstring_view path, std::wstring_view name, Value& value) {
    return guarded(false, [&](SqliteStore& store) {
        SqliteStore::Statement found(store, "SELECT type, data FROM vals WHERE place=? AND folded=?");
        if (!found.bind(placeOf(path)).bind(toUtf8(foldCase(untilZero(name)))).step())
            return kNotFound;
        value = decoded(found.number(0), found.bytes(1));
        return kDone;
    });
}

int listKeys(std::wstring_view path, std::vector<std::wstring>& names) {
    names.clear();
    return guarded(false, [&](SqliteStore& store) {
        const std::string place = placeOf(path);
        SqliteStore::Statement found(store, "SELECT name FROM keys WHERE parent=? ORDER BY place");
        found.bind(place);
        while (found.step())
            names.push_back(fromUtf8(found.text(0)));
        return hasKey(store, place) ? kDone : kNotFound;
    });
}

int listValues(std::wstring_view path, std::vector<NamedValue>& values) {
    values.clear();
    return guarded(false, [&](SqliteStore& store) {
        const std::string place = placeOf(path);
        SqliteStore::Statement found(store,
                                     "SELECT name, type, data FROM vals WHERE place=? ORDER BY number");
        found.bind(place);
        while (found.step())
            values.push_back({fromUtf8(found.text(0)), decoded(found.number(1), found.bytes(2))});
        return hasKey(store, place) ? kDone : kNotFound;
    });
}

int deleteValue(std::wstring_view path, std::wstring_view name) {
    return guarded(false, [&](SqliteStore& store) {
        SqliteStore::Statement(store, "DELETE FROM vals WHERE place=? AND folded=?")
            .bind(placeOf(path))
            .bind(toUtf8(foldCase(untilZero(name))))
            .step();
        return store.changes() > 0 ? kDone : kNotFound;
    });
}

int deleteKey(std::wstring_view path) {
    return guarded(false, [&](SqliteStore& store) {
        // "]" follows "\" directly, so what lies between is the key's own paths.
        const std::string place = placeOf(path);
        if (place.empty())
            return kNotFound;
        SqliteStore::Transaction transaction(store);
        SqliteStore::Statement(store, "DELETE FROM vals WHERE place=? OR (place>? AND place<?)")
            .bind(place)
            .bind(place + "\\")
            .bind(place + "]")
            .step();
        SqliteStore::Statement(store, "DELETE FROM keys WHERE place=? OR (place>? AND place<?)")
            .bind(place)
            .bind(place + "\\")
            .bind(place + "]")
            .step();
        const int outcome = store.changes() > 0 ? kDone : kNotFound;
        transaction.commit();
        return outcome;
    });
}

KeyHandle currentUser() {
    static OpenKey root;
    return &root;
}

int createKey(KeyHandle root, const std::wstring& path, std::uint32_t /*access*/, KeyHandle& key) {
    key = nullptr;
    if (root == nullptr)
        return kBadHandle;
    return guarded(true, [&](SqliteStore& store) {
        std::string place = root->place;
        const int outcome = createBelow(store, place, path);
        if (outcome == kDone)
            key = new OpenKey(std::move(place));
        return outcome;
    });
}

int openKey(KeyHandle root, const std::wstring& path, std::uint32_t /*access*/, KeyHandle& key) {
    key = nullptr;
    if (root == nullptr)
        return kBadHandle;
    return guarded(false, [&](SqliteStore& store) {
        std::string place = placeBelow(root->place, path);
        if (!hasKey(store, place))
            return kNotFound;
        key = new OpenKey(std::move(place));
        return kDone;
    });
}

void closeKey(KeyHandle key) {
    if (key != currentUser())
        delete key;
}

int setData(KeyHandle key, const std::wstring& name, std::uint32_t type, const void* data,
            std::uint32_t size) {
    if (key == nullptr)
        return kBadHandle;
    return guarded(true,
                   [&](SqliteStore& store) { return putData(store, key->place, name, type, data, size); });
}

int enumerateValue(KeyHandle key, std::uint32_t index, std::size_t capacity, std::wstring& name,
                   std::uint32_t& type, std::uint32_t& size) {
    if (key == nullptr)
        return kBadHandle;
    return guarded(false, [&](SqliteStore& store) {
        if (!hasKey(store, key->place))
            return kNotFound;
        Walk& walk = key->values;
        const Version now = versionOf(store);
        const bool goesOn = walk.leadsTo(index, now);
        SqliteStore::Statement found(store, goesOn ? "SELECT name, type, length(data), number FROM vals"
                                                     " WHERE place=? AND number>? ORDER BY number LIMIT 1"
                                                   : "SELECT name, type, length(data), number FROM vals"
                                                     " WHERE place=? ORDER BY number LIMIT 1 OFFSET ?");
        if (!found.bind(key->place).bind(goesOn ? walk.number : static_cast<std::int64_t>(index)).step())
            return kNoMoreItems;
        walk.version = now;
        walk.next = index + 1;
        walk.number = found.number(3);
        const int outcome = handOut(found.text(0), capacity, name);
        if (outcome == kDone) {
            type = static_cast<std::uint32_t>(found.number(1));
            size = static_cast<std::uint32_t>(found.number(2));
        }
        return outcome;
    });
}

int enumerateKey(KeyHandle key, std::uint32_t index, std::size_t capacity, std::wstring& name) {
    if (key == nullptr)
        return kBadHandle;
    return guarded(false, [&](SqliteStore& store) {
        if (!hasKey(store, key->place))
            return kNotFound;
        Walk& walk = key->keys;
        const Version now = versionOf(store);
        const bool goesOn = walk.leadsTo(index, now);
        SqliteStore::Statement found(
            store, goesOn ? "SELECT name, place FROM keys WHERE parent=? AND place>? ORDER BY place LIMIT 1"
                          : "SELECT name, place FROM keys WHERE parent=? ORDER BY place LIMIT 1 OFFSET ?");
        found.bind(key->place);
        if (goesOn)
            found.bind(walk.place);
        else
            found.bind(static_cast<std::int64_t>(index));
        if (!found.step())
            return kNoMoreItems;
        walk.version = now;
        walk.next = index + 1;
        walk.place = found.text(1);
        return handOut(found.text(0), capacity, name);
    });
}

void setRegistryFile(std::wstring path) {
    const std::lock_guard<std::mutex> lock(state().guard);
    state().chosenFile = std::move(path);
}

std::wstring registryFile() {
    const std::lock_guard<std::mutex> lock(state().guard);
    return currentFile(state());
}

} // namespace platform::registry
