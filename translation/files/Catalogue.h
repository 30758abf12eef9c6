/* A translation while it is worked on: what a language file, a table or a .po file holds, whatever the form
 * of the file is. */
#pragma once

#include "files/Complaint.h"
#include "text/WideString.h"

#include <cstddef>
#include <string>
#include <vector>

/* One text and its translation, with what translators and their programs note beside them. */
struct CatalogueEntry {
    WideString text;        /* the English text, as the program looks it up; never empty */
    WideString translation; /* empty: there is none yet, which language files write as XXXX */
    WideString screen;      /* where the text is shown first, as for people; empty: not known */
    /* Each is one line without its end. */
    std::vector<WideString> notes;      /* by translators */
    std::vector<WideString> places;     /* where it is shown, by the program that finds the texts */
    std::vector<WideString> references; /* sources, as FILE:LINE */
    std::vector<WideString> flags;      /* for other programs, such as "max-length:20" */
    bool isFormat = false;              /* its placeholders are filled in */
    bool isFuzzy = false;               /* a guess that a translator has to confirm */
    WideString guessedFrom;             /* the text that the guess was made for; empty: not told */
    WideString guessedFromScreen;       /* where that was shown first; empty: not told */
    bool isObsolete = false;            /* no text of the program any more; kept for the translator alone */
    size_t line = 0;                    /* of the file that it was read from; 0: it was not read from one */
};

/* A field of a .po file's head, such as "Last-Translator". */
struct CatalogueField {
    WideString name; /* empty: the line has none, and all of it is the value */
    WideString value;
};

/* A line of such a head, NAME: VALUE, and back. */
CatalogueField FieldOfLine(WideStringView line);
WideString LineOfField(const CatalogueField& field);

/* Entries in the order of their file. A text occurs once, obsolete or not. */
struct Catalogue {
    std::vector<WideString> notes; /* of the whole file, each one line */
    std::vector<CatalogueField> fields;
    /* What else may stand above the head of a .po file, as above an entry. */
    std::vector<WideString> places;
    std::vector<WideString> references;
    std::vector<WideString> flags;
    bool isHeadFuzzy = false; /* a .po file's head that nobody has filled in yet */
    std::vector<CatalogueEntry> entries;
    Complaints losses; /* what the file that this was read from has held beside it */

    /* The entry of `text` that is not obsolete, or null. Looks at one after the other. */
    [[nodiscard]] const CatalogueEntry* Find(WideStringView text) const;
    [[nodiscard]] CatalogueEntry* Find(WideStringView text);
};
