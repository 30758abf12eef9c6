/* gettext's .po files, read and written by gettext's own library, in UTF-8.
 *
 *   msgctxt          the screen
 *   msgid, msgstr    text and translation; an empty msgstr: there is none yet
 *   #  #.  #:  #,    notes, places, references, flags: c-format for texts whose placeholders are filled in
 *   #~               obsolete entries */
#pragma once

#include "Catalogue.h"
#include "Complaint.h"

#include <string>

/* The catalogue of the file at `path`. What gettext cannot read, a charset other than UTF-8, plural forms and
 * a text that occurs twice with different translations are complained of. */
Catalogue ReadPo(const std::string& path, Complaints& complaints);

/* The bytes of a .po file, not broken into lines but at the line feeds of texts. Halves of character pairs
 * are complained of. */
std::string WritePo(const Catalogue& catalogue, Complaints& complaints);
