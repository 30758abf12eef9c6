/* gettext's .po files, read by gettext's own library and written as msgcat --no-wrap writes them, in UTF-8.
 *
 *   msgctxt          the screen
 *   msgid, msgstr    text and translation; an empty msgstr: there is none yet
 *   #  #.  #:  #,    notes, places, references, flags: c-format for texts whose placeholders are filled in
 *   #|               the text, and its screen, that a fuzzy translation was made for
 *   #~               obsolete entries
 *
 * The head's fields that tell what every such file is (MIME-Version, Content-Type, Content-Transfer-Encoding)
 * are no part of the catalogue. */
#pragma once

#include "files/Catalogue.h"
#include "files/Complaint.h"

#include <string>

/* The catalogue of the file at `path`. What gettext cannot read, a charset other than UTF-8, plural forms,
 * NUL and a text that occurs twice with different translations are complained of. A text with the same
 * translation on two screens becomes one entry, which is told as a loss. */
Catalogue ReadPo(const std::string& path, Complaints& complaints);

/* The bytes of a .po file, not broken into lines but at the line feeds of texts. Halves of character pairs
 * are complained of. */
std::string WritePo(const Catalogue& catalogue, Complaints& complaints);
