/* The message boxes of the library: texts are translated, every box has the same caption, and style flags and
 * results are those of MessageBoxW, also when a box cannot be shown. `owner` may be null. All throw
 * std::bad_alloc. */
#pragma once

#include "text/WideString.h"

/* The caption of every box; empty until it is set. It is not translated. */
extern WideString messageBoxCaption;

void SetMessageBoxCaption(const WideString& caption);

/* Shows the translation of the English `text`. */
int ShowTranslatedMessage(HWND owner, UINT flags, const WideString& text);

/* Shows `text` as it is, because it is translated already or made of data. */
int ShowPlainMessage(HWND owner, UINT flags, const WideString& text);

/* Shows the translation of the English `format`, filled in afterwards. A translation that would not read the
 * same arguments, or a beginning of them (ReadsArgumentsOf), is not shown: the English text is. Formats and
 * the longest text are those of FormatString. */
int ShowTranslatedMessageFormat(HWND owner, UINT flags, const WCHAR* format, ...);
int ShowTranslatedMessageFormatV(HWND owner, UINT flags, const WideString& format, va_list arguments);
