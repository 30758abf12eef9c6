#include "AccountStore.h"

#include <system_error>

#include "AccountText.h"
#include "Utf16.h"

namespace {

// Only the keys are compared; the texts beside them are for people who look at the table with other tools.
constexpr const char* schema = R"(
    CREATE TABLE IF NOT EXISTS account (
        id INTEGER PRIMARY KEY,
        userId TEXT NOT NULL,
        userIdKey BLOB NOT NULL UNIQUE,
        passwordHash TEXT NOT NULL,
        name TEXT NOT NULL,
        referrer TEXT NOT NULL,
        email TEXT NOT NULL,
        emailKey BLOB NOT NULL UNIQUE,
        wantsUpdates INTEGER NOT NULL CHECK (wantsUpdates IN (0, 1)),
        vendor INTEGER NOT NULL CHECK (vendor BETWEEN -2147483648 AND 2147483647),
        language TEXT NOT NULL
    ) STRICT;
)";

constexpr const char* insertAccount =
    "INSERT INTO account (userId, userIdKey, passwordHash, name, referrer, email, emailKey, wantsUpdates, "
    "vendor,"
    " language) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";
constexpr const char* selectUserId = "SELECT passwordHash FROM account WHERE userIdKey = ?";
constexpr const char* selectEmail = "SELECT 1 FROM account WHERE emailKey = ?";

Database OpenedDatabase(const std::filesystem::path& file) {
    try {
        Database database(file);
        database.Execute(schema);
        for (const char* sql : {insertAccount, selectUserId, selectEmail})
            const Statement check(database, sql);
        return database;
    } catch (const DatabaseError& error) {
        throw AccountStoreError("the accounts in '" + file.string() + "' cannot be used: " + error.what());
    }
}

/* The UTF-16 of the case-folded text, low bytes first: unlike UTF-8, it keeps half surrogates apart. */
std::string KeyOf(std::u16string_view text) {
    std::string key;
    for (const char16_t unit : CaseFolded(text)) {
        key += static_cast<char>(unit & 0xFF);
        key += static_cast<char>(unit >> 8);
    }
    return key;
}

void Insert(const Database& database, const AccountRecord& account, const std::string& userIdKey,
            const std::string& emailKey) {
    Statement insert(database, insertAccount);
    insert.Bind(1, Utf8Of(account.userId));
    insert.BindBytes(2, userIdKey);
    insert.Bind(3, account.passwordHash);
    insert.Bind(4, Utf8Of(account.name));
    insert.Bind(5, Utf8Of(account.referrer));
    insert.Bind(6, Utf8Of(account.email));
    insert.BindBytes(7, emailKey);
    insert.Bind(8, account.wantsUpdates ? 1 : 0);
    insert.Bind(9, account.vendor);
    insert.Bind(10, Utf8Of(account.language));
    insert.Run();
}

bool Finds(const Database& database, const char* sql, const std::string& key) {
    Statement select(database, sql);
    select.BindBytes(1, key);
    return select.Step();
}

}  // namespace

AccountStore::AccountStore(const std::filesystem::path& file) : database(OpenedDatabase(file)) {
    using std::filesystem::perms;
    // An error is ignored: not every file system has permissions, and the file may belong to another user.
    std::error_code ignored;
    std::filesystem::permissions(file, perms::group_all | perms::others_all,
                                 std::filesystem::perm_options::remove, ignored);
}

AccountAdded AccountStore::Add(const AccountRecord& account) {
    const std::string userIdKey = KeyOf(account.userId);
    const std::string emailKey = KeyOf(account.email);
    const std::lock_guard lock(oneAtATime);
    Transaction transaction(database);
    if (Finds(database, selectUserId, userIdKey)) return AccountAdded::userIdTaken;
    if (Finds(database, selectEmail, emailKey)) return AccountAdded::emailTaken;
    Insert(database, account, userIdKey, emailKey);
    transaction.Commit();
    return AccountAdded::yes;
}

std::optional<std::string> AccountStore::PasswordHashOf(std::u16string_view userId) const {
    const std::lock_guard lock(oneAtATime);
    Statement select(database, selectUserId);
    select.BindBytes(1, KeyOf(userId));
    if (!select.Step()) return std::nullopt;
    return select.Text(0);
}
