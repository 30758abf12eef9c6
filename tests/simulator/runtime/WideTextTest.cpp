#include "SimulatorTest.h"

namespace {

class WideText : public SimulatorTest {
protected:
    static int Format(const WCHAR* format, ...) {
        WCHAR buffer[10];
        va_list arguments;
        va_start(arguments, format);
        const int result = _vsnwprintf(buffer, std::size(buffer), format, arguments);
        va_end(arguments);
        return result;
    }
};

}  // namespace

TEST_F(WideText, LengthCountsTheUnitsBeforeTheTerminator) {
    EXPECT_EQ(0u, wcslen(u""));
    EXPECT_EQ(4u, wcslen(u"a\xD83D\xDE00z"));
}

TEST_F(WideText, ConversionsThatAreNotSimulatedAreViolations) {
    Format(u"%f%n");
    int value = 0;
    EXPECT_EQ(0, swscanf(u"a", u"%c", &value));
    EXPECT_EQ((Lines{"a format holds %f, which is not simulated", "a format holds %n, which is not simulated",
                     "a scan format holds %c, which is not simulated"}),
              TakeViolations());
}
