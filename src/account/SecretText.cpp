#include "account/SecretText.h"

void WipeText(WideString& text) noexcept {
    text.resize(text.capacity());
    SecureZeroMemory(text.data(), text.size() * sizeof(WCHAR));
}

void ReplaceSecret(WideString& text, WideString&& next) noexcept {
    text.swap(next);
    WipeText(next);
}
