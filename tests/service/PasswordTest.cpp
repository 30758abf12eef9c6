#include "Password.h"

#include <gmock/gmock.h>

#include <vector>

#include "WireBytes.h"

using testing::StartsWith;

namespace {

/* What counts of a password. */
std::string CountedOf(std::u16string_view typed) {
    const std::string bytes = TextBytes(typed).substr(4);
    return std::string(Password(WireString(bytes)).Counted());
}

std::string HashOfText(std::u16string_view typed) {
    const std::string bytes = TextBytes(typed).substr(4);
    return HashOf(Password(WireString(bytes)));
}

bool IsHashOfText(const std::string& hash, std::u16string_view typed) {
    const std::string bytes = TextBytes(typed).substr(4);
    return IsHashOf(hash, Password(WireString(bytes)));
}

}  // namespace

TEST(Password, LettersAndDigitsCountInLowerCaseAndNothingElse) {
    const struct {
        std::u16string_view typed;
        std::string_view counted;
    } cases[] = {
        {u"", ""},
        {u"Ab1-x!", "ab1x"},
        {u"/09:@AZ[`az{", "09azaz"},
        {u"\u00C4\u00E4\u0131\u212A\uFF41\u0430\u0661", ""},  // letters and digits of others
        {u"\x0141\x4161\x6100", ""},                          // their bytes are letters
        {u"\xD83D\xDDFA\xD83D", ""},
        {{u"a\0b\nc\"d'e", 9}, "abcde"},
        {u"a1b2c3d4e5f6g7h8", "a1b2c3d4e5f6g7h8"},
        {u"a1b2c3d4e5f6g7h8i", "a1b2c3d4e5f6g7h8"},
        {u"A 1-B 2-C 3-D 4-E 5-F 6-G 7-H 8-I 9", "a1b2c3d4e5f6g7h8"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(CountedOf(each.typed), each.counted);
}

TEST(Password, HashIsOfWhatCounts) {
    const std::string hash = HashOfText(u"Secret-Password-12345");
    EXPECT_TRUE(IsHashOfText(hash, u"Secret-Password-12345"));
    EXPECT_TRUE(IsHashOfText(hash, u"secretpassword12"));
    EXPECT_FALSE(IsHashOfText(hash, u"secretpassword1"));
    EXPECT_FALSE(IsHashOfText(hash, u"secretpassword13"));
    EXPECT_FALSE(IsHashOfText(hash, u""));
}

TEST(Password, HashIsSaltedAndHoldsNoPassword) {
    const std::string first = HashOfText(u"secret1");
    EXPECT_THAT(first, StartsWith("$argon2id$"));
    EXPECT_NE(first, HashOfText(u"secret1"));
    EXPECT_THAT(first, testing::Not(testing::HasSubstr("secret1")));
}

TEST(Password, TextThatIsNoHashMatchesNothing) {
    for (const char* text : {"", "secret1", "$argon2id$", "$argon2id$v=19$m=8192,t=2,p=1$AAAA$AAAA"})
        EXPECT_FALSE(IsHashOfText(text, u"secret1")) << text;
    EXPECT_FALSE(IsHashOfText(std::string(100000, '$'), u"secret1"));
}
