/* Text in which pairs are joined by ampersands. */
#include "text/SampleDictionaries.h"

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
