/* The two text files of the translation catalogue: the language file that is read beside the library, and the
 * harvest file of untranslated texts, which is itself a language file to be filled in. */
#pragma once

#include "text/TextKey.h"
#include "text/WideString.h"

#include <map>
#include <set>

/* English text to translated text. */
using TranslationTable = std::map<TextKey, WideString, TextKeyOrder>;

/* The text that one side of a record stands for. CR is dropped. Two double quotes in a row become one, a
 * single one is dropped. A backslash before t, n, a double quote or a backslash becomes, together with it, a
 * TAB, an LF, a double quote or a backslash; before anything else, even a CR, both stay. A backslash at the
 * end stays, too. */
WideString UnescapeTranslationText(WideStringView text);

/* Adds the records of an open language file to `table`; a later record replaces an earlier one of the same
 * key. A record is a key, a TAB, and a value up to the LF or the end of the file. A line without a TAB is no
 * record; a TAB without a key is passed over, and what follows it is read as a record; an empty value is no
 * record. Whether something is empty is decided before CR is dropped: a value of only a CR is a record with
 * an empty text. After a byte order mark the file is read as UTF-16LE, otherwise each byte is one unit of the
 * same number. What a failed read does not bring is left out, and reading goes on while bytes come. Throws
 * std::bad_alloc. */
void ReadTranslations(FILE* file, TranslationTable& table);

/* Writes the byte order mark and then, for each text, a record with the value "XXXX": UTF-16LE, TAB and LF of
 * the text written as backslash t and backslash n, nothing else escaped, lines ended by CR LF. A write that
 * fails is not noticed. Throws std::bad_alloc. */
void WriteUntranslatedTexts(FILE* file, const std::set<WideString>& texts);
