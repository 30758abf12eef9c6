/* The languages that are shipped. */
#include "CommandFixture.h"
#include "MadeFiles.h"

using testing::IsEmpty;

namespace {

class LanguageFiles : public CommandTest {
protected:
    static std::vector<std::filesystem::path> All() {
        std::vector<std::filesystem::path> paths;
        for (const auto& entry : std::filesystem::directory_iterator(ORVANDE_LANGUAGES))
            paths.push_back(entry.path());
        EXPECT_THAT(paths, testing::Not(IsEmpty()));
        return paths;
    }

    /* The file as it becomes by the commands that take it to this version. */
    [[nodiscard]] std::string TakenToThisVersion(const std::filesystem::path& path) const {
        const std::string fresh = PathOf("New.tsv");
        const std::string merged = PathOf("Merged.txt");
        const std::string toTemplate[] = {"--language", path.stem().string(), "--output", fresh};
        const std::string toMerge[] = {path.string(), fresh, "--output", merged};
        EXPECT_EQ(0, RunTemplate(toTemplate));
        EXPECT_EQ(0, RunMerge(toMerge));
        return ReadFile(merged);
    }

    static std::string CommandsFor(const std::filesystem::path& path) {
        const std::string language = path.stem().string();
        const std::string fresh = "build/" + language + ".tsv";
        const std::string file = "languages/" + language + ".txt";
        return file + " is of another version of the sources; these commands take it to this one:\n" +
               "    tools/translation template --language " + language + " --output " + fresh + "\n" +
               "    tools/translation merge " + file + " " + fresh + " --output " + file + "\n";
    }
};

}  // namespace

TEST_F(LanguageFiles, AreCompleteAndWithoutMistakes) {
    for (const std::filesystem::path& path : All())
        EXPECT_THAT(CheckFile(path), IsEmpty());
}

TEST_F(LanguageFiles, AreOfThisVersionToTheLine) {
    for (const std::filesystem::path& path : All())
        EXPECT_TRUE(TakenToThisVersion(path) == ReadFile(path.string())) << CommandsFor(path);
}
