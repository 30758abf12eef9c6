/* Account requests, and the accounts that they are answered from. */
#pragma once

#include "AccountHandler.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "TemporaryFolder.h"
#include "WireBytes.h"

class AccountHandler : public testing::Test {
protected:
    inline static const std::string created = Int32Bytes(0);
    inline static const std::string signedIn = Int32Bytes(0) + Int32Bytes(0);

    std::string Reply(std::string_view request) { return HandleAccounts(accounts, request).body; }

    std::string Create(const Creation& creation) { return Reply(creation.Bytes()); }

    std::string SignIn(std::u16string_view userId, std::u16string_view password) {
        return Reply(SignInBytes(userId, password));
    }

    /* A request that is refused: a reply of nothing but the status, and a word for the log. */
    void ExpectRefused(std::string_view request, int32_t status) {
        const CgiReply reply = HandleAccounts(accounts, request);
        EXPECT_EQ(reply.body, Int32Bytes(status));
        EXPECT_THAT(reply.refusal,
                    testing::StartsWith("refused with status " + std::to_string(status) + ": "));
    }

    [[nodiscard]] std::filesystem::path File() const { return folder.Path() / "catalogue.db"; }

    TemporaryFolder folder;
    AccountStore accounts{File()};
};

/* A creation that differs from the usual one in a field. */
template <class Field, class Value>
Creation With(Field Creation::*field, Value value) {
    Creation creation;
    creation.*field = value;
    return creation;
}
