/* The comment lines of tables: their marks, and what stands behind them. */
#pragma once

#include "text/WideString.h"

enum class CommentMark : WCHAR {
    Note = u' ',
    Place = u'.',
    Reference = u':',
    Flags = u',',
    Field = u'+',
    GuessedFrom = u'|',
    GuessedFromScreen = u'^',
    Screen = u'@',
    Obsolete = u'~'
};

struct TableComment {
    CommentMark mark = CommentMark::Note;
    WideString rest; /* what stands behind the mark and one blank */
};

/* The comment of a line for which IsTableComment holds. */
TableComment ReadTableComment(WideStringView line);

/* A note, a place or a field, so that it is read back from a line, and so that the line holds no TAB, which
 * would make a record of it. */
WideString EscapedNote(WideStringView note);
WideString UnescapedNote(WideStringView rest);

/* The screen that a place tells: what stands before its first colon, or nothing. */
WideStringView ScreenOfPlace(WideStringView place);
