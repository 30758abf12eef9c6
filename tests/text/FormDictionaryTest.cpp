#include "text/SampleDictionaries.h"

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
