#include "AccountHandler.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <latch>
#include <thread>
#include <vector>

#include "TemporaryFolder.h"
#include "WireBytes.h"

using namespace std::string_view_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string created = Int32Bytes(0);
const std::string signedIn = Int32Bytes(0) + Int32Bytes(0);

class AccountHandler : public testing::Test {
protected:
    std::string Reply(std::string_view request) { return HandleAccounts(accounts, request).body; }

    std::string Create(const Creation& creation) { return Reply(creation.Bytes()); }

    std::string SignIn(std::u16string_view userId, std::u16string_view password) {
        return Reply(SignInBytes(userId, password));
    }

    /* A request that is refused: a reply of nothing but the status, and a word for the log. */
    void ExpectRefused(std::string_view request, int32_t status) {
        const CgiReply reply = HandleAccounts(accounts, request);
        EXPECT_EQ(reply.body, Int32Bytes(status));
        EXPECT_THAT(reply.refusal, StartsWith("refused with status " + std::to_string(status) + ": "));
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

}  // namespace

TEST_F(AccountHandler, CreationAndSignInAreByteForByte) {
    const CgiReply creation = HandleAccounts(accounts,
                                             "\x0A\0\0\0"                        // code 10
                                             "\2\0\0\0\xCE\0l\0"                 // user ID
                                             "\6\0\0\0A\0b\0c\0001\0002\0003\0"  // password
                                             "\1\0\0\0\xAC\x20"                  // name
                                             "\0\0\0\0"                          // referrer
                                             "\5\0\0\0a\0@\0b\0.\0c\0"           // e-mail address
                                             "\1"                                // wants updates
                                             "\xFF\xFF\xFF\xFF"                  // vendor
                                             "\2\0\0\0F\0r\0"sv);                // language
    EXPECT_EQ(creation.body, "\0\0\0\0"sv);
    EXPECT_THAT(creation.refusal, IsEmpty());
    const CgiReply signIn = HandleAccounts(accounts,
                                           "\x08\0\0\0"                        // code 8
                                           "\2\0\0\0\xCE\0l\0"                 // user ID
                                           "\6\0\0\0A\0b\0c\0001\0002\0003\0"  // password
                                           "\0\0\0\x80"sv);                    // product code
    EXPECT_EQ(signIn.body, "\0\0\0\0\0\0\0\0"sv);                              // status, account state
    EXPECT_THAT(signIn.refusal, IsEmpty());
}

TEST_F(AccountHandler, UnknownUserIdIsStatus4AndWrongPasswordIsStatus5) {
    ASSERT_EQ(Create({}), created);
    ExpectRefused(SignInBytes(u"hanna", u"secret1"), 4);
    ExpectRefused(SignInBytes(u"", u"secret1"), 4);
    ExpectRefused(SignInBytes(u"hanna", u""), 4);
    ExpectRefused(SignInBytes(u"anna", u"secret2"), 5);
    ExpectRefused(SignInBytes(u"anna", u""), 5);
    EXPECT_EQ(SignIn(u"anna", u"secret1"), signedIn);
}

TEST_F(AccountHandler, PasswordsAreTheSameWhenTheirFirst16LettersAndDigitsAre) {
    const struct {
        const char* what;
        std::u16string_view created;
        std::u16string_view given;
        bool isSame;
    } cases[] = {
        {"as typed", u"My Pass-Word 2026, really", u"My Pass-Word 2026, really", true},
        {"as saved", u"My Pass-Word 2026, really", u"mypassword2026re", true},
        {"as saved, of 16", u"ABCDEFGHIJKLMNOP", u"abcdefghijklmnop", true},
        {"17th is another", u"abcdefghijklmnopq", u"abcdefghijklmnopz", true},
        {"17th is missing", u"abcdefghijklmnopq", u"abcdefghijklmnop", true},
        {"16th is another", u"abcdefghijklmnop", u"abcdefghijklmnoz", false},
        {"16th is missing", u"abcdefghijklmnop", u"abcdefghijklmno", false},
        {"umlauts, marks, breaks", u"\u00FCsec\nret\xD83D\u5C71\"1'", u"secret1", true},
        {"umlaut is no letter", u"s\u00E9cret12", u"secret12", false},
    };
    int number = 0;
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        Creation creation;
        creation.userId = u"user" + std::u16string(static_cast<size_t>(++number), u'x');
        creation.email = creation.userId + u"@mail.example";
        creation.password = each.created;
        ASSERT_EQ(Create(creation), created);
        EXPECT_EQ(SignIn(creation.userId, each.given), each.isSame ? signedIn : Int32Bytes(5));
    }
}

TEST_F(AccountHandler, PasswordOf500UnitsSignsIn) {
    const std::u16string password(500, u'p');
    ASSERT_EQ(Create(With(&Creation::password, password)), created);
    EXPECT_EQ(SignIn(u"anna", password), signedIn);
}

TEST_F(AccountHandler, PasswordNeedsSixLettersOrDigits) {
    for (const std::u16string_view password :
         {u""sv, u"abc12"sv, u"a-b-c-1-2-!-?"sv, u"\u00E4\u00F6\u00FC123"sv,
          u"\u5C71\u5C71\u5C71\u5C71\u5C71\u5C71"sv, u"      "sv}) {
        ExpectRefused(With(&Creation::password, password).Bytes(), 3);
    }
    EXPECT_EQ(Create(With(&Creation::password, u"--a-b-c-1-2-3--")), created);
}

TEST_F(AccountHandler, TakenUserIdIsStatus2InAnyCaseAndWithBlanksAround) {
    ASSERT_EQ(Create(With(&Creation::userId, u"M\u00FCller")), created);
    for (const std::u16string_view userId : {u"M\u00FCller"sv, u"m\u00DCLLER"sv, u"  m\u00FCller\r\n"sv}) {
        Creation second = With(&Creation::userId, userId);
        second.email = u"other@mail.example";
        ExpectRefused(second.Bytes(), 2);
        EXPECT_EQ(SignIn(userId, u"secret1"), signedIn);
    }
    EXPECT_EQ(Create(With(&Creation::email, u"other@mail.example")), created);
}

TEST_F(AccountHandler, TakenAddressIsStatus13InAnyCaseAndWithBlanksAround) {
    ASSERT_EQ(Create({}), created);
    for (const std::u16string_view email :
         {u"anna@mail.example"sv, u"Anna@MAIL.example"sv, u" anna@mail.example "sv}) {
        Creation second = With(&Creation::email, email);
        second.userId = u"other";
        ExpectRefused(second.Bytes(), 13);
    }
    ExpectRefused(SignInBytes(u"other", u"secret1"), 4);
}

TEST_F(AccountHandler, TextThatIsNoAddressIsStatus14) {
    for (const std::u16string_view email :
         {u""sv, u"anna"sv, u"anna@mail"sv, u"a b@mail.example"sv, u"a@b@c.d"sv}) {
        ExpectRefused(With(&Creation::email, email).Bytes(), 14);
    }
    ExpectRefused(With(&Creation::email, std::u16string(300, u'a') + u"@mail.example").Bytes(), 14);
}

TEST_F(AccountHandler, UserIdOfBlanksAloneIsStatus11) {
    ExpectRefused(With(&Creation::userId, u"").Bytes(), 11);
    ExpectRefused(With(&Creation::userId, u" \t\r\n").Bytes(), 11);
}

TEST_F(AccountHandler, UserIdsOfAllKindsAreCreatedAndSignIn) {
    const std::u16string userIds[] = {u"x",
                                      std::u16string(16, u'x'),
                                      std::u16string(17, u'x'),
                                      std::u16string(500, u'x'),
                                      std::u16string(1000, u'x'),
                                      u"\u00E4\u00F6\u00FC\u00DF",
                                      u"\u5C71\u5CA1",
                                      u"\xD83D\xDDFA",
                                      u"a\xD83D",
                                      u"\xDDFA",
                                      u"O'Neil \"the\" `map`",
                                      u"a\r\nb",
                                      {u"a\0b", 3}};
    Creation creation;
    for (const std::u16string& userId : userIds) {
        SCOPED_TRACE(testing::PrintToString(userId));
        creation.userId = userId;
        creation.email.insert(0, 1, u'a');
        ExpectRefused(SignInBytes(userId, u"secret1"), 4);
        EXPECT_EQ(Create(creation), created);
        EXPECT_EQ(SignIn(userId, u"secret1"), signedIn);
    }
}

TEST_F(AccountHandler, TextsOfMoreThan1000UnitsAreStatus9) {
    for (const auto field : {&Creation::userId, &Creation::name, &Creation::referrer, &Creation::language}) {
        ExpectRefused(With(field, std::u16string(1001, u'x')).Bytes(), 9);
        ExpectRefused(With(field, std::u16string(100000, u'x')).Bytes(), 9);
    }
    Creation longest;
    longest.userId = longest.name = longest.referrer = longest.language = std::u16string(1000, u'x');
    EXPECT_EQ(Create(longest), created);
}

TEST_F(AccountHandler, NameReferrerAndLanguageMayBeAnything) {
    Creation creation;
    creation.name = u"\xD83D\"'\n";
    creation.referrer = u"someone";
    creation.language = u"";
    EXPECT_EQ(Create(creation), created);
    creation.userId = u"nobody";
    creation.email = u"nobody@mail.example";
    creation.name = u"";
    EXPECT_EQ(Create(creation), created);
}

TEST_F(AccountHandler, FirstOfSeveralReasonsCounts) {
    ASSERT_EQ(Create({}), created);
    Creation creation;  // user ID and address are taken
    ExpectRefused(creation.Bytes(), 2);
    creation.email = u"none";
    ExpectRefused(creation.Bytes(), 14);
    creation.password = u"short";
    ExpectRefused(creation.Bytes(), 3);
    creation.userId = u"";
    ExpectRefused(creation.Bytes(), 11);
    creation.name = std::u16string(1001, u'x');
    ExpectRefused(creation.Bytes(), 9);
    creation.wantsUpdates = 2;
    ExpectRefused(creation.Bytes(), 10);
    ExpectRefused(creation.Bytes() + '\0', 8);
}

TEST_F(AccountHandler, FlagIsZeroOrOne) {
    for (const char flag : {'\2', '\x7F', '\x80', '\xFF'})
        ExpectRefused(With(&Creation::wantsUpdates, flag).Bytes(), 10);
    EXPECT_EQ(Create(With(&Creation::wantsUpdates, '\0')), created);
}

TEST_F(AccountHandler, EveryTruncationIsRefused) {
    for (const std::string& request : {SignInBytes(u"anna", u"secret1"), Creation().Bytes()}) {
        for (size_t size = 0; size < request.size(); ++size) {
            SCOPED_TRACE(size);
            ExpectRefused(request.substr(0, size), size < 4 ? 1 : 8);
        }
    }
    EXPECT_EQ(SignIn(u"anna", u"secret1"), Int32Bytes(4));
}

TEST_F(AccountHandler, BytesAfterTheLastValueAreRefused) {
    ASSERT_EQ(Create({}), created);
    ExpectRefused(SignInBytes(u"anna", u"secret1") + '\0', 8);
    ExpectRefused(SignInBytes(u"anna", u"secret1") + SignInBytes(u"anna", u"secret1"), 8);
    Creation other;
    other.userId = u"other";
    other.email = u"other@mail.example";
    ExpectRefused(other.Bytes() + '\0', 8);
    EXPECT_EQ(SignIn(u"other", u"secret1"), Int32Bytes(4));
}

TEST_F(AccountHandler, HostileCountsOfStringsAreRefused) {
    // Where the strings of a sign-in and of a creation begin.
    const std::string signIn = SignInBytes(u"", u"");
    const std::string creation =
        Int32Bytes(10) + std::string(20, '\0') + '\1' + Int32Bytes(0) + Int32Bytes(0);
    for (const int64_t count : {int64_t{-1}, int64_t{INT32_MIN}, int64_t{INT32_MAX}, int64_t{100001},
                                int64_t{0x40000000}, int64_t{-0x7FFFFFFE}}) {
        for (const size_t position : {4u, 8u}) {
            std::string request = signIn + std::string(300000, 'x');
            request.replace(position, 4, Int32Bytes(count));
            ExpectRefused(request, 8);
        }
        for (const size_t position : {4u, 8u, 12u, 16u, 20u, 29u}) {
            std::string request = creation + std::string(300000, 'x');
            request.replace(position, 4, Int32Bytes(count));
            ExpectRefused(request, 8);
        }
    }
}

TEST_F(AccountHandler, OtherRequestCodesAreStatus7) {
    for (const int64_t code : {0, 1, 7, 9, 11, 101, -8, 0x08000000}) {
        ExpectRefused(Int32Bytes(code), 7);
        ExpectRefused(Int32Bytes(code) + SignInBytes(u"anna", u"secret1").substr(4), 7);
    }
}

TEST_F(AccountHandler, BodyOfAMegabyteIsAnswered) {
    ExpectRefused(std::string(1048576, '\0'), 7);
    ExpectRefused(Int32Bytes(10) + std::string(1048572, '\0'), 8);
    ExpectRefused(SignInBytes(std::u16string(100000, u'x'), std::u16string(100000, u'x')), 4);
    ExpectRefused(SignInBytes(std::u16string(100001, u'x'), u"secret1"), 8);
}

TEST_F(AccountHandler, RefusalsSayNothingThatTheUserTyped) {
    ASSERT_EQ(Create({}), created);
    std::vector<std::string> requests = {SignInBytes(u"hanna", u"secret2"), SignInBytes(u"anna", u"secret2"),
                                         SignInBytes(u"secret2", u"secret2") + "secret2", Creation().Bytes()};
    for (const auto field : {&Creation::userId, &Creation::email, &Creation::password})
        requests.push_back(With(field, u"secret2").Bytes());
    requests.push_back(With(&Creation::name, std::u16string(1001, u's')).Bytes());
    for (const std::string& request : requests) {
        const std::string refusal = HandleAccounts(accounts, request).refusal;
        EXPECT_THAT(refusal, Not(HasSubstr("secret")));
        EXPECT_THAT(refusal, Not(HasSubstr("anna")));
        EXPECT_THAT(refusal, Not(HasSubstr("sss")));
    }
}

TEST_F(AccountHandler, DatabaseThatFailsIsAStatusOfItsOwn) {
    Database(File()).Execute("DROP TABLE account");
    ExpectRefused(SignInBytes(u"anna", u"secret1"), 6);
    ExpectRefused(Creation().Bytes(), 6);
}

TEST_F(AccountHandler, DamagedHashIsAWrongPassword) {
    ASSERT_EQ(Create({}), created);
    Database(File()).Execute("UPDATE account SET passwordHash = 'secret1'");
    ExpectRefused(SignInBytes(u"anna", u"secret1"), 5);
}

TEST_F(AccountHandler, OfSimultaneousCreationsWithOneAddressOneSucceeds) {
    constexpr size_t count = 8;
    std::vector<std::string> replies(count);
    std::latch start(count);
    std::vector<std::thread> threads;
    for (size_t index = 0; index < count; ++index) {
        threads.emplace_back([&, index] {
            const std::string request = With(&Creation::userId, std::u16string(index + 1, u'u')).Bytes();
            start.arrive_and_wait();
            replies[index] = HandleAccounts(accounts, request).body;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::count(replies.begin(), replies.end(), created), 1);
    EXPECT_EQ(std::count(replies.begin(), replies.end(), Int32Bytes(13)), static_cast<int64_t>(count) - 1);
}
