#include "text/Placeholders.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

const WCHAR* const number = TEXT("Error %d");

WideString Percent(const WideString& placeholder) {
    return TEXT("%") + placeholder;
}

/* What reads one type, as the runtime knows it. */
const std::initializer_list<std::initializer_list<const WCHAR*>> kinds = {
    {TEXT("d"), TEXT("i"), TEXT("u"), TEXT("x"), TEXT("X"), TEXT("o")},
    {TEXT("hd"), TEXT("hi"), TEXT("hu"), TEXT("hx"), TEXT("hX"), TEXT("ho")},
    {TEXT("ld"), TEXT("li"), TEXT("lu"), TEXT("lx"), TEXT("lX"), TEXT("lo")},
    {TEXT("I32d"), TEXT("I32i"), TEXT("I32u"), TEXT("I32x"), TEXT("I32X"), TEXT("I32o")},
    {TEXT("I64d"), TEXT("I64i"), TEXT("I64u"), TEXT("I64x"), TEXT("I64X"), TEXT("I64o")},
    {TEXT("e"), TEXT("E"), TEXT("f"), TEXT("g"), TEXT("G")},
    {TEXT("Le"), TEXT("LE"), TEXT("Lf"), TEXT("Lg"), TEXT("LG")},
    {TEXT("s")},
    {TEXT("hs")},
    {TEXT("ls")},
    {TEXT("ws")},
    {TEXT("S")},
    {TEXT("hS")},
    {TEXT("lS")},
    {TEXT("c")},
    {TEXT("hc")},
    {TEXT("lc")},
    {TEXT("wc")},
    {TEXT("C")},
    {TEXT("p")},
};

}  // namespace

TEST(Placeholders, TextWithoutAnyReadsNothing) {
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("")));
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("Erreur")));
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("\xFF05s \xD83D")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT(""), TEXT("Erreur")));
}

TEST(Placeholders, TheSameOnesInTheSameOrderAreRead) {
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("Erreur %d")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%s: %d of %I64d"), TEXT("%s, %d sur %I64d")));
}

TEST(Placeholders, ABeginningOfThemIsRead) {
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%s: %d of %d"), TEXT("%s : %d")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%s: %d of %d"), TEXT("%s")));
}

TEST(Placeholders, OneMoreIsNotRead) {
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("Erreur %d %d")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%d %d %d %d")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("Erreur %d %s")));
    EXPECT_FALSE(ReadsArgumentsOf(TEXT("Done"), TEXT("%d")));
}

TEST(Placeholders, AnotherOrderIsNotRead) {
    EXPECT_FALSE(ReadsArgumentsOf(TEXT("%s: %d"), TEXT("%d : %s")));
}

TEST(Placeholders, OnlyTheSameTypeIsRead) {
    for (const auto& given : kinds) {
        for (const auto& read : kinds) {
            for (const WCHAR* const one : given) {
                for (const WCHAR* const other : read)
                    EXPECT_EQ(&given == &read,
                              ReadsArgumentsOf(Percent(one).c_str(), (TEXT("x") + Percent(other)).c_str()));
            }
        }
    }
}

TEST(Placeholders, HostileOnesInPlaceOfANumberAreNotRead) {
    for (const WCHAR* const hostile :
         {TEXT("%s"), TEXT("%S"), TEXT("%hs"), TEXT("%ls"), TEXT("%ws"), TEXT("%n"), TEXT("%hn"),
          TEXT("%*.*d"), TEXT("%*d"), TEXT("%.*d"), TEXT("%.1000000d"), TEXT("%2147483647d"), TEXT("%1000d"),
          TEXT("%4294967301d"), TEXT("%99999999999999999999d"), TEXT("%f"), TEXT("%c"), TEXT("%p"),
          TEXT("%a")})
        EXPECT_FALSE(ReadsArgumentsOf(number, hostile));
}

TEST(Placeholders, OnesThatAreNeverReadAreNotReadForThemselves) {
    for (const WCHAR* const never :
         {TEXT("%n"), TEXT("%*d"), TEXT("%.*s"), TEXT("%y"), TEXT("%1000d"), TEXT("%/d"), TEXT("%:d"),
          TEXT("%I14d"), TEXT("%I65d"), TEXT("%I12d"), TEXT("%I33d"), TEXT("%h64d"), TEXT("%h32d")})
        EXPECT_FALSE(ReadsArgumentsOf(never, (TEXT("x") + WideString(never)).c_str()));
}

TEST(Placeholders, EqualTextsReadTheSame) {
    for (const WCHAR* const text : {TEXT(""), TEXT("Error %d"), TEXT("%*d%n"), TEXT("100 %")})
        EXPECT_TRUE(ReadsArgumentsOf(text, text));
}

TEST(Placeholders, FlagsWidthsAndPrecisionsDoNotMatter) {
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("%-+ #05.3d")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%08x"), TEXT("%u")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%s"), TEXT("%.3s")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%s"), TEXT("%.s")));
}

TEST(Placeholders, ANumberHasTheRoomOf64Bits) {
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("%20.20d")));
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("%#020.0020x")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%g"), TEXT("%20.20f")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%p"), TEXT("%-20p")));
    for (const WCHAR* const longer :
         {TEXT("%21d"), TEXT("%.21d"), TEXT("%-99d"), TEXT("%#099x"), TEXT("%.99o"), TEXT("%999d"),
          TEXT("%.999d"), TEXT("%1000d"), TEXT("%.1000d")})
        EXPECT_FALSE(ReadsArgumentsOf(number, longer));
    EXPECT_FALSE(ReadsArgumentsOf(TEXT("%g"), TEXT("%.21f")));
    EXPECT_FALSE(ReadsArgumentsOf(TEXT("%p"), TEXT("%21p")));
}

TEST(Placeholders, ATextHasTheRoomOfAMessage) {
    for (const WCHAR* const letter : {TEXT("s"), TEXT("S"), TEXT("c"), TEXT("C")}) {
        const WideString original = Percent(letter);
        EXPECT_TRUE(
            ReadsArgumentsOf(original.c_str(), Percent(TEXT("-999.999") + WideString(letter)).c_str()));
        EXPECT_FALSE(ReadsArgumentsOf(original.c_str(), Percent(TEXT("1000") + WideString(letter)).c_str()));
        EXPECT_FALSE(ReadsArgumentsOf(original.c_str(), Percent(TEXT(".1000") + WideString(letter)).c_str()));
    }
}

TEST(Placeholders, ADoubledPercentReadsNothing) {
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("%%")));
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("100 %% (%d)")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%d%% done"), TEXT("%d %% fertig")));
    EXPECT_TRUE(ReadsArgumentsOf(TEXT("%%s %d"), TEXT("%d")));
    EXPECT_FALSE(ReadsArgumentsOf(TEXT("%%d"), TEXT("%d")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%%%s")));
}

TEST(Placeholders, APercentThatBeginsNoneIsNotRead) {
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("100 %")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("100 % ")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%-5.")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%I6d")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%lld")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%\xE9")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%\xD83D\xDE00")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%\xDE00")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%\xFF44 %s")));
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("%5%")));
}

TEST(Placeholders, ABlankBehindAPercentIsAFlag) {
    EXPECT_FALSE(ReadsArgumentsOf(number, TEXT("100 % sicher")));
    EXPECT_TRUE(ReadsArgumentsOf(number, TEXT("100 % danach")));
}
