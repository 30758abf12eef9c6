/* Downloads and ranged reads of the reference service's map files, over real HTTP. */
#include "Platform.h"

#include <gtest/gtest.h>

#include "helpers/LocalFiles.h"
#include "helpers/ScratchFolder.h"
#include "helpers/ShippedLibrary.h"
#include "helpers/TestServices.h"
#include "helpers/WebProxy.h"
#include "helpers/Widened.h"

namespace {

struct MapFile {
    const char* name;
    uint64_t size;
};
constexpr MapFile empty{"bouvet-island.map", 0};
constexpr MapFile oneByte{"rockall.map", 1};
constexpr MapFile middling{"reunion.map", 1105500};
constexpr MapFile largest{"california.map", 67108864};

/* The bytes of a map's file from `offset` on, as docs/service.md defines them. */
std::string BytesOf(const MapFile& file, uint64_t offset, size_t count) {
    const std::string name = file.name;
    const std::string head = "Orvande map " + name + ", " + std::to_string(file.size) + " bytes\n";
    uint64_t hash = 0xCBF29CE484222325;
    for (const char letter : name)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3;
    std::string bytes;
    for (uint64_t at = offset; at < offset + count; ++at) {
        uint64_t word = hash + at / 8;
        word = (word ^ word >> 30) * 0xBF58476D1CE4E5B9;
        word = (word ^ word >> 27) * 0x94D049BB133111EB;
        word ^= word >> 31;
        bytes += at < head.size() ? head[static_cast<size_t>(at)] : static_cast<char>(word >> at % 8 * 8);
    }
    return bytes;
}

class TransferService : public testing::Test {
protected:
    static constexpr const WCHAR* host = L"online.orvande.example";

    static std::wstring PathOf(const MapFile& file) { return L"/maps/" + Widened(file.name); }

    int32_t Download(const MapFile& file, LMProgressCallback callback = nullptr) {
        return library.downloadWithProgress(host, PathOf(file).c_str(), target.c_str(), callback, nullptr,
                                            &progress);
    }

    /* Reads into `buffer`, which has dots where nothing was read. */
    int32_t Read(const MapFile& file, uint64_t offset, int32_t length) {
        buffer.assign(static_cast<size_t>(length), '.');
        return library.readRange(host, PathOf(file).c_str(), static_cast<int64_t>(offset), length,
                                 buffer.data(), nullptr, nullptr);
    }

    void ExpectRange(const MapFile& file, uint64_t offset, int32_t length) {
        SCOPED_TRACE(testing::Message() << length << " bytes from " << offset << " of " << file.name);
        EXPECT_EQ(length, Read(file, offset, length));
        EXPECT_TRUE(BytesOf(file, offset, static_cast<size_t>(length)) == buffer);
    }

    void ExpectDownload(const MapFile& file) {
        SCOPED_TRACE(file.name);
        EXPECT_EQ(1, Download(file));
        EXPECT_TRUE(BytesOf(file, 0, static_cast<size_t>(file.size)) == ContentOf(target));
        EXPECT_EQ(static_cast<int64_t>(file.size), progress.bytesReceived);
        EXPECT_EQ(static_cast<int64_t>(file.size), progress.totalBytes);
        EXPECT_FALSE(Exists(target + L".TMP"));
    }

    ScratchFolder folder;
    const std::wstring target = folder.Path() + L"\\a.map";
    DownloadProgress progress{-7, -7};
    std::string buffer;
    WebProxy proxy{PortTold("ORVANDE_TEST_MAPS_PORT")};
    ShippedLibrary library;
};

}  // namespace

TEST_F(TransferService, DownloadsBringTheFilesOfTheService) {
    for (const MapFile& file : {middling, empty, oneByte})
        ExpectDownload(file);
}

TEST_F(TransferService, RangedReadsBringTheirBytes) {
    EXPECT_EQ("\x2C\xC9\xAE\xF2\xA0\x77\x01\xF9", BytesOf(middling, 1000, 8))
        << "the example of the document";
    ExpectRange(middling, 0, 1);
    ExpectRange(middling, 1000, 8);
    ExpectRange(middling, 4095, 4098);
    ExpectRange(middling, middling.size - 100, 100);
    ExpectRange(largest, largest.size - 10000, 10000);
    ExpectRange(oneByte, 0, 1);
}

TEST_F(TransferService, RangeThatReachesBeyondTheEndGives0AndWhatThereIs) {
    EXPECT_EQ(0, Read(middling, middling.size - 3, 5));
    EXPECT_EQ(BytesOf(middling, middling.size - 3, 3) + "..", buffer);
}

TEST_F(TransferService, RangeThatBeginsAtTheEndOrBeyondIsRefused) {
    EXPECT_EQ(-1, Read(middling, middling.size, 1));
    EXPECT_EQ(-1, Read(middling, uint64_t{1} << 32, 1));
    EXPECT_EQ(-1, Read(middling, INT64_MAX, 1));
    EXPECT_EQ(-1, Read(empty, 0, 1));
    EXPECT_EQ(-1, Read(middling, 5, 0)) << "the range 5-4";
}

TEST_F(TransferService, MapWithoutAFileIsRefusedAndTheOldFileStays) {
    PutFile(target, "old");
    constexpr MapFile none{"no-such.map", 0};
    EXPECT_EQ(0, Download(none));
    EXPECT_EQ("old", ContentOf(target));
    EXPECT_EQ(-1, Read(none, 0, 1));
}

TEST_F(TransferService, CancelledDownloadDoesNotDisturbTheNext) {
    PutFile(target, "old");
    const LMProgressCallback cancel = [](void*) -> int { return 0; };
    EXPECT_EQ(0, Download(middling, cancel));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
    EXPECT_EQ(static_cast<int64_t>(middling.size), progress.totalBytes);
    ExpectDownload(middling);
}
