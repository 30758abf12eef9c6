/* All texts that this version of the library may show. The build finds them: in the sources, as arguments of
 * the functions that show text (find_texts.py), and in the compiled resources. */
#pragma once

#include "text/WideString.h"

#include <cstdint>
#include <span>

enum class TextKind : uint8_t {
    Title,   /* caption of message boxes: looked up before a language is known, so it stays English */
    Caption, /* of a dialog */
    Label,
    CheckBox,
    SoftKey,
    MenuItem,
    Message /* in a message box */
};

/* One place where a text is shown. Sizes of controls are in dialog units of the dialog's font, 0 where the
 * text has all the room there is. */
struct TextPlace {
    TextKind kind;
    const char* screen; /* for people: "Sign in", "Create account", "Everywhere" ... */
    const char* source; /* "src/account/SignIn.cpp:25" */
    int width;
    int height;
};

struct ShownText {
    const WCHAR* text;
    bool isFormat; /* its placeholders are filled in (ShowTranslatedMessageFormat) */
    std::span<const TextPlace> places;
};

/* In the order of the screens, and in a screen as a user meets them. */
std::span<const ShownText> AllShownTexts();

/* The text for which `text` is looked up by the library: the same, or the same without its ornaments (the
 * characters &, full stop, colon, double quote). Null: no text of this version. */
const ShownText* FindShownText(WideStringView text);
