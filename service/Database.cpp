#include "Database.h"

namespace {

constexpr int lockWaitMilliseconds = 5000;

void Check(int result, sqlite3* connection) {
    if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE) return;
    throw DatabaseError(connection != nullptr ? sqlite3_errmsg(connection) : sqlite3_errstr(result));
}

}  // namespace

Database::Database(const std::filesystem::path& file) {
    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    connection.reset(opened);
    Check(result, opened);
    Check(sqlite3_busy_timeout(opened, lockWaitMilliseconds), opened);
}

void Database::Execute(const char* sql) {
    Check(sqlite3_exec(connection.get(), sql, nullptr, nullptr, nullptr), connection.get());
}

Statement::Statement(const Database& database, const char* sql) {
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(database.Get(), sql, -1, &prepared, nullptr), database.Get());
    statement.reset(prepared);
}

void Statement::Bind(int parameter, int64_t value) {
    Check(sqlite3_bind_int64(statement.get(), parameter, value), sqlite3_db_handle(statement.get()));
}

void Statement::Bind(int parameter, std::string_view value) {
    Check(sqlite3_bind_text64(statement.get(), parameter, value.data(), value.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8),
          sqlite3_db_handle(statement.get()));
}

void Statement::BindBytes(int parameter, std::string_view value) {
    Check(sqlite3_bind_blob64(statement.get(), parameter, value.data(), value.size(), SQLITE_TRANSIENT),
          sqlite3_db_handle(statement.get()));
}

bool Statement::Step() {
    const int result = sqlite3_step(statement.get());
    Check(result, sqlite3_db_handle(statement.get()));
    return result == SQLITE_ROW;
}

void Statement::Run() {
    while (Step())
        continue;
    Check(sqlite3_reset(statement.get()), sqlite3_db_handle(statement.get()));
}

int32_t Statement::Int32(int column) const {
    return sqlite3_column_int(statement.get(), column);
}

std::string Statement::Text(int column) const {
    const void* text = sqlite3_column_text(statement.get(), column);
    const int size = sqlite3_column_bytes(statement.get(), column);
    if (text == nullptr) return {};
    return {static_cast<const char*>(text), static_cast<size_t>(size)};
}

Transaction::Transaction(Database& within) : database(within) {
    database.Execute("BEGIN EXCLUSIVE");
}

Transaction::~Transaction() {
    if (isOpen) sqlite3_exec(database.Get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
    database.Execute("COMMIT");
    isOpen = false;
}
