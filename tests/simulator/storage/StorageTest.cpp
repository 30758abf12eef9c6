#include "SimulatorTest.h"

#include <filesystem>

namespace {

class Storage : public SimulatorTest {
protected:
    struct Attributes {
        DWORD value;
        DWORD error;  // when the value says failure

        bool operator==(const Attributes&) const = default;
    };

    static Attributes Of(const std::u16string& path) {
        const DWORD value = GetFileAttributesW(path.c_str());
        return {value, value == INVALID_FILE_ATTRIBUTES ? GetLastError() : 0};
    }

    static constexpr Attributes Missing(DWORD error) { return {INVALID_FILE_ATTRIBUTES, error}; }
};

constexpr DWORD folder = FILE_ATTRIBUTE_DIRECTORY;
constexpr DWORD file = FILE_ATTRIBUTE_ARCHIVE;

}  // namespace

TEST_F(Storage, NewMachineHasItsFoldersAndNoFiles) {
    for (const char16_t* path : {u"\\Temp", u"\\Storage", u"\\Windows", u"\\My Documents",
                                 u"\\Application Data", u"\\Program Files", u"\\Program Files\\App"}) {
        EXPECT_EQ(folder, Of(path).value) << testing::PrintToString(path);
        const bool isParent = std::u16string_view(path) == u"\\Program Files";
        EXPECT_EQ(!isParent, std::filesystem::is_empty(device.HostPath(path)));
    }
    EXPECT_EQ(folder, Of(u"\\").value);
}

TEST_F(Storage, AttributesTellFilesFromFolders) {
    device.PutFile(u"\\Storage\\Maps\\a.map", "bytes");
    EXPECT_EQ(file, Of(u"\\Storage\\Maps\\a.map").value);
    EXPECT_EQ(folder, Of(u"\\Storage\\Maps").value);
}

TEST_F(Storage, MissingFileAndMissingFolderHaveTheirOwnErrors) {
    EXPECT_EQ(Missing(ERROR_FILE_NOT_FOUND), Of(u"\\Temp\\none"));
    EXPECT_EQ(Missing(ERROR_PATH_NOT_FOUND), Of(u"\\None\\none"));
    device.PutFile(u"\\Temp\\file", "");
    EXPECT_EQ(Missing(ERROR_PATH_NOT_FOUND), Of(u"\\Temp\\file\\none"));
    EXPECT_EQ(Missing(ERROR_PATH_NOT_FOUND), Of(u""));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(nullptr));
}

TEST_F(Storage, ExistingNamesAreFoundWhateverTheirCaseAndSeparators) {
    device.PutFile(u"\\Storage\\Stra\u00DFe\\\u00C4.txt", "x");
    EXPECT_EQ(file, Of(u"/STORAGE\\stra\u00DFe//\u00E4.TXT").value);
    EXPECT_EQ(folder, Of(u"\\storage\\").value);
    EXPECT_EQ(file, Of(u"storage\\.\\Stra\u00DFe\\..\\Stra\u00DFe\\\u00C4.txt").value);
    EXPECT_EQ("x", device.TakeFile(u"\\storage\\STRA\u00DFE\\\u00E4.txt"));
}

TEST_F(Storage, NothingLiesAboveTheRoot) {
    EXPECT_EQ(folder, Of(u"\\..\\..\\Temp").value);
    EXPECT_EQ(device.HostPath(u"\\Temp"), device.HostPath(u"\\..\\Temp"));
}

TEST_F(Storage, AnyUnitsButTheForbiddenOnesMakeNames) {
    const std::u16string odd = u"\\Temp\\\u20AC\xD83D\xDE00\xD83D.txt";
    device.PutFile(odd, "odd");
    EXPECT_EQ("odd", device.TakeFile(odd));
    EXPECT_EQ(file, Of(odd).value);
    for (const char16_t* name : {u"\\Temp\\a:b", u"\\Temp\\a*", u"\\Temp\\\"a\"", u"\\Temp\\a\nb"}) {
        EXPECT_EQ(Missing(ERROR_INVALID_NAME), Of(name)) << testing::PrintToString(name);
    }
}

TEST_F(Storage, PathsEndBefore260Units) {
    std::u16string path = u"\\Temp\\";
    while (path.size() < 259)
        path += path.size() % 100 == 0 ? u'\\' : u'x';
    device.PutFile(path, "long");
    EXPECT_EQ(file, Of(path).value);
    EXPECT_EQ(Missing(ERROR_FILENAME_EXCED_RANGE), Of(path + u'x'));
    EXPECT_EQ(nullptr, _wfopen((path + u'x').c_str(), u"wb"));
}

TEST_F(Storage, FilesComeAndGoWithTheTest) {
    device.PutFile(u"\\Temp\\file", std::string_view("a\0b", 3));
    EXPECT_EQ(std::string("a\0b", 3), device.TakeFile(u"\\Temp\\file"));
    EXPECT_EQ(std::nullopt, device.TakeFile(u"\\Temp\\other"));
    EXPECT_EQ(std::nullopt, device.TakeFile(u"\\Temp"));
    EXPECT_TRUE(device.Exists(u"\\Temp\\FILE"));
    const std::string place = device.HostPath(u"\\Temp\\file");
    EXPECT_TRUE(std::filesystem::exists(place));
    device.PutFile(u"\\Card\\Maps\\a.map", "");
    device.MakeFolder(u"\\Program Files\\App\\Sub\\Folder");
    std::filesystem::remove_all(device.HostPath(u"\\Windows"));
    device.BeginTest();
    EXPECT_FALSE(std::filesystem::exists(place));
    EXPECT_FALSE(device.Exists(u"\\Temp\\file"));
    EXPECT_FALSE(device.Exists(u"\\Card"));
    EXPECT_FALSE(device.Exists(u"\\Program Files\\App\\Sub"));
    EXPECT_TRUE(device.Exists(u"\\Program Files\\App"));
    EXPECT_TRUE(device.Exists(u"\\Windows"));
}

TEST_F(Storage, PlacesThatCannotBeMadeAreMistakesInTheTest) {
    device.PutFile(u"\\Temp\\file", "");
    device.MakeFolder(u"\\Temp\\file\\folder");
    device.PutFile(u"\\Temp", "");
    device.MakeFolder(u"\\Temp\\a?");
    EXPECT_EQ((Lines{R"(MakeFolder cannot make "\Temp\file\folder")", R"(PutFile cannot write "\Temp")",
                     R"(no path of this device: "\Temp\a?")", R"(MakeFolder cannot make "\Temp\a?")"}),
              TakeViolations());
}

TEST_F(Storage, SpecialFoldersAreGivenAndMadeOnDemand) {
    WCHAR path[MAX_PATH] = u"?";
    EXPECT_TRUE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, FALSE));
    EXPECT_EQ(u"\\My Documents", std::u16string(path));
    EXPECT_TRUE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_APPDATA, TRUE));
    EXPECT_EQ(u"\\Application Data", std::u16string(path));
    device.SetSpecialFolder(CSIDL_PERSONAL, u"\\Card\\Documents");
    EXPECT_FALSE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, FALSE));
    EXPECT_FALSE(device.Exists(u"\\Card"));
    EXPECT_TRUE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, TRUE));
    EXPECT_EQ(folder, Of(u"\\Card\\Documents").value);
}

TEST_F(Storage, SpecialFolderThatIsNotThereFails) {
    WCHAR path[MAX_PATH] = u"?";
    device.SetSpecialFolder(CSIDL_PERSONAL, std::nullopt);
    EXPECT_FALSE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, TRUE));
    EXPECT_FALSE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_FONTS, TRUE));
    device.PutFile(u"\\Temp\\file", "");
    device.SetSpecialFolder(CSIDL_PERSONAL, u"\\Temp\\file");
    EXPECT_FALSE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, TRUE));
    EXPECT_EQ(u'?', path[0]);
}
