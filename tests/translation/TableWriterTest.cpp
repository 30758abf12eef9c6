#include <gmock/gmock.h>

#include <random>

#include "Samples.h"
#include "TableFile.h"
#include "Utf16.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CatalogueEntry Entry(WideString text, WideString translation) {
    CatalogueEntry entry;
    entry.text = std::move(text);
    entry.translation = std::move(translation);
    return entry;
}

std::string Table(const Catalogue& catalogue) {
    Complaints complaints;
    std::string bytes = WriteTable(catalogue, complaints);
    EXPECT_THAT(Sentences(complaints), IsEmpty());
    return bytes;
}

Catalogue Read(const std::string& bytes) {
    Complaints complaints;
    Catalogue catalogue = ReadTable(DecodeTable(bytes), complaints);
    EXPECT_THAT(Sentences(complaints), IsEmpty());
    return catalogue;
}

/* What makes trouble in lines, fields, comments and lists. */
class HostileWords {
public:
    explicit HostileWords(unsigned seed) : random(seed) {}

    size_t Below(size_t end) { return random() % end; }

    bool Coin() { return Below(2) == 0; }

    WideString Text() {
        WideString text;
        do {
            text += units[Below(units.size())];
        } while (Below(8) != 0);
        return text;
    }

    WideString Line() {
        WideString line = Text();
        std::erase(line, u'\n');
        return line;
    }

    std::vector<WideString> Lines() {
        std::vector<WideString> lines(Below(3));
        for (WideString& line : lines)
            line = Coin() ? WideString() : Line();
        return lines;
    }

private:
    static constexpr WideStringView units = u"\"\"\\\\tn\t\n #:.,~+|@-Xa\xE9";
    std::mt19937 random;
};

/* Entries of different texts, which a catalogue has. */
Catalogue HostileCatalogue(HostileWords& words) {
    Catalogue catalogue;
    catalogue.notes = words.Lines();
    catalogue.isHeadFuzzy = words.Coin();
    if (words.Coin()) catalogue.fields.push_back({u"X-Field", words.Line()});
    for (size_t count = words.Below(4); count > 0; --count) {
        CatalogueEntry entry = Entry(words.Text() + WideString(count, u'z'), {});
        if (words.Coin()) entry.translation = words.Text();
        entry.notes = words.Lines();
        entry.places = words.Lines();
        if (words.Coin()) entry.references = {u"a.cpp:1", u"b:c"};
        if (words.Coin()) entry.screen = words.Line();
        entry.isFormat = words.Coin();
        entry.isFuzzy = words.Coin();
        if (words.Coin()) entry.guessedFrom = words.Text();
        entry.isObsolete = words.Coin();
        catalogue.entries.push_back(entry);
    }
    return catalogue;
}

}  // namespace

TEST(TableWriter, EverythingHasItsLine) {
    Catalogue catalogue;
    catalogue.notes = {u"French", u""};
    catalogue.isHeadFuzzy = true;
    catalogue.fields = {{u"Language", u"fr"}};
    CatalogueEntry entry = Entry(u"Say \"hi\"", u"Dites\n\x2026");
    entry.notes = {u"Tab\there"};
    entry.places = {u"Sign in: label"};
    entry.references = {u"a.cpp:1"};
    entry.screen = u"Else";
    entry.isFormat = true;
    entry.isFuzzy = true;
    entry.guessedFrom = u"Say";
    catalogue.entries = {entry, Entry(u"Open", u"")};
    catalogue.entries.push_back(Entry(u"Log in", u"Connexion"));
    catalogue.entries.back().isObsolete = true;
    EXPECT_EQ(Table(catalogue),
              "# French\n#\n#, fuzzy\n#+ Language: fr\n"
              "\n# Tab\\there\n#. Sign in: label\n#@ Else\n#: a.cpp:1\n#, c-format, fuzzy\n#| Say\n"
              "\"Say \"\"hi\"\"\"\tDites\\n\xE2\x80\xA6\n"
              "\nOpen\tXXXX\n"
              "\n#~ Log in\n#~ Connexion\n");
}

TEST(TableWriter, LanguageFileIsTheSameInUtf16WithCrLf) {
    Catalogue catalogue;
    catalogue.entries = {Entry(u"Open",
                               u"\xD6"
                               u"ffnen")};
    EXPECT_EQ(WriteLanguageFile(catalogue), Utf16Bytes(u"\xFEFF#+\r\n\r\nOpen\t\xD6"
                                                       u"ffnen\r\n"));
}

TEST(TableWriter, FileAlwaysBeginsWithACommentSoThatItIsNoHarvest) {
    Catalogue catalogue;
    catalogue.entries = {Entry(u"\"a\"", u"")};
    EXPECT_EQ(Table(catalogue), "#+\n\n\"\"\"a\"\"\"\tXXXX\n");
    EXPECT_EQ(Read(Table(catalogue)).entries.at(0).text, u"\"a\"");
}

TEST(TableWriter, LanguageFileBearsHalvesOfPairsAndATableDoesNot) {
    Catalogue catalogue;
    catalogue.entries = {Entry(u"Open", u"\xD83D")};
    catalogue.entries.front().line = 3;
    EXPECT_EQ(Read(WriteLanguageFile(catalogue)).entries.at(0).translation, u"\xD83D");
    Complaints complaints;
    WriteTable(catalogue, complaints);
    EXPECT_THAT(Sentences(complaints), ElementsAre("3: half of a character pair, which UTF-8 does not have"));
}

TEST(TableWriter, NothingIsLostWhateverItIs) {
    HostileWords words(7);
    for (int round = 0; round < 3000; ++round) {
        const Catalogue catalogue = HostileCatalogue(words);
        const std::string table = Table(catalogue);
        const Catalogue read = Read(table);
        ASSERT_EQ(Described(read), Described(catalogue)) << table;
        ASSERT_EQ(Described(Read(WriteLanguageFile(catalogue))), Described(catalogue));
    }
}
