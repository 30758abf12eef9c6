/* SQLite with owners: a database, its statements and transactions end with their objects. */
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

/* What SQLite said when an operation failed. */
class DatabaseError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Database {
public:
    /* Opens a database file, or makes it; waits up to 5 s for what another process has locked. Every
     * operation of this class and of the two below throws DatabaseError when it fails. */
    explicit Database(const std::filesystem::path& file);

    /* Runs statements that give no rows, separated by semicolons. */
    void Execute(const char* sql);

    /* The connection, which stays the database's. */
    [[nodiscard]] sqlite3* Get() const { return connection.get(); }

private:
    struct Close {
        void operator()(sqlite3* open) const { sqlite3_close_v2(open); }
    };
    std::unique_ptr<sqlite3, Close> connection;
};

/* One prepared statement. The database must outlive it. */
class Statement {
public:
    Statement(const Database& database, const char* sql);

    /* Parameters count from 1. Text (UTF-8) and bytes are copied. */
    void Bind(int parameter, int64_t value);
    void Bind(int parameter, std::string_view value);
    void BindBytes(int parameter, std::string_view value);

    /* Goes to the next row; false after the last. */
    bool Step();

    /* Runs it to its end and makes it ready for other parameters. */
    void Run();

    /* The columns of the present row count from 0. */
    [[nodiscard]] int32_t Int32(int column) const;
    [[nodiscard]] std::string Text(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* prepared) const { sqlite3_finalize(prepared); }
    };
    std::unique_ptr<sqlite3_stmt, Finalize> statement;
};

/* Keeps all other connections out until it ends. Without Commit, nothing that was done in it remains. */
class Transaction {
public:
    explicit Transaction(Database& within);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void Commit();

private:
    Database& database;
    bool isOpen = true;
};
