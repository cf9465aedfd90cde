#include "platform/repository/sqlite_connection.h"

#include <sqlite3.h>

namespace mero {

namespace {

constexpr int LockTimeout = 2000;  // milliseconds
constexpr int PrimaryCodeMask = 0xFF;

std::string immutableUri(const std::filesystem::path& path) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string uri = "file:";
    for (const char character : path.string()) {
        if (character == '%' || character == '?' || character == '#') {
            const auto byte = static_cast<unsigned char>(character);
            uri += {'%', digits[byte / 16], digits[byte % 16]};
        } else {
            uri += character;
        }
    }
    return uri + "?immutable=1";
}

}  // namespace

void SqliteConnection::Closer::operator()(sqlite3* closed) const {
    sqlite3_close(closed);
}

SqliteConnection::SqliteConnection(const std::filesystem::path& path, SqliteAccess access) {
    const bool immutable = access == SqliteAccess::Immutable;
    // A plain reader opens for writing too: only so can it recover and remove the log of a killed process.
    const int flags = immutable                        ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI
                      : access == SqliteAccess::Create ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE
                                                       : SQLITE_OPEN_READWRITE;
    sqlite3* opened = nullptr;
    const std::string name = immutable ? immutableUri(path) : path.string();
    const int code = sqlite3_open_v2(name.c_str(), &opened, flags, nullptr);
    database.reset(opened);
    if (code != SQLITE_OK) {
        fail();
    }
    sqlite3_busy_timeout(opened, LockTimeout);
    execute("PRAGMA synchronous=FULL");
    execute("PRAGMA trusted_schema=OFF");
}

void SqliteConnection::fail() const {
    if (database == nullptr) {
        throw SqliteFailure(SQLITE_NOMEM, "out of memory");
    }
    throw SqliteFailure(sqlite3_errcode(database.get()) & PrimaryCodeMask, sqlite3_errmsg(database.get()));
}

void SqliteConnection::execute(const char* sql) {
    if (sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        fail();
    }
}

std::int64_t SqliteConnection::queryNumber(const char* sql) {
    SqliteStatement statement(*this, sql);
    return statement.step() ? statement.number(0) : 0;
}

std::string SqliteConnection::queryText(const char* sql) {
    SqliteStatement statement(*this, sql);
    return statement.step() ? std::string(statement.text(0)) : std::string();
}

bool SqliteConnection::isReadOnly() const {
    return sqlite3_db_readonly(database.get(), "main") == 1;
}

void SqliteStatement::Finalizer::operator()(sqlite3_stmt* finished) const {
    sqlite3_finalize(finished);
}

SqliteStatement::SqliteStatement(SqliteConnection& usedConnection, const char* sql)
    : connection(usedConnection) {
    sqlite3_stmt* prepared = nullptr;
    check(sqlite3_prepare_v2(connection.handle(), sql, -1, &prepared, nullptr));
    statement.reset(prepared);
}

void SqliteStatement::check(int code) const {
    if (code != SQLITE_OK) {
        connection.fail();
    }
}

SqliteStatement& SqliteStatement::bind(int parameter, std::int64_t value) {
    check(sqlite3_bind_int64(statement.get(), parameter + 1, value));
    return *this;
}

SqliteStatement& SqliteStatement::bind(int parameter, double value) {
    check(sqlite3_bind_double(statement.get(), parameter + 1, value));
    return *this;
}

SqliteStatement& SqliteStatement::bind(int parameter, std::string_view value) {
    // A null pointer would bind no value instead of the empty text.
    check(sqlite3_bind_text(statement.get(), parameter + 1, value.empty() ? "" : value.data(),
                            static_cast<int>(value.size()), SQLITE_STATIC));
    return *this;
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(statement.get());
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        connection.fail();
    }
    check(sqlite3_reset(statement.get()));
    return false;
}

int SqliteStatement::typeOf(int column) const {
    return sqlite3_column_type(statement.get(), column);
}

std::int64_t SqliteStatement::number(int column) const {
    return sqlite3_column_int64(statement.get(), column);
}

double SqliteStatement::real(int column) const {
    return sqlite3_column_double(statement.get(), column);
}

std::string_view SqliteStatement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
    return bytes != nullptr
               ? std::string_view(bytes,
                                  static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column)))
               : std::string_view();
}

SqliteTransaction::SqliteTransaction(SqliteConnection& usedConnection, SqliteTransactionKind kind)
    : connection(usedConnection) {
    connection.execute(kind == SqliteTransactionKind::Writing ? "BEGIN IMMEDIATE" : "BEGIN");
}

SqliteTransaction::~SqliteTransaction() {
    if (open) {
        sqlite3_exec(connection.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void SqliteTransaction::commit() {
    connection.execute("COMMIT");
    open = false;
}

}  // namespace mero
