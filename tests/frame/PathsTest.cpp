#include "frame/Paths.h"

#include <gtest/gtest.h>

TEST(Paths, FindLastOfGivesTheLargestIndexOfAnyUnitOfTheSet) {
    EXPECT_EQ(3u, FindLastOf(TEXT("a/b\\c"), TEXT("/\\:")));
    EXPECT_EQ(0u, FindLastOf(TEXT(":"), TEXT("/\\:")));
    EXPECT_EQ(WideString::npos, FindLastOf(TEXT("abc"), TEXT("/\\:")));
    EXPECT_EQ(WideString::npos, FindLastOf(TEXT(""), TEXT("/")));
    EXPECT_EQ(WideString::npos, FindLastOf(TEXT("a/b"), TEXT("")));
    EXPECT_EQ(~size_t{0}, WideString::npos) << "not found has all bits set";
}

TEST(Paths, BaseNameHasNeitherFolderNorLastExtension) {
    const struct {
        const WCHAR* path;
        const WCHAR* name;
    } cases[] = {
        {TEXT("\\Storage\\a.b\\file"), TEXT("file")},
        {TEXT("\\x\\map.2024.dat"), TEXT("map.2024")},
        {TEXT("file.txt"), TEXT("file")},
        {TEXT("file"), TEXT("file")},
        {TEXT("\\a\\file."), TEXT("file")},
        {TEXT("\\a\\.txt"), TEXT("")},
        {TEXT("\\a\\"), TEXT("")},
        {TEXT("C:file.txt"), TEXT("file")},
        {TEXT("a/b\\c/file.txt"), TEXT("file")},
        {TEXT("a.b/"), TEXT("")},
        {TEXT(""), TEXT("")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(WideString(c.name), GetBaseName(c.path)) << ::testing::PrintToString(WideString(c.path));
}

TEST(Paths, FolderPartIsWhatStandsBeforeTheLastSeparatorOrADot) {
    const struct {
        const WCHAR* path;
        const WCHAR* folder;
    } cases[] = {
        {TEXT("file.txt"), TEXT(".")}, {TEXT("\\Storage\\a.b\\file"), TEXT("\\Storage\\a.b")},
        {TEXT("\\file"), TEXT("")},    {TEXT("C:file"), TEXT("C")},
        {TEXT("a/b:c"), TEXT("a/b")},  {TEXT("a\\"), TEXT("a")},
        {TEXT(""), TEXT(".")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(WideString(c.folder), GetFolderPart(c.path))
            << ::testing::PrintToString(WideString(c.path));
}
