#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace mero {

/// A failed call of SQLite. Thrown inside the store only, which turns it into an `Error`.
class SqliteFailure : public std::runtime_error {
public:
    SqliteFailure(int primaryCode, const std::string& message)
        : std::runtime_error(message), code(primaryCode) {}

    const int code;  ///< primary result code
};

enum class SqliteAccess {
    Read,       ///< only reads, but takes part in locking and clears up what a killed process left
    Immutable,  ///< for a file that nobody can write: neither locks nor helper files
    Write,
    Create,  ///< writes, and makes the file if there is none
};

/// An open database. Waits up to two seconds for locks of others.
class SqliteConnection {
public:
    SqliteConnection(const std::filesystem::path& path, SqliteAccess access);

    void execute(const char* sql);
    [[nodiscard]] std::int64_t queryNumber(const char* sql);
    [[nodiscard]] std::string queryText(const char* sql);
    /// The system allows only reading.
    [[nodiscard]] bool isReadOnly() const;
    [[noreturn]] void fail() const;
    [[nodiscard]] sqlite3* handle() const { return database.get(); }

private:
    struct Closer {
        void operator()(sqlite3* closed) const;
    };
    std::unique_ptr<sqlite3, Closer> database;
};

/// A prepared statement; parameters and columns count from 0.
class SqliteStatement {
public:
    SqliteStatement(SqliteConnection& usedConnection, const char* sql);

    SqliteStatement& bind(int parameter, std::int64_t value);
    SqliteStatement& bind(int parameter, double value);
    /// The text has to live until the statement has been run.
    SqliteStatement& bind(int parameter, std::string_view value);
    /// True while there is a row. Behind the last row the statement is ready for new parameters.
    bool step();
    /// For statements without rows.
    void run() {
        while (step()) {
        }
    }

    /// A declared SQLite type: `SQLITE_INTEGER`, `SQLITE_FLOAT`, `SQLITE_TEXT`, `SQLITE_BLOB` or
    /// `SQLITE_NULL`.
    [[nodiscard]] int typeOf(int column) const;
    [[nodiscard]] std::int64_t number(int column) const;
    [[nodiscard]] double real(int column) const;
    /// Valid until the next step.
    [[nodiscard]] std::string_view text(int column) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* finished) const;
    };
    void check(int code) const;

    SqliteConnection& connection;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement;
};

enum class SqliteTransactionKind { Reading, Writing };

/// Rolled back unless it is committed.
class SqliteTransaction {
public:
    SqliteTransaction(SqliteConnection& usedConnection, SqliteTransactionKind kind);
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;
    ~SqliteTransaction();

    void commit();

private:
    SqliteConnection& connection;
    bool open = true;
};

}  // namespace mero
