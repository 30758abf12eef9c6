#include "ui/MessageBoxes.h"

#include "base/Trace.h"
#include "text/FormatString.h"
#include "text/Placeholders.h"
#include "ui/TranslationCatalogue.h"

void SetMessageBoxCaption(const WideString& caption) {
    messageBoxCaption = caption;
}

int ShowTranslatedMessage(HWND owner, UINT flags, const WideString& text) {
    if constexpr (isTraced) Trace(TEXT("message"), text.c_str(), flags, 0);
    return ShowPlainMessage(owner, flags, translationCatalogue.Translate(text));
}

int ShowPlainMessage(HWND owner, UINT flags, const WideString& text) {
    const int answer = MessageBoxW(owner, text.c_str(), messageBoxCaption.c_str(), flags);
    if constexpr (isTraced) TraceCall(TEXT("box"), nullptr, answer, answer != 0);
    return answer;
}

int ShowTranslatedMessageFormat(HWND owner, UINT flags, const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int answer = ShowTranslatedMessageFormatV(owner, flags, format, arguments);
    va_end(arguments);
    return answer;
}

int ShowTranslatedMessageFormatV(HWND owner, UINT flags, const WideString& format, va_list arguments) {
    if constexpr (isTraced) Trace(TEXT("message"), format.c_str(), flags, 0);
    const WideString& translated = translationCatalogue.Translate(format);
    // A language file may be careless or hostile; what it may not do is end the program.
    const bool isSafe = ReadsArgumentsOf(format.c_str(), translated.c_str());
    const WideString& shown = isSafe ? translated : format;
    return ShowPlainMessage(owner, flags, FormatStringV(shown.c_str(), arguments));
}
