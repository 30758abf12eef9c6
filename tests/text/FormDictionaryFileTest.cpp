#include <gtest/gtest.h>

#include "support/DeviceTest.h"
#include "text/FormDictionary.h"

using namespace std::string_literals;
using namespace std::string_view_literals;

namespace {

const WideString absent = TEXT("<absent>");

WideString Unit(unsigned code) {
    return WideString(1, static_cast<WCHAR>(code));
}

class FormDictionaryFile : public DeviceTest {
protected:
    static WideString Path() { return PathOf(TEXT("settings.ini")); }

    static FormDictionary Loaded(std::string_view bytes) {
        PutFile(Path(), bytes);
        FormDictionary dictionary;
        EXPECT_TRUE(dictionary.LoadFromFile(Path()));
        return dictionary;
    }

    static std::string Saved(const FormDictionary& dictionary) {
        EXPECT_TRUE(dictionary.SaveToFile(Path()));
        return TakeFile(Path()).value_or("<no file>");
    }

    static std::string SavedPair(const WideString& key, const WideString& value) {
        FormDictionary dictionary;
        dictionary.SetString(key, value);
        return Saved(dictionary);
    }

    /* `value` as it comes back from a file. */
    static WideString Restored(const WideString& value) {
        SavedPair(TEXT("key"), value);
        FormDictionary dictionary;
        EXPECT_TRUE(dictionary.LoadFromFile(Path()));
        return dictionary.GetString(TEXT("key"), absent);
    }

    static WideString ValueOf(const FormDictionary& dictionary, const WideString& key) {
        return dictionary.GetString(key, absent);
    }
};

}  // namespace

TEST_F(FormDictionaryFile, EntriesAreSavedInTheOrderOfTheirKeysByCodeUnit) {
    FormDictionary dictionary;
    for (const WCHAR* key :
         {TEXT("userid"), TEXT("UserID"), TEXT("_"), TEXT("9"), TEXT("10"), TEXT("a"), TEXT("aa")})
        dictionary.SetString(key, TEXT("1"));
    EXPECT_EQ("10=1\r\n9=1\r\nUserID=1\r\n_=1\r\na=1\r\naa=1\r\nuserid=1\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, KeysAboveU7FFFComeAfterAllOthers) {
    FormDictionary dictionary;
    dictionary.SetString(WideString{0xFFE9}, TEXT("3"));
    dictionary.SetString(WideString{0xD841}, TEXT("2"));
    dictionary.SetString(WideString{'B'}, TEXT("1"));
    EXPECT_EQ("B=1\r\nA=2\r\n\xE9=3\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, ValuesAreEncodedAndKeysAreNot) {
    EXPECT_EQ("a b~%=a+b%26c%3dd%7e\r\n", SavedPair(TEXT("a b~%"), TEXT("a b&c=d~")));
}

TEST_F(FormDictionaryFile, LineEndsInAValueAreEncodedAndEndNoLine) {
    EXPECT_EQ("key=%0d%0a%0d\r\n", SavedPair(TEXT("key"), TEXT("\r\n\r")));
}

TEST_F(FormDictionaryFile, EmptyKeysAndEmptyValuesAreLeftOut) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT(""), TEXT("1"));
    dictionary.SetString(TEXT("empty"), TEXT(""));
    dictionary.SetString(TEXT("full"), TEXT("2"));
    dictionary.SetHexBytes(TEXT("none"), nullptr, 0);
    EXPECT_EQ("full=2\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, EmptyDictionarySavesAnEmptyFile) {
    EXPECT_EQ("", Saved(FormDictionary()));
}

TEST_F(FormDictionaryFile, SavingReplacesWhatTheFileHeld) {
    PutFile(Path(), "old=1\nand much longer than what comes after it\n");
    EXPECT_EQ("key=1\r\n", SavedPair(TEXT("key"), TEXT("1")));
}

TEST_F(FormDictionaryFile, NumbersAndBytesHaveTheirTextForms) {
    const uint8_t bytes[] = {0x0A, 0xFF, 0x00};
    FormDictionary dictionary;
    dictionary.SetHex32(TEXT("Number"), 0x40000000);
    dictionary.SetHexBytes(TEXT("Bytes"), bytes, 3);
    EXPECT_EQ("Bytes=0aff00\r\nNumber=0x40000000\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, UnitsThatPassEncodingAreSavedAsTheirLowBytes) {
    const WideString value{'a', 0x012D, 0x2024, 0xFF29, 'z'};
    EXPECT_EQ("key=a-$)z\r\n", SavedPair(TEXT("key"), value));
}

TEST_F(FormDictionaryFile, UnitsWithLowByteZeroAreLeftOutAndTheRestIsSaved) {
    const WideString value{'a', 0x0100, 0x2000, 'z', 0xFF00};
    EXPECT_EQ("key=az\r\n", SavedPair(TEXT("key"), value));
}

TEST_F(FormDictionaryFile, UnitsAboveU00FFStopNeitherTheirLineNorTheSave) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("a"), WideString{0x0100, '1'});
    dictionary.SetString(WideString{'b', 0x20AC, 0x0100}, TEXT("2"));
    dictionary.SetString(TEXT("c"), TEXT("3"));
    EXPECT_EQ("a=1\r\nb\xAC=2\r\nc=3\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, NulInAValueIsSavedAsAnEscape) {
    EXPECT_EQ("key=a%00b\r\n", SavedPair(TEXT("key"), WideString{'a', 0, 'b'}));
}

TEST_F(FormDictionaryFile, KeyAboveU007FIsSavedAsItsLowByte) {
    EXPECT_EQ("\xE9=1\r\n", SavedPair(WideString{0x00E9}, TEXT("1")));
}

TEST_F(FormDictionaryFile, KeyReadFromAFileIsSavedAsItWasThere) {
    const std::string bytes = "caf\xE9=1\r\n";
    EXPECT_EQ(bytes, Saved(Loaded(bytes)));
}

TEST_F(FormDictionaryFile, ValueOfOneMegabyteIsSavedAndRestoredWhole) {
    const WideString value(1 << 20, 'x');
    EXPECT_EQ(value, Restored(value));
    EXPECT_EQ("key=" + std::string(1 << 20, 'x') + "\r\n", TakeFile(Path()));
}

TEST_F(FormDictionaryFile, EveryUnitBelowU0100IsRestored) {
    for (unsigned code = 0; code <= 0xFF; ++code) {
        SCOPED_TRACE(code);
        const WideString middle = TEXT("a") + Unit(code) + TEXT("b");
        EXPECT_EQ(Unit(code), Restored(Unit(code)));
        EXPECT_EQ(middle, Restored(middle));
    }
}

TEST_F(FormDictionaryFile, SeparatorsLineEndsAndOuterSpacesOfAValueAreRestored) {
    const WideString value = TEXT(" \t#a=1&b=2%41+\r\n# ");
    EXPECT_EQ(value, Restored(value));
}

TEST_F(FormDictionaryFile, UnitsAboveU00FFComeBackAsTheirLowBytes) {
    EXPECT_EQ((WideString{0xAC, '-', 'A'}), Restored(WideString{0x20AC, 0x012D, 0x0141}));
}

TEST_F(FormDictionaryFile, MissingFileChangesNothing) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("key"), TEXT("old"));
    EXPECT_FALSE(dictionary.LoadFromFile(PathOf(TEXT("none.ini"))));
    EXPECT_EQ(TEXT("old"), ValueOf(dictionary, TEXT("key")));
    EXPECT_FALSE(TakeFile(PathOf(TEXT("none.ini"))).has_value());
}

TEST_F(FormDictionaryFile, EmptyPathOpensNothing) {
    FormDictionary dictionary;
    EXPECT_FALSE(dictionary.LoadFromFile(WideString()));
    EXPECT_FALSE(dictionary.SaveToFile(WideString()));
}

TEST_F(FormDictionaryFile, FolderInsteadOfAFileIsNeitherLoadedNorSaved) {
    const WideString folder = PathOf(TEXT("folder"));
    MakeFolder(folder);
    FormDictionary dictionary;
    dictionary.SetString(TEXT("key"), TEXT("old"));
    EXPECT_FALSE(dictionary.LoadFromFile(folder));
    EXPECT_FALSE(dictionary.SaveToFile(folder));
    EXPECT_EQ(TEXT("old"), ValueOf(dictionary, TEXT("key")));
}

TEST_F(FormDictionaryFile, MissingFolderIsNotMadeBySaving) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("key"), TEXT("1"));
    EXPECT_FALSE(dictionary.SaveToFile(PathOf(TEXT("none\\settings.ini"))));
    EXPECT_FALSE(TakeFile(PathOf(TEXT("none\\settings.ini"))).has_value());
}

TEST_F(FormDictionaryFile, LoadingMerges) {
    PutFile(Path(), "b=new\nc=3\nd=\n");
    FormDictionary dictionary;
    dictionary.SetString(TEXT("a"), TEXT("1"));
    dictionary.SetString(TEXT("b"), TEXT("2"));
    dictionary.SetString(TEXT("d"), TEXT("4"));
    EXPECT_TRUE(dictionary.LoadFromFile(Path()));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, TEXT("a")));
    EXPECT_EQ(TEXT("new"), ValueOf(dictionary, TEXT("b")));
    EXPECT_EQ(TEXT("3"), ValueOf(dictionary, TEXT("c")));
    EXPECT_EQ(TEXT("4"), ValueOf(dictionary, TEXT("d")));
}

TEST_F(FormDictionaryFile, EmptyFileAndFileOfCommentsAreLoadedAndChangeNothing) {
    for (const std::string_view bytes : {""sv, "# a=1\r\n\r\n \t# b=2"sv, "\r\n"sv, "\0\0"sv}) {
        FormDictionary dictionary;
        dictionary.SetString(TEXT("a"), TEXT("old"));
        PutFile(Path(), bytes);
        EXPECT_TRUE(dictionary.LoadFromFile(Path()));
        EXPECT_EQ(TEXT("old"), ValueOf(dictionary, TEXT("a")));
        EXPECT_EQ("a=old\r\n", Saved(dictionary)) << "nothing but the old entry is there";
    }
}

TEST_F(FormDictionaryFile, LineMayHoldSeveralPairs) {
    const FormDictionary dictionary = Loaded(" Name = Jo+Bloggs & Empty= & =x & Flag\r\na=1&b=2");
    EXPECT_EQ("Name=Jo+Bloggs\r\na=1\r\nb=2\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, LinesEndWithOrWithoutACarriageReturn) {
    const FormDictionary dictionary = Loaded("a=1\nb=2\r\nc=3\r\r\nd=\r4");
    EXPECT_EQ("a=1\r\nb=2\r\nc=3\r\nd=4\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, NulBytesAreSkippedAndFFEndsALine) {
    const FormDictionary dictionary = Loaded(
        "a\0=1\0\n\xFF"
        "b=2\xFF"
        "c=3"s);
    EXPECT_EQ("a=1\r\nb=2\r\nc=3\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryFile, Byte1AEndsTheFileAsTextModeHasIt) {
    EXPECT_EQ("a=1\r\nb=2\r\n", Saved(Loaded("a=1\nb=2\x1A"
                                             "3\nc=4\n")));
}

TEST_F(FormDictionaryFile, BytesFrom80AreSignExtendedInKeysAndValues) {
    const FormDictionary dictionary = Loaded("\xE9=\x80\xFE");
    EXPECT_EQ((WideString{0xFF80, 0xFFFE}), ValueOf(dictionary, Unit(0xFFE9)));
}

TEST_F(FormDictionaryFile, SecondPairOfALineIsNoCommentEvenWithANumberSign) {
    EXPECT_EQ(TEXT("2"), ValueOf(Loaded("a=1&#b=2"), TEXT("#b")));
}

TEST_F(FormDictionaryFile, NumbersComeBackFromTheFile) {
    FormDictionary dictionary;
    dictionary.SetHex32(TEXT("n"), 0xFEDCBA98);
    Saved(dictionary);
    FormDictionary loaded;
    EXPECT_TRUE(loaded.LoadFromFile(Path()));
    EXPECT_EQ(0xFEDCBA98, static_cast<uint32_t>(loaded.GetInt(TEXT("n"), 0)));
}

TEST_F(FormDictionaryFile, FileMayBeSavedToWhereItWasLoadedFrom) {
    FormDictionary dictionary = Loaded("b=2\na=1\n# note\n");
    EXPECT_EQ("a=1\r\nb=2\r\n", Saved(dictionary));
    EXPECT_EQ("a=1\r\nb=2\r\n", Saved(dictionary));
}

/* The two files that docs/key-value-files.md shows. */
TEST_F(FormDictionaryFile, FileWrittenByHandIsReadAsDocumented) {
    const FormDictionary dictionary = Loaded(
        "# Written by hand: comments and blank lines are for the reader alone.\n"
        "UserID = jo.bloggs+%26+co\n"
        "Colour=blue & Size=0x1f\n");
    EXPECT_EQ(TEXT("jo.bloggs & co"), ValueOf(dictionary, TEXT("UserID")));
    EXPECT_EQ(TEXT("blue"), ValueOf(dictionary, TEXT("Colour")));
    EXPECT_EQ(31, dictionary.GetInt(TEXT("Size"), 0));
}

TEST_F(FormDictionaryFile, FileIsWrittenAsDocumented) {
    const uint8_t mark[] = {0x0A, 0xFF, 0x00};
    FormDictionary dictionary;
    dictionary.SetString(TEXT("UserID"), TEXT("jo.bloggs & co"));
    dictionary.SetString(TEXT("Price"), TEXT("50% ") + Unit(0xA3));
    dictionary.SetHex32(TEXT("Size"), 31);
    dictionary.SetHexBytes(TEXT("Mark"), mark, 3);
    dictionary.SetString(TEXT("Empty"), TEXT(""));
    const std::string bytes = Saved(dictionary);
    EXPECT_EQ("Mark=0aff00\r\nPrice=50%25+%a3\r\nSize=0x1f\r\nUserID=jo.bloggs+%26+co\r\n", bytes);
    EXPECT_EQ(66u, bytes.size());
}
