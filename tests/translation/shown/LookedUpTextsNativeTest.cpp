/* `check` calls a text missing when the library finds no translation of it, and only then. */
#include <algorithm>
#include <set>

#include "MadeFiles.h"
#include "Utf16.h"
#include "files/Files.h"
#include "files/Quoted.h"
#include "files/TableFile.h"
#include "service/TemporaryFolder.h"
#include "support/DeviceTest.h"
#include "texts/ShownTexts.h"
#include "ui/Ornaments.h"
#include "ui/TranslationCatalogue.h"

namespace {

class LookedUpTexts : public DeviceTest {
protected:
    static constexpr WideStringView translation = u"Here";

    /* The texts that the library does not find in a language file of these bytes. */
    static std::set<std::string> NotFound(const std::string& bytes) {
        const WideString path = PathOf(TEXT("Lib.French.txt"));
        PutFile(path, bytes);
        TranslationCatalogue catalogue;
        catalogue.LoadTranslationFile(path);
        std::set<std::string> texts;
        for (const ShownText& shown : AllShownTexts()) {
            const bool isTitle = shown.places.front().kind == TextKind::Title;
            if (!isTitle && catalogue.Translate(shown.text) != translation) texts.insert(Quoted(shown.text));
        }
        return texts;
    }

    /* The texts that `check` calls missing there. */
    [[nodiscard]] std::set<std::string> Missing(const std::string& bytes) const {
        const std::string path = (folder.Path() / "French.txt").string();
        WriteFile(path, bytes);
        std::set<std::string> texts;
        for (const std::string& line : CheckFile(path)) {
            const size_t begin = line.find(": error: the text '");
            const size_t end = line.find(" is missing (");
            if (begin == std::string::npos || end == std::string::npos) continue;
            texts.insert(line.substr(begin + 18, end - begin - 18));
        }
        return texts;
    }

    static WideString Without(WideString text, WideStringView units) {
        std::erase_if(text, [&](WCHAR unit) { return units.find(unit) != WideStringView::npos; });
        return text;
    }

    /* The text, and what somebody may have made of it. */
    static std::vector<WideString> FormsOf(const WideString& text) {
        std::vector<WideString> forms = {
            text,        WithoutOrnaments(text),        u"&" + text, text + u":", text + u".",
            text + u" ", WideString(text).append(u"\"")};
        for (const WideStringView units : {u"&", u".", u":", u"\"", u".\"", u"\n", u" "})
            forms.push_back(Without(text, units));
        WideString lowerCase = text;
        std::ranges::transform(lowerCase, lowerCase.begin(), [](WCHAR unit) {
            return unit >= u'A' && unit <= u'Z' ? static_cast<WCHAR>(unit + 32) : unit;
        });
        forms.push_back(lowerCase);
        return forms;
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(LookedUpTexts, AreThoseThatTheLibraryFinds) {
    std::vector<std::string> files(FormsOf({}).size());
    for (const ShownText& shown : AllShownTexts()) {
        const std::vector<WideString> forms = FormsOf(shown.text);
        for (size_t index = 0; index < forms.size(); ++index)
            files[index] += Utf8Of(EscapedText(forms[index])) + "\t" + Utf8Of(translation) + "\n";
    }
    for (const std::string& records : files)
        EXPECT_EQ(NotFound(records), Missing(records)) << records;
    EXPECT_TRUE(Missing(files[0]).empty());
    EXPECT_FALSE(Missing(files[2]).empty());
}

TEST_F(LookedUpTexts, AreNotThoseOfLinesThatTheLibraryPassesOver) {
    for (const std::string record : {"# Menu\tHere\n", "Menu Here\n", "\tMenu\n", "Menu\n\tHere\n"}) {
        const std::string records = "Forgot\tHere\n" + record;
        EXPECT_EQ(NotFound(records), Missing(records)) << record;
        EXPECT_EQ(1U, Missing(records).count("'Menu'"));
    }
}
