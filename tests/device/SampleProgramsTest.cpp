/* The samples of examples/c, examples/cpp and examples/resume, which the loader binds to the library. */
#include "mapshop/MapShopFixture.h"

#include <fstream>
#include <iterator>

#include "ImageFiles.h"
#include "Program.h"

namespace {

std::string BytesOfFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class SamplePrograms : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        device.PutFile(u"\\Program Files\\App\\OrvandeOnline.dll",
                       BytesOfFile(ImageFile("OrvandeOnline.dll")));
    }

    static ProgramResult Run(const std::string& program, std::u16string_view arguments) {
        return RunProgram(ImageFile(program + ".exe"), arguments);
    }

    static void Expect(uint32_t exitCode, const std::string& output, const ProgramResult& result) {
        EXPECT_EQ(exitCode, result.exitCode);
        EXPECT_EQ(output, result.output);
    }

    Device& device = Device::Current();
};

/* A host with a file of which any part can be had. */
WebHandler FileServer(const std::string& content) {
    return [content](const WebRequest& request) {
        if (request.headers.empty()) return WebReply::WithBody(content);
        const std::string header(request.headers.begin(), request.headers.end());
        unsigned first = 0;
        unsigned last = 0;
        EXPECT_EQ(2, sscanf(header.c_str(), "Range:bytes=%u-%u", &first, &last));
        if (first >= content.size()) return WebReply::WithStatus(416);
        WebReply part = WebReply::WithBody(content.substr(first, last - first + 1));
        part.status = 206;
        return part;
    };
}

/* Bytes of which no 251 are like the next. */
std::string Content(size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 251 + i / 251);
    return bytes;
}

constexpr char16_t aMap[] = u"maps.example /a.map \"\\My Documents\\a 1.map\"";
constexpr char16_t target[] = u"\\My Documents\\a 1.map";

}  // namespace

TEST_F(SamplePrograms, SearchPrintsTextOfAnyScriptAndSendsTheBox) {
    for (const char* const program : {"c-search", "cpp-search"}) {
        SCOPED_TRACE(program);
        device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(TwoMaps().bytes));
        const ProgramResult result = Run(program, u"45.8 -5.9 47.9 10.5");
        EXPECT_EQ(0u, result.exitCode);
        EXPECT_EQ(0u, result.output.find("Malta, 1200 KB, "));
        EXPECT_NE(std::string::npos, result.output.find("\n\xC3\x8Ele-de-France"));
        const MapShopReply request =
            MapShopReply().Int32(101).Int32(1).Int32(4580000).Int32(-590000).Int32(4790000).Int32(1050000);
        EXPECT_EQ(request.bytes, device.Requests().back().body);
    }
}

TEST_F(SamplePrograms, SearchTellsThatNobodyAnswers) {
    for (const char* const program : {"c-search", "cpp-search"})
        Expect(1, "0 maps in the shop\nthis is not all: error 0x00002EE7\n", Run(program, u""));
}

TEST_F(SamplePrograms, DownloadShowsItsProgress) {
    device.AddHost(u"maps.example", 80, FileServer(Content(100000)));
    for (const char* const program : {"c-download", "cpp-download"}) {
        SCOPED_TRACE(program);
        const ProgramResult result = Run(program, aMap);
        EXPECT_EQ(0u, result.exitCode);
        EXPECT_NE(std::string::npos, result.output.find("\n100%\n100000 bytes\n")) << result.output;
        EXPECT_TRUE(Content(100000) == device.TakeFile(target));
        Expect(1, "cancelled: the file is too large\n", Run(program, std::u16string(aMap) + u" 99999"));
        EXPECT_FALSE(device.Exists(target));
        Expect(2, "usage: download HOST PATH FILE [MOST]\n", Run(program, u"maps.example"));
    }
}

TEST_F(SamplePrograms, RangePrintsBytes) {
    device.AddHost(u"maps.example", 80, FileServer("0123456789"));
    for (const char* const program : {"c-range", "cpp-range"}) {
        SCOPED_TRACE(program);
        Expect(0, "33 34\n", Run(program, u"maps.example /a.map 3 2"));
        Expect(1, "the file ends before the part does\n", Run(program, u"maps.example /a.map 9 2"));
        Expect(1, "the server refused: HTTP status 416\n", Run(program, u"maps.example /a.map 10 1"));
    }
}

TEST_F(SamplePrograms, ResumeGoesOnWithWhatHadCome) {
    const std::string content = Content(5 * 65536);
    size_t requests = 0;
    device.AddHost(u"maps.example", 80, [&](const WebRequest& request) {
        return ++requests > 6 ? WebReply::Refused() : FileServer(content)(request);
    });
    Expect(1, "20%\n40%\nbroken off: error 0x00002EFD; run this again to go on\n", Run("resume", aMap));
    device.AddHost(u"maps.example", 80, FileServer(content));
    Expect(0, "40%\n60%\n80%\n100%\n131072 bytes had come before\n327680 bytes\n", Run("resume", aMap));
    EXPECT_TRUE(content == device.TakeFile(target));
}
