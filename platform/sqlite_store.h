#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace platform {

// A file of the embedded database, and statements on it. A failure throws the system's error number that
// comes nearest, as an `int`; this stays inside the registry.
class SqliteStore {
public:
    // Without `create`, a file that is not there is a failure.
    SqliteStore(const std::string& path, bool create);
    ~SqliteStore();
    SqliteStore(const SqliteStore&) = delete;
    SqliteStore& operator=(const SqliteStore&) = delete;

    void run(const char* statements);
    // Rows that the last statement changed.
    int changes() const;

    class Statement {
    public:
        Statement(SqliteStore& store, const char* text);
        ~Statement();
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;

        // Parameters in order, from the first on.
        Statement& bind(std::string_view text);
        Statement& bind(std::int64_t number);
        Statement& bindBytes(const void* bytes, std::size_t size);
        // True while there is a row.
        bool step();
        std::string text(int column) const;
        std::int64_t number(int column) const;
        std::vector<unsigned char> bytes(int column) const;

    private:
        SqliteStore& m_store;
        sqlite3_stmt* m_statement = nullptr;
        int m_bound = 0;
    };

    // Undone at its end unless it was committed.
    class Transaction {
    public:
        explicit Transaction(SqliteStore& store);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void commit();

    private:
        SqliteStore& m_store;
        bool m_open = true;
    };

private:
    [[noreturn]] void fail(int code) const;

    sqlite3* m_database = nullptr;
};

} // namespace platform
