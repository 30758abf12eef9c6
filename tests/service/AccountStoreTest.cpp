#include "AccountStore.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <array>
#include <atomic>
#include <barrier>
#include <fstream>
#include <thread>
#include <vector>

#include "MadeUpMaps.h"
#include "MapCatalogue.h"
#include "TemporaryFolder.h"

using testing::AllOf;
using testing::HasSubstr;

namespace {

AccountRecord Record(const std::u16string& userId, const std::u16string& email) {
    AccountRecord record;
    record.userId = userId;
    record.passwordHash = "hash";
    record.email = email;
    return record;
}

class AccountStoreFile : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path File() const { return folder.Path() / MapCatalogue::fileName; }

    [[nodiscard]] std::string OneText(const char* sql) const {
        const Database database(File());
        Statement select(database, sql);
        return select.Step() ? select.Text(0) : "no row";
    }

    /* Why the accounts cannot be opened. */
    [[nodiscard]] std::string Complaint(const std::filesystem::path& file) const {
        try {
            const AccountStore accounts(file);
        } catch (const AccountStoreError& error) {
            return error.what();
        }
        return "none";
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(AccountStoreFile, UserIdsAreFoundInAnyCase) {
    AccountStore accounts(File());
    EXPECT_EQ(accounts.Add(Record(u"M\u00FCller", u"m@x.example")), AccountAdded::yes);
    EXPECT_EQ(accounts.PasswordHashOf(u"M\u00FCller"), "hash");
    EXPECT_EQ(accounts.PasswordHashOf(u"m\u00DCLLER"), "hash");
    EXPECT_EQ(accounts.PasswordHashOf(u"Muller"), std::nullopt);
    EXPECT_EQ(accounts.PasswordHashOf(u""), std::nullopt);
}

TEST_F(AccountStoreFile, UserIdCountsBeforeTheAddress) {
    AccountStore accounts(File());
    ASSERT_EQ(accounts.Add(Record(u"anna", u"a@x.example")), AccountAdded::yes);
    EXPECT_EQ(accounts.Add(Record(u"ANNA", u"other@x.example")), AccountAdded::userIdTaken);
    EXPECT_EQ(accounts.Add(Record(u"other", u"A@X.EXAMPLE")), AccountAdded::emailTaken);
    EXPECT_EQ(accounts.Add(Record(u"Anna", u"A@x.example")), AccountAdded::userIdTaken);
    EXPECT_EQ(accounts.Add(Record(u"other", u"other@x.example")), AccountAdded::yes);
}

TEST_F(AccountStoreFile, EveryCodeUnitTellsUserIdsApart) {
    AccountStore accounts(File());
    const std::u16string userIds[] = {u"a",        u"a\xD83D",   u"a\xD83E", u"a\xDDFA", u"a\xD83D\xDDFA",
                                      {u"a\0", 2}, {u"a\0b", 3}, u"a\n",     u"a'",      u"a\"",
                                      u"a\uFFFD"};
    std::u16string email = u"@x.example";
    for (const std::u16string& userId : userIds) {
        email.insert(0, 1, u'a');
        AccountRecord record = Record(userId, email);
        record.passwordHash = std::to_string(email.size());
        EXPECT_EQ(accounts.Add(record), AccountAdded::yes);
    }
    size_t size = 10;
    for (const std::u16string& userId : userIds)
        EXPECT_EQ(accounts.PasswordHashOf(userId), std::to_string(++size));
}

TEST_F(AccountStoreFile, TextThatLooksLikeSqlIsText) {
    AccountStore accounts(File());
    const std::u16string userId = u"'); DROP TABLE account; --";
    EXPECT_EQ(accounts.Add(Record(userId, u"a@x.example")), AccountAdded::yes);
    EXPECT_EQ(accounts.PasswordHashOf(userId), "hash");
    EXPECT_EQ(accounts.PasswordHashOf(u"' OR 1=1 --"), std::nullopt);
}

TEST_F(AccountStoreFile, EveryFieldIsThereForOtherTools) {
    AccountStore accounts(File());
    AccountRecord record = Record(u"Ann\u00E4", u"Anna@X.example");
    record.name = u"Anna \xD83D\xDDFA";
    record.referrer = u"a friend";
    record.wantsUpdates = true;
    record.vendor = INT32_MIN;
    record.language = u"Fran\u00E7ais";
    ASSERT_EQ(accounts.Add(record), AccountAdded::yes);
    EXPECT_EQ(
        OneText("SELECT concat FROM (SELECT userId || '|' || passwordHash || '|' || name || '|' || referrer"
                " || '|' || email || '|' || wantsUpdates || '|' || vendor || '|' || language AS concat"
                " FROM account)"),
        "Ann\xC3\xA4|hash|Anna \xF0\x9F\x97\xBA|a friend|Anna@X.example|1|-2147483648|Fran\xC3\xA7"
        "ais");
}

TEST_F(AccountStoreFile, SecondOpeningKeepsTheAccounts) {
    { EXPECT_EQ(AccountStore(File()).Add(Record(u"anna", u"a@x.example")), AccountAdded::yes); }
    EXPECT_EQ(AccountStore(File()).PasswordHashOf(u"anna"), "hash");
    EXPECT_EQ(AccountStore(File()).Add(Record(u"anna", u"b@x.example")), AccountAdded::userIdTaken);
}

TEST_F(AccountStoreFile, CatalogueAndAccountsShareADatabase) {
    { const MapCatalogue withoutAccounts(folder.Path(), MadeUpMaps(3)); }
    AccountStore accounts(File());
    EXPECT_EQ(accounts.Add(Record(u"anna", u"a@x.example")), AccountAdded::yes);
    EXPECT_EQ(MapCatalogue(folder.Path(), MadeUpMaps(3)).Count(), 3);
    EXPECT_EQ(OneText("SELECT userId FROM account"), "anna");
}

TEST_F(AccountStoreFile, OthersMayNotReadTheFile) {
    std::ofstream(File()).flush();
    ASSERT_EQ(chmod(File().c_str(), 0644), 0);
    const AccountStore accounts(File());
    struct stat status {};
    ASSERT_EQ(stat(File().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(AccountStoreFile, TableOfAnotherProgramIsRefused) {
    Database(File()).Execute("CREATE TABLE account (theirs)");
    EXPECT_THAT(Complaint(File()),
                AllOf(HasSubstr("the accounts in '" + File().string() + "' cannot be used: "),
                      HasSubstr("no column named")));
}

TEST_F(AccountStoreFile, FileThatIsNoDatabaseIsRefused) {
    std::ofstream(File()) << std::string(5000, 'x');
    EXPECT_THAT(Complaint(File()), HasSubstr("file is not a database"));
    EXPECT_THAT(Complaint(folder.Path()), HasSubstr("unable to open database file"));
}

TEST_F(AccountStoreFile, FailureOfTheDatabaseIsReported) {
    AccountStore accounts(File());
    Database(File()).Execute("DROP TABLE account");
    EXPECT_THROW(accounts.Add(Record(u"anna", u"a@x.example")), DatabaseError);
    EXPECT_THROW(static_cast<void>(accounts.PasswordHashOf(u"anna")), DatabaseError);
}

TEST_F(AccountStoreFile, OfSimultaneousAdditionsOfOneUserIdOneGetsIn) {
    constexpr size_t rounds = 30;
    constexpr size_t threadCount = 6;
    // Two connections, as of two processes, and several threads on each.
    std::array<AccountStore, 2> stores{AccountStore(File()), AccountStore(File())};
    std::array<std::atomic<int>, rounds> added{};
    std::barrier start(threadCount);
    std::vector<std::thread> threads;
    for (size_t index = 0; index < threadCount; ++index) {
        threads.emplace_back([&, index] {
            for (size_t round = 0; round < rounds; ++round) {
                const std::u16string userId(round + 1, index % 3 == 0 ? u'U' : u'u');
                const std::u16string email = std::u16string(index + 1, u'e') + u'@' + userId + u".example";
                start.arrive_and_wait();
                try {
                    if (stores.at(index % 2).Add(Record(userId, email)) == AccountAdded::yes)
                        ++added.at(round);
                } catch (const DatabaseError& error) {
                    ADD_FAILURE() << error.what();
                }
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const std::atomic<int>& count : added)
        EXPECT_EQ(count, 1);
    EXPECT_EQ(OneText("SELECT count(*) FROM account"), std::to_string(rounds));
}
