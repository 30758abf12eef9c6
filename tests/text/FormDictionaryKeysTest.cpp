/* Keys that a file cannot hold beside those that it can. */
#include <gtest/gtest.h>

#include "SampleDictionaries.h"
#include "support/DeviceTest.h"

namespace {

class FormDictionaryKeys : public DeviceTest {
protected:
    static WideString Path() { return PathOf(TEXT("settings.ini")); }

    static std::string Saved(const FormDictionary& dictionary) {
        EXPECT_TRUE(dictionary.SaveToFile(Path()));
        return TakeFile(Path()).value_or("<no file>");
    }

    /* A dictionary of the good entries "Z", "a" and "z", and of the value "bad" under `key`. */
    static FormDictionary BesideGoodOnes(const WideString& key) {
        FormDictionary dictionary = Parsed(TEXT("Z=1&a=2&z=3"));
        dictionary.SetString(key, TEXT("bad"));
        return dictionary;
    }

    static void ExpectGoodEntriesComeBackBeside(const WideString& key) {
        SCOPED_TRACE(::testing::PrintToString(key));
        EXPECT_TRUE(BesideGoodOnes(key).SaveToFile(Path()));
        FormDictionary loaded;
        EXPECT_TRUE(loaded.LoadFromFile(Path()));
        EXPECT_EQ(TEXT("1"), ValueOf(loaded, TEXT("Z")));
        EXPECT_EQ(TEXT("2"), ValueOf(loaded, TEXT("a")));
        EXPECT_EQ(TEXT("3"), ValueOf(loaded, TEXT("z")));
    }
};

const std::string goodLines = "Z=1\r\na=2\r\nz=3\r\n";

}  // namespace

TEST_F(FormDictionaryKeys, UnitWithLowByte1AEndsNoFile) {
    for (const WideString& key : {Unit(0x041A), Unit(0x1A), TEXT("Zz") + Unit(0xFF1A) + TEXT("Z")}) {
        ExpectGoodEntriesComeBackBeside(key);
        EXPECT_EQ(goodLines, Saved(BesideGoodOnes(key)));
        FormDictionary alone;
        alone.SetString(key, TEXT("bad"));
        EXPECT_EQ("", Saved(alone));
    }
}

TEST_F(FormDictionaryKeys, KeyThatIsReadAsAnotherReplacesNoValue) {
    for (const WideString& key :
         {WideString(TEXT("a ")), WideString(TEXT("\ta")), Unit(0x0161), Unit(0xFF61), WideString{'a', 0},
          WideString{0x0D, 'a', 0x010D}, WideString{'a', 0x2020}, WideString{'a', 0x0109}}) {
        ExpectGoodEntriesComeBackBeside(key);
        EXPECT_EQ(goodLines, Saved(BesideGoodOnes(key)));
    }
}

TEST_F(FormDictionaryKeys, FirstEqualsSignAloneEndsTheKeyThatIsRead) {
    FormDictionary dictionary = Parsed(TEXT("xa=1"));
    dictionary.SetString(TEXT("x=a"), TEXT("2"));
    EXPECT_EQ("x=a=2\r\nxa=1\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryKeys, OnlyACarriageReturnIsSkippedWithinAKey) {
    FormDictionary dictionary = Parsed(TEXT("ab=1"));
    dictionary.SetString(WideString{'a', 0x0D, 'b'}, TEXT("bad"));
    EXPECT_EQ("ab=1\r\n", Saved(dictionary));
    dictionary.SetString(WideString{'a', 0x0E, 'b'}, TEXT("2"));
    EXPECT_EQ(
        "a\x0E"
        "b=2\r\nab=1\r\n",
        Saved(dictionary));
}

TEST_F(FormDictionaryKeys, KeyWithSeparatorsReplacesNoValue) {
    for (const WideString& key :
         {WideString(TEXT("b&a")), WideString(TEXT("z=1&b")), WideString(TEXT("a=b")),
          WideString(TEXT("b\na")), WideString(TEXT("a=b\n")), WideString(TEXT("a=&c")),
          WideString(TEXT("b=c&#\n a ")), WideString{'b', 0xFF, 'a'}, WideString{'b', 0x0126, 'a'},
          WideString{'a', 0x013D}, WideString{'b', 0xFFFF, 'a'}, WideString{'b', 0x010A, 'a'}}) {
        ExpectGoodEntriesComeBackBeside(key);
        EXPECT_EQ(goodLines, Saved(BesideGoodOnes(key)));
    }
}

TEST_F(FormDictionaryKeys, KeyThatDamagesNoOtherIsSavedAsItIs) {
    EXPECT_EQ("Z=1\r\na=2\r\nb&c=bad\r\nz=3\r\n", Saved(BesideGoodOnes(TEXT("b&c"))));
    EXPECT_EQ("Z=1\r\na=2\r\nb=a=c=bad\r\nz=3\r\n", Saved(BesideGoodOnes(TEXT("b=a=c"))));
    EXPECT_EQ("Z=1\r\na=2\r\na&b=bad\r\nz=3\r\n", Saved(BesideGoodOnes(TEXT("a&b"))));
    EXPECT_EQ("=b=bad\r\nZ=1\r\na=2\r\nz=3\r\n", Saved(BesideGoodOnes(TEXT("=b"))));
    EXPECT_EQ("=a=b=bad\r\nZ=1\r\na=2\r\nz=3\r\n", Saved(BesideGoodOnes(TEXT("=a=b"))));
    EXPECT_EQ(" A=bad\r\nZ=1\r\na=2\r\nz=3\r\n", Saved(BesideGoodOnes(TEXT(" A"))));
    EXPECT_EQ("#a=bad\r\nZ=1\r\na=2\r\nz=3\r\n", Saved(BesideGoodOnes(TEXT("#a"))));
    EXPECT_EQ("Z=1\r\na=2\r\nz=3\r\n\xE9=bad\r\n", Saved(BesideGoodOnes(Unit(0xE9))));
}

TEST_F(FormDictionaryKeys, KeyOfSeparatorsAloneIsLeftOutBesideAnEmptyKeyWithAValue) {
    for (const WCHAR* key : {TEXT("&"), TEXT("="), TEXT("&&"), TEXT("==")}) {
        FormDictionary dictionary;
        dictionary.SetString(TEXT(""), TEXT("1"));
        dictionary.SetString(key, TEXT("bad"));
        EXPECT_EQ("", Saved(dictionary)) << ::testing::PrintToString(WideString(key));
    }
}

TEST_F(FormDictionaryKeys, EntryWithoutAValueIsNotDamaged) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("a"), TEXT(""));
    dictionary.SetString(TEXT("a "), TEXT("1"));
    EXPECT_EQ("a =1\r\n", Saved(dictionary));
}

TEST_F(FormDictionaryKeys, EveryUnitThatReadingGivesComesBackInAKey) {
    FormDictionary dictionary;
    WideString all;
    for (unsigned code = 1; code < 0xFF; ++code) {
        const bool isMark = code == 0x0A || code == 0x0D || code == 0x1A || code == 0x26 || code == 0x3D;
        if (!isMark) all += static_cast<WCHAR>(static_cast<int8_t>(code));
    }
    dictionary.SetString(all, TEXT("1"));
    ASSERT_TRUE(dictionary.SaveToFile(Path()));
    FormDictionary loaded;
    ASSERT_TRUE(loaded.LoadFromFile(Path()));
    EXPECT_EQ(TEXT("1"), ValueOf(loaded, all));
}
