/* The image as the device's loader finds it: moved, bound, run, and gone. */
#include "mapshop/MapShopFixture.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "DeviceHeap.h"
#include "Imports.h"
#include "MappedImage.h"

namespace {

using Entry = BOOL WINAPI(HINSTANCE instance, DWORD reason, LPVOID reserved);

class ImageLoading : public DeviceTest {
protected:
    static BOOL CallEntry(const MappedImage& image, DWORD reason, LPVOID reserved = nullptr) {
        return reinterpret_cast<Entry*>(image.Entry())(Device::Current().LibraryInstance(), reason, reserved);
    }

    /* Whether a byte can be written there; 0 is written then. */
    static bool IsWritable(const void* place) {
        const int zeros = open("/dev/zero", O_RDONLY);
        const ssize_t written = read(zeros, const_cast<void*>(place), 1);
        close(zeros);
        return written == 1;
    }

    /* The number of maps that a search through the exports of an attached image finds. */
    static size_t MapsFound(const MappedImage& image) {
        auto* const search =
            reinterpret_cast<decltype(&LMMapShopSearch)>(image.Export("LMMapShopSearch"))(nullptr, 0);
        auto* const getNext = reinterpret_cast<decltype(&LMMapShopGetNext)>(image.Export("LMMapShopGetNext"));
        MapShopResult map;
        size_t maps = 0;
        while (getNext(search, &map) == 1)
            ++maps;
        reinterpret_cast<decltype(&LMMapShopClose)>(image.Export("LMMapShopClose"))(search);
        return maps;
    }

    /* Why the image cannot be loaded; empty when it can. */
    static std::string Problem(const std::string& file, const MappedImage::Resolver& resolve = FindImport) {
        try {
            const MappedImage image(file, preferredBase, resolve);
            return {};
        } catch (const ImageError& error) {
            return error.what();
        }
    }

    /* The problem with a file of those bytes. */
    static std::string ProblemOf(const std::string& bytes) {
        PutFile(TEXT("\\Temp\\image.dll"), bytes);
        return Problem(Device::Current().HostPath(u"\\Temp\\image.dll"));
    }

    static std::string ImageBytes() {
        std::ifstream stream(ORVANDE_LIBRARY_FILE, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static constexpr uintptr_t preferredBase = 0x10000000;
    Device& device = Device::Current();
};

}  // namespace

TEST_F(ImageLoading, SearchWorksWhereverTheImageLies) {
    device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(TwoMaps().bytes));
    for (const uintptr_t base :
         {preferredBase, uintptr_t{0x01E00000}, uintptr_t{0x20000000}, uintptr_t{0x30000000}}) {
        SCOPED_TRACE(base);
        const size_t blocks = DeviceHeapBlocks();
        const MappedImage image(ORVANDE_LIBRARY_FILE, base, FindImport);
        EXPECT_EQ(base, image.Base());
        EXPECT_EQ(preferredBase, image.PreferredBase());
        ASSERT_TRUE(CallEntry(image, DLL_PROCESS_ATTACH));
        EXPECT_EQ(2u, MapsFound(image));
        EXPECT_TRUE(CallEntry(image, DLL_PROCESS_DETACH));
        EXPECT_EQ(blocks, DeviceHeapBlocks());
    }
}

TEST_F(ImageLoading, TwoImagesAtOnceHaveTheirOwnData) {
    const MappedImage one(ORVANDE_LIBRARY_FILE, preferredBase, FindImport);
    const MappedImage other(ORVANDE_LIBRARY_FILE, 0x20000000, FindImport);
    ASSERT_TRUE(CallEntry(one, DLL_PROCESS_ATTACH));
    ASSERT_TRUE(CallEntry(other, DLL_PROCESS_ATTACH));
    EXPECT_EQ(2u, device.CountCalls("InternetOpenW"));
    EXPECT_TRUE(CallEntry(one, DLL_PROCESS_DETACH));
    EXPECT_EQ(1u, device.CountCalls("InternetCloseHandle"));
    EXPECT_TRUE(CallEntry(other, DLL_PROCESS_DETACH));
    EXPECT_EQ(2u, device.CountCalls("InternetCloseHandle"));
}

TEST_F(ImageLoading, ThreadsThatComeAndGoChangeNothing) {
    const MappedImage image(ORVANDE_LIBRARY_FILE, preferredBase, FindImport);
    ASSERT_TRUE(CallEntry(image, DLL_PROCESS_ATTACH));
    const std::vector<std::string> before = device.Calls();
    EXPECT_TRUE(CallEntry(image, DLL_THREAD_ATTACH));
    EXPECT_TRUE(CallEntry(image, DLL_THREAD_DETACH));
    EXPECT_EQ(before, device.Calls());
    CallEntry(image, DLL_PROCESS_DETACH);
}

TEST_F(ImageLoading, CodeConstantsAndHeadersCannotBeWritten) {
    const MappedImage image(ORVANDE_LIBRARY_FILE, preferredBase, FindImport);
    char ownByte = 1;
    EXPECT_TRUE(IsWritable(&ownByte));
    EXPECT_FALSE(IsWritable(image.Entry()));
    EXPECT_FALSE(IsWritable(image.Export("LMMapShopSearch")));
    EXPECT_FALSE(IsWritable(image.BytesAt(image.DirectoryOf(MappedImage::exports), 1).data()));
    EXPECT_FALSE(IsWritable(image.BytesAt(image.DirectoryOf(MappedImage::resources), 1).data()));
    EXPECT_FALSE(IsWritable(image.BytesAt(0, 1).data()));
}

TEST_F(ImageLoading, EndOfTheProcessDetachesWithASearchStillOpen) {
    device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(TwoMaps().bytes));
    const MappedImage image(ORVANDE_LIBRARY_FILE, preferredBase, FindImport);
    ASSERT_TRUE(CallEntry(image, DLL_PROCESS_ATTACH));
    EXPECT_NE(nullptr,
              reinterpret_cast<decltype(&LMMapShopSearch)>(image.Export("LMMapShopSearch"))(nullptr, 0));
    int processEnds = 0;
    EXPECT_TRUE(CallEntry(image, DLL_PROCESS_DETACH, &processEnds));
    EXPECT_EQ(device.CountCalls("InternetOpenW") + device.CountCalls("InternetConnectW") +
                  device.CountCalls("HttpOpenRequestW"),
              device.CountCalls("InternetCloseHandle"));
    EXPECT_LT(0u, DeviceHeapBlocks()) << "what the search found";
    DropHeap();
}

TEST_F(ImageLoading, EveryImportThatIsMissingIsNamed) {
    std::vector<std::pair<std::string, std::string>> imports;
    Problem(ORVANDE_LIBRARY_FILE, [&](std::string_view library, std::string_view function) {
        imports.emplace_back(library, function);
        return FindImport(library, function);
    });
    EXPECT_LT(20u, imports.size());
    for (const auto& missing : imports) {
        const std::string problem =
            Problem(ORVANDE_LIBRARY_FILE, [&](std::string_view library, std::string_view function) {
                return missing == std::pair<std::string, std::string>(library, function)
                           ? nullptr
                           : FindImport(library, function);
            });
        EXPECT_EQ("the image imports " + missing.first + "!" + missing.second + ", which is not there",
                  problem);
    }
}

TEST_F(ImageLoading, OccupiedBaseIsRefused) {
    const MappedImage image(ORVANDE_LIBRARY_FILE, preferredBase, FindImport);
    EXPECT_EQ("there is no room for the image at its base", Problem(ORVANDE_LIBRARY_FILE));
}

TEST_F(ImageLoading, FilesThatAreNoImagesForTheDeviceAreRefused) {
    EXPECT_NE(std::string::npos, Problem("/nonexistent").find("cannot be read"));
    EXPECT_EQ("the file is too short to be an image", ProblemOf(""));
    EXPECT_EQ("the file is no image", ProblemOf(std::string(500, '\0')));
    std::string bytes = ImageBytes();
    bytes[64 + 4] = '\x4C';  // a desktop's processor
    bytes[64 + 5] = '\x01';
    EXPECT_EQ("the image is not one for Windows CE on ARM", ProblemOf(bytes));
}

TEST_F(ImageLoading, FileThatIsCutOffAnywhereIsRefused) {
    const std::string bytes = ImageBytes();
    // The last section is filled up to a whole sector of 512 bytes.
    for (size_t size = 0; size + 512 < bytes.size(); size += 509) {
        EXPECT_NE("", ProblemOf(bytes.substr(0, size))) << size;
    }
    EXPECT_EQ("", ProblemOf(bytes));
}

TEST_F(ImageLoading, WhereverMemoryRunsOutTheImageIsLoadedOrRefusedAndLeavesNothing) {
    const std::string file = ORVANDE_LIBRARY_FILE;
    size_t loads = 0;
    for (const Failing failing : {Failing::Once, Failing::FromThereOn}) {
        for (size_t n = 1;; ++n) {
            SCOPED_TRACE(n);
            AllocationWatch watch(n, failing);
            LoadedLibrary library = device.LoadLibraryFile(file);
            watch.Stop();
            if (library.IsLoaded()) ++loads;
            library.Unload();
            if (!watch.Failed()) break;
            ASSERT_LT(n, 100u);
        }
    }
    EXPECT_LT(2u, loads) << "texts that cannot be translated do not stop the load";
}

TEST_F(ImageLoading, ManyLoadsWithAHarvestLeaveNothingBehind) {
    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(TwoMaps().bytes));
    for (int i = 0; i < 300; ++i) {
        LoadedLibrary library = device.LoadLibraryFile(ORVANDE_LIBRARY_FILE);
        auto* const search = library.Find<decltype(LMMapShopSearch)>("LMMapShopSearch")(nullptr, 0);
        EXPECT_EQ(24, library.Find<decltype(LMMapShopClose)>("LMMapShopClose")(search));
        library.Unload();
    }
    EXPECT_EQ(0u, DeviceHeapBlocks());
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("Orvande Online\tXXXX\r\n")),
              device.TakeFile(u"\\My Documents\\ZRTranslation\\OrvandeOnline.txt").value_or("no file"));
}
