#include "files/Files.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "Samples.h"
#include "service/TemporaryFolder.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class Files : public testing::Test {
protected:
    [[nodiscard]] std::string PathOf(const std::string& name) const {
        return (folder.Path() / name).string();
    }

    [[nodiscard]] size_t CountFiles() const {
        const std::filesystem::directory_iterator files(folder.Path());
        return static_cast<size_t>(std::distance(begin(files), end(files)));
    }

    TemporaryFolder folder;
};

template <class Do>
std::string ErrorOf(Do what) {
    try {
        what();
    } catch (const UsageError& error) {
        return error.what();
    }
    return "none";
}

}  // namespace

TEST_F(Files, WhatIsWrittenIsRead) {
    const std::string bytes("a\0b\r\n", 5);
    WriteFile(PathOf("a"), bytes);
    EXPECT_EQ(ReadFile(PathOf("a")), bytes);
    WriteFile(PathOf("a"), "");
    EXPECT_EQ(ReadFile(PathOf("a")), "");
    EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Files, WrittenFileKeepsItsModeAndItsLinks) {
    WriteFile(PathOf("a"), "a");
    ASSERT_EQ(chmod(PathOf("a").c_str(), 0640), 0);
    std::filesystem::create_symlink("a", PathOf("link"));
    WriteFile(PathOf("link"), "b");
    EXPECT_EQ(ReadFile(PathOf("a")), "b");
    EXPECT_TRUE(std::filesystem::is_symlink(PathOf("link")));
    struct stat state = {};
    ASSERT_EQ(stat(PathOf("a").c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 07777, 0640U);
}

TEST_F(Files, LinkToNothingIsWrittenThere) {
    std::filesystem::create_symlink("second", PathOf("first"));
    std::filesystem::create_symlink("a", PathOf("second"));
    WriteFile(PathOf("first"), "a");
    EXPECT_EQ(ReadFile(PathOf("a")), "a");
    EXPECT_TRUE(std::filesystem::is_symlink(PathOf("first")));
    EXPECT_TRUE(std::filesystem::is_symlink(PathOf("second")));
}

TEST_F(Files, LinkToItselfCannotBeWritten) {
    std::filesystem::create_symlink("a", PathOf("a"));
    EXPECT_THAT(ErrorOf([&] { WriteFile(PathOf("a"), "a"); }),
                HasSubstr("Too many levels of symbolic links"));
    EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Files, NameMayBeAsLongAsNamesAre) {
    WriteFile(PathOf(std::string(255, 'a')), "a");
    EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Files, ProtectedFileIsNotReplaced) {
    WriteFile(PathOf("a"), "a");
    ASSERT_EQ(chmod(PathOf("a").c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
    // Nothing is protected from root.
    constexpr uid_t nobody = 65534;
    const uid_t user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? nobody : user), 0);
    const std::string error = ErrorOf([&] { WriteFile(PathOf("a"), "b"); });
    ASSERT_EQ(seteuid(user), 0);
    EXPECT_THAT(error, HasSubstr("cannot be written: Permission denied"));
    EXPECT_EQ(ReadFile(PathOf("a")), "a");
}

TEST_F(Files, WhatCannotBeReadIsTold) {
    EXPECT_EQ(ErrorOf([&] { ReadFile(PathOf("none")); }),
              "'" + PathOf("none") + "' cannot be read: No such file or directory");
    EXPECT_EQ(ErrorOf([&] { ReadFile(PathOf("")); }), "'" + PathOf("") + "' cannot be read: Is a directory");
}

TEST_F(Files, WhatIsTooLargeIsNotRead) {
    WriteFile(PathOf("a"), "");
    std::filesystem::resize_file(PathOf("a"), 4 << 20);
    EXPECT_EQ(ReadFile(PathOf("a")).size(), 4U << 20);
    std::filesystem::resize_file(PathOf("a"), (4 << 20) + 1);
    EXPECT_EQ(ErrorOf([&] { ReadFile(PathOf("a")); }), "'" + PathOf("a") + "' is larger than 4 MB");
}

TEST_F(Files, WhatCannotBeWrittenIsTold) {
    EXPECT_THAT(ErrorOf([&] { WriteFile(PathOf("none/a"), "a"); }),
                HasSubstr("cannot be written: No such file"));
    EXPECT_THAT(ErrorOf([&] { WriteFile(folder.Path().string(), "a"); }),
                HasSubstr("cannot be written: Is a dir"));
    EXPECT_THAT(ErrorOf([&] { WriteFile("/dev/full", "a"); }), HasSubstr("cannot be written: No space left"));
    EXPECT_EQ(CountFiles(), 0U);
}

TEST_F(Files, EndingsTellTheForm) {
    EXPECT_EQ(FormToWrite("-"), FileForm::Language);
    EXPECT_EQ(FormToWrite("a.b.txt"), FileForm::Language);
    EXPECT_EQ(FormToWrite("A.TXT"), FileForm::Language);
    EXPECT_EQ(FormToWrite("a.tsv"), FileForm::Table);
    EXPECT_EQ(FormToWrite("a.po"), FileForm::Po);
    EXPECT_EQ(FormToWrite("a.POT"), FileForm::Po);
    for (const std::string path : {"a.csv", "a", "", ".txt", "po", "a.po.bak"})
        EXPECT_THROW(FormToWrite(path), UsageError);
}

TEST_F(Files, CharactersThatTheLibraryDropsAreNotWritten) {
    Catalogue catalogue;
    CatalogueEntry entry;
    entry.text = u"Open";
    entry.translation = u"Ouv\rrir";
    entry.line = 4;
    catalogue.entries.push_back(entry);
    entry.text = WideString(u"a\0b", 3);
    entry.translation.clear();
    catalogue.entries.push_back(entry);
    for (const std::string path : {"a.txt", "a.tsv", "a.po"}) {
        Complaints complaints;
        WriteCatalogue(PathOf(path), catalogue, complaints);
        EXPECT_THAT(Sentences(complaints),
                    ElementsAre("4: a carriage return, which the library drops",
                                "4: a character with the number 0, which ends a text"));
    }
    EXPECT_EQ(CountFiles(), 0U);
}
