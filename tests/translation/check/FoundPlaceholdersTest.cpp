#include "check/FoundPlaceholders.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FoundPlaceholders, EndWithTheirLetter) {
    EXPECT_THAT(FindPlaceholders(u"%d of %-5.2f, %ls%I64x%%%c"),
                ElementsAre(u"%d", u"%-5.2f", u"%ls", u"%I64x", u"%%", u"%c"));
}

TEST(FoundPlaceholders, APercentSignAtTheEndIsOne) {
    EXPECT_THAT(FindPlaceholders(u"%d of 100 %"), ElementsAre(u"%d", u"%"));
    EXPECT_THAT(FindPlaceholders(u"100"), IsEmpty());
}

TEST(FoundPlaceholders, OneThatIsCutGoesToTheEnd) {
    EXPECT_THAT(FindPlaceholders(u"%5.2"), ElementsAre(u"%5.2"));
}
