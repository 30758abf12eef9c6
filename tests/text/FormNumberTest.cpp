/* Numbers and bytes as the values of a dictionary. */
#include <array>
#include <climits>

#include "text/SampleDictionaries.h"

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

TEST(GetHexBytes, OneByteIsRoomForOne) {
    uint8_t bytes[] = {0xEE, 0xEE};
    EXPECT_EQ(1, With(TEXT("0aff")).GetHexBytes(TEXT("key"), bytes, 1));
    EXPECT_EQ(0x0A, bytes[0]);
    EXPECT_EQ(0xEE, bytes[1]);
}
