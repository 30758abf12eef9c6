/* Language files and tables: one text a line, a TAB between the text and its translation. A language file
 * (.txt, UTF-16) is what the library reads; a table (.tsv, UTF-8) is the same for editors and spreadsheets.
 *
 * Lines that begin with # and hold no TAB are comments, which the library passes over because of the missing
 * TAB. They hold what a .po file holds beside the texts, under the same marks:
 *
 *     # Orvande Online 1.0.0: French       a note; those before the first empty line are of the whole file
 *     #+ Last-Translator: A. Person        a field of a .po file's head, before the first empty line
 *
 *     #, fuzzy                             that head has not been filled in
 *
 *     # Not in the plural.                 a note on the text below
 *     #. Sign in: label                    a place; the screen stands before the colon
 *     #: src/account/SignIn.cpp:25         a reference
 *     #, c-format, fuzzy, no-wrap          flags
 *     #^ Log in                            the screen of the text in the next line
 *     #| User name                         the text that a fuzzy translation was made for
 *     #@ Sign in                           the screen, where the first place does not tell it
 *     User ID<TAB>Identifiant
 *
 *     #~ Log in                            an obsolete text, and in the next line
 *     #~ Connexion                         its translation
 *
 * A TAB in a comment is written as backslash t, and a backslash before a t or a backslash as two. */
#pragma once

#include "files/Catalogue.h"
#include "files/Complaint.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class TableEncoding {
    Utf16,            /* little-endian after a byte order mark: what the library reads as it is meant */
    Latin1,           /* bytes, each the character of its number: the library reads this, too */
    Utf8,             /* with or without a mark; at least one character has more bytes than one */
    Utf16WithoutMark, /* little-endian; every second byte is 0 in ASCII */
    Utf16BigEndian,   /* after a byte order mark, or every first byte is 0 in ASCII */
    Unknown           /* none of these: bytes 80 to 9F, which are no characters of Latin-1, or bytes after the
                         mark of UTF-8 that are none */
};

/* The lines of a file, decoded whatever its encoding is. */
struct TableText {
    TableEncoding encoding = TableEncoding::Latin1;
    bool hasHalfUnit = false;      /* UTF-16 of an odd number of bytes; the last is left out */
    std::vector<WideString> lines; /* without their LF; a CR before it is kept, as the library sees it */
};

TableText DecodeTable(std::string_view bytes);

/* What the library makes of one line: it reads the line itself (ReadTranslations). */
struct TableRecord {
    WideStringView rawText; /* as they stand in the line, without the CR at its end */
    WideStringView rawTranslation;
    WideString text;
    WideString translation;
};

/* None when the line is no record. A comment may look like one: see IsTableComment. The views are of
 * `line`. */
std::optional<TableRecord> ReadTableRecord(WideStringView line);

/* Whether the line begins with # and has nothing after a TAB: spreadsheets fill up lines with TABs. They may
 * also have put the comment in double quotes. */
bool IsTableComment(WideStringView line);

/* Whether the library reads `raw` without dropping a double quote that was meant: each is doubled or has a
 * backslash, but for one at the beginning and one at the end, which enclose the whole field. */
bool AreQuotesKept(WideStringView raw);

/* What the writer of `raw` has meant: as the library reads it, but with double quotes that it would drop
 * (AreQuotesKept). Those at both ends enclose the whole, unless the next one inside ends a word. */
WideString MeantText(WideStringView raw);

/* The text of a harvest file, where only TAB and LF are escaped, from its raw form. */
WideString HarvestedText(WideStringView raw);

/* `text` so that the library reads it back from a field (UnescapeTranslationText) as it is, and spreadsheets
 * take it for one field of one line. A CR cannot be read back. */
WideString EscapedText(WideStringView text);

/* The catalogue of a table's lines. Harvest files are recognised (Harvest.h), and their texts become what the
 * library looks up; those with a CR, which no language file can translate, are left out as losses.
 * Translations are what is meant (MeantText), and so are texts whose quotes the library would drop. What
 * cannot be understood is complained of and left out: an unknown encoding, half a unit, NUL and CR within a
 * line, lines without a TAB, empty texts. Of two translations of one text the last counts, as for the
 * library. */
Catalogue ReadTable(const TableText& table, Complaints& complaints);

/* The bytes of a language file: UTF-16LE with byte order mark, lines ended by CR LF. An entry without
 * translation has the translation XXXX. The first line is a comment, so that it is never taken for a
 * harvest. */
std::string WriteLanguageFile(const Catalogue& catalogue);

/* The bytes of a table: UTF-8 without mark, lines ended by LF. Halves of character pairs, which UTF-8 does
 * not have, are complained of. */
std::string WriteTable(const Catalogue& catalogue, Complaints& complaints);
