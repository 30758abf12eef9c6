/* Whether a text fits where it is shown, in pixels of a handheld: 96 dpi, Tahoma of 8 points
 * (WidthsOfTahoma.h). Measured for the narrower of the two screens, 176x220, in captions, menus and messages;
 * controls are as wide on every screen. */
#pragma once

#include "texts/ShownTexts.h"

struct TextRoom {
    int width; /* of a line; 0: all that it takes */
    int lines;
};

/* What a place has room for:
 *
 *   label       its control: a dialog unit is a quarter of the width, or an eighth of the height, of the
 *               dialog font's average character, as Windows measures it
 *   check box   the same, less 13 pixels for the box and 3 behind it, half the width of a digit
 *   caption     the narrower screen, 176, less 4 on each side
 *   soft key    half of it, 88, less 4 on each side: two buttons share the menu bar
 *   menu item   176, less 16 on each side for the borders and the room for a tick
 *   message     lines of 160: 176 less the box's borders and margins; and as many as 220 pixels hold, less
 *               24 for the caption, 36 for the buttons and what is around them, and 4 for the borders */
TextRoom RoomAt(const TextPlace& place);

/* What `text` takes there: the width of its widest line, and its lines. Where more than one line has room,
 * and in messages, it is broken at spaces as the system does it; a word is not. The marks of access keys (&)
 * are not drawn but in captions and messages. */
TextRoom NeededRoom(const TextPlace& place, WideStringView text);

bool Fits(const TextPlace& place, WideStringView text);

/* Whether the system takes & for the mark of an access key there. */
bool HasAccessKeys(TextKind kind);

/* A text as it is drawn where & marks an access key: && is one &. */
WideString WithoutAccessKeys(WideStringView text);

/* The pixels of a text in one line. Of characters that the font lacks here this is a guess: those of East
 * Asia count as wide as they are high, accents that stand over the letter before as nothing, and others, such
 * as Greek letters, which a handheld's font has, as an average one. */
int WidthOf(WideStringView text);
