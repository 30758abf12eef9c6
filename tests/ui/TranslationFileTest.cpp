#include "ui/TranslationFile.h"

#include <gtest/gtest.h>

#include "base/OwnedFile.h"
#include "support/DeviceTest.h"

using namespace std::string_literals;

namespace {

class TranslationFile : public DeviceTest {
protected:
    static TranslationTable Read(std::string_view bytes) {
        const WideString path = PathOf(TEXT("language.txt"));
        PutFile(path, bytes);
        const FileHandle file(_wfopen(path.c_str(), TEXT("rb")));
        TranslationTable table;
        ReadTranslations(file.Get(), table);
        return table;
    }

    static TranslationTable ReadWide(WideStringView text) { return Read("\xFF\xFE" + BytesOf(text)); }

    static std::string Written(const std::set<WideString>& texts) {
        const WideString path = PathOf(TEXT("harvest.txt"));
        {
            const FileHandle file(_wfopen(path.c_str(), TEXT("wb")));
            WriteUntranslatedTexts(file.Get(), texts);
        }
        return TakeFile(path).value_or("no file");
    }
};

}  // namespace

TEST_F(TranslationFile, RecordIsAKeyATabAndAValueWithTheCrRemoved) {
    EXPECT_EQ((TranslationTable{{TEXT("Open"), TEXT("Ouvrir")}}), Read("Open\tOuvrir\r\n"));
    EXPECT_EQ((TranslationTable{{TEXT("Open"), TEXT("Ouvrir")}}), ReadWide(TEXT("Open\tOuvrir\r\n")));
}

TEST_F(TranslationFile, LineWithoutATabIsIgnored) {
    EXPECT_EQ((TranslationTable{{TEXT("Open"), TEXT("Ouvrir")}}),
              Read("a heading\r\nOpen\tOuvrir\n\nno tab here\n"));
}

TEST_F(TranslationFile, LaterRecordReplacesAnEarlierOne) {
    EXPECT_EQ((TranslationTable{{TEXT("Open"), TEXT("second")}}), Read("Open\tfirst\nOpen\tsecond\n"));
}

TEST_F(TranslationFile, LastRecordNeedsNoLineEnd) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b")}}), Read("a\tb"));
}

TEST_F(TranslationFile, FurtherTabsBelongToTheValue) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b\tc\t")}}), Read("a\tb\tc\t\n"));
}

TEST_F(TranslationFile, EmptyKeyLeavesTheRestOfItsLineToBeReadAsARecord) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b")}}), Read("\ta\tb\n"));
    EXPECT_EQ((TranslationTable{{TEXT("x"), TEXT("y")}}), Read("\tno key\nx\ty\n"));
}

TEST_F(TranslationFile, EmptyValueIsNoRecord) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b")}}), Read("a\tb\na\t\nc\t"));
}

TEST_F(TranslationFile, ValueOfNothingButACrIsARecordWithAnEmptyText) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("")}}), Read("a\t\r\n"));
}

TEST_F(TranslationFile, CrIsNoLineEnd) {
    EXPECT_EQ((TranslationTable{{TEXT("ab"), TEXT("cd")}}), Read("a\rb\tc\rd\n"));
}

TEST_F(TranslationFile, CrBeforeALineIsDroppedFromItsKey) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b")}}), Read("\r\n\ra\tb\r\n"));
}

TEST_F(TranslationFile, BothSidesMayStandInQuotes) {
    EXPECT_EQ((TranslationTable{{TEXT("Say \"hi\""), TEXT("Dites \"salut\"")}}),
              Read("\"Say \"\"hi\"\"\"\t\"Dites \\\"salut\\\"\"\r\n"));
}

TEST_F(TranslationFile, QuotesDoNotProtectTabsOrLineEnds) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b\tc")}}), Read("\"a\t\"b\tc\"\n\"d\n\""));
}

TEST_F(TranslationFile, WithoutAByteOrderMarkEachByteIsTheUnitOfItsNumber) {
    EXPECT_EQ((TranslationTable{{TEXT("caf\x00E9"), TEXT("\x00FF\x0080")}}), Read("caf\xE9\t\xFF\x80\n"));
}

TEST_F(TranslationFile, Utf8ShowsAsSeveralUnits) {
    EXPECT_EQ((TranslationTable{{TEXT("\x00EF\x00BB\x00BF"
                                      "a"),
                                 TEXT("\x00C3\x00A9")}}),
              Read("\xEF\xBB\xBF"
                   "a\t\xC3\xA9\n"));
}

TEST_F(TranslationFile, BigEndianMarkIsNoByteOrderMark) {
    EXPECT_EQ((TranslationTable{{TEXT("\x00FE\x00FF"
                                      "a"),
                                 TEXT("b")}}),
              Read("\xFE\xFF"
                   "a\tb\n"));
}

TEST_F(TranslationFile, WideFileMayHoldAnyUnit) {
    EXPECT_EQ((TranslationTable{{TEXT("\x20AC\xD83D"), TEXT("\x4E2D\xFFFF")}}),
              ReadWide(TEXT("\x20AC\xD83D\t\x4E2D\xFFFF\n")));
}

TEST_F(TranslationFile, UnitWhoseLowByteIsTabOrLfIsNeither) {
    EXPECT_EQ((TranslationTable{{TEXT("a\x0109\x010A"), TEXT("\x090A")}}),
              ReadWide(TEXT("a\x0109\x010A\t\x090A\n")));
}

TEST_F(TranslationFile, NulUnitsArePartOfTheText) {
    EXPECT_EQ((TranslationTable{{WideString{TEXT('a'), 0}, WideString{0, TEXT('b')}}}), Read("a\0\t\0b\n"s));
}

TEST_F(TranslationFile, OddTrailingByteOfAWideFileIsLeftOut) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b")}}), Read("\xFF\xFE" + BytesOf(TEXT("a\tb")) + "x"));
    EXPECT_EQ(TranslationTable{}, Read("\xFF\xFE" + BytesOf(TEXT("a\t")) + "x"));
    EXPECT_EQ(TranslationTable{}, Read("\xFF\xFEx"));
}

TEST_F(TranslationFile, FilesWithoutARecordGiveAnEmptyTable) {
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"empty", ""},
        {"one byte", "a"},
        {"half a mark", "\xFF"},
        {"a mark alone", "\xFF\xFE"},
        {"a TAB alone", "\t"},
        {"line ends", "\n\r\n\n"},
        {"key without value", "a\t"},
        {"no TAB", "abc"},
        {"two TABs", "\t\t"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(TranslationTable{}, Read(c.bytes));
    }
}

TEST_F(TranslationFile, FileWithoutAMarkIsReadFromItsStart) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b")}}), Read("a\tb")) << "the first two bytes are no mark";
}

TEST_F(TranslationFile, FileThatEndsInABackslashKeepsIt) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b\\")}}), Read("a\tb\\"));
}

TEST_F(TranslationFile, TenMegabytesOfOneLineAreNoRecordOrALongOne) {
    std::string line(10'000'000, 'x');
    EXPECT_EQ(TranslationTable{}, Read(line));
    line[1] = '\t';
    const TranslationTable table = Read(line);
    ASSERT_EQ(1u, table.size());
    EXPECT_EQ(TEXT("x"), table.begin()->first);
    EXPECT_EQ(9'999'998u, table.begin()->second.size());
}

TEST_F(TranslationFile, BinaryFileIsReadWithoutHarm) {
    std::string bytes;
    for (uint32_t i = 0, state = 1; i < 100'000; ++i) {
        state = state * 1664525 + 1013904223;
        bytes += static_cast<char>(state >> 24);
    }
    const TranslationTable narrow = Read(bytes);
    EXPECT_FALSE(narrow.empty());
    Read("\xFF\xFE" + bytes);
}

TEST(UnescapeTranslationText, Table) {
    const struct {
        const WCHAR* written;
        const WCHAR* meant;
    } cases[] = {
        {TEXT(""), TEXT("")},
        {TEXT("plain"), TEXT("plain")},
        {TEXT("a\rb\r"), TEXT("ab")},
        {TEXT("a\"\"b"), TEXT("a\"b")},
        {TEXT("\"a\""), TEXT("a")},
        {TEXT("\"\""), TEXT("\"")},
        {TEXT("\"\"\""), TEXT("\"")},
        {TEXT("\"\"\"\""), TEXT("\"\"")},
        {TEXT("a\""), TEXT("a")},
        {TEXT("\"\\n"), TEXT("\n")},
        {TEXT("\"\r"), TEXT("")},
        {TEXT("\\t\\n"), TEXT("\t\n")},
        {TEXT("\\T\\N"), TEXT("\\T\\N")},
        {TEXT("\\\""), TEXT("\"")},
        {TEXT("\\\"\""), TEXT("\"")},
        {TEXT("\\\\"), TEXT("\\")},
        {TEXT("\\\\t"), TEXT("\\t")},
        {TEXT("\\\\\\t"), TEXT("\\\t")},
        {TEXT("\\x"), TEXT("\\x")},
        {TEXT("\\"), TEXT("\\")},
        {TEXT("a\\"), TEXT("a\\")},
        {TEXT("\\\r"), TEXT("\\\r")},
        {TEXT("C:\\temp\\new"), TEXT("C:\temp\new")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(WideString(c.meant), UnescapeTranslationText(c.written))
            << ::testing::PrintToString(WideString(c.written));
}

TEST_F(TranslationFile, HarvestIsAByteOrderMarkAndALineForEachTextInOrder) {
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("Alpha\tXXXX\r\nbeta\tXXXX\r\n\x00E9\tXXXX\r\n")),
              Written({TEXT("beta"), TEXT("\x00E9"), TEXT("Alpha")}));
}

TEST_F(TranslationFile, HarvestWritesTabAndLfAsEscapesAndNothingElse) {
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("a\\tb\\nc\r\"d\"\\e\tXXXX\r\n")),
              Written({TEXT("a\tb\nc\r\"d\"\\e")}));
}

TEST_F(TranslationFile, TextWithATabReadsBackFromTheHarvest) {
    Written({TEXT("one\ttwo\nthree")});
    EXPECT_EQ((TranslationTable{{TEXT("one\ttwo\nthree"), TEXT("XXXX")}}),
              Read(TakeFile(PathOf(TEXT("harvest.txt"))).value_or("")));
}

TEST_F(TranslationFile, EmptyTextIsALineWithoutAKey) {
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("\tXXXX\r\n")), Written({TEXT("")}));
}

TEST_F(TranslationFile, SeveralTabsBeforeAKeyArePassedOver) {
    EXPECT_EQ((TranslationTable{{TEXT("a"), TEXT("b")}}), Read("\t\ta\tb\n"));
}

TEST(UnescapeTranslationText, NeverLooksBehindTheText) {
    const WideStringView text = TEXT("a\"\"\\t");
    EXPECT_EQ(WideString(TEXT("a")), UnescapeTranslationText(text.substr(0, 2)));
    EXPECT_EQ(WideString(TEXT("a\"")), UnescapeTranslationText(text.substr(0, 3)));
    EXPECT_EQ(WideString(TEXT("a\"\\")), UnescapeTranslationText(text.substr(0, 4)));
}

TEST_F(TranslationFile, RecordsOfAnyLengthAreReadWhole) {
    for (size_t length = 250; length < 260; ++length) {
        const WideString key(length, 'k');
        const WideString value(2 * length, 'v');
        const TranslationTable expected{{key, value}, {TEXT("a"), TEXT("b")}};
        EXPECT_EQ(expected, ReadWide(key + TEXT("\t") + value + TEXT("\r\na\tb\n"))) << length;
        EXPECT_EQ(expected, Read(std::string(length, 'k') + "\t" + std::string(2 * length, 'v') + "\na\tb"))
            << length;
    }
}

TEST_F(TranslationFile, LastUnitOfAFileMayBeTheFirstOfABlock) {
    for (const size_t size : {255u, 256u, 257u, 513u}) {
        const WideString value(size - 2, TEXT('v'));
        EXPECT_EQ((TranslationTable{{TEXT("k"), value}}), Read("k\t" + std::string(size - 2, 'v')));
    }
}

TEST_F(TranslationFile, QuoteBehindAViewBelongsToNothing) {
    EXPECT_EQ(WideString(TEXT("a")), UnescapeTranslationText(WideStringView(TEXT("a\"\"")).substr(0, 2)));
}
