#include "SimulatorTest.h"

#include <array>

using namespace std::string_literals;

namespace {

class WideText : public SimulatorTest {
protected:
    template <class... Arguments>
    int Print(const WCHAR* mode, const WCHAR* format, Arguments... arguments) {
        FILE* const file = _wfopen(u"\\Temp\\file", mode);
        const int result = fwprintf(file, format, arguments...);
        fclose(file);
        return result;
    }

    std::string Printed() const { return device.TakeFile(u"\\Temp\\file").value_or("no file"); }
};

}  // namespace

TEST_F(WideText, LengthCountsTheUnitsBeforeTheTerminator) {
    EXPECT_EQ(0u, wcslen(u""));
    EXPECT_EQ(4u, wcslen(u"a\xD83D\xDE00z"));
}

TEST_F(WideText, CopyFillsUpWithZeros) {
    std::array<WCHAR, 5> buffer;
    buffer.fill(u'?');
    EXPECT_EQ(buffer.data(), wcsncpy(buffer.data(), u"ab", 4));
    EXPECT_EQ((std::array<WCHAR, 5>{u'a', u'b', 0, 0, u'?'}), buffer);
}

TEST_F(WideText, CopyOfLongerTextHasNoTerminator) {
    std::array<WCHAR, 3> buffer;
    buffer.fill(u'?');
    wcsncpy(buffer.data(), u"abc", 2);
    EXPECT_EQ((std::array<WCHAR, 3>{u'a', u'b', u'?'}), buffer);
    wcsncpy(buffer.data(), u"xyz", 0);
    EXPECT_EQ(u'a', buffer[0]);
}

TEST_F(WideText, PrintingWritesEachUnitAsOneByte) {
    EXPECT_EQ(6, Print(u"wb", u"%s=%d\n", u"\u00E9x", 12));
    EXPECT_EQ("\xE9x=12\n", Printed());
    EXPECT_EQ(3, Print(u"wb", u"a%cb", 0));
    EXPECT_EQ("a\0b"s, Printed());
}

TEST_F(WideText, PrintingInTextModeWritesLineEnds) {
    EXPECT_EQ(3, Print(u"w", u"a\n%s", u"b"));
    EXPECT_EQ("a\r\nb", Printed());
}

TEST_F(WideText, PrintingStopsAtTheFirstUnitAboveFF) {
    EXPECT_EQ(-1, Print(u"wb", u"\u00FF%s\n", u"b\u0100c"));
    EXPECT_EQ(
        "\xFF"
        "b",
        Printed());
}

TEST_F(WideText, PrintingToAFullDeviceIsMinusOne) {
    device.SetFreeStorage(2);
    EXPECT_EQ(-1, Print(u"wb", u"%s", u"abc"));
    EXPECT_EQ("ab", Printed());
}

TEST_F(WideText, ConversionsThatAreNotSimulatedAreViolations) {
    Print(u"wb", u"%f%n");
    int value = 0;
    EXPECT_EQ(0, swscanf(u"a", u"%c", &value));
    EXPECT_EQ((Lines{"a format holds %f, which is not simulated", "a format holds %n, which is not simulated",
                     "a scan format holds %c, which is not simulated"}),
              TakeViolations());
}
