/* Whether a translation is complete and can be shown: its texts beside those of this version. */
#pragma once

#include "files/Catalogue.h"
#include "files/Complaint.h"

#include <map>

struct CheckedFile {
    Catalogue catalogue;
    size_t lastLine = 0;
    std::map<size_t, WideString> emptyLines; /* those whose translation is empty and not XXXX: their texts */
    bool isGuess = false; /* its encoding is unknown, so that characters may be wrong that are right in it */
};

/* Complains of texts that are unknown, missing (at the last line) or not translated, of guesses, and of
 * translations that do not fit: placeholders, access keys, line breaks, names of soft keys and menu items,
 * their characters (CharacterCheck.h) and the room on the screen. The title need not be translated: it stays
 * English. */
void CheckTexts(const CheckedFile& file, Complaints& complaints);
