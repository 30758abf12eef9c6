#include "check/FoundPlaceholders.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FoundPlaceholders, EndWithTheirLetter) {
    EXPECT_THAT(FindPlaceholders(u"%d of %-5.2f, %ls%I64x%%%c"),
                ElementsAre(u"%d", u"%-5.2f", u"%ls", u"%I64x", u"%%", u"%c"));
}

TEST(FoundPlaceholders, APercentSignAtTheEndIsOne) {
    EXPECT_THAT(FindPlaceholders(u"100 %"), ElementsAre(u"%"));
    EXPECT_THAT(FindPlaceholders(u"%d%%%"), ElementsAre(u"%d", u"%%", u"%"));
    EXPECT_THAT(FindPlaceholders(u"100"), IsEmpty());
}

TEST(FoundPlaceholders, OnesThatOnlyOtherRuntimesKnowAreFoundWhole) {
    EXPECT_THAT(FindPlaceholders(u"%1$s %'d %lld %zu %hhx %Id"),
                ElementsAre(u"%1$s", u"%'d", u"%lld", u"%zu", u"%hhx", u"%Id"));
}

TEST(FoundPlaceholders, ACharacterIsNotDivided) {
    EXPECT_THAT(FindPlaceholders(u"%\U0001F600d"), ElementsAre(u"%\U0001F600"));
    EXPECT_THAT(FindPlaceholders(u"%\n%d"), ElementsAre(u"%\n", u"%d"));
}

TEST(FoundPlaceholders, OneThatIsCutGoesToTheEnd) {
    EXPECT_THAT(FindPlaceholders(u"%5.2"), ElementsAre(u"%5.2"));
}
