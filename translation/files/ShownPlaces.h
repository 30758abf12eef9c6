/* Where this version shows a text, as catalogues tell it to translators. */
#pragma once

#include "files/Catalogue.h"
#include "texts/ShownTexts.h"

#include <string>
#include <string_view>

/* "check box" */
std::string_view NameOf(TextKind kind);

/* "Sign in: label, 35 x 8" */
std::string PlaceText(const TextPlace& place);

/* Takes screen, places, references and whether placeholders are filled in from `shown`. */
void TakePlaces(CatalogueEntry& entry, const ShownText& shown);

/* Takes them for each entry that has none of them, such as those of a harvest file, and that is shown. An
 * entry whose placeholders are filled in becomes a format in any case. */
void TakePlacesOfThisVersion(Catalogue& catalogue);
