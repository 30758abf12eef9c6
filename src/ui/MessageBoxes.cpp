#include "ui/MessageBoxes.h"

#include "text/FormatString.h"
#include "ui/TranslationCatalogue.h"

void SetMessageBoxCaption(const WideString& caption) {
    messageBoxCaption = caption;
}

int ShowTranslatedMessage(HWND owner, UINT flags, const WideString& text) {
    return ShowPlainMessage(owner, flags, translationCatalogue.Translate(text));
}

int ShowPlainMessage(HWND owner, UINT flags, const WideString& text) {
    return MessageBoxW(owner, text.c_str(), messageBoxCaption.c_str(), flags);
}

int ShowTranslatedMessageFormat(HWND owner, UINT flags, const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int answer = ShowTranslatedMessageFormatV(owner, flags, format, arguments);
    va_end(arguments);
    return answer;
}

int ShowTranslatedMessageFormatV(HWND owner, UINT flags, const WideString& format, va_list arguments) {
    const WideString& translated = translationCatalogue.Translate(format);
    return ShowPlainMessage(owner, flags, FormatStringV(translated.c_str(), arguments));
}
