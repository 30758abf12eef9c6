#include "MapFile.h"

#include <gmock/gmock.h>
#include <openssl/evp.h>

#include <array>
#include <map>
#include <string_view>

#include "Seed.h"

using testing::ElementsAreArray;
using testing::StartsWith;

namespace {

std::string Bytes(const MapFile& file, uint64_t offset, size_t length) {
    std::string bytes(length, '\0');
    ReadMapFile(file, offset, bytes);
    return bytes;
}

std::string Sha256(std::string_view bytes) {
    std::array<unsigned char, 32> digest{};
    EXPECT_EQ(EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr), 1);
    std::string text;
    for (const unsigned char byte : digest) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

}  // namespace

// The digests are those of docs/service.md, computed with the program that stands there.
TEST(MapFile, ContentsAreTheDocumentedOnes) {
    std::map<std::string, std::string> digests;
    for (const MapFile& file : FilesOfTheWorld())
        digests[file.name] = Sha256(Bytes(file, 0, file.size));
    const std::map<std::string, std::string> documented = {
        {"azores.map", "953650ec1a810b600a4cdb1f6d43185350bacb5ffb5616b34383aa2c957c1f5e"},
        {"bouvet-island.map", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"california.map", "3478b48d13a56c3859f255cfe086c20351e6694eeff8d822d976e4bf0c92b04f"},
        {"corsica.map", "fbacea87408bf56e035c74a5928f813cc6c92d50fd4e5c4a9278189b374066fa"},
        {"fiji.map", "f24e480eedace54095dc7cc49f99950695d2fa1bb9911b2e77fcd5be43c0a178"},
        {"galapagos.map", "83b6fdc5c1b4106668b744d03f25b57d81033f5fda5c41d1f4e2904f896334e1"},
        {"reunion.map", "78b8c37c69eb5fed138b8667878e8d59d7827926a34a63ce267799b9ef109a1a"},
        {"rockall.map", "c4694f2e93d5c4e7d51f9c5deb75e6cc8be5e1114178c6a45b6fc2c566a0aa8c"},
    };
    EXPECT_THAT(digests, ElementsAreArray(documented));
}

TEST(MapFile, FirstLineNamesTheMapAndItsSize) {
    EXPECT_THAT(Bytes({"reunion.map", 1105500}, 0, 100),
                StartsWith("Orvande map reunion.map, 1105500 bytes\n"));
}

TEST(MapFile, EveryPartIsThatOfTheWhole) {
    const MapFile file{"a.map", 200};
    const std::string whole = Bytes(file, 0, 200);
    for (size_t offset = 0; offset < 200; ++offset) {
        for (size_t length = 0; length <= 20 && offset + length <= 200; ++length)
            ASSERT_EQ(Bytes(file, offset, length), whole.substr(offset, length)) << offset << ' ' << length;
    }
}

TEST(MapFile, PartsOfDifferentPlacesAndMapsDiffer) {
    const MapFile file{"a.map", 1 << 20};
    EXPECT_NE(Bytes(file, 4096, 16), Bytes(file, 8192, 16));
    EXPECT_NE(Bytes(file, 4096, 16), Bytes(file, 4097, 16));
    EXPECT_NE(Bytes(file, 4096, 16), Bytes({"b.map", 1 << 20}, 4096, 16));
}
