/* Searches and downloads over WinINet, by builds of the DLL and by bare loops, in turn.
 *
 *   benchmark-transfers search ROUNDS DLL ...       prints "check RECORDS BYTES", then for each round a line:
 *   benchmark-transfers download ROUNDS DLL ...     the nanoseconds of the bare loop and of each DLL, with
 *                                                   those of the loop that keeps records between them
 *   benchmark-transfers results DLL                 prints how many maps a search has found, and how many
 *                                                   bytes and blocks of the heap it holds until its close
 *
 * Whatever contenders receive is compared before the first round. Files are made in the working folder. The
 * exit code is 1, after one sentence, when anything is not as it should be. */
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "BareTransfers.h"
#include "HeapUse.h"
#include "LibraryTransfers.h"

namespace {

using Libraries = std::vector<std::unique_ptr<LibraryTransfers>>;
using Contender = std::function<void()>;

constexpr WCHAR bareFile[] = L"bare.map";
constexpr WCHAR libraryFile[] = L"library.map";

void Require(bool isSo, const char* otherwise) {
    if (!isSo) throw std::runtime_error(otherwise);
}

unsigned long Number(size_t size) {
    return static_cast<unsigned long>(size);
}

/* Reads a search's reply as it is written, by itself. */
class Decoder {
public:
    explicit Decoder(const std::vector<BYTE>& bytes) : next_(bytes.data()), end_(next_ + bytes.size()) {}

    int32_t Int32() {
        int32_t value = 0;
        Take(&value, sizeof value);
        return value;
    }

    template <size_t capacity>
    void Text(LMChar (&field)[capacity]) {
        const auto length = static_cast<uint32_t>(Int32());
        Require(length < capacity, "a text of the reply is longer than its field");
        Take(field, length * sizeof *field);
    }

    [[nodiscard]] bool IsAtEnd() const { return next_ == end_; }

private:
    void Take(void* to, size_t size) {
        Require(static_cast<size_t>(end_ - next_) >= size, "the reply is shorter than it says");
        memcpy(to, next_, size);
        next_ += size;
    }

    const BYTE* next_;
    const BYTE* end_;
};

std::vector<MapShopResult> Decoded(const std::vector<BYTE>& reply) {
    Decoder decoder(reply);
    Require(decoder.Int32() == 0, "the service answers with an error");
    std::vector<MapShopResult> maps(static_cast<size_t>(decoder.Int32()));
    for (MapShopResult& map : maps) {
        Require(decoder.Int32() == 4, "the reply holds something else than maps");
        decoder.Text(map.text1);
        map.number = decoder.Int32();
        decoder.Text(map.text2);
        decoder.Text(map.text3);
    }
    decoder.Int32();
    Require(decoder.IsAtEnd(), "the reply has more bytes than it says");
    return maps;
}

bool AreSame(const MapShopResult& a, const MapShopResult& b) {
    return a.number == b.number && wcscmp(a.text1, b.text1) == 0 && wcscmp(a.text2, b.text2) == 0 &&
           wcscmp(a.text3, b.text3) == 0;
}

/* Searches with each contender and compares: the maps that there are. */
size_t CheckSearches(const Libraries& libraries, size_t& size) {
    std::vector<BYTE> reply(64U << 20);
    size = BareSearch(reply.data(), static_cast<DWORD>(reply.size()));
    Require(size > 0, "the bare loop has received no reply");
    reply.resize(size);
    const std::vector<MapShopResult> expected = Decoded(reply);
    for (const auto& library : libraries) {
        std::vector<MapShopResult> maps;
        Require(library->Search(&maps) == expected.size(), "a DLL has found another number of maps");
        for (size_t i = 0; i < maps.size(); ++i)
            Require(AreSame(maps[i], expected[i]), "a DLL has found another map");
    }
    return expected.size();
}

std::string ContentOf(const WCHAR* file) {
    // The library's own name for narrow paths does not matter: these are ASCII.
    std::ifstream stream(std::string(file, file + wcslen(file)), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/* Downloads with each contender and compares: the size of the file. */
size_t CheckDownloads(const Libraries& libraries) {
    Require(BareDownload(bareFile) > 0, "the bare loop has received no file");
    const std::string expected = ContentOf(bareFile);
    for (const auto& library : libraries) {
        Require(library->Download(libraryFile) > 0, "a DLL has not downloaded the file");
        Require(ContentOf(libraryFile) == expected, "a DLL has downloaded another file");
    }
    return expected.size();
}

/* Each contender once a round, always in the same order. */
void Measure(long rounds, const std::vector<Contender>& contenders) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    for (long round = 0; round < rounds; ++round) {
        for (const Contender& contender : contenders) {
            LARGE_INTEGER begin;
            LARGE_INTEGER end;
            QueryPerformanceCounter(&begin);
            contender();
            QueryPerformanceCounter(&end);
            printf("%.0f ", static_cast<double>(end.QuadPart - begin.QuadPart) * 1e9 /
                                static_cast<double>(frequency.QuadPart));
        }
        printf("\n");
    }
}

/* What memory alone costs whoever keeps that many records: each in a block of its own, emptied, read out once
 * and given back. */
void KeepRecords(size_t count) {
    std::list<MapShopResult> records;
    while (records.size() < count)
        records.emplace_back();
    MapShopResult record;
    int32_t total = 0;
    for (const MapShopResult& kept : records) {
        record = kept;
        total += record.number;
    }
    Require(total == 0, "an empty record holds a number");
}

void MeasureSearches(long rounds, const Libraries& libraries) {
    size_t size = 0;
    const size_t count = CheckSearches(libraries, size);
    printf("check %lu %lu\n", Number(count), Number(size));
    std::vector<Contender> contenders;
    const auto search = [=] { Require(BareSearch(nullptr, 0) == size, "a reply has not come whole"); };
    contenders.emplace_back(search);
    contenders.emplace_back([=] {
        search();
        KeepRecords(count);
    });
    for (const auto& library : libraries) {
        contenders.emplace_back(
            [=, &library] { Require(library->Search(nullptr) == count, "a search has lost maps"); });
    }
    Measure(rounds, contenders);
}

void MeasureDownloads(long rounds, const Libraries& libraries) {
    const size_t size = CheckDownloads(libraries);
    printf("check 1 %lu\n", Number(size));
    std::vector<Contender> contenders;
    contenders.emplace_back([=] { Require(BareDownload(bareFile) == size, "a file has not come whole"); });
    for (const auto& library : libraries) {
        contenders.emplace_back(
            [&library] { Require(library->Download(libraryFile) > 0, "a download has failed"); });
    }
    Measure(rounds, contenders);
    for (const auto& library : libraries)
        printf("calls %lu\n", Number(library->Download(libraryFile)));
    DeleteFileW(bareFile);
    DeleteFileW(libraryFile);
}

/* A search before has already made what WinINet makes once. */
void MeasureResults(const LibraryTransfers& library) {
    const size_t count = library.Search(nullptr);
    const HeapUse before = UseOfAllHeaps();
    MapShopSearch* const search = library.Begin();
    const HeapUse use = UseOfAllHeaps();
    library.Close(search);
    printf("results %lu %lu %lu\n", Number(count), Number(use.bytes - before.bytes),
           Number(use.blocks - before.blocks));
}

void Run(const std::vector<std::wstring>& arguments) {
    Require(arguments.size() >= 2, "there are arguments missing");
    const bool isTimed = arguments[0] != L"results";
    Libraries libraries;
    for (size_t i = isTimed ? 2 : 1; i < arguments.size(); ++i)
        libraries.push_back(std::make_unique<LibraryTransfers>(arguments[i]));
    const long rounds = isTimed ? wcstol(arguments[1].c_str(), nullptr, 10) : 0;
    if (arguments[0] == L"search") MeasureSearches(rounds, libraries);
    if (arguments[0] == L"download") MeasureDownloads(rounds, libraries);
    if (!isTimed) MeasureResults(*libraries[0]);
}

}  // namespace

int wmain(int count, WCHAR** arguments) {
    try {
        Run({arguments + 1, arguments + count});
        return 0;
    } catch (const std::exception& error) {
        fprintf(stderr, "benchmark-transfers: %s\n", error.what());
        return 1;
    }
}
