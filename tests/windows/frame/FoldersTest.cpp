/* Making real folders, and the shell's own. */
#include "frame/Folders.h"

#include "support/DeviceTest.h"

namespace {

bool IsFolder(const WideString& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

class Folders : public DeviceTest {};

}  // namespace

TEST_F(Folders, AreMadeWithTheirParents) {
    EXPECT_TRUE(CreateFolderPath(PathOf(L"a\\b/c")));
    EXPECT_TRUE(IsFolder(PathOf(L"a\\b\\c")));
}

TEST_F(Folders, ExistingOneCountsAsMade) {
    MakeFolder(PathOf(L"a"));
    EXPECT_TRUE(CreateFolderPath(PathOf(L"a")));
    EXPECT_TRUE(CreateFolderPath(L"\\"));
}

TEST_F(Folders, ExistingFileIsNotMadeAFolder) {
    PutFile(PathOf(L"file"), "content");
    EXPECT_FALSE(CreateFolderPath(PathOf(L"file")));
    EXPECT_EQ("content", TakeFile(PathOf(L"file")));
}

TEST_F(Folders, FolderBelowAFileCannotBeMade) {
    PutFile(PathOf(L"file"), "content");
    EXPECT_FALSE(CreateFolderPath(PathOf(L"file\\below")));
}

TEST_F(Folders, NamesThatTheSystemRefusesGiveFalse) {
    EXPECT_FALSE(CreateFolderPath(PathOf(L"a?b")));
}

TEST_F(Folders, EmptyPathAndOneUnitCountAsMade) {
    EXPECT_TRUE(CreateFolderPath(L""));
    EXPECT_TRUE(CreateFolderPath(L"q"));
    EXPECT_FALSE(IsFolder(L"q"));
}

TEST_F(Folders, SpecialFolderIsThere) {
    const WideString path = GetSpecialFolderPath(CSIDL_APPDATA);
    EXPECT_TRUE(IsFolder(path));
}

TEST_F(Folders, FolderBelowASpecialOneIsMade) {
    const WideString path = GetSpecialFolderPath(CSIDL_APPDATA, L"Orvande tests\\inner");
    EXPECT_EQ(GetSpecialFolderPath(CSIDL_APPDATA) + L"\\Orvande tests\\inner", path);
    EXPECT_TRUE(IsFolder(path));
    RemoveDirectoryW(path.c_str());
    RemoveDirectoryW(path.substr(0, path.find_last_of(L'\\')).c_str());
}

TEST_F(Folders, UnknownSpecialFolderHasNoPath) {
    EXPECT_EQ(L"", GetSpecialFolderPath(0x7FFF, L"below"));
}
