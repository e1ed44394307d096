#include "platform/registry.h"

#include "platform/files.h"
#include "platform/sqlite_store.h"
#include "platform/text.h"

#include <memory>
#include <mutex>

namespace platform::registry {

namespace {

// A key's place is its path in small letters; `name` is its last name as it was written first.
constexpr const char* kSchema =
    "BEGIN IMMEDIATE;"
    "CREATE TABLE IF NOT EXISTS keys(place TEXT PRIMARY KEY, parent TEXT NOT NULL, name TEXT NOT NULL) "
    "WITHOUT ROWID;"
    "CREATE INDEX IF NOT EXISTS keys_by_parent ON keys(parent);"
    "CREATE TABLE IF NOT EXISTS vals(number INTEGER PRIMARY KEY, place TEXT NOT NULL, folded TEXT NOT NULL,"
    " name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE(place, folded));"
    "COMMIT;";

struct State {
    std::mutex guard;
    std::wstring chosenFile;
    std::wstring openFile;
    std::unique_ptr<SqliteStore> store;
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

std::vector<std::wstring> namesOf(std::wstring_view path) {
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
    if (type == static_cast<int>(ValueType::kText)) {
        std::u16string units;
        for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
            units += static_cast<char16_t>(bytes[at] | bytes[at + 1] << 8);
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

} // namespace

int createKey(std::wstring_view path) {
    return guarded(true, [&](SqliteStore& store) {
        SqliteStore::Transaction transaction(store);
        std::string parent;
        for (const std::wstring& name : namesOf(path)) {
            const std::string place = (parent.empty() ? "" : parent + "\\") + toUtf8(foldCase(name));
            SqliteStore::Statement(store, "INSERT OR IGNORE INTO keys(place, parent, name) VALUES(?,?,?)")
                .bind(place)
                .bind(parent)
                .bind(toUtf8(name))
                .step();
            parent = place;
        }
        transaction.commit();
        return kDone;
    });
}

bool keyExists(std::wstring_view path) {
    return placeOf(path).empty() || guarded(false, [&](SqliteStore& store) {
                                        return hasKey(store, placeOf(path)) ? kDone : kNotFound;
                                    }) == kDone;
}

int setValue(std::wstring_view path, std::wstring_view name, const Value& value) {
    return guarded(true, [&](SqliteStore& store) {
        const std::string place = placeOf(path);
        const std::vector<unsigned char> data = encoded(value);
        SqliteStore::Transaction transaction(store);
        if (!hasKey(store, place))
            return kNotFound;
        SqliteStore::Statement(
            store, "INSERT INTO vals(place, folded, name, type, data) VALUES(?,?,?,?,?)"
                   " ON CONFLICT(place, folded) DO UPDATE SET type=excluded.type, data=excluded.data")
            .bind(place)
            .bind(toUtf8(foldCase(name)))
            .bind(toUtf8(name))
            .bind(static_cast<std::int64_t>(value.type))
            .bindBytes(data.data(), data.size())
            .step();
        transaction.commit();
        return kDone;
    });
}

int getValue(std::wstring_view path, std::wstring_view name, Value& value) {
    return guarded(false, [&](SqliteStore& store) {
        SqliteStore::Statement found(store, "SELECT type, data FROM vals WHERE place=? AND folded=?");
        if (!found.bind(placeOf(path)).bind(toUtf8(foldCase(name))).step())
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
            .bind(toUtf8(foldCase(name)))
            .step();
        return store.changes() > 0 ? kDone : kNotFound;
    });
}

int deleteKey(std::wstring_view path) {
    return guarded(false, [&](SqliteStore& store) {
        // "]" follows "\" directly, so what lies between is the key's own paths.
        const std::string place = placeOf(path);
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

void setRegistryFile(std::wstring path) {
    const std::lock_guard<std::mutex> lock(state().guard);
    state().chosenFile = std::move(path);
}

std::wstring registryFile() {
    const std::lock_guard<std::mutex> lock(state().guard);
    return currentFile(state());
}

} // namespace platform::registry
