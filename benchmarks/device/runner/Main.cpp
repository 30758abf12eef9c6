/* Has an image for handhelds do one kind of work on the simulated handheld.
 *
 *   device-benchmark search COUNT    searches with the DLL for so many maps, and reads them
 *   device-benchmark WORK COUNT      has benchmark.exe do it (program/Main.cpp)
 *
 * The exit code is 1, after one sentence, when a result is not right. */
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "Device.h"
#include "LMOnline.h"
#include "Program.h"
#include "support/MapShopReply.h"

namespace {

void Violated(const std::string& what) {
    std::fprintf(stderr, "device-benchmark: %s\n", what.c_str());
    std::exit(1);
}

std::string Digits(int32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "%07d", number);
    return text;
}

std::u16string Wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

/* What the service answers when it has made up so many maps. */
std::string ReplyWith(int32_t count) {
    MapShopReply reply;
    reply.Int32(0).Int32(count);
    for (int32_t i = 1; i <= count; ++i) {
        reply.Map(Wide("Made-up map " + Digits(i)), 100 + i * 7919 % 60000,
                  Wide("/maps/made-up/" + Digits(i) + ".map"),
                  Wide("Map " + std::to_string(i) + " of " + std::to_string(count) +
                       ", made up for large searches."));
    }
    return reply.Int32(count).bytes;
}

std::string Dictionary(int32_t lines) {
    std::string text;
    for (int32_t i = 0; i < lines; ++i)
        text += "Key" + Digits(i) + "=The+value+%26+number+" + Digits(i) + "\r\n";
    return text;
}

std::string Catalogue(int32_t texts) {
    std::u16string text = u"\xFEFF";
    for (int32_t i = 0; i < texts; ++i)
        text += Wide("Text number " + Digits(i) + " of a menu\tTexte de menu " + Digits(i) + "\r\n");
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

void Require(bool isSo, const char* otherwise) {
    if (!isSo) throw std::runtime_error(otherwise);
}

void SearchWithLibrary(int32_t count) {
    Device& device = Device::Current();
    const LoadedLibrary library = device.LoadLibraryFile(ORVANDE_DEVICE_FOLDER "/OrvandeOnline.dll");
    Require(library.IsLoaded(), "the DLL cannot be loaded");
    auto* const search = library.Find<decltype(LMMapShopSearch)>("LMMapShopSearch");
    auto* const getNext = library.Find<decltype(LMMapShopGetNext)>("LMMapShopGetNext");
    auto* const close = library.Find<decltype(LMMapShopClose)>("LMMapShopClose");
    MapShopSearch* const maps = search(nullptr, 0);
    MapShopResult map;
    int32_t found = 0;
    while (getNext(maps, &map) != 0) {
        ++found;
        Require(map.text1 == Wide("Made-up map " + Digits(found)), "a map has lost its name");
    }
    Require(close(maps) == count && found == count, "the search has lost maps");
}

void Run(const std::string& work, int32_t count) {
    Device& device = Device::Current();
    device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(ReplyWith(count)));
    if (work == "search") {
        SearchWithLibrary(count);
        return;
    }
    device.PutFile(u"\\Storage\\dictionary.txt", Dictionary(count));
    // Texts are looked up in a table of one size.
    device.PutFile(u"\\Storage\\catalogue.txt", Catalogue(work == "load-catalogue" ? count : 2000));
    const ProgramResult result =
        RunProgram(ORVANDE_DEVICE_FOLDER "/benchmark.exe", Wide(work + " " + std::to_string(count)));
    Require(result.exitCode == 0, "the program's results are not right");
}

}  // namespace

int main(int count, char** arguments) {
    try {
        Require(count == 3, "there are arguments missing");
        Device::Current().SetViolationHook(Violated);
        Device::Current().BeginTest();
        Run(arguments[1], static_cast<int32_t>(std::strtol(arguments[2], nullptr, 10)));
        Device::Current().EndTest();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "device-benchmark: %s\n", error.what());
        return 1;
    }
}
