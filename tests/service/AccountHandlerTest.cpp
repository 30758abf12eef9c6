/* What the service answers about accounts. */
#include <algorithm>
#include <latch>
#include <thread>
#include <vector>

#include "AccountHandlerFixture.h"

using namespace std::string_view_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

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
