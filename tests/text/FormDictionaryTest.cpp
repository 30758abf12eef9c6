#include "text/FormDictionary.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>

namespace {

const WideString absent = TEXT("<absent>");

WideString Unit(unsigned code) {
    return WideString(1, static_cast<WCHAR>(code));
}

/* The value of `key`, or a text that no test stores. */
WideString ValueOf(const FormDictionary& dictionary, const WideString& key) {
    return dictionary.GetString(key, absent);
}

FormDictionary Parsed(const WideString& text) {
    FormDictionary dictionary;
    dictionary.ParseFormText(text);
    return dictionary;
}

FormDictionary With(const WideString& value) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("key"), value);
    return dictionary;
}

int32_t IntOf(const WideString& value) {
    return With(value).GetInt(TEXT("key"), -77);
}

}  // namespace

TEST(FormDictionary, AbsentKeyGivesTheDefaults) {
    const FormDictionary dictionary;
    EXPECT_EQ(TEXT("default"), dictionary.GetString(TEXT("key"), TEXT("default")));
    EXPECT_EQ(WideString(), dictionary.GetString(TEXT("key")));
    EXPECT_EQ(-77, dictionary.GetInt(TEXT("key"), -77));
    EXPECT_FALSE(dictionary.HasValue(TEXT("key")));
}

TEST(FormDictionary, GettersCreateNoEntries) {
    const FormDictionary dictionary;
    uint8_t bytes[1] = {0xEE};
    (void)dictionary.GetString(TEXT("key"), TEXT("default"));
    (void)dictionary.GetInt(TEXT("key"), 1);
    (void)dictionary.GetHexBytes(TEXT("key"), bytes, 1);
    (void)dictionary.HasValue(TEXT("key"));
    EXPECT_EQ(absent, ValueOf(dictionary, TEXT("key")));
}

TEST(FormDictionary, SetStringCreatesAndReplaces) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("key"), TEXT("one"));
    EXPECT_EQ(TEXT("one"), ValueOf(dictionary, TEXT("key")));
    dictionary.SetString(TEXT("key"), TEXT("two"));
    EXPECT_EQ(TEXT("two"), ValueOf(dictionary, TEXT("key")));
}

TEST(FormDictionary, ValuesAreStoredAsTheyAre) {
    const WideString value = TEXT(" %41+&=#\r\n") + Unit(0) + Unit(0x20AC) + TEXT(" ");
    EXPECT_EQ(value, ValueOf(With(value), TEXT("key")));
}

TEST(FormDictionary, EmptyValueIsAnEntryWithoutAValue) {
    const FormDictionary dictionary = With(WideString());
    EXPECT_EQ(WideString(), ValueOf(dictionary, TEXT("key")));
    EXPECT_FALSE(dictionary.HasValue(TEXT("key")));
}

TEST(FormDictionary, ValueOfOneUnitIsAValue) {
    EXPECT_TRUE(With(TEXT(" ")).HasValue(TEXT("key")));
    EXPECT_TRUE(With(Unit(0)).HasValue(TEXT("key")));
}

TEST(FormDictionary, KeysThatDifferInCaseAreTwoKeys) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("UserID"), TEXT("1"));
    dictionary.SetString(TEXT("userid"), TEXT("2"));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, TEXT("UserID")));
    EXPECT_EQ(TEXT("2"), ValueOf(dictionary, TEXT("userid")));
    EXPECT_EQ(absent, ValueOf(dictionary, TEXT("USERID")));
}

TEST(FormDictionary, EmptyKeyAndKeyWithANulAreKeysLikeOthers) {
    FormDictionary dictionary;
    dictionary.SetString(WideString(), TEXT("1"));
    dictionary.SetString(TEXT("a"), TEXT("2"));
    dictionary.SetString(TEXT("a") + Unit(0), TEXT("3"));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, WideString()));
    EXPECT_EQ(TEXT("2"), ValueOf(dictionary, TEXT("a")));
    EXPECT_EQ(TEXT("3"), ValueOf(dictionary, TEXT("a") + Unit(0)));
}

TEST(FormDictionary, CopiesAreDeep) {
    FormDictionary original = With(TEXT("one"));
    FormDictionary copy = original;
    copy.SetString(TEXT("key"), TEXT("two"));
    original.SetString(TEXT("other"), TEXT("three"));
    EXPECT_EQ(TEXT("one"), ValueOf(original, TEXT("key")));
    EXPECT_EQ(TEXT("two"), ValueOf(copy, TEXT("key")));
    EXPECT_EQ(absent, ValueOf(copy, TEXT("other")));
}

TEST(FormDictionary, GetStringGivesACopy) {
    const FormDictionary dictionary = With(TEXT("one"));
    dictionary.GetString(TEXT("key")) = TEXT("two");
    EXPECT_EQ(TEXT("one"), ValueOf(dictionary, TEXT("key")));
}

TEST(FormText, PairsAreJoinedByAmpersands) {
    const FormDictionary dictionary = Parsed(TEXT("a=1&b=2&c=3"));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, TEXT("a")));
    EXPECT_EQ(TEXT("2"), ValueOf(dictionary, TEXT("b")));
    EXPECT_EQ(TEXT("3"), ValueOf(dictionary, TEXT("c")));
}

TEST(FormText, OfFourPairsOnlyTheCompleteOneIsStored) {
    FormDictionary dictionary = With(TEXT("kept"));
    dictionary.SetString(TEXT("Empty"), TEXT("old"));
    dictionary.ParseFormText(TEXT(" Name = Jo+Bloggs & Empty= & =x & Flag"));
    EXPECT_EQ(TEXT("Jo Bloggs"), ValueOf(dictionary, TEXT("Name")));
    EXPECT_EQ(TEXT("old"), ValueOf(dictionary, TEXT("Empty")));
    EXPECT_EQ(TEXT("kept"), ValueOf(dictionary, TEXT("key")));
    for (const WCHAR* key : {TEXT(""), TEXT("Flag"), TEXT(" Name "), TEXT("Name "), TEXT(" Empty")})
        EXPECT_EQ(absent, ValueOf(dictionary, key));
}

TEST(FormText, PairWithAnEmptyValueMakesNoEntry) {
    EXPECT_EQ(absent, ValueOf(Parsed(TEXT("Empty=")), TEXT("Empty")));
    EXPECT_EQ(absent, ValueOf(Parsed(TEXT("Empty= \t&b=1")), TEXT("Empty")));
}

TEST(FormText, EqualsSignOfTheNextPairIsNotUsed) {
    const FormDictionary dictionary = Parsed(TEXT("a&b=1"));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, TEXT("b")));
    EXPECT_EQ(absent, ValueOf(dictionary, TEXT("a")));
    EXPECT_EQ(absent, ValueOf(dictionary, TEXT("a&b")));
}

TEST(FormText, PairWithoutAnEqualsSignErasesNothing) {
    FormDictionary dictionary = With(TEXT("old"));
    dictionary.ParseFormText(TEXT("key&key=&key"));
    EXPECT_EQ(TEXT("old"), ValueOf(dictionary, TEXT("key")));
}

TEST(FormText, FurtherEqualsSignsBelongToTheValue) {
    EXPECT_EQ(TEXT("b=c="), ValueOf(Parsed(TEXT("a=b=c=&d=1")), TEXT("a")));
    EXPECT_EQ(TEXT("="), ValueOf(Parsed(TEXT("a==")), TEXT("a")));
}

TEST(FormText, LaterPairReplacesAnEarlierOneOfItsKey) {
    EXPECT_EQ(TEXT("2"), ValueOf(Parsed(TEXT("a=1&a=2&a=")), TEXT("a")));
}

TEST(FormText, KeyAndValueAreTrimmedOfAllFourWhitespaceUnits) {
    EXPECT_EQ(TEXT("b c"), ValueOf(Parsed(TEXT(" \t\r\na\n\r\t = \t\r\nb c\n\r\t ")), TEXT("a")));
}

TEST(FormText, TrimmingComesBeforeDecoding) {
    EXPECT_EQ(TEXT(" abc"), ValueOf(Parsed(TEXT("a= +abc")), TEXT("a")));
    EXPECT_EQ(TEXT(" abc "), ValueOf(Parsed(TEXT("a=%20abc%20 ")), TEXT("a")));
    EXPECT_EQ(TEXT(" "), ValueOf(Parsed(TEXT("a=+")), TEXT("a")));
}

TEST(FormText, DecodingComesAfterSplitting) {
    EXPECT_EQ(TEXT("1&b=2"), ValueOf(Parsed(TEXT("a=1%26b%3d2")), TEXT("a")));
    EXPECT_EQ(absent, ValueOf(Parsed(TEXT("a=1%26b%3d2")), TEXT("b")));
}

TEST(FormText, KeysAreNeverDecoded) {
    const FormDictionary dictionary = Parsed(TEXT("%41+b=1"));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, TEXT("%41+b")));
    EXPECT_EQ(absent, ValueOf(dictionary, TEXT("A b")));
}

TEST(FormText, ValueThatDecodesToNothingIsStoredEmpty) {
    FormDictionary dictionary = With(TEXT("old"));
    dictionary.ParseFormText(TEXT("key=%"));
    EXPECT_EQ(WideString(), ValueOf(dictionary, TEXT("key")));
}

TEST(FormText, EmptyTextsAndSeparatorsAloneStoreNothing) {
    for (const WCHAR* text : {TEXT(""), TEXT("&"), TEXT("&&&"), TEXT("="), TEXT("=&="), TEXT(" & = & ")}) {
        FormDictionary dictionary = With(TEXT("old"));
        dictionary.ParseFormText(text);
        EXPECT_EQ(absent, ValueOf(dictionary, WideString()));
        EXPECT_EQ(TEXT("old"), ValueOf(dictionary, TEXT("key")));
    }
}

TEST(FormText, EmptyPairsBetweenOthersAreNothing) {
    const FormDictionary dictionary = Parsed(TEXT("&a=1&&b=2&"));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, TEXT("a")));
    EXPECT_EQ(TEXT("2"), ValueOf(dictionary, TEXT("b")));
}

TEST(FormText, MillionPairsWithoutAnEqualsSignAreReadInOnePass) {
    // A search for = from every pair to the end of the text would take hours.
    const FormDictionary dictionary = Parsed(WideString(1 << 20, '&') + TEXT("a=1"));
    EXPECT_EQ(TEXT("1"), ValueOf(dictionary, TEXT("a")));
}

TEST(GetInt, PrefixTellsTheBase) {
    EXPECT_EQ(31, IntOf(TEXT("0x1f")));
    EXPECT_EQ(31, IntOf(TEXT("0X1F")));
    EXPECT_EQ(15, IntOf(TEXT("017")));
    EXPECT_EQ(17, IntOf(TEXT("17")));
    EXPECT_EQ(0, IntOf(TEXT("0")));
    EXPECT_EQ(0, IntOf(TEXT("0x0")));
}

TEST(GetInt, SignIsRead) {
    EXPECT_EQ(-12, IntOf(TEXT("-12")));
    EXPECT_EQ(12, IntOf(TEXT("+12")));
    EXPECT_EQ(-31, IntOf(TEXT("-0x1f")));
    EXPECT_EQ(-15, IntOf(TEXT("-017")));
}

TEST(GetInt, ReadingStopsAtTheFirstUnitOutsideTheNumber) {
    EXPECT_EQ(12, IntOf(TEXT("12abc")));
    EXPECT_EQ(12, IntOf(TEXT("12 34")));
    EXPECT_EQ(31, IntOf(TEXT("0x1fg")));
    EXPECT_EQ(1, IntOf(TEXT("018")));
    EXPECT_EQ(12, IntOf(TEXT("12") + Unit(0) + TEXT("3")));
    EXPECT_EQ(12, IntOf(TEXT("12") + Unit(0x0133)));
}

TEST(GetInt, WhitespaceBeforeTheNumberIsSkipped) {
    EXPECT_EQ(12, IntOf(TEXT(" \t\n12")));
}

TEST(GetInt, LimitsOf32Bits) {
    EXPECT_EQ(INT32_MAX, IntOf(TEXT("2147483647")));
    EXPECT_EQ(INT32_MIN, IntOf(TEXT("-2147483648")));
}

TEST(GetInt, LargerNumbersWrapAround) {
    EXPECT_EQ(INT32_MIN, IntOf(TEXT("2147483648")));
    EXPECT_EQ(-1, IntOf(TEXT("4294967295")));
    EXPECT_EQ(-1, IntOf(TEXT("0xffffffff")));
    EXPECT_EQ(1, IntOf(TEXT("4294967297")));
    EXPECT_EQ(1, IntOf(TEXT("0x100000001")));
}

TEST(GetInt, UnreadableValueGivesTheDefault) {
    for (const WCHAR* value :
         {TEXT("abc"), TEXT(""), TEXT(" "), TEXT("-"), TEXT("+"), TEXT("x1"), TEXT("- 1")})
        EXPECT_EQ(-77, IntOf(value));
    EXPECT_EQ(-77, IntOf(Unit(0) + TEXT("1")));
}

TEST(SetHex32, LowerCaseDigitsWithoutLeadingZeros) {
    const struct {
        uint32_t number;
        const WCHAR* text;
    } cases[] = {{0, TEXT("0x0")},
                 {1, TEXT("0x1")},
                 {0xABC, TEXT("0xabc")},
                 {0x40000000, TEXT("0x40000000")},
                 {0xFFFFFFFF, TEXT("0xffffffff")}};
    FormDictionary dictionary;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.number);
        dictionary.SetHex32(TEXT("key"), c.number);
        EXPECT_EQ(c.text, ValueOf(dictionary, TEXT("key")));
        EXPECT_EQ(c.number, static_cast<uint32_t>(dictionary.GetInt(TEXT("key"), 5)));
    }
}

TEST(GetHexBytes, BadDigitsCountAsZeroAndAnOddOneIsIgnored) {
    std::array<uint8_t, 16> bytes{};
    bytes.fill(0xEE);
    EXPECT_EQ(3, With(TEXT("0aFFzz1")).GetHexBytes(TEXT("key"), bytes.data(), 16));
    EXPECT_EQ((std::array<uint8_t, 4>{0x0A, 0xFF, 0x00, 0xEE}),
              (std::array<uint8_t, 4>{bytes[0], bytes[1], bytes[2], bytes[3]}));
}

TEST(GetHexBytes, EachBadDigitCountsAsZeroByItself) {
    uint8_t bytes[3] = {0xEE, 0xEE, 0xEE};
    EXPECT_EQ(3, With(TEXT("g1-2") + Unit(0x0133) + TEXT("4")).GetHexBytes(TEXT("key"), bytes, 3));
    EXPECT_EQ(0x01, bytes[0]);
    EXPECT_EQ(0x02, bytes[1]);
    EXPECT_EQ(0x04, bytes[2]);
    EXPECT_EQ(1, With(TEXT("7z")).GetHexBytes(TEXT("key"), bytes, 3));
    EXPECT_EQ(0x70, bytes[0]);
}

TEST(GetHexBytes, CapacityBoundsWhatIsStored) {
    uint8_t bytes[3] = {0xEE, 0xEE, 0xEE};
    EXPECT_EQ(2, With(TEXT("010203")).GetHexBytes(TEXT("key"), bytes, 2));
    EXPECT_EQ(0x01, bytes[0]);
    EXPECT_EQ(0x02, bytes[1]);
    EXPECT_EQ(0xEE, bytes[2]);
}

TEST(GetHexBytes, CapacityBelowOneStoresNothing) {
    uint8_t bytes[1] = {0xEE};
    for (const int32_t capacity : {0, -1, INT32_MIN}) {
        SCOPED_TRACE(capacity);
        EXPECT_EQ(0, With(TEXT("0102")).GetHexBytes(TEXT("key"), bytes, capacity));
        EXPECT_EQ(0xEE, bytes[0]);
    }
}

TEST(GetHexBytes, AbsentKeyAndShortValuesLeaveTheBuffer) {
    uint8_t bytes[1] = {0xEE};
    EXPECT_EQ(0, FormDictionary().GetHexBytes(TEXT("key"), bytes, 1));
    EXPECT_EQ(0, With(TEXT("")).GetHexBytes(TEXT("key"), bytes, 1));
    EXPECT_EQ(0, With(TEXT("1")).GetHexBytes(TEXT("key"), bytes, 1));
    EXPECT_EQ(0xEE, bytes[0]);
}

TEST(SetHexBytes, LowerCaseDigitPairsInTheOrderOfTheBuffer) {
    const uint8_t bytes[] = {0x00, 0x0A, 0xFF, 0x7E};
    FormDictionary dictionary = With(TEXT("old"));
    dictionary.SetHexBytes(TEXT("key"), bytes, 4);
    EXPECT_EQ(TEXT("000aff7e"), ValueOf(dictionary, TEXT("key")));
}

TEST(SetHexBytes, CountBelowOneLeavesAnEmptyValue) {
    const uint8_t bytes[] = {1};
    for (const int32_t count : {0, -1, INT32_MIN}) {
        SCOPED_TRACE(count);
        FormDictionary dictionary = With(TEXT("old"));
        dictionary.SetHexBytes(TEXT("key"), bytes, count);
        EXPECT_FALSE(dictionary.HasValue(TEXT("key")));
        EXPECT_EQ(WideString(), ValueOf(dictionary, TEXT("key")));
    }
}

TEST(SetHexBytes, CountZeroCreatesTheEntryEmpty) {
    FormDictionary dictionary;
    dictionary.SetHexBytes(TEXT("key"), nullptr, 0);
    EXPECT_FALSE(dictionary.HasValue(TEXT("key")));
    EXPECT_EQ(WideString(), ValueOf(dictionary, TEXT("key")));
}

TEST(SetHexBytes, EveryByteComesBack) {
    std::array<uint8_t, 256> bytes{};
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t>(i);
    FormDictionary dictionary;
    dictionary.SetHexBytes(TEXT("key"), bytes.data(), 256);
    std::array<uint8_t, 256> restored{};
    EXPECT_EQ(256, dictionary.GetHexBytes(TEXT("key"), restored.data(), 256));
    EXPECT_EQ(bytes, restored);
}
