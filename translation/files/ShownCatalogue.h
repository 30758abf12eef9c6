/* The catalogue that translations begin with. */
#pragma once

#include "files/Catalogue.h"

#include <string>

/* All texts of this version with their places, none translated. */
Catalogue ShownCatalogue();

/* Writes a catalogue that was made here; the exit code of the command. */
int WriteMade(const std::string& output, const Catalogue& catalogue);
