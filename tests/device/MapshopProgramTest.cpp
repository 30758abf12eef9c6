/* The example program and the library, both as devices get them. */
#include "mapshop/MapShopFixture.h"

#include <fstream>
#include <iterator>

#include "ImageFiles.h"
#include "Program.h"

namespace {

constexpr char16_t libraryPath[] = u"\\Program Files\\App\\OrvandeOnline.dll";

std::string BytesOfFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class MapshopProgram : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        device.PutFile(libraryPath, BytesOfFile(ImageFile("OrvandeOnline.dll")));
    }

    static ProgramResult Run(std::u16string_view arguments) {
        return RunProgram(ImageFile("mapshop.exe"), arguments);
    }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(MapshopProgram, SearchPrintsATableOfTheResults) {
    device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(TwoMaps().bytes));
    const ProgramResult result = Run(u"search 45.8 5.9 47.9 10.5");
    EXPECT_EQ(0u, result.exitCode);
    EXPECT_EQ("", result.errors);
    EXPECT_NE(std::string::npos, result.output.find("Malta"));
    EXPECT_NE(std::string::npos, result.output.find("1,200"));
    EXPECT_NE(std::string::npos, result.output.find("\xC3\x8Ele-de-France")) << "in UTF-8";
    ASSERT_EQ(1u, device.Requests().size());
    const MapShopReply request =
        MapShopReply().Int32(101).Int32(1).Int32(4580000).Int32(590000).Int32(4790000).Int32(1050000);
    EXPECT_EQ(request.bytes, device.Requests()[0].body);
}

TEST_F(MapshopProgram, DownloadSavesTheFileAndShowsHowFarItIs) {
    const std::string bytes(100000, 'x');
    device.AddHost(u"maps.example", 80, WebReply::WithBody(bytes));
    const ProgramResult result =
        Run(u"download /maps/malta.map \"\\My Documents\\malta 1.map\" --host maps.example");
    EXPECT_EQ(0u, result.exitCode);
    EXPECT_EQ("100,000 bytes saved as \\My Documents\\malta 1.map.\n", result.output);
    EXPECT_NE(std::string::npos, result.errors.find("100%  100,000 of 100,000 bytes")) << result.errors;
    EXPECT_EQ(bytes, device.TakeFile(u"\\My Documents\\malta 1.map").value_or("no file"));
    EXPECT_FALSE(device.Exists(u"\\My Documents\\malta 1.map.TMP"));
}

TEST_F(MapshopProgram, RangeBeyond4GigabytesIsPrintedInHexadecimal) {
    device.AddHost(u"maps.example", 80, WebReply::WithBody("Hello, handheld"));
    const ProgramResult result = Run(u"range /maps/malta.map 4294967299 15 --host maps.example");
    EXPECT_EQ(0u, result.exitCode);
    EXPECT_EQ("100000003  48 65 6c 6c 6f 2c 20 68  61 6e 64 68 65 6c 64     |Hello, handheld|\n",
              result.output);
    EXPECT_EQ(u"Range:bytes=4294967299-4294967313\n", device.Requests().at(0).headers);
}

TEST_F(MapshopProgram, HostThatIsNotThereIsToldWithItsExitCode) {
    const ProgramResult result = Run(u"download /f \\Temp\\f --host nowhere.example");
    EXPECT_EQ(1u, result.exitCode);
    EXPECT_EQ("", result.output);
    EXPECT_EQ(
        "mapshop: \\Temp\\f was not downloaded: the host nowhere.example is not known; check its name and "
        "the "
        "connection (12007).\n",
        result.errors);
    EXPECT_FALSE(device.Exists(u"\\Temp\\f"));
}

TEST_F(MapshopProgram, MissingLibraryIsNamedWithItsPlace) {
    ASSERT_TRUE(DeleteFileW(libraryPath));
    const ProgramResult result = Run(u"search");
    EXPECT_EQ(3u, result.exitCode);
    EXPECT_EQ(
        "mapshop: OrvandeOnline.dll is missing: it belongs beside this program, as "
        "\\Program Files\\App\\OrvandeOnline.dll.\n",
        result.errors);
}

TEST_F(MapshopProgram, ArgumentsAreSplitAtGapsOutsideOfQuotationMarks) {
    const ProgramResult none = Run(u"  ");
    EXPECT_EQ(2u, none.exitCode);
    EXPECT_EQ("mapshop: No command is given; see mapshop --help.\n", none.errors);
    EXPECT_EQ("mapshop: There is no command 'a b\tc'; see mapshop --help.\n", Run(u"\"a b\tc\" x").errors);
    EXPECT_EQ(0u, Run(u"search --help").exitCode);
}

TEST_F(MapshopProgram, HelpSaysWhatHoldsOnAHandheld) {
    const std::string help = Run(u"--help").output;
    EXPECT_NE(std::string::npos, help.find("FILE is a whole path"));
    EXPECT_NE(std::string::npos, help.find("corsica.map \"\\My Documents\\corsica.map\"\n"));
    EXPECT_EQ(std::string::npos, help.find("Ctrl-C"));
}

TEST_F(MapshopProgram, WithoutMemoryItEndsAndLeavesNothing) {
    const std::string program = ImageFile("mapshop.exe");
    const std::u16string arguments = u"--help";
    AllocationWatch watch(1, Failing::FromThereOn);
    const ProgramResult result = RunProgram(program, arguments);
    watch.Stop();
    EXPECT_TRUE(watch.Failed());
    EXPECT_EQ(3u, result.exitCode);
}
