/* The library's file, as the native ring links it. */
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "Device.h"
#include "support/DeviceTest.h"
#include "support/ExportList.h"

namespace {

class LibraryFileOnDevice : public DeviceTest {
protected:
    Device& device = Device::Current();
};

}  // namespace

TEST(LibraryFile, NothingButTheExportsIsVisible) {
    FILE* const symbols = popen("nm -D --defined-only --format=just-symbols " ORVANDE_LIBRARY_FILE, "r");
    ASSERT_NE(nullptr, symbols);
    std::set<std::string> names;
    char line[300];
    while (fgets(line, sizeof line, symbols) != nullptr)
        names.insert(std::string(line, strcspn(line, "\n")));
    EXPECT_EQ(0, pclose(symbols));
    std::ifstream definitions(ORVANDE_EXPORTS_FILE);
    std::set<std::string> expected = ReadExportList(definitions);
    expected.insert("DllMain");
    EXPECT_EQ(expected, names);
}

TEST_F(LibraryFileOnDevice, TenThousandLoadsLeaveNeitherAMappingNorAFileBehind) {
    const auto linesOf = [](const char* file, const char* part) {
        std::ifstream lines(file);
        size_t count = 0;
        for (std::string line; std::getline(lines, line);)
            if (line.find(part) != std::string::npos) ++count;
        return count;
    };
    const auto openFiles = [] {
        using Entries = std::filesystem::directory_iterator;
        return std::distance(Entries("/proc/self/fd"), Entries());
    };
    const auto filesBefore = openFiles();
    for (int i = 0; i < 10000; ++i) {
        LoadedLibrary library = device.LoadLibraryFile(ORVANDE_LIBRARY_FILE);
        ASSERT_TRUE(library.IsLoaded());
        if (i == 0) {
            ASSERT_LT(0u, linesOf("/proc/self/maps", "OrvandeOnline")) << "what is counted below";
        }
        library.Unload();
        ASSERT_EQ(1u, device.CountCalls("InternetOpenW"));
        ASSERT_EQ(1u, device.CountCalls("InternetCloseHandle"));
        device.ForgetCalls();
    }
    EXPECT_EQ(0u, linesOf("/proc/self/maps", "OrvandeOnline"));
    EXPECT_EQ(filesBefore, openFiles());
}
