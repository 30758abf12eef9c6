/* A language for trying out: every text can still be read, and what was forgotten or cut is seen. */
#pragma once

#include "texts/ShownTexts.h"

/* The text in brackets, its letters accented and some of its vowels doubled until it is about 40 % longer.
 * Placeholders, line breaks and everything that is no letter stay, and names of soft keys and menu items are
 * mentioned as these are translated. */
WideString PseudoText(const ShownText& shown);
