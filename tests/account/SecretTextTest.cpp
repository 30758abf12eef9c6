#include "account/SecretText.h"

#include <gtest/gtest.h>

namespace {

bool IsWiped(const WideString& text) {
    return text.find_first_not_of(WCHAR{0}) == WideString::npos && text.size() == text.capacity();
}

const WideString longText = TEXT("longer than what lies in the text itself");

}  // namespace

TEST(SecretText, IsWipedUpToItsCapacity) {
    for (WideString text : {WideString(TEXT("short")), longText}) {
        text.erase(3);
        WipeText(text);
        EXPECT_TRUE(IsWiped(text));
    }
}

TEST(SecretText, WhatIsReplacedIsWipedWhereItLay) {
    for (const WideString& old : {WideString(TEXT("short")), longText}) {
        for (const WideString& replacing : {WideString(), WideString(TEXT("other")), longText + longText}) {
            WideString text = old;
            WideString next = replacing;
            ReplaceSecret(text, static_cast<WideString&&>(next));
            EXPECT_TRUE(replacing == text);
            EXPECT_TRUE(IsWiped(next));
        }
    }
}
