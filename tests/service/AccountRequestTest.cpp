/* Account requests that are not as they should be. */
#include "AccountHandlerFixture.h"

TEST_F(AccountHandler, TextsOfMoreThan1000UnitsAreStatus9) {
    for (const auto field : {&Creation::userId, &Creation::name, &Creation::referrer, &Creation::language}) {
        ExpectRefused(With(field, std::u16string(1001, u'x')).Bytes(), 9);
        ExpectRefused(With(field, std::u16string(100000, u'x')).Bytes(), 9);
    }
    Creation longest;
    longest.userId = longest.name = longest.referrer = longest.language = std::u16string(1000, u'x');
    EXPECT_EQ(Create(longest), created);
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
