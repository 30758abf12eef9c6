/* The languages that are shipped. */
#include "MadeFiles.h"

using testing::IsEmpty;

TEST(LanguageFiles, AreCompleteAndWithoutMistakes) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ORVANDE_LANGUAGES)) {
        EXPECT_THAT(CheckFile(entry.path()), IsEmpty());
        ++count;
    }
    EXPECT_GT(count, 0);
}
