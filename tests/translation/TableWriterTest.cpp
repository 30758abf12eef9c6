#include <gmock/gmock.h>

#include "HostileCatalogue.h"
#include "Samples.h"
#include "Utf16.h"
#include "files/TableFile.h"

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
    HostileCatalogues hostile(7);
    for (int round = 0; round < 1000; ++round) {
        const Catalogue catalogue = hostile.Next();
        const std::string table = Table(catalogue);
        const Catalogue read = Read(table);
        ASSERT_EQ(Described(read), Described(catalogue)) << table;
        ASSERT_EQ(Described(Read(WriteLanguageFile(catalogue))), Described(catalogue));
    }
}
