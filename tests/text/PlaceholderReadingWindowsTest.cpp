/* What only Windows' own runtime can be asked. */
#include <malloc.h>

#include "text/FormatString.h"
#include "text/PlaceholderReading.h"

TEST_F(PlaceholderReading, RealNumbersOfTheSameTypeReadTheSame) {
    ExpectTheSameIsRead(TEXT("eEfgG"));
}

TEST_F(PlaceholderReading, NoneThatIsReadOverrunsABufferOfTheRuntime) {
    const WideString text(1500, 'x');
    for (const WideString& placeholder : ReadOnes(TEXT("diuxXosScCpeEfgG"))) {
        const WCHAR letter = placeholder.back();
        for (const WideString& form : FormsOf(placeholder)) {
            WideString filled;
            if (letter == 's' || letter == 'S') {
                filled = FormatString(form.c_str(), text.c_str());
            } else if (WideStringView(TEXT("eEfgG")).find(letter) != WideStringView::npos) {
                filled = FormatString(form.c_str(), -1.7e308);
            } else {
                filled = FormatString(form.c_str(), INT64_MIN + 1);
            }
            ASSERT_LE(filled.size(), 999U);
            ASSERT_EQ(_HEAPOK, _heapchk()) << Name(form);
        }
    }
}
