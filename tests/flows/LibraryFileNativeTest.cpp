/* The library's file, as the native ring links it. */
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <set>
#include <string>

TEST(LibraryFile, NothingButTheExportsIsVisible) {
    FILE* const symbols = popen("nm -D --defined-only --format=just-symbols " ORVANDE_LIBRARY_FILE, "r");
    ASSERT_NE(nullptr, symbols);
    std::set<std::string> names;
    char line[300];
    while (fgets(line, sizeof line, symbols) != nullptr)
        names.insert(std::string(line, strcspn(line, "\n")));
    EXPECT_EQ(0, pclose(symbols));
    EXPECT_EQ((std::set<std::string>{"DllMain", "LMDownloadWebFileProgress", "LMMapShopClose",
                                     "LMMapShopGetNext", "LMMapShopSearch", "x77fc64c7", "xfa704a3f"}),
              names);
}
