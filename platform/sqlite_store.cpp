#include "platform/sqlite_store.h"

#include <sqlite3.h>

#include <system_error>

namespace platform {

namespace {

constexpr int kWaitMilliseconds = 5000;

int systemError(int code) {
    switch (code & 0xFF) {
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_READONLY:
    case SQLITE_AUTH:
        return static_cast<int>(std::errc::permission_denied);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return static_cast<int>(std::errc::device_or_resource_busy);
    case SQLITE_FULL:
        return static_cast<int>(std::errc::no_space_on_device);
    case SQLITE_NOMEM:
        return static_cast<int>(std::errc::not_enough_memory);
    default:
        return static_cast<int>(std::errc::io_error);
    }
}

} // namespace

SqliteStore::SqliteStore(const std::string& path, bool create) {
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(path.c_str(), &m_database, flags, nullptr);
    if (code != SQLITE_OK) {
        sqlite3_close(m_database);
        throw systemError(code);
    }
    sqlite3_busy_timeout(m_database, kWaitMilliseconds);
}

SqliteStore::~SqliteStore() { sqlite3_close(m_database); }

void SqliteStore::fail(int code) const { throw systemError(code); }

void SqliteStore::run(const char* statements) {
    if (const int code = sqlite3_exec(m_database, statements, nullptr, nullptr, nullptr))
        fail(code);
}

int SqliteStore::changes() const { return sqlite3_changes(m_database); }

SqliteStore::Statement::Statement(SqliteStore& store, const char* text) : m_store(store) {
    if (const int code = sqlite3_prepare_v2(store.m_database, text, -1, &m_statement, nullptr))
        store.fail(code);
}

SqliteStore::Statement::~Statement() { sqlite3_finalize(m_statement); }

SqliteStore::Statement& SqliteStore::Statement::bind(std::string_view text) {
    const char* bytes = text.data() == nullptr ? "" : text.data();
    if (const int code =
            sqlite3_bind_text(m_statement, ++m_bound, bytes, static_cast<int>(text.size()), SQLITE_TRANSIENT))
        m_store.fail(code);
    return *this;
}

SqliteStore::Statement& SqliteStore::Statement::bind(std::int64_t number) {
    if (const int code = sqlite3_bind_int64(m_statement, ++m_bound, number))
        m_store.fail(code);
    return *this;
}

SqliteStore::Statement& SqliteStore::Statement::bindBytes(const void* bytes, std::size_t size) {
    const void* from = size == 0 ? "" : bytes;
    if (const int code = sqlite3_bind_blob64(m_statement, ++m_bound, from, size, SQLITE_TRANSIENT))
        m_store.fail(code);
    return *this;
}

bool SqliteStore::Statement::step() {
    const int code = sqlite3_step(m_statement);
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        m_store.fail(code);
    return code == SQLITE_ROW;
}

std::string SqliteStore::Statement::text(int column) const {
    const std::vector<unsigned char> found = bytes(column);
    return {found.begin(), found.end()};
}

std::int64_t SqliteStore::Statement::number(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

std::vector<unsigned char> SqliteStore::Statement::bytes(int column) const {
    const auto* data = static_cast<const unsigned char*>(sqlite3_column_blob(m_statement, column));
    const int size = sqlite3_column_bytes(m_statement, column);
    return data == nullptr ? std::vector<unsigned char>() : std::vector<unsigned char>(data, data + size);
}

SqliteStore::Transaction::Transaction(SqliteStore& store) : m_store(store) { store.run("BEGIN IMMEDIATE"); }

SqliteStore::Transaction::~Transaction() {
    if (m_open)
        sqlite3_exec(m_store.m_database, "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteStore::Transaction::commit() {
    m_store.run("COMMIT");
    m_open = false;
}

} // namespace platform
