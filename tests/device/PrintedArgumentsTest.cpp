/* What the printf functions that images import make of 64-bit arguments: as on the device, and otherwise than
 * this computer's own. */
#include "support/DeviceTest.h"

#include "Console.h"
#include "DeviceArguments.h"
#include "Imports.h"

namespace {

class PrintedArguments : public DeviceTest {
protected:
    /* What the wide printf makes of a list of these words. */
    template <class... Words>
    static std::u16string Formatted(const WCHAR* format, Words... values) {
        alignas(8) uint32_t words[] = {static_cast<uint32_t>(values)...};
        auto* const print = reinterpret_cast<decltype(&_vsnwprintf)>(FindImport("COREDLL", "_vsnwprintf"));
        WCHAR text[100] = {};
        EXPECT_LE(0, print(text, 100, format, ListOf(words)));
        return text;
    }

    /* What printf prints that is called as the compiler calls it. */
    template <class... Arguments>
    static std::string Printed(const char* format, Arguments... arguments) {
        auto* const print = reinterpret_cast<int (*)(const char*, ...)>(FindImport("COREDLL", "printf"));
        Console::Current().Clear();
        print(format, arguments...);
        return Console::Current().Output();
    }
};

}  // namespace

TEST_F(PrintedArguments, SixtyFourBitsBeginWhereTheLastArgumentEnds) {
    EXPECT_EQ(u"1-2", Formatted(u"%I64d-%I64d", 1, 0, 2, 0));
    EXPECT_EQ(u"7 600000005", Formatted(u"%d %I64x", 7, 5, 6));
    EXPECT_EQ(u"8 7 600000005 9", Formatted(u"%u %d %llx %i", 8, 7, 5, 6, 9));
    EXPECT_EQ(u"   7 100000002 3", Formatted(u"%*d %I64X %I32d", 4, 7, 2, 1, 3));
    EXPECT_EQ(u"100% 100000000", Formatted(u"%d%% %I64x", 100, 0, 1));
    static const WCHAR word[] = u"word";
    EXPECT_EQ(u"word-1 x", Formatted(u"%.10s%I64d %c", reinterpret_cast<uintptr_t>(word), -1, -1, 'x'));
}

TEST_F(PrintedArguments, CallThatLeavesAWordOutPrintsAnotherNumber) {
    EXPECT_EQ("100 bytes", Printed("%s%.0f bytes", "", 100.0));
    EXPECT_EQ("0 bytes", Printed("%.0f bytes", 100.0))
        << "the number's first word, which is 0, as its second";
    EXPECT_EQ("7 100000001", Printed("%d %llx", 7, 0x100000001));
}
