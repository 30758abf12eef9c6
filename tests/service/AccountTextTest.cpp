#include "AccountText.h"

#include <gtest/gtest.h>

TEST(AccountText, BlanksAroundATextAreTrimmedAndThoseInItStay) {
    EXPECT_EQ(Trimmed(u" \t\r\n anna  b \n"), u"anna  b");
    EXPECT_EQ(Trimmed(u"anna"), u"anna");
    EXPECT_EQ(Trimmed(u""), u"");
    EXPECT_EQ(Trimmed(u" \r\n\t"), u"");
}

TEST(AccountText, OtherSpacesAndZerosAreNotTrimmed) {
    EXPECT_EQ(Trimmed(u"\xA0"), u"\xA0");
    EXPECT_EQ(Trimmed({u"\0a\0", 3}), std::u16string_view(u"\0a\0", 3));
}

TEST(AccountText, TextsThatDifferInCaseAloneFoldToOne) {
    const std::u16string_view pairs[][2] = {
        {u"ANNA-9", u"anna-9"},
        {u"M\u00DCLLER", u"m\u00FCller"},
        {u"\u0416\u0423\u041A", u"\u0436\u0443\u043A"},  // Cyrillic
        {u"\u039F\u03A3", u"\u03BF\u03C2"},              // Greek, with a sigma at the end
        {u"\xD801\xDC00", u"\xD801\xDC28"},              // Deseret, beyond 16 bits
        {u"\xDDFA\xD83DX", u"\xDDFA\xD83Dx"},            // half surrogates
    };
    for (const auto& pair : pairs)
        EXPECT_EQ(CaseFolded(pair[0]), CaseFolded(pair[1]));
}

TEST(AccountText, TextsThatDifferInMoreThanCaseFoldToDifferentOnes) {
    const std::u16string_view pairs[][2] = {
        {u"muller", u"m\u00FCller"}, {u"\u00FC", u"u\u0308"},  // one composed, one not
        {u"a\xD83D", u"a\xD83E"},    {u"a", u"a "},           {u"\u5C71", u"\u5CA1"}, {{u"a\0", 2}, u"a"},
    };
    for (const auto& pair : pairs)
        EXPECT_NE(CaseFolded(pair[0]), CaseFolded(pair[1]));
}

TEST(AccountText, AddressesThatMailCouldBeSentToAreTaken) {
    for (const std::u16string& address :
         {std::u16string(u"a@b.c"), std::u16string(u"Anna.Muster+maps@mail-1.sub.example"),
          std::u16string(u"o'neil_!#$%&*/=?^`{|}~@x.example"),
          std::u16string(u"m\u00FCller@b\u00FCro.example"), std::u16string(u"\u5C71@\u4F8B.example"),
          std::u16string(u"\xD83D\xDDFA@map.example"), std::u16string(64, u'a') + u"@b.example",
          u"a@" + std::u16string(63, u'b') + u".example"}) {
        EXPECT_TRUE(IsEmailAddress(address)) << testing::PrintToString(address);
    }
}

TEST(AccountText, OtherTextsAreNoAddress) {
    for (const std::u16string& text : {std::u16string(u""),
                                       std::u16string(u"anna"),
                                       std::u16string(u"@"),
                                       std::u16string(u"@b.c"),
                                       std::u16string(u"a@"),
                                       std::u16string(u"a@b"),
                                       std::u16string(u"a@.b"),
                                       std::u16string(u"a@b."),
                                       std::u16string(u"a@b..c"),
                                       std::u16string(u"a@b@c.d"),
                                       std::u16string(u"a b@c.d"),
                                       std::u16string(u"a@b c.d"),
                                       std::u16string(u"a@-b.c"),
                                       std::u16string(u"a@b-.c"),
                                       std::u16string(u"a@b_c.d"),
                                       std::u16string(u"\"a\"@b.c"),
                                       std::u16string(u"<a@b.c>"),
                                       std::u16string(u"a,b@c.d"),
                                       std::u16string(u"a@[1.2.3.4]"),
                                       std::u16string(u"a\n@b.c"),
                                       std::u16string(u"a\0@b.c", 6),
                                       std::u16string(u"a\x85@b.c"),
                                       std::u16string(u"a\u3000@b.c"),
                                       std::u16string(u"a\xD83D@b.c"),
                                       std::u16string(u"a@\xDDFA.c"),
                                       std::u16string(65, u'a') + u"@b.c",
                                       u"a@" + std::u16string(64, u'b') + u".c"}) {
        EXPECT_FALSE(IsEmailAddress(text)) << testing::PrintToString(text);
    }
}

TEST(AccountText, AddressOf254UnitsIsTakenAndALongerOneIsNot) {
    std::u16string address = u"a@";
    while (address.size() < 252)
        address += u"b.";
    EXPECT_TRUE(IsEmailAddress(address + u"cc"));
    EXPECT_FALSE(IsEmailAddress(address + u"ccc"));
    EXPECT_FALSE(IsEmailAddress(std::u16string(100000, u'@')));
}
