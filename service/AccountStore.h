/* The accounts of the service's users, in a database. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Database.h"

/* Why the accounts cannot be used: one sentence for whoever started the service. */
class AccountStoreError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/* Texts may hold any code units, half surrogates and zeros included. */
struct AccountRecord {
    std::u16string userId;
    std::string passwordHash;
    std::u16string name;
    std::u16string referrer;
    std::u16string email;
    bool wantsUpdates = false;
    int32_t vendor = 0;
    std::u16string language;
};

enum class AccountAdded { yes, userIdTaken, emailTaken };

/* May be used from several threads at once, and by several processes on the same file. The operations throw
 * DatabaseError when the database fails under them. */
class AccountStore {
public:
    /* Opens the database of a map catalogue, which must have been opened once, adds the table of accounts
     * when it is missing, and keeps other users of the system from reading the file, if it can. Throws
     * AccountStoreError when the table cannot be made or is not this service's. */
    explicit AccountStore(const std::filesystem::path& file);

    /* Adds an account unless there is one of that user ID or, failing that, of that e-mail address. Case
     * makes no difference to either. The account is whole and durable when this returns. Of several at once
     * with the same user ID or address, one is added. */
    AccountAdded Add(const AccountRecord& account);

    /* The hash that was added with a user ID, in whatever case; none when there is no such account. */
    [[nodiscard]] std::optional<std::string> PasswordHashOf(std::u16string_view userId) const;

private:
    mutable std::mutex oneAtATime;
    Database database;
};
