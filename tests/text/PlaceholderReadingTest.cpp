/* The scanner of placeholders beside the runtime that fills them in: what a translation is taken for is what
 * the runtime reads. Windows' own runtime is asked in its ring, and of other numbers besides. */
#include <functional>

#include "text/PlaceholderReading.h"

namespace {

/* Every text of so many units behind a percent sign. */
void ForEachText(size_t units, const WideString& text, const std::function<void(const WideString&)>& use) {
    use(text);
    if (units == 0) return;
    for (const WCHAR unit : WideStringView(TEXT("%-0 1.*$'hlI64dsn")))
        ForEachText(units - 1, text + unit, use);
}

}  // namespace

TEST_F(PlaceholderReading, OnesOfTheSameTypeReadTheSame) {
    ExpectTheSameIsRead(TEXT("bBcCdDFhHiIjJkKlLmMNoOpPqQrRsStTuUvVwWxXyYzZ"));
}

TEST_F(PlaceholderReading, NoTextThatIsTakenReadsMoreOrSomethingElse) {
    size_t taken = 0;
    ForEachText(4, TEXT("%"), [&](const WideString& format) {
        if (!ReadsArgumentsOf(TEXT("Error %d"), format.c_str())) return;
        ++taken;
        const Reading reading = ReadingOf(format);
        EXPECT_LE(reading.words, 1u) << Name(format);
        EXPECT_EQ(0u, reading.units) << Name(format);
        EXPECT_FALSE(reading.isWritten) << Name(format);
    });
    EXPECT_GT(taken, 1000u);
}
