#include "MapFolder.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

#include "TemporaryFolder.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

/* As long as it lives, no file grows beyond a size. */
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) : previousHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &previous);
        const rlimit limit{size, previous.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &previous);
        std::signal(SIGXFSZ, previousHandler);
    }

private:
    rlimit previous{};
    void (*previousHandler)(int);
};

class MapFolder : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path Maps() const { return folder.Path() / "data" / "maps"; }

    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Maps()))
            names.push_back(entry.path().filename().string());
        return names;
    }

    [[nodiscard]] std::string Contents(const char* name) const {
        std::ostringstream text;
        text << std::ifstream(Maps() / name, std::ios::binary).rdbuf();
        return text.str();
    }

    void Write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(Maps());
        std::ofstream(Maps() / name, std::ios::binary) << text;
    }

    /* Why the files cannot be made. */
    [[nodiscard]] std::string Complaint() const {
        try {
            MakeMapFiles(Maps(), files);
        } catch (const MapFolderError& error) {
            return error.what();
        }
        return "none";
    }

    static std::string WholeOf(const MapFile& file) {
        std::string bytes(file.size, '\0');
        ReadMapFile(file, 0, bytes);
        return bytes;
    }

    TemporaryFolder folder;
    const MapFile empty{"empty.map", 0};
    const MapFile large{"large.map", (2 << 20) + 3};
    const std::vector<MapFile> files = {empty, large};
};

}  // namespace

TEST_F(MapFolder, MissingFilesAreMadeWhole) {
    MakeMapFiles(Maps(), files);
    EXPECT_THAT(Names(), UnorderedElementsAre("empty.map", "large.map"));
    EXPECT_EQ(Contents("empty.map"), "");
    EXPECT_TRUE(Contents("large.map") == WholeOf(large));
}

TEST_F(MapFolder, FileThatIsThereStaysAsItIs) {
    Write("large.map", "somebody's own");
    MakeMapFiles(Maps(), files);
    EXPECT_EQ(Contents("large.map"), "somebody's own");
}

TEST_F(MapFolder, WhatAnInterruptedStartLeftIsMadeAnew) {
    Write(".large.map.unfinished", std::string(3 << 20, 'x'));
    MakeMapFiles(Maps(), files);
    EXPECT_THAT(Names(), UnorderedElementsAre("empty.map", "large.map"));
    EXPECT_TRUE(Contents("large.map") == WholeOf(large));
}

TEST_F(MapFolder, FileThatCannotBeWrittenToItsEndIsNotThere) {
    {
        const FileSizeLimit limit(1500000);
        EXPECT_THAT(Complaint(),
                    AllOf(HasSubstr("large.map' cannot be made: "), HasSubstr("File too large")));
    }
    EXPECT_THAT(Names(), UnorderedElementsAre("empty.map"));
    MakeMapFiles(Maps(), files);
    EXPECT_TRUE(Contents("large.map") == WholeOf(large));
}

TEST_F(MapFolder, LinkInThePlaceOfAnUnfinishedFileIsNotFollowed) {
    Write("victim", "precious");
    std::filesystem::create_symlink("victim", Maps() / ".large.map.unfinished");
    EXPECT_THAT(Complaint(), HasSubstr(".large.map.unfinished' cannot be made: "));
    EXPECT_EQ(Contents("victim"), "precious");
}

TEST_F(MapFolder, FolderThatIsAFileIsRefused) {
    std::ofstream(folder.Path() / "data") << "a file";
    EXPECT_THAT(Complaint(), AllOf(HasSubstr("maps' cannot be made: "), HasSubstr("Not a directory")));
}

TEST_F(MapFolder, SeveralMakeTheFilesAtOnce) {
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int count = 0; count < 8; ++count) {
        threads.emplace_back([&] {
            if (Complaint() != "none") ++failures;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_THAT(Names(), UnorderedElementsAre("empty.map", "large.map"));
    EXPECT_TRUE(Contents("large.map") == WholeOf(large));
}

TEST_F(MapFolder, ReaderReadsAnyPart) {
    Write("a.map", "0123456789");
    const std::unique_ptr<MapReader> reader = MapReader::Open(Maps(), "a.map");
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->Size(), 10u);
    std::string bytes(4, '\0');
    EXPECT_EQ(reader->Read(3, bytes), 4u);
    EXPECT_EQ(bytes, "3456");
    EXPECT_EQ(reader->Read(8, bytes), 2u);
    EXPECT_EQ(bytes, "8956");
    EXPECT_EQ(reader->Read(10, bytes), 0u);
    EXPECT_EQ(reader->Read(UINT64_MAX, bytes), 0u);
}

TEST_F(MapFolder, ReaderKeepsTheFileThatItOpened) {
    Write("a.map", "old");
    const std::unique_ptr<MapReader> reader = MapReader::Open(Maps(), "a.map");
    ASSERT_NE(reader, nullptr);
    Write("b.map", "new");
    std::filesystem::rename(Maps() / "b.map", Maps() / "a.map");
    std::string bytes(3, '\0');
    EXPECT_EQ(reader->Read(0, bytes), 3u);
    EXPECT_EQ(bytes, "old");
}

TEST_F(MapFolder, OnlyRegularFilesAreOpened) {
    Write("a.map", "a");
    std::filesystem::create_symlink("a.map", Maps() / "link.map");
    std::filesystem::create_directory(Maps() / "folder.map");
    ASSERT_EQ(mkfifo((Maps() / "pipe.map").c_str(), 0600), 0);
    EXPECT_NE(MapReader::Open(Maps(), "a.map"), nullptr);
    for (const char* name : {"link.map", "folder.map", "pipe.map", "none.map", "a.map/a.map"})
        EXPECT_EQ(MapReader::Open(Maps(), name), nullptr) << name;
    EXPECT_EQ(MapReader::Open(Maps(), std::string(8000, 'a')), nullptr);
    EXPECT_EQ(MapReader::Open(folder.Path() / "none", "a.map"), nullptr);
}

TEST_F(MapFolder, FileThatIsThereButCannotBeOpenedIsAnError) {
    Write("a.map", "a");
    rlimit previous{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &previous), 0);
    const rlimit none{0, previous.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_THROW(MapReader::Open(Maps(), "a.map"), std::system_error);
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &previous), 0);
}
