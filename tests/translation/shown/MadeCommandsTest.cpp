/* The commands `template` and `pseudo`. */
#include "MadeFiles.h"
#include "Samples.h"
#include "files/Files.h"
#include "service/TemporaryFolder.h"
#include "texts/ShownTexts.h"

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class MadeCommands : public testing::Test {
protected:
    Catalogue Template(std::vector<std::string> arguments, const std::string& name) {
        return Made(RunTemplate, std::move(arguments), name);
    }

    Catalogue Made(int (*run)(Arguments), std::vector<std::string> arguments, const std::string& name) {
        arguments.insert(arguments.end(), {"--output", PathOf(name)});
        EXPECT_EQ(0, run(arguments));
        Complaints complaints;
        Catalogue catalogue = ReadCatalogue(PathOf(name), complaints);
        EXPECT_THAT(Sentences(complaints), IsEmpty());
        return catalogue;
    }

    [[nodiscard]] std::string PathOf(const std::string& name) const {
        return (folder.Path() / name).string();
    }

    static std::string Refusal(const std::vector<std::string>& arguments) {
        try {
            RunTemplate(arguments);
        } catch (const UsageError& error) {
            return error.what();
        }
        return "none";
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(MadeCommands, ATemplateHasAllTextsInAnyForm) {
    for (const char* name : {"French.txt", "French.tsv", "French.po"}) {
        SCOPED_TRACE(name);
        const Catalogue made = Template({"--language", "French"}, name);
        ASSERT_EQ(AllShownTexts().size(), made.entries.size());
        for (size_t index = 0; index < made.entries.size(); ++index) {
            EXPECT_EQ(AllShownTexts()[index].text, made.entries[index].text);
            EXPECT_EQ(AllShownTexts()[index].isFormat, made.entries[index].isFormat);
            EXPECT_EQ(u"", made.entries[index].translation);
        }
    }
}

TEST_F(MadeCommands, ATemplateTellsPlaces) {
    const Catalogue made = Template({}, "Any.tsv");
    EXPECT_THAT(made.Find(u"Orvande Online")->places,
                ElementsAre(u"Everywhere: title of message boxes, always English"));
    EXPECT_THAT(made.Find(u"User ID")->places,
                ElementsAre(u"Sign in: label, 35 x 8", u"Create account: label, 35 x 8"));
    EXPECT_THAT(made.Find(u"Done")->places,
                ElementsAre(u"Create account: soft key", u"Create account: menu item"));
    EXPECT_EQ(u"Sign in", made.Find(u"Forgot")->screen);
}

TEST_F(MadeCommands, ATemplateIsNamedAfterItsLanguage) {
    EXPECT_THAT(Template({"--language", "French"}, "a.tsv").notes,
                ElementsAre(u"Orvande Online 1.0.0: French"));
    EXPECT_THAT(Template({}, "b.tsv").notes,
                ElementsAre(u"Orvande Online 1.0.0: name this file after its language, such as "
                            u"OrvandeOnline.French.txt"));
}

TEST_F(MadeCommands, ATemplateForEditorsTellsTheProject) {
    Template({"--language", "French"}, "French.po");
    const std::string bytes = ReadFile(PathOf("French.po"));
    EXPECT_THAT(bytes, HasSubstr("\"Project-Id-Version: Orvande Online 1.0.0\\n\"\n\"Language: \\n\"\n"));
    EXPECT_THAT(Template({}, "French.tsv").fields, IsEmpty());
}

TEST_F(MadeCommands, WithoutAFileATemplateGoesToTheOutput) {
    Template({}, "a.txt");
    testing::internal::CaptureStdout();
    EXPECT_EQ(0, RunTemplate({}));
    EXPECT_EQ(ReadFile(PathOf("a.txt")), testing::internal::GetCapturedStdout());
}

TEST_F(MadeCommands, ALanguageThatCannotNameAFileIsRefused) {
    for (const std::string name : {"a/b", "a\\b", "a:b", "a*", "a?", "\"", "<", ">", "|", "a\tb"})
        EXPECT_EQ(
            "no file can have the name of the language '" + name + "': \\ / : * ? \" < > | are not for names",
            Refusal({"--language", name}));
    EXPECT_EQ("--language needs a value", Refusal({"--language", ""}));
}

TEST_F(MadeCommands, ATemplateIsNotTranslatedYet) {
    Template({}, "a.txt");
    const std::vector<std::string> told = CheckFile(PathOf("a.txt"));
    // The title stays English.
    EXPECT_EQ(AllShownTexts().size() - 1, told.size());
    EXPECT_THAT(told, Each(HasSubstr("' is not translated yet")));
}

TEST_F(MadeCommands, ThePseudoLanguageIsOnlyTooLong) {
    const Catalogue made = Made(RunPseudo, {}, "Pseudo.txt");
    EXPECT_EQ(AllShownTexts().size(), made.entries.size());
    EXPECT_THAT(CheckFile(PathOf("Pseudo.txt")), Each(HasSubstr("' needs ")));
}
