#include "frame/Folders.h"

#include "support/ScreenTest.h"

namespace {

class Folders : public ScreenTest {};

}  // namespace

TEST_F(Folders, MissingParentsAreMadeFromTheOutermostInwards) {
    EXPECT_TRUE(CreateFolderPath(TEXT("\\Temp\\a\\b\\c")));
    EXPECT_TRUE(device.Exists(u"\\Temp\\a\\b\\c"));
    const std::vector<std::string> expected = {R"(CreateDirectoryW("\Temp\a", null) = TRUE)",
                                               R"(CreateDirectoryW("\Temp\a\b", null) = TRUE)",
                                               R"(CreateDirectoryW("\Temp\a\b\c", null) = TRUE)"};
    EXPECT_EQ(expected, device.Calls({"CreateDirectoryW"}));
}

TEST_F(Folders, ExistingFolderIsTrueAndNothingIsMade) {
    EXPECT_TRUE(CreateFolderPath(TEXT("\\Temp")));
    EXPECT_EQ(0u, device.CountCalls("CreateDirectoryW"));
}

TEST_F(Folders, ExistingFileIsFalseAndNothingIsMade) {
    device.PutFile(u"\\Temp\\file", "bytes");
    EXPECT_FALSE(CreateFolderPath(TEXT("\\Temp\\file")));
    device.SetReadOnly(u"\\Temp\\file", true);
    EXPECT_FALSE(CreateFolderPath(TEXT("\\Temp\\file")));
    EXPECT_EQ(0u, device.CountCalls("CreateDirectoryW"));
    EXPECT_EQ("bytes", device.TakeFile(u"\\Temp\\file"));
}

TEST_F(Folders, FileAmongTheParentsMakesItFail) {
    device.PutFile(u"\\Temp\\file", "bytes");
    EXPECT_FALSE(CreateFolderPath(TEXT("\\Temp\\file\\folder")));
}

TEST_F(Folders, EmptyOrOneUnitPathThatDoesNotExistCountsAsMade) {
    EXPECT_TRUE(CreateFolderPath(TEXT("")));
    EXPECT_TRUE(CreateFolderPath(TEXT("x")));
    EXPECT_EQ(0u, device.CountCalls("CreateDirectoryW"));
}

TEST_F(Folders, PathOfTwoUnitsIsMade) {
    EXPECT_TRUE(CreateFolderPath(TEXT("\\x")));
    EXPECT_TRUE(device.Exists(u"\\x"));
}

TEST_F(Folders, RefusalOfTheSystemIsFalse) {
    device.FailCall("CreateDirectoryW", 1, ERROR_DISK_FULL);
    EXPECT_FALSE(CreateFolderPath(TEXT("\\Temp\\a")));
}

TEST_F(Folders, RefusalForAParentIsPassedOver) {
    device.FailCall("CreateDirectoryW", 1, ERROR_DISK_FULL);
    EXPECT_FALSE(CreateFolderPath(TEXT("\\Temp\\a\\b")));
    EXPECT_EQ(2u, device.CountCalls("CreateDirectoryW"));
}

TEST_F(Folders, SpecialFolderIsAskedForWithoutOwnerAndMade) {
    EXPECT_EQ(TEXT("\\Application Data"), GetSpecialFolderPath(CSIDL_APPDATA));
    const std::vector<std::string> expected = {
        R"(SHGetSpecialFolderPathW(null, 26, TRUE) = TRUE, "\Application Data")"};
    EXPECT_EQ(expected, device.Calls({"SHGetSpecialFolderPathW", "CreateDirectoryW"}));
}

TEST_F(Folders, SubfolderOfASpecialFolderIsMade) {
    EXPECT_EQ(TEXT("\\Application Data\\One\\Two"), GetSpecialFolderPath(CSIDL_APPDATA, TEXT("One\\Two")));
    EXPECT_TRUE(device.Exists(u"\\Application Data\\One\\Two"));
}

TEST_F(Folders, SubfolderThatCannotBeMadeIsNamedAllTheSame) {
    device.PutFile(u"\\Application Data\\One", "a file");
    EXPECT_EQ(TEXT("\\Application Data\\One"), GetSpecialFolderPath(CSIDL_APPDATA, TEXT("One")));
}

TEST_F(Folders, SpecialFolderThatTheShellDoesNotKnowIsEmptyEvenWithASubfolder) {
    device.SetSpecialFolder(CSIDL_APPDATA, std::nullopt);
    EXPECT_EQ(TEXT(""), GetSpecialFolderPath(CSIDL_APPDATA));
    EXPECT_EQ(TEXT(""), GetSpecialFolderPath(CSIDL_APPDATA, TEXT("One")));
    EXPECT_EQ(0u, device.CountCalls("CreateDirectoryW"));
}
